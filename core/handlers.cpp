// What the main window does with the events of its controls.
#include <array>
#include <string_view>

#include "core/frmmain.h"
#include "core/mAmbrisor.h"
#include "core/program.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

constexpr Long kVolumeStep = 5;
constexpr Long kSeekStep = 3;

// Virtual-key codes; letters are their capitals.
constexpr Long kEnter = 13;
constexpr Long kLeft = 37;
constexpr Long kRight = 39;
constexpr Long kNumericPlus = 107;
constexpr Long kNumericMinus = 109;

void ChangeVolume(Long by) {
    SetVolume(App().Main().sldSkin(1).Value() + by);
}

// A held key goes on winding; the item stays paused until the key is released.
void Wind(Long direction, Long shift) {
    constexpr Long kShiftAlone = 1;
    constexpr Long kCtrlAlone = 2;
    const Long step = shift == kCtrlAlone ? 6 : shift == kShiftAlone ? 12 : kSeekStep;
    if (App().Main().sldSkin(0).Enabled()) {
        SuspendPlayback();
        MovePosition(direction * step);
    }
}

void TransportKey(Long keyCode) {
    switch (keyCode) {
        case 'Z':
            PreviousItem();
            break;
        case 'X':
            PlayCurrentItem();
            break;
        case 'C':
            TogglePlayback();
            break;
        case 'V':
            StopPlayback();
            break;
        case 'B':
            NextItem();
            break;
        default:
            break;
    }
}

void PlayListIndex() {
    if (Playlist().ListIndex() >= 0) {
        Playlist().ListCurrent(Playlist().ListIndex());
        PlayCurrentItem();
    }
}

}  // namespace

void hKeys_HotKeyPress(std::u16string_view sName) {
    struct Action {
        std::u16string_view name;
        void (*run)();
    };
    static constexpr std::array<Action, 10> kActions{{
        {u"Exit", RequestClose},
        {u"Next", NextItem},
        {u"Prev", PreviousItem},
        {u"Stop", StopPlayback},
        {u"Play", [] { PlayCurrentItem(); }},
        {u"Pause", TogglePlayback},
        {u"StepBack", [] { SeekBy(-kSeekStep); }},
        {u"StepForw", [] { SeekBy(kSeekStep); }},
        {u"VolUp", [] { ChangeVolume(kVolumeStep); }},
        {u"VolDown", [] { ChangeVolume(-kVolumeStep); }},
    }};
    for (const Action& action : kActions) {
        if (action.name == sName) {
            action.run();
        }
    }
}

void lstPlaylist_KeyDown(Long KeyCode, Long Shift) {
    switch (KeyCode) {
        case kEnter:
            PlayListIndex();
            break;
        case kNumericPlus:
            ChangeVolume(kVolumeStep);
            break;
        case kNumericMinus:
            ChangeVolume(-kVolumeStep);
            break;
        case kLeft:
        case kRight:
            Wind(KeyCode == kRight ? 1 : -1, Shift);
            break;
        default:
            if (Shift == 0) {
                TransportKey(KeyCode);
            }
            break;
    }
}

void lstPlaylist_KeyUp(Long KeyCode, Long /*Shift*/) {
    if ((KeyCode == kLeft || KeyCode == kRight) && App().Main().sldSkin(0).Enabled()) {
        TogglePlayback();
    }
}

}  // namespace sarnel
