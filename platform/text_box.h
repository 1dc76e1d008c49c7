// A text box. Not built yet: it holds its text and nothing is drawn.
#pragma once

#include "platform/widget.h"

namespace platform {

class TextBox : public Widget {
  public:
    using Widget::Widget;
};

}  // namespace platform
