#include "host/instance/handover_message.h"

#include <charconv>
#include <optional>
#include <utility>

namespace veldrin {
namespace {

constexpr std::string_view kGreeting = "veldrin 1;";

/// Digits of kLongestLine.
constexpr std::size_t kLongestNumber = 5;

char LetterOf(Request::Kind kind) {
    switch (kind) {
        case Request::Kind::kLine:
            return 'L';
        case Request::Kind::kShow:
            return 'S';
        case Request::Kind::kQuit:
            return 'Q';
        case Request::Kind::kVerb:
            return 'P';
        case Request::Kind::kStatus:
            return 'T';
        case Request::Kind::kExport:
            return 'E';
    }
    return '?';
}

std::optional<Request::Kind> KindOf(char letter) {
    for (const auto kind : {Request::Kind::kLine, Request::Kind::kShow, Request::Kind::kQuit,
                            Request::Kind::kVerb, Request::Kind::kStatus, Request::Kind::kExport}) {
        if (LetterOf(kind) == letter) {
            return kind;
        }
    }
    return std::nullopt;
}

/// Some kinds have a text, and a text holds no zero byte.
bool IsSound(const Request& request) {
    switch (request.kind) {
        case Request::Kind::kQuit:
            return request.text.empty();
        case Request::Kind::kExport:
            return request.text.starts_with('/') && request.text.find('\0') == std::string::npos;
        default:
            return request.text.find('\0') == std::string::npos;
    }
}

}  // namespace

std::vector<std::vector<Request>> InMessages(std::vector<Request> requests) {
    // Letter, length and the two marks around the text.
    constexpr std::size_t kAround = 1 + kLongestNumber + 2;
    std::vector<std::vector<Request>> messages(1);
    std::size_t size = kGreeting.size();
    for (Request& request : requests) {
        const std::size_t more = kAround + request.text.size();
        if (size + more > kLongestMessage || messages.back().size() == kMostRequests) {
            messages.emplace_back();
            size = kGreeting.size();
        }
        size += more;
        messages.back().push_back(std::move(request));
    }
    return messages;
}

std::string EncodeMessage(const std::vector<Request>& requests) {
    std::string message(kGreeting);
    for (const Request& request : requests) {
        message.push_back(LetterOf(request.kind));
        message.append(std::to_string(request.text.size())).append(":");
        message.append(request.text).append(",");
    }
    return message;
}

bool MessageReader::Feed(std::string_view bytes) {
    received_ += bytes.size();
    if (received_ > kLongestMessage) {
        return false;
    }
    pending_.append(bytes);
    Step step = Step::kTaken;
    while (step == Step::kTaken) {
        step = greeted_ ? TakeRequest() : TakeGreeting();
    }
    pending_.erase(0, consumed_);
    consumed_ = 0;
    return step == Step::kNeedsMore;
}

MessageReader::Step MessageReader::TakeGreeting() {
    const std::string_view rest = pending_;
    if (rest.size() < kGreeting.size()) {
        return kGreeting.starts_with(rest) ? Step::kNeedsMore : Step::kWrong;
    }
    if (!rest.starts_with(kGreeting)) {
        return Step::kWrong;
    }
    consumed_ = kGreeting.size();
    greeted_ = true;
    return Step::kTaken;
}

MessageReader::Step MessageReader::TakeRequest() {
    const std::string_view rest = std::string_view(pending_).substr(consumed_);
    if (rest.empty()) {
        return Step::kNeedsMore;
    }
    const auto kind = KindOf(rest.front());
    if (!kind) {
        return Step::kWrong;
    }
    const std::string_view number = rest.substr(1, kLongestNumber + 1);
    const std::size_t digits = number.find_first_not_of("0123456789");
    if (digits == std::string_view::npos) {
        return number.size() > kLongestNumber ? Step::kWrong : Step::kNeedsMore;
    }
    std::size_t length = 0;
    const auto parsed = std::from_chars(number.data(), number.data() + digits, length);
    if (number[digits] != ':' || parsed.ec != std::errc() || length > kLongestLine) {
        return Step::kWrong;
    }
    const std::size_t start = 1 + digits + 1;
    if (rest.size() <= start + length) {
        return Step::kNeedsMore;
    }
    Request request{*kind, std::string(rest.substr(start, length))};
    if (rest[start + length] != ',' || !IsSound(request) || requests_.size() >= kMostRequests) {
        return Step::kWrong;
    }
    requests_.push_back(std::move(request));
    consumed_ += start + length + 1;
    return Step::kTaken;
}

}  // namespace veldrin
