// The title that swings to and fro in picScrollText, and the pulse of the playlist's colours, both
// from one timer.
#include <algorithm>
#include <string>

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/rounding.h"
#include "playback/mPlayback.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Long kScrollTimer = 12;
constexpr Long kScrollPeriod = 30;  // milliseconds
constexpr Long kPulseSteps = 50;
constexpr Long kPulseStep = 2;

// One pixel further, if the text does not fit: it swings between its two ends. The right edge stays
// what was measured, wherever the left one has gone.
void MoveTitle() {
    Program& app = App();
    const Long width = app.Main().picScrollText.Width();
    Rect& rect = app.ScrollRect;
    if (rect.right <= width) {
        return;
    }
    if (app.ScrollBack) {
        --rect.left;
        if (width - rect.left > rect.right) {
            app.ScrollBack = false;
        }
    } else {
        ++rect.left;
        if (rect.left > 0) {
            app.ScrollBack = true;
        }
    }
}

void DrawTitle() {
    PictureBox& box = App().Main().picScrollText;
    box.Cls();
    box.DrawText(App().ScrollText, App().ScrollRect, DT_SINGLELINE | DT_NOPREFIX);
}

void Pulse() {
    Program& app = App();
    app.PulseLevel += app.PulseFalling ? -kPulseStep : kPulseStep;
    JList& list = Playlist();
    Step([&] {
        list.FocusRectColor(BlendColor(app.PulseLevel, app.PulseColorFrom, app.PulseColorTo));
    });
    list.SelTextColor(list.FocusRectColor());
    list.DisplayList();
    if (app.PulseLevel > kPulseSteps - 1) {
        app.PulseFalling = true;
    } else if (app.PulseLevel < 1) {
        app.PulseFalling = false;
    }
}

}  // namespace

void SetScrollText(std::u16string_view text) {
    constexpr std::u16string_view kSpacer = u"  ---  ";
    Program& app = App();
    app.ScrollBack = true;
    app.ScrollRect.left = 0;
    app.ScrollText = text;
    for (int copy = 1; copy < 4; ++copy) {
        app.ScrollText.append(kSpacer).append(text);
    }
    constexpr Long kRightMargin = 2;
    app.ScrollRect = app.windows.Text().Calculate(app.Main().picScrollText.GetFont(),
                                                  app.ScrollText, app.ScrollRect, DT_SINGLELINE);
    app.ScrollRect.right += kRightMargin;
}

Colour BlendColor(Long steps, const ColourBytes& from, const ColourBytes& to) {
    Colour colour = 0;
    // Blue, green, red: the colour is put together from its high byte down.
    for (std::size_t channel = 0; channel < from.size(); ++channel) {
        if (to[channel] < from[channel]) {
            throw ComponentError(6, u"Overflow");  // the difference has no sign
        }
        const Long step = RoundHalfEven((to[channel] - from[channel]) / double{kPulseSteps});
        const Long blended = std::clamp(from[channel] + (steps + 1) * step, 0, 255);
        colour = colour * 256 + blended;
    }
    return colour;
}

void ScrollTimerProc(Handle /*window*/, Long /*id*/) {
    Step(MoveTitle);
    Step(DrawTitle);
    Step(Pulse);
}

void StartScrollTimer() {
    App().windows.SetTimer(App().Main().HWnd(), kScrollTimer, kScrollPeriod, ScrollTimerProc);
}

void StopScrollTimer() {
    App().windows.KillTimer(App().Main().HWnd(), kScrollTimer);
}

}  // namespace sarnel
