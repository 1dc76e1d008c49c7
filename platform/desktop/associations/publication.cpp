#include "platform/desktop/associations/publication.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>

#include "platform/base/text.h"
#include "platform/desktop/associations/default_applications.h"
#include "platform/desktop/associations/entries.h"
#include "platform/desktop/associations/media_types.h"
#include "platform/desktop/associations/run_tool.h"
#include "platform/desktop/icon.h"
#include "platform/files/files.h"

namespace platform::desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kToolTime(2000);
constexpr const char* kList = "mimeapps.list";
// The cache of all entries of a machine takes some tens of kilobytes.
constexpr std::size_t kMostRead = std::size_t{4} << 20U;

std::optional<std::string> Read(const std::string& path) {
    return ReadWholeFile(Widen(path), kMostRead);
}

enum class Written { kAsItWas, kAnew, kNot };

Written Write(const std::string& path, const std::string& bytes) {
    const auto old = Read(path);
    if (old == bytes) {
        return Written::kAsItWas;
    }
    if (!old && IsTaken(Widen(path))) {
        return Written::kNot;  // there is something that cannot be read, and so not kept either
    }
    std::error_code error;
    fs::create_directories(fs::path(path).parent_path(), error);
    return !error && ReplaceFile(Widen(path), bytes) ? Written::kAnew : Written::kNot;
}

void WriteIcons(const std::string& id, const std::string& data) {
    const std::string theme = data + "/icons/hicolor";
    bool anew = false;
    for (const IconPicture& picture : IconPictures()) {
        const std::string size = std::to_string(picture.size);
        const std::string path = theme + "/" + size + "x" + size + "/apps/" + id + ".png";
        anew = Write(path, std::string(picture.png)) == Written::kAnew || anew;
    }
    if (anew) {  // by its time desktops see that something below it has changed
        std::error_code error;
        fs::last_write_time(theme, fs::file_time_type::clock::now(), error);
    }
}

void WritePackage(const std::string& id, const std::string& data,
                  const std::set<std::string>& extensions) {
    const std::string path = data + "/mime/packages/" + id + ".xml";
    const bool changed = extensions.empty()
                             ? RemoveFile(Widen(path))
                             : Write(path, TypesPackage(extensions)) == Written::kAnew;
    if (changed) {
        RunTool({"update-mime-database", data + "/mime"}, kToolTime);
    }
}

/// False if one of them could not be written.
bool WriteEntries(const std::vector<NamedEntry>& entries, const std::string& data) {
    const std::string folder = data + "/applications";
    for (const NamedEntry& entry : entries) {
        if (Write(folder + "/" + entry.file, entry.text) == Written::kNot) {
            return false;
        }
    }
    RunTool({"update-desktop-database", "-q", folder}, kToolTime);
    return true;
}

/// The lists of one folder, those for a desktop first.
std::vector<std::string> ListsIn(const std::string& folder, const UserFolders& folders) {
    std::vector<std::string> lists;
    for (const std::string& desktop : folders.desktops) {
        lists.push_back(folder + "/" + desktop + "-" + kList);
    }
    lists.push_back(folder + "/" + kList);
    return lists;
}

bool FoldersHaveDefault(const UserFolders& folders) {
    std::vector<std::string> places{folders.config};
    places.insert(places.end(), folders.machineConfigs.begin(), folders.machineConfigs.end());
    places.push_back(folders.data + "/applications");
    for (const std::string& data : folders.machineData) {
        places.push_back(data + "/applications");
    }
    return std::any_of(places.begin(), places.end(), [&folders](const std::string& place) {
        const std::vector<std::string> lists = ListsIn(place, folders);
        return std::any_of(lists.begin(), lists.end(), [](const std::string& list) {
            return !TypesWithDefault(Read(list).value_or(""), {kFolderType}).empty();
        });
    });
}

