// Popup menus as data: handles, items, their flags and their sizes.
#include <gtest/gtest.h>

#include "platform/menus/menu_popup.h"
#include "tests/unit/support/menu_bench.h"

namespace platform {
namespace {

using support::MenuBench;

class MenuData : public ::testing::Test {
  protected:
    std::vector<Long> Ids(Handle menu) {
        std::vector<Long> ids;
        for (Long i = 0; i < b_.menus.GetMenuItemCount(menu); ++i) {
            ids.push_back(b_.menus.GetMenuItemInfo(menu, i, MF_BYPOSITION)->id);
        }
        return ids;
    }
    using Longs = std::vector<Long>;
    MenuBench b_;
    Menus& menus_ = b_.menus;
    Handle menu_ = b_.menu;
};

TEST_F(MenuData, HandlesComeFromTheOneNumberSpaceOfWindowsAndAreNeverGivenOutAgain) {
    const Handle window = b_.windows.CreateWindow(0, {}, {});
    const Handle menu = menus_.CreatePopupMenu();
    EXPECT_EQ(menu, window + 1);
    EXPECT_TRUE(menus_.DestroyMenu(menu));
    EXPECT_EQ(b_.windows.CreateWindow(0, {}, {}), menu + 1);
    EXPECT_EQ(menus_.GetMenuItemCount(menu), -1);
    EXPECT_FALSE(menus_.DestroyMenu(menu));
}

TEST_F(MenuData, ItemsAreAppendedAndInsertedInFrontOfOthers) {
    EXPECT_EQ(menus_.GetMenuItemCount(menu_), 0);
    b_.Add(1);
    b_.Add(2);
    EXPECT_TRUE(menus_.InsertMenu(menu_, 0, MF_BYPOSITION, 3, u""));
    EXPECT_TRUE(menus_.InsertMenu(menu_, 2, MF_BYCOMMAND, 4, u""));
    EXPECT_TRUE(menus_.InsertMenu(menu_, -1, MF_BYPOSITION, 5, u""));
    EXPECT_EQ(Ids(menu_), (Longs{3, 1, 4, 2, 5}));
    EXPECT_FALSE(menus_.AppendMenu(12345, 0, 6, u""));
}

TEST_F(MenuData, AnItemIsFoundByCommandInSubmenusToo) {
    b_.Add(1);
    const Handle below = b_.AddSubmenu(menu_);
    const Handle deeper = b_.AddSubmenu(below);
    b_.Add(deeper, 7, u"", MF_CHECKED);
    const auto info = menus_.GetMenuItemInfo(menu_, 7, MF_BYCOMMAND);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->state, MF_CHECKED);
    EXPECT_EQ(info->type, MF_OWNERDRAW);
    EXPECT_EQ(menus_.GetMenuItemInfo(menu_, below, MF_BYCOMMAND)->submenu, below);
    EXPECT_FALSE(menus_.GetMenuItemInfo(menu_, 2, MF_BYPOSITION));
    EXPECT_FALSE(menus_.GetMenuItemInfo(menu_, 8, MF_BYCOMMAND));
    EXPECT_TRUE(menus_.RemoveMenu(menu_, 7, MF_BYCOMMAND));
    EXPECT_EQ(menus_.GetMenuItemCount(deeper), 0);
}

TEST_F(MenuData, ModifyingGivesAnItemAllItsFlagsAnew) {
    b_.Add(1, u"", MF_CHECKED | MF_GRAYED);
    EXPECT_TRUE(menus_.ModifyMenu(menu_, 1, MF_DISABLED | MFT_RADIOCHECK, 2, u""));
    const auto info = menus_.GetMenuItemInfo(menu_, 2, MF_BYCOMMAND);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->state, MF_DISABLED);
    EXPECT_EQ(info->type, MFT_RADIOCHECK);
    EXPECT_FALSE(menus_.ModifyMenu(menu_, 1, 0, 2, u""));
}

TEST_F(MenuData, ASubmenuGoesWithTheMenuAndWhenItIsTakenFromItsItemButNotWhenTheItemIsRemoved) {
    const Handle a = b_.AddSubmenu(menu_);
    const Handle deeper = b_.AddSubmenu(a);
    const Handle kept = b_.AddSubmenu(menu_);
    const Handle removed = b_.AddSubmenu(menu_);
    EXPECT_TRUE(menus_.ModifyMenu(menu_, kept, MF_POPUP | MF_CHECKED, kept, u""));
    EXPECT_EQ(menus_.GetMenuItemCount(kept), 0);
    EXPECT_TRUE(menus_.ModifyMenu(menu_, a, 0, 5, u""));
    EXPECT_EQ(menus_.GetMenuItemCount(a), -1);
    EXPECT_EQ(menus_.GetMenuItemCount(deeper), -1);
    EXPECT_TRUE(menus_.RemoveMenu(menu_, removed, MF_BYCOMMAND));
    EXPECT_EQ(menus_.GetMenuItemCount(removed), 0);
    menus_.DestroyMenu(menu_);
    EXPECT_EQ(menus_.GetMenuItemCount(kept), -1);
}

