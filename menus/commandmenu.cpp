#include "menus/commandmenu.h"

#include <map>
#include <memory>
#include <string>

#include "core/base/component.h"
#include "core/base/failure.h"
#include "core/base/hostobject.h"
#include "core/state/frmmain.h"
#include "core/state/menukeys.h"
#include "core/state/modes.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "skin/skin.h"

namespace sarnel {

namespace {

struct Row {
    const char16_t* caption;
    const char16_t* parent;  // the caption of the latest plain item of that name; empty: top level
    const char16_t* key;
    enum Kind { kPlain, kHeader, kDisabled, kSkins, kComponents } kind = kPlain;
};

// In the order of creation, which is the order on the screen.
constexpr Row kTree[] = {
    {u"Playlist", u"", u""},
    {u"Playlist menu", u"Playlist", menukeys::kPlaylistHeader, Row::kHeader},
    {u"Add", u"Playlist", u""},
    {u"Add media", u"Add", menukeys::kAddHeader, Row::kHeader},
    {u"Add files, dirs#Insert", u"Add", menukeys::kAddFiles},
    {u"Add streams#Ctrl+Insert", u"Add", menukeys::kAddStreams, Row::kDisabled},
    {u"Remove", u"Playlist", u""},
    {u"Remove media", u"Remove", menukeys::kRemoveHeader, Row::kHeader},
    {u"Remove selected#Del", u"Remove", menukeys::kRemoveSelected},
    {u"Crop selected#Ctrl+Del", u"Remove", menukeys::kCropSelected},
    {u"Remove dead entries#Alt+Del", u"Remove", menukeys::kRemoveDead},
    {u"-", u"Remove", u""},
    {u"Clear all entries#Shift+C", u"Remove", menukeys::kClearAll},
    {u"Misc", u"Playlist", u""},
    {u"Misc", u"Misc", menukeys::kMiscHeader, Row::kHeader},
    {u"Select all#Ctrl+A", u"Misc", menukeys::kSelectAll},
    {u"Select none", u"Misc", menukeys::kSelectNone},
    {u"Invert selection", u"Misc", menukeys::kInvertSelection},
    {u"-", u"Playlist", u""},
    {u"Lists", u"Playlist", u""},
    {u"Lists", u"Lists", menukeys::kListsHeader, Row::kHeader},
    {u"List manager#Ctrl+M", u"Lists", menukeys::kListManager, Row::kDisabled},
    {u"-", u"Lists", u""},
    {u"Settings", u"", u""},
    {u"Settings", u"Settings", u"", Row::kHeader},
    {u"Always on top#Shift+A", u"Settings", menukeys::kTopMost},
    {u"Minimize in systray", u"Settings", menukeys::kHideInSystray},
    {u"Associate files", u"Settings", menukeys::kAssociateFiles},
    {u"Skins", u"Settings", u"", Row::kHeader},
    {u"", u"Settings", menukeys::kSkin, Row::kSkins},
    {u"Playback", u"", menukeys::kPlayback},
    {u"Playback", u"Playback", u"", Row::kHeader},
    {u"Show lyrics#Ctrl+L", u"Playback", menukeys::kLyrics},
    {u"Audio effects#Ctrl+E", u"Playback", menukeys::kEffects},
    {u"Item information#Ctrl+I", u"Playback", menukeys::kInformation},
    {u"-", u"Playback", u""},
    {u"Search items#Ctrl+F", u"Playback", menukeys::kSearch},
    {u"-", u"Playback", u""},
    {u"Manual advance", u"Playback", menukeys::kManualAdvance},
    {u"Play at startup", u"Playback", menukeys::kPlayAtStartup},
    {u"-", u"Playback", u""},
    {u"Repeat single item", u"Playback", menukeys::kRepeatItem},
    {u"Repeat whole playlist", u"Playback", menukeys::kRepeatList},
    {u"Random playback#Ctrl+R", u"Playback", menukeys::kRandom},
    {u"Components", u"", menukeys::kComponents},
    {u"Components", u"Components", u"", Row::kHeader},
    {u"", u"Components", menukeys::kComponents, Row::kComponents},
    {u"-", u"", u""},
    {u"About#F1", u"", menukeys::kAbout},
    {u"Exit#Alt+F4", u"", menukeys::kExit},
};

// The settings of the modes that have a state are read later, and correct it.
bool FirstMark(std::u16string_view key) {
    for (const Mode& mode : modes::kAll) {
        if (mode.menuKey == key) {
            return mode.state != nullptr ? App().*mode.state : IsOn(mode.setting);
        }
    }
    return false;
}

void AddSkins(JPopupMenu& menu, Long parent) {
    for (Long i = 1; i <= SkinCount(); ++i) {
        const std::u16string number = LongToText(i);
        Step([&] {
            menu.AddItem(SkinName(i) + u"#Shift+" + number, parent, menukeys::kSkin + number, false,
                         true);
        });
    }
    menu.RadioCheck(menu.IndexForKey(menukeys::kSkin + LongToText(App().CurrentSkin)), true);
}

void AddComponents(JPopupMenu& menu, Long parent) {
    HostObject* host = App().component != nullptr ? App().component->Server() : nullptr;
    Long capacity = 0;
    Step([&] { capacity = host != nullptr ? host->Capacity() : 0; });
    for (Long i = 1; i <= capacity; ++i) {
        Step([&] {
            Long number = i;
            HostCell* cell = host->CellItem(number);
            if (cell != nullptr) {
                menu.AddItem(cell->getClass(), parent, menukeys::kComponents + LongToText(i), false,
                             false);
            }
        });
    }
}

}  // namespace

void BuildMenu() {
    frmMAIN& main = App().Main();
    const auto owned =
        std::make_shared<JPopupMenu>(App().Popups);  // asking the host may close the window
    main.hMenu = owned;
    JPopupMenu& menu = *owned;
    menu.hWndOwner(main.HWnd());
    menu.onClick = [](Long& ItemNumber) { hMenu_Click(ItemNumber); };
    const Long title = menu.AddItem(main.Caption(), 0, u"", false, true);
    menu.Header(title, true);
    std::map<std::u16string, Long> parents{{u"", 0}};
    for (const Row& row : kTree) {
        const Long parent = parents[row.parent];
        if (row.kind == Row::kSkins) {
            AddSkins(menu, parent);
        } else if (row.kind == Row::kComponents) {
            AddComponents(menu, parent);
        } else {
            const Long index = menu.AddItem(row.caption, parent, row.key, FirstMark(row.key),
                                            row.kind != Row::kDisabled);
            if (row.kind == Row::kHeader) {
                menu.Header(index, true);
            }
            if (row.kind == Row::kPlain) {
                parents[row.caption] = index;
            }
        }
    }
}

}  // namespace sarnel
