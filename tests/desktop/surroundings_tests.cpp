// What the driver tells of the machine around it, out of the kernel's words for it, and how pages
// are waited for.
#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "platform/base/text.h"
#include "platform/desktop/download.h"
#include "platform/desktop/drives.h"
#include "platform/desktop/network.h"

namespace {

using namespace platform;
using namespace platform::desktop;
using std::chrono::milliseconds;

TEST(Network, ThisMachineByNameAndNumber) {
    for (const auto* address :
         {"http://localhost", "HTTP://LocalHost:80/x", "https://127.0.0.1/",
          "http://127.9.8.7:81?q", "http://[::1]:8080/a/b", "http://[0:0::1]"}) {
        EXPECT_TRUE(LeadsToThisMachine(address)) << address;
    }
    for (const auto* address :
         {"", "localhost", "http://", "http://example.org/localhost", "http://127.evil.org",
          "http://127.0.0.1.evil.org", "http://128.0.0.1", "http://[::2]", "http://[::1",
          "http://localhost@evil.org/", "http://localhost.evil.org", "http://evil.org?127.0.0.1"}) {
        EXPECT_FALSE(LeadsToThisMachine(address)) << address;
    }
}

constexpr std::string_view kHeading =
    "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT   \n";
constexpr std::string_view kOwn6 =
    "00000000000000000000000000000001 80 00000000000000000000000000000000 00 "
    "00000000000000000000000000000000 00000000 00000002 00000000 80200001       lo\n";

TEST(Network, ARouteLeadsBeyondThisMachine) {
    const std::string heading(kHeading);
    const std::string wire = "eth0\t00000000\t010011AC\t0003\t0\t0\t0\t00000000\t0\t0\t0\n";
    EXPECT_TRUE(HasRoute(heading + wire, ""));
    EXPECT_TRUE(
        HasRoute(heading + "lo\t0000007F\t0\t0001\t0\t0\t0\t000000FF\t0\t0\t0\n" + wire, ""));
    EXPECT_TRUE(HasRoute(heading,
                         std::string(kOwn6) +
                             "00000000000000000000000000000000 00 00000000000000000000000000000000 "
                             "00 fe800000000000000000000000000001 00000400 00000001 00000000 "
                             "00000003    wlan0\n"));
}

TEST(Network, WithoutOneThereIsNoWay) {
    const std::string heading(kHeading);
    EXPECT_FALSE(HasRoute("", ""));
    EXPECT_FALSE(HasRoute(heading, kOwn6));
    EXPECT_FALSE(
        HasRoute(heading + "lo\t0000007F\t00000000\t0001\t0\t0\t0\t000000FF\t0\t0\t0\n", ""));
    // Not up; and one that turns everything away.
    EXPECT_FALSE(HasRoute(heading + "eth0\t00000000\t010011AC\t0002\t0\t0\t0\t0\t0\t0\t0\n", ""));
    EXPECT_FALSE(HasRoute(heading + "eth0\t00000000\t010011AC\t0201\t0\t0\t0\t0\t0\t0\t0\n", ""));
    EXPECT_FALSE(HasRoute("eth0\neth0 1\neth0 1 2 \n\n\n", "a b c\n1 2 3 4 5 6 7 8 9\n"));
}

std::vector<std::string> Told(const std::vector<Drive>& drives) {
    std::vector<std::string> told;
    for (const Drive& drive : drives) {
        told.push_back(Narrow(drive.root) + "|" + Narrow(drive.label));
    }
    return told;
}

std::vector<Drive> DrivesOf(std::string_view home, std::string_view mountinfo,
                            const LabelOf& labelOf) {
    return ListDrives(home, ParseMounts(mountinfo), labelOf);
}

std::string LabelOfDevice(const std::string& device) {
    return device == "/dev/sdb1" ? "Music" : device == "/dev/a b" ? "\xFF" : "";
}

TEST(Drives, RootHomeAndVolumesInTheirOrder) {
    EXPECT_EQ(Told(DrivesOf(
                  "/home/u",
                  "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
                  "23 22 0:20 / /proc rw - proc proc rw\n"
                  "40 22 8:33 / /run/media/u/Z rw,nosuid shared:7 master:3 - vfat /dev/sdc1 rw\n"
                  "41 22 8:17 / /media/u/My\\040Disk rw - ext4 /dev/sdb1 rw\n"
                  "42 22 8:49 / /mnt rw - xfs /dev/sdd1 rw\n"
                  "43 22 8:65 / /mntx rw - xfs /dev/sde1 rw\n"
                  "44 22 8:66 / /srv/media/x rw - xfs /dev/sdf1 rw\n",
                  LabelOfDevice)),
              (std::vector<std::string>{"/|", "/home/u/|", "/media/u/My Disk/|Music", "/mnt/|",
                                        "/run/media/u/Z/|"}));
}

TEST(Drives, NothingTwice) {
    EXPECT_EQ(Told(DrivesOf("/", "", LabelOfDevice)), std::vector<std::string>{"/|"});
    EXPECT_EQ(Told(DrivesOf("/mnt/home/",
                            "1 2 3 / /mnt/home rw - ext4 /dev/sdb1 rw\n"
                            "1 2 3 / /mnt/a rw - autofs systemd-1 rw\n"
                            "1 2 3 / /mnt/a rw - ext4 /dev/sdb1 rw\n",
                            LabelOfDevice)),
              (std::vector<std::string>{"/|", "/mnt/home/|", "/mnt/a/|Music"}));
}

TEST(Drives, AnyByteMayStandInNames) {
    EXPECT_EQ(
        Told(DrivesOf("/home/\xE9", "1 2 3 / /mnt/\\011\\134\xE9\\040 rw - e /dev/a\\040b rw\n",
                      LabelOfDevice)),
        (std::vector<std::string>{"/|", "/home/\xE9/|", "/mnt/\t\\\xE9 /|\xFF"}));
    EXPECT_EQ(UnescapedLabel("My\\x20Disk\\x2f\\xc3\\xa9\\\\x4\\xzz\\x00"),
              "My Disk/\xC3\xA9\\\\x4\\xzz\\x00");
}

TEST(Drives, WithoutAHomeAndWithLinesThatAreNone) {
    EXPECT_EQ(
        Told(DrivesOf("", "\n-\n - \n1 2 3 / /mnt/a\n1 2 3 / /mnt/b rw -\n1 2 3 / /mnt/c rw - x\n",
                      LabelOfDevice)),
        std::vector<std::string>{"/|"});
    EXPECT_EQ(Told(DrivesOf("relative", "", LabelOfDevice)), std::vector<std::string>{"/|"});
}

/// Waits as the driver does, and counts.
struct Waits {
    int count = 0;
    std::atomic<bool> woken = false;
    bool goesOn = true;

