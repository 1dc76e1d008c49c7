// The rows of a list, without a window: what stands in them, which are selected, and their order. A
// row is not a record but one index into four parallel columns: visible text, hidden payload (a
// path), selected flag and image.
//
// The columns of text, payload and flag have one slot more than there are rows. The last slot is
// the spare, which is empty as long as nobody adds behind it or removes it. Indices are 0-based,
// and none is checked by the caller: reads of a slot that is not there give an empty string, False
// or -1, writes are dropped, and the counts around them still move. Where something else holds, the
// member says so.
#pragma once

#include <string>
#include <string_view>

#include "controls/list/column.h"
#include "controls/list/rowtext.h"

namespace sarnel {

class ListRows {
  public:
    ListRows() { Clear(); }

    /// Number of rows, the spare not among them.
    Long ListCount() const { return listCount_; }
    std::u16string List(Long Index) const;
    std::u16string ListData(Long Index) const;
    void ListData(Long Index, std::u16string_view value);
    /// Text and payload without a copy; the slot must exist.
    const RowText& TextAt(Long Index) const { return itemText_[Index]; }
    const RowText& DataAt(Long Index) const { return itemData_[Index]; }
    /// Whether the index names a slot: a row or the spare.
    bool Has(Long Index) const { return itemText_.Has(Index); }

    /// Adds a row, which is not selected: at ItemIndex, else (-1) at its sorted place, else in
    /// front of the spare. An index behind the spare appends there, a negative one goes to the
    /// front. Answers the place as it was asked to.
    Long AddItem(std::u16string_view ItemToAdd, std::u16string_view ItemDataToAdd, Long ItemIndex);
    /// Adds a row in front of the spare, and answers its place.
    Long AddLast(RowText ItemToAdd, RowText ItemDataToAdd);
    /// Takes a row or the spare out; without the spare the last row becomes it. False, with nothing
    /// changed, if there are no rows or no such slot.
    bool RemoveItem(Long ItemIndex);
    /// No rows, none selected. How rows are kept stays.
    void Clear();

    // How rows are kept. A write changes no row.

    /// New rows go to their sorted place.
    bool Sorted() const { return sorted_; }
    void Sorted(bool value) { sorted_ = value; }
    /// New rows get a slot for their image, and sorting moves images. Rows added before have none.
    bool KeepsImages() const { return keepsImages_; }
    void KeepsImages(bool value) { keepsImages_ = value; }

    // Selection.

    bool Selected(Long Index) const {
        return itemSelected_.Has(Index) && itemSelected_[Index] != 0;
    }
    /// Without a slot the count moves as if its flag had been False.
    void Selected(Long Index, bool value);
    /// Kept in step, not counted: it drifts where Sort loses flags, Selected writes outside or a
    /// block is filled and not counted.
    Long SelCount() const { return selCount_; }
    void SelCount(Long value) { selCount_ = value; }
    /// Selects or deselects rows StartIdx to EndIdx, given in either order; (-1, -1) is all of
    /// them. False if there was nothing to do it to.
    bool ClearOrSelect(Long StartIdx, Long EndIdx, bool SelectFlag);
    /// Writes the flags between two bounds, which may lie outside. This and DeselectAll leave the
    /// count alone.
    void FillSelected(Long from, Long to, bool value);
    void RecountSelected();
    void DeselectAll() { FillSelected(0, listCount_ - 1, false); }

    // Images: numbers of pictures that the owner has, -1 is none. The column may be shorter than
    // the others.

    /// A row without a slot raises the bounds error, read or written.
    Long ImageIndex(Long Index) const;
    void ImageIndex(Long Index, Long value);
    /// What a row shows: -1 also for a row without a slot, and for all while none are kept.
    Long ShownImage(Long Index) const {
        return keepsImages_ && itemImage_.Has(Index) ? itemImage_[Index] : -1;
    }

    // Search and order, both by code units.

    /// The row whose payload equals the string, or -1. While Sorted this halves by payload although
    /// the texts are what is kept in order, which is meant.
    Long FindDataIndex(std::u16string_view sStringToMatch, bool CaseSensitive) const;
    /// Orders the texts. Payload, flag and image of the rows that the final pass moves are lost,
    /// which is settled behaviour; SelCount stays.
    void Sort(bool SortAscending);
    /// Turns the texts round, and only the texts.
    void ReverseStringArray();

  private:
    using Flag = std::uint8_t;

    Long Insert(Long at, RowText text, RowText data);
    Long SortedPlace(std::u16string_view text) const;
    void SwapRows(Long a, Long b);
    void QuickSortRange(Long threshold, Long lo, Long hi);
    void InsertionSortRange(Long lo, Long hi);

    Column<RowText> itemText_;
    Column<RowText> itemData_;
    Column<Flag> itemSelected_;
    Column<Long> itemImage_;
    Long listCount_ = 0;
    Long selCount_ = 0;
    bool sorted_ = true;
    bool keepsImages_ = false;
};

}  // namespace sarnel
