// Painting of one row: selection bar or clean background, image, text, and the dotted rectangle of
// the current row.
#include <algorithm>
#include <array>
#include <charconv>

#include "controls/list/jlist.h"
#include "controls/list/translatecolour.h"
#include "platform/base/rounding.h"

namespace sarnel {

using platform::Colour;
using platform::Rect;
using platform::Surface;

void JList::DrawRow(Long index, bool selected) {
    constexpr Long kFormat = 2080;  // a single line, nothing in it means anything
    if (!IsRowVisible(index)) {
        return;
    }
    Surface& face = Paint();
    // A row behind the table of row tops stays where the last one of it lies.
    const Long row = static_cast<Long>(
        std::clamp<std::int64_t>(std::int64_t{index} - displayFirst_, 0, kMostRows - 1));
    const Long top = RowTop(row);
    // With a taller image bar and text stand a quarter down; only the bar's quarter is rounded.
    const Long y = top + (IsImageTaller() ? platform::RoundHalfEven(ImageSide() / 4.0) : 0);
    const Long right = ScaleWidth() - rightReserve_;
    if (selected) {
        face.StretchBlt({imageColumn_, y, right, y + rowHeight_}, selectionBar_.picture,
                        {0, 0, double{1} * ScaleWidth(), double{1} * rowHeight_});
    } else {
        // Row 0 is erased one pixel higher than the others.
        face.BitBlt({0, index == 0 ? y - 1 : y, right, y + rowHeight_}, backDC_, {0, y - 1});
    }
    DrawImage(index, top);
    const Long textTop = top + (IsImageTaller() ? ImageSide() / 4 : 0);
    rowString_.clear();
    AppendRowString(index, rowString_);
    windows_.Text().Draw(face, GetFont(), rowString_,
                         {textLeft_, textTop, right, textTop + rowHeight_}, kFormat,
                         InkOf(index, selected));
    if (index == listCurrent_) {
        DrawFocusRect(row);
    }
}

Colour JList::InkOf(Long index, bool selected) const {
    return OleTranslateColor(selected || index == listCurrent_ ? colours_.selText : colours_.text);
}

void JList::AppendRowString(Long index, std::u16string& to) const {
    if (showNumeric_) {
        std::array<char, 12> digits{};
        const auto end =
            std::to_chars(digits.data(), digits.data() + digits.size(), std::int64_t{index} + 1);
        to.append(digits.data(), end.ptr);
        to.append(u". ");
    }
    if (itemText_.Has(index)) {
        itemText_[index].Units([&to](const auto& units) {
            for (const auto unit : units) {
                if (unit == 0) {
                    return;  // drawn without a length, a text ends at a zero
                }
                to.push_back(UnitOf(unit));
            }
        });
    }
}

const Surface* JList::ImageOf(Long index) const {
    if (!showItemImages_ || !itemImage_.Has(index)) {
        return nullptr;
    }
    const Long image = itemImage_[index];
    return image >= 0 && image < ImageCount() ? images_[static_cast<std::size_t>(image)].get()
                                              : nullptr;
}

void JList::DrawImage(Long index, Long top) {
    const Surface* const image = ImageOf(index);
    if (image == nullptr) {
        return;
    }
    const Long side = ImageSide() != 0 ? ImageSide() : rowHeight_ - 1;
    // A smaller image stands in the middle of the row.
    const Long y = ImageSide() != 0 && side < rowHeight_ ? top + (rowHeight_ - side) / 2 : top;
    Paint().StretchBlt({kImageLeft, y, kImageLeft + side, y + side}, *image,
                       {0, 0, double{1} * image->Width(), double{1} * image->Height()});
}

void JList::DrawFocusRect(Long row) {
    if (!showSelectRect_) {
        return;
    }
    const Long left = showItemImages_ ? ImageWidth() + 2 : 0;
    const Long top = RowTop(row) + (IsImageTaller() ? ImageSide() / 4 : 0);
    const Long right = ScaleWidth() - (scrollBarShown_ ? ListThumb::kWidth : 0);
    Paint().Outline({left, top, right, top + rowHeight_}, colours_.focusRect, platform::PS_DOT);
}

}  // namespace sarnel