    Waiting Ways() {
        return {[this](milliseconds left) {
                    ++count;
                    EXPECT_GT(left.count(), 0);
                    for (milliseconds passed(0); passed < left && !woken; ++passed) {
                        std::this_thread::sleep_for(milliseconds(1));
                    }
                    return goesOn;
                },
                [this] { woken = true; }};
    }
};

TEST(Download, ThePageAndWhatWasAskedFor) {
    Waits waits;
    const Fetcher fetcher = [](const std::string& address, bool fresh) {
        return std::optional(address + (fresh ? " fresh" : " kept"));
    };
    EXPECT_EQ(FetchMeanwhile(fetcher, "a", true, milliseconds(3000), waits.Ways()), "a fresh");
    EXPECT_EQ(FetchMeanwhile(fetcher, "b", false, milliseconds(3000), waits.Ways()), "b kept");
}

TEST(Download, TheWaitIsWokenByThePage) {
    Waits waits;
    const auto start = std::chrono::steady_clock::now();
    const Fetcher slow = [](const std::string& /*address*/, bool /*fresh*/) {
        std::this_thread::sleep_for(milliseconds(50));
        return std::optional<std::string>("page");
    };
    EXPECT_EQ(FetchMeanwhile(slow, "a", false, milliseconds(20'000), waits.Ways()), "page");
    EXPECT_EQ(waits.count, 1);
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(5000));
}

TEST(Download, AFetcherThatFailsOrNeverAnswersBringsNothing) {
    Waits waits;
    const Fetcher failing = [](const std::string& /*address*/,
                               bool /*fresh*/) -> std::optional<std::string> {
        throw std::runtime_error("a fault");
    };
    EXPECT_EQ(FetchMeanwhile(failing, "a", false, milliseconds(3000), waits.Ways()), std::nullopt);

    auto mayEnd = std::make_shared<std::atomic<int>>(0);
    const Fetcher stuck = [mayEnd](const std::string& /*address*/, bool /*fresh*/) {
        while (*mayEnd == 0) {
            std::this_thread::sleep_for(milliseconds(1));
        }
        *mayEnd = 2;
        return std::optional<std::string>("too late");
    };
    {
        Waits inVain;
        EXPECT_EQ(FetchMeanwhile(stuck, "a", false, milliseconds(50), inVain.Ways()), std::nullopt);
        EXPECT_FALSE(inVain.woken);
        Waits cut;
        cut.goesOn = false;
        cut.woken = true;
        EXPECT_EQ(FetchMeanwhile(stuck, "a", false, milliseconds(20'000), cut.Ways()),
                  std::nullopt);
        EXPECT_EQ(cut.count, 1);
    }
    *mayEnd = 1;  // whom it would have woken is gone
    while (*mayEnd != 2) {
        std::this_thread::sleep_for(milliseconds(1));
    }
}

TEST(Download, SignalsDoNotComeToItsThread) {
    Waits waits;
    const Fetcher fetcher = [](const std::string& /*address*/, bool /*fresh*/) {
        sigset_t held;
        pthread_sigmask(SIG_SETMASK, nullptr, &held);
        return std::optional<std::string>(sigismember(&held, SIGTERM) == 1 ? "held" : "taken");
    };
    EXPECT_EQ(FetchMeanwhile(fetcher, "a", false, milliseconds(3000), waits.Ways()), "held");
    sigset_t own;
    pthread_sigmask(SIG_SETMASK, nullptr, &own);
    EXPECT_EQ(sigismember(&own, SIGTERM), 0);
}

}  // namespace
