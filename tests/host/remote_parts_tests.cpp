// The status as text, pictures as files, and texts for notifications.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "host/remote/art_folder.h"
#include "host/remote/notifier.h"
#include "host/remote/status.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

Status Playing() {
    Status status;
    status.state = sarnel::PlaybackState::kPlaying;
    status.position = 12;
    status.length = 200;
    status.volume = 80;
    status.random = true;
    status.row = 3;
    status.rows = 10;
    status.title = "A - B";
    status.path = "/music/b.mp3";
    return status;
}

TEST(StatusText, IsALineOfFields) {
    EXPECT_EQ(StatusLine(Playing()),
              "playing\t12\t200\t80\tnone\ton\t3\t10\tA - B\t/music/b.mp3\n");
    Status other;
    other.state = sarnel::PlaybackState::kPaused;
    other.repeatsList = true;
    EXPECT_EQ(StatusLine(other), "paused\t0\t0\t0\tlist\toff\t0\t0\t\t\n");
    other.repeatsItem = true;
    other.state = sarnel::PlaybackState::kStopped;
    EXPECT_EQ(StatusLine(other), "stopped\t0\t0\t0\titem\toff\t0\t0\t\t\n");
}

TEST(StatusText, KeepsToItsFields) {
    Status status = Playing();
    status.title = "a\tb\nc\x1B[2J";
    status.path = "/\xE9\t";
    EXPECT_EQ(StatusLine(status),
              "playing\t12\t200\t80\tnone\ton\t3\t10\ta b c [2J\t/\xEF\xBF\xBD \n");
}

TEST(StatusText, IsAnObjectOfJson) {
    const auto object = nlohmann::json::parse(StatusJson(Playing()));
    const nlohmann::json expected = {{"state", "playing"},
                                     {"position", 12},
                                     {"length", 200},
                                     {"volume", 80},
                                     {"repeat", "none"},
                                     {"random", true},
                                     {"row", 3},
                                     {"rows", 10},
                                     {"title", "A - B"},
                                     {"path", "/music/b.mp3"},
                                     {"url", "file:///music/b.mp3"}};
    EXPECT_EQ(object, expected);
}

TEST(StatusText, IsJsonWhateverTheNamesAre) {
    Status status = Playing();
    for (int byte = 1; byte < 256; ++byte) {
        status.title.push_back(static_cast<char>(byte));
    }
    status.path = "/\"\\\xE9\n";
    const std::string text = StatusJson(status);
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    const auto object = nlohmann::json::parse(text);
    EXPECT_EQ(object["path"], "/\"\\\xEF\xBF\xBD\n");
    EXPECT_EQ(object["url"], "file:///%22%5C%E9%0A");
}

std::string Contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

const std::string kJpeg = "\xFF\xD8\xFF\xE0 a picture";

TEST(ArtFolder, KeepsAPictureByWhatIsInIt) {
    const ScratchFolder scratch;
    const std::string folder = scratch.Path() + "/new/art";
    const auto path = KeepPicture(folder, kJpeg);
    ASSERT_TRUE(path.has_value());
    EXPECT_EQ(path->substr(path->size() - 4), ".jpg");
    EXPECT_EQ(Contents(*path), kJpeg);
    EXPECT_EQ(KeepPicture(folder, kJpeg), path);
    EXPECT_NE(KeepPicture(folder, kJpeg + "!"), path);
    EXPECT_EQ(KeepPicture(folder, "\x89PNG\r\n\x1A\n").value_or("").substr(path->size() - 4),
              ".png");
}

TEST(ArtFolder, TakesNothingButPictures) {
    const ScratchFolder scratch;
    for (const std::string text : {"", "<svg/>", "\xFF\xD8", "GIF", "#!/bin/sh"}) {
        EXPECT_FALSE(KeepPicture(scratch.Path() + "/art", text).has_value()) << text;
    }
    EXPECT_FALSE(std::filesystem::exists(scratch.Path() + "/art"));
    EXPECT_FALSE(KeepPicture("/dev/null/art", kJpeg).has_value());
}

TEST(ArtFolder, TheOldestGoAndNothingElse) {
    const ScratchFolder scratch;
    const std::string folder = scratch.Path() + "/art";
    std::filesystem::create_directory(folder);
    const std::string others = folder + "/holiday.jpg";
    std::ofstream(others) << "mine";
    std::string oldest;
    for (std::size_t i = 0; i <= kMostPictures; ++i) {
        const auto path = KeepPicture(folder, kJpeg + std::to_string(i));
        ASSERT_TRUE(path.has_value());
        const auto age = std::chrono::hours(100 - static_cast<int>(i));
        std::filesystem::last_write_time(*path,
                                         std::filesystem::file_time_type::clock::now() - age);
        oldest = i == 0 ? *path : oldest;
    }
    EXPECT_FALSE(std::filesystem::exists(oldest));
    std::filesystem::directory_iterator files(folder);
    EXPECT_EQ(std::distance(begin(files), end(files)), std::ptrdiff_t{kMostPictures} + 1);
    EXPECT_TRUE(std::filesystem::exists(others));
}

TEST(Notifier, TextIsNoMarkup) {
    EXPECT_EQ(EscapeMarkup("a <b>&amp; \"c\" 'd'"), "a &lt;b&gt;&amp;amp; \"c\" 'd'");
}

}  // namespace
}  // namespace veldrin
