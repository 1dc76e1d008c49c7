#include "platform/desktop/tray/status_notifier.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <utility>

namespace platform::desktop {

namespace {

constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kBus = "org.freedesktop.DBus";

}  // namespace

StatusNotifier::StatusNotifier(int number, QString tip, StatusItem::Used onUsed, Shown onShown)
    : connectionName_(QString("tray icon %1").arg(number)),
      serviceName_(QString("%1-%2-%3")
                       .arg(kItemInterface)
                       .arg(QCoreApplication::applicationPid())
                       .arg(number)),
      item_(std::move(tip), std::move(onUsed)),
      onShown_(std::move(onShown)),
      connection_(connectionName_) {
    news_.setSingleShot(true);
    QObject::connect(&news_, &QTimer::timeout, &news_, [this] {
        if (announced_) {
            AskForHost();
        }
    });
}

StatusNotifier::~StatusNotifier() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

void StatusNotifier::Begin() {
    connection_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_);
    if (!connection_.isConnected() || !connection_.registerVirtualObject(kItemPath, &item_)) {
        onShown_(false);
        return;
    }
    WatchTheBus();
    constexpr uint kDoNotQueue = 4;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kBus, "/org/freedesktop/DBus", kBus, "RequestName");
    call << serviceName_ << kDoNotQueue;
    // Without the name nobody could answer for it, and the announcement fails.
    connection_.send(call);
    Announce();
}

void StatusNotifier::WatchTheBus() {
    watcher_ = std::make_unique<QDBusServiceWatcher>(kWatcher, connection_,
                                                     QDBusServiceWatcher::WatchForOwnerChange);
    QObject::connect(
        watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, watcher_.get(),
        [this](const QString&, const QString&, const QString& owner) { WatcherChanged(owner); });
    // Nothing is taken from the signals themselves: whoever sends them, the watcher is asked.
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        connection_.connect({}, kWatcherPath, kWatcher, signal, &news_, SLOT(start()));
    }
    connection_.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                        "Disconnected", &news_, SLOT(start()));
}

void StatusNotifier::WatcherChanged(const QString& owner) {
    announced_ = false;
    announcing_.reset();
    asking_.reset();
    onShown_(false);
    if (!owner.isEmpty()) {
        Announce();
    }
}

StatusNotifier::Call StatusNotifier::Send(QDBusMessage call,
                                          std::function<void(const QDBusMessage&)> onAnswer) const {
    constexpr int kPatience = 2000;  // milliseconds
    call.setAutoStartService(false);
    auto watch = std::make_unique<QDBusPendingCallWatcher>(connection_.asyncCall(call, kPatience));
    QObject::connect(watch.get(), &QDBusPendingCallWatcher::finished, watch.get(),
                     [onAnswer = std::move(onAnswer)](const QDBusPendingCallWatcher* done) {
                         onAnswer(done->reply());
                     });
    return watch;
}

void StatusNotifier::Announce() {
    QDBusMessage call = QDBusMessage::createMethodCall(kWatcher, kWatcherPath, kWatcher,
                                                       "RegisterStatusNotifierItem");
    call << serviceName_;
    announcing_ = Send(call, [this](const QDBusMessage& answer) {
        announced_ = answer.type() == QDBusMessage::ReplyMessage;
        if (announced_) {
            AskForHost();
        } else {
            onShown_(false);
        }
    });
}

void StatusNotifier::AskForHost() {
    QDBusMessage call = QDBusMessage::createMethodCall(kWatcher, kWatcherPath,
                                                       "org.freedesktop.DBus.Properties", "Get");
    call << kWatcher << "IsStatusNotifierHostRegistered";
    asking_ = Send(call, [this](const QDBusMessage& answer) {
        const QVariant value = answer.arguments().value(0).value<QDBusVariant>().variant();
        onShown_(answer.type() == QDBusMessage::ReplyMessage && value.typeId() == QMetaType::Bool &&
                 value.toBool());
    });
}

void StatusNotifier::SetTip(const QString& tip) {
    item_.SetTip(tip);
    for (const char* signal : {"NewTitle", "NewToolTip"}) {
        connection_.send(QDBusMessage::createSignal(kItemPath, kItemInterface, signal));
    }
}

}  // namespace platform::desktop
