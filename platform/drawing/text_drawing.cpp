#include "platform/drawing/text_drawing.h"

#include <algorithm>
#include <functional>

#include "platform/drawing/text_lines.h"

namespace platform {

namespace {

constexpr Long kPieceWidth = 2048;

// Enough for the rows of several screens, whatever their density; a piece of a row takes some 4 KiB
// at density 1, and as many times more as there are pixels in one.
std::size_t MostBytes(Long density) {
    return (static_cast<std::size_t>(density) + 1) << 19;
}

// A text as its format reads it; kept in `room` where that differs from how it is written.
std::u16string_view WithoutMarks(std::u16string_view text, Long format, std::u16string& room) {
    constexpr char16_t kMark = u'&';
    if ((format & DT_NOPREFIX) != 0 || text.find(kMark) == std::u16string_view::npos) {
        return text;
    }
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t mark = std::min(text.find(kMark, start), text.size());
        room.append(text.substr(start, mark - start));
        room.append(text.substr(std::min(mark + 1, text.size()), 1));  // a mark of nothing is none
        start = mark + 2;
    }
    return room;
}

}  // namespace

std::size_t TextDrawing::KeyHash::operator()(const Key& key) const {
    const std::size_t text = std::hash<std::u16string_view>()(key.text);
    const std::size_t font = std::hash<std::u16string_view>()(key.font->name);
    return text ^ (font << 1) ^ static_cast<std::size_t>(key.font->size * 8 + key.number);
}

std::size_t TextDrawing::BytesOf(const Piece& piece) {
    return sizeof(Piece) + piece.text.size() * sizeof(char16_t) + piece.picture.coverage.size() +
           piece.picture.colours.size() * sizeof(Pixel);
}

const TextPicture& TextDrawing::Rendered(const Font& font, std::u16string_view text, Long number,
                                         Long density) {
    if (density_ != density) {
        found_.clear();
        pieces_.clear();
        bytes_ = 0;
        density_ = density;
    }
    const auto found = found_.find({&font, text, number});
    if (found != found_.end()) {
        pieces_.splice(pieces_.begin(), pieces_, found->second);
        return pieces_.front().picture;
    }
    pieces_.push_front(
        {font, std::u16string(text), number,
         driver_.RenderText(font, text, number * kPieceWidth, kPieceWidth, density)});
    const Piece& piece = pieces_.front();
    found_[{&piece.font, piece.text, number}] = pieces_.begin();
    bytes_ += BytesOf(piece);
    while (bytes_ > MostBytes(density) && pieces_.size() > 1) {
        const Piece& last = pieces_.back();
        bytes_ -= BytesOf(last);
        found_.erase({&last.font, last.text, last.number});
        pieces_.pop_back();
    }
    return piece.picture;
}

void TextDrawing::DrawLine(Surface& surface, const Font& font, std::u16string_view text,
                           const Rect& rect, Long format, Colour colour) {
    text = text.substr(0, kMostUnits);
    const Long density = surface.Density();
    const Long pieceWidth = kPieceWidth * density;
    const auto room = [&](Long length, Long taken) { return length * density - taken; };
    Point at{rect.left * density, rect.top * density};
    if ((format & (DT_CENTER | DT_RIGHT)) != 0) {
        Long width = Rendered(font, text, 0, density).width;
        if (width >= pieceWidth) {
            width = driver_.MeasureText(font, text).width * density;
        }
        at.x += room(rect.Width(), width) / ((format & DT_CENTER) != 0 ? 2 : 1);
    }
    if ((format & DT_VCENTER) != 0 && (format & DT_SINGLELINE) != 0) {
        at.y += room(rect.Height(), Rendered(font, text, 0, density).height) / 2;
    }
    const bool clips = (format & DT_NOCLIP) == 0;
    const Rect clip = clips ? Intersect(rect, surface.Bounds()) : surface.Bounds();
    Long number = std::max(clip.left * density - at.x, 0) / pieceWidth;
    for (; at.x + number * pieceWidth < clip.right * density; ++number) {
        const TextPicture& piece = Rendered(font, text, number, density);
        surface.BlendText(piece, {at.x + number * pieceWidth, at.y}, clip, colour);
        if (piece.width < pieceWidth) {
            return;
        }
    }
}

void TextDrawing::Draw(Surface& surface, const Font& font, std::u16string_view text,
                       const Rect& rect, Long format, Colour colour) {
    if ((format & DT_SINGLELINE) != 0) {
        text = text.substr(0, kMostUnits);
    }
    std::u16string room;
    text = WithoutMarks(text, format, room);
    const bool clips = (format & DT_NOCLIP) == 0;
    if (text.empty() || (clips && IsEmpty(Intersect(rect, surface.Bounds())))) {
        return;
    }
    if ((format & DT_SINGLELINE) != 0) {
        DrawLine(surface, font, text, rect, format, colour);
        return;
    }
    const Long height = Rendered(font, u"^j", 0, surface.Density()).height / surface.Density();
    const Long width = (format & DT_WORDBREAK) != 0 ? rect.Width() : 0;
    Rect line = rect;
    const auto fits =
        static_cast<std::size_t>(std::max(rect.Height(), 0) / std::max(height, 1)) + 1;
    for (const std::u16string_view words : BreakLines(driver_, font, text, width, fits)) {
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
    std::u16string room;
    text = WithoutMarks(text, format, room);
    Size size = driver_.MeasureText(font, u"^j");
    if ((format & DT_SINGLELINE) != 0) {
        size.width = MeasureLine(driver_, font, text).width;
    } else {
        const Long width = (format & DT_WORDBREAK) != 0 ? rect.Width() : 0;
        const auto lines = BreakLines(driver_, font, text, width);
        size = {0, size.height * static_cast<Long>(lines.size())};
        for (const std::u16string_view line : lines) {
            size.width = std::max(size.width, MeasureLine(driver_, font, line).width);
        }
    }
    return {rect.left, rect.top, rect.left + size.width, rect.top + size.height};
}

}  // namespace platform
