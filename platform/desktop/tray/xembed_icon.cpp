#include "platform/desktop/tray/xembed_icon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QStyleHints>
#include <algorithm>
#include <string>
#include <utility>

#include "platform/desktop/icon.h"
#include "platform/desktop/x_answers.h"
#include "platform/desktop/x_pixels.h"

namespace platform::desktop {

namespace {

constexpr std::uint16_t kFirstSize = 22;  // until the tray gives another
constexpr int kLargestIcon = 128;
constexpr std::uint8_t kOpaque = 24;
constexpr std::uint8_t kAlpha = 32;

template <class Event>
const Event& As(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

// Where the toolkit is on another kind of display, an X server that is there as well has no tray
// that the user sees.
bool IsOnXServer() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr && x11->connection() != nullptr;
}

}  // namespace

bool DoublePress::Press(std::uint32_t time, std::uint32_t within) {
    const bool second = former_ && time - *former_ <= within;
    former_ = second ? std::nullopt : std::optional(time);
    return second;
}

XembedIcon::XembedIcon(WaitLoop& loop, QString tip, Used onUsed, std::function<void()> onPlaced)
    : loop_(loop),
      tip_(std::move(tip)),
      onUsed_(std::move(onUsed)),
      onPlaced_(std::move(onPlaced)) {}

void XembedIcon::Begin() {
    if (!IsOnXServer()) {
        return;
    }
    Connect();
    if (connection_ != nullptr) {
        LookForTray();
        Drain();
    }
}

void XembedIcon::Connect() {
    server_ = XConnection::Open(loop_, [this] { Drain(); });
    if (!server_) {
        return;
    }
    connection_ = server_->Get();
    screen_ = &server_->Screen();
    const std::string number = std::to_string(server_->ScreenNumber());
    const std::array<std::string, kNames> names{"_NET_SYSTEM_TRAY_S" + number,
                                                "MANAGER",
                                                "_NET_SYSTEM_TRAY_OPCODE",
                                                "_NET_SYSTEM_TRAY_VISUAL",
                                                "_XEMBED",
                                                "_XEMBED_INFO",
                                                "_NET_WM_NAME",
                                                "UTF8_STRING"};
    std::transform(names.begin(), names.end(), atoms_.begin(), [this](const std::string& name) {
        return AtomOf(connection_, name, IfUnknown::kMake);
    });
    // With this a tray that begins is told.
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, screen_->root, XCB_CW_EVENT_MASK, &events);
}

// Whatever asks the server something may read events on the way, which nothing announces then. So
// this comes after all of that.
void XembedIcon::Drain() {
    while (const auto event = Owned(xcb_poll_for_event(connection_))) {
        Handle(*event);
    }
    xcb_flush(connection_);
    if (server_->IsBroken()) {
        server_->StopWatching();
        SetPlaced(false);
    }
}

void XembedIcon::Handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_CLIENT_MESSAGE:
            Told(As<xcb_client_message_event_t>(event));
            break;
        case XCB_REPARENT_NOTIFY: {
            const auto& moved = As<xcb_reparent_notify_event_t>(event);
            if (moved.window == window_) {
                inTray_ = moved.parent != screen_->root;
                if (!inTray_) {
                    Undock();  // else it would lie about on the screen
                }
            }
            break;
        }
        case XCB_MAP_NOTIFY:
            SetPlaced(placed_ || (inTray_ && As<xcb_map_notify_event_t>(event).window == window_));
            break;
        case XCB_DESTROY_NOTIFY: {
            const xcb_window_t gone = As<xcb_destroy_notify_event_t>(event).window;
            if (gone == window_) {
                window_ = XCB_NONE;
                Undock();
            } else if (gone == tray_) {
                LookForTray();
            }
            break;
        }
        case XCB_CONFIGURE_NOTIFY: {
            const auto& change = As<xcb_configure_notify_event_t>(event);
            if (change.window == window_) {
                width_ = change.width;
                height_ = change.height;
            }
            break;
        }
        case XCB_EXPOSE:
            if (As<xcb_expose_event_t>(event).count == 0) {
                Draw();
            }
            break;
        case XCB_BUTTON_PRESS:
            Pressed(As<xcb_button_press_event_t>(event));
            break;
        case XCB_BUTTON_RELEASE:
            Released(As<xcb_button_release_event_t>(event));
            break;
        default:
            break;
    }
}

void XembedIcon::Told(const xcb_client_message_event_t& message) {
    constexpr std::uint32_t kEmbedded = 0;
    const std::uint32_t second = message.data.data32[1];
    if (message.type == atoms_[kManager] && second == atoms_[kTray]) {
        LookForTray();
    } else if (message.type == atoms_[kXembed] && message.window == window_ &&
               second == kEmbedded) {
        SetPlaced(inTray_);
    }
}

void XembedIcon::Pressed(const xcb_button_press_event_t& press) {
    if (press.detail != XCB_BUTTON_INDEX_1) {
        presses_.Forget();
        return;
    }
    const int within = QGuiApplication::styleHints()->mouseDoubleClickInterval();
    if (presses_.Press(press.time, static_cast<std::uint32_t>(within))) {
        onUsed_(TrayIconUsed::Action::kOpen);
    }
}

void XembedIcon::Released(const xcb_button_release_event_t& release) {
    const bool inside = release.event_x >= 0 && release.event_x < width_ && release.event_y >= 0 &&
                        release.event_y < height_;
    if (release.detail == XCB_BUTTON_INDEX_3 && inside) {
        onUsed_(TrayIconUsed::Action::kMenu);
    }
}

