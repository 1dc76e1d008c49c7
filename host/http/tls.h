// Connections that nobody reads along.
#pragma once

#include <memory>
#include <string>

#include "host/http/connection.h"

namespace veldrin {

/// Greets the other side, which must prove that it is `host`, by a certificate that this system
/// trusts. Null if it does not.
std::unique_ptr<Connection> Secure(Descriptor socket, const std::string& host, const WaitEnd& end);

}  // namespace veldrin
