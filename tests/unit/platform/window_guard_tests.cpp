// Procedures that call themselves without end, and windows that end inside an operation on them.
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"

namespace platform {
namespace {

class WindowGuard : public ::testing::Test {
  protected:
    static constexpr Long kDeepest = 32;

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    Long calls_ = 0;
};

TEST_F(WindowGuard, AProcedureThatIsItsOwnPredecessorAnswersZeroInTheEnd) {
    const Handle w = windows_.CreateWindow(0, {}, [](const Message&) -> Long { return 7; });
    WindowProc former;
    const WindowProc front = [&](const Message& message) -> Long {
        ++calls_;
        return WindowSystem::CallWindowProc(former, message) + 1;
    };
    former = windows_.SetWindowProc(w, front);
    former = windows_.SetWindowProc(w, front);
    // One call from outside, and as many within itself as are let through.
    EXPECT_EQ(windows_.SendMessage(w, 1, 0, 0), kDeepest + 1);
    EXPECT_EQ(calls_, kDeepest + 1);
    calls_ = 0;
    EXPECT_EQ(windows_.SendMessage(w, 2, 0, 0), kDeepest + 1);  // nothing is left over
}

TEST_F(WindowGuard, AProcedureThatSendsItselfWhatItHandlesAnswersZeroInTheEnd) {
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        ++calls_;
        return windows_.SendMessage(message.window, message.id, message.wParam + 1, 0) + 1;
    });
    EXPECT_EQ(windows_.SendMessage(w, 1, 0, 0), kDeepest);
    EXPECT_EQ(calls_, kDeepest);
}

TEST_F(WindowGuard, TwoWindowsThatSendToEachOtherComeToAnEnd) {
    Handle other = 0;
    const auto passOn = [&](const Message& message) -> Long {
        ++calls_;
        return windows_.SendMessage(message.wParam, message.id, message.window, 0);
    };
    const Handle w = windows_.CreateWindow(0, {}, passOn);
    other = windows_.CreateWindow(0, {}, passOn);
    EXPECT_EQ(windows_.SendMessage(w, 1, other, 0), 0);
    EXPECT_EQ(calls_, 2 * kDeepest);
}

TEST_F(WindowGuard, MessagesWithinMessagesGoThroughToTheLast) {
    // Thirty-two deep in each of two messages, and all of it twice.
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        ++calls_;
        return message.wParam == 0
                   ? 5
                   : windows_.SendMessage(message.window, 3 - message.id, message.wParam - 1, 0);
    });
    for (int round = 0; round < 2; ++round) {
        calls_ = 0;
        EXPECT_EQ(windows_.SendMessage(w, 1, 2 * kDeepest - 1, 0), 5);
        EXPECT_EQ(calls_, 2 * kDeepest);
    }
}

TEST_F(WindowGuard, AProcedureThatThrowsLeavesNoTrace) {
    const Handle w =
        windows_.CreateWindow(0, {}, [](const Message&) -> Long { throw std::runtime_error("x"); });
    for (Long i = 0; i < 2 * kDeepest; ++i) {
        EXPECT_THROW(windows_.SendMessage(w, 1, 0, 0), std::runtime_error);
    }
}

TEST_F(WindowGuard, TheFormerProcedureGoesBackAsItWas) {
    const Handle w = windows_.CreateWindow(0, {}, [](const Message&) -> Long { return 7; });
    for (int i = 0; i < 100; ++i) {
        const WindowProc former = windows_.SetWindowProc(w, {});
        windows_.SetWindowProc(w, former);
    }
    EXPECT_EQ(windows_.SendMessage(w, 1, 0, 0), 7);
}

#ifndef NDEBUG
TEST_F(WindowGuard, ADebugBuildSaysSo) {
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        return windows_.SendMessage(message.window, message.id, 0, 0);
    });
    ::testing::internal::CaptureStderr();
    windows_.SendMessage(w, 9, 0, 0);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "window 1: message 9 is handled within itself without end\n");
}
#endif

// Each operation goes on, after the message that it sends, with a window that is no more.
TEST_F(WindowGuard, AWindowMayEndInsideAnOperationOnIt) {
    const auto parent = windows_.CreateWindow(0, {0, 0, 10, 10}, {});
    const auto mortal = [&](Handle above, Long deadly) {
        return windows_.CreateWindow(above, {0, 0, 5, 5},
                                     [=, this](const Message& message) -> Long {
                                         ++calls_;
                                         if (message.id == deadly) {
                                             windows_.DestroyWindow(message.window);
                                         }
                                         return 0;
                                     });
    };
    const Handle moved = mortal(parent, WM_MOVE);
    windows_.SetWindowPos(moved, HWND_TOP, 1, 1, 7, 7, 0);
    EXPECT_FALSE(windows_.IsWindow(moved));
    const Handle shown = mortal(0, WM_SHOWWINDOW);
    windows_.ShowWindow(shown, SW_SHOWNORMAL);
    EXPECT_FALSE(windows_.IsWindow(shown));
    const Handle minimised = mortal(0, WM_SIZE);
    windows_.SetMinimised(minimised, true);
    EXPECT_FALSE(windows_.IsWindow(minimised));
    EXPECT_EQ(calls_, 3 * 2);  // what ended it, and its own end
    EXPECT_FALSE(windows_.IsDispatching());
}

}  // namespace
}  // namespace platform
