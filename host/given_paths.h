// What a command line, a file manager or another program gives to be played, as the lines that the
// component takes: it searches a folder for files, but not the folders below.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/engine/file_types.h"
#include "platform/files/unfold.h"

namespace veldrin {

struct GivenPaths {
    std::vector<std::string> lines;       ///< for the component, in order
    std::vector<std::string> places;      ///< the files and folders behind them, absolute
    std::vector<std::string> complaints;  ///< for people, a line each; of names the raw bytes
};

struct GivenRules {
    bool add = false;  ///< all of it joins the list; else the first line replaces it
    platform::Below below = platform::Below::kIncluded;
    SupportedTypes types;  ///< what is looked for in folders and lists
    platform::Unfolder::XspfReader xspf;
};

/// The absolute path of what the user names from where he stands.
std::string FromHere(const std::string& path);

/// Gets what comes out, as it comes.
struct GivenTaker {
    /// False: nothing more is wanted.
    std::function<bool(std::string line, const std::string& place)> line;
    std::function<void(std::string complaint)> complaint;
};

/// Unfolds folders and lists of media. What leads nowhere, or to nothing that can be played, is
/// complained about and left out, so that a slip of the pen does not replace the list by nothing. A
/// file that is named itself is the component's to judge. May be called from any thread; takes as
/// long as the disk does.
void UnfoldGiven(const std::vector<std::string>& paths, const GivenRules& rules,
                 const GivenTaker& taker);

/// The same, all at once.
GivenPaths UnfoldGiven(const std::vector<std::string>& paths, const GivenRules& rules);

}  // namespace veldrin
