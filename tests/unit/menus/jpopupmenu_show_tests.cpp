// A popup on its way: where it opens, and what its owner and the handler of a click hear.
#include <string>
#include <vector>

#include "tests/unit/support/menu_rows.h"

namespace sarnel {
namespace {

using namespace platform;

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
