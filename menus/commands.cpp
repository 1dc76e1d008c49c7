// The one dispatcher of commands: whatever is picked in a popup, pressed as a key combination or
// switched by a toggle ends in hMenu_Click.
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/modes.h"
#include "core/state/program.h"
#include "core/state/seams.h"
#include "core/state/settings.h"
#include "menus/commandmenu.h"
#include "platform/base/text.h"
#include "playback/mPlayback.h"
#include "playlist/listcommands.h"
#include "skin/panels.h"
#include "skin/skin.h"

namespace sarnel {

namespace {

constexpr std::u16string_view kSkinKey = u"kSk";

void SetMode(const Mode& mode, bool on) {
    if (mode.state != nullptr) {
        App().*mode.state = on;
    }
    Step([&] { Mark(mode.menuKey, on); });
    mode.setting.Write(on);
}

void TogglePanel(Long toggle, Long panel, bool open) {
    App().Main().tglSkin(toggle).Value(open);
    ShowPanel(panel, open);
}

void ShowLyricsPanel(bool open) {
    if (open) {
        Step([] { seams::ShowLyrics(false); });
    }
    TogglePanel(1, 0, open);
}

void ShowEffectsPanel(bool open) {
    TogglePanel(2, 3, open);
}

void ShowInfoPanel(bool open) {
    if (open) {
        Step(ShowItemInfo);
    }
    TogglePanel(3, 4, open);
}

void ShowSearchPanel(bool open) {
    frmMAIN& main = App().Main();
    if (open) {
        Step([&] { seams::RefreshSearch(main.txt_SearchFilter->Text()); });
        App().windows.SetFocus(main.txt_SearchFilter->HWnd());
    }
    ShowPanel(5, open);
}

void ShowAssociationPanel(bool open) {
    ShowPanel(2, open);
}

void ShowBrowserPanel(bool open) {
    if (open) {
        Step([] { seams::FillBrowser(settings::kLastDir.Read()); });
    }
    ShowPanel(1, open);
    if (!IsMarked(u"kAL")) {
        App().Main().lstFilesAndFolders->Clear();
    }
}

void OpenGuide() {
    App().windows.GetDriver().OpenDocument(platform::Widen(App().guide));
}

void RequestExit() {
    SendImpulse(ImpulseRequestExit, kControlShow, false);
}

// A command takes the opposite of its item's mark, as it was when the command began.
struct Command {
    std::u16string_view key;
    void (*run)(bool on);
};
constexpr std::array<Command, 22> kCommands{{
    {u"kExt", [](bool) { RequestExit(); }},
    {u"kAbt", [](bool) { OpenGuide(); }},
    {modes::kTopMost.menuKey, SetTopMost},
    {modes::kHideInSystray.menuKey, SetHideInSystray},
    {modes::kManualAdvance.menuKey, SetManualAdvance},
    {modes::kPlayAtStartup.menuKey, SetPlayAtStartup},
    {modes::kRandom.menuKey, SetRandom},
    {modes::kRepeatItem.menuKey, SetRepeatItem},
    {modes::kRepeatList.menuKey, SetRepeatList},
    {u"kPkLy", ShowLyricsPanel},
    {u"kPkEFX", ShowEffectsPanel},
    {u"kPkNFO", ShowInfoPanel},
    {u"kPkSh", ShowSearchPanel},
    {u"kAsF", ShowAssociationPanel},
    {u"kAL", ShowBrowserPanel},
    {u"kRAll", [](bool) { ClearAllEntries(); }},
    {u"kRS", [](bool) { RemoveSelected(); }},
    {u"kRCS", [](bool) { CropSelected(); }},
    {u"kRD", [](bool) { RemoveDeadEntries(); }},
    {u"kSeA", [](bool) { SelectAll(); }},
    {u"kSeN", [](bool) { SelectNone(); }},
    {u"kSeI", [](bool) { InvertSelection(); }},
}};

// The skin in use is not put in force again.
void ChooseSkin(std::u16string_view number, Long item) {
    const std::optional<Long> skin = TextToLong(number);
    if (skin && *skin != App().CurrentSkin) {
        LoadSkin(*skin);
        Menu()->GroupToggle(item);
    }
}

void RunCommand(Long item) {
    const auto menu = Menu();
    const std::u16string key = menu->ItemKey(item);
    const bool on = !menu->Checked(item);
    for (const Command& command : kCommands) {
        if (command.key == key) {
            command.run(on);
            return;
        }
    }
    if (key.starts_with(kSkinKey)) {
        ChooseSkin(std::u16string_view(key).substr(kSkinKey.size()), item);
    }
}

}  // namespace

void SetHideInSystray(bool on) {
    SetMode(modes::kHideInSystray, on);
}

void SetPlayAtStartup(bool on) {
    SetMode(modes::kPlayAtStartup, on);
}

void SetManualAdvance(bool on) {
    SetMode(modes::kManualAdvance, on);
}

void SetRandom(bool on) {
    SetMode(modes::kRandom, on);
}

void SetRepeatItem(bool on) {
    SetMode(modes::kRepeatItem, on);
}

void SetRepeatList(bool on) {
    SetMode(modes::kRepeatList, on);
}

void hMenu_Click(Long ItemNumber) {
    Step([&] { RunCommand(ItemNumber); });
}

void RunMenuCommand(std::u16string_view key) {
    Step([&] { RunCommand(Menu()->IndexForKey(key)); });
}

}  // namespace sarnel
