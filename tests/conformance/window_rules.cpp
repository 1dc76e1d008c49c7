// Windows: handles, what is reported of them, popups; the screen.
#include <array>
#include <limits>
#include <string>

#include "tests/conformance/trial.h"

namespace conformance {

namespace {

bool IsWithin(const Rect& inner, const Rect& outer) {
    return platform::Intersect(inner, outer) == inner;
}

void ScreenHasRoom(Trial& trial) {
    const Driver& desktop = trial.Desktop();
    const Size screen = desktop.ScreenSize();
    Trial::Require(screen.width > 0 && screen.height > 0, "ScreenSize is empty");
    Trial::Require(!platform::IsEmpty(desktop.WorkArea()), "WorkArea is empty");
    Trial::Require(desktop.Density() >= 1, "Density is less than 1");
    Trial::Require(desktop.DoubleClickTime() > 0, "DoubleClickTime is no time");
}

void WorkAreasLieInTheWhole(Trial& trial) {
    constexpr Long kFar = 1'000'000;
    const Rect whole = trial.Desktop().WorkArea();
    for (const Point point : {Point{}, Point{whole.left, whole.top}, Point{500, 300},
                              Point{-kFar, -kFar}, Point{kFar, kFar}}) {
        const Rect area = trial.Desktop().WorkAreaAt(point);
        Trial::Require(!platform::IsEmpty(area), "WorkAreaAt is empty");
        Trial::Require(IsWithin(area, whole), "WorkAreaAt is not within WorkArea");
    }
    Trial::Require(trial.Desktop().WorkAreaAt({-kFar, -kFar}) == whole,
                   "beside all screens, WorkAreaAt is not the whole");
}

void TellAll(Driver& desktop, Handle window, Handle other) {
    const Surface picture({10, 10}, 1);
    const std::array<Rect, 1> all{picture.Bounds()};
    desktop.SetTopLevelPopup(window, other, platform::PopupKind::kMenu);
    desktop.SetTopLevelVisible(window, true);
    desktop.SetTopLevelRect(window, kPlace);
    desktop.SetTopLevelTitle(window, u"nothing");
    desktop.SetTopLevelTopMost(window, true);
    desktop.SetTopLevelMinimised(window, true);
    desktop.ActivateTopLevel(window);
    desktop.IsSeen(window);
    desktop.ShowPicture(window, picture, all);
    desktop.ShowTrayIcon(window, u"nothing");
    desktop.HideTrayIcon(window);
    desktop.DestroyTopLevel(window);
}

// Neither events of the pointer, which may be anywhere, nor of the screen.
bool TellsOfWindows(const std::vector<DriverEvent>& events) {
    return HasAny<platform::CloseRequested>(events) ||
           HasAny<platform::MinimisedByDesktop>(events) ||
           HasAny<platform::RestoredByDesktop>(events) ||
           HasAny<platform::MovedByDesktop>(events) || HasAny<platform::FilesDropped>(events) ||
           HasAny<platform::TrayIconUsed>(events) || HasAny<platform::InputLost>(events);
}

void UnknownHandlesDoNothing(Trial& trial) {
    constexpr Handle kUnknown = 4711;
    const Handle gone = trial.Open(kPlace);
    trial.Destroy(gone);
    trial.Settle();
    for (const Handle window : {Handle{0}, kUnknown, gone}) {
        TellAll(trial.Desktop(), window, kUnknown);
    }
    trial.Desktop().ReleaseHotKey(kUnknown);
    trial.Desktop().ForgetDownload(u"http://127.0.0.1:9/");
    Trial::Require(!TellsOfWindows(trial.Settle()), "a window that is not there is reported on");
}

// Each call, and what it would be wrong to report for it.
void OwnDoingIsNoNews(Trial& trial) {
    const Handle window = trial.Create(kPlace);
    Driver& desktop = trial.Desktop();
    trial.Show(window);
    // A window manager may place a new window, and that is news.
    const std::vector<DriverEvent> first = trial.Settle();
    Trial::Require(!HasAny<platform::CloseRequested>(first) &&
                       !HasAny<platform::MinimisedByDesktop>(first) &&
                       !HasAny<platform::RestoredByDesktop>(first),
                   "showing a window is reported");
    const auto isNoNews = [&](const std::string& what) {
        Trial::Require(!TellsOfWindows(trial.Settle()), what + " is reported");
    };
    if (desktop.PlacesWindows()) {
        desktop.SetTopLevelRect(window, {150, 130, 250, 190});
        isNoNews("moving a window");
    }
    desktop.SetTopLevelRect(window, {150, 130, 270, 200});
    trial.ShowNewPicture(window, {120, 70});
    isNoNews("the size of a window");
    desktop.SetTopLevelTitle(window, u"another");
    isNoNews("the title of a window");
    desktop.SetTopLevelTopMost(window, true);
    desktop.SetTopLevelTopMost(window, false);
    isNoNews("being topmost");
    desktop.SetTopLevelMinimised(window, true);
    isNoNews("minimising a window");
    desktop.SetTopLevelMinimised(window, false);
    isNoNews("restoring a window");
    desktop.ActivateTopLevel(window);
    isNoNews("activating a window");
    desktop.SetTopLevelVisible(window, false);
    isNoNews("hiding a window");
    trial.Destroy(window);
    isNoNews("the end of a window");
}

// Places come from a settings file, titles from whoever made a piece of music.
void AnyPlaceAndTitleWillDo(Trial& trial) {
    constexpr Long kLeast = std::numeric_limits<Long>::min();
    constexpr Long kMost = std::numeric_limits<Long>::max();
    const Handle window = trial.Open(kPlace);
    for (const Point place : {Point{kLeast, kLeast}, Point{kMost - 100, kMost - 60},
                              Point{-30, -20}, Point{kLeast, kMost - 60}}) {
        trial.Desktop().SetTopLevelRect(window, {place.x, place.y, place.x + 100, place.y + 60});
        trial.Desktop().WaitUntil(trial.Desktop().Now());
    }
    trial.Desktop().SetTopLevelRect(window, {});
    trial.Settle();
    for (const auto& title :
         {std::u16string(), std::u16string(1, 0xD800), std::u16string(u"two\nlines\0and more", 18),
          std::u16string(100'000, u'x')}) {
        trial.Desktop().SetTopLevelTitle(window, title);
        trial.Desktop().ShowTrayIcon(window, title);
    }
    trial.Desktop().HideTrayIcon(window);
    trial.Settle();
    trial.Desktop().SetTopLevelRect(window, kPlace);
    trial.ShowNewPicture(window, {100, 60});
    Trial::Require(!HasAny<platform::CloseRequested>(trial.Settle()), "a window wants to close");
}

// The window system closes no menu by hiding it.
void PopupsComeAndGoAsTheyAre(Trial& trial) {
    using platform::PopupKind;
    Driver& desktop = trial.Desktop();
    desktop.ReleaseInput();
    const Handle owner = trial.Open(kPlace);
    const Handle tip = trial.CreatePopup({110, 170, 190, 186}, owner, PopupKind::kTip);
    trial.Show(tip);
    trial.Settle();
    desktop.SetTopLevelVisible(tip, false);
    const Handle menu = trial.CreatePopup({120, 120, 220, 300}, owner, PopupKind::kMenu);
    trial.Show(menu);
    desktop.GrabInput(menu);
    const Handle submenu = trial.CreatePopup({218, 140, 318, 240}, menu, PopupKind::kMenu);
    trial.Show(submenu);
    Trial::Require(!HasAny<platform::InputLost>(trial.Settle()),
                   "the input that a menu has taken is lost, though nobody has done anything");
    desktop.ReleaseInput();
    trial.Destroy(submenu);
    trial.Destroy(menu);
    desktop.ReleaseInput();
    Trial::Require(!TellsOfWindows(trial.Settle()), "the end of a menu is reported");
    desktop.SetTopLevelVisible(tip, true);
    trial.Destroy(owner);
    trial.Settle();
    trial.Destroy(tip);
    trial.Settle();
}

void MinimisingIsReportedOnce(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    Trial::Need(trial.Around().Minimise(window));
    const auto gone = trial.AwaitEvent<platform::MinimisedByDesktop>("minimising");
    Trial::Require(gone.window == window, "another window is reported as minimised");
    trial.Desktop().SetTopLevelMinimised(window, true);
    Trial::Require(!TellsOfWindows(trial.Settle()), "the echo of minimising is reported");
    Trial::Need(trial.Around().Restore(window));
    const auto back = trial.AwaitEvent<platform::RestoredByDesktop>("restoring");
    Trial::Require(back.window == window, "another window is reported as restored");
    trial.Desktop().SetTopLevelMinimised(window, false);
    Trial::Require(!TellsOfWindows(trial.Settle()), "the echo of restoring is reported");
}

void MoveByTheDesktopIsReported(Trial& trial) {
    constexpr Point kThere{340, 260};
    const Handle window = trial.Open(kPlace);
    Trial::Need(trial.Around().Move(window, kThere));
    const auto moved = trial.AwaitEvent<platform::MovedByDesktop>("a move by the desktop");
    Trial::Require(moved.window == window, "another window is reported as moved");
    Trial::Require(moved.ptScreen == kThere, "the place of the move is another one");
    Trial::Require(!TellsOfWindows(trial.Settle()), "a move is reported twice");
    const Rect there{kThere.x, kThere.y, kThere.x + 100, kThere.y + 60};
    trial.Desktop().SetTopLevelRect(window, there);
    Trial::Require(!TellsOfWindows(trial.Settle()), "the place as it is, is reported");
}

void ClosingIsARequest(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    Trial::Need(trial.Around().Close(window));
    const auto request = trial.AwaitEvent<platform::CloseRequested>("the wish to close");
    Trial::Require(request.window == window, "another window is reported as to be closed");
    trial.Settle();
    Trial::Need(trial.Around().Close(window));
    trial.AwaitEvent<platform::CloseRequested>(
        "the second wish to close the window, as it stayed,");
}

constexpr std::array kWindowRules{
    Rule{"screen.has_room", ScreenHasRoom},
    Rule{"screen.work_areas_lie_in_the_whole", WorkAreasLieInTheWhole},
    Rule{"windows.unknown_handles_do_nothing", UnknownHandlesDoNothing},
    Rule{"windows.own_doing_is_no_news", OwnDoingIsNoNews},
    Rule{"windows.any_place_and_title_will_do", AnyPlaceAndTitleWillDo},
    Rule{"windows.popups_come_and_go_as_they_are", PopupsComeAndGoAsTheyAre},
    Rule{"windows.minimising_is_reported_once", MinimisingIsReportedOnce},
    Rule{"windows.move_by_the_desktop_is_reported", MoveByTheDesktopIsReported},
    Rule{"windows.closing_is_a_request", ClosingIsARequest},
};

}  // namespace

std::span<const Rule> RulesOfWindows() {
    return kWindowRules;
}

}  // namespace conformance
