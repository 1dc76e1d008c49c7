// A status notifier as its hosts meet it on the session's bus: an object with properties and a few
// methods. How it is announced is in status_notifier.h.
#pragma once

#include <QByteArray>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QImage>
#include <QList>
#include <QString>
#include <QVariantMap>
#include <functional>

#include "platform/driver.h"

class QDBusArgument;

namespace platform::desktop {

inline constexpr const char* kItemInterface = "org.kde.StatusNotifierItem";

/// A picture as the bus carries it, (iiay).
struct BusPicture {
    int width = 0;
    int height = 0;
    QByteArray pixels;  ///< alpha, red, green, blue of each pixel; alpha is not multiplied in
};
BusPicture ForBus(const QImage& image);

/// (sa(iiay)ss)
struct BusToolTip {
    QString iconName;
    QList<BusPicture> icon;
    QString title;        ///< plain text
    QString description;  ///< hosts read markup here
};

QDBusArgument& operator<<(QDBusArgument& argument, const BusPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusPicture& picture);
QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& tip);

class StatusItem : public QDBusVirtualObject {
  public:
    using Used = std::function<void(TrayIconUsed::Action)>;

    StatusItem(QString tip, Used onUsed);

    /// Plain text on one line.
    void SetTip(QString tip) { tip_ = std::move(tip); }

    /// What a call is answered with, its action being done.
    QDBusMessage AnswerTo(const QDBusMessage& call);

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    QVariantMap Properties() const;
    QDBusMessage AnswerProperties(const QDBusMessage& call) const;

    QString tip_;
    Used onUsed_;
};

}  // namespace platform::desktop
