#include "controls/jtoogle.h"

namespace sarnel {

void JToogle::Enabled(bool value) {
    if (value == Enabled()) {
        return;
    }
    Widget::Enabled(value);
    Refresh();
}

void JToogle::Value(bool value) {
    value_ = value;
    Refresh();
}

void JToogle::CopyFrom(const JToogle& first) {
    SkinButton::CopyFrom(first);
    value_ = first.value_;  // after the drawing: it shows at the next one
}

void JToogle::DrawState(Row row) {
    constexpr Long kStates = 3;
    constexpr double kImages = 2 * kStates;
    const platform::PictureRef strip = Picture();
    if (!HasPixels(strip)) {
        return;
    }
    const double imageHeight = strip->Height() / kImages;
    const Long image = value_ ? Long{row} + kStates : Long{row};
    DrawImage(strip, Canvas().Bounds(),
              {0, imageHeight * image, static_cast<double>(strip->Width()), imageHeight});
}

void JToogle::MouseUp(const platform::MouseEvent& event) {
    if (event.Button == kLeftButton) {
        lastReleaseInside_ = IsInside(event);
        if (lastReleaseInside_) {
            value_ = !value_;
        }
        DrawNormal();
        windows_.UpdateScreen();
        if (lastReleaseInside_) {
            RaiseClick();
        }
    }
    if (IsAlive()) {
        RaiseMouseUp(event);
    }
}

}  // namespace sarnel
