// Scrolling by the strip, by the wheel, and by the rubber band once the pointer has left the list.
//
// While a button is held, the list scrolls on in a loop that waits and handles events in between.
// The release of the button, which ends the loop, is one of these events. Another may destroy the
// list: after each wait the loop asks whether it is still there (Pump) and returns at once if not.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "controls/list/jlist.h"
#include "controls/list/moved.h"
#include "platform/base/rounding.h"

namespace sarnel {

namespace {

constexpr Long kStep = 3;  // rows
constexpr platform::Millis kRepeatDelay = 200;
constexpr platform::Millis kRepeatPeriod = 50;
constexpr platform::Millis kThumbPeriod = 100;
constexpr platform::Millis kPoll = 1;

}  // namespace

// Handles the events that are pending, then waits. False if the list was destroyed meanwhile. A
// list that was only hidden goes on: it holds the pointer, so the release still comes to it.
bool JList::Pump(platform::Millis wait) {
    windows_.DoEvents();
    if (IsAlive()) {
        windows_.Sleep(wait);
    }
    return IsAlive();
}

// Scrolls by `by` rows at a time, until the first or last row is on show, the thumb has come to the
// pointer, or the button is up. A press on the track waits a while before it repeats; a band does
// not, and goes on wherever the pointer is.
void JList::AutoScroll(Long by) {
    const auto isThere = [this, by] { return range_.Has(by >= 1 ? ListCount() - 1 : 0); };
    const platform::Millis start = windows_.Now();
    while (!mouse_.edgeScrolling && mouse_.mode != ListMouse::kNoPress &&
           windows_.Now() - start < kRepeatDelay) {
        if (!Pump(kPoll)) {
            return;
        }
    }
    platform::Millis last = windows_.Now();
    while (!isThere() && mouse_.mode != ListMouse::kNoPress) {
        if (!Pump(kRepeatPeriod)) {
            return;
        }
        // A press on the track rests while the pointer is elsewhere.
        const bool pauses = !mouse_.edgeScrolling && mouse_.zone != ListMouse::kTrack;
        if (pauses || windows_.Now() - last < kRepeatPeriod) {
            continue;
        }
        if (!AutoScrollStep(by)) {
            return;
        }
        last = windows_.Now();
    }
}

// False once the thumb has come to the pointer.
bool JList::AutoScrollStep(Long by) {
    range_.first = std::max(Moved(range_.first, by), 0);
    range_.last = std::min(Moved(range_.last, by), ListCount() - 1);
    if (Moved(range_.first, VisibleRows() - 1) > ListCount()) {
        range_.first = ListCount() - VisibleRows() + 1;
    }
    const bool above = thumb_.IsAbove(mouse_.y);
    if ((above && mouse_.mode == ListMouse::kBelowThumb) ||
        (!above && mouse_.mode == ListMouse::kAboveThumb)) {
        return false;
    }
    if (mouse_.edgeScrolling) {
        index_.caret = by > 0 ? range_.last : range_.first;
        BandStep();
    }
    DisplayList();
    return true;
}

void JList::ScrollDownThree() {
    if (range_.Has(ListCount() - 1)) {
        return;
    }
    range_.first = Moved(range_.first, kStep);
    range_.last = Moved(range_.last, kStep);
    if (range_.last > ListCount() - 1 || range_.first > ListCount() - VisibleRows()) {
        range_.last = ListCount() - 1;
        range_.first = range_.last - VisibleRows();
    }
    DisplayList();
    AutoScroll(kStep);
}

void JList::ScrollUpThree() {
    if (range_.Has(0)) {
        return;
    }
    range_.first = std::max(Moved(range_.first, -kStep), 0);
    range_.last = Moved(range_.first, 2) <= ListCount() ? Moved(range_.first, VisibleRows() - 1)
                                                        : ListCount() - 1;
    DisplayList();
    AutoScroll(-kStep);
}

void JList::WM_MOUSEWHEEL_Process(Long wordParameter) {
    if (windows_.WindowFromPoint(windows_.GetCursorPos()) != HWnd()) {
        return;
    }
    if (wordParameter < 1) {
        ScrollDownThree();
    } else {
        ScrollUpThree();
    }
}

// Starts to scroll when a held pointer has left the list above or below, so that the band goes on
// by itself. True once that has ended: nothing is left to do for the move that led here.
bool JList::EdgeScrollCheck() {
    const bool below = double{mouse_.y} > ScaleHeight();
    const bool above = mouse_.y < 0;
    if (!below && !above && mouse_.edgeScrolling) {
        mouse_.edgeScrolling = false;
        return false;
    }
    if (mouse_.mode == ListMouse::kNoPress || mouse_.thumbDragging || mouse_.edgeScrolling ||
        (!below && !above)) {
        return false;
    }
    mouse_.edgeScrolling = true;
    AutoScroll(below ? kStep : -kStep);
    mouse_.edgeScrolling = false;
    return true;
}

void JList::ShowStart() {
    range_.first = 0;
    range_.last = VisibleRows() - 1;
    DisplayList();
}

void JList::ShowEnd() {
    range_.last = ListCount() - 1;
    range_.first = ListCount() - VisibleRows() + 1;
    DisplayList();
}

bool JList::ThumbEdgeCheck() {
    if (!mouse_.thumbDragging) {
        return false;
    }
    if (mouse_.y <= 0) {
        ShowStart();
        return true;
    }
    if (double{mouse_.y} >= ScaleHeight()) {
        ShowEnd();
        return true;
    }
    return false;
}

// Runs for as long as the thumb is held. The pointer's place is what the moves that arrive in
// between have left in mouse_.
void JList::ThumbDragLoop() {
    mouse_.thumbLoopActive = true;
    mouse_.thumbGrabOffset = mouse_.y - static_cast<float>(thumb_.rect.top);
    Long rows = 0;
    while (mouse_.mode != ListMouse::kNoPress && mouse_.thumbDragging) {
        if (!Pump(kThumbPeriod)) {
            return;
        }
        if (!ThumbDragStep(rows)) {
            break;
        }
    }
    mouse_.thumbLoopActive = false;
}

// Moves the rows by the part of the list that the pointer has gone along the track since the last
// step. `rows` keeps that number from step to step. False if the pointer has come to either end.
bool JList::ThumbDragStep(Long& rows) {
    if (double{mouse_.y} >= ScaleHeight()) {
        ShowEnd();
        return false;
    }
    if (mouse_.y <= 0) {
        ShowStart();
        return false;
    }
    const Long moved = platform::RoundHalfEven(double{mouse_.y} - double{mouse_.thumbLastY});
    const Long span = thumb_.maxY - thumb_.minY + 1;
    if (span != 0) {
        const auto part = static_cast<float>(double{1} * std::abs(moved) / span);
        rows = static_cast<Long>(std::floor(double{part} * ListCount()));
        rows = moved < 0 ? -rows : rows;
    }
    // Too small a move: thumbLastY stays, so that the next one adds to it.
    if (rows == 0) {
        return true;
    }
    range_.first = std::max(Moved(range_.first, rows), 0);
    if (Moved(range_.first, VisibleRows() - 1) > ListCount()) {
        range_.first = ListCount() - VisibleRows() + 1;
    }
    range_.last = Moved(range_.first, VisibleRows() - 1);
    DisplayList(mouse_.thumbGrabOffset);
    mouse_.thumbGrabOffset = mouse_.y - static_cast<float>(thumb_.rect.top);
    mouse_.thumbLastY = mouse_.y;
    return true;
}

}  // namespace sarnel
