// A surface is a rectangle of pixels to draw on: the face of a control, a picture of the skin, the
// finished picture of a window. Drawing is exact: the same calls give the same pixels on every
// desktop. Whatever lies outside a surface is dropped.
//
// A surface can be finer than its coordinates are: of a density of 2, each pixel of its size, and
// of all that is drawn, stands for 2 x 2 stored ones. Who draws need not know; only text, pictures
// and gradients make use of it. A surface that nothing has been drawn on but its one colour stores
// no pixels: panels that are never opened cost nothing. Whoever needs the stored pixels themselves,
// since he works through all of them, takes them a row at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/base/types.h"

namespace platform {

/// One pixel as it lies in memory: 0x00RRGGBB.
using Pixel = std::uint32_t;

inline constexpr Pixel PixelOf(Colour colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    return ((bits & 0xFF) << 16) | (bits & 0xFF00) | ((bits >> 16) & 0xFF);
}
inline constexpr Colour ColourOf(Pixel pixel) {
    return static_cast<Colour>(((pixel & 0xFF) << 16) | (pixel & 0xFF00) | ((pixel >> 16) & 0xFF));
}

// Raster operations of a copy.
inline constexpr Long SRCCOPY = 13369376;  ///< the source replaces what was there
inline constexpr Long SRCAND = 8913094;    ///< bits that both have stay

// Styles of a pen one pixel wide.
inline constexpr Long PS_SOLID = 0;
inline constexpr Long PS_DOT = 2;  ///< three pixels drawn, three left as they are

/// Coverage of one line of text, 0 to 255 a stored pixel, row by row from the top.
struct TextPicture {
    Long width = 0;   ///< stored pixels
    Long height = 0;  ///< the same
    std::vector<std::uint8_t> coverage;
    Long density = 1;  ///< of the surfaces that it is for
    /// Signs that have colours of their own, over the rest: 0xAARRGGBB, colours times alpha, in the
    /// same order; empty if there are none.
    std::vector<std::uint32_t> colours = {};
};

class FinerPictures;

/// A rectangle of a source that may lie between its pixels: an image strip of three rows need not
/// be a multiple of 3 high.
struct SourceRect {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

class Surface {
  public:
    Surface() = default;
    /// Black. A negative size counts as 0, and so does a density below 1.
    explicit Surface(Size size, Long density = DensityInForce());

    /// The density of surfaces that are made from now on, on this thread; 1 at first.
    static Long DensityInForce();
    static void DensityInForce(Long density);

    Long Density() const { return density_; }
    /// The same picture at another density: enlarged by whole pixels, or averaged.
    Surface AtDensity(Long density) const;

    /// Gives a picture the same one as it has been drawn for other densities: what copies it takes
    /// the one that is right for the target.
    void Finer(std::shared_ptr<FinerPictures> pictures) { finer_ = std::move(pictures); }
    /// The picture as it is drawn on surfaces of that density: this one if there are no finer ones.
    /// Good until it is asked for another density.
    const Surface& For(Long density) const;
    /// The finer picture is decoded anew when it is next drawn: for who draws a picture once.
    void LetFinerGo() const;

    Long Width() const { return size_.width; }
    Long Height() const { return size_.height; }
    Size GetSize() const { return size_; }
    Rect Bounds() const { return {0, 0, size_.width, size_.height}; }
    bool IsEmpty() const { return size_.width == 0 || size_.height == 0; }

    /// The colour in the middle of a point, -1 outside.
    Colour GetPixel(Point point) const;
    void SetPixel(Point point, Colour colour);

    /// Another size; what fits of the old content stays at the top left, the rest is `fill`. An
    /// empty surface gets the density in force.
    void Resize(Size size, Colour fill);

    void FillRect(const Rect& rect, Colour colour);

    /// Copies `to.Width()` x `to.Height()` pixels from `from` on; source and target may be the same
    /// surface only if the rectangles do not overlap. A source of another density is brought to
    /// this one's.
    void BitBlt(const Rect& to, const Surface& source, Point from, Long operation = SRCCOPY);

    /// Draws `ink` where the top left part of a source is black, leaves what is white there alone,
    /// and mixes for the greys between: a picture without colours in a colour of one's choice.
    void Stamp(const Rect& to, const Surface& source, Colour ink);

    /// Copies a source rectangle, stretched or squeezed to fill `to`: each pixel takes the source
    /// pixel that lies under its centre. Outside of the source nothing is drawn.
    void StretchBlt(const Rect& to, const Surface& source, const SourceRect& from);

    /// Fills what of a rectangle is `inside`, which is asked for places in units: finely enough for
    /// smooth edges.
    void FillShape(const Rect& rect, Colour colour,
                   const std::function<bool(double x, double y)>& inside);

    /// The outline of a rectangle, one pixel wide, inside of it; what lies within is left alone.
    void Outline(const Rect& rect, Colour colour, Long penStyle);

    /// Blends a colour over the surface by a text's coverage, whose top left corner goes to `at`, a
    /// stored pixel, so that words can be centred more finely; only within `clip`. A text of
    /// another density is not drawn. What has colours of its own keeps them.
    void BlendText(const TextPicture& text, Point at, const Rect& clip, Colour colour);

    Rect Stored(const Rect& rect) const {
        return {rect.left * density_, rect.top * density_, rect.right * density_,
                rect.bottom * density_};
    }
    /// As FillRect, in stored pixels.
    void FillStored(const Rect& stored, Colour colour);
    /// The stored pixels, StoredSize().height rows of StoredSize().width.
    Size StoredSize() const { return {size_.width * density_, size_.height * density_}; }
    /// The stored row `y`, from the left; the next row follows at once. `y` must lie inside, which
    /// is not checked. Good until the surface gets another size or ends.
    const Pixel* Row(Long y) const { return Pixels().data() + RowStart(y); }
    Pixel* Row(Long y) { return Pixels().data() + RowStart(y); }

  private:
    bool IsFlat() const { return pixels_.empty(); }
    std::vector<Pixel>& Pixels() const {
        if (pixels_.empty()) {
            const Size stored = StoredSize();
            pixels_.assign(
                static_cast<std::size_t>(stored.width) * static_cast<std::size_t>(stored.height),
                flat_);
        }
        return pixels_;
    }
    void Enlarge(const Surface& source, Long times);
    std::size_t RowStart(Long y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.width * density_);
    }

    Size size_;
    Long density_ = 1;
    Pixel flat_ = 0;                     ///< the colour of all, while there are no pixels
    mutable std::vector<Pixel> pixels_;  ///< made when they are first called for
    std::shared_ptr<FinerPictures> finer_;
};

/// A picture that many controls share and nobody changes. A null pointer is "no picture".
using PictureRef = std::shared_ptr<const Surface>;

// Rectangles, as far as drawing needs them.

inline bool IsEmpty(const Rect& rect) {
    return rect.right <= rect.left || rect.bottom <= rect.top;
}
Rect Intersect(const Rect& a, const Rect& b);
/// The smallest rectangle around both; an empty one counts for nothing.
Rect Unite(const Rect& a, const Rect& b);
inline Rect Offset(const Rect& rect, Point by) {
    return {rect.left + by.x, rect.top + by.y, rect.right + by.x, rect.bottom + by.y};
}

}  // namespace platform
