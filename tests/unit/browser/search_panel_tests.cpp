// What a scenario cannot put between two steps of playing a hit: events that wait.
#include <gtest/gtest.h>

#include "core/base/impulses.h"
#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::WorldBuilder;

TEST(SearchPanel, WaitingEventsRunWhenThePanelIsClosedAndBeforeTheHitPlays) {
    const auto world = WorldBuilder().Rows({u"a", u"b"}).Started();
    world->Do([] { RunMenuCommand(u"kPkSh"); });
    world->host.Forget();
    world->driver.PushKey(platform::VK_RETURN);
    world->driver.PushKey('V');  // which stops, once the playlist has the focus
    world->windows.DoEvents();
    const auto calls = world->host.Of({ImpulseStop, ImpulseOpen});
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].number, ImpulseStop);
    EXPECT_EQ(calls[1].number, ImpulseOpen);
}

}  // namespace
}  // namespace sarnel
