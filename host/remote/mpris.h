// The player on the session's bus, as the desktop's controls, media keys and scripts meet it: the
// object /org/mpris/MediaPlayer2. What is asked there is done by Remote, when no file is being
// opened; what changes, whoever has changed it, is told when the main loop has turned.
//
// Tags and pictures are read only once somebody has asked for a property of the player, and an
// item is told when they are known.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/remote.h"
#include "host/engine/engine.h"
#include "host/remote/song_reader.h"
#include "platform/desktop/session_bus.h"
#include "platform/windows/window_system.h"

namespace veldrin {

/// What is told of the player but for the item itself; cheap to take and to compare.
struct PlayerView {
    sarnel::PlaybackState state = sarnel::PlaybackState::kStopped;
    bool repeatsItem = false;
    bool repeatsList = false;
    bool random = false;
    platform::Long volume = 0;
    platform::Long tempo = 0;
    bool canPlay = false;
    bool canGoNext = false;
    bool canGoPrevious = false;
    bool canSeek = false;
    std::uint64_t item = 0;  ///< the number of the item that is told; 0 is none
    bool operator==(const PlayerView&) const = default;
};

PlayerView ViewOf(const sarnel::Remote& remote);

class Mpris {
  public:
    /// What it tells of and steers; all of it outlives it.
    struct Player {
        platform::SessionBus& bus;
        platform::WindowSystem& windows;
        sarnel::Remote remote;
        Engine& engine;
        /// Does it at once, or when no file is being opened any more; of those with the same name
        /// that would have to wait only the first. Answers whether it will be done.
        std::function<bool(const std::string& name, std::function<void()> work)> whenFree;
        std::function<void()> raise;
        std::function<void()> quit;
        std::function<void(const std::string& path)> open;
        /// Empty: nothing is announced. Else it is told of items that have begun.
        std::function<void(const std::string& title, const SongFacts& facts)> announce;
    };

    /// `artFolder`: for pictures; empty for none.
    Mpris(Player player, std::string artFolder);
    ~Mpris() { End(); }
    Mpris(const Mpris&) = delete;
    Mpris& operator=(const Mpris&) = delete;

    /// The player is gone from the bus, and nothing is asked of anybody any more.
    void End();

    /// A file has been opened. From within the impulse.
    void ItemOpened(const std::string& path);
    /// The position has jumped to that second. From within the impulse.
    void Sought(int seconds);
    /// A turn of the main loop is over.
    void Turn();

  private:
    struct Item {
        std::uint64_t number = 0;  ///< of all that were; 0 is none
        std::string path;
        std::string title;  ///< of its row
        SongFacts facts;
    };

    void Note(platform::BusCall call);
    void Work();
    void Deal(const platform::BusCall& call);
    void AnswerGet(const platform::BusCall& call);
    void AnswerGetAll(const platform::BusCall& call);
    void Set(const platform::BusCall& call);
    bool Write(const std::string& name, const platform::BusValue& value);
    void Do(const platform::BusCall& call);
    bool Command(const std::string& member);
    void Seek(std::int64_t offset);
    void SetPosition(const std::string& item, std::int64_t position);
    bool Open(const std::string& address);

    void LookAtRow();
    void Begin(Item item);
    void Complete(const SongFacts& facts);
    void Tell();
    void WantFacts();
    void Update();
    platform::BusTable PlayerProperties() const;
    platform::BusTable Metadata() const;
    std::int64_t Position() const;

    Player player_;
    SongReader reader_;
    bool isReady_ = false;
    bool hasEnded_ = false;
    bool factsWanted_ = false;                ///< somebody has asked
    std::vector<platform::BusCall> calls_;    ///< not dealt with yet
    std::vector<platform::BusCall> waiting_;  ///< for the item that is to be told
    Item told_;
    Item next_;  ///< in its place once its facts are known; number 0 is none
    std::uint64_t lastNumber_ = 0;
    platform::Long row_ = -1;
    std::uint64_t changes_ = 0;  ///< of the list, when its row was looked at
    bool wasStopped_ = false;
    PlayerView view_;
    SongFacts saidFacts_;
    platform::BusTable said_;  ///< the properties as all know them
};

}  // namespace veldrin
