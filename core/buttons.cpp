// What the skin's buttons, toggles and sliders do.
#include "core/base/component.h"
#include "core/base/impulses.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "core/state/seams.h"
#include "menus/commandmenu.h"
#include "playback/mPlayback.h"
#include "skin/panels.h"

namespace sarnel {

namespace {

// The component asks itself, as a host would.
void RequestControl(Long subCommand, ImpulseValue value) {
    if (Component* component = App().component) {
        ImpulseValue unused(Long{0});
        component->ProcessImpulse(kImpulseControl, subCommand, value, unused);
    }
}

}  // namespace

void RequestClose() {
    RequestControl(kControlShow, false);
}

void btnSkin_Click(Long Index) {
    switch (Index) {
        case 0:
            RequestClose();
            break;
        case 1:
            RequestControl(kControlMinimise, true);
            break;
        case 2:
            ShowMenu(u"", kCentred);
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
        case 8:
            ShowMenu(u"kAHe", kCentredAbove);
            break;
        case 9:
            ShowMenu(u"kRHe", kCentredAbove);
            break;
        case 10:
            ShowMenu(u"kSHe", kCentredAbove);
            break;
        case 11:
            ShowMenu(u"kLHD", kCentredAbove);
            break;
        case 12:
            ResetEffects();
            break;
        default:
            break;
    }
}

void tglSkin_Click(Long Index) {
    switch (Index) {
        case 0:
            SetTopMost(App().Main().tglSkin(0).Value());
            break;
        case 1:
            RunMenuCommand(u"kPkLy");
            break;
        case 2:
            RunMenuCommand(u"kPkEFX");
            break;
        case 3:
            RunMenuCommand(u"kPkNFO");
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

template <class T>
void OnClick(const ControlArray<T>& controls, void (*click)(Long Index)) {
    for (Long i = controls.LowestIndex(); i <= controls.HighestIndex(); ++i) {
        controls(i).onClick = [click, i] { click(i); };
    }
}

}  // namespace

void AttachButtonHandlers(frmMAIN& main) {
    ShowTips(main.btnSkin);
    ShowTips(main.tglSkin);
    OnClick(main.btnSkin, btnSkin_Click);
    OnClick(main.tglSkin, tglSkin_Click);
    for (Long i = main.sldSkin.LowestIndex(); i <= main.sldSkin.HighestIndex(); ++i) {
        main.sldSkin(i).onScroll = [i] { sldSkin_Scroll(i); };
    }
}

}  // namespace sarnel
