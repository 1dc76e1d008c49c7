#include "platform/desktop/drives.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include "platform/base/text.h"
#include "platform/desktop/words.h"
#include "platform/files/files.h"

namespace platform::desktop {

namespace {

namespace fs = std::filesystem;

/// Bytes that stand as `mark` and so many digits of that base.
std::string FromCodes(std::string_view text, std::string_view mark, std::size_t digits, int base) {
    std::string bytes;
    while (!text.empty()) {
        unsigned value = 0;
        const std::string_view code =
            text.starts_with(mark) ? text.substr(mark.size(), digits) : std::string_view();
        const auto [end, fault] =
            std::from_chars(code.data(), code.data() + code.size(), value, base);
        const bool escaped =
            code.size() == digits && end == code.data() + digits && value > 0 && value < 256;
        bytes += escaped ? static_cast<char>(value) : text.front();
        text.remove_prefix(escaped ? mark.size() + digits : 1);
    }
    return bytes;
}

std::string UnescapedMount(std::string_view text) {
    return FromCodes(text, "\\", 3, 8);
}

bool IsForVolumes(std::string_view mountPoint) {
    return std::ranges::any_of(
        std::to_array<std::string_view>({"/media/", "/run/media/", "/mnt/"}),
        [&](std::string_view folder) { return mountPoint.starts_with(folder); });
}

std::string WithSeparator(std::string_view folder) {
    return std::string(folder) + (folder.ends_with('/') ? "" : "/");
}

/// From mount point, with a separator, to device.
std::map<std::string, std::string> Volumes(std::string_view mounts) {
    constexpr std::size_t kMountPoint = 4;
    std::map<std::string, std::string> volumes;
    for (const std::string_view line : Lines(mounts)) {
        const auto words = Words(line);
        const auto dash = std::ranges::find(words, "-");
        if (words.size() <= kMountPoint || words.end() - dash < 3) {
            continue;
        }
        const std::string root = WithSeparator(UnescapedMount(words[kMountPoint]));
        if (IsForVolumes(root)) {
            volumes[root] = UnescapedMount(dash[2]);  // the last one hides what was there before
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

std::vector<Drive> ListDrives(std::string_view home, std::string_view mounts,
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
    constexpr std::size_t kMostRead = std::size_t{4} << 20U;
    return ListDrives(home == nullptr ? "" : home,
                      ReadWholeFile(u"/proc/self/mountinfo", kMostRead).value_or(""), labelOf);
}

}  // namespace platform::desktop
