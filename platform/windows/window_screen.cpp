// The part of the window system that puts the picture of each top-level window together. Changes
// are noted as rectangles; at the next pump these are composed anew, compared with what is on the
// screen, and only what differs is handed to the driver.
#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/windows/window_system.h"
#include "platform/windows/window_system_detail.h"

namespace platform {

namespace {

constexpr std::size_t kMostDamage = 8;  // rectangles; beyond that they are united

std::int64_t Area(const Rect& rect) {
    return IsEmpty(rect) ? 0 : std::int64_t{rect.Width()} * rect.Height();
}

bool Within(const Rect& inner, const Rect& outer) {
    return Intersect(inner, outer) == inner;
}

// Two rectangles become one where that costs little more than both.
void AddDamage(std::vector<Rect>& damage, Rect rect) {
    for (auto it = damage.begin(); it != damage.end();) {
        const Rect both = Unite(*it, rect);
        if (Area(both) <= Area(*it) + Area(rect) || damage.size() >= kMostDamage) {
            rect = both;
            damage.erase(it);
            it = damage.begin();
        } else {
            ++it;
        }
    }
    damage.push_back(rect);
}

// Rows and columns of both pictures, which are of one size and density, within `rect`.
bool SameRow(const Surface& a, const Surface& b, Long y, const Rect& rect) {
    const Long density = a.Density();
    const auto bytes = static_cast<std::size_t>(rect.Width() * density) * sizeof(Pixel);
    for (Long row = y * density; row < (y + 1) * density; ++row) {
        const Long left = rect.left * density;
        if (std::memcmp(a.Row(row) + left, b.Row(row) + left, bytes) != 0) {
            return false;
        }
    }
    return true;
}

bool SameColumn(const Surface& a, const Surface& b, Long x, const Rect& rect) {
    const Long density = a.Density();
    for (Long row = rect.top * density; row < rect.bottom * density; ++row) {
        const Long left = x * density;
        if (!std::equal(a.Row(row) + left, a.Row(row) + left + density, b.Row(row) + left)) {
            return false;
        }
    }
    return true;
}

// The part of `rect` within which two pictures of one size differ; empty if they do not.
Rect Difference(const Surface& a, const Surface& b, Rect rect) {
    while (!IsEmpty(rect) && SameRow(a, b, rect.top, rect)) {
        ++rect.top;
    }
    while (!IsEmpty(rect) && SameRow(a, b, rect.bottom - 1, rect)) {
        --rect.bottom;
    }
    while (!IsEmpty(rect) && SameColumn(a, b, rect.left, rect)) {
        ++rect.left;
    }
    while (!IsEmpty(rect) && SameColumn(a, b, rect.right - 1, rect)) {
        --rect.right;
    }
    return rect;
}

}  // namespace

void WindowSystem::SetFace(Handle window, const Surface* face) {
    if (Window* found = Find(window)) {
        found->face = face;
        InvalidateWindow(*found);
    }
}

const Surface* WindowSystem::GetFace(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr ? found->face : nullptr;
}

void WindowSystem::SetMask(Handle window, std::shared_ptr<const Mask> mask) {
    if (Window* found = Find(window)) {
        found->mask = std::move(mask);
        InvalidateWindow(*found);
    }
}

void WindowSystem::SetWindowless(Handle window, bool windowless) {
    if (Window* found = Find(window)) {
        found->windowless = windowless;
    }
}

void WindowSystem::InvalidateRect(Handle window, const Rect& rectClient) {
    if (!driver_.ShowsPictures()) {
        return;
    }
    Rect rect = rectClient;
    for (Window* found = Find(window); found != nullptr; found = Find(found->parent)) {
        rect = Intersect(rect, {0, 0, found->rect.Width(), found->rect.Height()});
        if (!found->visible || IsEmpty(rect)) {
            return;
        }
        if (found->parent == 0) {
            AddDamage(found->damage, rect);
            return;
        }
        rect = Offset(rect, {found->rect.left, found->rect.top});
    }
}

void WindowSystem::InvalidateWindow(const Window& window) {
    InvalidateRect(window.handle, {0, 0, window.rect.Width(), window.rect.Height()});
}

// Whether the window paints all of an area of its parent.
bool WindowSystem::Window::Covers(const Rect& area) const {
    return visible && face != nullptr && mask == nullptr && Within(area, rect) &&
           Within(area, Offset(face->Bounds(), {rect.left, rect.top}));
}

void WindowSystem::ComposeFace(const Window& window, Point origin, const Rect& area,
                               Surface& picture) {
    if (window.face != nullptr && window.mask == nullptr) {
        picture.BitBlt(area, *window.face, {area.left - origin.x, area.top - origin.y});
    } else if (window.face != nullptr) {
        window.mask->Copy(*window.face, {area.left - origin.x, area.top - origin.y}, area, picture);
    }
}

void WindowSystem::ComposeInto(const Window& window, Point origin, const Rect& clip,
                               Surface& picture) const {
    const Rect place{origin.x, origin.y, origin.x + window.rect.Width(),
                     origin.y + window.rect.Height()};
    const Rect area = Intersect(place, clip);
    if (IsEmpty(area)) {
        return;
    }
    // What lies under a child that fills the area is not even looked at.
    const Rect areaClient = Offset(area, {-origin.x, -origin.y});
    const auto covering =
        std::find_if(window.children.rbegin(), window.children.rend(),
                     [&](Handle child) { return Find(child)->Covers(areaClient); });
    auto child = window.children.begin();
    if (covering != window.children.rend()) {
        child = covering.base() - 1;
    } else {
        ComposeFace(window, origin, area, picture);
    }
    for (; child != window.children.end(); ++child) {
        const Window* found = Find(*child);
        if (found->visible) {
            ComposeInto(*found, {origin.x + found->rect.left, origin.y + found->rect.top}, area,
                        picture);
        }
    }
}

Surface WindowSystem::Compose(Handle topLevel) const {
    const Window* window = Find(topLevel);
    if (window == nullptr) {
        return {};
    }
    Surface picture({window->rect.Width(), window->rect.Height()});
    ComposeInto(*window, {0, 0}, picture.Bounds(), picture);
    return picture;
}

Surface WindowSystem::ComposeScreen() const {
    Surface screen(ScreenSize());
    for (const Handle handle : topLevels_) {
        const Window* window = Find(handle);
        if (window->visible && !window->iconic) {
            ComposeInto(*window, {window->rect.left, window->rect.top}, screen.Bounds(), screen);
        }
    }
    return screen;
}

void WindowSystem::UpdateTopLevel(Window& topLevel) {
    const Size size{topLevel.rect.Width(), topLevel.rect.Height()};
    std::vector<Rect> changed;
    if (!(topLevel.shown.GetSize() == size) ||
        topLevel.shown.Density() != Surface::DensityInForce()) {
        topLevel.shown = Compose(topLevel.handle);
        topLevel.next = topLevel.shown;
        changed.push_back(topLevel.shown.Bounds());
    }
    for (const Rect& damaged : topLevel.damage) {
        // The window may have become smaller since.
        const Rect rect = Intersect(damaged, topLevel.shown.Bounds());
        if (topLevel.face == nullptr || !Within(rect, topLevel.face->Bounds())) {
            topLevel.next.FillRect(rect, 0);  // for where neither the face nor a child paints
        }
        ComposeInto(topLevel, {0, 0}, rect, topLevel.next);
        const Rect part = Difference(topLevel.next, topLevel.shown, rect);
        if (!IsEmpty(part)) {
            topLevel.shown.BitBlt(part, topLevel.next, {part.left, part.top});
            changed.push_back(part);
        }
    }
    topLevel.damage.clear();
    if (std::exchange(topLevel.wanted, false) || !changed.empty()) {
        driver_.ShowPicture(topLevel.handle, topLevel.shown, changed);
    }
}

void WindowSystem::UpdateScreen() {
    TellTextInput();
    if (!driver_.ShowsPictures()) {
        return;
    }
    for (const Handle handle : topLevels_) {
        Window* window = Find(handle);
        const bool isOld = window->wanted || !window->damage.empty();
        if (window->visible && !window->iconic && isOld && driver_.IsSeen(handle)) {
            UpdateTopLevel(*window);
        }
    }
}

void WindowSystem::On(const SeenAgain& event) {
    if (Window* found = Find(event.window)) {
        found->wanted = true;
    }
}

void WindowSystem::KeepShown() {
    constexpr Millis kPeriod = 100;  // an uncovered window may stay blank so long, unnoticed
    if (Now() - keptShown_ >= kPeriod) {
        keptShown_ = Now();
        driver_.KeepShown();
    }
}

}  // namespace platform
