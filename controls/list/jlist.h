// JList is the one list control of the system: the playlist, the search results and the file
// browser. Its rows are ListRows, which know no window. ListIndices follow rows that come and go,
// ListRange is which of them are on show, ListLayout where they stand in pixels, ListThumb the
// scroll strip. JList itself is painting, repainting and input.
//
// It is cut by concern: rows, indices and selection (jlist.cpp), its file (jlist_file.cpp),
// construction and properties (jlist_create.cpp), rows on show (jlist_range.cpp), painting
// (jlist_paint.cpp, jlist_row.cpp, jlist_thumb.cpp), keys (jlist_keys.cpp), mouse (jlist_input.cpp,
// jlist_mouse.cpp, jlist_hit.cpp) and scrolling (jlist_scroll.cpp).
//
// Indices are 0-based, -1 is no row, and none is checked when assigned. Out-of-range reads give an
// empty string, False or 0, and out-of-range writes are dropped while the bookkeeping around them
// still runs. Several of the rules below look odd and are meant; a comment says so where one
// stands.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "controls/list/jlist_gradient.h"
#include "controls/list/jliststored.h"
#include "controls/list/listcopy.h"
#include "controls/list/listindices.h"
#include "controls/list/listlayout.h"
#include "controls/list/listmouse.h"
#include "controls/list/listrange.h"
#include "controls/list/listrows.h"
#include "controls/list/listthumb.h"
#include "controls/list/painted.h"
#include "platform/windows/widget.h"

namespace sarnel {

class JList : public platform::Widget {
    using Colour = platform::Colour;
    using Handle = platform::Handle;

  public:
    /// A list placed afresh: sorted, ListIndex -1.
    JList(platform::WindowSystem& windows, Handle parent, const platform::Rect& rect);
    /// A list of a window's static layout: its stored properties are read, ListIndex is 0.
    JList(platform::WindowSystem& windows, Handle parent, const platform::Rect& rect,
          const JListStored& stored);

    // Rows.

    /// A row's text; List(ListCount) reads the spare slot, which is empty.
    std::u16string List(Long Index) const { return rows_.List(Index); }
    Long ListCount() const { return rows_.ListCount(); }
    /// A row's payload. A write does not repaint.
    std::u16string ListData(Long Index) const { return rows_.ListData(Index); }
    void ListData(Long Index, std::u16string_view value);
    /// Text and payload without a copy; the row must exist.
    const RowText& TextAt(Long Index) const { return rows_.TextAt(Index); }
    const RowText& DataAt(Long Index) const { return rows_.DataAt(Index); }

    /// Adds a row: at ItemIndex, else (-1) at its sorted place or the end. Repaints if RedrawFlag.
    void AddItem(std::u16string_view ItemToAdd, std::u16string_view ItemDataToAdd,
                 Long ItemIndex = -1);
    /// The same with texts that are kept as rows keep them, and always behind all rows, even of a
    /// list that is Sorted.
    void AddLast(RowText ItemToAdd, RowText ItemDataToAdd);
    /// Removes a row and keeps the indices in step; a removed current row leaves ListCurrent -1.
    /// Removing index ListCount drops the spare slot. Repaints if RedrawFlag.
    void RemoveItem(Long ItemIndex);
    /// Empties the list. That sets RedrawFlag to True, and leaves ListCurrent and the images.
    void Clear();

    // Indices.

    /// The row selected last. A write also moves FocusIndex and repaints whatever RedrawFlag says.
    Long ListIndex() const { return index_.list; }
    void ListIndex(Long value);
    /// The row that the owner calls current; the list keeps it in step. Repaints if RedrawFlag.
    Long ListCurrent() const { return index_.current; }
    void ListCurrent(Long value);
    /// The index at which the last AddItem was told to put its row, or chose to; not checked, so it
    /// may name no row. -1 after RemoveItem and Clear.
    Long newIndex() const { return index_.added; }
    void newIndex(Long value) { index_.added = value; }
    /// The text of the ListIndex row. An index outside the column raises the bounds error.
    std::u16string Text() const;
    Long FocusIndex() const { return index_.focus; }
    void FocusIndex(Long value) { index_.focus = value; }
    Long CaretIndex() const { return index_.caret; }
    void CaretIndex(Long value) { index_.caret = value; }

    // Selection.

    bool Selected(Long Index) const { return rows_.Selected(Index); }
    /// Also moves the caret. Without a row caret and count still change. Repaints if RedrawFlag.
    void Selected(Long Index, bool value);
    /// Kept in step, not counted: it drifts where Sort loses flags or Selected writes outside.
    Long SelCount() const { return rows_.SelCount(); }
    /// Selects or deselects rows StartIdx to EndIdx; (-1, -1) is all of them. Repaints always.
    void ClearOrSelect(Long StartIdx, Long EndIdx, bool SelectFlag);

    // Search and order.

    /// The row whose payload equals the string, or -1. A Sorted list is searched by halving, as if
    /// its payloads were in order; they are not, so a row may not be found, which is meant.
    Long FindDataIndex(std::u16string_view sStringToMatch, bool CaseSensitive) const;
    /// Orders the texts. Rows that the final pass moves lose payload, flag and image. Repaints
    /// always.
    void Sort(bool SortAscending);
    void ReverseStringArray();  ///< turns round only the texts
    bool Sorted() const { return rows_.Sorted(); }
    /// True sorts at once, unless the stored property was True and has not been set False since.
    void Sorted(bool value);
    bool SortedLoaded() const { return sortedLoaded_; }

