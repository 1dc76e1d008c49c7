// What the file browser does with keys and the mouse: lstFilesAndFolders, and its popup.
#include <array>
#include <string>

#include "browser/filebrowser.h"
#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "menus/commandmenu.h"
#include "menus/temporarypopup.h"
#include "platform/base/keys.h"
#include "playlist/media.h"

namespace sarnel {

using namespace platform;

namespace {

JList& Browser() {
    return *App().Main().lstFilesAndFolders;
}

// The command of the panel, which is open.
void ClosePanel() {
    RunMenuCommand(menukeys::kAddFiles);
}

void Activate() {
    JList& list = Browser();
    const Long row = list.ListIndex();
    Step([&] {
        if (list.ImageIndex(row) == kFileImage) {
            Step([&] { AddFileToList(list.List(row), list.ListData(row)); });
            ClosePanel();
        } else {
            FillBrowser(list, list.ListData(row));
        }
    });
}

void Up() {
    const JList& list = Browser();
    if (ShowsParent(list)) {
        FillBrowser(Browser(), list.ListData(1));
    } else if (ShowsFolder(list)) {
        FillBrowser(Browser(), list.ListData(0));
    }
}

void FillAgain() {
    FillBrowser(Browser(), settings::kLastDir.Read());
}

void lstFilesAndFolders_KeyDown(Long KeyCode, Long /*Shift*/) {
    switch (KeyCode) {
        case VK_RETURN:
            Activate();
            break;
        case VK_BACK:
            Up();
            break;
        case VK_F5:
            FillAgain();
            break;
        case VK_ESCAPE:
            ClosePanel();
            break;
        default:
            break;
    }
}

void ShowBrowserPopup() {
    static constexpr std::u16string_view kAdd = u"kALPA";
    static constexpr std::u16string_view kRecurse = u"kALPR";
    static constexpr std::u16string_view kSortByName = u"kALPSN";
    static constexpr std::u16string_view kClose = u"kALPC";
    const bool recurse = settings::kRecurseSubdirs.Read().value_or(false);
    const std::array<TemporaryItem, 7> items{{
        {u"Add local items", u"kALP", TemporaryItem::kHeader},
        {.caption = u"Add selected", .key = kAdd, .enabled = CanAddSelected(Browser())},
        {.caption = u"Recurse subdirs", .key = kRecurse, .checked = recurse},
        {u"-", u""},
        {.caption = u"Sort by name", .key = kSortByName, .radio = App().SortFilesMode == 0},
        {u"-", u""},
        {u"Close dialog frame", kClose},
    }};
    TemporaryPopup popup(menukeys::kAddFiles, items);
    const std::u16string key = popup.Choose();
    if (key == kAdd) {
        AddSelected(recurse);
        ClosePanel();
    } else if (key == kRecurse) {
        settings::kRecurseSubdirs.Write(!recurse);
    } else if (key == kSortByName) {
        App().SortFilesMode = 0;
        FillAgain();
        settings::kSortFilesMode.Write(0);
    } else if (key == kClose) {
        ClosePanel();
    }
}

void lstFilesAndFolders_MouseUp(const MouseEvent& event) {
    if (event.Button == kRightButton) {
        Step(ShowBrowserPopup);
    }
}

}  // namespace

void AttachBrowserHandlers(frmMAIN& main) {
    JList& list = *main.lstFilesAndFolders;
    list.onDblClick = Activate;
    list.onKeyDown = lstFilesAndFolders_KeyDown;
    list.onMouseUp = lstFilesAndFolders_MouseUp;
}

}  // namespace sarnel
