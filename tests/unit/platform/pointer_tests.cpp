// What the window system finds out by itself of the pointer: double clicks, and windows it leaves.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/support/input_windows.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;

class DoubleClicks : public support::InputWindows {
  protected:
    // What a press right after a click at 115, 65 and so many milliseconds and pixels away is.
    Lines Second(Millis later, Point away, Long button = 1) {
        windows_.Sleep(10'000);
        Press({115, 65});
        Release({115, 65});
        windows_.Sleep(later);
        const Lines second = Press({115 + away.x, 65 + away.y}, button);
        Release({115, 65}, button);
        return second;
    }
};

TEST_F(DoubleClicks, TheSecondPressMustComeWithinTheTime) {
    EXPECT_EQ(Second(0, {0, 0}), (Lines{"w double 15,15 held 1"}));
    EXPECT_EQ(Second(500, {0, 0}), (Lines{"w double 15,15 held 1"}));
    EXPECT_EQ(Second(501, {0, 0}), (Lines{"w down 15,15 held 1"}));
}

TEST_F(DoubleClicks, TheSecondPressMustBeNear) {
    EXPECT_EQ(Second(100, {2, -2}), (Lines{"w double 17,13 held 1"}));
    EXPECT_EQ(Second(100, {3, 0}), (Lines{"w down 18,15 held 1"}));
    EXPECT_EQ(Second(100, {0, -3}), (Lines{"w down 15,12 held 1"}));
}

TEST_F(DoubleClicks, TheSecondPressMustBeOfTheSameButton) {
    EXPECT_EQ(Second(100, {0, 0}, 2), (Lines{"w down2 15,15 held 2"}));
    EXPECT_EQ(Press({115, 65}, 2), (Lines{"w double2 15,15 held 2"}));
    Release({115, 65}, 2);
    Press({115, 65}, 4);
    Release({115, 65}, 4);
    EXPECT_EQ(Press({115, 65}, 4), (Lines{"w double4 15,15 held 16"}));
}

TEST_F(DoubleClicks, AThirdPressBeginsAnew) {
    Second(100, {0, 0});
    EXPECT_EQ(Press({115, 65}), (Lines{"w down 15,15 held 1"}));
    Release({115, 65});
    EXPECT_EQ(Press({115, 65}), (Lines{"w double 15,15 held 1"}));
}

TEST_F(DoubleClicks, TheSecondPressMustBeOnTheSameWindow) {
    Press({115, 65});
    Release({115, 65});
    const Handle a = Window(w_, "a", {0, 0, 50, 50});  // comes between the two
    EXPECT_EQ(Press({115, 65}), (Lines{"a down 15,15 held 1"}));
    Release({115, 65});
    EXPECT_EQ(Press({115, 65}), (Lines{"a double 15,15 held 1"}));
    Release({115, 65});
    Press({115, 65});
    Release({115, 65});
    windows_.DestroyWindow(a);
    log_.Take();
    EXPECT_EQ(Press({115, 65}), (Lines{"w down 15,15 held 1"}));
}

class Leaving : public support::InputWindows {
  protected:
    Handle a_ = Window(w_, "a", {10, 10, 50, 50});
    Lines left_{"a 675 0 0"};
    void Track() {
        Move({115, 65});
        windows_.TrackMouseLeave(a_);
    }
};

TEST_F(Leaving, IsToldOnceWhenThePointerIsElsewhere) {
    Track();
    EXPECT_EQ(Move({116, 65}), (Lines{"a move 6,5"}));
    EXPECT_EQ(Move({105, 55}), (Lines{"a 675 0 0", "w move 5,5"}));
    Move({115, 65});
    EXPECT_EQ(Move({105, 55}), (Lines{"w move 5,5"}));  // nobody asked again
}

TEST_F(Leaving, IsToldWhenThePointerLeavesAllWindows) {
    Track();
    EXPECT_EQ(After(PointerLeft{}), left_);
    EXPECT_EQ(After(PointerLeft{}), Lines{});
    Track();
    EXPECT_EQ(Move({5, 5}), left_);
}

TEST_F(Leaving, WaitsForTheRelease) {
    Track();
    Press({115, 65});
    EXPECT_EQ(Move({5, 5}), (Lines{"a move -105,-55 held 1"}));
    EXPECT_EQ(After(PointerLeft{}), Lines{});
    EXPECT_EQ(Release({5, 5}), (Lines{"a up -105,-55", "a 675 0 0"}));
    Track();
    Press({115, 65});
    EXPECT_EQ(Release({115, 65}), (Lines{"a up 5,5"}));  // it was not left
    EXPECT_EQ(Move({5, 5}), left_);
}

TEST_F(Leaving, GoingOnToAMarkOnTheWindowIsNoLeaving) {
    const Handle label = Window(a_, "label", {20, 20, 30, 30});
    windows_.SetWindowless(label, true);
    Track();
    EXPECT_EQ(Move({132, 82}), (Lines{"label move 2,2"}));
    EXPECT_EQ(Move({115, 65}), (Lines{"a move 5,5"}));
    EXPECT_EQ(Move({5, 5}), left_);
    Move({132, 82});
    windows_.TrackMouseLeave(label);  // a mark is left like any other
    EXPECT_EQ(Move({133, 82}), (Lines{"label move 3,2"}));
    EXPECT_EQ(Move({115, 65}), (Lines{"label 675 0 0", "a move 5,5"}));
}

TEST_F(Leaving, GoingOnToAChildIsLeaving) {
    Window(a_, "child", {20, 20, 30, 30});
    Track();
    EXPECT_EQ(Move({132, 82}), (Lines{"a 675 0 0", "child move 2,2"}));
}

TEST_F(Leaving, AWindowThatIsGoneIsNotTold) {
    Track();
    windows_.DestroyWindow(a_);
    log_.Take();
    EXPECT_EQ(Move({5, 5}), Lines{});
}

}  // namespace
}  // namespace platform
