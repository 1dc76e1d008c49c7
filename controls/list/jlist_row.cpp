// Painting of one row: selection bar or clean background, image, text, and the dotted rectangle of
// the current row.
#include <algorithm>
#include <array>
#include <charconv>

#include "controls/list/jlist.h"
#include "controls/list/translatecolour.h"
#include "platform/base/rounding.h"
#include "platform/drawing/text_lines.h"

namespace sarnel {

using platform::Colour;
using platform::Rect;
using platform::Surface;

namespace {

// What a row shows as its text, behind what is there.
void AppendRowString(const ListRows& rows, Long index, bool numbered, std::u16string& to) {
    if (numbered) {
        std::array<char, 12> digits{};
        const auto end =
            std::to_chars(digits.data(), digits.data() + digits.size(), std::int64_t{index} + 1);
        to.append(digits.data(), end.ptr);
        to.append(u". ");
    }
    if (rows.Has(index)) {
        rows.TextAt(index).Units([&to](const auto& units) {
            for (const auto unit : units.substr(0, platform::kMostUnits)) {
                if (unit == 0) {
                    return;  // drawn without a length, a text ends at a zero
                }
                to.push_back(UnitOf(unit));
            }
        });
    }
}

}  // namespace

void JList::DrawRow(Long index, bool selected) {
    constexpr Long kFormat = 2080;  // a single line, nothing in it means anything
    if (!range_.Has(index)) {
        return;
    }
    Surface& face = Paint();
    // A row beyond the table of row tops is drawn at the table's last place.
    const Long row = static_cast<Long>(
        std::clamp<std::int64_t>(std::int64_t{index} - range_.first, 0, ListLayout::kMostRows - 1));
    const Long top = RowTop(row);
    // Beside an image that is taller, bar and text stand lower by a quarter of the image's side.
    // The bar's quarter is rounded, the text's is cut.
    const Long y =
        top + (layout_.IsImageTaller() ? platform::RoundHalfEven(layout_.ImageSide() / 4.0) : 0);
    const Long right = ScaleWidth() - RightReserve();
    if (selected) {
        face.StretchBlt({ImageColumn(), y, right, y + RowHeight()}, selectionBar_.Picture(),
                        {0, 0, double{1} * ScaleWidth(), double{1} * RowHeight()});
    } else {
        // Row 0 is erased one pixel higher than the others.
        face.BitBlt({0, index == 0 ? y - 1 : y, right, y + RowHeight()}, backDC_, {0, y - 1});
    }
    DrawImage(index, top);
    const Long textTop = top + (layout_.IsImageTaller() ? layout_.ImageSide() / 4 : 0);
    painted_.rowString.clear();
    AppendRowString(rows_, index, showNumeric_, painted_.rowString);
    windows_.Text().Draw(face, GetFont(), painted_.rowString,
                         {TextLeft(), textTop, right, textTop + RowHeight()}, kFormat,
                         InkOf(index, selected));
    if (index == index_.current) {
        DrawFocusRect(row);
    }
}

Colour JList::InkOf(Long index, bool selected) const {
    return OleTranslateColor(selected || index == index_.current ? colours_.selText
                                                                 : colours_.text);
}

void JList::Describe(Long index, PaintedRow& row) const {
    row.text.clear();
    AppendRowString(rows_, index, showNumeric_, row.text);
    row.selected = Selected(index);
    row.current = index == index_.current;
    row.twice = index == index_.focus;
    row.ink = InkOf(index, row.selected);
    row.rectColour = row.current && showSelectRect_ ? colours_.focusRect : 0;
    row.image = rows_.ShownImage(index);
}

void JList::DrawImage(Long index, Long top) {
    const Long number = rows_.ShownImage(index);
    if (number < 0 || number >= ImageCount()) {
        return;
    }
    const Surface* const image = images_[static_cast<std::size_t>(number)].get();
    if (image == nullptr) {
        return;
    }
    const Long side = layout_.ImageSide() != 0 ? layout_.ImageSide() : RowHeight() - 1;
    // A smaller image stands in the middle of the row.
    const Long y =
        layout_.ImageSide() != 0 && side < RowHeight() ? top + (RowHeight() - side) / 2 : top;
    Paint().StretchBlt({ListLayout::kImageLeft, y, ListLayout::kImageLeft + side, y + side}, *image,
                       {0, 0, double{1} * image->Width(), double{1} * image->Height()});
}

void JList::DrawFocusRect(Long row) {
    if (!showSelectRect_) {
        return;
    }
    const Long left = ShowItemImages() ? layout_.ImageWidth() + 2 : 0;
    const Long top = RowTop(row) + (layout_.IsImageTaller() ? layout_.ImageSide() / 4 : 0);
    const Long right = ScaleWidth() - (thumb_.shown ? ListThumb::kWidth : 0);
    Paint().Outline({left, top, right, top + RowHeight()}, colours_.focusRect, platform::PS_DOT);
}

}  // namespace sarnel
