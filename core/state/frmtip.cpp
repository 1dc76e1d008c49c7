#include "core/state/frmtip.h"

#include "core/base/failure.h"
#include "core/state/program.h"
#include "platform/base/rounding.h"

namespace sarnel {

using platform::Point;
using platform::Rect;
using platform::Size;

namespace {

constexpr Long kTimeOutTimer = 1;  // tmrTimeOut

}  // namespace

frmTIP::frmTIP(platform::WindowSystem& windows) : Widget(windows, 0, {0, 0, 20, 23}) {
    SetFont({u"Arial", 9.75, true, false});
}

void frmTIP::ShowTooltip(std::u16string_view text, Long timeOut) {
    if (text.empty()) {
        return;
    }
    if (text != text_) {
        Hide();
    }
    windows_.KillTimer(HWnd(), kTimeOutTimer);
    text_ = text;
    const Rect place = Place();
    constexpr Long kBandOnly =
        platform::SWP_NOSIZE | platform::SWP_NOMOVE | platform::SWP_NOACTIVATE;
    windows_.SetWindowPos(HWnd(), platform::HWND_TOPMOST, 0, 0, 0, 0, kBandOnly);
    Move(place.left, place.top, place.Width(), place.Height());
    windows_.ShowWindow(HWnd(), platform::SW_SHOWNOACTIVATE);
    if (!(DrawnNow() == drawn_)) {
        Form_Resize();  // another text of the same width, or another skin
    }
    if (timeOut > 0) {
        windows_.SetTimer(HWnd(), kTimeOutTimer, timeOut,
                          [this](platform::Handle, Long) { Hide(); });
    }
}

// Centred below the pointer, within the work area. The vertical test looks at its right edge, on
// purpose: on a wide screen it rarely turns the tooltip up.
Rect frmTIP::Place() const {
    constexpr Long kBelow = 24;
    constexpr Long kAbove = 6;
    const Point cursor = windows_.GetCursorPos();
    Size size{Width(), Height()};
    Step([&] {
        const Rect text = windows_.Text().Calculate(GetFont(), text_, {}, platform::DT_CALCRECT);
        size.width = Needed(imgTip1)->Width() + text.right + Needed(imgTip3)->Width();
    });
    Step([&] { size.height = Needed(imgTip1)->Height(); });
    Long x = platform::RoundHalfEven(cursor.x - size.width / 2.0);
    Long y = cursor.y + kBelow;
    const Long right = App().WorkArea.right;
    if (x > right - size.width) {
        x = right - size.width;
    }
    if (y > right - size.height) {
        y = cursor.y - size.height - kAbove;
    }
    if (x < 0) {
        x = 0;
    }
    return {x, y, x + size.width, y + size.height};
}

void frmTIP::Form_Resize() {
    platform::Surface& face = Canvas();
    const Long width = face.Width();
    face.FillRect(face.Bounds(), BackColor());
    Step([&] {
        const platform::Surface& middle = *Needed(imgTip2);
        const double wide = middle.Width();
        const double high = middle.Height();
        face.StretchBlt({middle.Width(), 0, middle.Width() + width, middle.Height()}, middle,
                        {0, 0, wide, high});
    });
    const auto paint = [&face](const platform::Surface& picture, Long left) {
        face.BitBlt({left, 0, left + picture.Width(), picture.Height()}, picture, {0, 0});
    };
    Step([&] { paint(*Needed(imgTip1), 0); });
    Step([&] {
        const platform::Surface& right = *Needed(imgTip3);
        paint(right, width - right.Width());
    });
    // A rectangle without width: the text's middle stands on it.
    const Long middle = width / 2;
    const Long top = (face.Height() - TextHeight(text_)) / 2;
    constexpr Long kCentred =
        platform::DT_CENTER | platform::DT_SINGLELINE | platform::DT_NOPREFIX | platform::DT_NOCLIP;
    windows_.Text().Draw(face, GetFont(), text_, {middle, top, middle, face.Height()}, kCentred,
                         ForeColor());
    drawn_ = DrawnNow();
    ShowFace();
}

void frmTIP::MouseMove(const platform::MouseEvent& event) {
    RaiseMouseMove(event);
    Hide();
}

void frmTIP::Hide() {
    windows_.KillTimer(HWnd(), kTimeOutTimer);
    windows_.ShowWindow(HWnd(), platform::SW_HIDE);
}

}  // namespace sarnel
