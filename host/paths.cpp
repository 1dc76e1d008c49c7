#include "host/paths.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace veldrin {
namespace {

constexpr const char* kSettingsFile = "Sarnel.Ambrisor.ini";

/// "veldrin-", 16 digits, an ending and the zero at the end.
constexpr std::size_t kRoomForName = 40;

/// The variable's value if it is an absolute path; others are to be ignored.
std::optional<std::string> FolderFromEnvironment(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value != '/') {
        return std::nullopt;
    }
    return AbsolutePath(value, "/");
}

std::optional<std::string> HomeFolder() {
    if (auto home = FolderFromEnvironment("HOME")) {
        return home;
    }
    const passwd* user = getpwuid(geteuid());
    if (user == nullptr || user->pw_dir == nullptr || *user->pw_dir != '/') {
        return std::nullopt;
    }
    return std::string(user->pw_dir);
}

/// A folder, not a link to one, that belongs to this user and that nobody else may enter.
bool IsPrivateFolder(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && (status.st_mode & 077) == 0;
}

bool FitsSocketAddress(const std::string& folder) {
    return folder.size() + kRoomForName <= sizeof(sockaddr_un::sun_path);
}

std::string Join(const std::string& folder, const std::string& name) {
    return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

/// The program's own folder in that of the variable, else in `inHome`.
std::optional<std::string> OwnFolder(const char* variable, const char* inHome) {
    if (const auto folder = FolderFromEnvironment(variable)) {
        return Join(*folder, "veldrin");
    }
    if (const auto home = HomeFolder()) {
        return Join(Join(*home, inHome), "veldrin");
    }
    return std::nullopt;
}

}  // namespace

std::string FolderOf(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

std::optional<std::string> CurrentFolder() {
    std::error_code error;
    std::string folder = std::filesystem::current_path(error).native();
    if (error) {
        return std::nullopt;
    }
    return folder;
}

std::string CommandLine(std::string_view absolutePath, bool add) {
    std::string line = add ? "/ADD \"" : "\"";
    line.append(absolutePath).append("\"");
    return line;
}

std::string LineOfNothing(bool add) {
    return CommandLine("/dev/null/nothing", add);
}

bool IsAdding(std::string_view line) {
    return !line.starts_with('"');
}

std::string Adding(std::string line) {
    return IsAdding(line) ? std::move(line) : "/ADD " + line;
}

std::string ProgramPath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).native();
}

std::optional<std::string> DefaultDirectory() {
    const std::string program = ProgramPath();
    if (!program.empty()) {
        const std::string own = FolderOf(program);
        if (access(Join(own, kSettingsFile).c_str(), F_OK) == 0) {
            return own;
        }
    }
    return OwnFolder("XDG_CONFIG_HOME", ".config");
}

std::optional<std::string> CacheFolder() {
    return OwnFolder("XDG_CACHE_HOME", ".cache");
}

std::optional<std::string> DataFolder() {
    return OwnFolder("XDG_DATA_HOME", ".local/share");
}

std::optional<std::string> StateFolder() {
    return OwnFolder("XDG_STATE_HOME", ".local/state");
}

bool IsFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool MakeFolder(const std::string& path) {
    for (std::size_t end = 1; end != std::string::npos;) {
        end = path.find('/', end + 1);
        // Whether each exists, and whether it was made just now by somebody else, does not matter.
        mkdir(path.substr(0, end).c_str(), 0700);
    }
    return IsFolder(path);
}

std::optional<std::string> RuntimeFolder(const std::string& tmp) {
    if (auto folder = FolderFromEnvironment("XDG_RUNTIME_DIR");
        folder && IsPrivateFolder(*folder) && FitsSocketAddress(*folder)) {
        return folder;
    }
    std::string own = Join(tmp, "veldrin-" + std::to_string(geteuid()));
    mkdir(own.c_str(), 0700);
    // Looked at after it was made: in a shared folder somebody else may have been there first.
    if (IsPrivateFolder(own) && FitsSocketAddress(own)) {
        return own;
    }
    return std::nullopt;
}

std::string UserGuide(const std::string& program) {
    std::error_code error;
    const std::string folder = FolderOf(program);
    const std::string installed = AbsolutePath(VELDRIN_GUIDE, folder);
    const std::string built = AbsolutePath(VELDRIN_SOURCE_GUIDE, folder);
    const auto isThere = [&error](const std::string& path) {
        return std::filesystem::is_regular_file(path, error);
    };
    return !isThere(installed) && isThere(built) ? built : installed;
}

std::string ShortHash(std::string_view text) {
    std::uint64_t hash = 14695981039346656037ULL;  // FNV-1a, 64 bits
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    }
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
    return digits.data();
}

std::string InstanceName(const std::string& componentDirectory) {
    std::error_code error;
    std::string real = std::filesystem::canonical(componentDirectory, error).native();
    if (error) {
        real = componentDirectory;
    }
    return "veldrin-" + ShortHash(real);
}

}  // namespace veldrin
