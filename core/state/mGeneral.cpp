#include "core/state/mGeneral.h"

#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/files/profile.h"

namespace sarnel {

namespace {

constexpr std::string_view kSection = "Memory";
constexpr std::u16string_view kSettingsFile = u"Sarnel.Ambrisor.ini";
constexpr std::size_t kBufferSize = 255;

}  // namespace

std::u16string ComponentFile(std::u16string_view name) {
    return platform::JoinPath(platform::Widen(App().directory), name);
}

std::u16string ReadSetting(std::u16string_view key, std::u16string_view defaultValue) {
    const std::string value = platform::GetPrivateProfileString(
        kSection, platform::Narrow(key), platform::Narrow(defaultValue), kBufferSize,
        ComponentFile(kSettingsFile), &App().SettingsMemory);
    std::u16string text = StripNull(platform::Widen(value));
    text.erase(text.find_last_not_of(u' ') + 1);
    return text;
}

void WriteSetting(std::u16string_view key, std::u16string_view value) {
    static_cast<void>(platform::WritePrivateProfileString(
        kSection, platform::Narrow(key), platform::Narrow(value), ComponentFile(kSettingsFile),
        App().windows.GetDriver().GetDisk(), &App().SettingsMemory));
}

bool DirExists(std::u16string_view path) {
    return !path.empty() && platform::DirectoryMatches(path);
}

bool FileExists(std::u16string_view path) {
    return platform::FileLength(path).value_or(-1) >= 0;
}

std::u16string FullPathName(std::u16string_view path) {
    return platform::FullPath(path);
}

std::u16string StripNull(std::u16string_view text) {
    return std::u16string(text.substr(0, text.find(u'\0')));
}

}  // namespace sarnel
