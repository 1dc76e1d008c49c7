#include "menus/commandmenu.h"

#include <map>
#include <memory>
#include <string>

#include "core/base/component.h"
#include "core/base/failure.h"
#include "core/base/hostobject.h"
#include "core/state/frmmain.h"
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
    {u"Playlist menu", u"Playlist", u"kMMH", Row::kHeader},
    {u"Add", u"Playlist", u""},
    {u"Add media", u"Add", u"kAHe", Row::kHeader},
    {u"Add files, dirs#Insert", u"Add", u"kAL"},
    {u"Add streams#Ctrl+Insert", u"Add", u"kAEx", Row::kDisabled},
    {u"Remove", u"Playlist", u""},
    {u"Remove media", u"Remove", u"kRHe", Row::kHeader},
    {u"Remove selected#Del", u"Remove", u"kRS"},
    {u"Crop selected#Ctrl+Del", u"Remove", u"kRCS"},
    {u"Remove dead entries#Alt+Del", u"Remove", u"kRD"},
    {u"-", u"Remove", u""},
    {u"Clear all entries#Shift+C", u"Remove", u"kRAll"},
    {u"Misc", u"Playlist", u""},
    {u"Misc", u"Misc", u"kSHe", Row::kHeader},
    {u"Select all#Ctrl+A", u"Misc", u"kSeA"},
    {u"Select none", u"Misc", u"kSeN"},
    {u"Invert selection", u"Misc", u"kSeI"},
    {u"-", u"Playlist", u""},
    {u"Lists", u"Playlist", u""},
    {u"Lists", u"Lists", u"kLHD", Row::kHeader},
    {u"List manager#Ctrl+M", u"Lists", u"kLMgr", Row::kDisabled},
    {u"-", u"Lists", u""},
    {u"Settings", u"", u""},
    {u"Settings", u"Settings", u"", Row::kHeader},
    {u"Always on top#Shift+A", u"Settings", u"kTMst"},
    {u"Minimize in systray", u"Settings", u"kHIS"},
    {u"Associate files", u"Settings", u"kAsF"},
    {u"Skins", u"Settings", u"", Row::kHeader},
    {u"", u"Settings", u"kSk", Row::kSkins},
    {u"Playback", u"", u"kPbk"},
    {u"Playback", u"Playback", u"", Row::kHeader},
    {u"Show lyrics#Ctrl+L", u"Playback", u"kPkLy"},
    {u"Audio effects#Ctrl+E", u"Playback", u"kPkEFX"},
    {u"Item information#Ctrl+I", u"Playback", u"kPkNFO"},
    {u"-", u"Playback", u""},
    {u"Search items#Ctrl+F", u"Playback", u"kPkSh"},
    {u"-", u"Playback", u""},
    {u"Manual advance", u"Playback", u"kPMA"},
    {u"Play at startup", u"Playback", u"kPPAS"},
    {u"-", u"Playback", u""},
    {u"Repeat single item", u"Playback", u"kPRpI"},
    {u"Repeat whole playlist", u"Playback", u"kPRpP"},
    {u"Random playback#Ctrl+R", u"Playback", u"kPRdm"},
    {u"Components", u"", u"kCell"},
    {u"Components", u"Components", u"", Row::kHeader},
    {u"", u"Components", u"kCell", Row::kComponents},
    {u"-", u"", u""},
    {u"About#F1", u"", u"kAbt"},
    {u"Exit#Alt+F4", u"", u"kExt"},
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
            menu.AddItem(SkinName(i) + u"#Shift+" + number, parent, u"kSk" + number, false, true);
        });
    }
    menu.RadioCheck(menu.IndexForKey(u"kSk" + LongToText(App().CurrentSkin)), true);
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
                menu.AddItem(cell->getClass(), parent, u"kCell" + LongToText(i), false, false);
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
