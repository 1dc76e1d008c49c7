#include "platform/files/file_address.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(FileAddress, EscapesAllButWhatIsPlain) {
    EXPECT_EQ(AddressOfPath("/"), "file:///");
    EXPECT_EQ(AddressOfPath("/a-b_c.~/D 1%.wav"), "file:///a-b_c.~/D%201%25.wav");
    EXPECT_EQ(AddressOfPath("/\xE9\n\"?#&+"), "file:///%E9%0A%22%3F%23%26%2B");
}

TEST(FileAddress, LeadsBackToTheBytes) {
    std::string path = "/";
    for (int byte = 1; byte < 256; ++byte) {
        path.push_back(static_cast<char>(byte));
    }
    EXPECT_EQ(PathOfAddress(AddressOfPath(path), ""), path);
}

TEST(FileAddress, IsReadInAllItsForms) {
    EXPECT_EQ(PathOfAddress("file:///a%20b", "here"), "/a b");
    EXPECT_EQ(PathOfAddress("FILE://localhost/a", "here"), "/a");
    EXPECT_EQ(PathOfAddress("file:/a", "here"), "/a");
    EXPECT_EQ(PathOfAddress("file:///a%zz%4", "here"), "/a%zz%4");
    EXPECT_EQ(PathOfAddress("file://HERE/a", "here"), "/a");
}

TEST(FileAddress, OfOthersThereIsNoPath) {
    for (const char* address :
         {"", "/a", "a", "http://localhost/a", "file", "file:", "file://", "file:a",
          "file://elsewhere/a", "file://localhost", "file://localhosts/a", "file:///a%00b"}) {
        EXPECT_FALSE(PathOfAddress(address, "here").has_value()) << address;
    }
}

}  // namespace
}  // namespace platform
