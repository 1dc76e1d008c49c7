// What the picture of a window is put together from: faces, masks, and who lies over whom.
#include <gtest/gtest.h>

#include <vector>

#include "tests/unit/support/screen_windows.h"

namespace platform {
namespace {

using support::Picture;
using support::Rows;
using support::RowsOf;
using support::WindowScreen;
using Rects = std::vector<Rect>;

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

TEST_F(WindowScreen, ChildrenAreCutByTheirParents) {
    Top();
    const Handle a = Window(top_, {5, 2, 12, 9}, 2);
    Window(a, {1, 1, 20, 20}, 3);
    const Handle b = Window(top_, {-1, -1, 2, 1}, 4);
    Window(b, {0, 0, 2, 2}, 5);
    Sent();
    EXPECT_EQ(OnScreen(), (Rows{"54111111", "11111111", "11111222", "11111233"}));
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

}  // namespace
}  // namespace platform
