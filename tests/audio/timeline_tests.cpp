// Which item, and which place of it, is heard in a frame that has gone to the output.
#include "host/engine/timeline.h"

#include <gtest/gtest.h>

namespace audio_tests {
namespace {

using veldrin::Time;
using veldrin::Timeline;
using Place = veldrin::Timeline::Place;

constexpr int kHertz = 1000;  // a frame is a millisecond

class TimelineTest : public testing::Test {
  protected:
    TimelineTest() { timeline_.Begin(kHertz); }
    Timeline timeline_;
};

TEST_F(TimelineTest, NothingHasNoPlace) {
    EXPECT_EQ(timeline_.PlaceOf(0), Place());
    EXPECT_EQ(timeline_.ReadAt(100), 0);
}

TEST_F(TimelineTest, AnItemIsCountedFromItsOwnFirstSample) {
    timeline_.Read(500, {1, 0, Time(0)});
    timeline_.Read(700, {2, 0, Time(0)});
    timeline_.Wrote(1200, 0, 1);
    EXPECT_EQ(timeline_.PlaceOf(0), (Place{1, 0, Time(0)}));
    EXPECT_EQ(timeline_.PlaceOf(499), (Place{1, 0, std::chrono::milliseconds(499)}));
    EXPECT_EQ(timeline_.PlaceOf(500), (Place{2, 0, Time(0)}));
    EXPECT_EQ(timeline_.PlaceOf(1100), (Place{2, 0, std::chrono::milliseconds(600)}));
    EXPECT_EQ(timeline_.PlaceOf(5000), (Place{2, 0, std::chrono::milliseconds(700)}));
}

TEST_F(TimelineTest, ATempoMovesThePlaceAndNotTheSeam) {
    timeline_.Read(600, {1, 0, Time(0)});
    timeline_.Read(600, {2, 0, Time(0)});
    timeline_.Wrote(300, 0, 1);      // 300 of the first item
    timeline_.Wrote(600, 300, 1.5);  // and 900 more
    EXPECT_EQ(timeline_.PlaceOf(400), (Place{1, 0, std::chrono::milliseconds(450)}));
    EXPECT_EQ(timeline_.PlaceOf(500), (Place{2, 0, Time(0)}));
    EXPECT_EQ(timeline_.PlaceOf(900), (Place{2, 0, std::chrono::milliseconds(600)}));
    EXPECT_EQ(timeline_.ReadAt(900), 1200);
}

TEST_F(TimelineTest, NothingMovesInSilence) {
    timeline_.Read(200, {1, 0, Time(0)});
    timeline_.Wrote(100, 0, 1);
    timeline_.Wrote(1000, 100, 0);
    timeline_.Wrote(100, 100, 1);
    EXPECT_EQ(timeline_.PlaceOf(700), (Place{1, 0, std::chrono::milliseconds(100)}));
    EXPECT_EQ(timeline_.PlaceOf(1150), (Place{1, 0, std::chrono::milliseconds(150)}));
}

TEST_F(TimelineTest, AJumpIsToldByItsNumber) {
    timeline_.Read(100, {1, 0, Time(0)});
    timeline_.Read(100, {1, 1, std::chrono::seconds(300)});
    timeline_.Wrote(200, 0, 1);
    EXPECT_EQ(timeline_.PlaceOf(99), (Place{1, 0, std::chrono::milliseconds(99)}));
    EXPECT_EQ(timeline_.PlaceOf(100), (Place{1, 1, std::chrono::seconds(300)}));
}

TEST_F(TimelineTest, AHoleInTheMediumIsNoJump) {
    timeline_.Read(100, {1, 0, Time(0)});
    timeline_.Read(100, {1, 0, std::chrono::seconds(10)});
    timeline_.Wrote(200, 0, 1);
    EXPECT_EQ(timeline_.PlaceOf(150),
              (Place{1, 0, std::chrono::seconds(10) + std::chrono::milliseconds(50)}));
}

TEST_F(TimelineTest, TheSilenceThatPushesATailOutIsOfTheItem) {
    timeline_.Read(100, {1, 0, Time(0)});
    timeline_.Read(50, {});
    timeline_.Wrote(150, 0, 1);
    EXPECT_EQ(timeline_.PlaceOf(140), (Place{1, 0, std::chrono::milliseconds(100)}));
    timeline_.Read(10, {2, 0, Time(0)});
    timeline_.Wrote(10, 150, 1);
    EXPECT_EQ(timeline_.PlaceOf(155), (Place{2, 0, std::chrono::milliseconds(5)}));
}

TEST_F(TimelineTest, WhatWasHeardIsForgottenAndTheRestStays) {
    for (int i = 0; i < 100; ++i) {
        timeline_.Read(1000, {static_cast<std::uint64_t>(i + 1), 0, Time(0)});
        timeline_.Wrote(1000, i * 1000.0, i % 2 == 0 ? 1.0 : 0.999);
        timeline_.Heard(i * 1000);
    }
    EXPECT_EQ(timeline_.PlaceOf(99500), (Place{100, 0, Time(499500000)}));
    EXPECT_EQ(timeline_.FramesRead(), 100000);
    EXPECT_EQ(timeline_.FramesWritten(), 100000);
}

TEST_F(TimelineTest, HoursAreExact) {
    constexpr int kRate = 44100;
    timeline_.Begin(kRate);
    Time at{0};
    for (std::int64_t frame = 0; frame < std::int64_t{36000} * kRate; frame += kRate / 10) {
        timeline_.Read(kRate / 10, {1, 0, veldrin::TimeOf(frame, kRate)});
        at = veldrin::TimeOf(frame, kRate);
    }
    timeline_.Wrote(timeline_.FramesRead(), 0, 1);
    EXPECT_EQ(timeline_.PlaceOf(timeline_.FramesWritten()).at, std::chrono::seconds(36000));
    EXPECT_EQ(at, std::chrono::seconds(36000) - std::chrono::milliseconds(100));
}

}  // namespace
}  // namespace audio_tests
