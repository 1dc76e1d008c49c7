// A damaged settings file: every key can be read, and what is written can be read back while the
// rest of the file stays.
#include "fuzz/fuzz.h"
#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/files/profile.h"

std::string_view fuzz::Seed() {
    return "; comment\r\n[Other]\r\nX=1\r\n\r\n[Memory]\r\nSkin=1\r\nMusicVolume = 80\r\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string file =
        platform::Widen(fuzz::WriteScratch("damaged.ini", fuzz::Bytes(data, size)));
    const auto read = [&](std::string_view key) {
        return platform::GetPrivateProfileString("Memory", key, "default", 255, file);
    };
    const std::string before = read("MusicVolume");
    fuzz::Check(before.size() <= 254, "a value is cut");
    fuzz::Check(platform::WritePrivateProfileString("Memory", "Skin", "7", file),
                "a key is written");
    fuzz::Check(read("Skin") == "7", "and read back");
    fuzz::Check(read("skIN") == "7", "ignoring case");
    fuzz::Check(read("MusicVolume") == before, "another key stays");
    return 0;
}
