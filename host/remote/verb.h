// A verb is what the command line asks of the running player, in the words of its option without
// the dashes: "pause", "volume +5", "command kPRdm". As such it also goes over the local socket.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/base/types.h"

namespace veldrin {

struct Verb {
    enum class Kind {
        kPlay,
        kPause,
        kPlayPause,
        kStop,
        kNext,
        kPrevious,
        kVolume,
        kSeek,
        kCommand,
    };
    Kind kind = Kind::kPlay;
    bool relative = false;      ///< of volume and seek: from what there is
    platform::Long amount = 0;  ///< percent or seconds
    std::string key;            ///< of an item of the command menu
};

/// Nothing if it is no verb. "volume" and "seek" take a number, with a sign for a relative one: up
/// to 100, and up to nine digits of seconds.
std::optional<Verb> ParseVerb(std::string_view text);

}  // namespace veldrin
