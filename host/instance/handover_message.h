// What a second start says to the running one over the local socket: a greeting with the version of
// these rules, then requests, then the end of its stream. Each request is a letter, the length of
// its text in decimal, ":", the text, ",". So a text may hold any byte but zero, line breaks
// included:
//
//     veldrin 1;L15:"/music/a.flac",L20:/ADD "/music/b.flac",
//
// The answer is "ok" when the whole of it was understood, and nothing otherwise. What verbs and the
// question for the status are answered with follows it, once they have been dealt with, up to the
// end of the stream.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

struct Request {
    enum class Kind {
        kLine,  ///< a command line for the component
        kShow,  ///< show the window; the text is what the desktop wants to see for it, or empty
        kQuit,  ///< end in order; no text
        kVerb,  ///< do what the text says (remote/verb.h); the answer is what is wrong, if anything
        kStatus,  ///< tell how things stand; the text is empty for a line, or "json"
        kExport,  ///< write the list to the file of this absolute path; the answer is how that went
    };
    Kind kind = Kind::kLine;
    std::string text;
    bool operator==(const Request&) const = default;
};

inline constexpr std::size_t kLongestLine = 65'536;         ///< bytes of one text: 64 KiB
inline constexpr std::size_t kLongestMessage = 16'777'216;  ///< bytes of one message: 16 MiB
inline constexpr std::size_t kMostRequests = 250'000;       ///< in one message
inline constexpr std::string_view kAnswer = "ok";

/// Said behind the answer, before the end of the stream, when the list has been exported; else the
/// reason why it has not been is said.
inline constexpr std::string_view kExported = "exported";

/// The requests in as many messages as it takes, in order: none is longer than a receiver bears.
std::vector<std::vector<Request>> InMessages(std::vector<Request> requests);

/// The bytes to send. Nothing in `requests` may be longer than kLongestLine.
std::string EncodeMessage(const std::vector<Request>& requests);

/// Takes a message in as it arrives, in pieces of any size, from a sender that is not trusted.
class MessageReader {
  public:
    /// False when what has come can no longer become a message. Nothing may be fed after that.
    [[nodiscard]] bool Feed(std::string_view bytes);

    /// True if the message may end here: at least one request, and none half read.
    bool IsComplete() const { return greeted_ && !requests_.empty() && pending_.empty(); }

    const std::vector<Request>& Requests() const { return requests_; }

  private:
    enum class Step { kTaken, kNeedsMore, kWrong };
    Step TakeGreeting();
    Step TakeRequest();

    std::string pending_;       ///< received, not yet understood
    std::size_t consumed_ = 0;  ///< bytes at the front of pending_ that are done with
    std::size_t received_ = 0;  ///< bytes of the whole message so far
    bool greeted_ = false;
    std::vector<Request> requests_;
};

}  // namespace veldrin
