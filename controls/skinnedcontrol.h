// What the small controls of the skin share: the look of the pointer, what counts as inside, and
// whether they still have a window after a handler of their owner has run.
#pragma once

#include <utility>

#include "platform/base/keys.h"
#include "platform/windows/widget.h"

namespace sarnel {

using platform::Colour;
using platform::Handle;
using platform::kLeftButton;
using platform::Long;

class SkinnedControl : public platform::Widget {
  public:
    using Widget::Widget;

    // The pointer's picture and shape over the control (0 the default). They are kept; no desktop
    // of ours is asked to change its pointer.
    platform::PictureRef MouseIcon() const { return mouseIcon_; }
    void MouseIcon(platform::PictureRef value) { mouseIcon_ = std::move(value); }
    Long MousePointer() const { return mousePointer_; }
    void MousePointer(Long value) { mousePointer_ = value; }

  protected:
    static bool HasPixels(const platform::PictureRef& picture) {
        return picture != nullptr && !picture->IsEmpty();
    }
    /// The edges count as inside, also those at Width and Height.
    bool IsInside(const platform::MouseEvent& event) const {
        return event.X >= 0 && event.Y >= 0 && event.X <= static_cast<float>(Width()) &&
               event.Y <= static_cast<float>(Height());
    }
    /// Hidden, at the place of another one, and as it is in what all of them have.
    void CopyCommonFrom(const SkinnedControl& first) {
        Visible(false);
        Move(first.Left(), first.Top(), first.Width(), first.Height());
        Widget::Enabled(first.Widget::Enabled());
        MouseIcon(first.mouseIcon_);
        MousePointer(first.mousePointer_);
    }
    /// False once a handler of the owner has ended the control's window. The control itself lives
    /// on until no message is handled, but raises no more events.
    bool IsAlive() const { return windows_.IsWindow(HWnd()); }

  private:
    platform::PictureRef mouseIcon_;
    Long mousePointer_ = 0;
};

}  // namespace sarnel
