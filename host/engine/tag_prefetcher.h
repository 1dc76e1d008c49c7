// TagPrefetcher reads the titles of a folder's files ahead of the questions for them. Folders are
// asked through in alphabetical order; from the second question in a row on, a few threads run
// ahead of the last one, up to a fixed number of files, so that nothing is read in vain for long
// and memory stays bounded. A thread that does not come back from a file at the end is left behind.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/engine/extensions.h"
#include "host/engine/tag_file.h"

namespace veldrin {

class TagPrefetcher {
  public:
    TagPrefetcher();
    ~TagPrefetcher();
    TagPrefetcher(const TagPrefetcher&) = delete;
    TagPrefetcher& operator=(const TagPrefetcher&) = delete;

    /// The file's display title as ReadTitle gives it, read ahead or now.
    std::string Title(const std::string& path);

  private:
    enum class State { kUnread, kBeingRead, kRead };
    struct Entry {
        std::string name;  // never changes
        State state = State::kUnread;
        // Belong to the reading thread while kBeingRead, else to whoever holds the mutex.
        std::string title;
        std::optional<platform::FileStamp> stamp;
    };
    /// Kept alive by a thread that still reads in it when another folder is begun.
    struct Folder {
        std::string path;
        std::vector<Entry> entries;  // in the order of the questions
        std::unordered_map<std::string_view, std::size_t> places;
        std::size_t next = 0;   // where to read ahead
        std::size_t limit = 0;  // and up to where
    };

    /// What the threads use, for as long as the last of them.
    struct Shared {
        std::mutex mutex;
        std::condition_variable work;   // there is something to read, or the end has come
        std::condition_variable ended;  // a thread has
        // The following are guarded by the mutex.
        std::shared_ptr<Folder> folder;
        unsigned threads = 0;
        std::atomic<bool> stopping = false;  // but for this, which is also read without it
    };

    std::shared_ptr<Folder> ListFolder(const std::string& path) const;
    void EnterFolder(std::string_view path);
    bool TakeRead(std::size_t place, std::string& title, std::optional<platform::FileStamp>& stamp);
    void StartThreads();
    static void ReadAhead(Shared& shared);

    const Extensions extensions_;

    // Of the asking thread alone.
    std::string lastFolder_;
    std::size_t ownShare_ = 0;  // files it still reads itself

    const std::shared_ptr<Shared> shared_;
};

}  // namespace veldrin
