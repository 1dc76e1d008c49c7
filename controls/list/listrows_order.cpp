// Search, sorted insertion and sorting.
#include <compare>
#include <utility>

#include "controls/list/listrows.h"
#include "platform/base/rounding.h"
#include "platform/base/text.h"

namespace sarnel {

namespace {

// Halves go to the even neighbour, so (0 + 1) / 2 is 0 and (1 + 2) / 2 is 2.
Long Middle(Long lo, Long hi) {
    return platform::RoundHalfEven((static_cast<double>(lo) + static_cast<double>(hi)) / 2);
}

// Letters are the same if their capitals are. In the order, which matters to a list that sorts,
// those of ASCII stand as small ones: behind "_".
char16_t Folded(char16_t unit) {
    return platform::LowerAscii(platform::UpperUnit(unit));
}

std::u16string Folded(std::u16string_view text) {
    std::u16string folded(text);
    for (char16_t& unit : folded) {
        unit = Folded(unit);
    }
    return folded;
}

bool SameIgnoringCase(const RowText& candidate, std::u16string_view folded) {
    return candidate.Size() == folded.size() && candidate.Units([&](const auto& units) {
        for (std::size_t i = 0; i < folded.size(); ++i) {
            if (Folded(UnitOf(units[i])) != folded[i]) {
                return false;
            }
        }
        return true;
    });
}

}  // namespace

// Where a new row belongs; the count has it already, the columns do not.
Long ListRows::SortedPlace(std::u16string_view text) const {
    if (listCount_ == 1) {
        return 0;
    }
    Long lo = 0;
    Long hi = itemText_.Size() - 2;
    for (;;) {
        const Long mid = Middle(lo, hi);
        // The test for equality comes before the exit, and may then meet the spare slot.
        const auto order =
            itemText_.Has(mid) ? itemText_[mid].Compare(text) : std::strong_ordering::less;
        if (std::is_eq(order)) {
            return mid;
        }
        if (lo > hi) {
            return lo;
        }
        if (std::is_lt(order)) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
}

Long ListRows::FindDataIndex(std::u16string_view sStringToMatch, bool CaseSensitive) const {
    const std::u16string needle =
        CaseSensitive ? std::u16string(sStringToMatch) : Folded(sStringToMatch);
    if (!sorted_) {
        for (Long i = 0; i < listCount_ && itemData_.Has(i); ++i) {
            const RowText& candidate = itemData_[i];
            if (CaseSensitive
                    ? candidate.Size() == needle.size() && std::is_eq(candidate.Compare(needle))
                    : SameIgnoringCase(candidate, needle)) {
                return i;
            }
        }
        return -1;
    }
    Long lo = 0;
    Long hi = listCount_ - 1;
    for (;;) {
        const Long mid = (lo + hi) / 2;
        const std::u16string data = ListData(mid);
        const std::u16string candidate = CaseSensitive ? data : Folded(data);
        // As in SortedPlace: on an empty list the empty needle meets the spare slot, row 0.
        if (candidate == needle && itemData_.Has(mid)) {
            return mid;
        }
        if (lo > hi) {
            return -1;
        }
        if (candidate < needle) {
            lo = mid + 1;
        } else {
            hi = mid - 1;
        }
    }
}

void ListRows::Sort(bool SortAscending) {
    constexpr Long kLeftToFinalPass = 4;
    QuickSortRange(kLeftToFinalPass, 0, listCount_ - 1);
    InsertionSortRange(0, listCount_ - 1);
    if (!SortAscending) {
        ReverseStringArray();
    }
}

void ListRows::SwapRows(Long a, Long b) {
    if (a == b) {
        return;
    }
    std::swap(itemText_[a], itemText_[b]);
    std::swap(itemData_[a], itemData_[b]);
    std::swap(itemSelected_[a], itemSelected_[b]);
    if (keepsImages_ && itemImage_.Has(a) && itemImage_.Has(b)) {
        std::swap(itemImage_[a], itemImage_[b]);
    }
}

void ListRows::QuickSortRange(Long threshold, Long lo, Long hi) {
    if (hi - lo <= threshold) {
        return;
    }
    const Long mid = Middle(lo, hi);
    if (itemText_[lo] > itemText_[mid]) {
        SwapRows(lo, mid);
    }
    if (itemText_[lo] > itemText_[hi]) {
        SwapRows(lo, hi);
    }
    if (itemText_[mid] > itemText_[hi]) {
        SwapRows(mid, hi);
    }
    Long j = hi - 1;
    SwapRows(mid, j);
    Long i = lo;
    const RowText pivot = itemText_[j].Copy();
    for (;;) {
        do {
            ++i;
        } while (itemText_[i] < pivot);
        do {
            --j;
        } while (itemText_[j] > pivot);
        if (j < i) {
            break;
        }
        SwapRows(i, j);
    }
    SwapRows(i, hi - 1);
    QuickSortRange(threshold, lo, j);
    QuickSortRange(threshold, i + 1, hi);
}

// Only the text of the row in hand is held: its payload, flag and image are overwritten by the
// shift and not put back. Settled behaviour, not to be mended.
void ListRows::InsertionSortRange(Long lo, Long hi) {
    for (Long i = lo + 1; i <= hi; ++i) {
        RowText held = itemText_[i].Copy();
        Long j = i;
        while (j > lo && itemText_[j - 1] > held) {
            itemText_[j] = std::move(itemText_[j - 1]);
            itemData_[j] = itemData_[j - 1].Copy();
            itemSelected_[j] = itemSelected_[j - 1];
            if (keepsImages_ && itemImage_.Has(j)) {
                itemImage_[j] = itemImage_[j - 1];
            }
            --j;
        }
        itemText_[j] = std::move(held);
    }
}

void ListRows::ReverseStringArray() {
    for (Long i = 0, j = listCount_ - 1; i < j; ++i, --j) {
        std::swap(itemText_[i], itemText_[j]);
    }
}

}  // namespace sarnel
