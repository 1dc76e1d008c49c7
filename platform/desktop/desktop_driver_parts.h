// What the driver is made of. For its own sources alone.
#pragma once

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop/application.h"
#include "platform/desktop/associations/associations.h"
#include "platform/desktop/bus/bus_connection.h"
#include "platform/desktop/desktop_driver.h"
#include "platform/desktop/drops.h"
#include "platform/desktop/held_buttons.h"
#include "platform/desktop/hotkeys/hot_keys.h"
#include "platform/desktop/screen_factor.h"
#include "platform/desktop/screens.h"
#include "platform/desktop/text_engine.h"
#include "platform/desktop/top_level.h"
#include "platform/desktop/tray/tray_icons.h"
#include "platform/desktop/wait_loop.h"
#include "platform/desktop/wayland.h"
#include "platform/desktop/x_server.h"
#include "platform/desktop/x_watch.h"

namespace platform {

// The order is that of life: the application before all, the windows last.
struct DesktopDriver::Parts {
    Parts(const ProgramIdentity& program, std::optional<double> scale)
        : application(program.id),
          wanted(scale.value_or(0)),
          screens(
              shared.scale, [this] { shared.events.Push(WorkAreaChanged{}); },
              [this](const QRegion& lost) { ScreenLost(lost); }),
          trayIcons(loop, shared.events,
                    [this](Handle window, bool inTray) {
                        if (desktop::TopLevel* found = Find(window)) {
                            found->KeepEntry(!inTray);
                        }
                    }),
          drops(
              shared.events, [this](const desktop::DropPlace& place) { return PlaceOf(place); },
              [this] { loop.Wake(); }),
          associations(program) {
        shared.isXOnWayland = desktop::IsXOnWayland();
        if (shared.isXOnWayland) {
            shared.selfPlacing = desktop::SelfPlacing::kUnknown;
        }
        shared.onWayland = desktop::IsOnWayland();
        shared.isQuitting = [this] { return application.IsQuitting(); };
        shared.onRatio = [this] { FitScale(); };
        shared.scale = desktop::Magnification(ScaleAt(Ratio()));
        density = desktop::DensityFor(ScaleAt(Ratio()) * Ratio());
        shared.onDrop = [this](const desktop::DropPlace& place, std::vector<std::string> paths) {
            drops.Take(place, std::move(paths));
        };
    }

    /// From then on nothing of the toolkit may be called: much of it may be gone already.
    bool IsLost() const { return application.HasLostDisplay(); }

    /// Null if there is none, and when the display has gone.
    desktop::TopLevel* Find(Handle window) const {
        const auto found = windows.find(window);
        return found == windows.end() || IsLost() ? nullptr : found->second.get();
    }

    // Pixels of the screen for each of the toolkit's, where they are finest.
    double Ratio() const {
        double ratio = 0;
        for (const auto& window : windows) {
            if (window.second->isVisible()) {
                ratio = std::max(ratio, window.second->devicePixelRatio());
            }
        }
        const QScreen* const screen = QGuiApplication::primaryScreen();
        return ratio > 0 || screen == nullptr ? std::max(ratio, 1.0) : screen->devicePixelRatio();
    }

    // Pixels of the toolkit's for each of the component's: as asked for, or as the screens have it.
    double ScaleAt(double ratio) const { return wanted > 0 ? wanted / ratio : screenFactor.Get(); }

    void FitScale() {
        const double ratio = Ratio();
        const double scale = ScaleAt(ratio);
        const Long former = std::exchange(density, desktop::DensityFor(scale * ratio));
        if (scale != shared.scale.Factor()) {
            shared.scale = desktop::Magnification(scale);
            for (const auto& window : windows) {
                window.second->Rescaled();
            }
            shared.events.Push(WorkAreaChanged{});
        }
        if (density != former) {
            shared.events.Push(DensityChanged{});
        }
    }

    std::optional<Point> PlaceOf(const desktop::DropPlace& place) const {
        const desktop::TopLevel* const found = Find(place.window);
        return found != nullptr ? std::optional(found->PlaceOf(place.point)) : std::nullopt;
    }

    // Files that come of folders wait while a menu is open or a button is held: a drop of the
    // user's own cannot come then.
    void ReportDrops() {
        if (grabbing == 0 && shared.pointer.held == 0) {
            drops.Turn();
        }
    }

    void Tell(const std::string& line) const {
        if (notice) {
            notice(line);
        }
    }

    /// Null while a window that is none of the driver's has the keyboard.
    QWindow* FocusWindow() const {
        return dynamic_cast<desktop::TopLevel*>(QGuiApplication::focusWindow());
    }

    // What is done when all that came of the last wait has been taken.
    void BeforeWait() {
        if (buttons.AllLetGo()) {
            BringBack();
        }
        ReportDrops();
    }

    // Milliseconds; none: for ever.
    std::optional<Millis> LongestWait(Millis now, std::optional<Millis> deadline) {
        std::optional<Millis> longest = BeginWhatCanWait(now);
        if (!shared.events.IsEmpty()) {
            longest = 0;
        } else if (deadline) {
            longest = std::min(longest.value_or(*deadline - now), *deadline - now);
        }
        if (const auto patience = buttons.Patience(now)) {
            longest = std::min(longest.value_or(*patience), *patience);
        }
        return longest;
    }

    // Brings windows back that the screens no longer show as they did. Hanging over an edge that
    // was there before is allowed.
    void ScreenLost(const QRegion& lost) {
        for (const auto& window : windows) {
            if (window.second->isVisible() && lost.intersects(window.second->Place())) {
                window.second->ComeToScreen(desktop::Shown::kWhole);
            }
        }
    }

    // The same after a drag: screens of different sizes leave places between them that none shows.
    void BringBack() {
        for (const auto& window : windows) {
            if (window.second->isVisible()) {
                window.second->ComeToScreen(desktop::Shown::kEnough);
            }
        }
    }

    // Once the first picture is on the screen, or is late: it waits for nothing that can come after
    // it. Answers how long until then.
    std::optional<Millis> BeginWhatCanWait(Millis now) {
        constexpr Millis kLate = 500;
        if (hotKeys.HasBegun() || IsLost()) {
            return std::nullopt;
        }
        if (!shared.hasShownPicture && now < kLate) {
            return kLate - now;
        }
        hotKeys.Begin();
        bus.FirstPictureShown();
        return std::nullopt;
    }

    desktop::Application application;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    double wanted;  ///< pixels of the screen for each of the component's; 0: as the screen has it
    desktop::ScreenFactor screenFactor{[this] { FitScale(); }};
    Long density = 1;
    desktop::Shared shared{desktop::Magnification(1), {}, {}};
    desktop::XWatch xWatch{[this](const desktop::XNotice& heard) {
        for (const auto& window : windows) {
            window.second->Hear(heard);
        }
    }};
    desktop::Screens screens;
    desktop::HeldButtons buttons{shared};
    desktop::WaitLoop loop;
    desktop::HotKeys hotKeys{loop, shared.events};
    desktop::BusConnection bus{loop, [this] { return IsLost(); }};
    desktop::TrayIcons trayIcons;
    desktop::Drops drops;
    desktop::Associations associations;
    Fetcher fetcher;
    std::function<void(const std::string&)> notice;
    std::set<std::u16string, std::less<>> forgotten;  ///< pages of which no copy will do
    desktop::TextEngine text;
    std::map<Handle, std::unique_ptr<desktop::TopLevel>> windows;
    Handle grabbing = 0;  ///< the popup that has all input
};

}  // namespace platform
