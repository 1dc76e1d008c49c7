#include "menus/mJPopupMenu.h"

#include <algorithm>

#include "menus/jpopupmenu.h"
#include "platform/base/rounding.h"
#include "platform/menus/menu_mark.h"

namespace sarnel {

using platform::Rect;
using platform::Surface;

mJPopupMenu::~mJPopupMenu() {
    windows_.UnhookWindowsHookEx(hook_);
}

void mJPopupMenu::RegisterMenu(JPopupMenu& menu) {
    if (hook_ == 0) {
        hook_ = windows_.SetWindowsHookEx([this](Long key, Long modifiers, bool down) {
            return KeyboardFilter(key, modifiers, down);
        });
    }
    if (std::find(instances_.begin(), instances_.end(), &menu) == instances_.end()) {
        instances_.push_back(&menu);
    }
}

void mJPopupMenu::UnregisterMenu(JPopupMenu& menu) {
    std::erase(instances_, &menu);
    if (instances_.empty()) {
        windows_.UnhookWindowsHookEx(hook_);
        hook_ = 0;
    }
}

bool mJPopupMenu::FocusIsIn(Handle owner) const {
    const Handle focus = windows_.GetFocus();
    const Handle parent = windows_.GetParent(focus);
    return focus == owner || parent == owner || windows_.GetParent(parent) == owner;
}

bool mJPopupMenu::KeyboardFilter(Long key, Long modifiers, bool down) {
    if (!down) {
        return false;
    }
    const std::vector<JPopupMenu*> asked = instances_;
    for (auto it = asked.rbegin(); it != asked.rend(); ++it) {
        JPopupMenu* const menu = *it;
        const bool isThere =
            std::find(instances_.begin(), instances_.end(), menu) != instances_.end();
        if (isThere && FocusIsIn(menu->hWndOwner()) && menu->AcceleratorPress(key, modifiers)) {
            return true;
        }
    }
    return false;
}

void mJPopupMenu::DrawCheckMark(bool checked, Surface& surface, const Rect& rect, Colour ink) {
    constexpr Colour kPaper = 0xFFFFFF;
    constexpr Colour kBlack = 0;
    if (checkBitmap_.Width() < rect.Width() || checkBitmap_.Height() < rect.Height() ||
        checkBitmap_.Density() != surface.Density()) {
        ReleaseCheckBitmap();
        checkBitmap_ = Surface({rect.Width(), rect.Height()}, surface.Density());
    }
    const Rect place{0, 0, rect.Width(), rect.Height()};
    checkBitmap_.FillRect(place, kPaper);
    platform::DrawMenuMark(checkBitmap_, place,
                           checked ? platform::MenuMark::kCheck : platform::MenuMark::kBullet,
                           kBlack);
    surface.Stamp(rect, checkBitmap_, ink);
}

namespace {

struct Channels {
    double red;
    double green;
    double blue;
};

Channels Split(Colour colour) {
    return {static_cast<double>(colour & 0xFF), static_cast<double>((colour >> 8) & 0xFF),
            static_cast<double>((colour >> 16) & 0xFF)};
}

// `from`, and so much of the way to `to`.
Colour Between(const Channels& from, const Channels& to, double factor) {
    const auto channel = [factor](double a, double b) {
        return platform::RoundHalfEven(a + factor * (b - a));
    };
    return channel(from.red, to.red) | (channel(from.green, to.green) << 8) |
           (channel(from.blue, to.blue) << 16);
}

}  // namespace

void GradientFill(Surface& surface, const Rect& rect, Colour first, Colour second, bool vertical) {
    constexpr Long kMostBands = 255;
    constexpr Long kSmallestBand = 3;  // stored pixels, as all lengths here
    const Rect stored = surface.Stored(rect);
    const Long size = vertical ? stored.Height() : stored.Width();
    if (size <= 0) {
        return;
    }
    const Long band = std::max(size / kMostBands, kSmallestBand);
    const Channels near = Split(first);
    const Channels far = Split(second);
    Colour running = second;
    Rect part = stored;
    for (Long i = size; i >= 0; i -= band) {
        if (vertical) {
            part.top = std::max(part.bottom - band, stored.top);
        } else {
            part.left = std::max(part.right - band, stored.left);
        }
        surface.FillStored(part, running);
        // From `i`, and not from what has been filled: the colour runs one band behind.
        const double factor = static_cast<double>(size - i) / size;
        (vertical ? part.bottom : part.right) = vertical ? part.top : part.left;
        running = Between(far, near, factor);
    }
}

void TileArea(Surface& surface, const Rect& area, const Surface& picture) {
    if (picture.IsEmpty()) {
        return;
    }
    Long height = 0;
    for (Long y = area.top; y < area.bottom; y += height) {
        const Long sourceY = y % picture.Height();
        height = std::min(picture.Height() - sourceY, area.bottom - y);
        Long width = 0;
        for (Long x = area.left; x < area.right; x += width) {
            const Long sourceX = x % picture.Width();
            width = std::min(picture.Width() - sourceX, area.right - x);
            surface.BitBlt({x, y, x + width, y + height}, picture, {sourceX, sourceY});
        }
    }
}

}  // namespace sarnel
