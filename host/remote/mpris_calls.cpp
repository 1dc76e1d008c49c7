// What others on the bus ask of the player.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "host/options.h"
#include "host/paths.h"
#include "host/remote/mpris.h"
#include "host/remote/mpris_names.h"
#include "platform/files/file_address.h"

namespace veldrin {

using namespace platform;

namespace {

constexpr const char* kUnknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
constexpr const char* kUnknownProperty = "org.freedesktop.DBus.Error.UnknownProperty";
constexpr const char* kReadOnly = "org.freedesktop.DBus.Error.PropertyReadOnly";
constexpr const char* kInvalid = "org.freedesktop.DBus.Error.InvalidArgs";

const BusEntry* Find(const BusTable& table, const std::string& name) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&](const BusEntry& entry) { return entry.name == name; });
    return found != table.end() ? &*found : nullptr;
}

/// An argument of that type; null if there is none.
template <class T>
const T* Argument(const BusCall& call, std::size_t index) {
    return index < call.arguments.size() ? call.arguments[index].As<T>() : nullptr;
}

/// As the first argument of a call about properties has it; empty for all interfaces.
std::string InterfaceIn(const BusCall& call) {
    const auto* interface = Argument<std::string>(call, 0);
    return interface != nullptr ? *interface : std::string();
}

std::string NameIn(const BusCall& call) {
    const auto* name = Argument<std::string>(call, 1);
    return name != nullptr ? *name : std::string();
}

bool IsAbout(const BusCall& call, const char* interface) {
    const std::string asked = InterfaceIn(call);
    return asked.empty() || asked == interface;
}

Long Percent(double share, double from, double to) {
    constexpr double kHundred = 100;
    return static_cast<Long>(std::lround(std::clamp(share, from, to) * kHundred));
}

}  // namespace

void Mpris::Note(BusCall call) {
    calls_.push_back(std::move(call));
    if (calls_.size() == 1) {
        player_.windows.Schedule(0, [this] { Work(); });
    }
}

void Mpris::Work() {
    for (const BusCall& call : std::exchange(calls_, {})) {
        if (!hasEnded_) {
            Deal(call);
        }
    }
}

// Who asks for the item gets it with its tags, even if he is the first to ask.
void Mpris::Deal(const BusCall& call) {
    if (call.interface != kPropertiesInterface) {
        if (call.member == "Quit") {
            Do(call);  // an end does not wait
            return;
        }
        const std::string name = call.arguments.empty() ? call.member : std::string();
        if (!player_.whenFree(name, [this, call] { Do(call); })) {
            player_.bus.Answer(call, {});
        }
        return;
    }
    if (call.member == "Set") {
        player_.whenFree({}, [this, call] { Set(call); });
        return;
    }
    const bool isAll = call.member == "GetAll";
    Update();
    if (IsAbout(call, kMprisPlayer)) {
        WantFacts();
        if (next_.number != 0 && (isAll || NameIn(call) == "Metadata")) {
            waiting_.push_back(call);
            return;
        }
    }
    if (isAll) {
        AnswerGetAll(call);
    } else if (call.member == "Get") {
        AnswerGet(call);
    } else {
        player_.bus.Refuse(call, kUnknownMethod, call.member);
    }
}

void Mpris::AnswerGet(const BusCall& call) {
    BusTable known;
    if (IsAbout(call, kMprisPlayer)) {
        known = said_;
        known.push_back({"Position", {Position()}});
    }
    if (IsAbout(call, kMprisRoot)) {
        const BusTable root = RootProperties();
        known.insert(known.end(), root.begin(), root.end());
    }
    if (const BusEntry* found = Find(known, NameIn(call))) {
        player_.bus.AnswerBoxed(call, found->value);
    } else {
        player_.bus.Refuse(call, kUnknownProperty, NameIn(call));
    }
}

void Mpris::AnswerGetAll(const BusCall& call) {
    BusTable all;
    if (IsAbout(call, kMprisPlayer)) {
        all = said_;
        all.push_back({"Position", {Position()}});
    }
    if (IsAbout(call, kMprisRoot)) {
        const BusTable root = RootProperties();
        all.insert(all.end(), root.begin(), root.end());
    }
    player_.bus.Answer(call, {{std::move(all)}});
}

