#include "platform/desktop/bus/bus_connection.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <algorithm>
#include <mutex>
#include <utility>

#include "platform/desktop/bus/bus_probe.h"
#include "platform/desktop/bus/bus_values.h"

namespace platform::desktop {

namespace {

constexpr const char* kConnectionName = "what the program offers";
constexpr const char* kPropertiesOf = "org.freedesktop.DBus.Properties";
constexpr const char* kBus = "org.freedesktop.DBus";

const QDBusMessage& MessageOf(const BusCall& call) {
    return *static_cast<const QDBusMessage*>(call.message.get());
}

}  // namespace

/// What both threads hold; whoever is last clears it away.
struct BusConnection::Connecting {
    std::mutex mutex;
    QObject* receiver = nullptr;        ///< null once nobody waits any more
    std::function<void()> onConnected;  ///< on the receiver's thread
};

/// The object as others meet it.
class BusConnection::Face : public QDBusVirtualObject {
  public:
    Face(WaitLoop& loop, const Offer& offer) : loop_(loop), offer_(offer) {}

    QString introspect(const QString& /*path*/) const override {
        return QString::fromStdString(offer_.description);
    }

    // What is left to the library: what every object on the bus can do.
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override {
        const std::string interface = message.interface().toStdString();
        const auto& known = offer_.interfaces;
        if (!interface.empty() && interface != kPropertiesOf &&
            std::find(known.begin(), known.end(), interface) == known.end()) {
            return false;
        }
        offer_.onCall({interface, message.member().toStdString(), FromVariants(message.arguments()),
                       std::make_shared<const QDBusMessage>(message)});
        loop_.Wake();
        return true;
    }

  private:
    WaitLoop& loop_;
    const Offer& offer_;
};

BusConnection::BusConnection(WaitLoop& loop, std::function<bool()> isLost)
    : loop_(loop), isLost_(std::move(isLost)) {}

BusConnection::~BusConnection() {
    End();
}

void BusConnection::Begin(Offer offer) {
    offer_ = std::move(offer);
    if (pictureShown_) {
        Connect();
    }
}

void BusConnection::FirstPictureShown() {
    pictureShown_ = true;
    if (offer_ && !connecting_) {
        Connect();
    }
}

void BusConnection::End() {
    if (connecting_) {
        const std::lock_guard lock(connecting_->mutex);
        connecting_->receiver = nullptr;
    }
    if (isLost_()) {
        return;
    }
    calls_.clear();
    if (connection_) {
        connection_->unregisterObject(QString::fromStdString(offer_->objectPath));
        connection_.reset();
        QDBusConnection::disconnectFromBus(kConnectionName);
    }
    face_.reset();
    offer_.reset();
}

void BusConnection::Connect() {
    if (IsBusPassedOver()) {
        return;
    }
    face_ = std::make_unique<Face>(loop_, *offer_);
    connecting_ = std::make_shared<Connecting>();
    connecting_->receiver = face_.get();
    connecting_->onConnected = [this] { Connected(); };
    offer_->elsewhere([connecting = connecting_] {
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnectionName);
        const std::lock_guard lock(connecting->mutex);
        if (connecting->receiver != nullptr) {
            QMetaObject::invokeMethod(connecting->receiver, connecting->onConnected,
                                      Qt::QueuedConnection);
        }
    });
}

void BusConnection::Connected() {
    QDBusConnection connection(kConnectionName);
    if (!connection.isConnected() || !connection.registerVirtualObject(
                                         QString::fromStdString(offer_->objectPath), face_.get())) {
        return;
    }
    connection_ = connection;
    AskForName(QString::fromStdString(offer_->name), true);
}

void BusConnection::AskForName(const QString& name, bool isFirst) {
    constexpr uint kDoNotQueue = 4;
    constexpr uint kIsOwner = 1;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kBus, "/org/freedesktop/DBus", kBus, "RequestName");
    call << name << kDoNotQueue;
    Watch(call, [this, name, isFirst](const QDBusMessage& answer) {
        if (answer.arguments().value(0).toUInt() == kIsOwner) {
            offer_->onReady();
        } else if (isFirst && answer.type() == QDBusMessage::ReplyMessage) {
            AskForName(QString("%1.instance%2").arg(name).arg(QCoreApplication::applicationPid()),
                       false);
        }
    });
}

bool BusConnection::IsUp() const {
    return connection_ && !isLost_();
}

void BusConnection::Send(const QDBusMessage& message) const {
    if (IsUp()) {
        connection_->send(message);
    }
}

void BusConnection::Watch(const QDBusMessage& call,
                          std::function<void(const QDBusMessage&)> onAnswer) {
    constexpr int kPatience = 10'000;  // milliseconds
    auto watch = std::make_unique<QDBusPendingCallWatcher>(connection_->asyncCall(call, kPatience));
    QDBusPendingCallWatcher* const key = watch.get();
    calls_[key] = std::move(watch);
    QObject::connect(key, &QDBusPendingCallWatcher::finished, key,
                     [this, key, onAnswer = std::move(onAnswer)] {
                         // Lives until its own signal has been handled.
                         const auto done = calls_.extract(key);
                         done.mapped().release()->deleteLater();
                         onAnswer(key->reply());
                         loop_.Wake();
                     });
}

void BusConnection::Answer(const BusCall& call, const BusValues& values) {
    if (MessageOf(call).isReplyRequired()) {
        Send(MessageOf(call).createReply(ToVariants(values)));
    }
}

void BusConnection::AnswerBoxed(const BusCall& call, const BusValue& value) {
    if (MessageOf(call).isReplyRequired()) {
        Send(MessageOf(call).createReply(QVariant::fromValue(QDBusVariant(ToVariant(value)))));
    }
}

void BusConnection::Refuse(const BusCall& call, const std::string& error,
                           const std::string& message) {
    if (MessageOf(call).isReplyRequired()) {
        Send(MessageOf(call).createErrorReply(QString::fromStdString(error),
                                              QString::fromStdString(message)));
    }
}

void BusConnection::Signal(const std::string& interface, const std::string& member,
                           const BusValues& values) {
    if (!IsUp()) {
        return;
    }
    QDBusMessage signal = QDBusMessage::createSignal(QString::fromStdString(offer_->objectPath),
                                                     QString::fromStdString(interface),
                                                     QString::fromStdString(member));
    signal.setArguments(ToVariants(values));
    Send(signal);
}

void BusConnection::Call(const Target& target, const std::string& member, const BusValues& values,
                         std::function<void(std::optional<BusValues>)> onAnswer) {
    if (!IsUp()) {
        onAnswer(std::nullopt);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromStdString(target.service), QString::fromStdString(target.path),
        QString::fromStdString(target.interface), QString::fromStdString(member));
    call.setArguments(ToVariants(values));
    Watch(call, [onAnswer = std::move(onAnswer)](const QDBusMessage& answer) {
        onAnswer(answer.type() == QDBusMessage::ReplyMessage
                     ? std::optional(FromVariants(answer.arguments()))
                     : std::nullopt);
    });
}

}  // namespace platform::desktop
