// A folder of a test's own, removed with all it holds when the test is over, and an environment
// variable that gets its former value back.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace veldrin {

class ScratchFolder {
  public:
    ScratchFolder() {
        std::string name = "/tmp/veldrin-test-XXXXXX";
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
