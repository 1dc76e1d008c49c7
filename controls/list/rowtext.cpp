#include "controls/list/rowtext.h"

#include <algorithm>
#include <cstring>
#include <new>

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
    unsigned char* narrow = nullptr;
    if (!wide && text.size() <= kInPlace) {
        word_ = text.size() * 2 + 1;
        narrow = static_cast<unsigned char*>(static_cast<void*>(&word_)) + kFirstInPlace;
    } else {
        const std::size_t bytes = text.size() * (wide ? sizeof(char16_t) : 1);
        void* const block = ::operator new(sizeof(Header) + bytes);
        auto* const header =
            new (block) Header{1, static_cast<std::uint32_t>(text.size() * 2 + (wide ? 1 : 0))};
        word_ = reinterpret_cast<std::uintptr_t>(block);
        narrow = static_cast<unsigned char*>(static_cast<void*>(header + 1));
        if (wide) {
            std::memcpy(narrow, text.data(), bytes);
            return;
        }
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        narrow[i] = static_cast<unsigned char>(text[i]);
    }
}

void RowText::Release() {
    if (word_ != 0 && !IsInPlace()) {
        Header& block = Block();
        if (--block.owners == 0) {
            ::operator delete(&block);
        }
    }
}

RowText RowText::Copy() const {
    RowText copy;
    if (word_ != 0 && !IsInPlace()) {
        ++Block().owners;
    }
    copy.word_ = word_;
    return copy;
}

std::size_t RowText::Size() const {
    return Units([](const auto& units) { return units.size(); });
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

}  // namespace sarnel
