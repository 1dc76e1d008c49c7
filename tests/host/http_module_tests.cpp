// The module as the program loads it.
#include "host/http/http.h"

#include <gtest/gtest.h>

namespace veldrin {
namespace {

TEST(HttpModule, WithoutAModuleThereIsNoNetwork) {
    EXPECT_EQ(LoadHttp(), nullptr);  // none lies beside this program
    EXPECT_EQ(LoadHttp(), nullptr);
    EXPECT_EQ(OpenHttp("/nowhere/veldrin-http.so"), nullptr);
    EXPECT_EQ(OpenHttp("/etc/passwd"), nullptr);
    EXPECT_EQ(OpenHttp("libc.so.6"), nullptr);  // no such function in it
}

TEST(HttpModule, TheModuleMakesOne) {
    const auto http = OpenHttp(HTTP_MODULE);
    ASSERT_NE(http, nullptr);
    EXPECT_FALSE(http->Get("nonsense", {}, {}));
}

}  // namespace
}  // namespace veldrin
