#include "platform/files/line_input.h"

#include <algorithm>

namespace platform {

std::optional<std::string_view> LineInput::Next() {
    const std::size_t end = FindEnd();
    if (at_ == buffer_.size() || end - at_ > longestLine_) {
        return std::nullopt;
    }
    const auto line = std::string_view(buffer_).substr(at_, end - at_);
    const auto rest = std::string_view(buffer_).substr(end);
    at_ = end + (rest.starts_with("\r\n") ? 2 : rest.empty() ? 0 : 1);
    return line;
}

std::size_t LineInput::FindEnd() {
    std::size_t searched = 0;  // from at_ on: nothing is looked at twice, however long the line
    for (;;) {
        const std::size_t end = buffer_.find('\r', at_ + searched);
        if (end != std::string::npos && end + 1 < buffer_.size()) {
            return end;
        }
        searched = std::min(end, buffer_.size()) - at_;
        // The LF of a pair may be in the next piece.
        if (searched > longestLine_ || !More()) {
            return at_ + searched;
        }
    }
}

// Reads the next piece behind what has not been handed out yet.
bool LineInput::More() {
    buffer_.erase(0, at_);
    at_ = 0;
    return file_.IsOpen() && file_.Append(buffer_);
}

}  // namespace platform
