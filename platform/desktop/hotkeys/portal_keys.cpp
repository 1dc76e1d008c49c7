#include "platform/desktop/hotkeys/portal_keys.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>
#include <utility>

#include "platform/desktop/hotkeys/key_symbols.h"
#include "platform/desktop/qt_text.h"

namespace platform::desktop {

namespace {

constexpr QLatin1String kPortalService("org.freedesktop.portal.Desktop");
constexpr QLatin1String kPortalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String kShortcutsInterface("org.freedesktop.portal.GlobalShortcuts");
constexpr QLatin1String kRequestInterface("org.freedesktop.portal.Request");
constexpr QLatin1String kSessionInterface("org.freedesktop.portal.Session");

// As it stands in the list that BindShortcuts takes.
struct Shortcut {
    QString id;
    QVariantMap about;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Shortcut& shortcut) {
    argument.beginStructure();
    argument << shortcut.id << shortcut.about;
    argument.endStructure();
    return argument;
}

// The library wants both ways.
const QDBusArgument& operator>>(const QDBusArgument& argument, Shortcut& shortcut) {
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.about;
    argument.endStructure();
    return argument;
}

QString ShortcutName(const KeyCombination& key) {
    return OneLine(key.name);
}

// The path of a session or request, whichever of the two types it comes in; empty if it is neither.
QString PathIn(const QVariant& value) {
    const bool isPath = value.metaType() == QMetaType::fromType<QDBusObjectPath>();
    const bool isText = value.metaType() == QMetaType::fromType<QString>();
    const QString path = isPath   ? value.value<QDBusObjectPath>().path()
                         : isText ? QDBusObjectPath(value.toString()).path()
                                  : QString();
    return path == QLatin1String("/") ? QString() : path;
}

}  // namespace

PortalKeys::PortalKeys(const Keys& keys, Reports reports)
    : keys_(keys), reports_(std::move(reports)), bus_(QDBusConnection::sessionBus()) {
    starter_.setSingleShot(true);
    QObject::connect(&starter_, &QTimer::timeout, this, &PortalKeys::Start);
}

PortalKeys::~PortalKeys() {
    EndSession();
}

void PortalKeys::Bind() {
    starter_.start(0);
}

// Responses come from many paths in turn, and each has to be listened for before its request is
// made; so all are, and OnResponse looks at the path.
void PortalKeys::Listen() {
    if (watcher_.connection().isConnected()) {
        return;
    }
    qDBusRegisterMetaType<Shortcut>();
    qDBusRegisterMetaType<QList<Shortcut>>();
    bus_.connect({}, {}, kRequestInterface, QStringLiteral("Response"), this,
                 SLOT(OnResponse(QDBusMessage)));
    bus_.connect({}, {}, kSessionInterface, QStringLiteral("Closed"), this,
                 SLOT(OnClosed(QDBusMessage)));
    bus_.connect({}, kPortalPath, kShortcutsInterface, QStringLiteral("Activated"), this,
                 SLOT(OnActivated(QDBusMessage)));
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(kPortalService);
    QObject::connect(
        &watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { OnOwner(owner); });
}

void PortalKeys::OnOwner(const QString& owner) {
    if (owner.isEmpty()) {
        Forget();
        reports_.onPortal(false);
    } else if (owner != owner_ && !isRegistering_) {
        Start();
    }
}

void PortalKeys::Start() {
    if (!bus_.isConnected()) {
        reports_.onPortal(false);
        return;
    }
    Listen();
    EndSession();
    Forget();
    Register();
}

void PortalKeys::Forget() {
    ++turn_;
    isRegistering_ = false;
    owner_.clear();
    request_.clear();
    early_.reset();
    session_.clear();
}

void PortalKeys::EndSession() {
    if (!session_.isEmpty()) {
        bus_.send(QDBusMessage::createMethodCall(owner_, session_, kSessionInterface,
                                                 QStringLiteral("Close")));
        session_.clear();
    }
}

// Portals without this interface, or that do not know the program, answer with an error, but they
// answer. Where there is none the bus does so itself.
void PortalKeys::Register() {
    isRegistering_ = true;
    Call(QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"),
         {QGuiApplication::desktopFileName(), QVariantMap()}, [this](const QDBusMessage& answer) {
             isRegistering_ = false;
             if (answer.service().startsWith(u':')) {
                 owner_ = answer.service();
                 CreateSession();
             } else {
                 reports_.onPortal(false);
             }
         });
}

void PortalKeys::CreateSession() {
    Request(QStringLiteral("CreateSession"), {},
            {{QStringLiteral("session_handle_token"), NextToken()}},
            [this] { reports_.onPortal(false); });
}

void PortalKeys::BindShortcuts() {
    QList<Shortcut> shortcuts;
    for (const auto& [id, key] : keys_) {
        QVariantMap about{{QStringLiteral("description"), ShortcutName(key)}};
        if (const std::string trigger = TriggerOf(key); !trigger.empty()) {
            about[QStringLiteral("preferred_trigger")] = QString::fromStdString(trigger);
        }
        shortcuts.append({ShortcutName(key), about});
    }
    const QString noParent;
    Request(
        QStringLiteral("BindShortcuts"),
        {QVariant::fromValue(QDBusObjectPath(session_)), QVariant::fromValue(shortcuts), noParent},
        {}, [] {});
}

QString PortalKeys::NextToken() {
    return QStringLiteral("hotkeys%1").arg(++tokens_);
}

void PortalKeys::Request(const QString& method, QVariantList arguments, QVariantMap options,
                         std::function<void()> onFailure) {
    const QString token = NextToken();
    const QString sender = bus_.baseService().mid(1).replace(u'.', u'_');
    const QString path = kPortalPath + QLatin1String("/request/") + sender + u'/' + token;
    options[QStringLiteral("handle_token")] = token;
    arguments.append(options);
    request_ = path;
    early_.reset();
    Call(kShortcutsInterface, method, arguments,
         [this, path, onFailure = std::move(onFailure)](const QDBusMessage& answer) {
             if (request_ != path) {
                 return;  // has been responded to already
             }
             if (answer.type() == QDBusMessage::ErrorMessage) {
                 request_.clear();
                 onFailure();
             } else {
                 // Old portals choose the path themselves.
                 request_ = PathIn(answer.arguments().value(0));
                 if (early_) {
                     OnResponse(*std::exchange(early_, std::nullopt));
                 }
             }
         });
}

void PortalKeys::Call(const QString& interface, const QString& method,
                      const QVariantList& arguments, OnAnswer onAnswer) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(kPortalService, kPortalPath, interface, method);
    call.setArguments(arguments);
    auto* const watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, this,
        [this, turn = turn_, onAnswer = std::move(onAnswer)](QDBusPendingCallWatcher* answered) {
            answered->deleteLater();
            if (turn == turn_) {
                onAnswer(answered->reply());
            }
        });
}

