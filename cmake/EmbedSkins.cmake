# Writes a source file that holds the skin table and the pictures of all skins as bytes:
#   cmake -DTABLE=file "-DPICTURES=file;file" -DOUTPUT=file -P EmbedSkins.cmake
# Run by the CMakeLists.txt at the top whenever one of them changes.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/EmbedBytes.cmake)
set(bytes "")

append_bytes(kTable "${TABLE}")
# A picture in a folder 2x or 4x has been drawn for surfaces of that density.
list(SORT PICTURES COMPARE NATURAL)
set(known)
foreach(picture IN LISTS PICTURES)
  get_filename_component(id "${picture}" NAME_WE)
  if(NOT id MATCHES "^[0-9]+$")
    message(FATAL_ERROR "${picture}: the name of a picture is its number")
  endif()
  set(density 1)
  if(picture MATCHES "/([24])x/[^/]*$")
    set(density ${CMAKE_MATCH_1})
  endif()
  set(name kPicture${id}x${density})
  if(name IN_LIST known)
    message(FATAL_ERROR "${picture}: another picture has this number")
  endif()
  list(APPEND known ${name})
  append_bytes(${name} "${picture}")
  string(APPEND entries${density} "    {${id}, View(${name}), ${density}},\n")
endforeach()
set(entries "${entries1}${entries2}${entries4}")

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
