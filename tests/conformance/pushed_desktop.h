// What users and desktops do to a driver that has neither: events are pushed into it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "platform/base/keys.h"
#include "platform/headless/headless_driver.h"
#include "recording_driver.h"
#include "tests/conformance/conformance.h"

namespace conformance {

/// The driver of the page, with windows on the screen of a table.
class PaperDriver : public RecordingDriver {
  public:
    struct Window {
        platform::Rect rect;
        bool isVisible = false;
        bool isMinimised = false;
        platform::Surface shown;
    };

    void CreateTopLevel(Handle window) override { windows[window] = {}; }
    void DestroyTopLevel(Handle window) override { windows.erase(window); }
    void SetTopLevelVisible(Handle window, bool visible) override {
        if (Window* found = Find(window)) {
            found->isVisible = visible;
        }
    }
    void SetTopLevelRect(Handle window, const platform::Rect& rect) override {
        if (Window* found = Find(window)) {
            found->rect = rect;
        }
    }
    void SetTopLevelMinimised(Handle window, bool minimised) override {
        if (Window* found = Find(window)) {
            found->isMinimised = minimised;
        }
    }
    void ShowPicture(Handle window, const platform::Surface& picture,
                     std::span<const platform::Rect> changed) override {
        Window* const found = Find(window);
        if (found == nullptr) {
            return;
        }
        if (!(found->shown.GetSize() == picture.GetSize())) {
            found->shown = platform::Surface(picture.GetSize(), 1);
        }
        for (const platform::Rect& part : changed) {
            found->shown.BitBlt(part, picture, {part.left, part.top});
        }
    }

    Window* Find(Handle window) {
        const auto found = windows.find(window);
        return found != windows.end() ? &found->second : nullptr;
    }

    std::map<Handle, Window> windows;  ///< by their age: later ones lie above
};

inline void PushTo(RecordingDriver& driver, platform::DriverEvent event) {
    driver.events.push_back(std::move(event));
}
inline void PushTo(platform::HeadlessDriver& driver, platform::DriverEvent event) {
    driver.Push(std::move(event));
}
inline void PointAt(RecordingDriver& driver, Point ptScreen) {
    driver.pointer = ptScreen;
}
inline void PointAt(platform::HeadlessDriver& driver, Point ptScreen) {
    driver.MovePointer(ptScreen);
}
inline std::optional<platform::Colour> ColourOf(PaperDriver& driver, Point ptScreen) {
    std::optional<platform::Colour> colour = 0;  // of the table
    for (auto& [handle, window] : driver.windows) {
        if (window.isVisible && !window.isMinimised && window.rect.Contains(ptScreen)) {
            colour = window.shown.GetPixel(
                {ptScreen.x - window.rect.left, ptScreen.y - window.rect.top});
        }
    }
    return colour;
}
inline std::optional<platform::Colour> ColourOf(platform::Driver&, Point) {
    return {};
}

/// For any driver that the routines above know.
class PushedDesktop : public Surroundings {
  public:
    template <typename Desktop>
    explicit PushedDesktop(std::unique_ptr<Desktop> driver)
        : push_([&desktop = *driver](platform::DriverEvent event) {
              PushTo(desktop, std::move(event));
          }),
          pointAt_([&desktop = *driver](Point ptScreen) { PointAt(desktop, ptScreen); }),
          colourOf_([&desktop = *driver](Point ptScreen) { return ColourOf(desktop, ptScreen); }),
          driver_(std::move(driver)) {}

    platform::Driver& Driver() override { return *driver_; }

    bool MovePointer(Point ptScreen) override {
        pointAt_(ptScreen);
        return Push(platform::PointerMoved{ptScreen, shift_});
    }
    bool ChangeButton(Long button, bool down) override {
        return Push(platform::ButtonChanged{driver_->Pointer(), button, down, shift_});
    }
    bool TurnWheel(Long notches) override {
        return Push(platform::WheelTurned{driver_->Pointer(), notches, shift_});
    }
    bool ChangeKey(Long code, bool down) override {
        if (code == platform::VK_SHIFT) {
            shift_ = down ? platform::kShiftBit : 0;
        }
        Push(platform::KeyChanged{code, shift_, down});
        if (down && code == 'A') {
            Push(platform::TextTyped{shift_ != 0 ? u"A" : u"a"});
        } else if (down && code == platform::VK_RETURN) {
            Push(platform::TextTyped{u"\r"});
        }
        return true;
    }
    bool Close(Handle window) override { return Push(platform::CloseRequested{window}); }
    bool Minimise(Handle window) override { return Push(platform::MinimisedByDesktop{window}); }
    bool Restore(Handle window) override { return Push(platform::RestoredByDesktop{window}); }
    bool Move(Handle window, Point ptScreen) override {
        return Push(platform::MovedByDesktop{window, ptScreen});
    }
    std::optional<platform::Colour> ColourOnScreen(Point ptScreen) override {
        return colourOf_(ptScreen);
    }

  private:
    bool Push(platform::DriverEvent event) {
        push_(std::move(event));
        return true;
    }

    std::function<void(platform::DriverEvent)> push_;
    std::function<void(Point)> pointAt_;
    std::function<std::optional<platform::Colour>(Point)> colourOf_;
    std::unique_ptr<platform::Driver> driver_;
    Long shift_ = 0;
};

}  // namespace conformance
