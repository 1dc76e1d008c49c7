#include "skin/skin.h"

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "platform/base/rounding.h"
#include "skin/skin_steps.h"

namespace sarnel {

namespace {

/// An item of a control array and the offset of its rows.
struct Block {
    Long index;
    Long offset;
};
constexpr Block kButtons[] = {{0, 9},   {1, 14},  {2, 19}, {3, 140}, {4, 145},  {5, 150},
                              {6, 155}, {7, 160}, {8, 90}, {9, 95},  {10, 100}, {11, 270}};
constexpr Block kToggles[] = {{1, 105}, {3, 110}, {2, 190}, {0, 24}};
constexpr Block kSliders[] = {{0, 120}, {1, 130}, {2, 180}, {3, 195}, {4, 205},
                              {5, 215}, {6, 225}, {7, 235}, {8, 245}, {9, 255}};
constexpr Block kResetButton{12, 265};

// Offsets of the other fields.
constexpr Long kMenuPicture = 2;
constexpr Long kTipLeftPicture = 6;
constexpr Long kTipMiddlePicture = 7;
constexpr Long kTipForeColor = 7;
constexpr Long kTipRightPicture = 8;
constexpr Long kSkinName = 8;
constexpr Long kScrollText = 29;
constexpr Long kListLeft = 39;
constexpr Long kListTop = 40;
constexpr Long kListWidth = 41;
constexpr Long kListHeight = 42;
constexpr Long kListBackColor = 47;
constexpr Long kListTextColor = 53;
constexpr Long kMenu = 65;
constexpr Long kInfoDisplay = 170;

void ApplyWindow(const SkinRows& skin) {
    frmMAIN& main = App().Main();
    Step([&] { main.Picture(skin.PictureOf(0)); });
    Step([&] { main.SizeToPicture(); });
}

void ApplyControls(const SkinRows& skin) {
    for (const Block& block : kButtons) {
        ApplyButtonRows(block.index, skin.From(block.offset));
    }
    for (const Block& block : kToggles) {
        ApplyToggleRows(block.index, skin.From(block.offset));
    }
    for (const Block& block : kSliders) {
        ApplySliderRows(block.index, skin.From(block.offset));
    }
    ApplyButtonRows(kResetButton.index, skin.From(kResetButton.offset));
}

void ApplyInfoDisplay(const SkinRows& skin) {
    platform::PictureBox& display = App().Main().picInfoDisplay;
    ApplyTextPanelRows(display, skin.From(kInfoDisplay));
    App().DisplayRect = {0, 0, display.ScaleWidth(), display.ScaleHeight()};
}

MenuFont MenuFontOf(const SkinRows& rows) {
    constexpr Long kRegular = 400;
    constexpr Long kBold = 700;
    return {rows.Text(0), rows.Number(1), rows.Boolean(2), rows.Boolean(3) ? kBold : kRegular, 1};
}

MenuColours MenuColoursOf(const SkinRows& rows) {
    return {rows.Number(0), rows.Number(1), rows.Number(2),  rows.Number(3),
            rows.Number(4), rows.Number(5), rows.Number(6),  rows.Number(7),
            rows.Number(8), rows.Number(9), rows.Number(10), rows.Number(11)};
}

void ApplyMenu(const SkinRows& skin) {
    Step([&] { Menu()->BackgroundPicture(skin.PictureOf(kMenuPicture)); });
    Step([&] { Menu()->SetFontData(MenuFontOf(skin.From(kMenu))); });
    Step([&] { Menu()->SetColors(MenuColoursOf(skin.From(kMenu + 4))); });
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
    Step([&] { count = App().Skins.Number(0); });
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
    ApplyTextPanelRows(app.Main().picScrollText, rows.From(kScrollText));
    ApplyControls(rows);
    ApplyInfoDisplay(rows);
    ApplyMenu(rows);
    ApplyTip(rows);
    ApplyLists(rows);
    LayoutFrames(rows);
}

}  // namespace sarnel
