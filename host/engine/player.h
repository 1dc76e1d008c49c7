// Player is what stands behind Engine's interface: the output, the settings that outlive an item,
// and the stream of the present one, if any. Its members are those of the engine and keep their
// promises.
#pragma once

#include <future>
#include <memory>
#include <optional>
#include <string>

#include "host/engine/audio_output.h"
#include "host/engine/effects.h"
#include "host/engine/engine.h"
#include "host/engine/file_types.h"
#include "host/engine/opener.h"
#include "host/engine/stream.h"

namespace veldrin {

class Player {
  public:
    Player(const Output& output, Engine::Notice notice, std::string typesFile, Loudness loudness);
    ~Player() { Stop(); }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void Prepare();
    bool OutputReady();
    void WaitBy(Engine::Wait wait) { opener_.WaitBy(std::move(wait)); }
    void FinishOutput() { output_.Finish(); }
    bool Open(const std::string& path);
    void Stop();
    void SetPaused(bool paused);
    void Seek(int target);
    void SetGain(double gain);
    void Change(int Effects::*effect, int value, int smallest, int largest);

    bool IsPlaying();
    bool IsPaused() const { return stream_ != nullptr && !ended_ && paused_; }
    /// In whole seconds, as the engine tells them.
    int Position();
    int Length() const;
    int FormatNumber(const char* name) const {
        return stream_ == nullptr ? 0 : stream_->FormatNumber(name);
    }
    std::string BitRateText();
    std::string OutputName() const;
    const SupportedTypes& Types();
    Loudness LoudnessAsked() const { return loudness_; }

  private:
    bool Await();
    void TellNotice();
    Opener::Opened Opened(const std::string& path, Time from);
    void Replace(std::unique_ptr<Stream> next);
    bool Restart(Time from);
    void ReplaceOutput();
    void End(Time position);
    Time ExactLength() const;
    Stream::Plan PlanFor(const std::string& path, Time from) const;

    Engine::Notice notice_;
    AudioOutput output_;
    enum class Start { kNone, kUnderWay, kDone };
    Start start_ = Start::kNone;
    std::future<bool> starting_;  // of kUnderWay, when output_ belongs to another thread
    bool runs_ = false;           // of kDone: GStreamer could be started
    const std::string typesFile_;
    const Loudness loudness_;
    std::optional<SupportedTypes> types_;

    Effects effects_;
    double gain_ = 1.0;

    Opener opener_;
    std::unique_ptr<Stream> stream_;
    std::string path_;  // of the stream
    Time taggedLength_{0};
    std::optional<int> bitRate_;            // kbit/s, once asked for
    std::optional<Time> outputReplacedAt_;  // in this item
    bool paused_ = false;
    bool ended_ = false;
    Time endedAt_{0};
};

}  // namespace veldrin
