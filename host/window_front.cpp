#include "host/window_front.h"

namespace veldrin {

void WindowFront::Enter(const Surroundings& surroundings) {
    driver_.WatchSessionEnd(surroundings.endNow);
}

void WindowFront::Begin(bool /*restored*/) {}

}  // namespace veldrin
