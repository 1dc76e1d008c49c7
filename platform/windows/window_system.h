// The window system, written once for every desktop: windows with handles, parents and procedures,
// messages, focus, pointer, timers, the event pump, waiting, and the picture of each top-level
// window, put together from the faces of the windows in it. Child windows are not native windows; a
// driver only ever hears of top-level ones. Operations are named as the system's rules name them. A
// handle that names no window makes an operation do nothing and answer 0 or False.
//
// Everything runs on one thread, and everything may be re-entered: a procedure may pump, close or
// destroy its own window. What must outlive the dispatch that ends it goes to DeferDelete.
#pragma once

#include <bitset>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/base/messages.h"
#include "platform/base/types.h"
#include "platform/drawing/mask.h"
#include "platform/drawing/text_drawing.h"
#include "platform/driver.h"
#include "platform/windows/message.h"

namespace platform {

class Menus;
class ModalInput;
class Shell;
struct NotifyIconData;

class WindowSystem {
  public:
    /// The driver must outlive the window system; its density becomes the one in force.
    explicit WindowSystem(Driver& driver);
    /// Windows that are still there go without a message.
    ~WindowSystem();
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;

    Driver& GetDriver() { return driver_; }
    const Driver& GetDriver() const { return driver_; }

    // Windows. Rectangles are in pixels of the parent's client area, of the screen for a top-level
    // window (parent 0).

    /// A hidden, enabled window above its siblings. A parent that is no window counts as 0.
    Handle CreateWindow(Handle parent, const Rect& rect, WindowProc proc);
    /// Makes a top-level window that has not been shown yet a popup of `owner`: it lies above all
    /// others, and neither takes the focus nor stands in any list of windows.
    void MakePopup(Handle window, Handle owner, PopupKind kind);
    /// A number that names nothing else, for other things that are known by handles.
    Handle NewHandle() { return ++lastHandle_; }
    /// Sends WM_DESTROY to the window and its children, kills their timers and forgets them.
    void DestroyWindow(Handle window);
    /// Told of each window that has been destroyed. One observer; an empty function ends it.
    void ObserveDestroyed(std::function<void(Handle window)> observer);
    bool IsWindow(Handle window) const;
    Handle GetParent(Handle window) const;
    /// The top-level window above, or the window itself.
    Handle GetTopLevel(Handle window) const;
    Rect GetRect(Handle window) const;
    /// In screen pixels.
    Rect GetWindowRect(Handle window) const;
    /// Size and place as the flags (SWP_...) leave them; `insertAfter` may be HWND_TOPMOST or
    /// HWND_NOTOPMOST for a top-level window. A change of size sends WM_SIZE once the window has
    /// been shown.
    void SetWindowPos(Handle window, Handle insertAfter, Long x, Long y, Long width, Long height,
                      Long flags);
    void BringToFront(Handle window);
    bool IsTopMost(Handle window) const;

    /// Shows or hides. The first showing of a top-level window, and one that restores it, sends
    /// WM_SIZE with SIZE_RESTORED; SW_MINIMIZE sends SIZE_MINIMIZED.
    void ShowWindow(Handle window, Long command);
    /// The window's own flag, whatever its parents' are.
    bool IsVisible(Handle window) const;
    bool IsIconic(Handle window) const;
    void SetMinimised(Handle window, bool minimised);
    /// Whether the desktop has ever put this top-level window somewhere by itself.
    bool WasMovedByDesktop(Handle window) const;
    void EnableWindow(Handle window, bool enabled);
    bool IsEnabled(Handle window) const;
    void SetWindowText(Handle window, std::u16string_view text);
    std::u16string GetWindowText(Handle window) const;
    Long GetWindowLong(Handle window, Long index) const;
    /// Answers the former value.
    Long SetWindowLong(Handle window, Long index, Long value);

    /// The window that shows at a screen point, 0 if none: the uppermost one that is visible and
    /// enabled and whose mask has the point. A windowless one is answered by its parent.
    Handle WindowFromPoint(Point ptScreen) const;

    // Faces and the screen. A window's face is what it shows of its own; its children lie over it,
    // clipped by it.

