// Which parts of a text are pictures, and where one sign of several characters begins and ends: a
// flag of two letters, a family held together by joiners, a hand of a colour, a key's cap.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace platform::desktop {

/// A part of a text, in units.
struct Part {
    std::size_t start = 0;
    std::size_t length = 0;
    bool operator==(const Part&) const = default;
};

/// All signs that are to be shown as pictures, from the left. Those which are letters as well, such
/// as a heart, count only where the text asks for the picture.
std::vector<Part> EmojiIn(std::u16string_view text);

}  // namespace platform::desktop
