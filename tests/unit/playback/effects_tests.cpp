#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;
using Calls = std::vector<FakeHost::Call>;

const std::set<Long> kAllEffects{41, 42, 43, 44, 45, 46, 47};

struct Effect {
    const char* name;
    void (*set)(Long value);
    Long slider;
    Long max;
    Long centre;
    Long impulse;
    std::string setting;
    std::u16string label;
};

std::ostream& operator<<(std::ostream& out, const Effect& effect) {
    return out << effect.name;
}

const std::vector<Effect> kEffects{
    {"Tempo", SetTempo, 3, 100, 50, 41, "Effect_Tempo", u"Tempo = "},
    {"Pitch", SetPitch, 4, 40, 20, 42, "Effect_Pitch", u"Pitch = "},
    {"Echo", SetEcho, 5, 6, 0, 43, "Effect_Echo", u"Echo = "},
    {"Reverb", SetReverb, 6, 20, 0, 44, "Effect_Reverb", u"Reverb = "},
    {"Bass", SetBass, 7, 30, 15, 45, "Effect_Bass", u"Bass = "},
    {"Mid", SetMid, 8, 30, 15, 46, "Effect_Mid", u"Mid = "},
    {"Treble", SetTreble, 9, 30, 15, 47, "Effect_Treble", u"Treble = "},
};

class EachEffect : public ::testing::TestWithParam<Effect> {
  protected:
    /// What the label shows, what is stored, and what the host heard, for a slider's value.
    void Expect(Long value, const std::string& shown, const std::string& stored) {
        const Effect& effect = GetParam();
        world_->host.Forget();
        effect.set(value);
        EXPECT_EQ(world_->Main().lblEffects(effect.slider).Caption(),
                  effect.label + platform::Widen(shown));
        EXPECT_EQ(world_->Setting(effect.setting), stored);
        EXPECT_EQ(world_->host.calls, (Calls{{effect.impulse, shown, "0", "0"}}));
    }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_P(EachEffect, TheEndsOfItsRangeAreSentAndShownLessItsCentreAndStoredAsTheyAre) {
    const Effect& effect = GetParam();
    EXPECT_EQ(world_->Main().sldSkin(effect.slider).Max(), effect.max);
    Expect(0, std::to_string(-effect.centre), "0");
    Expect(effect.max, std::to_string(effect.max - effect.centre), std::to_string(effect.max));
}

TEST_P(EachEffect, TheSliderIsNotMovedByItsRoutine) {
    const Effect& effect = GetParam();
    JSlider& slider = world_->Main().sldSkin(effect.slider);
    slider.Value(3);
    effect.set(5);
    EXPECT_EQ(slider.Value(), 3);
}

TEST_P(EachEffect, AStoredValueIsCutByTheSliderSentAndWrittenBack) {
    const Effect& effect = GetParam();
    world_.reset();
    world_ = WorldBuilder().Setting(effect.setting, "2000000000").Created();
    world_->Impulse(kImpulseAttach);
    world_->Impulse(kImpulseControl, kControlLoad);
    const std::string most = std::to_string(effect.max - effect.centre);
    EXPECT_EQ(world_->host.Of({effect.impulse}), (Calls{{effect.impulse, most, "0", "0"}}));
    EXPECT_EQ(world_->Setting(effect.setting), std::to_string(effect.max));
    EXPECT_EQ(world_->Main().sldSkin(effect.slider).Value(), effect.max);
    EXPECT_EQ(world_->host.Of(kAllEffects).size(), 7U);
}

TEST_P(EachEffect, AnUnreadableStoredValueTakesWhatTheSliderHolds) {
    const Effect& effect = GetParam();
    world_.reset();
    world_ = WorldBuilder().Setting(effect.setting, "much").Created();
    world_->Impulse(kImpulseAttach);
    world_->Impulse(kImpulseControl, kControlLoad);
    const std::string least = std::to_string(-effect.centre);
    EXPECT_EQ(world_->host.Of({effect.impulse}), (Calls{{effect.impulse, least, "0", "0"}}));
    EXPECT_EQ(world_->Setting(effect.setting), "0");
}

TEST_P(EachEffect, AHostThatFailsChangesNothingElse) {
    const Effect& effect = GetParam();
    world_->host.failing = {effect.impulse};
    Expect(2, std::to_string(2 - effect.centre), "2");
}

INSTANTIATE_TEST_SUITE_P(Effects, EachEffect, ::testing::ValuesIn(kEffects),
                         [](const auto& effect) { return std::string(effect.param.name); });

class Tempo : public ::testing::Test {
  protected:
    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(Tempo, SticksAtItsCentre) {
    for (const Long value : {49, 50, 51}) {
        world_->Main().sldSkin(3).Value(value);
        world_->host.Forget();
        SetTempo(value);
        EXPECT_EQ(world_->Main().sldSkin(3).Value(), 50) << value;
        EXPECT_EQ(world_->Main().lblEffects(3).Caption(), u"Tempo = 0");
        EXPECT_EQ(world_->Setting("Effect_Tempo"), "50");
        EXPECT_EQ(world_->host.calls, (Calls{{41, "0", "0", "0"}}));
    }
}

TEST_F(Tempo, BesideTheCentreItIsWhatItIs) {
    world_->Main().sldSkin(3).Value(52);
    world_->host.Forget();
    SetTempo(52);
    SetTempo(48);
    EXPECT_EQ(world_->host.calls, (Calls{{41, "2", "0", "0"}, {41, "-2", "0", "0"}}));
    EXPECT_EQ(world_->Main().lblEffects(3).Caption(), u"Tempo = -2");
    EXPECT_EQ(world_->Setting("Effect_Tempo"), "48");
    EXPECT_EQ(world_->Main().sldSkin(3).Value(), 52);
}

TEST_F(Tempo, NoOtherEffectSticks) {
    world_->host.Forget();
    SetPitch(19);
    SetBass(16);
    EXPECT_EQ(world_->host.calls, (Calls{{42, "-1", "0", "0"}, {45, "1", "0", "0"}}));
    EXPECT_EQ(world_->Main().lblEffects(4).Caption(), u"Pitch = -1");
}

TEST_F(Tempo, RoutinesCheckNoRange) {
    world_->host.Forget();
    SetEcho(1000);
    SetMid(-1000);
    EXPECT_EQ(world_->host.calls, (Calls{{43, "1000", "0", "0"}, {46, "-1015", "0", "0"}}));
}

}  // namespace
}  // namespace sarnel
