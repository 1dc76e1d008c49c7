// What keys do: the system-wide ones, and those of the playlist.
#include <array>
#include <string_view>

#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/keys.h"
#include "playback/mPlayback.h"
#include "playlist/listcommands.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Long kSeekStep = 3;

void ChangeVolume(Long by) {
    SetVolume(App().Main().sldSkin(kVolumeSlider).Value() + by);
}

// A held key goes on winding; the item stays paused until the key is released.
void Wind(Long direction, Long shift) {
    const Long step = shift == kCtrlBit ? 6 : shift == kShiftBit ? 12 : kSeekStep;
    if (App().Main().sldSkin(kPositionSlider).Enabled()) {
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
        case VK_RETURN:
            if (Playlist().ListIndex() >= 0) {
                PlayListIndex();
            }
            break;
        case VK_ADD:
            ChangeVolume(kVolumeStep);
            break;
        case VK_SUBTRACT:
            ChangeVolume(-kVolumeStep);
            break;
        case VK_LEFT:
        case VK_RIGHT:
            Wind(KeyCode == VK_RIGHT ? 1 : -1, Shift);
            break;
        default:
            if (Shift == 0) {
                TransportKey(KeyCode);
            }
            break;
    }
}

void lstPlaylist_KeyUp(Long KeyCode, Long /*Shift*/) {
    if ((KeyCode == VK_LEFT || KeyCode == VK_RIGHT) &&
        App().Main().sldSkin(kPositionSlider).Enabled()) {
        TogglePlayback();
    }
}

}  // namespace sarnel
