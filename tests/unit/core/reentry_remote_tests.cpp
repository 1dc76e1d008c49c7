// The host ends the run inside its answer to what it has itself asked for by the side door.
#include <gtest/gtest.h>

#include "core/remote.h"
#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using namespace support;

class ReentryOfRemote : public ::testing::TestWithParam<Way> {};

Way Door(const std::string& name, std::function<void(World&)> before, void (*use)(Remote&)) {
    return {name, std::move(before), [use](World& world) {
                Remote remote(*world.component);
                use(remote);
            }};
}

// Sounds, and is not followed.
void PlayingWithoutALength(World& world) {
    world.host.length = 0;
    world.List().ListCurrent(0);
    Remote(*world.component).Play();
}

std::vector<Way> Doors() {
    const auto first = [](World& world) { world.List().ListCurrent(0); };
    return {
        Door("Play", first, [](Remote& remote) { remote.Play(); }),
        Door("PlayPause", first, [](Remote& remote) { remote.PlayPause(); }),
        Door("Pause", Playing, [](Remote& remote) { remote.Pause(); }),
        Door("PauseOfWhatIsNotFollowed", PlayingWithoutALength,
             [](Remote& remote) { remote.Pause(); }),
        Door("Stop", Playing, [](Remote& remote) { remote.Stop(); }),
        Door("Next", Playing, [](Remote& remote) { remote.Next(); }),
        Door("Previous", AtTheEnd, [](Remote& remote) { remote.Previous(); }),
        Door("Volume", Stay, [](Remote& remote) { remote.Volume(7); }),
        Door("Position", Playing, [](Remote& remote) { remote.Position(7); }),
        Door("Command", Playing, [](Remote& remote) { remote.RunCommand(u"kPkNFO"); }),
        Door("State", PlayingWithoutALength, [](Remote& remote) { remote.State(); }),
    };
}

TEST_P(ReentryOfRemote, TheRunMayEndInsideEveryCall) {
    EndInsideEveryCall(GetParam());
}

TEST_P(ReentryOfRemote, TheHostMayGoToTheNextItemInsideTheFirstCall) {
    NextItemInsideTheFirstCall(GetParam());
}

INSTANTIATE_TEST_SUITE_P(SideDoor, ReentryOfRemote, ::testing::ValuesIn(Doors()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);

}  // namespace
}  // namespace sarnel
