// The player's own lyrics service, without the network: what it answers to each request. It knows
// the item that was opened last, and finds words for any song in this order: those that the user
// saved on the edit page; for that item a text file beside the media file, and its tags; the
// user's folder of lyrics; a service on the network, if there is to be one.
//
// Only who knows the token is answered, under the name of this machine's loopback: other pages in
// the user's browser, which can send requests here as well, know neither.
//
// Requests come on several threads at once, news of items on the window's thread, which never waits
// for a file here.
#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "host/http/http.h"
#include "host/lyrics/address.h"
#include "host/lyrics/online_words.h"
#include "host/lyrics/song.h"
#include "host/lyrics/words_files.h"

namespace veldrin {

struct LyricsPlace {
    std::string token;   ///< the first part of every path
    int port = 0;        ///< on loopback
    std::string folder;  ///< the user's texts; what is saved goes into "edited" in it
};

class LyricsService {
  public:
    LyricsService(LyricsPlace place, std::optional<OnlineWords> online);

    /// The item that plays from now on; raw bytes of its path.
    void ItemOpened(const std::string& path);

    HttpAnswer Answer(const HttpRequest& request);

  private:
    /// Whose words are asked for.
    struct Wanted {
        Song asked;        ///< as the component asks, and what saved words are named by
        Song song;         ///< as people name it
        std::string path;  ///< of the media file, if it is known
    };
    struct Found {
        std::string words;
        std::string source;  ///< a sentence
    };

    /// The path and query behind the token, or what is wrong with the request.
    std::optional<HttpAnswer> Refusal(const HttpRequest& request) const;
    std::optional<HttpAnswer> PostRefusal(const HttpRequest& request) const;
    HttpAnswer Read(const LyricsAddress& address, bool anew);
    HttpAnswer Edit(const LyricsAddress& address);
    HttpAnswer Save(const LyricsAddress& address, const std::string& body);
    HttpAnswer EditPageOf(const Wanted& wanted, const Found& found, std::string note,
                          int status) const;

    Wanted Identify(const LyricsAddress& address);
    std::optional<Wanted> Recent(const LyricsAddress& address);
    std::optional<Wanted> OpenItem(const LyricsAddress& address);
    Found Find(const Wanted& wanted, bool anew) const;
    Found FindOnline(const Wanted& wanted, bool anew) const;

    const LyricsPlace place_;
    const WordsFolder folder_;
    const WordsFolder edited_;
    const std::optional<OnlineWords> online_;

    std::mutex mutex_;
    // The following are guarded by mutex_.
    std::string opened_;
    std::deque<Wanted> shown_;  ///< what was read, the last one first
};

/// Whether both are the same, in a time that does not tell how much of them is.
bool SameSecret(std::string_view one, std::string_view other);

}  // namespace veldrin
