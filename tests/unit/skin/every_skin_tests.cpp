// What holds for each skin of the table: it can be put in force and left again, every row that is
// read is there and is what it has to be, and texts lie on floors of their back colour. Values of
// one skin stand in skin_tests.cpp.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/base/failure.h"
#include "core/state/menukeys.h"
#include "menus/commandmenu.h"
#include "menus/jpopupmenu.h"
#include "platform/base/text.h"
#include "skin/skin.h"
#include "skin/skin_offsets.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using platform::Rect;

enum class RowKind { kNumber, kText, kBoolean, kPicture };

class EverySkin : public ::testing::TestWithParam<Long> {
  protected:
    static Long Skin() { return GetParam(); }
    Long Base() const { return table_.Number(Skin()); }
    SkinRows Rows() { return {table_, Base()}; }

    /// Which of these rows are not what they have to be, and why; empty if all are.
    std::string Faults(RowKind kind, Long offset, Long count = 1) {
        std::string faults;
        for (Long row = Base() + offset; row < Base() + offset + count; ++row) {
            try {
                Read(kind, row);
            } catch (const ComponentError& error) {
                faults += "row " + std::to_string(row) + ": " +
                          platform::Narrow(error.Description()) + '\n';
            }
        }
        return faults;
    }
    std::string FontFaults(Long offset) {
        return Faults(RowKind::kText, offset) + Faults(RowKind::kNumber, offset + 1) +
               Faults(RowKind::kBoolean, offset + 2, 2);
    }

    SkinTable table_;

  private:
    void Read(RowKind kind, Long row) {
        switch (kind) {
            case RowKind::kNumber:
                static_cast<void>(table_.Number(row));
                break;
            case RowKind::kText:
                static_cast<void>(table_.Row(row));
                break;
            case RowKind::kBoolean:
                static_cast<void>(table_.Boolean(row));
                break;
            case RowKind::kPicture:
                static_cast<void>(table_.Bitmap(table_.Number(row)));
                break;
        }
    }
};

// Buttons and toggles, five rows each, in the order of their offsets.
constexpr Long kButtonBlocks[] = {9,   14,  19,  24,  90,  95,  100, 105, 110,
                                  140, 145, 150, 155, 160, 190, 265, 270};
constexpr Long kSliderBlocks[] = {120, 130, 180, 195, 205, 215, 225, 235, 245, 255};

TEST_P(EverySkin, HasEachRowThatIsReadAndEachIsWhatItHasToBe) {
    EXPECT_EQ(Faults(RowKind::kNumber, 7) + Faults(RowKind::kText, 8), "");
    for (const Long panel : {29, 170}) {
        EXPECT_EQ(Faults(RowKind::kNumber, panel, 6) + FontFaults(panel + 6), "");
    }
    EXPECT_EQ(Faults(RowKind::kNumber, 39, 4) + FontFaults(43) + Faults(RowKind::kNumber, 47, 10),
              "");
    EXPECT_EQ(FontFaults(65) + Faults(RowKind::kNumber, 69, 12), "");
    for (const Long button : kButtonBlocks) {
        EXPECT_EQ(Faults(RowKind::kPicture, button, 2) + Faults(RowKind::kText, button + 2) +
                      Faults(RowKind::kNumber, button + 3, 2),
                  "");
    }
    for (const Long slider : kSliderBlocks) {
        EXPECT_EQ(Faults(RowKind::kPicture, slider, 3) + Faults(RowKind::kNumber, slider + 3) +
                      Faults(RowKind::kBoolean, slider + 4) +
                      Faults(RowKind::kNumber, slider + 5, 4),
                  "");
    }
}

TEST_P(EverySkin, HasThePicturesThatBelongToItsBase) {
    for (const Long offset : {0, 2, 3, 4, 5, 6, 7, 8}) {
        EXPECT_NO_THROW(static_cast<void>(Rows().PictureOf(offset))) << Base() + offset;
    }
}

// A strip holds as many images of its mask's size as its control has states.
TEST_P(EverySkin, HasStripsAsHighAsTheirMasksAsk) {
    for (const Long button : kButtonBlocks) {
        const bool isToggle = button == 24 || button == 105 || button == 110 || button == 190;
        const platform::Size strip = Rows().PictureNamed(button)->GetSize();
        const platform::Size mask = Rows().PictureNamed(button + 1)->GetSize();
        EXPECT_EQ(strip, (platform::Size{mask.width, mask.height * (isToggle ? 6 : 3)}))
            << "row " << Base() + button;
    }
}

// The pulse goes from the one to the other by differences without a sign.
TEST_P(EverySkin, HasAPulseNoByteOfWhichFalls) {
    const Long low = Rows().Number(kListPulseColorFrom);
    const Long high = Rows().Number(kListSelTextColor);
    for (const int shift : {0, 8, 16}) {
        EXPECT_LE((low >> shift) & 0xFF, (high >> shift) & 0xFF) << "bits from " << shift;
    }
}

