#include "platform/desktop/painting.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace platform::desktop {

namespace {

// Each pixel becomes a block of `factor` by `factor`. `shown` begins and ends with a block.
QImage Blocks(const Surface& picture, const QRect& shown, int factor) {
    QImage image(shown.size(), QImage::Format_RGB32);
    const int width = image.width();
    for (int y = 0; y < image.height(); ++y) {
        auto* to = reinterpret_cast<Pixel*>(image.scanLine(y));
        if (y % factor != 0) {
            std::copy_n(reinterpret_cast<const Pixel*>(image.constScanLine(y - 1)), width, to);
            continue;
        }
        const Pixel* from = picture.Row((shown.top() + y) / factor) + shown.left() / factor;
        if (factor == 1) {
            std::copy_n(from, width, to);
            continue;
        }
        for (int x = 0; x < width; x += factor) {
            std::fill_n(to + x, factor, *from++);
        }
    }
    return image;
}

// Draws the whole picture through a gap: a pixel looks the same whatever part it is painted with.
QImage Smooth(const Surface& picture, const QRect& shown, const Magnification& scale) {
    const QImage wrapped(reinterpret_cast<const uchar*>(picture.Row(0)), picture.Width(),
                         picture.Height(), picture.Width() * static_cast<qsizetype>(sizeof(Pixel)),
                         QImage::Format_RGB32);
    QImage image(shown.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(-shown.topLeft());
    const QRect all(0, 0, scale.ToDevice(picture.Width()), scale.ToDevice(picture.Height()));
    painter.drawImage(all, wrapped);
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

QImage ShownPixels(const Surface& picture, const QRect& shown, const Magnification& scale) {
    return scale.IsWhole() ? Blocks(picture, shown, static_cast<int>(scale.Factor()))
                           : Smooth(picture, shown, scale);
}

}  // namespace platform::desktop
