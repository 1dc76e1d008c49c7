// What every control of a window is made of: a window with a name, a place, colours, a font and a
// tag, which can raise events. Labels, picture boxes and text boxes are here; what a skin draws is
// in controls/. Widgets hold their state now and are not painted yet.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/window_system.h"

namespace platform {

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

    bool Visible() const { return windows_.IsVisible(window_); }
    void Visible(bool value);
    bool Enabled() const { return windows_.IsEnabled(window_); }
    void Enabled(bool value) { windows_.EnableWindow(window_, value); }

    Colour BackColor() const { return backColor_; }
    void BackColor(Colour value) { backColor_ = value; }
    Colour ForeColor() const { return foreColor_; }
    void ForeColor(Colour value) { foreColor_ = value; }

    const Font& GetFont() const { return font_; }
    void SetFont(const Font& font) { font_ = font; }
    std::u16string FontName() const { return font_.name; }
    void FontName(std::u16string value) { font_.name = std::move(value); }
    double FontSize() const { return font_.size; }
    void FontSize(double value) { font_.size = value; }
    bool FontBold() const { return font_.bold; }
    void FontBold(bool value) { font_.bold = value; }
    bool FontItalic() const { return font_.italic; }
    void FontItalic(bool value) { font_.italic = value; }

    /// Caption of a label or window, text of a text box.
    std::u16string Text() const { return windows_.GetWindowText(window_); }
    void Text(std::u16string_view value) { windows_.SetWindowText(window_, value); }

    /// Free for the owner.
    std::u16string Tag() const { return tag_; }
    void Tag(std::u16string value) { tag_ = std::move(value); }
    std::u16string ToolTipText() const { return toolTip_; }
    void ToolTipText(std::u16string value) { toolTip_ = std::move(value); }

    /// One observer; an empty function ends it.
    void Observe(Observer observer) { observer_ = std::move(observer); }

  protected:
    /// The widget's own window procedure; what subclasses the window runs before it.
    virtual Long HandleMessage(const Message& message);
    /// Files dropped right on the widget; once called for, the widget takes drops.
    void AcceptDrops(WindowSystem::DropTarget target);
    /// Tells the observer of an event; `arguments` are printed apart by blanks.
    void Raised(const char* event, std::initializer_list<Long> arguments = {}) const;

    WindowSystem& windows_;

  private:
    Rect Place() const { return windows_.GetRect(window_); }

    Handle window_ = 0;
    Colour backColor_ = 0;
    Colour foreColor_ = 0;
    Font font_;
    std::u16string tag_;
    std::u16string toolTip_;
    Observer observer_;
};

class Label : public Widget {
  public:
    using Widget::Widget;
    std::u16string Caption() const { return Text(); }
    void Caption(std::u16string_view value) { Text(value); }
};

class PictureBox : public Widget {
  public:
    using Widget::Widget;
};

class TextBox : public Widget {
  public:
    using Widget::Widget;
};

}  // namespace platform
