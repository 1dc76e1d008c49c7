// The picture of a top-level window is sent to the driver where it has changed and nowhere else.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/unit/support/screen_windows.h"

namespace platform {
namespace {

using support::Picture;
using support::Rows;
using support::RowsOf;
using support::WindowScreen;
using Rects = std::vector<Rect>;

TEST_F(WindowScreen, TheFirstShowingSendsTheWholePicture) {
    Top();
    EXPECT_EQ(Sent(), (Rects{{0, 0, 8, 4}}));
    EXPECT_EQ(OnScreen(), (Rows{"11111111", "11111111", "11111111", "11111111"}));
    EXPECT_EQ(Sent(), Rects{});
}

TEST_F(WindowScreen, ThePumpBringsChangesToTheScreen) {
    Top();
    windows_.DoEvents();
    EXPECT_EQ(driver_.Sent(), (Rects{{0, 0, 8, 4}}));
    Paint(top_, {1, 1, 2, 2}, 2);
    windows_.Sleep(10);
    EXPECT_EQ(driver_.Sent(), (Rects{{1, 1, 2, 2}}));
}

TEST_F(WindowScreen, APixelThatChangesSendsOnePixel) {
    Top();
    Sent();
    faceOf_[top_]->SetPixel({5, 2}, 2);
    windows_.InvalidateRect(top_, {0, 0, 8, 4});
    EXPECT_EQ(Sent(), (Rects{{5, 2, 6, 3}}));
}

TEST_F(WindowScreen, WhatIsAsItWasIsNotSent) {
    Top();
    Sent();
    Paint(top_, {0, 0, 8, 4}, 1);
    EXPECT_EQ(Sent(), Rects{});
    Paint(top_, {2, 1, 4, 3}, 2);
    Paint(top_, {2, 1, 4, 3}, 1);
    EXPECT_EQ(Sent(), Rects{});
}

TEST_F(WindowScreen, WhatIsNotAnnouncedIsNotSent) {
    Top();
    Sent();
    faceOf_[top_]->FillRect({0, 0, 8, 4}, 2);
    windows_.InvalidateRect(top_, {0, 0, 3, 1});
    driver_.Sent();
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), (Rects{{0, 0, 3, 1}}));
}

TEST_F(WindowScreen, ChangesFarApartAreSentApart) {
    Top({0, 0, 40, 40});
    Sent();
    Paint(top_, {0, 0, 2, 2}, 2);
    Paint(top_, {30, 30, 32, 32}, 2);
    EXPECT_EQ(Sent(), (Rects{{0, 0, 2, 2}, {30, 30, 32, 32}}));
}

TEST_F(WindowScreen, ChangesSideBySideAreSentAsOne) {
    Top({0, 0, 40, 40});
    Sent();
    Paint(top_, {0, 0, 2, 2}, 2);
    Paint(top_, {2, 0, 5, 2}, 2);
    Paint(top_, {0, 0, 1, 1}, 3);  // lies within
    EXPECT_EQ(Sent(), (Rects{{0, 0, 5, 2}}));
}

TEST_F(WindowScreen, ManyChangesAreUnitedAndNoneIsLost) {
    Top({0, 0, 100, 100});
    Sent();
    for (Long i = 0; i < 30; ++i) {
        Paint(top_, {3 * i, 3 * ((i * 7) % 30), 3 * i + 1, 3 * ((i * 7) % 30) + 1}, 2);
    }
    EXPECT_LE(Sent().size(), 8U);
}

TEST_F(WindowScreen, AHiddenWindowSendsNothingUntilItIsShown) {
    Top();
    windows_.ShowWindow(top_, SW_HIDE);
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), Rects{});
    windows_.ShowWindow(top_, SW_SHOW);
    Sent();
    windows_.ShowWindow(top_, SW_HIDE);
    Paint(top_, {1, 1, 3, 2}, 2);
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), Rects{});
    windows_.ShowWindow(top_, SW_SHOW);
    EXPECT_EQ(Sent(), (Rects{{1, 1, 3, 2}}));
}

