#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "controls/list/jlist.h"
#include "platform/base/text.h"
#include "tests/unit/support/list_bench.h"
#include "tests/unit/support/temp_folder.h"

namespace sarnel {
namespace {

using namespace std::string_literals;

using support::ListBench;
using Texts = std::vector<std::u16string>;

class JListFile : public ::testing::Test {
  protected:
    bool Save() { return list_.Serialize(folder_.Text("list.omk")); }
    std::string Saved() {
        EXPECT_TRUE(Save());
        return folder_.Read("list.omk").value_or("no file");
    }
    bool Load(std::string_view bytes) {
        folder_.Write("list.omk", bytes);
        return list_.Deserialize(folder_.Text("list.omk"));
    }

    support::TempFolder folder_;
    ListBench bench_;
    JList& list_ = *bench_.list;
};

TEST_F(JListFile, TwoRowsAreSevenLinesInTheNumberFormOfSequentialFiles) {
    list_.AddItem(u"First title", u"/music/1.mp3");
    list_.AddItem(u"Second", u"");
    EXPECT_EQ(Saved(), "OMK v1.1\r\n 2 \r\n-1 \r\nFirst title\r\n/music/1.mp3\r\nSecond\r\n\r\n");
    list_.ListCurrent(12);
    EXPECT_EQ(Saved(), "OMK v1.1\r\n 2 \r\n 12 \r\nFirst title\r\n/music/1.mp3\r\nSecond\r\n\r\n");
}

TEST_F(JListFile, AnEmptyListIsThreeLines) {
    EXPECT_EQ(Saved(), "OMK v1.1\r\n 0 \r\n-1 \r\n");
}

TEST_F(JListFile, TextGoesOutAsItStandsAndUndecodableBytesComeOutAsTheyCameIn) {
    list_.AddItem(platform::Widen("caf\xC3\xA9 \xE2\x82\xAC"), platform::Widen("/caf\xE9.mp3"));
    list_.AddItem(u"  a\nb  ", u"\u00FF");
    EXPECT_EQ(Saved(),
              "OMK v1.1\r\n 2 \r\n-1 \r\ncaf\xC3\xA9 \xE2\x82\xAC\r\n/caf\xE9.mp3\r\n  a\nb  "
              "\r\n\xC3\xBF\r\n");
}

TEST_F(JListFile, AnOldFileIsReplacedWhole) {
    folder_.Write("list.omk", std::string(5000, 'x'));
    EXPECT_EQ(Saved(), "OMK v1.1\r\n 0 \r\n-1 \r\n");
}

TEST_F(JListFile, SavingWhereNoFileCanBeIsTold) {
    EXPECT_FALSE(list_.Serialize(folder_.Text("none/list.omk")));
    folder_.MakeFolder("sub");
    EXPECT_FALSE(list_.Serialize(folder_.Text("sub")));
    EXPECT_TRUE(std::filesystem::is_directory(folder_.Path("sub")));
    EXPECT_FALSE(list_.Serialize(u""));
}

TEST_F(JListFile, AnOldFileThatCannotBeDeletedEndsItAndStays) {
    folder_.Write("sub/list.omk", "old");
    std::filesystem::permissions(folder_.Path("sub/list.omk"), std::filesystem::perms(0666));
    const support::AsOrdinaryUser user(folder_);
    std::filesystem::permissions(folder_.Path("sub"), std::filesystem::perms(0555));
    const bool saved = list_.Serialize(folder_.Text("sub/list.omk"));
    std::filesystem::permissions(folder_.Path("sub"), std::filesystem::perms(0755));
    EXPECT_FALSE(saved);
    EXPECT_EQ(folder_.Read("sub/list.omk"), "old");
}

TEST_F(JListFile, AFileThatCannotBeWrittenToItsEndIsTold) {
    bench_.AddMany(20'000);
    const auto formerHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const rlimit little{10'000, former.rlim_max};  // bytes a file may have: a full disk
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &little), 0);
    const bool saved = Save();
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &former), 0);
    std::signal(SIGXFSZ, formerHandler);
    EXPECT_FALSE(saved);
}

