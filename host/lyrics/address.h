// The addresses of the lyrics service, from what the component and browsers send to a song. Nobody
// escapes what is in a name but for its blanks, so the query is not read as queries are: an artist
// may hold "&" and "?".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/lyrics/song.h"

namespace veldrin {

/// As platform::PercentDecode, with blanks for "+": the way of forms and of the edit address.
std::string FormDecode(std::string_view text);

/// Everything but letters, digits and "-._~" escaped.
std::string PercentEncode(std::string_view text);

struct LyricsAddress {
    enum class Page { kRead, kEdit };
    enum class Note { kNone, kSaved, kRemoved };

    Page page = Page::kRead;
    Song song;
    /// False if an edit address lacks its end: a browser cuts addresses at a "#".
    bool whole = true;
    Note note = Note::kNone;  ///< what the edit page has to say
};

/// `target`: path and query behind the base address, as they came. Nothing if no page is there.
std::optional<LyricsAddress> ParseAddress(std::string_view target);

/// The edit page of a song behind the base address, in which everything is escaped.
std::string EditTarget(const Song& song, LyricsAddress::Note note = LyricsAddress::Note::kNone);

/// Whether `asked`, as read from an address of that page, may stand for the song of that name:
/// what a name loses on its way, such as a plus sign, does not count.
bool StandsFor(const LyricsAddress& asked, const Song& name);

}  // namespace veldrin
