// The mark of a run: a small file that says whether the last run for a component directory ended in
// order. Whoever holds it has locked it, so that a run that goes on is never taken for one that
// broke off. It is written in place, in one piece of always the same length.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/descriptor.h"
#include "host/rescue/list_file.h"

namespace veldrin {

class RunMark {
  public:
    /// What the run before left.
    struct Former {
        /// The size in bytes of the list that it saved; nothing if it did not end in order, or if
        /// nobody knows.
        std::optional<std::int64_t> savedSize;
        /// The list that it found, if it did not end in order.
        std::optional<ListStamp> found;
        /// So many starts in a row broke off before they had lasted.
        int brokenStarts = 0;
    };

    /// Opens and locks the file, which is made if need be. Nothing if it cannot be had: another run
    /// has it (one that is just going is waited for, for up to a second), or it is no file.
    static std::optional<RunMark> Take(const std::string& path);

    const Former& Before() const { return former_; }

    /// The run begins. Without a stamp it is not known as yet which list it finds.
    void Begin(const std::optional<ListStamp>& found);
    /// It has lasted: whatever comes, its start was a good one.
    void Lasted();
    /// It ends in order, with a list of so many bytes.
    void End(std::int64_t savedSize);

  private:
    explicit RunMark(Descriptor file);
    void Write(std::string text);
    void WriteRunning(int brokenStarts);

    Descriptor file_;
    Former former_;
    std::optional<ListStamp> found_;
};

}  // namespace veldrin
