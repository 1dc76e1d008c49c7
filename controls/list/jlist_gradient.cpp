#include "controls/list/jlist_gradient.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/base/rounding.h"

namespace sarnel {

using namespace platform;

namespace {

// Three numbers of different precision for the same thing. Which one is used where decides how
// halves are rounded, so none can take another's place.
constexpr double kDegreesPerRadian = 57.29578399658203;
constexpr double kRadiansPerDegree = 0.01745329238474369;
constexpr double kRadiansPerStep = 0.017453292;

constexpr Long kParts = 1000;  // a pixel is so many parts of a colour step, at most

Long Channel(Colour colour, int shift) {
    return static_cast<Long>((static_cast<std::uint32_t>(colour) >> shift) & 0xFF);
}

// One channel of step `i` out of `steps`; both divisions cut towards 0.
Long Blended(Long from, Long to, Long i, Long steps) {
    return steps == 1 ? from / 2 + to / 2 : from + (to - from) * i / (steps - 1);
}

std::vector<Pixel> ColourSteps(Colour from, Colour to, Long steps) {
    std::vector<Pixel> table;
    table.reserve(static_cast<std::size_t>(steps));
    for (Long i = 0; i < steps; ++i) {
        const auto channel = [&](int shift) {
            return static_cast<Pixel>(Blended(Channel(from, shift), Channel(to, shift), i, steps));
        };
        table.push_back(channel(16) | (channel(8) << 8) | (channel(0) << 16));
    }
    return table;
}

}  // namespace

void BuildGradient(Long W, Long H, Colour C1, Colour C2, double Angle, BitmapHeader& Header,
                   std::vector<Pixel>& Pixels) {
    if (W < 1 || H < 1) {
        return;
    }
    const Long turned = ((RoundHalfEven(90 - Angle) % 360) + 360) % 360;
    const Long quarter = turned / 90;
    const Long within = turned % 90;
    const bool odd = quarter % 2 != 0;
    const double diagonal = std::atan(odd ? double{1} * H / W : double{1} * W / H);
    const double off = std::abs(within - diagonal * kDegreesPerRadian);
    const Long steps = RoundHalfEven(std::sqrt(double{1} * W * W + double{1} * H * H) *
                                     std::sin((90 - off) * kRadiansPerDegree));
    if (quarter > 1) {
        std::swap(C1, C2);
    }
    const std::vector<Pixel> table = ColourSteps(C1, C2, std::max(steps, 0));
    const double direction = (odd ? 90 - within : within) * kRadiansPerStep;
    const Long partsX = RoundHalfEven(std::sin(direction) * kParts);
    const Long partsY = RoundHalfEven(std::cos(direction) * kParts);

    Pixels.assign(static_cast<std::size_t>(W) * static_cast<std::size_t>(H), 0);
    for (Long y = 0; y < H; ++y) {
        const Long scan = odd ? H - 1 - y : y;
        Pixel* const write =
            Pixels.data() + static_cast<std::size_t>(scan) * static_cast<std::size_t>(W);
        for (Long x = 0; x < W; ++x) {
            const std::int64_t step =
                (std::int64_t{x} * partsX + std::int64_t{y} * partsY) / kParts;
            if (step >= 0 && step < static_cast<std::int64_t>(table.size())) {
                write[x] = table[static_cast<std::size_t>(step)];
            }
        }
    }
    Header = {40, W, H, 1, 32};
}

void GradientBar::Become(Size size, Colour C1, Colour C2, double Angle) {
    Surface picture(size);
    if (picture.IsEmpty()) {
        return;
    }
    picture_ = std::move(picture);
    from_ = C1;
    to_ = C2;
    angle_ = Angle;
    built_ = false;
}

const Surface& GradientBar::Picture() {
    if (built_) {
        return picture_;
    }
    built_ = true;
    const Size stored = picture_.StoredSize();
    BitmapHeader header;
    std::vector<Pixel> pixels;
    BuildGradient(stored.width, stored.height, from_, to_, angle_, header, pixels);
    auto scan = pixels.cbegin();
    for (Long y = stored.height - 1; y >= 0; --y, scan += stored.width) {
        std::copy_n(scan, stored.width, picture_.Row(y));
    }
    return picture_;
}

}  // namespace sarnel
