#include "host/engine/player.h"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "host/engine/tag_file.h"

namespace veldrin {

namespace {

using std::chrono::seconds;

// Calculating with the tempo may leave a position a hair short of the second that was sought.
constexpr std::chrono::milliseconds kHair(1);

/// GStreamer and its plug-ins complain to the terminal about files that are merely damaged. Their
/// messages are for those who look for faults in them, and who ask for them in the environment.
void SilenceLibraries() {
    if (g_getenv("GST_DEBUG") != nullptr || g_getenv("G_MESSAGES_DEBUG") != nullptr) {
        return;
    }
    const auto keepFatal = [](const gchar* domain, GLogLevelFlags level, const gchar* message,
                              gpointer) {
        if ((level & G_LOG_FLAG_FATAL) != 0) {
            g_log_default_handler(domain, level, message, nullptr);
        }
    };
    g_log_set_default_handler(keepFatal, nullptr);
}

int WholeSeconds(Time time) {
    return static_cast<int>(std::chrono::floor<seconds>(time).count());
}

void WriteToStandardError(const std::string& line) {
    std::fputs((line + "\n").c_str(), stderr);
}

}  // namespace

Player::Player(const Output& output, Engine::Notice notice, std::string typesFile,
               Loudness loudness)
    : notice_(notice ? std::move(notice) : Engine::Notice(&WriteToStandardError)),
      output_(output),
      typesFile_(std::move(typesFile)),
      loudness_(loudness) {
    TellNotice();
}

void Player::Prepare() {
    if (start_ != Start::kNone) {
        return;
    }
    start_ = Start::kUnderWay;
    // A few hundredths of a second that the caller can use for something else.
    starting_ = std::async(std::launch::async, [this] {
        SilenceLibraries();
        if (gst_init_check(nullptr, nullptr, nullptr) == FALSE) {
            return false;
        }
        output_.Start();
        return true;
    });
}

/// Waits until GStreamer runs; False if it cannot.
bool Player::Await() {
    Prepare();
    if (start_ == Start::kUnderWay) {
        runs_ = starting_.get();
        start_ = Start::kDone;
        types_.reset();  // what was remembered has served
        TellNotice();
    }
    return runs_ && output_.Element() != nullptr;
}

void Player::TellNotice() {
    if (const std::string notice = output_.TakeNotice(); !notice.empty()) {
        notice_(notice);
    }
}

bool Player::OutputReady() {
    const bool ready = output_.Ready();
    if (!ready) {
        TellNotice();
    }
    return ready;
}

Stream::Plan Player::PlanFor(const std::string& path, Time from) const {
    return {path, effects_, gain_, loudness_, output_.Rate(), from};
}

/// Waits for the file, and for GStreamer, which nothing is started for that is not there.
Opener::Opened Player::Opened(const std::string& path, Time from) {
    if (!opener_.Answers(path)) {
        return {};
    }
    Prepare();
    const bool started =
        start_ == Start::kDone || opener_.Await([this](std::chrono::nanoseconds longest) {
            return starting_.wait_for(longest) == std::future_status::ready;
        });
    return started && Await() ? opener_.Open(PlanFor(path, from)) : Opener::Opened();
}

/// The old stream is taken apart after the new one has begun.
void Player::Replace(std::unique_ptr<Stream> next) {
    std::swap(stream_, next);
    opener_.Dispose(std::move(next));
}

bool Player::Open(const std::string& path) {
    Opener::Opened next = Opened(path, Time(0));
    if (next.stream == nullptr) {
        return false;
    }
    if (stream_ != nullptr) {
        stream_->Release();
    }
    output_.Retry();
    next.stream->Start(output_, false);
    taggedLength_ = next.taggedLength;
    Replace(std::move(next.stream));
    path_ = path;
    paused_ = false;
    ended_ = false;
    bitRate_.reset();
    outputReplacedAt_.reset();
    return true;
}

/// Prepares the present item anew, with the effects that are now needed and the present output.
/// False also if it was stopped meanwhile.
bool Player::Restart(Time from) {
    Opener::Opened next = Opened(path_, from);
    if (next.stream == nullptr || stream_ == nullptr) {
        return false;
    }
    stream_->Release();
    next.stream->Start(output_, paused_);
    Replace(std::move(next.stream));
    return true;
}

void Player::ReplaceOutput() {
    const Time position = stream_->Position();
    stream_->Release();
    // A device that goes as soon as it has come is not tried again.
    const bool inVain = outputReplacedAt_ && position - *outputReplacedAt_ < seconds(1);
    outputReplacedAt_ = position;
    output_.Replace(inVain);
    TellNotice();
    if (!Restart(position)) {
        End(position);
    }
}

void Player::Stop() {
    opener_.Dispose(std::exchange(stream_, nullptr));
    path_.clear();
    ended_ = false;
    paused_ = false;
}

void Player::SetPaused(bool paused) {
    if (stream_ != nullptr && !ended_ && paused != paused_) {
        paused_ = paused;
        stream_->SetPaused(paused);
    }
}

void Player::Seek(int target) {
    if (stream_ != nullptr && !ended_) {
        stream_->Seek(seconds(target));
    }
}

void Player::SetGain(double gain) {
    gain_ = gain;
    if (stream_ != nullptr) {
        stream_->SetGain(gain);
    }
}

void Player::Change(int Effects::*effect, int value, int smallest, int largest) {
    effects_.*effect = std::clamp(value, smallest, largest);
    if (stream_ == nullptr || ended_) {
        return;
    }
    // Putting the time-stretching element in or out under way would need the same flush as this.
    if (effects_.Stretches() != stream_->Stretches() && CanStretch() && stream_->Seekable()) {
        stream_->Halt();
        if (Restart(stream_->Position()) || stream_ == nullptr) {
            return;
        }
        stream_->SetPaused(paused_);
    }
    stream_->Apply(effects_);
}

bool Player::IsPlaying() {
    if (opener_.IsWaiting()) {
        return true;
    }
    if (stream_ == nullptr || ended_) {
        return false;
    }
    switch (stream_->Poll(output_)) {
        case Stream::Event::kEnded:
            End(seconds(Length()));
            break;
        case Stream::Event::kFailed:
            End(stream_->Position());
            break;
        case Stream::Event::kOutputFailed:
            ReplaceOutput();
            break;
        case Stream::Event::kNothing:
            break;
    }
    return !ended_;
}

void Player::End(Time position) {
    ended_ = true;
    endedAt_ = position;
}

int Player::Position() {
    if (stream_ == nullptr) {
        return 0;
    }
    const bool plays =
        IsPlaying() && !ended_;  // while a file is being opened it always answers True
    return WholeSeconds((plays ? stream_->Position() : endedAt_) + kHair);
}

Time Player::ExactLength() const {
    if (stream_ == nullptr) {
        return Time(0);
    }
    return taggedLength_ > Time(0) ? taggedLength_ : stream_->Length();
}

int Player::Length() const {
    const Time length = ExactLength();
    return length > Time(0) ? std::max(1, WholeSeconds(length + std::chrono::milliseconds(500)))
                            : 0;
}

std::string Player::BitRateText() {
    if (stream_ == nullptr) {
        return {};
    }
    if (!bitRate_) {
        bitRate_ = ReadSoundFacts(path_).bitRate;
        struct stat status {};
        const double length = std::chrono::duration<double>(ExactLength()).count();
        if (*bitRate_ == 0 && length > 0 && stat(path_.c_str(), &status) == 0) {
            bitRate_ = static_cast<int>(
                std::lround(static_cast<double>(status.st_size) * 8.0 / 1000.0 / length));
        }
    }
    return std::to_string(*bitRate_);
}

std::string Player::OutputName() const {
    return start_ == Start::kDone ? output_.Name() : output_.ChoiceName();
}

const SupportedTypes& Player::Types() {
    if (!types_ && start_ != Start::kDone) {
        types_ = SupportedTypes::Remembered(typesFile_);
    }
    if (!types_) {
        Await();
        types_ = runs_ ? SupportedTypes::Installed() : SupportedTypes();
        if (runs_) {
            types_->Remember(typesFile_);
        }
    }
    return *types_;
}

}  // namespace veldrin
