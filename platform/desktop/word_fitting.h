// Whether the ink of a shaped line stays within the line's height, and what makes it.
#pragma once

#include <QString>
#include <QTextLine>

#include "platform/desktop/text_shaping.h"
#include "platform/desktop/word_fonts.h"

namespace platform::desktop {

struct Fitting {
    bool fits = true;
    int drop = 0;  ///< pixels by which the whole line is to be moved down, below 0: up
    /// Words that do not fit have become smaller, or have been moved, in the looks: the line is to
    /// be shaped again.
    bool changed = false;
};

/// A line too high by faint rims alone fits: they are worth neither a smaller nor a moved word.
Fitting FitWords(const QString& text, const QFont& font, const QTextLine& shaped,
                 const LineRoom& room, WordLooks& looks);

}  // namespace platform::desktop
