// A skin in force: where everything is and what it looks like. A line of text is 13 pixels high.
#include "skin/skin.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/base/impulses.h"
#include "core/state/frmtip.h"
#include "core/state/mGeneral.h"
#include "menus/commandmenu.h"
#include "menus/jpopupmenu.h"
#include "playback/mPlayback.h"
#include "skin/skin_steps.h"
#include "tests/unit/support/skin_text.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using platform::Rect;
using platform::Widget;
using support::World;
using support::WorldBuilder;

constexpr Colour kSkinBack = 0x64463C;
constexpr Colour kSkinText = 0xFFC0C0;

Rect PlaceOf(const Widget& widget) {
    return {widget.Left(), widget.Top(), widget.Left() + widget.Width(),
            widget.Top() + widget.Height()};
}

/// A rectangle from left, top, width and height.
Rect At(Long left, Long top, Long width, Long height) {
    return {left, top, left + width, top + height};
}

class SkinInForce : public ::testing::Test {
  protected:
    frmMAIN& Main() { return world_->Main(); }
    SkinTable& Skins() { return world_->State().Skins; }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(SkinInForce, TheWindowHasItsPictureAndItsSize) {
    EXPECT_EQ(Main().Picture(), Skins().Bitmap(100));
    EXPECT_EQ(Main().Width(), 293);
    EXPECT_EQ(Main().Height(), 277);
    EXPECT_EQ(Main().Face().GetPixel({292, 276}), Skins().Bitmap(100)->GetPixel({292, 276}));
    EXPECT_EQ(Main().Face().GetPixel({0, 0}), Skins().Bitmap(100)->GetPixel({0, 0}));
}

TEST_F(SkinInForce, TheWindowStaysWhereItIs) {
    Main().Move(7, 9);
    LoadSkin(1);
    EXPECT_EQ(PlaceOf(Main()), At(7, 9, 293, 277));
}

TEST_F(SkinInForce, TextPanelsHaveTheirPlaceColoursAndFonts) {
    EXPECT_EQ(PlaceOf(Main().picScrollText), At(54, 10, 185, 14));
    EXPECT_EQ(PlaceOf(Main().picInfoDisplay), At(128, 250, 72, 14));
    for (const Widget* panel : {&Main().picScrollText, &Main().picInfoDisplay}) {
        EXPECT_EQ(panel->BackColor(), kSkinBack);
        EXPECT_EQ(panel->ForeColor(), kSkinText);
    }
    EXPECT_EQ(Main().picScrollText.GetFont(), (platform::Font{u"Tahoma", 8, false, true}));
    EXPECT_EQ(Main().picInfoDisplay.GetFont(), (platform::Font{u"Tahoma", 8, false, false}));
    EXPECT_EQ(world_->State().DisplayRect, (Rect{0, 0, 72, 14}));
}

struct ButtonRule {
    Long index;
    Long picture;
    Long mask;
    std::u16string toolTip;
    Rect place;
};

template <class T>
void ExpectControl(const T& control, const ButtonRule& rule, SkinTable& skins) {
    EXPECT_EQ(control.Picture(), skins.Bitmap(rule.picture)) << rule.index;
    EXPECT_EQ(control.MaskPicture(), skins.Bitmap(rule.mask)) << rule.index;
    EXPECT_EQ(control.MaskColor(), 0) << rule.index;
    EXPECT_EQ(control.ToolTipText(), rule.toolTip) << rule.index;
    EXPECT_EQ(PlaceOf(control), rule.place) << rule.index;
    EXPECT_TRUE(control.Visible()) << rule.index;
}

TEST_F(SkinInForce, ButtonsHavePicturePlaceAndTipAndTheSizeOfTheirMask) {
    const std::vector<ButtonRule> rules{
        {0, 109, 110, u"Exit", At(262, 11, 22, 12)},
        {1, 114, 110, u"Minimize", At(239, 11, 22, 12)},
        {2, 119, 110, u"Open menu", At(9, 11, 22, 12)},
        {3, 140, 141, u"Previous item", At(12, 246, 21, 21)},
        {4, 145, 141, u"Play", At(35, 246, 21, 21)},
        {5, 150, 141, u"Pause", At(58, 246, 21, 21)},
        {6, 155, 141, u"Stop", At(81, 246, 21, 21)},
        {7, 160, 141, u"Next item", At(104, 246, 21, 21)},
        {8, 190, 191, u"Add items", At(9, 211, 37, 17)},
        {9, 195, 191, u"Remove items", At(47, 211, 37, 17)},
        {10, 200, 191, u"Misc stuff", At(85, 211, 37, 17)},
        {11, 370, 371, u"Playlists", At(123, 211, 42, 17)},
        {12, 365, 366, u"Reset all effects", At(127, 140, 45, 17)},
    };
    for (const ButtonRule& rule : rules) {
        ExpectControl(Main().btnSkin(rule.index), rule, Skins());
    }
}

TEST_F(SkinInForce, TogglesHavePicturePlaceAndTipAndTheSizeOfTheirMask) {
    const std::vector<ButtonRule> rules{
        {0, 124, 110, u"Always on top", At(32, 11, 22, 12)},
        {1, 205, 206, u"Lyrics", At(235, 211, 49, 17)},
        {2, 290, 291, u"Audio Effects", At(166, 211, 30, 17)},
        {3, 210, 211, u"File info", At(197, 211, 37, 17)},
    };
    for (const ButtonRule& rule : rules) {
        ExpectControl(Main().tglSkin(rule.index), rule, Skins());
    }
}

struct SliderRule {
    Long index;
    Long picture;
    Rect place;
    Long max;
};

// The rows of the position and the volume have a height of 0: half of their pictures' 26. The row
// of the lyrics has a width of 28: half of its picture's 26, at the right edge of its panel.
TEST_F(SkinInForce, SlidersHavePicturesPlaceAndRange) {
    const std::vector<SliderRule> rules{
        {0, 220, At(9, 230, 275, 13), 100}, {1, 230, At(200, 249, 85, 13), 100},
        {2, 280, At(268, 0, 13, 181), 100}, {3, 230, At(85, 10, 190, 13), 100},
        {4, 230, At(85, 25, 190, 13), 40},  {5, 230, At(85, 40, 190, 13), 6},
        {6, 230, At(85, 55, 190, 13), 20},  {7, 230, At(85, 70, 190, 13), 30},
        {8, 230, At(85, 85, 190, 13), 30},  {9, 230, At(85, 100, 190, 13), 30},
    };
    for (const SliderRule& rule : rules) {
        const JSlider& slider = Main().sldSkin(rule.index);
        EXPECT_EQ(slider.Picture(), Skins().Bitmap(rule.picture)) << rule.index;
        EXPECT_EQ(slider.StickPicture(), Skins().Bitmap(221)) << rule.index;
        EXPECT_EQ(slider.StickMaskPicture(), Skins().Bitmap(222)) << rule.index;
        EXPECT_EQ(slider.StickMaskColor(), 0xFFFFFF) << rule.index;
        EXPECT_EQ(slider.StickPosition(), 0) << rule.index;
        EXPECT_EQ(slider.Style(), rule.index == 2) << rule.index;
        EXPECT_EQ(slider.Max(), rule.max) << rule.index;
        EXPECT_EQ(PlaceOf(slider), rule.place) << rule.index;
        EXPECT_TRUE(slider.Visible()) << rule.index;
    }
}

TEST_F(SkinInForce, ListsHaveTheirPlaceFontAndColours) {
    EXPECT_EQ(PlaceOf(Main().lstPlaylist), At(6, 27, 281, 181));
    EXPECT_EQ(PlaceOf(*Main().lstFilesAndFolders), At(0, 0, 281, 181));
    EXPECT_EQ(PlaceOf(*Main().lst_Search), At(0, 16, 281, 165));
    for (const JList* list :
         {&Main().lstPlaylist, Main().lstFilesAndFolders.get(), Main().lst_Search.get()}) {
        EXPECT_EQ(list->ListFont(), (platform::Font{u"Tahoma", 8, false, false}));
        EXPECT_EQ(list->BackColor(), kSkinBack);
        EXPECT_EQ(list->FocusRectColor(), kSkinText);
        EXPECT_EQ(list->SelColor1(), 0xEE7070);
        EXPECT_EQ(list->SelColor2(), kSkinBack);
        EXPECT_EQ(list->SelTextColor(), 0xFFFFFF);
        EXPECT_EQ(list->TextColor(), kSkinText);
        EXPECT_EQ(list->ThumbBorderColor(), 0x523631);
        EXPECT_EQ(list->ThumbColor1(), kSkinBack);
        EXPECT_EQ(list->ThumbColor2(), 0xBB8080);
        EXPECT_TRUE(list->Enabled());
        EXPECT_TRUE(list->RedrawFlag());
    }
    EXPECT_EQ(world_->State().PulseColorFrom, (ColourBytes{0xEE, 0x80, 0x80}));
    EXPECT_EQ(world_->State().PulseColorTo, (ColourBytes{0xFF, 0xFF, 0xFF}));
}

TEST_F(SkinInForce, OnlyTheBrowserHasItsThreeImagesHoweverOftenASkinIsLoaded) {
    LoadSkin(1);
    EXPECT_EQ(Main().lstFilesAndFolders->ImageCount(), 3);
    EXPECT_EQ(Main().lstPlaylist.ImageCount(), 0);
    EXPECT_EQ(Main().lst_Search->ImageCount(), 0);
}

TEST_F(SkinInForce, TheBrowsersImagesAreThePicturesOfTheirOrder) {
    JList& files = *Main().lstFilesAndFolders;
    files.ItemImageSize(16);  // as large as they are: pixel for pixel
    files.AddItem(u"", u"");
    for (const Long image : {0, 1, 2}) {
        files.ImageIndex(0, image);
        files.DisplayList();
        const platform::PictureRef picture = Skins().Bitmap(103 + image);
        ASSERT_EQ(picture->GetSize(), (platform::Size{16, 16}));
        for (Long at = 0; at < 256; ++at) {
            const platform::Point point{at % 16, at / 16};
            ASSERT_EQ(files.Face().GetPixel({files.ImageLeft() + point.x, point.y}),
                      picture->GetPixel(point))
                << image << ": " << point.x << ' ' << point.y;
        }
    }
}

TEST_F(SkinInForce, TheMenuHasItsPictureFontAndColours) {
    const JPopupMenu& menu = *Main().hMenu;
    EXPECT_EQ(menu.BackgroundPicture(), Skins().Bitmap(102));
    EXPECT_EQ(menu.FontData(), (MenuFont{u"Tahoma", 8, false, 400, 1}));
    EXPECT_EQ(menu.Colors(),
              (MenuColours{0xFF0F00, 0xFFE0E0, 0xFFC0C0, 0x800000, 0xFFC0C0, 0xE13C40, 0x400000,
                           0xFFC0C0, 0x800000, 0xFFC0C0, 0xFFC0C0, 0x800000}));
}

TEST_F(SkinInForce, ABoldMenuHasTheWeight700) {
    Skins() = support::ChangedSkins({{167, "True"}, {168, "True"}});
    LoadSkin(1);
    EXPECT_EQ(Main().hMenu->FontData(), (MenuFont{u"Tahoma", 8, true, 700, 1}));
    Skins() = support::ChangedSkins({{167, "True"}});
    LoadSkin(1);
    EXPECT_EQ(Main().hMenu->FontData(), (MenuFont{u"Tahoma", 8, true, 400, 1}));
}

TEST_F(SkinInForce, TheTooltipHasItsFrameAndItsColour) {
    const frmTIP& tip = world_->State().Tip();
    EXPECT_EQ(tip.imgTip1, Skins().Bitmap(106));
    EXPECT_EQ(tip.imgTip2, Skins().Bitmap(107));
    EXPECT_EQ(tip.imgTip3, Skins().Bitmap(108));
    EXPECT_EQ(tip.ForeColor(), kSkinText);
    EXPECT_EQ(tip.GetFont(), (platform::Font{u"Arial", 9.75, true, false}));
}

TEST_F(SkinInForce, PanelsLieWhereTheListLiesWithTheKeysOfTheirCommands) {
    const std::vector<std::u16string> keys{u"kPkLy",  u"kAL",    u"kAsF",
                                           u"kPkEFX", u"kPkNFO", u"kPkSh"};
    for (Long i = 0; i < 6; ++i) {
        EXPECT_EQ(PlaceOf(Main().picFrame(i)), At(6, 27, 281, 181)) << i;
        EXPECT_EQ(Main().picFrame(i).BackColor(), kSkinBack) << i;
        EXPECT_EQ(Main().picFrame(i).Tag(), keys[static_cast<std::size_t>(i)]);
        EXPECT_FALSE(Main().picFrame(i).Visible()) << i;
    }
}

TEST_F(SkinInForce, WhatLiesInThePanels) {
    EXPECT_EQ(PlaceOf(*Main().txt_SearchFilter), At(0, 0, 281, 16));
    EXPECT_EQ(Main().txt_SearchFilter->BackColor(), kSkinBack);
    EXPECT_EQ(Main().txt_SearchFilter->ForeColor(), kSkinText);
    EXPECT_EQ(PlaceOf(*Main().txtLyrics), At(2, 0, 279, 181));
    EXPECT_EQ(Main().txtLyrics->BackColor(), kSkinBack);
    EXPECT_EQ(Main().txtLyrics->ForeColor(), kSkinText);
    EXPECT_EQ(Main().txtLyrics->GetFont(), Main().lstPlaylist.ListFont());
    EXPECT_EQ(PlaceOf(*Main().lblFrameInfoDescription), At(10, 10, 261, 161));
    EXPECT_EQ(Main().lblFrameInfoDescription->BackColor(), kSkinBack);
    EXPECT_EQ(Main().lblFrameInfoDescription->ForeColor(), kSkinText);
    const platform::Label& path = *Main().lblFrameAddPathName;
    EXPECT_EQ(path.Left(), 0);
    EXPECT_EQ(path.Width(), 281);
    EXPECT_EQ(path.Top(), 181 - path.Height());
    EXPECT_EQ(path.BackColor(), kSkinBack);
    EXPECT_EQ(path.ForeColor(), 0xFFFFFF);
}

TEST_F(SkinInForce, TheAssociationsLabelsLieOneBelowTheOther) {
    const platform::Label& types = *Main().lblFileTypesSupported;
    const platform::Label& close = *Main().lblFrameFileAssocOK;
    EXPECT_EQ(types.Left(), 5);
    EXPECT_EQ(types.Top(), 5);
    EXPECT_EQ(types.Width(), 271);
    EXPECT_TRUE(types.AutoSize());
    EXPECT_EQ(types.ForeColor(), kSkinText);
    EXPECT_EQ(close.Left(), 5);
    EXPECT_EQ(close.Top(), 5 + types.Height() + 5);
    EXPECT_EQ(close.Width(), 271);
    EXPECT_GT(close.Height(), 0);
    EXPECT_EQ(close.ForeColor(), kSkinText);
}

TEST_F(SkinInForce, EffectLabelsStandInTheColumnBeforeTheirSliders) {
    EXPECT_EQ(Main().picFrame(3).GetFont(), Main().lstPlaylist.ListFont());
    for (Long i = 3; i <= 9; ++i) {
        EXPECT_EQ(PlaceOf(Main().lblEffects(i)), At(0, 10 + 15 * (i - 3), 75, 13)) << i;
        EXPECT_EQ(Main().lblEffects(i).ForeColor(), kSkinText) << i;
    }
}

TEST_F(SkinInForce, TheLyricsSliderLiesInFrontOfTheLyrics) {
    Main().picFrame(0).Visible(true);
    const Rect panel = world_->windows.GetWindowRect(Main().picFrame(0).HWnd());
    EXPECT_EQ(world_->windows.WindowFromPoint({panel.right - 1, panel.bottom - 1}),
              Main().sldSkin(2).HWnd());
}

// The sticks of the first three go to the near end with StickPosition; the effects' are put right
// by the write of Max. Travel of the volume 72, of tempo 177: 28.8 and 88.5, to the even one.
TEST_F(SkinInForce, AfterAChangeAtRunTimeThreeSticksWaitForTheirValue) {
    Main().sldSkin(0).Value(50);
    SetVolume(40);
    Main().sldSkin(2).Value(30);
    EXPECT_EQ(Main().sldSkin(1).StickLeft(), 29);
    LoadSkin(1);
    EXPECT_EQ(Main().sldSkin(0).StickLeft(), 0);
    EXPECT_EQ(Main().sldSkin(1).StickLeft(), 0);
    EXPECT_EQ(Main().sldSkin(1).Value(), 40);
    EXPECT_EQ(Main().sldSkin(2).StickTop(), 0);
    EXPECT_EQ(Main().sldSkin(3).StickLeft(), 88);
    Main().sldSkin(1).Value(40);
    EXPECT_EQ(Main().sldSkin(1).StickLeft(), 29);
}

TEST_F(SkinInForce, AChangeLeavesWhatThePanelsAndListsHold) {
    world_->Rows({u"a", u"b"});
    Main().lstPlaylist.ListCurrent(1);
    Main().picFrame(3).Visible(true);
    Main().tglSkin(2).Value(true);
    const Long items = Main().hMenu->Count();
    world_->host.Forget();
    LoadSkin(1);
    EXPECT_EQ(world_->Titles(), (std::vector<std::u16string>{u"a", u"b"}));
    EXPECT_EQ(Main().lstPlaylist.ListCurrent(), 1);
    EXPECT_TRUE(Main().picFrame(3).Visible());
    EXPECT_FALSE(Main().picFrame(0).Visible());
    EXPECT_TRUE(Main().tglSkin(2).Value());
    EXPECT_EQ(Main().hMenu->Count(), items);
    EXPECT_EQ(world_->host.Numbers(), (std::vector<Long>{11}));
}

TEST_F(SkinInForce, ANumberOutOfRangeGivesSkin1AndIsRewritten) {
    for (const Long skin : {Long{0}, Long{-1}, SkinCount() + 1, 2147483647, -2147483647}) {
        WriteSetting(u"Skin", u"7");
        LoadSkin(skin);
        EXPECT_EQ(world_->State().CurrentSkin, 1) << skin;
        EXPECT_EQ(world_->Setting("Skin"), "1") << skin;
    }
}

TEST_F(SkinInForce, ASecondSkinNeedsNoCode) {
    Skins() = support::TwoSkins({{447, "255"},    // list background
                                 {412, "100"},    // exit, left
                                 {420, "30"},     // menu, left
                                 {409, "114"}});  // exit, picture
    EXPECT_EQ(SkinCount(), 2);
    EXPECT_EQ(SkinName(1), u"Funky Blue");
    EXPECT_EQ(SkinName(2), u"Second");
    LoadSkin(2);
    EXPECT_EQ(world_->State().CurrentSkin, 2);
    EXPECT_EQ(world_->Setting("Skin"), "2");
    EXPECT_EQ(Main().Picture(), Skins().Bitmap(400));
    EXPECT_EQ(Main().btnSkin(0).Left(), 100);
    EXPECT_EQ(Main().btnSkin(0).Picture(), Skins().Bitmap(114));
    EXPECT_EQ(Main().picFrame(5).BackColor(), 255);
    LoadSkin(3);
    EXPECT_EQ(world_->State().CurrentSkin, 1);
    EXPECT_EQ(Main().btnSkin(0).Left(), 262);
    EXPECT_EQ(Main().picFrame(5).BackColor(), kSkinBack);
}

TEST(SkinChosen, InTheMenuIsPutInForceAndGetsTheMark) {
    const auto world = WorldBuilder().Created();
    world->State().Skins = support::TwoSkins();
    world->Impulse(kImpulseAttach);
    world->Impulse(kImpulseControl, kControlLoad);
    const std::shared_ptr<JPopupMenu> menu = world->Main().hMenu;
    const auto marks = [&] {
        return std::pair(menu->RadioCheck(menu->IndexForKey(u"kSk1")),
                         menu->RadioCheck(menu->IndexForKey(u"kSk2")));
    };
    EXPECT_EQ(marks(), std::pair(true, false));
    for (const Long skin : {2, 1, 2}) {
        hMenu_Click(menu->IndexForKey(u"kSk" + LongToText(skin)));
        EXPECT_EQ(world->State().CurrentSkin, skin);
        EXPECT_EQ(world->Setting("Skin"), std::to_string(skin));
        EXPECT_EQ(world->Main().Picture(), world->State().Skins.Bitmap(skin == 2 ? 400 : 100));
        EXPECT_EQ(marks(), std::pair(skin == 1, skin == 2));
    }
    // What is in force already is not put in force again.
    WriteSetting(u"Skin", u"7");
    hMenu_Click(menu->IndexForKey(u"kSk2"));
    EXPECT_EQ(world->Setting("Skin"), "7");
    EXPECT_EQ(marks(), std::pair(false, true));
}

TEST_F(SkinInForce, AThousandTimesIsAsGoodAsOnce) {
    for (int i = 0; i < 1000; ++i) {
        LoadSkin(i % 3);
    }
    EXPECT_EQ(PlaceOf(Main().sldSkin(0)), At(9, 230, 275, 13));
    EXPECT_EQ(Main().lstFilesAndFolders->ImageCount(), 3);
    EXPECT_EQ(Main().picScrollText.GetFont(), (platform::Font{u"Tahoma", 8, false, true}));
}

TEST(SplitColour, StoresBlueGreenRed) {
    ColourBytes bytes{};
    SplitColor(0x112233, bytes);
    EXPECT_EQ(bytes, (ColourBytes{0x11, 0x22, 0x33}));
    SplitColor(-1, bytes);
    EXPECT_EQ(bytes, (ColourBytes{0xFF, 0xFF, 0xFF}));
}

}  // namespace
}  // namespace sarnel
