// What surrounds the component and may change or fail: the desktop's work area, the looks that the
// component carries, the disk and its drives, the network.
#include <algorithm>
#include <array>
#include <charconv>

#include "platform/base/text.h"
#include "platform/files/files.h"
#include "tests/scenario/commands.h"

namespace scenario {

namespace {

// "left,top,right,bottom", as a rectangle is printed.
platform::Rect ParseRect(const Word& word) {
    std::array<Long, 4> sides{};
    std::string_view rest = word.raw;
    for (Long& side : sides) {
        const std::string_view number = rest.substr(0, rest.find(','));
        const char* const end = number.data() + number.size();
        const auto [stop, error] = std::from_chars(number.data(), end, side);
        const bool isLast = &side == &sides.back();
        if (word.quoted || error != std::errc() || stop != end ||
            isLast == (number.size() < rest.size())) {
            throw Mistake("no rectangle: " + word.raw);
        }
        rest.remove_prefix(std::min(number.size() + 1, rest.size()));
    }
    return {sides[0], sides[1], sides[2], sides[3]};
}

Command WorkArea(CommandLine& line) {
    return [area = ParseRect(line.Next())](World& world) {
        world.Screen().SetWorkArea(area);
        world.Windows().Deliver(platform::WorkAreaChanged{});
    };
}

Command SkinRow(CommandLine& line) {
    const Long number = line.Integer();
    const std::u16string text = line.SkipWord("none") ? std::u16string() : line.Text();
    return [number, text](World& world) { world.Looks().rows[number] = text; };
}

Command SkinBitmap(CommandLine& line) {
    const Long id = line.Integer();
    std::optional<std::u16string> path;
    if (!line.SkipWord("none")) {
        path = line.Text();
    }
    return [id, path](World& world) { world.Looks().bitmaps[id] = path; };
}

Command Skin(CommandLine& line) {
    static const CommandTable table{{"row", SkinRow}, {"bitmap", SkinBitmap}};
    return ParseWith({&table}, line).run;
}

Command Writes(CommandLine& line) {
    if (!line.SkipWord("fail")) {
        throw Mistake("not fail: " + line.Next().raw);
    }
    return [full = line.Boolean()](World& world) {
        world.Screen().SetDisk(full ? platform::Disk::kFull : platform::Disk::kWritable);
    };
}

Command Drive(CommandLine& line) {
    const std::u16string root = line.Text();
    if (!root.ends_with(platform::kPathSeparator)) {
        throw Mistake("no root of a drive, which ends in a separator: " + platform::Narrow(root));
    }
    return [drive = platform::Drive{root, line.Text()}](World& world) {
        world.Screen().AddDrive(drive);
    };
}

Command Online(CommandLine& line) {
    return [online = line.Boolean()](World& world) { world.Screen().SetOnline(online); };
}

Command Page(CommandLine& line) {
    const std::u16string address = line.Text();
    return [address, body = platform::Narrow(line.Text())](World& world) {
        world.Screen().SetPage(address, body);
    };
}

Command Pages(CommandLine& /*line*/) {
    return [](World& world) {
        for (const auto& [address, isFresh] : world.Screen().TakeDownloads()) {
            world.Print((isFresh ? "fresh " : "") + world.Bare(address));
        }
    };
}

}  // namespace

const CommandTable& WorldCommands() {
    static const CommandTable table{
        {"workarea", WorkArea},
        {"skin", Skin},
        {"writes", Writes},
        {"drive", Drive},
        {"online", Online},
        {"page", Page},
        {"pages", Pages, true, Prints::kLines},
    };
    return table;
}

}  // namespace scenario
