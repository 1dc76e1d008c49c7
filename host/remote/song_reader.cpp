#include "host/remote/song_reader.h"

#include <sys/eventfd.h>

#include <mutex>
#include <utility>

#include "host/engine/tag_picture.h"
#include "host/remote/art_folder.h"

namespace veldrin {
namespace {

/// Reading is done within two seconds, unless the file is where nobody answers.
constexpr platform::Millis kPatience = 3000;

SongFacts FactsOf(const std::string& path, const std::string& artFolder) {
    SongFacts facts;
    facts.names = ReadNames(path);
    if (!artFolder.empty()) {
        facts.picture = KeepPicture(artFolder, ReadPicture(path)).value_or("");
    }
    return facts;
}

}  // namespace

/// What both threads hold.
struct SongReader::Shared {
    std::mutex mutex;
    Descriptor done{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    long number = 0;  ///< which song the facts are of
    SongFacts facts;
};

SongReader::SongReader(platform::WindowSystem& windows, std::string artFolder)
    : windows_(windows), artFolder_(std::move(artFolder)), shared_(std::make_shared<Shared>()) {
    windows_.GetDriver().Watch(shared_->done.Number(), [this] {
        eventfd_t count = 0;
        eventfd_read(shared_->done.Number(), &count);
        windows_.Schedule(0, [this] { Take(); });
    });
}

SongReader::~SongReader() {
    windows_.GetDriver().Watch(shared_->done.Number(), {});
}

void SongReader::Read(const std::string& path, Found onFound) {
    path_ = path;
    onFound_ = std::move(onFound);
    windows_.Schedule(kPatience, [this, number = ++asked_] {
        if (number == asked_) {
            busy_ = false;
            Tell({});
        }
    });
    if (!busy_) {
        Begin();
    }
}

void SongReader::Begin() {
    busy_ = true;
    worker_.Begin([shared = shared_, number = asked_, path = path_, folder = artFolder_] {
        SongFacts facts = FactsOf(path, folder);
        const std::lock_guard lock(shared->mutex);
        shared->number = number;
        shared->facts = std::move(facts);
        eventfd_write(shared->done.Number(), 1);
    });
}

void SongReader::Take() {
    busy_ = false;
    std::optional<SongFacts> facts;
    {
        const std::lock_guard lock(shared_->mutex);
        if (shared_->number == asked_) {
            facts = std::exchange(shared_->facts, {});
        }
    }
    if (facts) {
        Tell(*facts);
    } else if (onFound_) {
        Begin();  // another song has been asked for meanwhile
    }
}

void SongReader::Tell(const SongFacts& facts) {
    if (const Found found = std::exchange(onFound_, {})) {
        found(facts);
    }
}

}  // namespace veldrin
