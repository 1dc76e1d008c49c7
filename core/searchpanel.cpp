// What the search panel does with keys and the mouse: the text box, which keeps the focus while the
// selection moves through the hits, and the list of these.
#include "browser/search.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "platform/base/keys.h"
#include "skin/panels.h"

namespace sarnel {

using namespace platform;

namespace {

// Keys that both controls know; whether it was one.
bool LeavePanel(Long keyCode) {
    if (keyCode == VK_ESCAPE) {
        ShowPanel(kSearchPanel, false);
    } else if (keyCode == VK_RETURN) {
        PlayHit();
    } else {
        return false;
    }
    return true;
}

void txt_SearchFilter_KeyDown(Long& KeyCode, Long /*Shift*/) {
    const Long key = KeyCode;
    if (key == VK_UP || key == VK_DOWN) {
        StepSearch(key == VK_DOWN ? 1 : -1);
        KeyCode = 0;
    } else if (LeavePanel(key)) {
        KeyCode = 0;
    }
}

}  // namespace

void AttachSearchHandlers(frmMAIN& main) {
    TextBox& box = *main.txt_SearchFilter;
    box.onChange = [&box] { RefreshSearch(box.Text()); };
    box.onKeyDown = txt_SearchFilter_KeyDown;
    main.lst_Search->onKeyDown = [](Long KeyCode, Long /*Shift*/) { LeavePanel(KeyCode); };
    main.lst_Search->onDblClick = PlayHit;
}

}  // namespace sarnel
