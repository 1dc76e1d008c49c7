// The pulse's colours and the swinging title at their limits.
#include <gtest/gtest.h>

#include "core/base/failure.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

constexpr platform::Colour Rgb(Long red, Long green, Long blue) {
    return red + green * 256 + blue * 65536;
}

// Bytes are blue, green, red. 50 / 50 is a step of 1, of which n + 1 are added.
TEST(BlendColor, AddsOneStepMoreThanTheLevel) {
    EXPECT_EQ(BlendColor(0, {10, 20, 30}, {60, 70, 80}), Rgb(31, 21, 11));
    EXPECT_EQ(BlendColor(49, {10, 20, 30}, {60, 70, 80}), Rgb(80, 70, 60));
    EXPECT_EQ(BlendColor(50, {10, 20, 30}, {60, 70, 80}), Rgb(81, 71, 61));
}

// 25 / 50 is half a step, which is none; 75 / 50 is one and a half, which is two.
TEST(BlendColor, RoundsHalvesToTheEvenStep) {
    EXPECT_EQ(BlendColor(9, {0, 0, 0}, {25, 75, 24}), Rgb(0, 20, 0));
}

TEST(BlendColor, CutsAt255) {
    EXPECT_EQ(BlendColor(50, {128, 200, 255}, {255, 255, 255}), Rgb(255, 251, 255));
}

TEST(BlendColor, FailsWhereAByteGoesDown) {
    EXPECT_THROW(BlendColor(0, {10, 10, 10}, {9, 10, 10}), ComponentError);
    EXPECT_THROW(BlendColor(0, {10, 10, 10}, {10, 10, 9}), ComponentError);
}

// A pulse that cannot be blended leaves the colour, and the title and the level go on.
TEST(Pulse, AFailingBlendLeavesTheColour) {
    auto world = support::WorldBuilder().Started();
    world->State().PulseColorFrom = {10, 10, 10};
    world->State().PulseColorTo = {0, 0, 0};
    world->List().FocusRectColor(77);
    const Long before = world->State().PulseLevel;
    ScrollTimerProc(world->Window(), 12);
    EXPECT_EQ(world->List().FocusRectColor(), 77);
    EXPECT_EQ(world->List().SelTextColor(), 77);
    EXPECT_EQ(world->State().PulseLevel, before + 2);
}

}  // namespace
}  // namespace sarnel
