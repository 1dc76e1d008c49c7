#include "host/http/client.h"

#include <utility>

#include "core/base/version.h"
#include "host/http/address.h"
#include "host/http/dial.h"

namespace veldrin {
namespace {

constexpr int kMostRedirects = 5;
/// What packing may at worst add to a body: each byte a chunk of its own.
constexpr std::size_t kWrapping = 8;
constexpr std::size_t kLongestStatusLine = 1024;
constexpr int kMostHeads = 8;

/// The library's client, talking over a connection that was made without it.
class Exchange : private httplib::ClientImpl {
  public:
    explicit Exchange(const HttpAddress& address)
        : ClientImpl(address.host, address.port), address_(address) {
        set_url_encode(false);
        set_follow_location(false);
    }

    std::optional<HttpAnswer> Get(Connection& connection, const HttpHeaders& headers,
                                  std::size_t size);

  private:
    const HttpAddress& address_;
};

/// Between the library, which asks and then reads, and the connection, whose head has to be looked
/// at in between.
class HeadFirst : public httplib::Stream {
  public:
    HeadFirst(Connection& connection, std::size_t body) : connection_(connection), body_(body) {}

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* to, std::size_t size) override {
        if (!std::exchange(asked_, true) && !TakeHead()) {
            failed_ = true;
        }
        return failed_ ? -1 : connection_.read(to, size);
    }
    ssize_t write(const char* from, std::size_t size) override {
        return connection_.write(from, size);
    }
    void get_remote_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    void get_local_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    socket_t socket() const override { return connection_.socket(); }

    const HttpHeaders& Headers() const { return headers_; }

  private:
    // Passes over what is said before the answer.
    bool TakeHead() {
        for (int i = 0; i < kMostHeads && connection_.ReadHead(); ++i) {
            const std::string_view head = connection_.Head();
            if (head.find("\r\n") > kLongestStatusLine) {
                return false;
            }
            if (!head.starts_with("HTTP/1.1 1")) {
                headers_ = HeadersOf(head);
                connection_.AllowBody(body_);
                return true;
            }
            connection_.DropHead();
        }
        return false;
    }

    Connection& connection_;
    const std::size_t body_;
    HttpHeaders headers_;
    bool asked_ = false;
    bool failed_ = false;
};

std::optional<HttpAnswer> Exchange::Get(Connection& connection, const HttpHeaders& headers,
                                        std::size_t size) {
    httplib::Request request;
    request.method = "GET";
    request.path = address_.target;
    for (const auto& [name, value] : headers) {
        request.set_header(name, value);
    }
    const auto unlessGiven = [&](const char* name, const std::string& value) {
        if (!request.has_header(name)) {
            request.set_header(name, value);
        }
    };
    unlessGiven("Host", address_.Authority());
    unlessGiven("Accept-Encoding", "gzip, br");
    unlessGiven("User-Agent", "veldrin/" + std::to_string(sarnel::kVersionMajor) + "." +
                                  std::to_string(sarnel::kVersionMinor));
    std::string body;
    request.content_receiver = [&](const char* bytes, std::size_t count, auto, auto) {
        if (count > size - body.size()) {
            return false;
        }
        body.append(bytes, count);
        return true;
    };
    httplib::Response response;
    httplib::Error error{};
    HeadFirst stream(connection, size * kWrapping);
    if (!process_request(stream, request, response, true, error)) {
        return std::nullopt;
    }
    return HttpAnswer{response.status, stream.Headers(), std::move(body)};
}

/// Where the answer sends its reader to; empty if it is the answer itself.
std::string LocationIn(const HttpAnswer& answer) {
    switch (answer.status) {
        case 301:
        case 302:
        case 303:
        case 307:
        case 308:
            return HeaderOf(answer.headers, "location");
        default:
            return "";
    }
}

std::optional<HttpAnswer> FetchWithin(const std::string& first, const HttpHeaders& headers,
                                      std::size_t size, const WaitEnd& end) {
    auto address = ParseHttpAddress(first);
    bool mayLoopBack = true;
    for (int i = 0; address && i <= kMostRedirects; ++i) {
        const Dialled dialled = Dial(*address, mayLoopBack, end);
        if (!dialled.connection) {
            return std::nullopt;
        }
        // Nobody out there is to send us to a service of this machine.
        mayLoopBack = dialled.loopback;
        auto answer = Exchange(*address).Get(*dialled.connection, headers, size);
        const std::string location = answer ? LocationIn(*answer) : "";
        if (location.empty()) {
            return answer;
        }
        address = ResolveLocation(*address, location);
    }
    return std::nullopt;
}

}  // namespace

std::optional<HttpAnswer> Fetch(const std::string& address, const HttpHeaders& headers,
                                std::size_t size, const WaitEnd& end) {
    try {
        return FetchWithin(address, headers, size, end);
    } catch (const std::exception&) {  // no memory, above all
        return std::nullopt;
    }
}

}  // namespace veldrin
