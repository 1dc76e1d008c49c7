#include "platform/drawing/surface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "platform/drawing/finer_pictures.h"

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

thread_local Long densityInForce = 1;

// What one stored pixel of a target covers of a source of another density, along one axis.
struct Share {
    Long first = 0;             // source pixel
    std::vector<Long> weights;  // of it and those behind it
};

// The weights of each pixel add up to `from`, the source's density.
std::vector<Share> Shares(Long length, Long from, Long to) {
    std::vector<Share> shares(static_cast<std::size_t>(length * to));
    Long start = 0;  // in parts of which a source pixel has `to`, and a target pixel `from`
    for (Share& share : shares) {
        const Long end = start + from;
        share.first = start / to;
        for (Long at = start; at < end; at = (at / to + 1) * to) {
            share.weights.push_back(std::min((at / to + 1) * to, end) - at);
        }
        start = end;
    }
    return shares;
}

Pixel Average(const Surface& source, const Share& row, const Share& column, Long total) {
    std::array<Long, 3> sums{};
    for (std::size_t j = 0; j < row.weights.size(); ++j) {
        const Pixel* const pixels = source.Row(row.first + static_cast<Long>(j)) + column.first;
        for (std::size_t i = 0; i < column.weights.size(); ++i) {
            const Long weight = row.weights[j] * column.weights[i];
            for (std::size_t channel = 0; channel < sums.size(); ++channel) {
                sums[channel] += static_cast<Long>((pixels[i] >> (8 * channel)) & 0xFF) * weight;
            }
        }
    }
    Pixel average = 0;
    for (std::size_t channel = 0; channel < sums.size(); ++channel) {
        average |= static_cast<Pixel>((sums[channel] + total / 2) / total) << (8 * channel);
    }
    return average;
}

}  // namespace

Long Surface::DensityInForce() {
    return densityInForce;
}

void Surface::DensityInForce(Long density) {
    densityInForce = std::max(density, 1);
}

Surface::Surface(Size size, Long density)
    : size_{std::max(size.width, 0), std::max(size.height, 0)}, density_(std::max(density, 1)) {}

const Surface& Surface::For(Long density) const {
    if (finer_ == nullptr) {
        return *this;
    }
    if (density <= density_) {
        LetFinerGo();  // nobody draws finely any more
        return *this;
    }
    const Surface* const drawn = finer_->At(density, size_);
    return drawn != nullptr ? *drawn : *this;
}

void Surface::LetFinerGo() const {
    if (finer_ != nullptr) {
        finer_->LetGo();
    }
}

Surface Surface::AtDensity(Long density) const {
    Surface other(size_, density);
    if (IsFlat()) {
        other.flat_ = flat_;
        return other;
    }
    if (other.density_ % density_ == 0) {
        other.Enlarge(*this, other.density_ / density_);
        return other;
    }
    const std::vector<Share> columns = Shares(size_.width, density_, other.density_);
    const std::vector<Share> rows = Shares(size_.height, density_, other.density_);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        Pixel* const write = other.Row(static_cast<Long>(y));
        for (std::size_t x = 0; x < columns.size(); ++x) {
            write[x] = Average(*this, rows[y], columns[x], density_ * density_);
        }
    }
    return other;
}

// Each stored pixel of the source becomes `times` x `times` of them.
void Surface::Enlarge(const Surface& source, Long times) {
    const Size stored = source.StoredSize();
    for (Long y = 0; y < stored.height; ++y) {
        const Pixel* const read = source.Row(y);
        Pixel* write = Row(y * times);
        for (Long x = 0; x < stored.width; ++x) {
            write = std::fill_n(write, times, read[x]);
        }
        for (Long copy = 1; copy < times; ++copy) {
            std::copy_n(Row(y * times), stored.width * times, Row(y * times + copy));
        }
    }
}

Colour Surface::GetPixel(Point point) const {
    if (!Bounds().Contains(point) || IsFlat()) {
        return Bounds().Contains(point) ? ColourOf(flat_) : -1;
    }
    const Long middle = density_ / 2;
    return ColourOf(Row(point.y * density_ + middle)[point.x * density_ + middle]);
}

void Surface::SetPixel(Point point, Colour colour) {
    FillRect({point.x, point.y, point.x + 1, point.y + 1}, colour);
}

void Surface::Resize(Size size, Colour fill) {
    Surface resized(size, IsEmpty() ? DensityInForce() : density_);
    resized.FillRect(resized.Bounds(), fill);
    resized.BitBlt(Bounds(), *this, {0, 0});
    *this = std::move(resized);
}

void Surface::FillRect(const Rect& rect, Colour colour) {
    FillStored(Stored(Intersect(rect, Bounds())), colour);
}

