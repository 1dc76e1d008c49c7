#include "host/engine/tag_prefetcher.h"

#include <algorithm>
#include <utility>

#include "platform/base/text.h"
#include "platform/files/folders.h"

namespace veldrin {

namespace {

constexpr std::size_t kAhead = 1000;  // files that are read ahead at most
// Files that the asking thread reads itself before it looks to the others again. It never waits: a
// thread that has been put to sleep in the midst of a file would hold it up.
constexpr std::size_t kOwnShare = 16;
constexpr std::size_t kAtOnce = 8;  // files that a thread takes on in one go
constexpr unsigned kMostThreads = 4;

}  // namespace

TagPrefetcher::TagPrefetcher() : extensions_(TaggedExtensions()) {}

TagPrefetcher::~TagPrefetcher() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    work_.notify_all();
    for (std::thread& thread : threads_) {
        thread.join();
    }
}

std::string TagPrefetcher::Title(const std::string& path) {
    std::string title;
    FileStamp stamp;
    const std::size_t slash = path.rfind('/');
    if (slash != std::string::npos) {
        EnterFolder(std::string_view(path).substr(0, slash));
        // folder_ itself is changed by this thread only.
        if (folder_ != nullptr) {
            const auto place = folder_->places.find(std::string_view(path).substr(slash + 1));
            if (place != folder_->places.end() && TakeRead(place->second, title, stamp) &&
                stamp == StampOf(path)) {
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
        const std::lock_guard lock(mutex_);
        folder_.reset();
        return;
    }
    if (folder_ != nullptr) {
        return;
    }
    std::shared_ptr<Folder> folder = ListFolder(lastFolder_);
    const std::lock_guard lock(mutex_);
    folder_ = std::move(folder);
}

/// Takes the title of an entry out if it has been read ahead; moves the range to read ahead.
bool TagPrefetcher::TakeRead(std::size_t place, std::string& title, FileStamp& stamp) {
    const std::unique_lock lock(mutex_, std::try_to_lock);
    if (!lock) {
        return false;  // reading the file takes less time than being put to sleep and woken
    }
    Entry& entry = folder_->entries[place];
    if (entry.state != State::kRead) {
        if (ownShare_ == 0) {
            // The others have been caught up with, or the questions have jumped to another place.
            ownShare_ = kOwnShare;
            folder_->next = place + 1 + kOwnShare;
        } else {
            --ownShare_;
        }
    }
    const std::size_t limit = std::min(folder_->entries.size(), place + 1 + kAhead);
    // In large steps, so that nobody is woken for a single file.
    if (limit < folder_->limit || limit >= folder_->limit + kAhead / 2 ||
        (limit > folder_->limit && limit == folder_->entries.size())) {
        folder_->limit = limit;
        StartThreads();
        work_.notify_all();
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
    while (threads_.size() < count) {
        threads_.emplace_back([this] { ReadAhead(); });
    }
}

void TagPrefetcher::ReadAhead() {
    std::vector<Entry*> taken;
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        const std::shared_ptr<Folder> folder = folder_;
        if (folder == nullptr || folder->next >= folder->limit) {
            work_.wait(lock);
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
        for (Entry* entry : taken) {
            entry->title = ReadTitle(folder->path + "/" + entry->name, entry->stamp);
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
