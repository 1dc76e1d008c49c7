// A call into the host may re-enter the component, and the worst that a host can do there is to end
// the run. Each way into the component is tried as often as it makes calls, and each time the host
// ends the run inside another of them: nothing may break, and the playlist must be on disk.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "core/mGeneral.h"
#include "platform/messages.h"
#include "playback/mPlayback.h"
#include "playlist/mMedia.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::World;
using support::WorldBuilder;

const std::vector<std::u16string> kRows{u"a", u"b", u"c"};

struct Way {
    std::string name;
    std::function<void(World&)> before;  ///< brings the run to where the way begins
    std::function<void(World&)> enter;
};

std::ostream& operator<<(std::ostream& out, const Way& way) {
    return out << way.name;
}

void Stay(World& /*world*/) {}

void Playing(World& world) {
    world.List().ListCurrent(0);
    PlayCurrentItem();
}

void AtTheEnd(World& world) {
    world.List().ListCurrent(2);
    PlayCurrentItem();
    world.host.playing = false;
}

std::function<void(World&)> Key(std::u16string_view name) {
    return [name](World& world) { world.HotKey(name); };
}

std::function<void(World&)> Call(void (*routine)()) {
    return [routine](World& world) { world.Do(routine); };
}

void Tick(World& world) {
    world.Advance(50);
}

void EndedTick(World& world) {
    world.host.playing = false;
    world.Advance(50);
}

void DropOnList(World& world) {
    world.windows.DropFiles(world.List().HWnd(), {world.folder.Path("x.mp3"), world.folder.Path()});
}

void DropOnWindow(World& world) {
    world.windows.DropFiles(world.Window(), {world.folder.Path("x.mp3"), "/y.mp3"});
}

const std::vector<Way> kWays{
    {"PlayKey", [](World& world) { world.List().ListCurrent(1); }, Key(u"Play")},
    {"NextKey", Playing, Key(u"Next")},
    {"NextKeyOverADeadRow",
     [](World& world) {
         world.host.dead.insert(u"b");
         Playing(world);
     },
     Key(u"Next")},
    {"NextKeyAtTheEnd", AtTheEnd, Key(u"Next")},
    {"NextKeyAtRandom", [](World& world) { world.State().Random = true; }, Key(u"Next")},
    {"NextKeyRepeatingTheItem",
     [](World& world) {
         world.State().RepeatItem = true;
         Playing(world);
     },
     Key(u"Next")},
    {"PreviousKey", AtTheEnd, Key(u"Prev")},
    {"StopKey", Playing, Key(u"Stop")},
    {"PauseKey", Playing, Key(u"Pause")},
    {"StepKey", Playing, Key(u"StepForw")},
    {"VolumeKey", Stay, Key(u"VolUp")},
    {"ExitKey", Playing, Key(u"Exit")},
    {"EnterOnTheList", [](World& world) { world.List().ListIndex(1); },
     [](World& world) {
         world.driver.PushKey(13);
         world.windows.DoEvents();
     }},
    {"Tick", Playing, Tick},
    {"TickAtTheEndOfAStream", Playing, EndedTick},
    {"TickAtTheEndOfTheList", AtTheEnd, EndedTick},
    {"TickWithManualAdvance",
     [](World& world) {
         world.State().ManualAdvance = true;
         Playing(world);
     },
     EndedTick},
    {"FormatDisplay", [](World& world) { world.State().DisplayMode = 2; },
     Call(RefreshInfoDisplay)},
    {"BitRateDisplay", [](World& world) { world.State().DisplayMode = 3; },
     Call(RefreshInfoDisplay)},
    {"Effects", Stay, Call(LoadEffects)},
    {"DropOnTheList", Stay, DropOnList},
    {"DropOnTheWindow", Stay, DropOnWindow},
    {"HandedOverPath", Stay,
     [](World& world) { world.HandOver("/add " + world.folder.Path("x.mp3")); }},
    {"CloseMessage", Playing, [](World& world) { world.Message(platform::WM_CLOSE); }},
    {"SystemMenuClose", Playing,
     [](World& world) { world.Message(platform::WM_SYSCOMMAND, platform::SC_CLOSE); }},
    {"EndImpulse", Playing, [](World& world) { world.End(); }},
};

std::unique_ptr<World> Prepared(const Way& way) {
    auto world = WorldBuilder().Saved({"a", "b", "c"}).Started();
    world->folder.Write("x.mp3", "");
    way.before(*world);
    world->host.Forget();
    return world;
}

// Ends the run inside the call with this number, counted from 0.
void EndInside(World& world, std::size_t call) {
    auto count = std::make_shared<std::size_t>(0);
    world.host.insideAny = [&world, call, count] {
        if ((*count)++ == call) {
            world.Impulse(kImpulseControl, kControlShow, false);
        }
    };
}

class Reentry : public ::testing::TestWithParam<Way> {};

