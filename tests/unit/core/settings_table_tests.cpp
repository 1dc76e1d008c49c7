// The table of the settings: what it gives and writes, what docs/files.md tells of it, and the
// modes that stand on it.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/state/modes.h"
#include "core/state/settings.h"
#include "platform/base/text.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

class SettingsTable : public ::testing::Test {
  protected:
    SettingsTable() { world_.Create(); }  // settings need a directory, and no window

    void Stored(const std::string& lines) const {
        world_.folder.Write(support::World::kSettings, "[Memory]\r\n" + lines);
    }
    std::optional<std::string> File() const {
        return world_.folder.Read(support::World::kSettings);
    }

    support::World world_;
};

TEST_F(SettingsTable, AMissingKeyGivesTheDefaultAndMakesNoFile) {
    EXPECT_EQ(settings::kMusicVolume.Read(), 80);
    EXPECT_EQ(settings::kEffectBass.Read(), 15);
    EXPECT_EQ(settings::kRecurseSubdirs.Read(), true);
    EXPECT_EQ(settings::kTopMost.Read(), false);
    EXPECT_EQ(settings::kX.Read(-7), -7);
    EXPECT_EQ(settings::kLastDir.Read(), u"");
    EXPECT_FALSE(File());
}

TEST_F(SettingsTable, AStoredValueIsConverted) {
    Stored("MusicVolume= 12 \r\nTopMost=-1\r\nRecurseSubdirs=false\r\nX=-30\r\nLastDir=/a b\r\n");
    EXPECT_EQ(settings::kMusicVolume.Read(), 12);
    EXPECT_EQ(settings::kTopMost.Read(), true);
    EXPECT_EQ(settings::kRecurseSubdirs.Read(), false);
    EXPECT_EQ(settings::kX.Read(5), -30);
    EXPECT_EQ(settings::kLastDir.Read(), u"/a b");
}

TEST_F(SettingsTable, WhatIsOfAnotherTypeGivesNothingAndNotTheDefault) {
    Stored("MusicVolume=loud\r\nRecurseSubdirs=yes\r\nX=left\r\n");
    EXPECT_EQ(settings::kMusicVolume.Read(), std::nullopt);
    EXPECT_EQ(settings::kRecurseSubdirs.Read(), std::nullopt);
    EXPECT_EQ(settings::kX.Read(5), std::nullopt);
    EXPECT_FALSE(IsOn(settings::kRecurseSubdirs));
}

TEST_F(SettingsTable, ASwitchIsOnAsStoredOrElseByItsDefault) {
    EXPECT_TRUE(IsOn(settings::kRecurseSubdirs));
    EXPECT_FALSE(IsOn(settings::kHideInSystray));
    Stored("RecurseSubdirs=0\r\nHideInSystray=1\r\n");
    EXPECT_FALSE(IsOn(settings::kRecurseSubdirs));
    EXPECT_TRUE(IsOn(settings::kHideInSystray));
}

TEST_F(SettingsTable, NumbersAreWrittenInDecimalAndBooleansAsWords) {
    settings::kY.Write(-12);
    settings::kSkin.Write(2);
    settings::kRandom.Write(true);
    settings::kRepeatList.Write(false);
    EXPECT_EQ(File(), "[Memory]\r\nY=-12\r\nSkin=2\r\nRandom=True\r\nRepeatList=False\r\n");
}

struct Row {
    std::string key;
    std::string type;
    std::string initial;
    bool operator==(const Row&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.key << " | " << row.type << " | " << row.initial;
}

Row RowOf(const Setting<Long>& setting) {
    return {platform::Narrow(setting.key), "number", std::to_string(setting.initial)};
}
Row RowOf(const Setting<bool>& setting) {
    return {platform::Narrow(setting.key), "boolean", setting.initial ? "True" : "False"};
}
Row RowOf(const PlaceSetting& setting) {
    return {platform::Narrow(setting.key), "number", "centred"};
}
Row RowOf(const TextSetting& setting) {
    return {platform::Narrow(setting.key), "text", "empty"};
}

// The first three cells of each line "| `Key` | type | default | meaning |" of the page.
std::vector<Row> RowsOfTheTable(const std::string& page) {
    std::vector<Row> rows;
    std::ifstream file(page);
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("| `")) {
            continue;
        }
        std::vector<std::string> cells;
        for (std::size_t start = 2; cells.size() < 3;) {
            const std::size_t end = std::min(line.find(" |", start), line.size());
            cells.push_back(line.substr(start, end - start));
            start = std::min(end + 3, line.size());
        }
        rows.push_back({cells[0].substr(1, cells[0].size() - 2), cells[1], cells[2]});
    }
    return rows;
}

TEST(SettingsPage, TellsEachSettingWithItsTypeAndDefaultAndNoOther) {
    std::vector<Row> known;
    for (const settings::AnySetting& setting : settings::kAll) {
        known.push_back(std::visit([](const auto& held) { return RowOf(held); }, setting));
    }
    EXPECT_EQ(RowsOfTheTable(VELDRIN_FILES_PAGE), known);
}

TEST(Modes, EachIsAnItemOfTheMenu) {
    const auto world = support::WorldBuilder().Loaded();
    for (const Mode& mode : modes::kAll) {
        EXPECT_NE(world->Main().hMenu->IndexForKey(mode.menuKey), 0)
            << platform::Narrow(mode.menuKey);
    }
}

}  // namespace
}  // namespace sarnel
