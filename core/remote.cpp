#include "core/remote.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "core/ambrisor.h"
#include "core/base/failure.h"
#include "core/base/impulses.h"
#include "core/base/impulsevalue.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "menus/commandmenu.h"
#include "playback/mPlayback.h"
#include "skin/skin.h"

namespace sarnel {

namespace {

// Behind a call into the host only App() may be used: the host may have destroyed the component.
PlaybackState StateNow() {
    if (App().Playing) {
        return PlaybackState::kPlaying;
    }
    if (App().Main().sldSkin(kPositionSlider).Enabled()) {
        return PlaybackState::kPaused;
    }
    // Playing means that the component follows an item. One without a length plays unfollowed: then
    // the host is asked.
    return Ask(ImpulseIsPlaying, false) ? PlaybackState::kPlaying : PlaybackState::kStopped;
}

}  // namespace

Remote::Remote(Ambrisor& component) : run_(component.program_) {}

// None once the component has died, nor ever for one that was made while another was alive.
std::shared_ptr<Program> Remote::Run() const {
    std::shared_ptr<Program> run = run_.lock();
    assert(run != nullptr && !run->IsOver && "the component has died");
    return run != nullptr && IsRunning(*run) ? run : nullptr;
}

frmMAIN* Remote::Main() const {
    const auto run = Run();
    frmMAIN* const main = run != nullptr ? run->ExistingMain() : nullptr;
    return main != nullptr && main->IsLoaded() ? main : nullptr;
}

JList* Remote::List() const {
    frmMAIN* const main = Main();
    return main != nullptr ? &main->lstPlaylist : nullptr;
}

template <class Action>
void Remote::Do(Action action) {
    if (IsLoaded()) {
        const platform::WindowSystem::Dispatching dispatching(App().windows);
        Step(action);
    }
}

platform::Long Remote::ListCount() const {
    const JList* const list = List();
    return list != nullptr ? list->ListCount() : 0;
}

platform::Long Remote::ListCurrent() const {
    const JList* const list = List();
    return list != nullptr ? list->ListCurrent() : -1;
}

std::u16string Remote::RowTitle(Long row) const {
    const JList* const list = List();
    return list != nullptr ? list->List(row) : std::u16string();
}

std::u16string Remote::RowPath(Long row) const {
    const JList* const list = List();
    return list != nullptr ? list->ListData(row) : std::u16string();
}

std::uint64_t Remote::Changes() const {
    const JList* const list = List();
    return list != nullptr ? list->Changes() : 0;
}

void Remote::OnNextChange(std::function<void()> observer) {
    if (JList* const list = List()) {
        list->OnNextChange(std::move(observer));
    }
}

ListCopy Remote::CopyList() const {
    const JList* const list = List();
    return list != nullptr ? list->Copy() : ListCopy(0, -1);
}

// IndexForKey takes a text that is a number as an item's place. Here it would be a wrong key.
bool Remote::HasCommand(std::u16string_view key) const {
    const frmMAIN* const main = Main();
    return main != nullptr && main->hMenu != nullptr && !key.empty() && !TextToLong(key) &&
           main->hMenu->IndexForKey(key) > 0;
}

void Remote::RunCommand(std::u16string_view key) {
    if (HasCommand(key)) {
        Do([key] { RunMenuCommand(key); });
    }
}

void Remote::FileTypesChanged() {
    Do(ShowFileTypes);
}

PlaybackState Remote::State() const {
    PlaybackState state = PlaybackState::kStopped;
    if (IsLoaded()) {
        Step([&] { state = StateNow(); });
    }
    return state;
}

void Remote::Play() {
    Do([] {
        const PlaybackState state = StateNow();
        if (state == PlaybackState::kStopped) {
            PlayCurrentItem();
        } else if (state == PlaybackState::kPaused) {
            TogglePlayback();
        }
    });
}

void Remote::Pause() {
    Do([] {
        if (App().Playing) {
            TogglePlayback();
        } else if (StateNow() == PlaybackState::kPlaying) {
            SuspendPlayback();
        }
    });
}

void Remote::PlayPause() {
    Do([] {
        if (StateNow() == PlaybackState::kStopped) {
            PlayCurrentItem();
        } else {
            TogglePlayback();
        }
    });
}

void Remote::Stop() {
    Do(StopPlayback);
}

void Remote::Next() {
    Do(NextItem);
}

void Remote::Previous() {
    Do(PreviousItem);
}

Long Remote::Volume() const {
    const frmMAIN* const main = Main();
    return main != nullptr ? main->sldSkin(kVolumeSlider).Value() : 0;
}

void Remote::Volume(Long value) {
    Do([value] { SetVolume(value); });
}

bool Remote::CanSeek() const {
    const frmMAIN* const main = Main();
    return main != nullptr && main->sldSkin(kPositionSlider).Enabled();
}

Long Remote::Position() const {
    return CanSeek() ? Main()->sldSkin(kPositionSlider).Value() : 0;
}

void Remote::Position(Long seconds) {
    if (CanSeek() && !Main()->sldSkin(kPositionSlider).IsSliderMouseControled()) {
        Do([seconds] { SetPosition(seconds); });
    }
}

Long Remote::Tempo() const {
    const frmMAIN* const main = Main();
    return main != nullptr ? main->sldSkin(kTempoSlider).Value() - settings::kEffectTempo.initial
                           : 0;
}

void Remote::Tempo(Long percent) {
    Do([percent] {
        constexpr Long kMost = 50;
        JSlider& slider = App().Main().sldSkin(kTempoSlider);
        slider.Value(std::clamp(percent, -kMost, kMost) + settings::kEffectTempo.initial);
        SetTempo(slider.Value());
    });
}

bool Remote::Random() const {
    const auto run = Run();
    return run != nullptr && run->Random;
}

void Remote::Random(bool on) {
    Do([on] { SetRandom(on); });
}

bool Remote::RepeatItem() const {
    const auto run = Run();
    return run != nullptr && run->RepeatItem;
}

void Remote::RepeatItem(bool on) {
    Do([on] { SetRepeatItem(on); });
}

bool Remote::RepeatList() const {
    const auto run = Run();
    return run != nullptr && run->RepeatList;
}

void Remote::RepeatList(bool on) {
    Do([on] { SetRepeatList(on); });
}

bool Remote::PlayAtStartup() const {
    const auto run = Run();
    return run != nullptr && run->PlayAtStartup;
}

}  // namespace sarnel
