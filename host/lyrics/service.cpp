#include "host/lyrics/service.h"

#include <algorithm>
#include <utility>

#include "host/engine/tag_file.h"
#include "host/lyrics/pages.h"
#include "host/lyrics/words_text.h"

namespace veldrin {
namespace {

using Note = LyricsAddress::Note;
using Page = LyricsAddress::Page;

constexpr std::size_t kLongestPost = std::size_t{64} << 10U;  // bytes
constexpr std::size_t kMostShown = 32;
constexpr std::string_view kForm = "application/x-www-form-urlencoded";
constexpr std::string_view kWordsField = "words=";

std::string FileName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string WithoutEnding(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}

HttpAnswer WrongMethod(const char* allowed) {
    HttpAnswer answer = SentencePage(405, "This page does not take that.");
    answer.headers["allow"] = allowed;
    return answer;
}

/// The words of a posted form; nothing if they are not in it.
std::optional<std::string> PostedWords(std::string_view body) {
    while (!body.empty()) {
        const std::string_view field = body.substr(0, body.find('&'));
        if (field.starts_with(kWordsField)) {
            return CleanWords(FormDecode(field.substr(kWordsField.size())));
        }
        body.remove_prefix(std::min(field.size() + 1, body.size()));
    }
    return std::nullopt;
}

std::string NoteText(Note note) {
    switch (note) {
        case Note::kSaved:
            return "Saved. Press F5 in the lyrics panel to see it.";
        case Note::kRemoved:
            return "Your words are removed. Press F5 in the lyrics panel to see what is left.";
        case Note::kNone:
            break;
    }
    return {};
}

std::string NoWordsFor(const Song& song) {
    const std::string line = CleanWords(LineOf(song));
    return line.empty() ? "No song is named." : "No words are known for " + line + ".";
}

}  // namespace

bool SameSecret(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]);
    }
    return difference == 0;
}

LyricsService::LyricsService(LyricsPlace place, std::optional<OnlineWords> online)
    : place_(std::move(place)),
      folder_(place_.folder),
      edited_(place_.folder + "/edited"),
      online_(std::move(online)) {}

void LyricsService::ItemOpened(const std::string& path) {
    const std::lock_guard lock(mutex_);
    opened_ = path;
}

HttpAnswer LyricsService::Answer(const HttpRequest& request) {
    if (const auto refusal = Refusal(request)) {
        return *refusal;
    }
    const std::string_view target(request.target);
    const auto address = ParseAddress(target.substr(1 + place_.token.size()));
    if (!address) {
        return SentencePage(404, "There is no such page.");
    }
    const bool isGet = request.method == "GET" || request.method == "HEAD";
    if (address->page == Page::kRead) {
        const std::string cache = HeaderOf(request.headers, "cache-control");
        return isGet ? Read(*address, cache.find("no-cache") != std::string::npos)
                     : WrongMethod("GET, HEAD");
    }
    if (isGet) {
        return Edit(*address);
    }
    if (request.method != "POST") {
        return WrongMethod("GET, HEAD, POST");
    }
    const auto refusal = PostRefusal(request);
    return refusal ? *refusal : Save(*address, request.body);
}

std::optional<HttpAnswer> LyricsService::Refusal(const HttpRequest& request) const {
    // A name of a stranger's that leads here would make this a page of his.
    const std::string host = HeaderOf(request.headers, "host");
    const std::string port = ":" + std::to_string(place_.port);
    if (host != "127.0.0.1" + port && host != "localhost" + port) {
        return SentencePage(403, "This service is for this computer alone.");
    }
    const std::string_view target(request.target);
    const std::size_t end = std::min(target.find('/', 1), target.size());
    if (!target.starts_with('/') || !SameSecret(target.substr(1, end - 1), place_.token)) {
        return SentencePage(404,
                            "There is no such page. If you opened it before, the player has been "
                            "started again since; open it from the player.");
    }
    return std::nullopt;
}

std::optional<HttpAnswer> LyricsService::PostRefusal(const HttpRequest& request) const {
    if (HeaderOf(request.headers, "origin") != "http://" + HeaderOf(request.headers, "host")) {
        return SentencePage(403, "Only the page of the player itself may save words.");
    }
    const std::string type = HeaderOf(request.headers, "content-type");
    if (type.substr(0, type.find(';')) != kForm) {
        return SentencePage(415, "The words did not come as a form.");
    }
    if (request.body.size() > kLongestPost) {
        return SentencePage(413, "These words are too long to be saved. Go back to shorten them.");
    }
    return std::nullopt;
}

