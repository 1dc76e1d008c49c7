#include "tests/scenario/scratch.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace scenario {

namespace fs = std::filesystem;

namespace {

std::string MakeKept(const fs::path& parent, const std::string& name) {
    std::error_code error;
    const fs::path absolute = fs::absolute(parent, error);
    fs::create_directories(absolute, error);
    fs::path folder = absolute / name;
    for (int copy = 2; !error && !fs::create_directory(folder, error) && !error; ++copy) {
        folder = absolute / (name + '-' + std::to_string(copy));
    }
    return error ? std::string() : folder.string();
}

std::string MakeTemporary() {
    const char* parent = std::getenv("TMPDIR");
    std::error_code error;
    const fs::path absolute =
        fs::absolute(parent != nullptr && *parent != '\0' ? parent : "/tmp", error);
    std::string path = (absolute / "ambrisor-scenario-XXXXXX").string();
    return !error && mkdtemp(path.data()) != nullptr ? path : std::string();
}

}  // namespace

Scratch::Scratch(const std::string& name, const std::optional<std::string>& keep)
    : path_(keep ? MakeKept(*keep, name) : MakeTemporary()), kept_(keep.has_value()) {}

Scratch::~Scratch() {
    if (!kept_ && !path_.empty()) {
        std::error_code error;
        fs::remove_all(path_, error);
    }
}

}  // namespace scenario
