// What the X server's library hands over is freed by whoever asked.
#pragma once

#include <cstdlib>
#include <memory>

namespace platform::desktop {

template <class Reply>
using Answer = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Answer<Reply> Owned(Reply* reply) {
    return {reply, &std::free};
}

}  // namespace platform::desktop
