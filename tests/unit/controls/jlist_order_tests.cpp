// Search, sorted insertion and sorting. Payloads below are capitals of their texts, so that what
// sorting loses can be seen.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;

// Rows written as one string, a character each.
void AddLetters(JList& list, std::u16string_view letters) {
    for (const char16_t letter : letters) {
        list.AddItem(std::u16string(1, letter),
                     std::u16string(1, static_cast<char16_t>(letter - 32)));
    }
}

std::u16string Joined(const std::vector<std::u16string>& parts) {
    std::u16string all;
    for (const std::u16string& part : parts) {
        all += part;
    }
    return all;
}

class JListOrder : public ::testing::Test {
  protected:
    std::u16string Texts() const { return Joined(bench_.Texts()); }
    std::u16string Payloads() const { return Joined(bench_.Payloads()); }

    ListBench bench_;
    JList& list_ = *bench_.list;
};

class JListSorted : public ::testing::Test {
  protected:
    std::u16string Texts() const { return Joined(bench_.Texts()); }
    std::u16string Payloads() const { return Joined(bench_.Payloads()); }

    ListBench bench_{ListBench::kStoredSorted};
    JList& list_ = *bench_.list;
};

TEST_F(JListSorted, ARowGoesToItsPlaceWithItsPayload) {
    AddLetters(list_, u"c");
    EXPECT_EQ(list_.newIndex(), 0);
    AddLetters(list_, u"a");
    EXPECT_EQ(list_.newIndex(), 0);
    AddLetters(list_, u"b");
    EXPECT_EQ(list_.newIndex(), 1);
    AddLetters(list_, u"d");
    EXPECT_EQ(list_.newIndex(), 3);
    EXPECT_EQ(Texts(), u"abcd");
    EXPECT_EQ(Payloads(), u"ABCD");
}

TEST_F(JListSorted, AnEqualRowStandsInFrontOfTheOneThatTheSearchMeets) {
    for (const char16_t* payload : {u"1", u"2", u"3", u"4"}) {
        list_.AddItem(u"x", payload);
    }
    // 2 meets 1 at row 0; 3 meets row 0 (a half goes to the even row); 4 meets row 1 of 3, 2, 1.
    EXPECT_EQ(Payloads(), u"3421");
    EXPECT_EQ(list_.newIndex(), 1);
}

TEST_F(JListSorted, OrderIsByCodeUnitNotByAlphabet) {
    for (const char16_t* text : {u"\u00E9", u"a", u"Z", u"B", u"\uE000", u"\U0001D11E", u"1"}) {
        list_.AddItem(text, u"");
    }
    EXPECT_EQ(Texts(), u"1BZa\u00E9\U0001D11E\uE000");
}

TEST_F(JListSorted, AnEmptyTextComesFirst) {
    AddLetters(list_, u"ba");
    list_.AddItem(u"", u"empty");
    EXPECT_EQ(list_.newIndex(), 0);
    EXPECT_EQ(list_.ListData(0), u"empty");
}

TEST_F(JListSorted, AnExplicitIndexBeatsTheOrder) {
    AddLetters(list_, u"ab");
    list_.AddItem(u"z", u"Z", 0);
    EXPECT_EQ(Texts(), u"zab");
}

TEST_F(JListSorted, IndicesFollowASortedAdd) {
    AddLetters(list_, u"bd");
    list_.ListCurrent(1);
    list_.ListIndex(1);
    AddLetters(list_, u"c");
    EXPECT_EQ(list_.ListCurrent(), 2);
    EXPECT_EQ(list_.ListIndex(), 2);
    AddLetters(list_, u"e");
    EXPECT_EQ(list_.ListCurrent(), 2);
}

TEST_F(JListSorted, AStoredTrueDoesNotSortUntilItHasOnceBeenFalse) {
    list_.AddItem(u"b", u"B", 0);
    list_.AddItem(u"a", u"A", 1);
    list_.Sorted(true);
    EXPECT_EQ(Texts(), u"ba");
    list_.Sorted(false);
    EXPECT_FALSE(list_.SortedLoaded());
    EXPECT_EQ(Texts(), u"ba");
    list_.Sorted(true);
    EXPECT_EQ(Texts(), u"ab");
}

