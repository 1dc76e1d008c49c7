// A list in a window of its own, with room for as many rows as a test asks for.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "controls/list/jlist.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"

namespace support {

using platform::Long;

/// The stored properties of a list whose rows stay in the order in which they were added.
inline sarnel::JListStored Unsorted() {
    sarnel::JListStored stored;
    stored.sorted = false;
    return stored;
}

class ListBench {
  public:
    enum Kind {
        kAsPlaylist,  ///< stored properties read, Sorted False
        kWithImages,  ///< the same, with an image column
        kFresh,       ///< placed anew: Sorted True
        kStoredSorted
    };
    explicit ListBench(Kind kind = kAsPlaylist, Long visibleRows = 5);
    /// A list of that size and those stored properties, on a window that is shown.
    ListBench(platform::Size size, const sarnel::JListStored& stored);

    platform::HeadlessDriver driver{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows{driver};
    platform::Handle window = 0;
    std::unique_ptr<sarnel::JList> list;

    /// Adds rows at the end of the list, or where Sorted puts them; the payload of "a" is "a.mp3".
    void Add(const std::vector<std::u16string>& texts);
    /// Adds `count` rows "r0", "r1" ...
    void AddMany(Long count);
    std::vector<std::u16string> Texts() const;
    std::vector<std::u16string> Payloads() const;
    /// One character a row: x if it is selected.
    std::string Flags() const;
    /// Number of flags that are set.
    Long Flagged() const;
    /// The colour of a point of the list's face.
    platform::Colour At(Long x, Long y) const { return list->Face().GetPixel({x, y}); }

    // The user's mouse. The window lies at 0, 0 of the screen, and so does the list.
    void MoveTo(Long x, Long y);
    void Press(Long button = 1);
    void Release(Long button = 1);
    void Key(Long code, Long shift, bool down);
    /// Runs `act` when so many ms have passed, also in the midst of a loop of the list.
    void After(platform::Millis delay, std::function<void()> act);

    /// DisplayFirst and DisplayLast.
    std::pair<Long, Long> Range() const;
};

}  // namespace support
