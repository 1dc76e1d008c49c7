#include "host/rescue/run_mark.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <sstream>
#include <thread>
#include <utility>

namespace veldrin {
namespace {

constexpr std::size_t kLength = 128;
constexpr const char* kGreeting = "veldrin-run-1";
constexpr const char* kRunning = "running";
constexpr const char* kEnded = "ended";

/// The run before may still be on its way out: the lock of the instance goes first.
bool Lock(const Descriptor& file) {
    constexpr int kTries = 100;
    constexpr std::chrono::milliseconds kPause(10);
    for (int i = 0; i < kTries; ++i) {
        if (flock(file.Number(), LOCK_EX | LOCK_NB) == 0) {
            return true;
        }
        std::this_thread::sleep_for(kPause);
    }
    return false;
}

/// What Write has written: a greeting, a state, and numbers that go with it.
RunMark::Former Read(const Descriptor& file) {
    std::array<char, kLength> bytes{};
    const ssize_t got = pread(file.Number(), bytes.data(), bytes.size(), 0);
    std::istringstream text(std::string(bytes.data(), got > 0 ? static_cast<std::size_t>(got) : 0));
    std::string greeting;
    std::string state;
    std::int64_t number = 0;
    RunMark::Former former;
    if (!(text >> greeting >> state >> number) || greeting != kGreeting || number < 0) {
        return former;
    }
    if (state == kEnded) {
        former.savedSize = number;
    } else if (state == kRunning) {
        constexpr std::int64_t kMany = 1000;
        former.brokenStarts = static_cast<int>(std::min(number, kMany));
        ListStamp found;
        if (text >> found.size >> found.seconds >> found.nanoseconds) {
            former.found = found;
        }
    }
    return former;
}

}  // namespace

std::optional<RunMark> RunMark::Take(const std::string& path) {
    constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    Descriptor file(open(path.c_str(), kFlags, 0600));
    struct stat status {};
    if (!file || fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode) || !Lock(file)) {
        return std::nullopt;
    }
    return RunMark(std::move(file));
}

RunMark::RunMark(Descriptor file) : file_(std::move(file)), former_(Read(file_)) {}

void RunMark::Begin(const std::optional<ListStamp>& found) {
    found_ = found;
    WriteRunning(former_.brokenStarts + 1);
}

void RunMark::Lasted() {
    WriteRunning(0);
}

void RunMark::WriteRunning(int brokenStarts) {
    std::string text = std::string(kRunning) + ' ' + std::to_string(brokenStarts);
    if (found_) {
        for (const std::int64_t number : {found_->size, found_->seconds, found_->nanoseconds}) {
            text += ' ' + std::to_string(number);
        }
    }
    Write(std::move(text));
}

void RunMark::End(std::int64_t savedSize) {
    Write(std::string(kEnded) + ' ' + std::to_string(std::max<std::int64_t>(savedSize, 0)));
}

void RunMark::Write(std::string text) {
    text.insert(0, std::string(kGreeting) + ' ');
    text.resize(kLength - 1, ' ');
    text += '\n';
    // Where that fails, a run that ends in order will look like one that broke off: its list is
    // then looked at more closely.
    if (pwrite(file_.Number(), text.data(), text.size(), 0) < 0) {
        return;
    }
}

}  // namespace veldrin
