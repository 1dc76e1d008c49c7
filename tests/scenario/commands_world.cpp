// What surrounds the component and may change or fail: the desktop's work area, the looks that the
// component carries, the disk.
#include <algorithm>
#include <array>
#include <charconv>

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
    return ParseWith({&table}, line);
}

Command Writes(CommandLine& line) {
    if (!line.SkipWord("fail")) {
        throw Mistake("not fail: " + line.Next().raw);
    }
    return [full = line.Boolean()](World& world) {
        world.Screen().SetDisk(full ? platform::Disk::kFull : platform::Disk::kWritable);
    };
}

}  // namespace

const CommandTable& WorldCommands() {
    static const CommandTable table{{"workarea", WorkArea}, {"skin", Skin}, {"writes", Writes}};
    return table;
}

}  // namespace scenario
