// Where the lines of a text end. It takes time that grows with the text and no faster, whatever the
// text is: pages of megabytes are laid out by it.
#pragma once

#include <string_view>
#include <vector>

#include "platform/driver.h"

namespace platform {

/// Lines of a text that is broken at its line ends (CR LF, CR or LF) and, with a width above 0,
/// between words (a word too long for a line is broken inside, a surrogate pair never). Each is a
/// view into `text` without its line end and without the blanks at which it was broken.
std::vector<std::u16string_view> BreakLines(const Driver& driver, const Font& font,
                                            std::u16string_view text, Long width);

}  // namespace platform
