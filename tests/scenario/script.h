// A scenario file: read whole and found right before anything of it runs, then run in a world of
// its own.
#pragma once

#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace scenario {

struct Options {
    bool verbose = false;
    std::optional<std::string> keep;  ///< the folder in which scratch folders stay
    std::vector<std::string> files;
};

/// What came of the checks.
struct Tally {
    int passed = 0;
    int failed = 0;
    int mistakes = 0;  ///< files that could not be read, or lines that are not of the language
};

/// Runs one file and prints what fails.
Tally RunFile(const std::string& file, const Options& options, std::ostream& out);

/// The whole program, without its name in front of the arguments; answers the exit status: 0 all
/// checks held, 1 one failed, 2 a file or the command line is wrong.
int RunProgram(std::span<const std::string> arguments, std::ostream& out, std::ostream& err);

}  // namespace scenario
