// Which events of the X server say that the keyboard has gone to somebody else.
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/desktop/x_server.h"

namespace {

using namespace platform::desktop;

bool LosesKeyboard(std::uint8_t type, std::uint8_t mode,
                   std::uint8_t detail = XCB_NOTIFY_DETAIL_NONLINEAR) {
    xcb_focus_out_event_t change{};
    change.response_type = type;
    change.mode = mode;
    change.detail = detail;
    // The server's events are longer than this one.
    std::array<char, 32> event{};
    std::memcpy(event.data(), &change, sizeof change);
    return TellsOfLostKeyboard(event.data());
}

TEST(LostKeyboard, GoesToAnotherWindowWithAndWithoutAGrab) {
    EXPECT_TRUE(LosesKeyboard(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL));
    EXPECT_TRUE(LosesKeyboard(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_WHILE_GRABBED));
}

TEST(LostKeyboard, IsNotLostByTheGrabOfAPopup) {
    EXPECT_FALSE(LosesKeyboard(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_GRAB));
    EXPECT_FALSE(LosesKeyboard(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_UNGRAB));
}

TEST(LostKeyboard, IsNotLostWithinAWindowNorByThePointer) {
    EXPECT_FALSE(LosesKeyboard(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL, XCB_NOTIFY_DETAIL_INFERIOR));
    EXPECT_FALSE(LosesKeyboard(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL, XCB_NOTIFY_DETAIL_POINTER));
}

TEST(LostKeyboard, IsNotLostByOtherEvents) {
    EXPECT_FALSE(LosesKeyboard(XCB_FOCUS_IN, XCB_NOTIFY_MODE_NORMAL));
    EXPECT_FALSE(LosesKeyboard(XCB_ENTER_NOTIFY, XCB_NOTIFY_MODE_NORMAL));
}

}  // namespace
