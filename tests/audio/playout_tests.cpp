// What goes to the output, frame by frame: how items are joined, and what changes do to them.
#include "host/engine/playout.h"

#include <gst/gst.h>

#include <algorithm>
#include <cmath>

#include "engine_fixture.h"

namespace audio_tests {
namespace {

using veldrin::Effects;
using veldrin::Item;
using veldrin::kSides;
using veldrin::Playout;
using veldrin::Time;
using veldrin::Timeline;

constexpr std::size_t kPortionFrames = 441;

class PlayoutTest : public EngineTest {
  protected:
    PlayoutTest() { playout_.Begin(44100); }

    Playout::Entry Entry(const Sound& sound) {
        ++number_;
        auto item = std::make_shared<Item>([] {});
        EXPECT_TRUE(item->Prepare({Wav("item" + std::to_string(number_) + ".wav", sound)}));
        return {item, number_};
    }

    /// Takes what is there, and what tempo and pitch hold back, until all is over.
    void RenderAll() {
        EXPECT_TRUE(WaitUntil([&] {
            const std::size_t before = out_.samples.size();
            playout_.Render(out_.samples, kPortionFrames, Playout::Gaps::kTail);
            return playout_.IsEmpty() && out_.samples.size() == before;
        }));
    }
    void RenderFrames(std::size_t frames) {
        const std::size_t end = out_.samples.size() + frames * kSides;
        EXPECT_TRUE(WaitUntil([&] {
            const std::size_t missing = (end - out_.samples.size()) / kSides;
            playout_.Render(out_.samples, std::min(missing, kPortionFrames), Playout::Gaps::kNone);
            return out_.samples.size() == end;
        }));
    }
    /// The largest step between two samples of a side, from a frame on.
    float LargestStep(std::size_t from = 0) const {
        float largest = 0;
        for (std::size_t i = (from + 1) * kSides; i < out_.samples.size(); ++i) {
            largest = std::max(largest, std::abs(out_.samples[i] - out_.samples[i - kSides]));
        }
        return largest;
    }

