#include "tests/scenario/popups.h"

#include <utility>

#include "core/state/program.h"
#include "platform/base/text.h"
#include "tests/scenario/nearest.h"
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

bool Shows(const JPopupMenu& menu, platform::Handle shown) {
    for (Long i = 1; i <= menu.Count(); ++i) {
        if (menu.hMenu(i) == shown) {
            return true;
        }
    }
    return false;
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

// Tells what could have been chosen instead: each item by its key, or if it has none by its
// caption, those in submenus as well.
[[noreturn]] void NotInPopup(const JPopupMenu& menu, platform::Handle shown,
                             const std::string& text) {
    std::vector<std::string> names;
    std::string all;
    for (Long i = 1; i <= menu.Count(); ++i) {
        const std::string flags = FlagsOf(menu, i);
        if (flags == "S" || flags == "H" || !IsReached(menu, i, shown)) {
            continue;
        }
        const std::string key = Narrow(menu.ItemKey(i));
        const std::string caption = Narrow(menu.Caption(i));
        names.push_back(key.empty() ? caption : key);
        names.push_back(caption);
        all += (all.empty() ? "" : ", ") + (key.empty() ? caption : key + " (" + caption + ')');
    }
    throw Mistake("not in the popup: " + text + DidYouMean(text, {names.begin(), names.end()}) +
                  "; there are " + (all.empty() ? "none" : all));
}

}  // namespace

Popups::Popups(World& world) : world_(world) {
    platform::Menus& menus = world.Windows().PopupMenus();
    menus.ObserveOpening([this](platform::Handle menu) { Opened(menu); });
    menus.ObserveSubmenus(
        [this](platform::Handle menu, std::size_t level) { ReadLevel(menu, level); });
}

void Popups::ReadLevel(platform::Handle menu, std::size_t level) {
    levels_.resize(level);
    Lines& rows = levels_.emplace_back();
    for (const JPopupMenu* instance : world_.Component().State().Popups->Instances()) {
        for (Long i = 1; i <= instance->Count(); ++i) {
            if (instance->hMenu(i) == menu) {
                rows.push_back(RowOf(*instance, i));
            }
        }
    }
}

void Popups::Opened(platform::Handle menu) {
    ReadLevel(menu, 0);
    const auto answer = std::exchange(answer_, std::nullopt);
    for (const JPopupMenu* instance : world_.Component().State().Popups->Instances()) {
        if (answer && Shows(*instance, menu)) {
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
        world_.Run(answer.line,
                   [&](World&) { NotInPopup(menu, shown, Narrow(*answer.keyOrCaption)); });
    }
    const bool canBe = menu.Enabled(index) && !menu.Header(index) && menu.Caption(index) != u"-" &&
                       menu.Submenu(index) == 0;
    menus.EndMenu(canBe ? menu.MenuId(index) : 0);
}

}  // namespace scenario
