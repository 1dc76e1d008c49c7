// Raw input becomes messages: which window gets them, and what they say.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/unit/support/input_windows.h"
#include "tests/unit/support/pictures.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;
using WindowInput = support::InputWindows;

TEST_F(WindowInput, TheUppermostWindowUnderThePointIsHit) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    const Handle b = Window(w_, "b", {30, 30, 70, 70});
    const Handle c = Window(b, "c", {0, 0, 5, 5});
    EXPECT_EQ(windows_.WindowFromPoint({100, 50}), w_);
    EXPECT_EQ(windows_.WindowFromPoint({110, 60}), a);
    EXPECT_EQ(windows_.WindowFromPoint({130, 80}), c);
    EXPECT_EQ(windows_.WindowFromPoint({135, 85}), b);
    windows_.BringToFront(a);
    EXPECT_EQ(windows_.WindowFromPoint({130, 80}), a);
    EXPECT_EQ(windows_.WindowFromPoint({149, 99}), a);
    EXPECT_EQ(windows_.WindowFromPoint({150, 99}), b);
    EXPECT_EQ(windows_.WindowFromPoint({299, 249}), w_);
    EXPECT_EQ(windows_.WindowFromPoint({300, 249}), 0);
    EXPECT_EQ(windows_.WindowFromPoint({99, 50}), 0);
}

TEST_F(WindowInput, AChildIsHitWithinItsParentOnly) {
    const Handle a = Window(w_, "a", {150, 150, 250, 250});
    EXPECT_EQ(windows_.WindowFromPoint({299, 249}), a);
    EXPECT_EQ(windows_.WindowFromPoint({300, 249}), 0);
    const Handle b = Window(a, "b", {-20, -20, 10, 10});
    EXPECT_EQ(windows_.WindowFromPoint({249, 200}), w_);
    EXPECT_EQ(windows_.WindowFromPoint({250, 200}), b);
}

TEST_F(WindowInput, HiddenAndDisabledWindowsAreSeenThrough) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    const Handle b = Window(a, "b", {0, 0, 10, 10});
    windows_.EnableWindow(b, false);
    EXPECT_EQ(windows_.WindowFromPoint({112, 62}), a);
    windows_.EnableWindow(b, true);
    EXPECT_EQ(windows_.WindowFromPoint({112, 62}), b);
    windows_.ShowWindow(a, SW_HIDE);
    EXPECT_EQ(windows_.WindowFromPoint({112, 62}), w_);
    windows_.ShowWindow(w_, SW_HIDE);
    EXPECT_EQ(windows_.WindowFromPoint({112, 62}), 0);
}

TEST_F(WindowInput, OfTopLevelWindowsTheUppermostVisibleOneIsHit) {
    const Handle v = Window(0, "v", {150, 100, 350, 300});
    EXPECT_EQ(windows_.WindowFromPoint({200, 150}), v);
    windows_.BringToFront(w_);
    EXPECT_EQ(windows_.WindowFromPoint({200, 150}), w_);
    windows_.SetMinimised(w_, true);
    EXPECT_EQ(windows_.WindowFromPoint({200, 150}), v);
    EXPECT_EQ(windows_.WindowFromPoint({110, 60}), 0);
}

TEST_F(WindowInput, OnlyThePointsOfAMaskAreHit) {
    const Handle a = Window(w_, "a", {10, 10, 13, 12});
    windows_.SetMask(a, std::make_shared<Mask>(support::Picture({"1.1", ".1."}), 0));
    const auto hit = [&](Long x, Long y) {
        return windows_.WindowFromPoint({110 + x, 60 + y}) == a;
    };
    EXPECT_TRUE(hit(0, 0));
    EXPECT_FALSE(hit(1, 0));
    EXPECT_TRUE(hit(2, 0));
    EXPECT_FALSE(hit(0, 1));
    EXPECT_TRUE(hit(1, 1));
    EXPECT_EQ(Press({111, 60}), (Lines{"w down 11,10 held 1"}));
}

