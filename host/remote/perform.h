// Does what a verb says.
#pragma once

#include <string>

#include "core/remote.h"
#include "host/remote/verb.h"

namespace veldrin {

/// Answers what is wrong, for people; empty if nothing is. A position is cut to the item.
std::string Perform(const Verb& verb, sarnel::Remote remote);

}  // namespace veldrin
