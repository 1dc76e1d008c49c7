// Reads expressions: first their parts from left to right, then what the parts name.
#include <algorithm>
#include <iterator>

#include "tests/scenario/expression.h"
#include "tests/scenario/nearest.h"

namespace scenario {

namespace {

// A name and what stands in parentheses behind it.
struct Part {
    std::string name;
    bool hasParentheses = false;
    std::vector<Operand> arguments;
};

[[noreturn]] void NotUnderstood(std::string_view raw) {
    throw Mistake("not understood: " + std::string(raw));
}

[[noreturn]] void Unknown(const std::string& what, const std::string& name,
                          const std::vector<std::string_view>& known) {
    throw Mistake("unknown " + what + ": " + name + DidYouMean(name, known));
}

void AddNames(std::vector<std::string_view>& names, const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
        names.push_back(entry.name);
    }
}

std::vector<std::string_view> NamesOfObjects() {
    std::vector<std::string_view> names;
    for (const ObjectName& object : ObjectNames()) {
        names.push_back(object.name);
    }
    return names;
}

std::vector<std::string_view> NamesOfMembers(const Class& type) {
    std::vector<std::string_view> names;
    for (const Class* at = &type; at != nullptr; at = at->base) {
        AddNames(names, at->members);
    }
    return names;
}

// What may stand alone.
std::vector<std::string_view> NamesOfProgram() {
    std::vector<std::string_view> names = NamesOfObjects();
    AddNames(names, ProgramNames());
    AddNames(names, RoutineNames());
    return names;
}

class PartReader {
  public:
    PartReader(std::string_view raw, const Scope& scope) : raw_(raw), scope_(scope) {}

    /// One or two: NAME, or OBJECT and MEMBER.
    std::vector<Part> Read() {
        std::vector<Part> parts{OnePart()};
        if (Skip('.')) {
            parts.push_back(OnePart());
        }
        if (at_ != raw_.size()) {
            NotUnderstood(raw_);
        }
        return parts;
    }

  private:
    static bool IsNameCharacter(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    }

    bool Skip(char c) {
        const bool there = at_ < raw_.size() && raw_[at_] == c;
        at_ += there ? 1 : 0;
        return there;
    }

    void SkipBlanks() { at_ = std::min(raw_.find_first_not_of(" \t", at_), raw_.size()); }

    Part OnePart() {
        Part part;
        const std::size_t start = at_;
        while (at_ < raw_.size() && IsNameCharacter(raw_[at_])) {
            ++at_;
        }
        part.name = raw_.substr(start, at_ - start);
        if (part.name.empty()) {
            NotUnderstood(raw_);
        }
        part.hasParentheses = Skip('(');
        if (part.hasParentheses) {
            SkipBlanks();
            if (!Skip(')')) {
                part.arguments = Arguments();
            }
        }
        return part;
    }

    // Between parentheses, past the closing one.
    std::vector<Operand> Arguments() {
        std::vector<Operand> arguments;
        do {
            const std::vector<Word> words = SplitWords(OneArgument());
            if (words.size() != 1) {
                NotUnderstood(raw_);
            }
            arguments.push_back(Operand::Parse(words.front(), scope_));
        } while (Skip(','));
        if (!Skip(')')) {
            NotUnderstood(raw_);
        }
        return arguments;
    }

    // Up to the comma or the parenthesis that ends it.
    std::string_view OneArgument() {
        const std::size_t start = at_;
        int depth = 0;
        for (; at_ < raw_.size(); ++at_) {
            const char c = raw_[at_];
            if (c == '"') {
                at_ = ClosingQuote(raw_, at_);
            } else if (depth == 0 && (c == ',' || c == ')')) {
                break;
            }
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        }
        return raw_.substr(start, at_ - start);
    }

