// How the tooltip comes and goes; where it stands is in the scenarios.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/state/frmtip.h"
#include "tests/unit/support/control_bench.h"
#include "tests/unit/support/window_log.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using namespace platform;
using support::World;
using support::WorldBuilder;
using TipLines = std::vector<std::string>;

const std::string kHides = "tip 24 0 0";
const std::string kShows = "tip 24 1 0";

class Tooltip : public ::testing::Test {
  protected:
    void SetUp() override { At({500, 400}); }
    void At(Point cursor) { world_->driver.MovePointer(cursor); }
    frmTIP& Tip() { return world_->State().Tip(); }
    // The messages of size and visibility that the tooltip gets from now on.
    void Listen() {
        const WindowProc log = log_.Named("tip");
        auto former = std::make_shared<WindowProc>();
        *former = world_->windows.SetWindowProc(Tip().HWnd(), [log, former](const Message& m) {
            if (m.id == WM_SHOWWINDOW || m.id == WM_SIZE) {
                log(m);
            }
            return WindowSystem::CallWindowProc(*former, m);
        });
    }
    static std::string Sized(Long width, Long height) {
        return "tip 5 0 " + std::to_string(width + height * 65536);
    }
    // Whether its timer runs.
    bool Counts() { return !world_->windows.Timers(Tip().HWnd()).empty(); }
    Colour Pixel(Point at) { return world_->windows.GetFace(Tip().HWnd())->GetPixel(at); }

    support::WindowLog log_;
    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(Tooltip, TheSameTextMovesWithoutHiding) {
    Tip().ShowTooltip(u"ab", 500);
    Listen();
    At({520, 410});
    Tip().ShowTooltip(u"ab", 500);
    EXPECT_EQ(log_.Take(), TipLines{});
    EXPECT_EQ(Tip().Left(), 505);
    EXPECT_EQ(Tip().Top(), 434);
}

TEST_F(Tooltip, AnotherTextHidesFirst) {
    Tip().ShowTooltip(u"ab", 500);
    Listen();
    Tip().ShowTooltip(u"abc", 500);
    EXPECT_EQ(log_.Take(), (TipLines{kHides, Sized(36, 23), kShows}));
    Tip().ShowTooltip(u"cba", 500);
    EXPECT_EQ(log_.Take(), (TipLines{kHides, kShows}));
}

TEST_F(Tooltip, ItsTimerRunsWhileItIsSeenAndNoLonger) {
    EXPECT_FALSE(Counts());
    Tip().ShowTooltip(u"ab", 500);
    EXPECT_EQ(world_->windows.Timers(Tip().HWnd()).size(), 1U);
    world_->Advance(499);
    EXPECT_TRUE(Counts());
    world_->Advance(1);
    EXPECT_FALSE(Counts());
    EXPECT_FALSE(Tip().Visible());
    Tip().ShowTooltip(u"ab", 0);
    EXPECT_FALSE(Counts());
    EXPECT_TRUE(Tip().Visible());
}

TEST_F(Tooltip, ATimeOfZeroEndsTheOneThatRan) {
    Tip().ShowTooltip(u"ab", 500);
    Tip().ShowTooltip(u"ab", 0);
    world_->Advance(10'000);
    EXPECT_TRUE(Tip().Visible());
}

TEST_F(Tooltip, AMoveOverItHidesItAndEndsItsTime) {
    Tip().ShowTooltip(u"ab", 500);
    At({490, 430});
    world_->driver.Push(PointerMoved{{490, 430}});
    world_->windows.DoEvents();
    EXPECT_FALSE(Tip().Visible());
    EXPECT_FALSE(Counts());
}

TEST_F(Tooltip, ItStaysInFrontOfItsWindow) {
    EXPECT_FALSE(world_->windows.IsTopMost(Tip().HWnd()));
    world_->driver.Push(PointerMoved{{1, 1}});
    const Handle focus = world_->windows.GetFocus();
    Tip().ShowTooltip(u"ab", 500);
    EXPECT_TRUE(world_->windows.IsTopMost(Tip().HWnd()));
    EXPECT_EQ(world_->windows.GetFocus(), focus);
}

TEST_F(Tooltip, NewPicturesAreDrawnThoughTheSizeStays) {
    Tip().imgTip1 = support::Strip({9, 23}, {support::kRed});
    Tip().imgTip2 = support::Strip({2, 23}, {support::kGreen});
    Tip().imgTip3 = support::Strip({9, 23}, {support::kBlue});
    Tip().ShowTooltip(u"ab", 500);
    EXPECT_EQ(Pixel({8, 0}), support::kRed);
    EXPECT_EQ(Pixel({9, 0}), support::kGreen);
    EXPECT_EQ(Pixel({20, 22}), support::kGreen);
    EXPECT_EQ(Pixel({21, 22}), support::kBlue);
    Tip().imgTip2 = support::Strip({2, 23}, {support::kWhite});
    Tip().ShowTooltip(u"ab", 500);
    EXPECT_EQ(Pixel({9, 0}), support::kWhite);
    Tip().ForeColor(support::kRed);
    Tip().ShowTooltip(u"ab", 500);
    EXPECT_EQ(Pixel({10, 8}), support::kRed);  // 9 + 1 into the first letter
}

TEST_F(Tooltip, AMissingPictureLeavesTheStepsThatNeedItOut) {
    Tip().ShowTooltip(u"ab", 500);
    Tip().imgTip1 = nullptr;
    Tip().ShowTooltip(u"abcd", 500);
    EXPECT_EQ(Tip().Width(), 30);  // neither width nor height could be worked out
    EXPECT_EQ(Tip().Height(), 23);
    EXPECT_TRUE(Tip().Visible());
    Tip().imgTip2 = nullptr;
    Tip().imgTip3 = nullptr;
    Tip().ShowTooltip(u"abc", 500);
    EXPECT_TRUE(Tip().Visible());
    EXPECT_EQ(Tip().Helptext(), u"abc");
    EXPECT_TRUE(Counts());
}

TEST_F(Tooltip, TheEndOfTheRunTakesItAway) {
    Tip().ShowTooltip(u"ab", 500);
    const Handle window = Tip().HWnd();
    world_->End();
    EXPECT_FALSE(world_->windows.IsWindow(window));
    world_->Advance(1000);
}

}  // namespace
}  // namespace sarnel
