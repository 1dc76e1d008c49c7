#include "host/rescue/copy_writer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "host/descriptor.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {

struct CopyWriter::State {
    const std::string path;
    std::mutex mutex;
    // Guarded by the mutex.
    bool busy = false;
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
    const std::lock_guard guard(state_->mutex);
    if (state_->busy || state_->stopped) {
        return;
    }
    try {
        std::thread([state = state_, copy = std::move(copy)] { Run(*state, copy); }).detach();
        state_->busy = true;
    } catch (const std::system_error&) {
        state_->failed = true;
    }
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
    state.busy = false;
    state.failed = !renamed;
}

bool CopyWriter::IsBusy() const {
    const std::lock_guard guard(state_->mutex);
    return state_->busy;
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
