#include "tests/unit/support/list_bench.h"

#include <algorithm>

#include "platform/base/text.h"

namespace support {

namespace {

constexpr Long kRowHeight = 15;  // a line of 13 pixels and a margin of 2
constexpr Long kSurplus = 7;     // not enough for a further row

sarnel::JListStored StoredOf(ListBench::Kind kind) {
    sarnel::JListStored stored;
    stored.sorted = kind == ListBench::kStoredSorted;
    stored.showItemImages = kind == ListBench::kWithImages;
    return stored;
}

}  // namespace

ListBench::ListBench(Kind kind, Long visibleRows) {
    const platform::Rect rect{0, 0, 200, visibleRows * kRowHeight + kSurplus};
    window = windows.CreateWindow(0, rect, {});
    list = kind == kFresh ? std::make_unique<sarnel::JList>(windows, window, rect)
                          : std::make_unique<sarnel::JList>(windows, window, rect, StoredOf(kind));
}

ListBench::ListBench(platform::Size size, const sarnel::JListStored& stored) {
    const platform::Rect rect{0, 0, size.width, size.height};
    window = windows.CreateWindow(0, rect, {});
    windows.ShowWindow(window, platform::SW_SHOW);
    list = std::make_unique<sarnel::JList>(windows, window, rect, stored);
}

void ListBench::MoveTo(Long x, Long y) {
    driver.MovePointer({x, y});
    windows.Deliver(platform::PointerMoved{{x, y}, windows.Modifiers()});
}

void ListBench::Press(Long button) {
    windows.Deliver(platform::ButtonChanged{driver.Pointer(), button, true, windows.Modifiers()});
}

void ListBench::Release(Long button) {
    windows.Deliver(platform::ButtonChanged{driver.Pointer(), button, false, windows.Modifiers()});
}

void ListBench::Key(Long code, Long shift, bool down) {
    windows.Deliver(platform::KeyChanged{code, shift, down});
}

void ListBench::After(platform::Millis delay, std::function<void()> act) {
    windows.Schedule(delay, std::move(act));
}

void ListBench::Add(const std::vector<std::u16string>& texts) {
    for (const std::u16string& text : texts) {
        list->AddItem(text, text + u".mp3");
    }
}

void ListBench::AddMany(Long count) {
    for (Long i = 0; i < count; ++i) {
        const std::u16string name = u"r" + platform::Widen(std::to_string(i));
        list->AddItem(name, name + u".mp3");
    }
}

std::vector<std::u16string> ListBench::Texts() const {
    std::vector<std::u16string> texts;
    for (Long i = 0; i < list->ListCount(); ++i) {
        texts.push_back(list->List(i));
    }
    return texts;
}

std::vector<std::u16string> ListBench::Payloads() const {
    std::vector<std::u16string> payloads;
    for (Long i = 0; i < list->ListCount(); ++i) {
        payloads.push_back(list->ListData(i));
    }
    return payloads;
}

std::string ListBench::Flags() const {
    std::string flags;
    for (Long i = 0; i < list->ListCount(); ++i) {
        flags += list->Selected(i) ? 'x' : '.';
    }
    return flags;
}

Long ListBench::Flagged() const {
    const std::string flags = Flags();
    return static_cast<Long>(std::count(flags.begin(), flags.end(), 'x'));
}

std::pair<Long, Long> ListBench::Range() const {
    return {list->DisplayFirst(), list->DisplayLast()};
}

}  // namespace support
