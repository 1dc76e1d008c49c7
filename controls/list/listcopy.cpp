#include "controls/list/listcopy.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "controls/list/listfile.h"

namespace sarnel {

namespace {

using Length = std::size_t;

constexpr std::size_t kBlockBytes = std::size_t{1} << 20U;

}  // namespace

void ListCopy::AddRow(const RowText& text, const RowText& data) {
    Add(text);
    Add(data);
}

void ListCopy::Add(const RowText& text) {
    text.Units([this](const auto& units) {
        const std::size_t wide = sizeof(units[0]) - 1;
        const std::size_t bytes = units.size() << wide;
        const std::size_t wanted = sizeof(Length) + bytes;
        if (blocks_.empty() || blocks_.back().capacity() - blocks_.back().size() < wanted) {
            blocks_.emplace_back().reserve(std::max(kBlockBytes, wanted));
        }
        const Length length = bytes * 2 + wide;
        std::string& block = blocks_.back();
        block.append(static_cast<const char*>(static_cast<const void*>(&length)), sizeof(length));
        block.append(static_cast<const char*>(static_cast<const void*>(units.data())), bytes);
    });
}

template <class Take>
void ListCopy::EachText(Take take) const {
    std::u16string wideUnits;
    for (const std::string& block : blocks_) {
        for (std::size_t at = 0; at < block.size();) {
            Length length = 0;
            std::memcpy(&length, block.data() + at, sizeof(length));
            at += sizeof(length);
            const std::string_view bytes = std::string_view(block).substr(at, length / 2);
            at += bytes.size();
            if (length % 2 == 0) {
                take(bytes);
            } else {
                wideUnits.resize(bytes.size() / sizeof(char16_t));
                std::memcpy(wideUnits.data(), bytes.data(), bytes.size());
                take(std::u16string_view(wideUnits));
            }
        }
    }
}

void ListCopy::EachRow(const Row& take) const {
    std::u16string text;
    std::u16string next;
    bool isPayload = false;
    EachText([&](const auto& units) {
        next.clear();
        std::transform(units.begin(), units.end(), std::back_inserter(next),
                       [](auto unit) { return UnitOf(unit); });
        if (isPayload) {
            take(text, next);
        } else {
            text.swap(next);
        }
        isPayload = !isPayload;
    });
}

void ListCopy::WriteTo(platform::FileWriter& file) const {
    WriteListHead(file, count_, current_);
    EachText([&file](const auto& units) { WriteListLine(file, units); });
}

}  // namespace sarnel
