// What a start says that only wants something of the running player, and starts none itself.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/instance/instance.h"
#include "host/terminal/console.h"

namespace veldrin {

/// A connection to the running instance that has taken the requests; empty, with a word to the
/// user, if none runs, or it does not answer.
Descriptor AskRunning(const std::optional<MeetingPlace>& place,
                      const std::vector<Request>& requests, Console& console);

/// Has the verbs done, in their order. False, with a word to the user, if that cannot be.
[[nodiscard]] bool HaveDone(const std::optional<MeetingPlace>& place,
                            const std::vector<std::string>& verbs, Console& console);

/// The status in that form (Request::Kind::kStatus); nothing, with a word to the user, if it cannot
/// be had.
std::optional<std::string> AskStatus(const std::optional<MeetingPlace>& place,
                                     const std::string& form, Console& console);

}  // namespace veldrin
