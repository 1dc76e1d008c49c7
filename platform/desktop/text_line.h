// One line of text, shaped in its plain size, and in the finer one that was drawn last. All places
// are those of the plain size.
#pragma once

#include <QFont>
#include <QImage>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/text_shaping.h"
#include "platform/driver.h"

namespace platform::desktop {

/// A size in pixels of whatever can be drawn; at least 1.
int PixelSizeOf(const Font& font);

/// A font in one size.
struct FontSetting {
    FontSetting(const Font& asked, Long times);
    /// So many times as large, in the room of the plain size.
    FontSetting(const Font& asked, Long times, const LineRoom& plain);

    Long density;
    QFont made;
    LineRoom room;
};

/// A font in its plain size and in the finer one that was asked for last.
class FontFace {
  public:
    explicit FontFace(const Font& asked) : font_(asked), plain_(asked, 1) {}

    const Font& Asked() const { return font_; }
    const FontSetting& Plain() const { return plain_; }
    const FontSetting& At(Long density);

  private:
    Font font_;
    FontSetting plain_;
    std::unique_ptr<FontSetting> fine_;
};

/// What text is drawn on: coverage, and pixels where glyphs have colours.
class TextCanvas {
  public:
    TextCanvas(Long width, Long height, Long density);

    void Draw(const QTextLine& line, QPointF at);
    void Draw(const GlyphGroup& group, QPointF at);
    void MoveTo(TextPicture& picture) const;

  private:
    QImage coverage_;
    QImage colours_;
};

class TextLine {
  public:
    /// The face must outlive it.
    TextLine(FontFace& face, std::u16string_view text);

    bool Is(const FontFace& face, std::u16string_view text) const {
        return &face_ == &face && text_ == text;
    }
    /// Units.
    Size GetSize() const { return {width_, face_.Plain().room.height}; }
    Long Offset(std::size_t index) const;
    TextPicture Render(Long left, Long width, Long density);

  private:
    struct Stretch {
        std::size_t start = 0;
        double left = 0;  ///< units
        QString text;
        std::unique_ptr<ShapedStretch> plain;
        std::vector<GlyphGroup> fine;  ///< of the density asked for last; empty: not yet

        double Width() const { return plain->Line().naturalTextWidth(); }
    };

    void Refine(Stretch& stretch, const FontSetting& setting);
    void Draw(TextCanvas& canvas, Stretch& stretch, QPointF at, const FontSetting& setting);

    FontFace& face_;
    std::u16string text_;
    std::vector<Stretch> stretches_;
    Long width_ = 0;
    Long density_ = 1;  ///< of the fine groups
};

}  // namespace platform::desktop
