#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "controls/list/rowtext.h"
#include "platform/base/text.h"
#include "playback/playedhistory.h"

namespace sarnel {
namespace {

TEST(PlayedHistory, BeginsWithoutAnySlot) {
    const PlayedHistory history;
    EXPECT_EQ(history.Count(), 0);
    EXPECT_EQ(history.Pos(), 0);
    EXPECT_FALSE(history.Has(0));
    EXPECT_EQ(history.Item(0), u"");
    EXPECT_FALSE(history.Contains(u""));
}

TEST(PlayedHistory, AddAppendsStandsOnTheEntryAndKeepsOneEmptySlotBehindIt) {
    PlayedHistory history;
    history.Add(u"/a");
    history.Add(u"/b");
    EXPECT_EQ(history.Count(), 2);
    EXPECT_EQ(history.Pos(), 1);
    EXPECT_EQ(history.Item(0), u"/a");
    EXPECT_EQ(history.Item(1), u"/b");
    EXPECT_TRUE(history.Has(2));
    EXPECT_EQ(history.Item(2), u"");
    EXPECT_FALSE(history.Has(3));
    EXPECT_FALSE(history.Has(-1));
    EXPECT_EQ(history.Item(-1), u"");
}

TEST(PlayedHistory, ThePositionIsFreeAndAnAddStandsOnTheNewest) {
    PlayedHistory history;
    history.Add(u"/a");
    history.Add(u"/b");
    history.Pos(0);
    EXPECT_EQ(history.Pos(), 0);
    history.Add(u"/c");
    EXPECT_EQ(history.Pos(), 2);
}

TEST(PlayedHistory, ContainsIgnoresCaseAndComparesWholePaths) {
    PlayedHistory history;
    history.Add(u"/Music/\u00C4rger.MP3");
    EXPECT_TRUE(history.Contains(u"/music/\u00E4RGER.mp3"));
    EXPECT_TRUE(history.Contains(RowText(u"/MUSIC/\u00C4RGER.MP3")));
    EXPECT_FALSE(history.Contains(u"/music/\u00E4rger.mp"));
    EXPECT_FALSE(history.Contains(u"/music/\u00E4rger.mp3x"));
    EXPECT_FALSE(history.Contains(u"/music/arger.mp3"));
    EXPECT_FALSE(history.Contains(u""));  // the spare slot is no entry
    history.Add(u"");
    EXPECT_TRUE(history.Contains(u""));
    EXPECT_TRUE(history.Contains(RowText()));
}

TEST(PlayedHistory, ClearTakesTheSlotsAway) {
    PlayedHistory history;
    history.Add(u"/a");
    history.Clear();
    EXPECT_EQ(history.Count(), 0);
    EXPECT_EQ(history.Pos(), 0);
    EXPECT_FALSE(history.Has(0));
    EXPECT_FALSE(history.Contains(u"/a"));
    history.Add(u"/b");
    EXPECT_EQ(history.Item(0), u"/b");
    EXPECT_FALSE(history.Contains(u"/a"));
}

TEST(PlayedHistory, EveryCharacterMakesAnotherPathExceptItsOtherCase) {
    PlayedHistory history;
    std::vector<bool> played(0x10000);
    for (std::size_t unit = 0; unit < played.size(); ++unit) {
        const auto plain = static_cast<char16_t>(unit);
        const std::size_t upper = platform::UpperUnit(plain);
        const std::u16string path = u"/music/" + std::u16string(1, plain) + u"/track 01.mp3";
        ASSERT_EQ(history.Contains(path), played[upper]) << std::hex << unit;
        history.Add(path);
        played[upper] = true;
    }
}

TEST(PlayedHistory, CaseIsIgnoredAlsoWhereOneFormIsStoredWiderThanTheOther) {
    PlayedHistory history;
    history.Add(u"/\u0178");  // needs two bytes a unit, its small letter one
    EXPECT_TRUE(history.Contains(u"/\u00FF"));
    history.Add(u"/long enough \u00FF for two blocks");
    EXPECT_TRUE(history.Contains(u"/LONG ENOUGH \u0178 FOR TWO BLOCKS"));
    history.Add(u"/A \u00B5");  // the micro sign; its capital is the Greek one
    EXPECT_TRUE(history.Contains(u"/a \u03BC"));
    history.Add(u"/nhạc/Việt.mp3");
    EXPECT_TRUE(history.Contains(u"/NHẠC/VIỆT.MP3"));
}

TEST(PlayedHistory, AnswersAsAWalkThroughAllEntriesDoes) {
    std::mt19937 random(5);
    PlayedHistory history;
    std::vector<std::u16string> plain;
    const auto any = [&] {
        constexpr std::u16string_view kUnits = u"aAbB\u00E9\u00C9\u0100\u0101\u4E00\u4F01";
        std::u16string path = random() % 2 == 0 ? u"/" : u"/a folder with a name/";
        for (auto count = random() % 4; count > 0; --count) {
            path += kUnits[random() % kUnits.size()];
        }
        return path;
    };
    for (int step = 0; step < 2000; ++step) {
        const std::u16string path = any();
        const bool expected = std::any_of(
            plain.begin(), plain.end(),
            [&](const std::u16string& entry) { return platform::EqualIgnoringCase(entry, path); });
        ASSERT_EQ(history.Contains(path), expected) << step;
        ASSERT_EQ(history.Contains(RowText(path)), expected) << step;
        if (random() % 20 == 0) {
            history.Add(path);
            plain.push_back(path);
        }
    }
}

}  // namespace
}  // namespace sarnel
