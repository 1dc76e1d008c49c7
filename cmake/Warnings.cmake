# One place for the warnings, for our own code only. Here all of them are errors; a program that takes the
# tree into its own build may have another compiler.
add_library(veldrin_warnings INTERFACE)
target_compile_options(veldrin_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wsuggest-override
  -Wold-style-cast -Wcast-qual -Wformat=2 $<$<BOOL:${VELDRIN_WERROR}>:-Werror>)
# GCC 12 sees overlapping copies inside std::string's own operator+ when it optimises; there are none.
target_compile_options(veldrin_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
