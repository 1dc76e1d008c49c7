// The public class: the impulses that it accepts, how it sends its own, and whole runs.
#include "core/ambrisor.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/base/impulses.h"
#include "core/state/frmtip.h"
#include "platform/base/messages.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;

TEST(Ambrisor, ConnectStoresTheHostAndDisconnectLeavesIt) {
    World world;
    world.component =
        std::make_unique<Ambrisor>(world.windows, AmbrisorOptions{world.folder.Path()});
    Ambrisor& component = *world.component;
    EXPECT_EQ(component.Server(), nullptr);
    EXPECT_TRUE(component.Connect(&world.host));
    EXPECT_EQ(component.Server(), &world.host);
    EXPECT_TRUE(component.Disconnect());
    EXPECT_EQ(component.Server(), &world.host);
    EXPECT_TRUE(component.Connect(nullptr));
    EXPECT_EQ(component.Server(), nullptr);
}

TEST(Ambrisor, ImpulsesThatAreNotListedAnswerZeroAndChangeNothing) {
    const auto world = WorldBuilder().Created();
    // Numbers from 48 on, behind those that the component sends, are left to impulses to come.
    std::vector<Long> numbers{1000};
    for (Long number = -3; number <= ImpulseSetTreble; ++number) {
        if (!std::set<Long>{3, 5, 6, 7, 15}.contains(number)) {
            numbers.push_back(number);
        }
    }
    for (const Long number : numbers) {
        const auto answered = world->Impulse(number, Long{16}, Long{11}, u"two");
        EXPECT_EQ(answered.result, 0) << number;
        EXPECT_EQ(answered.lParam1.AsLong(), 11) << number;
        EXPECT_EQ(answered.lParam2.AsString(), u"two") << number;
    }
    EXPECT_EQ(world->State().component, nullptr);
    EXPECT_EQ(world->State().ExistingMain(), nullptr);
    EXPECT_TRUE(world->host.calls.empty());
}

TEST(Ambrisor, ImpulseThreeStoresTheReferenceAndReadsTheWorkArea) {
    const auto world = WorldBuilder().Created();
    world->driver.SetWorkArea({0, 24, 1024, 768});
    EXPECT_EQ(world->State().WorkArea, platform::Rect{});
    EXPECT_EQ(world->Impulse(3).result, 1);
    EXPECT_EQ(world->State().component, world->component.get());
    EXPECT_EQ(world->State().WorkArea, (platform::Rect{0, 24, 1024, 768}));
}

TEST(Ambrisor, ImpulseFiveTellsTheControlNumber) {
    const auto world = WorldBuilder().Created();
    const auto answered = world->Impulse(5);
    EXPECT_EQ(answered.result, 2);
    EXPECT_TRUE(answered.lParam1.IsLong());
    EXPECT_EQ(answered.lParam1.AsLong(), 15);
}

TEST(Ambrisor, ImpulseSixAndFifteenFiveHandOutTheComponent) {
    const auto world = WorldBuilder().Created();
    for (const auto& answered : {world->Impulse(6), world->Impulse(15, Long{5})}) {
        EXPECT_EQ(answered.result, 2);
        EXPECT_EQ(answered.lParam1.AsObject(), world->component.get());
    }
}

TEST(Ambrisor, ImpulseSevenIsAcceptedAndIgnored) {
    const auto world = WorldBuilder().Created();
    EXPECT_EQ(world->Impulse(7).result, 1);
    EXPECT_TRUE(world->host.calls.empty());
}

TEST(Ambrisor, AnUnknownSubCommandAnswersTwoAndDoesNothing) {
    const auto world = WorldBuilder().Created();
    for (const ImpulseValue& command :
         {ImpulseValue(Long{0}), ImpulseValue(Long{99}), ImpulseValue(), ImpulseValue(u"load"),
          ImpulseValue(true)}) {
        EXPECT_EQ(world->Impulse(15, command).result, 2);
    }
    EXPECT_EQ(world->State().ExistingMain(), nullptr);
}

TEST(Ambrisor, FifteenSixteenLoadsTheHiddenWindowAndGivesItsHandle) {
    const auto world = WorldBuilder().Created();
    world->Impulse(3);
    const auto answered = world->Impulse(15, Long{16});
    EXPECT_EQ(answered.result, 2);
    EXPECT_EQ(answered.lParam1.AsLong(), world->Window());
    EXPECT_TRUE(world->Main().IsLoaded());
    EXPECT_FALSE(world->Main().Visible());
}

