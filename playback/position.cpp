// Position and volume: two sliders that stand for facts which the host owns.
#include <limits>

#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "playback/mPlayback.h"

namespace sarnel {

void SetVolume(Long volume) {
    JSlider& slider = App().Main().sldSkin(1);
    slider.Value(volume);
    slider.Refresh();
    const Long value = slider.Value();
    SendImpulse(ImpulseSetVolume, value);
    settings::kMusicVolume.Write(App().Main().sldSkin(1).Value());
}

void SetPosition(Long position) {
    JSlider& slider = App().Main().sldSkin(0);
    slider.Value(position);
    slider.Refresh();
    SendImpulse(ImpulseSeek, slider.Value());
}

void UpdatePosition() {
    // The stick is not moved away under the user's hand.
    if (App().Main().sldSkin(0).IsSliderMouseControled()) {
        return;
    }
    const Long position = Ask(ImpulseGetPosition, Long{0});
    App().Main().sldSkin(0).Value(position);
}

void MovePosition(Long units) {
    const std::int64_t position = std::int64_t{App().Main().sldSkin(0).Value()} + units;
    // A sum past the numbers is a failed step.
    if (position <= std::numeric_limits<Long>::max()) {
        SetPosition(static_cast<Long>(position));
    }
}

void SeekBy(Long units) {
    if (!App().Main().sldSkin(0).Enabled()) {
        return;
    }
    SuspendPlayback();
    MovePosition(units);
    TogglePlayback();
}

}  // namespace sarnel
