// Play, stop, pause, and the tick that notices the end of a stream.
#include <string>

#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "lyrics/lyrics.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

constexpr Long kTickTimer = 14;
constexpr Long kTickPeriod = 50;  // milliseconds

}  // namespace

bool OpenMedia(std::u16string_view path) {
    std::u16string name(path);
    bool opened = false;
    SendImpulse(ImpulseOpen, App().Main().HWnd(), &name, &opened);
    return opened;
}

bool PlayCurrentItem() {
    const Long current = Playlist().ListCurrent();
    if (current < 0 || current >= Playlist().ListCount()) {
        return false;
    }
    if (!OpenMedia(Playlist().ListData(current))) {
        return false;
    }
    SetWindowTitle(Playlist().List(Playlist().ListCurrent()));
    SetScrollText(App().Main().Caption());
    RefreshInfoDisplay();
    if (App().Main().picFrame(kLyricsPanel).Visible()) {
        ShowLyrics(false);
    }
    const Long length = Ask(ImpulseGetLength, Long{0});
    // Without a known length nothing follows the item: it sounds, and never advances by itself.
    if (length > 0) {
        JSlider& position = App().Main().sldSkin(kPositionSlider);
        position.Value(0);
        position.Max(length);
        position.Enabled(true);
        App().Playing = true;
        StartTickTimer();
    }
    return true;
}

void StopPlayback() {
    SetWindowTitle(RestingTitle());
    SetScrollText(App().Main().Caption());
    App().Playing = false;
    App().InfoText.clear();
    DrawInfoDisplay();
    StopTickTimer();
    App().Main().sldSkin(kPositionSlider).Enabled(false);
    SendImpulse(ImpulseStop);
}

void SuspendPlayback() {
    App().Playing = false;
    SendImpulse(ImpulsePause, true);
}

void TogglePlayback() {
    App().Playing = !App().Playing;
    if (App().Playing) {
        StartTickTimer();
    } else {
        StopTickTimer();
    }
    SendImpulse(ImpulsePause, false);
}

void StartTickTimer() {
    App().windows.SetTimer(App().Main().HWnd(), kTickTimer, kTickPeriod, TickTimerProc);
}

void StopTickTimer() {
    App().windows.KillTimer(App().Main().HWnd(), kTickTimer);
}

void TickTimerProc(Handle /*window*/, Long /*id*/) {
    if (!App().Playing) {
        return;
    }
    App().StreamAlive = true;
    SendImpulse(ImpulseIsPlaying, Long{0}, &App().StreamAlive);
    if (App().StreamAlive) {
        UpdatePosition();
        RefreshInfoDisplay();
    } else if (App().ManualAdvance) {
        StopPlayback();
    } else {
        NextItem();
    }
}

}  // namespace sarnel
