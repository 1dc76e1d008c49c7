#include "platform/picture_box.h"

namespace platform {

void PictureBox::Cls() {
    Surface& face = Canvas();
    face.FillRect(face.Bounds(), BackColor());
    ShowFace();
}

void PictureBox::DrawText(std::u16string_view text, const Rect& rect, Long format) {
    windows_.Text().Draw(Canvas(), GetFont(), text, rect, format, ForeColor());
    ShowFace();
}

void PictureBox::MouseUp(const MouseEvent& event) {
    const bool clicks = EndsClick(event);
    RaiseMouseUp(event);
    if (clicks) {
        RaiseClick();
    }
}

}  // namespace platform
