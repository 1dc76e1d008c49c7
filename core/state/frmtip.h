// The tooltip: a small window with one line of help text near the pointer, on a frame of three
// pictures of the skin. There is one for the whole program. It comes up at once, follows the
// pointer, and goes half a second after whoever calls it last.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/widget.h"

namespace sarnel {

using platform::Long;

class frmTIP : public platform::Widget {
  public:
    explicit frmTIP(platform::WindowSystem& windows);

    platform::PictureRef imgTip1;  ///< left end of the frame; its height is the window's
    platform::PictureRef imgTip2;  ///< middle piece, stretched
    platform::PictureRef imgTip3;  ///< right end

    /// Shows the text below the pointer, or moves the window if it shows it already, for `timeOut`
    /// milliseconds; 0 and less: until something else hides it. An empty text does nothing at all.
    void ShowTooltip(std::u16string_view text, Long timeOut);
    /// The text on show, or shown last.
    std::u16string Helptext() const { return text_; }
    /// Draws the window; runs when its size changes.
    void Form_Resize();

  protected:
    void Resized() override { Form_Resize(); }
    void Redraw() override { Form_Resize(); }
    /// It never stands in the way.
    void MouseMove(const platform::MouseEvent& event) override;

  private:
    /// What the window's picture was drawn of.
    struct Drawn {
        std::u16string text;
        platform::PictureRef left;
        platform::PictureRef middle;
        platform::PictureRef right;
        platform::Colour colour = 0;
        bool operator==(const Drawn&) const = default;
    };
    Drawn DrawnNow() const { return {text_, imgTip1, imgTip2, imgTip3, ForeColor()}; }
    platform::Rect Place() const;
    void Hide();

    std::u16string text_;
    Drawn drawn_;
};

}  // namespace sarnel
