// Caption, scrolling title and the one-line fact.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/base/messages.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;

class Display : public ::testing::Test {
  protected:
    FakeHost& Host() { return world_->host; }
    Program& State() { return world_->State(); }
    std::u16string Fact(Long mode) {
        State().DisplayMode = mode;
        RefreshInfoDisplay();
        return State().InfoText;
    }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(Display, ModesZeroAndOneShowPlayedAndRemainingTimeWithTheLength) {
    EXPECT_EQ(Fact(0), u"0:10 | 3:20");
    EXPECT_EQ(Fact(1), u"-3:10 | 3:20");
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{34, 35, 34, 35}));
}

TEST_F(Display, ModeTwoShowsWholeKilohertzAndTheChannels) {
    const std::vector<std::tuple<Long, Long, std::u16string>> cases{
        {44100, 2, u"44kHz.stereo"}, {48000, 1, u"48kHz.mono"},   {22050, 6, u"22kHz.6multi"},
        {999, 3, u"0kHz.3multi"},    {96000, 0, u"96kHz.0multi"}, {-1500, -1, u"-1kHz.-1multi"}};
    for (const auto& [rate, channels, expected] : cases) {
        Host().sampleRate = rate;
        Host().channels = channels;
        EXPECT_EQ(Fact(2), expected);
    }
    Host().Forget();
    Fact(2);
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{36, 38}));
}

TEST_F(Display, ModeThreeShowsTheHostsBitRate) {
    Host().bitRate = u"VBR 192";
    EXPECT_EQ(Fact(3), u"VBR 192 kb/s");
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{39}));
}

TEST_F(Display, AnyOtherModeLeavesTheTextAndAsksNothing) {
    Fact(3);
    Host().Forget();
    EXPECT_EQ(Fact(4), u"128 kb/s");
    EXPECT_EQ(Fact(-1), u"128 kb/s");
    EXPECT_TRUE(Host().calls.empty());
}

TEST_F(Display, ASilentHostShowsTheBareForm) {
    Host().silent = true;
    EXPECT_EQ(Fact(0), u" | ");
    EXPECT_EQ(Fact(2), u"0kHz.0multi");
    EXPECT_EQ(Fact(3), u" kb/s");
}

TEST_F(Display, OneAnswerThatFailsLeavesTheOther) {
    Host().failing = {34};
    EXPECT_EQ(Fact(0), u" | 3:20");
    Host().failing = {38};
    EXPECT_EQ(Fact(2), u"44kHz.0multi");
}

TEST_F(Display, TheScrollingTitleIsFourCopiesAndMeasuredFromTheLeft) {
    State().ScrollBack = false;
    State().ScrollRect.left = -40;
    SetScrollText(u"ab");
    EXPECT_EQ(State().ScrollText, u"ab  ---  ab  ---  ab  ---  ab");
    EXPECT_TRUE(State().ScrollBack);
    EXPECT_EQ(State().ScrollRect.left, 0);
    // 29 units of 6 pixels, and 2; a line of 13.
    EXPECT_EQ(State().ScrollRect.right, 29 * 6 + 2);
    EXPECT_EQ(State().ScrollRect.bottom - State().ScrollRect.top, 13);
    SetScrollText(u"");
    EXPECT_EQ(State().ScrollText, u"  ---    ---    ---  ");
}

TEST_F(Display, TheTitleIsTheCaptionAndTheWindowKeepsItsTwoStyles) {
    world_->windows.SetWindowLong(world_->Window(), platform::GWL_STYLE, 1);
    SetWindowTitle(u"A & B\u0101");
    EXPECT_EQ(world_->Main().Caption(), u"A & B\u0101");
    EXPECT_EQ(world_->windows.GetWindowLong(world_->Window(), platform::GWL_STYLE), 655361);
    EXPECT_EQ(RestingTitle(), u"Veldrin v1.1");
}

TEST_F(Display, TheScrollTimerBeatsEveryThirtyMilliseconds) {
    StopScrollTimer();
    EXPECT_TRUE(world_->Timers().empty());
    StartScrollTimer();
    EXPECT_EQ(world_->windows.Timers(world_->Window()),
              (std::vector<std::pair<Long, Long>>{{12, 30}}));
}

}  // namespace
}  // namespace sarnel
