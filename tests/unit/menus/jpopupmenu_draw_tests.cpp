// The sizes and pictures of rows.
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "menus/jpopupmenu.h"
#include "platform/base/keys.h"
#include "platform/headless/headless_driver.h"
#include "tests/unit/support/menu_rows.h"

namespace sarnel {
namespace {

using namespace platform;
using Longs = std::vector<Long>;

TEST_F(MenuRows, BeforeTheyAreMeasuredHaveTheHeightsOfAddItem) {
    EXPECT_EQ(menu_.MenuItemHeight(Add(u"-")), 18 / 6);
    EXPECT_EQ(menu_.MenuItemHeight(Add(u"-Head")), 18 - 8);
    EXPECT_EQ(menu_.MenuItemHeight(Add(u"Item")), 18);
    JPopupMenu ownerless(shared_);
    EXPECT_EQ(ownerless.MenuItemHeight(ownerless.AddItem(u"a", 0, u"", false, true)), 0);
    EXPECT_EQ(ownerless.MenuItemHeight(ownerless.AddItem(u"-a", 0, u"", false, true)), -8);
}

TEST_F(MenuRows, TakeTheLongestCaptionAndTheLongestKeyTextTogether) {
    Add(u"-");
    Add(u"-Head");
    Add(u"Longest caption");  // 15 x 6 = 90
    Add(u"Short#Ctrl+Del");   // 8 x 6 = 48
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(1), 30);
    EXPECT_EQ(menu_.MenuItemHeight(1), 18 / 7);
    EXPECT_EQ(menu_.MenuItemWidth(2), 30 + 90 + 48);
    EXPECT_EQ(menu_.MenuItemHeight(2), 18 - 5);
    EXPECT_EQ(menu_.MenuItemWidth(3), 18 + 90 + 48);
    EXPECT_EQ(menu_.MenuItemWidth(4), 18 + 90 + 48);
    EXPECT_EQ(menu_.MenuItemHeight(4), 18);
}

TEST_F(MenuRows, AddNothingForKeyTextsWhereTheLongestCaptionIsAHeaders) {
    Add(u"-A long header");  // 13 x 6 = 78
    Add(u"Item#F1");
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(1), 30 + 78);
    EXPECT_EQ(menu_.MenuItemWidth(2), 18 + 78);
}

TEST_F(MenuRows, CountOnlyItemsOfTheirOwnMenu) {
    const Long parent = Add(u"Parent");
    Add(u"A much longer child#Ctrl+X", parent);
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(parent), 18 + 6 * 6);
}

TEST_F(MenuRows, AreMeasuredAgainAfterARefreshAndANewCaption) {
    Add(u"Item");
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(1), 18 + 24);
    menu_.Caption(1, u"Longer item");
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(1), 18 + 66);
    Add(u"The longest item");
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(1), 18 + 66);  // keeps the size that it has
    EXPECT_EQ(menu_.MenuItemWidth(2), 18 + 96);
    menu_.Refresh();
    Shown();
    EXPECT_EQ(menu_.MenuItemWidth(1), 18 + 96);
}

TEST_F(MenuRows, AnOwnerDrawnItemMaySayItsSize) {
    const Long index = Add(u"Item");
    menu_.OwnerDraw(index, true);
    Longs got;
    menu_.onMeasureItem = [&](Long item, Long& width, Long& height) {
        got = {item, width, height};
        width = 200;
        height = 50;
    };
    Shown();
    EXPECT_EQ(got, (Longs{1, 18 + 24, 18}));
    EXPECT_EQ(menu_.MenuItemWidth(1), 200);
    EXPECT_EQ(menu_.MenuItemHeight(1), 50);
}

TEST_F(MenuRows, AnOwnerDrawnItemIsDrawnByItsHandlerUnlessThatLeavesIt) {
    menu_.OwnerDraw(Add(u"Item"), true);
    Surface rows = Shown();
    EXPECT_EQ(rows.GetPixel({5, 5}), 0);  // no handler: nobody draws it
    bool leaves = false;
    menu_.onDrawItem = [&](const JPopupMenu::Drawing& drawing, bool& bDoDefault) {
        EXPECT_EQ(drawing.lMenuIndex, 1);
        EXPECT_EQ(drawing.rect, (Rect{0, 0, 42, 18}));
        EXPECT_FALSE(drawing.bSelected || drawing.bChecked || drawing.bDisabled);
        EXPECT_FALSE(bDoDefault);
        drawing.hdc.FillRect(drawing.rect, 0x123456);
        bDoDefault = leaves;
    };
    EXPECT_EQ(Shown().GetPixel({5, 5}), 0x123456);
    leaves = true;
    EXPECT_EQ(Shown().GetPixel({5, 5}), colours_.bkText);
}

