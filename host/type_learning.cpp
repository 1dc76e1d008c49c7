#include "host/type_learning.h"

#include <sys/eventfd.h>

#include <utility>

namespace veldrin {

bool TypeLearning::Begin(std::function<void()> onLearnt) {
    auto learnt = std::make_shared<const Descriptor>(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!*learnt || !engine_.LearnTypes([learnt] { eventfd_write(learnt->Number(), 1); })) {
        return false;
    }
    learnt_ = std::move(learnt);
    onLearnt_ = std::move(onLearnt);
    // Not from within the driver's wait: what has waited may wait in turn.
    windows_.GetDriver().Watch(learnt_->Number(), [this] {
        eventfd_t count = 0;
        eventfd_read(learnt_->Number(), &count);
        windows_.Schedule(0, [this] {
            End();
            onLearnt_();
        });
    });
    return true;
}

void TypeLearning::End() {
    if (learnt_ != nullptr) {
        windows_.GetDriver().Watch(learnt_->Number(), {});
        learnt_.reset();
    }
}

}  // namespace veldrin
