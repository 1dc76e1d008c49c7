#include "host/rescue/list_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <memory>
#include <string_view>

#include "controls/list/listfile.h"
#include "host/descriptor.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {
namespace {

using Kind = ListState::Kind;

constexpr const char* kSettingsName = "Sarnel.Ambrisor.ini";

/// Head and signature with room to spare.
constexpr std::size_t kMostOfHead = 128;

/// An ordinary file that can be read, else nothing. Does not wait for the other end of a pipe.
Descriptor OpenFile(const std::string& path) {
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    char byte = 0;
    const bool good = file && fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode) &&
                      pread(file.Number(), &byte, 1, 0) >= 0;
    return good ? std::move(file) : Descriptor();
}

std::optional<std::int64_t> Number(std::string_view line) {
    while (line.starts_with(' ')) {
        line.remove_prefix(1);
    }
    while (line.ends_with(' ')) {
        line.remove_suffix(1);
    }
    std::int64_t number = 0;
    const char* const end = line.data() + line.size();
    const auto read = std::from_chars(line.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<ListHead> HeadIn(std::string_view text) {
    const auto next = [&text] {
        const std::string_view line = text.substr(0, text.find(sarnel::kListLineEnd));
        text.remove_prefix(std::min(line.size() + sarnel::kListLineEnd.size(), text.size()));
        return line;
    };
    if (next() != sarnel::kListSignature) {
        return std::nullopt;
    }
    const auto count = Number(next());
    const auto current = Number(next());
    return count && current ? std::optional(ListHead{*count, *current}) : std::nullopt;
}

/// The first bytes of an open file.
std::string Beginning(const Descriptor& file) {
    std::string bytes(kMostOfHead, '\0');
    const ssize_t got = pread(file.Number(), bytes.data(), bytes.size(), 0);
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

/// Whether all the lines are there that the head asks for. A text may hold a line's end of its own,
/// so there may be more.
bool HasItsLines(const std::string& path, const ListHead& head) {
    constexpr std::int64_t kHeadLines = 3;
    platform::FileReader file(platform::Widen(path));
    std::int64_t ends = 0;
    std::string piece;
    std::size_t counted = 0;
    while (file.IsOpen() && file.Append(piece)) {
        ends += std::count(piece.begin() + static_cast<std::ptrdiff_t>(counted), piece.end(), '\r');
        counted = std::min(piece.size(), sarnel::kListLineEnd.size());
        piece.erase(0, piece.size() - counted);
    }
    return piece == sarnel::kListLineEnd &&
           ends - kHeadLines >= 2 * std::max<std::int64_t>(head.count, 0);
}

/// What stands in for the X's of a temporary name. A word or a number is somebody's own: "backup",
/// "202611".
bool IsRandom(std::string_view text) {
    constexpr std::size_t kLength = 6;
    const auto all = [](std::string_view characters, char first, char last) {
        return std::all_of(characters.begin(), characters.end(),
                           [=](char c) { return c >= first && c <= last; });
    };
    const bool isWord = all(text.substr(0, 1), 'A', 'Z') && all(text.substr(1), 'a', 'z');
    return text.size() == kLength && !isWord && !all(text, 'a', 'z') && !all(text, 'A', 'Z') &&
           !all(text, '0', '9') && std::all_of(text.begin(), text.end(), [&](char c) {
               const std::string_view one(&c, 1);
               return all(one, 'a', 'z') || all(one, 'A', 'Z') || all(one, '0', '9');
           });
}

bool IsLeftover(std::string_view name) {
    for (const std::string_view stem : {kSettingsName, kListName}) {
        if (name.starts_with(stem) && name.substr(stem.size()).starts_with('.')) {
            return IsRandom(name.substr(stem.size() + 1));
        }
    }
    return false;
}

}  // namespace

ListState GlanceAtList(const std::string& path) {
    ListState state;
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0) {
        state.kind = errno == ENOENT || errno == ENOTDIR ? Kind::kMissing : Kind::kUnreadable;
        return state;
    }
    const Descriptor file = OpenFile(path);
    if (!file || fstat(file.Number(), &status) != 0) {
        state.kind = Kind::kUnreadable;
        return state;
    }
    return {Kind::kWhole, {status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec}};
}

ListState JudgeList(const std::string& path) {
    ListState state = GlanceAtList(path);
    if (state.kind == Kind::kWhole) {
        const auto head = ReadListHead(path);
        state.kind = head && HasItsLines(path, *head) ? Kind::kWhole : Kind::kDamaged;
    }
    return state;
}

std::optional<ListHead> ReadListHead(const std::string& path) {
    const Descriptor file = OpenFile(path);
    return file ? HeadIn(Beginning(file)) : std::nullopt;
}

bool HaveSameBytes(const std::string& one, const std::string& other) {
    platform::FileReader first(platform::Widen(one));
    platform::FileReader second(platform::Widen(other));
    if (!first.IsOpen() || !second.IsOpen()) {
        return false;
    }
    // Pieces may differ in length, but not for ever.
    std::string mine;
    std::string others;
    for (;;) {
        const bool more = first.Append(mine);
        const bool othersMore = second.Append(others);
        const std::size_t common = std::min(mine.size(), others.size());
        if (mine.compare(0, common, others, 0, common) != 0) {
            return false;
        }
        mine.erase(0, common);
        others.erase(0, common);
        if (!more && !othersMore) {
            return mine.empty() && others.empty();
        }
    }
}

std::optional<std::string> SetAside(const std::string& path) {
    constexpr int kMost = 9;
    std::string aside = path + ".damaged";
    struct stat status {};
    for (int number = 2; number <= kMost && lstat(aside.c_str(), &status) == 0; ++number) {
        aside = path + ".damaged." + std::to_string(number);
    }
    if (rename(path.c_str(), aside.c_str()) != 0) {
        return std::nullopt;
    }
    return aside.substr(aside.rfind('/') + 1);
}

bool DuplicateFile(const std::string& from, const std::string& to) {
    constexpr std::size_t kMostCopied = std::size_t{1} << 30U;
    if (!OpenFile(from)) {
        return false;
    }
    if (linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0) {
        return true;
    }
    const auto bytes = platform::ReadWholeFile(platform::Widen(from), kMostCopied);
    return bytes && platform::ReplaceFile(platform::Widen(to), *bytes);
}

void RemoveLeftovers(const std::string& directory) {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(directory.c_str()), closedir);
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        struct stat status {};
        if (IsLeftover(entry->d_name) &&
            fstatat(dirfd(folder.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISREG(status.st_mode) && status.st_uid == geteuid()) {
            unlinkat(dirfd(folder.get()), entry->d_name, 0);
        }
    }
}

}  // namespace veldrin
