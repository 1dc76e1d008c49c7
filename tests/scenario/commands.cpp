#include "tests/scenario/commands.h"

#include <algorithm>

#include "platform/base/text.h"
#include "tests/scenario/nearest.h"

namespace scenario {

namespace {

// A window that is unloaded inside the command must not die under it.
Command Guarded(Command command) {
    return [command = std::move(command)](World& world) {
        const platform::WindowSystem::Dispatching guard(world.Windows());
        command(world);
    };
}

}  // namespace

const std::vector<const CommandTable*>& AllCommands() {
    static const std::vector<const CommandTable*> tables{
        &RunCommands(),  &AskCommands(),   &InputCommands(), &PointerCommands(), &ScreenCommands(),
        &FileCommands(), &PopupCommands(), &WorldCommands(), &ShellCommands()};
    return tables;
}

const Word& CommandLine::Next() {
    if (AtEnd()) {
        throw Mistake("wrong number of arguments: too few");
    }
    return words_[at_++];
}

bool CommandLine::SkipWord(std::string_view word) {
    const bool there = !AtEnd() && !words_[at_].quoted && words_[at_].raw == word;
    at_ += there ? 1 : 0;
    return there;
}

std::u16string CommandLine::Text() {
    const Word& word = Next();
    return scope_.Resolve(word.quoted ? Unescape(word.raw) : platform::Widen(word.raw));
}

std::string CommandLine::Path() {
    return platform::Narrow(Text());
}

namespace {

std::filesystem::path Inside(const std::filesystem::path& directory,
                             const std::filesystem::path& wanted) {
    std::filesystem::path path = wanted.lexically_normal();
    const std::filesystem::path relative = path.lexically_relative(directory);
    if (relative.empty() || relative == "." || *relative.begin() == "..") {
        throw Mistake("not inside $D: " + path.string());
    }
    return path;
}

}  // namespace

std::filesystem::path CommandLine::PathInside() {
    return Inside(platform::Narrow(scope_.directory), Path());
}

std::filesystem::path CommandLine::NewFile() {
    const std::filesystem::path directory = platform::Narrow(scope_.directory);
    return Inside(directory, directory / Path());
}

Long CommandLine::Integer() {
    const Word& word = Next();
    const auto literal = word.quoted ? std::nullopt : Literal(word.raw);
    if (!literal || KindOf(*literal) != Kind::kInteger) {
        throw Mistake("no integer: " + word.raw);
    }
    return std::get<Long>(*literal);
}

Long CommandLine::Natural() {
    const Long number = Integer();
    if (number < 0) {
        throw Mistake("must not be negative: " + std::to_string(number));
    }
    return number;
}

bool CommandLine::Boolean() {
    const Word& word = Next();
    if (word.quoted || (word.raw != "True" && word.raw != "False")) {
        throw Mistake("neither True nor False: " + word.raw);
    }
    return word.raw == "True";
}

Operand CommandLine::Value() {
    return Operand::Parse(Next(), scope_);
}

std::vector<Operand> CommandLine::Values() {
    std::vector<Operand> values;
    while (!AtEnd()) {
        values.push_back(Value());
    }
    return values;
}

std::vector<std::u16string> CommandLine::Texts() {
    std::vector<std::u16string> texts;
    while (!AtEnd()) {
        texts.push_back(Text());
    }
    return texts;
}

ObjectReference CommandLine::Window() {
    return ParseWindow(Next(), scope_);
}

ObjectReference CommandLine::Raiser() {
    return ParseRaiser(Next(), scope_);
}

Command CommandLine::Inner() {
    constexpr int kDeepest = 16;
    Scope inner = scope_;
    if (++inner.depth > kDeepest) {
        throw Mistake("nested too deeply");
    }
    CommandLine rest({words_.begin() + static_cast<std::ptrdiff_t>(at_), words_.end()}, inner);
    at_ = words_.size();
    const ParsedCommand command = ParseWith(AllCommands(), rest);
    scope_.inside = std::max({scope_.inside, inner.inside, command.prints});
    return [number = scope_.line, run = command.run](World& world) { world.Run(number, run); };
}

void CheckCarried(const Operand& value) {
    const Kind kind = value.ResultKind();
    if (kind == Kind::kFloat || kind == Kind::kRect) {
        throw Mistake("an impulse carries no such value: " + std::string(NameOf(kind)));
    }
}

namespace {

[[noreturn]] void UnknownCommand(const std::string& word,
                                 const std::vector<const CommandTable*>& tables) {
    if (word.starts_with('=')) {
        throw Mistake("unknown command: " + word +
                      "; a check begins with = and a blank, at the very start of its line");
    }
    std::vector<std::string_view> known;
    for (const CommandTable* table : tables) {
        for (const CommandName& name : *table) {
            known.push_back(name.word);
        }
    }
    throw Mistake("unknown command: " + word + DidYouMean(word, known));
}

}  // namespace

ParsedCommand ParseWith(const std::vector<const CommandTable*>& tables, CommandLine& line) {
    const Word& word = line.Next();
    for (const CommandTable* table : tables) {
        const auto found = std::find_if(table->begin(), table->end(), [&](const CommandName& name) {
            return !word.quoted && name.word == word.raw;
        });
        if (found == table->end()) {
            continue;
        }
        if (line.GetScope().depth > 0 && !found->mayNest) {
            throw Mistake("cannot run inside another command: " + word.raw);
        }
        Command command = found->parse(line);
        if (!line.AtEnd()) {
            throw Mistake("wrong number of arguments: " + line.Next().raw + " is too many");
        }
        return {found->mayNest ? Guarded(std::move(command)) : command, found->prints};
    }
    UnknownCommand(word.raw, tables);
}

ParsedCommand ParseCommand(std::string_view line, Scope& scope) {
    CommandLine words(SplitWords(line), scope);
    return ParseWith(AllCommands(), words);
}

}  // namespace scenario
