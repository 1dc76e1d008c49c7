// The lyrics service on its socket. The socket listens from the beginning, since that costs
// nothing; the network module is loaded when the first connection comes. Until then one thread
// waits for it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "host/descriptor.h"
#include "host/http/http.h"
#include "host/lyrics/service.h"

namespace veldrin {

struct LyricsSettings {
    std::string folder;       ///< the user's texts
    std::string online;       ///< base address of the service to be asked besides; none if empty
    std::string cacheFolder;  ///< for its answers; none if empty
};

class LyricsServer {
  public:
    /// Gives the network module, null if there is none. Called on a thread of the server's.
    using Load = std::function<Http*()>;
    /// Takes a line of text for the user, on a thread of the server's.
    using Notice = std::function<void(const std::string&)>;

    /// What this process does not take on its other threads, it must have blocked before: signals.
    LyricsServer(const LyricsSettings& settings, Load load, Notice notice);
    /// A service that has begun goes on as long as the network module.
    ~LyricsServer();
    LyricsServer(const LyricsServer&) = delete;
    LyricsServer& operator=(const LyricsServer&) = delete;

    /// The base address, empty if there can be no service.
    const std::string& Address() const { return address_; }

    /// See LyricsService.
    void ItemOpened(const std::string& path);

  private:
    void WaitForFirst(const Load& load, const Notice& notice);

    Descriptor listening_;
    Descriptor wake_;  ///< an event that ends the wait
    std::shared_ptr<LyricsService> service_;
    std::string address_;
    std::thread thread_;
};

}  // namespace veldrin
