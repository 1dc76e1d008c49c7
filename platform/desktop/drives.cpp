#include "platform/desktop/drives.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include "platform/base/text.h"

namespace platform::desktop {

namespace {

namespace fs = std::filesystem;

bool IsForVolumes(std::string_view mountPoint) {
    return std::ranges::any_of(
        std::to_array<std::string_view>({"/media/", "/run/media/", "/mnt/"}),
        [&](std::string_view folder) { return mountPoint.starts_with(folder); });
}

std::string WithSeparator(std::string_view folder) {
    return std::string(folder) + (folder.ends_with('/') ? "" : "/");
}

/// From mount point, with a separator, to device.
std::map<std::string, std::string> Volumes(const std::vector<Mount>& mounts) {
    std::map<std::string, std::string> volumes;
    for (const Mount& mount : mounts) {
        const std::string root = WithSeparator(mount.folder);
        if (IsForVolumes(root)) {
            volumes[root] = mount.device;  // the last one hides what was there before
        }
    }
    return volumes;
}

std::string Canonical(const fs::path& path) {
    std::error_code fault;
    const fs::path canonical = fs::canonical(path, fault);
    return fault ? path.string() : canonical.string();
}

/// From device to label.
std::map<std::string, std::string> LabelsHere() {
    std::map<std::string, std::string> labels;
    std::error_code fault;
    for (fs::directory_iterator one("/dev/disk/by-label", fault), end; !fault && one != end;
         one.increment(fault)) {
        labels[Canonical(one->path())] = UnescapedLabel(one->path().filename().string());
    }
    return labels;
}

}  // namespace

std::string UnescapedLabel(std::string_view name) {
    return FromCodes(name, "\\x", 2, 16);
}

std::vector<Drive> ListDrives(std::string_view home, const std::vector<Mount>& mounts,
                              const LabelOf& labelOf) {
    std::vector<Drive> drives{{u"/", u""}};
    const auto add = [&](const std::string& root, const std::string& label) {
        const std::u16string wide = Widen(root);
        if (std::ranges::find(drives, wide, &Drive::root) == drives.end()) {
            drives.push_back({wide, Widen(label)});
        }
    };
    if (home.starts_with('/')) {
        add(WithSeparator(home), {});
    }
    for (const auto& [root, device] : Volumes(mounts)) {
        add(root, labelOf(device));
    }
    return drives;
}

std::vector<Drive> DrivesHere() {
    const char* const home = std::getenv("HOME");
    const auto labels = LabelsHere();
    const auto labelOf = [&](const std::string& device) {
        const auto found = labels.find(Canonical(device));
        return found == labels.end() ? std::string() : found->second;
    };
    return ListDrives(home == nullptr ? "" : home, MountsHere(), labelOf);
}

}  // namespace platform::desktop
