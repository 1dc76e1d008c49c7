// The pointer's half of the loop, and its levels; the keys are in menu_keys.cpp.
#include "platform/menus/menu_tracking.h"

#include <algorithm>
#include <cstdlib>

#include "platform/base/keys.h"

namespace platform {

namespace {

// Timers of the first popup.
constexpr Long kHoverTimer = 1;
constexpr Long kScrollTimer = 2;
constexpr Long kHoverDelay = 200;  // until the row under the pointer opens its submenu
constexpr Long kScrollBeat = 50;
constexpr Long kScrollStep = 18;
constexpr Long kRowsPerNotch = 3;
// Until the pointer has gone so far, letting go of the button that opened the menu is no choice.
constexpr Long kFarEnough = 3;

}  // namespace

MenuTracking::MenuTracking(WindowSystem& windows, Menus& menus, Session session)
    : windows_(windows),
      menus_(menus),
      session_(session),
      ownerWasVisible_(windows.IsVisible(session.owner)),
      ownerWasIconic_(windows.IsIconic(session.owner)),
      opened_(windows.GetCursorPos()),
      pointer_(opened_) {}

MenuTracking::~MenuTracking() {
    windows_.GetDriver().ReleaseInput();
    while (!levels_.empty()) {
        levels_.pop_back();
    }
}

void MenuTracking::Open(Handle menu, Point ptScreen) {
    menus_.Measure(menu, session_.owner);
    levels_.emplace_back().popup = std::make_unique<MenuPopup>(
        windows_, menus_, menu, session_.owner, session_.owner, session_.colours);
    MenuPopup& popup = Active();
    const Rect area = windows_.GetDriver().WorkAreaAt(ptScreen);
    popup.Show(PlacePopup(popup.WantedSize(), session_.flags, ptScreen, area));
    windows_.GetDriver().GrabInput(popup.Window());
}

Long MenuTracking::Run() {
    windows_.RunWhile([this] { return CanGoOn(); });
    return done_ ? chosen_ : 0;
}

void MenuTracking::End(Long id) {
    if (!done_) {
        done_ = true;
        chosen_ = id;
    }
}

bool MenuTracking::OwnerIsThere() const {
    return windows_.IsWindow(session_.owner) &&
           (windows_.IsVisible(session_.owner) || !ownerWasVisible_) &&
           (!windows_.IsIconic(session_.owner) || ownerWasIconic_);
}

bool MenuTracking::CanGoOn() const {
    return !done_ && OwnerIsThere() && windows_.ExpectsInput();
}

bool MenuTracking::Shows(Handle menu) const {
    return std::any_of(levels_.begin(), levels_.end(),
                       [menu](const Level& level) { return level.popup->Menu() == menu; });
}

void MenuTracking::ItemChanged(Handle menu, std::size_t index) {
    for (const Level& level : levels_) {
        if (level.popup->Menu() == menu && index < level.popup->Rows()) {
            level.popup->Redraw(index, ODA_DRAWENTIRE);
        }
    }
}

void MenuTracking::CloseRequest(Handle window) {
    closing_.push_back(window);
    End(0);
}

std::optional<std::size_t> MenuTracking::LevelAt(Point ptScreen) const {
    for (std::size_t level = levels_.size(); level > 0; --level) {
        if (levels_[level - 1].popup->Place().Contains(ptScreen)) {
            return level - 1;
        }
    }
    return std::nullopt;
}

bool MenuTracking::CanSelect(const MenuPopup& popup, std::size_t row) const {
    const Menus::Item* item = popup.Item(row);
    return item != nullptr && item->CanBeSelected();
}

void MenuTracking::PointerMoved(Point ptScreen) {
    pointer_ = ptScreen;
    moved_ = moved_ || std::abs(ptScreen.x - opened_.x) > kFarEnough ||
             std::abs(ptScreen.y - opened_.y) > kFarEnough;
    const auto level = LevelAt(ptScreen);
    if (!level) {
        EndHover();
        ScrollUnderPointer(0);
        if (active_ + 1 == levels_.size()) {
            Active().Select(std::nullopt);
        }
        return;
    }
    ScrollUnderPointer(*level);
    MenuPopup& popup = *levels_[*level].popup;
    const auto row = popup.RowAt(ptScreen);
    if (row && CanSelect(popup, *row)) {
        PointAt(*level, *row);
    } else if (*level + 1 == levels_.size()) {
        EndHover();
        popup.Select(std::nullopt);
    }
}

// The way to where the pointer is stays marked. Another row than the one whose submenu is open is
// marked at once, but the submenu stays for a while: the pointer may only be crossing the row on
// its way there.
void MenuTracking::PointAt(std::size_t level, std::size_t row) {
    active_ = level;
    for (std::size_t above = 0; above < level; ++above) {
        levels_[above].popup->Select(levels_[above].openRow);
    }
    levels_[level].popup->Select(row);
    HoverOver({level, row});
}

void MenuTracking::HoverOver(Hover hover) {
    if (hover_ == hover) {
        return;
    }
    EndHover();
    hover_ = hover;
    windows_.SetTimer(levels_.front().popup->Window(), kHoverTimer, kHoverDelay,
                      [this](Handle, Long) { Settle(); });
}

void MenuTracking::EndHover() {
    hover_.reset();
    windows_.KillTimer(levels_.front().popup->Window(), kHoverTimer);
}

// The pointer has rested on a row: its submenu opens, and that of another row closes.
void MenuTracking::Settle() {
    windows_.KillTimer(levels_.front().popup->Window(), kHoverTimer);
    if (!hover_ || done_ || levels_[hover_->level].openRow == hover_->row) {
        return;
    }
    const Hover hover = *hover_;
    CloseBelow(hover.level);
    OpenSubmenu(hover.level, hover.row);
}

// Rows go by while the pointer is on an arrow.
void MenuTracking::ScrollUnderPointer(std::size_t level) {
    const Long direction = levels_[level].popup->ArrowAt(pointer_);
    const Handle window = levels_.front().popup->Window();
    if (direction == scrolling_) {
        return;
    }
    scrolling_ = direction;
    windows_.KillTimer(window, kScrollTimer);
    if (direction != 0) {
        windows_.SetTimer(window, kScrollTimer, kScrollBeat,
                          [this, direction, level](Handle, Long) {
                              if (level < levels_.size()) {
                                  levels_[level].popup->ScrollBy(direction * kScrollStep);
                              }
                          });
    }
}

void MenuTracking::OpenSubmenu(std::size_t level, std::size_t row) {
    MenuPopup& parent = *levels_[level].popup;
    const Menus::Item* item = parent.Item(row);
    if (levels_[level].openRow == row || item == nullptr || !item->CanBeChosen() ||
        menus_.GetMenuItemCount(item->submenu) < 1) {
        return;
    }
    const Handle submenu = item->submenu;
    CloseBelow(level);
    menus_.Measure(submenu, session_.owner);
    if (done_) {
        return;  // the owner has changed the menu while it was asked
    }
    auto popup = std::make_unique<MenuPopup>(windows_, menus_, submenu, session_.owner,
                                             parent.Window(), session_.colours);
    const Rect area = windows_.GetDriver().WorkAreaAt({parent.Place().left, parent.Place().top});
    popup->Show(PlaceSubmenu(popup->WantedSize(), parent.RowOnScreen(row), parent.Place(), area));
    levels_[level].openRow = row;
    levels_.push_back({std::move(popup), std::nullopt});
    menus_.SubmenuOpened(submenu, level + 1);
}

void MenuTracking::CloseBelow(std::size_t level) {
    EndHover();
    while (levels_.size() > level + 1) {
        levels_.pop_back();
    }
    levels_[level].openRow.reset();
    active_ = std::min(active_, level);
}

void MenuTracking::ChooseRow(std::size_t level, std::size_t row) {
    const Menus::Item* item = levels_[level].popup->Item(row);
    if (item == nullptr || !item->CanBeChosen()) {
        return;
    }
    if (item->submenu != 0) {
        OpenSubmenu(level, row);
    } else {
        End(item->id);
    }
}

void MenuTracking::ButtonChange(const ButtonChanged& event, bool isOlder) {
    const auto level = LevelAt(event.ptScreen);
    if (!level) {
        if (event.down) {
            End(0);
        }
        return;
    }
    const bool chooses = event.button == kLeftButton ||
                         (event.button == kRightButton && (session_.flags & TPM_RIGHTBUTTON) != 0);
    const auto row = levels_[*level].popup->RowAt(event.ptScreen);
    if (!chooses || !row || (isOlder && !moved_) || !CanSelect(*levels_[*level].popup, *row)) {
        return;
    }
    PointAt(*level, *row);
    const Menus::Item* item = levels_[*level].popup->Item(*row);
    // A submenu opens when the button goes down, a choice is made when it goes up.
    if ((item->submenu != 0) == event.down) {
        ChooseRow(*level, *row);
    }
}

void MenuTracking::Wheel(const WheelTurned& event) {
    if (const auto level = LevelAt(event.ptScreen)) {
        levels_[*level].popup->ScrollBy(-event.notches * kRowsPerNotch * kScrollStep);
        PointerMoved(event.ptScreen);
    }
}

}  // namespace platform
