#include "host/engine/engine.h"

namespace veldrin {

std::optional<Output> Output::Parse(std::string_view text) {
    constexpr std::string_view kFilePrefix = "file:";
    if (text == "auto") {
        return Output{Kind::kAuto, {}};
    }
    if (text == "null") {
        return Output{Kind::kNull, {}};
    }
    if (text.starts_with(kFilePrefix) && text.size() > kFilePrefix.size()) {
        return Output{Kind::kFile, std::string(text.substr(kFilePrefix.size()))};
    }
    return std::nullopt;
}

}  // namespace veldrin