void PortalKeys::OnResponse(const QDBusMessage& message) {
    if (request_.isEmpty() || message.service() != owner_) {
        return;
    }
    if (message.path() != request_) {
        early_ = message;
        return;
    }
    request_.clear();
    const QVariantList values = message.arguments();
    if (message.signature() != QLatin1String("ua{sv}") || values[0].toUInt() != 0 ||
        !session_.isEmpty()) {
        return;  // refused, nonsense, or bound
    }
    const auto results = qdbus_cast<QVariantMap>(values[1]);
    session_ = PathIn(results.value(QStringLiteral("session_handle")));
    if (!session_.isEmpty()) {
        reports_.onPortal(true);
        BindShortcuts();
    }
}

void PortalKeys::OnActivated(const QDBusMessage& message) {
    const QVariantList values = message.arguments();
    if (message.service() != owner_ || session_.isEmpty() || values.size() < 2 ||
        PathIn(values[0]) != session_) {
        return;
    }
    for (const auto& [id, key] : keys_) {
        if (ShortcutName(key) == values[1].toString()) {
            reports_.onPress(id);
            return;
        }
    }
}

void PortalKeys::OnClosed(const QDBusMessage& message) {
    if (message.service() == owner_ && message.path() == session_) {
        request_.clear();
        session_.clear();
    }
}

}  // namespace platform::desktop
