#include "tests/scenario/script.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "platform/base/text.h"
#include "tests/scenario/checker.h"
#include "tests/scenario/commands.h"
#include "tests/scenario/world.h"

namespace scenario {

namespace {

struct Step {
    int number;
    std::string text;
    ParsedCommand command;
    Expectation expectation;
};

struct Steps {
    std::vector<Step> steps;
    std::vector<World::Trouble> mistakes;  ///< lines that are not of the language, and why
};

void AddCheck(Steps& script, const Scope& scope, std::string_view text) {
    if (script.steps.empty()) {
        throw Mistake("a check without a command");
    }
    Step& step = script.steps.back();
    Expectation& expectation = step.expectation;
    if (expectation.nothing || (text == "nothing" && !expectation.lines.empty())) {
        throw Mistake("nothing and something are expected together");
    }
    if (text == "nothing") {
        expectation.nothing = scope.line;
        return;
    }
    if (step.command.prints != Prints::kNothing) {
        CheckCanBePrinted(text, std::max(step.command.prints, scope.inside));
    }
    expectation.lines.push_back({scope.line, Canonical(text)});
}

void AddLine(Steps& script, Scope& scope, std::string_view line) {
    constexpr std::string_view kCheck = "= ";
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string_view::npos || line[start] == '#') {
        return;
    }
    if (line.starts_with(kCheck)) {
        AddCheck(script, scope, line.substr(kCheck.size()));
        return;
    }
    // The step stands even if it is wrong, so that its checks are not taken for another's.
    script.steps.push_back({scope.line, std::string(line), {}, {}});
    script.steps.back().command = ParseCommand(line, scope);
}

Steps ReadSteps(const Script& script) {
    Steps steps;
    Scope scope;
    scope.directory = platform::Widen(script.directory);
    std::istringstream in(script.text);
    for (std::string line; std::getline(in, line);) {
        ++scope.line;
        if (line.ends_with('\r')) {
            line.pop_back();
        }
        try {
            AddLine(steps, scope, line);
        } catch (const Mistake& mistake) {
            steps.mistakes.push_back({scope.line, mistake.what()});
        }
    }
    return steps;
}

void PrintVerbose(std::ostream& out, const Step& step, const std::vector<std::string>& printed) {
    out << step.number << ": " << step.text << '\n';
    for (const std::string& line : printed) {
        out << "    " << line << '\n';
    }
}

void PrintTrouble(std::ostream& out, const std::string& file, const World::Trouble& trouble) {
    out << file << ':' << trouble.line << ": " << trouble.what << '\n';
}

// Tells what went wrong in the course of a command but for its checks. False if the scenario itself
// is wrong, and ends here.
bool ReportTroubles(const std::string& file, World& world, Tally& tally, std::ostream& out) {
    for (const World::Trouble& failure : world.TakeFailures()) {
        PrintTrouble(out, file, {failure.line, "the component threw: " + failure.what});
        ++tally.failed;
    }
    const auto mistake = world.TakeMistake();
    if (mistake) {
        PrintTrouble(out, file, *mistake);
        ++tally.mistakes;
    }
    return !mistake;
}

// The component waits for what can no longer come, and nothing can be run on from there. The
// process ends from within the wait.
[[noreturn]] void EndAtWait(const std::string& file, World& world, Progress& progress,
                            std::ostream& out) {
    ReportTroubles(file, world, progress.tally, out);
    PrintTrouble(out, file, {progress.line, "waits for what can never come"});
    ++progress.tally.failed;
    std::exit(0);
}

// Until the end, or until a command turns out to be none that can run here.
void RunSteps(const std::string& file, const std::vector<Step>& steps, World& world, bool verbose,
              Progress& progress, std::ostream& out) {
    Tally& tally = progress.tally;
    Checker checker(file, out, tally);
    for (const Step& step : steps) {
        progress.line = step.number;
        world.Run(step.number, step.command.run);
        const Output printed = world.TakeOutput();
        if (verbose) {
            PrintVerbose(out, step, printed.lines);
        }
        if (!ReportTroubles(file, world, tally, out)) {
            return;
        }
        checker.Check(step.number, step.text, step.expectation, printed);
    }
}

}  // namespace

void RunScript(const Script& script, bool verbose, Progress& progress, std::ostream& out) {
    const Steps steps = ReadSteps(script);
    if (verbose) {
        out << script.file << '\n';
    }
    for (const World::Trouble& mistake : steps.mistakes) {
        PrintTrouble(out, script.file, mistake);
        ++progress.tally.mistakes;
    }
    if (steps.mistakes.empty()) {
        World world(script.directory, script.density);
        world.Screen().OnEndlessWait([&] { EndAtWait(script.file, world, progress, out); });
        RunSteps(script.file, steps.steps, world, verbose, progress, out);
    }
}

}  // namespace scenario
