// The panels that can lie over the playlist, and what lies in them.
#include <string>
#include <string_view>
#include <vector>

#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/paneltable.h"
#include "platform/base/text.h"
#include "skin/skin.h"
#include "skin/skin_offsets.h"
#include "skin/skin_steps.h"

namespace sarnel {

namespace {

using platform::Label;
using platform::PictureBox;

/// Where all panels lie: where the playlist lies.
struct PanelPlace {
    Long left;
    Long top;
    Long width;
    Long height;
};

PanelPlace ReadPlace(const SkinRows& skin) {
    // What cannot be read stays as it is.
    const JList& list = App().Main().lstPlaylist;
    PanelPlace place{list.Left(), list.Top(), list.Width(), list.Height()};
    Step([&] { place.left = skin.Number(kListLeft); });
    Step([&] { place.top = skin.Number(kListTop); });
    Step([&] { place.width = skin.Number(kListWidth); });
    Step([&] { place.height = skin.Number(kListHeight); });
    return place;
}

void LayPanels(const PanelPlace& place) {
    frmMAIN& main = App().Main();
    for (Long i = main.picFrame.LowestIndex(); i <= main.picFrame.HighestIndex(); ++i) {
        PictureBox& panel = main.picFrame(i);
        Step([&] { panel.Move(place.left, place.top, place.width, place.height); });
        Step([&] { panel.BackColor(main.lstPlaylist.BackColor()); });
    }
    // By its tag a panel finds the menu item that has its mark.
    for (const PanelRow& row : kPanelRows) {
        Step([&] { main.picFrame(row.frame).Tag(std::u16string(row.menuKey)); });
    }
}

// Six types a line; a heading and an invitation only from three types on.
std::u16string TypesText(const std::vector<std::u16string>& types) {
    constexpr std::u16string_view kLineBreak = u"\r\n";
    constexpr std::size_t kTypesPerLine = 6;
    const bool framed = types.size() > 2;
    std::u16string text;
    if (framed) {
        text.append(kLineBreak).append(u"File types supported:").append(kLineBreak);
    }
    for (std::size_t i = 0; i < types.size(); ++i) {
        const bool lastOfLine = i % kTypesPerLine == kTypesPerLine - 1;
        text.append(types[i]).append(lastOfLine ? kLineBreak : u" ");
    }
    if (framed) {
        text.append(kLineBreak).append(kLineBreak);
        text.append(u"Click here to accociate types in shell!").append(kLineBreak);
    }
    return text;
}

// Below them stands what closes the panel.
void LayFileTypes(Long width) {
    frmMAIN& main = App().Main();
    Label& types = *main.lblFileTypesSupported;
    Label& close = *main.lblFrameFileAssocOK;
    const std::u16string known = Ask(ImpulseGetFileTypes, std::u16string(), {}, {});
    Step([&] { types.Caption(TypesText(platform::Split(known, u';'))); });
    Step([&] { types.AutoSize(true); });
    Step([&] { types.ForeColor(main.lstPlaylist.TextColor()); });
    Step([&] { close.Move(5, types.Top() + types.Height() + 5, width, close.Height()); });
    Step([&] { close.ForeColor(main.lstPlaylist.TextColor()); });
}

void LayAssociations(const PanelPlace& place) {
    Label& types = *App().Main().lblFileTypesSupported;
    Step([&] { types.AutoSize(false); });
    Step([&] { types.Move(5, 5, place.width - 10, 80); });
    LayFileTypes(place.width - 10);
}

void LayBrowser(const SkinRows& skin, const PanelPlace& place) {
    frmMAIN& main = App().Main();
    JList& files = *main.lstFilesAndFolders;
    Label& path = *main.lblFrameAddPathName;
    Step([&] { files.RemoveImages(); });
    for (const Long image : {kBrowserPicture1, kBrowserPicture2, kBrowserPicture3}) {
        Step([&] { files.AddImage(skin.PictureOf(image)); });
    }
    Step([&] { path.Move(0, place.height - path.Height(), place.width, path.Height()); });
    Step([&] { path.BackColor(files.BackColor()); });
    Step([&] { path.ForeColor(files.SelTextColor()); });
}

void LayInformation(const PanelPlace& place) {
    const JList& list = App().Main().lstPlaylist;
    Label& info = *App().Main().lblFrameInfoDescription;
    Step([&] { info.Move(10, 10, place.width - 20, place.height - 20); });
    Step([&] { info.BackColor(list.BackColor()); });
    Step([&] { info.ForeColor(list.TextColor()); });
}

void LayLyrics() {
    frmMAIN& main = App().Main();
    const JList& list = main.lstPlaylist;
    PictureBox& panel = main.picFrame(kLyricsPanel);
    JSlider& slider = main.sldSkin(kLyricsSlider);
    Step([&] { main.txtLyrics->BackColor(list.BackColor()); });
    Step([&] { main.txtLyrics->ForeColor(list.TextColor()); });
    Step([&] { main.txtLyrics->SetFont(list.ListFont()); });
    Step([&] { slider.Height(panel.ScaleHeight()); });
    Step([&] { slider.Move(panel.ScaleWidth() - slider.Width(), 0); });
    Step([&] { App().windows.BringToFront(slider.HWnd()); });
}

struct EffectRange {
    Long slider;
    Long max;
};
constexpr EffectRange kEffectRanges[] = {{kTempoSlider, 100}, {kPitchSlider, 40}, {kEchoSlider, 6},
                                         {kReverbSlider, 20}, {kBassSlider, 30},  {kMidSlider, 30},
                                         {kTrebleSlider, 30}};

// Each label stands in the column to the left of its slider.
void LayEffects() {
    frmMAIN& main = App().Main();
    PictureBox& panel = main.picFrame(kEffectsPanel);
    Step([&] { panel.SetFont(main.lstPlaylist.ListFont()); });
    for (const EffectRange& range : kEffectRanges) {
        JSlider& slider = main.sldSkin(range.slider);
        Label& label = main.lblEffects(range.slider);
        Step([&] { slider.Max(range.max); });
        Step([&] { label.Move(0, slider.Top(), slider.Left() - 10, panel.TextHeight(u"Yy")); });
        Step([&] { label.ForeColor(main.lstPlaylist.TextColor()); });
    }
}

}  // namespace

void LayoutFrames(const SkinRows& skin) {
    const PanelPlace place = ReadPlace(skin);
    LayPanels(place);
    LayAssociations(place);
    LayBrowser(skin, place);
    LayInformation(place);
    LayLyrics();
    LayEffects();
}

void ShowFileTypes() {
    LayFileTypes(App().Main().lblFrameFileAssocOK->Width());
}

}  // namespace sarnel