TEST_F(JListFile, RowsAndListCurrentComeBackAndListIndexIsListCurrent) {
    EXPECT_TRUE(Load("OMK v1.1\r\n 3 \r\n 1 \r\na\r\n/a\r\nb\r\n\r\n\r\n/c\r\n"));
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b", u""}));
    EXPECT_EQ(bench_.Payloads(), (Texts{u"/a", u"", u"/c"}));
    EXPECT_EQ(list_.ListCurrent(), 1);
    EXPECT_EQ(list_.ListIndex(), 1);
    EXPECT_EQ(list_.FocusIndex(), 1);
    EXPECT_EQ(list_.CaretIndex(), 1);
    EXPECT_EQ(bench_.Flags(), "...");
    EXPECT_EQ(list_.SelCount(), 0);
}

TEST_F(JListFile, AMissingOrHiddenFileOrAFolderIsFalseAndNothingIsMade) {
    const std::string good = "OMK v1.1\r\n 1 \r\n-1 \r\na\r\nb\r\n";
    folder_.Write(".hidden.omk", good);
    folder_.MakeFolder("sub");
    EXPECT_FALSE(list_.Deserialize(folder_.Text("none.omk")));
    EXPECT_FALSE(list_.Deserialize(folder_.Text(".hidden.omk")));
    EXPECT_FALSE(list_.Deserialize(folder_.Text("sub")));
    EXPECT_FALSE(list_.Deserialize(u""));
    EXPECT_EQ(list_.ListCount(), 0);
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{".hidden.omk", "sub"}));
}

TEST_F(JListFile, AnyOtherFirstLineIsFalseAndLeavesTheListAsItWas) {
    bench_.Add({u"old"});
    const std::string rest = "\r\n 1 \r\n 0 \r\na\r\nb\r\n";
    for (const char* signature : {"OMK v1.2", "OMK v1.10", "OMK v1.1 ", " OMK v1.1", "omk v1.1",
                                  "OMK v1.", "", "\xEF\xBB\xBFOMK v1.1", "OMK v1.1\n"}) {
        EXPECT_FALSE(Load(signature + rest)) << signature;
    }
    EXPECT_FALSE(Load(""));
    EXPECT_FALSE(Load("OMK v1.1\n 1 \n 0 \na\nb\n"));  // line feeds end no line
    EXPECT_EQ(bench_.Texts(), (Texts{u"old"}));
    EXPECT_EQ(list_.ListCurrent(), -1);
}

TEST_F(JListFile, ALineEndsAtACarriageReturnWithOrWithoutALineFeed) {
    EXPECT_TRUE(Load("OMK v1.1\r2\r0\r\na\r/a\r\nb\r/b"));
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b"}));
    EXPECT_EQ(bench_.Payloads(), (Texts{u"/a", u"/b"}));
}

// The file is read in pieces of 65536 bytes.
TEST_F(JListFile, APairOfLineEndBytesMayLieInTwoPieces) {
    const std::string head = "OMK v1.1\r\n 2 \r\n 1 \r\n";
    for (const std::size_t piece : {65536U, 2 * 65536U}) {
        for (std::size_t carriageReturn = piece - 3; carriageReturn <= piece + 2;
             ++carriageReturn) {
            list_.Clear();
            const std::string text(carriageReturn - head.size(), 'x');
            EXPECT_TRUE(Load(head + text + "\r\n/a\r\nb\r\n/b\r\n"));
            EXPECT_EQ(list_.List(0).size(), text.size()) << carriageReturn;
            EXPECT_EQ(bench_.Payloads(), (Texts{u"/a", u"/b"})) << carriageReturn;
            EXPECT_EQ(list_.List(1), u"b") << carriageReturn;
        }
    }
}

