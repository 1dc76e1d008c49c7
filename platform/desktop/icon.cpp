#include "platform/desktop/icon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

namespace platform::desktop {

QImage DrawIcon(int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = size / 16.0;
    QLinearGradient body(0, 0, 0, size);
    body.setColorAt(0, QColor(128, 128, 238));
    body.setColorAt(1, QColor(40, 46, 70));
    painter.setPen(QPen(QColor(0, 0, 128), unit));
    painter.setBrush(body);
    painter.drawRoundedRect(QRectF(unit, unit, 14 * unit, 14 * unit), 3 * unit, 3 * unit);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({{6 * unit, 4.5 * unit}, {11.5 * unit, 8 * unit}, {6 * unit, 11.5 * unit}}));
    painter.end();
    return image;
}

QIcon MakeIcon() {
    QIcon icon;
    for (const int size : kIconSizes) {
        icon.addPixmap(QPixmap::fromImage(DrawIcon(size)));
    }
    return icon;
}

}  // namespace platform::desktop
