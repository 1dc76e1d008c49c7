// The flat table of a popup menu, and the platform's menus behind it.
#include <gtest/gtest.h>

#include "menus/jpopupmenu.h"
#include "platform/headless/headless_driver.h"

namespace sarnel {
namespace {

using namespace platform;
using Longs = std::vector<Long>;

class MenuTable : public ::testing::Test {
  protected:
    Long Add(std::u16string_view caption, Long parent = 0, std::u16string_view key = u"") {
        return menu_.AddItem(caption, parent, key, false, true);
    }
    std::optional<MenuItemInfo> Info(Long index) {
        return menus_.GetMenuItemInfo(menu_.hMenu(index), menu_.MenuId(index), MF_BYCOMMAND);
    }
    std::vector<std::u16string> Captions() {
        std::vector<std::u16string> captions;
        for (Long i = 1; i <= menu_.Count(); ++i) {
            captions.push_back(menu_.Caption(i));
        }
        return captions;
    }
    using Texts = std::vector<std::u16string>;

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    Menus& menus_ = windows_.PopupMenus();
    std::shared_ptr<mJPopupMenu> shared_ = std::make_shared<mJPopupMenu>(windows_);
    JPopupMenu menu_{shared_};
};

TEST_F(MenuTable, IdsBeginAfter2048AndAgainAfterClear) {
    Add(u"a");
    Add(u"b");
    EXPECT_EQ(menu_.MenuId(1), 2049);
    EXPECT_EQ(menu_.MenuId(2), 2050);
    EXPECT_EQ(menu_.ItemForID(2050), 2);
    EXPECT_EQ(menu_.ItemForID(2051), 0);
    const Handle root = menu_.hMenu(1);
    menu_.Clear();
    EXPECT_EQ(menu_.Count(), 0);
    EXPECT_EQ(menus_.GetMenuItemCount(root), -1);
    Add(u"c");
    EXPECT_EQ(menu_.MenuId(1), 2049);
    EXPECT_EQ(menus_.GetMenuItemCount(menu_.hMenu(1)), 1);
}

TEST_F(MenuTable, ClearBeforeAnyItemDoesNothing) {
    menu_.Clear();
    EXPECT_EQ(menu_.Count(), 0);
}

TEST_F(MenuTable, TheFirstChildMakesTheSubmenuWhichBecomesTheParentsId) {
    const Long parent = Add(u"p");
    const Long other = Add(u"q");
    const Long first = Add(u"x", parent);
    const Long second = Add(u"y", parent);
    const Handle submenu = menu_.Submenu(parent);
    ASSERT_NE(submenu, 0);
    EXPECT_EQ(menu_.MenuId(parent), submenu);
    EXPECT_EQ(menu_.hMenu(first), submenu);
    EXPECT_EQ(menu_.hMenu(second), submenu);
    EXPECT_EQ(menu_.hMenu(other), menu_.hMenu(parent));
    EXPECT_EQ(menu_.ItemParentIndex(second), parent);
    EXPECT_EQ(menu_.Submenu(other), 0);
    EXPECT_EQ(menus_.GetMenuItemCount(menu_.hMenu(parent)), 2);
    EXPECT_EQ(menus_.GetMenuItemInfo(menu_.hMenu(1), 0, MF_BYPOSITION)->submenu, submenu);
}

// Ids 2049 to 2051 are given out; the handles come to 2048 just before the submenu is made.
TEST_F(MenuTable, ASubmenuWhoseHandleIsAnItemsIdIsMadeAgain) {
    Add(u"a");
    Add(u"b");
    Handle last = windows_.NewHandle();
    while (last < 2048) {
        last = windows_.NewHandle();
    }
    Add(u"x", 1);  // has the id 2051
    EXPECT_EQ(menu_.Submenu(1), 2052);
    Add(u"y", 1);  // 2052 is a handle
    EXPECT_EQ(menu_.MenuId(4), 2053);
}

// Ids from 2049 on, more than 100 of them in a row, and handles that run into them.
TEST_F(MenuTable, After100AttemptsAnItemIsNotEntered) {
    for (int i = 0; i < 110; ++i) {
        Add(u"a");
    }
    while (windows_.NewHandle() < 2048) {
    }
    const Long index = Add(u"x", 1);
    EXPECT_EQ(index, 111);
    EXPECT_EQ(menu_.hMenu(index), 0);
    EXPECT_EQ(menu_.Submenu(1), 0);
    EXPECT_FALSE(menu_.Checked(index));
    Add(u"y", 1);  // has the id 2160; the handles 2149 to 2160 are ids as well
    EXPECT_EQ(menu_.Submenu(1), 2161);
}

TEST_F(MenuTable, CaptionsAreCutAtTheFirstHash) {
    Add(u"Add files, dirs#Insert");
    Add(u"a#b#c");
    Add(u"Nothing#");
    EXPECT_EQ(menu_.Caption(1), u"Add files, dirs");
    EXPECT_EQ(menu_.KeyText(1), u"Insert");
    EXPECT_EQ(menu_.Keys(1), (KeyCombination{0, 45}));
    EXPECT_EQ(menu_.Caption(2), u"a");
    EXPECT_EQ(menu_.KeyText(2), u"b#c");
    EXPECT_EQ(menu_.Caption(3), u"Nothing");
    EXPECT_EQ(menu_.KeyText(3), u"");
    EXPECT_EQ(menu_.Keys(3), KeyCombination{});
}

TEST_F(MenuTable, ADashAloneIsASeparatorAndInFrontMakesAHeader) {
    Add(u"-");
    Add(u"-Title");
    Add(u"--");
    Add(u"plain");
    EXPECT_EQ(menu_.Caption(1), u"-");
    EXPECT_FALSE(menu_.Header(1));
    EXPECT_EQ(menu_.Caption(2), u"Title");
    EXPECT_TRUE(menu_.Header(2));
    EXPECT_EQ(menu_.Caption(3), u"-");
    EXPECT_TRUE(menu_.Header(3));
    EXPECT_FALSE(menu_.Header(4));
    for (const Long index : {1, 2, 3}) {
        EXPECT_NE(Info(index)->type & MF_SEPARATOR, 0) << index;
    }
    EXPECT_EQ(Info(4)->type & MF_SEPARATOR, 0);
    EXPECT_EQ(Info(2)->state, MF_DISABLED);
}

TEST_F(MenuTable, IndexForKeyTakesNumbersAsIndicesAndTheFirstOfEqualKeys) {
    Add(u"a", 0, u"k");
    Add(u"b", 0, u"k");
    Add(u"c", 0, u"2");
    EXPECT_EQ(menu_.IndexForKey(u"k"), 1);
    EXPECT_EQ(menu_.IndexForKey(u"K"), 0);
    EXPECT_EQ(menu_.IndexForKey(u"2"), 2);
    EXPECT_EQ(menu_.IndexForKey(u"3"), 3);
    EXPECT_EQ(menu_.IndexForKey(u"4"), 0);
    EXPECT_EQ(menu_.IndexForKey(u"0"), 0);
    EXPECT_EQ(menu_.IndexForKey(u"-1"), 0);
    menu_.ItemKey(1, u"j");
    EXPECT_EQ(menu_.IndexForKey(u"k"), 2);
}

TEST_F(MenuTable, ChecksAreThePlatforms) {
    const Long index = menu_.AddItem(u"a", 0, u"", true, true);
    EXPECT_TRUE(menu_.Checked(index));
    menu_.Checked(index, false);
    EXPECT_FALSE(menu_.Checked(index));
    menu_.Checked(index, true);
    EXPECT_EQ(Info(index)->state, MF_CHECKED);
}

TEST_F(MenuTable, AnItemThatIsAddedDisabledIsGreyAndAWriteMakesItDisabled) {
    const Long index = menu_.AddItem(u"a", 0, u"", false, false);
    EXPECT_EQ(Info(index)->state, MF_GRAYED);
    EXPECT_FALSE(menu_.Enabled(index));
    menu_.Enabled(index, false);
    EXPECT_EQ(Info(index)->state, MF_DISABLED);
    menu_.Enabled(index, true);
    EXPECT_EQ(Info(index)->state, 0);
    EXPECT_TRUE(menu_.Enabled(index));
}

TEST_F(MenuTable, ARadioMarkTakesTheCheckMarkAway) {
    const Long index = menu_.AddItem(u"a", 0, u"", true, true);
    menu_.RadioCheck(index, true);
    EXPECT_TRUE(menu_.RadioCheck(index));
    EXPECT_FALSE(menu_.Checked(index));
    EXPECT_NE(Info(index)->type & MFT_RADIOCHECK, 0);
    menu_.RadioCheck(index, false);
    EXPECT_FALSE(menu_.RadioCheck(index));
    EXPECT_EQ(Info(index)->type & MFT_RADIOCHECK, 0);
}

TEST_F(MenuTable, FlagsOfAnItemWithASubmenuLeaveTheSubmenu) {
    const Long parent = Add(u"p");
    Add(u"x", parent);
    const Handle submenu = menu_.Submenu(parent);
    menu_.Checked(parent, true);
    menu_.Enabled(parent, false);
    EXPECT_EQ(menu_.Submenu(parent), submenu);
    EXPECT_EQ(menus_.GetMenuItemCount(submenu), 1);
}

TEST_F(MenuTable, GroupToggleStopsAtSeparatorsAndHeaders) {
    for (const auto* caption : {u"a", u"-", u"b", u"c", u"d", u"-Head", u"e"}) {
        menu_.RadioCheck(Add(caption), true);
    }
    menu_.GroupToggle(4);
    const auto marks = [&] {
        std::string text;
        for (Long i = 1; i <= menu_.Count(); ++i) {
            text += menu_.RadioCheck(i) ? 'R' : '.';
        }
        return text;
    };
    EXPECT_EQ(marks(), "RR.R.RR");
    menu_.GroupToggle(0);
    menu_.GroupToggle(8);
    EXPECT_EQ(marks(), "RR.R.RR");
}

TEST_F(MenuTable, GroupToggleWithoutASeparatorWalksToBothEndsOfItsOwnMenu) {
    const Long parent = Add(u"p");
    menu_.RadioCheck(parent, true);
    for (const auto* caption : {u"a", u"b", u"c"}) {
        menu_.RadioCheck(Add(caption, parent), true);
    }
    menu_.GroupToggle(3);
    EXPECT_TRUE(menu_.RadioCheck(parent));
    EXPECT_FALSE(menu_.RadioCheck(2));
    EXPECT_TRUE(menu_.RadioCheck(3));
    EXPECT_FALSE(menu_.RadioCheck(4));
}

// 1 a, 2 p with 3 q (with 4 x, 5 y) and 6 z, 7 b, 8 c with 9 w.
class MenuTree : public MenuTable {
  protected:
    MenuTree() {
        Add(u"a");
        Add(u"p");
        Add(u"q", 2);
        Add(u"x", 3);
        Add(u"y", 3);
        Add(u"z", 2);
        Add(u"b");
        Add(u"c");
        Add(u"w", 8);
    }
};

TEST_F(MenuTree, RemovingAnItemTakesAllBelowItAlongAndLetsLaterIndicesFall) {
    const Handle upper = menu_.Submenu(2);
    const Handle lower = menu_.Submenu(3);
    const Handle kept = menu_.Submenu(8);
    menu_.RemoveItemByIndex(2);
    EXPECT_EQ(Captions(), (Texts{u"a", u"b", u"c", u"w"}));
    EXPECT_EQ(menus_.GetMenuItemCount(upper), -1);
    EXPECT_EQ(menus_.GetMenuItemCount(lower), -1);
    EXPECT_EQ(menus_.GetMenuItemCount(menu_.hMenu(1)), 3);
    EXPECT_EQ(menu_.ItemParentIndex(4), 3);
    EXPECT_EQ(menu_.Submenu(3), kept);
}

TEST_F(MenuTree, RemovingAChildLeavesItsSiblings) {
    menu_.RemoveItem(u"4");
    EXPECT_EQ(Captions(), (Texts{u"a", u"p", u"q", u"y", u"z", u"b", u"c", u"w"}));
    EXPECT_EQ(menus_.GetMenuItemCount(menu_.Submenu(3)), 1);
    menu_.RemoveItemByIndex(0);
    menu_.RemoveItemByIndex(9);
    menu_.RemoveItem(u"none");
    EXPECT_EQ(menu_.Count(), 8);
}

TEST_F(MenuTree, ClearingBelowAnItemLeavesItsSubmenuToBeFilledAgain) {
    const Handle submenu = menu_.Submenu(2);
    menu_.ClearSubMenusOfItem(u"2");
    EXPECT_EQ(Captions(), (Texts{u"a", u"p", u"b", u"c", u"w"}));
    EXPECT_EQ(menu_.Submenu(2), submenu);
    EXPECT_EQ(menus_.GetMenuItemCount(submenu), 0);
    Add(u"new", 2);
    EXPECT_EQ(menu_.hMenu(6), submenu);
    menu_.ClearSubMenusOfItem(u"1");  // has none
    EXPECT_EQ(menu_.Count(), 6);
}

TEST_F(MenuTree, ATemporaryPopupComesAndGoesWithoutATrace) {
    const Texts before = Captions();
    for (int i = 0; i < 50; ++i) {
        const Long popup = Add(u"Popup");
        Add(u"-Title", popup, u"kT");
        Add(u"Do it", popup, u"kD");
        menu_.RemoveItemByIndex(popup);
        EXPECT_EQ(Captions(), before);
        EXPECT_EQ(menus_.GetMenuItemCount(menu_.hMenu(1)), 4);
    }
}

TEST_F(MenuTree, RemovingTheLastItemLeavesAMenuThatCanBeFilledAgain) {
    for (Long i = menu_.Count(); i >= 1; --i) {
        menu_.RemoveItemByIndex(1);
    }
    EXPECT_EQ(menu_.Count(), 0);
    Add(u"again");
    EXPECT_EQ(menus_.GetMenuItemCount(menu_.hMenu(1)), 1);
}

TEST_F(MenuTree, AnIndexThatIsNoneIsPassedInSilence) {
    for (const Long index : {0, -1, 10}) {
        menu_.Checked(index, true);
        menu_.Enabled(index, true);
        menu_.RadioCheck(index, true);
        menu_.Header(index, true);
        menu_.OwnerDraw(index, true);
        menu_.Caption(index, u"x");
        menu_.ItemKey(index, u"x");
        EXPECT_FALSE(menu_.Checked(index));
        EXPECT_FALSE(menu_.Enabled(index));
        EXPECT_EQ(menu_.Caption(index), u"");
        EXPECT_EQ(menu_.hMenu(index), 0);
        EXPECT_EQ(menu_.MenuItemWidth(index), 0);
    }
    EXPECT_EQ(menu_.Count(), 9);
}

TEST_F(MenuTree, ANewCaptionIsReadAsInAddItem) {
    menu_.Caption(1, u"New#Ctrl+N");
    EXPECT_EQ(menu_.Caption(1), u"New");
    EXPECT_EQ(menu_.Keys(1), (KeyCombination{2, 'N'}));
    menu_.Caption(1, u"Newer");  // without a key text the former one stays
    EXPECT_EQ(menu_.KeyText(1), u"Ctrl+N");
    EXPECT_EQ(menu_.Keys(1), (KeyCombination{2, 'N'}));
    // It stands where it stood, with its id.
    EXPECT_EQ(menus_.GetMenuItemInfo(menu_.hMenu(1), 0, MF_BYPOSITION)->id, 2049);
    const Handle submenu = menu_.Submenu(2);
    menu_.Caption(2, u"Parent");
    EXPECT_EQ(menu_.Submenu(2), submenu);
    EXPECT_EQ(menus_.GetMenuItemInfo(menu_.hMenu(1), 1, MF_BYPOSITION)->submenu, submenu);
}

TEST_F(MenuTree, RefreshKeepsMarksFlagsAndPlaces) {
    menu_.Checked(1, true);
    menu_.RadioCheck(7, true);
    menu_.Enabled(8, false);
    menu_.Refresh();
    EXPECT_TRUE(menu_.Checked(1));
    EXPECT_NE(Info(7)->type & MFT_RADIOCHECK, 0);
    EXPECT_FALSE(menu_.Enabled(8));
    Longs ids;
    for (Long i = 0; i < 4; ++i) {
        ids.push_back(
            menu_.ItemForID(menus_.GetMenuItemInfo(menu_.hMenu(1), i, MF_BYPOSITION)->id));
    }
    EXPECT_EQ(ids, (Longs{1, 2, 7, 8}));
    EXPECT_EQ(menus_.GetMenuItemCount(menu_.Submenu(8)), 1);
}

TEST_F(MenuTable, InstancesAreListedWhileTheyLiveAndShareOneFilter) {
    EXPECT_EQ(shared_->Instances(), (std::vector<JPopupMenu*>{&menu_}));
    {
        JPopupMenu second(shared_);
        EXPECT_EQ(shared_->Instances(), (std::vector<JPopupMenu*>{&menu_, &second}));
        shared_->RegisterMenu(second);
        EXPECT_EQ(shared_->Instances().size(), 2U);
    }
    EXPECT_EQ(shared_->Instances(), (std::vector<JPopupMenu*>{&menu_}));
}

TEST_F(MenuTable, ItsPlatformMenusGoWithTheObject) {
    Handle root = 0;
    Handle submenu = 0;
    {
        JPopupMenu other(shared_);
        other.AddItem(u"a", 0, u"", false, true);
        other.AddItem(u"b", 1, u"", false, true);
        root = other.hMenu(1);
        submenu = other.Submenu(1);
        EXPECT_EQ(menus_.GetMenuItemCount(submenu), 1);
    }
    EXPECT_EQ(menus_.GetMenuItemCount(root), -1);
    EXPECT_EQ(menus_.GetMenuItemCount(submenu), -1);
}

}  // namespace
}  // namespace sarnel
