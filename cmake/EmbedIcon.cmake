# Writes a source file that holds the pictures of the icon as bytes:
#   cmake "-DPICTURES=file;file" -DOUTPUT=file -P EmbedIcon.cmake
# A picture's name is its size. Run by platform/desktop/CMakeLists.txt whenever one of them changes.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/EmbedBytes.cmake)
set(bytes "")
set(entries "")

foreach(picture IN LISTS PICTURES)
  get_filename_component(size "${picture}" NAME_WE)
  append_bytes(kPicture${size} "${picture}")
  string(APPEND entries "        {${size}, View(kPicture${size})},\n")
endforeach()

file(WRITE "${OUTPUT}" "// Written by cmake/EmbedIcon.cmake from the files in packaging/icons/. Not to be edited.
#include \"platform/desktop/icon.h\"

namespace platform::desktop {

namespace {

${bytes}
${view}

}  // namespace

std::vector<IconPicture> IconPictures() {
    return {
${entries}    };
}

}  // namespace platform::desktop
")
