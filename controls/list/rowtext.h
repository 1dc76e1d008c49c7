// The text of one row's column: immutable, one pointer wide, and one byte a unit where no unit
// needs two. A million rows are kept in memory, so this is where the list's memory is decided.
//
// A text lies in a block, which copies share: the search panel shows the playlist's own texts. A
// short one, such as a number, lies in the bytes of the pointer. All of it belongs to one thread.
#pragma once

#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace sarnel {

/// A stored unit of either width as the code unit that it stands for.
inline char16_t UnitOf(char16_t unit) {
    return unit;
}
inline char16_t UnitOf(char unit) {
    return static_cast<unsigned char>(unit);
}

class RowText {
  public:
    /// Empty; costs no allocation.
    RowText() = default;
    explicit RowText(std::u16string_view text);
    ~RowText() { Release(); }
    RowText(RowText&& other) noexcept : word_(std::exchange(other.word_, 0)) {}
    RowText& operator=(RowText&& other) noexcept {
        std::swap(word_, other.word_);
        return *this;
    }
    /// The same text, no more of it in memory.
    RowText Copy() const;

    std::size_t Size() const;
    std::u16string Text() const;
    char16_t At(std::size_t index) const;

    /// Ordinal, by code units.
    std::strong_ordering operator<=>(const RowText& other) const;
    bool operator==(const RowText& other) const;
    std::strong_ordering Compare(std::u16string_view text) const;

    /// Calls `visit` with the units as one contiguous run of either width: a view of char or of
    /// char16_t; UnitOf reads an element.
    template <class Visit>
    auto Units(Visit visit) const;

  private:
    // In front of the units of a block.
    struct Header {
        std::uint32_t owners;
        std::uint32_t size;  ///< twice the number of units, plus one if they are two bytes wide
    };
    // Blocks lie at even addresses: an odd word is a text of its own. Its lowest byte is twice the
    // number of units, plus one, and the units, one byte each, are the others.
    static constexpr std::size_t kInPlace = sizeof(std::uintptr_t) - 1;
    static constexpr std::size_t kFirstInPlace = std::endian::native == std::endian::little ? 1 : 0;

    bool IsInPlace() const { return word_ % 2 != 0; }
    Header& Block() const;  ///< there must be one
    void Release();

    std::uintptr_t word_ = 0;
};

inline RowText::Header& RowText::Block() const {
    return *reinterpret_cast<Header*>(word_);  // NOLINT(performance-no-int-to-ptr)
}

template <class Visit>
auto RowText::Units(Visit visit) const {
    if (word_ == 0) {
        return visit(std::string_view());
    }
    if (IsInPlace()) {
        const auto* bytes = static_cast<const char*>(static_cast<const void*>(&word_));
        return visit(std::string_view(bytes + kFirstInPlace, (word_ & 0xFF) / 2));
    }
    const Header& block = Block();
    const void* const units = &block + 1;
    if (block.size % 2 != 0) {
        return visit(
            std::basic_string_view<char16_t>(static_cast<const char16_t*>(units), block.size / 2));
    }
    return visit(std::string_view(static_cast<const char*>(units), block.size / 2));
}

}  // namespace sarnel
