#include "platform/widgets/label.h"

namespace platform {

namespace {

// What a label says is no command: an "&" in it is meant as one.
constexpr Long kFormat = DT_WORDBREAK | DT_NOPREFIX;

}  // namespace

Label::Label(WindowSystem& windows, Handle parent, const Rect& rect)
    : Widget(windows, parent, rect) {
    windows.SetWindowless(HWnd(), true);
}

void Label::AutoSize(bool value) {
    autoSize_ = value;
    FitHeight();
}

void Label::Opaque(bool value) {
    opaque_ = value;
    Draw();
}

void Label::Resized() {
    FitHeight();
    Draw();
}

// What shines through depends on the place.
void Label::Relocated() {
    if (!opaque_) {
        Draw();
    }
}

void Label::LooksChanged() {
    FitHeight();
    Draw();
}

void Label::FitHeight() {
    if (!autoSize_) {
        return;
    }
    const Rect needed =
        windows_.Text().Calculate(GetFont(), Text(), {0, 0, Width(), Height()}, kFormat);
    if (needed.Height() != Height()) {
        Height(needed.Height());
    }
}

void Label::Draw() {
    Surface& face = Canvas();
    const Surface* below = windows_.GetFace(windows_.GetParent(HWnd()));
    face.FillRect(face.Bounds(), BackColor());
    if (!opaque_ && below != nullptr) {
        face.BitBlt(face.Bounds(), *below, {Left(), Top()});
    }
    windows_.Text().Draw(face, GetFont(), Text(), face.Bounds(), kFormat, ForeColor());
    ShowFace();
}

void Label::DoubleClick(const MouseEvent& /*event*/) {
    RaiseDblClick();
}

}  // namespace platform
