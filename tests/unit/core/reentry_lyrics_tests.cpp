// The host ends the run while the lyrics are in work: inside its answer to what plays with the
// panel open, to what the panel's keys pass on, and in a tick while the panel's popup is open.
#include <gtest/gtest.h>

#include "lyrics/lyrics.h"
#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using namespace platform;
using namespace support;

// The panel lies open over the row that plays, and has the keys.
void ReadingLyrics(World& world) {
    Playing(world);
    world.Do([] { RunMenuCommand(u"kPkLy"); });
    world.windows.SetFocus(world.Main().txtLyrics->HWnd());
}

void ReadingAtTheEnd(World& world) {
    AtTheEnd(world);
    ReadingLyrics(world);
    world.List().ListCurrent(2);
}

Way LyricsKey(const std::string& name, Long code, Long shift = 0, bool mayBeQuiet = false) {
    return {"LyricsKey" + name, ReadingLyrics, KeyPress(code, shift), mayBeQuiet};
}

// An item of the popup is chosen once a tick has come while it was open. The item is there only
// then, and not at all if the tick ended the run.
void ChooseInLyricsPopup(World& world, std::u16string_view key) {
    world.windows.Schedule(60, [&world, key] {
        const frmMAIN* main = world.component ? world.State().ExistingMain() : nullptr;
        const Long id =
            main != nullptr && main->hMenu ? main->hMenu->MenuId(main->hMenu->IndexForKey(key)) : 0;
        world.windows.PopupMenus().EndMenu(id);
    });
    const Widget& box = *world.Main().txtLyrics;
    Pointer pointer(world, box);
    pointer.Press(2);
    pointer.Release(2);
    pointer.Do();
}

Way LyricsPopup(const std::string& name, std::u16string_view key) {
    return {"LyricsPopup" + name, ReadingLyrics,
            [key](World& world) { ChooseInLyricsPopup(world, key); }};
}

void EndOfTheStream(World& world) {
    world.host.playing = false;
    Tick(world);
}

std::vector<Way> LyricsWays() {
    return {
        {"PlayOverOpenLyrics", ReadingLyrics, HotKey(u"Play")},
        {"NextOverOpenLyrics", ReadingLyrics, HotKey(u"Next")},
        {"TickOverOpenLyrics", ReadingLyrics, EndOfTheStream},
        {"OpeningLyricsWhilePlaying", Playing, Both(Command(u"kPkLy"), Tick)},
        {"ReloadingByCall", ReadingLyrics, Both(Call([] { ShowLyrics(true); }), Tick)},
        {"LyricsKeyPreviousZ", ReadingAtTheEnd, KeyPress('Z')},
        LyricsKey("PlayX", 'X'),
        LyricsKey("PauseC", 'C'),
        LyricsKey("StopV", 'V'),
        LyricsKey("NextB", 'B'),
        LyricsKey("Left", VK_LEFT),
        LyricsKey("RightWithShift", VK_RIGHT, kShiftBit),
        LyricsKey("Reload", VK_F5, 0, true),
        LyricsKey("Close", VK_ESCAPE, 0, true),
        LyricsKey("Down", VK_DOWN, 0, true),
        LyricsPopup("WithoutAChoice", u""),
        LyricsPopup("Copy", u"kPkLyPC"),
        LyricsPopup("Edit", u"kPkLyPEd"),
        LyricsPopup("Reload", u"kPkLyPRL"),
        LyricsPopup("Close", u"kPkLyPCl"),
    };
}

class ReentryOfLyrics : public ::testing::TestWithParam<Way> {};

TEST_P(ReentryOfLyrics, TheRunMayEndInsideEveryCall) {
    EndInsideEveryCall(GetParam());
}

TEST_P(ReentryOfLyrics, TheHostMayGoToTheNextItemInsideTheFirstCall) {
    NextItemInsideTheFirstCall(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Lyrics, ReentryOfLyrics, ::testing::ValuesIn(LyricsWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);

// Else the ways could be quiet, or the choices none.
TEST(ReentryOfLyricsWays, DoWhatTheyAreNamedFor) {
    EXPECT_EQ(CallsOf(LyricsKey("PlayX", 'X')).front(), ImpulseOpen);
    EXPECT_EQ(CallsOf(LyricsPopup("WithoutAChoice", u"")).front(), ImpulseIsPlaying);
    const auto world = Prepared(LyricsPopup("Close", u"kPkLyPCl"));
    ASSERT_TRUE(world->Main().picFrame(kLyricsPanel).Visible());
    ChooseInLyricsPopup(*world, u"kPkLyPCl");
    EXPECT_FALSE(world->Main().picFrame(kLyricsPanel).Visible());
}

}  // namespace
}  // namespace sarnel