HttpAnswer LyricsService::Read(const LyricsAddress& address, bool anew) {
    const Wanted wanted = Identify(address);
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(shown_, [&](const Wanted& other) { return other.asked == wanted.asked; });
        shown_.push_front(wanted);
        shown_.resize(std::min(shown_.size(), kMostShown));
    }
    const Found found = Find(wanted, anew);
    return ReadPage(found.words.empty() ? NoWordsFor(wanted.song) : found.words);
}

HttpAnswer LyricsService::Edit(const LyricsAddress& address) {
    const Wanted wanted = Identify(address);
    return EditPageOf(wanted, Find(wanted, false), NoteText(address.note), 200);
}

HttpAnswer LyricsService::Save(const LyricsAddress& address, const std::string& body) {
    const auto words = PostedWords(body);
    if (!words) {
        return SentencePage(400, "There are no words in what was sent.");
    }
    const Wanted wanted = Identify(address);
    const bool done =
        words->empty() ? edited_.Remove(wanted.asked) : edited_.Save(wanted.asked, *words + "\n");
    if (!done) {
        return EditPageOf(wanted, {*words, "These words are not saved yet."},
                          "They could not be saved. Is the folder writable, and the disk not full?",
                          500);
    }
    const Note note = words->empty() ? Note::kRemoved : Note::kSaved;
    return SeeOtherPage("/" + place_.token + EditTarget(wanted.asked, note));
}

HttpAnswer LyricsService::EditPageOf(const Wanted& wanted, const Found& found, std::string note,
                                     int status) const {
    return PageOf({wanted.song, found.words, found.source, edited_.PathFor(wanted.asked),
                   "/" + place_.token + EditTarget(wanted.asked), std::move(note), status});
}

// The words on display are asked for by the edit address, too, so what was read tells best which
// song is meant.
LyricsService::Wanted LyricsService::Identify(const LyricsAddress& address) {
    if (address.page == Page::kEdit) {
        if (auto wanted = Recent(address)) {
            return *wanted;
        }
    }
    if (auto wanted = OpenItem(address)) {
        return *wanted;
    }
    return {address.song, address.song, {}};
}

std::optional<LyricsService::Wanted> LyricsService::Recent(const LyricsAddress& address) {
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(shown_.begin(), shown_.end(), [&](const Wanted& wanted) {
        return StandsFor(address, wanted.asked);
    });
    return found == shown_.end() ? std::nullopt : std::optional(*found);
}

// A row bears the title that the tags gave when it was added, or the file's name.
std::optional<LyricsService::Wanted> LyricsService::OpenItem(const LyricsAddress& address) {
    const std::string path = [this] {
        const std::lock_guard lock(mutex_);
        return opened_;
    }();
    if (path.empty()) {
        return std::nullopt;
    }
    std::optional<platform::FileStamp> stamp;
    const std::string title = ReadTitle(path, stamp);
    const std::string name = FileName(path);
    const bool isTitle = !title.empty() && StandsFor(address, SongAskedFor(title));
    if (!isTitle && !StandsFor(address, SongAskedFor(name))) {
        return std::nullopt;
    }
    const Song asked = SongAskedFor(isTitle ? title : name);
    return Wanted{asked, SongNamed(title.empty() ? WithoutEnding(name) : title), path};
}

LyricsService::Found LyricsService::Find(const Wanted& wanted, bool anew) const {
    if (std::string words = edited_.Find(wanted.asked); !words.empty()) {
        return {std::move(words), "You saved these words."};
    }
    if (!wanted.path.empty()) {
        if (std::string words = WordsBeside(wanted.path); !words.empty()) {
            return {std::move(words), "These words come from the file beside the music."};
        }
        if (std::string words = WithoutTimes(CleanWords(ReadWords(wanted.path))); !words.empty()) {
            return {std::move(words), "These words come from the tags of the music."};
        }
    }
    for (const Song& song : {wanted.song, wanted.asked}) {
        if (std::string words = folder_.Find(song); !words.empty()) {
            return {std::move(words), "These words come from your folder of lyrics."};
        }
    }
    return online_ ? FindOnline(wanted, anew) : Found{{}, "No words are known yet."};
}

LyricsService::Found LyricsService::FindOnline(const Wanted& wanted, bool anew) const {
    OnlineQuestion question{wanted.song, {}, {}};
    if (!wanted.path.empty()) {
        using std::chrono::seconds;
        question.album = ReadNames(wanted.path).album;
        question.length = std::chrono::round<seconds>(ReadSoundFacts(wanted.path).length);
    }
    std::string words = online_->Find(question, anew);
    const char* source = words.empty() ? "No words are known yet, nor does the network know any."
                                       : "These words come from the network.";
    return {std::move(words), source};
}

}  // namespace veldrin
