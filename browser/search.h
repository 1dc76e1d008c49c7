// The search panel's rows: those of the playlist whose text contains what the user has typed, in
// the order of the playlist. There is no index: each change of the text walks the whole playlist.
#pragma once

#include <string_view>

namespace sarnel {

/// Fills lst_Search with the rows whose text contains the filter, ignoring case: their text, and
/// their place in the playlist in decimal as data. An empty filter finds all. The first hit is
/// selected.
void RefreshSearch(std::u16string_view filter);

/// Moves the selection by one hit, up (-1) or down (1), as far as there are any; it stays on show.
void StepSearch(int by);

/// Plays the selected hit and closes the panel; nothing without a hit.
void PlayHit();

}  // namespace sarnel
