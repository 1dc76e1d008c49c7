// Rows, indices and selection, with what of them repaints.
#include "controls/list/jlist.h"

#include <algorithm>
#include <utility>

#include "core/base/failure.h"

namespace sarnel {

void JList::AddItem(std::u16string_view ItemToAdd, std::u16string_view ItemDataToAdd,
                    Long ItemIndex) {
    RowAdded(rows_.AddItem(ItemToAdd, ItemDataToAdd, ItemIndex));
}

void JList::AddLast(RowText ItemToAdd, RowText ItemDataToAdd) {
    RowAdded(rows_.AddLast(std::move(ItemToAdd), std::move(ItemDataToAdd)));
}

void JList::ContentsChanged() {
    ++changes_;
    if (onNextChange_) {
        std::exchange(onNextChange_, {})();
    }
}

void JList::ListData(Long Index, std::u16string_view value) {
    rows_.ListData(Index, value);
    ContentsChanged();
}

void JList::RowAdded(Long at) {
    thumb_.dirty = true;
    index_.RowAdded(at, SelCount() != 0);
    ContentsChanged();
    if (range_.first == -1) {
        range_.first = 0;
    }
    RepaintIfAllowed();
}

void JList::RemoveItem(Long ItemIndex) {
    if (rows_.RemoveItem(ItemIndex)) {
        thumb_.dirty = true;
        index_.RowRemoved(ItemIndex);
        ContentsChanged();
        RepaintIfAllowed();
    }
}

void JList::Clear() {
    rows_.Clear();
    index_.RowsCleared();
    ContentsChanged();
    range_.first = range_.last = -1;
    thumb_.shown = false;
    thumb_.dirty = true;
    redrawFlag_ = true;
    ClearFace();
    ShowFace();
}

void JList::ListIndex(Long value) {
    index_.list = value;
    index_.focus = value;
    DisplayList();
}

void JList::ListCurrent(Long value) {
    if (std::exchange(index_.current, value) != value) {
        ContentsChanged();
    }
    RepaintIfAllowed();
}

std::u16string JList::Text() const {
    if (!rows_.Has(index_.list)) {
        throw BoundsError();
    }
    return List(index_.list);
}

void JList::Selected(Long Index, bool value) {
    rows_.Selected(Index, value);
    index_.caret = Index;
    RepaintIfAllowed();
}

void JList::ClearOrSelect(Long StartIdx, Long EndIdx, bool SelectFlag) {
    if (rows_.ClearOrSelect(StartIdx, EndIdx, SelectFlag)) {
        DisplayList();
    }
}

void JList::ImageIndex(Long Index, Long value) {
    rows_.ImageIndex(Index, value);
    if (range_.Has(Index)) {
        RepaintIfAllowed();
    }
}

Long JList::FindDataIndex(std::u16string_view sStringToMatch, bool CaseSensitive) const {
    return rows_.FindDataIndex(sStringToMatch, CaseSensitive);
}

void JList::Sort(bool SortAscending) {
    rows_.Sort(SortAscending);
    ContentsChanged();
    range_.first = 0;
    range_.last = std::min(ListCount(), VisibleRows()) - 1;
    index_.caret = -1;
    index_.list = 0;
    index_.focus = 0;
    DisplayList();
}

void JList::ReverseStringArray() {
    rows_.ReverseStringArray();
    ContentsChanged();
}

void JList::Sorted(bool value) {
    rows_.Sorted(value);
    if (value && !sortedLoaded_) {
        Sort(true);
    }
    if (!value) {
        sortedLoaded_ = false;
    }
}

void JList::AddImage(platform::PictureRef ImageStd) {
    images_.push_back(std::move(ImageStd));
    ++painted_.looks;
}

void JList::RemoveImages() {
    images_.clear();
    ++painted_.looks;
}

}  // namespace sarnel
