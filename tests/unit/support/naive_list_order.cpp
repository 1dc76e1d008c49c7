// Search, sorted insertion and sorting of the plain list.
#include <algorithm>

#include "tests/unit/support/naive_list.h"

namespace support {

namespace {

constexpr Long kThreshold = 4;

std::u16string LowerAscii(std::u16string text) {
    for (char16_t& unit : text) {
        unit = static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 32 : unit);
    }
    return text;
}

}  // namespace

Long HalfEven(Long twice) {
    const Long floor = twice >= 0 ? twice / 2 : (twice - 1) / 2;
    if (twice == floor * 2) {
        return floor;
    }
    return floor % 2 == 0 ? floor : floor + 1;
}

Long NaiveList::InsertSorted(const std::u16string& itemText) const {
    if (listCount == 1) {
        return 0;
    }
    Long lo = 0;
    Long hi = static_cast<Long>(text.size()) - 2;
    while (true) {
        const Long mid = HalfEven(lo + hi);
        if (itemText == At(text, mid)) {
            return mid;
        }
        if (lo > hi) {
            return lo;
        }
        if (At(text, mid) < itemText) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
}

Long NaiveList::FindDataIndex(std::u16string needle, bool caseSensitive) const {
    const auto candidate = [&](Long row) {
        return caseSensitive ? At(data, row) : LowerAscii(At(data, row));
    };
    needle = caseSensitive ? needle : LowerAscii(needle);
    if (!sorted) {
        for (Long row = 0; row < listCount; ++row) {
            if (candidate(row) == needle) {
                return row;
            }
        }
        return -1;
    }
    Long lo = 0;
    Long hi = listCount - 1;
    while (true) {
        const Long mid = (lo + hi) / 2;
        if (candidate(mid) == needle) {
            return mid;
        }
        if (lo > hi) {
            return -1;
        }
        if (candidate(mid) < needle) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
}

void NaiveList::SwapRows(Long a, Long b) {
    std::swap(At(text, a), At(text, b));
    std::swap(At(data, a), At(data, b));
    const bool flag = At(selected, a);
    At(selected, a) = At(selected, b);
    At(selected, b) = flag;
    if (showItemImages && std::max(a, b) < static_cast<Long>(image.size())) {
        std::swap(At(image, a), At(image, b));
    }
}

void NaiveList::QuickSortRange(Long lo, Long hi) {
    if (hi - lo <= kThreshold) {
        return;
    }
    const Long mid = HalfEven(lo + hi);
    if (At(text, lo) > At(text, mid)) SwapRows(lo, mid);
    if (At(text, lo) > At(text, hi)) SwapRows(lo, hi);
    if (At(text, mid) > At(text, hi)) SwapRows(mid, hi);
    Long j = hi - 1;
    SwapRows(mid, j);
    Long i = lo;
    const std::u16string pivot = At(text, j);
    while (true) {
        i += 1;
        while (At(text, i) < pivot) i += 1;
        j -= 1;
        while (At(text, j) > pivot) j -= 1;
        if (j < i) {
            break;
        }
        SwapRows(i, j);
    }
    SwapRows(i, hi - 1);
    QuickSortRange(lo, j);
    QuickSortRange(i + 1, hi);
}

void NaiveList::InsertionSortRange(Long lo, Long hi) {
    for (Long i = lo + 1; i <= hi; ++i) {
        const std::u16string held = At(text, i);
        Long j = i;
        while (j > lo && At(text, j - 1) > held) {
            At(text, j) = At(text, j - 1);
            At(data, j) = At(data, j - 1);
            At(selected, j) = At(selected, j - 1);
            if (showItemImages && j < static_cast<Long>(image.size())) {
                At(image, j) = At(image, j - 1);
            }
            j -= 1;
        }
        At(text, j) = held;
    }
}

void NaiveList::Sort(bool ascending) {
    QuickSortRange(0, listCount - 1);
    InsertionSortRange(0, listCount - 1);
    if (!ascending) {
        Reverse();
    }
    displayFirst = 0;
    displayLast = std::min(listCount, visibleRows) - 1;
    caretIndex = -1;
    listIndex = 0;
    focusIndex = 0;
    DisplayList();
}

void NaiveList::Reverse() {
    std::reverse(text.begin(), text.begin() + listCount);
}

}  // namespace support
