#include "platform/files/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/base/text.h"

namespace platform {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

OpenFolder Open(std::u16string_view path) {
    const bool isPath = path.find(u'\0') == std::u16string_view::npos;
    return OpenFolder(isPath ? opendir(Narrow(path).c_str()) : nullptr);
}

// S_IFDIR, S_IFREG or another; 0 if that cannot be told. Most file systems tell it with the name,
// but a link has to be followed.
mode_t KindOf(DIR* folder, const dirent& entry) {
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) {
        return static_cast<mode_t>(DTTOIF(entry.d_type));
    }
    struct stat status {};
    return fstatat(dirfd(folder), entry.d_name, &status, 0) == 0 ? status.st_mode & S_IFMT : 0;
}

// Folded once, and not in each of the comparisons that it takes to order thousands of names.
struct Folded {
    std::u16string capitals;
    FolderEntry entry;

    bool operator<(const Folded& other) const {
        const int order = capitals.compare(other.capitals);
        return order < 0 || (order == 0 && entry.name < other.entry.name);
    }
};

std::vector<FolderEntry> InOrder(std::vector<Folded> all) {
    std::sort(all.begin(), all.end());
    std::vector<FolderEntry> entries;
    entries.reserve(all.size());
    for (Folded& folded : all) {
        entries.push_back(std::move(folded.entry));
    }
    return entries;
}

}  // namespace

std::optional<std::vector<FolderEntry>> ListFolder(std::u16string_view path) {
    const OpenFolder folder = Open(path);
    if (!folder) {
        return std::nullopt;
    }
    std::vector<Folded> all;
    while (const dirent* entry = readdir(folder.get())) {
        if (entry->d_name[0] == '.') {
            continue;
        }
        const mode_t kind = KindOf(folder.get(), *entry);
        if (kind == S_IFDIR || kind == S_IFREG) {
            std::u16string name = Widen(entry->d_name);
            std::u16string capitals = Upper(name);
            all.push_back({std::move(capitals), {std::move(name), kind == S_IFDIR}});
        }
    }
    return InOrder(std::move(all));
}

std::optional<FolderIdentity> IdentityOf(std::u16string_view path) {
    struct stat status {};
    const bool isPath = path.find(u'\0') == std::u16string_view::npos;
    if (!isPath || stat(Narrow(path).c_str(), &status) != 0) {
        return std::nullopt;
    }
    return FolderIdentity{status.st_dev, status.st_ino};
}

FolderTrail::FolderTrail(std::u16string_view start) {
    for (std::size_t end = start.find(u'/'); end != std::u16string_view::npos;
         end = start.find(u'/', end + 1)) {
        if (const auto identity = IdentityOf(start.substr(0, end + 1))) {
            folders_.push_back(*identity);
        }
    }
}

bool FolderTrail::Enter(std::u16string_view folder) {
    const auto identity = IdentityOf(folder);
    if (!identity || std::find(folders_.begin(), folders_.end(), *identity) != folders_.end()) {
        return false;
    }
    folders_.push_back(*identity);
    return true;
}

}  // namespace platform
