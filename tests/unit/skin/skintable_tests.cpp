// The table and the pictures that the program carries, and how a table is read.
#include "skin/skintable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/base/failure.h"
#include "platform/base/text.h"

namespace sarnel {
namespace {

/// Consecutive rows from one on; "" is an empty row.
struct Rows {
    Long first;
    std::vector<std::string> texts;
};

// The player's own skin is the first; further ones may follow it. Its rows and pictures have the
// numbers of this block.
constexpr Long kFirstBase = 100;
constexpr Long kFirstEnd = kFirstBase + 284;

// Every row of skin 1. Buttons and toggles: picture, mask, tooltip, left, top.
const std::vector<Rows> kHeadAndButtons{
    {1, {"100"}},
    {107, {"16761024", "Funky Blue"}},
    {109, {"109", "110", "Exit", "262", "11"}},
    {114, {"114", "110", "Minimize", "239", "11"}},
    {119, {"119", "110", "Open menu", "9", "11"}},
    {124, {"124", "110", "Always on top", "32", "11"}},
    {190, {"190", "191", "Add items", "9", "211"}},
    {195, {"195", "191", "Remove items", "47", "211"}},
    {200, {"200", "191", "Misc stuff", "85", "211"}},
    {205, {"205", "206", "Lyrics", "235", "211"}},
    {210, {"210", "211", "File info", "197", "211"}},
    {240, {"140", "141", "Previous item", "12", "246"}},
    {245, {"145", "141", "Play", "35", "246"}},
    {250, {"150", "141", "Pause", "58", "246"}},
    {255, {"155", "141", "Stop", "81", "246"}},
    {260, {"160", "141", "Next item", "104", "246"}},
    {290, {"290", "291", "Audio Effects", "166", "211"}},
    {365, {"365", "366", "Reset all effects", "127", "140"}},
    {370, {"370", "371", "Playlists", "123", "211"}},
};
const std::vector<Rows> kPanelsListMenu{
    {129, {"54", "10", "185", "14", "6571580", "16761024", "Tahoma", "8", "True", "False"}},
    {270, {"128", "250", "72", "14", "6571580", "16761024", "Tahoma", "8", "False", "False"}},
    {139, {"6", "27", "281", "181", "Tahoma", "8", "False", "False"}},
    {147, {"6571580", "16761024", "15626352", "6571580", "15630464"}},
    {152, {"16777215", "16761024", "5387825", "6571580", "12288128"}},
    {165, {"Tahoma", "8", "False", "False", "16715520", "16769248", "16761024", "8388608"}},
    {173, {"16761024", "14761024", "4194304", "16761024"}},
    {177, {"8388608", "16761024", "16761024", "8388608"}},
};
// Picture, stick, stick mask, stick position, vertical, left, top, width, height.
const std::vector<Rows> kSliders{
    {220, {"220", "221", "222", "0", "False", "9", "230", "275", "0"}},
    {230, {"230", "221", "222", "0", "False", "200", "249", "85", "0"}},
    {280, {"280", "221", "222", "0", "True", "0", "0", "28", "181"}},
    {295, {"230", "221", "222", "0", "False", "85", "10", "190", "13"}},
    {305, {"230", "221", "222", "0", "False", "85", "25", "190", "13"}},
    {315, {"230", "221", "222", "0", "False", "85", "40", "190", "13"}},
    {325, {"230", "221", "222", "0", "False", "85", "55", "190", "13"}},
    {335, {"230", "221", "222", "0", "False", "85", "70", "190", "13"}},
    {345, {"230", "221", "222", "0", "False", "85", "85", "190", "13"}},
    {355, {"230", "221", "222", "0", "False", "85", "100", "190", "13"}},
};

TEST(SkinTable, HasTheRowsOfSkin1AndNoOthers) {
    std::map<Long, std::string> expected;
    for (const auto* group : {&kHeadAndButtons, &kPanelsListMenu, &kSliders}) {
        for (const Rows& rows : *group) {
            Long number = rows.first;
            for (const std::string& text : rows.texts) {
                expected[number++] = text;
            }
        }
    }
    const SkinTable table;
    EXPECT_GE(table.Number(0), 1);
    for (Long number = -1; number < kFirstEnd; ++number) {
        if (number == 0 || (number > 1 && number <= table.Number(0))) {
            continue;  // how many skins there are, and where the others begin
        }
        const auto row = expected.find(number);
        if (row == expected.end()) {
            EXPECT_THROW(static_cast<void>(table.Row(number)), ComponentError) << number;
        } else {
            EXPECT_EQ(platform::Narrow(table.Row(number)), row->second) << number;
        }
    }
}

struct PictureRule {
    std::vector<Long> ids;
    Long width;
    Long height;
    Long bits;
    bool runLength;
};
const std::vector<PictureRule> kPictures{
    {{100}, 293, 277, 8, true},
    {{102}, 100, 100, 4, false},
    {{103, 104, 105}, 16, 16, 24, false},
    {{106, 108}, 9, 23, 8, false},
    {{107}, 2, 23, 8, false},
    {{109, 114, 119}, 22, 36, 8, false},
    {{110}, 22, 12, 1, false},
    {{124}, 22, 72, 8, false},
    {{140, 145, 150, 155, 160}, 21, 63, 8, false},
    {{141}, 21, 21, 1, false},
    {{190, 195, 200}, 37, 51, 8, false},
    {{191, 211}, 37, 17, 1, false},
    {{205}, 49, 102, 8, true},
    {{206}, 49, 17, 1, false},
    {{210}, 37, 102, 8, true},
    {{220}, 270, 26, 4, false},
    {{221}, 13, 39, 8, false},
    {{222}, 13, 13, 1, false},
    {{230}, 85, 26, 4, false},
    {{280}, 26, 181, 4, false},
    {{290}, 30, 102, 8, true},
    {{291}, 30, 17, 1, false},
    {{365}, 45, 51, 8, false},
    {{366}, 45, 17, 1, false},
    {{370}, 42, 51, 8, false},
    {{371}, 42, 17, 1, false},
};

TEST(SkinTable, HasThePicturesOfSkin1InTheirSizesAndDepths) {
    std::map<Long, std::string_view> files;
    for (const EmbeddedPicture& picture : EmbeddedPictures()) {
        if (picture.density == 1 && picture.id < kFirstEnd) {
            files[picture.id] = picture.file;
        }
    }
    SkinTable table;
    std::set<Long> known;
    for (const PictureRule& rule : kPictures) {
        for (const Long id : rule.ids) {
            known.insert(id);
            ASSERT_EQ(files.count(id), 1U) << id;
            EXPECT_EQ(table.Bitmap(id)->Width(), rule.width) << id;
            EXPECT_EQ(table.Bitmap(id)->Height(), rule.height) << id;
            EXPECT_EQ(files[id][28], static_cast<char>(rule.bits)) << id;
            EXPECT_EQ(files[id][30] == 1, rule.runLength) << id;
        }
    }
    EXPECT_EQ(files.size(), known.size());
}

TEST(SkinTable, APictureIsDecodedOnceAndShared) {
    SkinTable table;
    EXPECT_EQ(table.Bitmap(221), table.Bitmap(221));
    EXPECT_NE(table.Bitmap(221), table.Bitmap(222));
}

TEST(SkinTable, AMissingOrDamagedPictureFails) {
    SkinTable table("", {{5, "BM and nothing more"}});
    EXPECT_THROW(static_cast<void>(table.Bitmap(4)), ComponentError);
    EXPECT_THROW(static_cast<void>(table.Bitmap(5)), ComponentError);
    EXPECT_THROW(static_cast<void>(table.Bitmap(5)), ComponentError);
    EXPECT_THROW(static_cast<void>(SkinTable().Bitmap(101)), ComponentError);
}

TEST(SkinTable, RowsAndPicturesCanBeChanged) {
    SkinTable table;
    const auto other = table.Bitmap(222);
    std::string file;
    for (const EmbeddedPicture& picture : EmbeddedPictures()) {
        const bool isMask = picture.id == 222 && picture.density == 1;
        file = isMask ? std::string(picture.file) : file;
    }
    table.Row(108, u"Other | one");
    table.Row(100, u"7");
    table.Row(109, u"");
    table.Bitmap(221, file);
    table.Bitmap(100, "");
    EXPECT_EQ(table.Row(108), u"Other | one");
    EXPECT_EQ(table.Number(100), 7);
    EXPECT_THROW(static_cast<void>(table.Row(109)), ComponentError);
    EXPECT_EQ(table.Bitmap(221)->Width(), other->Width());
    EXPECT_EQ(table.Bitmap(221)->Height(), other->Height());
    EXPECT_THROW(static_cast<void>(table.Bitmap(100)), ComponentError);
}

TEST(SkinTable, ALineIsANumberATextAndAComment) {
    const SkinTable table(
        "# 1 | no row |\n"
        "2 | two words  | what it is | and more\n"
        " 3|x|\r\n"
        "4 |  | empty\n"
        "five | y |\n"
        "no row at all\n"
        "\n"
        "-6 | below zero\n"
        "7 | first |\n"
        "7 | last |",
        {});
    EXPECT_EQ(table.Row(2), u"two words");
    EXPECT_EQ(table.Row(3), u"x");
    EXPECT_EQ(table.Row(-6), u"below zero");
    EXPECT_EQ(table.Row(7), u"last");
    for (const Long empty : {1, 4, 5, 0}) {
        EXPECT_THROW(static_cast<void>(table.Row(empty)), ComponentError) << empty;
    }
}

TEST(SkinTable, LinesMayEndInCarriageReturnAndLineFeed) {
    const SkinTable table("# head\r\n1 | one\r\n2 | 12 | comment\r\n3 | True |\r\n4 | \r\n5|-1\r\n",
                          {});
    EXPECT_EQ(table.Row(1), u"one");
    EXPECT_EQ(table.Number(2), 12);
    EXPECT_TRUE(table.Boolean(3));
    EXPECT_THROW(static_cast<void>(table.Row(4)), ComponentError);
    EXPECT_EQ(table.Row(5), u"-1");
}

TEST(SkinTable, ARowThatIsNoNumberOrBooleanFailsAsOne) {
    const SkinTable table("1 | 12 |\n2 | twelve |\n3 | True |\n4 | false |\n5 | -1 |", {});
    EXPECT_EQ(table.Number(1), 12);
    EXPECT_EQ(table.Number(5), -1);
    EXPECT_THROW(static_cast<void>(table.Number(2)), ComponentError);
    EXPECT_THROW(static_cast<void>(table.Number(3)), ComponentError);
    EXPECT_TRUE(table.Boolean(3));
    EXPECT_FALSE(table.Boolean(4));
    EXPECT_TRUE(table.Boolean(5));
    EXPECT_THROW(static_cast<void>(table.Boolean(2)), ComponentError);
}

TEST(SkinTable, RowsOfASkinAreFoundByTheirOffset) {
    SkinTable table("8 | eight |\n10 | 221 |\n400 | far |", EmbeddedPictures());
    const SkinRows skin(table, 5);
    EXPECT_EQ(skin.Text(3), u"eight");
    EXPECT_EQ(skin.From(2).Text(1), u"eight");
    EXPECT_EQ(skin.PictureNamed(5), table.Bitmap(221));
    EXPECT_EQ(skin.PictureOf(216), table.Bitmap(221));
    EXPECT_EQ(SkinRows(table, 100).PictureOf(121), table.Bitmap(221));
}

TEST(SkinTable, OfNoSkinAndBeyondTheNumbersNothingCanBeRead) {
    SkinTable table("8 | eight |", {});
    EXPECT_THROW(static_cast<void>(SkinRows(table, 0).Text(8)), ComponentError);
    EXPECT_THROW(static_cast<void>(SkinRows(table, 0).From(8).Text(0)), ComponentError);
    EXPECT_THROW(static_cast<void>(SkinRows(table, 2147483647).From(5).Text(1)), ComponentError);
}

TEST(SkinTable, AFinerPictureComesWithItsPlainOne) {
    const auto file = [](Long id) {
        const auto all = EmbeddedPictures();
        return std::find_if(all.begin(), all.end(),
                            [&](const EmbeddedPicture& picture) {
                                return picture.id == id && picture.density == 1;
                            })
            ->file;
    };
    // The mask of 22 x 12 points, seen as a picture of density 2, has 11 x 6 places.
    SkinTable table("", {{5, file(110)}, {5, file(110), 2}});
    EXPECT_EQ(table.Bitmap(5)->For(2).Density(), 1);  // of another size: none
    table.Bitmap(5, "damaged", 4);
    EXPECT_EQ(table.Bitmap(5)->For(4).Density(), 1);
    table.Bitmap(6, file(110), 2);
    EXPECT_THROW(static_cast<void>(table.Bitmap(6)), ComponentError);
}

TEST(SkinTable, EachPictureOfSkin1HasBeenDrawnForDensities2And4) {
    SkinTable table;
    for (const EmbeddedPicture& picture : EmbeddedPictures()) {
        if (picture.id >= kFirstEnd) {
            continue;  // of other skins finer ones are no duty
        }
        const platform::PictureRef plain = table.Bitmap(picture.id);
        for (const Long density : {2, 4}) {
            EXPECT_EQ(plain->For(density).Density(), density) << picture.id;
        }
    }
}

}  // namespace
}  // namespace sarnel