/// Which entry opens folders where nobody has chosen: the first one that desktops come upon.
std::optional<std::string> FolderOpener(const UserFolders& folders,
                                        const std::set<std::string>& ours) {
    std::vector<std::string> places{folders.data};
    places.insert(places.end(), folders.machineData.begin(), folders.machineData.end());
    for (const std::string& place : places) {
        const std::string cache = Read(place + "/applications/mimeinfo.cache").value_or("");
        for (std::string& entry : EntriesInCache(cache, kFolderType)) {
            if (!ours.contains(entry)) {
                return std::move(entry);
            }
        }
    }
    return std::nullopt;
}

/// `unsaid`: types that the entry opens without a word of it in its file.
void WriteList(const UserFolders& folders, const Defaults& defaults,
               const std::set<std::string>& unsaid, const std::set<std::string>& ours) {
    const std::string path = folders.config + "/" + kList;
    std::string text = WithDefaults(Read(path).value_or(""), defaults);
    text = WithAssociations(text, {unsaid, defaults.entry});
    // Now that there are entries of ours for folders, the one that comes first might be ours.
    if (!FoldersHaveDefault(folders)) {
        if (const auto opener = FolderOpener(folders, ours)) {
            text = WithDefaults(text, {{kFolderType}, *opener});
        }
    }
    std::set<std::string> types = defaults.types;
    types.insert(kFolderType);
    text = WithoutRemovals(text, types, ours);
    if (!text.empty()) {
        Write(path, text);
    }
}

// A desktop's own list comes before that for all, but only for what it names.
void WriteListsOfDesktops(const UserFolders& folders, const Defaults& defaults) {
    for (const std::string& path : ListsIn(folders.config, folders)) {
        const auto old = Read(path);
        if (!old || path.ends_with(std::string("/") + kList)) {
            continue;
        }
        Write(path, WithDefaults(*old, {TypesWithDefault(*old, defaults.types), defaults.entry}));
    }
}

/// Where a path holds what parts a command line, another program would be named than is meant.
bool CanRun(const std::vector<std::string>& command) {
    std::error_code error;
    return !command.empty() && fs::is_regular_file(command.front(), error) &&
           access(command.front().c_str(), X_OK) == 0;
}

/// The entry with which the program was installed for all users. None if another program has it, or
/// this one lies elsewhere, and if the user has an entry of the same name: that one goes before it.
std::optional<std::string> InstalledEntry(const std::string& file, const std::string& program,
                                          const UserFolders& folders) {
    const std::string name = "/applications/" + file;
    if (IsTaken(Widen(folders.data + name))) {
        return std::nullopt;
    }
    for (const std::string& data : folders.machineData) {
        if (auto text = Read(data + name)) {
            // Both were installed below one folder.
            const std::string installed =
                data + "/../bin/" + program.substr(program.rfind('/') + 1);
            std::error_code error;
            return fs::equivalent(installed, program, error) ? std::move(text) : std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace

void PublishClass(const ProgramIdentity& program, const FileClass& fileClass,
                  const UserFolders& folders) {
    const Verb* const open = FindVerb(fileClass.verbs, kOpenVerb);
    if (open == nullptr || !CanRun(open->command)) {
        return;
    }
    const MediaTypes types = MediaTypesOf(fileClass.extensions);
    const std::vector<NamedEntry> entries =
        EntriesFor(program, fileClass, {types.all.begin(), types.all.end()});
    if (entries.empty()) {
        return;
    }
    WritePackage(program.id, folders.data, types.ownExtensions);
    std::set<std::string> ours;
    for (const NamedEntry& entry : entries) {
        ours.insert(entry.file);
    }
    const Defaults defaults{types.all, entries.front().file};
    std::set<std::string> unsaid;
    if (const auto installed = InstalledEntry(defaults.entry, open->command.front(), folders)) {
        const std::set<std::string> said = TypesOfEntry(*installed);
        std::set_difference(types.all.begin(), types.all.end(), said.begin(), said.end(),
                            std::inserter(unsaid, unsaid.end()));
    } else {
        WriteIcons(program.id, folders.data);
        if (!WriteEntries(entries, folders.data)) {
            return;
        }
    }
    WriteList(folders, defaults, unsaid, ours);
    WriteListsOfDesktops(folders, defaults);
}

}  // namespace platform::desktop
