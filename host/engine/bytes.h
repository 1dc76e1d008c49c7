// Numbers within bytes of a file, which may end before them.
#pragma once

#include <cstdint>
#include <string_view>

namespace veldrin {

/// Zero behind the end.
inline unsigned ByteAt(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U;
}

/// A number of some bytes, the highest first, of which as many bits count.
inline std::uint64_t NumberAt(std::string_view bytes, std::size_t place, std::size_t count,
                              unsigned bits = 8) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        number = (number << bits) | (ByteAt(bytes, place + i) & ((1U << bits) - 1));
    }
    return number;
}

/// One of four bytes, the lowest first.
inline std::uint32_t LittleEndianAt(std::string_view bytes, std::size_t place) {
    return ByteAt(bytes, place) | ByteAt(bytes, place + 1) << 8U | ByteAt(bytes, place + 2) << 16U |
           ByteAt(bytes, place + 3) << 24U;
}

}  // namespace veldrin
