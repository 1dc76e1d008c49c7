#include "host/remote/perform.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/base/text.h"

namespace veldrin {
namespace {

using platform::Long;
using Kind = Verb::Kind;

Long Sum(Long one, Long other) {
    return static_cast<Long>(
        std::clamp<std::int64_t>(std::int64_t{one} + other, 0, std::numeric_limits<Long>::max()));
}

void Steer(Kind kind, sarnel::Remote& remote) {
    switch (kind) {
        case Kind::kPlay:
            remote.Play();
            break;
        case Kind::kPause:
            remote.Pause();
            break;
        case Kind::kPlayPause:
            remote.PlayPause();
            break;
        case Kind::kStop:
            remote.Stop();
            break;
        case Kind::kNext:
            remote.Next();
            break;
        case Kind::kPrevious:
            remote.Previous();
            break;
        default:
            break;
    }
}

}  // namespace

std::string Perform(const Verb& verb, sarnel::Remote remote) {
    if (verb.kind == Kind::kVolume) {
        remote.Volume(Sum(verb.relative ? remote.Volume() : 0, verb.amount));
    } else if (verb.kind == Kind::kSeek) {
        remote.Position(Sum(verb.relative ? remote.Position() : 0, verb.amount));
    } else if (verb.kind == Kind::kCommand) {
        const std::u16string key = platform::Widen(verb.key);
        if (!remote.HasCommand(key)) {
            return "there is no command '" + verb.key + "'";
        }
        remote.RunCommand(key);
    } else {
        Steer(verb.kind, remote);
    }
    return {};
}

}  // namespace veldrin
