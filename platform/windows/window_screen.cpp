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

// A part of a picture, put together anew, beside the picture; both of one density.
struct NewPart {
    const Surface& part;
    const Surface& picture;
    Point at;  // where it lies in the picture

    // Whether both have the same pixels in a rectangle of the picture.
    bool IsSame(const Rect& rect) const {
        const Long density = picture.Density();
        const Rect stored = picture.Stored(rect);
        const auto bytes = static_cast<std::size_t>(stored.Width()) * sizeof(Pixel);
        for (Long y = stored.top; y < stored.bottom; ++y) {
            const Pixel* const row = part.Row(y - at.y * density) + stored.left - at.x * density;
            if (std::memcmp(row, picture.Row(y) + stored.left, bytes) != 0) {
                return false;
            }
        }
        return true;
    }

    // The part of the picture's `rect` within which they differ; empty if they do not.
    Rect Difference(Rect rect) const {
        while (!IsEmpty(rect) && IsSame({rect.left, rect.top, rect.right, rect.top + 1})) {
            ++rect.top;
        }
        while (!IsEmpty(rect) && IsSame({rect.left, rect.bottom - 1, rect.right, rect.bottom})) {
            --rect.bottom;
        }
        while (!IsEmpty(rect) && IsSame({rect.left, rect.top, rect.left + 1, rect.bottom})) {
            ++rect.left;
        }
        while (!IsEmpty(rect) && IsSame({rect.right - 1, rect.top, rect.right, rect.bottom})) {
            --rect.right;
        }
        return rect;
    }
};

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
        topLevel.damage.clear();
        changed.push_back(topLevel.shown.Bounds());
    }
    for (const Rect& damaged : topLevel.damage) {
        // The window may have become smaller since.
        const Rect rect = Intersect(damaged, topLevel.shown.Bounds());
        Surface part({rect.Width(), rect.Height()});
        ComposeInto(topLevel, {-rect.left, -rect.top}, part.Bounds(), part);
        const Rect differing =
            NewPart{part, topLevel.shown, {rect.left, rect.top}}.Difference(rect);
        if (!IsEmpty(differing)) {
            topLevel.shown.BitBlt(differing, part,
                                  {differing.left - rect.left, differing.top - rect.top});
            changed.push_back(differing);
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
