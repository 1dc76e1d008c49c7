#include "host/remote/status.h"

#include <nlohmann/json.hpp>

#include "host/terminal/console.h"
#include "platform/base/text.h"
#include "platform/files/file_address.h"

namespace veldrin {
namespace {

using sarnel::PlaybackState;

const char* RepeatOf(const Status& status) {
    return status.repeatsItem ? "item" : status.repeatsList ? "list" : "none";
}

}  // namespace

const char* NameOf(PlaybackState state) {
    return state == PlaybackState::kPlaying  ? "playing"
           : state == PlaybackState::kPaused ? "paused"
                                             : "stopped";
}

Status StatusOf(const sarnel::Remote& remote, Engine& engine) {
    Status status;
    status.state = remote.State();
    status.position = engine.Position();
    status.length = engine.Length();
    status.volume = remote.Volume();
    status.repeatsItem = remote.RepeatItem();
    status.repeatsList = remote.RepeatList();
    status.random = remote.Random();
    status.rows = remote.ListCount();
    const platform::Long current = remote.ListCurrent();
    if (current >= 0 && current < status.rows) {
        status.row = current + 1;
        status.title = platform::Narrow(remote.RowTitle(current));
        status.path = platform::Narrow(remote.RowPath(current));
    }
    return status;
}

std::string StatusLine(const Status& status) {
    std::string line = NameOf(status.state);
    const auto add = [&](const std::string& field) { line.append("\t").append(field); };
    add(std::to_string(status.position));
    add(std::to_string(status.length));
    add(std::to_string(status.volume));
    add(RepeatOf(status));
    add(status.random ? "on" : "off");
    add(std::to_string(status.row));
    add(std::to_string(status.rows));
    add(Printable(status.title));
    add(Printable(status.path));
    return line + "\n";
}

std::string StatusJson(const Status& status) {
    using nlohmann::ordered_json;
    const ordered_json object = {
        {"state", NameOf(status.state)},
        {"position", status.position},
        {"length", status.length},
        {"volume", status.volume},
        {"repeat", RepeatOf(status)},
        {"random", status.random},
        {"row", status.row},
        {"rows", status.rows},
        {"title", status.title},
        {"path", status.path},
        {"url", status.path.empty() ? std::string() : platform::AddressOfPath(status.path)},
    };
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace veldrin