TEST(Ambrisor, TheSubCommandMayComeAsAReference) {
    const auto world = WorldBuilder().Created();
    Long command = 16;
    Long handle = 0;
    EXPECT_EQ(world->Impulse(15, &command, &handle).result, 2);
    EXPECT_EQ(handle, world->Window());
}

TEST(Ambrisor, ASecondLoadIsTheSameWindowAndRunsNothingAgain) {
    const auto world = WorldBuilder().Rows({u"a"}).Started();
    const Long handle = world->Window();
    const auto answered = world->Impulse(15, Long{16});
    EXPECT_EQ(answered.lParam1.AsLong(), handle);
    EXPECT_TRUE(world->host.calls.empty());
    EXPECT_EQ(world->Titles(), (std::vector<std::u16string>{u"a"}));
}

TEST(Ambrisor, FifteenSeventeenTrueShowsTheWindowAndGivesTheListTheFocus) {
    const auto world = WorldBuilder().Saved({"a", "b"}, 1).Loaded();
    EXPECT_EQ(world->Impulse(15, Long{17}, true, u"").result, 2);
    EXPECT_TRUE(world->Main().Visible());
    EXPECT_EQ(world->windows.GetFocus(), world->List().HWnd());
    EXPECT_EQ(world->Titles(), (std::vector<std::u16string>{u"a", u"b"}));
    EXPECT_EQ(world->List().ListCurrent(), 1);
}

TEST(Ambrisor, AFailedStepBeforeTheShowingStillShows) {
    auto world = WorldBuilder().Host([](FakeHost& host) { host.failing = {10}; }).Loaded();
    world->folder.Write("a.mp3", "");
    world->Impulse(15, Long{17}, true, world->folder.Text("a.mp3"));
    EXPECT_TRUE(world->Main().Visible());
    world.reset();
    world = WorldBuilder().Loaded();
    world->Impulse(15, Long{17}, true, ImpulseValue());  // no text at all
    EXPECT_TRUE(world->Main().Visible());
}

TEST(Ambrisor, FifteenSeventeenFalseUnloadsAndReportsWithThreeZeros) {
    const auto world = WorldBuilder().Started();
    const Long window = world->Window();
    const Long tip = world->State().Tip().HWnd();
    EXPECT_EQ(world->Impulse(15, Long{17}, false, ImpulseValue()).result, 2);
    EXPECT_FALSE(world->windows.IsWindow(window));
    EXPECT_FALSE(world->windows.IsWindow(tip));
    EXPECT_EQ(world->State().ExistingMain(), nullptr);
    EXPECT_EQ(world->host.Of({7}), (std::vector<FakeHost::Call>{{7, "0", "0", "0"}}));
    EXPECT_EQ(world->host.Numbers().back(), 7);
}

TEST(Ambrisor, ASecondEndSavesNothingAgainAndReportsAgain) {
    const auto world = WorldBuilder().Rows({u"a"}).Started();
    world->End();
    world->folder.Remove(World::kPlaylist);
    world->host.Forget();
    world->End();
    EXPECT_EQ(world->Saved(), std::nullopt);
    EXPECT_EQ(world->host.Numbers(), (std::vector<Long>{7}));
}

TEST(Ambrisor, AFlagThatIsNoBooleanNeitherShowsNorEnds) {
    const auto world = WorldBuilder().Loaded();
    for (const ImpulseValue& flag : {ImpulseValue(), ImpulseValue(u"perhaps")}) {
        EXPECT_EQ(world->Impulse(15, Long{17}, flag, u"").result, 2);
        EXPECT_FALSE(world->Main().Visible());
        EXPECT_TRUE(world->Main().IsLoaded());
    }
}

TEST(Ambrisor, FifteenEighteenTellsTheFormerStateThenMinimisesOrRestores) {
    const auto world = WorldBuilder().Loaded();
    EXPECT_NE(world->Impulse(15, Long{18}, false, Long{5}).lParam2.AsLong(), 0);  // was hidden
    EXPECT_TRUE(world->Main().Visible());
    EXPECT_EQ(world->Impulse(15, Long{18}, true, Long{5}).lParam2.AsLong(), 0);  // was shown
    EXPECT_TRUE(world->windows.IsIconic(world->Window()));
    EXPECT_NE(world->Impulse(15, Long{18}, true, Long{5}).lParam2.AsLong(), 0);  // was minimised
    EXPECT_NE(world->Impulse(15, Long{18}, false, Long{5}).lParam2.AsLong(), 0);
    EXPECT_FALSE(world->windows.IsIconic(world->Window()));
    EXPECT_EQ(world->Impulse(15, Long{18}, false, Long{5}).lParam2.AsLong(), 0);
}