void Mpris::Set(const BusCall& call) {
    const std::string name = NameIn(call);
    const bool isKnown = Find(said_, name) != nullptr || Find(RootProperties(), name) != nullptr ||
                         name == "Position";
    const bool isWritable =
        IsAbout(call, kMprisPlayer) &&
        (name == "LoopStatus" || name == "Rate" || name == "Shuffle" || name == "Volume");
    if (!isKnown) {
        player_.bus.Refuse(call, kUnknownProperty, name);
    } else if (!isWritable) {
        player_.bus.Refuse(call, kReadOnly, name);
    } else if (call.arguments.size() != 3 || !Write(name, call.arguments[2])) {
        player_.bus.Refuse(call, kInvalid, name);
    } else {
        player_.bus.Answer(call, {});
        Turn();
    }
}

bool Mpris::Write(const std::string& name, const BusValue& value) {
    sarnel::Remote& remote = player_.remote;
    const auto* number = value.As<double>();
    if (name == "Shuffle" && value.As<bool>() != nullptr) {
        remote.Random(*value.As<bool>());
    } else if (name == "LoopStatus" && value.As<std::string>() != nullptr) {
        const std::string& loop = *value.As<std::string>();
        if (loop != "None" && loop != "Track" && loop != "Playlist") {
            return false;
        }
        remote.RepeatItem(loop == "Track");
        if (loop != "Track") {
            remote.RepeatList(loop == "Playlist");
        }
    } else if (number == nullptr || std::isnan(*number)) {
        return false;
    } else if (name == "Volume") {
        remote.Volume(Percent(*number, 0, 1));
    } else if (*number == 0) {
        remote.Pause();  // what a rate of nothing means
    } else {
        remote.Tempo(Percent(*number - 1, -0.5, 0.5));
    }
    return true;
}

void Mpris::Do(const BusCall& call) {
    if (hasEnded_) {
        return;
    }
    if (call.member == "Seek" && Argument<std::int64_t>(call, 0) != nullptr) {
        Seek(*Argument<std::int64_t>(call, 0));
    } else if (call.member == "SetPosition" && Argument<BusPath>(call, 0) != nullptr &&
               Argument<std::int64_t>(call, 1) != nullptr) {
        SetPosition(Argument<BusPath>(call, 0)->text, *Argument<std::int64_t>(call, 1));
    } else if (call.member == "OpenUri" && Argument<std::string>(call, 0) != nullptr) {
        if (!Open(*Argument<std::string>(call, 0))) {
            player_.bus.Refuse(call, kInvalid, "not a file that is there");
            return;
        }
    } else if (call.member == "Seek" || call.member == "SetPosition" || call.member == "OpenUri") {
        player_.bus.Refuse(call, kInvalid, call.member);
        return;
    } else if (!Command(call.member)) {
        player_.bus.Refuse(call, kUnknownMethod, call.member);
        return;
    }
    // What is asked next finds it done.
    player_.bus.Answer(call, {});
    Turn();
}

bool Mpris::Command(const std::string& member) {
    sarnel::Remote& remote = player_.remote;
    if (member == "Play") {
        remote.Play();
    } else if (member == "Pause") {
        remote.Pause();
    } else if (member == "PlayPause") {
        remote.PlayPause();
    } else if (member == "Stop") {
        remote.Stop();
    } else if (member == "Next") {
        remote.Next();
    } else if (member == "Previous") {
        remote.Previous();
    } else if (member == "Raise") {
        player_.raise();
    } else if (member == "Quit") {
        player_.quit();
    } else {
        return false;
    }
    return true;
}

void Mpris::Seek(std::int64_t offset) {
    if (!player_.remote.CanSeek()) {
        return;
    }
    // No item is as long as that.
    constexpr std::int64_t kFar = std::int64_t{std::numeric_limits<Long>::max()} * kSecond;
    const std::int64_t target =
        player_.engine.Position() * kSecond + std::clamp(offset, -kFar, kFar);
    if (target > player_.engine.Length() * kSecond) {
        player_.remote.Next();
    } else {
        player_.remote.Position(static_cast<Long>(std::max(target, std::int64_t{0}) / kSecond));
    }
}

void Mpris::SetPosition(const std::string& item, std::int64_t position) {
    const bool isCurrent = next_.number == 0 && told_.number != 0 && item == ItemPath(told_.number);
    if (isCurrent && position >= 0 && position <= player_.engine.Length() * kSecond) {
        player_.remote.Position(static_cast<Long>(position / kSecond));
    }
}

bool Mpris::Open(const std::string& address) {
    const auto path = PathOfAddress(address.substr(0, address.find_first_of("?#")), HostName());
    if (!path) {
        return false;
    }
    const std::string absolute = AbsolutePath(*path, "/");
    if (!PathExists(absolute)) {
        return false;
    }
    player_.open(absolute);
    return true;
}

}  // namespace veldrin
