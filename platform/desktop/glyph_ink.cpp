#include "platform/desktop/glyph_ink.h"

#include <QImage>
#include <QPainter>

#include "platform/desktop/word_fonts.h"

namespace platform::desktop {

namespace {

constexpr uchar kFaint = 64;

bool IsFaint(const QImage& image, int left, int top, int width, int height) {
    for (int y = top; y < top + height; ++y) {
        const uchar* row = image.constScanLine(y);
        for (int x = left; x < left + width; ++x) {
            if (row[x] >= kFaint) {
                return false;
            }
        }
    }
    return true;
}

QRect WithoutRim(const QImage& image, QRect ink) {
    const auto rowIsFaint = [&](int y) { return IsFaint(image, 0, y, image.width(), 1); };
    const auto columnIsFaint = [&](int x) { return IsFaint(image, x, 0, 1, image.height()); };
    int top = 0;
    int bottom = ink.height();
    int left = 0;
    int right = ink.width();
    while (top < bottom && rowIsFaint(top)) {
        ++top;
    }
    while (bottom > top && rowIsFaint(bottom - 1)) {
        --bottom;
    }
    while (left < right && columnIsFaint(left)) {
        ++left;
    }
    while (right > left && columnIsFaint(right - 1)) {
        --right;
    }
    return {ink.left() + left, ink.top() + top, right - left, bottom - top};
}

}  // namespace

QRect InkOfGlyph(const QRawFont& font, quint32 glyph) {
    const QRect ink = font.boundingRect(glyph).toAlignedRect();
    if (ink.isEmpty() || HasColours(font)) {
        return ink;
    }
    QImage image(ink.size(), QImage::Format_Alpha8);
    image.fill(0);
    QGlyphRun alone;
    alone.setRawFont(font);
    alone.setGlyphIndexes({glyph});
    alone.setPositions({QPointF()});
    QPainter painter(&image);
    painter.setPen(Qt::black);
    painter.drawGlyphRun(-ink.topLeft(), alone);
    painter.end();
    return WithoutRim(image, ink);
}

QRect InkOfRun(const QGlyphRun& run, const QRect& inside) {
    const QRawFont font = run.rawFont();
    const auto glyphs = run.glyphIndexes();
    const auto places = run.positions();
    QRect all;
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
        const QPoint place = places[i].toPoint();
        QRect ink = font.boundingRect(glyphs[i]).toAlignedRect();
        if (ink.isEmpty()) {
            continue;
        }
        if (!inside.contains(ink.translated(place))) {
            ink = InkOfGlyph(font, glyphs[i]);
        }
        all |= ink.translated(place);
    }
    return all;
}

}  // namespace platform::desktop
