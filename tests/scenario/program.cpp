// The command line and the exit status of the runner.
#include <charconv>

#include "tests/scenario/script.h"

namespace scenario {

namespace {

// A screen of more than a thousand megabytes helps nobody.
constexpr int kMostDensity = 16;

constexpr const char* kUsage =
    "usage: ambrisor-scenario [--verbose] [--keep DIR] [-j N] [--density N] FILE...\n";

// Raised with what is said about a wrong command line.
struct WrongArguments {};

class OptionReader {
  public:
    explicit OptionReader(std::span<const std::string> arguments) : arguments_(arguments) {}

    Options Read() {
        while (!AtEnd()) {
            const std::string argument = Next();
            if (onlyFiles_ || !argument.starts_with('-')) {
                options_.files.push_back(argument);
            } else {
                Option(argument);
            }
        }
        if (options_.files.empty()) {
            throw WrongArguments();
        }
        return options_;
    }

  private:
    bool AtEnd() const { return at_ == arguments_.size(); }

    const std::string& Next() {
        if (AtEnd()) {
            throw WrongArguments();
        }
        return arguments_[at_++];
    }

    void Option(const std::string& name) {
        if (name == "--") {
            onlyFiles_ = true;
        } else if (name == "--verbose") {
            options_.verbose = true;
        } else if (name == "--keep") {
            options_.keep = Next();
        } else if (name.starts_with("-j")) {
            options_.atOnce = Count<std::size_t>(name.size() > 2 ? name.substr(2) : Next());
        } else if (name == "--density") {
            options_.density = Count<int>(Next());
            if (options_.density > kMostDensity) {
                throw WrongArguments();
            }
        } else {
            throw WrongArguments();
        }
    }

    template <class T>
    static T Count(const std::string& text) {
        T count = 0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), count);
        if (error != std::errc() || stop != text.data() + text.size() || count <= 0) {
            throw WrongArguments();
        }
        return count;
    }

    std::span<const std::string> arguments_;
    std::size_t at_ = 0;
    bool onlyFiles_ = false;  // behind "--"
    Options options_;
};

}  // namespace

int RunProgram(std::span<const std::string> arguments, std::ostream& out, std::ostream& err) {
    try {
        const Options options = OptionReader(arguments).Read();
        const auto run = [&](const Script& script, Progress& progress, std::ostream& to) {
            RunScript(script, options.verbose, progress, to);
        };
        const Tally total = RunFiles(options, run, out);
        out << total.passed << " passed, " << total.failed << " failed\n";
        return total.mistakes > 0 ? 2 : total.failed > 0 ? 1 : 0;
    } catch (const WrongArguments&) {
        err << kUsage;
        return 2;
    }
}

}  // namespace scenario
