// The stored properties of a list.
#pragma once

#include "platform/base/types.h"
#include "platform/driver.h"

namespace sarnel {

/// Each a colour of the platform, or a code of the system's colours.
struct ListColours {
    platform::Colour focusRect = 0;
    platform::Colour sel1 = 0x606060;
    platform::Colour sel2 = 0xE0E0E0;
    platform::Colour selText = 0;
    platform::Colour text = 0;
    platform::Colour thumbBorder = 0xE0E0E0;
    platform::Colour thumb1 = 0;
    platform::Colour thumb2 = 0x909090;
};

/// What a list persists on its window's static layout; what is not named is at its default.
struct JListStored {
    using Long = platform::Long;

    bool sorted = true;
    bool showNumeric = true;
    bool showItemImages = false;
    platform::Font listFont = {};
    platform::Colour backColor = 0x606060;
    ListColours colours = {};
    bool dragEnabled = false;
    bool enabled = true;
    Long itemImageSize = 0;
    Long listCurrent = -1;
    Long newIndex = -1;
    bool redrawFlag = true;
    Long selCount = 0;
    bool showSelectRect = true;
    Long topIndex = 0;
};

}  // namespace sarnel
