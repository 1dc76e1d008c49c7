#include "platform/desktop/direct_paint.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QSysInfo>
#include <QWindow>
#include <algorithm>
#include <cstdlib>

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

// Whether the server counts pixels of this depth as this machine does: 32 bits in its own order.
bool HasOurPixels(const xcb_setup_t& setup) {
    const bool ownOrder = (setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) ==
                          (QSysInfo::ByteOrder == QSysInfo::LittleEndian);
    const xcb_format_t* formats = xcb_setup_pixmap_formats(&setup);
    const int count = xcb_setup_pixmap_formats_length(&setup);
    return ownOrder && std::any_of(formats, formats + count, [](const xcb_format_t& format) {
               return format.depth == kDepth && format.bits_per_pixel == 32;
           });
}

const xcb_visualtype_t* FindVisual(const xcb_setup_t& setup, xcb_visualid_t id) {
    for (auto screen = xcb_setup_roots_iterator(&setup); screen.rem > 0; xcb_screen_next(&screen)) {
        auto depth = xcb_screen_allowed_depths_iterator(screen.data);
        for (; depth.rem > 0; xcb_depth_next(&depth)) {
            const xcb_visualtype_t* visuals = xcb_depth_visuals(depth.data);
            const int count = xcb_depth_visuals_length(depth.data);
            const auto* found = std::find_if(visuals, visuals + count, [id](const auto& visual) {
                return visual.visual_id == id;
            });
            if (depth.data->depth == kDepth && found != visuals + count) {
                return found;
            }
        }
    }
    return nullptr;
}

bool HasOurVisual(xcb_connection_t* connection, xcb_window_t window) {
    const auto asked = xcb_get_window_attributes(connection, window);
    const std::unique_ptr<xcb_get_window_attributes_reply_t, decltype(&std::free)> answer(
        xcb_get_window_attributes_reply(connection, asked, nullptr), &std::free);
    if (!answer) {
        return false;
    }
    const xcb_visualtype_t* visual = FindVisual(*xcb_get_setup(connection), answer->visual);
    return visual != nullptr && visual->_class == XCB_VISUAL_CLASS_TRUE_COLOR &&
           visual->red_mask == 0xFF0000 && visual->green_mask == 0xFF00 &&
           visual->blue_mask == 0xFF;
}

}  // namespace

std::unique_ptr<DirectPaint> DirectPaint::For(const QWindow& window) {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr || window.devicePixelRatio() != 1) {
        return nullptr;
    }
    xcb_connection_t* connection = x11->connection();
    const auto number = static_cast<xcb_window_t>(window.winId());
    if (!HasOurPixels(*xcb_get_setup(connection)) || !HasOurVisual(connection, number)) {
        return nullptr;
    }
    return std::make_unique<XcbPaint>(connection, number);
}

}  // namespace platform::desktop
