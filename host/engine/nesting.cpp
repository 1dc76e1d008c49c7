#include "host/engine/nesting.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "host/engine/bytes.h"

namespace veldrin {

namespace {

constexpr std::size_t kMostLevels = 100;

constexpr std::string_view kChapters("\x10\x43\xA7\x70", 4);

/// What the header at the front of some bytes says of the piece there.
struct Piece {
    std::size_t header = 0;  ///< bytes; 0 if there is no piece here
    std::size_t bytes = 0;   ///< with the header
};

/// An atom of MP4 that ends within these bytes.
Piece AtomAt(std::string_view bytes) {
    constexpr std::size_t kHeader = 8;
    const std::uint64_t size = NumberAt(bytes, 0, 4);
    const auto isLetter = [](char c) {
        const auto letter = static_cast<unsigned char>(c);
        return letter >= ' ' && letter != 0x7F;
    };
    if (bytes.size() < kHeader || size < kHeader || size > bytes.size() ||
        !std::all_of(bytes.begin() + 4, bytes.begin() + kHeader, isLetter)) {
        return {};
    }
    return {kHeader, static_cast<std::size_t>(size)};
}

/// An element of Matroska. One that goes on beyond these bytes, or says that it does not know how
/// long it is, takes up all of them.
Piece ElementAt(std::string_view bytes) {
    const auto lengthOf = [](unsigned first) {
        std::size_t length = 1;
        for (unsigned bit = 0x80; bit != 0 && (first & bit) == 0; bit >>= 1U) {
            ++length;
        }
        return length;
    };
    const std::size_t name = lengthOf(ByteAt(bytes, 0));
    const std::size_t number = lengthOf(ByteAt(bytes, name));
    if (name > 4 || number > 8 || name + number > bytes.size()) {
        return {};
    }
    const std::uint64_t mask = (std::uint64_t{1} << (7 * number)) - 1;
    const std::uint64_t size = NumberAt(bytes, name, number) & mask;
    const std::size_t header = name + number;
    return {header, header + static_cast<std::size_t>(
                                 std::min<std::uint64_t>(size, bytes.size() - header))};
}

/// How many bytes behind the header the pieces within an atom begin, if it looks as if there were
/// any: some have a few numbers first.
std::size_t InsideOfAtom(std::string_view atom) {
    for (const std::size_t place : {8U, 12U, 16U}) {
        if (atom.size() >= place + 8 && AtomAt(atom.substr(place)).bytes > 0) {
            return place;
        }
    }
    return 0;
}

/// Follows the pieces, and those within them. `inside` tells where in a piece there are others, 0
/// for nowhere.
template <typename PieceAt, typename Inside>
bool HasTooManyLevels(std::string_view all, PieceAt at, Inside inside) {
    std::vector<std::size_t> ends = {all.size()};
    std::size_t place = 0;
    while (!ends.empty() && ends.size() <= kMostLevels) {
        if (place >= ends.back()) {
            ends.pop_back();
            continue;
        }
        const std::string_view rest = all.substr(place, ends.back() - place);
        const Piece piece = at(rest);
        if (piece.bytes == 0) {
            place = ends.back();
        } else if (const std::size_t first = inside(rest.substr(0, piece.bytes), piece)) {
            ends.push_back(place + piece.bytes);
            place += first;
        } else {
            place += piece.bytes;
        }
    }
    return !ends.empty();
}

}  // namespace

bool NestsTooDeep(std::string_view piece) {
    if (piece.starts_with(kChapters)) {
        return HasTooManyLevels(piece, &ElementAt, [](std::string_view element, Piece found) {
            // Those that hold others: all chapters, one edition, one chapter.
            const bool holds = element.starts_with(kChapters) || element.starts_with("\x45\xB9") ||
                               element.starts_with("\xB6");
            return holds ? found.header : 0;
        });
    }
    if (piece.size() < 8 || AtomAt(piece).bytes != piece.size()) {
        return false;
    }
    // Packed, a few bytes can be any number of levels.
    const bool packed = piece.substr(4).starts_with("moov") && piece.size() > 16 &&
                        piece.substr(12).starts_with("cmov");
    return packed || HasTooManyLevels(piece, &AtomAt, [](std::string_view atom, Piece) {
               return InsideOfAtom(atom);
           });
}

}  // namespace veldrin
