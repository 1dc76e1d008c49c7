// The window at another density: what a change under way leads to is what a start at that density
// shows, pixel for pixel, and all places stay.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "core/state/frmtip.h"
#include "platform/menus/menu_mark.h"
#include "skin/panels.h"
#include "tests/unit/support/menu_rows.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using platform::Pixel;
using platform::Surface;
using support::World;

using Prepare = std::function<void(World&)>;

// Where the stored pixels of two pictures differ; empty if they do not.
std::string Difference(const Surface& a, const Surface& b) {
    if (!(a.StoredSize() == b.StoredSize())) {
        return "sizes";
    }
    const platform::Size size = a.StoredSize();
    platform::Rect around;
    for (Long y = 0; y < size.height; ++y) {
        for (Long x = 0; x < size.width; ++x) {
            if (a.Row(y)[x] != b.Row(y)[x]) {
                around = Unite(around, {x, y, x + 1, y + 1});
            }
        }
    }
    return IsEmpty(around) ? ""
                           : std::to_string(around.left) + "," + std::to_string(around.top) + "," +
                                 std::to_string(around.right) + "," + std::to_string(around.bottom);
}

class DensityChange : public ::testing::Test {
  protected:
    ~DensityChange() override { Surface::DensityInForce(1); }

    // The main window after a start at the first density and changes to the others in turn.
    static Surface Window(const std::vector<Long>& densities, const Prepare& prepare) {
        World world;
        const auto change = [&](Long density) {
            world.driver.SetDensity(density);
            world.windows.DoEvents();
        };
        change(densities.front());
        world.Start();
        world.Rows({u"First", u"Second", u"Third", u"Fourth"});
        prepare(world);
        for (auto next = densities.begin() + 1; next != densities.end(); ++next) {
            change(*next);
        }
        return world.windows.Compose(world.Window());
    }
    static void ExpectSame(const Prepare& prepare) {
        const Surface plain = Window({1}, prepare);
        const Surface fine = Window({2}, prepare);
        EXPECT_EQ(fine.GetSize(), plain.GetSize());
        EXPECT_EQ(fine.Density(), 2);
        EXPECT_EQ(Difference(Window({1, 2}, prepare), fine), "");
        EXPECT_EQ(Difference(Window({2, 1}, prepare), plain), "");
        EXPECT_EQ(Difference(Window({1, 4, 2, 1}, prepare), plain), "");
    }
};

TEST_F(DensityChange, LeadsToWhatAStartShows) {
    ExpectSame([](World&) {});
}

TEST_F(DensityChange, LeadsToWhatAStartShowsOfSelectedAndCurrentRows) {
    ExpectSame([](World& world) {
        world.List().ListCurrent(1);
        world.List().Selected(2, true);
        world.List().DisplayList();
    });
}

TEST_F(DensityChange, LeadsToWhatAStartShowsOfALongList) {
    ExpectSame([](World& world) {
        world.Rows(std::vector<std::u16string>(50, u"More"));
        world.List().DisplayList();
    });
}

TEST_F(DensityChange, LeadsToWhatAStartShowsOfControlsInEachState) {
    ExpectSame([](World& world) {
        world.Main().btnSkin(kPlayButton).Enabled(false);
        world.Main().tglSkin(kTopMostToggle).Value(true);
        world.Main().sldSkin(kPositionSlider).Enabled(true);
        world.Main().sldSkin(kPositionSlider).Value(30);
        world.Main().sldSkin(kVolumeSlider).Enabled(false);
        const platform::Rect button =
            world.windows.GetWindowRect(world.Main().btnSkin(kNextButton).HWnd());
        const platform::Point at{button.left + 5, button.top + 5};
        world.driver.MovePointer(at);
        world.windows.Deliver(platform::PointerMoved{at, 0});
        world.windows.Deliver(platform::ButtonChanged{at, platform::kLeftButton, true, 0});
    });
}

TEST_F(DensityChange, LeadsToWhatAStartShowsOfEachPanel) {
    for (Long panel = 0; panel < kPanelCount; ++panel) {
        SCOPED_TRACE(panel);
        ExpectSame([=](World&) { ShowPanel(panel, true); });
    }
}

TEST_F(DensityChange, LeadsToWhatAStartShowsOfATooltip) {
    const auto tip = [](const std::vector<Long>& densities) {
        World world;
        world.driver.SetDensity(densities.front());
        world.windows.DoEvents();
        world.Start();
        world.State().Tip().ShowTooltip(u"A tip", 0);
        world.driver.SetDensity(densities.back());
        world.windows.DoEvents();
        return world.windows.Compose(world.State().Tip().HWnd());
    };
    EXPECT_EQ(tip({2}).Density(), 2);
    EXPECT_EQ(Difference(tip({1, 2}), tip({2})), "");
    EXPECT_EQ(Difference(tip({2, 1}), tip({1})), "");
}

// 20 ms after the menu has opened the density is 2, after 40 ms it is 1 again.
TEST_F(MenuRows, AnOpenMenuFollowsTheDensityAndBack) {
    const Long parent = Add(u"Parent");
    Add(u"Child", parent);
    Add(u"Checked");
    menu_.Checked(3, true);
    Add(u"Disabled", 0, false);
    std::vector<Surface> seen;
    const auto look = [&] { seen.push_back(windows_.ComposeScreen()); };
    const auto change = [&](Long density) { driver_.SetDensity(density); };
    windows_.Schedule(5, [&] { windows_.Deliver(platform::KeyChanged{platform::VK_DOWN}); });
    windows_.Schedule(10, look);
    windows_.Schedule(20, [&] { change(2); });
    windows_.Schedule(30, look);
    windows_.Schedule(40, [&] { change(1); });
    windows_.Schedule(50, look);
    menu_.ShowPopup(100, 100, 0, 0, 2, true);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[1].Density(), 2);
    EXPECT_EQ(seen[1].GetSize(), seen[0].GetSize());
    EXPECT_EQ(Difference(seen[2], seen[0]), "");

    seen.clear();
    change(2);
    windows_.DoEvents();
    windows_.Schedule(5, [&] { windows_.Deliver(platform::KeyChanged{platform::VK_DOWN}); });
    windows_.Schedule(10, look);
    windows_.Schedule(20, [&] { change(1); });
    windows_.Schedule(30, [&] { change(2); });
    windows_.Schedule(40, look);
    menu_.ShowPopup(100, 100, 0, 0, 2, true);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(Difference(seen[1], seen[0]), "");
    Surface::DensityInForce(1);
}

// Where the blocks of the fixed-width letters end, there is no other colour between: the mark and
// the arrow alone have soft edges.
TEST_F(MenuRows, MarksAndArrowsHaveSoftEdgesOnFinerSurfaces) {
    const auto colours = [](Long density) {
        Surface surface({18, 18}, density);
        surface.FillRect(surface.Bounds(), 0xFFFFFF);
        platform::DrawMenuMark(surface, surface.Bounds(), platform::MenuMark::kBullet, 0);
        std::set<Pixel> found;
        const platform::Size size = surface.StoredSize();
        for (Long y = 0; y < size.height; ++y) {
            found.insert(surface.Row(y), surface.Row(y) + size.width);
        }
        return found.size();
    };
    EXPECT_EQ(colours(1), 2U);
    EXPECT_GT(colours(2), 4U);
}

}  // namespace
}  // namespace sarnel
