#include "platform/desktop/painting.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace platform::desktop {

namespace {

using Index = std::size_t;

// So much of a whole, which is 256. Products with a byte fit in as well.
using Part = std::uint16_t;
constexpr std::uint32_t kWhole = 256;

constexpr Index kChannels = sizeof(Pixel);

// A picture along one axis: how many pixels it has stored, `density` for each `factor` of the
// window's. What one of the window's shows reaches from a place among the stored ones to another.
struct Axis {
    double density;
    double factor;
    double stored;

    double From(int pixel) const { return std::min(Place(pixel), stored - 1); }
    double To(int pixel) const { return std::min(Place(pixel + 1), stored); }

  private:
    // Exact where it is a whole number: the product is, and only the quotient is rounded.
    double Place(int pixel) const { return pixel * density / factor; }
};

// Which stored pixels the window's show along one axis, and how much of each. What a pixel shows
// follows from its own place alone.
class Shares {
  public:
    // Of the pixels `begin` to `begin + count` of the window.
    Shares(int begin, int count, const Axis& axis) : stored_(static_cast<Long>(axis.stored)) {
        for (int i = begin; i < begin + count; ++i) {
            const double reach = std::ceil(axis.To(i)) - std::floor(axis.From(i));
            most_ = std::max(most_, static_cast<Index>(reach));
        }
        most_ += most_ % 2;
        first_.reserve(static_cast<Index>(count));
        parts_.reserve(static_cast<Index>(count) * most_ * kChannels);
        for (int i = begin; i < begin + count; ++i) {
            Add(axis.From(i), axis.To(i));
        }
    }

    Index Count() const { return first_.size(); }
    Long Stored() const { return stored_; }
    // So many stored pixels, beginning with the first one, make up each of the window's: an even
    // number. Where the last of them is none any more, it has no part.
    Index Most() const { return most_; }
    const Long* Firsts() const { return first_.data(); }
    // Each part is there once for each byte of a pixel.
    const Part* Parts(Index i) const { return &parts_[i * most_ * kChannels]; }

  private:
    // However the parts are rounded, they make up a whole.
    void Add(double from, double to) {
        const Long last = std::max(stored_ - static_cast<Long>(most_), Long{0});
        const Long first = std::min(static_cast<Long>(from), last);
        Part former = 0;
        for (Index k = 1; k <= most_; ++k) {
            const double end = std::clamp(first + static_cast<double>(k), from, to);
            const double share = (end - from) / (to - from);
            const auto sum = static_cast<Part>(std::lround(share * kWhole));
            parts_.insert(parts_.end(), kChannels, static_cast<Part>(sum - former));
            former = sum;
        }
        first_.push_back(first);
    }

