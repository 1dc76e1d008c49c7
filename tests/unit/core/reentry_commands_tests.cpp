// The host ends the run inside its answer to what a command of the user has made the component ask:
// menu, key combinations, buttons, toggles, sliders, keys and mouse of the list, hot keys.
#include <gtest/gtest.h>

#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using namespace platform;
using namespace support;

constexpr const char16_t* kMenuKeys[] = {
    u"kExt",  u"kAbt",  u"kTMst",  u"kHIS",   u"kPMA",  u"kPPAS", u"kPRdm", u"kPRpI",
    u"kPRpP", u"kPkLy", u"kPkEFX", u"kPkNFO", u"kPkSh", u"kAsF",  u"kAL",   u"kRAll",
    u"kRS",   u"kRCS",  u"kRD",    u"kSeA",   u"kSeN",  u"kSeI",  u"kSk1"};

std::string Name(std::u16string_view key) {
    return {key.begin() + 1, key.end()};
}

bool Empties(std::u16string_view key) {
    return key == u"kRAll" || key == u"kRCS" || key == u"kRD";  // no row has a file
}

// The skin command does nothing for the skin in use.
void WithAnotherSkin(World& world) {
    world.State().CurrentSkin = 2;
}

// Picks a row of the next popup that opens, once a tick has come while it is open.
std::function<void(World&)> Pick(std::u16string_view key, std::function<void(World&)> open) {
    return [key, open = std::move(open)](World& world) {
        ChooseLater(world, key, 60);
        open(world);
    };
}

std::function<Widget&(World&)> Button(Long index) {
    return [index](World& world) -> Widget& { return world.Main().btnSkin(index); };
}

std::function<void(World&)> Combination(std::u16string_view key) {
    return [key](World& world) {
        const JPopupMenu& menu = *world.Main().hMenu;
        const KeyCombination keys = menu.Keys(menu.IndexForKey(key));
        KeyPress(keys.code, keys.modifiers)(world);
    };
}

// The three roads to a command.
std::vector<Way> MenuWays() {
    std::vector<Way> ways;
    for (const std::u16string_view key : kMenuKeys) {
        const auto add = [&](const char* road, std::function<void(World&)> enter) {
            ways.push_back(
                {road + Name(key), WithAnotherSkin, std::move(enter), true, Empties(key)});
        };
        add("Run_", Command(key));
        add("Press_", Combination(key));
        add("Pick_", Pick(key, ClickOn(Button(2))));
    }
    return ways;
}

std::function<Widget&(World&)> Toggle(Long index) {
    return [index](World& world) -> Widget& { return world.Main().tglSkin(index); };
}

std::function<Widget&(World&)> Display() {
    return [](World& world) -> Widget& { return world.Main().picInfoDisplay; };
}

void WithEffects(World& world) {
    world.Do([] { RunMenuCommand(u"kPkEFX"); });
}

// Pressed near one end, pulled to the other, let go.
void MoveSlider(World& world, Long index) {
    const JSlider& slider = world.Main().sldSkin(index);
    Pointer pointer(world, slider, {1, 1});
    pointer.Press();
    pointer.MoveTo({slider.Width() - 2, slider.Height() - 2});
    pointer.Release();
    pointer.Do();
}

Way Slider(Long index, std::function<void(World&)> before) {
    return {"Slider" + std::to_string(index), std::move(before),
            [index](World& world) { MoveSlider(world, index); }};
}

std::vector<Way> ControlWays() {
    std::vector<Way> ways{
        {"ExitButton", Playing, ClickOn(Button(0))},
        {"MinimiseButton", Playing, ClickOn(Button(1)), true},
        {"PreviousButton", AtTheEnd, ClickOn(Button(3))},
        {"PlayButton", [](World& world) { world.List().ListCurrent(1); }, ClickOn(Button(4))},
        {"PauseButton", Playing, ClickOn(Button(5))},
        {"StopButton", Playing, ClickOn(Button(6))},
        {"NextButton", Playing, ClickOn(Button(7))},
        {"ResetButton", WithEffects, ClickOn(Button(12))},
        {"TopMostToggle", Stay, ClickOn(Toggle(0)), true},
        {"LyricsToggle", Stay, ClickOn(Toggle(1)), true},
        {"EffectsToggle", Stay, ClickOn(Toggle(2)), true},
        {"InformationToggle", Playing, ClickOn(Toggle(3))},
        {"InformationToggleBack", Command(u"kPkNFO"), ClickOn(Toggle(3)), true},
        Slider(0, Playing),
        Slider(1, Stay),
    };
    for (Long index = 3; index < 10; ++index) {
        ways.push_back(Slider(index, WithEffects));
    }
    for (Long mode = 0; mode < 4; ++mode) {
        ways.push_back({"DisplayInMode" + std::to_string(mode),
                        [mode](World& world) { world.State().DisplayMode = mode; },
                        ClickOn(Display())});
    }
    for (const Long index : {8, 9, 10, 11}) {
        ways.push_back(
            {"MenuButton" + std::to_string(index), Stay, Pick(u"kPkNFO", ClickOn(Button(index)))});
    }
    ways.push_back({"MenuButtonWhilePlaying", Playing, Pick(u"kPkNFO", ClickOn(Button(2)))});
    return ways;
}

Way ListKey(const std::string& name, Long code, Long shift = 0) {
    return {"ListKey" + name, Playing, KeyPress(code, shift)};
}

Point RowPoint(World& world, Long row) {
    return {20, world.List().RowTop(row) + 3};
}

