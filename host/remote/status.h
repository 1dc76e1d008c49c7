// How the running player stands, as "--status" tells it.
#pragma once

#include <string>

#include "core/remote.h"
#include "host/engine/engine.h"

namespace veldrin {

struct Status {
    sarnel::PlaybackState state = sarnel::PlaybackState::kStopped;
    int position = 0;  ///< seconds
    int length = 0;    ///< seconds; 0 if it is not known
    platform::Long volume = 0;
    bool repeatsItem = false;
    bool repeatsList = false;
    bool random = false;
    platform::Long row = 0;  ///< the current one, from 1; 0 is none
    platform::Long rows = 0;
    std::string title;  ///< of the current row; UTF-8 but for what its file has in it
    std::string path;   ///< raw bytes
};

Status StatusOf(const sarnel::Remote& remote, Engine& engine);

/// "playing", "paused" or "stopped".
const char* NameOf(sarnel::PlaybackState state);

/// One line of its fields in their order, with tabs between them: the state, "none", "item" or
/// "list" for what is repeated, "on" or "off" for the order by chance. Fit to be shown.
std::string StatusLine(const Status& status);

/// The same as an object of JSON on one line, always valid: bytes that are not UTF-8 are U+FFFD.
/// The path besides as an address, which keeps them.
std::string StatusJson(const Status& status);

}  // namespace veldrin
