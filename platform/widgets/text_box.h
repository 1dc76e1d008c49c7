// A text box: either a single line to edit in, or a page to read, wrapped between words, whose text
// can be selected and copied but not changed. Any press on it takes the focus. What an input method
// is putting together shows underlined in place of the selection.
#pragma once

#include <optional>
#include <vector>

#include "platform/widgets/text_edit.h"
#include "platform/windows/widget.h"

namespace platform {

class TextBox : public Widget {
  public:
    enum class Kind { kLine, kPage };

    TextBox(WindowSystem& windows, Handle parent, const Rect& rect, Kind kind = Kind::kLine);

    /// A write puts the caret and the view to the start and raises Change, whatever was there. The
    /// window's own text (GetWindowText) stays empty.
    std::u16string Text() const { return edit_.Text(); }
    void Text(std::u16string_view value);

    // The selection, in code units from the text's start. Values past an end are brought inside;
    // halves of a surrogate pair are never parted.

    Long SelStart() const { return static_cast<Long>(edit_.SelStart()); }
    /// Puts the caret there; nothing is selected any more.
    void SelStart(Long value);
    Long SelLength() const { return static_cast<Long>(edit_.Selected().size()); }
    void SelLength(Long value);
    std::u16string SelText() const { return std::u16string(edit_.Selected()); }
    /// Replaces the selection, puts the caret behind it and raises Change. As after any write by
    /// the owner, nothing can be undone.
    void SelText(std::u16string_view value);

    bool MultiLine() const { return kind_ == Kind::kPage; }
    /// Whether the user cannot change the text. A page is always locked.
    bool Locked() const { return locked_; }
    void Locked(bool value);

    /// Lines as wrapped, at least 1: also the answer to EM_GETLINECOUNT.
    Long LineCount() const { return static_cast<Long>(Lines().size()); }
    /// The line at the top of the view, 0-based.
    Long FirstVisibleLine() const { return topLine_; }
    /// Scrolls a page by so many lines, positive to the text's end, as far as there is text to
    /// fill the view: also what EM_LINESCROLL does.
    void LineScroll(Long lines);
    /// Lines that a page scrolls by a notch of the wheel, 3 at first. With 0 the wheel is left to
    /// its owner; it never goes on to what the page lies on.
    void LinesPerNotch(Long value) { linesPerNotch_ = value; }

    /// Removes the caret until the box gains the focus the next time.
    void HideCaret();

    // Events. The keys come before the box acts on them, and 0 as the code swallows the key.
    std::function<void()> onChange;  ///< of the text, by the user or by the owner
    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;
    std::function<void(Long& KeyCode, Long Shift)> onKeyDown;
    std::function<void(Long& KeyCode, Long Shift)> onKeyUp;
    std::function<void(Long& KeyAscii)> onKeyPress;  ///< a code unit

  protected:
    Long HandleMessage(const Message& message) override;
    void MouseDown(const MouseEvent& event) override;
    void MouseMove(const MouseEvent& event) override;
    void MouseUp(const MouseEvent& event) override;
    void DoubleClick(const MouseEvent& event) override;
    void Resized() override { Refit(); }
    void LooksChanged() override { Refit(); }
    void Redraw() override { Draw(); }

  private:
    // A line as wrapped.
    struct Line {
        std::size_t start = 0;
        std::size_t length = 0;
        std::size_t End() const { return start + length; }
    };
    enum class Nearest { kGap, kUnit };  // what of the text a point is to name

    // Input: text_box_input.cpp.
    void KeyDown(Long code, Long shift);
    bool EditingKey(Long code, Long shift);
    void LineKey(Long code, Long shift);
    void PageKey(Long code);
    void KeyPress(Long code);
    void Copy() const;
    void Cut();
    void Paste();
    void Undo();
    void Insert(std::u16string_view text);
    void EraseTo(std::size_t place);
    void MoveCaret(std::size_t place, bool extend);
    void Changed();
    Long Wheel(const Message& message);
    void RaiseFocus(bool gained);

    // Lines, places in pixels, and drawing: text_box.cpp.
    const std::vector<Line>& Lines() const;
    void Refit();
    Long MostTopLine() const;
    std::size_t LineOf(std::size_t place) const;
    const TextComposed* Composed() const;
    std::size_t ShownCaret() const;
    std::u16string TextOf(const Line& line) const;
    Long LineHeight() const;
    Long VisibleLines() const;
    Rect TextArea() const;
    Long OffsetIn(const Line& line, std::size_t place) const;
    std::size_t PlaceAt(const MouseEvent& event, Nearest nearest) const;
    void ScrollToCaret();
    void Draw();
    void DrawLine(Surface& face, const Line& line, const Rect& strip);
    std::optional<Rect> CaretRect() const;
    void DrawCaret(Surface& face);
    void TellInput(const std::optional<Rect>& caret);

    Kind kind_;
    bool locked_;
    TextEdit edit_;
    mutable std::vector<Line> lines_;  ///< of a page; empty: to be broken anew
    // What they were broken by.
    mutable Font linesFont_;
    mutable Long linesWidth_ = 0;
    Long topLine_ = 0;
    Long scroll_ = 0;  ///< pixels of a single line that lie left of the view
    Long linesPerNotch_ = 3;
    bool caretHidden_ = false;
    bool dragging_ = false;
    char16_t firstHalf_ = 0;  ///< of a surrogate pair that is being typed
};

}  // namespace platform
