#include <dlfcn.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <initializer_list>

#include "host/http/http.h"

namespace veldrin {
namespace {

constexpr const char* kModule = "veldrin-http.so";

/// With a separator at its end; empty if it cannot be told.
std::string FolderOfProgram() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    const std::string program(path.data(), static_cast<std::size_t>(length > 0 ? length : 0));
    return program.substr(0, program.rfind('/') + 1);
}

}  // namespace

std::unique_ptr<Http> OpenHttp(const std::string& module) {
    void* const library = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const make = library == nullptr ? nullptr : dlsym(library, "VeldrinMakeHttp");
    // Never unloaded: its threads may outlive what it made.
    return std::unique_ptr<Http>(make == nullptr ? nullptr : reinterpret_cast<Http* (*)()>(make)());
}

Http* LoadHttp() {
    static const std::unique_ptr<Http> loaded = [] {
        const std::string folder = FolderOfProgram();
        std::unique_ptr<Http> http;
        for (const char* place : {"", VELDRIN_MODULES}) {
            if (!http && !folder.empty()) {
                http = OpenHttp(folder + place + kModule);
            }
        }
        return http;
    }();
    return loaded.get();
}

}  // namespace veldrin
