// What is mounted where, out of the kernel's words for it.
#include "platform/files/mounts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace platform {
namespace {

using Told = std::vector<std::string>;

Told Parsed(std::string_view mountinfo) {
    Told told;
    for (const Mount& mount : ParseMounts(mountinfo)) {
        told.push_back(mount.folder + "|" + mount.device);
    }
    return told;
}

TEST(Mounts, FolderAndDeviceInTheirOrder) {
    EXPECT_EQ(Parsed("36 35 98:0 / / rw,noatime master:1 - ext3 /dev/root rw\n"
                     "37 36 0:4 /a /mnt/a rw - nfs server:/a rw\n"
                     "38 37 0:5 / /mnt/a rw shared:2 master:3 - fuse x rw\n"),
              (Told{"/|/dev/root", "/mnt/a|server:/a", "/mnt/a|x"}));
}

TEST(Mounts, CodesStandForBytes) {
    EXPECT_EQ(Parsed("1 2 3 / /mnt/a\\040b\\134\xE9 rw - ext4 /dev/x\\011y rw\n"),
              Told{"/mnt/a b\\\xE9|/dev/x\ty"});
    EXPECT_EQ(FromCodes("\\x20\\x2\\", "\\x", 2, 16), " \\x2\\");
}

TEST(Mounts, LinesThatAreNoneAreLeftOut) {
    EXPECT_EQ(Parsed(""), Told());
    EXPECT_EQ(Parsed("\n-\n1 2 3 / /mnt/a\n1 2 3 / /b rw -\n1 2 3 / /c rw - x\n"), Told());
}

TEST(Mounts, HereTheRootIsOne) {
    const auto mounts = MountsHere();
    EXPECT_TRUE(std::ranges::any_of(mounts, [](const Mount& one) { return one.folder == "/"; }));
}

}  // namespace
}  // namespace platform