TEST_F(WindowInput, TheReleaseComesToWhoeverGotThePressEvenOffTheScreen) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    const Handle below = Window(0, "v", {100, 50, 300, 250});
    windows_.BringToFront(w_);
    const std::vector<std::function<void()>> mishaps{
        [&] { windows_.ShowWindow(a, SW_HIDE); }, [&] { windows_.ShowWindow(w_, SW_HIDE); },
        [&] { windows_.SetMinimised(w_, true); }, [&] { windows_.EnableWindow(a, false); },
        [&] { windows_.BringToFront(below); },
    };
    for (const auto& mishap : mishaps) {
        EXPECT_EQ(Press({115, 67}, 2), (Lines{"a down2 5,7 held 2"}));
        mishap();
        log_.Take();
        EXPECT_EQ(windows_.GetCapture(), a);
        EXPECT_EQ(Move({120, 70}), (Lines{"a move 10,10 held 2"}));
        EXPECT_EQ(Release({120, 70}, 2), (Lines{"a up2 10,10"}));
        EXPECT_EQ(windows_.GetCapture(), 0);
        windows_.EnableWindow(a, true);
        windows_.ShowWindow(a, SW_SHOW);
        windows_.ShowWindow(w_, SW_SHOW);
        windows_.SetMinimised(w_, false);
        windows_.BringToFront(w_);
        windows_.Sleep(1000);
        log_.Take();
    }
}

TEST_F(WindowInput, AWindowlessOneIsAnsweredByItsParentButGetsTheMouse) {
    const Handle label = Window(w_, "label", {10, 10, 50, 50});
    windows_.SetWindowless(label, true);
    EXPECT_EQ(windows_.WindowFromPoint({112, 62}), w_);
    EXPECT_EQ(Move({112, 62}), (Lines{"label move 2,2"}));
    EXPECT_EQ(Press({112, 62}), (Lines{"label down 2,2 held 1"}));
    EXPECT_EQ(Release({112, 62}), (Lines{"label up 2,2"}));
}

TEST_F(WindowInput, MessagesTellThePlaceAndWhatIsHeld) {
    Window(w_, "a", {10, 10, 50, 50});
    EXPECT_EQ(Move({115, 67}), (Lines{"a move 5,7"}));
    EXPECT_EQ(Move({115, 67}, 7), (Lines{"a move 5,7 held 44"}));  // 4 Shift, 8 Ctrl, 32 Alt
    EXPECT_EQ(windows_.Modifiers(), 7);
    EXPECT_EQ(Press({115, 67}, 1, 1), (Lines{"a down 5,7 held 5"}));
    EXPECT_EQ(windows_.Modifiers(), 1);
    EXPECT_EQ(Move({115, 68}), (Lines{"a move 5,8 held 1"}));
    EXPECT_EQ(Release({115, 67}, 1, 2), (Lines{"a up 5,7 held 8"}));
    EXPECT_EQ(Press({115, 67}, 2), (Lines{"a down2 5,7 held 2"}));
    EXPECT_EQ(Release({115, 67}, 2), (Lines{"a up2 5,7"}));
    EXPECT_EQ(Press({115, 67}, 4), (Lines{"a down4 5,7 held 16"}));
    EXPECT_EQ(Release({115, 67}, 4), (Lines{"a up4 5,7"}));
    EXPECT_EQ(Press({115, 67}, 3), Lines{});  // no button that we know
    EXPECT_EQ(Move({50, 50}), Lines{});       // over none of our windows
}

TEST_F(WindowInput, WhileAButtonIsHeldItsWindowHasThePointer) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    Window(w_, "b", {60, 10, 90, 50});
    Press({115, 65});
    EXPECT_EQ(windows_.GetCapture(), a);
    EXPECT_EQ(Move({165, 65}), (Lines{"a move 55,5 held 1"}));
    EXPECT_EQ(Move({5, 5}), (Lines{"a move -105,-55 held 1"}));
    EXPECT_EQ(Release({165, 65}), (Lines{"a up 55,5"}));
    EXPECT_EQ(windows_.GetCapture(), 0);
    EXPECT_EQ(Move({165, 65}), (Lines{"b move 5,5"}));
}

TEST_F(WindowInput, ThePointerIsFreeWhenTheLastButtonIsUp) {
    Window(w_, "a", {10, 10, 50, 50});
    Window(w_, "b", {60, 10, 90, 50});
    Press({115, 65});
    EXPECT_EQ(Press({165, 65}, 2), (Lines{"a down2 55,5 held 3"}));
    EXPECT_EQ(Release({165, 65}, 1), (Lines{"a up 55,5 held 2"}));
    EXPECT_EQ(Move({165, 66}), (Lines{"a move 55,6 held 2"}));
    EXPECT_EQ(Release({165, 65}, 2), (Lines{"a up2 55,5"}));
    EXPECT_EQ(Press({165, 65}, 2), (Lines{"b down2 5,5 held 2"}));
}

TEST_F(WindowInput, TheCaptureIsOverWhenTheWindowHearsOfTheLastRelease) {
    Handle captured = -1;
    const Handle a =
        windows_.CreateWindow(w_, {10, 10, 50, 50}, [&](const Message& message) -> Long {
            captured = message.id == WM_LBUTTONUP ? windows_.GetCapture() : captured;
            return 0;
        });
    windows_.ShowWindow(a, SW_SHOW);
    Press({115, 65});
    EXPECT_EQ(windows_.GetCapture(), a);
    Release({115, 65});
    EXPECT_EQ(captured, 0);
}