TEST_F(MenuRows, AnOrdinaryItemHasItsTextBehindTheRoomForTheMark) {
    Add(u"Item#F1");  // 18 + 24 + 12 = 54 wide
    const Surface rows = Shown();
    // The text begins at 18 - 2 and stands in the middle: (18 - 13) / 2 = 2 down. A letter's ink
    // begins a column in and three rows down.
    EXPECT_EQ(rows.GetPixel({16, 5}), colours_.bkText);
    EXPECT_EQ(rows.GetPixel({17, 5}), colours_.txtColor);
    EXPECT_EQ(rows.GetPixel({17, 4}), colours_.bkText);
    EXPECT_EQ(rows.GetPixel({17, 11}), colours_.txtColor);
    EXPECT_EQ(rows.GetPixel({17, 12}), colours_.bkText);
    // The key text ends 6 in front of the right edge: from 36 to 48.
    EXPECT_EQ(rows.GetPixel({37, 5}), colours_.txtColor);
    EXPECT_EQ(rows.GetPixel({46, 5}), colours_.txtColor);
    EXPECT_EQ(rows.GetPixel({47, 5}), colours_.bkText);
    EXPECT_EQ(rows.GetPixel({53, 17}), colours_.bkText);
}

TEST_F(MenuRows, KeyTextsStandInOneColumn) {
    Add(u"Item#F1");
    Add(u"It#Ctrl+Del");  // 18 + 24 + 48 = 90 wide: both key texts end at 84
    const Surface rows = Shown();
    for (const Long top : {0, 18}) {
        EXPECT_EQ(rows.GetPixel({82, top + 5}), colours_.txtColor) << top;
        EXPECT_EQ(rows.GetPixel({83, top + 5}), colours_.bkText) << top;
    }
    EXPECT_EQ(rows.GetPixel({37, 18 + 5}), colours_.txtColor);  // the longer one begins at 36
}

TEST_F(MenuRows, ASelectedItemHasABarWithADottedBorder) {
    Add(u"Item");  // 42 wide
    const Surface rows = Shown({{VK_DOWN, 0, true}, {VK_DOWN, 0, false}});
    // Dots of 3 pixels, 3 apart, then the gradient: its far band is selGrad2.
    EXPECT_EQ(rows.GetPixel({0, 0}), colours_.selText);
    EXPECT_EQ(rows.GetPixel({2, 0}), colours_.selText);
    EXPECT_NE(rows.GetPixel({3, 0}), colours_.selText);
    EXPECT_EQ(rows.GetPixel({40, 1}), colours_.selGrad2);
    EXPECT_EQ(rows.GetPixel({17, 5}), colours_.selText);
}

TEST_F(MenuRows, ADisabledItemIsEngraved) {
    Add(u"I", 0, false);
    const Surface rows = Shown();
    // The upper layer over the lower one, which lies 1 to the right and 2 down.
    EXPECT_EQ(rows.GetPixel({17, 5}), colours_.cDisabled2);
    EXPECT_EQ(rows.GetPixel({20, 11}), colours_.cDisabled2);
    EXPECT_EQ(rows.GetPixel({21, 7}), colours_.cDisabled1);
    EXPECT_EQ(rows.GetPixel({18, 13}), colours_.cDisabled1);
    EXPECT_EQ(rows.GetPixel({17, 13}), colours_.bkText);
    EXPECT_EQ(rows.GetPixel({21, 6}), colours_.bkText);
    EXPECT_EQ(rows.GetPixel({18, 14}), colours_.bkText);
}

TEST_F(MenuRows, ADisabledItemShowsABarOnlyWhereTheKeysAre) {
    Add(u"Item", 0, false);
    EXPECT_EQ(Shown({}, {110, 110}).GetPixel({1, 1}), colours_.bkText);
    EXPECT_NE(Shown({{VK_DOWN, 0, true}, {VK_DOWN, 0, false}}).GetPixel({1, 1}), colours_.bkText);
    EXPECT_EQ(Shown({{VK_HOME, 0, true}, {VK_HOME, 0, false}}).GetPixel({1, 1}), colours_.bkText);
}

