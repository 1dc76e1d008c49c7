#include "platform/widgets/picture_box.h"

#include <utility>

namespace platform {

void PictureBox::Cls() {
    shown_.reset();
    isEmpty_ = true;
    Surface& face = Canvas();
    face.FillRect(face.Bounds(), BackColor());
    ShowFace();
}

void PictureBox::DrawText(std::u16string_view text, const Rect& rect, Long format) {
    shown_.reset();
    if (std::exchange(isEmpty_, false)) {
        shown_ = {std::u16string(text), rect, format};
    }
    windows_.Text().Draw(Canvas(), GetFont(), text, rect, format, ForeColor());
    ShowFace();
}

void PictureBox::ShowText(std::u16string_view text, const Rect& rect, Long format) {
    if (shown_ && shown_->text == text && shown_->rect == rect && shown_->format == format) {
        return;
    }
    Cls();
    DrawText(text, rect, format);
}

// Texts drawn over one another stay as they were converted.
void PictureBox::Redraw() {
    if (const auto shown = std::exchange(shown_, std::nullopt)) {
        ShowText(shown->text, shown->rect, shown->format);
    }
}

}  // namespace platform
