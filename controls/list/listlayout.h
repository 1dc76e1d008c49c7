// Where the rows of a list stand, in pixels: row heights and tops, and the columns of a row. It is
// measured when fonts, sizes or images change, and kept until then.
#pragma once

#include <array>

#include "platform/base/types.h"

namespace sarnel {

struct ListLayout {
    using Long = platform::Long;

    static constexpr Long kMostRows = 51;  ///< entries of the table of row tops
    static constexpr Long kImageLeft = 2;

    Long itemImageSize = 0;  ///< the property, any number
    bool hasImages = false;  ///< of the last PlaceRows
    Long rowHeight = 0;      ///< of a row's text
    Long visibleRows = 1;    ///< that fit the list's height
    Long textLeft = 0;
    Long imageColumn = 0;   ///< width of the images' column, 0 without one
    Long rightReserve = 0;  ///< what rows leave free for the scroll strip
    std::array<Long, kMostRows> rowTop{};

    /// Side of the square that an image is scaled to; 0 is the text's height.
    Long ImageSide() const;
    Long ImageWidth() const { return ImageSide() != 0 ? ImageSide() : rowHeight; }
    bool IsImageTaller() const { return hasImages && rowHeight < ImageSide(); }
    /// Distance of rows.
    Long RowPitch() const { return IsImageTaller() ? ImageSide() : rowHeight; }
    /// Top of a displayed row, 0 to 50; else 0.
    Long RowTop(Long row) const;
    /// The displayed row at a height; below the last row's top it is the last one.
    Long RowFromY(float y) const;
    /// Where rows of this height stand in a list so high, and their texts. The images' column stays
    /// as it is.
    void PlaceRows(Long listHeight, bool images);
};

}  // namespace sarnel
