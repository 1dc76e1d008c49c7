// JList is the one list control of the system: the playlist, the search results and the file
// browser. A row is not a record but one index into four parallel columns: visible text, hidden
// payload (a path), selected flag and image. This class is the list's memory and its arithmetic of
// rows on show; what it does with keys is in jlist_keys.cpp, its file in jlist_file.cpp. Rows are
// not painted yet: a repaint settles which rows are on show and stops there.
//
// Indices are 0-based, -1 is no row, and none is checked when assigned. Out-of-range reads give an
// empty string, False or 0, and out-of-range writes are dropped while the bookkeeping around them
// still runs. Several of the rules below look odd and are meant; a comment says so where one
// stands.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/list/column.h"
#include "controls/list/rowtext.h"
#include "platform/widget.h"

namespace sarnel {

using platform::Colour;
using platform::Handle;

/// What a list persists on its window's static layout; all else is at its default.
struct JListStored {
    bool sorted = true;
    bool showNumeric = true;
    bool showItemImages = false;
};

class JList : public platform::Widget {
  public:
    /// A list placed afresh: sorted, ListIndex -1.
    JList(platform::WindowSystem& windows, Handle parent, const platform::Rect& rect);
    /// A list of a window's static layout: its stored properties are read, ListIndex is 0.
    JList(platform::WindowSystem& windows, Handle parent, const platform::Rect& rect,
          const JListStored& stored);

    // Rows.

    /// A row's text; List(ListCount) reads the spare slot, which is empty.
    std::u16string List(Long Index) const;
    Long ListCount() const { return listCount_; }
    /// A row's payload. A write does not repaint.
    std::u16string ListData(Long Index) const;
    void ListData(Long Index, std::u16string_view value);
    /// The payload without a copy of it; the row must exist.
    const RowText& DataAt(Long Index) const { return itemData_[Index]; }

    /// Adds a row: at ItemIndex, else (-1) at its sorted place, else at the end. NewIndex tells
    /// where. Repaints if RedrawFlag.
    void AddItem(std::u16string_view ItemToAdd, std::u16string_view ItemDataToAdd,
                 Long ItemIndex = -1);
    /// Removes a row and keeps the indices in step; a removed current row leaves ListCurrent -1.
    /// Removing index ListCount drops the spare slot. Repaints if RedrawFlag.
    void RemoveItem(Long ItemIndex);
    /// Empties the list. Sets RedrawFlag to True and leaves ListCurrent and the images, both meant.
    void Clear();

    // Indices.

    /// The row selected last. A write also moves FocusIndex and repaints whatever RedrawFlag says.
    Long ListIndex() const { return listIndex_; }
    void ListIndex(Long value);
    /// The row that the owner calls current; the list keeps it in step. Repaints if RedrawFlag.
    Long ListCurrent() const { return listCurrent_; }
    void ListCurrent(Long value);
    /// Where the last AddItem put its row as it was asked to; -1 after RemoveItem and Clear.
    Long newIndex() const { return newIndex_; }
    void newIndex(Long value) { newIndex_ = value; }
    /// The text of the ListIndex row. An index outside the column raises the bounds error.
    std::u16string Text() const;
    Long FocusIndex() const { return focusIndex_; }
    void FocusIndex(Long value) { focusIndex_ = value; }
    Long CaretIndex() const { return caretIndex_; }
    void CaretIndex(Long value) { caretIndex_ = value; }

    // Selection.

    bool Selected(Long Index) const;
    /// Also moves the caret. Outside the column only caret and count change. Repaints if
    /// RedrawFlag.
    void Selected(Long Index, bool value);
    /// Kept in step, not counted: it drifts where Sort loses flags or Selected writes outside.
    Long SelCount() const { return selCount_; }
    /// Selects or deselects rows StartIdx to EndIdx; (-1, -1) is all of them. Repaints always.
    void ClearOrSelect(Long StartIdx, Long EndIdx, bool SelectFlag);

    // Search and order.

    /// The row whose payload equals the string, or -1. On a Sorted list this halves by payload
    /// although the texts are what is kept in order: meant.
    Long FindDataIndex(std::u16string_view sStringToMatch, bool CaseSensitive) const;
    /// Orders the texts. Payload, flag and image of the rows that the final pass moves are lost,
    /// which is settled behaviour. Repaints always.
    void Sort(bool SortAscending);
    /// Turns the texts round, and only the texts.
    void ReverseStringArray();
    bool Sorted() const { return sorted_; }
    /// True sorts at once, unless the stored property was True and has not been set False since.
    void Sorted(bool value);
    bool SortedLoaded() const { return sortedLoaded_; }

    // Images.

    void AddImage(platform::PictureRef ImageStd);
    void RemoveImages() { images_.clear(); }
    Long ImageCount() const { return static_cast<Long>(images_.size()); }
    /// An index outside the column raises the bounds error.
    Long ImageIndex(Long Index) const;
    void ImageIndex(Long Index, Long value);
    bool ShowItemImages() const { return showItemImages_; }
    void ShowItemImages(bool value);
    bool ShowNumeric() const { return showNumeric_; }
    void ShowNumeric(bool value) { showNumeric_ = value; }

    // Rows on show.

