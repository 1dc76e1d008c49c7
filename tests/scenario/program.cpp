// The command line and the exit status of the runner.
#include "tests/scenario/script.h"

namespace scenario {

namespace {

constexpr const char* kUsage = "usage: ambrisor-scenario [--verbose] [--keep DIR] FILE...\n";

std::optional<Options> ParseOptions(std::span<const std::string> arguments) {
    Options options;
    bool onlyFiles = false;  // behind "--"
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (onlyFiles || !argument.starts_with("--")) {
            options.files.push_back(argument);
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--verbose") {
            options.verbose = true;
        } else if (argument == "--keep" && i + 1 < arguments.size()) {
            options.keep = arguments[++i];
        } else {
            return std::nullopt;
        }
    }
    return options.files.empty() ? std::nullopt : std::optional(options);
}

}  // namespace

int RunProgram(std::span<const std::string> arguments, std::ostream& out, std::ostream& err) {
    const std::optional<Options> options = ParseOptions(arguments);
    if (!options) {
        err << kUsage;
        return 2;
    }
    Tally total;
    for (const std::string& file : options->files) {
        const Tally tally = RunFile(file, *options, out);
        total.passed += tally.passed;
        total.failed += tally.failed;
        total.mistakes += tally.mistakes;
    }
    out << total.passed << " passed, " << total.failed << " failed\n";
    return total.mistakes > 0 ? 2 : total.failed > 0 ? 1 : 0;
}

}  // namespace scenario
