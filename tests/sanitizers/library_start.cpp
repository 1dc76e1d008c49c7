// What libraries make while they are loaded is not looked after by the leak sanitizer. GLib makes
// its table of names then, and leaves it behind on purpose once that has become too small; who made
// it cannot be told when the program ends, since GLib keeps no frame pointers.
#include <sanitizer/lsan_interface.h>

namespace {

void PassOver(int /*count*/, char** /*arguments*/, char** /*environment*/) {
    __lsan_disable();
}

// The program's own functions of this kind run before those of its libraries, its constructors
// after.
[[gnu::section(".preinit_array"), gnu::used]] void (*const kBefore)(int, char**, char**) = PassOver;

[[gnu::constructor]] void LookAgain() {
    __lsan_enable();
}

}  // namespace