TEST_F(JListFile, ALineFeedAloneStaysInTheText) {
    EXPECT_TRUE(Load("OMK v1.1\r\n1\r\n-1\r\na\nb\r\n\n\r\n"));
    EXPECT_EQ(list_.List(0), u"a\nb");
    EXPECT_EQ(list_.ListData(0), u"\n");
}

TEST_F(JListFile, NumbersMayHaveBlanksAroundThem) {
    for (const char* number : {"1", " 1", "1 ", "   1   ", "+1", "01"}) {
        list_.Clear();
        EXPECT_TRUE(Load("OMK v1.1\r\n" + std::string(number) + "\r\n 0 \r\na\r\nb\r\n")) << number;
        EXPECT_EQ(list_.ListCount(), 1);
    }
}

TEST_F(JListFile, ALineThatIsNoNumberIsFalseWithNoRowRead) {
    for (const char* number : {"", "   ", "x", "1x", "2147483648", "-2147483649", "--1"}) {
        EXPECT_FALSE(Load("OMK v1.1\r\n" + std::string(number) + "\r\n 0 \r\na\r\nb\r\n"))
            << number;
        EXPECT_FALSE(Load("OMK v1.1\r\n 1 \r\n" + std::string(number) + "\r\na\r\nb\r\n"))
            << number;
    }
    EXPECT_FALSE(Load("OMK v1.1"));
    EXPECT_FALSE(Load("OMK v1.1\r\n"));
    EXPECT_FALSE(Load("OMK v1.1\r\n 1 \r\n"));
    EXPECT_EQ(list_.ListCount(), 0);
}

TEST_F(JListFile, ACountGreaterThanTheRowsIsFalseWithTheRowsThereAre) {
    list_.ListCurrent(7);
    EXPECT_FALSE(Load("OMK v1.1\r\n 2147483647 \r\n 0 \r\na\r\n/a\r\nb\r\n"));
    EXPECT_EQ(bench_.Texts(), (Texts{u"a"}));  // b has no payload line
    EXPECT_EQ(list_.ListCurrent(), 8);         // as the add left it
    EXPECT_EQ(list_.ListIndex(), 0);
}

TEST_F(JListFile, ACountTooSmallOrNegativeIgnoresTheRest) {
    EXPECT_TRUE(Load("OMK v1.1\r\n 1 \r\n 0 \r\na\r\n/a\r\nb\r\n/b\r\n"));
    EXPECT_EQ(bench_.Texts(), (Texts{u"a"}));
    EXPECT_TRUE(Load("OMK v1.1\r\n-5 \r\n 3 \r\nx\r\n/x\r\n"));
    EXPECT_EQ(bench_.Texts(), (Texts{u"a"}));
    EXPECT_EQ(list_.ListCurrent(), 3);
    EXPECT_TRUE(Load("OMK v1.1\r\n 0 \r\n-1 \r\n"));
    EXPECT_EQ(list_.ListIndex(), -1);
}

TEST_F(JListFile, TheCurrentRowIsNotCheckedAgainstTheRows) {
    EXPECT_TRUE(Load("OMK v1.1\r\n 2 \r\n 7 \r\na\r\n/a\r\nb\r\n/b\r\n"));
    EXPECT_EQ(list_.ListCurrent(), 7);
    EXPECT_TRUE(Load("OMK v1.1\r\n 0 \r\n 2147483647 \r\n"));
    EXPECT_EQ(list_.ListCurrent(), 2147483647);
    EXPECT_TRUE(Load("OMK v1.1\r\n 1 \r\n-2147483648 \r\nc\r\n/c\r\n"));
    EXPECT_EQ(list_.ListCurrent(), -2147483647 - 1);
}

TEST_F(JListFile, LoadingTwiceDoublesTheRows) {
    const std::string file = "OMK v1.1\r\n 2 \r\n 1 \r\na\r\n/a\r\nb\r\n/b\r\n";
    EXPECT_TRUE(Load(file));
    EXPECT_TRUE(Load(file));
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b", u"a", u"b"}));
    EXPECT_EQ(list_.ListCurrent(), 1);
}

