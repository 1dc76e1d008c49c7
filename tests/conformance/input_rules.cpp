// Pointer, keyboard, grabs, writing, the clipboard.
#include <array>
#include <string>

#include "platform/base/keys.h"
#include "tests/conformance/trial.h"

namespace conformance {

namespace {

using platform::ButtonChanged;
using platform::KeyChanged;
using platform::kLeftButton;
using platform::kShiftBit;
using platform::PointerMoved;
using platform::TextTyped;

constexpr Point kInside{130, 120};
constexpr Point kOutside{400, 300};

std::string Text(Point point) {
    return std::to_string(point.x) + "," + std::to_string(point.y);
}

// The last of a run of moves, which may be told one by one.
void AwaitMoveTo(Trial& trial, Point ptScreen, const std::string& what) {
    for (;;) {
        const auto moved = trial.AwaitEvent<PointerMoved>(what + " to " + Text(ptScreen));
        Trial::Require(!HasAny<ButtonChanged>(trial.Passed()), "a button is reported too soon");
        if (moved.ptScreen == ptScreen) {
            return;
        }
    }
}

void AwaitButton(Trial& trial, bool down, Point ptScreen) {
    const std::string what = down ? "a press" : "a release";
    const auto change = trial.AwaitEvent<ButtonChanged>(what);
    Trial::Require(change.down == down && change.button == kLeftButton,
                   "another change of a button than " + what);
    Trial::Require(change.ptScreen == ptScreen,
                   what + " is reported at " + Text(change.ptScreen) + ", not " + Text(ptScreen));
}

void PointerInPixelsOfTheScreen(Trial& trial) {
    trial.Open(kPlace);
    Trial::Need(trial.Around().MovePointer(kInside));
    AwaitMoveTo(trial, kInside, "a move");
    Trial::Require(trial.Desktop().Pointer() == kInside, "Pointer answers another place");
}

void WindowsAtNegativePlacesHearOfThePointer(Trial& trial) {
    Trial::Need(trial.Desktop().PlacesWindows());
    trial.Open({-50, 200, 50, 260});
    Trial::Need(trial.Around().MovePointer({20, 220}));
    AwaitMoveTo(trial, {20, 220}, "a move over a window that begins left of 0");
}

// In their order, and to the release wherever it is.
void PressIsFollowedToItsRelease(Trial& trial) {
    trial.Open(kPlace);
    Trial::Need(trial.Around().MovePointer(kInside));
    Trial::Need(trial.Around().ChangeButton(kLeftButton, true));
    AwaitMoveTo(trial, kInside, "a move");
    AwaitButton(trial, true, kInside);
    Trial::Need(trial.Around().MovePointer(kOutside));
    Trial::Need(trial.Around().ChangeButton(kLeftButton, false));
    AwaitMoveTo(trial, kOutside, "a move under a held button");
    AwaitButton(trial, false, kOutside);
    Trial::Require(!HasAny<ButtonChanged>(trial.Settle()), "a release is reported twice");
}

void PressOutsideIsNotOurs(Trial& trial) {
    trial.Open(kPlace);
    Trial::Need(trial.Around().ClickElsewhere());
    Trial::Require(!HasAny<ButtonChanged>(trial.Settle()),
                   "a click beside all windows is reported");
}

void WheelCountsNotches(Trial& trial) {
    trial.Open(kPlace);
    Trial::Need(trial.Around().MovePointer(kInside));
    for (const Long wanted : {2, -1}) {
        Trial::Need(trial.Around().TurnWheel(wanted));
        auto turned = trial.AwaitEvent<platform::WheelTurned>("the wheel");
        Trial::Require(turned.ptScreen == kInside, "the wheel is reported at another place");
        Long notches = turned.notches;
        for (const DriverEvent& event : trial.Settle()) {
            if (const auto* const more = std::get_if<platform::WheelTurned>(&event)) {
                notches += more->notches;
            }
        }
        Trial::Require(notches == wanted, "the wheel is reported as turned by " +
                                              std::to_string(notches) + " notches, not " +
                                              std::to_string(wanted));
    }
}

void AwaitKey(Trial& trial, Long code, Long shift, bool down) {
    const std::string what =
        std::string(down ? "the press" : "the release") + " of key " + std::to_string(code);
    const auto key = trial.AwaitEvent<KeyChanged>(what);
    Trial::Require(!HasAny<TextTyped>(trial.Passed()), "text comes before its key");
    Trial::Require(key.code == code && key.down == down,
                   "key " + std::to_string(key.code) + " is reported in place of " + what);
    Trial::Require(key.shift == shift,
                   what + " comes with the modifiers " + std::to_string(key.shift));
}

void AwaitText(Trial& trial, const std::u16string& text) {
    const auto typed = trial.AwaitEvent<TextTyped>("what a key types");
    Trial::Require(!HasAny<KeyChanged>(trial.Passed()),
                   "between a press and its text something else of the keyboard is reported");
    Trial::Require(typed.text == text, "a key types something else");
}

void Type(Trial& trial, Long code, bool down) {
    Trial::Need(trial.Around().ChangeKey(code, down));
}

void TextFollowsItsKey(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    trial.Desktop().ActivateTopLevel(window);
    trial.Settle();
    Type(trial, 'A', true);
    Type(trial, 'A', false);
    AwaitKey(trial, 'A', 0, true);
    AwaitText(trial, u"a");
    AwaitKey(trial, 'A', 0, false);
    Type(trial, platform::VK_RETURN, true);
    Type(trial, platform::VK_RETURN, false);
    AwaitKey(trial, platform::VK_RETURN, 0, true);
    AwaitText(trial, u"\r");
    AwaitKey(trial, platform::VK_RETURN, 0, false);
}

void ModifierCountsFromItsPressToItsRelease(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    trial.Desktop().ActivateTopLevel(window);
    trial.Settle();
    Type(trial, platform::VK_SHIFT, true);
    Type(trial, 'A', true);
    Type(trial, 'A', false);
    Type(trial, platform::VK_SHIFT, false);
    AwaitKey(trial, platform::VK_SHIFT, kShiftBit, true);
    AwaitKey(trial, 'A', kShiftBit, true);
    AwaitText(trial, u"A");
    AwaitKey(trial, 'A', kShiftBit, false);
    AwaitKey(trial, platform::VK_SHIFT, 0, false);
}

// A menu hears of what happens anywhere; of what comes after it nobody does.
void GrabReachesEverywhere(Trial& trial) {
    const Handle owner = trial.Open(kPlace);
    const Handle menu = trial.CreatePopup({120, 120, 220, 300}, owner, platform::PopupKind::kMenu);
    trial.Show(menu);
    trial.Desktop().GrabInput(menu);
    Trial::Require(!HasAny<platform::InputLost>(trial.Settle()), "the grab is lost at once");
    Trial::Need(trial.Around().MovePointer(kOutside));
    AwaitMoveTo(trial, kOutside, "a move beside all windows, under a grab,");
    Trial::Need(trial.Around().ChangeButton(kLeftButton, true));
    AwaitButton(trial, true, kOutside);
    Trial::Need(trial.Around().ChangeButton(kLeftButton, false));
    AwaitButton(trial, false, kOutside);
    Type(trial, 'A', true);
    Type(trial, 'A', false);
    AwaitKey(trial, 'A', 0, true);
    AwaitText(trial, u"a");
    AwaitKey(trial, 'A', 0, false);
    trial.Desktop().ReleaseInput();
    trial.Destroy(menu);
    Trial::Require(!HasAny<platform::InputLost>(trial.Settle()),
                   "input that was released is reported as lost");
}

void WritingIsNoNews(Trial& trial) {
    const Handle window = trial.Open(kPlace);
    trial.Desktop().ActivateTopLevel(window);
    trial.Settle();
    trial.Desktop().SetTextInput(platform::TextInput{window, {10, 10, 11, 23}});
    trial.Desktop().EndComposing();
    trial.Desktop().SetTextInput(platform::TextInput{4711, {}});
    trial.Desktop().SetTextInput(std::nullopt);
    trial.Desktop().EndComposing();
    const auto events = trial.Settle();
    Trial::Require(!HasAny<TextTyped>(events) && !HasAny<KeyChanged>(events),
                   "where the user writes is reported as typed");
}

// A desktop may have no clipboard.
void ClipboardGivesBackWhatItGot(Trial& trial) {
    const std::u16string text = u"two words\nand a line";
    trial.Desktop().SetClipboardText(text);
    const std::u16string got = trial.Desktop().ClipboardText();
    Trial::Require(got == text || got.empty(), "the clipboard gives back another text");
}

constexpr std::array kInputRules{
    Rule{"input.pointer_in_pixels_of_the_screen", PointerInPixelsOfTheScreen},
    Rule{"input.windows_at_negative_places", WindowsAtNegativePlacesHearOfThePointer},
    Rule{"input.press_is_followed_to_its_release", PressIsFollowedToItsRelease},
    Rule{"input.press_outside_is_not_ours", PressOutsideIsNotOurs},
    Rule{"input.wheel_counts_notches", WheelCountsNotches},
    Rule{"input.text_follows_its_key", TextFollowsItsKey},
    Rule{"input.modifier_counts_from_its_press", ModifierCountsFromItsPressToItsRelease},
    Rule{"input.grab_reaches_everywhere", GrabReachesEverywhere},
    Rule{"input.writing_is_no_news", WritingIsNoNews},
    Rule{"input.clipboard_gives_back", ClipboardGivesBackWhatItGot},
};

}  // namespace

std::span<const Rule> RulesOfInput() {
    return kInputRules;
}

}  // namespace conformance
