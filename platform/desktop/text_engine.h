// Measures and draws single lines of text: shaping, substitution of fonts and of single characters
// are the toolkit's, greys and whole pixels are ours.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/driver.h"

namespace platform::desktop {

/// What stands for measuring where no font can be asked any more: wide enough that nothing which
/// goes by the width of a text divides by nothing.
Size SizeWithoutFonts(const Font& font, std::u16string_view text);

class FontFace;
class TextLine;

class TextEngine {
  public:
    TextEngine();
    ~TextEngine();

    // As the driver's members of that name.
    Size Measure(const Font& font, std::u16string_view text);
    TextPicture Render(const Font& font, std::u16string_view text, Long left, Long width,
                       Long density = 1);
    Long Offset(const Font& font, std::u16string_view text, std::size_t index);

  private:
    FontFace& FaceFor(const Font& font);
    TextLine& Shape(const Font& font, std::u16string_view text);

    std::vector<std::unique_ptr<FontFace>> faces_;
    /// The last line that was shaped: it is usually measured, drawn and pointed into in turn.
    std::unique_ptr<TextLine> line_;
};

}  // namespace platform::desktop
