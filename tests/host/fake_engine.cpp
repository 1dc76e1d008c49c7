// Stands in for the real engine and tag reader when the host object is tested: linked in their
// place. What is done to it goes out as notices, "SetTempo -7"; each of its answers is a different
// one. What an item is like, its name tells: "dead" cannot be opened, "over" has ended as soon as
// it was opened.
#include "host/engine/engine.h"
#include "host/engine/tags.h"

namespace veldrin {

class Player {
  public:
    explicit Player(Engine::Notice notice) : notice_(std::move(notice)) {}
    void Note(const char* what) { notice_(what); }
    void Note(const char* what, int value) { notice_(what + (" " + std::to_string(value))); }
    bool Open(const std::string& path) {
        notice_("Open " + path);
        plays_ = path.find("over") == std::string::npos;
        return path.find("dead") == std::string::npos;
    }
    void Stop() {
        Note("Stop");
        plays_ = false;
    }
    bool Plays() const { return plays_; }

  private:
    Engine::Notice notice_;
    bool plays_ = false;
};

Engine::Engine(const Output&, Notice notice, std::string, Loudness)
    : player_(std::make_unique<Player>(std::move(notice))) {}
Engine::~Engine() = default;

bool Engine::Open(const std::string& path) {
    return player_->Open(path);
}
void Engine::Pause() {
    player_->Note("Pause");
}
void Engine::Toggle() {
    player_->Note("Toggle");
}
void Engine::Stop() {
    player_->Stop();
}
void Engine::Seek(int seconds) {
    player_->Note("Seek", seconds);
}
void Engine::SetVolume(int volume) {
    player_->Note("SetVolume", volume);
}
void Engine::SetTempo(int percent) {
    player_->Note("SetTempo", percent);
}
void Engine::SetPitch(int semitones) {
    player_->Note("SetPitch", semitones);
}
void Engine::SetEcho(int step) {
    player_->Note("SetEcho", step);
}
void Engine::SetReverb(int step) {
    player_->Note("SetReverb", step);
}
void Engine::SetBass(int decibels) {
    player_->Note("SetBass", decibels);
}
void Engine::SetMid(int decibels) {
    player_->Note("SetMid", decibels);
}
void Engine::SetTreble(int decibels) {
    player_->Note("SetTreble", decibels);
}

bool Engine::IsPlaying() {
    return player_->Plays();
}
int Engine::Position() {
    return 11;
}
int Engine::Length() {
    return 222;
}
std::string Engine::PlayedText() {
    return "0:11";
}
std::string Engine::RemainingText() {
    return "-3:31";
}
std::string Engine::LengthText() {
    return "3:42";
}
int Engine::SampleRate() {
    return 48000;
}
int Engine::Channels() {
    return 6;
}
std::string Engine::BitRateText() {
    return "320";
}
std::vector<std::string> Engine::Parts() {
    return {"engine", "tags", "\xC3\xA9 output"};
}
std::string Engine::FileTypes() {
    return "*.aa;*.bb";
}
bool Engine::Supports(const std::string& path) {
    return path == "b\xE9.aa";
}

class TagPrefetcher {};

TagReader::TagReader() = default;
TagReader::~TagReader() = default;

std::string TagReader::Title(const std::string& path, const std::string& fallbackName) {
    return "title of " + path + " else " + fallbackName;
}
std::string TagReader::Info(const std::string& path) const {
    return "info of " + path;
}

}  // namespace veldrin