void Surface::FillStored(const Rect& stored, Colour colour) {
    const Rect area = Intersect(stored, Stored(Bounds()));
    if (IsFlat() && (area == Stored(Bounds()) || flat_ == PixelOf(colour))) {
        flat_ = PixelOf(colour);
        return;
    }
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

void Surface::BitBlt(const Rect& to, const Surface& picture, Point from, Long operation) {
    const Surface& source = picture.For(density_);
    // Where the source lies on this surface.
    const Point shift{to.left - from.x, to.top - from.y};
    const Rect place = Intersect(Intersect(to, Bounds()), Offset(source.Bounds(), shift));
    if (platform::IsEmpty(place)) {
        return;
    }
    if (source.IsFlat() && operation == SRCCOPY) {
        FillRect(place, ColourOf(source.flat_));
        return;
    }
    if (source.density_ != density_) {
        Surface part({place.Width(), place.Height()}, source.density_);
        part.BitBlt(part.Bounds(), source, {place.left - shift.x, place.top - shift.y});
        BitBlt(place, part.AtDensity(density_), {0, 0}, operation);
        return;
    }
    const Rect area = Stored(place);
    const Point first{area.left - shift.x * density_, area.top - shift.y * density_};
    const Pixel* read = source.Row(first.y) + first.x;
    for (Long y = area.top; y < area.bottom; ++y, read += source.StoredSize().width) {
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

// A pixel that has been multiplied by its alpha already.
Pixel Over(Pixel under, std::uint32_t over) {
    const std::uint32_t left = 255 - (over >> 24);
    const auto channel = [&](int shift) {
        const std::uint32_t kept = ((under >> shift & 0xFF) * left + 127) / 255;
        return std::min<std::uint32_t>(kept + (over >> shift & 0xFF), 255) << shift;
    };
    return channel(16) | channel(8) | channel(0);
}

}  // namespace

void Surface::Stamp(const Rect& to, const Surface& source, Colour ink) {
    const Rect place =
        Intersect(Intersect(to, Bounds()), Offset(source.Bounds(), {to.left, to.top}));
    const Rect area = Stored(place);
    // Of a source of another density, what lies in the middle of a pixel.
    const auto sourceOf = [&](Long at) { return (2 * at + 1) * source.density_ / (2 * density_); };
    for (Long y = area.top; y < area.bottom; ++y) {
        const Pixel* read = source.Row(sourceOf(y - to.top * density_));
        Pixel* write = Row(y);
        for (Long x = area.left; x < area.right; ++x) {
            const Pixel grey = read[sourceOf(x - to.left * density_)] & 0xFF;
            write[x] = Blend(write[x], PixelOf(ink), 255 - grey);
        }
    }
}

void Surface::FillShape(const Rect& rect, Colour colour,
                        const std::function<bool(double x, double y)>& inside) {
    constexpr Long kSamples = 4;  // in each direction of a stored pixel
    const Rect area = Stored(Intersect(rect, Bounds()));
    const auto place = [&](Long stored, Long sample) {
        return (stored + (sample + 0.5) / kSamples) / density_;
    };
    for (Long y = area.top; y < area.bottom; ++y) {
        for (Long x = area.left; x < area.right; ++x) {
            std::uint32_t covered = 0;
            for (Long sample = 0; sample < kSamples * kSamples; ++sample) {
                covered += inside(place(x, sample % kSamples), place(y, sample / kSamples)) ? 1 : 0;
            }
            Pixel& pixel = Row(y)[x];
            pixel = Blend(pixel, PixelOf(colour), covered * 255 / (kSamples * kSamples));
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

void Surface::StretchBlt(const Rect& to, const Surface& picture, const SourceRect& from) {
    const Surface& source = picture.For(density_);
    const Rect area = Stored(Intersect(to, Bounds()));
    if (platform::IsEmpty(area) || source.IsEmpty()) {
        return;
    }
    const Rect all = Stored(to);
    const auto finer = static_cast<double>(source.density_);
    const std::vector<Long> columns =
        SourceOf(all.Width(), from.left * finer, from.width * finer, source.StoredSize().width);
    const std::vector<Long> rows =
        SourceOf(all.Height(), from.top * finer, from.height * finer, source.StoredSize().height);
    for (Long y = area.top; y < area.bottom; ++y) {
        const Long sourceY = rows[static_cast<std::size_t>(y - all.top)];
        if (sourceY < 0) {
            continue;
        }
        const Pixel* read = source.Row(sourceY);
        Pixel* write = Row(y);
        for (Long x = area.left; x < area.right; ++x) {
            const Long sourceX = columns[static_cast<std::size_t>(x - all.left)];
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

void Surface::BlendText(const TextPicture& text, Point at, const Rect& clip, Colour colour) {
    if (text.density != density_) {
        return;
    }
    const Rect place{at.x, at.y, at.x + text.width, at.y + text.height};
    const Rect area = Intersect(place, Stored(Intersect(clip, Bounds())));
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
        if (!text.colours.empty()) {
            for (Long x = area.left; x < area.right; ++x) {
                write[x] = Over(write[x], text.colours[start + static_cast<std::size_t>(x)]);
            }
        }
    }
}

}  // namespace platform
