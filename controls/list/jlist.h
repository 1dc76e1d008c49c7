// JList is the one list control of the system: the playlist, the search results and the file
// browser. A row is not a record but one index into four parallel columns: visible text, hidden
// payload (a path), selected flag and image.
//
// The class is cut by concern: rows, indices and selection (jlist.cpp), order (jlist_order.cpp),
// its file (jlist_file.cpp), construction and properties (jlist_create.cpp), rows on show
// (jlist_range.cpp), painting (jlist_paint.cpp, jlist_row.cpp, jlist_thumb.cpp), keys
// (jlist_keys.cpp), mouse (jlist_mouse.cpp, jlist_hit.cpp) and scrolling (jlist_scroll.cpp).
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
#include "controls/list/jlist_gradient.h"
#include "controls/list/jliststored.h"
#include "controls/list/listmouse.h"
#include "controls/list/listthumb.h"
#include "controls/list/painted.h"
#include "controls/list/rowtext.h"
#include "platform/windows/widget.h"

namespace sarnel {

using platform::Handle;

class JList : public platform::Widget {
    using Colour = platform::Colour;
    using Rect = platform::Rect;

  public:
    /// A list placed afresh: sorted, ListIndex -1.
    JList(platform::WindowSystem& windows, Handle parent, const Rect& rect);
    /// A list of a window's static layout: its stored properties are read, ListIndex is 0.
    JList(platform::WindowSystem& windows, Handle parent, const Rect& rect,
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

    /// Pictures of rows, numbered from 0 in order of addition. Nothing repaints.
    void AddImage(platform::PictureRef ImageStd);
    void RemoveImages();
    Long ImageCount() const { return static_cast<Long>(images_.size()); }
    /// An index outside the column raises the bounds error.
    Long ImageIndex(Long Index) const;
    void ImageIndex(Long Index, Long value);
    /// Whether rows have an image and a slot for it. Measures the list again.
    bool ShowItemImages() const { return showItemImages_; }
    void ShowItemImages(bool value);
    /// Side of the square that an image is scaled to, in pixels; 0 is the text's height. Measures
    /// the list again.
    Long ItemImageSize() const { return itemImageSize_; }
    void ItemImageSize(Long value);

    // Looks. Colours are red + 256 x green + 65536 x blue, or a code of the system's colours. Where
    // nothing else is said a write shows at the next repaint.

    /// Row numbers from 1 in front of the texts.
    bool ShowNumeric() const { return showNumeric_; }
    void ShowNumeric(bool value) { showNumeric_ = value; }
    /// The dotted rectangle on the current row.
    bool ShowSelectRect() const { return showSelectRect_; }
    void ShowSelectRect(bool value);
    /// Runs Refresh. Rows are erased in the former colour until the list is measured again.
    Colour BackColor() const { return Widget::BackColor(); }
    void BackColor(Colour value);
    /// The dotted rectangle.
    Colour FocusRectColor() const { return colours_.focusRect; }
    void FocusRectColor(Colour value) { colours_.focusRect = value; }
    /// The selection bar's left and right end.
    Colour SelColor1() const { return colours_.sel1; }
    void SelColor1(Colour value);
    Colour SelColor2() const { return colours_.sel2; }
    void SelColor2(Colour value);
    /// Text of selected rows and of the current row.
    Colour SelTextColor() const { return colours_.selText; }
    void SelTextColor(Colour value) { colours_.selText = value; }
    Colour TextColor() const { return colours_.text; }
    void TextColor(Colour value) { colours_.text = value; }
    Colour ThumbBorderColor() const { return colours_.thumbBorder; }
    void ThumbBorderColor(Colour value);
    /// The thumb's right and left end. A write draws the scroll strip on the face, unshown, whether
    /// the list has one or not.
    Colour ThumbColor1() const { return colours_.thumb1; }
    void ThumbColor1(Colour value);
    Colour ThumbColor2() const { return colours_.thumb2; }
    void ThumbColor2(Colour value);
    /// The font of the rows. A write measures rows without the two pixels between them, which come
    /// back when the list is measured again.
    const platform::Font& ListFont() const { return GetFont(); }
    void ListFont(const platform::Font& font);
    bool Enabled() const { return Widget::Enabled(); }
    /// Also measures the list again, even if the value is the same: how owners tell it that its
    /// size or font has changed.
    void Enabled(bool value);

    // The surface. Coordinates are pixels, whatever ScaleMode says.

    Long ScaleWidth() const { return Width(); }
    Long ScaleHeight() const { return Height(); }
    Long ScaleMode() const { return scaleMode_; }
    void ScaleMode(Long value) { scaleMode_ = value; }
    bool AutoRedraw() const { return autoRedraw_; }
    void AutoRedraw(bool value) { autoRedraw_ = value; }
    /// Names the face that is painted on: it goes by its window's handle.
    Handle hdc() const { return HWnd(); }

    // Rows on show.

    /// While False the row operations that ask it do not repaint. True repaints at once.
    bool RedrawFlag() const { return redrawFlag_; }
    void RedrawFlag(bool value);
    Long TopIndex() const { return topIndex_; }
    Long DisplayFirst() const { return displayFirst_; }
    Long DisplayLast() const { return displayLast_; }
    Long VisibleRows() const { return visibleRows_; }
    bool ScrollBarShown() const { return scrollBarShown_; }
    /// Height of a row's text, and the distance of rows, which an image may make larger.
    Long RowHeight() const { return rowHeight_; }
    Long RowPitch() const;
    /// Top pixel of the displayed row, 0 to 50.
    Long RowTop(Long row) const;
    Long TextLeft() const { return textLeft_; }
    Long ImageLeft() const { return kImageLeft; }
    Long ImageColumn() const { return imageColumn_; }
    Long RightReserve() const { return rightReserve_; }
    /// Brings a row to the top, if the list does not fit.
    void DisplayFrom(Long ItemIndex);
    /// Centres the current row without selecting it.
    void HighlightCurrent();
    /// Brings FocusIndex on show.
    void AdjustDisplayRange();
    /// A full repaint. -1 lets the thumb follow the list; any other value is the distance from the
    /// thumb's top to the pointer that holds it.
    void DisplayList(float vThumbYPos = -1);
    /// Checks the range, builds the gradients, repaints if RedrawFlag, raises Resize.
    void Refresh();
    bool ThumbDirty() const { return thumb_.dirty; }
    const ListThumb& Thumb() const { return thumb_; }

    // The mouse.

    /// The row under a Y position, or -1; whether the pointer is over the rows at all is judged by
    /// its last position.
    Long MouseOverIndex(float YPos) const;
    /// Whether the present press draws no rubber band. A press on a row sets it to the stored
    /// value, so a write lasts until then.
    bool DragEnabled() const { return mouse_.dragArmed; }
    void DragEnabled(bool value) { mouse_.dragArmed = value; }
    const ListMouse& Mouse() const { return mouse_; }

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
    void MouseDown(const platform::MouseEvent& event) override;
    void MouseMove(const platform::MouseEvent& event) override;
    void MouseUp(const platform::MouseEvent& event) override;
    void DoubleClick(const platform::MouseEvent& event) override;
    void Resized() override { Refresh(); }
    void LooksChanged() override { ++looks_; }

  private:
    using Flag = std::uint8_t;

    void Create();
    void SetupMetrics();
    void ComputeRows();
    void RepaintIfAllowed();
    void SettleRange();
    Long InsertSorted(std::u16string_view text);
    bool IsRowVisible(Long index) const { return index >= displayFirst_ && index <= displayLast_; }
    /// Either bound may lie outside the column: the slots that exist are filled.
    void FillSelected(Long from, Long to, bool value);
    void RecountSelected();
    void ClearSelection();
    void KeyDown(Long keyCode, Long shift);
    void UpdateModifiers(Long shift);
    void CommitCaret();
    void EraseCaret();
    void CountAfterStep();
    void ShowStep(Long selectedBefore);
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

    // Painting.
    platform::Surface& Paint();
    void ClearFace();
    void Repaint();
    void RepaintAll();
    void RepaintRows();
    void Describe(Long index, PaintedRow& row) const;
    void DrawRow(Long index, bool selected);
    void DrawRow(Long index) { DrawRow(index, Selected(index)); }
    void DrawImage(Long index, Long top);
    void DrawFocusRect(Long row);
    const platform::Surface* ImageOf(Long index) const;
    void AppendRowString(Long index, std::u16string& to) const;
    Colour InkOf(Long index, bool selected) const;
    bool IsImageTaller() const { return showItemImages_ && rowHeight_ < ImageSide(); }
    Long ImageSide() const;
    Long ImageWidth() const { return ImageSide() != 0 ? ImageSide() : rowHeight_; }
    void BuildSelectionBar();
    void BuildThumbBar();
    void RebuildGradients();
    Long ComputeThumbHeight();
    Long ComputeThumbTop();
    void PlaceThumb(float grabOffset);
    void PaintScrollBar();
    void DrawScrollBar(float grabOffset);

    // The mouse.
    bool IsInList(float x, float y) const;
    bool IsInBar(float x) const;
    bool IsOnThumb(float x, float y) const;
    bool IsOnTrack(float x, float y) const;
    bool IsAboveThumb(float y) const;
    void UpdateZone(float x, float y);
    Long RowFromY(float y) const;
    void PressByZone(float y);
    void ClickSelect();
    void BandStep();
    void ExtendBand();
    bool EdgeScrollCheck();
    bool ThumbEdgeCheck();
    void AutoScroll(Long by);
    bool AutoScrollStep(Long by);
    void ScrollDownThree();
    void ScrollUpThree();
    void ThumbDragLoop();
    bool ThumbDragStep(Long& rows);
    void ShowStart();
    void ShowEnd();
    bool IsAlive() const { return windows_.IsWindow(HWnd()); }
    bool Pump(platform::Millis wait);

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
    bool showSelectRect_ = true;
    bool scrollBarShown_ = false;

    // Properties that only painting reads.
    Long itemImageSize_ = 0;
    ListColours colours_;
    Long scaleMode_ = 3;  // pixels
    bool autoRedraw_ = true;

    // Layout, in pixels.
    static constexpr Long kMostRows = 51;  ///< entries of the table of row tops
    static constexpr Long kImageLeft = 2;
    Long rowHeight_ = 0;
    Long visibleRows_ = 1;
    std::array<Long, kMostRows> rowTop_{};
    Long textLeft_ = 0;
    Long imageColumn_ = 0;
    Long rightReserve_ = 0;

    ListThumb thumb_;

    // Painting.
    Colour backBrush_ = 0;
    platform::Surface backDC_;  ///< the clean background that rows are erased from
    GradientBar selectionBar_;
    GradientBar thumbBar_;
    Long looks_ = 0;  ///< goes up with each change that all rows show
    Painted painted_;
    std::u16string rowString_;  ///< kept for its memory

    ListMouse mouse_;
    bool dragStored_ = false;  ///< what a press on a row copies into dragArmed
};

}  // namespace sarnel
