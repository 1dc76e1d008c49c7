// The list's rules once more, written down as plainly as they can be told: four vectors, no gap, no
// sharing, one statement a rule. The real list is run against it with the same random operations.
#pragma once

#include <string>
#include <vector>

#include "platform/base/types.h"

namespace support {

using platform::Long;

/// An element of a column; raises an error outside it.
template <class Column>
decltype(auto) At(Column& column, Long index) {
    return column.at(static_cast<std::size_t>(index));
}

class NaiveList {
  public:
    explicit NaiveList(Long rowsThatFit) : visibleRows(rowsThatFit) {}

    std::vector<std::u16string> text{u""};
    std::vector<std::u16string> data{u""};
    std::vector<bool> selected{false};
    std::vector<Long> image{0};

    Long listCount = 0;
    Long listIndex = 0;
    Long listCurrent = -1;
    Long newIndex = -1;
    Long selCount = 0;
    Long focusIndex = 0;
    Long caretIndex = -1;
    Long displayFirst = -1;
    Long displayLast = -1;
    Long topIndex = 0;
    bool redrawFlag = true;
    bool sorted = false;
    bool sortedLoaded = false;
    bool showItemImages = false;
    Long visibleRows;

    void AddItem(const std::u16string& itemText, const std::u16string& itemData, Long itemIndex);
    void RemoveItem(Long itemIndex);
    void Clear();
    void SetListIndex(Long value);
    void SetListCurrent(Long value);
    void SetListData(Long index, const std::u16string& value);
    void SetSelected(Long index, bool value);
    void SetImage(Long index, Long value);
    void SetRedrawFlag(bool value);
    void SetSorted(bool value);
    void SetShowItemImages(bool value);
    void ClearOrSelect(Long start, Long end, bool flag);
    Long FindDataIndex(std::u16string needle, bool caseSensitive) const;
    void Sort(bool ascending);
    void Reverse();
    void DisplayList();
    void DisplayFrom(Long index);
    void HighlightCurrent();
    void AdjustDisplayRange();
    void Refresh();

    bool HasSlot(Long index) const { return index >= 0 && index < static_cast<Long>(text.size()); }

  private:
    Long InsertSorted(const std::u16string& itemText) const;
    void SwapRows(Long a, Long b);
    void QuickSortRange(Long lo, Long hi);
    void InsertionSortRange(Long lo, Long hi);
    void RepaintIfFlag();
};

/// Halves go to the even neighbour.
Long HalfEven(Long twice);

}  // namespace support
