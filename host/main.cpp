// `veldrin`: from the arguments to one of three ends - a word to the user, a hand-over to the
// instance that runs already, or a run of the player.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "host/application.h"
#include "host/engine/file_types.h"
#include "host/engine/stragglers.h"
#include "host/given_paths.h"
#include "host/given_reader.h"
#include "host/instance/instance.h"
#include "host/list_export.h"
#include "host/options.h"
#include "host/output_place.h"
#include "host/paths.h"
#include "host/remote/sender.h"
#include "host/rescue/rescue.h"
#include "host/terminal/console.h"
#include "host/terminal/terminal_front.h"
#include "host/window_front.h"

namespace veldrin {
namespace {

using std::chrono::milliseconds;

constexpr int kInOrder = 0;
constexpr int kFailed = 1;
constexpr int kMisuse = 2;

/// How long a running instance may take to end once it has promised to: saving a list to a slow
/// disk takes a while.
constexpr milliseconds kEndTime(30000);

/// How long the window may wait for what else is found: most of what people give is found by then.
constexpr milliseconds kPatienceForMore(50);

int TellMisuse(Console& console, const std::string& message) {
    console.Complain(Printable(message) + " (see 'veldrin --help')");
    return kMisuse;
}

/// Where the output file shall be, checked before anything is started: what is wrong, or nothing.
std::optional<std::string> OutputFault(const Options& options, const std::string& directory,
                                       const std::vector<std::string>& opened) {
    if (options.output.kind != Output::Kind::kFile) {
        return std::nullopt;
    }
    Inputs inputs{opened, {}};
    for (const std::string& path : options.paths) {
        inputs.paths.push_back(FromHere(path));
    }
    if (options.add || options.paths.empty()) {
        inputs.list = directory + "/" + kListName;
    }
    const auto fault = OutputPlaceFault(FromHere(options.output.path), inputs);
    return fault ? std::optional("--output: cannot write '" + options.output.path + "': " + *fault)
                 : std::nullopt;
}

std::string TypesFileIn(const std::string& cacheFolder) {
    return cacheFolder + "/file-types";
}

/// Folders and lists are looked through for what this machine can play, as far as that is known
/// yet.
GivenRules RulesFor(bool add, platform::Below below) {
    const auto cache = CacheFolder();
    const auto types = cache ? SupportedTypes::Remembered(TypesFileIn(*cache)) : std::nullopt;
    return {add, below, types.value_or(SupportedTypes::Known()), platform::DesktopDriver::ReadXspf};
}

/// What the paths stand for.
std::unique_ptr<GivenReader> ReadGiven(const Options& options) {
    if (options.paths.empty()) {
        return nullptr;
    }
    const auto below = options.flat ? platform::Below::kLeftOut : platform::Below::kIncluded;
    auto reader = std::make_unique<GivenReader>(options.paths, RulesFor(options.add, below));
    // A window can show itself before all is found; a recording must not go into what is played,
    // and in the terminal the run ends with the last line.
    if (options.noWindow || options.output.kind == Output::Kind::kFile) {
        reader->WaitForAll();
    } else {
        reader->WaitForFirst(kPatienceForMore);
    }
    return reader;
}

/// What has come since the last time, the complaints told.
GivenPaths Taken(GivenReader* reader, Console& console) {
    GivenPaths given = reader != nullptr ? reader->Take() : GivenPaths();
    for (const std::string& complaint : given.complaints) {
        console.Complain(Printable(complaint));
    }
    return given;
}

/// To standard output, whole or with a complaint. Whoever asks for a text waits for it.
int Tell(std::string_view text, Console& console) {
    const bool told =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    if (!told) {
        console.Complain(std::string("cannot write to standard output: ") + std::strerror(errno));
    }
    return told ? kInOrder : kFailed;
}

int QuitRunning(const std::optional<MeetingPlace>& place, Console& console) {
    const Descriptor connection = AskRunning(place, {{Request::Kind::kQuit, {}}}, console);
    if (!connection) {
        return kFailed;
    }
    if (!WaitForEnd(connection, kEndTime)) {
        console.Complain("the running veldrin does not answer");
        return kFailed;
    }
    return kInOrder;
}

int TellStatus(const std::optional<MeetingPlace>& place, const std::string& form,
               Console& console) {
    const auto status = AskStatus(place, form, console);
    return status ? Tell(*status, console) : kFailed;
}

int Export(const Options& options, const std::string& directory, Console& console) {
    const auto fault = ExportList(MeetingPlace::For(directory), directory + "/" + kListName,
                                  FromHere(options.exportFile));
    if (fault) {
        console.Complain(Printable(*fault));
    }
    return fault ? kFailed : kInOrder;
}

/// What the desktop gave this start so that a window may come to the front; empty for nothing.
std::string ActivationToken() {
    const char* const token = std::getenv("XDG_ACTIVATION_TOKEN");
    const std::string known = token != nullptr ? token : "";
    return known.size() <= kLongestLine ? known : "";
}

std::vector<Request> RequestsFor(const std::vector<std::string>& lines) {
    if (lines.empty()) {
        return {{Request::Kind::kShow, ActivationToken()}};
    }
    std::vector<Request> requests;
    requests.reserve(lines.size());
    for (const std::string& line : lines) {
        requests.push_back({Request::Kind::kLine, line});
    }
    return requests;
}

/// Empty if there is no place for it.
std::string TypesFile() {
    const auto folder = CacheFolder();
    return folder && MakeFolder(*folder) ? TypesFileIn(*folder) : std::string();
}

/// What the player's own lyrics service needs; nothing if there is to be another, or no window that
/// shows lyrics.
std::optional<LyricsSettings> OwnLyrics(const Options& options) {
    const auto data = DataFolder();
    if (options.lyrics || options.noWindow || !data) {
        return std::nullopt;
    }
    const auto cache = CacheFolder();
    return LyricsSettings{*data + "/lyrics", options.lyricsOnline.value_or(""),
                          cache ? *cache + "/lyrics" : ""};
}

/// Takes the lock, or hands the lines to who has it.
HandoverResult Meet(const MeetingPlace& place, const std::vector<std::string>& lines) {
    HandoverResult result;
    bool isFirst = true;
    for (const auto& requests : InMessages(RequestsFor(lines))) {
        result = TakeLockOrHandOver(place, requests, Patience());
        if (!isFirst && result.outcome == Handover::kNobodyRuns) {
            result.outcome = Handover::kNoAnswer;  // it has ended in the middle of it
        }
        isFirst = false;
        if (result.outcome != Handover::kDone) {
            break;
        }
    }
    return result;
}

/// Hands over what else is found.
HandoverResult MeetAgain(const MeetingPlace& place, GivenReader& reader, Console& console) {
    HandoverResult result;
    result.outcome = Handover::kDone;
    reader.WaitForAll();
    const GivenPaths rest = Taken(&reader, console);
    if (!rest.lines.empty()) {
        result = Meet(place, rest.lines);
    }
    if (result.outcome == Handover::kNobodyRuns) {
        result.outcome = Handover::kNoAnswer;
    }
    return result;
}

/// Takes the lock for `beginning`, or hands the lines to who has it: then the
/// answer is the exit status.
std::optional<int> MeetOthers(Beginning& beginning, const std::optional<MeetingPlace>& place,
                              Console& console) {
    if (!place) {
        console.Complain("no safe place for a socket: a second start will not find this one");
        return std::nullopt;
    }
    HandoverResult result = Meet(*place, beginning.lines);
    if (result.outcome == Handover::kDone && beginning.more) {
        result = MeetAgain(*place, *beginning.more, console);
    }
    switch (result.outcome) {
        case Handover::kDone:
            if (beginning.lines.empty()) {
                console.Complain("already running");
            }
            return kInOrder;
        case Handover::kNoAnswer:
            console.Complain("the running veldrin does not answer");
            return kFailed;
        case Handover::kNobodyRuns:
            break;
    }
    beginning.lock = std::move(result.lock);
    beginning.place = *place;
    return std::nullopt;
}

/// Why there can be no window, for people.
std::optional<std::string> DisplayFault() {
    const auto fault = platform::DesktopDriver::WhyNoDisplay();
    return fault ? std::optional("cannot show a window: " + *fault) : std::nullopt;
}

std::unique_ptr<Front> MakeFront(const Options& options, Console& console) {
    if (options.noWindow) {
        return std::make_unique<TerminalFront>(console);
    }
    return std::make_unique<WindowFront>(console, options.scale);
}

/// The lines of a start that is to play nothing: all of them add to the saved list.
std::vector<std::string> SilentLines(std::vector<std::string> lines) {
    if (lines.empty()) {
        lines.push_back(LineOfNothing(true));
    }
    lines.front() = Adding(std::move(lines.front()));
    return lines;
}

/// Looks at what the run before has left. What is wrong then, for people, or nothing.
std::optional<std::string> LookAfterList(Beginning& beginning, const Options& options,
                                         Console& console) {
    const std::string list = beginning.directory + "/" + kListName;
    const auto state = StateFolder();
    if (!state || !MakeFolder(*state)) {
        if (const auto notice = SetUnreadableListAside(list)) {
            console.Complain(Printable(*notice));
        }
        return std::nullopt;
    }
    beginning.rescue = std::make_unique<Rescue>(Rescue::PlacesFor(beginning.directory, *state));
    const Rescue::Findings findings = beginning.rescue->Begin();
    for (const std::string& notice : findings.notices) {
        console.Complain(Printable(notice));
    }
    if (!findings.mayPlay) {
        beginning.lines = SilentLines(std::move(beginning.lines));
        beginning.restored = true;
        beginning.plays = false;
    }
    return findings.putBack ? OutputFault(options, beginning.directory, {}) : std::nullopt;
}

int Play(const Options& options, Beginning beginning, const std::string& directory,
         Console& console) {
    beginning.output = options.output;
    beginning.loudness = options.loudness;
    beginning.lyrics = options.lyrics.value_or("");
    beginning.words = OwnLyrics(options);
    beginning.notifies = options.notifies;
    beginning.rules = [] { return RulesFor(false, platform::Below::kIncluded); };
    beginning.restored = options.add || options.paths.empty();
    const auto place = MeetingPlace::For(directory);
    beginning.directory = directory;
    beginning.typesFile = TypesFile();
    if (const auto status = MeetOthers(beginning, place, console)) {
        return *status;
    }
    if (const auto fault = options.noWindow ? std::nullopt : DisplayFault()) {
        console.Complain(Printable(*fault) + "; --no-window plays in the terminal");
        return kFailed;
    }
    if (const auto fault = LookAfterList(beginning, options, console)) {
        return TellMisuse(console, *fault);
    }
    Signals signals;  // before any thread, which must not take them
    const std::unique_ptr<Front> front = MakeFront(options, console);
    Application application(std::move(beginning), signals, *front, console);
    return application.IsReady() ? application.Run() : kMisuse;
}

int Main(const std::vector<std::string>& arguments) {
    Console console(STDOUT_FILENO, STDERR_FILENO);
    const auto parsed = ParseOptions(arguments);
    if (const Misuse* misuse = std::get_if<Misuse>(&parsed)) {
        return TellMisuse(console, misuse->message);
    }
    const Options& options = std::get<Options>(parsed);
    if (options.action == Options::Action::kHelp) {
        return Tell(HelpText(), console);
    }
    if (options.action == Options::Action::kVersion) {
        return Tell(VersionText(), console);
    }
    NeverBlock(STDOUT_FILENO);
    NeverBlock(STDERR_FILENO);
    const auto directory = options.directory ? FromHere(*options.directory) : DefaultDirectory();
    if (!directory) {
        console.Complain("no home folder; name one with --dir");
        return kFailed;
    }
    switch (options.action) {
        case Options::Action::kQuit:
            return QuitRunning(MeetingPlace::For(*directory), console);
        case Options::Action::kVerbs:
            return HaveDone(MeetingPlace::For(*directory), options.verbs, console) ? kInOrder
                                                                                   : kFailed;
        case Options::Action::kStatus:
            return TellStatus(MeetingPlace::For(*directory), options.statusForm, console);
        case Options::Action::kExport:
            return Export(options, *directory, console);
        default:
            break;
    }
    Beginning beginning;
    beginning.more = ReadGiven(options);
    GivenPaths given = Taken(beginning.more.get(), console);
    if (const auto fault = OutputFault(options, *directory, given.places)) {
        return TellMisuse(console, *fault);
    }
    if (given.lines.empty() && !options.paths.empty()) {
        return kFailed;
    }
    beginning.lines = std::move(given.lines);
    if (!MakeFolder(*directory)) {
        console.Complain("cannot make the folder '" + Printable(*directory) + "'");
        return options.directory ? kMisuse : kFailed;
    }
    return Play(options, std::move(beginning), *directory, console);
}

}  // namespace
}  // namespace veldrin

int main(int argumentCount, char** arguments) {
    const int status =
        veldrin::Main({arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount});
    if (veldrin::HasStragglers()) {
        std::fflush(nullptr);
        std::_Exit(status);
    }
    return status;
}