TEST_F(WindowInput, APressOutsideOfAllWindowsIsNobodys) {
    EXPECT_EQ(Press({5, 5}), Lines{});
    EXPECT_EQ(Release({5, 5}), Lines{});
    EXPECT_EQ(Press({115, 65}), (Lines{"w down 15,15 held 1"}));
}

TEST_F(WindowInput, AWindowThatEndsWhileItHasThePointerLetsItGo) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    Press({115, 65});
    windows_.DestroyWindow(a);
    log_.Take();
    EXPECT_EQ(windows_.GetCapture(), 0);
    EXPECT_EQ(Move({115, 65}), (Lines{"w move 15,15 held 1"}));
    EXPECT_EQ(Release({115, 65}), (Lines{"w up 15,15"}));
}

TEST_F(WindowInput, EachNotchOfTheWheelIsAMessageToWhatIsUnderThePointer) {
    Window(w_, "a", {10, 10, 50, 50});
    // 120 * 65536 = 7864320; the point in screen pixels, 65 * 65536 + 115 = 4259955.
    EXPECT_EQ(After(WheelTurned{{115, 65}, 2, 0}),
              (Lines{"a 522 7864320 4259955", "a 522 7864320 4259955"}));
    EXPECT_EQ(After(WheelTurned{{115, 65}, -1, 0}), (Lines{"a 522 -7864320 4259955"}));
    EXPECT_EQ(After(WheelTurned{{115, 65}, 1, 2}), (Lines{"a 522 7864328 4259955"}));
    EXPECT_EQ(After(WheelTurned{{115, 65}, -1, 1}), (Lines{"a 522 -7864316 4259955"}));
    EXPECT_EQ(After(WheelTurned{{115, 65}, 0, 0}), Lines{});
}

TEST_F(WindowInput, TheWheelGoesPastMarksAndElsewhereToTheFocus) {
    const Handle label = Window(w_, "label", {10, 10, 50, 50});
    windows_.SetWindowless(label, true);
    EXPECT_EQ(After(WheelTurned{{115, 65}, 1, 0}), (Lines{"w 522 7864320 4259955"}));
    EXPECT_EQ(After(WheelTurned{{5, 5}, 1, 0}), Lines{});
    windows_.SetFocus(label);
    log_.Take();
    EXPECT_EQ(After(WheelTurned{{5, 5}, 1, 0}), (Lines{"label 522 7864320 327685"}));
}

TEST_F(WindowInput, KeysGoToTheFocusWithTheirModifiers) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    EXPECT_EQ(After(KeyChanged{65, 3, true}), Lines{});  // nobody has it
    EXPECT_EQ(windows_.Modifiers(), 3);
    windows_.SetFocus(a);
    log_.Take();
    EXPECT_EQ(After(KeyChanged{65, 3, true}), (Lines{"a 256 65 3"}));
    EXPECT_EQ(After(KeyChanged{65, 0, false}), (Lines{"a 257 65 0"}));
    EXPECT_EQ(windows_.Modifiers(), 0);
}

TEST_F(WindowInput, TypedTextIsAMessageAUnit) {
    const Handle a = Window(w_, "a", {10, 10, 50, 50});
    EXPECT_EQ(After(TextTyped{u"x"}), Lines{});
    windows_.SetFocus(a);
    log_.Take();
    EXPECT_EQ(After(TextTyped{u"a\U0001D11E"}),
              (Lines{"a 258 97 0", "a 258 55348 0", "a 258 56606 0"}));  // D834, DD1E
}

TEST_F(WindowInput, AWindowThatTheDesktopMovedIsThere) {
    windows_.Deliver(MovedByDesktop{w_, {400, 300}});
    EXPECT_EQ(windows_.GetRect(w_), (Rect{400, 300, 600, 500}));
    EXPECT_EQ(Move({410, 310}), (Lines{"w move 10,10"}));
    windows_.Deliver(MovedByDesktop{999, {1, 1}});
}

TEST_F(WindowInput, PointsSurviveTheWayThroughAMessageWord) {
    for (const Point point :
         {Point{0, 0}, Point{5, 7}, Point{-1, -1}, Point{-300, 200}, Point{32767, -32768}}) {
        EXPECT_EQ(PointOf(WordOf(point)), point);
    }
    EXPECT_EQ(WordOf({3, 2}), 2 * 65536 + 3);
}

}  // namespace
}  // namespace platform