TEST_F(JListOrder, SettingSortedSortsWhatIsThere) {
    AddLetters(list_, u"cab");
    list_.Sorted(true);
    EXPECT_TRUE(list_.Sorted());
    EXPECT_EQ(Texts(), u"abc");
}

TEST_F(JListOrder, AShortListLosesThePayloadsOfTheRowsThatTheFinalPassMoves) {
    AddLetters(list_, u"cab");
    list_.Sort(true);
    EXPECT_EQ(Texts(), u"abc");
    // a moves up past c: c's payload is copied down over A. Then b past c: over B.
    EXPECT_EQ(Payloads(), u"CCC");
}

TEST_F(JListOrder, TheFinalPassKeepsEqualRowsInOrder) {
    for (const char16_t* payload : {u"1", u"2", u"3"}) {
        list_.AddItem(u"x", payload);
    }
    list_.Sort(true);
    EXPECT_EQ(Payloads(), u"123");
}

// Six rows are one more than the final pass gets alone. By hand: the median of three makes
// "aedcbf" of "fedcba" and puts d in the place before last; one exchange gives "acbedf", the pivot
// goes in for "acbdef", payloads along. The final pass moves b past c, and B is overwritten.
TEST_F(JListOrder, SixRowsArePartitionedWithTheirPayloadsFirst) {
    AddLetters(list_, u"fedcba");
    list_.Sort(true);
    EXPECT_EQ(Texts(), u"abcdef");
    EXPECT_EQ(Payloads(), u"ACCDEF");
}

TEST_F(JListOrder, FlagsGoTheWayOfThePayloadsAndTheCountStays) {
    AddLetters(list_, u"ba");
    list_.Selected(0, true);
    list_.Sort(true);
    EXPECT_EQ(bench_.Flags(), "xx");
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListOrder, SortResetsTheViewAndTheIndicesButNotListCurrent) {
    bench_.AddMany(9);
    list_.DisplayFrom(4);
    list_.ListIndex(6);
    list_.CaretIndex(6);
    list_.ListCurrent(7);
    list_.RedrawFlag(false);
    list_.Sort(true);
    EXPECT_EQ(bench_.Range(), (std::pair<Long, Long>{0, 4}));
    EXPECT_EQ(list_.TopIndex(), 0);  // repainted whatever the flag says
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.FocusIndex(), 0);
    EXPECT_EQ(list_.CaretIndex(), -1);
    EXPECT_EQ(list_.ListCurrent(), 7);
}

TEST_F(JListOrder, SortingAnEmptyListShowsNoRow) {
    list_.Sort(true);
    EXPECT_EQ(bench_.Range(), (std::pair<Long, Long>{0, -1}));
    list_.Sort(false);
    EXPECT_EQ(list_.ListCount(), 0);
}

TEST_F(JListOrder, DescendingTurnsTheTextsRoundAndThePayloadsNot) {
    AddLetters(list_, u"abc");
    list_.Sort(false);
    EXPECT_EQ(Texts(), u"cba");
    EXPECT_EQ(Payloads(), u"ABC");
}

TEST_F(JListOrder, ReverseStringArrayTurnsTextsOnlyAndDoesNotRepaint) {
    AddLetters(list_, u"abcd");
    list_.Selected(0, true);
    list_.RedrawFlag(false);
    AddLetters(list_, u"e");
    list_.ReverseStringArray();
    EXPECT_EQ(Texts(), u"edcba");
    EXPECT_EQ(Payloads(), u"ABCDE");
    EXPECT_EQ(bench_.Flags(), "x....");
    EXPECT_EQ(bench_.Range(), (std::pair<Long, Long>{0, 3}));  // as before the fifth row
    list_.RemoveItem(0);
    list_.ReverseStringArray();
    EXPECT_EQ(Texts(), u"abcd");
    EXPECT_EQ(list_.List(4), u"");  // the spare takes no part
}

