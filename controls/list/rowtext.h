// The text of one row's column: immutable, one pointer wide, and one byte a unit where no unit
// needs two. A million rows are kept in memory, so this is where the list's memory is decided.
#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

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
    RowText(RowText&&) noexcept = default;
    RowText& operator=(RowText&&) noexcept = default;
    // Copies cost an allocation, so they are asked for by name.
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
    /// Twice the number of units, plus one if they are two bytes wide.
    using Header = std::uint32_t;
    Header GetHeader() const;
    /// Bytes of the block; there must be one.
    std::size_t BlockSize() const;
    const unsigned char* Bytes() const { return block_.get() + sizeof(Header); }

    std::unique_ptr<unsigned char[]> block_;  // header, then the units; null when empty
};

template <class Visit>
auto RowText::Units(Visit visit) const {
    const Header header = block_ ? GetHeader() : 0;
    if (header % 2 != 0) {
        // The block comes from new, and the header is 4 bytes: the units are aligned.
        return visit(std::basic_string_view<char16_t>(
            static_cast<const char16_t*>(static_cast<const void*>(Bytes())), header / 2));
    }
    return visit(std::basic_string_view<char>(
        block_ ? static_cast<const char*>(static_cast<const void*>(Bytes())) : nullptr,
        header / 2));
}

}  // namespace sarnel
