// The list for other players, and that we read it as it was.
#include "host/list_export.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "host/instance/instance.h"
#include "platform/base/text.h"
#include "platform/files/media_list.h"
#include "platform/files/media_name.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using Names = std::vector<std::string>;
constexpr std::chrono::seconds kLong(30);

class ListExport : public testing::Test {
  protected:
    std::string Read(const std::string& name) const {
        std::ifstream file(scratch_.Path(name), std::ios::binary);
        return (std::ostringstream() << file.rdbuf()).str();
    }
    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream(scratch_.Path(name), std::ios::binary) << bytes;
    }

    ScratchFolder scratch_;
};

TEST_F(ListExport, TitlesStandInFrontOfPaths) {
    M3u8Text list;
    list.AddRow("A - B", "/m/a.mp3");
    list.AddRow("two\nlines \xE9", "/m/\xC3\xA9 %41.mp3");
    EXPECT_EQ(list.Text(),
              "#EXTM3U\n#EXTINF:-1,A - B\n/m/a.mp3\n"
              "#EXTINF:-1,two lines \xEF\xBF\xBD\n/m/\xC3\xA9 %41.mp3\n");
}

TEST_F(ListExport, EveryPathIsReadAsItWas) {
    const Names names{
        "plain.mp3",  "#remark.mp3", "two\nlines\r.mp3", "caf\xE9.mp3",
        "blank.mp3 ", "100%25.mp3",  "back\\slash.mp3",  "caf\xC3\xA9 \xF0\x9F\x8E\xB5.mp3",
        "\x01.mp3"};
    M3u8Text list;
    Names paths;
    for (const std::string& name : names) {
        Write(name, "");
        paths.push_back(scratch_.Path(name));
        list.AddRow("", paths.back());
    }
    Names read;
    for (const std::string& name : platform::NamesInM3u(list.Text())) {
        read.push_back(
            platform::PathOfMediaName(name, platform::MediaNames::kPaths, "/").value_or("-"));
    }
    EXPECT_EQ(read, paths);
}

TEST_F(ListExport, TheSavedListIsWritten) {
    Write("list", "OMK v1.1\r\n 2 \r\n-1 \r\nFirst\r\n/a.mp3\r\n\xE9\r\n/b\xE9.mp3\r\n");
    EXPECT_EQ(ExportSaved(scratch_.Path("list"), scratch_.Path("out.m3u8")), std::nullopt);
    EXPECT_EQ(Read("out.m3u8"),
              "#EXTM3U\n#EXTINF:-1,First\n/a.mp3\n#EXTINF:-1,\xEF\xBF\xBD\nfile:///b%E9.mp3\n");
}

TEST_F(ListExport, ACutListGivesTheRowsThatItHas) {
    Write("list", "OMK v1.1\r\n 3 \r\n 0 \r\nFirst\r\n/a.mp3\r\nSecond\r\n");
    EXPECT_EQ(ExportSaved(scratch_.Path("list"), scratch_.Path("out.m3u8")), std::nullopt);
    EXPECT_EQ(Read("out.m3u8"), "#EXTM3U\n#EXTINF:-1,First\n/a.mp3\n");
}

TEST_F(ListExport, WithoutAListNothingIsWritten) {
    for (const char* bytes : {"", "OMK v1.0\r\n 0 \r\n 0 \r\n", "OMK v1.1\r\nx\r\n"}) {
        Write("list", bytes);
        Write("out.m3u8", "former");
        EXPECT_EQ(ExportSaved(scratch_.Path("list"), scratch_.Path("out.m3u8")),
                  "there is no saved list");
        EXPECT_EQ(Read("out.m3u8"), "former");
    }
    EXPECT_TRUE(ExportSaved(scratch_.Path("none"), scratch_.Path("out.m3u8")));
}

TEST_F(ListExport, WhereItCannotBeWrittenIsSaid) {
    Write("list", "OMK v1.1\r\n 0 \r\n-1 \r\n");
    const std::string list = scratch_.Path("list");
    const std::string nowhere = scratch_.Path("none/out.m3u8");
    EXPECT_EQ(ExportSaved(list, nowhere),
              "cannot write '" + nowhere + "': there is no such folder");
    std::filesystem::create_directory(scratch_.Path("f.m3u8"));
    const std::string folder = scratch_.Path("f.m3u8");
    EXPECT_EQ(ExportSaved(list, folder), "cannot write '" + folder + "': it is a folder");
}

TEST_F(ListExport, WhoAskedForTheListInMemoryHearsHowItWent) {
    sarnel::ListCopy list(2, 0);
    list.AddRow(sarnel::RowText(u"T\u00E9"), sarnel::RowText(u"/a.mp3"));
    list.AddRow(sarnel::RowText(u"\u4E16"), sarnel::RowText(platform::Widen("/b\xE9.mp3")));
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const Descriptor asking(ends[0]);
    ExportInBackground(std::move(list), scratch_.Path("out.m3u8"),
                       Reply(std::make_shared<const Descriptor>(ends[1])));
    EXPECT_EQ(ReadAnswer(asking, kLong), "exported");
    EXPECT_EQ(Read("out.m3u8"),
              "#EXTM3U\n#EXTINF:-1,T\xC3\xA9\n/a.mp3\n#EXTINF:-1,\xE4\xB8\x96\nfile:///b%E9.mp3\n");
}

TEST_F(ListExport, WhoAskedHearsThatItFailed) {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const Descriptor asking(ends[0]);
    const std::string target = scratch_.Path("none/out.m3u8");
    ExportInBackground(sarnel::ListCopy(0, -1), target,
                       Reply(std::make_shared<const Descriptor>(ends[1])));
    EXPECT_EQ(ReadAnswer(asking, kLong), "cannot write '" + target + "': there is no such folder");
}

}  // namespace
}  // namespace veldrin
