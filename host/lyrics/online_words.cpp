#include "host/lyrics/online_words.h"

#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "core/base/version.h"
#include "host/lyrics/address.h"
#include "host/lyrics/words_text.h"
#include "host/paths.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {
namespace {

using nlohmann::json;
using std::chrono::seconds;

constexpr HttpLimits kLimits{std::chrono::milliseconds(5000), std::size_t{1} << 20U};
constexpr seconds kWordsKept = std::chrono::hours(24 * 30);
constexpr seconds kMissKept = std::chrono::hours(24);
constexpr int kFound = 200;
constexpr int kNotFound = 404;
constexpr std::string_view kInstrumental = "[Instrumental]";
constexpr std::size_t kMostKept = kMostWords * 2;  // bytes of a file: the words and their song
constexpr std::string_view kMark = "veldrin lyrics 1\n";  // what files of the cache begin with

std::int64_t SecondsAt(std::chrono::system_clock::time_point time) {
    return std::chrono::duration_cast<seconds>(time.time_since_epoch()).count();
}

/// One song however it is written, in one line.
std::string KeyOf(const Song& song) {
    const auto folded = [](const std::string& text) {
        return PercentEncode(platform::Narrow(platform::Upper(platform::Widen(text))));
    };
    return folded(song.artist) + "&" + folded(song.title);
}

std::string AddressOf(const std::string& base, const OnlineQuestion& question) {
    std::string address = base + "/api/get?artist_name=" + PercentEncode(question.song.artist) +
                          "&track_name=" + PercentEncode(question.song.title);
    if (!question.album.empty()) {
        address += "&album_name=" + PercentEncode(question.album);
    }
    if (question.length.count() > 0) {
        address += "&duration=" + std::to_string(question.length.count());
    }
    return address;
}

/// Takes a line off the front of the text.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

}  // namespace

std::optional<std::string> WordsInAnswer(const std::string& body) {
    // What lies deeper than the answer's own members is left out as it is read.
    const auto isShallow = [](int depth, json::parse_event_t /*event*/, json& /*value*/) {
        return depth < 2;
    };
    const json answer = json::parse(body, isShallow, false);
    if (!answer.is_object()) {
        return std::nullopt;
    }
    const auto words = answer.find("plainLyrics");
    const auto instrumental = answer.find("instrumental");
    if (words != answer.end() && words->is_string()) {
        std::string clean = CleanWords(words->get_ref<const std::string&>());
        if (!clean.empty()) {
            return clean;
        }
    }
    if (instrumental != answer.end() && instrumental->is_boolean() && instrumental->get<bool>()) {
        return std::string(kInstrumental);
    }
    const bool saysNone = words != answer.end() && (words->is_null() || words->is_string());
    return saysNone ? std::optional(std::string()) : std::nullopt;
}

OnlineWords::OnlineWords(std::string base, std::string cacheFolder, Get get, Clock clock)
    : base_(std::move(base)),
      folder_(std::move(cacheFolder)),
      get_(std::move(get)),
      clock_(std::move(clock)) {}

std::string OnlineWords::Find(const OnlineQuestion& question, bool anew) const {
    if (question.song.artist.empty() || question.song.title.empty()) {
        return {};
    }
    std::optional<Kept> kept = Recall(question.song);
    if (kept && kept->fresh && !anew) {
        return kept->words;
    }
    const std::optional<std::string> words = Ask(question);
    if (words) {
        Keep(question.song, *words);
        return *words;
    }
    return kept ? kept->words : std::string();
}

std::optional<std::string> OnlineWords::Ask(const OnlineQuestion& question) const {
    const std::string agent = "Veldrin/" + std::to_string(sarnel::kVersionMajor) + "." +
                              std::to_string(sarnel::kVersionMinor);
    const auto answer = get_(AddressOf(base_, question), {{"user-agent", agent}}, kLimits);
    if (answer && answer->status == kNotFound) {
        return std::string();
    }
    return answer && answer->status == kFound ? WordsInAnswer(answer->body) : std::nullopt;
}

std::string OnlineWords::FileFor(const Song& song) const {
    return folder_ + "/" + ShortHash(KeyOf(song));
}

// A file of the cache: the mark, the time of the answer, the song, then the words.
std::optional<OnlineWords::Kept> OnlineWords::Recall(const Song& song) const {
    if (folder_.empty()) {
        return std::nullopt;
    }
    const auto content = platform::ReadWholeFile(platform::Widen(FileFor(song)), kMostKept);
    if (!content || !content->starts_with(kMark)) {
        return std::nullopt;
    }
    std::string_view rest(*content);
    rest.remove_prefix(kMark.size());
    const std::string_view time = TakeLine(rest);
    std::int64_t then = 0;
    const auto [end, error] = std::from_chars(time.data(), time.data() + time.size(), then);
    if (error != std::errc() || end != time.data() + time.size() || TakeLine(rest) != KeyOf(song)) {
        return std::nullopt;
    }
    Kept kept;
    kept.words = CleanWords(rest);
    const std::int64_t now = SecondsAt(clock_());
    const seconds keptFor = kept.words.empty() ? kMissKept : kWordsKept;
    // A clock that was put back makes answers from the future.
    kept.fresh = then >= 0 && then <= now && now - then < keptFor.count();
    return kept;
}

void OnlineWords::Keep(const Song& song, const std::string& words) const {
    if (folder_.empty() || !MakeFolder(folder_)) {
        return;
    }
    const std::string content = std::string(kMark) + std::to_string(SecondsAt(clock_())) + "\n" +
                                KeyOf(song) + "\n" + words;
    // Where nothing can be kept, the answer is asked for again.
    static_cast<void>(platform::ReplaceFile(platform::Widen(FileFor(song)), content));
}

}  // namespace veldrin
