// What the module offers to the program: one function, which makes an Http.
#include <sys/eventfd.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

#include "host/http/client.h"
#include "host/http/http.h"
#include "host/http/service.h"
#include "platform/base/signals_held.h"

namespace veldrin {
namespace {

/// What asking threads share with whoever waits for them; the last one clears it away.
struct Asking {
    const Descriptor cancel{eventfd(0, EFD_CLOEXEC)};
    std::mutex mutex;
    std::condition_variable changed;
    int running = 0;
};

struct Page {
    bool done = false;
    std::optional<HttpAnswer> answer;
};

class HttpModule : public Http {
  public:
    /// Whoever asks is cut short. One who is looking a name up cannot be, and is left behind.
    ~HttpModule() override {
        eventfd_write(asking_->cancel.Number(), 1);
        service_.reset();
        std::unique_lock lock(asking_->mutex);
        asking_->changed.wait_for(lock, std::chrono::milliseconds(200),
                                  [this] { return asking_->running == 0; });
    }

    std::optional<HttpAnswer> Get(const std::string& address, const HttpHeaders& headers,
                                  const HttpLimits& limits) override {
        const auto end = HttpClock::now() + limits.time;
        const auto page = std::make_shared<Page>();
        if (!Start(address, headers, limits.size, end, page)) {
            return std::nullopt;
        }
        // This object may be gone when the wait is over.
        const auto asking = asking_;
        std::unique_lock lock(asking->mutex);
        asking->changed.wait_until(lock, end, [&] { return page->done; });
        return std::move(page->answer);
    }

    void Serve(int listening, Handler handler) override {
        service_ = std::make_unique<Service>(Descriptor(listening), std::move(handler));
    }

  private:
    bool Start(const std::string& address, const HttpHeaders& headers, std::size_t size,
               HttpClock::time_point end, const std::shared_ptr<Page>& page);

    std::shared_ptr<Asking> asking_ = std::make_shared<Asking>();
    std::unique_ptr<Service> service_;
};

// A thread of its own for each page, since looking a name up knows no limit of time.
bool HttpModule::Start(const std::string& address, const HttpHeaders& headers, std::size_t size,
                       HttpClock::time_point end, const std::shared_ptr<Page>& page) try {
    const auto ask = [asking = asking_, address, headers, size, end, page] {
        auto answer = Fetch(address, headers, size, {end, asking->cancel.Number()});
        const std::lock_guard lock(asking->mutex);
        page->answer = std::move(answer);
        page->done = true;
        --asking->running;
        asking->changed.notify_all();
    };
    const platform::SignalsHeld held;
    const std::lock_guard lock(asking_->mutex);
    std::thread(ask).detach();
    ++asking_->running;
    return true;
} catch (const std::exception&) {  // no thread to be had
    return false;
}

}  // namespace
}  // namespace veldrin

extern "C" __attribute__((visibility("default"))) veldrin::Http* VeldrinMakeHttp() {
    return new veldrin::HttpModule;
}
