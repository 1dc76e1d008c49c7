// What is published of the file types once all is written.
#include "shell/associations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/headless/headless_driver.h"

namespace sarnel {
namespace {

using platform::RegistryValue;

class Associations : public ::testing::Test {
  protected:
    std::u16string Published(const std::u16string& key) const {
        for (const RegistryValue& value : *driver_.Published()) {
            if (value.key == key) {
                return value.text;
            }
        }
        return u"(none)";
    }

    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows_{driver_};
};

TEST_F(Associations, NothingIsPublishedBeforeTheNotification) {
    RegisterExtension(windows_, u"mp3", u"/p", u"c", u"/i");
    RegisterDirectoryVerbs(windows_, u"/p");
    EXPECT_FALSE(driver_.Published());
    NotifyAssociationChange(windows_);
    EXPECT_TRUE(driver_.Published());
}

TEST_F(Associations, TheClassIsPublishedOnceForAllItsTypes) {
    RegisterExtension(windows_, u"mp3", u"/old", u"c", u"/old");
    RegisterExtension(windows_, u"ogg", u"/new path", u"c", u"/icon");
    RegisterDirectoryVerbs(windows_, u"/new path");
    NotifyAssociationChange(windows_);
    EXPECT_EQ(driver_.Published()->size(), 12U);  // class 6, types 2, folders 4
    EXPECT_EQ(driver_.Registry().size(), 18U);
    EXPECT_EQ(Published(u"c"), u"c");
    EXPECT_EQ(Published(u".mp3"), u"c");
    EXPECT_EQ(Published(u".ogg"), u"c");
    EXPECT_EQ(Published(u"c\\shell\\open\\command"), u"\"/new path\" \"%1\"");
    EXPECT_EQ(Published(u"c\\shell\\enqueue\\command"), u"\"/new path\" /ADD \"%1\"");
    EXPECT_EQ(Published(u"c\\DefaultIcon"), u"/icon");
    EXPECT_EQ(Published(u"Directory\\shell\\Veldrin.Enqueue\\command"),
              u"\"/new path\" /ADD \"%1\"");
}

TEST_F(Associations, ATypeOfAnotherClassGoesOver) {
    RegisterExtension(windows_, u"mp3", u"/p", u"one", u"/p");
    RegisterExtension(windows_, u"MP3", u"/p", u"two", u"/p");
    NotifyAssociationChange(windows_);
    EXPECT_EQ(Published(u".mp3"), u"two");  // a key keeps the spelling that it was made with
    EXPECT_EQ(Published(u".MP3"), u"(none)");
    EXPECT_EQ(Published(u"one\\shell\\open"), u"&Play with Veldrin");
    EXPECT_EQ(Published(u"two\\shell\\enqueue"), u"&Enqueue in Veldrin");
}

TEST_F(Associations, AnExtensionWithAPointWritesNothing) {
    for (const char16_t* extension : {u"tar.gz", u".", u".mp3", u"mp3."}) {
        RegisterExtension(windows_, extension, u"/p", u"c", u"/p");
    }
    EXPECT_TRUE(driver_.Registry().empty());
}

}  // namespace
}  // namespace sarnel