TEST(Ambrisor, FifteenNineteenSetsTheScrollingTitle) {
    const auto world = WorldBuilder().Started();
    EXPECT_EQ(world->Impulse(15, Long{19}, u"abc").result, 2);
    EXPECT_EQ(world->State().ScrollText, u"abc  ---  abc  ---  abc  ---  abc");
    world->Impulse(15, Long{19}, ImpulseValue());  // no text: as it was
    EXPECT_EQ(world->State().ScrollText, u"abc  ---  abc  ---  abc  ---  abc");
}

TEST(Ambrisor, ASendGivesTheHostTheSenderAndReferences) {
    const auto world = WorldBuilder().Started();
    std::u16string out = u"start";
    ImpulseValue first(&out);
    ImpulseValue second(Long{0});
    world->host.titles[u"/a"] = u"A";
    world->component->sendVeldrinImpulse(13, u"/a", first, second);
    EXPECT_EQ(world->host.sender, world->component.get());
    EXPECT_EQ(out, u"A");
    EXPECT_EQ(world->host.calls.back(), (FakeHost::Call{13, "\"/a\"", "\"start\"", "0"}));
}

// A host whose answers and arguments are looked at closely.
class OddHost : public FakeHost {
  public:
    ImpulseValue answer = Long{0};
    bool allReferences = true;

    ImpulseValue ProcessImpulse(Ambrisor&, ImpulseValue& uMsg, ImpulseValue& wParam,
                                ImpulseValue& lParam1, ImpulseValue&) override {
        allReferences = allReferences && uMsg.IsReference() && wParam.IsReference();
        wParam.Assign(Long{99});  // its own copy: nobody must see this
        lParam1.Assign(Long{7});
        return answer;
    }
};

TEST(Ambrisor, TheHostsAnswerIsANumberOrZeroAndWParamIsAPrivateCopy) {
    World world;
    OddHost host;
    world.Create();
    world.component->Connect(&host);
    Long argument = 5;
    ImpulseValue out(Long{0});
    ImpulseValue none;
    const auto send = [&] { return world.component->sendVeldrinImpulse(32, argument, out, none); };
    for (const auto& [answer, expected] : std::vector<std::pair<ImpulseValue, Long>>{
             {Long{12}, 12}, {true, -1}, {u" 5 ", 5}, {u"five", 0}, {{}, 0}}) {
        host.answer = answer;
        EXPECT_EQ(send(), expected);
    }
    EXPECT_EQ(argument, 5);
    EXPECT_EQ(out.AsLong(), 7);
    EXPECT_TRUE(host.allReferences);
}

TEST(Ambrisor, AHostThatThrowsOrIsSilentOrAbsentLeavesEveryOutValue) {
    const auto world = WorldBuilder().Rows({u"a"}).Current(0).Started();
    const auto check = [&](const char* how) {
        bool playing = true;
        SendImpulse(ImpulseIsPlaying, Long{0}, &playing, Long{0});
        EXPECT_TRUE(playing) << how;
        EXPECT_FALSE(PlayCurrentItem()) << how;
        Long length = 0;
        EXPECT_EQ(SendImpulse(ImpulseGetLength, Long{0}, &length, Long{0}), 0) << how;
        EXPECT_EQ(length, 0) << how;
        bool supported = false;
        SendImpulse(ImpulseIsSupported, u"/a.mp3", &supported, Long{0});
        EXPECT_FALSE(supported) << how;
    };
    world->host.silent = true;
    check("silent");
    world->host.silent = false;
    world->host.failing = {10, 26, 32, 33};
    check("throws");
    world->component->Connect(nullptr);
    check("absent");
}

