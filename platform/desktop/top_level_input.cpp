// What a top-level window hears of pointer, keys, input methods and drops.
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/base/keys.h"
#include "platform/base/messages.h"
#include "platform/desktop/drop_paths.h"
#include "platform/desktop/held_buttons.h"
#include "platform/desktop/key_codes.h"
#include "platform/desktop/top_level.h"
#include "platform/desktop/x_server.h"
#include "platform/files/file_address.h"

namespace platform::desktop {

namespace {

Long ButtonsOf(Qt::MouseButtons buttons) {
    return ((buttons & Qt::LeftButton) != 0 ? kLeftButton : 0) |
           ((buttons & Qt::RightButton) != 0 ? kRightButton : 0) |
           ((buttons & Qt::MiddleButton) != 0 ? kMiddleButton : 0);
}

// The raw bytes: the toolkit's own reading of addresses loses names that are not UTF-8.
std::vector<std::string> PathsOf(const QMimeData& data) {
    const std::string hostName = HostName();
    auto paths = PathsOfUriList(data.data("text/uri-list").toStdString(), hostName);
    if (paths.empty()) {
        paths = PathsOfText(data.data("text/plain").toStdString(), hostName);
    }
    return paths;
}

}  // namespace

// Goes by the window's own place, so that a point of it is the same whatever the rounding of
// places under a fractional scale.
Point TopLevel::ToScreen(QPointF ptGlobal) const {
    const QPointF inside = ptGlobal - position();
    return {rect_.left + shared_.scale.ToComponent(inside.x()),
            rect_.top + shared_.scale.ToComponent(inside.y())};
}

void TopLevel::PointerSeen(const QSinglePointEvent& event, Qt::KeyboardModifiers modifiers,
                           Qt::MouseButtons held) {
    LearnPlace(event);
    const Point ptScreen = ToScreen(event.globalPosition());
    const Long shift = ShiftOf(modifiers);
    ReleaseAllBut(shared_, ButtonsOf(held), ptScreen, shift);
    shared_.pointer.ptScreen = ptScreen;
    shared_.pointer.inside = true;
    shared_.events.Push(PointerMoved{Told(ptScreen), shift});
}

void TopLevel::mouseMoveEvent(QMouseEvent* event) {
    PointerSeen(*event, event->modifiers(), event->buttons());
}

void TopLevel::Button(const QMouseEvent& event, bool down) {
    const Long button = ButtonsOf(event.button());
    if (button == 0) {
        return;
    }
    const Point ptScreen = ToScreen(event.globalPosition());
    PointerRecord& pointer = shared_.pointer;
    if (!down && (pointer.held & button) == 0) {
        return;  // told already
    }
    const Point told = Told(ptScreen);
    pointer.held = down ? pointer.held | button : pointer.held & ~button;
    pointer.ptScreen = ptScreen;
    shared_.events.Push(ButtonChanged{told, button, down, ShiftOf(event.modifiers())});
}

void TopLevel::mousePressEvent(QMouseEvent* event) {
    Button(*event, true);
}

void TopLevel::mouseReleaseEvent(QMouseEvent* event) {
    Button(*event, false);
}

void TopLevel::wheelEvent(QWheelEvent* event) {
    // With Alt held the toolkit turns a vertical wheel into a horizontal one.
    const QPoint delta = event->angleDelta();
    const bool turned = (event->modifiers() & Qt::AltModifier) != 0 && delta.y() == 0;
    const Long step = turned ? delta.x() : delta.y();
    if ((wheel_ > 0 && step < 0) || (wheel_ < 0 && step > 0)) {
        wheel_ = 0;
    }
    wheel_ += step;
    if (const Long notches = wheel_ / WHEEL_DELTA) {
        wheel_ %= WHEEL_DELTA;
        shared_.events.Push(WheelTurned{Told(ToScreen(event->globalPosition())), notches,
                                        ShiftOf(event->modifiers())});
    }
}

void TopLevel::keyPressEvent(QKeyEvent* event) {
    const Long code = KeyCodeOf(*event);
    if (code != 0) {
        keysDown_.insert(code);
        shared_.events.Push(KeyChanged{code, ShiftAfter(*event, code), true});
    }
    if (std::u16string text = TypedText(*event, code); !text.empty()) {
        shared_.events.Push(TextTyped{std::move(text)});
    }
}

void TopLevel::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat()) {
        return;  // the key is still held
    }
    if (const Long code = KeyCodeOf(*event)) {
        keysDown_.erase(code);
        shared_.events.Push(KeyChanged{code, ShiftAfter(*event, code), false});
    }
}

