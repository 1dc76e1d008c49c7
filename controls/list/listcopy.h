// What a list holds, apart from the list: texts, payloads and the current row. It shares no memory
// with the list, so that another thread can have it. Taking it costs little more than the bytes
// that it copies; what it costs to write them is left to whoever writes.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/list/rowtext.h"
#include "platform/base/types.h"
#include "platform/files/files.h"

namespace sarnel {

class ListCopy {
    using Long = platform::Long;

  public:
    /// A copy without rows as yet of a list that has so many; AddRow brings them, in order.
    ListCopy(Long count, Long current) : count_(count), current_(current) {}

    void AddRow(const RowText& text, const RowText& data);

    Long ListCount() const { return count_; }
    Long ListCurrent() const { return current_; }

    /// The rows' texts and payloads, in order.
    using Row = std::function<void(std::u16string_view text, std::u16string_view data)>;
    void EachRow(const Row& take) const;

    /// Writes what JList::Serialize would.
    void WriteTo(platform::FileWriter& file) const;

  private:
    void Add(const RowText& text);
    // Calls `take` with each text and each payload, in units of one byte or of two.
    template <class Take>
    void EachText(Take take) const;

    // Texts lie in blocks one behind the other, each behind its length in bytes, doubled, plus one
    // if its units are two bytes wide. Blocks do not grow, so that nothing is copied twice.
    std::vector<std::string> blocks_;
    Long count_;
    Long current_;
};

}  // namespace sarnel
