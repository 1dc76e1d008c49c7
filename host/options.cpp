#include "host/options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "host/remote/verb.h"
#include "platform/base/text.h"

namespace veldrin {
namespace {

using Action = Options::Action;

enum class Name {
    kAdd,
    kFlat,
    kNotify,
    kExport,
    kNoWindow,
    kDirectory,
    kScale,
    kOutput,
    kLoudness,
    kLyrics,
    kLyricsOnline,
    kVerb,
    kStatus,
    kAction
};
enum class Value { kNone, kNeeded, kAfterEquals };

struct Known {
    std::string_view spelling;
    Name name;
    Value value = Value::kNone;
    Action action = Action::kPlay;  ///< of kAction
    std::string_view unsaid = {};   ///< of kAfterEquals: the value without one
};

constexpr std::string_view kLrclib = "https://lrclib.net";

constexpr std::array kKnown = {
    Known{"--add", Name::kAdd},
    Known{"--notify", Name::kNotify},
    Known{"--flat", Name::kFlat},
    Known{"--export", Name::kExport, Value::kNeeded},
    Known{"--no-window", Name::kNoWindow},
    Known{"--scale", Name::kScale, Value::kNeeded},
    Known{"--dir", Name::kDirectory, Value::kNeeded},
    Known{"--output", Name::kOutput, Value::kNeeded},
    Known{"--loudness", Name::kLoudness, Value::kNeeded},
    Known{"--lyrics", Name::kLyrics, Value::kNeeded},
    Known{"--lyrics-online", Name::kLyricsOnline, Value::kAfterEquals, Action::kPlay, kLrclib},
    Known{"--play", Name::kVerb},
    Known{"--pause", Name::kVerb},
    Known{"--play-pause", Name::kVerb},
    Known{"--stop", Name::kVerb},
    Known{"--next", Name::kVerb},
    Known{"--previous", Name::kVerb},
    Known{"--volume", Name::kVerb, Value::kNeeded},
    Known{"--seek", Name::kVerb, Value::kNeeded},
    Known{"--command", Name::kVerb, Value::kNeeded},
    Known{"--status", Name::kStatus, Value::kAfterEquals},
    Known{"--quit", Name::kAction, Value::kNone, Action::kQuit},
    Known{"--help", Name::kAction, Value::kNone, Action::kHelp},
    Known{"--version", Name::kAction, Value::kNone, Action::kVersion},
};

/// The whole text as a number in the range of the window's magnification.
std::optional<double> ParseScale(const std::string& text) {
    constexpr double kSmallest = 1;
    constexpr double kLargest = 4;
    double scale = 0;
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, scale);
    const bool fits =
        error == std::errc() && stopped == end && scale >= kSmallest && scale <= kLargest;
    return fits ? std::optional(scale) : std::nullopt;
}

/// The base address of a service, without separators at its end.
std::optional<std::string> ParseBase(std::string_view text) {
    const std::size_t scheme = text.find("://");
    const bool isWeb = text.starts_with("http://") || text.starts_with("https://");
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) > ' ' && c != '\x7F' && c != '?' && c != '#';
    });
    if (!isWeb || !isPlain || scheme + 3 == text.size() || text[scheme + 3] == '/') {
        return std::nullopt;
    }
    return std::string(text.substr(0, text.find_last_not_of('/') + 1));
}

std::string ApplyBase(std::optional<std::string>& base, const Known& known,
                      std::string_view value) {
    base = ParseBase(value);
    return base ? ""
                : std::string(known.spelling) +
                      " must be an address like https://example.org, not '" + std::string(value) +
                      "'";
}

std::string ApplyVerb(Options& options, const Known& known, const std::string& value) {
    const std::string spelling(known.spelling);
    options.verbs.push_back(spelling.substr(2) + (value.empty() ? "" : " " + value));
    if (ParseVerb(options.verbs.back())) {
        return {};
    }
    return spelling == "--volume" ? "--volume must be 0 to 100, or as much more or less, such as +5"
           : spelling == "--seek"
               ? "--seek must be whole seconds, or so many on or back, such as -10"
               : spelling + " needs the key of a command";
}

/// What is wrong with the requests to the running veldrin as a whole; empty if nothing is.
std::string SettleRequests(Options& options) {
    if (options.action == Action::kHelp || options.action == Action::kVersion) {
        return {};
    }
    if (!options.verbs.empty()) {
        if (options.action != Action::kPlay) {
            return "--" + options.verbs.front().substr(0, options.verbs.front().find(' ')) +
                   " does not go together with --quit, --status or --export";
        }
        options.action = Action::kVerbs;
    }
    if (options.action == Action::kStatus && options.paths == std::vector<std::string>{"json"}) {
        options.statusForm = options.paths.front();
        options.paths.clear();
    }
    if (options.action == Action::kPlay || options.paths.empty()) {
        return {};
    }
    return options.action == Action::kQuit     ? "--quit takes no PATH"
           : options.action == Action::kExport ? "--export takes no PATH"
           : options.action == Action::kStatus
               ? "--status takes nothing but 'json'"
               : "what is asked of the running veldrin takes no PATH";
}

/// Another ending may be a slip of the pen, and a song is overwritten.
bool IsListName(const std::string& path) {
    return platform::Upper(platform::Widen(path)).ends_with(u".M3U8");
}

