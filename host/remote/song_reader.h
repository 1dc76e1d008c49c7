// Reads what the desktop is to be told of a song, names and picture, on a thread of its own: the
// file may lie where reading takes its time.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/descriptor.h"
#include "host/engine/tag_file.h"
#include "host/engine/worker.h"
#include "platform/windows/window_system.h"

namespace veldrin {

struct SongFacts {
    NamesInTags names;
    std::string picture;  ///< path of a file with it; empty if there is none
    bool operator==(const SongFacts&) const = default;
};

class SongReader {
  public:
    /// Gets what was found, in good time or empty, from a scheduled call.
    using Found = std::function<void(const SongFacts&)>;

    /// `artFolder`: where pictures are put; empty for none. The window system must outlive it, and
    /// is not pumped any more once it is gone.
    SongReader(platform::WindowSystem& windows, std::string artFolder);
    ~SongReader();
    SongReader(const SongReader&) = delete;
    SongReader& operator=(const SongReader&) = delete;

    /// In place of the former song, of which nothing is told any more.
    void Read(const std::string& path, Found onFound);
    void Forget() { onFound_ = {}; }

  private:
    struct Shared;

    void Begin();
    void Take();
    void Tell(const SongFacts& facts);

    platform::WindowSystem& windows_;
    const std::string artFolder_;
    std::shared_ptr<Shared> shared_;
    Worker worker_;
    bool busy_ = false;
    long asked_ = 0;  ///< counts the songs
    std::string path_;
    Found onFound_;
};

}  // namespace veldrin
