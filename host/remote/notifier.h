// Tells the desktop's user of an item that has begun, by a notification: one at a time, each in the
// place of the former.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/desktop/session_bus.h"

namespace veldrin {

class Notifier {
  public:
    explicit Notifier(platform::SessionBus& bus) : bus_(bus) {}

    /// Texts are plain UTF-8. `picture`: path of a file; may be empty.
    void Show(const std::string& title, const std::string& artist, const std::string& album,
              const std::string& picture);

  private:
    platform::SessionBus& bus_;
    /// Of the last one, as the desktop knows it; 0 before there is one. Shared, since an answer may
    /// come when nobody is here any more.
    std::shared_ptr<std::uint32_t> id_ = std::make_shared<std::uint32_t>(0);
};

/// The text for where markup is read.
std::string EscapeMarkup(const std::string& text);

}  // namespace veldrin
