#include "platform/desktop/associations/desktop_entry.h"

#include <algorithm>

#include "platform/desktop/associations/file_class.h"

namespace platform::desktop {

namespace {

constexpr std::string_view kReserved = " \t\n\r\"'\\><~|&;$*?#()`";
constexpr std::string_view kEscapedInQuotes = "\"`$\\";
constexpr std::string_view kAllFiles = "%F";

bool CanBeWritten(std::string_view argument) {
    return std::none_of(argument.begin(), argument.end(), [](char byte) {
        const bool isControl = static_cast<unsigned char>(byte) < ' ' || byte == '\x7F';
        return isControl && byte != '\n' && byte != '\t' && byte != '\r';
    });
}

// Quoted only if it must be: there are readers that do not know quotes around the program.
std::string Quoted(std::string_view argument) {
    const bool quotes =
        argument.empty() || argument.find_first_of(kReserved) != std::string_view::npos;
    std::string text;
    for (const char byte : argument) {
        if (quotes && kEscapedInQuotes.find(byte) != std::string_view::npos) {
            text.push_back('\\');
        } else if (byte == '%') {
            text.push_back('%');
        }
        text.push_back(byte);
    }
    return quotes ? '"' + text + '"' : text;
}

// An equals sign must not stand in the program's name, and doubled percent signs are looked for on
// the disk as they are written by who only asks whether the program exists. As an argument it may
// hold both, so then the shell is the program.
bool NeedsShell(std::string_view program) {
    return program.find_first_of("=%") != std::string_view::npos;
}

void AppendLine(std::string& text, std::string_view key, std::string_view value) {
    text.append(key).append("=").append(value).append("\n");
}

}  // namespace

std::optional<std::string> ExecValue(const std::vector<std::string>& command) {
    if (command.empty() || !command.front().starts_with('/')) {
        return std::nullopt;
    }
    std::string line;
    if (NeedsShell(command.front())) {
        line = "sh -c " + Quoted(R"(exec "$0" "$@")") + ' ';
    }
    for (std::size_t i = 0; i < command.size(); ++i) {
        const std::string& argument = command[i];
        const bool isFile = i > 0 && argument == kFilePlace;
        if (!CanBeWritten(argument) ||
            (i > 0 && !isFile && argument.find(kFilePlace) != std::string::npos)) {
            return std::nullopt;
        }
        line.append(i > 0 ? " " : "").append(isFile ? kAllFiles : Quoted(argument));
    }
    return EscapedValue(line);
}

std::string EscapedValue(std::string_view value) {
    std::string text;
    for (const char byte : value) {
        switch (byte) {
            case '\\':
                text.append("\\\\");
                break;
            case '\n':
                text.append("\\n");
                break;
            case '\r':
                text.append("\\r");
                break;
            case '\t':
                text.append("\\t");
                break;
            default:
                text.push_back(byte);
        }
    }
    return text;
}

std::string TextOf(const DesktopEntry& entry) {
    std::string text = "[Desktop Entry]\nType=Application\nVersion=1.0\n";
    AppendLine(text, "Name", EscapedValue(entry.name));
    AppendLine(text, "GenericName", EscapedValue(entry.genericName));
    AppendLine(text, "Icon", EscapedValue(entry.icon));
    AppendLine(text, "TryExec", EscapedValue(entry.program));
    AppendLine(text, "Exec", entry.exec);
    AppendLine(text, "Terminal", "false");
    // A second start shows no window of its own, and nobody would ever end the waiting for one.
    AppendLine(text, "StartupNotify", "false");
    AppendLine(text, "StartupWMClass", EscapedValue(entry.windowClass));
    if (entry.categories.empty()) {
        AppendLine(text, "NoDisplay", "true");
    } else {
        AppendLine(text, "Categories", entry.categories);
    }
    std::string types;
    for (const std::string& type : entry.types) {
        types.append(type).append(";");
    }
    if (!types.empty()) {
        AppendLine(text, "MimeType", types);
    }
    std::string names;
    std::string groups;
    for (const EntryAction& action : entry.actions) {
        names.append(action.name).append(";");
        groups.append("\n[Desktop Action ").append(action.name).append("]\n");
        AppendLine(groups, "Name", EscapedValue(action.caption));
        AppendLine(groups, "Exec", action.exec);
    }
    if (!names.empty()) {
        AppendLine(text, "Actions", names);
    }
    return text + groups;
}

}  // namespace platform::desktop
