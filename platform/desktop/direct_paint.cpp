#include "platform/desktop/direct_paint.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QWindow>
#include <algorithm>

#include "platform/desktop/x_answers.h"
#include "platform/desktop/x_pixels.h"

namespace platform::desktop {

namespace {

constexpr std::uint8_t kDepth = 24;

class XcbPaint : public DirectPaint {
  public:
    XcbPaint(xcb_connection_t* connection, xcb_window_t window)
        : connection_(connection), window_(window), context_(xcb_generate_id(connection)) {
        xcb_create_gc(connection_, context_, window_, 0, nullptr);
    }
    ~XcbPaint() override { xcb_free_gc(connection_, context_); }
    XcbPaint(const XcbPaint&) = delete;
    XcbPaint& operator=(const XcbPaint&) = delete;

    void Put(const QImage& image, QPoint at) override {
        // Within what a server takes that has no extension for large requests.
        constexpr qsizetype kMostBytes = 200'000;
        const int rows =
            static_cast<int>(std::max<qsizetype>(kMostBytes / image.bytesPerLine(), 1));
        for (int y = 0; y < image.height(); y += rows) {
            const int height = std::min(rows, image.height() - y);
            xcb_put_image(
                connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_,
                static_cast<std::uint16_t>(image.width()), static_cast<std::uint16_t>(height),
                static_cast<std::int16_t>(at.x()), static_cast<std::int16_t>(at.y() + y), 0, kDepth,
                static_cast<std::uint32_t>(height * image.bytesPerLine()), image.constScanLine(y));
        }
    }
    void Send() override { xcb_flush(connection_); }

  private:
    xcb_connection_t* connection_;
    xcb_window_t window_;
    xcb_gcontext_t context_;
};

bool HasOurVisual(xcb_connection_t* connection, xcb_window_t window) {
    const auto asked = xcb_get_window_attributes(connection, window);
    const auto answer = Owned(xcb_get_window_attributes_reply(connection, asked, nullptr));
    return answer && HasOurColours(*xcb_get_setup(connection), kDepth, answer->visual);
}

}  // namespace

std::unique_ptr<DirectPaint> DirectPaint::For(const QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr || window.devicePixelRatio() != 1) {
        return nullptr;
    }
    xcb_connection_t* connection = x11->connection();
    const auto number = static_cast<xcb_window_t>(window.winId());
    if (!HasOurPixels(*xcb_get_setup(connection), kDepth) || !HasOurVisual(connection, number)) {
        return nullptr;
    }
    return std::make_unique<XcbPaint>(connection, number);
}

}  // namespace platform::desktop
