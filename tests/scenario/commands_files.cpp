// Files and settings. What a scenario writes and deletes lies in its scratch folder.
#include <filesystem>
#include <fstream>

#include "platform/base/text.h"
#include "platform/files/files.h"
#include "platform/files/profile.h"
#include "tests/scenario/commands.h"

namespace scenario {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kSection = "Memory";

void Check(bool done, const char* what, const fs::path& path) {
    if (!done) {
        throw Mistake(std::string(what) + ": " + path.string());
    }
}

void MakeFolder(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    Check(fs::is_directory(path, error), "cannot be made", path);
}

Command Write(CommandLine& line) {
    const fs::path path = line.PathInside();
    return [path, bytes = platform::Narrow(line.Text())](World& /*world*/) {
        MakeFolder(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        file << bytes;
        file.close();
        Check(!file.fail(), "cannot be written", path);
    };
}

Command Mkdir(CommandLine& line) {
    return [path = line.PathInside()](World& /*world*/) { MakeFolder(path); };
}

Command Delete(CommandLine& line) {
    return [path = line.PathInside()](World& /*world*/) {
        std::error_code error;
        fs::remove_all(path, error);
        Check(!error, "cannot be deleted", path);
    };
}

Command Exists(CommandLine& line) {
    return [path = line.Path()](World& world) {
        std::error_code error;
        world.Print(Printed(Value(fs::exists(path, error))));
    };
}

Command Bytes(CommandLine& line) {
    return [path = line.Text()](World& world) {
        const auto content = platform::ReadWholeFile(path, SIZE_MAX);
        world.Print(content ? world.Printed(Value(platform::Widen(*content))) : "none");
    };
}

Command Ini(CommandLine& line) {
    const std::string key = platform::Narrow(line.Text());
    const std::u16string file = line.GetScope().directory + u"/Sarnel.Ambrisor.ini";
    if (!line.AtEnd()) {
        return [key, file, value = platform::Narrow(line.Text())](World& /*world*/) {
            const bool done = platform::WritePrivateProfileString(kSection, key, value, file);
            Check(done, "cannot be written", platform::Narrow(file));
        };
    }
    return [key, file](World& world) {
        constexpr std::size_t kAll = 1 << 20;
        constexpr std::string_view kMissing = "\x01";  // no value begins so
        const std::string value =
            platform::GetPrivateProfileString(kSection, key, kMissing, kAll, file);
        world.Print(value == kMissing ? "none" : world.Printed(Value(platform::Widen(value))));
    };
}

}  // namespace

const CommandTable& FileCommands() {
    static const CommandTable table{
        {"write", Write},
        {"mkdir", Mkdir},
        {"delete", Delete},
        {"exists", Exists, true, Prints::kValue},
        {"bytes", Bytes, true, Prints::kValue},
        {"ini", Ini, true, Prints::kValue},
    };
    return table;
}

}  // namespace scenario
