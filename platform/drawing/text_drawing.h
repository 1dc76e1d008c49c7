// Drawing of text on surfaces, by the rules of the numbered formats. The driver shapes and renders
// a line; what it rendered is kept, so that a list that is painted again 33 times a second, in
// whatever colour, shapes nothing.
#pragma once

#include <list>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/drawing/surface.h"
#include "platform/driver.h"

namespace platform {

// Formats, added up.
inline constexpr Long DT_CENTER = 1;
inline constexpr Long DT_RIGHT = 2;
inline constexpr Long DT_VCENTER = 4;     ///< of a single line
inline constexpr Long DT_WORDBREAK = 16;  ///< lines end between words where the rectangle ends
inline constexpr Long DT_SINGLELINE = 32;
inline constexpr Long DT_NOCLIP = 256;     ///< the text may leave the rectangle
inline constexpr Long DT_CALCRECT = 1024;  ///< draws nothing: see Calculate
inline constexpr Long DT_NOPREFIX = 2048;  ///< "&" is a character like any other

/// Without DT_NOPREFIX "&" is a prefix mark: it takes no room and is not drawn, and the unit behind
/// it stands for itself, so that "&&" is one "&". No line is drawn below that unit.
class TextDrawing {
  public:
    /// The driver must outlive it.
    explicit TextDrawing(const Driver& driver) : driver_(driver) {}

    /// Draws into `rect`, and never outside of it but with DT_NOCLIP; the background stays.
    void Draw(Surface& surface, const Font& font, std::u16string_view text, const Rect& rect,
              Long format, Colour colour);

    /// The rectangle that the text takes from `rect`'s left top corner on.
    Rect Calculate(const Font& font, std::u16string_view text, const Rect& rect, Long format) const;

  private:
    // A stretch of a line's picture: long lines are rendered piece by piece, as they come into
    // view.
    struct Piece {
        Font font;
        std::u16string text;
        Long number = 0;
        TextPicture picture;
    };
    // What a piece is found by; points into the piece.
    struct Key {
        const Font* font;
        std::u16string_view text;
        Long number;
        bool operator==(const Key& other) const {
            return number == other.number && text == other.text && *font == *other.font;
        }
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    void DrawLine(Surface& surface, const Font& font, std::u16string_view text, const Rect& rect,
                  Long format, Colour colour);
    static std::size_t BytesOf(const Piece& piece);
    const TextPicture& Rendered(const Font& font, std::u16string_view text, Long number,
                                Long density);

    const Driver& driver_;
    Long density_ = 1;         ///< of all pieces: those of another one are not asked for again
    std::list<Piece> pieces_;  ///< used latest first
    std::unordered_map<Key, std::list<Piece>::iterator, KeyHash> found_;
    std::size_t bytes_ = 0;
};

}  // namespace platform
