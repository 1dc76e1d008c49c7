#include "platform/desktop/associations/default_applications.h"

#include <algorithm>
#include <iterator>

namespace platform::desktop {

namespace {

constexpr std::string_view kDefaults = "[Default Applications]";
constexpr std::string_view kAdditions = "[Added Associations]";
constexpr std::string_view kRemovals = "[Removed Associations]";
constexpr std::string_view kCache = "[MIME Cache]";
constexpr std::string_view kEntry = "[Desktop Entry]";
constexpr std::string_view kBlanks = " \t";
constexpr char kBetweenEntries = ';';

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

/// A line, in pieces that make it up again: `head` ends where the value begins.
struct Line {
    std::string_view head;
    std::string_view value;
    std::string_view end;  ///< nothing, LF or CR LF
    std::string_view key;  ///< in `head`; empty if the line has none
    bool isGroup = false;
};

Line Parse(std::string_view whole) {
    Line line;
    std::size_t size = whole.size();
    if (size > 0 && whole[size - 1] == '\n') {
        size -= size > 1 && whole[size - 2] == '\r' ? 2 : 1;
    }
    line.end = whole.substr(size);
    whole = whole.substr(0, size);
    line.head = whole;
    const std::string_view words = Trimmed(whole);
    line.isGroup = words.starts_with('[');
    const std::size_t equals = whole.find('=');
    if (line.isGroup || words.starts_with('#') || equals == std::string_view::npos) {
        return line;
    }
    line.key = Trimmed(whole.substr(0, equals));
    const std::size_t begin = std::min(whole.find_first_not_of(kBlanks, equals + 1), size);
    line.head = whole.substr(0, begin);
    line.value = whole.substr(begin);
    return line;
}

/// Calls `use` with each line and whether it stands in the group.
template <class Use>
void ForEachLine(std::string_view text, std::string_view group, Use use) {
    bool inside = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const Line line = Parse(text.substr(0, end));
        text.remove_prefix(end);
        inside = line.isGroup ? Trimmed(line.head) == group : inside;
        use(line, inside);
    }
}

/// The pieces between semicolons as they stand: what ends in one has an empty piece behind it.
std::vector<std::string_view> Pieces(std::string_view value) {
    std::vector<std::string_view> pieces;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = value.find(kBetweenEntries);
        pieces.push_back(value.substr(0, end));
        value.remove_prefix(std::min(value.size(), pieces.back().size() + 1));
    }
    return pieces;
}

template <class Drops>
std::string Without(std::string_view value, Drops drops) {
    std::string left;
    bool first = true;
    for (const std::string_view piece : Pieces(value)) {
        if (!drops(Trimmed(piece))) {
            left.append(first ? "" : ";").append(piece);
            first = false;
        }
    }
    return left;
}

bool NamesNothing(std::string_view value) {
    return value.find_first_not_of(" \t;") == std::string_view::npos;
}

/// The value with the entry in front.
std::string Preferring(std::string_view value, std::string_view entry) {
    if (Trimmed(Pieces(value).front()) == entry) {
        return std::string(value);
    }
    const std::string others =
        Without(value, [entry](std::string_view piece) { return piece == entry; });
    std::string preferred(entry);
    if (!others.empty()) {
        preferred += kBetweenEntries + others;
    }
    return preferred;
}

std::string_view LineEnd(std::string_view text) {
    const std::size_t end = text.find('\n');
    return end != std::string_view::npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

/// The text with the entry as the first one of each type in the group.
std::string WithFirst(std::string_view text, std::string_view group, const Defaults& defaults) {
    std::string result;
    std::set<std::string> missing = defaults.types;
    constexpr std::size_t kNowhere = std::string::npos;
    std::size_t place =
        kNowhere;  // behind the last line of the first such group that says anything
    bool groupIsOver = false;
    ForEachLine(text, group, [&](const Line& line, bool inside) {
        const std::string key(inside ? line.key : "");
        result.append(line.head);
        if (defaults.types.contains(key)) {
            missing.erase(key);
            result.append(Preferring(line.value, defaults.entry));
        } else {
            result.append(line.value);
        }
        result.append(line.end);
        groupIsOver = groupIsOver || (place != kNowhere && line.isGroup);
        if (inside && !groupIsOver && (line.isGroup || !key.empty())) {
            place = result.size();
        }
    });
    if (missing.empty()) {
        return result;
    }
    const std::string_view lineEnd = LineEnd(text);
    std::string added;
    if (place == kNowhere) {
        place = result.size();
        const bool apart = !result.empty() && !result.ends_with('\n');
        added.append(apart ? lineEnd : "").append(result.empty() ? "" : lineEnd);
        added.append(group).append(lineEnd);
    } else if (result[place - 1] != '\n') {
        added.append(lineEnd);
    }
    for (const std::string& type : missing) {
        added.append(type).append("=").append(defaults.entry).append(lineEnd);
    }
    return result.insert(place, added);
}

/// What stands at a key of a group, without empty pieces.
std::vector<std::string> PiecesAt(std::string_view text, std::string_view group,
                                  std::string_view key) {
    std::vector<std::string> found;
    ForEachLine(text, group, [&](const Line& line, bool inside) {
        if (!inside || line.key != key) {
            return;
        }
        for (const std::string_view piece : Pieces(line.value)) {
            if (!Trimmed(piece).empty()) {
                found.emplace_back(Trimmed(piece));
            }
        }
    });
    return found;
}

}  // namespace

std::string WithDefaults(std::string_view text, const Defaults& defaults) {
    return WithFirst(text, kDefaults, defaults);
}

std::string WithAssociations(std::string_view text, const Defaults& defaults) {
    return WithFirst(text, kAdditions, defaults);
}

std::string WithoutRemovals(std::string_view text, const std::set<std::string>& types,
                            const std::set<std::string>& entries) {
    const auto isOurs = [&entries](std::string_view piece) {
        return entries.contains(std::string(piece));
    };
    std::string result;
    ForEachLine(text, kRemovals, [&](const Line& line, bool inside) {
        std::string value(line.value);
        if (inside && types.contains(std::string(line.key))) {
            value = Without(line.value, isOurs);
        }
        // A line that was there for these entries alone goes with them.
        if (value.size() == line.value.size() || !NamesNothing(value)) {
            result.append(line.head).append(value).append(line.end);
        }
    });
    return result;
}

std::set<std::string> TypesWithDefault(std::string_view text, const std::set<std::string>& types) {
    std::set<std::string> found;
    ForEachLine(text, kDefaults, [&](const Line& line, bool inside) {
        const std::string key(inside ? line.key : "");
        if (types.contains(key) && !NamesNothing(line.value)) {
            found.insert(key);
        }
    });
    return found;
}

std::vector<std::string> EntriesInCache(std::string_view text, std::string_view type) {
    return PiecesAt(text, kCache, type);
}

std::set<std::string> TypesOfEntry(std::string_view text) {
    const std::vector<std::string> types = PiecesAt(text, kEntry, "MimeType");
    return {types.begin(), types.end()};
}

}  // namespace platform::desktop
