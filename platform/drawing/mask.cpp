#include "platform/drawing/mask.h"

#include <algorithm>

namespace platform {

Mask::Mask(const Surface& picture, Colour transparent)
    : size_(picture.GetSize()), shown_(picture.GetSize()) {
    const Pixel outside = PixelOf(transparent);
    inside_.reserve(static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height));
    for (Long y = 0; y < size_.height; ++y) {
        for (Long x = 0; x < size_.width; ++x) {
            inside_.push_back(PixelOf(picture.GetPixel({x, y})) != outside);
        }
    }
    shown_.BitBlt(shown_.Bounds(), picture, {0, 0});
    const Size stored = shown_.StoredSize();
    for (Long y = 0; y < stored.height; ++y) {
        Pixel* const row = shown_.Row(y);
        std::transform(row, row + stored.width, row, [outside](Pixel pixel) {
            return pixel == outside ? PixelOf(0) : PixelOf(0xFFFFFF);
        });
    }
}

void Mask::Copy(const Surface& source, Point from, const Rect& to, Surface& target) const {
    const Rect part = Intersect({from.x, from.y, from.x + to.Width(), from.y + to.Height()},
                                Intersect(shown_.Bounds(), source.Bounds()));
    if (shown_.Density() != target.Density() || source.Density() != target.Density()) {
        // A control that has not been drawn anew since the density changed.
        for (Long y = part.top; y < part.bottom; ++y) {
            for (Long x = part.left; x < part.right; ++x) {
                const Point at{x + to.left - from.x, y + to.top - from.y};
                if (Contains({x, y})) {
                    target.BitBlt({at.x, at.y, at.x + 1, at.y + 1}, source, {x, y});
                }
            }
        }
        return;
    }
    const Long density = target.Density();
    const Point shift{(to.left - from.x) * density, (to.top - from.y) * density};
    for (Long y = part.top * density; y < part.bottom * density; ++y) {
        const Pixel* const shown = shown_.Row(y);
        const Pixel* const read = source.Row(y);
        Pixel* const write = target.Row(y + shift.y) + shift.x;
        for (Long x = part.left * density; x < part.right * density; ++x) {
            write[x] = shown[x] != 0 ? read[x] : write[x];
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
