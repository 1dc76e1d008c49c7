// What is dropped on the windows, on its way into the queue of events. Folders and lists of media
// become the files that they stand for. That may take long, as on a share that has gone, so it is
// done on a thread of its own; and files come a few at a time, when nothing else waits, since
// whoever takes them has to look into each of them.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop/event_queue.h"

namespace platform::desktop {

/// A point of a window, in device pixels from its corner.
struct DropPoint {
    double x = 0;
    double y = 0;
};

struct DropPlace {
    Handle window = 0;
    DropPoint point;
};

class Drops {
  public:
    /// Where the point is now; none once the window is gone.
    using Find = std::function<std::optional<Point>(const DropPlace&)>;
    /// A line for people; of names the raw bytes.
    using Notice = std::function<void(const std::string&)>;

    /// `find` and `notice` are called from Turn, `wake` from any thread: Turn has something to do.
    Drops(EventQueue& events, Find find, std::function<void()> wake)
        : events_(events), find_(std::move(find)), wake_(std::move(wake)) {}
    /// Leaves threads behind that have not come back.
    ~Drops();
    Drops(const Drops&) = delete;
    Drops& operator=(const Drops&) = delete;

    void TellBy(Notice notice) { notice_ = std::move(notice); }

    void Take(DropPlace place, std::vector<std::string> paths);

    /// Reports the next few files, if no event waits. Drops come in the order in which they were
    /// made.
    void Turn();

  private:
    struct Work;
    struct Drop {
        DropPlace place;
        std::shared_ptr<Work> work;
    };

    void Report(const DropPlace& place, std::vector<std::string> paths);

    EventQueue& events_;
    Find find_;
    std::function<void()> wake_;
    Notice notice_;
    std::deque<Drop> drops_;
};

}  // namespace platform::desktop