    /// The face is not owned and must be taken back (null) before it ends. Without a face a window
    /// lets its parent shine through. Points that the face does not have show the parent, too.
    void SetFace(Handle window, const Surface* face);
    const Surface* GetFace(Handle window) const;
    /// Only the points of the mask are shown and can be hit; null: all of them.
    void SetMask(Handle window, std::shared_ptr<const Mask> mask);
    /// Says of a window that it is part of its parent's picture, as labels are: its own messages
    /// of the pointer still reach it, but WindowFromPoint answers the parent, and the pointer that
    /// comes upon it has not left the parent.
    void SetWindowless(Handle window, bool windowless);
    /// A part of the face has changed; it is on the screen after the next pump or UpdateScreen.
    void InvalidateRect(Handle window, const Rect& rectClient);
    /// Brings what has changed to the screen now. Pixels that are as they were are not sent.
    void UpdateScreen();
    /// To be called again and again in work that lets no event run: some ten times a second what
    /// has been covered and uncovered of the windows is shown again. Nothing is delivered.
    void KeepShown();
    /// The whole picture of a top-level window as it would be shown.
    Surface Compose(Handle topLevel) const;
    /// The whole screen, with all visible windows on it.
    Surface ComposeScreen() const;

    TextDrawing& Text() { return text_; }
    /// The menus of this window system, made when they are first called for. They lie above the
    /// windows, in platform/menus/menu.h, and this is defined beside them.
    Menus& PopupMenus();

    // The pointer and the keyboard.

    Point GetCursorPos() const { return driver_.Pointer(); }
    /// The window that a button was pressed on and that gets the pointer's messages until all
    /// buttons are up; 0 if none.
    Handle GetCapture() const { return capture_; }
    /// One WM_MOUSELEAVE to the window when the pointer leaves it.
    void TrackMouseLeave(Handle window);
    /// Modifiers of the last input: kShiftBit, kCtrlBit, kAltBit.
    Long Modifiers() const { return modifiers_; }

    /// Whether the key with that code is down.
    bool GetAsyncKeyState(Long code) const;
    /// Puts a procedure in front of all keys, of others that are there too; the answer names it.
    /// Who has taken the input (TakeInput) gets keys before it. Of a key that is eaten nobody gets
    /// the text either.
    Handle SetWindowsHookEx(KeyboardProc proc);
    void UnhookWindowsHookEx(Handle hook);

    /// From now on all input is the taker's; null: the windows' again. Not owned.
    void TakeInput(ModalInput* taker) { modalInput_ = taker; }

    /// What happens when the driver reports this event; the pump calls it.
    void Deliver(const DriverEvent& event);

    // Focus. One window of the whole system has it, or none.

    void SetFocus(Handle window);
    Handle GetFocus() const { return focus_; }
    void SetForegroundWindow(Handle window);

    // Writing.

    /// Says that the user writes in the window, and where the caret stands in its client area;
    /// none: he does not. While such a window has the focus, the keys to write with (IsWritingKey)
    /// are its own, and input methods take part.
    void SetTextInput(Handle window, const std::optional<Rect>& rectCaret);
    /// What an input method is putting together for the window that has the focus, which hears of
    /// each change by WM_IME_COMPOSITION.
    const TextComposed& Composition() const { return composition_; }
    /// Takes it as typed, before the caret goes elsewhere. A change of the focus does so, too.
    void EndComposition();

    // Messages.

    /// Calls the window's procedure now and answers its result.
    Long SendMessage(Handle window, Long id, Long wParam, Long lParam);
    /// Queues the message for the next pump.
    void PostMessage(Handle window, Long id, Long wParam, Long lParam);
    /// Puts `proc` in front and answers the procedure that stood there: subclassing.
    WindowProc SetWindowProc(Handle window, WindowProc proc);
    WindowProc GetWindowProc(Handle window) const;
    /// Calls `proc` if there is one, else answers 0.
    static Long CallWindowProc(const WindowProc& proc, const Message& message);

    /// Hands `record` to a window as WM_COPYDATA, as a second start does.
    void SendCopyData(Handle window, CopyDataRecord record);
    /// The record that lParam of WM_COPYDATA names, while that message is handled; else null.
    const CopyDataRecord* CopyData(Long lParam) const;

    // Drops.

    /// What a window does with files dropped right on it.
    using DropTarget = std::function<void(const std::vector<std::string>& paths)>;
    void SetDropTarget(Handle window, DropTarget target);
    /// Files dropped on a window: its drop target takes them, else the next parent that has one,
    /// else the top-level window gets WM_DROPFILES if it accepts files (WS_EX_ACCEPTFILES).
    void DropFiles(Handle window, std::vector<std::string> paths);
    /// The number of files in a drop.
    Long DragQueryFileCount(Handle drop) const;
    /// The name at a 0-based index, cut to `bufferSize` bytes. Empty when there is none.
    std::string DragQueryFile(Handle drop, Long index, std::size_t bufferSize) const;
    void DragFinish(Handle drop);

