# Writes a source file that holds the skin table and the pictures of all skins as bytes:
#   cmake -DTABLE=file "-DPICTURES=file;file" -DOUTPUT=file -P EmbedSkins.cmake
# Run by the CMakeLists.txt at the top whenever one of them changes.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/EmbedBytes.cmake)
set(bytes "")
set(entries "")

append_bytes(kTable "${TABLE}")
list(SORT PICTURES COMPARE NATURAL)
set(ids)
foreach(picture IN LISTS PICTURES)
  get_filename_component(id "${picture}" NAME_WE)
  if(NOT id MATCHES "^[0-9]+$")
    message(FATAL_ERROR "${picture}: the name of a picture is its number")
  endif()
  if(id IN_LIST ids)
    message(FATAL_ERROR "${picture}: another picture has this number")
  endif()
  list(APPEND ids ${id})
  append_bytes(kPicture${id} "${picture}")
  string(APPEND entries "    {${id}, View(kPicture${id})},\n")
endforeach()

file(WRITE "${OUTPUT}" "// Written by cmake/EmbedSkins.cmake from the files in assets/. Not to be edited.
#include \"skin/embedded.h\"

namespace sarnel {

namespace {

${bytes}
${view}

}  // namespace

std::string_view EmbeddedSkinTable() {
    return View(kTable);
}

std::vector<EmbeddedPicture> EmbeddedPictures() {
    return {
${entries}    };
}

}  // namespace sarnel
")
