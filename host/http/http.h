// The network as the host needs it: a page from somewhere, and a small service of its own. What
// stands behind it is a library that takes longer to load than the whole player to start, so it
// lies in a module of its own that is loaded when it is first needed (LoadHttp), which may be
// never.
//
// Nothing here throws. All members may be called from any thread.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace veldrin {

/// Names of headers are in lower case.
using HttpHeaders = std::map<std::string, std::string>;

/// The value of a header, empty if it is not there.
inline std::string HeaderOf(const HttpHeaders& headers, const std::string& name) {
    const auto found = headers.find(name);
    return found == headers.end() ? std::string() : found->second;
}

/// What somebody asks of the service.
struct HttpRequest {
    std::string method;  ///< "GET", "POST" ...
    std::string target;  ///< path and query as they came, escapes and all
    HttpHeaders headers;
    std::string body;
};

struct HttpAnswer {
    int status = 200;
    HttpHeaders headers;
    std::string body;
};

struct HttpLimits {
    std::chrono::milliseconds time{10'000};    ///< for all of it, redirects included
    std::size_t size = std::size_t{2} << 20U;  ///< bytes of a body, once unpacked
};

class Http {
  public:
    virtual ~Http() = default;

    /// Asks for a page: http and https, redirects followed within these, packed bodies unpacked.
    /// Any status is an answer; none where nothing came in time, or too much. Characters that
    /// cannot stand in an address are escaped. Returns in time, whatever becomes of the other side.
    virtual std::optional<HttpAnswer> Get(const std::string& address, const HttpHeaders& headers,
                                          const HttpLimits& limits) = 0;

    using Handler = std::function<HttpAnswer(const HttpRequest& request)>;
    /// Answers what comes to a listening socket, whose descriptor it takes over, until the Http
    /// ends. The handler is called on threads of the service's own, several at once. Once.
    virtual void Serve(int listening, Handler handler) = 0;
};

/// Loads the module, at the first call; the same object at each. It lies beside the program or in
/// ../lib/veldrin/modules from there; null where it does not. The object lives until the program
/// ends, and a handler that it was given with it: the handler owns what it uses.
Http* LoadHttp();

/// Loads a module by its path; null if it is none. It stays loaded.
std::unique_ptr<Http> OpenHttp(const std::string& module);

}  // namespace veldrin
