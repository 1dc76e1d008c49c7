// What of the pictures is on the screen. Tried where it can be looked at.
#include <array>
#include <optional>
#include <string>

#include "tests/conformance/trial.h"

namespace conformance {

namespace {

constexpr platform::Colour kOther = 0x00FF00;

// Waits until the picture's pixel is on the screen.
void AwaitColour(Trial& trial, Point ptScreen, platform::Colour colour, const std::string& what) {
    Trial::Need(trial.Around().ColourOnScreen(ptScreen).has_value());
    trial.Await([&] { return trial.Around().ColourOnScreen(ptScreen) == colour; }, what);
}

// For a picture at kPlace.
void AwaitPixel(Trial& trial, Point inPicture, const std::string& what) {
    AwaitColour(trial, {kPlace.left + inPicture.x, kPlace.top + inPicture.y},
                Trial::ColourAt(inPicture), what);
}

// Else the first picture would never be composed.
void NewWindowCountsAsSeen(Trial& trial) {
    const Handle window = trial.Create(kPlace);
    trial.Desktop().SetTopLevelVisible(window, true);
    Trial::Require(trial.Desktop().IsSeen(window), "IsSeen of a window just shown is False");
    trial.ShowNewPicture(window, {100, 60});
    trial.Settle();
    trial.Desktop().SetTopLevelVisible(window, false);
    trial.Settle();
    trial.Desktop().SetTopLevelVisible(window, true);
    Trial::Require(trial.Desktop().IsSeen(window), "IsSeen of a window shown again is False");
}

void ShownAsItIs(Trial& trial) {
    trial.Open(kPlace);
    for (const Point point :
         {Point{0, 0}, Point{99, 0}, Point{0, 59}, Point{99, 59}, Point{40, 30}}) {
        AwaitPixel(trial, point, "a pixel of the first picture");
    }
}

void ChangesAreShown(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    trial.PictureOf(window).SetPixel({40, 30}, kOther);
    trial.PictureOf(window).SetPixel({99, 59}, kOther);
    const std::array<Rect, 2> changed{Rect{40, 30, 41, 31}, Rect{99, 59, 100, 60}};
    trial.Desktop().ShowPicture(window, trial.PictureOf(window), changed);
    AwaitColour(trial, {140, 130}, kOther, "a change of the picture");
    AwaitColour(trial, {199, 159}, kOther, "the second change of the picture");
    AwaitPixel(trial, {41, 30}, "what is beside a change, as it was,");
    trial.Desktop().ShowPicture(window, trial.PictureOf(window), {});
    trial.Settle();
    AwaitColour(trial, {140, 130}, kOther, "a picture without changes, as it was,");
}

void StaysWhileHidden(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    AwaitPixel(trial, {40, 30}, "the picture");
    trial.Desktop().SetTopLevelVisible(window, false);
    Trial::Need(trial.Around().ColourOnScreen({140, 130}).has_value());
    trial.Await(
        [&] {
            return trial.Around().ColourOnScreen({140, 130}) != Trial::ColourAt({40, 30});
        },
        "hiding a window");
    trial.Desktop().SetTopLevelVisible(window, true);
    AwaitPixel(trial, {40, 30}, "the picture of a window that was hidden, as it was,");
}

void ComesBackAfterMinimising(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    AwaitPixel(trial, {40, 30}, "the picture");
    trial.Desktop().SetTopLevelMinimised(window, true);
    trial.Settle();
    trial.Desktop().SetTopLevelMinimised(window, false);
    AwaitPixel(trial, {40, 30}, "the picture of a window that was minimised, as it was,");
}

void FollowsTheSize(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    AwaitPixel(trial, {40, 30}, "the picture");
    trial.Desktop().SetTopLevelRect(window, {100, 100, 260, 220});
    trial.ShowNewPicture(window, {160, 120});
    AwaitPixel(trial, {150, 110}, "the picture of a window that has grown");
    trial.Desktop().SetTopLevelRect(window, {100, 100, 140, 120});
    trial.ShowNewPicture(window, {40, 20});
    AwaitPixel(trial, {39, 19}, "the picture of a window that has shrunk");
    trial.Await(
        [&] {
            return trial.Around().ColourOnScreen({240, 200}) != Trial::ColourAt({140, 100});
        },
        "the end of what a window has shown in a larger size");
}

void StandsWhereItWasPut(Trial& trial) {
    Trial::Need(trial.Desktop().PlacesWindows());
    const Handle window = trial.Open(kPlace);
    trial.Desktop().SetTopLevelRect(window, {-30, 200, 70, 260});
    AwaitColour(trial, {10, 210}, Trial::ColourAt({40, 10}), "a window that begins left of 0");
    trial.Desktop().SetTopLevelRect(window, {300, 200, 400, 260});
    AwaitColour(trial, {310, 210}, Trial::ColourAt({10, 10}), "a window that was moved");
}

void PopupLiesAbove(Trial& trial) {
    const Handle owner = trial.Open(kPlace);
    const Handle popup = trial.CreatePopup({150, 120, 190, 150}, owner, platform::PopupKind::kTip);
    trial.Show(popup);
    AwaitColour(trial, {155, 121}, Trial::ColourAt({5, 1}), "a popup above its owner");
    trial.Destroy(popup);
    AwaitColour(trial, {155, 121}, Trial::ColourAt({55, 21}), "the owner once its popup has gone");
}

constexpr std::array kPictureRules{
    Rule{"pictures.new_window_counts_as_seen", NewWindowCountsAsSeen},
    Rule{"pictures.shown_as_it_is", ShownAsItIs},
    Rule{"pictures.changes_are_shown", ChangesAreShown},
    Rule{"pictures.stays_while_hidden", StaysWhileHidden},
    Rule{"pictures.comes_back_after_minimising", ComesBackAfterMinimising},
    Rule{"pictures.follows_the_size", FollowsTheSize},
    Rule{"pictures.stands_where_it_was_put", StandsWhereItWasPut},
    Rule{"pictures.popup_lies_above", PopupLiesAbove},
};

}  // namespace

std::span<const Rule> RulesOfPictures() {
    return kPictureRules;
}

}  // namespace conformance
