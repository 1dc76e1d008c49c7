#include "platform/desktop/icon.h"

#include <QPixmap>
#include <algorithm>

namespace platform::desktop {

namespace {

QImage Decoded(const IconPicture& picture) {
    const auto* const bytes =
        static_cast<const uchar*>(static_cast<const void*>(picture.png.data()));
    return QImage::fromData(bytes, static_cast<int>(picture.png.size()), "PNG")
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace

QImage DrawIcon(int size) {
    const std::vector<IconPicture> pictures = IconPictures();
    const auto found =
        std::find_if(pictures.begin(), pictures.end(),
                     [size](const IconPicture& picture) { return picture.size >= size; });
    const QImage image = Decoded(found != pictures.end() ? *found : pictures.back());
    return image.width() == size
               ? image
               : image.scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QIcon MakeIcon() {
    QIcon icon;
    for (const IconPicture& picture : IconPictures()) {
        icon.addPixmap(QPixmap::fromImage(Decoded(picture)));
    }
    return icon;
}

}  // namespace platform::desktop
