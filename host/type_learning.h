// The very first start of all: the sound library is not ready to say what can be played, and takes
// its time. The window comes up meanwhile, and what was given waits until it is known what of it is
// music.
#pragma once

#include <functional>
#include <memory>

#include "host/descriptor.h"
#include "host/engine/engine.h"
#include "platform/windows/window_system.h"

namespace veldrin {

class TypeLearning {
  public:
    /// Both must outlive it.
    TypeLearning(platform::WindowSystem& windows, Engine& engine)
        : windows_(windows), engine_(engine) {}
    ~TypeLearning() { End(); }
    TypeLearning(const TypeLearning&) = delete;
    TypeLearning& operator=(const TypeLearning&) = delete;

    /// Begins if there is anything to be learnt, and answers that. `onLearnt` is called from the
    /// event pump when it is over, however it went.
    [[nodiscard]] bool Begin(std::function<void()> onLearnt);

  private:
    void End();

    platform::WindowSystem& windows_;
    Engine& engine_;
    std::function<void()> onLearnt_;
    std::shared_ptr<const Descriptor> learnt_;  // also the other thread's
};

}  // namespace veldrin
