// What scenarios cannot bring about: a disk that runs full, the largest pages.
#include "lyrics/lyrics.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "menus/commandmenu.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

namespace fs = std::filesystem;
using support::World;
using support::WorldBuilder;

// A device that takes the file but not its bytes, as a disk does that runs full.
TEST(LyricsFile, ThatCannotBeWrittenWholeIsNoPageAndDoesNotStay) {
    const auto world = WorldBuilder().Rows({u"Artist - Title"}).Current(0).Started();
    world->driver.SetPage(u"/winamp03/plugin/?artist=Artist&title=Title",
                          "<div id=\"lyrics\">\nwords\n</div>");
    const fs::path file = fs::path(world->folder.Path()) / "Sarnel.Ambrisor.lyrics";
    fs::create_symlink("/dev/full", file);
    ShowLyrics(false);
    EXPECT_EQ(world->Main().txtLyrics->Text(), u"Artist - Title\r\n\r\n");
    EXPECT_FALSE(fs::exists(fs::symlink_status(file)));
    ShowLyrics(false);
    EXPECT_EQ(world->Main().txtLyrics->Text(), u"Artist - Title\r\n\r\nwords");
    EXPECT_FALSE(fs::exists(fs::symlink_status(file)));
}

// Broken into lines and measured several times on the way. What takes time with the square of the
// length would never end.
TEST(LyricsBox, TakesPagesOfMegabytes) {
    constexpr std::size_t kLargest = 2 << 20;
    const auto world = WorldBuilder().Rows({u"Artist - Title"}).Current(0).Started();
    world->Do([] { RunMenuCommand(u"kPkLy"); });
    for (const std::string_view piece : {"\n", "x", "x ", "\xC3\xA9\n"}) {
        std::string page(17, ' ');
        while (page.size() + piece.size() <= kLargest) {
            page += piece;
        }
        world->driver.SetPage(u"/winamp03/plugin/?artist=Artist&title=Title", page);
        world->Do([] { ShowLyrics(true); });
        const platform::TextBox& box = *world->Main().txtLyrics;
        EXPECT_GE(box.Text().size(), kLargest / 2);
        EXPECT_GE(box.LineCount(), 2);
        EXPECT_EQ(box.FirstVisibleLine(), 0);
    }
}

}  // namespace
}  // namespace sarnel
