// A call into the host may re-enter the component, and the worst that a host can do there is to end
// the run. These are the calls of the start; those of a running component are in
// reentry_commands_tests.cpp and reentry_events_tests.cpp.
#include <gtest/gtest.h>

#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using support::Ending;
using support::EndInside;
using support::World;
using support::WorldBuilder;

void Load(World& world) {
    world.Impulse(kImpulseAttach);
    world.Impulse(kImpulseControl, kControlLoad);
}

std::unique_ptr<World> Unloaded() {
    return WorldBuilder()
        .Host([](support::FakeHost& host) {
            host.cellNames = {u"one", u"two"};
        })
        .Created();
}

std::size_t CountCalls(World& world, const std::function<void(World&)>& enter) {
    std::size_t calls = 0;
    world.host.insideAny = [&calls](Long) { ++calls; };
    enter(world);
    world.host.insideAny = nullptr;
    return calls;
}

// While the window loads, its list has not been restored yet. An end inside is a regular close all
// the same, and writes the list as it stands; what follows goes on without the window.
class ReentryWhileLoading : public ::testing::TestWithParam<Ending> {};

TEST_P(ReentryWhileLoading, TheRunMayEndInsideEveryCall) {
    const std::size_t calls = CountCalls(*Unloaded(), Load);
    // How many cells, two cells with their names, file types, volume, seven effects.
    ASSERT_EQ(calls, 14U);
    for (std::size_t call = 0; call < calls; ++call) {
        SCOPED_TRACE("inside call " + std::to_string(call));
        const auto world = Unloaded();
        EndInside(*world, call, GetParam());
        Load(*world);
        world->host.insideAny = nullptr;
        world->Advance(100);
        if (GetParam() == Ending::kDestroys) {
            EXPECT_EQ(world->Saved(), std::nullopt);
            continue;
        }
        EXPECT_EQ(world->host.Count(ImpulseClosed), 1);
        EXPECT_EQ(world->Saved(), "OMK v1.1\r\n 0 \r\n-1 \r\n");
        world->Show(u"");
        world->Advance(100);
        world->End();
    }
}

INSTANTIATE_TEST_SUITE_P(Endings, ReentryWhileLoading,
                         ::testing::Values(Ending::kEnds, Ending::kEndsAndThrows,
                                           Ending::kEndsAndBeginsAnew, Ending::kDestroys));

class ReentryWhileShowing : public ::testing::TestWithParam<Ending> {
  protected:
    static void EndInsideEveryCall(std::u16string_view file, std::size_t leastCalls) {
        const auto show = [file](World& world) {
            world.folder.Write("x.mp3", "");
            world.Show(file.empty() ? u"" : u"/add " + world.folder.Text("x.mp3"));
        };
        const auto build = [] {
            return WorldBuilder().Saved({"a", "b"}, 1).Setting("PlayAtStartup", "True").Loaded();
        };
        const std::size_t calls = CountCalls(*build(), show);
        ASSERT_GE(calls, leastCalls);
        for (std::size_t call = 0; call < calls; ++call) {
            SCOPED_TRACE("inside call " + std::to_string(call));
            const auto world = build();
            EndInside(*world, call, GetParam());
            show(*world);
            world->host.insideAny = nullptr;
            world->Advance(200);
            const std::string saved = world->Saved().value_or("");
            EXPECT_EQ(saved, "OMK v1.1\r\n 2 \r\n 1 \r\na\r\na\r\nb\r\nb\r\n");
            if (world->component) {
                world->End();
            }
        }
    }
};

TEST_P(ReentryWhileShowing, TheRunMayEndInsideEveryCallOfTheFirstLine) {
    EndInsideEveryCall(u"x.mp3", 2);  // is it supported, what is its title
}

TEST_P(ReentryWhileShowing, TheRunMayEndInsideEveryCallOfTheFirstPlaying) {
    EndInsideEveryCall(u"", 4);  // open, time, length text, length
}

INSTANTIATE_TEST_SUITE_P(Endings, ReentryWhileShowing,
                         ::testing::Values(Ending::kEnds, Ending::kEndsAndThrows,
                                           Ending::kEndsAndBeginsAnew, Ending::kDestroys));

}  // namespace
}  // namespace sarnel
