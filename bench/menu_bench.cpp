// Popup menus as a user meets them: from the request to the finished picture (30 ms are good), and
// from a key to the picture with another row selected (1 ms is good).
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "menus/jpopupmenu.h"
#include "platform/base/keys.h"
#include "platform/headless/headless_driver.h"

namespace {

using namespace platform;
using sarnel::JPopupMenu;
using sarnel::mJPopupMenu;

/// Has pictures put together, as a desktop does.
class ShowingDriver : public HeadlessDriver {
  public:
    ShowingDriver() : HeadlessDriver(Clock::kVirtual) {}
    bool ShowsPictures() const override { return true; }
};

// A menu of ordinary rows, headers and separators over a tiled picture of 100 x 100.
struct Desk {
    explicit Desk(Long rows) {
        windows.ShowWindow(owner, SW_SHOW);
        menu.hWndOwner(owner);
        auto picture = std::make_shared<Surface>(Size{100, 100});
        menu.BackgroundPicture(picture);
        menu.AddItem(u"-Header", 0, u"", false, true);
        for (Long i = 1; i < rows; ++i) {
            const std::u16string number(1, static_cast<char16_t>(u'a' + i % 26));
            menu.AddItem(i % 5 == 0 ? u"-" : u"A row of the menu " + number + u"#Ctrl+Del", 0, u"",
                         i % 3 == 0, i % 4 != 0);
        }
    }

    ShowingDriver driver;
    WindowSystem windows{driver};
    std::shared_ptr<mJPopupMenu> shared = std::make_shared<mJPopupMenu>(windows);
    JPopupMenu menu{shared};
    Handle owner =
        windows.CreateWindow(0, {0, 0, 293, 277}, [this](const Message& message) -> Long {
            return message.id == WM_MEASUREITEM ? menu.WM_MEASUREITEM_Msg(message.lParam)
                   : message.id == WM_DRAWITEM  ? menu.WM_DRAWITEM_Msg(message.lParam)
                                                : 0;
        });
};

void OpenToThePicture(benchmark::State& state) {
    Desk desk(static_cast<Long>(state.range(0)));
    desk.windows.PopupMenus().ObserveOpening([&](Handle) {
        desk.windows.UpdateScreen();
        desk.windows.PopupMenus().EndMenu(0);
    });
    for (auto run : state) {
        desk.menu.Refresh();  // all rows are measured again
        desk.menu.ShowPopup(10, 10, 0, 4, 2, true);
    }
}
BENCHMARK(OpenToThePicture)->Arg(8)->Arg(40)->Unit(benchmark::kMicrosecond);

void SelectTheNextRow(benchmark::State& state) {
    Desk desk(static_cast<Long>(state.range(0)));
    desk.windows.Schedule(0, [&] {
        desk.windows.UpdateScreen();
        for (auto run : state) {
            desk.windows.Deliver(KeyChanged{VK_DOWN, 0, true});
            desk.windows.Deliver(KeyChanged{VK_DOWN, 0, false});
            desk.windows.UpdateScreen();
        }
    });
    desk.menu.ShowPopup(10, 10, 0, 4, 2, true);
}
BENCHMARK(SelectTheNextRow)->Arg(8)->Arg(40)->Unit(benchmark::kMicrosecond);

}  // namespace
