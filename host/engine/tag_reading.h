// Runs one reading of a file's tags within its time. It takes place on the caller's thread, which
// for all but a few files is over in a moment. A file that has more for TagLib to take apart than
// can be sure to be over in a moment is read on a thread of its own, and that is left behind when
// the time is over: there is no way to stop it in the midst of its work.
#pragma once

#include <atomic>
#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include "host/engine/stragglers.h"
#include "host/engine/tag_stream.h"
#include "host/engine/worker.h"

namespace veldrin {

/// For one reading of one file; what follows from it has to fit into a second.
inline constexpr std::chrono::milliseconds kLongestReading(800);
inline constexpr long kLargeBlocksAtOnce = 512L * 1024;
inline constexpr long kMostLargeBlocks = 12L * 1024 * 1024;

/// With so many threads left behind another one would only be one more.
inline constexpr int kMostStragglers = 8;

/// Runs one reading of a file. What the library cannot stand, such as a size in the file for which
/// there is no memory, counts as nothing found.
template <typename Read>
void Guarded(Read read) {
    try {
        read();
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): nothing is found
    }
}

/// What `read` finds in the file, on a thread of its own that owns all it uses; `otherwise` if the
/// time is over before.
template <typename Result, typename Read>
Result FoundElsewhere(const std::string& path, std::chrono::steady_clock::time_point deadline,
                      Read read, Result otherwise, long pictureBytes) {
    if (Straggler::Count() >= kMostStragglers) {
        return otherwise;
    }
    struct Shared {
        std::atomic<bool> stop = false;
        std::optional<Result> found;  ///< none before, and if there is no thread to be had
    };
    const auto shared = std::make_shared<Shared>();
    Worker worker;
    worker.Begin([=] {
        TagStream file(path, {deadline, kMostLargeBlocks, &shared->stop, pictureBytes});
        shared->found = file.isOpen() ? read(file) : Result();
    });
    if (worker.WaitFor(deadline - std::chrono::steady_clock::now())) {
        return std::move(shared->found).value_or(std::move(otherwise));
    }
    shared->stop = true;
    return otherwise;
}

/// What `read` finds in the file, which it gets as an open TagStream&, or as much of it as was
/// found when the time was over; nothing if there is no such file. `read` throws nothing and refers
/// to nothing that the caller owns. `stop` and `pictureBytes` as in TagLimits.
template <typename Read>
auto ReadWithinTime(const std::string& path, Read read, const std::atomic<bool>* stop = nullptr,
                    long pictureBytes = 0) {
    using Result = std::invoke_result_t<Read, TagStream&>;
    const auto deadline = std::chrono::steady_clock::now() + kLongestReading;
    TagStream file(path, {deadline, kLargeBlocksAtOnce, stop, pictureBytes});
    Result found = file.isOpen() ? read(file) : Result();
    return file.WasTooLarge() ? FoundElsewhere(path, deadline, read, std::move(found), pictureBytes)
                              : found;
}

}  // namespace veldrin
