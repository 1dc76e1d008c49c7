// Playing in a window, which has all that a user needs. What the first picture can do without comes
// after it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/front.h"
#include "host/http/page_fetcher.h"
#include "host/transport_keys.h"
#include "platform/base/keys.h"
#include "platform/desktop/desktop_driver.h"

namespace veldrin {

class WindowFront : public Front {
  public:
    /// Only where DesktopDriver::WhyNoDisplay finds nothing. Starts threads of the toolkit's own.
    WindowFront(Console& console, std::optional<double> scale)
        : Front(console),
          driver_({"veldrin", "Veldrin", "Music Player", "AudioVideo;Audio;Player;"}, scale) {
        // Each may open a file; a flood of them shall not leave the window deaf.
        std::vector<platform::Long> keys(kTransportKeys.begin(), kTransportKeys.end());
        keys.push_back(platform::VK_RETURN);
        driver_.CountOnceWhileWaiting(std::move(keys));
        driver_.TellBy([&console](const std::string& text) { console.Complain(Printable(text)); });
        driver_.SetFetcher([pages = MakeFetcher()](const std::string& address, bool fresh) {
            return pages->Fetch(address, fresh);
        });
    }

    platform::Driver& GetDriver() override { return driver_; }
    platform::SessionBus* Bus() override { return &driver_.Bus(); }
    void MayActivate(const std::string& token) override { driver_.SetActivationToken(token); }
    void Enter(const Surroundings& surroundings) override {
        driver_.WatchSessionEnd(surroundings.endNow);
        driver_.WatchDisplay(surroundings.displayLost);
    }
    void Leave() override {
        driver_.WatchSessionEnd({});
        driver_.WatchDisplay({});
    }
    int Status() const override { return 0; }

  private:
    /// Shared, since a page that nobody waits for any more may outlive the front.
    static std::shared_ptr<PageFetcher> MakeFetcher() {
        const HttpLimits limits{platform::DesktopDriver::kLongestFetch, std::size_t{2} << 20U};
        return std::make_shared<PageFetcher>(LoadHttp, limits);
    }

    platform::DesktopDriver driver_;
};

}  // namespace veldrin
