// JSlider turns a value into the place of its stick and a mouse point into a value. It has its
// value now; its picture, its stick and the mouse are not built yet.
#pragma once

#include "core/seams.h"
#include "platform/widget.h"

namespace sarnel {

using platform::Long;

class JSlider : public platform::Widget {
  public:
    using Widget::Widget;

    /// 0 to Max. A write is clamped and never raises Scroll.
    Long Value() const { return value_; }
    void Value(Long value);
    /// The value of the far end. Lowering it leaves a higher Value as it is.
    Long Max() const { return max_; }
    void Max(Long value) { max_ = value; }
    /// While the user holds the stick.
    bool IsSliderMouseControled() const { return mouseControlled_; }
    void Refresh() { seams::DrawSlider(); }

  private:
    Long value_ = 0;
    Long max_ = 100;
    bool mouseControlled_ = false;
};

inline void JSlider::Value(Long value) {
    value = value < 0 ? 0 : value;
    value_ = value > max_ ? max_ : value;
}

}  // namespace sarnel
