// What the skin's buttons and sliders do.
#include "core/ambrisor.h"
#include "core/frmmain.h"
#include "core/impulses.h"
#include "core/mAmbrisor.h"
#include "core/program.h"
#include "core/seams.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

void RequestMinimise() {
    if (Ambrisor* component = App().component) {
        ImpulseValue minimise(true);
        ImpulseValue formerState(Long{0});
        component->ProcessImpulse(kImpulseControl, kControlMinimise, minimise, formerState);
    }
}

}  // namespace

// The others open menus.
void btnSkin_Click(Long Index) {
    switch (Index) {
        case 0:
            RequestClose();
            break;
        case 1:
            RequestMinimise();
            break;
        case 3:
            PreviousItem();
            break;
        case 4:
            PlayCurrentItem();
            break;
        case 5:
            TogglePlayback();
            break;
        case 6:
            StopPlayback();
            break;
        case 7:
            NextItem();
            break;
        case 12:
            ResetEffects();
            break;
        default:
            break;
    }
}

void sldSkin_Scroll(Long Index) {
    JSlider& slider = App().Main().sldSkin(Index);
    switch (Index) {
        case 0:
            // One seek, when the button goes up. The item may have ended under the user's hand.
            if (!slider.IsSliderMouseControled() && slider.Enabled()) {
                SetPosition(slider.Value());
            }
            break;
        case 1:
            SetVolume(slider.Value());
            break;
        case 2:
            seams::ScrollLyrics();
            break;
        default:
            SetEffectOf(Index, slider.Value());
            break;
    }
}

namespace {

// The tooltip comes up with the first move over a control, and follows.
template <class T>
void ShowTips(const ControlArray<T>& controls) {
    constexpr Long kTimeOut = 500;
    for (Long i = controls.LowestIndex(); i <= controls.HighestIndex(); ++i) {
        T& control = controls(i);
        control.onMouseMove = [&control](const platform::MouseEvent&) {
            seams::ShowTooltip(control.ToolTipText(), kTimeOut);
        };
    }
}

}  // namespace

void AttachSkinHandlers(frmMAIN& main) {
    ShowTips(main.btnSkin);
    ShowTips(main.tglSkin);
    for (const Long index : {0, 1, 3, 4, 5, 6, 7, 12}) {
        main.btnSkin(index).onClick = [index] { btnSkin_Click(index); };
    }
    for (Long i = main.sldSkin.LowestIndex(); i <= main.sldSkin.HighestIndex(); ++i) {
        main.sldSkin(i).onScroll = [i] { sldSkin_Scroll(i); };
    }
}

}  // namespace sarnel
