#include "tests/unit/support/naive_list.h"

#include <algorithm>

namespace support {

namespace {

template <class T>
void Insert(std::vector<T>& column, Long index, const T& value) {
    const Long highest = static_cast<Long>(column.size()) - 1;
    if (column.empty() || index == -1 || index > highest) {
        column.push_back(value);
        return;
    }
    column.insert(column.begin() + std::max(index, 0), value);
}

template <class T>
void Remove(std::vector<T>& column, Long index) {
    const Long highest = static_cast<Long>(column.size()) - 1;
    if (highest <= 0) {
        column.assign(1, T());
        return;
    }
    if (index > highest || index == -1) {
        index = highest;
    }
    column.erase(column.begin() + std::max(index, 0));
}

}  // namespace

void NaiveList::RepaintIfFlag() {
    if (redrawFlag) {
        DisplayList();
    }
}

void NaiveList::AddItem(const std::u16string& itemText, const std::u16string& itemData,
                        Long itemIndex) {
    listCount += 1;
    if (itemIndex != -1) {
        newIndex = itemIndex;
    } else if (sorted) {
        newIndex = InsertSorted(itemText);
    } else {
        newIndex = listCount - 1;
    }
    Insert(text, newIndex, itemText);
    Insert(data, newIndex, itemData);
    selected.insert(selected.begin() + std::clamp<Long>(newIndex, 0, listCount), false);
    if (showItemImages) {
        Insert(image, newIndex, -1);
    }
    if (listIndex > 0 || selCount != 0) {
        listIndex += listIndex >= newIndex ? 1 : 0;
        focusIndex += focusIndex >= newIndex ? 1 : 0;
        caretIndex += caretIndex >= newIndex ? 1 : 0;
    }
    if (listCurrent > 0 && listCurrent >= newIndex) {
        listCurrent += 1;
    }
    if (displayFirst == -1) {
        displayFirst = 0;
    }
    RepaintIfFlag();
}

void NaiveList::RemoveItem(Long itemIndex) {
    if (listCount <= 0 || !HasSlot(itemIndex)) {
        return;
    }
    listCount -= 1;
    if (At(selected, itemIndex)) {
        selCount -= 1;
    }
    Remove(text, itemIndex);
    Remove(data, itemIndex);
    selected.erase(selected.begin() + itemIndex);
    Remove(image, itemIndex);
    if (listIndex > 0 && listIndex >= itemIndex) {
        listIndex -= 1;
    }
    if (listCurrent == itemIndex) {
        listCurrent = -1;
    } else if (listCurrent >= 0 && listCurrent > itemIndex) {
        listCurrent -= 1;
    }
    if (caretIndex > 0 && caretIndex >= itemIndex) {
        caretIndex -= 1;
    }
    if (focusIndex > 0 && focusIndex >= itemIndex) {
        focusIndex -= 1;
    }
    newIndex = -1;
    RepaintIfFlag();
}

void NaiveList::Clear() {
    text.assign(1, u"");
    data.assign(1, u"");
    selected.assign(1, false);
    image.assign(1, 0);
    selCount = listCount = focusIndex = listIndex = 0;
    caretIndex = displayFirst = displayLast = newIndex = -1;
    redrawFlag = true;
}

void NaiveList::SetListIndex(Long value) {
    listIndex = focusIndex = value;
    DisplayList();
}

void NaiveList::SetListCurrent(Long value) {
    listCurrent = value;
    RepaintIfFlag();
}

void NaiveList::SetListData(Long index, const std::u16string& value) {
    if (HasSlot(index)) {
        At(data, index) = value;
    }
}

void NaiveList::SetSelected(Long index, bool value) {
    const bool former = HasSlot(index) && At(selected, index);
    if (HasSlot(index)) {
        At(selected, index) = value;
    }
    caretIndex = index;
    if (former && !value) {
        selCount -= 1;
    }
    if (!former && value) {
        selCount += 1;
    }
    RepaintIfFlag();
}

void NaiveList::SetImage(Long index, Long value) {
    At(image, index) = value;
    if (index >= displayFirst && index <= displayLast) {
        RepaintIfFlag();
    }
}

void NaiveList::SetRedrawFlag(bool value) {
    redrawFlag = value;
    RepaintIfFlag();
}

void NaiveList::SetSorted(bool value) {
    sorted = value;
    if (value && !sortedLoaded) {
        Sort(true);
    }
    if (!value) {
        sortedLoaded = false;
    }
}

void NaiveList::SetShowItemImages(bool value) {
    showItemImages = value;
    RepaintIfFlag();
}

void NaiveList::ClearOrSelect(Long start, Long end, bool flag) {
    if (static_cast<long long>(start) * end < 0) {
        return;
    }
    if (start >= 0 && end >= 0 && start > end) {
        std::swap(start, end);
    }
    end = std::min(end, listCount - 1);
    if (start == -1 && end == -1) {
        start = 0;
        end = listCount - 1;
    }
    if (listCount < 1 || (!flag && selCount < 1)) {
        return;
    }
    Long changing = 0;
    for (Long i = start; i <= end; ++i) {
        changing += At(selected, i) != flag ? 1 : 0;
        At(selected, i) = flag;
    }
    if (end - start + 1 < listCount) {
        selCount += flag ? changing : -changing;
    } else {
        selCount = flag ? listCount : 0;
    }
    DisplayList();
}

void NaiveList::DisplayList() {
    if (displayFirst == -1) {
        return;
    }
    if (listCount <= visibleRows) {
        displayFirst = 0;
        displayLast = listCount - 1;
    } else if (displayFirst <= listCount - 1 && listCount - 1 <= displayLast) {
        displayLast = listCount - 1;
        displayFirst = listCount - visibleRows;
    } else {
        displayLast = displayFirst + visibleRows - 1;
    }
    topIndex = displayFirst;
}

void NaiveList::DisplayFrom(Long index) {
    if (listCount <= visibleRows) {
        return;
    }
    index = std::clamp(index, 0, listCount - 1);
    displayLast = index + visibleRows - 1;
    if (displayLast <= listCount - 1) {
        displayFirst = index;
    } else {
        displayLast = listCount - 1;
        displayFirst = displayLast - visibleRows + 1;
    }
    DisplayList();
}

void NaiveList::HighlightCurrent() {
    if (listCurrent != -1) {
        DisplayFrom(HalfEven(2 * listCurrent - visibleRows));
    }
}

void NaiveList::AdjustDisplayRange() {
    if (focusIndex < displayFirst) {
        displayFirst = focusIndex;
        displayLast = displayFirst + visibleRows - 1 > listCount ? listCount - 1
                                                                 : focusIndex + visibleRows - 1;
        DisplayList();
    } else if (focusIndex > displayLast) {
        displayLast = focusIndex;
        displayFirst = std::max(displayLast - visibleRows + 1, 0);
        DisplayList();
    }
}

void NaiveList::Refresh() {
    if (displayLast > listCount - 1) {
        displayLast = listCount - 1;
        displayFirst = std::max(displayLast - visibleRows + 1, 0);
    }
    RepaintIfFlag();
}

}  // namespace support