TEST_F(JListFile, LoadingCentresTheCurrentRowWhateverTheFlagSays) {
    bench_.AddMany(10);
    list_.ListCurrent(6);
    ASSERT_TRUE(Save());
    for (const bool redraw : {true, false}) {
        list_.Clear();
        list_.RedrawFlag(redraw);
        EXPECT_TRUE(list_.Deserialize(folder_.Text("list.omk")));
        EXPECT_EQ(bench_.Range(), (std::pair<Long, Long>{4, 8}));
    }
    list_.Clear();
    list_.ListCurrent(-1);
    folder_.Write("list.omk", "OMK v1.1\r\n 0 \r\n-1 \r\n");
    bench_.AddMany(10);
    EXPECT_TRUE(list_.Deserialize(folder_.Text("list.omk")));
    EXPECT_EQ(bench_.Range(), (std::pair<Long, Long>{0, 4}));
}

TEST_F(JListFile, ASortingListSortsWhatItLoadsAndTheCurrentNumberStays) {
    ListBench sorted(ListBench::kStoredSorted);
    folder_.Write("list.omk", "OMK v1.1\r\n 2 \r\n 0 \r\nb\r\n/b\r\na\r\n/a\r\n");
    EXPECT_TRUE(sorted.list->Deserialize(folder_.Text("list.omk")));
    EXPECT_EQ(sorted.Texts(), (Texts{u"a", u"b"}));
    EXPECT_EQ(sorted.list->ListCurrent(), 0);
}

TEST_F(JListFile, LoadingLeavesTheSelectionOfOtherRows) {
    bench_.Add({u"old"});
    list_.Selected(0, true);
    EXPECT_TRUE(Load("OMK v1.1\r\n 1 \r\n 0 \r\na\r\n/a\r\n"));
    EXPECT_EQ(bench_.Flags(), "x.");
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListFile, RandomRowsSurviveSavingAndLoading) {
    std::mt19937 random(11);
    const std::string bytes = "ab \n\t\"=;\0\x7F\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E\xFF"s;
    const auto any = [&] {
        std::string text(random() % 9, ' ');
        for (char& byte : text) {
            byte = bytes[random() % bytes.size()];
        }
        return platform::Widen(text);
    };
    for (int round = 0; round < 100; ++round) {
        list_.Clear();
        for (auto count = random() % 20; count > 0; --count) {
            list_.AddItem(any(), any());
        }
        list_.ListCurrent(static_cast<Long>(random() % 22) - 1);
        ASSERT_TRUE(Save());
        ListBench other;
        ASSERT_TRUE(other.list->Deserialize(folder_.Text("list.omk")));
        ASSERT_EQ(other.Texts(), bench_.Texts());
        ASSERT_EQ(other.Payloads(), bench_.Payloads());
        ASSERT_EQ(other.list->ListCurrent(), list_.ListCurrent());
    }
}

TEST_F(JListFile, BytesOfAnyKindAreReadWithoutHarm) {
    std::mt19937 random(12);
    const std::vector<std::string> pieces{"OMK v1.1",          "\r\n", "\r",   "\n", " 3 ",  "-1",
                                          "99999999999",       "text", "\xFF", " ",  "\r\n", "\r\n",
                                          std::string(1, '\0')};
    for (int round = 0; round < 400; ++round) {
        list_.Clear();
        std::string bytes = random() % 2 == 0 ? "OMK v1.1\r\n 3 \r\n 1 \r\n" : "";
        for (auto count = random() % 12; count > 0; --count) {
            bytes += pieces[random() % pieces.size()];
        }
        const bool loaded = Load(bytes);
        ASSERT_LE(list_.ListCount(), 6);
        ASSERT_TRUE(!loaded || bytes.starts_with("OMK v1.1\r"));
    }
}

}  // namespace
}  // namespace sarnel
