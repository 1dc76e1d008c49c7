// The driver of a desktop with windows: borderless top-level windows that show finished pictures,
// magnified by one factor, and the keyboard, pointer, clipboard, drops, screens and fonts around
// them. One object at a time; a further one may be made when the former has died.
//
// Everything runs on the thread that makes it. The toolkit is told by the environment how to run:
// what is set there by the user is left alone.
//
// In a program that has a QGuiApplication already, that one is used, and must outlive the driver.
// None of its settings is changed, nor the environment, nor the message handler, and the driver
// does not wait for windows and events of the program's own: they are dealt with in WaitUntil as
// well. Either the program's main loop is WindowSystem::WaitMessage, or it is the toolkit's own, by
// ServeProgram. Its QGuiApplication::quit finds no refusal here: windows of the driver stay as they
// are, and the program ends the run when its loop has returned.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/session_bus.h"
#include "platform/driver.h"

namespace platform {

/// The magnification that a driver can be given.
inline constexpr double kSmallestScale = 1;
inline constexpr double kLargestScale = 4;

/// What the desktop knows the program by.
struct ProgramIdentity {
    std::string id;           ///< of its windows and of its desktop entry
    std::string title;        ///< for people
    std::string genericName;  ///< what kind of program it is, for people
    std::string categories;   ///< of the menus that it stands in, each with a semicolon behind it
};

class DesktopDriver : public Driver {
  public:
    /// Why no window can be shown here, for people; nothing if one can. To be asked before a driver
    /// or a QGuiApplication is made: without a display the toolkit would end the process.
    static std::optional<std::string> WhyNoDisplay();

    /// The names in the bytes of an xspf file; none if they are no such file (Unfolder). Needs no
    /// display.
    static std::optional<std::vector<std::string>> ReadXspf(std::string_view bytes);

    /// `scale`: device pixels for each pixel of a picture, kSmallestScale to kLargestScale; none
    /// takes it from the screen.
    /// Throws std::logic_error while another one lives, where the program's own application object
    /// is no QGuiApplication, and on another thread than that object's.
    DesktopDriver(ProgramIdentity program, std::optional<double> scale);
    ~DesktopDriver() override;
    DesktopDriver(const DesktopDriver&) = delete;
    DesktopDriver& operator=(const DesktopDriver&) = delete;

    /// For a program whose main loop is the toolkit's, QGuiApplication::exec. `takeTurn` is called
    /// whenever that loop is about to wait, and answers when (Now) it wants to be called again at
    /// the latest; none: when something has happened. That is WindowSystem::TakeTurn. It is not
    /// called within itself, as by a dialog that is opened from a call into the host. To be ended,
    /// by an empty function, before the window system goes.
    void ServeProgram(std::function<std::optional<Millis>()> takeTurn);

    /// What the desktop has given whoever asks for a window of ours to come to the front, for the
    /// next ActivateTopLevel; empty for nothing. On Wayland no window comes without it.
    void SetActivationToken(const std::string& token);

    /// Calls `onEnd` from WaitUntil, KeepShown or Download when the desktop's session ends. What is
    /// to be saved must be saved when it returns: the process may be ended at once after.
    void WatchSessionEnd(std::function<void()> onEnd);

    /// Calls `onLost` once, at the moment at which the display is found to have gone. That may be
    /// within any member, or late in the end of the process, which the toolkit brings about when it
    /// is the first to find out; in a program with a QGuiApplication of its own, perhaps not at all
    /// then. From then on text is measured by fixed numbers, nothing is shown,
    /// and nothing of the toolkit is called any more. `onLost` should end the process: whatever
    /// waits for the desktop waits for ever. A new function takes the place of the former one; an
    /// empty one ends it.
    void WatchDisplay(std::function<void()> onLost);

    /// Answers a page, or the copy of it that it keeps, or nothing; `fresh`: no copy. Takes at most
    /// kLongestFetch. Called on a thread of its own, perhaps on several at once, and may outlive
    /// the driver.
    using Fetcher =
        std::function<std::optional<std::string>(const std::string& address, bool fresh)>;
    static constexpr std::chrono::seconds kLongestFetch{10};
    /// Without one there are no downloads.
    void SetFetcher(Fetcher fetcher);

    /// For what the program offers on the session's bus, and asks there. Costs nothing unused.
    SessionBus& Bus();

    /// Folders and lists of media that are dropped are reported as the files that they stand for, a
    /// few files at a time. What does not come of one goes to `notice`, from WaitUntil, and so does
    /// a document that cannot be opened: a line for people, with the raw bytes of names.
    void TellBy(std::function<void(const std::string&)> notice);

    /// See EventQueue::CountOnce.
    void CountOnceWhileWaiting(std::vector<Long> keyCodes);

    Millis Now() const override;
    void WaitUntil(std::optional<Millis> deadline) override;
    Millis Lateness(Long period) const override;
    std::optional<DriverEvent> NextEvent() override;
    void Watch(int descriptor, std::function<void()> onReadable) override;
    std::uint64_t RandomSeed() override;

    Size ScreenSize() const override;
    Long Density() const override;
    Rect WorkArea() const override;
    Rect WorkAreaAt(Point ptScreen) const override;
    Point Pointer() const override;

    bool PlacesWindows() const override;
    void CreateTopLevel(Handle window) override;
    void DestroyTopLevel(Handle window) override;
    void SetTopLevelVisible(Handle window, bool visible) override;
    void SetTopLevelRect(Handle window, const Rect& rect) override;
    void SetTopLevelTitle(Handle window, std::u16string_view title) override;
    void SetTopLevelTopMost(Handle window, bool topMost) override;
    void SetTopLevelMinimised(Handle window, bool minimised) override;
    void ActivateTopLevel(Handle window) override;
    void SetTopLevelPopup(Handle window, Handle owner, PopupKind kind) override;
    void GrabInput(Handle popup) override;
    void ReleaseInput() override;
    bool ShowsPictures() const override { return true; }
    bool IsSeen(Handle window) const override;
    void ShowPicture(Handle window, const Surface& picture, std::span<const Rect> changed) override;

    void SetTextInput(const std::optional<TextInput>& input) override;
    void EndComposing() override;

    Size MeasureText(const Font& font, std::u16string_view text) const override;
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left, Long width,
                           Long density) const override;
    Long TextOffset(const Font& font, std::u16string_view text, std::size_t index) const override;

    std::u16string ClipboardText() const override;
    void SetClipboardText(std::u16string_view text) override;
    void OpenDocument(std::u16string_view pathOrAddress) override;
    std::vector<Drive> Drives() const override;
    bool IsOnline(std::u16string_view address) const override;
    void ForgetDownload(std::u16string_view address) override;
    std::optional<std::string> Download(std::u16string_view address) override;
    bool GrabHotKey(Handle id, const KeyCombination& key) override;
    void ReleaseHotKey(Handle id) override;
    std::u16string LastErrorText() const override;
    void ShowTrayIcon(Handle window, std::u16string_view tip) override;
    void HideTrayIcon(Handle window) override;
    void PublishAssociations(const std::vector<RegistryValue>& registry) override;
    void KeepShown() override;
    Millis DoubleClickTime() const override;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace platform
