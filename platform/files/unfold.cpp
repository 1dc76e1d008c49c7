#include "platform/files/unfold.h"

#include <algorithm>
#include <utility>

#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/files/media_list.h"

namespace platform {

namespace {

std::string FolderOfFile(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

// "1 file", "2 files".
std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// Some of them by name: a list of radio stations may be long.
std::string Named(const std::vector<std::string>& streams) {
    constexpr std::size_t kMostNamed = 10;
    const std::size_t named = std::min(streams.size(), kMostNamed);
    std::string text;
    for (std::size_t i = 0; i < named; ++i) {
        text += (i == 0 ? "'" : ", '") + streams[i] + "'";
    }
    return named == streams.size()
               ? text
               : text + " and " + std::to_string(streams.size() - named) + " more";
}

bool IsFolderPath(const std::string& path) {
    return DirectoryMatches(Widen(path + "/"));
}

}  // namespace

bool IsFolded(const std::string& path) {
    return MediaListKindOf(path).has_value() || IsFolderPath(path);
}

void Unfolder::Unfold(const std::string& path, const std::string& name) {
    if (!goesOn_) {
        return;
    }
    if (IsFolderPath(path)) {
        if (UnfoldFolder(path, name) == 0 && goesOn_) {
            const bool alone = rules_.below == Below::kLeftOut;
            remarks_.push_back("no " + rules_.wantedText + " in '" + name +
                               (alone ? "'" : "' or in a folder below it"));
        }
    } else if (MediaListKindOf(path)) {
        UnfoldList(path, name);
    } else {
        goesOn_ = taker_.file(path);
    }
}

// Answers in how many folders something was found.
std::size_t Unfolder::UnfoldFolder(const std::string& path, const std::string& name) {
    std::size_t found = 0;
    const WalkEnd end = WalkFolders(
        path, rules_.below, [&](const std::string& folder, const std::vector<std::string>& files) {
            std::vector<std::string> wanted;
            std::copy_if(files.begin(), files.end(), std::back_inserter(wanted),
                         [this](const std::string& file) { return IsWanted(file); });
            if (!wanted.empty()) {
                ++found;
                goesOn_ = taker_.folder(folder, wanted);
            }
            return goesOn_;
        });
    if (end.unreadable > 0) {
        Remark(name, Counted(end.unreadable, "folder") + " cannot be read");
    }
    if (!end.complete && goesOn_) {
        Remark(name, "of more than " + Counted(kMostFolders, "folder") + " the rest is left out");
    }
    return found;
}

std::optional<Unfolder::Names> Unfolder::NamesIn(const std::string& path, const std::string& name) {
    const auto bytes = ReadWholeFile(Widen(path), kLongestMediaList);
    if (!bytes) {
        const bool isLong = FileLength(Widen(path)).value_or(0) > std::int64_t{kLongestMediaList};
        Remark(name, isLong ? "a list of more than 64 MB is not read" : "cannot be read");
        return std::nullopt;
    }
    switch (MediaListKindOf(path).value_or(MediaListKind::kM3u)) {
        case MediaListKind::kM3u:
            return Names{NamesInM3u(*bytes), MediaNames::kPaths};
        case MediaListKind::kPls:
            return Names{NamesInPls(*bytes), MediaNames::kPaths};
        case MediaListKind::kXspf:
            if (auto names = rules_.xspf ? rules_.xspf(*bytes) : std::nullopt) {
                return Names{std::move(*names), MediaNames::kAddresses};
            }
            Remark(name, "this is no xspf list");
            return std::nullopt;
        case MediaListKind::kCue:
            if (auto names = NamesInCue(*bytes)) {
                return Names{std::move(*names), MediaNames::kPaths};
            }
            Remark(name, "a cue sheet without tracks of its own names nothing to play");
            return std::nullopt;
    }
    return std::nullopt;
}

void Unfolder::UnfoldList(const std::string& path, const std::string& name) {
    const auto names = NamesIn(path, name);
    if (!names) {
        return;
    }
    Left left;
    const std::string folder = FolderOfFile(path);
    for (const std::string& entry : names->names) {
        if (!goesOn_) {
            return;
        }
        TakeName(entry, names->kind, folder, left);
    }
    TellWhatIsLeft(name, names->names.size(), left);
}

void Unfolder::TakeName(const std::string& entry, MediaNames kind, const std::string& folder,
                        Left& left) {
    if (IsStream(entry)) {
        left.streams.push_back(entry);
        return;
    }
    const auto path = PathOfMediaName(entry, kind, folder);
    if (!path) {
        ++left.missing;
    } else if (IsFolderPath(*path)) {
        left.unwanted += UnfoldFolder(*path, *path) == 0 ? 1 : 0;
    } else if (MediaListKindOf(*path)) {
        ++left.lists;  // or one that names itself would never end
    } else if (IsWanted(*path)) {
        goesOn_ = taker_.file(*path);
    } else {
        ++left.unwanted;
    }
}

void Unfolder::TellWhatIsLeft(const std::string& name, std::size_t all, const Left& left) {
    if (all == 0) {
        Remark(name, "this list names nothing");
    }
    if (left.missing > 0) {
        Remark(name, std::to_string(left.missing) + " of " + Counted(all, "name") +
                         " in this list lead" + (left.missing == 1 ? "s" : "") + " nowhere");
    }
    if (left.unwanted > 0) {
        Remark(name, std::to_string(left.unwanted) + " of " + Counted(all, "name") +
                         " in this list lead" + (left.unwanted == 1 ? "s" : "") + " to no " +
                         rules_.wantedText);
    }
    if (left.lists > 0) {
        Remark(name, Counted(left.lists, "further list") + " in this one " +
                         (left.lists == 1 ? "is" : "are") + " left out");
    }
    if (!left.streams.empty()) {
        Remark(name, "streams are not played: " + Named(left.streams));
    }
}

void Unfolder::Remark(const std::string& name, const std::string& text) {
    remarks_.push_back("'" + name + "': " + text);
}

}  // namespace platform
