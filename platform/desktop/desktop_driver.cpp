#include "platform/desktop/desktop_driver.h"

#include <QClipboard>
#include <QCursor>
#include <QDesktopServices>
#include <QInputMethod>
#include <QStyleHints>
#include <QUrl>
#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <utility>

#include "platform/base/text.h"
#include "platform/desktop/application.h"
#include "platform/desktop/associations/associations.h"
#include "platform/desktop/display.h"
#include "platform/desktop/download.h"
#include "platform/desktop/drives.h"
#include "platform/desktop/held_buttons.h"
#include "platform/desktop/hotkeys/hot_keys.h"
#include "platform/desktop/network.h"
#include "platform/desktop/qt_text.h"
#include "platform/desktop/screens.h"
#include "platform/desktop/text_engine.h"
#include "platform/desktop/top_level.h"
#include "platform/desktop/tray/tray_icons.h"
#include "platform/desktop/wait_loop.h"

namespace platform {

using namespace desktop;

// The order is that of life: the application before all, the windows last.
struct DesktopDriver::Parts {
    Parts(const ProgramIdentity& program, std::optional<double> scale)
        : application(program.id),
          shared{Magnification(scale.value_or(0) > 0 ? *scale : ScaleOfScreen()), {}, {}},
          screens(
              shared.scale, [this] { shared.events.Push(WorkAreaChanged{}); },
              [this](const QRegion& lost) { ScreenLost(lost); }),
          trayIcons(loop, shared.events,
                    [this](Handle window, bool inTray) {
                        if (TopLevel* found = Find(window)) {
                            found->KeepEntry(!inTray);
                        }
                    }),
          associations(program) {}

    /// Null if there is none, and when the display has gone: then whatever is said to a window
    /// would end the process before the list is saved.
    TopLevel* Find(Handle window) const {
        const auto found = windows.find(window);
        return found == windows.end() || application.HasLostDisplay() ? nullptr
                                                                      : found->second.get();
    }

    // Brings windows back that the screens no longer show as they did. Hanging over an edge that
    // was there before is allowed.
    void ScreenLost(const QRegion& lost) {
        for (const auto& window : windows) {
            if (window.second->isVisible() && lost.intersects(window.second->Place())) {
                window.second->ComeToScreen(Shown::kWhole);
            }
        }
    }

    // The same after a drag: screens of different sizes leave places between them that none shows.
    void BringBack() {
        for (const auto& window : windows) {
            if (window.second->isVisible()) {
                window.second->ComeToScreen(Shown::kEnough);
            }
        }
    }

    // Once the first picture is on the screen, or is late: it waits for nothing that can come after
    // it. Answers how long until then.
    std::optional<Millis> BeginHotKeys(Millis now) {
        constexpr Millis kLate = 500;
        if (hotKeys.HasBegun() || application.HasLostDisplay()) {
            return std::nullopt;
        }
        if (!shared.hasShownPicture && now < kLate) {
            return kLate - now;
        }
        hotKeys.Begin();
        return std::nullopt;
    }

