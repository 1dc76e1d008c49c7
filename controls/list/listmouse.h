// Where a list stands with the mouse and with the two modifier keys.
#pragma once

#include "platform/base/keys.h"
#include "platform/base/types.h"

namespace sarnel {

struct ListMouse {
    using Long = platform::Long;

    // Zones and modes.
    static constexpr Long kRows = 1;
    static constexpr Long kTrack = 2;
    static constexpr Long kThumb = 3;
    static constexpr Long kNoPress = 0;
    static constexpr Long kOnRow = 1;
    static constexpr Long kAboveThumb = 2;  ///< pressed on the track
    static constexpr Long kBelowThumb = 3;
    static constexpr Long kHoldsThumb = 4;

    float x = 0;    ///< of the last move, in pixels
    float y = 0;    ///< of the last move or of the last press of any but the right button
    Long zone = 0;  ///< the last one that the pointer was in; outside all of them it stays
    Long mode = kNoPress;
    bool inside = false;     ///< the pointer is over the list, which waits to hear that it left
    bool rightDown = false;  ///< the last press was the right button
    Long clickButtons = 0;   ///< whose release makes a click: all but a double click's second one
    // As the last key event told. The press of a button does not bring them up to date.
    bool shiftDown = false;
    bool ctrlDown = false;
    Long shiftAnchor = 0;  ///< the row where an extension by Shift started
    // The rubber band.
    Long bandStart = 0;
    Long bandEnd = 0;
    Long lastHover = -1;         ///< the row that the band last reached
    bool dragArmed = false;      ///< the present press draws no band
    bool dragStored = false;     ///< what dragArmed becomes when a row is pressed
    bool edgeScrolling = false;  ///< the band scrolls, as the pointer has left the list
    // The thumb.
    bool thumbDragging = false;
    bool thumbLoopActive = false;
    float thumbGrabOffset = 0;  ///< from the thumb's top to the pointer
    float thumbLastY = 0;       ///< `y` at the last step

    /// Takes the modifiers that a key came with.
    void KeyModifiers(Long shift) {
        shiftDown = (shift & platform::kShiftBit) != 0;
        ctrlDown = (shift & platform::kCtrlBit) != 0;
    }
};

}  // namespace sarnel
