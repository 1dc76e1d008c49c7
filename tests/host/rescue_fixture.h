// A component directory and a state folder of a test's own, and files in them.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "host/rescue/rescue.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {

/// A list's file with so many rows, whose titles begin with `stem`.
inline std::string ListOf(int rows, const std::string& stem = "t") {
    std::string text =
        "OMK v1.1\r\n " + std::to_string(rows) + " \r\n " + std::to_string(rows - 1) + " \r\n";
    for (int i = 0; i < rows; ++i) {
        text += stem + std::to_string(i) + "\r\n/music/" + stem + std::to_string(i) + "\r\n";
    }
    return text;
}

inline std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return file ? bytes.str() : "no file";
}

inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::filesystem::remove_all(path);  // a second name of the same file stays as it is
    std::ofstream(path, std::ios::binary) << bytes;
}

class RescueFixture : public ::testing::Test {
  protected:
    RescueFixture() { std::filesystem::create_directory(folder_.Path("state")); }

    std::string Path(const std::string& name) const { return folder_.Path(name); }

    /// Gives a file a time of last change, in seconds.
    static void Age(const std::string& path, time_t seconds) {
        const struct timespec times[] = {{seconds, 0}, {seconds, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
    }

    ScratchFolder folder_;
    Rescue::Places places_ = Rescue::PlacesFor(folder_.Path(), folder_.Path("state"));
};

}  // namespace veldrin
