// Dragging the window by its surface on screens of which a part is taken.
#include "skin/panels.h"

#include <gtest/gtest.h>

#include "core/state/frmtip.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using platform::Rect;

class Dragging : public ::testing::Test {
  protected:
    // A press in the middle of the title bar, then a move by so much; answers where the window is.
    platform::Point After(platform::Point from, platform::Point by) {
        const auto flags = platform::SWP_NOSIZE | platform::SWP_NOZORDER;
        world_->windows.SetWindowPos(world_->Window(), 0, from.x, from.y, 0, 0, flags);
        BeginDrag(100, 5);
        DragWindow(world_->Window(), 100 + by.x, 5 + by.y);
        const Rect rect = world_->windows.GetWindowRect(world_->Window());
        return {rect.left, rect.top};
    }
    void Area(const Rect& area) { world_->State().WorkArea = area; }

    std::unique_ptr<support::World> world_ = support::WorldBuilder().Started();
};

// The window is 293 x 277.
TEST_F(Dragging, SticksToThePanelAtTheLeftFromBothSides) {
    Area({60, 30, 1024, 768});
    EXPECT_EQ(After({100, 100}, {-29, 0}).x, 60);  // 71
    EXPECT_EQ(After({100, 100}, {-28, 0}).x, 72);
    EXPECT_EQ(After({100, 100}, {-51, 0}).x, 60);  // 49
    EXPECT_EQ(After({100, 100}, {-52, 0}).x, 48);
    EXPECT_EQ(After({100, 100}, {0, -59}).y, 30);  // 41
    EXPECT_EQ(After({100, 100}, {0, -58}).y, 42);
}

// Between the panel and the screen's edge the window may lie: what counts is the screen's 0.
TEST_F(Dragging, MayLieUnderThePanelAtTheLeft) {
    Area({60, 30, 1024, 768});
    EXPECT_EQ(After({100, 100}, {-80, 0}).x, 20);
    EXPECT_EQ(After({100, 100}, {-101, 0}).x, 0);
    EXPECT_EQ(After({100, 100}, {0, -95}).y, 5);
}

TEST_F(Dragging, NegativePlacesOfASecondScreenAreCut) {
    Area({-800, -600, 1024, 768});
    EXPECT_EQ(After({100, 100}, {-400, -300}), (platform::Point{0, 0}));
}

TEST_F(Dragging, AnAreaSmallerThanTheWindowPutsItsFarEdgesInside) {
    Area({0, 0, 200, 100});
    EXPECT_EQ(After({0, 0}, {50, 50}), (platform::Point{200 - 293, 100 - 277}));
}

TEST(TopMost, OfAFormMovesTheWindowAlone) {
    const auto world = support::WorldBuilder().Started();
    ApplyTopMost(world->Main(), true);
    EXPECT_TRUE(world->windows.IsTopMost(world->Window()));
    EXPECT_EQ(world->Setting("TopMost"), std::nullopt);
    EXPECT_FALSE(world->Main().tglSkin(0).Value());
    ApplyTopMost(world->State().Tip(), true);
    EXPECT_TRUE(world->windows.IsTopMost(world->State().Tip().HWnd()));
    ApplyTopMost(world->Main(), false);
    EXPECT_FALSE(world->windows.IsTopMost(world->Window()));
    EXPECT_TRUE(world->windows.IsTopMost(world->State().Tip().HWnd()));
}

}  // namespace
}  // namespace sarnel
