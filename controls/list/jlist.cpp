// Rows, indices and selection.
#include "controls/list/jlist.h"

#include <algorithm>
#include <utility>

#include "controls/list/moved.h"
#include "core/base/failure.h"

namespace sarnel {

namespace {

// A row has come in at `row`: an index from there on names the row it named.
void RaiseFrom(Long row, Long& index) {
    if (index >= row) {
        index = Moved(index, 1);
    }
}

}  // namespace

std::u16string JList::List(Long Index) const {
    return itemText_.Has(Index) ? itemText_[Index].Text() : std::u16string();
}

std::u16string JList::ListData(Long Index) const {
    return itemData_.Has(Index) ? itemData_[Index].Text() : std::u16string();
}

void JList::ListData(Long Index, std::u16string_view value) {
    if (itemData_.Has(Index)) {
        itemData_[Index] = RowText(value);
    }
}

void JList::AddItem(std::u16string_view ItemToAdd, std::u16string_view ItemDataToAdd,
                    Long ItemIndex) {
    ++listCount_;
    thumb_.dirty = true;
    Long at = listCount_ - 1;  // in front of the spare
    if (ItemIndex != -1) {
        at = ItemIndex;
    } else if (sorted_) {
        at = InsertSorted(ItemToAdd);
    }
    itemText_.Insert(at, RowText(ItemToAdd));
    itemData_.Insert(at, RowText(ItemDataToAdd));
    itemSelected_.Insert(at, 0);
    if (showItemImages_) {
        itemImage_.Insert(at, -1);
    }
    newIndex_ = at;
    // One condition for all three, so with nothing selected and ListIndex 0 none of them moves.
    if (listIndex_ > 0 || selCount_ != 0) {
        for (Long* index : {&listIndex_, &focusIndex_, &caretIndex_}) {
            RaiseFrom(newIndex_, *index);
        }
    }
    // A current row 0 stays 0 even when a row comes in front of it: meant.
    if (listCurrent_ > 0) {
        RaiseFrom(newIndex_, listCurrent_);
    }
    if (displayFirst_ == -1) {
        displayFirst_ = 0;
    }
    if (redrawFlag_) {
        DisplayList();
    }
}

void JList::RemoveItem(Long ItemIndex) {
    // The spare slot passes this test: removing it makes the last row the new spare.
    if (listCount_ <= 0 || !itemText_.Has(ItemIndex)) {
        return;
    }
    --listCount_;
    thumb_.dirty = true;
    if (Selected(ItemIndex)) {
        --selCount_;
    }
    itemText_.Remove(ItemIndex);
    itemData_.Remove(ItemIndex);
    itemSelected_.Remove(ItemIndex);
    itemImage_.Remove(ItemIndex);
    const auto lower = [ItemIndex](Long& index) {
        index -= index > 0 && index >= ItemIndex ? 1 : 0;
    };
    lower(listIndex_);
    if (listCurrent_ == ItemIndex) {
        listCurrent_ = -1;
    } else if (listCurrent_ >= 0 && listCurrent_ > ItemIndex) {
        --listCurrent_;
    }
    lower(caretIndex_);
    lower(focusIndex_);
    newIndex_ = -1;
    if (redrawFlag_) {
        DisplayList();
    }
}

void JList::Clear() {
    itemText_.Reset(1);
    itemData_.Reset(1);
    itemSelected_.Reset(1);
    itemImage_.Reset(1);
    selCount_ = 0;
    listCount_ = 0;
    caretIndex_ = -1;
    focusIndex_ = 0;
    displayFirst_ = displayLast_ = -1;
    scrollBarShown_ = false;
    thumb_.dirty = true;
    listIndex_ = 0;
    newIndex_ = -1;
    redrawFlag_ = true;
    ClearFace();
    ShowFace();
}

void JList::ListIndex(Long value) {
    listIndex_ = value;
    focusIndex_ = value;
    DisplayList();
}

void JList::ListCurrent(Long value) {
    listCurrent_ = value;
    if (redrawFlag_) {
        DisplayList();
    }
}

std::u16string JList::Text() const {
    if (!itemText_.Has(listIndex_)) {
        throw BoundsError();
    }
    return itemText_[listIndex_].Text();
}

bool JList::Selected(Long Index) const {
    return itemSelected_.Has(Index) && itemSelected_[Index] != 0;
}

void JList::Selected(Long Index, bool value) {
    const bool former = Selected(Index);
    if (itemSelected_.Has(Index)) {
        itemSelected_[Index] = value ? 1 : 0;
    }
    caretIndex_ = Index;
    selCount_ += value == former ? 0 : value ? 1 : -1;
    if (redrawFlag_) {
        DisplayList();
    }
}

void JList::ClearOrSelect(Long StartIdx, Long EndIdx, bool SelectFlag) {
    if ((StartIdx < 0 && EndIdx > 0) || (StartIdx > 0 && EndIdx < 0)) {
        return;
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
        return;
    }
    if (std::int64_t{EndIdx} - StartIdx + 1 < listCount_) {
        const Long changes = itemSelected_.Count(StartIdx, EndIdx, SelectFlag ? 0 : 1);
        FillSelected(StartIdx, EndIdx, SelectFlag);
        selCount_ += SelectFlag ? changes : -changes;
    } else {
        FillSelected(StartIdx, EndIdx, SelectFlag);
        selCount_ = SelectFlag ? listCount_ : 0;
    }
    DisplayList();
}

void JList::FillSelected(Long from, Long to, bool value) {
    itemSelected_.Fill(std::min(from, to), std::max(from, to), value ? 1 : 0);
}

Long JList::ImageIndex(Long Index) const {
    if (!itemImage_.Has(Index)) {
        throw BoundsError();
    }
    return itemImage_[Index];
}

void JList::ImageIndex(Long Index, Long value) {
    if (!itemImage_.Has(Index)) {
        throw BoundsError();
    }
    itemImage_[Index] = value;
    if (IsRowVisible(Index) && redrawFlag_) {
        DisplayList();
    }
}

void JList::AddImage(platform::PictureRef ImageStd) {
    images_.push_back(std::move(ImageStd));
    ++looks_;
}

void JList::RemoveImages() {
    images_.clear();
    ++looks_;
}

}  // namespace sarnel
