#include "host/instance/handover_message.h"

#include <charconv>
#include <optional>

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
    }
    return '?';
}

std::optional<Request::Kind> KindOf(char letter) {
    for (const auto kind : {Request::Kind::kLine, Request::Kind::kShow, Request::Kind::kQuit,
                            Request::Kind::kVerb, Request::Kind::kStatus}) {
        if (LetterOf(kind) == letter) {
            return kind;
        }
    }
    return std::nullopt;
}

bool HasText(Request::Kind kind) {
    return kind != Request::Kind::kShow && kind != Request::Kind::kQuit;
}

/// No text holds a zero byte.
bool IsSound(const Request& request) {
    return HasText(request.kind) ? request.text.find('\0') == std::string::npos
                                 : request.text.empty();
}

}  // namespace

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
