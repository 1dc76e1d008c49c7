// JButton and JToogle, the skinned push button and its latched brother. They exist with their
// state; pictures, masks and the mouse are not built yet.
#pragma once

#include "platform/widget.h"

namespace sarnel {

class JButton : public platform::Widget {
  public:
    using Widget::Widget;
};

class JToogle : public platform::Widget {
  public:
    using Widget::Widget;
    bool Value() const { return value_; }
    void Value(bool value) { value_ = value; }

  private:
    bool value_ = false;
};

}  // namespace sarnel