// On the strip, below the thumb: the list scrolls, with ticks meanwhile, until the button is up.
void HoldTrack(World& world) {
    const JList& list = world.List();
    Pointer pointer(world, list, {list.Width() - 6, list.Height() - 6});
    pointer.Press();
    pointer.Release(1, 500);
    pointer.Do();
}

void HoldThumb(World& world) {
    const JList& list = world.List();
    Pointer pointer(world, list, {list.Width() - 6, 5});
    pointer.Press();
    pointer.MoveTo({list.Width() - 6, 60}, 120);
    pointer.Release(1, 400);
    pointer.Do();
}

// A band that has left the list scrolls by itself.
void PullBandOut(World& world) {
    Pointer pointer(world, world.List(), RowPoint(world, 1));
    pointer.Press();
    pointer.MoveTo({20, world.List().Height() + 20});
    pointer.MoveTo({20, 20}, 400);
    pointer.Release(1, 500);
    pointer.Do();
}

std::vector<Way> ListWays() {
    std::vector<Way> ways{
        {"ListKeyPreviousZ", AtTheEnd, KeyPress('Z')},
        ListKey("PlayX", 'X'),
        ListKey("PauseC", 'C'),
        ListKey("StopV", 'V'),
        ListKey("NextB", 'B'),
        ListKey("Louder", VK_ADD),
        ListKey("Softer", VK_SUBTRACT),
        ListKey("Left", VK_LEFT),
        ListKey("Right", VK_RIGHT),
        ListKey("RightWithCtrl", VK_RIGHT, kCtrlBit),
        ListKey("RightWithShift", VK_RIGHT, kShiftBit),
        {"ListKeyEnter", [](World& world) { world.List().ListIndex(1); }, KeyPress(VK_RETURN)},
        {"ListDoubleClick", Stay,
         [](World& world) {
             Pointer pointer(world, world.List(), RowPoint(world, 1));
             for (int i = 0; i < 2; ++i) {
                 pointer.Press();
                 pointer.Release();
             }
             pointer.Do();
         }},
        {"ListRightClick", Stay,
         Pick(u"kPkNFO",
              [](World& world) {
                  Pointer pointer(world, world.List(), RowPoint(world, 1));
                  pointer.Press(2);
                  pointer.Release(2);
                  pointer.Do();
              })},
        {"ListTrack", PlayingALongList, HoldTrack},
        {"ListThumb", PlayingALongList, HoldThumb},
        {"ListBand", PlayingALongList, PullBandOut},
    };
    return ways;
}

std::vector<Way> HotKeyWays() {
    const auto atRandom = [](World& world) { world.State().Random = true; };
    const auto repeating = [](World& world) {
        world.State().RepeatItem = true;
        Playing(world);
    };
    const auto overADeadRow = [](World& world) {
        world.host.dead.insert(u"b");
        Playing(world);
    };
    return {
        {"PlayKey", [](World& world) { world.List().ListCurrent(1); }, HotKey(u"Play")},
        {"NextKey", Playing, HotKey(u"Next")},
        {"NextKeyOverADeadRow", overADeadRow, HotKey(u"Next")},
        {"NextKeyAtTheEnd", AtTheEnd, HotKey(u"Next")},
        {"NextKeyAtRandom", atRandom, HotKey(u"Next")},
        {"NextKeyRepeatingTheItem", repeating, HotKey(u"Next")},
        {"PreviousKey", AtTheEnd, HotKey(u"Prev")},
        {"StopKey", Playing, HotKey(u"Stop")},
        {"PauseKey", Playing, HotKey(u"Pause")},
        {"StepBackKey", Playing, HotKey(u"StepBack")},
        {"StepForwardKey", Playing, HotKey(u"StepForw")},
        {"LouderKey", Stay, HotKey(u"VolUp")},
        {"SofterKey", Stay, HotKey(u"VolDown")},
        {"ExitKey", Playing, HotKey(u"Exit")},
    };
}

class ReentryOfCommands : public ::testing::TestWithParam<Way> {};

TEST_P(ReentryOfCommands, TheRunMayEndInsideEveryCall) {
    EndInsideEveryCall(GetParam());
}

TEST_P(ReentryOfCommands, TheHostMayGoToTheNextItemInsideTheFirstCall) {
    NextItemInsideTheFirstCall(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Menu, ReentryOfCommands, ::testing::ValuesIn(MenuWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);
INSTANTIATE_TEST_SUITE_P(Controls, ReentryOfCommands, ::testing::ValuesIn(ControlWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);
INSTANTIATE_TEST_SUITE_P(List, ReentryOfCommands, ::testing::ValuesIn(ListWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);
INSTANTIATE_TEST_SUITE_P(HotKeys, ReentryOfCommands, ::testing::ValuesIn(HotKeyWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);

// Else the ways could be quiet, and nobody would notice.
TEST(ReentryWays, TheCommandsThatAskTheHostDoSo) {
    const auto calls = [](std::u16string_view key) {
        return CallsOf({Name(key), WithAnotherSkin, Command(key)});
    };
    EXPECT_EQ(calls(u"kPkNFO"), std::vector<Long>{ImpulseGetInfo});
    EXPECT_EQ(calls(u"kExt"), std::vector<Long>{ImpulseRequestExit});
    EXPECT_EQ(calls(u"kSk1"), std::vector<Long>{ImpulseGetFileTypes});
    EXPECT_EQ(CallsOf({"Pick", WithAnotherSkin, Pick(u"kSk1", ClickOn(Button(2)))}),
              std::vector<Long>{ImpulseGetFileTypes});
    EXPECT_EQ(CallsOf({"Press", Stay, Combination(u"kPkNFO")}), std::vector<Long>{ImpulseGetInfo});
}

}  // namespace
}  // namespace sarnel
