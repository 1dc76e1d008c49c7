// What the X server tells the toolkit, which the toolkit does not pass on. Without an X server
// nothing is ever told.
#pragma once

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <functional>
#include <vector>

namespace platform::desktop {

struct XNotice {
    enum class Kind {
        kResources,  ///< the server's resources have changed
        kDesktop,    ///< another desktop is shown, or a window has another one or another state
        kCovered,    ///< nothing of `window` shows
        kUncovered   ///< some of it does
    };
    Kind kind;
    std::uint32_t window = 0;  ///< 0: it is about all of them
};

/// Told for as long as it lives, from the event loop.
class XWatch : public QAbstractNativeEventFilter {
  public:
    explicit XWatch(std::function<void(const XNotice&)> onNotice);
    XWatch(const XWatch&) = delete;
    XWatch& operator=(const XWatch&) = delete;

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

  private:
    bool TellsOfDesktop(std::uint32_t property);

    std::function<void(const XNotice&)> onNotice_;
    std::vector<std::uint32_t> desktop_;  ///< the names of properties; asked for when one changes
};

}  // namespace platform::desktop
