// The commands on the rows of the playlist, where the list is longer than what it shows: forty
// rows, of which twelve fit.
#include "playlist/listcommands.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/base/text.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::World;
using support::WorldBuilder;
using Range = std::pair<Long, Long>;
using Texts = std::vector<std::u16string>;

Texts Numbered(Long first, Long last) {
    Texts texts;
    for (Long i = first; i <= last; ++i) {
        texts.push_back(u"r" + platform::Widen(std::to_string(i)));
    }
    return texts;
}

class LongPlaylist : public ::testing::Test {
  protected:
    LongPlaylist() {
        list_.DisplayFrom(28);
        EXPECT_EQ(RangeOnShow(), (Range{28, 39}));
    }
    Range RangeOnShow() const { return {list_.DisplayFirst(), list_.DisplayLast()}; }
    void Select(const std::vector<Long>& rows) {
        for (const Long row : rows) {
            list_.Selected(row, true);
        }
    }
    /// Whether there is text in each of the rows on show: the number's first digit.
    void ExpectAFullFace() const {
        for (Long row = 0; row < 12; ++row) {
            EXPECT_NE(list_.Face().GetPixel({4, row * 15 + 5}), list_.BackColor()) << row;
        }
    }

    std::unique_ptr<World> world_ = WorldBuilder().Rows(Numbered(0, 39)).Started();
    JList& list_ = world_->List();
};

TEST_F(LongPlaylist, AfterARemovalTheEndOfTheRestIsOnShow) {
    list_.ClearOrSelect(0, 19, true);
    RemoveSelected();
    EXPECT_EQ(world_->Titles(), Numbered(20, 39));
    EXPECT_EQ(RangeOnShow(), (Range{8, 19}));
    EXPECT_EQ(list_.TopIndex(), 8);
    ExpectAFullFace();
}

TEST_F(LongPlaylist, AfterCroppingTheEndOfTheRestIsOnShow) {
    list_.ClearOrSelect(5, 18, true);
    CropSelected();
    EXPECT_EQ(world_->Titles(), Numbered(5, 18));
    EXPECT_EQ(RangeOnShow(), (Range{2, 13}));
    ExpectAFullFace();
}

TEST_F(LongPlaylist, AfterTheDeadAreGoneTheEndOfTheRestIsOnShow) {
    for (Long i = 0; i < 13; ++i) {
        const std::string name = "alive" + std::to_string(i);
        world_->folder.Write(name, "");
        list_.ListData(i * 3, world_->folder.Text(name));
    }
    RemoveDeadEntries();
    EXPECT_EQ(list_.ListCount(), 13);
    EXPECT_EQ(list_.List(12), u"r36");
    EXPECT_EQ(RangeOnShow(), (Range{1, 12}));
    ExpectAFullFace();
}

TEST_F(LongPlaylist, RowsNextToEachOtherGoTogether) {
    Select({0, 1, 2, 17, 18, 38, 39});
    RemoveSelected();
    Texts left = Numbered(3, 16);
    for (const std::u16string& text : Numbered(19, 37)) {
        left.push_back(text);
    }
    EXPECT_EQ(world_->Titles(), left);
    EXPECT_EQ(world_->Paths(), left);
    EXPECT_EQ(list_.SelCount(), 0);
}

// One after the other by hand, upwards and downwards, and then another that is marked.
TEST_F(LongPlaylist, NeighboursAreRemovedInEitherDirection) {
    Select({4, 20, 25, 30});
    for (const Long row : {22, 21, 20, 19}) {
        list_.RemoveItem(row);
    }
    for (Long i = 0; i < 3; ++i) {
        list_.RemoveItem(5);
    }
    list_.RemoveItem(4);
    list_.RemoveItem(3);
    list_.RemoveItem(3);
    Texts left = Numbered(0, 2);
    for (const std::u16string& text : Numbered(9, 18)) {
        left.push_back(text);
    }
    for (const std::u16string& text : Numbered(23, 39)) {
        left.push_back(text);
    }
    EXPECT_EQ(world_->Titles(), left);
    EXPECT_EQ(world_->Paths(), left);
    EXPECT_EQ(list_.SelCount(), 2);
    for (Long i = 0; i < list_.ListCount(); ++i) {
        const std::u16string text = list_.List(i);
        EXPECT_EQ(list_.Selected(i), text == u"r25" || text == u"r30") << i;
    }
}

}  // namespace
}  // namespace sarnel
