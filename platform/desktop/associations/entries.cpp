#include "platform/desktop/associations/entries.h"

#include <algorithm>
#include <optional>

#include "platform/base/text.h"
#include "platform/desktop/associations/desktop_entry.h"
#include "platform/desktop/associations/media_types.h"

namespace platform::desktop {

namespace {

/// "Enqueue" of "enqueue"; empty if it cannot be the name of an action.
std::string ActionName(std::string name) {
    const bool fits = std::all_of(name.begin(), name.end(), [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '-';
    });
    if (!fits || name.empty()) {
        return {};
    }
    name.front() = UpperAscii(name.front());
    return name;
}

/// Makes entries of a program.
class Maker {
  public:
    explicit Maker(const ProgramIdentity& program) : program_(program) {}

    std::vector<NamedEntry> Take() { return failed_ ? std::vector<NamedEntry>() : entries_; }

    void AddProgram(const FileClass& fileClass, const std::vector<std::string>& types) {
        DesktopEntry entry = MakeEntry(*FindVerb(fileClass.verbs, kOpenVerb), types);
        entry.name = program_.title;
        entry.categories = program_.categories;
        for (const Verb& verb : fileClass.verbs) {
            const std::string name = ActionName(verb.name);
            if (verb.name != kOpenVerb && !name.empty()) {
                entry.actions.push_back({name, verb.caption, Exec(verb)});
            }
        }
        Add("", entry);
    }

    void AddVerb(const std::string& suffix, const Verb& verb,
                 const std::vector<std::string>& types) {
        if (!ActionName(verb.name).empty()) {
            Add(suffix, MakeEntry(verb, types));
        }
    }

  private:
    std::string Exec(const Verb& verb) {
        const auto value = ExecValue(verb.command);
        failed_ = failed_ || !value;
        return value.value_or("");
    }

    DesktopEntry MakeEntry(const Verb& verb, const std::vector<std::string>& types) {
        DesktopEntry entry;
        entry.name = verb.caption;
        entry.genericName = program_.genericName;
        entry.icon = program_.id;
        entry.windowClass = program_.id;
        entry.program = verb.command.empty() ? "" : verb.command.front();
        entry.exec = Exec(verb);
        entry.types = types;
        return entry;
    }

    void Add(const std::string& suffix, const DesktopEntry& entry) {
        entries_.push_back({program_.id + suffix + ".desktop", TextOf(entry)});
    }

    const ProgramIdentity& program_;
    std::vector<NamedEntry> entries_;
    bool failed_ = false;
};

}  // namespace

std::vector<NamedEntry> EntriesFor(const ProgramIdentity& program, const FileClass& fileClass,
                                   const std::vector<std::string>& types) {
    // Where nobody has chosen, desktops take the entry whose name is the first by its bytes. A
    // hyphen would stand before the point of the program's own.
    Maker maker(program);
    maker.AddProgram(fileClass, types);
    const auto isShared = [](const Verb& verb, const std::vector<Verb>& others) {
        const Verb* const other = FindVerb(others, verb.name);
        return verb.name != kOpenVerb && other != nullptr && *other == verb;
    };
    for (const Verb& verb : fileClass.verbs) {
        if (verb.name != kOpenVerb) {
            std::vector<std::string> opened = types;
            if (isShared(verb, fileClass.folderVerbs)) {
                opened.emplace_back(kFolderType);
            }
            maker.AddVerb("_" + verb.name, verb, opened);
        }
    }
    // What opens folders is never the program's own entry: it would open them all by itself.
    for (const Verb& verb : fileClass.folderVerbs) {
        if (!isShared(verb, fileClass.verbs)) {
            maker.AddVerb(verb.name == kOpenVerb ? "_folder" : "_folder_" + verb.name, verb,
                          {kFolderType});
        }
    }
    return maker.Take();
}

}  // namespace platform::desktop
