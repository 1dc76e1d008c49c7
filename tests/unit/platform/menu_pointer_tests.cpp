// A menu that is open, driven by the pointer, and what ends it.
#include <gtest/gtest.h>

#include <utility>

#include "tests/unit/support/menu_bench.h"

namespace platform {
namespace {

using support::MenuBench;
using Lines = std::vector<std::string>;

// At 100,100 with a frame of 1: 1 at 101, a line at 121, 2 at 127, a submenu at 147, 3 (disabled)
// at 167, 4 at 187 to 207. The submenu stands at 200,146 with 11 at 147 and 12 at 167.
class MenuPointer : public ::testing::Test {
  protected:
    static constexpr Point kOne{150, 110}, kLine{150, 123}, kTwo{150, 137};
    static constexpr Point kSubmenu{150, 157}, kThree{150, 177}, kFour{150, 197};
    static constexpr Point kEleven{250, 157}, kTwelve{250, 177};
    static constexpr Point kOutside{600, 600};

    MenuPointer() {
        b_.Add(1);
        b_.Add(901);
        b_.Add(2);
        below_ = b_.AddSubmenu(b_.menu);
        b_.Add(3, u"", MF_GRAYED);
        b_.Add(4);
        b_.Add(below_, 11);
        b_.Add(below_, 12);
    }
    void ExpectPopups(Millis when, std::size_t count) {
        b_.Look(when, [=, this] { EXPECT_EQ(b_.driver.popups.size(), count) << when; });
    }
    void ExpectSelected(Millis when, Long id) {
        b_.Look(when, [=, this] { EXPECT_EQ(b_.selected, id) << when; });
    }

