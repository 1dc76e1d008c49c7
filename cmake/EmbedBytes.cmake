# What the scripts that write sources with files in them share.

# append_bytes(NAME FILE): adds an array of that name with the file's bytes to `bytes`.
function(append_bytes name file)
  file(READ "${file}" hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," hex "${hex}")
  string(APPEND bytes "constexpr unsigned char ${name}[] = {${hex}};\n")
  set(bytes "${bytes}" PARENT_SCOPE)
endfunction()

# A function that shows such an array as text.
set(view "template <std::size_t size>
std::string_view View(const unsigned char (&bytes)[size]) {
    return {static_cast<const char*>(static_cast<const void*>(bytes)), size};
}")
