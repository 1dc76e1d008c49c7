// Loaded in front of a program (LD_PRELOAD), this makes opening slow for files that have "slow" in
// their names, as of a share that has gone: each open waits until a file of the name in SLOW_UNTIL
// exists, and says so in one of that name and ".asked", a line for each. There is an end to it, so
// that nothing of it outlives the tests.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

using Open = int (*)(const char*, int, ...);

void Tell(const char* until, const char* path) {
    const std::string asked = std::string(until) + ".asked";
    if (FILE* const file = std::fopen(asked.c_str(), "a")) {
        std::fprintf(file, "%s\n", path);
        std::fclose(file);
    }
}

void WaitIfSlow(const char* path) {
    constexpr int kLongest = 600;  // tenths of a second
    const char* const until = std::getenv("SLOW_UNTIL");
    if (until == nullptr || std::strstr(path, "slow") == nullptr) {
        return;
    }
    Tell(until, path);
    for (int i = 0; i < kLongest && access(until, F_OK) != 0; ++i) {
        usleep(100'000);
    }
}

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    WaitIfSlow(path);
    // The one of the two that opens large files everywhere.
    return reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open64"))(path, flags, mode);
}

extern "C" int open64(const char* path, int flags, ...) __attribute__((alias("open")));
