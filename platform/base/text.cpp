#include "platform/base/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/base/letter_case.h"

namespace platform {

namespace {

constexpr char16_t kEscape = 0xDC00;  // + byte: a byte that is no UTF-8

bool IsContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// Length of the valid UTF-8 sequence at the start of `bytes` (2 to 4), or 0. Overlong forms,
// surrogates and numbers past U+10FFFF are not valid.
std::size_t SequenceLength(std::string_view bytes) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    }
    if (length == 0 || bytes.size() < length || at(1) < low || at(1) > high) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (!IsContinuation(at(i))) {
            return 0;
        }
    }
    return length;
}

// How many bytes in front of all others are ASCII; eight are looked at together.
std::size_t AsciiInFront(std::string_view bytes) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::size_t count = 0;
    for (std::uint64_t eight = 0; count + sizeof eight <= bytes.size(); count += sizeof eight) {
        std::memcpy(&eight, bytes.data() + count, sizeof eight);
        if ((eight & kHighBits) != 0) {
            break;
        }
    }
    while (count < bytes.size() && static_cast<unsigned char>(bytes[count]) < 0x80) {
        ++count;
    }
    return count;
}

void AppendCodePoint(std::uint32_t point, std::u16string& text) {
    if (point < 0x10000) {
        text.push_back(static_cast<char16_t>(point));
        return;
    }
    point -= 0x10000;
    text.push_back(static_cast<char16_t>(0xD800 + (point >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
}

void AppendUtf8(std::uint32_t point, std::string& bytes) {
    const auto push = [&](std::uint32_t value) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(value)));
    };
    if (point < 0x80) {
        push(point);
    } else if (point < 0x800) {
        push(0xC0 | (point >> 6));
        push(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        push(0xE0 | (point >> 12));
        push(0x80 | ((point >> 6) & 0x3F));
        push(0x80 | (point & 0x3F));
    } else {
        push(0xF0 | (point >> 18));
        push(0x80 | ((point >> 12) & 0x3F));
        push(0x80 | ((point >> 6) & 0x3F));
        push(0x80 | (point & 0x3F));
    }
}

// -1 for what is none.
int HexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = LowerAscii(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

void WidenInto(std::string_view bytes, std::u16string& text) {
    const std::size_t plain = AsciiInFront(bytes);  // most of it is: copied without decisions
    text.resize(plain);
    std::copy_n(bytes.begin(), plain, text.begin());
    std::size_t i = plain;
    while (i < bytes.size()) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < 0x80) {
            text.push_back(byte);
            ++i;
            continue;
        }
        const std::size_t length = SequenceLength(bytes.substr(i));
        if (length == 0) {
            text.push_back(static_cast<char16_t>(kEscape + byte));
            ++i;
            continue;
        }
        std::uint32_t point = byte & (0x7Fu >> length);
        for (std::size_t k = 1; k < length; ++k) {
            point = (point << 6) | (static_cast<unsigned char>(bytes[i + k]) & 0x3Fu);
        }
        AppendCodePoint(point, text);
        i += length;
    }
}

std::u16string Widen(std::string_view bytes) {
    std::u16string text;
    WidenInto(bytes, text);
    return text;
}

std::string Narrow(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint32_t unit = text[i];
        if (InsidePair(text, i + 1)) {
            const std::uint32_t low = text[++i];
            AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), bytes);
        } else if (unit >= kEscape + 0x80u && unit <= kEscape + 0xFFu) {
            bytes.push_back(static_cast<char>(static_cast<unsigned char>(unit - kEscape)));
        } else {
            AppendUtf8(unit, bytes);
        }
    }
    return bytes;
}

char16_t UpperBeyondAscii(char16_t unit) {
    using namespace letter_case;
    return static_cast<char16_t>(unit + kDistances[kPages[unit / kPage]][unit % kPage]);
}

std::u16string Upper(std::u16string_view text) {
    std::u16string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperUnit);
    return upper;
}

bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char16_t x, char16_t y) {
        return x == y || UpperUnit(x) == UpperUnit(y);
    });
}

std::string PercentDecode(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && text.size() - i > 2;
        const int high = isEscape ? HexDigit(text[i + 1]) : -1;
        const int low = isEscape ? HexDigit(text[i + 2]) : -1;
        if (high >= 0 && low >= 0) {
            bytes += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::vector<std::u16string> Split(std::u16string_view text, char16_t delimiter) {
    std::vector<std::u16string> pieces;
    if (text.empty()) {
        return pieces;
    }
    std::size_t end = text.find(delimiter);
    while (end != std::u16string_view::npos) {
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
        end = text.find(delimiter);
    }
    pieces.emplace_back(text);
    return pieces;
}

std::u16string_view TrimBlanks(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

}  // namespace platform
