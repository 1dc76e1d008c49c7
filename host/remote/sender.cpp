#include "host/remote/sender.h"

namespace veldrin {

Descriptor AskRunning(const std::optional<MeetingPlace>& place,
                      const std::vector<Request>& requests, Console& console) {
    if (!place) {
        console.Complain("no safe place to look for a running veldrin");
        return Descriptor();
    }
    HandoverResult result = TakeLockOrHandOver(*place, requests, Patience());
    if (result.outcome == Handover::kNobodyRuns) {
        console.Complain("no veldrin is running");
    } else if (result.outcome == Handover::kNoAnswer) {
        console.Complain("the running veldrin does not answer");
    }
    return std::move(result.connection);
}

bool HaveDone(const std::optional<MeetingPlace>& place, const std::vector<std::string>& verbs,
              Console& console) {
    std::vector<Request> requests;
    requests.reserve(verbs.size());
    for (const std::string& verb : verbs) {
        requests.push_back({Request::Kind::kVerb, verb});
    }
    const Descriptor connection = AskRunning(place, requests, console);
    if (!connection) {
        return false;
    }
    // It has been taken. What takes its time, such as opening a file, need not be waited for.
    const std::string wrong = ReadAnswer(connection, Patience().answer).value_or("");
    if (!wrong.empty()) {
        console.Complain(Printable(wrong));
    }
    return wrong.empty();
}

std::optional<std::string> AskStatus(const std::optional<MeetingPlace>& place,
                                     const std::string& form, Console& console) {
    const Descriptor connection = AskRunning(place, {{Request::Kind::kStatus, form}}, console);
    if (!connection) {
        return std::nullopt;
    }
    auto answer = ReadAnswer(connection, Patience().answer);
    if (!answer || answer->empty()) {
        console.Complain("the running veldrin does not answer");
        return std::nullopt;
    }
    return answer;
}

}  // namespace veldrin
