#include "platform/desktop/text_engine.h"

#include <algorithm>

#include "platform/desktop/text_line.h"

namespace platform::desktop {

Size SizeWithoutFonts(const Font& font, std::u16string_view text) {
    constexpr std::size_t kLongest = 1'000'000;  // units; more would leave the range of a width
    const int height = PixelSizeOf(font);
    const int unit = (height + 1) / 2;
    return {static_cast<Long>(std::min(text.size(), kLongest)) * unit, height};
}

TextEngine::TextEngine() = default;
TextEngine::~TextEngine() = default;

FontFace& TextEngine::FaceFor(const Font& font) {
    const auto found = std::find_if(faces_.begin(), faces_.end(),
                                    [&](const auto& face) { return face->Asked() == font; });
    if (found != faces_.end()) {
        return **found;
    }
    faces_.push_back(std::make_unique<FontFace>(font));
    return *faces_.back();
}

TextLine& TextEngine::Shape(const Font& font, std::u16string_view text) {
    FontFace& face = FaceFor(font);
    if (line_ == nullptr || !line_->Is(face, text)) {
        line_ = std::make_unique<TextLine>(face, text);
    }
    return *line_;
}

Size TextEngine::Measure(const Font& font, std::u16string_view text) {
    return Shape(font, text).GetSize();
}

TextPicture TextEngine::Render(const Font& font, std::u16string_view text, Long left, Long width,
                               Long density) {
    return Shape(font, text).Render(left, width, density);
}

Long TextEngine::Offset(const Font& font, std::u16string_view text, std::size_t index) {
    return Shape(font, text).Offset(index);
}

}  // namespace platform::desktop
