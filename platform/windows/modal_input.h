// What takes the input of pointer and keyboard from all windows while it runs, as an open menu
// does. The window system knows no more of it than this.
#pragma once

#include <string_view>

#include "platform/base/types.h"
#include "platform/driver.h"

namespace platform {

/// Points are screen pixels. Keys and buttons that go down meanwhile are the taker's until they are
/// up, even if it has ended by then; of those that were down before the windows get the release.
class ModalInput {
  public:
    virtual ~ModalInput() = default;

    virtual void PointerMoved(Point ptScreen) = 0;
    /// `isOlder`: the button went down before; its window hears of the release, too.
    virtual void ButtonChange(const ButtonChanged& event, bool isOlder) = 0;
    virtual void Wheel(const WheelTurned& event) = 0;
    virtual void KeyDown(Long code) = 0;
    virtual void Text(std::u16string_view text) = 0;
    /// In place of WM_CLOSE to that window.
    virtual void CloseRequest(Handle window) = 0;
    /// The desktop gives the input to somebody else.
    virtual void InputLost() = 0;
};

}  // namespace platform
