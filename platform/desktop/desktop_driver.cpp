#include "platform/desktop/desktop_driver.h"

#include <QCursor>
#include <QInputMethod>
#include <QStyleHints>
#include <algorithm>
#include <random>
#include <thread>
#include <utility>

#include "platform/desktop/desktop_driver_parts.h"
#include "platform/desktop/display.h"
#include "platform/desktop/qt_text.h"
#include "platform/desktop/xspf.h"

namespace platform {

using namespace desktop;

std::optional<std::string> DesktopDriver::WhyNoDisplay() {
    return DisplayFault();
}

std::optional<std::vector<std::string>> DesktopDriver::ReadXspf(std::string_view bytes) {
    return LocationsOfXspf(bytes);
}

DesktopDriver::DesktopDriver(ProgramIdentity program, std::optional<double> scale)
    : parts_(std::make_unique<Parts>(program, scale)) {}

DesktopDriver::~DesktopDriver() = default;

void DesktopDriver::SetActivationToken(const std::string& token) {
    if (!parts_->IsLost()) {
        desktop::SetActivationToken(token);
    }
}

void DesktopDriver::WatchSessionEnd(std::function<void()> onEnd) {
    parts_->application.WatchSessionEnd(std::move(onEnd));
}

void DesktopDriver::WatchDisplay(std::function<void()> onLost) {
    parts_->application.WatchDisplay(std::move(onLost));
}

void DesktopDriver::SetFetcher(Fetcher fetcher) {
    parts_->fetcher = std::move(fetcher);
}

SessionBus& DesktopDriver::Bus() {
    return parts_->bus;
}

void DesktopDriver::TellBy(std::function<void(const std::string&)> notice) {
    parts_->notice = notice;
    parts_->drops.TellBy(std::move(notice));
}

void DesktopDriver::CountOnceWhileWaiting(std::vector<Long> keyCodes) {
    parts_->shared.events.CountOnce(std::move(keyCodes));
}

Millis DesktopDriver::Now() const {
    const auto passed = std::chrono::steady_clock::now() - parts_->start;
    return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
}

void DesktopDriver::WaitUntil(std::optional<Millis> deadline) {
    parts_->application.LookForDisplay();
    if (parts_->IsLost()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(deadline.value_or(0) - Now()));
        return;
    }
    parts_->BeforeWait();
    parts_->loop.Turn(parts_->LongestWait(Now(), deadline));
    if (!parts_->IsLost()) {
        parts_->buttons.Check(Now());
    }
}

void DesktopDriver::ServeProgram(std::function<std::optional<Millis>()> takeTurn) {
    if (!takeTurn) {
        parts_->loop.ServeProgram({});
        return;
    }
    parts_->loop.ServeProgram([this, takeTurn = std::move(takeTurn)]() -> std::optional<Millis> {
        parts_->application.LookForDisplay();
        if (parts_->IsLost()) {
            return std::nullopt;
        }
        parts_->buttons.Check(Now());
        parts_->BeforeWait();
        const std::optional<Millis> next = takeTurn();
        return parts_->IsLost() ? std::nullopt : parts_->LongestWait(Now(), next);
    });
}

// Timers that move something on the screen come evenly; slower ones may be late and join them.
Millis DesktopDriver::Lateness(Long period) const {
    constexpr Long kSlowest = 30;  // of what moves
    return period > kSlowest ? kSlowest : 0;
}

std::optional<DriverEvent> DesktopDriver::NextEvent() {
    return parts_->shared.events.Take();
}

void DesktopDriver::Watch(int descriptor, std::function<void()> onReadable) {
    if (!parts_->IsLost()) {
        parts_->loop.Watch(descriptor, std::move(onReadable));
    }
}

std::uint64_t DesktopDriver::RandomSeed() {
    std::random_device source;
    return (std::uint64_t{source()} << 32) | source();
}

Size DesktopDriver::ScreenSize() const {
    return parts_->IsLost() ? Size{} : parts_->screens.GetSize();
}

Long DesktopDriver::Density() const {
    return parts_->density;
}

Rect DesktopDriver::WorkArea() const {
    return parts_->IsLost() ? Rect{} : parts_->screens.WorkArea();
}

Rect DesktopDriver::WorkAreaAt(Point ptScreen) const {
    return parts_->IsLost() ? Rect{} : parts_->screens.WorkAreaAt(ptScreen);
}

