// The one dispatcher of commands: whatever is picked in a popup, pressed as a key combination or
// switched by a toggle ends in hMenu_Click.
#include <optional>
#include <string>
#include <string_view>

#include "browser/filebrowser.h"
#include "browser/search.h"
#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "core/state/modes.h"
#include "core/state/paneltable.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "lyrics/lyrics.h"
#include "menus/commandmenu.h"
#include "platform/base/text.h"
#include "playback/mPlayback.h"
#include "playlist/listcommands.h"
#include "skin/panels.h"
#include "skin/skin.h"

namespace sarnel {

namespace {

constexpr std::u16string_view kSkinKey = menukeys::kSkin;

void SetMode(const Mode& mode, bool on) {
    if (mode.state != nullptr) {
        App().*mode.state = on;
    }
    Step([&] { Mark(mode.menuKey, on); });
    mode.setting.Write(on);
}

// What a panel shows is fetched before it opens.
void FillPanel(Long panel) {
    switch (panel) {
        case kLyricsPanel:
            Step([] { ShowLyrics(false); });
            break;
        case kBrowserPanel:
            Step([] { FillBrowser(*App().Main().lstFilesAndFolders, settings::kLastDir.Read()); });
            break;
        case kInformationPanel:
            Step(ShowItemInfo);
            break;
        case kSearchPanel: {
            frmMAIN& main = App().Main();
            Step([&] { RefreshSearch(main.txt_SearchFilter->Text()); });
            App().windows.SetFocus(main.txt_SearchFilter->HWnd());
            break;
        }
        default:
            break;
    }
}

void TogglePanel(const PanelRow& panel, bool open) {
    if (open) {
        FillPanel(panel.frame);
    }
    if (panel.toggle) {
        App().Main().tglSkin(*panel.toggle).Value(open);
    }
    ShowPanel(panel.frame, open);
    if (panel.frame == kBrowserPanel && !IsMarked(panel.menuKey)) {
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
constexpr Command kCommands[] = {
    {menukeys::kExit, [](bool) { RequestExit(); }},
    {menukeys::kAbout, [](bool) { OpenGuide(); }},
    {menukeys::kTopMost, SetTopMost},
    {menukeys::kHideInSystray, SetHideInSystray},
    {menukeys::kManualAdvance, SetManualAdvance},
    {menukeys::kPlayAtStartup, SetPlayAtStartup},
    {menukeys::kRandom, SetRandom},
    {menukeys::kRepeatItem, SetRepeatItem},
    {menukeys::kRepeatList, SetRepeatList},
    {menukeys::kClearAll, [](bool) { ClearAllEntries(); }},
    {menukeys::kRemoveSelected, [](bool) { RemoveSelected(); }},
    {menukeys::kCropSelected, [](bool) { CropSelected(); }},
    {menukeys::kRemoveDead, [](bool) { RemoveDeadEntries(); }},
    {menukeys::kSelectAll, [](bool) { SelectAll(); }},
    {menukeys::kSelectNone, [](bool) { SelectNone(); }},
    {menukeys::kInvertSelection, [](bool) { InvertSelection(); }},
};

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
    for (const PanelRow& panel : kPanelRows) {
        if (panel.menuKey == key) {
            TogglePanel(panel, on);
            return;
        }
    }
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
