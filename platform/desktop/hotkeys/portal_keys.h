// Keys from the desktop's portal for global shortcuts, on the session bus. All are asked for in one
// session and at once, since the desktop may show the user a dialog for each time. Nothing waits:
// where there is no portal, or it refuses or answers nonsense, keys are missing.
//
//     Register          the program's name, for portals that want it; its answer tells who they are
//     CreateSession     answers by a Response
//     BindShortcuts     the same, perhaps once the user has agreed
//     Activated         each press, from then on
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantMap>
#include <functional>
#include <map>
#include <optional>

#include "platform/driver.h"

namespace platform::desktop {

class PortalKeys : public QObject {
    Q_OBJECT

  public:
    using Keys = std::map<Handle, KeyCombination>;
    struct Reports {
        std::function<void(Handle id)> onPress;
        std::function<void(bool isThere)> onPortal;  ///< has come, or is missing; may come again
    };

    /// `keys` is looked at whenever they are bound and must outlive it. Reports come from the loop.
    PortalKeys(const Keys& keys, Reports reports);
    ~PortalKeys() override;

    /// Binds all keys, in the loop's next turn. To be called again when one has been added: a
    /// session can be bound once, so there will be a new one. One that has been taken away needs
    /// nothing: nobody hears of its presses.
    void Bind();

  private slots:
    void OnResponse(const QDBusMessage& message);
    void OnActivated(const QDBusMessage& message);
    void OnClosed(const QDBusMessage& message);

  private:
    using OnAnswer = std::function<void(const QDBusMessage& answer)>;

    void Listen();
    void OnOwner(const QString& owner);
    void Start();
    void Register();
    void CreateSession();
    void BindShortcuts();
    void EndSession();
    void Forget();

    void Call(const QString& interface, const QString& method, const QVariantList& arguments,
              OnAnswer onAnswer);
    void Request(const QString& method, QVariantList arguments, QVariantMap options,
                 std::function<void()> onFailure);
    QString NextToken();

    const Keys& keys_;
    Reports reports_;
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    QTimer starter_;
    bool isRegistering_ = false;
    int turn_ = 0;     ///< counts beginnings: what was asked in a former turn is answered in vain
    int tokens_ = 0;   ///< names used up
    QString owner_;    ///< the portal's own name on the bus; empty while it is not known
    QString request_;  ///< whose Response is waited for; empty if none
    /// A Response to another request, which may turn out to be this one: an answer and a signal
    /// reach us in either order, whichever was sent first.
    std::optional<QDBusMessage> early_;
    QString session_;
};

}  // namespace platform::desktop
