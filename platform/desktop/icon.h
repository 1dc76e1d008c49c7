// The program's icon: pictures of the usual sizes, made of the drawings in packaging/icons.
#pragma once

#include <QIcon>
#include <QImage>
#include <string_view>
#include <vector>

namespace platform::desktop {

struct IconPicture {
    int size;              ///< pixels along each side
    std::string_view png;  ///< the file's bytes
};

/// The smallest first. May be called on any thread.
std::vector<IconPicture> IconPictures();

/// A square of that many pixels, at least one; premultiplied alpha. May be called on any thread.
QImage DrawIcon(int size);

/// On the thread of the windows alone.
QIcon MakeIcon();

}  // namespace platform::desktop
