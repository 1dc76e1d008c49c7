#include "controls/jbutton.h"

#include <cmath>

namespace sarnel {

void JButton::Enabled(bool value) {
    if (value) {
        DrawNormal();
    } else {
        DrawGrey();
    }
    Widget::Enabled(value);
}

void JButton::DrawState(Row row) {
    constexpr double kImages = 3;
    const platform::PictureRef strip = Picture();
    if (!HasPixels(strip)) {
        return;
    }
    // A strip need not be a multiple of 3 high: an image may begin and end within a pixel, which
    // belongs to it if the pixel's middle does.
    const double imageHeight = strip->Height() / kImages;
    const auto height = static_cast<Long>(std::ceil(imageHeight - 0.5));
    const platform::Rect to{0, 0, strip->Width(), height};
    DrawImage(strip, to,
              {0, imageHeight * Long{row}, static_cast<double>(strip->Width()),
               static_cast<double>(height)});
}

void JButton::MouseUp(const platform::MouseEvent& event) {
    RaiseMouseUp(event);
    if (event.Button != kLeftButton || !IsAlive()) {
        return;
    }
    DrawNormal();
    windows_.UpdateScreen();
    if (IsInside(event)) {
        RaiseClick();
    }
}

}  // namespace sarnel
