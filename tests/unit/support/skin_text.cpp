#include "tests/unit/support/skin_text.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "core/base/failure.h"
#include "platform/base/text.h"

namespace support {

using platform::Long;
using sarnel::EmbeddedPicture;
using sarnel::SkinTable;

std::string ChangedTable(const RowChanges& changes) {
    std::istringstream lines{std::string(sarnel::EmbeddedSkinTable())};
    std::string changed;
    for (std::string line; std::getline(lines, line);) {
        const bool isRow = line.find('|') != std::string::npos && !line.starts_with('#');
        if (!isRow || !changes.contains(static_cast<Long>(std::stol(line)))) {
            changed += line + '\n';
        }
    }
    for (const auto& [row, text] : changes) {
        if (text) {
            changed += std::to_string(row) + " | " + *text + " |\n";
        }
    }
    return changed;
}

SkinTable ChangedSkins(const RowChanges& changes, const std::vector<Long>& withoutPictures) {
    std::vector<EmbeddedPicture> pictures = sarnel::EmbeddedPictures();
    std::erase_if(pictures, [&](const EmbeddedPicture& picture) {
        return std::find(withoutPictures.begin(), withoutPictures.end(), picture.id) !=
               withoutPictures.end();
    });
    return {ChangedTable(changes), pictures};
}

SkinTable TwoSkins(RowChanges changes) {
    constexpr Long kBase = 100;
    constexpr Long kRows = 284;
    constexpr Long kSecond = 400;
    const SkinTable skins;
    RowChanges rows{{0, "2"}, {2, std::to_string(kSecond)}};
    for (Long offset = 0; offset < kRows; ++offset) {
        sarnel::Step([&] { rows[kSecond + offset] = platform::Narrow(skins.Row(kBase + offset)); });
    }
    rows[kSecond + 8] = "Second";
    for (auto& change : changes) {
        rows[change.first] = std::move(change.second);
    }
    std::vector<EmbeddedPicture> pictures = sarnel::EmbeddedPictures();
    const std::vector<EmbeddedPicture> first = pictures;
    for (const EmbeddedPicture& picture : first) {
        if (picture.id <= kBase + 8) {
            pictures.push_back({picture.id + kSecond - kBase, picture.file, picture.density});
        }
    }
    return {ChangedTable(rows), pictures};
}

}  // namespace support
