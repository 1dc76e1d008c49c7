// Words from LRCLIB, an open lyrics service that anybody may ask. Its answers are kept in the
// cache, words for 30 days and their lack for one, so that nobody is told twice what is played. A
// stranger's answer may be anything; all but words is none.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "host/http/http.h"
#include "host/lyrics/song.h"

namespace veldrin {

/// What is asked for. What is unknown stays empty or 0 and is not told.
struct OnlineQuestion {
    Song song;
    std::string album;
    std::chrono::seconds length{0};
};

class OnlineWords {
  public:
    using Get = std::function<std::optional<HttpAnswer>(
        const std::string& address, const HttpHeaders& headers, const HttpLimits& limits)>;
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    /// `base`: the address without a separator at its end. `cacheFolder`: none if empty.
    OnlineWords(std::string base, std::string cacheFolder, Get get, Clock clock);

    /// The words, empty if there are none. With `anew` no answer that was kept will do, unless
    /// there is no other. Takes up to five seconds. A song without artist or title is not asked
    /// for.
    std::string Find(const OnlineQuestion& question, bool anew) const;

  private:
    struct Kept {
        std::string words;
        bool fresh = false;
    };
    std::optional<std::string> Ask(const OnlineQuestion& question) const;
    std::optional<Kept> Recall(const Song& song) const;
    void Keep(const Song& song, const std::string& words) const;
    std::string FileFor(const Song& song) const;

    std::string base_;
    std::string folder_;
    Get get_;
    Clock clock_;
};

/// The words in an answer of status 200; empty if it says that there are none, nothing if it makes
/// no sense.
std::optional<std::string> WordsInAnswer(const std::string& body);

}  // namespace veldrin
