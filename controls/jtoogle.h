// JToogle, the skinned button that latches. Its picture holds six images from top to bottom:
// normal, pressed, disabled, then the same three for a latched one. An image is stretched to the
// control.
//
// Of a left press that ends inside, Value changes first, then comes Click, then MouseUp: the other
// way round than with JButton, and meant.
#pragma once

#include "controls/skinbutton.h"

namespace sarnel {

class JToogle : public SkinButton {
  public:
    using SkinButton::SkinButton;

    bool Enabled() const { return Widget::Enabled(); }
    /// A write of the present value does nothing.
    void Enabled(bool value);
    /// The latch. A write draws and raises no Click.
    bool Value() const { return value_; }
    void Value(bool value);

    void CopyFrom(const JToogle& first);

  protected:
    void DrawState(Row row) override;
    void MouseUp(const platform::MouseEvent& event) override;

  private:
    bool value_ = false;
    bool lastReleaseInside_ = false;
};

}  // namespace sarnel