    const bool started_ = gst_init_check(nullptr, nullptr, nullptr) == TRUE;
    Timeline timeline_;
    Playout playout_{timeline_};
    Sound out_;
    std::uint64_t number_ = 0;
};

/// A piece of this sound, cut at frames.
Sound Cut(const Sound& sound, std::size_t from, std::size_t to) {
    const auto begin = sound.samples.begin();
    const auto at = [&](std::size_t frame) {
        return begin + static_cast<std::ptrdiff_t>(frame * kSides);
    };
    return {sound.rate, sound.channels, {at(from), at(to)}};
}

TEST_F(PlayoutTest, ItemsAreJoinedSampleOnSample) {
    const Sound noise = Noise(1.0);
    const std::size_t cuts[] = {0, 1, 17000, 17001, 40011, noise.Frames()};
    for (std::size_t i = 1; i < std::size(cuts); ++i) {
        playout_.Append(Entry(Cut(noise, cuts[i - 1], cuts[i])));
    }
    RenderAll();
    EXPECT_EQ(out_.samples, noise.samples);
    EXPECT_EQ(timeline_.PlaceOf(17000), (Timeline::Place{3, 0, Time(0)}));
    EXPECT_EQ(timeline_.PlaceOf(40010).item, 4U);
}

TEST_F(PlayoutTest, WhatIsNotThereYetIsSilence) {
    playout_.Render(out_.samples, 100, Playout::Gaps::kSilence);
    EXPECT_EQ(out_.samples, std::vector<float>(200, 0.0F));
    EXPECT_FALSE(playout_.Sounds());
    playout_.Render(out_.samples, 100, Playout::Gaps::kNone);
    EXPECT_EQ(out_.Frames(), 100U);
}

TEST_F(PlayoutTest, ASoundThatIsBrokenOffFadesAndTheNextOneBeginsWithItsFirstSample) {
    const Sound next = Noise(0.5);
    playout_.Append(Entry(Tone(441, 2.0)));
    RenderFrames(1025);
    EXPECT_TRUE(playout_.Sounds());
    const std::size_t before = out_.Frames();
    playout_.FadeOut(out_.samples);
    EXPECT_LE(LargestStep(), 0.25F * 0.0629F);  // the tone's own slope, 2 pi 441/44100
    EXPECT_EQ(out_.samples.back(), 0.0F);
    const auto faded = static_cast<double>(out_.Frames() - before) / 44100;
    EXPECT_GE(faded, 0.005);
    EXPECT_LE(faded, 0.010);
    playout_.Replace(Entry(next));
    out_.samples.clear();
    RenderAll();
    EXPECT_EQ(out_.samples, next.samples);
}

TEST_F(PlayoutTest, PausedThereIsSilenceAndThenItGoesOnFromTheSamePlace) {
    playout_.Append(Entry(Tone(441, 2.0)));
    RenderFrames(4410);
    playout_.FadeOut(out_.samples);
    playout_.SetPaused(true);
    const Timeline::Place place = timeline_.PlaceOf(timeline_.FramesWritten());
    std::vector<float> silence;
    playout_.Render(silence, 1000, Playout::Gaps::kSilence);
    EXPECT_EQ(silence, std::vector<float>(2000, 0.0F));
    EXPECT_EQ(timeline_.PlaceOf(timeline_.FramesWritten()), place);
    playout_.SetPaused(false);
    RenderFrames(4410);
    EXPECT_LE(LargestStep(), 0.25F * 0.0629F);
    EXPECT_EQ(timeline_.PlaceOf(timeline_.FramesWritten()).at,
              place.at + veldrin::TimeOf(4410, 44100));
}

TEST_F(PlayoutTest, AJumpIsFollowedWithoutAClick) {
    const auto entry = Entry(Tone(441, 20.0) + Tone(882, 10.0));
    playout_.Append(entry);
    RenderFrames(5000);
    EXPECT_FALSE(playout_.IsTurnDue());
    ASSERT_TRUE(entry.item->Jump(std::chrono::seconds(25)));
    EXPECT_TRUE(playout_.IsTurnDue());
    entry.item->DoJump();
    playout_.FadeOut(out_.samples);
    playout_.Turn();
    EXPECT_FALSE(playout_.IsTurnDue());
    const std::size_t jumped = out_.Frames();
    RenderFrames(10000);
    EXPECT_LE(LargestStep(), 0.25F * 0.1257F);
    const auto after = out_.Channel(0, static_cast<double>(jumped) / 44100, 1.0);
    EXPECT_NEAR(FrequencyOf(after, 44100), 882.0, 3.0);
    EXPECT_EQ(timeline_.PlaceOf(static_cast<std::int64_t>(jumped)),
              (Timeline::Place{1, 1, std::chrono::seconds(25)}));
}

TEST_F(PlayoutTest, AJumpInTheLastOfSeveralItemsLeavesTheOthersOut) {
    playout_.Append(Entry(Tone(441, 1.0)));
    const auto last = Entry(Tone(882, 5.0));
    playout_.Append(last);
    RenderFrames(1000);
    ASSERT_TRUE(last.item->Jump(std::chrono::seconds(1)));
    last.item->DoJump();
    playout_.Turn();
    out_.samples.clear();
    RenderAll();
    EXPECT_NEAR(out_.Seconds(), 4.0, 0.001);
}

TEST_F(PlayoutTest, TheEffectsRunOnOverASeam) {
    Effects effects;
    effects.echo = 1;
    playout_.SetEffects(effects);
    Sound click = Tone(0, 0.05);
    click.samples[0] = 0.5F;
    playout_.Append(Entry(click));
    playout_.Append(Entry(Tone(0, 0.2)));
    RenderAll();
    EXPECT_NEAR(Peak(out_.Channel(0, 0.095, 0.105)), 0.25F, 0.01F);
}

TEST_F(PlayoutTest, ATempoRunsOnOverASeamAndItsTailIsThere) {
    Effects effects;
    effects.tempo = 50;
    playout_.SetEffects(effects);
    playout_.Replace({});
    const Sound tone = Tone(441, 3.0);
    for (const auto& [from, to] : {std::pair(0, 44000), {44000, 88001}, {88001, 132300}}) {
        playout_.Append(
            Entry(Cut(tone, static_cast<std::size_t>(from), static_cast<std::size_t>(to))));
    }
    RenderAll();
    EXPECT_NEAR(static_cast<double>(out_.Frames()), 88200, 2);
    // A seam that were not one for the stretching would be heard as a step.
    EXPECT_LE(LargestStep(), 0.25F * 0.0629F * 1.5F);
    EXPECT_GT(Peak(out_.Channel(0, 1.99, 2.0)), 0.2F);
}

TEST_F(PlayoutTest, GoingToRestLosesAndRepeatsNothing) {
    Effects effects;
    effects.tempo = 20;
    playout_.SetEffects(effects);
    playout_.Replace({});
    const Sound noise = Noise(3.0);
    playout_.Append(Entry(noise));
    RenderFrames(44100);
    playout_.SetEffects({});
    playout_.FadeOut(out_.samples);
    playout_.Turn();
    const auto place =
        static_cast<std::size_t>(std::lround(timeline_.ReadAt(timeline_.FramesWritten())));
    EXPECT_NEAR(static_cast<double>(place), 1.2 * static_cast<double>(out_.Frames()), 2);
    out_.samples.clear();
    RenderAll();
    // From where the listener is, but for what has faded in, to the end.
    const std::size_t faded = 300 * kSides;
    ASSERT_EQ(out_.Frames(), noise.Frames() - place);
    EXPECT_TRUE(
        std::equal(out_.samples.begin() + faded, out_.samples.end(),
                   noise.samples.begin() + static_cast<std::ptrdiff_t>(place * kSides) + faded));
}

TEST_F(PlayoutTest, VolumeAndBandsMoveWithoutSteps) {
    playout_.Append(Entry(Tone(441, 5.0)));
    RenderFrames(4410);
    Effects effects;
    for (const double gain : {0.2, 1.0, 0.0, 0.7, 1.0}) {
        playout_.SetGain(gain);
        RenderFrames(1000);
    }
    for (const int decibels : {-15, 0, -5}) {
        effects.mid = decibels;
        effects.bass = -decibels / 3;
        playout_.SetEffects(effects);
        RenderFrames(8820);
    }
    EXPECT_LE(LargestStep(), 0.25F * 0.0629F * 1.5F);
}

TEST_F(PlayoutTest, BandsPassTheirRestWithoutAClick) {
    playout_.Append(Entry(Tone(110, 5.0, 44100, 2, 0.06)));
    RenderFrames(4410);
    Effects effects;
    for (const int decibels : {3, -15, 0, -15, 3, 0}) {
        SCOPED_TRACE(decibels);
        effects.bass = decibels;
        playout_.SetEffects(effects);
        const std::size_t before = out_.Frames();
        RenderFrames(17640);
        const std::vector<float>& all = out_.samples;
        float bend = 0;
        for (std::size_t i = before * kSides; i < all.size(); i += kSides) {
            bend = std::max(bend, std::abs(all[i] - 2 * all[i - kSides] + all[i - 2 * kSides]));
        }
        EXPECT_LT(bend, 0.001F);  // the tone's own is 0.00001, that of a click 0.004 and more
    }
}

TEST_F(PlayoutTest, TheVolumeIsThereInAHundredthOfASecond) {
    playout_.Append(Entry(Tone(441, 2.0)));
    RenderFrames(4410);
    playout_.SetGain(0.5);
    RenderFrames(8820);
    EXPECT_NEAR(Peak(out_.Channel(0, 0.11, 0.3)), 0.125F, 0.001F);
    EXPECT_GT(Peak(out_.Channel(0, 0.1, 0.102)), 0.2F);
}

TEST_F(PlayoutTest, WhatIsLeftIsCountedAndAnItemThatWasReadCanBeJumpedIn) {
    const auto entry = Entry(Tone(441, 0.3));
    playout_.Append(entry);
    ASSERT_TRUE(WaitUntil([&] { return entry.item->IsDecoded(); }));
    EXPECT_EQ(entry.item->FramesLeft(), 13230);
    RenderFrames(1000);
    EXPECT_EQ(playout_.FramesLeft(), 12230);
    RenderAll();
    EXPECT_EQ(playout_.FramesLeft(), 0);
    EXPECT_EQ(playout_.EndOfItems(), 13230);
    ASSERT_TRUE(entry.item->Jump(Time(0)));
    entry.item->DoJump();
    playout_.Restore(entry);
    playout_.Restore(entry);
    playout_.Turn();
    out_.samples.clear();
    RenderAll();
    EXPECT_EQ(out_.Frames(), 13230U);
}

}  // namespace
}  // namespace audio_tests
