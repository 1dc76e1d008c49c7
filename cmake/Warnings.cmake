# One place for the warnings: all of them are errors, for our own code only.
add_library(veldrin_warnings INTERFACE)
target_compile_options(veldrin_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wsuggest-override
  -Wold-style-cast -Wcast-qual -Wformat=2 -Werror)
# GCC 12 sees overlapping copies inside std::string's own operator+ when it optimises; there are none.
target_compile_options(veldrin_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