    Application application;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    Shared shared;
    Screens screens;
    HeldButtons buttons{shared};
    WaitLoop loop;
    HotKeys hotKeys{loop, shared.events};
    TrayIcons trayIcons;
    Associations associations;
    Fetcher fetcher;
    std::set<std::u16string, std::less<>> forgotten;  ///< pages of which no copy will do
    TextEngine text;
    std::map<Handle, std::unique_ptr<TopLevel>> windows;
    Handle grabbing = 0;  ///< the popup that has all input
};

std::optional<std::string> DesktopDriver::WhyNoDisplay() {
    return DisplayFault();
}

DesktopDriver::DesktopDriver(ProgramIdentity program, std::optional<double> scale)
    : parts_(std::make_unique<Parts>(program, scale)) {}

DesktopDriver::~DesktopDriver() = default;

void DesktopDriver::WatchSessionEnd(std::function<void()> onEnd) {
    parts_->application.WatchSessionEnd(std::move(onEnd));
}

void DesktopDriver::SetFetcher(Fetcher fetcher) {
    parts_->fetcher = std::move(fetcher);
}

void DesktopDriver::CountOnceWhileWaiting(std::vector<Long> keyCodes) {
    parts_->shared.events.CountOnce(std::move(keyCodes));
}

Millis DesktopDriver::Now() const {
    const auto passed = std::chrono::steady_clock::now() - parts_->start;
    return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
}

void DesktopDriver::WaitUntil(std::optional<Millis> deadline) {
    HeldButtons& buttons = parts_->buttons;
    if (!parts_->application.HasLostDisplay() && buttons.AllLetGo()) {
        parts_->BringBack();
    }
    std::optional<Millis> longest = parts_->BeginHotKeys(Now());
    if (!parts_->shared.events.IsEmpty()) {
        longest = 0;
    } else if (deadline) {
        longest = std::min(longest.value_or(*deadline - Now()), *deadline - Now());
    }
    if (const auto patience = buttons.Patience(Now())) {
        longest = std::min(longest.value_or(*patience), *patience);
    }
    parts_->loop.Turn(longest);
    if (!parts_->application.HasLostDisplay()) {
        buttons.Check(Now());
    }
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
    parts_->loop.Watch(descriptor, std::move(onReadable));
}

std::uint64_t DesktopDriver::RandomSeed() {
    std::random_device source;
    return (std::uint64_t{source()} << 32) | source();
}

Size DesktopDriver::ScreenSize() const {
    return parts_->screens.GetSize();
}

Rect DesktopDriver::WorkArea() const {
    return parts_->screens.WorkArea();
}

Rect DesktopDriver::WorkAreaAt(Point ptScreen) const {
    return parts_->screens.WorkAreaAt(ptScreen);
}

Point DesktopDriver::Pointer() const {
    const PointerRecord& pointer = parts_->shared.pointer;
    if (pointer.inside || pointer.held != 0 || parts_->application.HasLostDisplay()) {
        return pointer.ptScreen;
    }
    const QPoint place = QCursor::pos();
    const Magnification& scale = parts_->shared.scale;
    return {scale.ToComponent(place.x()), scale.ToComponent(place.y())};
}

void DesktopDriver::CreateTopLevel(Handle window) {
    if (parts_->application.HasLostDisplay()) {
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
        found->setTitle(OneLine(title));
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

void DesktopDriver::SetTopLevelPopup(Handle window, Handle owner) {
    if (TopLevel* found = parts_->Find(window)) {
        found->SetPopup(parts_->Find(owner));
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
    if (parts_->application.HasLostDisplay()) {
        return;
    }
    QWindow* const window = QGuiApplication::focusWindow();
    if (turns && window != nullptr) {
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
    if (!parts_->application.HasLostDisplay()) {
        shared.ignoresMethods = true;
        QGuiApplication::inputMethod()->commit();
        QGuiApplication::inputMethod()->reset();
        shared.ignoresMethods = false;
    }
}

Size DesktopDriver::MeasureText(const Font& font, std::u16string_view text) const {
    return parts_->text.Measure(font, text);
}

TextPicture DesktopDriver::RenderText(const Font& font, std::u16string_view text, Long left,
                                      Long width) const {
    return parts_->text.Render(font, text, left, width);
}

Long DesktopDriver::TextOffset(const Font& font, std::u16string_view text,
                               std::size_t index) const {
    return parts_->text.Offset(font, text, index);
}

std::u16string DesktopDriver::ClipboardText() const {
    if (parts_->application.HasLostDisplay()) {
        return {};
    }
    const std::u16string text = QGuiApplication::clipboard()->text().toStdU16String();
    return WholeCharacters(text).toStdU16String();
}

void DesktopDriver::SetClipboardText(std::u16string_view text) {
    if (!parts_->application.HasLostDisplay()) {
        QGuiApplication::clipboard()->setText(WholeCharacters(text));
    }
}

void DesktopDriver::OpenDocument(std::u16string_view pathOrAddress) {
    QDesktopServices::openUrl(QUrl::fromUserInput(WholeCharacters(pathOrAddress)));
}

std::vector<Drive> DesktopDriver::Drives() const {
    return DrivesHere();
}

bool DesktopDriver::IsOnline(std::u16string_view address) const {
    return LeadsToThisMachine(Narrow(address)) || HasRouteHere();
}

void DesktopDriver::ForgetDownload(std::u16string_view address) {
    parts_->forgotten.emplace(address);
}

std::optional<std::string> DesktopDriver::Download(std::u16string_view address) {
    // The fetcher keeps its own limit; this one is for a name that is looked up for ever.
    constexpr std::chrono::milliseconds kGrace(500);
    const bool fresh = parts_->forgotten.erase(std::u16string(address)) > 0;
    if (!parts_->fetcher) {
        return std::nullopt;
    }
    const auto pass = [this](std::chrono::milliseconds left) {
        parts_->loop.TurnAside(left.count());
        return !parts_->application.HasLostDisplay();
    };
    return FetchMeanwhile(parts_->fetcher, Narrow(address), fresh, kLongestFetch + kGrace,
                          {pass, [this] { parts_->loop.Wake(); }});
}

bool DesktopDriver::GrabHotKey(Handle id, const KeyCombination& key) {
    return parts_->hotKeys.Grab(id, key);
}

void DesktopDriver::ReleaseHotKey(Handle id) {
    parts_->hotKeys.Release(id);
}

std::u16string DesktopDriver::LastErrorText() const {
    return parts_->hotKeys.LastErrorText();
}

void DesktopDriver::ShowTrayIcon(Handle window, std::u16string_view tip) {
    parts_->trayIcons.Show(window, tip);
}

void DesktopDriver::HideTrayIcon(Handle window) {
    parts_->trayIcons.Hide(window);
    if (TopLevel* found = parts_->Find(window)) {
        found->KeepEntry(false);
    }
}

void DesktopDriver::PublishAssociations(const std::vector<RegistryValue>& registry) {
    parts_->associations.Publish(registry);
}

void DesktopDriver::KeepShown() {
    if (!parts_->application.HasLostDisplay()) {
        parts_->loop.TurnAside(0);
    }
}

Millis DesktopDriver::DoubleClickTime() const {
    return QGuiApplication::styleHints()->mouseDoubleClickInterval();
}

}  // namespace platform
