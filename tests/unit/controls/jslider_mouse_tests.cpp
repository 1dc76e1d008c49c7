// The slider under the mouse: from a point to a value, and the order of its events.
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "tests/unit/support/slider_bench.h"

namespace sarnel {
namespace {

using support::ASlider;

TEST_F(ASlider, AClickOnTheTrackJumpsThereAndScrollsTwiceEachTimeBeforeTheMouseEvent) {
    PlaceAt(45, 4);
    bench_.Press();
    EXPECT_TRUE(slider_.IsSliderMouseControled());
    EXPECT_EQ(slider_.Value(), 40);  // 45 less half the stick
    EXPECT_EQ(slider_.StickLeft(), 40);
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseDown 1 0 45 4"}));
    bench_.Release();
    EXPECT_FALSE(slider_.IsSliderMouseControled());
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseUp 1 0 45 4"}));
    EXPECT_EQ(slider_.Value(), 40);
}

// The stick is under the pointer from the first press on: what it hears comes in the slider's own
// coordinates.
TEST_F(ASlider, ADragFollowsThePointerFromTrackOrStickAlike) {
    slider_.Value(50);
    PlaceAt(52, 3);  // on the stick
    bench_.Press();
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseDown 1 0 52 3"}));
    EXPECT_EQ(slider_.Value(), 47);
    MoveTo(85, -40);
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseMove 1 0 85 -40"}));
    EXPECT_EQ(slider_.Value(), 80);
    MoveTo(15, 200);
    bench_.Release();
    EXPECT_EQ(bench_.Events(),
              (Events{"Scroll", "MouseMove 1 0 15 200", "Scroll", "MouseUp 1 0 15 200"}));
    EXPECT_EQ(slider_.Value(), 10);
}

// The stick is 10 wide and stands around the pointer; its picture is 1, pressed 2.
TEST_F(ASlider, ItsStickIsOnTheScreenBeforeItsOwnerHears) {
    std::vector<Colour> shown;
    Long at = 45;
    const auto look = [&](const auto&...) { shown.push_back(bench_.OnScreen({20 + at, 34})); };
    PlaceAt(at, 4);
    bench_.windows.DoEvents();
    EXPECT_EQ(bench_.OnScreen({20 + at, 34}), support::kRed);
    slider_.onScroll = look;
    bench_.Press();
    MoveTo(at = 85, 4);
    EXPECT_EQ(shown, (std::vector<Colour>{1, 1}));
    bench_.Release();
    shown.clear();
    bench_.Press();  // on the stick, which the pointer then leaves until it follows
    MoveTo(at = 15, 4);
    EXPECT_EQ(shown, (std::vector<Colour>{2, 1}));
    bench_.Release();
}

TEST_F(ASlider, TheFlagIsTrueInTheEventsOfAPressAndFalseInThoseOfTheRelease) {
    std::vector<bool> flags;
    slider_.onScroll = [&] { flags.push_back(slider_.IsSliderMouseControled()); };
    PlaceAt(45, 4);
    bench_.Press();
    MoveTo(50, 4);
    bench_.Release();
    EXPECT_EQ(flags, (std::vector<bool>{true, true, false}));
}

TEST_F(ASlider, BeyondTheEndsItIsAtTheEnds) {
    PlaceAt(0, 4);  // 5 left of the first place
    bench_.Press();
    EXPECT_EQ(slider_.Value(), 0);
    EXPECT_EQ(slider_.StickLeft(), 0);
    MoveTo(-300, 4);
    EXPECT_EQ(slider_.Value(), 0);
    MoveTo(109, 4);
    EXPECT_EQ(slider_.Value(), 100);
    MoveTo(5000, 4);
    EXPECT_EQ(slider_.Value(), 100);
    EXPECT_EQ(slider_.StickLeft(), 100);
}

// With a Max of 10 a value is 10 pixels wide; 5, 15 and 25 pixels are halves between two values.
TEST_F(ASlider, TheStickLandsWhereTheRoundedValuePutsIt) {
    slider_.Max(10);
    PlaceAt(45, 4);
    bench_.Press();
    const std::vector<std::pair<Long, Long>> cases{{9, 0},  {10, 0}, {11, 1},
                                                   {20, 2}, {30, 2}, {31, 3}};
    for (const auto& [x, value] : cases) {
        MoveTo(x, 4);
        EXPECT_EQ(slider_.Value(), value) << x;
        EXPECT_EQ(slider_.StickLeft(), value * 10) << x;
    }
}

// A stick of 13: its middle lies at 6.5, and half a pixel goes to the even one. The travel is then
// 97, as is Max, so that the place is the value.
TEST_F(ASlider, AnOddStickIsCentredOnTheEvenPixel) {
    slider_.StickMaskPicture(support::Strip({13, 10}, {0}));
    slider_.Max(97);
    PlaceAt(45, 4);
    bench_.Press();
    for (const auto& [x, left] : std::vector<std::pair<Long, Long>>{{9, 2}, {10, 4}, {11, 4}}) {
        MoveTo(x, 4);
        EXPECT_EQ(slider_.Value(), left) << x;
    }
}

TEST_F(ASlider, AVerticalOneGoesByTheHeight) {
    MakeVertical();
    PlaceAt(4, 35);
    bench_.Press();
    EXPECT_EQ(slider_.Value(), 30);
    EXPECT_EQ(slider_.StickTop(), 30);
    MoveTo(-90, 109);
    EXPECT_EQ(slider_.Value(), 100);
    bench_.Release();
}

TEST_F(ASlider, OtherButtonsRaiseTheirEventsAndDoNothing) {
    slider_.Value(70);
    PlaceAt(20, 4);
    bench_.Press(2);
    MoveTo(30, 4);
    bench_.Release(2);
    EXPECT_EQ(bench_.Events(),
              (Events{"MouseDown 2 0 20 4", "MouseMove 2 0 30 4", "MouseUp 2 0 30 4"}));
    EXPECT_EQ(slider_.Value(), 70);
    EXPECT_FALSE(slider_.IsSliderMouseControled());
}

// Both held make 3, which is not the left button alone.
TEST_F(ASlider, BothButtonsHeldMoveNothing) {
    PlaceAt(45, 4);
    bench_.Press(1);
    bench_.Press(2);
    bench_.Events();
    MoveTo(80, 4);
    EXPECT_EQ(bench_.Events(), (Events{"MouseMove 3 0 80 4"}));
    EXPECT_EQ(slider_.Value(), 40);
    EXPECT_TRUE(slider_.IsSliderMouseControled());
}

TEST_F(ASlider, WithoutTravelTheLastMappedValueIsWrittenAgainAndScrolls) {
    PlaceAt(45, 4);
    bench_.Press();
    bench_.Release();
    slider_.Width(10);
    slider_.Value(90);
    PlaceAt(3, 4);
    bench_.Press();
    EXPECT_EQ(slider_.Value(), 40);
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseDown 1 0 3 4"}));
}

// 100 x 32768 / 100 does not fit in 16 bits, 99 x 32768 / 100 = 32440.3 does.
TEST_F(ASlider, AboveAMaxOf32767TheMouseReachesNoMore) {
    slider_.Max(32768);
    PlaceAt(104, 4);
    bench_.Press();
    EXPECT_EQ(slider_.Value(), 32440);
    bench_.Events();
    MoveTo(105, 4);
    EXPECT_EQ(slider_.Value(), 32440);
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseMove 1 0 105 4"}));
    slider_.Max(32767);
    MoveTo(106, 4);
    EXPECT_EQ(slider_.Value(), 32767);
}

// 50 x 42949673 is the first product beyond 32 bits; 49 times that, divided by 100, is beyond 16.
TEST_F(ASlider, AProductBeyond32BitsKeepsTheLastMappedValue) {
    PlaceAt(45, 4);
    bench_.Press();
    slider_.Max(42949673);
    MoveTo(55, 4);
    EXPECT_EQ(slider_.Value(), 40);
    MoveTo(5, 4);
    EXPECT_EQ(slider_.Value(), 0);
}

TEST_F(ASlider, AMaxOfZeroScrollsAtZero) {
    slider_.Value(30);
    slider_.Max(0);
    PlaceAt(80, 4);
    bench_.Press();
    EXPECT_EQ(slider_.Value(), 0);
    EXPECT_EQ(slider_.StickLeft(), 30);
    EXPECT_EQ(bench_.Events(), (Events{"Scroll", "MouseDown 1 0 80 4"}));
}

TEST_F(ASlider, WithoutAPictureItsStickStillWorks) {
    slider_.Picture(nullptr);
    PlaceAt(45, 4);
    bench_.Press();
    EXPECT_EQ(slider_.Value(), 40);
    EXPECT_EQ(slider_.StickLeft(), 40);
}

TEST_F(ASlider, ADisabledOneGetsNoMouse) {
    slider_.Enabled(false);
    PlaceAt(45, 4);
    bench_.Press();
    bench_.Release();
    EXPECT_EQ(bench_.Events(), Events{});
    EXPECT_EQ(slider_.Value(), 0);
}

TEST_F(ASlider, ThatEndsWithItsWindowInScrollRaisesNothingMore) {
    slider_.onScroll = [&] { bench_.windows.DestroyWindow(bench_.holder.HWnd()); };
    PlaceAt(5, 4);  // on the stick
    bench_.Press();
    EXPECT_EQ(bench_.Events(), (Events{"Scroll"}));
}

TEST_F(ASlider, NeverTakesTheFocus) {
    bench_.windows.SetFocus(bench_.holder.HWnd());
    PlaceAt(45, 4);
    bench_.Press();
    bench_.Release();
    EXPECT_EQ(bench_.windows.GetFocus(), bench_.holder.HWnd());
}

}  // namespace
}  // namespace sarnel
