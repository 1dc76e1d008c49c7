// A popup that is shown: what its owner hears, where it is, and menus that are not its own.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/unit/support/menu_rows.h"

namespace sarnel {
namespace {

using namespace platform;
using support::MenuRows;

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

TEST_F(MenuRows, ShowPopupTellsItsOwnerAndRaisesClickInBetween) {
    const Long parent = Add(u"Parent");
    const Long child = Add(u"Child", parent);
    std::vector<std::string> order;
    windows_.SetWindowProc(owner_, [&](const Message& message) {
        order.push_back(std::to_string(message.id));
        return 0;
    });
    menu_.onClick = [&](Long& item) { order.push_back("click " + std::to_string(item)); };
    windows_.PopupMenus().ObserveOpening([&](Handle menu) {
        order.push_back(menu == menu_.Submenu(parent) ? "submenu" : "root");
        windows_.PopupMenus().EndMenu(menu_.MenuId(child));
    });
    EXPECT_EQ(menu_.ShowPopup(1, 1, child, 4, 2, true), child);
    // 44 asks for the size, 43 for the picture of its one row.
    EXPECT_EQ(order, (std::vector<std::string>{"529", "44", "43", "submenu", "click 2", "530"}));
    windows_.PopupMenus().ObserveOpening({});
    order.clear();
    EXPECT_EQ(menu_.ShowPopup(1, 1, 0, 4, 2, true), 0);
    EXPECT_EQ(order, (std::vector<std::string>{"529", "44", "43", "530"}));
    order.clear();
    EXPECT_EQ(menu_.ShowPopup(1, 1, 3, 4, 2, true), 0);  // no such item
    menu_.Clear();
    EXPECT_EQ(menu_.ShowPopup(1, 1, 0, 4, 2, true), 0);
    EXPECT_EQ(order, std::vector<std::string>());
}

TEST_F(MenuRows, MinusOneIsThePointersPlace) {
    Add(u"Item");  // 42 + 2 wide, 18 + 2 high
    driver_.MovePointer({300, 200});
    Surface screen;
    windows_.PopupMenus().ObserveOpening([&](Handle) {
        screen = windows_.ComposeScreen();
        windows_.PopupMenus().EndMenu(0);
    });
    menu_.ShowPopup(-1, -1, 0, 36, 2, true);  // centred on x, ending at y
    EXPECT_EQ(screen.GetPixel({277, 190}), 0);
    EXPECT_EQ(screen.GetPixel({278, 180}), colours_.headGrad2);
    EXPECT_EQ(screen.GetPixel({321, 199}), colours_.headGrad2);
    EXPECT_EQ(screen.GetPixel({322, 199}), 0);
    menu_.ShowPopup(-1, 50, 0, 8, 2, true);
    EXPECT_EQ(screen.GetPixel({299, 69}), colours_.headGrad2);
    EXPECT_EQ(screen.GetPixel({300, 69}), 0);
}

}  // namespace
}  // namespace sarnel
