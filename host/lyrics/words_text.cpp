#include "host/lyrics/words_text.h"

#include <algorithm>
#include <array>

#include "lyrics/lyrics.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

std::u16string FromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<char16_t>(bigEndian ? first << 8U | second : second << 8U | first);
    }
    return text;
}

std::u16string Decode(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return FromUtf16(bytes.substr(2), bytes.front() == '\xFE');
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    return sarnel::DecodePage(bytes);
}

/// A lone half of a character would become a byte that is no UTF-8.
void MendSurrogates(std::u16string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (platform::InsidePair(text, i + 1)) {
            ++i;
        } else if (platform::IsSurrogate(text[i])) {
            text[i] = 0xFFFD;
        }
    }
}

std::string WithPlainLineEnds(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            plain += '\n';
            i += text.substr(i + 1).starts_with('\n') ? 1 : 0;
        } else if (text[i] != '\0') {
            plain += text[i];
        }
    }
    return plain;
}

/// Empty lines, be there blanks in them, at the beginning; all white space at the end.
std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\n");
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t lineEnd = text.substr(0, first).rfind('\n');
    text.remove_prefix(lineEnd == std::string_view::npos ? 0 : lineEnd + 1);
    return text.substr(0, text.find_last_not_of(" \t\n") + 1);
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The length of a time such as [01:23.45] or <01:23.45> at the beginning of the text, 0 if there
/// is none.
std::size_t TimeLength(std::string_view text, char open, char close) {
    if (!text.starts_with(open)) {
        return 0;
    }
    const std::size_t end = text.find(close);
    if (end == std::string_view::npos || end < 4 || end > 15) {
        return 0;
    }
    const std::string_view inside = text.substr(1, end - 1);
    const bool isTime = IsDigit(inside.front()) && IsDigit(inside.back()) &&
                        inside.find(':') != std::string_view::npos &&
                        inside.find_first_not_of("0123456789:.") == std::string_view::npos;
    return isTime ? end + 1 : 0;
}

/// Whether the line is one that an .lrc file keeps facts in, such as "[ar:Ann]".
bool TellsFact(std::string_view line) {
    static constexpr std::array<std::string_view, 12> kFacts{
        "AR", "AL", "TI", "AU", "BY", "LR", "RE", "VE", "LENGTH", "OFFSET", "TOOL", "#"};
    const std::size_t colon = line.find(':');
    const std::size_t last = line.find_last_not_of(" \t");
    if (!line.starts_with('[') || colon == std::string_view::npos || line[last] != ']') {
        return false;
    }
    std::string name(line.substr(1, colon - 1));
    std::transform(name.begin(), name.end(), name.begin(), platform::UpperAscii<char>);
    return std::find(kFacts.begin(), kFacts.end(), name) != kFacts.end();
}

/// The text without all times between the two signs.
std::string WithoutTimesWithin(std::string_view line) {
    std::string rest;
    while (!line.empty()) {
        const std::size_t length = TimeLength(line, '<', '>');
        if (length == 0) {
            rest += line.front();
        }
        line.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return rest;
}

/// Whether the line began with a time, which is then gone.
bool TakeTimes(std::string_view& line) {
    bool found = false;
    for (std::size_t length = TimeLength(line, '[', ']'); length > 0;
         length = TimeLength(line, '[', ']')) {
        line.remove_prefix(length);
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        found = true;
    }
    return found;
}

}  // namespace

std::string CleanWords(std::string_view bytes) {
    if (bytes.size() > kMostWords) {
        return {};
    }
    std::u16string text = Decode(bytes);
    MendSurrogates(text);
    return std::string(Trimmed(WithPlainLineEnds(platform::Narrow(text))));
}

std::string WithoutTimes(std::string_view words) {
    std::string rest;
    for (std::string_view left = words; !left.empty();) {
        const std::size_t end = std::min(left.find('\n'), left.size());
        std::string_view line = left.substr(0, end);
        left.remove_prefix(std::min(end + 1, left.size()));
        const bool timed = TakeTimes(line);
        if (timed || !TellsFact(line)) {
            rest.append(timed ? WithoutTimesWithin(line) : line).append("\n");
        }
    }
    return std::string(Trimmed(rest));
}

}  // namespace veldrin