TEST_F(WindowScreen, AMinimisedWindowSendsNothingUntilItIsRestored) {
    Top();
    Sent();
    windows_.SetMinimised(top_, true);
    Paint(top_, {1, 1, 3, 2}, 2);
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), Rects{});
    windows_.SetMinimised(top_, false);
    EXPECT_EQ(Sent(), (Rects{{1, 1, 3, 2}}));
}

TEST_F(WindowScreen, WindowsThatOnlyMoveSendNothing) {
    Top();
    Sent();
    Move(top_, {100, 100, 108, 104});
    EXPECT_EQ(Sent(), Rects{});
}

TEST_F(WindowScreen, AnotherSizeIsAnotherPicture) {
    Top();
    Sent();
    *faceOf_[top_] = Picture({"2222", "2222"});
    Move(top_, {0, 0, 4, 2});
    EXPECT_EQ(Sent(), (Rects{{0, 0, 4, 2}}));
    EXPECT_EQ(OnScreen(), (Rows{"2222", "2222"}));
}

TEST_F(WindowScreen, AChangeFromBeforeAWindowBecameSmallerIsCut) {
    Top({0, 0, 40, 40});
    Sent();
    Paint(top_, {30, 30, 40, 40}, 2);
    Paint(top_, {0, 0, 1, 1}, 3);
    Move(top_, {0, 0, 3, 2});
    EXPECT_EQ(Sent(), (Rects{{0, 0, 3, 2}}));
    EXPECT_EQ(OnScreen(), (Rows{"311", "111"}));
}

TEST_F(WindowScreen, AWindowBroughtToTheFrontSendsWhereItWasCovered) {
    Top();
    const Handle a = Window(top_, {1, 0, 4, 2}, 2);
    Window(top_, {3, 1, 6, 3}, 3);
    Sent();
    windows_.BringToFront(a);
    EXPECT_EQ(Sent(), (Rects{{3, 1, 4, 2}}));
    EXPECT_EQ(OnScreen()[1], "12223311");
}

TEST_F(WindowScreen, AChangeOfAChildIsCutByItsParents) {
    Top();
    const Handle a = Window(top_, {2, 1, 4, 3}, 2);
    const Handle b = Window(a, {-1, -1, 5, 5}, 3);
    Sent();
    Paint(b, {0, 0, 6, 6}, 4);
    EXPECT_EQ(Sent(), (Rects{{2, 1, 4, 3}}));
    Paint(b, {0, 0, 1, 1}, 5);  // outside of a
    EXPECT_EQ(Sent(), Rects{});
}

TEST_F(WindowScreen, AChangeUnderAnotherWindowSendsNothing) {
    Top();
    const Handle a = Window(top_, {1, 0, 4, 2}, 2);
    Window(top_, {0, 0, 5, 3}, 3);
    Sent();
    Paint(a, {0, 0, 3, 2}, 4);
    EXPECT_EQ(Sent(), Rects{});
}

TEST_F(WindowScreen, ShowingHidingMovingAndDestroyingAChild) {
    Top();
    const Handle a = Window(top_, {1, 0, 4, 2}, 2);
    Sent();
    windows_.ShowWindow(a, SW_HIDE);
    EXPECT_EQ(Sent(), (Rects{{1, 0, 4, 2}}));
    Paint(a, {0, 0, 1, 1}, 3);
    EXPECT_EQ(Sent(), Rects{});
    windows_.ShowWindow(a, SW_SHOW);
    EXPECT_EQ(Sent(), (Rects{{1, 0, 4, 2}}));
    EXPECT_EQ(OnScreen()[0], "13221111");
    Move(a, {2, 0, 5, 2});
    EXPECT_EQ(Sent(), (Rects{{1, 0, 5, 2}}));  // from the column it left to the one it reached
    EXPECT_EQ(OnScreen()[0], "11322111");
    windows_.DestroyWindow(a);
    EXPECT_EQ(Sent(), (Rects{{2, 0, 5, 2}}));
    EXPECT_EQ(OnScreen()[0], "11111111");
}

