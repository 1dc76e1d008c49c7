// The host ends the run inside its answer to what the file browser or the search panel asks.
#include <gtest/gtest.h>

#include "browser/filebrowser.h"
#include "core/state/settings.h"
#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "platform/menus/menu.h"
#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using namespace platform;
using namespace support;

constexpr Long kFileRow = 3;

// Next time the browser opens with the rows "[.]", "[..]", "[sub]" and "y.mp3".
void KeepFolder(World& world) {
    world.folder.Write("m/y.mp3", "");
    world.folder.Write("m/sub/z.mp3", "");
    settings::kLastDir.Write(world.folder.Text("m/"));
}

std::function<void(World&)> Browsing(Long row) {
    return [row](World& world) {
        KeepFolder(world);
        world.Do([] { RunMenuCommand(u"kAL"); });
        JList& list = *world.Main().lstFilesAndFolders;
        world.windows.SetFocus(list.HWnd());
        list.ClearOrSelect(-1, -1, true);
        list.ListIndex(row);
    };
}

std::function<void(World&)> DoubleClickRow(std::function<JList&(World&)> find, Long row) {
    return [find = std::move(find), row](World& world) {
        const JList& list = find(world);
        Pointer pointer(world, list, {40, list.RowTop(row) + 3});
        for (int i = 0; i < 2; ++i) {
            pointer.Press();
            pointer.Release();
        }
        pointer.Do();
    };
}

// The popup's item is there only once the popup is open.
void PickAddSelected(World& world) {
    world.windows.Schedule(60, [&world] {
        const JPopupMenu& menu = *world.Main().hMenu;
        world.windows.PopupMenus().EndMenu(menu.MenuId(menu.IndexForKey(u"kALPA")));
    });
    Pointer pointer(world, *world.Main().lstFilesAndFolders);
    pointer.Press(2);
    pointer.Release(2);
    pointer.Do();
}

void Searching(World& world) {
    world.Do([] { RunMenuCommand(u"kPkSh"); });
}

std::vector<Way> BrowserWays() {
    const auto browser = [](World& world) -> JList& { return *world.Main().lstFilesAndFolders; };
    return {
        {"Open", KeepFolder, Command(u"kAL")},
        {"EnterOnAFile", Browsing(kFileRow), KeyPress(VK_RETURN)},
        {"EnterOnAFolder", Browsing(2), KeyPress(VK_RETURN)},
        {"DoubleClickOnAFile", Browsing(kFileRow), DoubleClickRow(browser, kFileRow)},
        {"FillAgain", Browsing(kFileRow), KeyPress(VK_F5)},
        {"Parent", Browsing(kFileRow), KeyPress(VK_BACK)},
        {"AddSelected", Browsing(kFileRow), PickAddSelected},
    };
}

std::vector<Way> SearchWays() {
    const auto hits = [](World& world) -> JList& { return *world.Main().lst_Search; };
    return {
        {"Enter", Searching, KeyPress(VK_RETURN)},
        {"DoubleClick", Searching, DoubleClickRow(hits, 1)},
    };
}

class ReentryOfPanels : public ::testing::TestWithParam<Way> {};

TEST_P(ReentryOfPanels, TheRunMayEndInsideEveryCall) {
    EndInsideEveryCall(GetParam());
}

TEST_P(ReentryOfPanels, TheHostMayGoToTheNextItemInsideTheFirstCall) {
    NextItemInsideTheFirstCall(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Browser, ReentryOfPanels, ::testing::ValuesIn(BrowserWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);
INSTANTIATE_TEST_SUITE_P(Search, ReentryOfPanels, ::testing::ValuesIn(SearchWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);

TEST(ReentryWays, ThePanelsAskTheHost) {
    const std::vector<Long> added{ImpulseIsSupported, ImpulseGetTitle};
    EXPECT_EQ(CallsOf({"", KeepFolder, Command(u"kAL")}), std::vector<Long>{ImpulseIsSupported});
    EXPECT_EQ(CallsOf({"", Browsing(kFileRow), KeyPress(VK_RETURN)}), added);
    EXPECT_EQ(CallsOf({"", Browsing(kFileRow), PickAddSelected}),
              (std::vector<Long>{ImpulseIsSupported, ImpulseGetTitle, ImpulseIsSupported,
                                 ImpulseGetTitle}));
    const std::vector<Long> played = CallsOf({"", Searching, KeyPress(VK_RETURN)});
    ASSERT_FALSE(played.empty());
    EXPECT_EQ(played.front(), ImpulseOpen);
}

}  // namespace
}  // namespace sarnel
