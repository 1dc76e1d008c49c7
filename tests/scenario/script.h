// A scenario file: read whole and found right before anything of it runs, then run in a world of
// its own.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

#include "tests/scenario/tally.h"

namespace scenario {

struct Options {
    bool verbose = false;
    std::optional<std::string> keep;  ///< the folder in which scratch folders stay
    std::size_t atOnce = 1;           ///< how many files run side by side
    int density = 1;                  ///< how many times finer than coordinates surfaces are
    unsigned seconds = 60;            ///< of processor time that a file may take
    std::vector<std::string> files;
};

/// A file that can be run.
struct Script {
    std::string file;       ///< as it was named
    std::string text;       ///< its lines
    std::string directory;  ///< its scratch folder
    int density = 1;        ///< of the surfaces
};

/// Runs a script to its end and prints what fails. Ends the process in order where a wait of the
/// component can never end.
void RunScript(const Script& script, bool verbose, Progress& progress, std::ostream& out);

/// What stands for RunScript in tests.
using ScriptRunner = std::function<void(const Script&, Progress&, std::ostream&)>;

/// Runs the files of `options`, each in a process of its own, and prints their output in the order
/// of the files.
Tally RunFiles(const Options& options, const ScriptRunner& run, std::ostream& out);

/// The whole program, without its name in front of the arguments; answers the exit status: 0 all
/// checks held, 1 one failed, 2 a file or the command line is wrong.
int RunProgram(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);

}  // namespace scenario
