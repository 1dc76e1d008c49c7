#include "platform/desktop/x_server.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "platform/base/keys.h"
#include "platform/desktop/x_answers.h"

namespace platform::desktop {

namespace {

// The numbers of a property by which a window manager tells of a window; none if it has not.
std::vector<std::uint32_t> Said(const QWindow& window, std::string_view name) {
    constexpr std::uint32_t kMost = 32;
    xcb_connection_t* connection = ToolkitConnection();
    if (connection == nullptr || window.handle() == nullptr) {
        return {};
    }
    const xcb_atom_t property = AtomOf(connection, name, IfUnknown::kNone);
    if (property == XCB_ATOM_NONE) {
        return {};  // nobody has ever said anything of any window
    }
    const auto asked = xcb_get_property(connection, 0, static_cast<xcb_window_t>(window.winId()),
                                        property, XCB_GET_PROPERTY_TYPE_ANY, 0, kMost);
    const auto answer = Owned(xcb_get_property_reply(connection, asked, nullptr));
    if (!answer || answer->format != 32) {
        return {};
    }
    const auto* numbers = static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get()));
    return {numbers, numbers + answer->value_len};
}

// Whether a window manager says that a window is in that state.
bool IsSaidOf(const QWindow& window, std::string_view state) {
    const std::vector<std::uint32_t> states = Said(window, "_NET_WM_STATE");
    const auto wanted = states.empty() ? xcb_atom_t{XCB_ATOM_NONE}
                                       : AtomOf(ToolkitConnection(), state, IfUnknown::kNone);
    return wanted != XCB_ATOM_NONE &&
           std::find(states.begin(), states.end(), wanted) != states.end();
}

}  // namespace

xcb_connection_t* ToolkitConnection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

// Such a server says so by an extension of that name; older ones call their screens after it.
bool IsXOnWayland() {
    xcb_connection_t* connection = ToolkitConnection();
    if (connection == nullptr) {
        return false;
    }
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen != nullptr && screen->name().startsWith("XWAYLAND")) {
        return true;
    }
    constexpr std::string_view kExtension = "XWAYLAND";
    const auto asked = xcb_query_extension(connection, kExtension.size(), kExtension.data());
    const auto answer = Owned(xcb_query_extension_reply(connection, asked, nullptr));
    return answer && answer->present != 0;
}

std::optional<ServerPointer> AskForPointer() {
    xcb_connection_t* connection = ToolkitConnection();
    if (connection == nullptr) {
        return std::nullopt;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto asked = xcb_query_pointer(connection, root);
    const auto answer = Owned(xcb_query_pointer_reply(connection, asked, nullptr));
    if (!answer) {
        return std::nullopt;
    }
    const auto bit = [&](int mask, Long ours) { return (answer->mask & mask) != 0 ? ours : 0; };
    return ServerPointer{{answer->root_x, answer->root_y},
                         bit(XCB_BUTTON_MASK_1, kLeftButton) |
                             bit(XCB_BUTTON_MASK_3, kRightButton) |
                             bit(XCB_BUTTON_MASK_2, kMiddleButton),
                         bit(XCB_MOD_MASK_SHIFT, kShiftBit) | bit(XCB_MOD_MASK_CONTROL, kCtrlBit) |
                             bit(XCB_MOD_MASK_1, kAltBit)};
}

std::optional<QPoint> AskForPlace(const QWindow& window) {
    xcb_connection_t* connection = ToolkitConnection();
    if (connection == nullptr || window.handle() == nullptr) {
        return std::nullopt;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto asked = xcb_translate_coordinates(
        connection, static_cast<xcb_window_t>(window.winId()), root, 0, 0);
    const auto answer = Owned(xcb_translate_coordinates_reply(connection, asked, nullptr));
    return answer ? std::optional(QPoint(answer->dst_x, answer->dst_y)) : std::nullopt;
}

std::string ResourcesOfServer() {
    constexpr std::uint32_t kMost = 1 << 16;  // words
    xcb_connection_t* connection = ToolkitConnection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto asked =
        xcb_get_property(connection, 0, root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, kMost);
    const auto answer = Owned(xcb_get_property_reply(connection, asked, nullptr));
    if (!answer || answer->format != 8) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(answer.get())), answer->value_len};
}

void TellOfCover(const QWindow& window) {
    xcb_connection_t* connection = ToolkitConnection();
    if (connection == nullptr || window.handle() == nullptr) {
        return;
    }
    const auto number = static_cast<xcb_window_t>(window.winId());
    const auto asked = xcb_get_window_attributes(connection, number);
    if (const auto answer = Owned(xcb_get_window_attributes_reply(connection, asked, nullptr))) {
        const std::uint32_t events = answer->your_event_mask | XCB_EVENT_MASK_VISIBILITY_CHANGE;
        xcb_change_window_attributes(connection, number, XCB_CW_EVENT_MASK, &events);
    }
}

bool IsOnScreen(const QWindow& window) {
    xcb_connection_t* connection = ToolkitConnection();
    const auto asked =
        xcb_get_window_attributes(connection, static_cast<xcb_window_t>(window.winId()));
    const auto answer = Owned(xcb_get_window_attributes_reply(connection, asked, nullptr));
    if (answer && answer->map_state != XCB_MAP_STATE_VIEWABLE) {
        return false;
    }
    return !IsSaidOf(window, "_NET_WM_STATE_HIDDEN");
}

void MoveOnServer(std::uint32_t window, QPoint place) {
    const std::array<std::uint32_t, 2> values{static_cast<std::uint32_t>(place.x()),
                                              static_cast<std::uint32_t>(place.y())};
    xcb_configure_window(ToolkitConnection(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                         values.data());
}

void TakeOffScreen(std::uint32_t window) {
    constexpr int kFar = -16000;  // the numbers of places have 16 bits
    MoveOnServer(window, {kFar, kFar});
}

bool HasKeyboard(const QWindow& window) {
    xcb_connection_t* connection = ToolkitConnection();
    if (connection == nullptr || window.handle() == nullptr) {
        return false;
    }
    const auto asked = xcb_get_input_focus(connection);
    const auto answer = Owned(xcb_get_input_focus_reply(connection, asked, nullptr));
    return answer && answer->focus == static_cast<xcb_window_t>(window.winId());
}

bool TellsOfLostKeyboard(const void* event) {
    constexpr int kKind = 0x7F;  // without the bit of what other programs send
    const auto* change = static_cast<const xcb_focus_out_event_t*>(event);
    return (change->response_type & kKind) == XCB_FOCUS_OUT &&
           (change->mode == XCB_NOTIFY_MODE_NORMAL ||
            change->mode == XCB_NOTIFY_MODE_WHILE_GRABBED) &&
           change->detail != XCB_NOTIFY_DETAIL_INFERIOR &&
           change->detail != XCB_NOTIFY_DETAIL_POINTER;
}

bool IsSaidToBeMinimised(const QWindow& window) {
    constexpr std::uint32_t kIconic = 3;  // of the first number of WM_STATE
    const std::vector<std::uint32_t> state = Said(window, "WM_STATE");
    return !state.empty() && state.front() == kIconic;
}

bool IsSaidToWantAttention(const QWindow& window) {
    return IsSaidOf(window, "_NET_WM_STATE_DEMANDS_ATTENTION");
}

}  // namespace platform::desktop
