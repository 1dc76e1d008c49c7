// How long lines are and where those of a text end. Pages and titles of megabytes are laid out by
// it, so what is far behind all that can be seen is not shaped: its width is estimated.
#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "platform/driver.h"

namespace platform {

/// Units of a line that are drawn: no surface is wide enough for more. That many are measured, too,
/// and those behind them count as much as these do on average.
inline constexpr std::size_t kMostUnits = 8192;

/// Size of a text as one line. Exact up to kMostUnits.
Size MeasureLine(const Driver& driver, const Font& font, std::u16string_view line);

/// Lines of a text that is broken at its line ends (CR LF, CR or LF) and, with a width above 0,
/// between words (a word too long for a line is broken inside, a surrogate pair never). Each is a
/// view into `text` without its line end and without the blanks at which it was broken. No more of
/// them than `most`. Once some thousand different words have been measured, others are taken for as
/// wide as these are on average.
std::vector<std::u16string_view> BreakLines(
    const Driver& driver, const Font& font, std::u16string_view text, Long width,
    std::size_t most = std::numeric_limits<std::size_t>::max());

}  // namespace platform
