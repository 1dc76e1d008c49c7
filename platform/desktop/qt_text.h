// Text at the toolkit's edge. A lone surrogate, which stands for a byte that is no UTF-8, is shown
// as U+FFFD: half of a character must reach neither the window server nor a font.
#pragma once

#include <QString>
#include <cstddef>
#include <string_view>

namespace platform::desktop {

/// The text with each such unit replaced; all units keep their places.
QString WholeCharacters(std::u16string_view text);
/// The same on one line: control characters become blanks.
QString OneLine(std::u16string_view text);
/// The same, cut after kLongestCaption units, or one before: for what the desktop is to show. The
/// window server breaks the connection when it is sent too much at once.
QString Caption(std::u16string_view text);
inline constexpr std::size_t kLongestCaption = 2000;

}  // namespace platform::desktop
