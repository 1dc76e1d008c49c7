#include "host/engine/tag_prefetcher.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "host/engine/stragglers.h"
#include "platform/base/text.h"
#include "platform/files/folders.h"

namespace veldrin {

namespace {

constexpr std::size_t kFilesAhead = 1000;  // files that are read ahead at most
// Files that the asking thread reads itself before it looks to the others again. It never waits: a
// thread that has been put to sleep in the midst of a file would hold it up.
constexpr std::size_t kOwnShare = 16;
constexpr std::size_t kAtOnce = 8;  // files that a thread takes on in one go
constexpr unsigned kMostThreads = 4;
// A thread ends at the next look into its file. One that has none is not waited for.
constexpr std::chrono::milliseconds kPartingTime(50);

}  // namespace

TagPrefetcher::TagPrefetcher()
    : extensions_(TaggedExtensions()), shared_(std::make_shared<Shared>()) {}

TagPrefetcher::~TagPrefetcher() {
    std::unique_lock lock(shared_->mutex);
    shared_->stopping = true;
    shared_->work.notify_all();
    shared_->ended.wait_for(lock, kPartingTime, [this] { return shared_->threads == 0; });
}

std::string TagPrefetcher::Title(const std::string& path) {
    std::string title;
    std::optional<platform::FileStamp> stamp;
    const std::size_t slash = path.rfind('/');
    if (slash != std::string::npos) {
        EnterFolder(std::string_view(path).substr(0, slash));
        // The pointer itself is changed by this thread only.
        if (shared_->folder != nullptr) {
            const auto place =
                shared_->folder->places.find(std::string_view(path).substr(slash + 1));
            if (place != shared_->folder->places.end() && TakeRead(place->second, title, stamp) &&
                stamp == StampOfFile(path)) {
                return title;
            }
        }
    }
    return ReadTitle(path, stamp);
}

/// Begins with a folder when two questions in a row are for it.
void TagPrefetcher::EnterFolder(std::string_view path) {
    if (path != lastFolder_) {
        lastFolder_ = path;
        const std::lock_guard lock(shared_->mutex);
        shared_->folder.reset();
        return;
    }
    if (shared_->folder != nullptr) {
        return;
    }
    std::shared_ptr<Folder> folder = ListFolder(lastFolder_);
    const std::lock_guard lock(shared_->mutex);
    shared_->folder = std::move(folder);
}

/// Takes the title of an entry out if it has been read ahead; moves the range to read ahead.
bool TagPrefetcher::TakeRead(std::size_t place, std::string& title,
                             std::optional<platform::FileStamp>& stamp) {
    const std::unique_lock lock(shared_->mutex, std::try_to_lock);
    if (!lock) {
        return false;  // reading the file takes less time than being put to sleep and woken
    }
    Entry& entry = shared_->folder->entries[place];
    if (entry.state != State::kRead) {
        if (ownShare_ == 0) {
            // The others have been caught up with, or the questions have jumped to another place.
            ownShare_ = kOwnShare;
            shared_->folder->next = place + 1 + kOwnShare;
        } else {
            --ownShare_;
        }
    }
    const std::size_t limit = std::min(shared_->folder->entries.size(), place + 1 + kFilesAhead);
    // In large steps, so that nobody is woken for a single file.
    if (limit < shared_->folder->limit || limit >= shared_->folder->limit + kFilesAhead / 2 ||
        (limit > shared_->folder->limit && limit == shared_->folder->entries.size())) {
        shared_->folder->limit = limit;
        StartThreads();
        shared_->work.notify_all();
    }
    if (entry.state != State::kRead) {
        return false;
    }
    entry.state = State::kUnread;
    title = std::exchange(entry.title, {});
    stamp = entry.stamp;
    return true;
}

void TagPrefetcher::StartThreads() {
    // One core is left to the asking thread, which reads too.
    const unsigned count = std::clamp(std::thread::hardware_concurrency(), 2U, kMostThreads) - 1;
    while (shared_->threads < count) {
        std::thread([shared = shared_] {
            ReadAhead(*shared);
            const std::lock_guard lock(shared->mutex);
            --shared->threads;
            shared->ended.notify_all();
        }).detach();
        ++shared_->threads;
    }
}

void TagPrefetcher::ReadAhead(Shared& shared) {
    std::vector<Entry*> taken;
    std::unique_lock lock(shared.mutex);
    while (!shared.stopping) {
        const std::shared_ptr<Folder> folder = shared.folder;
        if (folder == nullptr || folder->next >= folder->limit) {
            shared.work.wait(lock);
            continue;
        }
        taken.clear();
        while (taken.size() < kAtOnce && folder->next < folder->limit) {
            Entry& entry = folder->entries[folder->next++];
            if (entry.state == State::kUnread) {
                entry.state = State::kBeingRead;
                taken.push_back(&entry);
            }
        }
        lock.unlock();
        const Straggler reading;
        for (Entry* entry : taken) {
            if (!shared.stopping) {
                entry->title =
                    ReadTitle(folder->path + "/" + entry->name, entry->stamp, &shared.stopping);
            }
        }
        lock.lock();
        for (Entry* entry : taken) {
            entry->state = State::kRead;
        }
    }
}

std::shared_ptr<TagPrefetcher::Folder> TagPrefetcher::ListFolder(const std::string& path) const {
    std::vector<std::string> names;  // in the order in which the component asks
    const auto entries = platform::ListFolder(platform::Widen(path.empty() ? "/" : path));
    for (const platform::FolderEntry& entry :
         entries.value_or(std::vector<platform::FolderEntry>())) {
        std::string name = platform::Narrow(entry.name);
        if (extensions_.contains(ExtensionOf(name))) {
            names.push_back(std::move(name));
        }
    }
    auto folder = std::make_shared<Folder>();
    folder->path = path;
    folder->entries.resize(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        folder->entries[i].name = std::move(names[i]);
        folder->places.emplace(folder->entries[i].name, i);
    }
    return folder;
}

}  // namespace veldrin
