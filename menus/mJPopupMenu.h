// What the popup menus of a run share: the keyboard filter that finds their key combinations, and
// the drawing of gradients, tiles and marks.
#pragma once

#include <vector>

#include "platform/drawing/surface.h"
#include "platform/windows/window_system.h"

namespace sarnel {

using platform::Colour;
using platform::Handle;
using platform::Long;

class JPopupMenu;

class mJPopupMenu {
  public:
    /// The window system must outlive it.
    explicit mJPopupMenu(platform::WindowSystem& windows) : windows_(windows) {}
    ~mJPopupMenu();
    mJPopupMenu(const mJPopupMenu&) = delete;
    mJPopupMenu& operator=(const mJPopupMenu&) = delete;

    platform::WindowSystem& Windows() { return windows_; }

    // The instances that are there, not owned. The first one installs the filter, the last one
    // takes it away.
    void RegisterMenu(JPopupMenu& menu);
    void UnregisterMenu(JPopupMenu& menu);
    const std::vector<JPopupMenu*>& Instances() const { return instances_; }

    /// A key goes down (or up: passed on) with modifiers 1 Shift, 2 Ctrl, 4 Alt. The instances are
    /// asked from the last to the first, each only while the focus is in its owner window, in a
    /// child of it or in a child of such a child. True eats the key.
    bool KeyboardFilter(Long key, Long modifiers, bool down);

    /// A check, else a bullet, in `ink` in the middle of the rectangle. It is prepared on a scratch
    /// bitmap that all instances share and that only grows.
    void DrawCheckMark(bool checked, platform::Surface& surface, const platform::Rect& rect,
                       Colour ink);
    /// Gives the scratch bitmap's memory back; the next mark makes a new one.
    void ReleaseCheckBitmap() { checkBitmap_ = {}; }
    platform::Size CheckBitmapSize() const { return checkBitmap_.GetSize(); }

  private:
    bool FocusIsIn(Handle owner) const;

    platform::WindowSystem& windows_;
    std::vector<JPopupMenu*> instances_;
    Handle hook_ = 0;
    platform::Surface checkBitmap_;  ///< black on white
};

/// Fills from the far end (right, or bottom if vertical) with the second colour to the near end
/// with the first, in bands of at least 3 pixels. The colour runs one band behind.
void GradientFill(platform::Surface& surface, const platform::Rect& rect, Colour first,
                  Colour second, bool vertical);

/// Lays the picture out over an area in a grid that begins at the surface's origin.
void TileArea(platform::Surface& surface, const platform::Rect& area,
              const platform::Surface& picture);

}  // namespace sarnel
