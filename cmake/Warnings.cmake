# One place for the warnings: all of them are errors, for our own code only.
add_library(veldrin_warnings INTERFACE)
target_compile_options(veldrin_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wsuggest-override
  -Wold-style-cast -Wcast-qual -Wformat=2 -Werror)