TEST_F(MenuData, TheOwnerIsAskedOnceForTheSizeOfAnItemUntilItIsInsertedAnew) {
    b_.Add(1);
    b_.Add(2);
    b_.Track();
    EXPECT_EQ(b_.measured, (Longs{1, 2}));
    menus_.ModifyMenu(menu_, 1, MF_CHECKED, 1, u"");
    b_.Track();
    EXPECT_EQ(b_.measured, (Longs{1, 2}));
    menus_.RemoveMenu(menu_, 1, MF_BYCOMMAND);
    menus_.InsertMenu(menu_, 0, MF_BYPOSITION, 1, u"");
    b_.Track();
    EXPECT_EQ(b_.measured, (Longs{1, 2, 1}));
}

TEST_F(MenuData, APopupIsNoWiderThanTheScreen) {
    b_.Add(1);
    b_.driver.SetWorkArea({0, 0, 1000, 700});
    b_.width = 40'000'000;  // a picture of that would take all memory
    menus_.Measure(menu_, b_.owner);
    EXPECT_EQ(MenuPopup(b_.windows, menus_, menu_, b_.owner, b_.owner, {}).WantedSize().width,
              1000);
}

// A popup of 100 x 60 in an area of 0,0 to 1000,700.
TEST(MenuPlaces, FollowTheAlignment) {
    const Rect area{0, 0, 1000, 700};
    const Size size{100, 60};
    const Point at{500, 300};
    EXPECT_EQ(PlacePopup(size, 0, at, area), (Rect{500, 300, 600, 360}));
    EXPECT_EQ(PlacePopup(size, TPM_CENTERALIGN, at, area), (Rect{450, 300, 550, 360}));
    EXPECT_EQ(PlacePopup(size, TPM_RIGHTALIGN, at, area), (Rect{400, 300, 500, 360}));
    EXPECT_EQ(PlacePopup(size, 36, at, area), (Rect{450, 240, 550, 300}));
    EXPECT_EQ(PlacePopup(size, TPM_VCENTERALIGN, at, area), (Rect{500, 270, 600, 330}));
}

TEST(MenuPlaces, StayWithinTheArea) {
    const Rect area{10, 20, 1000, 700};
    const Size size{100, 60};
    EXPECT_EQ(PlacePopup(size, TPM_CENTERALIGN, {15, 300}, area), (Rect{10, 300, 110, 360}));
    EXPECT_EQ(PlacePopup(size, 0, {990, 300}, area), (Rect{900, 300, 1000, 360}));
    // Above or below the point where there is room, and moved where there is none.
    EXPECT_EQ(PlacePopup(size, 0, {500, 690}, area), (Rect{500, 630, 600, 690}));
    EXPECT_EQ(PlacePopup(size, TPM_BOTTOMALIGN, {500, 40}, area), (Rect{500, 40, 600, 100}));
    EXPECT_EQ(PlacePopup({100, 600}, 0, {500, 400}, area), (Rect{500, 100, 600, 700}));
    EXPECT_EQ(PlacePopup({100, 600}, 32, {500, 300}, area), (Rect{500, 20, 600, 620}));
    EXPECT_EQ(PlacePopup({100, 900}, 0, {500, 400}, area), (Rect{500, 20, 600, 700}));
}

TEST(MenuPlaces, ThatFitExactlyAreTaken) {
    const Rect area{10, 20, 1000, 700};
    const Size size{100, 60};
    EXPECT_EQ(PlacePopup(size, 0, {500, 640}, area), (Rect{500, 640, 600, 700}));
    EXPECT_EQ(PlacePopup(size, 0, {500, 641}, area), (Rect{500, 581, 600, 641}));
    EXPECT_EQ(PlacePopup(size, TPM_BOTTOMALIGN, {500, 80}, area), (Rect{500, 20, 600, 80}));
    EXPECT_EQ(PlacePopup(size, TPM_BOTTOMALIGN, {500, 79}, area), (Rect{500, 79, 600, 139}));
    EXPECT_EQ(PlacePopup(size, 0, {900, 300}, area), (Rect{900, 300, 1000, 360}));
    EXPECT_EQ(PlacePopup({100, 680}, 0, {500, 20}, area), (Rect{500, 20, 600, 700}));
}

TEST(MenuPlaces, OfSubmenusThatFitExactlyAreTaken) {
    const Rect popup{200, 100, 302, 300};
    const Rect row{201, 220, 301, 240};
    const Size size{80, 60};
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {0, 0, 380, 279}), (Rect{300, 219, 380, 279}));
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {0, 0, 379, 700}), (Rect{122, 219, 202, 279}));
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {122, 0, 379, 700}), (Rect{122, 219, 202, 279}));
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {123, 0, 379, 700}), (Rect{299, 219, 379, 279}));
}

// The popup lies at 200,100 to 302,300; its row at 220 to 240. A frame of 1, an overlap of 2.
TEST(MenuPlaces, OfSubmenusAreBesideTheirRow) {
    const Rect popup{200, 100, 302, 300};
    const Rect row{201, 220, 301, 240};
    const Size size{80, 60};
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {0, 0, 1000, 700}), (Rect{300, 219, 380, 279}));
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {0, 0, 350, 700}), (Rect{122, 219, 202, 279}));
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {180, 0, 350, 700}), (Rect{270, 219, 350, 279}));
    EXPECT_EQ(PlaceSubmenu(size, row, popup, {0, 0, 1000, 250}), (Rect{300, 190, 380, 250}));
}

}  // namespace
}  // namespace platform
