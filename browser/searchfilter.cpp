#include "browser/searchfilter.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "platform/base/text.h"

namespace sarnel {

namespace {

struct SmallLetter {
    char16_t capital;
    char16_t unit;
};

// All units that are not their own capitals, in the order of these; looked up once a run.
const std::vector<SmallLetter>& SmallLetters() {
    static const std::vector<SmallLetter> letters = [] {
        std::vector<SmallLetter> all;
        for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
            const auto small = static_cast<char16_t>(unit);
            if (const char16_t capital = platform::UpperUnit(small); capital != small) {
                all.push_back({capital, small});
            }
        }
        std::stable_sort(all.begin(), all.end(), [](const SmallLetter& a, const SmallLetter& b) {
            return a.capital < b.capital;
        });
        return all;
    }();
    return letters;
}

// A lane is a unit's share of eight bytes.
template <class Unit>
constexpr std::uint64_t kOnes = sizeof(Unit) == 1 ? 0x0101'0101'0101'0101 : 0x0001'0001'0001'0001;
template <class Unit>
constexpr std::size_t kLanes = sizeof(std::uint64_t) / sizeof(Unit);

// Marks at least the lanes in which one of the letter's units stands.
template <class Unit>
std::uint64_t Marked(const Unit* place, const std::vector<std::uint64_t>& letter) {
    std::uint64_t lanes = 0;
    std::memcpy(&lanes, place, sizeof lanes);
    std::uint64_t marks = 0;
    for (const std::uint64_t units : letter) {
        const std::uint64_t differs = lanes ^ units;
        marks |= (differs - kOnes<Unit>)&~differs;
    }
    constexpr std::uint64_t kHighest = kOnes<Unit> << (sizeof(Unit) * 8 - 1);
    return marks & kHighest;
}

// The unit that the lowest mark stands for.
template <class Unit>
std::size_t LaneOf(std::uint64_t marks) {
    const auto lane = static_cast<std::size_t>(std::countr_zero(marks)) / (sizeof(Unit) * 8);
    return std::endian::native == std::endian::little ? lane : kLanes<Unit> - 1 - lane;
}

}  // namespace

SearchFilter::Letter::Letter(char16_t capital) {
    const auto add = [this](std::uint64_t unit) {
        wide.push_back(unit * kOnes<char16_t>);
        if (unit <= 0xFF) {
            narrow.push_back(unit * kOnes<char>);
        }
    };
    if (platform::UpperUnit(capital) == capital) {
        add(capital);
    }
    const auto [begin, end] = std::equal_range(
        SmallLetters().begin(), SmallLetters().end(), SmallLetter{capital, 0},
        [](const SmallLetter& a, const SmallLetter& b) { return a.capital < b.capital; });
    for (auto letter = begin; letter != end; ++letter) {
        add(letter->unit);
    }
}

SearchFilter::SearchFilter(std::u16string_view text) : capitals_(platform::Upper(text)) {
    for (const char16_t capital : capitals_.substr(0, 2)) {
        letters_.emplace_back(capital);
    }
}

bool SearchFilter::Matches(const RowText& text) const {
    return capitals_.empty() || text.Units([this](const auto& units) { return IsIn(units); });
}

template <class Unit>
bool SearchFilter::StandsAt(const Unit* place) const {
    return std::equal(capitals_.begin(), capitals_.end(), place, [](char16_t capital, Unit unit) {
        return capital == platform::UpperUnit(UnitOf(unit));
    });
}

template <class Unit>
bool SearchFilter::IsIn(std::basic_string_view<Unit> text) const {
    if (text.size() < capitals_.size()) {
        return false;
    }
    const auto of = [](const Letter& letter) -> const std::vector<std::uint64_t>& {
        return sizeof(Unit) == 1 ? letter.narrow : letter.wide;
    };
    const std::size_t places = text.size() - capitals_.size() + 1;
    std::size_t at = 0;
    for (; at < places && at + kLanes<Unit> < text.size(); at += kLanes<Unit>) {
        const Unit* const place = text.data() + at;
        std::uint64_t marks = Marked(place, of(letters_.front()));
        if (letters_.size() > 1 && marks != 0) {
            marks &= Marked(place + 1, of(letters_.back()));
        }
        for (; marks != 0; marks &= marks - 1) {
            const std::size_t lane = LaneOf<Unit>(marks);
            if (at + lane < places && StandsAt(place + lane)) {
                return true;
            }
        }
    }
    for (; at < places; ++at) {
        if (StandsAt(text.data() + at)) {
            return true;
        }
    }
    return false;
}

}  // namespace sarnel
