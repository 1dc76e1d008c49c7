// What is on the virtual screen: points of faces, pictures of it, and the clipboard.
#include <array>
#include <fstream>

#include "core/state/frmmain.h"
#include "platform/base/text.h"
#include "platform/menus/menu.h"
#include "tests/scenario/commands.h"

namespace scenario {

using namespace platform;

namespace {

void Append(std::string& bytes, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(number >> (8 * i)));
    }
}

// A bitmap file of 24 bits a stored pixel.
std::string BitmapFile(const Surface& picture) {
    constexpr std::uint32_t kHeaders = 14 + 40;
    const platform::Size size = picture.StoredSize();
    const auto width = static_cast<std::uint32_t>(size.width);
    const auto height = static_cast<std::uint32_t>(size.height);
    const std::uint32_t rowBytes = (width * 3 + 3) / 4 * 4;
    std::string bytes = "BM";
    for (const std::uint32_t number : {kHeaders + rowBytes * height, 0U, kHeaders, 40U, width,
                                       height, 1U | (24U << 16), 0U, 0U, 0U, 0U, 0U, 0U}) {
        Append(bytes, number, 4);
    }
    for (Long y = size.height - 1; y >= 0; --y) {
        for (Long x = 0; x < size.width; ++x) {
            Append(bytes, picture.Row(y)[x], 3);
        }
        bytes.append(rowBytes - width * 3, '\0');
    }
    return bytes;
}

Command PixelOf(CommandLine& line) {
    const ObjectReference window = line.Window();
    const Long x = line.Integer();
    const Long y = line.Integer();
    return [=](World& world) {
        const auto* widget = std::get<Widget*>(window.Find(world));
        world.Print(std::to_string(widget->Face().GetPixel({x, y})));
    };
}

Command Style(CommandLine& line) {
    return [window = line.Window()](World& world) {
        const Handle handle = std::get<Widget*>(window.Find(world))->HWnd();
        const WindowSystem& windows = world.Windows();
        world.Print(std::to_string(windows.GetWindowLong(handle, GWL_STYLE)) + ' ' +
                    std::to_string(windows.GetWindowLong(handle, GWL_EXSTYLE)));
    };
}

Command TopMost(CommandLine& line) {
    const ObjectReference window = line.Window();
    if (window.type != &MainWindowClass() && window.type != &TipWindowClass()) {
        throw Mistake("no top-level window");
    }
    return [window](World& world) {
        const Handle handle = std::get<Widget*>(window.Find(world))->HWnd();
        world.Print(Printed(Value(world.Windows().IsTopMost(handle))));
    };
}

Command SystemMenu(CommandLine& /*line*/) {
    return [](World& world) {
        Menus& menus = world.Windows().PopupMenus();
        const auto* items = menus.Items(menus.GetSystemMenu(world.MainWindow()));
        if (items == nullptr) {
            throw Mistake("not there now: frmMAIN");
        }
        for (const Menus::Item& item : *items) {
            world.Print(std::to_string(item.id));
        }
    };
}

Command Screenshot(CommandLine& line) {
    return [path = line.NewFile()](World& world) {
        std::ofstream file(path, std::ios::binary);
        file << BitmapFile(world.Windows().ComposeScreen());
        file.close();
        if (file.fail()) {
            throw Mistake("cannot be written: " + path.string());
        }
    };
}

Command Opened(CommandLine& /*line*/) {
    return [](World& world) {
        for (const std::u16string& document : world.Screen().TakeOpened()) {
            world.Print(world.Bare(document));
        }
    };
}

Command Clipboard(CommandLine& /*line*/) {
    return [](World& world) { world.Print(world.Printed(Value(world.Screen().ClipboardText()))); };
}

}  // namespace

const CommandTable& ScreenCommands() {
    static const CommandTable table{
        {"pixel", PixelOf, true, Prints::kValue},
        {"style", Style, true, Prints::kLines},
        {"topmost", TopMost, true, Prints::kValue},
        {"systemmenu", SystemMenu, true, Prints::kLines},
        {"screenshot", Screenshot},
        {"clipboard", Clipboard, true, Prints::kValue},
        {"opened", Opened, true, Prints::kLines},
    };
    return table;
}

}  // namespace scenario
