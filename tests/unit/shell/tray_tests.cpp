// The record that the tray gets.
#include "shell/tray.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/headless/headless_driver.h"
#include "platform/windows/notify_icon.h"

namespace sarnel {
namespace {

using platform::HeadlessDriver;
using platform::NotifyIconData;

std::string TipBytes(std::u16string_view tip) {
    const NotifyIconData record = TrayRecord(1, 2, tip);
    return {record.szTip.begin(), record.szTip.end()};
}

TEST(TrayRecord, SaysWhoseIconItIs) {
    const NotifyIconData record = TrayRecord(11, 22, u"");
    EXPECT_EQ(sizeof(record), 124U);
    EXPECT_EQ(record.cbSize, 124);
    EXPECT_EQ(record.hWnd, 11);
    EXPECT_EQ(record.uID, 22);
    EXPECT_EQ(record.uFlags, 7);
    EXPECT_EQ(record.uCallbackMessage, 1024);
    EXPECT_EQ(record.hIcon, 22);
}

TEST(TrayRecord, ATipIsFollowedByANulAndBlanks) {
    EXPECT_EQ(TipBytes(u"One"), std::string("One\0", 4) + std::string(96, ' '));
    EXPECT_EQ(TipBytes(u""), std::string(1, '\0') + std::string(99, ' '));
    EXPECT_EQ(TipBytes(std::u16string(98, u'a')), std::string(98, 'a') + std::string("\0 ", 2));
    EXPECT_EQ(TipBytes(std::u16string(99, u'a')), std::string(99, 'a') + '\0');
}

TEST(TrayRecord, ALongTipIsCut) {
    EXPECT_EQ(TipBytes(std::u16string(100, u'a')), std::string(100, 'a'));
    EXPECT_EQ(TipBytes(std::u16string(100, u'a') + u'b'), std::string(100, 'a'));
    EXPECT_EQ(TipBytes(std::u16string(99, u'a') + u'\u00F6'), std::string(99, 'a') + '\xC3');
    // A byte that is no character goes as the byte it is.
    EXPECT_EQ(TipBytes(u"\xDCFF").substr(0, 2), std::string("\xFF\0", 2));
}

TEST(Tray, AddsChangesAndTakesAway) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    platform::WindowSystem windows(driver);
    const Handle window = windows.CreateWindow(0, {0, 0, 10, 10}, {});
    TrayAdd(windows, window, 5, u"a");
    EXPECT_EQ(driver.TrayTips().at(window), u"a");
    TrayModify(windows, window, 5, std::u16string(120, u'b'));
    EXPECT_EQ(driver.TrayTips().at(window), std::u16string(100, u'b'));
    TrayDelete(windows, window, 6);
    EXPECT_EQ(driver.TrayTips().size(), 1U);
    TrayDelete(windows, window, 5);
    EXPECT_TRUE(driver.TrayTips().empty());
}

}  // namespace
}  // namespace sarnel