TEST_F(MenuRows, AHeaderIsCentredInTheWholeRowOnItsGradient) {
    Add(u"-Head");  // 30 + 24 = 54 wide, 13 high
    const Surface rows = Shown();
    // (54 - 24) / 2 = 15; the ink begins at 16, three rows down.
    EXPECT_EQ(rows.GetPixel({16, 3}), colours_.headText);
    EXPECT_NE(rows.GetPixel({15, 3}), colours_.headText);
    EXPECT_EQ(rows.GetPixel({0, 12}), colours_.headGrad2);
    // Bands of 3 of 13: the last one pixel has the factor 9/13. Blue 0x80 + 9/13 x 127, red and
    // green 9/13 x 192.
    EXPECT_EQ(rows.GetPixel({0, 0}), 133 + (133 << 8) + (216 << 16));
}

TEST_F(MenuRows, ASeparatorIsAGradientFromLeftToRight) {
    Add(u"Item");  // 42 wide
    Add(u"-");
    const Surface rows = Shown();
    EXPECT_EQ(rows.GetPixel({41, 18}), colours_.cSep2);
    EXPECT_EQ(rows.GetPixel({41, 19}), colours_.cSep2);
    // Bands of 3 of 42: the last has the factor 36/42 = 6/7. Blue 128 + 108.86, red and green
    // 164.57.
    EXPECT_EQ(rows.GetPixel({0, 18}), 165 + (165 << 8) + (237 << 16));
}

TEST_F(MenuRows, AHeaderWhoseCaptionIsADashIsDrawnAsASeparator) {
    Add(u"Item");
    Add(u"--");
    const Surface rows = Shown();
    EXPECT_EQ(menu_.MenuItemHeight(2), 18 / 7);
    EXPECT_EQ(rows.GetPixel({41, 18}), colours_.cSep2);
}

TEST_F(MenuRows, MarksAreInTheTextColour) {
    const Long checked = Add(u"Item");
    const Long radio = Add(u"Item");
    menu_.Checked(checked, true);
    menu_.RadioCheck(radio, true);
    const Surface rows = Shown({{VK_DOWN, 0, true}, {VK_DOWN, 0, false}});
    // 7 x 7 in the middle of 18 x 18, from 5,5 on: the check's lowest point at 2,6; the bullet's
    // middle at 3,3.
    EXPECT_EQ(rows.GetPixel({5 + 2, 5 + 6}), colours_.selText);
    EXPECT_EQ(rows.GetPixel({5 + 3, 18 + 5 + 3}), colours_.txtColor);
    EXPECT_EQ(rows.GetPixel({5 + 6, 18 + 5}), colours_.bkText);  // no check
}

TEST_F(MenuRows, TilesLieBehindAllButTheSelectedAndMeetAcrossRows) {
    auto picture = std::make_shared<Surface>(Size{5, 7});
    picture->FillRect(picture->Bounds(), 0x00AA00);
    picture->SetPixel({0, 0}, 0x0000AA);
    menu_.BackgroundPicture(picture);
    Add(u"Item");
    Add(u"Item");
    const Surface rows = Shown({{VK_DOWN, 0, true}, {VK_DOWN, 0, false}});
    // Row 2 begins at 18: the tiles stand at 21, 28 and 35.
    EXPECT_EQ(rows.GetPixel({5, 21}), 0x0000AA);
    EXPECT_EQ(rows.GetPixel({5, 18}), 0x00AA00);
    EXPECT_EQ(rows.GetPixel({10, 28}), 0x0000AA);
    EXPECT_NE(rows.GetPixel({5, 14}), 0x0000AA);
    EXPECT_NE(rows.GetPixel({6, 14}), 0x00AA00);
    menu_.ClearBackgroundPicture();
    EXPECT_EQ(Shown().GetPixel({5, 21}), colours_.bkText);
    menu_.BackgroundPicture(std::make_shared<Surface>(Size{0, 5}));
    EXPECT_EQ(menu_.BackgroundPicture(), nullptr);
}

