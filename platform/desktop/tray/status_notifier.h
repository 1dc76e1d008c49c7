// A status notifier on the session's bus, on a connection of its own: announced to the desktop's
// watcher of those, again whenever there is a new one. Nothing here waits for an answer.
#pragma once

#include <QDBusConnection>
#include <QString>
#include <QTimer>
#include <functional>
#include <memory>

#include "platform/desktop/tray/status_item.h"

class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace platform::desktop {

class StatusNotifier {
  public:
    /// Told whether a host shows the icon now, whenever that has been found out anew.
    using Shown = std::function<void(bool shown)>;

    /// `number`: tells those of this process apart; none may be used twice.
    StatusNotifier(int number, QString tip, StatusItem::Used onUsed, Shown onShown);
    ~StatusNotifier();
    StatusNotifier(const StatusNotifier&) = delete;
    StatusNotifier& operator=(const StatusNotifier&) = delete;

    /// Connects and announces it. May tell at once.
    void Begin();
    void SetTip(const QString& tip);

  private:
    using Call = std::unique_ptr<QDBusPendingCallWatcher>;

    void WatchTheBus();
    void WatcherChanged(const QString& owner);
    void Announce();
    void AskForHost();
    Call Send(QDBusMessage call, std::function<void(const QDBusMessage&)> onAnswer) const;

    const QString connectionName_;
    const QString serviceName_;
    StatusItem item_;
    Shown onShown_;
    QDBusConnection connection_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    QTimer news_;  ///< started by the bus when a host may have come or gone
    bool announced_ = false;
    // Under way; a new one takes the place of the former, whose answer counts no more.
    Call announcing_;
    Call asking_;
};

}  // namespace platform::desktop