TEST_P(Reentry, TheRunMayEndInsideAnyCallAndTheListIsSaved) {
    const auto dry = Prepared(GetParam());
    GetParam().enter(*dry);
    const std::vector<Long> numbers = dry->host.Numbers();
    ASSERT_FALSE(numbers.empty());
    dry->component.reset();
    for (std::size_t call = 0; call < numbers.size(); ++call) {
        SCOPED_TRACE("inside impulse " + std::to_string(numbers[call]));
        const auto world = Prepared(GetParam());
        const Long window = world->Window();
        EndInside(*world, call);
        GetParam().enter(*world);
        EXPECT_GE(world->host.Count(7), 1);
        EXPECT_FALSE(world->windows.IsWindow(window));
        world->Advance(200);  // nothing that is left over may break now
        const auto saved = world->Saved();
        world->End();  // as a host does that has not heard of it
        EXPECT_EQ(world->Saved(), saved);
        world->host.insideAny = nullptr;
        world->Start();
        std::vector<std::u16string> titles = world->Titles();
        ASSERT_GE(titles.size(), kRows.size());
        titles.resize(kRows.size());  // behind them what was added meanwhile
        EXPECT_EQ(titles, kRows);
    }
}

INSTANTIATE_TEST_SUITE_P(Ways, Reentry, ::testing::ValuesIn(kWays),
                         [](const auto& way) { return way.param.name; });

// While the window loads, its list has not been restored yet. An end inside is a regular close all
// the same, and writes the list as it stands; what follows goes on without the window.
TEST(ReentryWhileLoading, TheRunMayEndInsideAnyCall) {
    const auto load = [](World& world) {
        world.Impulse(kImpulseAttach);
        world.Impulse(kImpulseControl, kControlLoad);
    };
    std::size_t calls = 0;
    {
        const auto dry = WorldBuilder().Created();
        load(*dry);
        calls = dry->host.calls.size();
    }
    ASSERT_GE(calls, 8U);  // the volume and seven effects at least
    for (std::size_t call = 0; call < calls; ++call) {
        SCOPED_TRACE("inside call " + std::to_string(call));
        const auto world = WorldBuilder().Created();
        EndInside(*world, call);
        load(*world);
        EXPECT_EQ(world->host.Count(7), 1);
        EXPECT_EQ(world->Saved(), "OMK v1.1\r\n 0 \r\n-1 \r\n");
        world->Show(u"");
        world->Advance(100);
        world->End();
    }
}

TEST(ReentryWhileShowing, TheRunMayEndInsideAnyCallOfTheFirstCommandLine) {
    const auto run = [](World& world) {
        world.folder.Write("x.mp3", "");
        world.host.Forget();
        world.Show(u"/add " + world.folder.Text("x.mp3"));
    };
    const auto build = [] {
        return WorldBuilder().Saved({"a", "b", "c"}, 1).Setting("PlayAtStartup", "True").Loaded();
    };
    std::size_t calls = 0;
    {
        const auto dry = build();
        run(*dry);
        calls = dry->host.calls.size();
    }
    ASSERT_EQ(calls, 2U);  // is it supported, what is its title
    for (std::size_t call = 0; call < calls; ++call) {
        const auto world = build();
        EndInside(*world, call);
        run(*world);
        world->End();
        EXPECT_EQ(world->Saved(), "OMK v1.1\r\n 3 \r\n 1 \r\na\r\na\r\nb\r\nb\r\nc\r\nc\r\n");
    }
}

TEST(ReentryWhileShowing, TheRunMayEndInsideTheFirstPlaying) {
    const auto build = [] {
        return WorldBuilder().Saved({"a", "b"}, 1).Setting("PlayAtStartup", "True").Loaded();
    };
    std::size_t calls = 0;
    {
        const auto dry = build();
        dry->Show(u"");
        calls = dry->host.calls.size();
    }
    ASSERT_GE(calls, 4U);  // open, time, length text, length
    for (std::size_t call = 0; call < calls; ++call) {
        const auto world = build();
        EndInside(*world, call);
        world->Show(u"");
        world->Advance(200);
        world->End();
        EXPECT_EQ(world->Saved(), "OMK v1.1\r\n 2 \r\n 1 \r\na\r\na\r\nb\r\nb\r\n");
    }
}

TEST(ReentryOfAnotherKind, TheHostMayAskForTheNextItemInsideAnyCall) {
    for (const Way& way : kWays) {
        SCOPED_TRACE(way.name);
        const auto world = Prepared(way);
        auto depth = std::make_shared<int>(0);
        world->host.insideAny = [world = world.get(), depth] {
            const frmMAIN* main = world->State().ExistingMain();
            if ((*depth)++ == 0 && main != nullptr && main->IsLoaded()) {
                world->HotKey(u"Next");
            }
        };
        way.enter(*world);
        world->host.insideAny = nullptr;
        world->End();
        EXPECT_GE(*depth, 1);
        EXPECT_TRUE(world->Saved().has_value());
    }
}

}  // namespace
}  // namespace sarnel
