// The table of the panels against what is made of it.
#include "core/state/paneltable.h"

#include <gtest/gtest.h>

#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "menus/commandmenu.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

TEST(PanelTable, EachPanelHasItsOwnRow) {
    for (Long i = 0; i < 6; ++i) {
        EXPECT_EQ(kPanelRows.at(static_cast<std::size_t>(i)).frame, i);
    }
    EXPECT_EQ(kPanelRows[0].toggle, 1);
    EXPECT_EQ(kPanelRows[1].toggle, std::nullopt);
    EXPECT_EQ(kPanelRows[2].toggle, std::nullopt);
    EXPECT_EQ(kPanelRows[3].toggle, 2);
    EXPECT_EQ(kPanelRows[4].toggle, 3);
    EXPECT_EQ(kPanelRows[5].toggle, std::nullopt);
}

TEST(PanelTable, TheMenuHasAnItemForEachPanel) {
    const auto world = support::WorldBuilder().Started();
    const auto captionOf = [](const PanelRow& row) {
        return Menu()->Caption(Menu()->IndexForKey(row.menuKey));
    };
    EXPECT_EQ(captionOf(kPanelRows[0]), u"Show lyrics");
    EXPECT_EQ(captionOf(kPanelRows[1]), u"Add files, dirs");
    EXPECT_EQ(captionOf(kPanelRows[2]), u"Associate files");
    EXPECT_EQ(captionOf(kPanelRows[3]), u"Audio effects");
    EXPECT_EQ(captionOf(kPanelRows[4]), u"Item information");
    EXPECT_EQ(captionOf(kPanelRows[5]), u"Search items");
}

// By its tag a panel finds the menu item that has its mark.
TEST(PanelTable, EachPanelIsTaggedWithItsKey) {
    const auto world = support::WorldBuilder().Started();
    for (const PanelRow& row : kPanelRows) {
        EXPECT_EQ(world->Main().picFrame(row.frame).Tag(), row.menuKey);
    }
}

TEST(PanelTable, ACommandOpensAndClosesItsPanelAlone) {
    for (const PanelRow& own : kPanelRows) {
        const auto world = support::WorldBuilder().Started();
        frmMAIN& main = world->Main();
        for (const bool open : {true, false}) {
            RunMenuCommand(own.menuKey);
            for (const PanelRow& row : kPanelRows) {
                const bool expected = open && row.frame == own.frame;
                EXPECT_EQ(main.picFrame(row.frame).Visible(), expected) << row.frame;
                EXPECT_EQ(IsMarked(row.menuKey), expected) << row.frame;
                if (row.toggle) {
                    EXPECT_EQ(main.tglSkin(*row.toggle).Value(), expected) << row.frame;
                }
            }
        }
    }
}

}  // namespace
}  // namespace sarnel
