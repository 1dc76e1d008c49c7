// What the skin's buttons, toggles and sliders do.
#include <array>

#include "core/base/component.h"
#include "core/base/impulses.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/frmtip.h"
#include "core/state/menukeys.h"
#include "core/state/paneltable.h"
#include "core/state/program.h"
#include "lyrics/lyrics.h"
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
    struct Action {
        Long button;
        void (*run)();
    };
    static constexpr std::array<Action, kButtonCount> kActions{{
        {kExitButton, RequestClose},
        {kMinimiseButton, [] { RequestControl(kControlMinimise, true); }},
        {kMenuButton, [] { ShowMenu(u"", kCentred); }},
        {kPreviousButton, PreviousItem},
        {kPlayButton, [] { PlayCurrentItem(); }},
        {kPauseButton, TogglePlayback},
        {kStopButton, StopPlayback},
        {kNextButton, NextItem},
        {kAddButton, [] { ShowMenu(menukeys::kAddHeader, kCentredAbove); }},
        {kRemoveButton, [] { ShowMenu(menukeys::kRemoveHeader, kCentredAbove); }},
        {kMiscButton, [] { ShowMenu(menukeys::kMiscHeader, kCentredAbove); }},
        {kListsButton, [] { ShowMenu(menukeys::kListsHeader, kCentredAbove); }},
        {kResetEffectsButton, ResetEffects},
    }};
    for (const Action& action : kActions) {
        if (action.button == Index) {
            action.run();
        }
    }
}

void tglSkin_Click(Long Index) {
    if (Index == kTopMostToggle) {
        SetTopMost(App().Main().tglSkin(kTopMostToggle).Value());
    }
    for (const PanelRow& panel : kPanelRows) {
        if (panel.toggle == Index) {
            RunMenuCommand(panel.menuKey);
        }
    }
}

void sldSkin_Scroll(Long Index) {
    JSlider& slider = App().Main().sldSkin(Index);
    switch (Index) {
        case kPositionSlider:
            // One seek, when the button goes up. The item may have ended under the user's hand.
            if (!slider.IsSliderMouseControled() && slider.Enabled()) {
                SetPosition(slider.Value());
            }
            break;
        case kVolumeSlider:
            SetVolume(slider.Value());
            break;
        case kLyricsSlider:
            ScrollLyrics();
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
            App().Tip().ShowTooltip(control.ToolTipText(), kTimeOut);
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
