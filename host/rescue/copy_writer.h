// Writes copies of the list on a thread of its own, each in one step: by a new file that is on the
// disk before it takes the place of the old one. A thread that hangs on a slow disk is left behind,
// holding all that it uses.
#pragma once

#include <memory>
#include <string>

#include "controls/list/listcopy.h"
#include "host/engine/worker.h"

namespace veldrin {

class CopyWriter {
  public:
    /// Where the copy lies; raw bytes.
    explicit CopyWriter(std::string path);
    ~CopyWriter() { Stop(); }
    CopyWriter(const CopyWriter&) = delete;
    CopyWriter& operator=(const CopyWriter&) = delete;

    /// Begins to write, unless it is busy.
    void Write(sarnel::ListCopy copy);
    bool IsBusy() const { return !worker_.IsDone(); }
    /// Whether what was begun last failed. Asked when it is not busy.
    bool HasFailed() const;
    /// From now on the file stays as it is. Does not wait for the disk.
    void Stop();

  private:
    struct State;
    static void Run(State& state, const sarnel::ListCopy& copy);

    std::shared_ptr<State> state_;
    Worker worker_;
};

}  // namespace veldrin
