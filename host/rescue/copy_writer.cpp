#include "host/rescue/copy_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <mutex>
#include <utility>

#include "host/descriptor.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {

struct CopyWriter::State {
    const std::string path;
    std::mutex mutex;
    // Guarded by the mutex.
    bool failed = false;
    bool stopped = false;
};

namespace {

bool WriteFile(const std::string& path, const sarnel::ListCopy& copy) {
    unlink(path.c_str());  // whatever lies there is not written into
    platform::FileWriter file(platform::Widen(path));
    if (!file.IsOpen()) {
        return false;
    }
    copy.WriteTo(file);
    return file.CloseFlushed();
}

}  // namespace

CopyWriter::CopyWriter(std::string path) : state_(new State{std::move(path), {}}) {}

void CopyWriter::Write(sarnel::ListCopy copy) {
    {
        const std::lock_guard guard(state_->mutex);
        if (IsBusy() || state_->stopped) {
            return;
        }
        state_->failed = true;  // unless it is done
    }
    worker_.Begin([state = state_, kept = std::make_shared<const sarnel::ListCopy>(
                                       std::move(copy))] { Run(*state, *kept); });
}

void CopyWriter::Run(State& state, const sarnel::ListCopy& copy) {
    const std::string fresh = state.path + ".new";
    const bool good = WriteFile(fresh, copy);
    bool renamed = false;
    {
        const std::lock_guard guard(state.mutex);
        renamed = good && !state.stopped && rename(fresh.c_str(), state.path.c_str()) == 0;
    }
    if (renamed) {
        const std::string folder = state.path.substr(0, state.path.rfind('/') + 1);
        fsync(Descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).Number());
    } else {
        unlink(fresh.c_str());
    }
    const std::lock_guard guard(state.mutex);
    state.failed = !renamed;
}

bool CopyWriter::HasFailed() const {
    const std::lock_guard guard(state_->mutex);
    return state_->failed;
}

void CopyWriter::Stop() {
    const std::lock_guard guard(state_->mutex);
    state_->stopped = true;
}

}  // namespace veldrin