Point DesktopDriver::Pointer() const {
    const PointerRecord& pointer = parts_->shared.pointer;
    if (pointer.inside || pointer.held != 0 || parts_->IsLost() || parts_->shared.onWayland) {
        return pointer.ptScreen;  // on Wayland nobody knows more
    }
    const QPoint place = QCursor::pos();
    const Magnification& scale = parts_->shared.scale;
    return {scale.ToComponent(place.x()), scale.ToComponent(place.y())};
}

bool DesktopDriver::PlacesWindows() const {
    return !parts_->shared.onWayland;
}

void DesktopDriver::CreateTopLevel(Handle window) {
    if (parts_->IsLost()) {
        return;
    }
    parts_->windows[window] = std::make_unique<TopLevel>(window, parts_->shared);
}

void DesktopDriver::DestroyTopLevel(Handle window) {
    if (parts_->Find(window) != nullptr) {
        parts_->windows.erase(window);
    }
}

void DesktopDriver::SetTopLevelVisible(Handle window, bool visible) {
    if (TopLevel* found = parts_->Find(window)) {
        found->SetVisibility(visible);
    }
}

void DesktopDriver::SetTopLevelRect(Handle window, const Rect& rect) {
    if (TopLevel* found = parts_->Find(window)) {
        found->SetRect(rect);
    }
}

void DesktopDriver::SetTopLevelTitle(Handle window, std::u16string_view title) {
    if (TopLevel* found = parts_->Find(window)) {
        found->setTitle(Caption(title));
    }
}

void DesktopDriver::SetTopLevelTopMost(Handle window, bool topMost) {
    if (TopLevel* found = parts_->Find(window)) {
        found->SetTopMost(topMost);
    }
}

void DesktopDriver::SetTopLevelMinimised(Handle window, bool minimised) {
    if (TopLevel* found = parts_->Find(window)) {
        found->SetMinimised(minimised);
    }
}

void DesktopDriver::ActivateTopLevel(Handle window) {
    if (TopLevel* found = parts_->Find(window)) {
        found->Activate();
    }
}

void DesktopDriver::SetTopLevelPopup(Handle window, Handle owner, PopupKind kind) {
    if (TopLevel* found = parts_->Find(window)) {
        found->SetPopup(parts_->Find(owner), kind);
    }
}

void DesktopDriver::GrabInput(Handle popup) {
    parts_->grabbing = popup;
    if (TopLevel* found = parts_->Find(popup)) {
        found->GrabInput();
    }
}

void DesktopDriver::ReleaseInput() {
    if (TopLevel* found = parts_->Find(std::exchange(parts_->grabbing, 0))) {
        found->ReleaseInput();
    }
}

bool DesktopDriver::IsSeen(Handle window) const {
    const TopLevel* const found = parts_->Find(window);
    return found == nullptr || found->IsSeen();
}

void DesktopDriver::ShowPicture(Handle window, const Surface& picture,
                                std::span<const Rect> changed) {
    if (TopLevel* found = parts_->Find(window)) {
        found->ShowPicture(picture, changed);
    }
}

void DesktopDriver::SetTextInput(const std::optional<TextInput>& input) {
    Shared& shared = parts_->shared;
    const bool turns = input.has_value() != shared.input.has_value();
    shared.input = input;
    if (parts_->IsLost()) {
        return;
    }
    QWindow* const window = parts_->FocusWindow();
    if (window == nullptr) {
        return;
    }
    if (turns) {
        // As if something else within the window had the focus now: that is when input methods ask
        // whether they are wanted, and begin or end in earnest.
        emit window->focusObjectChanged(window->focusObject());
    } else {
        QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle);
    }
}

// Input methods answer by handing over what they have.
void DesktopDriver::EndComposing() {
    Shared& shared = parts_->shared;
    shared.composing = false;
    if (!parts_->IsLost() && parts_->FocusWindow() != nullptr) {
        shared.ignoresMethods = true;
        QGuiApplication::inputMethod()->commit();
        QGuiApplication::inputMethod()->reset();
        shared.ignoresMethods = false;
    }
}

void DesktopDriver::KeepShown() {
    parts_->application.LookForDisplay();
    if (!parts_->IsLost()) {
        parts_->loop.TurnAside(0);
    }
}

Millis DesktopDriver::DoubleClickTime() const {
    return parts_->IsLost() ? Driver::DoubleClickTime()
                            : QGuiApplication::styleHints()->mouseDoubleClickInterval();
}

}  // namespace platform
