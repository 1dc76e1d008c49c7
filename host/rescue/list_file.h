// The playlist's file as it lies on the disk, looked at and moved without the component. Paths are
// raw bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace veldrin {

inline constexpr const char* kListName = "Sarnel.Ambrisor.omk";

/// The lines in front of the rows.
struct ListHead {
    std::int64_t count = 0;
    std::int64_t current = -1;
};

/// By which a file is known again: another one in its place has another.
struct ListStamp {
    std::int64_t size = -1;  ///< in bytes; below 0: there is no file
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;  ///< with the seconds: when it was written last
    bool operator==(const ListStamp&) const = default;
};

/// What lies at a path.
struct ListState {
    enum class Kind {
        kMissing,
        kUnreadable,  ///< no file, a link that leads nowhere, or one that may not be read
        kDamaged,     ///< cut, or no list at all
        kWhole
    };
    Kind kind = Kind::kMissing;
    ListStamp stamp;
};

/// Only whether it is there and can be read, which costs nothing: a file counts as whole.
ListState GlanceAtList(const std::string& path);

/// The same, and reads a file to its end: a whole one has a head, as many lines as that asks for,
/// and ends with a line's end.
ListState JudgeList(const std::string& path);

/// Nothing if there is no list with a head.
std::optional<ListHead> ReadListHead(const std::string& path);

/// Whether both are files with the same bytes.
bool HaveSameBytes(const std::string& one, const std::string& other);

/// Renames what is at the path to the same name with ".damaged" behind it, with a number from 2 to
/// 9 as well if that is taken; then the ninth is overwritten. The new name without its folder, or
/// nothing if that failed.
std::optional<std::string> SetAside(const std::string& path);

/// Makes `to`, which must not exist, a file with the bytes of `from`, in one step. It may be one
/// and the same file under a second name: neither is ever written into.
bool DuplicateFile(const std::string& from, const std::string& to);

/// Removes what runs that were killed while they wrote settings or list left in the directory.
void RemoveLeftovers(const std::string& directory);

}  // namespace veldrin
