# Writes a source file that holds the table of skins and the pictures of all skins as bytes:
#   cmake "-DSKINS=folder;folder" -DOUTPUT=file -P EmbedSkins.cmake
# A folder is one that assets/draw_skin.py has written; its place in the list is the skin's number. Run
# by what Skins.cmake adds, whenever one of the files changes.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/EmbedBytes.cmake)
set(bytes "")
set(known)
set(bases)
set(head "")
set(table "")

# add_rows(FOLDER): the rows of a skin, and where it begins.
function(add_rows folder)
  set(file "${folder}/rows.txt")
  file(STRINGS "${file}" line REGEX "^base *\\| *[0-9]+ *\\|" LIMIT_COUNT 1)
  if(NOT line)
    message(FATAL_ERROR "${file}: no line says where the skin begins: base | 400 |")
  endif()
  string(REGEX REPLACE "^base *\\| *([0-9]+).*" "\\1" base "${line}")
  foreach(other IN LISTS bases)
    math(EXPR away "${base} - ${other}")
    if(away LESS 284 AND away GREATER -284)
      message(FATAL_ERROR "${file}: the skin begins at ${base}, and another at ${other}. Each has 284 rows.")
    endif()
  endforeach()
  list(APPEND bases ${base})
  list(LENGTH bases number)
  if(number GREATER 15)
    message(FATAL_ERROR "${file}: the head of the table has room for 15 skins")
  endif()
  file(READ "${file}" rows)
  string(REGEX REPLACE "\nbase *\\|[^\n]*" "" rows "\n${rows}")
  set(bases ${bases} PARENT_SCOPE)
  set(head "${head}${number} | ${base} | base of skin ${number}\n" PARENT_SCOPE)
  set(table "${table}${rows}" PARENT_SCOPE)
endfunction()

# add_pictures(FOLDER): a picture in a folder 2x or 4x has been drawn for surfaces of that density.
function(add_pictures folder)
  file(GLOB pictures "${folder}/*.bmp" "${folder}/[24]x/*.bmp")
  list(SORT pictures COMPARE NATURAL)
  foreach(picture IN LISTS pictures)
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
  foreach(variable IN ITEMS known bytes entries1 entries2 entries4)
    set(${variable} "${${variable}}" PARENT_SCOPE)
  endforeach()
endfunction()

foreach(skin IN LISTS SKINS)
  add_rows("${skin}")
  add_pictures("${skin}")
endforeach()
list(LENGTH bases count)
set(table_file "${OUTPUT}.table")
file(WRITE "${table_file}" "# Which skins there are\n0 | ${count} | how many\n${head}${table}")
append_bytes(kTable "${table_file}")
file(REMOVE "${table_file}")

file(WRITE "${OUTPUT}" "// Written by cmake/EmbedSkins.cmake from the folders of the skins. Not to be edited.
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
${entries1}${entries2}${entries4}    };
}

}  // namespace sarnel
")
