// The keys' half of the menu loop.
#include <algorithm>

#include "platform/base/keys.h"
#include "platform/base/text.h"
#include "platform/menus/menu_tracking.h"

namespace platform {

void MenuTracking::KeyDown(Long code) {
    switch (code) {
        case VK_DOWN:
            Step(1, false);
            break;
        case VK_UP:
            Step(-1, false);
            break;
        case VK_HOME:
            Step(1, true);
            break;
        case VK_END:
            Step(-1, true);
            break;
        case VK_RIGHT:
            EnterSubmenu();
            break;
        case VK_LEFT:
            LeaveSubmenu();
            break;
        case VK_ESCAPE:
            if (levels_.size() > 1) {
                CloseBelow(levels_.size() - 2);
            } else {
                End(0);
            }
            break;
        case VK_RETURN:
            TakeSelected();
            break;
        default:
            break;
    }
}

void MenuTracking::SelectByKey(std::optional<std::size_t> row) {
    CloseBelow(active_);
    Active().Select(row, true);
}

// To the next row that can be selected, round the ends.
void MenuTracking::Step(Long direction, bool fromTheEnd) {
    MenuPopup& popup = Active();
    const auto rows = static_cast<Long>(popup.Rows());
    const Long before = direction > 0 ? -1 : rows;
    Long row = fromTheEnd || !popup.Selected() ? before : static_cast<Long>(*popup.Selected());
    for (Long tried = 0; tried < rows; ++tried) {
        row = (row + direction + rows) % rows;
        if (CanSelect(popup, static_cast<std::size_t>(row))) {
            SelectByKey(static_cast<std::size_t>(row));
            return;
        }
    }
}

void MenuTracking::EnterSubmenu() {
    const auto row = Active().Selected();
    if (!row) {
        return;
    }
    OpenSubmenu(active_, *row);
    if (levels_[active_].openRow == row) {
        ++active_;
        if (!Active().Selected()) {
            Step(1, true);
        }
    }
}

void MenuTracking::LeaveSubmenu() {
    if (active_ > 0) {
        CloseBelow(active_ - 1);
    }
}

void MenuTracking::TakeSelected() {
    const auto row = Active().Selected();
    const Menus::Item* item = row ? Active().Item(*row) : nullptr;
    if (item != nullptr && item->submenu != 0) {
        EnterSubmenu();
    } else if (item != nullptr) {
        ChooseRow(active_, *row);
    }
}

// The only row that begins with the letter is chosen; of several the next one is selected.
void MenuTracking::Letter(char16_t unit) {
    MenuPopup& popup = Active();
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < popup.Rows(); ++row) {
        const Menus::Item* item = popup.Item(row);
        if (CanSelect(popup, row) && !item->text.empty() &&
            UpperUnit(item->text.front()) == UpperUnit(unit)) {
            rows.push_back(row);
        }
    }
    if (rows.empty()) {
        return;
    }
    const auto next = std::find_if(rows.begin(), rows.end(), [&](std::size_t row) {
        return popup.Selected() && row > *popup.Selected();
    });
    SelectByKey(next != rows.end() ? *next : rows.front());
    if (rows.size() == 1) {
        TakeSelected();
    }
}

void MenuTracking::Text(std::u16string_view text) {
    for (const char16_t unit : text) {
        if (unit > u' ' && !done_) {
            Letter(unit);
        }
    }
}

}  // namespace platform
