// A folder of a test's own, removed with all it holds when the test is over, the rights of what
// lies there, and an environment variable that gets its former value back.
#pragma once

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace veldrin {

class ScratchFolder {
  public:
    ScratchFolder() {
        std::string name = std::filesystem::temp_directory_path() / "veldrin-test-XXXXXX";
        path_ = mkdtemp(name.data());
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string Path(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

/// What may be done with a file or folder, by whom; more than any rights if there is none.
inline unsigned RightsOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0xFFFF;
}

class EnvironmentValue {
  public:
    EnvironmentValue(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* former = getenv(name)) {
            former_ = former;
        }
        Set(value);
    }
    ~EnvironmentValue() { Set(former_); }
    EnvironmentValue(const EnvironmentValue&) = delete;
    EnvironmentValue& operator=(const EnvironmentValue&) = delete;

  private:
    void Set(const std::optional<std::string>& value) {
        if (value) {
            setenv(name_, value->c_str(), 1);
        } else {
            unsetenv(name_);
        }
    }

    const char* name_;
    std::optional<std::string> former_;
};

}  // namespace veldrin
