// Where the glyphs of a line stand that is set in a finer size: the places of the plain size hold
// everywhere, so that carets, menus and columns stay where they are, but hinting makes letters of
// either size wider or narrower than the other's. Letters and words keep the spacing of the finer
// size as long as they stay within a unit of their places. Else the gap in front of a word
// gives or takes some stored pixels, and only in a word that is too long for that letters do.
#pragma once

#include <vector>

namespace platform::desktop {

struct GlyphPlace {
    double plain = 0;  ///< units
    double fine = 0;   ///< stored pixels; where the finer shaping has it
    bool blank = false;
    double shift = 0;  ///< the answer: stored pixels, whole ones, to the right
};

struct LineMeasures {
    int density = 1;
    double fineLead = 0;   ///< ink in front of the line, stored pixels; below 0: none
    double fineWidth = 0;  ///< of the line as its own shaping has it
    double room = 0;       ///< stored pixels that it may take
    bool joined = false;   ///< letters hang together: none may be drawn apart from the next
};

/// Fills in the shifts; the glyphs stand in the order of their plain places.
void PlaceGlyphs(std::vector<GlyphPlace>& glyphs, const LineMeasures& line);

}  // namespace platform::desktop
