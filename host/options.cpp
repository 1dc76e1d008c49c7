#include "host/options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace veldrin {
namespace {

using Action = Options::Action;

enum class Name { kAdd, kNoWindow, kDirectory, kScale, kOutput, kAction };

struct Known {
    std::string_view spelling;
    Name name;
    bool takesValue = false;
    Action action = Action::kPlay;  ///< of kAction
};

constexpr std::array kKnown = {
    Known{"--add", Name::kAdd},
    Known{"--no-window", Name::kNoWindow},
    Known{"--scale", Name::kScale, true},
    Known{"--dir", Name::kDirectory, true},
    Known{"--output", Name::kOutput, true},
    Known{"--quit", Name::kAction, false, Action::kQuit},
    Known{"--help", Name::kAction, false, Action::kHelp},
    Known{"--version", Name::kAction, false, Action::kVersion},
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

/// Sets what one option says. Answers what is wrong, empty if nothing is.
std::string Apply(Options& options, const Known& known, const std::string& value) {
    switch (known.name) {
        case Name::kAdd:
            options.add = true;
            return {};
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
        case Name::kAction:
            options.action = known.action;
            return {};
    }
    return {};
}

bool EndsParsing(const Options& options) {
    return options.action == Action::kHelp || options.action == Action::kVersion;
}

}  // namespace

std::variant<Options, Misuse> ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size() && !EndsParsing(options); ++i) {
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
        std::string value;
        if (!known->takesValue) {
            if (equals != std::string::npos) {
                return Misuse{spelling + " takes no value"};
            }
        } else if (equals != std::string::npos) {
            value = argument.substr(equals + 1);
        } else if (++i < arguments.size()) {
            value = arguments[i];
        } else {
            return Misuse{spelling + " needs a value"};
        }
        if (std::string wrong = Apply(options, *known, value); !wrong.empty()) {
            return Misuse{std::move(wrong)};
        }
    }
    if (options.action == Action::kQuit && !options.paths.empty()) {
        return Misuse{"--quit takes no PATH"};
    }
    return options;
}

const char* HelpText() {
    return R"(Usage: veldrin [OPTION]... [PATH]...
Plays music. PATH is a file or a folder; without one the list of the last run comes back.
With several, the first replaces the list and the others are added to it.

  --add                join the list instead of replacing it
  --no-window          play in the terminal: a line for each item, end after the last
  --scale FACTOR       size of the window, 1 to 4 (the default is what the screen asks for)
  --dir DIR            keep settings and playlist in DIR
  --output auto        sound device, or silence if there is none (this is the default)
  --output null        silence, in real time
  --output file:PATH   write the sound to PATH as a wav file, faster than real time
  --quit               end the veldrin that is running, its playlist saved
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