    MenuBench b_;
    Handle below_ = 0;
};

TEST_F(MenuPointer, TheMenuOpensWithItsRowsDrawnAndHoldsTheInput) {
    b_.Look(0, [&] {
        EXPECT_EQ(b_.driver.Places(), (std::vector<Rect>{{100, 100, 202, 208}}));
        ASSERT_EQ(b_.driver.popups.size(), 1U);
        EXPECT_EQ(b_.driver.grabbed, b_.driver.popups[0]);
        EXPECT_EQ(b_.driver.owners[b_.driver.popups[0]], b_.owner);
        // All of it once: action 1; 2 gray for the disabled row, 4 disabled for the line.
        EXPECT_EQ(b_.drawn, (Lines{"1 1 0", "901 1 4", "2 1 0", std::to_string(below_) + " 1 0",
                                   "3 1 2", "4 1 0"}));
        const Surface screen = b_.windows.ComposeScreen();
        EXPECT_EQ(screen.GetPixel({100, 100}), 0x800000);  // the frame
        EXPECT_EQ(screen.GetPixel({201, 207}), 0x800000);
        EXPECT_EQ(screen.GetPixel({101, 101}), 0x00FF00);
        EXPECT_EQ(screen.GetPixel({200, 206}), 0x00FF00);
        // The arrow of the row with a submenu: 7 from its right edge of 201, in its middle, 157.
        EXPECT_EQ(screen.GetPixel({194, 154}), 0xFFC0C0);
        EXPECT_EQ(screen.GetPixel({197, 157}), 0xFFC0C0);
        EXPECT_EQ(screen.GetPixel({198, 157}), 0x00FF00);
        EXPECT_EQ(screen.GetPixel({195, 154}), 0x00FF00);
        EXPECT_EQ(screen.GetPixel({194, 137}), 0x00FF00);
    });
    EXPECT_EQ(b_.Track(), 0);
    EXPECT_TRUE(b_.driver.popups.empty());
    EXPECT_EQ(b_.driver.grabbed, 0);
}

// As a desktop does that shows no popup beyond an edge of the screen.
TEST_F(MenuPointer, AMenuThatTheDesktopHasMovedIsPointedAtWhereItIs) {
    b_.Look(10, [&] { b_.windows.Deliver(MovedByDesktop{b_.driver.popups[0], {400, 300}}); });
    b_.Move(20, {150, 110});  // where the first row was
    ExpectSelected(30, 0);
    b_.Move(40, {450, 310});
    ExpectSelected(50, 1);
    EXPECT_EQ(b_.Track(), 0);
}

TEST_F(MenuPointer, AClickChoosesWhenTheButtonGoesUp) {
    b_.Move(10, kTwo);
    ExpectSelected(11, 2);
    b_.Button(20, true);
    ExpectPopups(30, 1);
    b_.Button(40, false);
    EXPECT_EQ(b_.Track(), 2);
    EXPECT_EQ(b_.windows.Now(), 40);
}

TEST_F(MenuPointer, OnlyTheTwoRowsThatChangeAreDrawnAgain) {
    b_.Move(10, kOne);
    b_.Look(11, [&] { b_.drawn.clear(); });
    b_.Move(20, {151, 111});
    b_.Move(30, kTwo);
    b_.Look(31, [&] {
        EXPECT_EQ(b_.drawn, (Lines{"1 2 0", "2 2 1"}));
        EXPECT_EQ(b_.windows.ComposeScreen().GetPixel(kTwo), 0x0000FF);
    });
    b_.Track();
}

TEST_F(MenuPointer, TheRightButtonChoosesWhereItMay) {
    b_.Click(10, kTwo, 2);
    EXPECT_EQ(b_.Track(TPM_RIGHTBUTTON), 2);
    b_.Click(10, kTwo, 2);
    EXPECT_EQ(b_.Track(0), 0);
    b_.Click(10, kTwo, 4);
    EXPECT_EQ(b_.Track(TPM_RIGHTBUTTON), 0);
}

TEST_F(MenuPointer, LinesAndDisabledRowsAreNotChosenAndKeepTheMenuOpen) {
    b_.Click(10, kLine);
    ExpectSelected(11, 0);
    b_.Click(20, kThree);
    ExpectSelected(21, 3);
    ExpectPopups(30, 1);
    b_.Click(40, kFour);
    EXPECT_EQ(b_.Track(), 4);
}

TEST_F(MenuPointer, ASubmenuOpensAfterAShortRest) {
    b_.Move(10, kSubmenu);
    b_.Move(150, {151, 158});  // moving within the row does not put it off
    ExpectPopups(209, 1);
    b_.Look(211, [&] {
        ASSERT_EQ(b_.driver.popups.size(), 2U);
        EXPECT_EQ(b_.driver.owners[b_.driver.popups[1]], b_.driver.popups[0]);
        EXPECT_EQ(b_.driver.Places(),
                  (std::vector<Rect>{{100, 100, 202, 208}, {200, 146, 302, 188}}));
    });
    b_.Click(220, kTwelve);
    EXPECT_EQ(b_.Track(), 12);
}

TEST_F(MenuPointer, AClickOpensASubmenuAtOnce) {
    b_.Click(10, kSubmenu);
    ExpectPopups(11, 2);
    b_.Click(20, kEleven);
    EXPECT_EQ(b_.Track(), 11);
}

TEST_F(MenuPointer, CrossingOtherRowsOnTheWayToASubmenuDoesNotCloseIt) {
    b_.Click(10, kSubmenu);
    b_.Move(20, kThree);
    ExpectSelected(25, 3);
    b_.Move(100, kTwelve);
    b_.Look(101, [&] {
        EXPECT_EQ(b_.driver.popups.size(), 2U);
        EXPECT_EQ(b_.selected, 12);
        // The way there is marked again: row by row, 167 + 10 and 147 + 10.
        const Surface screen = b_.windows.ComposeScreen();
        EXPECT_EQ(screen.GetPixel(kThree), 0x00FF00);
        EXPECT_EQ(screen.GetPixel(kSubmenu), 0x0000FF);
    });
    ExpectPopups(500, 2);
    b_.Track();
}

TEST_F(MenuPointer, RestingOnAnotherRowClosesASubmenu) {
    b_.Click(10, kSubmenu);
    b_.Move(20, kThree);
    ExpectPopups(219, 2);
    ExpectPopups(221, 1);
    b_.Track();
}

TEST_F(MenuPointer, APressOutsideClosesAllAndReachesNobody) {
    b_.Click(10, kSubmenu);
    b_.Move(20, {25, 25});  // over the owner
    b_.Button(20, true);
    EXPECT_EQ(b_.Track(), 0);
    EXPECT_TRUE(b_.driver.popups.empty());
    b_.windows.Deliver(PointerMoved{{26, 26}, 0});
    b_.windows.Deliver(ButtonChanged{{26, 26}, 1, false, 0});
    // A move without a held button; neither the press nor the release.
    EXPECT_EQ(b_.messages, (Lines{"512 0 " + std::to_string(26 + 26 * 65536)}));
    b_.messages.clear();
    b_.windows.Deliver(ButtonChanged{{26, 26}, 1, true, 0});
    EXPECT_EQ(b_.messages.size(), 1U);
    EXPECT_EQ(b_.messages[0].substr(0, 6), "513 1 ");  // no double click either
}

TEST_F(MenuPointer, PressingDraggingAndLettingGoChooses) {
    b_.driver.MovePointer({25, 25});
    b_.windows.Deliver(ButtonChanged{{25, 25}, 2, true, 0});
    b_.Move(10, kTwo);
    b_.Button(20, false, 2);
    EXPECT_EQ(b_.Track(), 2);
    // Whoever got the press got the release: 137 - 0 and 150 - 0 in the owner's pixels.
    ASSERT_EQ(b_.messages.size(), 2U);
    EXPECT_EQ(b_.messages[0].substr(0, 4), "516 ");
    EXPECT_EQ(b_.messages[1], "517 0 " + std::to_string(150 + 137 * 65536));
    EXPECT_EQ(b_.windows.GetCapture(), 0);
}

TEST_F(MenuPointer, LettingGoOfTheButtonThatOpenedTheMenuChoosesNothingUntilThePointerHasMoved) {
    b_.driver.MovePointer({25, 25});
    b_.windows.Deliver(ButtonChanged{{25, 25}, 2, true, 0});
    b_.driver.MovePointer({102, 102});
    b_.Move(10, {104, 103});  // trembling
    b_.Button(20, false, 2);
    ExpectPopups(30, 1);
    b_.Click(40, kFour);
    EXPECT_EQ(b_.Track(), 4);
}

TEST_F(MenuPointer, ThreePixelsAreTremblingAndFourAreNot) {
    const std::vector<std::pair<Point, Long>> cases{
        {{153, 140}, 0}, {{147, 134}, 0}, {{154, 137}, 2}, {{150, 141}, 2}, {{146, 137}, 2}};
    for (const auto& [to, chosen] : cases) {
        b_.driver.MovePointer({25, 25});
        b_.windows.Deliver(ButtonChanged{{25, 25}, 2, true, 0});
        b_.driver.MovePointer(kTwo);
        b_.Move(10, to);
        b_.Button(20, false, 2);
        EXPECT_EQ(b_.Track(), chosen) << to.x << ' ' << to.y;
    }
}

TEST_F(MenuPointer, RightGoesToTheRowThatIsMarkedInASubmenuAlready) {
    b_.Click(10, kSubmenu);
    b_.Move(20, kTwelve);
    b_.Move(30, kSubmenu);
    b_.Key(40, VK_RIGHT);
    b_.Key(50, VK_RETURN);
    EXPECT_EQ(b_.Track(), 12);
}

TEST_F(MenuPointer, LeavingThePopupUnmarksItsRow) {
    b_.Move(10, kTwo);
    b_.Move(20, kOutside);
    ExpectSelected(21, 0);
    b_.Track();
}

TEST_F(MenuPointer, AMenuLongerThanTheScreenScrolls) {
    for (Long id = 20; id < 60; ++id) {
        b_.Add(id);
    }
    // 206 + 40 * 20 pixels in a work area of 740. 12 pixels of arrows and 1 of frame at both ends
    // leave 714: the last row is at 986 - 714 = 292 when it shows at the bottom.
    b_.Look(0, [&] {
        ASSERT_EQ(b_.driver.Places(), (std::vector<Rect>{{100, 0, 202, 740}}));
        EXPECT_EQ(b_.windows.ComposeScreen().GetPixel({110, 5}), 0xFF0000);  // beside the arrow
        EXPECT_EQ(b_.windows.ComposeScreen().GetPixel({151, 6}), 0xFFC0C0);  // the arrow
    });
    b_.Key(10, VK_UP);
    ExpectSelected(11, 59);
    b_.Move(20, {150, 726});
    ExpectSelected(21, 59);
    b_.Move(30, {150, 14});  // content 1 + 292: the row of 23, at 206 + 60 to 286, is above it
    ExpectSelected(31, 24);  // 286 to 306
    b_.Key(40, VK_HOME);
    b_.Move(50, {150, 14});
    ExpectSelected(51, 1);
    // Down by the wheel: 3 rows of 18 a notch. Content 1 + 54: the row of the submenu, 46 to 66.
    b_.At(60, [&] { b_.windows.Deliver(WheelTurned{{150, 14}, -1, 0}); });
    ExpectSelected(61, below_);
    // By the lower arrow, 18 pixels every 50 ms: 54 + 36 after 100 ms.
    b_.Move(70, {150, 735});
    b_.Move(175, {150, 14});
    ExpectSelected(176, 4);  // content 91, and 4 stands at 86 to 106
    b_.Track();
}

// Of the menu above, 54 pixels further down: the submenu's row, content 46 to 66, starts 8 above
// the view, which begins at 13.
TEST_F(MenuPointer, TheSubmenuOfAScrolledMenuStandsBesideItsRow) {
    for (Long id = 20; id < 60; ++id) {
        b_.Add(id);
    }
    b_.At(10, [&] { b_.windows.Deliver(WheelTurned{{150, 300}, -1, 0}); });
    b_.Click(20, {150, 16});
    b_.Look(30, [&] {
        // Its frame is 1: at 13 - 8 - 1.
        EXPECT_EQ(b_.driver.Places(), (std::vector<Rect>{{100, 0, 202, 740}, {200, 4, 302, 46}}));
    });
    b_.Track();
}

// 36 rows of 20, three lines of 6 and a frame of 1 on either side: 740.
TEST_F(MenuPointer, AMenuAsHighAsTheScreenFitsAndDoesNotScroll) {
    const Handle high = b_.menus.CreatePopupMenu();
    for (Long id = 20; id < 56; ++id) {
        b_.Add(high, id);
    }
    for (Long id = 901; id < 904; ++id) {
        b_.Add(high, id);
    }
    b_.Look(0, [&] {
        EXPECT_EQ(b_.driver.Places(), (std::vector<Rect>{{100, 0, 202, 740}}));
        const Surface screen = b_.windows.ComposeScreen();
        EXPECT_EQ(screen.GetPixel({110, 1}), 0x00FF00);
        EXPECT_EQ(screen.GetPixel({110, 738}), 0x00FF00);
        EXPECT_EQ(screen.GetPixel({110, 739}), 0x800000);
    });
    b_.Move(10, {150, 1});
    ExpectSelected(11, 20);
    b_.menus.TrackPopupMenu(high, 0, {100, 100}, b_.owner);
}

TEST_F(MenuPointer, OpensOnTheScreenThatThePointIsOn) {
    b_.Look(0, [&] { EXPECT_EQ(b_.driver.Places(), (std::vector<Rect>{{1922, 200, 2024, 308}})); });
    b_.Track(0, {2000, 200});
}

TEST_F(MenuPointer, TimersAndMessagesGoOn) {
    int beats = 0;
    b_.windows.SetTimer(b_.owner, 12, 30, [&](Handle, Long) { ++beats; });
    b_.windows.PostMessage(b_.owner, 2000, 1, 2);
    b_.Look(100, [&] { EXPECT_EQ(beats, 3); });
    b_.Track();
    EXPECT_EQ(b_.messages, (Lines{"2000 1 2"}));
}

TEST_F(MenuPointer, AnotherMenuCannotOpenMeanwhile) {
    b_.At(10, [&] { EXPECT_EQ(b_.Track(), 0); });
    b_.Click(20, kTwo);
    EXPECT_EQ(b_.Track(), 2);
    b_.Click(20, kTwo);
    EXPECT_EQ(b_.Track(), 2);
}

TEST_F(MenuPointer, NeedsAnOwnerAndAnItem) {
    b_.Click(10, kTwo);
    EXPECT_EQ(b_.menus.TrackPopupMenu(b_.menu, 0, {100, 100}, 0), 0);
    EXPECT_EQ(b_.menus.TrackPopupMenu(b_.menus.CreatePopupMenu(), 0, {100, 100}, b_.owner), 0);
    EXPECT_EQ(b_.windows.Now(), 0);
}

TEST_F(MenuPointer, EndsWithItsOwner) {
    const std::vector<std::function<void()>> ends{
        [&] { b_.windows.SetMinimised(b_.owner, true); },
        [&] { b_.windows.ShowWindow(b_.owner, SW_HIDE); },
        [&] { b_.windows.Deliver(InputLost{}); },
        [&] { b_.windows.DestroyWindow(b_.owner); },
    };
    for (const auto& end : ends) {
        const Millis before = b_.windows.Now();
        b_.At(10, end);
        b_.Click(20, kTwo);
        EXPECT_EQ(b_.Track(), 0);
        EXPECT_EQ(b_.windows.Now(), before + 10);
        EXPECT_TRUE(b_.driver.popups.empty());
        b_.windows.Sleep(20);
        b_.windows.ShowWindow(b_.owner, SW_SHOW);
        b_.windows.SetMinimised(b_.owner, false);
    }
}

TEST_F(MenuPointer, OpensForAHiddenOwnerAsTheTrayNeedsIt) {
    b_.windows.SetMinimised(b_.owner, true);
    b_.windows.ShowWindow(b_.owner, SW_HIDE);
    b_.Click(10, kTwo);
    EXPECT_EQ(b_.Track(), 2);
}

TEST_F(MenuPointer, ACloseRequestEndsTheMenuFirst) {
    b_.At(10, [&] { b_.windows.Deliver(CloseRequested{b_.owner}); });
    b_.Click(20, kTwo);
    EXPECT_EQ(b_.Track(), 0);
    EXPECT_EQ(b_.messages, Lines());
    b_.windows.DoEvents();
    EXPECT_EQ(b_.messages, (Lines{"16 0 0"}));
}

TEST_F(MenuPointer, AMarkThatChangesIsDrawnAndAnotherRowEndsTheMenu) {
    b_.Look(10, [&] {
        b_.drawn.clear();
        b_.menus.ModifyMenu(b_.menu, 2, MF_CHECKED, 2, u"");
        EXPECT_EQ(b_.drawn, (Lines{"2 1 8"}));
    });
    ExpectPopups(20, 1);
    b_.At(30, [&] { b_.Add(5); });
    b_.Click(40, kTwo);
    EXPECT_EQ(b_.Track(), 0);
    EXPECT_EQ(b_.windows.Now(), 30);
}

TEST_F(MenuPointer, TheObserverMayEndTheMenuAtOnce) {
    Handle seen = 0;
    b_.menus.ObserveOpening([&](Handle menu) {
        seen = menu;
        b_.menus.EndMenu(4);
    });
    EXPECT_EQ(b_.Track(), 4);
    EXPECT_EQ(seen, b_.menu);
    EXPECT_EQ(b_.windows.Now(), 0);
}

TEST_F(MenuPointer, TheWindowUnderThePointerIsLeft) {
    b_.windows.TrackMouseLeave(b_.owner);
    b_.Move(10, kTwo);
    b_.Track();
    EXPECT_EQ(b_.messages, (Lines{"675 0 0"}));
}

}  // namespace
}  // namespace platform
