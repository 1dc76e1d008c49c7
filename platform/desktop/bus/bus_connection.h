// The session bus by the toolkit, on a connection of our own. To connect may take for ever where
// somebody listens who does not answer, so that is done on another thread.
#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>

#include "platform/desktop/session_bus.h"
#include "platform/desktop/wait_loop.h"

class QDBusPendingCallWatcher;

namespace platform::desktop {

class BusConnection final : public SessionBus {
  public:
    /// `isLost`: nothing of the toolkit may be called any more. The loop must outlive it.
    BusConnection(WaitLoop& loop, std::function<bool()> isLost);
    ~BusConnection() override;
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;

    void Begin(Offer offer) override;
    void End() override;
    void Answer(const BusCall& call, const BusValues& values) override;
    void AnswerBoxed(const BusCall& call, const BusValue& value) override;
    void Refuse(const BusCall& call, const std::string& error, const std::string& message) override;
    void Signal(const std::string& interface, const std::string& member,
                const BusValues& values) override;
    void Call(const Target& target, const std::string& member, const BusValues& values,
              std::function<void(std::optional<BusValues>)> onAnswer) override;

    /// The first picture is on the screen: what was to begin does.
    void FirstPictureShown();

  private:
    class Face;
    struct Connecting;

    void Connect();
    void Connected();
    void AskForName(const QString& name, bool isFirst);
    bool IsUp() const;
    void Send(const QDBusMessage& message) const;
    void Watch(const QDBusMessage& call, std::function<void(const QDBusMessage&)> onAnswer);

    WaitLoop& loop_;
    std::function<bool()> isLost_;
    bool pictureShown_ = false;
    std::optional<Offer> offer_;
    std::shared_ptr<Connecting> connecting_;
    std::unique_ptr<Face> face_;
    std::optional<QDBusConnection> connection_;
    std::map<QDBusPendingCallWatcher*, std::unique_ptr<QDBusPendingCallWatcher>> calls_;
};

}  // namespace platform::desktop
