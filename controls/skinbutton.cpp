#include "controls/skinbutton.h"

namespace sarnel {

using platform::MouseEvent;

void SkinButton::Picture(platform::PictureRef value) {
    picture_ = std::move(value);
    ResizeStep();
}

void SkinButton::MaskPicture(platform::PictureRef value) {
    maskPicture_ = std::move(value);
    ApplyMask();
    ResizeStep();
}

void SkinButton::MaskColor(Colour value) {
    maskColor_ = value;
    ApplyMask();
}

void SkinButton::ApplyMask() {
    windows_.SetMask(HWnd(), maskPicture_ != nullptr
                                 ? std::make_shared<platform::Mask>(*maskPicture_, maskColor_)
                                 : nullptr);
}

void SkinButton::DrawImage(platform::PictureRef strip, const platform::Rect& to,
                           const platform::SourceRect& from) {
    Canvas().StretchBlt(to, *strip, from);
    drawn_ = {std::move(strip), to, from};
    ShowFace();
}

void SkinButton::Redraw() {
    ApplyMask();
    if (drawn_.strip != nullptr) {
        DrawImage(drawn_.strip, drawn_.to, drawn_.from);
    }
}

// Changing the size calls Resized, which comes here again; the second time the size is right
// already.
void SkinButton::ResizeStep() {
    if (maskPicture_ == nullptr) {
        return;
    }
    Move(Left(), Top(), maskPicture_->Width(), maskPicture_->Height());
    Refresh();
}

void SkinButton::Refresh() {
    if (Enabled()) {
        DrawNormal();
    } else {
        DrawGrey();
    }
}

void SkinButton::CopyFrom(const SkinButton& first) {
    CopyCommonFrom(first);
    picture_ = first.picture_;
    maskColor_ = first.maskColor_;
    MaskPicture(first.maskPicture_);
}

void SkinButton::DrawNormal() {
    DrawState(kNormal);
    pressState_ = 0;
}

void SkinButton::DrawPressed() {
    DrawState(kPressed);
    pressState_ = 1;
}

void SkinButton::DrawGrey() {
    DrawState(kDisabled);
}

// What the user presses is on the screen before the owner hears of it: the owner may take its time.
void SkinButton::MouseDown(const MouseEvent& event) {
    if (event.Button == kLeftButton) {
        DrawPressed();
        windows_.UpdateScreen();
    }
    RaiseMouseDown(event);
}

void SkinButton::MouseMove(const MouseEvent& event) {
    const bool inside = IsInside(event);
    if (event.Button == kLeftButton && inside != (pressState_ == 1)) {
        if (inside) {
            DrawPressed();
        } else {
            DrawNormal();
        }
        windows_.UpdateScreen();
    }
    RaiseMouseMove(event);
}

}  // namespace sarnel