TEST(Ambrisor, AskGivesTheHostsAnswerOrElseTheStart) {
    const auto world = WorldBuilder().Started();
    world->host.titles[u"/a.mp3"] = u"A title";
    EXPECT_EQ(Ask(ImpulseGetLength, Long{-1}), 200);
    EXPECT_EQ(Ask(ImpulseIsPlaying, true), false);
    EXPECT_EQ(Ask(ImpulseGetTitle, std::u16string(u"a"), u"/a.mp3"), u"A title");
    EXPECT_EQ(Ask(ImpulseGetFileTypes, std::u16string(), {}, {}), u"");
    world->host.silent = true;
    EXPECT_EQ(Ask(ImpulseGetLength, Long{-1}), -1);
    EXPECT_EQ(Ask(ImpulseIsPlaying, true), true);
    EXPECT_EQ(Ask(ImpulseGetTitle, std::u16string(u"b"), u"/a.mp3"), u"b");
    EXPECT_EQ(world->host.calls, (std::vector<FakeHost::Call>{{32, "0", "-1", "0"},
                                                              {33, "0", "True", "0"},
                                                              {13, "\"/a.mp3\"", "\"a\"", "0"},
                                                              {11, "null", "\"\"", "null"},
                                                              {32, "0", "-1", "0"},
                                                              {33, "0", "True", "0"},
                                                              {13, "\"/a.mp3\"", "\"b\"", "0"}}));
}

TEST(Ambrisor, WhatASenderLeavesOutIsTheWholeNumberZero) {
    const auto world = WorldBuilder().Started();
    SendImpulse(ImpulseStop);
    SendImpulse(ImpulsePause, true);
    EXPECT_EQ(world->host.calls,
              (std::vector<FakeHost::Call>{{28, "0", "0", "0"}, {27, "True", "0", "0"}}));
}

TEST(Ambrisor, BeforeImpulseThreeTheWindowLoadsAndWhatIsSentIsLost) {
    const auto world = WorldBuilder().Created();
    const auto answered = world->Impulse(15, Long{16});
    EXPECT_EQ(answered.result, 2);
    EXPECT_TRUE(world->windows.IsWindow(answered.lParam1.AsLong().value_or(0)));
    EXPECT_EQ(SendImpulse(33, Long{0}, Long{0}, Long{0}), 0);
    EXPECT_TRUE(world->host.calls.empty());
    world->Impulse(3);
    SendImpulse(33, Long{0}, Long{0}, Long{0});
    EXPECT_EQ(world->host.Numbers(), (std::vector<Long>{33}));
}

TEST(Ambrisor, AfterDisconnectWhatIsSentStillReachesTheHost) {
    const auto world = WorldBuilder().Started();
    world->component->Disconnect();
    SendImpulse(33, Long{0}, Long{0}, Long{0});
    EXPECT_EQ(world->host.Numbers(), (std::vector<Long>{33}));
}

TEST(Ambrisor, AnImpulseThatTouchesTheWindowBeforeTheLoadMakesIt) {
    const auto world = WorldBuilder().Created();
    world->Impulse(3);
    world->Impulse(15, Long{18}, false, Long{0});
    ASSERT_NE(world->State().ExistingMain(), nullptr);
    EXPECT_FALSE(world->Main().IsLoaded());
    const Long window = world->Window();
    EXPECT_EQ(world->Impulse(15, Long{16}).lParam1.AsLong(), window);
    EXPECT_TRUE(world->Main().IsLoaded());
}

TEST(Ambrisor, TwoRunsInOneProcessStartClean) {
    World world;
    world.Start();
    world.Rows({u"a", u"b"});
    world.List().ListCurrent(0);
    world.State().Random = true;
    NextItem();
    EXPECT_EQ(world.State().History.Count(), 1);
    world.Quit();
    world.folder.Remove(World::kPlaylist);
    world.Create();
    EXPECT_EQ(world.State().component, nullptr);
    EXPECT_FALSE(world.State().Random || world.State().Playing);
    EXPECT_EQ(world.State().History.Count(), 0);
    EXPECT_EQ(world.State().ScrollText, u"");
    world.Impulse(3);
    world.Impulse(15, Long{16});
    world.Show(u"");
    EXPECT_EQ(world.List().ListCount(), 0);
    EXPECT_EQ(world.List().ListCurrent(), -1);
    EXPECT_EQ(world.Timers(), (std::vector<Long>{12}));
}

TEST(Ambrisor, AComponentDestroyedWithoutAnEndLeavesNothingRunning) {
    World world;
    world.Start();
    world.Rows({u"a"});
    world.List().ListCurrent(0);
    PlayCurrentItem();
    const Long window = world.Window();
    world.component.reset();
    world.host.Forget();
    EXPECT_FALSE(world.windows.IsWindow(window));
    world.Advance(1000);
    EXPECT_TRUE(world.host.calls.empty());
    EXPECT_EQ(world.Saved(), std::nullopt);  // an abnormal end writes nothing
    world.Start();
    EXPECT_TRUE(world.Main().Visible());
}

}  // namespace
}  // namespace sarnel
