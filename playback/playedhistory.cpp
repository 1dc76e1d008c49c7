#include "playback/playedhistory.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "controls/list/jlist.h"
#include "platform/base/text.h"

namespace sarnel {

namespace {

constexpr std::size_t kBlock = 8;

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word, std::uint64_t odd) {
    hash = (hash ^ word) * odd;
    return hash ^ (hash >> 32);
}

// The low and the high bytes of eight units.
struct Words {
    std::uint64_t low = 0;
    std::uint64_t high = 0;
};

// Eight units as capitals: the same whatever width the text is kept in.
template <class Units>
Words CapitalWords(const Units& units, std::size_t first) {
    std::array<unsigned char, kBlock> low{};
    std::array<unsigned char, kBlock> high{};
    const std::size_t size = std::min(kBlock, units.size() - first);
    for (std::size_t i = 0; i < size; ++i) {
        const char16_t unit = platform::UpperUnit(UnitOf(units[first + i]));
        low[i] = static_cast<unsigned char>(unit & 0xFF);
        high[i] = static_cast<unsigned char>(unit >> 8);
    }
    Words words;
    std::memcpy(&words.low, low.data(), kBlock);
    std::memcpy(&words.high, high.data(), kBlock);
    return words;
}

// The same for eight ASCII bytes at once; false if one of them is no ASCII.
bool CapitalAscii(const char* bytes, std::uint64_t& word) {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    std::memcpy(&word, bytes, kBlock);
    if ((word & (kOnes * 0x80)) != 0) {
        return false;
    }
    const std::uint64_t fromA = word + kOnes * (0x80 - 'a');
    const std::uint64_t pastZ = word + kOnes * (0x80 - 'z' - 1);
    word ^= ((fromA & ~pastZ) & (kOnes * 0x80)) >> 2;  // 0x80 >> 2 is the bit of the case
    return true;
}

}  // namespace

// Of the capitals, so that paths equal ignoring case meet.
PlayedHistory::Print PlayedHistory::PrintOf(const RowText& path) {
    return path.Units([](const auto& units) {
        Print print{units.size() + 1, ~std::uint64_t{units.size()}};
        for (std::size_t i = 0; i < units.size(); i += kBlock) {
            Words words;
            bool done = false;
            if constexpr (sizeof(units[0]) == 1) {
                done = units.size() - i >= kBlock && CapitalAscii(units.data() + i, words.low);
            }
            if (!done) {
                words = CapitalWords(units, i);
            }
            print.low = Mix(print.low, words.low, 0x9E3779B97F4A7C15);
            print.high = Mix(print.high, words.low, 0xC2B2AE3D27D4EB4F);
            if (words.high != 0) {  // with other factors, so that it is never taken for low bytes
                print.low = Mix(print.low, words.high, 0xD6E8FEB86659FD93);
                print.high = Mix(print.high, words.high, 0xA0761D6478BD642F);
            }
        }
        return print;
    });
}

std::u16string PlayedHistory::Item(Long slot) const {
    return Has(slot) ? items_[static_cast<std::size_t>(slot)].Text() : std::u16string();
}

void PlayedHistory::Add(std::u16string_view path) {
    pos_ = count_;
    ++count_;
    items_.resize(static_cast<std::size_t>(count_) + 1);
    items_[static_cast<std::size_t>(pos_)] = RowText(path);
    if (table_.size() < 2 * items_.size()) {
        GrowTable();
    }
    Enter(PrintOf(items_[static_cast<std::size_t>(pos_)]));
}

void PlayedHistory::GrowTable() {
    constexpr std::size_t kFirst = 64;
    const std::vector<Print> former =
        std::exchange(table_, std::vector<Print>(std::max(kFirst, 2 * table_.size())));
    for (const Print& print : former) {
        if (print != Print{}) {
            Enter(print);
        }
    }
}

void PlayedHistory::Enter(const Print& print) {
    const std::size_t mask = table_.size() - 1;
    std::size_t at = print.low & mask;
    while (table_[at] != Print{}) {
        at = (at + 1) & mask;
    }
    table_[at] = print;
}

bool PlayedHistory::Contains(const RowText& path) const {
    return Has(PrintOf(path));
}

std::vector<Long> PlayedHistory::RowsNotIn(const JList& list) const {
    // First all prints of a batch, then all look-ups: the look-ups then wait for memory together.
    constexpr Long kBatch = 32;
    std::array<Print, kBatch> prints;
    std::vector<Long> rows;
    for (Long first = 0; first < list.ListCount(); first += kBatch) {
        const Long size = std::min(kBatch, list.ListCount() - first);
        for (Long i = 0; i < size; ++i) {
            prints[static_cast<std::size_t>(i)] = PrintOf(list.DataAt(first + i));
        }
        for (Long i = 0; i < size; ++i) {
            if (!Has(prints[static_cast<std::size_t>(i)])) {
                rows.push_back(first + i);
            }
        }
    }
    return rows;
}

bool PlayedHistory::Has(const Print& print) const {
    if (table_.empty()) {
        return false;
    }
    const std::size_t mask = table_.size() - 1;
    std::size_t at = print.low & mask;
    while (table_[at] != Print{} && table_[at] != print) {
        at = (at + 1) & mask;
    }
    return table_[at] == print;
}

void PlayedHistory::Clear() {
    items_.clear();
    table_.clear();
    count_ = 0;
    pos_ = 0;
}

}  // namespace sarnel
