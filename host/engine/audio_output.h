// AudioOutput is the one end of all sound for the whole run: the sound device, silence, or a WAV
// file. A device that goes is replaced by what there is, be it silence, and looked for again, so
// that whoever writes to it need not care.
//
// Frames are written on one thread; Begin and what follows it belong to that thread. All else may
// be called on any.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <span>
#include <string>

#include "host/engine/device.h"
#include "host/engine/drain.h"
#include "host/engine/engine.h"
#include "host/engine/wav_writer.h"
#include "host/engine/worker.h"

namespace veldrin {

class AudioOutput {
  public:
    /// Creates the WAV file if there is to be one; nothing else yet.
    explicit AudioOutput(const Output& choice);
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    /// Opens the sound device; GStreamer must have been started. Nothing of the writing thread is
    /// called before.
    void Start();

    bool IsFile() const { return writer_ != nullptr; }
    /// The rate of a file that has been begun, 0 for any.
    int FixedRate() const { return writer_ == nullptr ? 0 : writer_->Rate(); }
    /// The smallest rate that the output is worth: a device plays what may follow, too.
    int SmallestRate() const;
    /// What it is, for the list of parts.
    std::string Name() const;
    /// The same before it has been started, when the device is not known.
    std::string ChoiceName() const;
    /// False if the WAV file cannot be written.
    bool Ready() const { return writer_ == nullptr || writer_->Error() == 0; }
    /// Nothing more is written to a file.
    void FinishFile();
    /// What the user is to be told, once; empty if there is nothing new.
    std::string TakeNotice();
    /// Whether it is silent only for want of a device.
    bool IsSilent() const { return silent_; }
    /// Lets a Write that only lets time pass return at once.
    void Hurry() { pace_.Break(); }
    /// A new item begins: a device that goes is tried again, whatever happened before.
    void BeginItem() { isNewItem_ = true; }
    /// Has such a device looked for at once, the next time that something is written.
    void LookAgain() { looksAgain_ = true; }
    /// Whether one is being looked for, or will be.
    bool IsLooking() const { return looksAgain_ || isLooking_; }

    // The writing thread.

    /// Begins to take frames of this rate; the counting begins anew.
    void Begin(int rate);
    /// Takes frames, and returns when there is room for more.
    void Write(std::span<const float> frames);
    /// How many of these have been heard.
    std::int64_t Heard();
    /// Nothing will be written for a while.
    void Rest();
    /// How much is best written at once.
    Time Portion() const { return drain_->Portion(); }

  private:
    using Clock = std::chrono::steady_clock;
    void Look(std::unique_ptr<Drain> gone);
    void TakeFound();
    void Replace();
    void Use(std::unique_ptr<Drain> drain);
    void GoSilent(const char* reason);

    const Output choice_;
    std::unique_ptr<WavWriter> writer_;

    Pace pace_;
    std::unique_ptr<Drain> drain_ = MakeSilence(pace_);
    int rate_ = 0;                    // 0: not begun
    std::int64_t written_ = 0;        // frames, since Begin
    std::int64_t writtenBefore_ = 0;  // of them, to drains that have gone
    Clock::time_point openedAt_;
    bool isReplacement_ = false;  // of one that went in the same item
    Clock::time_point lookAt_;    // not before
    Worker looking_;
    std::shared_ptr<OpenedDevice> found_;  // of the search that is under way

    std::atomic<bool> silent_{false};
    std::atomic<bool> looksAgain_{false};
    std::atomic<bool> isNewItem_{false};
    std::atomic<bool> isLooking_{false};
    mutable std::mutex mutex_;  // guards the rest
    std::string device_;        // its description, empty if there is none
    bool noticed_ = false;      // that there is none has been said
    std::string notice_;
};

}  // namespace veldrin
