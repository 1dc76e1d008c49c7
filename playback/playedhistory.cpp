#include "playback/playedhistory.h"

#include <algorithm>

#include "platform/text.h"

namespace sarnel {

namespace {

// Of the lower-cased units, so that paths equal ignoring case meet.
template <class Units>
std::uint64_t HashOf(const Units& units) {
    constexpr std::uint64_t kPrime = 0x9E3779B97F4A7C15;
    std::uint64_t hash = units.size();
    for (const auto unit : units) {
        hash = (hash ^ platform::LowerUnit(UnitOf(unit))) * kPrime;
        hash ^= hash >> 29;
    }
    return hash;
}

template <class Units>
bool SamePath(const Units& units, std::u16string_view path) {
    return std::equal(units.begin(), units.end(), path.begin(), path.end(), [](auto a, char16_t b) {
        return platform::LowerUnit(UnitOf(a)) == platform::LowerUnit(b);
    });
}

}  // namespace

std::u16string PlayedHistory::Item(Long slot) const {
    return Has(slot) ? items_[static_cast<std::size_t>(slot)] : std::u16string();
}

void PlayedHistory::Add(std::u16string_view path) {
    slotsByHash_.emplace(HashOf(path), count_);
    pos_ = count_;
    ++count_;
    items_.resize(static_cast<std::size_t>(count_) + 1);
    items_[static_cast<std::size_t>(pos_)] = path;
}

bool PlayedHistory::Contains(std::u16string_view path) const {
    const auto [first, last] = slotsByHash_.equal_range(HashOf(path));
    return std::any_of(first, last, [&](const auto& entry) {
        return SamePath(path, items_[static_cast<std::size_t>(entry.second)]);
    });
}

bool PlayedHistory::Contains(const RowText& path) const {
    return path.Units([&](const auto& units) {
        const auto [first, last] = slotsByHash_.equal_range(HashOf(units));
        return std::any_of(first, last, [&](const auto& entry) {
            return SamePath(units, items_[static_cast<std::size_t>(entry.second)]);
        });
    });
}

void PlayedHistory::Clear() {
    items_.clear();
    slotsByHash_.clear();
    count_ = 0;
    pos_ = 0;
}

}  // namespace sarnel
