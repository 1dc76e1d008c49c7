// A top-level window: shows a finished picture, and turns what the desktop does with the window
// into events. What it hears of pointer, keys and drops is in top_level_input.cpp, where it is in
// top_level_placing.cpp, whether it is seen in top_level_sight.cpp, what it does under a Wayland
// compositor in top_level_wayland.cpp.
#pragma once

#include <QBackingStore>
#include <QBasicTimer>
#include <QRegion>
#include <QWindow>
#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "platform/desktop/direct_paint.h"
#include "platform/desktop/drops.h"
#include "platform/desktop/event_queue.h"
#include "platform/desktop/magnification.h"
#include "platform/desktop/press_catcher.h"
#include "platform/desktop/screens.h"
#include "platform/desktop/x_watch.h"
#include "platform/driver.h"

class QDropEvent;
class QInputMethodEvent;
class QInputMethodQueryEvent;
class QSinglePointEvent;

namespace platform::desktop {

/// Where the pointer was last seen, by any of the windows.
struct PointerRecord {
    Point ptScreen;
    bool inside = false;  ///< over one of our windows
    Long held = 0;        ///< buttons: kLeftButton ...
};

/// Whether windows go where they are put. On an X server on Wayland that is up to the compositor's
/// window manager, which does not say so: it comes out at the first drag.
enum class SelfPlacing { kWorks, kUnknown, kIgnored };

/// What the windows of a driver share; outlives them.
struct Shared {
    Magnification scale;
    EventQueue events;
    PointerRecord pointer;
    std::optional<TextInput> input{};  ///< where the user writes
    bool composing = false;            ///< what was reported last is still being composed
    bool onWayland = false;            ///< settled before the first window
    bool isXOnWayland = false;         ///< of an X server: it shows its windows on a compositor
    SelfPlacing selfPlacing = SelfPlacing::kWorks;
    bool isGrabbed = false;        ///< all input, by a popup
    bool hasShownPicture = false;  ///< any window
    bool ignoresMethods = false;   ///< what input methods say now has been taken already
    std::function<void(DropPlace, std::vector<std::string>)> onDrop{};  ///< paths, raw bytes
    /// Whether the program is asking its windows whether it may quit.
    std::function<bool()> isQuitting = [] { return false; };
    /// A window has come to a screen of which the toolkit's pixels are of another size.
    std::function<void()> onRatio = [] {};
};

class TopLevel : public QWindow {
  public:
    TopLevel(Handle handle, Shared& shared);
    ~TopLevel() override;
    TopLevel(const TopLevel&) = delete;
    TopLevel& operator=(const TopLevel&) = delete;

    // As the driver's members of that name.
    void SetVisibility(bool visible);
    void SetRect(const Rect& rect);
    void SetTopMost(bool topMost);
    void SetMinimised(bool minimised);
    void Activate();
    void SetPopup(TopLevel* owner, PopupKind kind);
    void GrabInput();
    void ReleaseInput();
    /// Where a point of the window is now.
    Point PlaceOf(DropPoint point) const;
    /// Whether hiding the window while it is minimised leaves its entry in the task bar.
    void KeepEntry(bool keeps);
    bool IsSeen() const;
    void ShowPicture(const Surface& picture, std::span<const Rect> changed);

    /// What the X server tells of windows.
    void Hear(const XNotice& notice);
    /// The scale has become another one: takes the size and place that go with it.
    void Rescaled();
    /// Comes to the nearest screen if the screens show less of it than is wanted.
    void ComeToScreen(Shown wanted);
    /// In the toolkit's pixels.
    QRect Place() const { return shared_.scale.ToDevice(rect_); }

