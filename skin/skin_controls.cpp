// The rows of one control, applied to it.
#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "skin/skin_steps.h"

namespace sarnel {

namespace {

// Buttons and toggles have the same five rows.
template <class T>
void ApplyStripRows(ControlArray<T>& array, Long index, const SkinRows& first) {
    enum Offset : Long { kPicture, kMaskPicture, kToolTip, kLeft, kTop };
    Step([&] { array.Load(index); });  // fails where it is there already
    T& control = array(index);
    Step([&] { control.MaskPicture(first.PictureNamed(kMaskPicture)); });
    Step([&] { control.Picture(first.PictureNamed(kPicture)); });
    // The size is the mask's.
    Step([&] { control.Move(first.Number(kLeft), first.Number(kTop)); });
    Step([&] { control.ToolTipText(first.Text(kToolTip)); });
    Step([&] { control.Visible(true); });
}

}  // namespace

void ApplyButtonRows(Long index, const SkinRows& first) {
    ApplyStripRows(App().Main().btnSkin, index, first);
}

void ApplyToggleRows(Long index, const SkinRows& first) {
    ApplyStripRows(App().Main().tglSkin, index, first);
}

void ApplySliderRows(Long index, const SkinRows& first) {
    enum Offset : Long {
        kPicture,
        kStickPicture,
        kStickMaskPicture,
        kStickPosition,
        kStyle,
        kLeft,
        kTop,
        kWidth,
        kHeight
    };
    ControlArray<JSlider>& array = App().Main().sldSkin;
    Step([&] { array.Load(index); });  // fails where it is there already
    JSlider& slider = array(index);
    Step([&] { slider.Picture(first.PictureNamed(kPicture)); });
    Step([&] { slider.StickMaskPicture(first.PictureNamed(kStickMaskPicture)); });
    Step([&] { slider.StickPicture(first.PictureNamed(kStickPicture)); });
    Step([&] { slider.StickPosition(first.Number(kStickPosition)); });
    Step([&] { slider.Style(first.Boolean(kStyle)); });
    // A height of 0 is meant: the slider corrects it.
    Step([&] {
        slider.Move(first.Number(kLeft), first.Number(kTop), first.Number(kWidth),
                    first.Number(kHeight));
    });
    Step([&] { slider.Visible(true); });
}

void ApplyTextPanelRows(platform::PictureBox& panel, const SkinRows& first) {
    enum Offset : Long {
        kLeft,
        kTop,
        kWidth,
        kHeight,
        kBackColor,
        kForeColor,
        kFontName,
        kFontSize,
        kFontItalic,
        kFontBold
    };
    Step([&] {
        panel.Move(first.Number(kLeft), first.Number(kTop), first.Number(kWidth),
                   first.Number(kHeight));
    });
    Step([&] { panel.BackColor(first.Number(kBackColor)); });
    Step([&] { panel.ForeColor(first.Number(kForeColor)); });
    Step([&] { panel.FontName(first.Text(kFontName)); });
    Step([&] { panel.FontSize(first.Number(kFontSize)); });
    Step([&] { panel.FontItalic(first.Boolean(kFontItalic)); });
    Step([&] { panel.FontBold(first.Boolean(kFontBold)); });
}

namespace {

// The parts of the font apply one by one: those before a failure stay.
void ApplyListFont(JList& list, const SkinRows& font) {
    const auto change = [&](auto&& part) {
        platform::Font changed = list.ListFont();
        part(changed);
        list.ListFont(changed);
    };
    change([&](platform::Font& changed) { changed.name = font.Text(0); });
    change([&](platform::Font& changed) { changed.size = font.Number(1); });
    change([&](platform::Font& changed) { changed.italic = font.Boolean(2); });
    change([&](platform::Font& changed) { changed.bold = font.Boolean(3); });
}

}  // namespace

void ApplyListRows(JList& list, const SkinRows& skin) {
    constexpr Long kFont = 43;
    list.RedrawFlag(false);
    ApplyListFont(list, skin.From(kFont));
    list.BackColor(skin.Number(47));
    list.FocusRectColor(skin.Number(48));
    list.SelColor1(skin.Number(49));
    list.SelColor2(skin.Number(50));
    list.SelTextColor(skin.Number(52));
    SplitColor(skin.Number(51), App().PulseColorFrom);
    SplitColor(skin.Number(52), App().PulseColorTo);
    list.TextColor(skin.Number(53));
    list.ThumbBorderColor(skin.Number(54));
    list.ThumbColor1(skin.Number(55));
    list.ThumbColor2(skin.Number(56));
    list.Enabled(true);
    list.RedrawFlag(true);
}

void SplitColor(Colour colour, ColourBytes& bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[bytes.size() - 1 - i] = static_cast<std::uint8_t>((colour >> (8 * i)) & 0xFF);
    }
}

}  // namespace sarnel