    // What the desktop's shell offers: system-wide keys, the tray, the registry of file types.

    /// A number from 0xC000 on for a name; the same one for the same name, however often it is
    /// added. 0 for an empty name, and when there are no more numbers.
    Long GlobalAddAtom(std::u16string_view name);
    /// Takes back one GlobalAddAtom.
    void GlobalDeleteAtom(Long atom);
    /// Takes a combination of keys (MOD_..., a virtual-key code) from the whole desktop: pressing
    /// it sends WM_HOTKEY to the window, or to nobody if `window` is 0. `name`: what it does, for
    /// people. False if it is taken already, here or elsewhere. A window's keys end with it.
    bool RegisterHotKey(Handle window, Long id, Long modifiers, Long key, std::u16string_view name);
    bool UnregisterHotKey(Handle window, Long id);
    /// Of the last failure, for people; empty if the desktop has no words for it.
    std::u16string LastErrorText() const { return driver_.LastErrorText(); }

    /// The tray icon of a window: `message` is NIM_.... An icon that is there is not added again,
    /// one that is not there is neither modified nor deleted.
    bool Shell_NotifyIcon(Long message, const NotifyIconData& data);

    /// A key below HKEY_CLASSES_ROOT, made if it is not there.
    Handle RegCreateKey(std::u16string_view name);
    /// An existing key, 0 if there is none.
    Handle RegOpenKey(std::u16string_view name) const;
    /// Gives the sub-key (empty: the key itself) its default value, and makes it if need be.
    bool RegSetValue(Handle key, std::u16string_view subKey, std::u16string_view text);
    /// SHCNE_ASSOCCHANGED: the desktop is to follow what the registry says of file types.
    void SHChangeNotify(Long event);

    // Time. Timers and scheduled calls fall due in order of time, at equal times in the order in
    // which they were set.

    Millis Now() const { return driver_.Now(); }
    /// Starts, or starts afresh, the window's timer `id` with a period in milliseconds (at least
    /// 1).
    void SetTimer(Handle window, Long id, Long period, TimerProc proc);
    void KillTimer(Handle window, Long id);
    /// The window's running timers: id and period, in order of id.
    std::vector<std::pair<Long, Long>> Timers(Handle window) const;
    /// Runs `call` once, when `delay` milliseconds have passed.
    void Schedule(Millis delay, std::function<void()> call);

    /// Delivers all that is pending now: driver events, posted messages, what is due.
    void DoEvents();
    /// Lets time pass, delivering what falls due meanwhile.
    void Sleep(Millis duration);
    /// Waits for the next thing to happen and delivers it: one turn of a host's main loop.
    void WaitMessage();
    /// One turn of a loop that is not ours, which waits by itself: delivers all that is pending.
    /// Answers when (Now) the next turn is due at the latest; none: when the driver has something.
    std::optional<Millis> TakeTurn();
    /// A loop within the main loop: delivers things one by one, and asks `goesOn` before each.
    void RunWhile(const std::function<bool()>& goesOn);
    /// Whether an event that comes is to be kept; False: it is dropped.
    using Keeps = std::function<bool(const DriverEvent& event)>;
    /// A wait in the midst of something, as of a host that answers: timers and scheduled calls go
    /// on, pictures are shown, watched descriptors are read. What the desktop reports and what is
    /// posted waits for the next pump. One turn at least; then `goesOn` is asked, some hundred
    /// times a second.
    void WaitKeepingInput(const std::function<bool()>& goesOn, const Keeps& keeps);
    /// Whether the next pump has something from such a wait to deliver.
    bool HasKeptInput() const { return !kept_.empty(); }
    /// Whether anything but timers can still happen: a posted message, a scheduled call, or
    /// whatever the desktop reports.
    bool ExpectsInput() const;

    /// Keeps `object` until no message, timer or call of this window system is being handled.
    void DeferDelete(std::shared_ptr<void> object);
    /// Whether a message, timer or call is being handled.
    bool IsDispatching() const { return depth_ > 0; }
    /// Holds deferred deletion back while it lives: for calls that enter from outside.
    class Dispatching {
      public:
        explicit Dispatching(WindowSystem& windows) : windows_(windows) { ++windows_.depth_; }
        ~Dispatching() { windows_.LeaveDispatch(); }
        Dispatching(const Dispatching&) = delete;
        Dispatching& operator=(const Dispatching&) = delete;

      private:
        WindowSystem& windows_;
    };

