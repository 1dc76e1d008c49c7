// What answers of the X server are held by, and the numbers that it gives to names.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace platform::desktop {

template <class Reply>
using Answer = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
Answer<Reply> Owned(Reply* reply) {
    return {reply, &std::free};
}

enum class IfUnknown { kMake, kNone };

/// A way there and back. XCB_ATOM_NONE if the connection has broken, or there is none.
inline xcb_atom_t AtomOf(xcb_connection_t* connection, std::string_view name, IfUnknown unknown) {
    const auto asked = xcb_intern_atom(connection, unknown == IfUnknown::kNone ? 1 : 0,
                                       static_cast<std::uint16_t>(name.size()), name.data());
    const auto answer = Owned(xcb_intern_atom_reply(connection, asked, nullptr));
    return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace platform::desktop
