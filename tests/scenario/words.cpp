#include "tests/scenario/words.h"

#include <charconv>
#include <cstdint>

#include "platform/base/text.h"

namespace scenario {

namespace {

constexpr std::string_view kBlanks = " \t";

bool IsBlank(char c) {
    return kBlanks.find(c) != std::string_view::npos;
}

// The end of an unquoted word: the first blank outside its quotes and parentheses.
std::size_t EndOfBareWord(std::string_view line, std::size_t start) {
    constexpr int kDeepest = 16;
    int depth = 0;
    std::size_t at = start;
    for (; at < line.size() && (depth > 0 || !IsBlank(line[at])); ++at) {
        if (line[at] == '"') {
            at = ClosingQuote(line, at);
        } else if (line[at] == '(') {
            if (++depth > kDeepest) {
                throw Mistake("nested too deeply");
            }
        } else if (line[at] == ')') {
            --depth;
        }
    }
    if (depth != 0) {
        throw Mistake("parentheses do not match");
    }
    return at;
}

// The `digits` hexadecimal digits at `at`.
unsigned HexNumber(std::string_view raw, std::size_t at, std::size_t digits) {
    const std::string_view text = raw.substr(at, digits);
    unsigned number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (text.size() != digits || error != std::errc() || stop != text.data() + text.size()) {
        throw Mistake("bad escape: \\" + std::string(raw.substr(at - 1, digits + 1)));
    }
    return number;
}

char LetterEscape(char letter) {
    switch (letter) {
        case 'r':
            return '\r';
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case '"':
        case '\\':
            return letter;
        default:
            throw Mistake(std::string("bad escape: \\") + letter);
    }
}

std::string HexEscape(char letter, unsigned number, int digits) {
    std::string escape{'\\', letter};
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        escape.push_back("0123456789ABCDEF"[(number >> shift) & 0xF]);
    }
    return escape;
}

std::string QuotedUnit(char16_t unit) {
    switch (unit) {
        case u'\r':
            return "\\r";
        case u'\n':
            return "\\n";
        case u'\t':
            return "\\t";
        case u'"':
            return "\\\"";
        case u'\\':
            return "\\\\";
        default:
            break;
    }
    if (unit < 0x20 || unit == 0x7F) {
        return HexEscape('x', unit, 2);
    }
    if (unit >= 0xDC80 && unit <= 0xDCFF) {
        return HexEscape('x', unit & 0xFFu, 2);
    }
    return platform::IsSurrogate(unit) ? HexEscape('u', unit, 4)
                                       : platform::Narrow(std::u16string_view(&unit, 1));
}

}  // namespace

std::size_t ClosingQuote(std::string_view line, std::size_t start) {
    for (std::size_t at = start + 1; at < line.size(); ++at) {
        if (line[at] == '\\') {
            ++at;
        } else if (line[at] == '"') {
            return at;
        }
    }
    throw Mistake("quote is not closed");
}

std::vector<Word> SplitWords(std::string_view line) {
    std::vector<Word> words;
    std::size_t at = line.find_first_not_of(kBlanks);
    while (at != std::string_view::npos) {
        std::size_t end = 0;
        if (line[at] == '"') {
            const std::size_t closing = ClosingQuote(line, at);
            words.push_back({std::string(line.substr(at + 1, closing - at - 1)), true});
            end = closing + 1;
            if (end < line.size() && !IsBlank(line[end])) {
                throw Mistake("no blank behind a quoted word");
            }
        } else {
            end = EndOfBareWord(line, at);
            words.push_back({std::string(line.substr(at, end - at)), false});
        }
        at = line.find_first_not_of(kBlanks, end);
    }
    return words;
}

std::u16string Unescape(std::string_view raw) {
    std::u16string text;
    std::string bytes;  // not yet in `text`: neighbours may be one character together
    for (std::size_t at = 0; at < raw.size(); ++at) {
        if (raw[at] != '\\') {
            bytes.push_back(raw[at]);
            continue;
        }
        const char letter = ++at < raw.size() ? raw[at] : '\0';
        if (letter == 'x') {
            bytes.push_back(static_cast<char>(HexNumber(raw, at + 1, 2)));
            at += 2;
        } else if (letter == 'u') {
            text += platform::Widen(bytes);
            bytes.clear();
            text.push_back(static_cast<char16_t>(HexNumber(raw, at + 1, 4)));
            at += 4;
        } else {
            bytes.push_back(LetterEscape(letter));
        }
    }
    return text + platform::Widen(bytes);
}

std::string Quote(std::u16string_view text) {
    std::string quoted = "\"";
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (platform::InsidePair(text, at + 1)) {
            quoted += platform::Narrow(text.substr(at, 2));
            ++at;
        } else {
            quoted += QuotedUnit(text[at]);
        }
    }
    return quoted + '"';
}

std::string Canonical(std::string_view line) {
    std::string canonical;
    try {
        for (std::size_t at = 0; at < line.size(); ++at) {
            if (line[at] != '"') {
                canonical.push_back(line[at]);
                continue;
            }
            const std::size_t closing = ClosingQuote(line, at);
            canonical += Quote(Unescape(line.substr(at + 1, closing - at - 1)));
            at = closing;
        }
    } catch (const Mistake&) {
        return std::string(line);  // a line that is printed bare may hold any character
    }
    return canonical;
}

std::u16string Replaced(std::u16string_view text, std::u16string_view from,
                        std::u16string_view to) {
    std::u16string result;
    for (;;) {
        const std::size_t hit = text.find(from);
        result += text.substr(0, hit);
        if (hit == std::u16string_view::npos) {
            return result;
        }
        result += to;
        text.remove_prefix(hit + from.size());
    }
}

}  // namespace scenario
