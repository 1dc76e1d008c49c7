#include "shell/tray.h"

#include <algorithm>
#include <string>

#include "platform/base/text.h"
#include "platform/windows/notify_icon.h"

namespace sarnel {

using platform::Long;
using platform::NotifyIconData;

NotifyIconData TrayRecord(Handle window, Handle icon, std::u16string_view tip) {
    NotifyIconData record;
    record.hWnd = window;
    record.uID = icon;
    record.uCallbackMessage = platform::WM_TRAY;
    record.hIcon = icon;
    record.szTip.fill(' ');
    const std::string bytes = platform::Narrow(tip) + '\0';
    std::copy_n(bytes.begin(), std::min(bytes.size(), record.szTip.size()), record.szTip.begin());
    return record;
}

void TrayAdd(platform::WindowSystem& windows, Handle window, Handle icon, std::u16string_view tip) {
    windows.Shell_NotifyIcon(platform::NIM_ADD, TrayRecord(window, icon, tip));
}

void TrayModify(platform::WindowSystem& windows, Handle window, Handle icon,
                std::u16string_view tip) {
    windows.Shell_NotifyIcon(platform::NIM_MODIFY, TrayRecord(window, icon, tip));
}

void TrayDelete(platform::WindowSystem& windows, Handle window, Handle icon) {
    windows.Shell_NotifyIcon(platform::NIM_DELETE, TrayRecord(window, icon, u""));
}

}  // namespace sarnel
