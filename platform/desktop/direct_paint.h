// Sends small changes of a window straight to the X server. The toolkit's own way keeps a copy
// there and costs several times as much, 33 times a second while a title scrolls.
#pragma once

#include <QImage>
#include <QPoint>
#include <memory>

class QWindow;

namespace platform::desktop {

class DirectPaint {
  public:
    /// Null where there is no X server, or its pixels are not like ours.
    static std::unique_ptr<DirectPaint> For(const QWindow& window);
    virtual ~DirectPaint() = default;

    /// `image` must be of Format_RGB32.
    virtual void Put(const QImage& image, QPoint at) = 0;
    /// Sends what has been put, all at once; it is not waited for.
    virtual void Send() = 0;
};

}  // namespace platform::desktop
