#include "host/output_place.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "host/paths.h"
#include "platform/base/text.h"
#include "platform/files/line_input.h"

namespace veldrin {
namespace {

namespace fs = std::filesystem;

std::optional<struct stat> StatusOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool Same(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// The folder that a path lies in and all those above it, behind all links.
std::vector<struct stat> FoldersAbove(const std::string& path) {
    std::vector<struct stat> folders;
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(path, error);
    for (fs::path at = whole.parent_path(); !at.empty(); at = at.parent_path()) {
        if (const auto folder = StatusOf(at.string())) {
            folders.push_back(*folder);
        }
        if (at == at.root_path()) {
            break;
        }
    }
    return folders;
}

bool IsAmong(const std::vector<struct stat>& all, const struct stat& one) {
    return std::any_of(all.begin(), all.end(),
                       [&one](const struct stat& other) { return Same(one, other); });
}

/// Whether a line of the saved list leads to the file. Titles are lines, too; none of them is a
/// whole path.
bool IsInList(const std::string& list, const struct stat& status) {
    platform::LineInput input(platform::Widen(list));
    while (const auto line = input.Next()) {
        const auto found = line->starts_with('/') ? StatusOf(std::string(*line)) : std::nullopt;
        if (found && Same(*found, status)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<std::string> OutputPlaceFault(const std::string& path, const Inputs& inputs) {
    if (IsFolder(path)) {
        return "it is a folder";
    }
    if (!IsFolder(FolderOf(path))) {
        return "there is no such folder";
    }
    const auto status = StatusOf(path);
    if (status && !S_ISREG(status->st_mode)) {
        return std::nullopt;
    }
    const std::vector<struct stat> folders = FoldersAbove(path);
    for (const std::string& input : inputs.paths) {
        const auto found = StatusOf(input);
        if (found && status && Same(*found, *status)) {
            return "it is one of the files to be played";
        }
        if (found && IsAmong(folders, *found)) {
            return "it lies in a folder to be played";
        }
    }
    const bool isListed = status && !inputs.list.empty() && IsInList(inputs.list, *status);
    return isListed ? std::optional<std::string>("it stands in the saved list") : std::nullopt;
}

}  // namespace veldrin
