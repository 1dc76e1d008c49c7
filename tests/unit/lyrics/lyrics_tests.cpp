// The download file, where what scenarios write cannot bring it about.
#include "lyrics/lyrics.h"

#include <gtest/gtest.h>

#include <filesystem>

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

}  // namespace
}  // namespace sarnel
