#include "platform/files/mounts.h"

#include <algorithm>
#include <charconv>

#include "platform/base/words.h"
#include "platform/files/files.h"

namespace platform {

namespace {

std::string UnescapedMount(std::string_view text) {
    return FromCodes(text, "\\", 3, 8);
}

}  // namespace

std::string FromCodes(std::string_view text, std::string_view mark, std::size_t digits, int base) {
    std::string bytes;
    while (!text.empty()) {
        unsigned value = 0;
        const std::string_view code =
            text.starts_with(mark) ? text.substr(mark.size(), digits) : std::string_view();
        const auto [end, fault] =
            std::from_chars(code.data(), code.data() + code.size(), value, base);
        const bool escaped =
            code.size() == digits && end == code.data() + digits && value > 0 && value < 256;
        bytes += escaped ? static_cast<char>(value) : text.front();
        text.remove_prefix(escaped ? mark.size() + digits : 1);
    }
    return bytes;
}

std::vector<Mount> ParseMounts(std::string_view mountinfo) {
    constexpr std::size_t kMountPoint = 4;
    std::vector<Mount> mounts;
    for (const std::string_view line : Lines(mountinfo)) {
        const auto words = Words(line);
        const auto dash = std::ranges::find(words, "-");
        if (words.size() > kMountPoint && words.end() - dash >= 3) {
            mounts.push_back({UnescapedMount(words[kMountPoint]), UnescapedMount(dash[2])});
        }
    }
    return mounts;
}

std::vector<Mount> MountsHere() {
    constexpr std::size_t kMostRead = std::size_t{4} << 20U;
    return ParseMounts(ReadWholeFile(u"/proc/self/mountinfo", kMostRead).value_or(""));
}

}  // namespace platform