    /// While False the row operations that ask it do not repaint. True repaints at once.
    bool RedrawFlag() const { return redrawFlag_; }
    void RedrawFlag(bool value);
    Long TopIndex() const { return topIndex_; }
    Long DisplayFirst() const { return displayFirst_; }
    Long DisplayLast() const { return displayLast_; }
    Long VisibleRows() const { return visibleRows_; }
    bool ScrollBarShown() const { return scrollBarShown_; }
    bool ThumbDirty() const { return thumbDirty_; }
    Long RowHeight() const { return rowHeight_; }
    /// Top pixel of the displayed row, 0 to 50.
    Long RowTop(Long row) const;
    /// Brings a row to the top, if the list does not fit.
    void DisplayFrom(Long ItemIndex);
    /// Centres the current row without selecting it.
    void HighlightCurrent();
    /// Brings FocusIndex on show.
    void AdjustDisplayRange();
    /// A full repaint; -1 lets the thumb follow the list.
    void DisplayList(float vThumbYPos = -1);
    /// Checks the range, repaints if RedrawFlag, raises Resize.
    void Refresh();
    bool Enabled() const { return Widget::Enabled(); }
    /// Also measures the list again: how owners tell it that its size or font has changed.
    void Enabled(bool value);
    const platform::Font& ListFont() const { return GetFont(); }
    void ListFont(const platform::Font& font);

    // Colours of the rows.

    Colour FocusRectColor() const { return focusRectColor_; }
    void FocusRectColor(Colour value) { focusRectColor_ = value; }
    Colour SelColor1() const { return selColor1_; }
    void SelColor1(Colour value) { selColor1_ = value; }
    Colour SelColor2() const { return selColor2_; }
    void SelColor2(Colour value) { selColor2_ = value; }
    Colour SelTextColor() const { return selTextColor_; }
    void SelTextColor(Colour value) { selTextColor_ = value; }
    Colour TextColor() const { return textColor_; }
    void TextColor(Colour value) { textColor_ = value; }
    Colour ThumbBorderColor() const { return thumbBorderColor_; }
    void ThumbBorderColor(Colour value) { thumbBorderColor_ = value; }
    Colour ThumbColor1() const { return thumbColor1_; }
    void ThumbColor1(Colour value) { thumbColor1_ = value; }
    Colour ThumbColor2() const { return thumbColor2_; }
    void ThumbColor2(Colour value) { thumbColor2_ = value; }

    // File. Both answer whether all of it was done; nothing else reports a failure.

    /// Writes the rows in place of a file. The old file is gone first.
    [[nodiscard]] bool Serialize(std::u16string_view path) const;
    /// Adds a file's rows behind those in the list. False for a missing file or another signature,
    /// with the list as it was; False, with the rows read so far, for a file that ends too soon.
    [[nodiscard]] bool Deserialize(std::u16string_view path);

    // Window messages that the list's owner hands on after its window got them.

    void WM_MOUSEMOVE_Process(Handle window);
    void WM_MOUSELEAVE_Process();
    void WM_MOUSEWHEEL_Process(Long wordParameter);

    // Events. The code and the modifiers (1 Shift, 2 Ctrl, 4 Alt) of a key; dropped paths.
    std::function<void(Long KeyCode, Long Shift)> onKeyDown;
    std::function<void(Long KeyCode, Long Shift)> onKeyUp;
    std::function<void(const std::vector<std::string>& paths)> onOLEDragDrop;

  protected:
    Long HandleMessage(const platform::Message& message) override;

  private:
    using Flag = std::uint8_t;

    void Create();
    void SetupMetrics();
    void ComputeRows();
    void RepaintIfAllowed();
    Long InsertSorted(std::u16string_view text);
    bool IsRowVisible(Long index) const { return index >= displayFirst_ && index <= displayLast_; }
    void FillSelected(Long from, Long to, bool value);
    void RecountSelected();
    void ClearSelection();
    void KeyDown(Long keyCode, Long shift);
    void UpdateModifiers(Long shift);
    void CommitCaret();
    void CountAfterStep();
    void LineDown();
    void LineUp();
    void HomeKey();
    void EndKey();
    void PageDownKey();
    void PageUpKey();
    void CommitPage();
    void SwapRows(Long a, Long b);
    void QuickSortRange(Long threshold, Long lo, Long hi);
    void InsertionSortRange(Long lo, Long hi);

    Column<RowText> itemText_;
    Column<RowText> itemData_;
    Column<Flag> itemSelected_;
    // Written only while images are shown, so it may be shorter than the others.
    Column<Long> itemImage_;
    std::vector<platform::PictureRef> images_;

    Long listCount_ = 0;
    Long listIndex_ = -1;
    Long listCurrent_ = -1;
    Long newIndex_ = -1;
    Long selCount_ = 0;
    Long focusIndex_ = 0;
    Long caretIndex_ = -1;
    Long displayFirst_ = -1;
    Long displayLast_ = -1;
    Long topIndex_ = 0;
    bool redrawFlag_ = true;
    bool sorted_ = true;
    bool sortedLoaded_ = false;
    bool showItemImages_ = false;
    bool showNumeric_ = true;
    bool thumbDirty_ = true;
    bool scrollBarShown_ = false;
    bool mouseInside_ = false;
    bool shiftDown_ = false;
    Colour focusRectColor_ = 0;
    Colour selColor1_ = 0x606060;
    Colour selColor2_ = 0xE0E0E0;
    Colour selTextColor_ = 0;
    Colour textColor_ = 0;
    Colour thumbBorderColor_ = 0xE0E0E0;
    Colour thumbColor1_ = 0;
    Colour thumbColor2_ = 0x909090;
    Long shiftAnchor_ = 0;  ///< the row where an extension by Shift started

    static constexpr Long kMostRows = 51;  ///< entries of the table of row tops
    Long rowHeight_ = 0;
    Long visibleRows_ = 1;
    std::array<Long, kMostRows> rowTop_{};
};

}  // namespace sarnel
