// Player is what stands behind Engine's interface: the output, the settings that outlive an item,
// and the present item, if any. Its members are those of the engine and keep their promises.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/engine/audio_output.h"
#include "host/engine/disposal.h"
#include "host/engine/effects.h"
#include "host/engine/engine.h"
#include "host/engine/file_types.h"
#include "host/engine/opener.h"
#include "host/engine/sound_line.h"
#include "host/engine/worker.h"

namespace veldrin {

class Player {
  public:
    Player(const Output& output, Engine::Notice notice, std::string typesFile, Loudness loudness);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void Prepare() { Begin({}); }
    bool LearnTypes(std::function<void()> onLearnt);
    bool OutputReady();
    void WaitBy(Engine::Wait wait) { opener_.WaitBy(std::move(wait)); }
    void FinishOutput();
    bool Open(const std::string& path);
    void Stop();
    void SetPaused(bool paused);
    void Seek(int target);
    void SetGain(double gain);
    void Change(int Effects::*effect, int value, int smallest, int largest);

    bool IsPlaying();
    bool IsPaused() const { return item_ != nullptr && !ended_ && paused_; }
    /// In whole seconds, as the engine tells them.
    int Position();
    int Length() const;
    int SampleRate() const { return item_ == nullptr ? 0 : item_->MediumRate(); }
    int Channels() const { return item_ == nullptr ? 0 : item_->MediumChannels(); }
    std::string BitRateText();
    std::string OutputName() const;
    const SupportedTypes& Types();
    Loudness LoudnessAsked() const { return loudness_; }

  private:
    struct FileFacts;
    struct Started;
    void Begin(std::function<void()> onStarted);
    bool IsStarting() const;
    bool Await();
    void TellNotice();
    void RecallTypes();
    Opener::Opened Opened(const std::string& path);
    void LookForDevice();
    void ReadFacts(const std::string& path);
    void HearTail();
    bool IsLetGo() const;
    Time ExactPosition();
    Time ExactLength() const;

    Engine::Notice notice_;
    const std::shared_ptr<AudioOutput> output_;
    enum class Start { kNone, kUnderWay, kDone };
    Start start_ = Start::kNone;
    Worker starting_;  // of kUnderWay, when output_ belongs to another thread
    std::shared_ptr<Started> started_;
    bool runs_ = false;  // of kDone: GStreamer could be started
    const std::string typesFile_;
    const Loudness loudness_;
    std::optional<SupportedTypes> types_;
    std::optional<SupportedTypes> anyTypes_;  // for as long as they are being learnt

    Effects effects_;
    double gain_ = 1.0;

    Opener opener_;
    const std::shared_ptr<Disposal> disposal_ = std::make_shared<Disposal>();
    Worker jumping_;
    Worker readingFacts_;
    std::optional<SoundLine> line_;  // as soon as GStreamer runs

    std::shared_ptr<Item> item_;
    std::uint64_t number_ = 0;  // of the item, in the line
    Timeline::Place heard_;     // when it was last asked for
    Time taggedLength_{0};
    std::shared_ptr<FileFacts> facts_;
    bool paused_ = false;
    bool ended_ = false;  // it has been told that it no longer plays
    bool tail_ = false;   // what is still heard is the end of an item that was let go like that
};

}  // namespace veldrin
