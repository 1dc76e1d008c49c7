// What the player tells of itself on the bus, and when.
#include "host/remote/mpris.h"

#include <unistd.h>

#include <algorithm>
#include <thread>
#include <utility>

#include "host/engine/stragglers.h"
#include "host/remote/mpris_names.h"
#include "platform/base/signals_held.h"
#include "platform/base/text.h"
#include "platform/files/file_address.h"

namespace veldrin {

using namespace platform;
using sarnel::PlaybackState;

namespace {

const char* StatusName(PlaybackState state) {
    return state == PlaybackState::kPlaying  ? "Playing"
           : state == PlaybackState::kPaused ? "Paused"
                                             : "Stopped";
}

const char* LoopName(const PlayerView& view) {
    return view.repeatsItem ? "Track" : view.repeatsList ? "Playlist" : "None";
}

/// A row's title, or the name of its file where that is no more than the path. Long enough for
/// people; it can be of any length.
std::string TitleOf(const sarnel::Remote& remote, Long row) {
    constexpr std::size_t kLongest = 1000;
    std::u16string title = remote.RowTitle(row);
    if (title == remote.RowPath(row)) {
        title.erase(0, title.rfind(u'/') + 1);
    }
    return Narrow(title.substr(0, kLongest));
}

void RunElsewhere(const std::function<void()>& work) {
    const SignalsHeld held;
    std::thread([work, straggler = Straggler()] { work(); }).detach();
}

}  // namespace

PlayerView ViewOf(const sarnel::Remote& remote) {
    PlayerView view;
    view.state = remote.State();
    view.repeatsItem = remote.RepeatItem();
    view.repeatsList = remote.RepeatList();
    view.random = remote.Random();
    view.volume = remote.Volume();
    view.tempo = remote.Tempo();
    const Long current = remote.ListCurrent();
    const Long last = remote.ListCount() - 1;
    const bool isRow = current >= 0 && current <= last;
    const bool anyRow = last >= 0 && (view.random || view.repeatsList);
    view.canPlay = isRow || view.state != PlaybackState::kStopped;
    view.canGoNext = view.repeatsItem ? isRow : anyRow || (isRow && current < last);
    view.canGoPrevious = view.repeatsItem ? isRow : anyRow || (isRow && current > 0);
    view.canSeek = remote.CanSeek();
    return view;
}

Mpris::Mpris(Player player, std::string artFolder)
    : player_(std::move(player)), reader_(player_.windows, std::move(artFolder)) {
    factsWanted_ = player_.announce != nullptr;
    player_.bus.Begin({kMprisName,
                       kMprisPath,
                       {kMprisRoot, kMprisPlayer},
                       kMprisMembers,
                       [this](BusCall call) { Note(std::move(call)); },
                       [this] { isReady_ = true; },
                       RunElsewhere});
}

void Mpris::End() {
    if (!std::exchange(hasEnded_, true)) {
        reader_.Forget();
        player_.bus.End();
    }
}

void Mpris::ItemOpened(const std::string& path) {
    const Long row = player_.remote.ListCurrent();
    const bool isSameRow = row == std::exchange(row_, row);
    const Item& latest = next_.number != 0 ? next_ : told_;
    if (isSameRow && latest.number != 0 && latest.path == path) {
        Sought(0);
        return;
    }
    Begin({++lastNumber_, path, TitleOf(player_.remote, row), {}});
}

void Mpris::Sought(int seconds) {
    if (isReady_) {
        player_.windows.Schedule(0, [this, seconds] {
            if (!hasEnded_) {
                player_.bus.Signal(kMprisPlayer, "Seeked", {{seconds * kSecond}});
            }
        });
    }
}

void Mpris::Turn() {
    if (isReady_ && !hasEnded_) {
        Update();
    }
}

/// What plays is known by its opening; at rest the current row is what would be played.
void Mpris::LookAtRow() {
    row_ = player_.remote.ListCurrent();
    const bool isStopped = player_.remote.State() == PlaybackState::kStopped;
    const std::uint64_t changes = player_.remote.Changes();
    const bool isAsBefore = isStopped == std::exchange(wasStopped_, isStopped) &&
                            changes == std::exchange(changes_, changes);
    if (!isStopped || isAsBefore) {
        return;
    }
    const std::string path = Narrow(player_.remote.RowPath(row_));
    if (path != (next_.number != 0 ? next_ : told_).path) {
        Begin({path.empty() ? 0 : ++lastNumber_, path, TitleOf(player_.remote, row_), {}});
    }
}

void Mpris::Begin(Item item) {
    if (hasEnded_) {
        return;
    }
    next_ = std::move(item);
    if (factsWanted_ && next_.number != 0) {
        reader_.Read(next_.path, [this](const SongFacts& facts) { Complete(facts); });
        return;
    }
    reader_.Forget();
    told_ = std::exchange(next_, {});
    player_.windows.Schedule(0, [this] { Tell(); });
}

/// The item that is to be told is known.
void Mpris::Tell() {
    for (const BusCall& call : std::exchange(waiting_, {})) {
        if (!hasEnded_) {
            Deal(call);
        }
    }
    Turn();
}

void Mpris::Complete(const SongFacts& facts) {
    if (next_.number != 0) {
        told_ = std::exchange(next_, {});
    }
    told_.facts = facts;
    Tell();
    if (player_.announce && view_.state == PlaybackState::kPlaying) {
        player_.announce(facts.names.title.empty() ? told_.title : facts.names.title, facts);
    }
}

/// Somebody asks for the first time: the present item is read now.
void Mpris::WantFacts() {
    if (!std::exchange(factsWanted_, true) && told_.number != 0) {
        next_ = told_;
        reader_.Read(next_.path, [this](const SongFacts& facts) { Complete(facts); });
    }
}

void Mpris::Update() {
    LookAtRow();
    PlayerView view = ViewOf(player_.remote);
    view.item = told_.number;
    if (view == view_ && told_.facts == saidFacts_ && !said_.empty()) {
        return;
    }
    view_ = view;
    saidFacts_ = told_.facts;
    BusTable now = PlayerProperties();
    BusTable changed;
    for (const BusEntry& entry : now) {
        if (std::find(said_.begin(), said_.end(), entry) == said_.end()) {
            changed.push_back(entry);
        }
    }
    const bool isFirst = std::exchange(said_, std::move(now)).empty();
    if (!changed.empty() && !isFirst) {
        player_.bus.Signal(kPropertiesInterface, "PropertiesChanged",
                           {{std::string(kMprisPlayer)}, {std::move(changed)}, {BusTexts()}});
    }
}

BusTable Mpris::PlayerProperties() const {
    constexpr double kHundred = 100;
    return {
        {"PlaybackStatus", {std::string(StatusName(view_.state))}},
        {"LoopStatus", {std::string(LoopName(view_))}},
        {"Rate", {1 + view_.tempo / kHundred}},
        {"Shuffle", {view_.random}},
        {"Metadata", {Metadata()}},
        {"Volume", {view_.volume / kHundred}},
        {"MinimumRate", {0.5}},
        {"MaximumRate", {1.5}},
        {"CanGoNext", {view_.canGoNext}},
        {"CanGoPrevious", {view_.canGoPrevious}},
        {"CanPlay", {view_.canPlay}},
        {"CanPause", {view_.canPlay}},
        {"CanSeek", {view_.canSeek}},
        {"CanControl", {true}},
    };
}

BusTable Mpris::Metadata() const {
    BusTable table = {{"mpris:trackid", {BusPath{ItemPath(told_.number)}}}};
    if (told_.number == 0) {
        return table;
    }
    const NamesInTags& names = told_.facts.names;
    const int length = view_.state == PlaybackState::kStopped ? 0 : player_.engine.Length();
    if (length > 0) {
        table.push_back({"mpris:length", {length * kSecond}});
    }
    table.push_back({"xesam:title", {names.title.empty() ? told_.title : names.title}});
    if (!names.artist.empty()) {
        table.push_back({"xesam:artist", {BusTexts{names.artist}}});
    }
    if (!names.album.empty()) {
        table.push_back({"xesam:album", {names.album}});
    }
    table.push_back({"xesam:url", {AddressOfPath(told_.path)}});
    if (!told_.facts.picture.empty()) {
        table.push_back({"mpris:artUrl", {AddressOfPath(told_.facts.picture)}});
    }
    return table;
}

std::int64_t Mpris::Position() const {
    return view_.state == PlaybackState::kStopped ? 0 : player_.engine.Position() * kSecond;
}

}  // namespace veldrin
