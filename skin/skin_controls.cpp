// The rows of one control, applied to it.
#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "skin/skin_offsets.h"
#include "skin/skin_steps.h"

namespace sarnel {

namespace {

// Buttons and toggles have the same five rows.
template <class T>
void ApplyStripRows(ControlArray<T>& array, Long index, const SkinRows& first) {
    Step([&] { array.Load(index); });  // fails where it is there already
    T& control = array(index);
    Step([&] { control.MaskPicture(first.PictureNamed(ButtonBlock::kMaskPicture)); });
    Step([&] { control.Picture(first.PictureNamed(ButtonBlock::kPicture)); });
    // The size is the mask's.
    Step([&] { control.Move(first.Number(ButtonBlock::kLeft), first.Number(ButtonBlock::kTop)); });
    Step([&] { control.ToolTipText(first.Text(ButtonBlock::kToolTip)); });
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
    ControlArray<JSlider>& array = App().Main().sldSkin;
    Step([&] { array.Load(index); });  // fails where it is there already
    JSlider& slider = array(index);
    Step([&] { slider.Picture(first.PictureNamed(SliderBlock::kPicture)); });
    Step([&] { slider.StickMaskPicture(first.PictureNamed(SliderBlock::kStickMaskPicture)); });
    Step([&] { slider.StickPicture(first.PictureNamed(SliderBlock::kStickPicture)); });
    Step([&] { slider.StickPosition(first.Number(SliderBlock::kStickPosition)); });
    Step([&] { slider.Style(first.Boolean(SliderBlock::kStyle)); });
    // A height of 0 is meant: the slider corrects it.
    Step([&] {
        slider.Move(first.Number(SliderBlock::kLeft), first.Number(SliderBlock::kTop),
                    first.Number(SliderBlock::kWidth), first.Number(SliderBlock::kHeight));
    });
    Step([&] { slider.Visible(true); });
}

void ApplyTextPanelRows(platform::PictureBox& panel, const SkinRows& first) {
    Step([&] {
        panel.Move(first.Number(TextPanelBlock::kLeft), first.Number(TextPanelBlock::kTop),
                   first.Number(TextPanelBlock::kWidth), first.Number(TextPanelBlock::kHeight));
    });
    Step([&] { panel.BackColor(first.Number(TextPanelBlock::kBackColor)); });
    Step([&] { panel.ForeColor(first.Number(TextPanelBlock::kForeColor)); });
    const SkinRows font = first.From(TextPanelBlock::kFontRows);
    Step([&] { panel.FontName(font.Text(FontBlock::kName)); });
    Step([&] { panel.FontSize(font.Number(FontBlock::kSize)); });
    Step([&] { panel.FontItalic(font.Boolean(FontBlock::kItalic)); });
    Step([&] { panel.FontBold(font.Boolean(FontBlock::kBold)); });
}

namespace {

// The parts of the font apply one by one: those before a failure stay.
void ApplyListFont(JList& list, const SkinRows& font) {
    const auto change = [&](auto&& part) {
        platform::Font changed = list.ListFont();
        part(changed);
        list.ListFont(changed);
    };
    change([&](platform::Font& changed) { changed.name = font.Text(FontBlock::kName); });
    change([&](platform::Font& changed) { changed.size = font.Number(FontBlock::kSize); });
    change([&](platform::Font& changed) { changed.italic = font.Boolean(FontBlock::kItalic); });
    change([&](platform::Font& changed) { changed.bold = font.Boolean(FontBlock::kBold); });
}

}  // namespace

void ApplyListRows(JList& list, const SkinRows& skin) {
    list.RedrawFlag(false);
    ApplyListFont(list, skin.From(kListFontRows));
    list.BackColor(skin.Number(kListBackColor));
    list.FocusRectColor(skin.Number(kListFocusRectColor));
    list.SelColor1(skin.Number(kListSelColor1));
    list.SelColor2(skin.Number(kListSelColor2));
    list.SelTextColor(skin.Number(kListSelTextColor));
    SplitColor(skin.Number(kListPulseColorFrom), App().PulseColorFrom);
    SplitColor(skin.Number(kListSelTextColor), App().PulseColorTo);
    list.TextColor(skin.Number(kListTextColor));
    list.ThumbBorderColor(skin.Number(kListThumbBorderColor));
    list.ThumbColor1(skin.Number(kListThumbColor1));
    list.ThumbColor2(skin.Number(kListThumbColor2));
    list.Enabled(true);
    list.RedrawFlag(true);
}

void SplitColor(Colour colour, ColourBytes& bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[bytes.size() - 1 - i] = static_cast<std::uint8_t>((colour >> (8 * i)) & 0xFF);
    }
}

}  // namespace sarnel
