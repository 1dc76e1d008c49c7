#include "core/state/mainmenu.h"

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"

namespace sarnel {

std::shared_ptr<JPopupMenu> Menu() {
    return Needed(App().Main().hMenu);
}

bool IsMarked(std::u16string_view key) {
    const auto menu = Menu();
    return menu->Checked(menu->IndexForKey(key));
}

void Mark(std::u16string_view key, bool checked) {
    const auto menu = Menu();
    menu->Checked(menu->IndexForKey(key), checked);
}

}  // namespace sarnel
