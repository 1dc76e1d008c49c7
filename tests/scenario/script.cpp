#include "tests/scenario/script.h"

#include <filesystem>
#include <fstream>
#include <string_view>

#include "platform/text.h"
#include "tests/scenario/commands.h"
#include "tests/scenario/scratch.h"

namespace scenario {

namespace {

struct Expected {
    int number;  ///< of the line
    std::string text;
};

struct Step {
    int number;
    std::string text;
    Command command;
    std::vector<Expected> expected;
    std::optional<int> expectsNothing;  ///< number of the line `= nothing`
};

struct Script {
    std::vector<Step> steps;
    std::vector<World::Trouble> mistakes;  ///< lines that are not of the language, and why
};

void AddCheck(Script& script, int number, std::string_view text) {
    if (script.steps.empty()) {
        throw Mistake("a check without a command");
    }
    Step& step = script.steps.back();
    if (step.expectsNothing || (text == "nothing" && !step.expected.empty())) {
        throw Mistake("nothing and something are expected together");
    }
    if (text == "nothing") {
        step.expectsNothing = number;
    } else {
        step.expected.push_back({number, Canonical(text)});
    }
}

void AddLine(Script& script, Scope& scope, std::string_view line) {
    constexpr std::string_view kCheck = "= ";
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string_view::npos || line[start] == '#') {
        return;
    }
    if (line.starts_with(kCheck)) {
        AddCheck(script, scope.line, line.substr(kCheck.size()));
        return;
    }
    // The step stands even if it is wrong, so that its checks are not taken for another's.
    script.steps.push_back({scope.line, std::string(line), {}, {}, {}});
    script.steps.back().command = ParseCommand(line, scope);
}

Script ReadScript(std::istream& in, const std::string& directory) {
    Script script;
    Scope scope;
    scope.directory = platform::Widen(directory);
    for (std::string line; std::getline(in, line);) {
        ++scope.line;
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        try {
            AddLine(script, scope, line);
        } catch (const Mistake& mistake) {
            script.mistakes.push_back({scope.line, mistake.what()});
        }
    }
    return script;
}

// Compares what a command printed with what it must print.
class Checker {
  public:
    Checker(const std::string& file, std::ostream& out, Tally& tally)
        : file_(file), out_(out), tally_(tally) {}

    void Check(const Step& step, const std::vector<std::string>& printed) {
        if (step.expectsNothing) {
            Count(printed.empty(), *step.expectsNothing, "nothing",
                  printed.empty() ? "" : printed.front());
            return;
        }
        const std::vector<Expected>& expected = step.expected;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const bool held = i < printed.size() && Canonical(printed[i]) == expected[i].text;
            Count(held, expected[i].number, expected[i].text,
                  i < printed.size() ? printed[i] : "nothing");
        }
        if (!expected.empty() && printed.size() > expected.size()) {
            Count(false, expected.back().number, "nothing more", printed[expected.size()]);
        }
    }

  private:
    void Count(bool held, int number, std::string_view expected, std::string_view got) {
        ++(held ? tally_.passed : tally_.failed);
        if (!held) {
            out_ << file_ << ':' << number << ": expected " << expected << ", got " << got << '\n';
        }
    }

    const std::string& file_;
    std::ostream& out_;
    Tally& tally_;
};

void PrintVerbose(std::ostream& out, const Step& step, const std::vector<std::string>& printed) {
    out << step.number << ": " << step.text << '\n';
    for (const std::string& line : printed) {
        out << "    " << line << '\n';
    }
}

void PrintTrouble(std::ostream& out, const std::string& file, const World::Trouble& trouble) {
    out << file << ':' << trouble.line << ": " << trouble.what << '\n';
}

// Until the end, or until a command turns out to be none that can run here.
void RunSteps(const std::string& file, const Script& script, World& world, bool verbose,
              std::ostream& out, Tally& tally) {
    Checker checker(file, out, tally);
    for (const Step& step : script.steps) {
        world.Run(step.number, step.command);
        const std::vector<std::string> printed = world.TakeOutput();
        if (verbose) {
            PrintVerbose(out, step, printed);
        }
        for (const World::Trouble& failure : world.TakeFailures()) {
            PrintTrouble(out, file, {failure.line, "the component threw: " + failure.what});
            ++tally.failed;
        }
        if (const auto mistake = world.TakeMistake()) {
            PrintTrouble(out, file, *mistake);
            ++tally.mistakes;
            return;
        }
        checker.Check(step, printed);
    }
}

Tally Unreadable(const std::string& file, std::string_view why, std::ostream& out) {
    out << file << ": " << why << '\n';
    return {0, 0, 1};
}

}  // namespace

Tally RunFile(const std::string& file, const Options& options, std::ostream& out) {
    const std::filesystem::path path = file;
    std::ifstream in(path, std::ios::binary);
    std::error_code error;
    if (!in || std::filesystem::is_directory(path, error)) {
        return Unreadable(file, "cannot be read", out);
    }
    const Scratch scratch(path.stem().string(), options.keep);
    if (scratch.Path().empty()) {
        return Unreadable(file, "no scratch folder can be made", out);
    }
    const Script script = ReadScript(in, scratch.Path());
    if (options.verbose) {
        out << file << '\n';
    }
    Tally tally;
    for (const World::Trouble& mistake : script.mistakes) {
        PrintTrouble(out, file, mistake);
        ++tally.mistakes;
    }
    if (script.mistakes.empty()) {
        World world(scratch.Path());
        RunSteps(file, script, world, options.verbose, out, tally);
    }
    return tally;
}

}  // namespace scenario
