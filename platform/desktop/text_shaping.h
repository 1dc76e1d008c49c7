// One stretch of a line, shaped by the toolkit in one size: with the fonts that its signs and words
// need, and each word as large as the line has room for.
#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QTextLayout>
#include <memory>
#include <vector>

#include "platform/desktop/word_fonts.h"

namespace platform::desktop {

/// The room of a line in pixels of the size that it is set in.
struct LineRoom {
    int height = 0;
    int base = 0;  ///< from the top down to the base line
};

/// Glyphs of one font; their places count from the stretch's left and the base line.
struct GlyphGroup {
    QGlyphRun run;
    bool coloured = false;
};

class ShapedStretch {
  public:
    /// With the fonts and, at most, the sizes of `plain`, the same text in a size that goes so many
    /// times into this one.
    ShapedStretch(const QString& text, const QFont& font, const LineRoom& room,
                  const ShapedStretch* plain = nullptr, int times = 1);

    QTextLine Line() const { return layout_->lineAt(0); }
    /// Whether the line is good as the toolkit by itself draws it.
    bool IsPlain() const { return drop_ == 0 && looks_.units.empty(); }
    /// Whether letters are joined to the next somewhere, so that nothing may come between them.
    bool IsJoined() const { return isJoined_; }
    /// How far ink reaches to the left of the line's beginning; whole pixels, below 0 where it
    /// begins to the right of it.
    int Lead() const;
    /// All glyphs, in groups that are those of the same text in another size, too, unless its font
    /// has other glyphs there.
    std::vector<GlyphGroup> Groups(const ShapedStretch& other) const;

  private:
    void LayOut();
    void Fit();

    QString text_;
    QFont font_;
    LineRoom room_;
    WordLooks looks_;
    bool isJoined_ = false;
    int drop_ = 0;  ///< of the whole line
    std::unique_ptr<QTextLayout> layout_;
};

}  // namespace platform::desktop
