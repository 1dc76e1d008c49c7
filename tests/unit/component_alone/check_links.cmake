# Fails if a target of the component links more than the level below it.
cmake_minimum_required(VERSION 3.25)

function(check name libraries)
  foreach(library IN LISTS libraries)
    string(REGEX REPLACE "^\\$<BUILD_INTERFACE:(.*)>$" "\\1" library "${library}")
    if(NOT library IN_LIST ARGN)
      message(SEND_ERROR "${name} links ${library}")
    endif()
  endforeach()
endfunction()

if(NOT "veldrin_platform" IN_LIST AMBRISOR)
  message(SEND_ERROR "the link libraries of veldrin_ambrisor were not read: '${AMBRISOR}'")
endif()
check(veldrin_ambrisor "${AMBRISOR}" veldrin_platform veldrin_warnings)
check(veldrin_platform "${PLATFORM}" veldrin_warnings)
