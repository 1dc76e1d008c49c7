// The list of playable types from one run to the next. It stands under a stamp of all that it
// depends on: if anything of that has changed, GStreamer is asked anew.
#include <sys/stat.h>

#include <cstdlib>
#include <sstream>
#include <string_view>
#include <vector>

#include "host/engine/file_types.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {

namespace {

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

// As GStreamer looks for them: the variables of its version go before those of any.
std::vector<std::string> PluginFolders() {
    std::string folders = Environment("GST_PLUGIN_PATH_1_0");
    if (folders.empty()) {
        folders = Environment("GST_PLUGIN_PATH");
    }
    std::string system = Environment("GST_PLUGIN_SYSTEM_PATH_1_0");
    if (system.empty()) {
        system = Environment("GST_PLUGIN_SYSTEM_PATH");
    }
    if (system.empty()) {
        const std::string data = Environment("XDG_DATA_HOME");
        system = (data.empty() ? Environment("HOME") + "/.local/share" : data) +
                 "/gstreamer-1.0/plugins:" GSTREAMER_PLUGINS;
    }
    std::vector<std::string> list;
    std::istringstream parts(folders + ":" + system);
    for (std::string part; std::getline(parts, part, ':');) {
        if (!part.empty()) {
            list.push_back(part);
        }
    }
    return list;
}

// A folder changes its time when a plug-in comes, goes or is replaced; the program stands for the
// table of types in it.
std::string Stamp() {
    std::vector<std::string> places = PluginFolders();
    places.emplace_back("/proc/self/exe");
    std::string stamp = "veldrin file types " + Environment("GST_PLUGIN_FEATURE_RANK");
    for (const std::string& place : places) {
        struct stat status {};
        stamp += " " + place;
        if (stat(place.c_str(), &status) == 0) {
            stamp += " " + std::to_string(status.st_mtim.tv_sec) + "." +
                     std::to_string(status.st_mtim.tv_nsec);
        }
    }
    for (char& c : stamp) {
        c = c == '\n' ? ' ' : c;
    }
    return stamp;
}

}  // namespace

std::optional<SupportedTypes> SupportedTypes::Remembered(const std::string& file) {
    constexpr std::size_t kMostRead = std::size_t{64} << 10U;
    std::istringstream in(platform::ReadWholeFile(platform::Widen(file), kMostRead).value_or(""));
    std::string stamp;
    if (!std::getline(in, stamp) || stamp != Stamp()) {
        return std::nullopt;
    }
    SupportedTypes types;
    std::string extension;
    while (std::getline(in, extension) && !extension.empty()) {
        types.extensions_.insert(extension);
    }
    // The empty line at the end tells that the list is whole.
    return in && extension.empty() ? std::optional(types) : std::nullopt;
}

void SupportedTypes::Remember(const std::string& file) const {
    if (file.empty()) {
        return;
    }
    std::string text = Stamp() + '\n';
    for (const std::string& extension : extensions_) {
        text.append(extension).push_back('\n');
    }
    text.push_back('\n');
    static_cast<void>(platform::ReplaceFile(platform::Widen(file), text));
}

}  // namespace veldrin
