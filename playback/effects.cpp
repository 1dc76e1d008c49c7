// The seven audio effects. The host does the audio work; the component keeps each slider's
// position, shows it, stores it and sends it.
#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

struct Effect {
    Long slider;  // also the index of its label
    Long centre;  // a slider's value is never negative: what is sent and shown is less by this
    Setting<Long> setting;
    const char16_t* label;
    Long impulse;
    void (*set)(Long value);
};

constexpr std::array<Effect, kEffectCount> kEffects{{
    {kTempoSlider, 50, settings::kEffectTempo, u"Tempo = ", ImpulseSetTempo, SetTempo},
    {kPitchSlider, 20, settings::kEffectPitch, u"Pitch = ", ImpulseSetPitch, SetPitch},
    {kEchoSlider, 0, settings::kEffectEcho, u"Echo = ", ImpulseSetEcho, SetEcho},
    {kReverbSlider, 0, settings::kEffectReverb, u"Reverb = ", ImpulseSetReverb, SetReverb},
    {kBassSlider, 15, settings::kEffectBass, u"Bass = ", ImpulseSetBass, SetBass},
    {kMidSlider, 15, settings::kEffectMid, u"Mid = ", ImpulseSetMid, SetMid},
    {kTrebleSlider, 15, settings::kEffectTreble, u"Treble = ", ImpulseSetTreble, SetTreble},
}};

// The rows stand in the order of the sliders.
const Effect& EffectOf(Long slider) {
    return kEffects.at(static_cast<std::size_t>(slider - kFirstEffect));
}

void SetEffect(const Effect& effect, Long value) {
    // No slider comes near the lowest number, a direct call may.
    const Long shown =
        std::max(value, std::numeric_limits<Long>::min() + effect.centre) - effect.centre;
    effect.setting.Write(value);
    App().Main().lblEffects(effect.slider).Caption(effect.label + LongToText(shown));
    SendImpulse(effect.impulse, shown);
}

}  // namespace

void SetTempo(Long value) {
    const Effect& tempo = EffectOf(kTempoSlider);
    if (value >= tempo.centre - 1 && value <= tempo.centre + 1) {
        value = tempo.centre;
        App().Main().sldSkin(tempo.slider).Value(value);
    }
    SetEffect(tempo, value);
}

void SetPitch(Long value) {
    SetEffect(EffectOf(kPitchSlider), value);
}
void SetEcho(Long value) {
    SetEffect(EffectOf(kEchoSlider), value);
}
void SetReverb(Long value) {
    SetEffect(EffectOf(kReverbSlider), value);
}
void SetBass(Long value) {
    SetEffect(EffectOf(kBassSlider), value);
}
void SetMid(Long value) {
    SetEffect(EffectOf(kMidSlider), value);
}
void SetTreble(Long value) {
    SetEffect(EffectOf(kTrebleSlider), value);
}

void SetEffectOf(Long slider, Long value) {
    for (const Effect& effect : kEffects) {
        if (effect.slider == slider) {
            effect.set(value);
        }
    }
}

// All sliders are written before the first routine, so that the host gets seven impulses in a row.
void ResetEffects() {
    for (const Effect& effect : kEffects) {
        Step([&] { App().Main().sldSkin(effect.slider).Value(effect.setting.initial); });
    }
    for (const Effect& effect : kEffects) {
        Step([&] { effect.set(App().Main().sldSkin(effect.slider).Value()); });
    }
}

void LoadEffects() {
    for (const Effect& effect : kEffects) {
        Step([&] {
            if (const auto stored = effect.setting.Read()) {
                App().Main().sldSkin(effect.slider).Value(*stored);
            }
            effect.set(App().Main().sldSkin(effect.slider).Value());
        });
    }
}

}  // namespace sarnel
