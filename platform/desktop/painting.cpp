#include "platform/desktop/painting.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace platform::desktop {

namespace {

// The picture as the toolkit sees it, without a copy.
QImage Wrapped(const Surface& picture) {
    return {reinterpret_cast<const uchar*>(picture.Row(0)), picture.Width(), picture.Height(),
            picture.Width() * static_cast<qsizetype>(sizeof(Pixel)), QImage::Format_RGB32};
}

// Each pixel becomes a block of `factor` by `factor`. `part` in pixels of the picture.
QImage Blocks(const Surface& picture, const QRect& part, int factor) {
    QImage image(part.size() * factor, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* to = reinterpret_cast<Pixel*>(image.scanLine(y));
        if (y % factor != 0) {
            std::copy_n(reinterpret_cast<const Pixel*>(image.constScanLine(y - 1)), image.width(),
                        to);
            continue;
        }
        const Pixel* from = picture.Row(part.top() + y / factor) + part.left();
        for (int x = 0; x < part.width(); ++x) {
            std::fill_n(to + x * factor, factor, from[x]);
        }
    }
    return image;
}

}  // namespace

QRect ShownPart(const Rect& part, const Magnification& scale) {
    const int reach = scale.IsWhole() ? 0 : 1;
    const double factor = scale.Factor();
    const auto left = static_cast<int>(std::floor((part.left - reach) * factor));
    const auto top = static_cast<int>(std::floor((part.top - reach) * factor));
    const auto right = static_cast<int>(std::ceil((part.right + reach) * factor));
    const auto bottom = static_cast<int>(std::ceil((part.bottom + reach) * factor));
    return {left, top, right - left, bottom - top};
}

void PaintPicture(QPaintDevice& device, const Surface& picture, const QRect& shown,
                  const Magnification& scale) {
    QPainter painter(&device);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (scale.IsOne()) {
        painter.drawImage(shown.topLeft(), Wrapped(picture), shown);
        return;
    }
    if (scale.IsWhole()) {
        const auto factor = static_cast<int>(scale.Factor());
        const QRect part(shown.left() / factor, shown.top() / factor, shown.width() / factor,
                         shown.height() / factor);
        painter.drawImage(shown.topLeft(), Blocks(picture, part, factor));
        return;
    }
    // The whole picture through a window: a pixel looks the same whatever part it is painted with.
    painter.setClipRect(shown);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRect all(0, 0, scale.ToDevice(picture.Width()), scale.ToDevice(picture.Height()));
    painter.drawImage(all, Wrapped(picture));
}

}  // namespace platform::desktop
