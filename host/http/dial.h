// From an address to a connection that can be written to.
#pragma once

#include <memory>

#include "host/http/address.h"
#include "host/http/connection.h"

namespace veldrin {

struct Dialled {
    std::unique_ptr<Connection> connection;  ///< null: nobody was reached, or nobody trusted
    bool loopback = false;                   ///< it leads to this machine
};

/// `mayLoopBack`: addresses of this machine are tried, too.
Dialled Dial(const HttpAddress& address, bool mayLoopBack, const WaitEnd& end);

}  // namespace veldrin