    // Images.

    /// Pictures of rows, numbered from 0 in order of addition. Nothing repaints.
    void AddImage(platform::PictureRef ImageStd);
    void RemoveImages();
    Long ImageCount() const { return static_cast<Long>(images_.size()); }
    /// An index outside the column raises the bounds error.
    Long ImageIndex(Long Index) const { return rows_.ImageIndex(Index); }
    void ImageIndex(Long Index, Long value);
    /// Whether rows have an image and a slot for it. Measures the list again.
    bool ShowItemImages() const { return rows_.KeepsImages(); }
    void ShowItemImages(bool value);
    /// Side of an image's square in pixels, 0 is the text's height. Measures the list again.
    Long ItemImageSize() const { return layout_.itemImageSize; }
    void ItemImageSize(Long value);

    // Looks. Colours are red + 256 x green + 65536 x blue, or a code of the system's colours. Where
    // nothing else is said a write shows at the next repaint.

    bool ShowNumeric() const { return showNumeric_; }  ///< numbers from 1 in front of the texts
    void ShowNumeric(bool value) { showNumeric_ = value; }
    bool ShowSelectRect() const { return showSelectRect_; }  ///< dotted, on the current row
    void ShowSelectRect(bool value);
    /// Runs Refresh. Rows are erased in the former colour until the list is measured again.
    Colour BackColor() const { return Widget::BackColor(); }
    void BackColor(Colour value);
    Colour FocusRectColor() const { return colours_.focusRect; }  ///< of that rectangle
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
    /// A write takes the two pixels between rows away until the list is measured again.
    const platform::Font& ListFont() const { return GetFont(); }
    void ListFont(const platform::Font& font);
    bool Enabled() const { return Widget::Enabled(); }
    /// Also measures the list again, whatever the value: owners do so after a new size or font.
    void Enabled(bool value);

    // The surface. Coordinates are pixels, whatever ScaleMode says.

    Long ScaleWidth() const { return Width(); }
    Long ScaleHeight() const { return Height(); }
    Long ScaleMode() const { return scaleMode_; }
    void ScaleMode(Long value) { scaleMode_ = value; }
    bool AutoRedraw() const { return autoRedraw_; }
    void AutoRedraw(bool value) { autoRedraw_ = value; }
    Handle hdc() const { return HWnd(); }  ///< the face goes by its window's handle

    // Rows on show.

    /// While False the row operations that ask it do not repaint. True repaints at once.
    bool RedrawFlag() const { return redrawFlag_; }
    void RedrawFlag(bool value);
    Long TopIndex() const { return range_.top; }
    Long DisplayFirst() const { return range_.first; }
    Long DisplayLast() const { return range_.last; }
    Long VisibleRows() const { return layout_.visibleRows; }
    bool ScrollBarShown() const { return thumb_.shown; }
    /// Height of a row's text, and the distance of rows, which an image may make larger.
    Long RowHeight() const { return layout_.rowHeight; }
    Long RowPitch() const { return layout_.RowPitch(); }
    Long RowTop(Long row) const { return layout_.RowTop(row); }  ///< of a displayed row, 0 to 50
    Long TextLeft() const { return layout_.textLeft; }
    Long ImageLeft() const { return ListLayout::kImageLeft; }
    Long ImageColumn() const { return layout_.imageColumn; }
    Long RightReserve() const { return layout_.rightReserve; }
    void DisplayFrom(Long ItemIndex);  ///< brings a row to the top, if not all of them fit
    void HighlightCurrent();           ///< centres the current row without selecting it
    void AdjustDisplayRange();         ///< brings FocusIndex on show
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
    /// What the file would hold.
    ListCopy Copy() const;

    /// A number that is another one whenever what the file would hold may have changed.
    std::uint64_t Changes() const { return changes_; }
    /// Calls `observer` at the next such change, once, from within it: for taking a note and no
    /// more. One observer; a later one takes its place, an empty function ends it.
    void OnNextChange(std::function<void()> observer) { onNextChange_ = std::move(observer); }

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
    void LooksChanged() override { ++painted_.looks; }
    void Redraw() override;

  private:
    void Create();
    void SetupMetrics();
    void RowAdded(Long at);
    void ContentsChanged();
    void RepaintIfAllowed();
    void KeyDown(Long keyCode, Long shift);
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
    Colour InkOf(Long index, bool selected) const;
    void BuildSelectionBar();
    void BuildThumbBar();
    void RebuildGradients();
    void PlaceThumb(float grabOffset);
    void PaintScrollBar();
    void DrawScrollBar(float grabOffset);

    // The mouse.
    bool IsInList(float x, float y) const;
    void UpdateZone(float x, float y);
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

    ListRows rows_;
    ListIndices index_;
    std::uint64_t changes_ = 0;
    std::function<void()> onNextChange_;
    std::vector<platform::PictureRef> images_;
    bool sortedLoaded_ = false;

    ListLayout layout_;
    ListThumb thumb_;
    ListRange range_;
    bool redrawFlag_ = true;

    bool showNumeric_ = true;
    bool showSelectRect_ = true;
    ListColours colours_;
    Long scaleMode_ = 3;  // pixels
    bool autoRedraw_ = true;

    Colour backBrush_ = 0;
    platform::Surface backDC_;  ///< the clean background that rows are erased from
    GradientBar selectionBar_;
    GradientBar thumbBar_;
    Painted painted_;

    ListMouse mouse_;
};

}  // namespace sarnel
