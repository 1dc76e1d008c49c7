// Text at the edges. Inside, text is UTF-16 and compared by code units; files, the host's library
// calls and the operating system speak bytes. The narrow code page is UTF-8, and a byte that is not
// part of valid UTF-8 becomes the lone surrogate U+DC00 + byte, so that every file name survives
// the way in and out.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Bytes to text. Never fails.
std::u16string Widen(std::string_view bytes);

/// As Widen, into a string whose memory is used again.
void WidenInto(std::string_view bytes, std::u16string& text);

/// Text to bytes: the exact opposite of Widen.
std::string Narrow(std::u16string_view text);

/// The first and the second half of a character past U+FFFF.
inline bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
inline bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}
/// Either; one that stands alone is a byte that is no UTF-8.
inline bool IsSurrogate(char16_t unit) {
    return (unit & 0xF800) == 0xD800;
}
/// Whether the place in front of unit `index` lies between the two halves of one character.
inline bool InsidePair(std::u16string_view text, std::size_t index) {
    return index > 0 && index < text.size() && IsHighSurrogate(text[index - 1]) &&
           IsLowSurrogate(text[index]);
}

// Of ASCII alone, for bytes and for units; everything else is answered as it is.

template <class Unit>
constexpr Unit LowerAscii(Unit unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<Unit>(unit + 32) : unit;
}
template <class Unit>
constexpr Unit UpperAscii(Unit unit) {
    return unit >= 'a' && unit <= 'z' ? static_cast<Unit>(unit - 32) : unit;
}

// Text is compared in one way where case is ignored: both sides as capitals, unit by unit. It is
// Unicode's simple upper-case mapping below U+10000, so a letter is never two (\u00DF stays), and
// letters that share a capital are one: \u03C2 and \u03C3, \u0131 and i.

/// The capital of a unit that is no ASCII; the unit itself if it has none.
char16_t UpperBeyondAscii(char16_t unit);
/// The capital of any unit.
inline char16_t UpperUnit(char16_t unit) {
    return unit < 0x80 ? UpperAscii(unit) : UpperBeyondAscii(unit);
}
std::u16string Upper(std::u16string_view text);
bool EqualIgnoringCase(std::u16string_view a, std::u16string_view b);

/// Every "%" with two hexadecimal digits behind it as its byte; others stand as they are.
std::string PercentDecode(std::string_view text);

/// The pieces between delimiters; none of an empty text.
std::vector<std::u16string> Split(std::u16string_view text, char16_t delimiter);

/// Without the blanks (U+0020) at both ends.
std::u16string_view TrimBlanks(std::u16string_view text);

}  // namespace platform
