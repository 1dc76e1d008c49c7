// What tells the user what plays: the caption, the one-line fact and the long one.
#include <limits>
#include <string>

#include "core/base/impulses.h"
#include "core/base/version.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "playback/mPlayback.h"
#include "shell/tray.h"

namespace sarnel {

namespace {

std::u16string TimeFact(bool remaining) {
    const std::u16string time = Ask(ImpulseGetTimeText, std::u16string(), remaining);
    return time + u" | " + Ask(ImpulseGetLengthText, std::u16string());
}

// It reads 44kHz.stereo, for example; the plain point between the two is meant.
std::u16string FormatFact() {
    const std::u16string rate = LongToText(Ask(ImpulseGetSampleRate, Long{0}) / 1000);
    const Long channels = Ask(ImpulseGetChannels, Long{0});
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
    if (IsOn(settings::kHideInSystray) && !main.Visible()) {
        TrayModify(windows, main.HWnd(), main.Icon(), main.Caption());
    }
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
            App().InfoText = Ask(ImpulseGetBitRate, std::u16string()) + u" kb/s";
            break;
        default:
            break;  // the text stays as it was
    }
    DrawInfoDisplay();
}

void DrawInfoDisplay() {
    App().Main().picInfoDisplay.ShowText(App().InfoText, App().DisplayRect, platform::DT_CENTER);
}

void ShowItemInfo() {
    const Long current = Playlist().ListCurrent();
    const std::u16string path = current >= 0 ? Playlist().ListData(current) : std::u16string();
    App().Main().lblFrameInfoDescription->Caption(Ask(ImpulseGetInfo, std::u16string(), path));
}

void NextDisplayMode() {
    constexpr Long kModes = 4;
    Long& mode = App().DisplayMode;
    // A stored mode may be any number. Nothing can be added to the largest: a step that fails.
    if (mode < std::numeric_limits<Long>::max()) {
        ++mode;
    }
    if (mode == kModes) {
        mode = 0;
    }
    settings::kDisplayMode.Write(mode);
    RefreshInfoDisplay();
}

}  // namespace sarnel
