# Half of the time that a source takes to compile is spent on the headers of the standard library and
# of the window system. Each target of some size compiles them once. A source still includes what it
# uses: the preset `debug` builds without (CMAKE_DISABLE_PRECOMPILE_HEADERS), and so does the check of
# the component's headers.
function(veldrin_precompile target)
  if(CMAKE_UNITY_BUILD)
    return()  # one source of a unity build reads the headers in less time than they take to prepare
  endif()
  target_precompile_headers(${target} PRIVATE
    <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <string> <string_view>
    <unordered_map> <utility> <variant> <vector> ${ARGN})
endfunction()