// The server is held meanwhile: a tray that ends in between would never be heard of.
void XembedIcon::LookForTray() {
    Undock();
    xcb_grab_server(connection_);
    const auto asked = xcb_get_selection_owner(connection_, atoms_[kTray]);
    const auto answer = Owned(xcb_get_selection_owner_reply(connection_, asked, nullptr));
    tray_ = answer ? answer->owner : xcb_window_t{XCB_NONE};
    if (tray_ != XCB_NONE) {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, tray_, XCB_CW_EVENT_MASK, &events);
    }
    xcb_ungrab_server(connection_);
    xcb_flush(connection_);
    if (tray_ != XCB_NONE) {
        Dock();
    }
}

void XembedIcon::Dock() {
    constexpr std::uint32_t kRequestDock = 0;
    if (!MakeWindow()) {
        return;
    }
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = tray_;
    request.type = atoms_[kOpcode];
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = kRequestDock;
    request.data.data32[2] = window_;
    xcb_send_event(connection_, 0, tray_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&request));
}

void XembedIcon::Undock() {
    if (context_ != XCB_NONE) {
        xcb_free_gc(connection_, std::exchange(context_, XCB_NONE));
    }
    if (window_ != XCB_NONE) {
        xcb_destroy_window(connection_, std::exchange(window_, XCB_NONE));
    }
    if (colours_ != XCB_NONE) {
        xcb_free_colormap(connection_, std::exchange(colours_, XCB_NONE));
    }
    inTray_ = false;
    presses_.Forget();
    SetPlaced(false);
}

void XembedIcon::SetPlaced(bool placed) {
    if (std::exchange(placed_, placed) != placed) {
        onPlaced_();
    }
}

// What the tray wants its icons to be made of; it need not want anything.
xcb_visualid_t XembedIcon::VisualOfTray() const {
    const auto asked =
        xcb_get_property(connection_, 0, tray_, atoms_[kVisual], XCB_ATOM_VISUALID, 0, 1);
    const auto answer = Owned(xcb_get_property_reply(connection_, asked, nullptr));
    if (!answer || answer->format != 32 || answer->value_len != 1) {
        return screen_->root_visual;
    }
    return *static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get()));
}

// False if nothing can be drawn here in a way that the tray shows.
bool XembedIcon::MakeWindow() {
    const xcb_setup_t& setup = *xcb_get_setup(connection_);
    xcb_visualid_t visual = VisualOfTray();
    depth_ = kAlpha;
    if (!HasOurColours(setup, kAlpha, visual)) {
        depth_ = kOpaque;
        visual = screen_->root_visual;
    }
    if (!HasOurPixels(setup, depth_) || !HasOurColours(setup, depth_, visual)) {
        return false;
    }
    colours_ = xcb_generate_id(connection_);
    xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colours_, screen_->root, visual);
    // The tray's own background stands for the missing alpha.
    const std::uint32_t background =
        depth_ == kAlpha ? XCB_BACK_PIXMAP_NONE : XCB_BACK_PIXMAP_PARENT_RELATIVE;
    const std::array<std::uint32_t, 4> values{
        background, 0,
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS |
            XCB_EVENT_MASK_BUTTON_RELEASE,
        colours_};
    window_ = xcb_generate_id(connection_);
    width_ = height_ = kFirstSize;
    xcb_create_window(
        connection_, depth_, window_, screen_->root, 0, 0, kFirstSize, kFirstSize, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
        values.data());
    context_ = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context_, window_, 0, nullptr);
    constexpr std::array<std::uint32_t, 2> kInfo{0, 1};  // the version; wants to be mapped
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atoms_[kXembedInfo],
                        atoms_[kXembedInfo], 32, kInfo.size(), kInfo.data());
    NameWindow();
    return true;
}

void XembedIcon::NameWindow() {
    const auto set = [this](xcb_atom_t name, xcb_atom_t type, const QByteArray& text) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, name, type, 8,
                            static_cast<std::uint32_t>(text.size()), text.constData());
    };
    const QByteArray program = QCoreApplication::applicationName().toUtf8() + '\0';
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, program + program);
    set(atoms_[kNetWmName], atoms_[kUtf8], tip_.toUtf8());
    set(XCB_ATOM_WM_NAME, atoms_[kUtf8], tip_.toUtf8());
}

void XembedIcon::SetTip(const QString& tip) {
    tip_ = tip;
    if (window_ != XCB_NONE) {
        NameWindow();
        Drain();
    }
}

// In the middle, as large as there is room.
void XembedIcon::Draw() {
    const int size = std::min({width_, height_, kLargestIcon});
    if (window_ == XCB_NONE || size < 1) {
        return;
    }
    const auto side = static_cast<std::uint16_t>(size);
    const auto left = static_cast<std::int16_t>((width_ - size) / 2);
    const auto top = static_cast<std::int16_t>((height_ - size) / 2);
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    xcb_clear_area(connection_, 0, window_, 0, 0, 0, 0);
    if (depth_ == kOpaque) {
        const auto asked = xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, left, top,
                                         side, side, ~0U);
        const auto answer = Owned(xcb_get_image_reply(connection_, asked, nullptr));
        if (answer && xcb_get_image_data_length(answer.get()) >= size * size * 4) {
            const QImage behind(xcb_get_image_data(answer.get()), size, size, QImage::Format_RGB32);
            picture = behind.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        }
    }
    QPainter(&picture).drawImage(0, 0, DrawIcon(size));
    xcb_put_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_, side, side, left, top,
                  0, depth_, static_cast<std::uint32_t>(picture.sizeInBytes()),
                  picture.constBits());
}

}  // namespace platform::desktop
