// What a driver is told and when, as docs/drivers.md shows it: each row of its table of calls is
// played on the page's own driver.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include "core/ambrisor.h"
#include "platform/menus/menu.h"
#include "platform/windows/window_system.h"
#include "recording_driver.h"

namespace {

// The calls in the row of the page's table that begins with these words.
std::string OfPage(const std::string& what) {
    std::ifstream page(VELDRIN_DRIVERS_PAGE);
    std::string line;
    while (std::getline(page, line)) {
        const std::string begin = "| " + what + " |";
        if (!line.starts_with(begin)) {
            continue;
        }
        std::string calls;
        for (std::size_t at = line.find('`', begin.size()); at != std::string::npos;
             at = line.find('`', at + 1)) {
            const std::size_t end = line.find('`', at + 1);
            calls += (calls.empty() ? "" : " ") + line.substr(at + 1, end - at - 1);
            at = end;
        }
        return calls;
    }
    return "(no such row)";
}

// What was called since the last time, without the windows' numbers.
std::string Calls(RecordingDriver& driver) {
    std::string calls;
    for (const std::string& call : std::exchange(driver.calls, {})) {
        calls += (calls.empty() ? "" : " ") + call.substr(0, call.find(' '));
    }
    return calls;
}

class OrderOfCalls : public testing::Test {
  protected:
    void Is(const std::string& what) {
        windows_->DoEvents();
        EXPECT_EQ(Calls(driver_), OfPage(what)) << what;
    }

    RecordingDriver driver_;
    std::unique_ptr<WindowSystem> windows_ = std::make_unique<WindowSystem>(driver_);
};

TEST_F(OrderOfCalls, OfAWindow) {
    Surface face({100, 60});
    const Handle window = windows_->CreateWindow(0, {10, 10, 110, 70}, {});
    windows_->SetWindowText(window, u"title");
    windows_->SetFace(window, &face);
    Is("A window is made");
    windows_->ShowWindow(window, SW_SHOW);
    Is("It is shown");
    face.FillRect({0, 0, 5, 5}, 0xFF);
    windows_->InvalidateRect(window, {0, 0, 5, 5});
    Is("Something of it changes");
    windows_->SetWindowPos(window, HWND_TOP, 20, 20, 100, 60, SWP_NOZORDER);
    Is("It is moved");
    windows_->SetWindowPos(window, HWND_TOP, 20, 20, 90, 60, SWP_NOZORDER);
    Is("Its size changes");
    windows_->SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Is("It is put above all others");
    windows_->ShowWindow(window, SW_MINIMIZE);
    Is("It is minimised");
    windows_->ShowWindow(window, SW_RESTORE);
    Is("It is restored");
    driver_.events.push_back(MinimisedByDesktop{window});
    Is("`MinimisedByDesktop` is reported");
    driver_.events.push_back(RestoredByDesktop{window});
    Is("`RestoredByDesktop` is reported");
    driver_.events.push_back(MovedByDesktop{window, {5, 5}});
    Is("`MovedByDesktop` is reported");
    driver_.events.push_back(SeenAgain{window});
    Is("`SeenAgain` is reported");
    windows_->SetForegroundWindow(window);
    Is("It is brought to the front");
    windows_->ShowWindow(window, SW_HIDE);
    Is("It is hidden");
    windows_->DestroyWindow(window);
    Is("It ends");
    windows_->CreateWindow(0, {10, 10, 110, 70}, {});
    Calls(driver_);
    windows_.reset();
    EXPECT_EQ(Calls(driver_), OfPage("The window system ends"));
}

TEST_F(OrderOfCalls, OfAMenu) {
    Menus& menus = windows_->PopupMenus();
    const Handle owner = windows_->CreateWindow(0, {10, 10, 110, 70}, {});
    windows_->ShowWindow(owner, SW_SHOW);
    const Handle menu = menus.CreatePopupMenu();
    const Handle submenu = menus.CreatePopupMenu();
    menus.AppendMenu(menu, MF_POPUP, submenu, u"more");
    menus.AppendMenu(submenu, 0, 7, u"an item");
    windows_->DoEvents();
    Calls(driver_);
    windows_->Schedule(100, [this] {
        Is("A menu opens");
        driver_.events.push_back(KeyChanged{VK_DOWN, 0, true});
        driver_.events.push_back(KeyChanged{VK_RIGHT, 0, true});
    });
    windows_->Schedule(300, [this] {
        Is("A submenu opens");
        driver_.events.push_back(KeyChanged{VK_RETURN, 0, true});
    });
    EXPECT_EQ(menus.TrackPopupMenu(menu, TPM_RETURNCMD, {50, 50}, owner), 7);
    Is("An item is chosen");
}

class OrderOfARun : public OrderOfCalls {
  protected:
    OrderOfARun() { mkdtemp(folder_.data()); }
    ~OrderOfARun() override { std::filesystem::remove_all(folder_); }
    void Control(sarnel::Long what) {
        component_.ProcessImpulse(sarnel::kImpulseControl, what, first_, second_);
    }

    std::string folder_ = (std::filesystem::temp_directory_path() / "order-XXXXXX").native();
    sarnel::ImpulseValue first_;
    sarnel::ImpulseValue second_;
    sarnel::Ambrisor component_{*windows_, {folder_}};
};

TEST_F(OrderOfARun, FromStartToEnd) {
    component_.Connect(nullptr);
    component_.ProcessImpulse(sarnel::kImpulseAttach, {}, first_, second_);
    Control(sarnel::kControlLoad);
    Is("The component is loaded");
    first_ = true;
    second_ = u"";
    Control(sarnel::kControlShow);
    Is("It shows its window");
    first_ = false;
    Control(sarnel::kControlShow);
    Is("Its run ends");
}

}  // namespace
