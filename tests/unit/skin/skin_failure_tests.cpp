// A skin with something missing: each step that fails is skipped, and the rest is applied.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/base/impulses.h"
#include "menus/jpopupmenu.h"
#include "platform/base/text.h"
#include "skin/skin.h"
#include "tests/unit/support/skin_text.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::ChangedSkins;
using support::RowChanges;
using support::World;
using support::WorldBuilder;

class DamagedSkin : public ::testing::Test {
  protected:
    frmMAIN& Main() { return world_->Main(); }
    /// Puts skin 1 in force once more, changed.
    void Apply(const RowChanges& changes, const std::vector<Long>& withoutPictures = {}) {
        world_->State().Skins = ChangedSkins(changes, withoutPictures);
        LoadSkin(1);
    }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(DamagedSkin, AMissingPictureLeavesTheFormerAndTheRestIsApplied) {
    const platform::PictureRef former = Main().btnSkin(4).Picture();
    Apply({{246, "371"}, {247, "Go"}, {248, "99"}}, {145});
    EXPECT_EQ(Main().btnSkin(4).Picture(), former);
    EXPECT_EQ(Main().btnSkin(4).Width(), 42);  // of the other mask
    EXPECT_EQ(Main().btnSkin(4).ToolTipText(), u"Go");
    EXPECT_EQ(Main().btnSkin(4).Left(), 99);
}

TEST_F(DamagedSkin, AMissingMaskLeavesTheFormer) {
    const platform::PictureRef former = Main().tglSkin(1).MaskPicture();
    Apply({{205, "210"}}, {206});
    EXPECT_EQ(Main().tglSkin(1).MaskPicture(), former);
    EXPECT_EQ(Main().tglSkin(1).Width(), 49);
    EXPECT_EQ(Main().tglSkin(1).Picture(), world_->State().Skins.Bitmap(210));
}

TEST_F(DamagedSkin, AMoveFailsAsAWhole) {
    Apply({{112, "far left"}, {113, "50"}});
    EXPECT_EQ(Main().btnSkin(0).Left(), 262);
    EXPECT_EQ(Main().btnSkin(0).Top(), 11);
    EXPECT_TRUE(Main().btnSkin(0).Visible());
}

TEST_F(DamagedSkin, AMissingRowLeavesThePropertyAsItWas) {
    Main().btnSkin(0).ToolTipText(u"before");
    Main().picScrollText.FontSize(20);
    Apply({{111, std::nullopt}, {136, "large"}, {137, "False"}, {134, std::nullopt}});
    EXPECT_EQ(Main().btnSkin(0).ToolTipText(), u"before");
    EXPECT_EQ(Main().picScrollText.FontSize(), 20);
    EXPECT_FALSE(Main().picScrollText.FontItalic());
    EXPECT_EQ(Main().picScrollText.ForeColor(), 0xFFC0C0);
}

TEST_F(DamagedSkin, OfASliderEachStepIsSkippedAlone) {
    const platform::PictureRef track = Main().sldSkin(3).Picture();
    const platform::PictureRef stick = Main().sldSkin(3).StickPicture();
    Apply({{295, "9999"}, {296, "x"}, {298, "4"}, {299, "maybe"}, {301, "12"}});
    EXPECT_EQ(Main().sldSkin(3).Picture(), track);
    EXPECT_EQ(Main().sldSkin(3).StickPicture(), stick);
    EXPECT_EQ(Main().sldSkin(3).StickPosition(), 4);
    EXPECT_FALSE(Main().sldSkin(3).Style());
    EXPECT_EQ(Main().sldSkin(3).Top(), 12);
    EXPECT_EQ(Main().sldSkin(3).Left(), 85);
}

TEST_F(DamagedSkin, WithoutAWindowPictureTheWindowStays) {
    const platform::PictureRef former = Main().Picture();
    Apply({}, {100});
    EXPECT_EQ(Main().Picture(), former);
    EXPECT_EQ(Main().Width(), 293);
}

// The list's rows have no skipping: the first failure ends them, and what follows in LoadSkin goes
// on. FocusRectColor comes before the damaged row, TextColor behind it.
TEST_F(DamagedSkin, TheFirstFailureEndsAListsRowsAndLeavesItWithoutRedraw) {
    Apply({{148, "1"}, {150, "no colour"}, {153, "2"}, {142, "150"}});
    for (const JList* list :
         {&Main().lstPlaylist, Main().lstFilesAndFolders.get(), Main().lst_Search.get()}) {
        EXPECT_EQ(list->FocusRectColor(), 1);
        EXPECT_EQ(list->TextColor(), 0xFFC0C0);
        EXPECT_FALSE(list->RedrawFlag());
    }
    EXPECT_EQ(Main().lstPlaylist.Height(), 150);
    EXPECT_EQ(Main().lst_Search->Height(), 150 - 16);
    EXPECT_EQ(Main().picFrame(5).Height(), 150);
    EXPECT_EQ(Main().txt_SearchFilter->ForeColor(), 2);
    LoadSkin(1);
    EXPECT_FALSE(Main().lstPlaylist.RedrawFlag());
    Apply({});
    EXPECT_TRUE(Main().lstPlaylist.RedrawFlag());
}

TEST_F(DamagedSkin, TheListFontKeepsThePartsBeforeAFailure) {
    Apply({{143, "Arial"}, {144, "large"}, {146, "True"}});
    EXPECT_EQ(Main().lstPlaylist.ListFont(), (platform::Font{u"Arial", 8, false, false}));
    EXPECT_FALSE(Main().lstPlaylist.RedrawFlag());
}

TEST_F(DamagedSkin, MenuFontAndMenuColoursFailAsAWhole) {
    const MenuColours former = Main().hMenu->Colors();
    Apply({{165, "Arial"}, {167, "slanted"}, {169, "1"}, {180, "none"}}, {102});
    EXPECT_EQ(Main().hMenu->FontData().fName, u"Tahoma");
    EXPECT_EQ(Main().hMenu->Colors(), former);
    EXPECT_NE(Main().hMenu->BackgroundPicture(), nullptr);
}

TEST_F(DamagedSkin, AnUnreadableSizeLeavesThePanelsThatOfTheList) {
    Apply({{141, "wide"}, {142, "150"}});
    EXPECT_EQ(Main().picFrame(0).Width(), 281);
    EXPECT_EQ(Main().picFrame(0).Height(), 150);
    EXPECT_EQ(Main().lstPlaylist.Width(), 281);
}

TEST_F(DamagedSkin, AnUnreadableCountGivesSkin1) {
    Apply({{0, "many"}});
    EXPECT_EQ(SkinCount(), 0);
    EXPECT_EQ(world_->State().CurrentSkin, 1);
    EXPECT_EQ(Main().picFrame(0).Width(), 281);
}

/// All that a skin places or names, as text.
std::string Snapshot(frmMAIN& main) {
    std::string text;
    const auto add = [&](const platform::Widget& widget) {
        for (const Long number : {widget.Left(), widget.Top(), widget.Width(), widget.Height(),
                                  widget.BackColor(), widget.ForeColor()}) {
            text += std::to_string(number) + ' ';
        }
        text += platform::Narrow(widget.ToolTipText() + widget.FontName()) + '\n';
    };
    add(main);
    add(main.picScrollText);
    add(main.picInfoDisplay);
    for (Long i = 0; i <= 12; ++i) {
        add(main.btnSkin(i));
    }
    for (Long i = 0; i <= 3; ++i) {
        add(main.tglSkin(i));
    }
    for (Long i = 0; i <= 9; ++i) {
        add(main.sldSkin(i));
    }
    for (const JList* list :
         {&main.lstPlaylist, main.lstFilesAndFolders.get(), main.lst_Search.get()}) {
        add(*list);
    }
    return text;
}

// Rows that lie at small numbers by accident are those of another block, and nobody reads them.
TEST_F(DamagedSkin, WithoutABaseTheControlsStayAsTheyWere) {
    const std::string before = Snapshot(Main());
    Apply({{1, "nowhere"}, {9, "119"}, {10, "191"}, {11, "no tip"}, {12, "1"}, {13, "2"}});
    EXPECT_EQ(Snapshot(Main()), before);
    EXPECT_EQ(world_->Setting("Skin"), "1");
}

// Before any skin only the items of the window's static layout are there to see.
TEST(SkinBeforeTheFirst, ItemsThatAreLoadedLaterAreHidden) {
    auto world = WorldBuilder().Created();
    world->Impulse(kImpulseAttach);
    frmMAIN& main = world->Main();
    for (Long i = 0; i <= 12; ++i) {
        EXPECT_EQ(main.btnSkin(i).Visible(), i == 0 || i == 12) << i;
    }
    for (Long i = 0; i <= 3; ++i) {
        EXPECT_EQ(main.tglSkin(i).Visible(), i == 0) << i;
    }
    for (Long i = 0; i <= 9; ++i) {
        EXPECT_EQ(main.sldSkin(i).Visible(), i != 1) << i;
    }
}

// At the first time an item comes as a copy of the first one, so a picture that is missing leaves
// it with that of the first: of button 0, which has its own by then.
TEST(SkinBeforeTheFirst, AnItemIsLoadedAsACopyOfTheFirst) {
    auto world = WorldBuilder().Created();
    world->State().Skins = ChangedSkins({{140 + 100 + 1, "x"}}, {140, 230});
    world->Impulse(kImpulseAttach);
    world->Impulse(kImpulseControl, kControlLoad);
    SkinTable& skins = world->State().Skins;
    EXPECT_EQ(world->Main().btnSkin(3).Picture(), skins.Bitmap(109));
    EXPECT_EQ(world->Main().btnSkin(3).Width(), 22);
    EXPECT_EQ(world->Main().btnSkin(3).Left(), 12);
    EXPECT_EQ(world->Main().sldSkin(1).Picture(), skins.Bitmap(220));
    EXPECT_EQ(world->Main().sldSkin(3).Picture(), nullptr);
}

}  // namespace
}  // namespace sarnel
