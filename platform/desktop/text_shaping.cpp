#include "platform/desktop/text_shaping.h"

#include <algorithm>
#include <cmath>

#include "platform/desktop/glyph_ink.h"
#include "platform/desktop/word_fitting.h"

namespace platform::desktop {

namespace {

bool IsPlainLatin(const QString& text) {
    return std::ranges::all_of(text, [](QChar unit) { return unit.unicode() < 0x80; });
}

}  // namespace

ShapedStretch::ShapedStretch(const QString& text, const QFont& font, const LineRoom& room,
                             const ShapedStretch* plain, int times)
    : text_(text), font_(font), room_(room) {
    if (IsPlainLatin(text)) {
        LayOut();
        return;
    }
    const bool hangsTogether = std::ranges::any_of(text, HangsTogether);
    isJoined_ = hangsTogether && std::ranges::any_of(text, IsJoinedToNext);
    if (plain != nullptr) {
        text_ = plain->text_;
        looks_ = plain->looks_;
        for (WordLooks::Look& look : looks_.units) {
            look.size *= times;
            look.drop = 0;
        }
        LayOut();
    } else {
        FindPictures(text_, looks_);
        LayOut();
        if (hangsTogether && FindWholeWords(text_, font_, Line(), looks_)) {
            LayOut();
        }
    }
    Fit();
}

void ShapedStretch::LayOut() {
    constexpr double kWideEnough = 4'000'000;
    QTextOption option(Qt::AlignLeft);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout_ = std::make_unique<QTextLayout>(text_, font_);
    layout_->setTextOption(option);
    layout_->setCacheEnabled(true);
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype start = 0; start < static_cast<qsizetype>(looks_.units.size());) {
        const WordLooks::Look look = looks_.At(start);
        const qsizetype end = looks_.EndOfPart(start, text_.size());
        if (look.family != 0 || look.size != 0) {
            QFont font = font_;
            if (look.family != 0) {
                font.setFamilies(QStringList{looks_.families[look.family - 1U]} + font.families());
            }
            if (look.size != 0) {
                font.setPixelSize(look.size);
            }
            QTextCharFormat format;
            format.setFont(font);
            formats.append({static_cast<int>(start), static_cast<int>(end - start), format});
        }
        start = end;
    }
    if (!formats.isEmpty()) {
        layout_->setFormats(formats);
    }
    layout_->beginLayout();
    QTextLine line = layout_->createLine();
    line.setLineWidth(kWideEnough);
    line.setPosition({0, 0});
    layout_->endLayout();
}

void ShapedStretch::Fit() {
    // Each time what is too high becomes smaller; hinting may let a size be as high as the last.
    constexpr int kMostTries = 12;
    for (int i = 0; i < kMostTries; ++i) {
        const Fitting fitting = FitWords(text_, font_, Line(), room_, looks_);
        drop_ = fitting.drop;
        if (!fitting.changed) {
            return;
        }
        LayOut();
    }
}

int ShapedStretch::Lead() const {
    constexpr int kFarAway = 1 << 24;
    const QRect inside(0, -kFarAway, kFarAway, 2 * kFarAway);
    // What begins further right does not reach as far back; a letter may have marks, though.
    const int beginning = IsPlainLatin(text_) ? 1 : std::min(static_cast<int>(text_.size()), 4);
    QRect ink;
    for (const QGlyphRun& run : Line().glyphRuns(0, beginning)) {
        ink |= InkOfRun(run, inside);
    }
    return -ink.left();
}

std::vector<GlyphGroup> ShapedStretch::Groups(const ShapedStretch& other) const {
    std::vector<GlyphGroup> groups;
    const double base = Line().ascent();
    const auto add = [&](const QList<QGlyphRun>& runs, int drop) {
        for (QGlyphRun run : runs) {
            auto places = run.positions();
            for (QPointF& place : places) {
                place.ry() += drop - base;
            }
            run.setPositions(places);
            groups.push_back({run, HasColours(run.rawFont())});
        }
    };
    for (qsizetype start = 0; start < text_.size();) {
        const qsizetype end = std::min(looks_.EndOfPart(start, text_.size()),
                                       other.looks_.EndOfPart(start, text_.size()));
        add(Line().glyphRuns(static_cast<int>(start), static_cast<int>(end - start)),
            drop_ + looks_.At(start).drop);
        start = end;
    }
    return groups;
}

}  // namespace platform::desktop
