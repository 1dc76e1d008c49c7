#include "platform/files/media_list.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "platform/base/text.h"

namespace platform {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// Words of these files are ASCII, in any case.
bool TakeWord(std::string_view& text, std::string_view word) {
    const bool stands = text.size() >= word.size() &&
                        std::equal(word.begin(), word.end(), text.begin(),
                                   [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
    text.remove_prefix(stands ? word.size() : 0);
    return stands;
}

std::string FromUtf16(std::string_view bytes, bool littleEndian) {
    std::u16string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text.push_back(
            static_cast<char16_t>(littleEndian ? first | second << 8U : first << 8U | second));
    }
    return Narrow(text);
}

// Calls `take` with each line, without its end, until it answers False.
template <class Take>
void EachLine(std::string_view bytes, Take take) {
    std::string converted;
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    } else if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        converted = FromUtf16(bytes.substr(2), bytes.front() == '\xFF');
        bytes = converted;
    }
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        if (!take(bytes.substr(0, end))) {
            return;
        }
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
}

bool CanBeName(std::string_view text) {
    return !Trimmed(text).empty() && text.size() <= kLongestMediaName &&
           text.find('\0') == std::string_view::npos;
}

}  // namespace

std::optional<MediaListKind> MediaListKindOf(std::string_view path) {
    using enum MediaListKind;
    constexpr std::array kEndings = {
        std::pair{std::string_view(".m3u"), kM3u}, std::pair{std::string_view(".m3u8"), kM3u},
        std::pair{std::string_view(".pls"), kPls}, std::pair{std::string_view(".xspf"), kXspf},
        std::pair{std::string_view(".cue"), kCue}};
    for (const auto& [ending, kind] : kEndings) {
        std::string_view end = path.substr(path.size() - std::min(ending.size(), path.size()));
        if (TakeWord(end, ending)) {
            return kind;
        }
    }
    return std::nullopt;
}

std::vector<std::string> NamesInM3u(std::string_view bytes) {
    std::vector<std::string> names;
    EachLine(bytes, [&names](std::string_view line) {
        if (CanBeName(line) && !Trimmed(line).starts_with('#')) {
            names.emplace_back(line);
        }
        return names.size() < kMostMediaNames;
    });
    return names;
}

std::vector<std::string> NamesInPls(std::string_view bytes) {
    std::vector<std::pair<std::uint64_t, std::string>> numbered;
    EachLine(bytes, [&numbered](std::string_view line) {
        std::string_view rest = Trimmed(line);
        std::uint64_t number = 0;
        if (!TakeWord(rest, "File")) {
            return true;
        }
        const auto read = std::from_chars(rest.data(), rest.data() + rest.size(), number);
        rest.remove_prefix(static_cast<std::size_t>(read.ptr - rest.data()));
        rest = Trimmed(rest);
        if (read.ec == std::errc() && rest.starts_with('=') && CanBeName(rest.substr(1))) {
            numbered.emplace_back(number, Trimmed(rest.substr(1)));
        }
        return numbered.size() < kMostMediaNames;
    });
    std::stable_sort(numbered.begin(), numbered.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> names;
    names.reserve(numbered.size());
    for (auto& entry : numbered) {
        names.push_back(std::move(entry.second));
    }
    return names;
}

std::optional<std::vector<std::string>> NamesInCue(std::string_view bytes) {
    std::vector<std::string> names;
    bool hasTracks = false;
    EachLine(bytes, [&](std::string_view line) {
        std::string_view rest = Trimmed(line);
        hasTracks = hasTracks || TakeWord(rest, "TRACK ");
        if (!TakeWord(rest, "FILE ")) {
            return true;
        }
        rest = Trimmed(rest);
        // Behind the name stands the kind of file, one word.
        std::string_view name = Trimmed(rest.substr(0, rest.find_last_of(kBlanks)));
        if (rest.starts_with('"') && rest.rfind('"') > 0) {
            name = rest.substr(1, rest.rfind('"') - 1);
        }
        if (CanBeName(name)) {
            names.emplace_back(name);
        }
        return names.size() < kMostMediaNames;
    });
    return hasTracks ? std::optional(std::move(names)) : std::nullopt;
}

}  // namespace platform
