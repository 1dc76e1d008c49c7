#include "controls/jslider.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "core/base/failure.h"
#include "platform/base/rounding.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Colour kStickMaskColor = 0xFFFFFF;

}  // namespace

JSlider::JSlider(WindowSystem& windows, Handle parent, const Rect& rect)
    : SkinnedControl(windows, parent, rect), JStick(windows, HWnd(), Rect{}, kStickMaskColor) {
    ForwardFromStick();
}

void JSlider::Enabled(bool value) {
    Widget::Enabled(value);
    Refresh();
}

void JSlider::Refresh() {
    JStick.Visible(Enabled());
    Draw();
}

void JSlider::Picture(PictureRef value) {
    picture_ = std::move(value);
    ResizeStep();
}

void JSlider::Style(bool value) {
    vertical_ = value;
    ResizeStep();
    StickPosition(stickPosition_);
}

void JSlider::Max(Long value) {
    max_ = value;
    PlaceStick(value_);
}

void JSlider::StickPosition(double value) {
    stickPosition_ = value;
    MoveStick(0);
}

// A StickPosition that is no whole number of 32 bits, rounded, leaves the stick where it is.
void JSlider::MoveStick(Long along) {
    const auto across = RoundTo32Bits(stickPosition_);
    if (!across) {
        return;
    }
    if (vertical_) {
        JStick.Move(*across, along);
    } else {
        JStick.Move(along, *across);
    }
}

void JSlider::Value(Long value) {
    value_ = std::min(std::max(value, 0), max_);
    Refresh();
    PlaceStick(value_);
}

void JSlider::CopyFrom(const JSlider& first) {
    CopyCommonFrom(first);
    picture_ = first.picture_;
    vertical_ = first.vertical_;
    max_ = first.max_;
    StickMaskColor(first.StickMaskColor());
    StickMaskPicture(first.StickMaskPicture());
    StickPicture(first.StickPicture());
    stickPosition_ = first.stickPosition_;
    value_ = first.value_;
}

void JSlider::DrawBackground(Long half) {
    if (!HasPixels(picture_)) {
        return;
    }
    // Each tick of a playing item writes the value, and mostly the same one.
    Background background{picture_, half, vertical_, Canvas().GetSize(), BackColor()};
    if (!(background == drawn_)) {
        drawn_ = std::move(background);
        DrawBackground();
    }
}

void JSlider::DrawBackground() {
    if (drawn_.picture == nullptr) {
        return;
    }
    Surface& face = Canvas();
    face.FillRect(face.Bounds(), drawn_.colour);
    SourceRect from{0, 0, static_cast<double>(drawn_.picture->Width()),
                    static_cast<double>(drawn_.picture->Height())};
    if (drawn_.vertical) {
        from.width /= 2;
        from.left = from.width * drawn_.half;
    } else {
        from.height /= 2;
        from.top = from.height * drawn_.half;
    }
    face.StretchBlt(face.Bounds(), *drawn_.picture, from);
    ShowFace();
}

void JSlider::Draw() {
    if (Enabled()) {
        DrawEnabled();
    } else {
        DrawDisabled();
    }
}

// The slider corrects its size across the track. Where the correction gives the size that it had,
// nothing has changed, and the stick stays where the last write of StickPosition or Value put it.
void JSlider::Resized() {
    if (!HasPixels(picture_)) {
        return;
    }
    FitToPicture();
    if (!(stepSize_ == Size{Width(), Height()})) {
        ShowStep();
    }
}

void JSlider::ResizeStep() {
    if (HasPixels(picture_)) {
        FitToPicture();
        ShowStep();
    }
}

void JSlider::FitToPicture() {
    if (vertical_) {
        Width(RoundHalfEven(picture_->Width() / 2.0));
    } else {
        Height(RoundHalfEven(picture_->Height() / 2.0));
    }
}

void JSlider::ShowStep() {
    stepSize_ = {Width(), Height()};
    Draw();
    PlaceStick(value_);
}

Long JSlider::Travel() const {
    return vertical_ ? Height() - JStick.Height() : Width() - JStick.Width();
}

void JSlider::PlaceStick(Long value) {
    if (max_ == 0) {
        return;
    }
    const double ratio = static_cast<double>(value) / max_;
    const auto position = RoundTo16Bits(Travel() * ratio);
    if (position) {
        MoveStick(*position);
    }
}

void JSlider::MapPointToValue(Long x, Long y) {
    const Long travel = Travel();
    const std::int64_t along = std::min(std::max(vertical_ ? y : x, 0), travel);
    const std::int64_t product = along * max_;
    constexpr std::int64_t kLowest = std::numeric_limits<Long>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<Long>::max();
    if (travel != 0 && product >= kLowest && product <= kHighest) {
        Take(lastMapped_, RoundTo16Bits(static_cast<double>(product) / travel));
    }
    Value(lastMapped_);
    windows_.UpdateScreen();
    Raised("Scroll");
    if (const auto handler = onScroll) {
        handler();
    }
}

void JSlider::CentreStick(const MouseEvent& event) {
    Long x = 0;
    Long y = 0;
    Take(x, RoundTo32Bits(static_cast<double>(event.X) - JStick.Width() / 2.0));
    Take(y, RoundTo32Bits(static_cast<double>(event.Y) - JStick.Height() / 2.0));
    MapPointToValue(x, y);
}

void JSlider::MouseDown(const MouseEvent& event) {
    if (event.Button == kLeftButton) {
        mouseControled_ = true;
        CentreStick(event);
    }
    if (IsAlive()) {
        RaiseMouseDown(event);
    }
}

void JSlider::MouseMove(const MouseEvent& event) {
    if (event.Button == kLeftButton) {
        mouseControled_ = true;
        CentreStick(event);
    }
    if (IsAlive()) {
        RaiseMouseMove(event);
    }
}

void JSlider::MouseUp(const MouseEvent& event) {
    if (event.Button == kLeftButton) {
        mouseControled_ = false;
        DrawEnabled();
        CentreStick(event);
    }
    if (IsAlive()) {
        RaiseMouseUp(event);
    }
}

// What the mouse does on the stick is handled as if it were done on the slider: in coordinates of
// the slider, in which the owner hears of it, too.
void JSlider::ForwardFromStick() {
    const auto onSlider = [this](const MouseEvent& event, auto&& handle) {
        const auto x = RoundTo16Bits(static_cast<double>(event.X) + JStick.Left());
        const auto y = RoundTo16Bits(static_cast<double>(event.Y) + JStick.Top());
        if (x && y) {
            handle(MouseEvent{event.Button, event.Shift, static_cast<float>(*x),
                              static_cast<float>(*y)});
        }
    };
    JStick.onMouseDown = [this, onSlider](const MouseEvent& event) {
        onSlider(event, [this](const MouseEvent& moved) { MouseDown(moved); });
    };
    JStick.onMouseMove = [this, onSlider](const MouseEvent& event) {
        onSlider(event, [this](const MouseEvent& moved) { MouseMove(moved); });
    };
    JStick.onMouseUp = [this, onSlider](const MouseEvent& event) {
        onSlider(event, [this](const MouseEvent& moved) { MouseUp(moved); });
    };
}

}  // namespace sarnel
