// Where things lie, and how paths are handed on. All paths are raw bytes: a name need not be UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files/absolute_path.h"

namespace veldrin {

using platform::AbsolutePath;

/// The folder in which the last name of an absolute path stands.
std::string FolderOf(const std::string& path);

/// The folder that this process stands in; nothing if it has been removed.
std::optional<std::string> CurrentFolder();

/// The command line that hands a path to the component. The path stands in double quotes always,
/// since it may itself begin with "/add"; what is between the first quote and the last is taken as
/// it is, further quotes and line breaks included.
std::string CommandLine(std::string_view absolutePath, bool add);

/// One that names nothing, on any system. As the first of a run it leaves the list empty or, with
/// `add`, as it was saved. (An empty line might play what it restores.)
std::string LineOfNothing(bool add);

/// Whether such a line adds, rather than replacing the list and playing.
bool IsAdding(std::string_view line);
/// The same line, adding.
std::string Adding(std::string line);

/// The whole path of the running program.
std::string ProgramPath();

/// The folder of the settings and the playlist when none was asked for: the program's own folder if
/// it holds a settings file (portable use), else "veldrin" in the user's configuration. Nothing if
/// the user has no home.
std::optional<std::string> DefaultDirectory();

/// "veldrin" among the user's cached files, which may be removed at any time. Nothing if the user
/// has no home.
std::optional<std::string> CacheFolder();

/// "veldrin" among the user's data files. Nothing if the user has no home.
std::optional<std::string> DataFolder();

/// "veldrin" among the files in which the user's programs keep their state. Nothing if the user has
/// no home.
std::optional<std::string> StateFolder();

/// Whether it leads to a folder.
bool IsFolder(const std::string& path);

/// Makes the folder, and those above it that are missing, for the owner only. False if there is no
/// such folder afterwards.
[[nodiscard]] bool MakeFolder(const std::string& path);

/// A folder for sockets that nobody but this user can reach: $XDG_RUNTIME_DIR, else one in /tmp
/// that is made if need be. Nothing if neither is safe. `tmp` stands for /tmp in tests. The answer
/// leaves room for a name of 40 bytes in a socket address.
std::optional<std::string> RuntimeFolder(const std::string& tmp = "/tmp");

/// 16 hexadecimal digits that stand for the text.
std::string ShortHash(std::string_view text);

/// The name, without an ending, that socket and lock of a component directory bear: two spellings
/// of one directory have one name.
std::string InstanceName(const std::string& componentDirectory);

/// The user guide that belongs to the program at that path: the one that was installed with it, or
/// that of its source tree if it lies where it was built. If there is neither, where the former
/// should be. Raw bytes.
std::string UserGuide(const std::string& program);

}  // namespace veldrin
