# Fails if a file of the component includes, in angle brackets, what is no header of the C++ standard
# library (these have neither a point nor a slash in their names), or looks upwards. The platform's
# own sources may also use the operating system's C headers; its headers may not.
cmake_minimum_required(VERSION 3.25)

function(forbid what regex)
  foreach(file IN LISTS ARGN)
    file(STRINGS ${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*${regex}")
    if(includes)
      message(SEND_ERROR "${file} ${what}: ${includes}")
    endif()
  endforeach()
endfunction()

set(component)
foreach(folder IN LISTS FOLDERS)
  file(GLOB found ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp)
  list(APPEND component ${found})
endforeach()
file(GLOB headers ${ROOT}/platform/*.h ${ROOT}/platform/headless/*.h)
file(GLOB sources ${ROOT}/platform/*.cpp ${ROOT}/platform/headless/*.cpp)

foreach(files IN ITEMS component headers sources)
  if(NOT ${files})
    message(FATAL_ERROR "no ${files} found: the folders have moved")
  endif()
endforeach()
forbid("needs more than the standard library" "<[^>]*[./]" ${component} ${headers})
forbid("needs more than the operating system" "<([A-Z]|[^>/]*[^>/s]/|[^>]*/[^>]*/)" ${sources})
forbid("looks upwards" "\"(host|tests|platform/desktop)/" ${component} ${headers} ${sources})