    bool PlacesWindows() const { return driver_.PlacesWindows(); }
    Rect WorkArea() const { return driver_.WorkArea(); }
    Size ScreenSize() const { return driver_.ScreenSize(); }
    Size MeasureText(const Font& font, std::u16string_view text) const {
        return driver_.MeasureText(font, text);
    }

  private:
    struct Window;
    struct Due;

    Window* Find(Handle window) const;
    // What Deliver does with each kind of event.
    void On(const CloseRequested& event);
    void On(const MinimisedByDesktop& event);
    void On(const RestoredByDesktop& event);
    void On(const WorkAreaChanged& event);
    void On(const DensityChanged& event);
    void On(const SeenAgain& event);
    void On(const FilesDropped& event);
    void On(const MovedByDesktop& event);
    void On(const PointerMoved& event);
    void On(const PointerLeft& event);
    void On(const ButtonChanged& event);
    void On(const WheelTurned& event);
    void On(const KeyChanged& event);
    void On(const TextTyped& event);
    void On(const TextComposed& event);
    void On(const InputLost& event);
    void On(const HotKeyPressed& event);
    void On(const TrayIconUsed& event);
    void TellDensity(Handle window);
    bool TakenFromWindows(const ButtonChanged& event, Long held);
    bool TakenFromWindows(const KeyChanged& event);
    std::u16string TakeComposition();
    void SendText(Handle window, std::u16string_view text);
    std::optional<TextInput> TextInputNow() const;
    void TellTextInput();
    bool EatenByHook(const KeyChanged& event);
    bool IsDoubleClick(const ButtonChanged& press, Handle target);
    void SendMouse(Handle window, Long message, Point ptScreen);
    void Leave();
    void LeaveUnlessAt(Point ptScreen);
    Handle HitTest(Point ptScreen, bool windowless) const;
    const Window* ChildAt(const Window& window, Point point, bool windowless) const;
    void InvalidateWindow(const Window& window);
    void UpdateTopLevel(Window& topLevel);
    static void ComposeFace(const Window& window, Point origin, const Rect& area, Surface& picture);
    void ComposeInto(const Window& window, Point origin, const Rect& clip, Surface& picture) const;
    void SendSize(Window& window, Long state);
    std::optional<DriverEvent> NextEvent();
    bool HasPending() const { return !kept_.empty() || !posted_.empty(); }
    void DeliverPosted();
    bool RunNextDue(Millis until);
    void RunUntil(Millis deadline);
    std::optional<Millis> NextDue() const;  ///< when to wake up
    void LeaveDispatch();
    std::vector<Handle>* Siblings(const Window& window);

    Driver& driver_;
    std::unique_ptr<Shell> shell_;
    TextDrawing text_{driver_};
    std::shared_ptr<Menus> menus_;  ///< shared, since nobody here knows how to delete them
    ModalInput* modalInput_ = nullptr;
    std::function<void(Handle window)> onDestroyed_;
    Handle lastHandle_ = 0;
    std::unordered_map<Handle, std::shared_ptr<Window>> windows_;  ///< looked up at every turn
    std::vector<Handle> topLevels_;                                ///< bottom to top
    Handle focus_ = 0;
    Handle capture_ = 0;
    Handle tracked_ = 0;  ///< waits for the pointer to leave
    Long modifiers_ = 0;
    Long buttons_ = 0;       ///< held down: MK_...
    Long takenButtons_ = 0;  ///< went down while the input was taken: the taker's until they are up
    using Keys = std::bitset<256>;
    Keys keysDown_;
    Keys takenKeys_;                                      ///< as takenButtons_
    Keys keysOfWriting_;                                  ///< went down in a window to write in
    bool textIsEaten_ = false;                            ///< belongs to a key that was
    std::vector<std::pair<Handle, KeyboardProc>> hooks_;  ///< the latest is asked first
    // The press that another one may follow as a double click.
    struct Press {
        Handle window = 0;
        Long button = 0;
        Point ptScreen;
        Millis when = 0;
    };
    Press lastPress_;
    TextComposed composition_;
    std::optional<TextInput> toldTextInput_;  ///< to the driver
    std::deque<DriverEvent> kept_;            ///< came during a wait that keeps input
    std::deque<Message> posted_;
    std::vector<Due> due_;
    std::uint64_t lastOrder_ = 0;
    Millis keptShown_ = 0;  ///< when that was done last
    std::map<Handle, std::vector<std::string>> drops_;
    std::map<Long, CopyDataRecord> records_;
    int depth_ = 0;
    std::vector<std::shared_ptr<void>> graveyard_;
};

}  // namespace platform