// Nobody will tell us when these go up.
void TopLevel::focusOutEvent(QFocusEvent* /*event*/) {
    for (const Long code : std::exchange(keysDown_, {})) {
        shared_.events.Push(KeyChanged{code, 0, false});
    }
    ReportComposed({});
    if (popup_ == PopupKind::kMenu && shared_.onWayland && StandsAlone()) {
        shared_.events.Push(InputLost{});
    }
}

// Where a compositor gives the keyboard to a window that is none of the X server's, it may be the
// only word of a press there.
bool TopLevel::nativeEvent(const QByteArray& /*kind*/, void* message, qintptr* /*result*/) {
    if (shared_.isGrabbed && shared_.isXOnWayland && TellsOfLostKeyboard(message)) {
        shared_.events.Push(InputLost{});
    }
    return false;
}

void TopLevel::InputMethodAsks(QInputMethodQueryEvent& query) const {
    if ((query.queries() & Qt::ImEnabled) != 0) {
        query.setValue(Qt::ImEnabled, shared_.input.has_value());
    }
    if ((query.queries() & Qt::ImCursorRectangle) != 0) {
        const bool isHere = shared_.input && shared_.input->window == handle_;
        query.setValue(Qt::ImCursorRectangle,
                       isHere ? shared_.scale.ToDevice(shared_.input->caret) : QRect());
    }
    query.accept();
}

void TopLevel::ReportComposed(TextComposed composed) {
    const bool composing = !composed.text.empty();
    if (composing || shared_.composing) {
        shared_.composing = composing;
        shared_.events.Push(composing ? std::move(composed) : TextComposed{});
    }
}

// Where nobody writes any more, a method may still be late to say something.
void TopLevel::Composed(const QInputMethodEvent& event) {
    if (!shared_.input || shared_.ignoresMethods) {
        return;
    }
    if (const QString text = event.commitString(); !text.isEmpty()) {
        ReportComposed({});
        shared_.events.Push(TextTyped{text.toStdU16String()});
    }
    TextComposed composed{event.preeditString().toStdU16String(), std::nullopt};
    composed.caret = composed.text.size();
    for (const QInputMethodEvent::Attribute& part : event.attributes()) {
        if (part.type == QInputMethodEvent::Cursor) {
            const auto place = static_cast<std::size_t>(std::max(part.start, 0));
            composed.caret = part.length != 0 ? std::optional(place) : std::nullopt;
        }
    }
    ReportComposed(std::move(composed));
}

void TopLevel::Dragged(QDropEvent& event) {
    const QMimeData* data = event.mimeData();
    const bool offersFiles = data->hasFormat("text/uri-list") || data->hasFormat("text/plain");
    // Only ever a copy: for a move the source would delete the files.
    if (offersFiles && (event.possibleActions() & Qt::CopyAction) != 0) {
        event.setDropAction(Qt::CopyAction);
        event.accept();
    } else {
        event.ignore();
    }
}

void TopLevel::Dropped(QDropEvent& event) {
    Dragged(event);
    if (!event.isAccepted()) {
        return;
    }
    std::vector<std::string> paths = PathsOf(*event.mimeData());
    if (!paths.empty() && shared_.onDrop) {
        shared_.onDrop({handle_, {event.position().x(), event.position().y()}}, std::move(paths));
    }
}

Point TopLevel::PlaceOf(DropPoint point) const {
    return ToScreen(position() + QPointF(point.x, point.y));
}

bool TopLevel::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::Enter: {
            // The event itself does not know what is held: a popup opens under a held button.
            const auto* enter = static_cast<QEnterEvent*>(event);
            PointerSeen(*enter, QGuiApplication::keyboardModifiers(),
                        QGuiApplication::mouseButtons());
            return true;
        }
        case QEvent::Leave:
            shared_.pointer.inside = false;
            shared_.events.Push(PointerLeft{});
            return true;
        case QEvent::Close:
            // A guest is no reason for a program to stay. The window itself does not go.
            return shared_.isQuitting() || QWindow::event(event);
        case QEvent::WindowStateChange:
            StateChanged();
            return QWindow::event(event);
        case QEvent::DragEnter:
        case QEvent::DragMove:
            Dragged(*static_cast<QDropEvent*>(event));
            return true;
        case QEvent::Drop:
            Dropped(*static_cast<QDropEvent*>(event));
            return true;
        case QEvent::InputMethodQuery:
            InputMethodAsks(*static_cast<QInputMethodQueryEvent*>(event));
            return true;
        case QEvent::InputMethod:
            Composed(*static_cast<QInputMethodEvent*>(event));
            return true;
        default:
            return QWindow::event(event);
    }
}

}  // namespace platform::desktop
