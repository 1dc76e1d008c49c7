#include "controls/list/rowtext.h"

#include <algorithm>
#include <cstring>

namespace sarnel {

namespace {

template <class A, class B>
std::strong_ordering CompareUnits(const A& a, const B& b) {
    return std::lexicographical_compare_three_way(
        a.begin(), a.end(), b.begin(), b.end(),
        [](auto x, auto y) { return UnitOf(x) <=> UnitOf(y); });
}

}  // namespace

RowText::RowText(std::u16string_view text) {
    if (text.empty()) {
        return;
    }
    char16_t all = 0;
    for (const char16_t unit : text) {
        all = static_cast<char16_t>(all | unit);
    }
    const bool wide = all > 0xFF;
    const std::size_t bytes = text.size() * (wide ? sizeof(char16_t) : 1);
    const auto header = static_cast<Header>(text.size() * 2 + (wide ? 1 : 0));
    block_ = std::make_unique_for_overwrite<unsigned char[]>(sizeof(Header) + bytes);
    std::memcpy(block_.get(), &header, sizeof header);
    unsigned char* const units = block_.get() + sizeof(Header);
    if (wide) {
        std::memcpy(units, text.data(), bytes);
    } else {
        for (std::size_t i = 0; i < text.size(); ++i) {
            units[i] = static_cast<unsigned char>(text[i]);
        }
    }
}

RowText::Header RowText::GetHeader() const {
    Header header = 0;
    std::memcpy(&header, block_.get(), sizeof header);
    return header;
}

RowText RowText::Copy() const {
    RowText copy;
    if (block_) {
        const std::size_t bytes = BlockSize();
        copy.block_ = std::make_unique_for_overwrite<unsigned char[]>(bytes);
        std::memcpy(copy.block_.get(), block_.get(), bytes);
    }
    return copy;
}

std::size_t RowText::Size() const {
    return block_ ? GetHeader() / 2 : 0;
}

std::u16string RowText::Text() const {
    return Units([](const auto& units) {
        std::u16string text(units.size(), u'\0');
        std::transform(units.begin(), units.end(), text.begin(),
                       [](auto unit) { return UnitOf(unit); });
        return text;
    });
}

char16_t RowText::At(std::size_t index) const {
    return Units([index](const auto& units) { return UnitOf(units[index]); });
}

std::strong_ordering RowText::operator<=>(const RowText& other) const {
    return Units([&](const auto& mine) {
        return other.Units([&](const auto& theirs) { return CompareUnits(mine, theirs); });
    });
}

bool RowText::operator==(const RowText& other) const {
    return std::is_eq(*this <=> other);
}

std::strong_ordering RowText::Compare(std::u16string_view text) const {
    return Units([&](const auto& mine) { return CompareUnits(mine, text); });
}

std::size_t RowText::BlockSize() const {
    const Header header = GetHeader();
    return sizeof(Header) + std::size_t{header / 2} * (header % 2 != 0 ? sizeof(char16_t) : 1);
}

}  // namespace sarnel
