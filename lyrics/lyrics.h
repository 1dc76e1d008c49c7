// The words of the current item: fetched from the lyrics service while the window waits, cut out of
// the page that came, and put into txtLyrics. Nothing is kept between two fetches. Every step that
// fails is skipped, and only a missing connection is told to the user, in the box itself.
//
// What a row shows is all that is known of an item: by convention artist, " - ", title.
#pragma once

#include <string>
#include <string_view>

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

/// Whether there is a way to the lyrics service.
bool IsOnline();

/// Fills txtLyrics for the current row of the playlist: a heading, an empty line, the words;
/// nothing if there is no such row. The Tag of the box becomes the row's text. With `reload` no
/// copy that was kept of the page will do.
void ShowLyrics(bool reload);

/// The words that the service has, with CR LF between lines. Empty if the page did not come.
std::u16string FetchLyrics(std::u16string_view artist, std::u16string_view title, bool reload);

/// Opens the page on which the words can be changed, in the user's browser.
void OpenLyricsEditor(std::u16string_view artist, std::u16string_view title);

/// A row's text, parted at the first " - ".
struct ArtistAndTitle {
    std::u16string artist;  ///< empty without a " - "
    std::u16string title;   ///< without a " - ": all but the first three units
};
ArtistAndTitle SplitName(std::u16string_view name);

/// The bytes of a page as text: UTF-8 if they are nothing else, else code page 1252.
std::u16string DecodePage(std::string_view bytes);

/// The words in a page: what stands between its two markers, less the unit behind the first and the
/// one in front of the second, with its entities and line ends put right. A page without markers
/// loses its first 17 units and nothing else.
std::u16string CutLyrics(std::u16string page);

/// Moves sldSkin(2) by so many lines, as far as it goes, and txtLyrics with it.
void ScrollLyricsBy(Long lines);
inline constexpr Long kLyricsStep = 3;  ///< of the wheel and of the keys, in lines

/// Brings txtLyrics to where sldSkin(2) stands.
void ScrollLyrics();

/// The text of txtLyrics has changed: its slider is shown if the text is higher than the box.
void txtLyrics_Change();

}  // namespace sarnel
