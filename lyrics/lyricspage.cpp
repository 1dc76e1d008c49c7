// From the bytes of a page to the words in it. The service's pages decide what is cut and replaced;
// a unit more than one expects goes at either marker, where the service puts line ends.
#include <algorithm>
#include <array>

#include "lyrics/lyrics.h"
#include "platform/base/text.h"

namespace sarnel {

namespace {

constexpr std::u16string_view kDash = u" - ";
constexpr std::u16string_view kFrontMarker = u"<div id=\"lyrics\">";
constexpr std::u16string_view kBackMarker = u"</div>";

// What code page 1252 has at 80 to 9F; the five places that it leaves open stay what they are.
constexpr std::array<char16_t, 32> kBetween{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::u16string FromCodePage1252(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto unit = static_cast<unsigned char>(byte);
        const bool isBetween = unit >= 0x80 && unit < 0xA0;
        text += isBetween ? kBetween.at(unit - 0x80u) : char16_t{unit};
    }
    return text;
}

// Whether Widen met a byte that is no UTF-8.
bool HasStrayByte(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (platform::IsHighSurrogate(text[i])) {
            ++i;  // only whole pairs come out of bytes
        } else if (platform::IsLowSurrogate(text[i])) {
            return true;
        }
    }
    return false;
}

std::u16string ReplaceAll(std::u16string_view text, std::u16string_view what,
                          std::u16string_view with) {
    std::u16string replaced;
    replaced.reserve(text.size());
    std::size_t from = 0;
    for (std::size_t at = text.find(what); at != std::u16string_view::npos;
         at = text.find(what, from)) {
        replaced += text.substr(from, at - from);
        replaced += with;
        from = at + what.size();
    }
    replaced += text.substr(from);
    return replaced;
}

// The number of a marker's first unit, from 1 and ignoring case; 0 without one. Capitals are as
// many units as their letters, so places stay the same.
std::size_t PlaceOf(std::u16string_view marker, std::u16string_view text) {
    const std::size_t at = platform::Upper(text).find(platform::Upper(marker));
    return at == std::u16string::npos ? 0 : at + 1;
}

}  // namespace

ArtistAndTitle SplitName(std::u16string_view name) {
    const std::size_t at = name.find(kDash);
    ArtistAndTitle parts;
    parts.artist = at == std::u16string_view::npos ? u"" : name.substr(0, at);
    // Without a separator its three units are missed all the same, which is meant.
    const std::size_t front = parts.artist.size() + kDash.size();
    parts.title = front <= name.size() ? name.substr(front) : u"";
    return parts;
}

std::u16string DecodePage(std::string_view bytes) {
    std::u16string text = platform::Widen(bytes);
    return HasStrayByte(text) ? FromCodePage1252(bytes) : text;
}

std::u16string CutLyrics(std::u16string page) {
    // Counted from 1, the place is one more than what stands in front: so the unit behind the
    // marker goes, too. Where nothing would be left over, the step fails and the page stays.
    const std::size_t front = PlaceOf(kFrontMarker, page) + kFrontMarker.size();
    if (front <= page.size()) {
        page.erase(0, front);
    }
    const std::size_t back = PlaceOf(kBackMarker, page);
    if (back >= 2) {
        page.resize(back - 2);
    }
    struct Replacement {
        std::u16string_view what;
        std::u16string_view with;
    };
    // In this order. The first one leaves the ampersand of its entity; the quotation marks come as
    // themselves, or as three characters where UTF-8 was read in code page 1252.
    static constexpr std::array<Replacement, 9> kReplacements{{
        {u"nbsp;", u" "},
        {u"&amp;", u"&"},
        {u"\u00E2\u20AC\u2122", u"'"},
        {u"\u2019", u"'"},
        {u"\u00E2\u20AC\u02DC", u"'"},
        {u"\u2018", u"'"},
        {u"<br />", u""},
        {u"&quot;", u"\""},
        {u"\n", u"\r\n"},
    }};
    for (const auto& [what, with] : kReplacements) {
        page = ReplaceAll(page, what, with);
    }
    return page;
}

}  // namespace sarnel
