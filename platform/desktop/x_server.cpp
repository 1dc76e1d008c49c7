#include "platform/desktop/x_server.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>

#include "platform/base/keys.h"
#include "platform/desktop/x_answers.h"

namespace platform::desktop {

namespace {

xcb_connection_t* Connection() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

}  // namespace

std::optional<ServerPointer> AskForPointer() {
    xcb_connection_t* connection = Connection();
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

bool IsSaidToBeMinimised(const QWindow& window) {
    constexpr std::uint32_t kIconic = 3;  // of the first number of WM_STATE
    xcb_connection_t* connection = Connection();
    if (connection == nullptr || window.handle() == nullptr) {
        return false;
    }
    const xcb_atom_t state = AtomOf(connection, "WM_STATE", IfUnknown::kNone);
    if (state == XCB_ATOM_NONE) {
        return false;  // nobody has ever said anything of any window
    }
    const auto asked = xcb_get_property(connection, 0, static_cast<xcb_window_t>(window.winId()),
                                        state, state, 0, 1);
    const auto answer = Owned(xcb_get_property_reply(connection, asked, nullptr));
    return answer && answer->format == 32 && answer->value_len > 0 &&
           *static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get())) == kIconic;
}

}  // namespace platform::desktop