  protected:
    bool event(QEvent* event) override;
    bool nativeEvent(const QByteArray& kind, void* message, qintptr* result) override;
    void exposeEvent(QExposeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    using Clock = std::chrono::steady_clock;
    /// A place that was asked for and that the desktop has not confirmed yet.
    struct Asked {
        QPoint place;
        Clock::time_point when;
    };

    void MoveTo(QPoint place);
    void Report(QPoint place);
    void ReportPlace(Point ptScreen);
    bool IsAnswer(QPoint place);
    void ForgetOldAsked();
    bool IsPushedByAFrame(QPoint place);
    bool IsPopup() const { return popup_.has_value(); }
    bool IsPlacedByDesktop() const;
    void MovePopupAside(bool goes);
    void DoubtPlacing();
    void EndDoubtOfPlacing();
    void Heeded();
    void HandOver(QPoint place);
    void LetDesktopDrag();
    void LearnPlace(const QSinglePointEvent& event);
    void DoubtActivation();
    void EndDoubtOfActivation();
    void StateChanged();
    void SetMinimisedState();
    void Doubt();
    void Restored();

    TopLevel* Owner() const;
    QPoint WantedBesideOwner() const;
    void PlaceBesideOwner();
    void BeDragged(const Rect& former);
    void FollowPopup(QPoint place);
    void OfferPicture();
    void SeenOrNot();
    void ComeBack(bool mayBeActivated);
    void ShowAnew();
    bool StandsAlone() const;
    Point Told(Point ptScreen) const;

    double Factor() const;
    QRect InPixels(QSize size) const;
    QRect PictureBounds() const;
    QRegion InToolkitPixels(const QRegion& region) const;
    void RatioMayHaveChanged();
    void FitSize();
    void SightChanged();
    void PictureCame();
    void ForgetSight();
    void LookWhereItIs();

    bool PaintDirectly(std::span<const Rect> changed);
    void PaintStale();
    void PaintInStore(const QRegion& region);
    void LetStoreGo();
    QRegion TakeStale();
    bool CanBeSeen() const;

    Point ToScreen(QPointF ptGlobal) const;
    void PointerSeen(const QSinglePointEvent& event, Qt::KeyboardModifiers modifiers,
                     Qt::MouseButtons held);
    void Button(const QMouseEvent& event, bool down);
    void InputMethodAsks(QInputMethodQueryEvent& query) const;
    void Composed(const QInputMethodEvent& event);
    void ReportComposed(TextComposed composed);
    void Dragged(QDropEvent& event);
    void Dropped(QDropEvent& event);

    const Handle handle_;
    Shared& shared_;
    std::optional<PopupKind> popup_;
    Rect rect_;  ///< as the component knows it
    std::deque<Asked> asked_;
    QBasicTimer unheeded_;  ///< whether a window manager moves it when it is dragged
    QPoint dragged_;        ///< where it was when that began
    QBasicTimer behind_;    ///< whether a window manager brings it to the front when it is asked to
    std::optional<Clock::time_point> shownAt_;  ///< until the desktop has placed it
    bool minimised_ = false;
    bool isHidden_ = true;     ///< as the component knows it
    bool keepsEntry_ = false;  ///< in the task bar, though hidden
    /// Shown while it was minimised, and never seen since: what the desktop says of its state may
    /// be older than what was asked for after that.
    bool comesMinimised_ = false;
    std::unique_ptr<PressCatcher> catcher_;  ///< around a popup that has all input
    QBasicTimer doubt_;                      ///< whether the desktop minimises at all
    bool hasOffered_ = false;                ///< a picture, to find that out
    bool mustReturn_ = false;                ///< asked to be minimised no more, wherever it is
    bool wentAway_ = true;  ///< from the screen, since it was asked to be minimised
    QBasicTimer return_;    ///< until activation must have brought it back
    bool hasIcon_ = false;

    std::unique_ptr<QBackingStore> store_;
    /// Past the store, which then need not be kept: for small changes. May be null.
    std::unique_ptr<DirectPaint> direct_;
    const Surface* picture_ = nullptr;
    QRegion stale_;             ///< where the window lags behind the picture; the screen's pixels
    std::vector<QRect> parts_;  ///< room for those of one picture, kept between two
    double ratio_;              ///< pixels of the screen for each of the toolkit's

    bool wasExposed_ = false;   ///< since it was shown
    bool isCovered_ = false;    ///< all of it, by others
    bool isElsewhere_ = false;  ///< on another desktop, say
    bool wasSeen_ = true;       ///< as far as it has been told
    bool awaitsPicture_ = false;
    QBasicTimer late_;  ///< until it shows what there is
    QBasicTimer look_;  ///< until it asks where it is

    std::set<Long> keysDown_;
    Long wheel_ = 0;  ///< eighths of a degree that make no whole notch yet
};

}  // namespace platform::desktop
