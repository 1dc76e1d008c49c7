#include "platform/desktop/drop_paths.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/base/text.h"

namespace platform::desktop {

namespace {

// Nothing if a zero byte comes out, which no name can hold.
std::optional<std::string> Unescaped(std::string_view text) {
    std::string bytes = PercentDecode(text);
    return bytes.find('\0') == std::string::npos ? std::optional(std::move(bytes)) : std::nullopt;
}

// The names of schemes and hosts know no case but that of ASCII.
bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

std::optional<std::string> PathOfAddress(std::string_view address, std::string_view hostName) {
    constexpr std::string_view kScheme = "file:";
    if (!SameName(address.substr(0, kScheme.size()), kScheme)) {
        return std::nullopt;
    }
    address.remove_prefix(kScheme.size());
    if (address.starts_with("//")) {
        address.remove_prefix(2);
        const std::string_view host = address.substr(0, address.find('/'));
        const bool local = host.empty() || SameName(host, "localhost") || SameName(host, hostName);
        if (!local) {
            return std::nullopt;
        }
        address.remove_prefix(host.size());
    }
    if (!address.starts_with('/')) {
        return std::nullopt;
    }
    return Unescaped(address);
}

// The first line, taken off the text. Lines end in CR LF by rule and in either alone by habit; some
// sources end the whole by a zero byte.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end =
        std::min(text.find_first_of(std::string_view("\r\n\0", 3)), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

}  // namespace

std::vector<std::string> PathsOfUriList(std::string_view list, std::string_view hostName) {
    std::vector<std::string> paths;
    while (!list.empty()) {
        if (auto path = PathOfAddress(TakeLine(list), hostName)) {
            paths.push_back(std::move(*path));
        }
    }
    return paths;
}

std::vector<std::string> PathsOfText(std::string_view text, std::string_view hostName) {
    std::vector<std::string> paths;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.starts_with('/')) {
            paths.emplace_back(line);
        } else if (auto path = PathOfAddress(line, hostName)) {
            paths.push_back(std::move(*path));
        }
    }
    return paths;
}

}  // namespace platform::desktop
