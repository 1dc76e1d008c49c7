#include "host/remote/art_folder.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "host/paths.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {
namespace {

namespace fs = std::filesystem;

struct PictureKind {
    std::string_view start;
    std::string_view ending;
};

constexpr std::array kKinds = {
    PictureKind{"\xFF\xD8\xFF", ".jpg"},
    PictureKind{"\x89PNG\r\n", ".png"},
    PictureKind{"GIF8", ".gif"},
};

/// Only what has a name that we give.
bool IsOurs(const fs::path& path) {
    const std::string name = path.filename().string();
    const std::string stem = path.stem().string();
    return name.size() == 20 && stem.size() == 16 &&
           stem.find_first_not_of("0123456789abcdef") == std::string::npos;
}

void RemoveOldest(const std::string& folder) {
    std::vector<std::pair<fs::file_time_type, fs::path>> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_regular_file(ignored) && IsOurs(entry->path())) {
            found.emplace_back(entry->last_write_time(ignored), entry->path());
        }
    }
    std::sort(found.rbegin(), found.rend());
    for (std::size_t i = kMostPictures; i < found.size(); ++i) {
        fs::remove(found[i].second, error);
    }
}

}  // namespace

std::string_view EndingOf(std::string_view picture) {
    for (const PictureKind& kind : kKinds) {
        if (picture.starts_with(kind.start)) {
            return kind.ending;
        }
    }
    return {};
}

std::optional<std::string> KeepPicture(const std::string& folder, std::string_view picture) {
    const std::string_view ending = EndingOf(picture);
    if (ending.empty() || !MakeFolder(folder)) {
        return std::nullopt;
    }
    const std::string path = folder + "/" + ShortHash(picture) + std::string(ending);
    std::error_code error;
    if (fs::is_regular_file(fs::symlink_status(path, error)) &&
        fs::file_size(path, error) == picture.size()) {
        fs::last_write_time(path, fs::file_time_type::clock::now(), error);
        return path;
    }
    if (!platform::ReplaceFile(platform::Widen(path), picture)) {
        return std::nullopt;
    }
    RemoveOldest(folder);
    return path;
}

}  // namespace veldrin
