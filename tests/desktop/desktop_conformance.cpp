// Puts the desktop's driver to the rules of platform/driver.h, on an X server that is its own.
// Users and window manager are played by tools. A line for each rule: "kept", "not tried" or
// "BROKEN".
//
//     desktop_conformance [guest] [RULE]...
//
// As a guest the driver finds an application object of the program's own. A rule may be cut short.
#include <unistd.h>
#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "platform/base/keys.h"
#include "platform/desktop/desktop_driver.h"
#include "tests/conformance/conformance.h"

namespace {

using namespace platform;

std::string Text(Point point) {
    return std::to_string(point.x) + " " + std::to_string(point.y);
}

class Server {
  public:
    Server() : connection_(xcb_connect(nullptr, nullptr)) {}
    ~Server() { xcb_disconnect(connection_); }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::optional<Colour> ColourAt(Point point) const {
        const auto asked = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, Root(),
                                         static_cast<std::int16_t>(point.x),
                                         static_cast<std::int16_t>(point.y), 1, 1, ~0U);
        const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
            xcb_get_image_reply(connection_, asked, nullptr), std::free);
        if (image == nullptr) {
            return std::nullopt;
        }
        const std::uint8_t* const bytes = xcb_get_image_data(image.get());
        return bytes[2] | bytes[1] << 8 | bytes[0] << 16;
    }
    xcb_window_t Focus() const {
        const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> focus(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr),
            std::free);
        return focus != nullptr ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
    }

  private:
    xcb_window_t Root() const {
        return xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }

    xcb_connection_t* const connection_;
};

class XDesktop : public conformance::Surroundings {
  public:
    XDesktop() = default;
    ~XDesktop() override {
        if (hasDoneAnything_) {
            Tool("xdotool mouseup 1 keyup a keyup Shift_L keyup Return mousemove 1000 740");
        }
    }
    XDesktop(const XDesktop&) = delete;
    XDesktop& operator=(const XDesktop&) = delete;

    platform::Driver& Driver() override { return driver_; }
    Millis Quiet() const override { return 250; }

    bool MovePointer(Point ptScreen) override {
        Tool("xdotool mousemove " + Text(ptScreen));
        return true;
    }
    bool ChangeButton(Long /*button*/, bool down) override {
        Tool(down ? "xdotool mousedown 1" : "xdotool mouseup 1");
        return true;
    }
    bool TurnWheel(Long notches) override {
        Tool("xdotool click --repeat " + std::to_string(std::abs(notches)) +
             (notches > 0 ? " 4" : " 5"));
        return true;
    }
    bool ChangeKey(Long code, bool down) override {
        AwaitFocus();
        const std::string name = code == VK_SHIFT ? "Shift_L" : code == VK_RETURN ? "Return" : "a";
        Tool((down ? "xdotool keydown " : "xdotool keyup ") + name);
        return true;
    }
    bool ClickElsewhere() override {
        Tool("xdotool mousemove 900 650 click 1");
        return true;
    }
    bool Close(Handle window) override {
        Tool("wmctrl -ic " + Number(window));
        return true;
    }
    bool Minimise(Handle window) override {
        Tool("xdotool windowminimize " + Number(window));
        return true;
    }
    bool Restore(Handle window) override {
        Tool("wmctrl -ia " + Number(window));
        return true;
    }
    bool Move(Handle window, Point ptScreen) override {
        Tool("xdotool windowmove " + Number(window) + " " + Text(ptScreen));
        return true;
    }
    std::optional<Colour> ColourOnScreen(Point ptScreen) override {
        return server_.ColourAt(ptScreen);
    }

  private:
    static std::string Number(Handle window) {
        const QString title = QString("Conformance %1").arg(window);
        const QWindowList all = QGuiApplication::topLevelWindows();
        for (const QWindow* const one : all) {
            if (one->title() == title) {
                return std::to_string(one->winId());
            }
        }
        return "0";
    }
    // A window manager takes its time. Under a grab the focus may stay away.
    void AwaitFocus() const {
        constexpr int kAttempts = 200;
        constexpr int kPause = 10'000;  // microseconds
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            const QWindowList all = QGuiApplication::topLevelWindows();
            for (const QWindow* const one : all) {
                if (one->isVisible() && one->winId() == server_.Focus()) {
                    return;
                }
            }
            usleep(kPause);
        }
    }

    void Tool(const std::string& command) {
        hasDoneAnything_ = true;
        if (std::system(("exec " + command + " >/dev/null 2>&1").c_str()) != 0) {
            std::cout << "failed: " << command << std::endl;
        }
    }

    bool hasDoneAnything_ = false;
    Server server_;
    DesktopDriver driver_{{"veldrin", "Veldrin", {}, {}}, 1};
};

}  // namespace

int main(int count, char** arguments) {
    std::vector<std::string> words(arguments + 1, arguments + count);
    std::unique_ptr<QGuiApplication> host;
    if (std::erase(words, "guest") > 0) {
        host = std::make_unique<QGuiApplication>(count, arguments);
    }
    const auto isWanted = [&](const std::string& rule) {
        return words.empty() || std::any_of(words.begin(), words.end(), [&](const auto& word) {
                   return rule.starts_with(word);
               });
    };
    for (const std::string& rule : conformance::AllRules()) {
        if (!isWanted(rule)) {
            continue;
        }
        const auto result = conformance::Try(rule, [] { return std::make_unique<XDesktop>(); });
        const bool isKept = result.outcome == conformance::Outcome::kKept;
        const bool isTried = result.outcome != conformance::Outcome::kNotTried;
        std::cout << (isKept    ? "kept "
                      : isTried ? "BROKEN "
                                : "not tried ")
                  << rule << (result.why.empty() ? "" : ": ") << result.why << std::endl;
    }
    return 0;
}