TEST_F(MenuRows, NewColoursHoldFromTheNextDrawing) {
    Add(u"Item");
    MenuColours colours;
    colours.bkText = 0x010203;
    colours.headGrad2 = 0x040506;
    menu_.SetColors(colours);
    EXPECT_EQ(Shown().GetPixel({0, 0}), 0x010203);
}

TEST_F(MenuRows, TheFontIsMadeOfPointsAt96AnInch) {
    menu_.SetFontData({u"Arial", 20, true, 700, 1});
    Add(u"a");
    EXPECT_EQ(menu_.MenuItemHeight(1), 18);  // letters of the virtual screen are always 13 high
    EXPECT_EQ(menu_.FontData().fName, u"Arial");
}

TEST_F(MenuRows, RecordsOfOthersAreNotTheirs) {
    EXPECT_FALSE(menu_.WM_MEASUREITEM_Msg(0));
    EXPECT_FALSE(menu_.WM_DRAWITEM_Msg(12345));
    // A menu whose items this object does not know.
    Menus& menus = windows_.PopupMenus();
    const Handle other = menus.CreatePopupMenu();
    menus.AppendMenu(other, MF_OWNERDRAW, 1, u"");
    menus.TrackPopupMenu(other, 0, {0, 0}, owner_);
    EXPECT_EQ(menus.Items(other)->front().size, (Size{0, 0}));
}

// A row of an id that is not in the table: whoever owns the popup measures it 20 x 10 and hands its
// drawing on.
TEST_F(MenuRows, OfAnUnknownItemGetTheTilesAndTheirMark) {
    auto picture = std::make_shared<Surface>(Size{5, 7});
    picture->FillRect(picture->Bounds(), 0x00AA00);
    menu_.BackgroundPicture(picture);
    Menus& menus = windows_.PopupMenus();
    const Handle other = menus.CreatePopupMenu();
    menus.AppendMenu(other, MF_OWNERDRAW, 1, u"");
    menus.AppendMenu(other, MF_OWNERDRAW | MF_CHECKED, 2, u"");
    std::vector<bool> answers;
    windows_.SetWindowProc(owner_, [&](const Message& message) {
        if (message.id == WM_MEASUREITEM) {
            auto* record = menus.MeasureRecord(message.lParam);
            record->itemWidth = 40;
            record->itemHeight = 18;
        } else if (message.id == WM_DRAWITEM) {
            answers.push_back(menu_.WM_DRAWITEM_Msg(message.lParam));
        }
        return 1;
    });
    Surface screen;
    menus.ObserveOpening([&](Handle) {
        screen = windows_.ComposeScreen();
        menus.EndMenu(0);
    });
    menus.TrackPopupMenu(other, 0, {100, 100}, owner_);
    EXPECT_EQ(answers, (std::vector<bool>{true, true}));
    EXPECT_EQ(screen.GetPixel({101, 101}), 0x00AA00);
    EXPECT_EQ(screen.GetPixel({140, 136}), 0x00AA00);
    EXPECT_EQ(screen.GetPixel({101 + 5 + 2, 101 + 18 + 5 + 6}), colours_.txtColor);
    EXPECT_EQ(screen.GetPixel({101 + 5 + 2, 101 + 5 + 6}), 0x00AA00);
}

/// A screen whose lines are as high as a test says.
class LineDriver : public HeadlessDriver {
  public:
    LineDriver() : HeadlessDriver(Clock::kVirtual) {}
    Size MeasureText(const Font& font, std::u16string_view text) const override {
        return {HeadlessDriver::MeasureText(font, text).width, height};
    }
    Long height = 0;
};

TEST(MenuRowHeight, IsTheLinesAnd4From15On) {
    for (const auto& [line, row] :
         std::vector<std::pair<Long, Long>>{{1, 18}, {14, 18}, {15, 19}, {16, 20}, {40, 44}}) {
        LineDriver driver;
        driver.height = line;
        WindowSystem windows(driver);
        JPopupMenu menu(std::make_shared<mJPopupMenu>(windows));
        menu.hWndOwner(windows.CreateWindow(0, {0, 0, 10, 10}, {}));
        EXPECT_EQ(menu.MenuItemHeight(menu.AddItem(u"a", 0, u"", false, true)), row) << line;
    }
}

}  // namespace
}  // namespace sarnel
