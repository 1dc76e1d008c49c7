#include "host/http/service.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <cerrno>
#include <charconv>
#include <optional>
#include <string>
#include <utility>

#include "platform/base/signals_held.h"

namespace veldrin {
namespace {

using std::chrono::milliseconds;

constexpr std::size_t kThreads = 16;
constexpr std::size_t kMostWaiting = 256;
constexpr std::size_t kLongestBody = 64 * 1024;
constexpr milliseconds kAskingTime(2000);
/// The same while others wait: who is on this machine needs no longer.
constexpr milliseconds kHurry(25);
constexpr milliseconds kAnswerTime(5000);
/// A pause when no descriptor is left for a connection.
constexpr milliseconds kShortage(20);

void Say(Connection& connection, std::string_view status) {
    const std::string answer =
        "HTTP/1.1 " + std::string(status) + "\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";
    connection.EndAt(HttpClock::now() + kAnswerTime);
    connection.write(answer.data(), answer.size());
    connection.Finish();
}

std::optional<std::size_t> LengthIn(const HttpHeaders& headers) {
    const auto found = headers.find("content-length");
    if (found == headers.end()) {
        return 0;
    }
    std::size_t length = 0;
    const char* const end = found->second.data() + found->second.size();
    const auto [stop, fault] = std::from_chars(found->second.data(), end, length);
    return fault == std::errc() && stop == end ? std::optional(length) : std::nullopt;
}

/// Reads one request; none if there is none to be answered, and the other side has been told why.
/// By hand: the library would take forms of 8 KiB at most, and take others apart that nobody needs.
std::optional<std::string> ReadRequest(Connection& connection) {
    if (!connection.ReadHead()) {
        if (!connection.Head().empty()) {
            Say(connection, "431 Request Header Fields Too Large");
        }
        return std::nullopt;
    }
    const HttpHeaders headers = HeadersOf(connection.Head());
    const auto length = LengthIn(headers);
    if (!length || headers.contains("transfer-encoding")) {
        Say(connection, "411 Length Required");
        return std::nullopt;
    }
    if (*length > kLongestBody) {
        Say(connection, "413 Payload Too Large");
        return std::nullopt;
    }
    if (headers.contains("expect")) {
        constexpr std::string_view kGoOn = "HTTP/1.1 100 Continue\r\n\r\n";
        connection.write(kGoOn.data(), kGoOn.size());
    }
    return connection.ReadBody(*length);
}

/// The library takes targets apart and refuses some that are sound, such as one with two question
/// marks: it gets another in its place. What is no target stays, to be refused.
std::string TakeTarget(Connection& connection) {
    const std::string_view line = connection.Head().substr(0, connection.Head().find("\r\n"));
    const std::size_t begin = line.find(' ') + 1;
    const std::size_t end = line.find(' ', begin);
    if (begin == 0 || end == std::string_view::npos || end == begin) {
        return {};
    }
    std::string target(line.substr(begin, end - begin));
    connection.ReplaceInHead(begin, target.size(), "/");
    return target;
}

/// The library's server, for one request over a connection that was accepted without it.
class Reply : private httplib::Server {
  public:
    Reply(Connection& connection, std::string body, const Http::Handler& handler)
        : connection_(connection), body_(std::move(body)), handler_(handler) {
        set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& reply) {
            Fill(reply, AnswerTo({request.method, target_, headers_, std::move(body_)}));
            return HandlerResponse::Handled;
        });
    }

    void Send() {
        headers_ = HeadersOf(connection_.Head());
        target_ = TakeTarget(connection_);
        connection_.EndAt(HttpClock::now() + kAnswerTime);
        bool closed = false;
        process_request(connection_, true, closed, [](httplib::Request& request) {
            // Done with, or nobody's business here.
            request.headers.erase("Expect");
            request.ranges.clear();
        });
    }

  private:
    HttpAnswer AnswerTo(const HttpRequest& request) {
        HttpAnswer answer{500, {}, {}};
        try {
            answer = handler_(request);
        } catch (const std::exception&) {  // the other side is told that much
        }
        connection_.EndAt(HttpClock::now() + kAnswerTime);
        return answer;
    }

    static void Fill(httplib::Response& reply, HttpAnswer answer) {
        reply.status = answer.status;
        for (const auto& [name, value] : answer.headers) {
            reply.set_header(name, value);
        }
        reply.body = std::move(answer.body);
    }

    Connection& connection_;
    HttpHeaders headers_;
    std::string target_;
    std::string body_;
    const Http::Handler& handler_;
};

}  // namespace

Service::Service(Descriptor listening, Http::Handler handler)
    : listening_(std::move(listening)),
      ending_(eventfd(0, EFD_CLOEXEC)),
      handler_(std::move(handler)) {
    fcntl(listening_.Number(), F_SETFL, fcntl(listening_.Number(), F_GETFL) | O_NONBLOCK);
    const platform::SignalsHeld held;
    threads_ = std::make_unique<httplib::ThreadPool>(kThreads);
    acceptor_ = std::thread([this] { Accept(); });
}

Service::~Service() {
    ends_ = true;
    eventfd_write(ending_.Number(), 1);
    acceptor_.join();
    threads_->shutdown();
}

void Service::Accept() {
    while (!ends_) {
        const auto wake = CutShort() ? HttpClock::now() + kHurry : HttpClock::time_point::max();
        if (!WaitFor(listening_.Number(), POLLIN, {wake, ending_.Number()})) {
            continue;
        }
        Descriptor socket(accept4(listening_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
        if (socket) {
            Admit(std::move(socket));
        } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
            WaitFor(-1, 0, {HttpClock::now() + kShortage, ending_.Number()});
        }
    }
}

// Answers whether somebody is kept waiting by somebody else.
bool Service::CutShort() {
    const std::lock_guard lock(mutex_);
    if (waiting_ == 0 || busy_ < kThreads) {
        return waiting_ > 0;  // a thread is on its way
    }
    const auto latest = HttpClock::now() - kHurry;
    asking_.remove_if([&](const Asker& asker) {
        return asker.since <= latest && shutdown(asker.number, SHUT_RDWR) == 0;
    });
    return true;
}

void Service::Admit(Descriptor socket) {
    {
        const std::lock_guard lock(mutex_);
        if (waiting_ >= kMostWaiting) {
            return;
        }
        ++waiting_;
    }
    const auto shared = std::make_shared<Descriptor>(std::move(socket));
    threads_->enqueue([this, shared] { Talk(std::move(*shared)); });
}

void Service::Talk(Descriptor socket) {
    const int number = socket.Number();
    {
        const std::lock_guard lock(mutex_);
        --waiting_;
        ++busy_;
        asking_.push_back({number, HttpClock::now()});
    }
    Connection connection(std::move(socket), {HttpClock::now() + kAskingTime, ending_.Number()});
    auto body = ReadRequest(connection);
    {
        const std::lock_guard lock(mutex_);
        asking_.remove_if([&](const Asker& asker) { return asker.number == number; });
    }
    if (body) {
        Reply(connection, std::move(*body), handler_).Send();
    }
    const std::lock_guard lock(mutex_);
    --busy_;
}

}  // namespace veldrin