TEST_F(JListOrder, SortingManyRowsPutsTheTextsInOrder) {
    for (Long i = 0; i < 3000; ++i) {
        const auto unit = static_cast<char16_t>(u'a' + i * 7919 % 1013);
        list_.AddItem(std::u16string(1, unit), u"");
    }
    list_.Sort(true);
    for (Long i = 1; i < list_.ListCount(); ++i) {
        ASSERT_LE(list_.List(i - 1), list_.List(i)) << i;
    }
}

TEST_F(JListOrder, FindDataIndexScansPayloadsAndTheFirstEqualOneWins) {
    list_.AddItem(u"needle", u"/a.mp3");
    list_.AddItem(u"", u"/B.mp3");
    list_.AddItem(u"", u"/b.mp3");
    list_.AddItem(u"", u"/B.mp3");
    EXPECT_EQ(list_.FindDataIndex(u"needle", true), -1);
    EXPECT_EQ(list_.FindDataIndex(u"/b.mp3", true), 2);
    EXPECT_EQ(list_.FindDataIndex(u"/B.mp3", true), 1);
    EXPECT_EQ(list_.FindDataIndex(u"/b.MP3", false), 1);
    EXPECT_EQ(list_.FindDataIndex(u"/b.MP3", true), -1);
    EXPECT_EQ(list_.FindDataIndex(u"/b", false), -1);
    EXPECT_EQ(list_.FindDataIndex(u"", true), -1);  // the spare is no row
}

TEST_F(JListOrder, FindDataIndexIgnoresCaseBeyondAscii) {
    list_.AddItem(u"", u"/ÄÖ/ЁЛКА.mp3");
    EXPECT_EQ(list_.FindDataIndex(u"/äö/ёлка.MP3", false), 0);
    EXPECT_EQ(list_.FindDataIndex(u"/äö/ёлка.MP3", true), -1);
    list_.AddItem(u"", u"/nhạc/Ở.mp3");
    EXPECT_EQ(list_.FindDataIndex(u"/NHẠC/ở.mp3", false), 1);
}

TEST_F(JListOrder, FindDataIndexHasNoneInAnEmptyList) {
    EXPECT_EQ(list_.FindDataIndex(u"", true), -1);
    EXPECT_EQ(list_.FindDataIndex(u"x", false), -1);
}

TEST_F(JListSorted, FindDataIndexHalvesByPayload) {
    AddLetters(list_, u"abcdefg");
    for (Long row = 0; row < 7; ++row) {
        EXPECT_EQ(list_.FindDataIndex(list_.ListData(row), true), row);
    }
    EXPECT_EQ(list_.FindDataIndex(u"d", true), -1);
    EXPECT_EQ(list_.FindDataIndex(u"d", false), 3);
    EXPECT_EQ(list_.FindDataIndex(u"DD", true), -1);
    EXPECT_EQ(list_.FindDataIndex(u"", true), -1);
}

// Ignoring case it halves among small letters, so that "_" stands in front of all of them.
TEST_F(JListSorted, FindDataIndexHalvesByTheOrderOfSmallLetters) {
    list_.AddItem(u"1", u"_");
    list_.AddItem(u"2", u"A");
    list_.AddItem(u"3", u"Ạ");
    for (const auto& [data, row] : {std::pair{u"_", 0}, {u"a", 1}, {u"ạ", 2}}) {
        EXPECT_EQ(list_.FindDataIndex(data, false), row);
    }
}

TEST_F(JListSorted, FindDataIndexMissesPayloadsThatAreNotInOrder) {
    list_.AddItem(u"a", u"3");
    list_.AddItem(u"b", u"1");
    list_.AddItem(u"c", u"2");
    EXPECT_EQ(list_.FindDataIndex(u"1", true), 1);  // the middle
    EXPECT_EQ(list_.FindDataIndex(u"2", true), 2);
    EXPECT_EQ(list_.FindDataIndex(u"3", true), -1);  // looked for behind the middle
}

TEST_F(JListSorted, InAnEmptyListTheEmptyNeedleMeetsTheSpare) {
    EXPECT_EQ(list_.FindDataIndex(u"", true), 0);
    EXPECT_EQ(list_.FindDataIndex(u"", false), 0);
    EXPECT_EQ(list_.FindDataIndex(u"x", true), -1);
}

}  // namespace
}  // namespace sarnel
