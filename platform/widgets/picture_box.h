// A picture box: a flat area that holds other controls or that its owner draws on.
#pragma once

#include <optional>
#include <string>

#include "platform/windows/widget.h"

namespace platform {

class PictureBox : public Widget {
  public:
    using Widget::Widget;

    /// Size of what can be drawn on, in pixels.
    Long ScaleWidth() const { return Width(); }
    Long ScaleHeight() const { return Height(); }

    /// Fills the whole with BackColor.
    void Cls();
    /// Draws text over what is there, in ForeColor and the box's font, by a format of
    /// text_drawing.h.
    void DrawText(std::u16string_view text, const Rect& rect, Long format);
    /// Cls, then DrawText; nothing if that is all the box shows already.
    void ShowText(std::u16string_view text, const Rect& rect, Long format);
    /// Brings what has been drawn since to the screen.
    void Refresh() { ShowFace(); }

  protected:
    void MouseUp(const MouseEvent& event) override { RaiseMouseUpAndClick(event); }
    void Resized() override { Cls(); }
    void LooksChanged() override { Cls(); }
    void Redraw() override;

  private:
    /// A text on an empty box, which is all that it shows.
    struct Shown {
        std::u16string text;
        Rect rect;
        Long format = 0;
    };
    bool isEmpty_ = false;  ///< nothing has been drawn since Cls
    std::optional<Shown> shown_;
};

}  // namespace platform