/// Sets what one option says. Answers what is wrong, empty if nothing is.
std::string Apply(Options& options, const Known& known, const std::string& value) {
    switch (known.name) {
        case Name::kAdd:
            options.add = true;
            return {};
        case Name::kNotify:
            options.notifies = true;
            return {};
        case Name::kFlat:
            options.flat = true;
            return {};
        case Name::kExport:
            options.action = Action::kExport;
            options.exportFile = value;
            return IsListName(value) ? "" : "--export needs a name that ends in .m3u8";
        case Name::kNoWindow:
            options.noWindow = true;
            return {};
        case Name::kDirectory:
            options.directory = value;
            return value.empty() ? "--dir needs the name of a folder" : "";
        case Name::kScale:
            options.scale = ParseScale(value);
            return options.scale ? "" : "--scale must be a number from 1 to 4, not '" + value + "'";
        case Name::kOutput:
            if (auto output = Output::Parse(value)) {
                options.output = std::move(*output);
                return {};
            }
            return "--output must be auto, null or file:PATH, not '" + value + "'";
        case Name::kLoudness:
            if (const auto loudness = ParseLoudness(value)) {
                options.loudness = *loudness;
                return {};
            }
            return "--loudness must be off, track or album, not '" + value + "'";
        case Name::kLyrics:
            return ApplyBase(options.lyrics, known, value);
        case Name::kLyricsOnline:
            return ApplyBase(options.lyricsOnline, known, value);
        case Name::kVerb:
            return ApplyVerb(options, known, value);
        case Name::kStatus:
            options.action = Action::kStatus;
            options.statusForm = value;
            return value.empty() || value == "json" ? "" : "--status takes nothing but 'json'";
        case Name::kAction:
            options.action = known.action;
            return {};
    }
    return {};
}

bool EndsParsing(const Options& options) {
    return options.action == Action::kHelp || options.action == Action::kVersion;
}

bool AsksToAdd(const std::vector<std::string>& arguments,
               const std::function<bool(const std::string&)>& exists) {
    return !arguments.empty() &&
           platform::EqualIgnoringCase(platform::Widen(arguments.front()), u"/ADD") &&
           !exists(arguments.front());
}

}  // namespace

bool PathExists(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

std::variant<Options, Misuse> ParseOptions(
    const std::vector<std::string>& arguments,
    const std::function<bool(const std::string& path)>& exists) {
    Options options;
    options.add = AsksToAdd(arguments, exists);
    for (std::size_t i = options.add ? 1 : 0; i < arguments.size() && !EndsParsing(options); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--") {
            options.paths.insert(options.paths.end(),
                                 arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                 arguments.end());
            break;
        }
        if (argument.size() < 2 || argument.front() != '-') {
            options.paths.push_back(argument);
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string spelling = argument.substr(0, equals);
        const auto known = std::find_if(kKnown.begin(), kKnown.end(), [&](const Known& candidate) {
            return candidate.spelling == spelling;
        });
        if (known == kKnown.end()) {
            return Misuse{"unknown option '" + spelling + "'"};
        }
        std::string value(known->unsaid);
        if (equals != std::string::npos) {
            if (known->value == Value::kNone) {
                return Misuse{spelling + " takes no value"};
            }
            value = argument.substr(equals + 1);
        } else if (known->value == Value::kNeeded) {
            if (++i == arguments.size()) {
                return Misuse{spelling + " needs a value"};
            }
            value = arguments[i];
        }
        if (std::string wrong = Apply(options, *known, value); !wrong.empty()) {
            return Misuse{std::move(wrong)};
        }
    }
    if (std::string wrong = SettleRequests(options); !wrong.empty()) {
        return Misuse{std::move(wrong)};
    }
    return options;
}

const char* HelpText() {
    return R"(Usage: veldrin [OPTION]... [PATH]...
Plays music. PATH is a file, a folder with those below it, or a playlist (m3u, m3u8, pls,
xspf, cue); without one the list of the last run comes back. With several, the first replaces
the list and the others are added to it.

  --add                join the list instead of replacing it
  /ADD                 the same, as the first argument
  --flat               take folders without those below them
  --no-window          play in the terminal: a line for each item, end after the last
  --notify             tell of each item that begins while the window is hidden in the tray
  --scale FACTOR       size of the window, 1 to 4 (the default is what the screen asks for)
  --dir DIR            keep settings and playlist in DIR
  --output auto        sound device, or silence if there is none (this is the default)
  --output null        silence, in real time
  --output file:PATH   write the sound to PATH as a wav file, faster than real time
  --loudness track     play all items equally loud, by their tags (the default is off)
  --loudness album     the same for albums, whose items keep their differences
  --lyrics URL         ask this lyrics service, not the player's own
  --lyrics-online      look for missing lyrics at lrclib.net, which tells it what you play
  --lyrics-online=URL  the same at another address
  --play, --pause, --play-pause, --stop, --next, --previous
                       have the veldrin that is running do that
  --volume N           set its volume, 0 to 100; +N and -N: by so much
  --seek SECONDS       go there in what it plays; +SECONDS and -SECONDS: by so much
  --command KEY        have it do a command of its menu, such as kPRdm
  --status             print how it stands, with tabs in between
  --status json        the same as JSON
  --quit               end the veldrin that is running, its playlist saved
  --export FILE.m3u8   write the list for other players and end
  --help               print this and end
  --version            print the version and end
  --                   what follows is a PATH, even if it begins with "-"

While one veldrin runs, a second start hands its PATHs over to it.
In the terminal: z previous, x play, c pause, v stop, b next, q quit.

Exit status: 0 in order, 1 nothing could be played or nobody answered, 2 misuse.
)";
}

const char* VersionText() {
    return "veldrin 1.1\n";
}

}  // namespace veldrin
