// JButton, the skinned push button, also the stick of a slider. Its picture holds three images from
// top to bottom: normal, pressed, disabled. An image is shown in its natural size: a button is as
// large as its mask.
//
// Of a left press Click comes after MouseUp, and only if the button went up inside.
#pragma once

#include "controls/skinbutton.h"

namespace sarnel {

class JButton : public SkinButton {
  public:
    using SkinButton::SkinButton;

    bool Enabled() const { return Widget::Enabled(); }
    /// Draws first, whatever the value was, and leaves PressState alone when it is False.
    void Enabled(bool value);

  protected:
    void DrawState(Row row) override;
    void MouseUp(const platform::MouseEvent& event) override;
};

}  // namespace sarnel
