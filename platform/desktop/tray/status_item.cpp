#include "platform/desktop/tray/status_item.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QtEndian>
#include <utility>

#include "platform/desktop/icon.h"

namespace platform::desktop {

namespace {

constexpr const char* kPropertiesOf = "org.freedesktop.DBus.Properties";

// There is no menu among the properties: then hosts leave the right button to us.
constexpr const char* kMembers = R"xml(<interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/>
  <property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="WindowId" type="i" access="read"/>
  <property name="IconName" type="s" access="read"/>
  <property name="IconPixmap" type="a(iiay)" access="read"/>
  <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <method name="Activate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="ContextMenu"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="SecondaryActivate"><arg type="i" direction="in"/><arg type="i" direction="in"/></method>
  <method name="Scroll"><arg type="i" direction="in"/><arg type="s" direction="in"/></method>
  <signal name="NewTitle"/>
  <signal name="NewToolTip"/>
</interface>
)xml";

}  // namespace

BusPicture ForBus(const QImage& image) {
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32);
    BusPicture picture{straight.width(), straight.height(), {}};
    const qsizetype count = qsizetype{straight.width()} * straight.height();
    picture.pixels.resize(count * qsizetype{sizeof(quint32)});
    // Rows of whole pixels of 32 bits leave no gaps between them.
    qToBigEndian<quint32>(straight.constBits(), count, picture.pixels.data());
    return picture;
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusPicture& picture) {
    argument.beginStructure();
    argument << picture.width << picture.height << picture.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusPicture& picture) {
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& tip) {
    argument.beginStructure();
    argument << tip.iconName << tip.icon << tip.title << tip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& tip) {
    argument.beginStructure();
    argument >> tip.iconName >> tip.icon >> tip.title >> tip.description;
    argument.endStructure();
    return argument;
}

StatusItem::StatusItem(QString tip, Used onUsed)
    : tip_(std::move(tip)), onUsed_(std::move(onUsed)) {
    qDBusRegisterMetaType<BusPicture>();
    qDBusRegisterMetaType<QList<BusPicture>>();
    qDBusRegisterMetaType<BusToolTip>();
}

QVariantMap StatusItem::Properties() const {
    QList<BusPicture> pictures;
    for (const int size : {16, 22, 24, 32, 48}) {
        pictures.append(ForBus(DrawIcon(size)));
    }
    return {{"Category", "ApplicationStatus"},
            {"Id", QCoreApplication::applicationName()},
            {"Title", tip_},
            {"Status", "Active"},
            {"WindowId", 0},
            {"IconName", ""},
            {"IconPixmap", QVariant::fromValue(pictures)},
            {"ToolTip", QVariant::fromValue(BusToolTip{{}, {}, tip_, {}})},
            {"ItemIsMenu", false}};
}

QDBusMessage StatusItem::AnswerProperties(const QDBusMessage& call) const {
    const QString interface = call.arguments().value(0).toString();
    const QString name = call.arguments().value(1).toString();
    if (call.member() == "Set") {
        return call.createErrorReply(QDBusError::PropertyReadOnly, name);
    }
    const QVariantMap all =
        interface.isEmpty() || interface == kItemInterface ? Properties() : QVariantMap();
    if (call.member() == "GetAll") {
        return call.createReply(all);
    }
    const auto found = all.find(name);
    if (call.member() != "Get" || found == all.end()) {
        return call.createErrorReply(QDBusError::UnknownProperty, name);
    }
    return call.createReply(QVariant::fromValue(QDBusVariant(*found)));
}

QDBusMessage StatusItem::AnswerTo(const QDBusMessage& call) {
    if (call.interface() == kPropertiesOf) {
        return AnswerProperties(call);
    }
    const QString member = call.member();
    if (member == "Activate") {
        onUsed_(TrayIconUsed::Action::kOpen);
    } else if (member == "ContextMenu") {
        onUsed_(TrayIconUsed::Action::kMenu);
    } else if (member != "SecondaryActivate" && member != "Scroll") {
        return call.createErrorReply(QDBusError::UnknownMethod, member);
    }
    return call.createReply();
}

QString StatusItem::introspect(const QString& /*path*/) const {
    return kMembers;
}

// What is left to the library: what every object on the bus can do.
bool StatusItem::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const QString interface = message.interface();
    if (!interface.isEmpty() && interface != kItemInterface && interface != kPropertiesOf) {
        return false;
    }
    const QDBusMessage answer = AnswerTo(message);
    if (message.isReplyRequired()) {
        connection.send(answer);
    }
    return true;
}

}  // namespace platform::desktop
