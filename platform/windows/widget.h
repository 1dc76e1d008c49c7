// What every control of a window is made of: a window with a name, a place, colours, a font, a tag
// and a face to draw on, which turns messages into events. Labels, picture boxes and text boxes are
// in platform/widgets/; what a skin draws is in controls/.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/window_system.h"

namespace platform {

/// A mouse event in pixels of the control's client area. Of a press or release `Button` is the
/// button itself (kLeftButton ...), of a move the sum of all that are held. `Shift` is the sum of
/// the modifiers (kShiftBit ...).
struct MouseEvent {
    Long Button = 0;
    Long Shift = 0;
    float X = 0;
    float Y = 0;
};

class Widget {
  public:
    /// Hears of every event a widget raises: the event's name and its arguments as text.
    using Observer = std::function<void(const std::string& event, const std::string& arguments)>;

    /// `rect` in pixels of the parent; a parent of 0 makes a hidden top-level window. A child is
    /// visible at once.
    Widget(WindowSystem& windows, Handle parent, const Rect& rect);
    virtual ~Widget();
    Widget(const Widget&) = delete;
    Widget& operator=(const Widget&) = delete;

    Handle HWnd() const { return window_; }

    // Place and size in pixels of the parent. A write moves the window at once.
    Long Left() const { return Place().left; }
    Long Top() const { return Place().top; }
    Long Width() const { return Place().Width(); }
    Long Height() const { return Place().Height(); }
    void Left(Long value) { Move(value, Top(), Width(), Height()); }
    void Top(Long value) { Move(Left(), value, Width(), Height()); }
    void Width(Long value) { Move(Left(), Top(), value, Height()); }
    void Height(Long value) { Move(Left(), Top(), Width(), value); }
    void Move(Long left, Long top, Long width, Long height);
    void Move(Long left, Long top) { Move(left, top, Width(), Height()); }

    bool Visible() const { return windows_.IsVisible(window_); }
    void Visible(bool value);
    bool Enabled() const { return windows_.IsEnabled(window_); }
    void Enabled(bool value) { windows_.EnableWindow(window_, value); }

    // A write of a colour, font or text draws the control anew where it draws these itself.
    Colour BackColor() const { return backColor_; }
    void BackColor(Colour value);
    Colour ForeColor() const { return foreColor_; }
    void ForeColor(Colour value);

    const Font& GetFont() const { return font_; }
    void SetFont(const Font& font);
    std::u16string FontName() const { return font_.name; }
    void FontName(std::u16string value);
    double FontSize() const { return font_.size; }
    void FontSize(double value);
    bool FontBold() const { return font_.bold; }
    void FontBold(bool value);
    bool FontItalic() const { return font_.italic; }
    void FontItalic(bool value);
    /// Height in pixels of a text in the control's font, broken at its line ends only.
    Long TextHeight(std::u16string_view text) const;

    /// The window's own text: the caption of a label or of a top-level window. A text box keeps
    /// what it shows elsewhere, in its own Text.
    std::u16string Text() const { return windows_.GetWindowText(window_); }
    void Text(std::u16string_view value);

    /// Free for the owner.
    std::u16string Tag() const { return tag_; }
    void Tag(std::u16string value) { tag_ = std::move(value); }
    std::u16string ToolTipText() const { return toolTip_; }
    void ToolTipText(std::u16string value) { toolTip_ = std::move(value); }

    /// What the control has drawn of itself, in the size that it had then.
    const Surface& Face() const { return face_; }

    /// One observer; an empty function ends it.
    void Observe(Observer observer) { observer_ = std::move(observer); }

    // Events for the owner, each raised after the control has done its own part.
    std::function<void()> onClick;
    std::function<void()> onDblClick;
    std::function<void(const MouseEvent& event)> onMouseDown;
    std::function<void(const MouseEvent& event)> onMouseMove;
    std::function<void(const MouseEvent& event)> onMouseUp;

  protected:
    /// The widget's own window procedure; what subclasses the window runs before it.
    virtual Long HandleMessage(const Message& message);

    // What HandleMessage makes of messages. The defaults raise the event, or do nothing.
    virtual void MouseDown(const MouseEvent& event) { RaiseMouseDown(event); }
    virtual void MouseMove(const MouseEvent& event) { RaiseMouseMove(event); }
    virtual void MouseUp(const MouseEvent& event) { RaiseMouseUp(event); }
    /// The second press of a double click; by default a press like the first.
    virtual void DoubleClick(const MouseEvent& event) { MouseDown(event); }
    /// The window has another size, or it has been shown.
    virtual void Resized() {}
    /// Has another place in its parent.
    virtual void Relocated() {}
    virtual void Shown() {}
    /// A colour, the font or the text has been written.
    virtual void LooksChanged() {}
    /// Pictures are finer or coarser from now on. The face has been converted; whoever draws words,
    /// pictures of the skin or gradients draws what it shows once more.
    virtual void Redraw() {}

    /// The face to draw on, brought to the window's size; new parts have the back colour. Once
    /// drawn on, it is what the window shows.
    Surface& Canvas();
    /// What has been drawn is to be shown.
    void ShowFace();
    void ShowFace(const Rect& part);

    /// Files dropped right on the widget; once called for, the widget takes drops.
    void AcceptDrops(WindowSystem::DropTarget target);
    /// Tells the observer of an event; `arguments` are printed apart by blanks.
    void Raised(const char* event, std::initializer_list<Long> arguments = {}) const;
    void RaiseClick();
    void RaiseDblClick();
    void RaiseMouseDown(const MouseEvent& event);
    void RaiseMouseMove(const MouseEvent& event);
    void RaiseMouseUp(const MouseEvent& event);
    /// MouseUp, and Click behind it if the release ends a click: MouseUp of a control that does
    /// nothing of its own.
    void RaiseMouseUpAndClick(const MouseEvent& event);
    /// Whether a release ends a click: the same button was pressed on the widget, as MouseDown
    /// told, and is released on it. To be asked once a release.
    bool EndsClick(const MouseEvent& release);

    WindowSystem& windows_;

  private:
    using MouseHandler = std::function<void(const MouseEvent& event)>;

    Rect Place() const { return windows_.GetRect(window_); }
    void RaiseMouse(const char* name, const MouseHandler& handler, const MouseEvent& event);
    bool HandleMouse(const Message& message);

    Handle window_ = 0;
    Colour backColor_ = 0;
    Colour foreColor_ = 0;
    Font font_;
    std::u16string tag_;
    std::u16string toolTip_;
    Surface face_;
    Long pressed_ = 0;  ///< the button of the last MouseDown, until it is released
    Observer observer_;
};

}  // namespace platform
