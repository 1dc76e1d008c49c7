#include "platform/drawing/surface.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace platform {

Rect Intersect(const Rect& a, const Rect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

Rect Unite(const Rect& a, const Rect& b) {
    if (IsEmpty(a)) {
        return b;
    }
    if (IsEmpty(b)) {
        return a;
    }
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

namespace {

// Pixels that lie apart from each other: faster than a copy that must look out for overlaps.
void CopyRow(const Pixel* from, Long width, Pixel* to) {
    std::memcpy(to, from, static_cast<std::size_t>(width) * sizeof(Pixel));
}

}  // namespace

Surface::Surface(Size size) : Surface(size, Pixel{0}) {}

Surface::Surface(Size size, Pixel fill)
    : size_{std::max(size.width, 0), std::max(size.height, 0)},
      pixels_(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height),
              fill) {}

Colour Surface::GetPixel(Point point) const {
    return Bounds().Contains(point) ? ColourOf(Row(point.y)[point.x]) : -1;
}

void Surface::SetPixel(Point point, Colour colour) {
    if (Bounds().Contains(point)) {
        Row(point.y)[point.x] = PixelOf(colour);
    }
}

void Surface::Resize(Size size, Colour fill) {
    Surface resized(size, PixelOf(fill));
    resized.BitBlt(Bounds(), *this, {0, 0});
    *this = std::move(resized);
}

void Surface::FillRect(const Rect& rect, Colour colour) {
    const Rect area = Intersect(rect, Bounds());
    if (platform::IsEmpty(area)) {
        return;
    }
    // A row is filled pixel by pixel, the others are copies of it in one go.
    const Pixel* const first = Row(area.top) + area.left;
    std::fill_n(Row(area.top) + area.left, area.Width(), PixelOf(colour));
    for (Long y = area.top + 1; y < area.bottom; ++y) {
        CopyRow(first, area.Width(), Row(y) + area.left);
    }
}

void Surface::BitBlt(const Rect& to, const Surface& source, Point from, Long operation) {
    // Where the source lies on this surface.
    const Point shift{to.left - from.x, to.top - from.y};
    const Rect area = Intersect(Intersect(to, Bounds()), Offset(source.Bounds(), shift));
    if (platform::IsEmpty(area)) {
        return;
    }
    for (Long y = area.top; y < area.bottom; ++y) {
        const Pixel* read = source.Row(y - shift.y) + (area.left - shift.x);
        Pixel* write = Row(y) + area.left;
        if (operation == SRCAND) {
            for (Long x = 0; x < area.Width(); ++x) {
                write[x] &= read[x];
            }
        } else {
            CopyRow(read, area.Width(), write);
        }
    }
}

void Surface::Stamp(const Rect& to, const Surface& source, Colour ink) {
    const Point shift{to.left, to.top};
    const Rect area = Intersect(Intersect(to, Bounds()), Offset(source.Bounds(), shift));
    for (Long y = area.top; y < area.bottom; ++y) {
        for (Long x = area.left; x < area.right; ++x) {
            if (source.Row(y - shift.y)[x - shift.x] == PixelOf(0)) {
                Row(y)[x] = PixelOf(ink);
            }
        }
    }
}

namespace {

// For each pixel of a target the source pixel under its centre, -1 where there is none.
std::vector<Long> SourceOf(Long targetLength, double start, double length, Long sourceLength) {
    std::vector<Long> source(static_cast<std::size_t>(targetLength));
    for (std::size_t i = 0; i < source.size(); ++i) {
        const double centre = (static_cast<double>(i) + 0.5) * length / targetLength;
        const double at = std::floor(start + centre);
        source[i] = at >= 0 && at < sourceLength ? static_cast<Long>(at) : -1;
    }
    return source;
}

}  // namespace

void Surface::StretchBlt(const Rect& to, const Surface& source, const SourceRect& from) {
    const Rect area = Intersect(to, Bounds());
    if (platform::IsEmpty(area) || source.IsEmpty()) {
        return;
    }
    const std::vector<Long> columns = SourceOf(to.Width(), from.left, from.width, source.Width());
    const std::vector<Long> rows = SourceOf(to.Height(), from.top, from.height, source.Height());
    for (Long y = area.top; y < area.bottom; ++y) {
        const Long sourceY = rows[static_cast<std::size_t>(y - to.top)];
        if (sourceY < 0) {
            continue;
        }
        const Pixel* read = source.Row(sourceY);
        Pixel* write = Row(y);
        for (Long x = area.left; x < area.right; ++x) {
            const Long sourceX = columns[static_cast<std::size_t>(x - to.left)];
            if (sourceX >= 0) {
                write[x] = read[sourceX];
            }
        }
    }
}

namespace {

bool PenDraws(Long penStyle, Long step) {
    constexpr Long kDot = 3;
    return penStyle != PS_DOT || step / kDot % 2 == 0;
}

}  // namespace

void Surface::Outline(const Rect& rect, Colour colour, Long penStyle) {
    if (platform::IsEmpty(rect)) {
        return;
    }
    for (Long x = rect.left; x < rect.right; ++x) {
        if (PenDraws(penStyle, x - rect.left)) {
            SetPixel({x, rect.top}, colour);
            SetPixel({x, rect.bottom - 1}, colour);
        }
    }
    for (Long y = rect.top; y < rect.bottom; ++y) {
        if (PenDraws(penStyle, y - rect.top)) {
            SetPixel({rect.left, y}, colour);
            SetPixel({rect.right - 1, y}, colour);
        }
    }
}

void Surface::Line(Point from, Point to, Colour colour) {
    const Long width = std::abs(to.x - from.x);
    const Long height = std::abs(to.y - from.y);
    const Long steps = std::max(width, height);
    for (Long i = 0; i < steps; ++i) {
        const double part = static_cast<double>(i) / steps;
        SetPixel({from.x + static_cast<Long>(std::lround((to.x - from.x) * part)),
                  from.y + static_cast<Long>(std::lround((to.y - from.y) * part))},
                 colour);
    }
}

namespace {

// `colour` over `under` by a coverage of 0 to 255, both channels at once where they do not touch.
Pixel Blend(Pixel under, Pixel colour, std::uint32_t coverage) {
    const std::uint32_t weight = coverage + (coverage >> 7);  // 0 to 256
    const std::uint32_t rest = 256 - weight;
    const std::uint32_t outer =
        (((under & 0xFF00FF) * rest + (colour & 0xFF00FF) * weight) >> 8) & 0xFF00FF;
    const std::uint32_t inner =
        (((under & 0x00FF00) * rest + (colour & 0x00FF00) * weight) >> 8) & 0x00FF00;
    return outer | inner;
}

}  // namespace

void Surface::BlendText(const TextPicture& text, Point at, const Rect& clip, Colour colour) {
    const Rect place{at.x, at.y, at.x + text.width, at.y + text.height};
    const Rect area = Intersect(Intersect(place, clip), Bounds());
    const Pixel ink = PixelOf(colour);
    for (Long y = area.top; y < area.bottom; ++y) {
        const std::size_t start =
            static_cast<std::size_t>(y - at.y) * static_cast<std::size_t>(text.width) -
            static_cast<std::size_t>(at.x);
        Pixel* write = Row(y);
        for (Long x = area.left; x < area.right; ++x) {
            // Without a look at whether there is any: compilers make vectors of it.
            write[x] = Blend(write[x], ink, text.coverage[start + static_cast<std::size_t>(x)]);
        }
    }
}

Mask::Mask(const Surface& picture, Colour transparent) : size_(picture.GetSize()) {
    const Pixel outside = PixelOf(transparent);
    inside_.reserve(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height));
    for (Long y = 0; y < size_.height; ++y) {
        for (Long x = 0; x < size_.width; ++x) {
            inside_.push_back(picture.Row(y)[x] != outside);
        }
    }
}

bool Mask::Contains(Point point) const {
    const Rect bounds{0, 0, size_.width, size_.height};
    return bounds.Contains(point) &&
           inside_[static_cast<std::size_t>(point.y) * static_cast<std::size_t>(size_.width) +
                   static_cast<std::size_t>(point.x)];
}

}  // namespace platform
