// The picture of a top-level window: put together from faces, and sent to the driver where it has
// changed and nowhere else.
#include <gtest/gtest.h>

#include <list>
#include <random>

#include "platform/windows/window_system.h"
#include "tests/unit/support/pictures.h"
#include "tests/unit/support/screen_driver.h"

namespace platform {
namespace {

using support::Picture;
using support::Rows;
using support::RowsOf;
using Rects = std::vector<Rect>;

class WindowScreen : public ::testing::Test {
  protected:
    // A window whose face has one colour.
    Handle Window(Handle parent, const Rect& rect, Colour colour) {
        const Handle window = windows_.CreateWindow(parent, rect, {});
        Surface& face = faces_.emplace_back(Size{rect.Width(), rect.Height()});
        face.FillRect(face.Bounds(), colour);
        faceOf_[window] = &face;
        windows_.SetFace(window, &face);
        windows_.ShowWindow(window, SW_SHOW);
        return window;
    }
    Handle Top(const Rect& rect = {0, 0, 8, 4}) {
        top_ = Window(0, rect, 1);
        return top_;
    }
    // Draws on a face and says where.
    void Paint(Handle window, const Rect& rect, Colour colour) {
        faceOf_[window]->FillRect(rect, colour);
        windows_.InvalidateRect(window, rect);
    }
    // What is sent now. The copy on the screen is then as the whole picture would be.
    Rects Sent() {
        driver_.Sent();
        windows_.UpdateScreen();
        EXPECT_EQ(OnScreen(), RowsOf(windows_.Compose(top_)));
        return driver_.Sent();
    }
    Rows OnScreen() { return RowsOf(driver_.screens[top_]); }
    void Move(Handle window, const Rect& rect) {
        windows_.SetWindowPos(window, 0, rect.left, rect.top, rect.Width(), rect.Height(),
                              SWP_NOZORDER);
    }

    support::ScreenDriver driver_;
    WindowSystem windows_{driver_};
    std::list<Surface> faces_;
    std::map<Handle, Surface*> faceOf_;
    Handle top_ = 0;
};

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

TEST_F(WindowScreen, WhereAFaceDoesNotReachTheWindowIsBlack) {
    Top();
    Window(top_, {3, 0, 5, 1}, 2);
    Sent();
    *faceOf_[top_] = Picture({"33", "33"});
    windows_.InvalidateRect(top_, {0, 0, 8, 4});
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"33.22...", "33......", "........", "........"}));
    windows_.SetFace(top_, nullptr);
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"...22...", "........", "........", "........"}));
}

TEST_F(WindowScreen, ChildrenLieOverTheirParentInTheOrderInWhichTheyCame) {
    Top();
    Window(top_, {1, 0, 4, 2}, 2);
    Window(top_, {3, 1, 6, 3}, 3);
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"12221111", "12233311", "11133311", "11111111"}));
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

TEST_F(WindowScreen, ChildrenAreCutByTheirParents) {
    Top();
    const Handle a = Window(top_, {5, 2, 12, 9}, 2);
    Window(a, {1, 1, 20, 20}, 3);
    const Handle b = Window(top_, {-1, -1, 2, 1}, 4);
    Window(b, {0, 0, 2, 2}, 5);
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"54111111", "11111111", "11111222", "11111233"}));
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

TEST_F(WindowScreen, WithoutAFaceTheParentShinesThrough) {
    Top();
    const Handle a = windows_.CreateWindow(top_, {1, 0, 6, 3}, {});
    windows_.ShowWindow(a, SW_SHOW);
    Window(a, {1, 1, 2, 2}, 2);
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"11111111", "11211111", "11111111", "11111111"}));
}

TEST_F(WindowScreen, WhereAChildsFaceDoesNotReachItsParentShinesThrough) {
    Top();
    const Handle a = Window(top_, {1, 0, 6, 3}, 2);
    faceOf_[a]->Resize({2, 1}, 0);
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"12211111", "11111111", "11111111", "11111111"}));
    Paint(a, {0, 0, 5, 3}, 3);
    EXPECT_EQ(Sent(), (Rects{{1, 0, 3, 1}}));
}

TEST_F(WindowScreen, OnlyThePointsOfAMaskAreShown) {
    Top();
    const Handle a = Window(top_, {1, 1, 4, 3}, 2);
    Sent();
    windows_.SetMask(a, std::make_shared<Mask>(Picture({"1.1", ".1."}), 0));
    EXPECT_EQ(Sent(), (Rects{{1, 1, 4, 3}}));
    EXPECT_EQ(OnScreen(), (Rows{"11111111", "12121111", "11211111", "11111111"}));
    Paint(a, {0, 0, 2, 1}, 3);
    EXPECT_EQ(Sent(), (Rects{{1, 1, 2, 2}}));  // its neighbour is not shown
    Paint(top_, {0, 0, 8, 4}, 4);
    Sent();
    EXPECT_EQ(OnScreen()[1], "43424444");
    windows_.SetMask(a, nullptr);
    EXPECT_EQ(Sent(), (Rects{{1, 1, 4, 3}}));  // the box around the three points that were not
}

TEST_F(WindowScreen, AMaskSmallerThanItsWindowHidesTheRest) {
    Top({0, 0, 4, 2});
    windows_.SetMask(Window(top_, {0, 0, 3, 2}, 2), std::make_shared<Mask>(Picture({"11"}), 0));
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"2211", "1111"}));
}

TEST_F(WindowScreen, EachTopLevelWindowHasAPictureOfItsOwn) {
    const Handle a = Top();
    const Handle b = Window(0, {4, 2, 6, 4}, 2);
    windows_.UpdateScreen();
    EXPECT_EQ(RowsOf(driver_.screens[a])[2], "11111111");
    EXPECT_EQ(RowsOf(driver_.screens[b]), (Rows{"22", "22"}));
    windows_.DestroyWindow(b);
}

TEST_F(WindowScreen, TheWholeScreenHasTheVisibleWindowsInTheirOrder) {
    const Handle a = Top({-1, 0, 3, 2});
    const Handle b = Window(0, {2, 1, 6, 3}, 2);
    const Handle c = Window(0, {0, 0, 9, 9}, 3);
    windows_.ShowWindow(c, SW_HIDE);
    const auto corner = [&] {
        Rows rows = RowsOf(windows_.ComposeScreen());
        EXPECT_EQ(rows.size(), 768U);
        EXPECT_EQ(rows[0].size(), 1024U);
        rows.resize(4);
        for (std::string& row : rows) {
            row.resize(7);
        }
        return rows;
    };
    EXPECT_EQ(corner(), (Rows{"111....", "112222.", "..2222.", "......."}));
    windows_.BringToFront(a);
    EXPECT_EQ(corner(), (Rows{"111....", "111222.", "..2222.", "......."}));
    windows_.SetMinimised(b, true);
    EXPECT_EQ(corner(), (Rows{"111....", "111....", ".......", "......."}));
}

TEST_F(WindowScreen, NoWindowHasNoPicture) {
    EXPECT_TRUE(windows_.Compose(99).IsEmpty());
    windows_.InvalidateRect(99, {0, 0, 5, 5});
    windows_.SetFace(99, nullptr);
    EXPECT_EQ(windows_.GetFace(99), nullptr);
    windows_.UpdateScreen();
    EXPECT_EQ(driver_.Sent(), Rects{});
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

}  // namespace
}  // namespace platform
