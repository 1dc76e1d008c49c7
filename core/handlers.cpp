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

void ChangeVolume(Long by) {
    SetVolume(App().Main().sldSkin(1).Value() + by);
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
    constexpr Long kEnter = 13;
    if (KeyCode == kEnter) {
        PlayListIndex();
    }
    if (Shift != 0) {
        return;
    }
    switch (KeyCode) {
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

}  // namespace sarnel
