#include "platform/widgets/picture_box.h"

namespace platform {

void PictureBox::Cls() {
    shown_.reset();
    Surface& face = Canvas();
    face.FillRect(face.Bounds(), BackColor());
    ShowFace();
}

void PictureBox::DrawText(std::u16string_view text, const Rect& rect, Long format) {
    shown_.reset();
    windows_.Text().Draw(Canvas(), GetFont(), text, rect, format, ForeColor());
    ShowFace();
}

void PictureBox::ShowText(std::u16string_view text, const Rect& rect, Long format) {
    if (shown_ && shown_->text == text && shown_->rect == rect && shown_->format == format) {
        return;
    }
    Cls();
    DrawText(text, rect, format);
    shown_ = {std::u16string(text), rect, format};
}

}  // namespace platform
