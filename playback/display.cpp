// What tells the user what plays: the caption, the scrolling title and the one-line fact.
#include <string>

#include "core/failure.h"
#include "core/frmmain.h"
#include "core/impulses.h"
#include "core/mGeneral.h"
#include "core/program.h"
#include "core/seams.h"
#include "core/version.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

constexpr Long kScrollTimer = 12;
constexpr Long kScrollPeriod = 30;  // milliseconds

std::u16string AskText(Long impulse, ImpulseValue argument) {
    std::u16string text;
    SendImpulse(impulse, std::move(argument), &text, Long{0});
    return text;
}

Long AskNumber(Long impulse) {
    Long number = 0;
    SendImpulse(impulse, Long{0}, &number, Long{0});
    return number;
}

std::u16string TimeFact(bool remaining) {
    const std::u16string time = AskText(ImpulseGetTimeText, remaining);
    return time + u" | " + AskText(ImpulseGetLengthText, Long{0});
}

// Such as 44kHz.stereo: the plain point is meant.
std::u16string FormatFact() {
    const std::u16string rate = LongToText(AskNumber(ImpulseGetSampleRate) / 1000);
    const Long channels = AskNumber(ImpulseGetChannels);
    const std::u16string channelText = channels == 1   ? u"mono"
                                       : channels == 2 ? u"stereo"
                                                       : LongToText(channels) + u"multi";
    return rate + u"kHz." + channelText;
}

}  // namespace

std::u16string RestingTitle() {
    return u"Veldrin v" + LongToText(kVersionMajor) + u"." + LongToText(kVersionMinor);
}

void SetWindowTitle(std::u16string_view title) {
    frmMAIN& main = App().Main();
    platform::WindowSystem& windows = App().windows;
    main.Caption(title);
    // Setting a caption on this kind of window loses the two styles.
    windows.SetWindowLong(
        main.HWnd(), platform::GWL_STYLE,
        windows.GetWindowLong(main.HWnd(), platform::GWL_STYLE) | platform::kSystemMenuAndMinimise);
    bool hides = false;
    Take(hides, TextToBoolean(ReadSetting(u"HideInSystray", u"False")));
    if (hides && !main.Visible()) {
        seams::TrayModify(main.Caption());
    }
}

void SetScrollText(std::u16string_view text) {
    constexpr std::u16string_view kSeparator = u"  ---  ";
    Program& app = App();
    app.ScrollBack = true;
    app.ScrollRect.left = 0;
    app.ScrollText = text;
    for (int copy = 1; copy < 4; ++copy) {
        app.ScrollText.append(kSeparator).append(text);
    }
    const platform::Size size =
        app.windows.MeasureText(app.Main().picScrollText.GetFont(), app.ScrollText);
    app.ScrollRect.right = app.ScrollRect.left + size.width + 2;
    app.ScrollRect.bottom = app.ScrollRect.top + size.height;
}

void StartScrollTimer() {
    App().windows.SetTimer(App().Main().HWnd(), kScrollTimer, kScrollPeriod,
                           [](Handle, Long) { seams::DrawScrollText(); });
}

void StopScrollTimer() {
    App().windows.KillTimer(App().Main().HWnd(), kScrollTimer);
}

void RefreshInfoDisplay() {
    switch (App().DisplayMode) {
        case 0:
        case 1:
            App().InfoText = TimeFact(App().DisplayMode == 1);
            break;
        case 2:
            App().InfoText = FormatFact();
            break;
        case 3:
            App().InfoText = AskText(ImpulseGetBitRate, Long{0}) + u" kb/s";
            break;
        default:
            break;  // the text stays as it was
    }
    DrawInfoDisplay();
}

void DrawInfoDisplay() {
    seams::DrawInfoDisplay();
}

}  // namespace sarnel
