#include "host/engine/engine.h"

#include <taglib/taglib.h>

#include <algorithm>
#include <utility>

#include "host/engine/player.h"
#include "host/engine/time_text.h"

namespace veldrin {

Engine::Engine(const Output& output, Notice notice, std::string typesFile, Loudness loudness)
    : player_(std::make_unique<Player>(output, std::move(notice), std::move(typesFile), loudness)) {
}
Engine::~Engine() = default;

void Engine::Prepare() {
    player_->Prepare();
}

bool Engine::LearnTypes(std::function<void()> onLearnt) {
    return player_->LearnTypes(std::move(onLearnt));
}

bool Engine::OutputReady() {
    return player_->OutputReady();
}
void Engine::WaitBy(Wait wait) {
    player_->WaitBy(std::move(wait));
}
void Engine::FinishOutput() {
    player_->FinishOutput();
}
bool Engine::Open(const std::string& path) {
    return player_->Open(path);
}
void Engine::Pause() {
    player_->SetPaused(true);
}
void Engine::Toggle() {
    player_->SetPaused(!player_->IsPaused());
}
void Engine::Stop() {
    player_->Stop();
}
void Engine::Seek(int target) {
    player_->Seek(target);
}
int Engine::Position() {
    return player_->Position();
}
int Engine::Length() {
    return player_->Length();
}

void Engine::SetVolume(int volume) {
    const double share = std::clamp(volume, 0, 100) / 100.0;
    player_->SetGain(share * share * share);
}

bool Engine::IsPlaying() {
    return player_->IsPlaying();
}
bool Engine::IsPaused() const {
    return player_->IsPaused();
}

std::string Engine::PlayedText() {
    return MinutesAndSeconds(Position());
}
std::string Engine::RemainingText() {
    return std::string("-").append(MinutesAndSeconds(std::max(0, Length() - Position())));
}
std::string Engine::LengthText() {
    return MinutesAndSeconds(Length());
}
int Engine::SampleRate() {
    return player_->SampleRate();
}
int Engine::Channels() {
    return player_->Channels();
}
std::string Engine::BitRateText() {
    return player_->BitRateText();
}

void Engine::SetTempo(int percent) {
    player_->Change(&Effects::tempo, percent, -50, 50);
}
void Engine::SetPitch(int semitones) {
    player_->Change(&Effects::pitch, semitones, -20, 20);
}
void Engine::SetEcho(int step) {
    player_->Change(&Effects::echo, step, 0, 6);
}
void Engine::SetReverb(int step) {
    player_->Change(&Effects::reverb, step, 0, 20);
}
void Engine::SetBass(int decibels) {
    player_->Change(&Effects::bass, decibels, -15, 15);
}
void Engine::SetMid(int decibels) {
    player_->Change(&Effects::mid, decibels, -15, 15);
}
void Engine::SetTreble(int decibels) {
    player_->Change(&Effects::treble, decibels, -15, 15);
}

std::vector<std::string> Engine::Parts() {
    const std::string output = player_->OutputName();
    guint major = 0;
    guint minor = 0;
    guint micro = 0;
    guint nano = 0;
    gst_version(&major, &minor, &micro, &nano);
    const auto version = [](auto one, auto two, auto three) {
        return std::to_string(one) + "." + std::to_string(two) + "." + std::to_string(three);
    };
    std::vector<std::string> parts = {
        "Audio engine: GStreamer " + version(major, minor, micro),
        "Tags: TagLib " + version(TAGLIB_MAJOR_VERSION, TAGLIB_MINOR_VERSION, TAGLIB_PATCH_VERSION),
        "Output: " + output};
    if (const Loudness loudness = player_->LoudnessAsked(); loudness != Loudness::kOff) {
        parts.emplace_back(loudness == Loudness::kTrack ? "Loudness: by track"
                                                        : "Loudness: by album");
    }
    return parts;
}

std::string Engine::FileTypes() {
    return player_->Types().Patterns();
}
bool Engine::Supports(const std::string& path) {
    return player_->Types().Supports(path);
}

}  // namespace veldrin

#ifdef __SANITIZE_ADDRESS__
// GLib gives its first table of names up for lost when it needs a larger one, in every program. Its
// allocations cannot be told apart here, as it is built without frame pointers.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libglib-2.0.so\n";
}
#endif
