// What the lyrics panel does with keys and the mouse: txtLyrics, and its popup.
#include <array>
#include <string>

#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "lyrics/lyrics.h"
#include "menus/temporarypopup.h"
#include "platform/base/keys.h"
#include "skin/panels.h"

namespace sarnel {

using namespace platform;

namespace {

TextBox& Box() {
    return *App().Main().txtLyrics;
}

// Page Up is missing, which is settled behaviour: the box moves its view by itself and the slider
// does not follow.
void txtLyrics_KeyDown(Long& KeyCode, Long Shift) {
    const Long key = KeyCode;
    switch (key) {
        case VK_UP:
        case VK_DOWN:
            ScrollLyricsBy(key == VK_DOWN ? kLyricsStep : -kLyricsStep);
            KeyCode = 0;
            break;
        case VK_HOME:
        case VK_END:
        case VK_NEXT:
            KeyCode = 0;
            break;
        case VK_LEFT:
        case VK_RIGHT:
        case 'Z':
        case 'X':
        case 'C':
        case 'V':
        case 'B':
            lstPlaylist_KeyDown(key, Shift);
            KeyCode = 0;
            break;
        case VK_ESCAPE:
            tglSkin_Click(kLyricsToggle);
            break;
        case VK_F5:
            ShowLyrics(true);
            break;
        default:
            break;
    }
}

void txtLyrics_KeyUp(Long& KeyCode, Long Shift) {
    if (KeyCode == VK_LEFT || KeyCode == VK_RIGHT) {
        lstPlaylist_KeyUp(KeyCode, Shift);
        KeyCode = 0;
    }
}

void CopyLyrics() {
    const std::u16string selected = Box().SelText();
    App().windows.GetDriver().SetClipboardText(selected.empty() ? Box().Text() : selected);
}

// The item that is on show, which may not be the one that plays by now.
void EditLyrics() {
    const auto [artist, title] = SplitName(Box().Tag());
    OpenLyricsEditor(artist, title);
}

void ShowLyricsPopup() {
    static constexpr std::u16string_view kCopy = u"kPkLyPC";
    static constexpr std::u16string_view kEdit = u"kPkLyPEd";
    static constexpr std::u16string_view kReload = u"kPkLyPRL";
    static constexpr std::u16string_view kClose = u"kPkLyPCl";
    static constexpr std::array<TemporaryItem, 6> kItems{{
        {u"Lyrics", u"kPkLyP", TemporaryItem::kHeader},
        {u"Copy#Ctrl+C", kCopy},
        {u"Edit lyrics", kEdit},
        {u"Reload lyrics#F5", kReload},
        {u"-", u""},
        {u"Close frame#Esc", kClose},
    }};
    TemporaryPopup popup(menukeys::kLyrics, kItems);
    const std::u16string key = popup.Choose();
    if (key == kCopy) {
        CopyLyrics();
    } else if (key == kEdit) {
        EditLyrics();
    } else if (key == kReload) {
        ShowLyrics(true);
    } else if (key == kClose) {
        ShowPanel(kLyricsPanel, !IsMarked(menukeys::kLyrics));
    }
}

void txtLyrics_MouseUp(const MouseEvent& event) {
    Box().HideCaret();
    if (event.Button == kRightButton) {
        Step(ShowLyricsPopup);
    }
}

}  // namespace

void AttachLyricsHandlers(frmMAIN& main) {
    TextBox& box = *main.txtLyrics;
    box.onChange = txtLyrics_Change;
    box.onGotFocus = [&box] { box.HideCaret(); };
    box.onKeyDown = txtLyrics_KeyDown;
    box.onKeyUp = txtLyrics_KeyUp;
    box.onMouseUp = txtLyrics_MouseUp;
}

}  // namespace sarnel