    std::string_view raw_;
    const Scope& scope_;
    std::size_t at_ = 0;
};

// The one index of a control array, none for any other object.
std::shared_ptr<const Operand> IndexOf(const Part& part, const ObjectName* name) {
    if (name == nullptr || !name->IsArray()) {
        if (part.hasParentheses) {
            throw Mistake("wrong number of arguments: " + part.name + " takes no index");
        }
        return nullptr;
    }
    if (part.arguments.size() != 1) {
        throw Mistake("wrong number of arguments: " + part.name + " takes one index");
    }
    const Operand& index = part.arguments.front();
    if (index.ResultKind() != Kind::kInteger) {
        throw Mistake("wrong value: the index of " + part.name + " is an integer");
    }
    if (const Value* literal = index.AsLiteral()) {
        CheckIndex(*name, std::get<Long>(*literal));
    }
    return std::make_shared<const Operand>(index);
}

bool NamesObject(const Part& part) {
    return part.name == "it" || FindObject(part.name) != nullptr;
}

ObjectReference ObjectOf(const Part& part, const Scope& scope) {
    const ObjectName* name = FindObject(part.name);
    const Class* type = name != nullptr ? name->type : scope.it;
    if (name == nullptr && part.name != "it") {
        Unknown("object", part.name, NamesOfObjects());
    }
    if (type == nullptr) {
        throw Mistake("no new instance before this line: it");
    }
    return {name, type, IndexOf(part, name)};
}

const Function& FunctionOf(const Entry& entry, Use use, std::string_view raw) {
    const std::string name(raw);
    switch (use) {
        case Use::kAsk:
            if (!entry.get && (!entry.call || entry.call->result == Kind::kNull)) {
                throw Mistake("gives no value: " + name);
            }
            return entry.get ? *entry.get : *entry.call;
        case Use::kSet:
            if (!entry.set) {
                throw Mistake((entry.get ? "read-only: " : "cannot be set: ") + name);
            }
            return *entry.set;
        case Use::kCall:
            if (!entry.call) {
                throw Mistake("cannot be called: " + name);
            }
            return *entry.call;
    }
    NotUnderstood(raw);
}

void CheckArguments(const Function& function, const std::vector<Operand>& arguments,
                    std::string_view raw) {
    const std::string name(raw);
    const std::size_t most = function.parameters.size();
    if (arguments.size() < function.required || arguments.size() > most) {
        throw Mistake("wrong number of arguments: " + name + " takes " +
                      std::to_string(function.required) +
                      (function.required < most ? " to " + std::to_string(most) : "") + ", not " +
                      std::to_string(arguments.size()));
    }
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Kind wanted = function.parameters[i];
        const Kind given = arguments[i].ResultKind();
        if (!Accepts(wanted, given)) {
            throw Mistake("wrong value: " + name + " takes " + std::string(NameOf(wanted)) +
                          ", not " + std::string(NameOf(given)));
        }
    }
}

// The member or program-wide name that the parts end in.
const Entry& EntryOf(const std::vector<Part>& parts, const std::optional<ObjectReference>& object) {
    const std::string& name = parts.back().name;
    const Entry* entry = object ? FindMember(*object->type, name) : FindProgramName(name);
    if (entry == nullptr) {
        if (object) {
            Unknown("member of " + parts.front().name, name, NamesOfMembers(*object->type));
        }
        Unknown("name", name, NamesOfProgram());
    }
    return *entry;
}

Expression Resolve(std::vector<Part> parts, Use use, std::vector<Operand> more, const Scope& scope,
                   std::string_view raw) {
    std::optional<ObjectReference> object;
    if (parts.size() == 2) {
        object = ObjectOf(parts.front(), scope);
    }
    const Function& function = FunctionOf(EntryOf(parts, object), use, raw);
    std::vector<Operand> arguments = std::move(parts.back().arguments);
    std::move(more.begin(), more.end(), std::back_inserter(arguments));
    CheckArguments(function, arguments, raw);
    return {std::move(object), function, std::move(arguments)};
}

}  // namespace

void CheckIndex(const ObjectName& array, Long index) {
    if (index < array.first || index > array.last) {
        throw Mistake("no such item: " + std::string(array.name) + '(' + std::to_string(index) +
                      "), there are " + std::to_string(array.first) + " to " +
                      std::to_string(array.last));
    }
}

Operand Operand::Parse(const Word& word, const Scope& scope) {
    if (word.quoted) {
        return Operand(Value(scope.Resolve(Unescape(word.raw))));
    }
    if (auto literal = Literal(word.raw)) {
        return Operand(*std::move(literal));
    }
    std::vector<Part> parts = PartReader(word.raw, scope).Read();
    if (parts.size() == 1 && NamesObject(parts.front())) {
        return Operand(ObjectOf(parts.front(), scope));
    }
    return Operand(std::make_shared<const Expression>(
        Resolve(std::move(parts), Use::kAsk, {}, scope, word.raw)));
}

Expression Expression::Parse(std::string_view raw, Use use, std::vector<Operand> more,
                             const Scope& scope) {
    return Resolve(PartReader(raw, scope).Read(), use, std::move(more), scope, raw);
}

namespace {

ObjectReference ParseObject(const Word& word, const Scope& scope, const std::string& what) {
    const std::vector<Part> parts =
        word.quoted ? std::vector<Part>() : PartReader(word.raw, scope).Read();
    if (parts.size() != 1) {
        throw Mistake("no " + what + ": " + word.raw);
    }
    return ObjectOf(parts.front(), scope);
}

}  // namespace

ObjectReference ParseWindow(const Word& word, const Scope& scope) {
    ObjectReference object = ParseObject(word, scope, "window");
    if (!object.type->isWindow) {
        throw Mistake("no window: " + word.raw);
    }
    return object;
}

ObjectReference ParseRaiser(const Word& word, const Scope& scope) {
    ObjectReference object = ParseObject(word, scope, "window");
    if (!object.type->isWindow && object.type != &HotKeysClass()) {
        throw Mistake("no window: " + word.raw);
    }
    return object;
}

}  // namespace scenario
