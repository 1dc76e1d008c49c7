// Rows and selection.
#include "controls/list/listrows.h"

#include <algorithm>
#include <utility>

#include "core/base/failure.h"

namespace sarnel {

std::u16string ListRows::List(Long Index) const {
    return itemText_.Has(Index) ? itemText_[Index].Text() : std::u16string();
}

std::u16string ListRows::ListData(Long Index) const {
    return itemData_.Has(Index) ? itemData_[Index].Text() : std::u16string();
}

void ListRows::ListData(Long Index, std::u16string_view value) {
    if (itemData_.Has(Index)) {
        itemData_[Index] = RowText(value);
    }
}

Long ListRows::AddItem(std::u16string_view ItemToAdd, std::u16string_view ItemDataToAdd,
                       Long ItemIndex) {
    ++listCount_;
    Long at = listCount_ - 1;  // in front of the spare
    if (ItemIndex != -1) {
        at = ItemIndex;
    } else if (sorted_) {
        at = SortedPlace(ItemToAdd);
    }
    return Insert(at, RowText(ItemToAdd), RowText(ItemDataToAdd));
}

Long ListRows::AddLast(RowText ItemToAdd, RowText ItemDataToAdd) {
    ++listCount_;
    return Insert(listCount_ - 1, std::move(ItemToAdd), std::move(ItemDataToAdd));
}

Long ListRows::Insert(Long at, RowText text, RowText data) {
    itemText_.Insert(at, std::move(text));
    itemData_.Insert(at, std::move(data));
    itemSelected_.Insert(at, 0);
    if (keepsImages_) {
        itemImage_.Insert(at, -1);
    }
    return at;
}

bool ListRows::RemoveItem(Long ItemIndex) {
    // The spare slot passes this test: removing it makes the last row the new spare.
    if (listCount_ <= 0 || !Has(ItemIndex)) {
        return false;
    }
    --listCount_;
    if (Selected(ItemIndex)) {
        --selCount_;
    }
    itemText_.Remove(ItemIndex);
    itemData_.Remove(ItemIndex);
    itemSelected_.Remove(ItemIndex);
    itemImage_.Remove(ItemIndex);
    return true;
}

void ListRows::Clear() {
    itemText_.Reset(1);
    itemData_.Reset(1);
    itemSelected_.Reset(1);
    itemImage_.Reset(1);
    listCount_ = 0;
    selCount_ = 0;
}

void ListRows::Selected(Long Index, bool value) {
    const bool former = Selected(Index);
    if (itemSelected_.Has(Index)) {
        itemSelected_[Index] = value ? 1 : 0;
    }
    selCount_ += value == former ? 0 : value ? 1 : -1;
}

bool ListRows::ClearOrSelect(Long StartIdx, Long EndIdx, bool SelectFlag) {
    if ((StartIdx < 0 && EndIdx > 0) || (StartIdx > 0 && EndIdx < 0)) {
        return false;
    }
    if (StartIdx >= 0 && EndIdx >= 0 && StartIdx > EndIdx) {
        std::swap(StartIdx, EndIdx);
    }
    EndIdx = std::min(EndIdx, listCount_ - 1);
    if (StartIdx == -1 && EndIdx == -1) {
        StartIdx = 0;
        EndIdx = listCount_ - 1;
    }
    if (listCount_ < 1 || (!SelectFlag && selCount_ < 1)) {
        return false;
    }
    if (std::int64_t{EndIdx} - StartIdx + 1 < listCount_) {
        const Long changes = itemSelected_.Count(StartIdx, EndIdx, SelectFlag ? 0 : 1);
        FillSelected(StartIdx, EndIdx, SelectFlag);
        selCount_ += SelectFlag ? changes : -changes;
    } else {
        FillSelected(StartIdx, EndIdx, SelectFlag);
        selCount_ = SelectFlag ? listCount_ : 0;
    }
    return true;
}

void ListRows::FillSelected(Long from, Long to, bool value) {
    itemSelected_.Fill(std::min(from, to), std::max(from, to), value ? 1 : 0);
}

void ListRows::RecountSelected() {
    selCount_ = itemSelected_.Count(0, listCount_ - 1, 1);
}

Long ListRows::ImageIndex(Long Index) const {
    if (!itemImage_.Has(Index)) {
        throw BoundsError();
    }
    return itemImage_[Index];
}

void ListRows::ImageIndex(Long Index, Long value) {
    if (!itemImage_.Has(Index)) {
        throw BoundsError();
    }
    itemImage_[Index] = value;
}

}  // namespace sarnel
