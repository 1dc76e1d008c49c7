#include "platform/headless/headless_driver.h"

#include <poll.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr Long kUnitWidth = 6;
constexpr Long kLineHeight = 13;

}  // namespace

HeadlessDriver::HeadlessDriver(Clock clock, Long density)
    : clock_(clock), start_(std::chrono::steady_clock::now()), density_(density) {}

void HeadlessDriver::PushKey(Long code, Long shift) {
    Push(KeyChanged{code, shift, true});
    Push(KeyChanged{code, shift, false});
}

void HeadlessDriver::SetWorkArea(const Rect& area) {
    workArea_ = area;
    Push(WorkAreaChanged{});
}

void HeadlessDriver::SetDensity(Long density) {
    density_ = density;
    Push(DensityChanged{});
}

Millis HeadlessDriver::Now() const {
    if (clock_ == Clock::kVirtual) {
        return virtualNow_;
    }
    const auto passed = std::chrono::steady_clock::now() - start_;
    return std::chrono::duration_cast<std::chrono::milliseconds>(passed).count();
}

void HeadlessDriver::WaitUntil(std::optional<Millis> deadline) {
    if (clock_ == Clock::kVirtual) {
        const bool wasCalled = !watches_.empty() && CallWatches(0);
        if (!wasCalled && events_.empty() && deadline) {
            virtualNow_ = std::max(virtualNow_, *deadline);
        }
        return;
    }
    int timeout = -1;
    if (!events_.empty()) {
        timeout = 0;
    } else if (deadline) {
        // At most an hour at a time: whoever waits longer comes back.
        timeout = static_cast<int>(std::clamp<Millis>(*deadline - Now(), 0, 3'600'000));
    }
    CallWatches(timeout);
}

// Whether any could be read within the timeout, in milliseconds.
bool HeadlessDriver::CallWatches(int timeout) {
    std::vector<pollfd> descriptors;
    for (const auto& watch : watches_) {
        descriptors.push_back({watch.first, POLLIN, 0});
    }
    if (poll(descriptors.data(), static_cast<nfds_t>(descriptors.size()), timeout) <= 0) {
        return false;
    }
    for (pollfd& descriptor : descriptors) {
        const auto watch = watches_.find(descriptor.fd);
        // Asked again, since a former function may have waited, which has called this one there.
        if (descriptor.revents != 0 && watch != watches_.end() && poll(&descriptor, 1, 0) > 0) {
            const auto onReadable = watch->second;  // a copy: it may end its own watch
            onReadable();
        }
    }
    return true;
}

std::optional<DriverEvent> HeadlessDriver::NextEvent() {
    if (events_.empty()) {
        return std::nullopt;
    }
    DriverEvent event = std::move(events_.front());
    events_.pop_front();
    return event;
}

void HeadlessDriver::Watch(int descriptor, std::function<void()> onReadable) {
    if (onReadable) {
        watches_[descriptor] = std::move(onReadable);
    } else {
        watches_.erase(descriptor);
    }
}

std::uint64_t HeadlessDriver::RandomSeed() {
    std::random_device source;
    return (std::uint64_t{source()} << 32) | source();
}

Size HeadlessDriver::MeasureText(const Font& /*font*/, std::u16string_view text) const {
    return {kUnitWidth * static_cast<Long>(text.size()), kLineHeight};
}

TextPicture HeadlessDriver::RenderText(const Font& font, std::u16string_view text, Long left,
                                       Long width, Long density) const {
    constexpr Long kSide = 1;
    constexpr Long kAbove = 3;
    const Long columns = std::clamp(MeasureText(font, text).width - left, 0, width);
    TextPicture picture{columns * density, kLineHeight * density, {}, density};
    picture.coverage.reserve(static_cast<std::size_t>(picture.width * picture.height));
    for (Long row = 0; row < picture.height; ++row) {
        const Long y = row / density;
        const bool inked = y >= kAbove && y < kLineHeight - kAbove;
        for (Long column = 0; column < picture.width; ++column) {
            const Long x = left + column / density;
            const Long inUnit = x % kUnitWidth;
            const char16_t unit = text[static_cast<std::size_t>(x / kUnitWidth)];
            const bool ink =
                inked && unit != u' ' && inUnit >= kSide && inUnit < kUnitWidth - kSide;
            picture.coverage.push_back(ink ? 255 : 0);
        }
    }
    return picture;
}

bool HeadlessDriver::GrabHotKey(Handle id, const KeyCombination& key) {
    hotKeyNames_.insert(key.name);
    const bool taken = std::any_of(taken_.begin(), taken_.end(), [&](const KeyCombination& other) {
        return other.modifiers == key.modifiers && other.key == key.key;
    });
    if (!taken) {
        hotKeys_[id] = key;
    }
    return !taken;
}

std::optional<std::string> HeadlessDriver::Download(std::u16string_view address) {
    const std::u16string key(address);
    downloads_.push_back({key, forgotten_.erase(key) > 0});
    const auto page = pages_.find(key);
    return page != pages_.end() ? std::optional(page->second) : std::nullopt;
}

}  // namespace platform
