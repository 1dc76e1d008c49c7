#include "host/list_export.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

#include "controls/list/listfile.h"
#include "host/engine/stragglers.h"
#include "host/instance/handover_message.h"
#include "host/paths.h"
#include "host/terminal/console.h"
#include "platform/base/signals_held.h"
#include "platform/base/text.h"
#include "platform/files/file_address.h"
#include "platform/files/files.h"
#include "platform/files/line_input.h"

namespace veldrin {
namespace {

bool IsUtf8(std::string_view bytes) {
    const std::u16string text = platform::Widen(bytes);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool inPair = platform::InsidePair(text, i) || platform::InsidePair(text, i + 1);
        if (platform::IsSurrogate(text[i]) && !inPair) {
            return false;
        }
    }
    return true;
}

/// Whether a line that holds it says the same when it is read.
bool FitsLine(std::string_view path) {
    constexpr auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    return std::none_of(path.begin(), path.end(), isControl) && !path.ends_with(' ') &&
           IsUtf8(path);
}

std::optional<std::string> Write(const M3u8Text& list, const std::string& target) {
    if (platform::ReplaceFile(platform::Widen(target), list.Text())) {
        return std::nullopt;
    }
    const char* const reason = IsFolder(target)              ? "it is a folder"
                               : !IsFolder(FolderOf(target)) ? "there is no such folder"
                                                             : "the disk does not take it";
    return "cannot write '" + target + "': " + reason;
}

/// Of a number's line: blanks stand around it.
std::optional<long> NumberIn(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    long number = 0;
    const auto read = std::from_chars(line.data(), line.data() + line.size(), number);
    return read.ec == std::errc() ? std::optional(number) : std::nullopt;
}

/// Nothing if there is no list.
std::optional<M3u8Text> SavedList(const std::string& list) {
    platform::LineInput input(platform::Widen(list));
    const auto isSigned = [&] {
        const auto line = input.Next();
        return line && *line == sarnel::kListSignature;
    };
    const auto number = [&] {
        const auto line = input.Next();
        return line ? NumberIn(*line) : std::nullopt;
    };
    if (!isSigned()) {
        return std::nullopt;
    }
    const auto count = number();
    if (!count || !number()) {
        return std::nullopt;
    }
    M3u8Text text;
    for (long row = 0; row < *count; ++row) {
        const std::string title(input.Next().value_or(""));
        const auto path = input.Next();
        if (!path) {
            break;
        }
        text.AddRow(title, *path);
    }
    return text;
}

}  // namespace

void M3u8Text::AddRow(std::string_view title, std::string_view path) {
    text_.append("#EXTINF:-1,").append(Printable(title)).append("\n");
    if (path.starts_with('/')) {
        text_.append(FitsLine(path) ? std::string(path) : platform::AddressOfPath(path));
    } else {
        text_.append(Printable(path));
    }
    text_.append("\n");
}

std::optional<std::string> ExportSaved(const std::string& list, const std::string& target) {
    const auto text = SavedList(list);
    return text ? Write(*text, target) : std::optional<std::string>("there is no saved list");
}

std::optional<std::string> ExportList(const std::optional<MeetingPlace>& place,
                                      const std::string& list, const std::string& target) {
    constexpr std::chrono::seconds kLongestWait(30);
    HandoverResult result;
    if (place) {
        result = TakeLockOrHandOver(*place, {{Request::Kind::kExport, target}}, Patience());
    }
    if (!place || result.outcome == Handover::kNobodyRuns) {
        return ExportSaved(list, target);
    }
    const bool taken = result.outcome == Handover::kDone;
    const auto answer = taken ? ReadAnswer(result.connection, kLongestWait) : std::nullopt;
    if (answer == kExported) {
        return std::nullopt;
    }
    return answer && !answer->empty() ? *answer : "the running veldrin does not answer";
}

void ExportInBackground(sarnel::ListCopy list, const std::string& target, const Reply& reply) {
    auto work = [list = std::move(list), target, reply, straggler = Straggler()] {
        M3u8Text text;
        list.EachRow([&text](std::u16string_view title, std::u16string_view path) {
            text.AddRow(platform::Narrow(title), platform::Narrow(path));
        });
        reply.Say(Write(text, target).value_or(std::string(kExported)));
    };
    try {
        const platform::SignalsHeld held;
        std::thread(std::move(work)).detach();
    } catch (const std::system_error&) {
        reply.Say("no thread can be had");
    }
}

}  // namespace veldrin
