// Which item of a control array of the main window is which control. The order is that of the
// arrays; a skin's rows stand in another one (skin/skin_offsets.h).
#pragma once

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

/// picFrame: what can lie over the playlist (core/state/paneltable.h).
enum PanelIndex : Long {
    kLyricsPanel,
    kBrowserPanel,
    kAssociationPanel,
    kEffectsPanel,
    kInformationPanel,
    kSearchPanel,
    kPanelCount
};

/// btnSkin; the last one lies in the effects panel, the others on the window.
enum ButtonIndex : Long {
    kExitButton,
    kMinimiseButton,
    kMenuButton,
    kPreviousButton,
    kPlayButton,
    kPauseButton,
    kStopButton,
    kNextButton,
    kAddButton,
    kRemoveButton,
    kMiscButton,
    kListsButton,
    kResetEffectsButton,
    kButtonCount
};

/// tglSkin.
enum ToggleIndex : Long {
    kTopMostToggle,
    kLyricsToggle,
    kEffectsToggle,
    kInformationToggle,
    kToggleCount
};

/// sldSkin. The effects' sliders come last; lblEffects has the index of its slider.
enum SliderIndex : Long {
    kPositionSlider,
    kVolumeSlider,
    kLyricsSlider,
    kTempoSlider,
    kPitchSlider,
    kEchoSlider,
    kReverbSlider,
    kBassSlider,
    kMidSlider,
    kTrebleSlider,
    kSliderCount
};
inline constexpr Long kFirstEffect = kTempoSlider;
inline constexpr Long kEffectCount = kSliderCount - kFirstEffect;

}  // namespace sarnel
