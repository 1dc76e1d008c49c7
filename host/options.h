// The command line of `veldrin`, read before anything else happens: a mistake in it must be told
// and leave no trace. Arguments are raw bytes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/engine/engine.h"

namespace veldrin {

struct Options {
    enum class Action { kPlay, kQuit, kVerbs, kStatus, kExport, kHelp, kVersion };
    Action action = Action::kPlay;
    bool add = false;                      ///< enqueue, do not play
    bool flat = false;                     ///< folders without those below
    bool notifies = false;                 ///< tell of items that begin while the window is hidden
    bool noWindow = false;                 ///< play in the terminal, end after the last item
    std::optional<double> scale;           ///< of the window, 1 to 4; none takes the screen's
    std::optional<std::string> directory;  ///< of the settings and the playlist, as given
    Output output;
    Loudness loudness = Loudness::kOff;
    /// Base address of the lyrics service, without separators at its end; none: the player's own.
    std::optional<std::string> lyrics;
    /// Base address of LRCLIB, likewise; none: the player's own service asks nobody.
    std::optional<std::string> lyricsOnline;
    std::string exportFile;          ///< of kExport, as given
    std::vector<std::string> paths;  ///< as given
    std::vector<std::string> verbs;  ///< of kVerbs, each one that ParseVerb takes
    std::string statusForm;          ///< of kStatus: "json", or empty for a line
};

/// What is wrong with a command line, for people.
struct Misuse {
    std::string message;
};

/// Whether there is a file or a folder.
bool PathExists(const std::string& path);

/// Reads the arguments behind the program's name. Options are long, with "=VALUE" or the value as
/// the next argument (one that may go without takes it behind "=" alone); "--" ends them. The first
/// --help or --version wins over whatever follows it. "/ADD" in front of all else, in any case, is
/// --add, by which the shell's registry asks for it, unless `exists` knows a path of that name.
std::variant<Options, Misuse> ParseOptions(
    const std::vector<std::string>& arguments,
    const std::function<bool(const std::string& path)>& exists = PathExists);

/// What --help prints.
const char* HelpText();

/// What --version prints.
const char* VersionText();

}  // namespace veldrin