// The first row of a floor's place, and the row of its colour: title, lists, one-line fact.
constexpr Long kTextFloors[][2] = {{29, 33}, {39, 47}, {170, 174}};

TEST_P(EverySkin, HasAWindowPictureThatIsFlatWhereTextsLie) {
    const platform::PictureRef window = Rows().PictureOf(kWindowPicture);
    for (const auto& [place, colour] : kTextFloors) {
        const SkinRows rows = Rows().From(place);
        const Rect floor{rows.Number(0), rows.Number(1), rows.Number(0) + rows.Number(2),
                         rows.Number(1) + rows.Number(3)};
        Long others = 0;
        for (Long y = floor.top; y < floor.bottom; ++y) {
            for (Long x = floor.left; x < floor.right; ++x) {
                others += window->GetPixel({x, y}) != Rows().Number(colour) ? 1 : 0;
            }
        }
        EXPECT_EQ(others, 0) << "row " << Base() + colour;
    }
}

class EverySkinInForce : public EverySkin {
  protected:
    frmMAIN& Main() { return world_->Main(); }
    void Choose(Long skin) {
        hMenu_Click(Main().hMenu->IndexForKey(menukeys::kSkin + LongToText(skin)));
        world_->windows.UpdateScreen();
    }
    Long Pixel(Long x, Long y) {
        const Rect window = world_->windows.GetWindowRect(world_->Window());
        return world_->windows.ComposeScreen().GetPixel({window.left + x, window.top + y});
    }

    std::unique_ptr<support::World> world_ = support::WorldBuilder().Started();
};

// Chosen in the menu, then the first, then this one again: what another skin leaves behind would
// show.
TEST_P(EverySkinInForce, IsShownOnTheScreenHoweverItWasComeTo) {
    for (const Long skin : {Skin(), Long{1}, Skin()}) {
        Choose(skin);
        const SkinRows rows(table_, table_.Number(skin));
        EXPECT_EQ(world_->State().CurrentSkin, skin);
        EXPECT_EQ(world_->Setting("Skin"), std::to_string(skin));
        const platform::PictureRef window = rows.PictureOf(kWindowPicture);
        EXPECT_EQ(Main().Width(), window->Width());
        EXPECT_EQ(Main().Height(), window->Height());
        EXPECT_EQ(Pixel(0, 0), window->GetPixel({0, 0}));
        const Long right = window->Width() - 1;
        const Long bottom = window->Height() - 1;
        EXPECT_EQ(Pixel(right, bottom), window->GetPixel({right, bottom}));
        for (const auto& [place, colour] : kTextFloors) {
            const SkinRows floor = rows.From(place);
            EXPECT_EQ(
                Pixel(floor.Number(0) + floor.Number(2) - 1, floor.Number(1) + floor.Number(3) - 1),
                rows.Number(colour))
                << "offset " << colour;
        }
    }
}

TEST_P(EverySkinInForce, PutsEachButtonInItsPlaceWithItsPictureAndTip) {
    Choose(Skin());
    SkinTable& table = world_->State().Skins;
    const auto expect = [&](auto& control, Long offset) {
        const SkinRows rows = SkinRows(table, Base()).From(offset);
        EXPECT_EQ(control.Picture(), rows.PictureNamed(ButtonBlock::kPicture)) << offset;
        EXPECT_EQ(control.MaskPicture(), rows.PictureNamed(ButtonBlock::kMaskPicture)) << offset;
        EXPECT_EQ(control.ToolTipText(), rows.Text(ButtonBlock::kToolTip)) << offset;
        EXPECT_EQ(control.Left(), rows.Number(ButtonBlock::kLeft)) << offset;
        EXPECT_EQ(control.Top(), rows.Number(ButtonBlock::kTop)) << offset;
    };
    for (const auto& [index, offset] : kButtonRows) {
        expect(Main().btnSkin(index), offset);
    }
    expect(Main().btnSkin(kResetEffectsButton), kResetEffectsButtonRows.offset);
    for (const auto& [index, offset] : kToggleRows) {
        expect(Main().tglSkin(index), offset);
    }
}

TEST_P(EverySkinInForce, IsListedInTheMenuByItsNameAndNumber) {
    const JPopupMenu& menu = *Main().hMenu;
    const Long item = menu.IndexForKey(menukeys::kSkin + LongToText(Skin()));
    EXPECT_EQ(menu.Caption(item), Rows().Text(kSkinName));
    EXPECT_EQ(menu.KeyText(item), u"Shift+" + LongToText(Skin()));
}

// All skins of the table that this program carries.
auto SkinsOfTheTable() {
    return ::testing::Range(Long{1}, SkinTable().Number(kSkinCountRow) + 1);
}
INSTANTIATE_TEST_SUITE_P(Table, EverySkin, SkinsOfTheTable());
INSTANTIATE_TEST_SUITE_P(Table, EverySkinInForce, SkinsOfTheTable());

}  // namespace
}  // namespace sarnel
