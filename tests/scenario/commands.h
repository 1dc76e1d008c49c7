// The commands of the language. Each stands in one table, by its first word, with the function that
// reads the rest of its line; commands_*.cpp hold one table each, as the chapters of
// docs/scenarios.md do. A new command is a line there and a function.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/scenario/expression.h"
#include "tests/scenario/words.h"
#include "tests/scenario/world.h"

namespace scenario {

/// The words behind a command, read from left to right. Each reader raises Mistake when there is no
/// word left or when the word is of another kind.
class CommandLine {
  public:
    CommandLine(std::vector<Word> words, Scope& scope) : words_(std::move(words)), scope_(scope) {}

    bool AtEnd() const { return at_ == words_.size(); }
    const Word& Next();
    /// Goes past the next word if it is this one, without quotes.
    bool SkipWord(std::string_view word);
    /// Whether there is a next word, without quotes, that is so.
    template <class Test>
    bool NextIs(Test test) const {
        return !AtEnd() && !words_[at_].quoted && test(words_[at_].raw);
    }
    /// A text, whether in quotes or not.
    std::u16string Text();
    /// The same as raw bytes: a path.
    std::string Path();
    /// A path strictly inside the scratch folder, which a scenario may change.
    std::filesystem::path PathInside();
    /// The same, where a path that is not absolute lies in the scratch folder.
    std::filesystem::path NewFile();
    Long Integer();
    /// An integer that is not negative.
    Long Natural();
    bool Boolean();
    Operand Value();
    std::vector<Operand> Values();
    std::vector<std::u16string> Texts();
    ObjectReference Window();
    /// An object that raises events: a window, or hot keys.
    ObjectReference Raiser();
    /// The rest of the line as a command of its own. Running it lets nothing through: what is wrong
    /// with it is remembered by the world.
    Command Inner();

    Scope& GetScope() { return scope_; }

  private:
    std::vector<Word> words_;
    std::size_t at_ = 0;
    Scope& scope_;
};

/// A command that has been read, and what it can print.
struct ParsedCommand {
    Command run;
    Prints prints = Prints::kNothing;
};

struct CommandName {
    std::string_view word;
    Command (*parse)(CommandLine& line);
    /// Whether it may stand in `at` and `host on`. Not so for what would end the component, or the
    /// instance, inside a call of its own.
    bool mayNest = true;
    Prints prints = Prints::kNothing;
};

using CommandTable = std::vector<CommandName>;
const CommandTable& RunCommands();   // commands_run.cpp
const CommandTable& HostCommands();  // commands_host.cpp: what stands behind `host`
const CommandTable& AskCommands();   // commands_ask.cpp
const CommandTable& InputCommands();
const CommandTable& PointerCommands();
const CommandTable& ScreenCommands();
const CommandTable& FileCommands();
const CommandTable& PopupCommands();
const CommandTable& WorldCommands();
const CommandTable& ShellCommands();

/// Raises Mistake unless an impulse can carry the value.
void CheckCarried(const Operand& value);

/// A line that is no check. Raises Mistake; `scope` follows what the line makes.
ParsedCommand ParseCommand(std::string_view line, Scope& scope);

/// Parses the words of a command with the command that `tables` has for it.
ParsedCommand ParseWith(const std::vector<const CommandTable*>& tables, CommandLine& line);

/// The tables in which the first word of a line is looked for.
const std::vector<const CommandTable*>& AllCommands();

}  // namespace scenario
