#include "platform/text_drawing.h"

#include <algorithm>
#include <functional>

namespace platform {

namespace {

constexpr Long kPieceWidth = 2048;
// Enough for the rows of several screens; a piece of a row takes some 4 KiB.
constexpr std::size_t kMostBytes = 1024 * 1024;
// No surface is wide enough for more, and shaping takes time that grows with the text.
constexpr std::size_t kMostUnits = 8192;

// The longest beginning of `line` that fits, at least one unit: whole words if one fits.
std::size_t FittingUnits(const Driver& driver, const Font& font, std::u16string_view line,
                         Long width) {
    if (driver.MeasureText(font, line).width <= width) {
        return line.size();
    }
    std::size_t fits = 1;
    std::size_t tooLong = line.size();
    while (fits + 1 < tooLong) {
        const std::size_t middle = fits + (tooLong - fits) / 2;
        const bool goes = driver.MeasureText(font, line.substr(0, middle)).width <= width;
        (goes ? fits : tooLong) = middle;
    }
    const std::size_t blank = line.substr(0, fits + 1).rfind(u' ');
    return blank == std::u16string_view::npos || blank == 0 ? fits : blank;
}

}  // namespace

std::vector<std::u16string_view> BreakLines(const Driver& driver, const Font& font,
                                            std::u16string_view text, Long width) {
    std::vector<std::u16string_view> lines;
    for (bool more = true; more;) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        std::u16string_view line = text.substr(0, end);
        more = end < text.size();
        text.remove_prefix(more ? end + (text.substr(end, 2) == u"\r\n" ? 2 : 1) : end);
        while (width > 0 && !line.empty()) {
            const std::size_t fits = FittingUnits(driver, font, line, width);
            if (fits == line.size()) {
                break;
            }
            lines.push_back(line.substr(0, fits));
            line.remove_prefix(fits);
            line.remove_prefix(std::min(line.find_first_not_of(u' '), line.size()));
        }
        lines.push_back(line);
    }
    return lines;
}

std::size_t TextDrawing::KeyHash::operator()(const Key& key) const {
    const std::size_t text = std::hash<std::u16string_view>()(key.text);
    const std::size_t font = std::hash<std::u16string_view>()(key.font->name);
    return text ^ (font << 1) ^ static_cast<std::size_t>(key.font->size * 8 + key.number);
}

const TextPicture& TextDrawing::Rendered(const Font& font, std::u16string_view text, Long number) {
    const auto found = found_.find({&font, text, number});
    if (found != found_.end()) {
        pieces_.splice(pieces_.begin(), pieces_, found->second);
        return pieces_.front().picture;
    }
    pieces_.push_front({font, std::u16string(text), number,
                        driver_.RenderText(font, text, number * kPieceWidth, kPieceWidth)});
    const Piece& piece = pieces_.front();
    found_[{&piece.font, piece.text, number}] = pieces_.begin();
    bytes_ += piece.picture.coverage.size();
    while (bytes_ > kMostBytes && pieces_.size() > 1) {
        const Piece& last = pieces_.back();
        bytes_ -= last.picture.coverage.size();
        found_.erase({&last.font, last.text, last.number});
        pieces_.pop_back();
    }
    return piece.picture;
}

Long TextDrawing::WidthOf(const Font& font, std::u16string_view text) {
    const Long width = Rendered(font, text, 0).width;
    return width < kPieceWidth ? width : driver_.MeasureText(font, text).width;
}

void TextDrawing::DrawLine(Surface& surface, const Font& font, std::u16string_view text,
                           const Rect& rect, Long format, Colour colour) {
    text = text.substr(0, kMostUnits);
    Point at{rect.left, rect.top};
    if ((format & DT_CENTER) != 0) {
        at.x += (rect.Width() - WidthOf(font, text)) / 2;
    } else if ((format & DT_RIGHT) != 0) {
        at.x = rect.right - WidthOf(font, text);
    }
    if ((format & DT_VCENTER) != 0 && (format & DT_SINGLELINE) != 0) {
        at.y += (rect.Height() - Rendered(font, text, 0).height) / 2;
    }
    const Rect clip = Intersect(rect, surface.Bounds());
    Long number = std::max(clip.left - at.x, 0) / kPieceWidth;
    for (; at.x + number * kPieceWidth < clip.right; ++number) {
        const TextPicture& piece = Rendered(font, text, number);
        surface.BlendText(piece, {at.x + number * kPieceWidth, at.y}, clip, colour);
        if (piece.width < kPieceWidth) {
            return;
        }
    }
}

void TextDrawing::Draw(Surface& surface, const Font& font, std::u16string_view text,
                       const Rect& rect, Long format, Colour colour) {
    if (text.empty() || IsEmpty(Intersect(rect, surface.Bounds()))) {
        return;
    }
    if ((format & DT_SINGLELINE) != 0) {
        DrawLine(surface, font, text, rect, format, colour);
        return;
    }
    const Long height = driver_.MeasureText(font, u"^j").height;
    const Long width = (format & DT_WORDBREAK) != 0 ? rect.Width() : 0;
    Rect line = rect;
    for (const std::u16string_view words : BreakLines(driver_, font, text, width)) {
        if (!words.empty()) {
            DrawLine(surface, font, words, line, format & ~DT_VCENTER, colour);
        }
        line.top += height;
        if (line.top >= rect.bottom) {
            return;
        }
    }
}

Rect TextDrawing::Calculate(const Font& font, std::u16string_view text, const Rect& rect,
                            Long format) const {
    Size size = driver_.MeasureText(font, u"^j");
    if ((format & DT_SINGLELINE) != 0) {
        size.width = driver_.MeasureText(font, text).width;
    } else {
        const Long width = (format & DT_WORDBREAK) != 0 ? rect.Width() : 0;
        const auto lines = BreakLines(driver_, font, text, width);
        size = {0, size.height * static_cast<Long>(lines.size())};
        for (const std::u16string_view line : lines) {
            size.width = std::max(size.width, driver_.MeasureText(font, line).width);
        }
    }
    return {rect.left, rect.top, rect.left + size.width, rect.top + size.height};
}

}  // namespace platform