    Long stored_;
    Index most_ = 1;
    std::vector<Long> first_;
    std::vector<Part> parts_;
};

// The bytes of two pixels, and with room for their products with a whole.
using Bytes [[gnu::vector_size(16)]] = std::uint8_t;
using Products [[gnu::vector_size(16)]] = Part;

template <class To>
To Loaded(const void* from) {
    To to;
    std::memcpy(&to, from, sizeof to);
    return to;
}

Products Widened(std::uint64_t twoPixels) {
    using Halves [[gnu::vector_size(16)]] = std::uint64_t;
    constexpr Bytes kNone{};
    constexpr bool kLowFirst = std::endian::native == std::endian::little;
    const auto bytes = reinterpret_cast<Bytes>(Halves{twoPixels, 0});
    const Bytes& low = kLowFirst ? bytes : kNone;
    const Bytes& high = kLowFirst ? kNone : bytes;
    return reinterpret_cast<Products>(
        __builtin_shufflevector(low, high, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}

// Two pixels, of which the second one may be none any more.
std::uint64_t TwoPixels(const Pixel* from, bool isLast) {
    return isLast ? Loaded<std::uint64_t>(std::array{*from, Pixel{0}}.data())
                  : Loaded<std::uint64_t>(from);
}

// One stored row as wide as the window has it: four numbers a pixel.
void Squeeze(const Pixel* row, const Shares& shares, Part* to) {
    const Long* first = shares.Firsts();
    const Part* parts = shares.Parts(0);
    const Pixel* const last = row + shares.Stored() - 1;
    const Index most = shares.Most();
    for (Part* const end = to + shares.Count() * kChannels; to != end; to += kChannels) {
        const Pixel* from = row + *first++;
        Products sums{};
        for (Index k = 0; k < most; k += 2) {
            sums += Widened(TwoPixels(from, from == last)) * Loaded<Products>(parts);
            from += 2;
            parts += 2 * kChannels;
        }
        sums += __builtin_shufflevector(sums, sums, 4, 5, 6, 7, 0, 1, 2, 3);
        std::memcpy(to, &sums, kChannels * sizeof(Part));
    }
}

// The stored rows that are needed at a time, squeezed once each.
class SqueezedRows {
  public:
    SqueezedRows(const Surface& picture, const Shares& columns, Index most)
        : picture_(picture),
          columns_(columns),
          width_(columns.Count() * kChannels),
          held_(most, -1),
          values_(most * width_) {}

    // Good until as many others have been asked for as are needed at a time.
    const Part* Get(Long y) {
        const Index slot = static_cast<Index>(y) % held_.size();
        Part* const values = &values_[slot * width_];
        if (held_[slot] != y) {
            held_[slot] = y;
            Squeeze(picture_.Row(y), columns_, values);
        }
        return values;
    }
    // How many numbers a row has.
    Index Width() const { return width_; }

  private:
    const Surface& picture_;
    const Shares& columns_;
    Index width_;
    std::vector<Long> held_;
    std::vector<Part> values_;
};

// One row of the window out of squeezed ones and their parts. How many there are is best known to
// the compiler.
template <class Rows, class Parts>
void Mix(const Rows rows, const Parts parts, Index width, uchar* to) {
    constexpr std::uint32_t kHalf = kWhole * kWhole / 2;
    for (Index i = 0; i < width; ++i) {
        std::uint32_t sum = kHalf;
        for (Index k = 0; k < rows.size(); ++k) {
            sum += std::uint32_t{rows[k][i]} * parts[k];
        }
        to[i] = static_cast<uchar>(sum / (kWhole * kWhole));
    }
}

template <class Rows, class Parts>
void MixAll(SqueezedRows& squeezed, const Shares& rows, QImage& image, Rows from, Parts parts) {
    for (Index y = 0; y < rows.Count(); ++y) {
        for (Index k = 0; k < rows.Most(); ++k) {
            const Long row = rows.Firsts()[y] + static_cast<Long>(k);
            from[k] = squeezed.Get(std::min(row, rows.Stored() - 1));
            parts[k] = rows.Parts(y)[k * kChannels];
        }
        Mix(from, parts, squeezed.Width(), image.scanLine(static_cast<int>(y)));
    }
}

QImage Averaged(const Surface& picture, const QRect& shown, double factor) {
    QImage image(shown.size(), QImage::Format_RGB32);
    const auto density = static_cast<double>(picture.Density());
    const auto [width, height] = picture.StoredSize();
    const Shares columns(shown.left(), shown.width(),
                         {density, factor, static_cast<double>(width)});
    const Shares rows(shown.top(), shown.height(), {density, factor, static_cast<double>(height)});
    const Index most = rows.Most();
    SqueezedRows squeezed(picture, columns, most);
    if (most == 2) {
        MixAll(squeezed, rows, image, std::array<const Part*, 2>{}, std::array<Part, 2>{});
    } else if (most == 4) {
        MixAll(squeezed, rows, image, std::array<const Part*, 4>{}, std::array<Part, 4>{});
    } else {
        MixAll(squeezed, rows, image, std::vector<const Part*>(most), std::vector<Part>(most));
    }
    return image;
}

// Whether each pixel of the window shows one stored pixel of the picture.
bool IsAsFine(const Surface& picture, const QRect& shown, double factor) {
    const Size stored = picture.StoredSize();
    return picture.Density() == factor && !shown.isEmpty() && shown.right() < stored.width &&
           shown.bottom() < stored.height;
}

}  // namespace

QRect ShownPart(const Rect& part, double factor) {
    const auto left = static_cast<int>(std::floor(part.left * factor));
    const auto top = static_cast<int>(std::floor(part.top * factor));
    const auto right = static_cast<int>(std::ceil(part.right * factor));
    const auto bottom = static_cast<int>(std::ceil(part.bottom * factor));
    return {left, top, right - left, bottom - top};
}

QImage ShownPixels(const Surface& picture, const QRect& shown, double factor) {
    const QImage view = ShownView(picture, shown, factor);
    return IsAsFine(picture, shown, factor) ? view.copy() : view;
}

QImage ShownView(const Surface& picture, const QRect& shown, double factor) {
    if (IsAsFine(picture, shown, factor)) {
        const Pixel* const first = picture.Row(shown.top()) + shown.left();
        const auto rowBytes = static_cast<qsizetype>(sizeof(Pixel)) * picture.StoredSize().width;
        return {reinterpret_cast<const uchar*>(first), shown.width(), shown.height(), rowBytes,
                QImage::Format_RGB32};
    }
    return Averaged(picture, shown, factor);
}

}  // namespace platform::desktop
