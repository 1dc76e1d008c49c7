#include "host/lyrics/address.h"

#include <algorithm>

#include "platform/base/text.h"

namespace veldrin {
namespace {

using Note = LyricsAddress::Note;
using Page = LyricsAddress::Page;

constexpr std::string_view kRead = "/winamp03/plugin/?artist=";
constexpr std::string_view kEdit = "/winamp03/edit/?artist=";
constexpr std::string_view kTitle = "&title=";
constexpr std::string_view kNew = "&new=1";
constexpr std::string_view kSaved = "&note=saved";
constexpr std::string_view kRemoved = "&note=removed";

constexpr std::string_view kDigits = "0123456789ABCDEF";

Song DecodedAs(Page page, std::string_view artist, std::string_view title) {
    const auto decode = page == Page::kRead ? platform::PercentDecode : FormDecode;
    return {decode(artist), decode(title)};
}

Note NoteOf(std::string_view text) {
    return text == kSaved ? Note::kSaved : text == kRemoved ? Note::kRemoved : Note::kNone;
}

}  // namespace

std::string FormDecode(std::string_view text) {
    std::string blanks(text);
    std::replace(blanks.begin(), blanks.end(), '+', ' ');
    return platform::PercentDecode(blanks);
}

std::string PercentEncode(std::string_view text) {
    std::string encoded;
    for (const char c : text) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                             (c >= 'a' && c <= 'z') ||
                             std::string_view("-._~").find(c) != std::string_view::npos;
        if (isPlain) {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded.append({'%', kDigits[byte / 16U], kDigits[byte % 16U]});
        }
    }
    return encoded;
}

std::optional<LyricsAddress> ParseAddress(std::string_view target) {
    LyricsAddress address;
    if (target.starts_with(kEdit)) {
        address.page = Page::kEdit;
        target.remove_prefix(kEdit.size());
        const std::size_t end = target.rfind(kNew);
        address.whole = end != std::string_view::npos;
        if (address.whole) {
            address.note = NoteOf(target.substr(end + kNew.size()));
            target = target.substr(0, end);
        }
    } else if (target.starts_with(kRead)) {
        target.remove_prefix(kRead.size());
    } else {
        return std::nullopt;
    }
    const std::size_t at = target.rfind(kTitle);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    address.song = DecodedAs(address.page, target.substr(0, at), target.substr(at + kTitle.size()));
    return address;
}

std::string EditTarget(const Song& song, Note note) {
    std::string target(kEdit);
    target.append(PercentEncode(song.artist)).append(kTitle).append(PercentEncode(song.title));
    target.append(kNew);
    return target.append(note == Note::kSaved     ? kSaved
                         : note == Note::kRemoved ? kRemoved
                                                  : std::string_view());
}

bool StandsFor(const LyricsAddress& asked, const Song& name) {
    const Song onItsWay = DecodedAs(asked.page, name.artist, name.title);
    if (asked.song == name || asked.song == onItsWay) {
        return true;
    }
    return !asked.whole && asked.song.artist == onItsWay.artist &&
           onItsWay.title.starts_with(asked.song.title + "#");
}

}  // namespace veldrin