TEST_F(WindowScreen, AChildOfAHiddenParentSendsNothing) {
    Top();
    const Handle a = Window(top_, {1, 0, 4, 2}, 2);
    const Handle b = Window(a, {1, 1, 2, 2}, 3);
    windows_.ShowWindow(a, SW_HIDE);
    Sent();
    Paint(b, {0, 0, 1, 1}, 4);
    windows_.ShowWindow(b, SW_HIDE);
    windows_.ShowWindow(b, SW_SHOW);
    EXPECT_EQ(Sent(), Rects{});
    windows_.ShowWindow(a, SW_SHOW);
    EXPECT_EQ(Sent(), (Rects{{1, 0, 4, 2}}));
    EXPECT_EQ(OnScreen()[1], "12421111");
}

// Whatever happens, what was sent adds up to the whole picture.
TEST_F(WindowScreen, AThousandRandomStepsLeaveNoTraceOnTheScreen) {
    std::mt19937 random(7);
    const auto below = [&](Long end) {
        return static_cast<Long>(random() % static_cast<unsigned>(end));
    };
    const auto anyRect = [&] {
        const Long left = below(24) - 4;
        const Long top = below(24) - 4;
        return Rect{left, top, left + below(12), top + below(12)};
    };
    Top({0, 0, 20, 20});
    std::vector<Handle> all;
    for (int i = 0; i < 6; ++i) {
        all.push_back(
            Window(i < 3 ? top_ : all[static_cast<std::size_t>(i - 3)], anyRect(), 2 + i));
    }
    for (int step = 0; step < 1000; ++step) {
        const Handle window = all[static_cast<std::size_t>(below(6))];
        switch (below(7)) {
            case 0:
                Paint(window, anyRect(), 1 + below(9));
                break;
            case 1:
                Move(window, anyRect());
                break;
            case 2:
                windows_.ShowWindow(window, below(2) == 0 ? SW_HIDE : SW_SHOW);
                break;
            case 3:
                windows_.BringToFront(window);
                break;
            case 4:
                windows_.SetMask(window, below(2) == 0 ? nullptr
                                                       : std::make_shared<Mask>(
                                                             Picture({"1.11", ".11.", "11.1"}), 0));
                break;
            case 5:
                Move(top_, {0, 0, 15 + below(10), 15 + below(10)});
                break;
            default:
                Sent();
                break;
        }
    }
    Sent();
}

TEST_F(WindowScreen, AnotherDensityIsSentWholeAndPartsOfItAfterwards) {
    Top();
    const Handle child = Window(top_, {2, 1, 6, 3}, 2);
    Sent();
    driver_.SetDensity(2);
    windows_.DoEvents();
    EXPECT_EQ(driver_.Sent(), (Rects{{0, 0, 8, 4}}));
    EXPECT_EQ(driver_.screens[top_].Density(), 2);
    EXPECT_EQ(OnScreen(), (Rows{"11111111", "11222211", "11222211", "11111111"}));
    Paint(child, {1, 1, 2, 2}, 3);
    EXPECT_EQ(Sent(), (Rects{{3, 2, 4, 3}}));
    EXPECT_EQ(OnScreen(), (Rows{"11111111", "11222211", "11232211", "11111111"}));
    driver_.SetDensity(1);
    windows_.DoEvents();
    EXPECT_EQ(driver_.screens[top_].Density(), 1);
    EXPECT_EQ(OnScreen(), (Rows{"11111111", "11222211", "11232211", "11111111"}));
}

TEST_F(WindowScreen, OwnersHearOfAnotherDensityBeforeWhatLiesOnThem) {
    std::vector<Long> heard;
    const auto hears = [&](Long name) {
        return [&heard, name](const Message& message) {
            if (message.id == WM_DISPLAYCHANGE) {
                heard.push_back(name * 10 + message.wParam);
            }
            return 0;
        };
    };
    const Handle first = windows_.CreateWindow(0, {}, hears(1));
    const Handle panel = windows_.CreateWindow(first, {}, hears(2));
    windows_.CreateWindow(panel, {}, hears(3));
    windows_.CreateWindow(first, {}, hears(4));
    windows_.CreateWindow(0, {}, hears(5));
    driver_.SetDensity(4);
    windows_.DoEvents();
    EXPECT_EQ(heard, (std::vector<Long>{14, 24, 34, 44, 54}));
}

}  // namespace
}  // namespace platform
