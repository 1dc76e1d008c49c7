#include "shell/associations.h"

#include <string>

namespace sarnel {

using platform::Handle;
using platform::WindowSystem;

namespace {

constexpr std::u16string_view kPlayVerb = u"&Play with Veldrin";
constexpr std::u16string_view kEnqueueVerb = u"&Enqueue in Veldrin";

std::u16string OpenCommand(std::u16string_view exe) {
    return u'"' + std::u16string(exe) + u"\" \"%1\"";
}

std::u16string EnqueueCommand(std::u16string_view exe) {
    return u'"' + std::u16string(exe) + u"\" /ADD \"%1\"";
}

}  // namespace

void RegisterExtension(WindowSystem& windows, std::u16string_view extension,
                       std::u16string_view exe, std::u16string_view className,
                       std::u16string_view icon) {
    if (extension.find(u'.') != std::u16string_view::npos) {
        return;
    }
    const auto write = [&windows](std::u16string_view key, std::u16string_view subKey,
                                  std::u16string_view text) {
        windows.RegSetValue(windows.RegCreateKey(key), subKey, text);
    };
    write(className, u"", className);
    write(u'.' + std::u16string(extension), u"", className);
    write(className, u"shell\\open", kPlayVerb);
    write(className, u"shell\\open\\command", OpenCommand(exe));
    write(className, u"shell\\enqueue", kEnqueueVerb);
    write(className, u"shell\\enqueue\\command", EnqueueCommand(exe));
    write(className, u"DefaultIcon", icon);
}

void RegisterDirectoryVerbs(WindowSystem& windows, std::u16string_view exe) {
    const Handle folders = windows.RegOpenKey(u"Directory");
    windows.RegSetValue(folders, u"shell\\Veldrin.Open", kPlayVerb);
    windows.RegSetValue(folders, u"shell\\Veldrin.Enqueue", kEnqueueVerb);
    windows.RegSetValue(folders, u"shell\\Veldrin.Open\\command", OpenCommand(exe));
    windows.RegSetValue(folders, u"shell\\Veldrin.Enqueue\\command", EnqueueCommand(exe));
}

void NotifyAssociationChange(WindowSystem& windows) {
    windows.SHChangeNotify(platform::SHCNE_ASSOCCHANGED);
}

}  // namespace sarnel
