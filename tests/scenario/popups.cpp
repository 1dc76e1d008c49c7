#include "tests/scenario/popups.h"

#include <utility>

#include "core/state/program.h"
#include "platform/base/text.h"
#include "tests/scenario/words.h"
#include "tests/scenario/world.h"

namespace scenario {

using namespace sarnel;
using platform::Narrow;

namespace {

// H for a header, S for a separator, else C checked, R radio, D not enabled, > with a submenu.
std::string FlagsOf(const JPopupMenu& menu, Long index) {
    if (menu.Caption(index) == u"-") {
        return "S";
    }
    if (menu.Header(index)) {
        return "H";
    }
    std::string flags;
    flags += menu.Checked(index) ? "C" : "";
    flags += menu.RadioCheck(index) ? "R" : "";
    flags += menu.Enabled(index) ? "" : "D";
    flags += menu.Submenu(index) != 0 ? ">" : "";
    return flags;
}

std::string RowOf(const JPopupMenu& menu, Long index) {
    return Narrow(menu.Caption(index)) + '/' + Narrow(menu.KeyText(index)) + '/' +
           Narrow(menu.ItemKey(index)) + '/' + FlagsOf(menu, index);
}

// Whether the item stands in the popup, or in one that can be opened from it.
bool IsReached(const JPopupMenu& menu, Long index, platform::Handle shown) {
    for (; index > 0; index = menu.ItemParentIndex(index)) {
        if (menu.hMenu(index) == shown) {
            return true;
        }
    }
    return false;
}

// The row with this key, else with this caption; 0 if there is none.
Long FindRow(const JPopupMenu& menu, platform::Handle shown, const std::u16string& text) {
    for (const bool byKey : {true, false}) {
        for (Long i = 1; i <= menu.Count(); ++i) {
            if ((byKey ? menu.ItemKey(i) : menu.Caption(i)) == text && !text.empty() &&
                IsReached(menu, i, shown)) {
                return i;
            }
        }
    }
    return 0;
}

}  // namespace

Popups::Popups(World& world) : world_(world) {
    world.Windows().PopupMenus().ObserveOpening([this](platform::Handle menu) { Opened(menu); });
}

void Popups::Opened(platform::Handle menu) {
    rows_.clear();
    const auto answer = std::exchange(answer_, std::nullopt);
    for (const JPopupMenu* instance : world_.Component().State().Popups->Instances()) {
        bool isIts = false;
        for (Long i = 1; i <= instance->Count(); ++i) {
            if (instance->hMenu(i) == menu) {
                rows_.push_back(RowOf(*instance, i));
                isIts = true;
            }
        }
        if (isIts && answer) {
            Choose(*instance, menu, *answer);
        }
    }
}

// A row that cannot be chosen ends as a click beside the menu does in the end: with nothing.
void Popups::Choose(const JPopupMenu& menu, platform::Handle shown, const Answer& answer) {
    platform::Menus& menus = world_.Windows().PopupMenus();
    if (!answer.keyOrCaption) {
        menus.EndMenu(0);
        return;
    }
    const Long index = FindRow(menu, shown, *answer.keyOrCaption);
    if (index == 0) {
        world_.Run(answer.line, [&](World&) {
            throw Mistake("not in the popup: " + Narrow(*answer.keyOrCaption));
        });
    }
    const bool canBe = menu.Enabled(index) && !menu.Header(index) && menu.Caption(index) != u"-" &&
                       menu.Submenu(index) == 0;
    menus.EndMenu(canBe ? menu.MenuId(index) : 0);
}

}  // namespace scenario
