// What the window system keeps of the desktop's shell: atoms, system-wide keys, tray icons and the
// registry of file types.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "platform/windows/notify_icon.h"
#include "platform/windows/window_system.h"
#include "tests/unit/support/window_log.h"

namespace platform {
namespace {

using ShellLines = std::vector<std::string>;
constexpr Long kFirst = 0xC000;
constexpr Long kCallback = 1024;

class WindowShell : public ::testing::Test {
  protected:
    Handle Shown(const std::string& name) {
        const Handle window = windows_.CreateWindow(0, {0, 0, 100, 100}, log_.Named(name));
        windows_.ShowWindow(window, SW_SHOW);
        log_.Take();
        return window;
    }
    void Destroy(Handle window) {
        windows_.DestroyWindow(window);
        log_.Take();
    }
    // What the driver knows the only key by.
    Handle Grab() const { return driver_.HotKeys().begin()->first; }

    static NotifyIconData Record(Handle window, std::string_view tip, Long id = 7) {
        NotifyIconData record;
        record.hWnd = window;
        record.uID = id;
        record.uCallbackMessage = kCallback;
        std::copy(tip.begin(), tip.end(), record.szTip.begin());
        return record;
    }
    bool Add(Handle window, std::string_view tip = "tip") {
        return windows_.Shell_NotifyIcon(NIM_ADD, Record(window, tip));
    }
    // The tip that a record with these bytes shows.
    std::u16string Shows(const std::string& bytes) {
        EXPECT_TRUE(Add(window_, bytes));
        const std::u16string tip = driver_.TrayTips().at(window_);
        EXPECT_TRUE(windows_.Shell_NotifyIcon(NIM_DELETE, Record(window_, "")));
        return tip;
    }

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    support::WindowLog log_;
    const Handle window_ = Shown("w");
};

TEST_F(WindowShell, AnAtomIsOneNumberForOneName) {
    EXPECT_EQ(windows_.GlobalAddAtom(u"a"), kFirst);
    EXPECT_EQ(windows_.GlobalAddAtom(u"b"), kFirst + 1);
    EXPECT_EQ(windows_.GlobalAddAtom(u"a"), kFirst);
    EXPECT_EQ(windows_.GlobalAddAtom(u"A"), kFirst + 2);
    EXPECT_EQ(windows_.GlobalAddAtom(u""), 0);
}

TEST_F(WindowShell, AnAtomIsThereUntilEachAddingIsTakenBack) {
    windows_.GlobalAddAtom(u"a");
    windows_.GlobalAddAtom(u"a");
    windows_.GlobalDeleteAtom(kFirst);
    EXPECT_EQ(windows_.GlobalAddAtom(u"b"), kFirst + 1);
    windows_.GlobalDeleteAtom(kFirst);
    EXPECT_EQ(windows_.GlobalAddAtom(u"c"), kFirst);
    windows_.GlobalDeleteAtom(0xFFFF);  // nobody's
    windows_.GlobalDeleteAtom(0);
    windows_.GlobalDeleteAtom(-1);
    EXPECT_EQ(windows_.GlobalAddAtom(u"d"), kFirst + 2);
}

TEST_F(WindowShell, AtomsCanRunOut) {
    constexpr Long kAtoms = 0x4000;
    for (Long i = 0; i < kAtoms; ++i) {
        std::u16string name(1, u'n');
        for (const char digit : std::to_string(i)) {
            name += static_cast<char16_t>(digit);
        }
        ASSERT_EQ(windows_.GlobalAddAtom(name), kFirst + i);
    }
    EXPECT_EQ(windows_.GlobalAddAtom(u"one more"), 0);
    EXPECT_EQ(windows_.GlobalAddAtom(u"n5"), kFirst + 5);
    windows_.GlobalDeleteAtom(0xFFFF);
    EXPECT_EQ(windows_.GlobalAddAtom(u"one more"), 0xFFFF);
}

TEST_F(WindowShell, AHotKeyReachesItsWindow) {
    EXPECT_TRUE(windows_.RegisterHotKey(window_, -5, MOD_ALT | MOD_CONTROL, 34, u"Next"));
    ASSERT_EQ(driver_.HotKeys().size(), 1U);
    EXPECT_EQ(driver_.HotKeys().begin()->second, (KeyCombination{u"Next", 3, 34}));
    const Handle grab = Grab();
    windows_.Deliver(HotKeyPressed{grab});
    EXPECT_EQ(log_.Take(), (ShellLines{"w 786 -5 " + std::to_string(34 * 65536 + 3)}));
    windows_.Deliver(HotKeyPressed{grab + 1});
    EXPECT_EQ(log_.Take(), ShellLines{});
    EXPECT_TRUE(windows_.UnregisterHotKey(window_, -5));
    EXPECT_TRUE(driver_.HotKeys().empty());
    windows_.Deliver(HotKeyPressed{grab});  // was on its way
    EXPECT_EQ(log_.Take(), ShellLines{});
}

TEST_F(WindowShell, ACombinationIsTakenOnce) {
    const Handle other = Shown("x");
    EXPECT_TRUE(windows_.RegisterHotKey(window_, 1, MOD_ALT, 'A', u""));
    EXPECT_FALSE(windows_.RegisterHotKey(window_, 2, MOD_ALT, 'A', u""));
    EXPECT_FALSE(windows_.RegisterHotKey(other, 1, MOD_ALT, 'A', u""));
    EXPECT_TRUE(windows_.RegisterHotKey(other, 1, MOD_CONTROL, 'A', u""));
    EXPECT_TRUE(windows_.RegisterHotKey(other, 2, MOD_ALT, 'B', u""));
    EXPECT_EQ(driver_.HotKeys().size(), 3U);
    EXPECT_TRUE(windows_.UnregisterHotKey(window_, 1));
    EXPECT_TRUE(windows_.RegisterHotKey(other, 3, MOD_ALT, 'A', u""));
    driver_.TakeHotKey(MOD_WIN, 'C');
    EXPECT_FALSE(windows_.RegisterHotKey(window_, 4, MOD_WIN, 'C', u""));
    EXPECT_FALSE(windows_.UnregisterHotKey(window_, 4));
}

TEST_F(WindowShell, AHotKeyIsItsWindowsAlone) {
    const Handle other = Shown("x");
    EXPECT_TRUE(windows_.RegisterHotKey(window_, 1, MOD_ALT, 'A', u""));
    EXPECT_FALSE(windows_.UnregisterHotKey(other, 1));
    EXPECT_FALSE(windows_.UnregisterHotKey(window_, 2));
    EXPECT_EQ(driver_.HotKeys().size(), 1U);
}

TEST_F(WindowShell, HotKeysEndWithTheirWindow) {
    const Handle other = Shown("x");
    windows_.RegisterHotKey(window_, 1, MOD_ALT, 'A', u"");
    windows_.RegisterHotKey(other, 1, MOD_ALT, 'B', u"");
    windows_.RegisterHotKey(window_, 2, MOD_ALT, 'C', u"");
    Destroy(window_);
    ASSERT_EQ(driver_.HotKeys().size(), 1U);
    EXPECT_EQ(driver_.HotKeys().begin()->second.key, 'B');
    EXPECT_FALSE(windows_.UnregisterHotKey(window_, 1));
    EXPECT_FALSE(windows_.RegisterHotKey(window_, 3, MOD_ALT, 'D', u""));
    EXPECT_EQ(driver_.HotKeys().size(), 1U);
    EXPECT_TRUE(windows_.RegisterHotKey(other, 2, MOD_ALT, 'A', u""));
}

TEST_F(WindowShell, AHotKeyOfNoWindowReachesNobody) {
    EXPECT_TRUE(windows_.RegisterHotKey(0, 1, MOD_ALT, 'A', u""));
    windows_.Deliver(HotKeyPressed{Grab()});
    EXPECT_EQ(log_.Take(), ShellLines{});
    EXPECT_TRUE(windows_.UnregisterHotKey(0, 1));
    EXPECT_TRUE(driver_.HotKeys().empty());
}

TEST_F(WindowShell, ATrayIconSendsWhatTheMouseDoes) {
    EXPECT_TRUE(Add(window_));
    windows_.Deliver(TrayIconUsed{window_, TrayIconUsed::Action::kOpen});
    windows_.Deliver(TrayIconUsed{window_, TrayIconUsed::Action::kMenu});
    EXPECT_EQ(log_.Take(), (ShellLines{"w 1024 7 515", "w 1024 7 517"}));
    EXPECT_TRUE(windows_.Shell_NotifyIcon(NIM_DELETE, Record(window_, "")));
    windows_.Deliver(TrayIconUsed{window_, TrayIconUsed::Action::kOpen});
    EXPECT_EQ(log_.Take(), ShellLines{});
}

TEST_F(WindowShell, ATrayIconIsThereOnceOrNotAtAll) {
    EXPECT_FALSE(windows_.Shell_NotifyIcon(NIM_MODIFY, Record(window_, "new")));
    EXPECT_FALSE(windows_.Shell_NotifyIcon(NIM_DELETE, Record(window_, "")));
    EXPECT_TRUE(driver_.TrayTips().empty());
    EXPECT_TRUE(Add(window_, "first"));
    EXPECT_FALSE(Add(window_, "second"));
    EXPECT_FALSE(windows_.Shell_NotifyIcon(NIM_MODIFY, Record(window_, "other id", 8)));
    EXPECT_FALSE(windows_.Shell_NotifyIcon(NIM_DELETE, Record(window_, "", 8)));
    EXPECT_FALSE(windows_.Shell_NotifyIcon(3, Record(window_, "other message")));
    EXPECT_EQ(driver_.TrayTips().at(window_), u"first");
    EXPECT_TRUE(windows_.Shell_NotifyIcon(NIM_MODIFY, Record(window_, "third")));
    EXPECT_EQ(driver_.TrayTips().at(window_), u"third");
}

TEST_F(WindowShell, ATrayIconEndsWithItsWindow) {
    const Handle other = Shown("x");
    EXPECT_TRUE(Add(window_));
    EXPECT_TRUE(Add(other));
    Destroy(window_);
    EXPECT_EQ(driver_.TrayTips().size(), 1U);
    EXPECT_EQ(driver_.TrayTips().count(other), 1U);
    windows_.Deliver(TrayIconUsed{window_, TrayIconUsed::Action::kOpen});
    EXPECT_EQ(log_.Take(), ShellLines{});
    EXPECT_FALSE(Add(window_));
    EXPECT_EQ(driver_.TrayTips().size(), 1U);
}

TEST_F(WindowShell, ATipEndsAtItsNul) {
    EXPECT_EQ(Shows(std::string("One\0Two", 7)), u"One");
    EXPECT_EQ(Shows(std::string("One \0", 5) + std::string(95, ' ')), u"One ");
    EXPECT_EQ(Shows(""), u"");
}

TEST_F(WindowShell, AFullTipEndsWithTheRecord) {
    EXPECT_EQ(Shows(std::string(100, 'a')), std::u16string(100, u'a'));
    EXPECT_EQ(Shows(std::string(98, 'a') + "\xC3\xB6"), std::u16string(98, u'a') + u'\u00F6');
}

TEST_F(WindowShell, AFullTipEndsBeforeACharacterThatIsCut) {
    EXPECT_EQ(Shows(std::string(99, 'a') + "\xC3"), std::u16string(99, u'a'));
    EXPECT_EQ(Shows(std::string(98, 'a') + "\xE2\x82"), std::u16string(98, u'a'));
    EXPECT_EQ(Shows(std::string(97, 'a') + "\xF0\x9F\x98"), std::u16string(97, u'a'));
    EXPECT_EQ(Shows(std::string(96, 'a') + "\xF0\x9F\x98\x80"),
              std::u16string(96, u'a') + u"\U0001F600");
}

TEST_F(WindowShell, ARegistryKeyHasOneHandle) {
    const Handle key = windows_.RegCreateKey(u"Some Key");
    EXPECT_NE(key, 0);
    EXPECT_EQ(windows_.RegCreateKey(u"some key"), key);
    EXPECT_EQ(windows_.RegOpenKey(u"SOME KEY"), key);
    EXPECT_NE(windows_.RegCreateKey(u"another"), key);
    EXPECT_EQ(windows_.RegOpenKey(u"nowhere"), 0);
    EXPECT_NE(windows_.RegOpenKey(u"Directory"), 0);
    EXPECT_EQ(windows_.RegCreateKey(u"Directory"), windows_.RegOpenKey(u"Directory"));
}

TEST_F(WindowShell, RegistryValuesAreWrittenOneByOne) {
    const Handle key = windows_.RegCreateKey(u"k");
    EXPECT_TRUE(windows_.RegSetValue(key, u"", u"own"));
    EXPECT_TRUE(windows_.RegSetValue(key, u"a\\b", u"sub"));
    EXPECT_TRUE(windows_.RegSetValue(key, u"", u""));
    EXPECT_FALSE(windows_.RegSetValue(0, u"", u"nowhere"));
    EXPECT_FALSE(windows_.RegSetValue(key + 1000, u"", u"nowhere"));
    EXPECT_EQ(driver_.Registry(),
              (std::vector<RegistryValue>{{u"k", u"own"}, {u"k\\a\\b", u"sub"}, {u"k", u""}}));
    EXPECT_FALSE(driver_.Published());
}

TEST_F(WindowShell, WhatIsPublishedIsTheLastOfEachValueInOrder) {
    const Handle key = windows_.RegCreateKey(u"Key");
    windows_.RegSetValue(key, u"z", u"1");
    windows_.RegSetValue(key, u"B", u"2");
    windows_.RegSetValue(key, u"a", u"3");
    windows_.RegSetValue(key, u"b", u"4");
    windows_.SHChangeNotify(1);
    EXPECT_FALSE(driver_.Published());
    windows_.SHChangeNotify(SHCNE_ASSOCCHANGED);
    EXPECT_EQ(driver_.Published(), (std::vector<RegistryValue>{
                                       {u"Key\\a", u"3"}, {u"Key\\b", u"4"}, {u"Key\\z", u"1"}}));
}

TEST_F(WindowShell, WhatTheDesktopRestoresIsSeen) {
    windows_.Deliver(MinimisedByDesktop{window_});
    windows_.ShowWindow(window_, SW_HIDE);
    log_.Take();
    windows_.Deliver(RestoredByDesktop{window_});
    EXPECT_TRUE(windows_.IsVisible(window_));
    EXPECT_FALSE(windows_.IsIconic(window_));
    const ShellLines lines = log_.Take();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "w 24 1 0");
    EXPECT_EQ(lines[1].substr(0, 6), "w 5 0 ");
}

}  // namespace
}  // namespace platform
