// Asks for one page, on the thread that calls.
#pragma once

#include <optional>
#include <string>

#include "host/http/connection.h"
#include "host/http/http.h"

namespace veldrin {

/// As Http::Get; only looking a name up may take longer than until `end`. `size`: bytes of a body,
/// once unpacked.
std::optional<HttpAnswer> Fetch(const std::string& address, const HttpHeaders& headers,
                                std::size_t size, const WaitEnd& end);

}  // namespace veldrin
