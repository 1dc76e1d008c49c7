#include "skin/skin.h"

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/frmtip.h"
#include "core/state/mainmenu.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "platform/base/rounding.h"
#include "skin/skin_offsets.h"
#include "skin/skin_steps.h"

namespace sarnel {

namespace {

void ApplyWindow(const SkinRows& skin) {
    frmMAIN& main = App().Main();
    Step([&] { main.Picture(skin.PictureOf(kWindowPicture)); });
    Step([&] { main.SizeToPicture(); });
}

void ApplyControls(const SkinRows& skin) {
    for (const ControlRows& rows : kButtonRows) {
        ApplyButtonRows(rows.index, skin.From(rows.offset));
    }
    for (const ControlRows& rows : kToggleRows) {
        ApplyToggleRows(rows.index, skin.From(rows.offset));
    }
    for (const ControlRows& rows : kSliderRows) {
        ApplySliderRows(rows.index, skin.From(rows.offset));
    }
    ApplyButtonRows(kResetEffectsButtonRows.index, skin.From(kResetEffectsButtonRows.offset));
}

void ApplyInfoDisplay(const SkinRows& skin) {
    platform::PictureBox& display = App().Main().picInfoDisplay;
    ApplyTextPanelRows(display, skin.From(kInfoDisplayRows));
    App().DisplayRect = {0, 0, display.ScaleWidth(), display.ScaleHeight()};
}

MenuFont MenuFontOf(const SkinRows& rows) {
    constexpr Long kRegular = 400;
    constexpr Long kBold = 700;
    return {.fName = rows.Text(FontBlock::kName),
            .fSize = rows.Number(FontBlock::kSize),
            .fItalic = rows.Boolean(FontBlock::kItalic),
            .fWeight = rows.Boolean(FontBlock::kBold) ? kBold : kRegular,
            .fCharset = 1};
}

MenuColours MenuColoursOf(const SkinRows& rows) {
    return {.bkText = rows.Number(MenuColourBlock::kBkText),
            .txtColor = rows.Number(MenuColourBlock::kTxtColor),
            .cDisabled1 = rows.Number(MenuColourBlock::kDisabled1),
            .cDisabled2 = rows.Number(MenuColourBlock::kDisabled2),
            .selGrad1 = rows.Number(MenuColourBlock::kSelGrad1),
            .selGrad2 = rows.Number(MenuColourBlock::kSelGrad2),
            .selText = rows.Number(MenuColourBlock::kSelText),
            .headGrad1 = rows.Number(MenuColourBlock::kHeadGrad1),
            .headGrad2 = rows.Number(MenuColourBlock::kHeadGrad2),
            .headText = rows.Number(MenuColourBlock::kHeadText),
            .cSep1 = rows.Number(MenuColourBlock::kSep1),
            .cSep2 = rows.Number(MenuColourBlock::kSep2)};
}

void ApplyMenu(const SkinRows& skin) {
    Step([&] { Menu()->BackgroundPicture(skin.PictureOf(kMenuPicture)); });
    Step([&] { Menu()->SetFontData(MenuFontOf(skin.From(kMenuFontRows))); });
    Step([&] { Menu()->SetColors(MenuColoursOf(skin.From(kMenuColourRows))); });
}

void ApplyTip(const SkinRows& skin) {
    frmTIP& tip = App().Tip();
    Step([&] { tip.imgTip1 = skin.PictureOf(kTipLeftPicture); });
    Step([&] { tip.imgTip2 = skin.PictureOf(kTipMiddlePicture); });
    Step([&] { tip.imgTip3 = skin.PictureOf(kTipRightPicture); });
    Step([&] { tip.ForeColor(skin.Number(kTipForeColor)); });
}

void ApplyPlaylist(const SkinRows& skin) {
    JList& list = App().Main().lstPlaylist;
    Step([&] {
        list.Move(skin.Number(kListLeft), skin.Number(kListTop), skin.Number(kListWidth),
                  skin.Number(kListHeight));
    });
    Step([&] { ApplyListRows(list, skin); });
}

void ApplyFilesAndFolders(const SkinRows& skin) {
    JList& list = *App().Main().lstFilesAndFolders;
    Step([&] { list.Move(0, 0, skin.Number(kListWidth), skin.Number(kListHeight)); });
    Step([&] { ApplyListRows(list, skin); });
}

// The search box lies on top of its list; both together fill the panel.
void ApplySearch(const SkinRows& skin) {
    frmMAIN& main = App().Main();
    const Long filterHeight = main.picScrollText.TextHeight(u"yY") + 3;
    Step([&] {
        main.lst_Search->Move(0, filterHeight, skin.Number(kListWidth),
                              skin.Number(kListHeight) - filterHeight);
    });
    Step([&] { ApplyListRows(*main.lst_Search, skin); });
    Step([&] { main.txt_SearchFilter->Move(0, 0, skin.Number(kListWidth), filterHeight); });
    Step([&] { main.txt_SearchFilter->BackColor(skin.Number(kListBackColor)); });
    Step([&] { main.txt_SearchFilter->ForeColor(skin.Number(kListTextColor)); });
}

void ApplyLists(const SkinRows& skin) {
    frmMAIN& main = App().Main();
    ApplyPlaylist(skin);
    ApplyFilesAndFolders(skin);
    Step([&] {
        main.lst_Search->Move(2, 0, skin.Number(kListWidth) - 2, skin.Number(kListHeight));
    });
    Step([&] { ApplyListRows(*main.lst_Search, skin); });
    ApplyFilesAndFolders(skin);  // twice, which does no harm
    ApplySearch(skin);
    Step(
        [&] { main.txtLyrics->Move(2, 0, skin.Number(kListWidth) - 2, skin.Number(kListHeight)); });
}

}  // namespace

Long SkinCount() {
    Long count = 0;
    Step([&] { count = App().Skins.Number(kSkinCountRow); });
    return count;
}

std::u16string SkinName(Long skin) {
    SkinTable& table = App().Skins;
    return SkinRows(table, table.Number(skin)).Text(kSkinName);
}

void LoadSkin(Long skin) {
    Program& app = App();
    app.CurrentSkin = skin > SkinCount() || skin < 1 ? 1 : skin;
    Step([&] { settings::kSkin.Write(app.CurrentSkin); });
    Long base = 0;
    Step([&] { base = app.Skins.Number(app.CurrentSkin); });
    const SkinRows rows(app.Skins, base);
    ApplyWindow(rows);
    ApplyTextPanelRows(app.Main().picScrollText, rows.From(kScrollTextRows));
    ApplyControls(rows);
    ApplyInfoDisplay(rows);
    ApplyMenu(rows);
    ApplyTip(rows);
    ApplyLists(rows);
    LayoutFrames(rows);
}

}  // namespace sarnel
