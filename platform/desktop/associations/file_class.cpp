#include "platform/desktop/associations/file_class.h"

#include <algorithm>

#include "platform/base/text.h"

namespace platform::desktop {

namespace {

constexpr std::u16string_view kFolders = u"Directory";
constexpr std::u16string_view kShell = u"\\shell\\";
constexpr std::u16string_view kIcon = u"\\DefaultIcon";
constexpr std::u16string_view kCommand = u"\\command";

std::string Small(std::u16string_view text) {
    std::string bytes = Narrow(text);
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), LowerAscii<char>);
    return bytes;
}

const RegistryValue* Find(const std::vector<RegistryValue>& registry, std::u16string_view key) {
    const auto found = std::find_if(
        registry.begin(), registry.end(),
        [key](const RegistryValue& value) { return EqualIgnoringCase(value.key, key); });
    return found == registry.end() ? nullptr : &*found;
}

// "&" marks the letter behind it, and two of them are one.
std::string WithoutMark(std::u16string_view caption) {
    std::u16string plain;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && ++i == caption.size()) {
            break;
        }
        plain.push_back(caption[i]);
    }
    return Narrow(plain);
}

std::vector<Verb> VerbsOf(const std::vector<RegistryValue>& registry,
                          const std::u16string& className, const std::string& program) {
    const std::u16string shell = className + std::u16string(kShell);
    std::vector<Verb> verbs;
    for (const RegistryValue& value : registry) {
        const std::u16string_view key = value.key;
        if (key.size() <= shell.size() || !EqualIgnoringCase(key.substr(0, shell.size()), shell) ||
            key.find(u'\\', shell.size()) != std::u16string_view::npos) {
            continue;
        }
        const RegistryValue* const command = Find(registry, value.key + std::u16string(kCommand));
        if (command == nullptr) {
            continue;
        }
        const std::u16string_view name = key.substr(shell.size());
        // npos + 1 is the whole of it.
        verbs.push_back({Small(name.substr(name.rfind(u'.') + 1)), WithoutMark(value.text),
                         SplitCommand(Narrow(command->text), program)});
    }
    return verbs;
}

bool IsExtension(std::u16string_view key) {
    return key.starts_with(u'.') && key.find(u'\\') == std::u16string_view::npos;
}

}  // namespace

std::optional<FileClass> ReadFileClass(const std::vector<RegistryValue>& registry) {
    for (const RegistryValue& first : registry) {
        if (!IsExtension(first.key)) {
            continue;
        }
        // Programs hold their icons, so it tells where the program ends in a command.
        const RegistryValue* const icon = Find(registry, first.text + std::u16string(kIcon));
        const std::string program = icon != nullptr ? Narrow(icon->text) : "";
        FileClass found;
        found.verbs = VerbsOf(registry, first.text, program);
        if (FindVerb(found.verbs, kOpenVerb) == nullptr) {
            continue;
        }
        found.folderVerbs = VerbsOf(registry, std::u16string(kFolders), program);
        for (const RegistryValue& value : registry) {
            if (IsExtension(value.key) && value.key.size() > 1 &&
                EqualIgnoringCase(value.text, first.text)) {
                found.extensions.push_back(Small(std::u16string_view(value.key).substr(1)));
            }
        }
        return found;
    }
    return std::nullopt;
}

const Verb* FindVerb(const std::vector<Verb>& verbs, std::string_view name) {
    const auto found = std::find_if(verbs.begin(), verbs.end(),
                                    [name](const Verb& verb) { return verb.name == name; });
    return found == verbs.end() ? nullptr : &*found;
}

std::vector<std::string> SplitCommand(std::string_view line, std::string_view program) {
    std::vector<std::string> arguments;
    const std::string quoted = '"' + std::string(program) + '"';
    if (!program.empty() && (line == quoted || line.starts_with(quoted + ' '))) {
        arguments.emplace_back(program);
        line.remove_prefix(quoted.size());
    }
    for (std::size_t at = line.find_first_not_of(' '); at != std::string_view::npos;
         at = line.find_first_not_of(' ', at)) {
        const bool isQuoted = line[at] == '"';
        const std::size_t begin = isQuoted ? at + 1 : at;
        std::size_t end = begin;
        while (end < line.size() &&
               (isQuoted ? line[end] != '"' || (end + 1 < line.size() && line[end + 1] != ' ')
                         : line[end] != ' ')) {
            ++end;
        }
        arguments.emplace_back(line.substr(begin, end - begin));
        at = std::min(end + (isQuoted ? 1 : 0), line.size());
    }
    return arguments;
}

}  // namespace platform::desktop
