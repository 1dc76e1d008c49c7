// Window procedures that write down what they get, as "name id wParam lParam" lines.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/windows/window_system.h"

namespace support {

class WindowLog {
  public:
    /// A procedure that logs under `name` and answers `result`. The log must outlive it.
    platform::WindowProc Named(std::string name, platform::Long result = 0) {
        return [this, name = std::move(name), result](const platform::Message& message) {
            lines_.push_back(name + " " + std::to_string(message.id) + " " +
                             std::to_string(message.wParam) + " " + std::to_string(message.lParam));
            return result;
        };
    }
    void Add(std::string line) { lines_.push_back(std::move(line)); }
    /// The lines since the last Take.
    std::vector<std::string> Take() { return std::exchange(lines_, {}); }

  private:
    std::vector<std::string> lines_;
};

}  // namespace support
