#include "platform/desktop/emoji.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform::desktop {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Characters that are pictures unless the text says otherwise; in order.
constexpr std::array kPictures = {
    Range{0x231A, 0x231B},   Range{0x23E9, 0x23EC},   Range{0x23F0, 0x23F0},
    Range{0x23F3, 0x23F3},   Range{0x25FD, 0x25FE},   Range{0x2614, 0x2615},
    Range{0x2648, 0x2653},   Range{0x267F, 0x267F},   Range{0x2693, 0x2693},
    Range{0x26A1, 0x26A1},   Range{0x26AA, 0x26AB},   Range{0x26BD, 0x26BE},
    Range{0x26C4, 0x26C5},   Range{0x26CE, 0x26CE},   Range{0x26D4, 0x26D4},
    Range{0x26EA, 0x26EA},   Range{0x26F2, 0x26F3},   Range{0x26F5, 0x26F5},
    Range{0x26FA, 0x26FA},   Range{0x26FD, 0x26FD},   Range{0x2705, 0x2705},
    Range{0x270A, 0x270B},   Range{0x2728, 0x2728},   Range{0x274C, 0x274C},
    Range{0x274E, 0x274E},   Range{0x2753, 0x2755},   Range{0x2757, 0x2757},
    Range{0x2795, 0x2797},   Range{0x27B0, 0x27B0},   Range{0x27BF, 0x27BF},
    Range{0x2B1B, 0x2B1C},   Range{0x2B50, 0x2B50},   Range{0x2B55, 0x2B55},
    Range{0x1F004, 0x1F004}, Range{0x1F0CF, 0x1F0CF}, Range{0x1F18E, 0x1F18E},
    Range{0x1F191, 0x1F19A}, Range{0x1F201, 0x1F201}, Range{0x1F21A, 0x1F21A},
    Range{0x1F22F, 0x1F22F}, Range{0x1F232, 0x1F236}, Range{0x1F238, 0x1F23A},
    Range{0x1F250, 0x1F251}, Range{0x1F300, 0x1F320}, Range{0x1F32D, 0x1F335},
    Range{0x1F337, 0x1F37C}, Range{0x1F37E, 0x1F393}, Range{0x1F3A0, 0x1F3CA},
    Range{0x1F3CF, 0x1F3D3}, Range{0x1F3E0, 0x1F3F0}, Range{0x1F3F4, 0x1F3F4},
    Range{0x1F3F8, 0x1F43E}, Range{0x1F440, 0x1F440}, Range{0x1F442, 0x1F4FC},
    Range{0x1F4FF, 0x1F53D}, Range{0x1F54B, 0x1F54E}, Range{0x1F550, 0x1F567},
    Range{0x1F57A, 0x1F57A}, Range{0x1F595, 0x1F596}, Range{0x1F5A4, 0x1F5A4},
    Range{0x1F5FB, 0x1F64F}, Range{0x1F680, 0x1F6C5}, Range{0x1F6CC, 0x1F6CC},
    Range{0x1F6D0, 0x1F6D2}, Range{0x1F6D5, 0x1F6D7}, Range{0x1F6DC, 0x1F6DF},
    Range{0x1F6EB, 0x1F6EC}, Range{0x1F6F4, 0x1F6FC}, Range{0x1F7E0, 0x1F7EB},
    Range{0x1F7F0, 0x1F7F0}, Range{0x1F90C, 0x1F93A}, Range{0x1F93C, 0x1F945},
    Range{0x1F947, 0x1F9FF}, Range{0x1FA70, 0x1FAFF},
};

constexpr char32_t kJoiner = 0x200D;
constexpr char32_t kAsLetter = 0xFE0E;
constexpr char32_t kAsPicture = 0xFE0F;
constexpr char32_t kKeyCap = 0x20E3;

bool IsIn(char32_t sign, Range range) {
    return sign >= range.first && sign <= range.last;
}
bool IsPicture(char32_t sign) {
    const auto found = std::ranges::lower_bound(kPictures, sign, {}, &Range::last);
    return found != kPictures.end() && sign >= found->first;
}
bool IsFlagLetter(char32_t sign) {
    return IsIn(sign, {0x1F1E6, 0x1F1FF});
}
bool IsSkin(char32_t sign) {
    return IsIn(sign, {0x1F3FB, 0x1F3FF});
}
bool IsTag(char32_t sign) {
    return IsIn(sign, {0xE0020, 0xE007F});
}
bool IsKey(char32_t sign) {
    return IsIn(sign, {U'0', U'9'}) || sign == U'#' || sign == U'*';
}
// What can be asked for as a picture: no letters or digits, which the signs below this are.
bool CanBePicture(char32_t sign) {
    return sign >= 0x203C || sign == 0xA9 || sign == 0xAE;
}

class Reader {
  public:
    explicit Reader(std::u16string_view text) : text_(text) {}

    /// The character at a unit; a surrogate alone is itself, behind the end is 0.
    char32_t At(std::size_t unit) const {
        if (unit >= text_.size()) {
            return 0;
        }
        const char32_t first = text_[unit];
        if (unit + 1 < text_.size() && IsIn(first, {0xD800, 0xDBFF}) &&
            IsIn(text_[unit + 1], {0xDC00, 0xDFFF})) {
            return 0x10000 + ((first - 0xD800) << 10) + (text_[unit + 1] - 0xDC00);
        }
        return first;
    }
    static std::size_t Units(char32_t sign) { return sign >= 0x10000 ? 2 : 1; }

    /// Where the sign that begins here ends; here if it is no picture.
    std::size_t EndOfSign(std::size_t start) const {
        const char32_t first = At(start);
        const std::size_t next = start + Units(first);
        if (IsFlagLetter(first)) {
            return IsFlagLetter(At(next)) ? next + Units(At(next)) : start;
        }
        if (IsKey(first)) {
            const std::size_t cap = At(next) == kAsPicture ? next + 1 : next;
            return At(cap) == kKeyCap ? cap + 1 : start;
        }
        std::size_t end = EndOfElement(start);
        while (end != start && At(end) == kJoiner) {
            const std::size_t further = EndOfElement(end + 1, true);
            if (further == end + 1) {
                break;
            }
            end = further;
        }
        return end;
    }

  private:
    // One picture with what modifies it. Behind a joiner letters are pictures as well.
    std::size_t EndOfElement(std::size_t start, bool joined = false) const {
        const char32_t first = At(start);
        std::size_t end = start + Units(first);
        const bool asked = CanBePicture(first) && (At(end) == kAsPicture || IsSkin(At(end)));
        if (At(end) == kAsLetter ||
            !(IsPicture(first) || asked || (joined && CanBePicture(first)))) {
            return start;
        }
        while (At(end) == kAsPicture || IsSkin(At(end)) || IsTag(At(end))) {
            end += Units(At(end));
        }
        return end;
    }

    std::u16string_view text_;
};

}  // namespace

std::vector<Part> EmojiIn(std::u16string_view text) {
    std::vector<Part> signs;
    const Reader reader(text);
    for (std::size_t unit = 0; unit < text.size();) {
        const std::size_t end = reader.EndOfSign(unit);
        if (end > unit) {
            signs.push_back({unit, end - unit});
            unit = end;
        } else {
            unit += Reader::Units(reader.At(unit));
        }
    }
    return signs;
}

}  // namespace platform::desktop
