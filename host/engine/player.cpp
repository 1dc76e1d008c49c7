#include "host/engine/player.h"

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <utility>

#include "host/engine/tag_file.h"

namespace veldrin {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Calculating with the tempo may leave a position a hair short of the second that was sought.
constexpr milliseconds kHair(1);
constexpr milliseconds kCorrection(200);

// An item no longer plays when what is still to be heard of it is no longer than this: whoever asks
// twenty times a second then has time to open the next one, so that it is joined without a gap. The
// title changes that much early.
constexpr milliseconds kLead(250);
// So much of it must be ours, however much the device holds: else there is no time left.
constexpr milliseconds kLeastLead(150);

// The end of the engine waits for the end of the music, but not for a device that does not go on.
constexpr milliseconds kTailAtMost(1500);
constexpr milliseconds kFadeAtMost(200);
// Nobody may be held up for longer while something plays.
constexpr milliseconds kUnheard(40);
constexpr milliseconds kDeviceSoon(300);
/// For what is waited for without an end.
constexpr std::chrono::hours kSomeTime(1);

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

/// What the thread that starts GStreamer has to say.
struct Player::Started {
    std::atomic<bool> over = false;
    std::atomic<bool> runs = false;
};

/// What another thread reads of the present item's file.
struct Player::FileFacts {
    int bitRate = 0;  // kbit/s; 0: the tags do not say
    std::uintmax_t size = 0;
};

Player::Player(const Output& output, Engine::Notice notice, std::string typesFile,
               Loudness loudness)
    : notice_(notice ? std::move(notice) : Engine::Notice(&WriteToStandardError)),
      output_(std::make_shared<AudioOutput>(output)),
      typesFile_(std::move(typesFile)),
      loudness_(loudness) {
    TellNotice();
}

Player::~Player() {
    HearTail();
    Stop();
    if (line_) {
        line_->Finish(kFadeAtMost);
    }
}

// A few hundredths of a second that the caller can use for something else; but at the very first
// start each plug-in is loaded, and may do what it likes.
void Player::Begin(std::function<void()> onStarted) {
    if (start_ != Start::kNone) {
        return;
    }
    start_ = Start::kUnderWay;
    started_ = std::make_shared<Started>();
    starting_.Begin([output = output_, started = started_, onStarted = std::move(onStarted)] {
        SilenceLibraries();
        if (gst_init_check(nullptr, nullptr, nullptr) == TRUE) {
            output->Start();
            started->runs = true;
        }
        started->over = true;
        if (onStarted) {
            onStarted();
        }
    });
}

bool Player::IsStarting() const {
    return start_ == Start::kUnderWay && !started_->over && !starting_.IsDone();
}

/// Waits until GStreamer runs; False if it cannot.
bool Player::Await() {
    Prepare();
    if (start_ == Start::kUnderWay) {
        while (!starting_.WaitFor(kSomeTime)) {
        }
        runs_ = started_->runs;
        start_ = Start::kDone;
        types_.reset();  // what was remembered has served
        TellNotice();
    }
    if (runs_ && !line_) {
        line_.emplace(output_);
        line_->SetGain(gain_);
        line_->SetEffects(effects_);
    }
    return runs_;
}

void Player::TellNotice() {
    if (const std::string notice = output_->TakeNotice(); !notice.empty()) {
        notice_(notice);
    }
}

bool Player::OutputReady() {
    const bool ready = output_->Ready();
    if (!ready) {
        TellNotice();
    }
    return ready;
}

void Player::FinishOutput() {
    HearTail();
    output_->FinishFile();
}

/// Waits for the file, and for GStreamer, which nothing is started for that is not there.
Opener::Opened Player::Opened(const std::string& path) {
    if (!opener_.Answers(path)) {
        return {};
    }
    Prepare();
    const bool started =
        start_ == Start::kDone || opener_.Await([this](std::chrono::nanoseconds longest) {
            return starting_.WaitFor(longest);
        });
    if (!started || !Await()) {
        return {};
    }
    Decoder::Plan plan{path, loudness_};
    if (const int rate = line_->Rate(); rate > 0) {
        plan.smallestRate = rate;
        plan.largestRate = rate;
    } else {
        plan.smallestRate = output_->SmallestRate();
    }
    return opener_.Open(std::move(plan), line_->Waker());
}

bool Player::Open(const std::string& path) {
    Opener::Opened next = Opened(path);
    if (next.item == nullptr) {
        return false;
    }
    item_ = disposal_->Share(std::move(next.item));
    ++number_;
    output_->BeginItem();
    line_->Play({item_, number_}, tail_);
    line_->SetPaused(false);
    taggedLength_ = next.taggedLength;
    paused_ = false;
    ended_ = false;
    tail_ = false;
    ReadFacts(path);
    LookForDevice();
    return true;
}

/// One that has come since the last item is to be heard from the beginning of this one.
void Player::LookForDevice() {
    if (output_->IsSilent()) {
        output_->LookAgain();
        const auto deadline = std::chrono::steady_clock::now() + kDeviceSoon;
        opener_.Await([&](std::chrono::nanoseconds longest) {
            const auto left = deadline - std::chrono::steady_clock::now();
            return line_->WaitForLook(std::clamp(left, {}, longest)) || left <= left.zero();
        });
    }
}

void Player::ReadFacts(const std::string& path) {
    facts_ = std::make_shared<FileFacts>();
    readingFacts_.Begin([path, facts = facts_] {
        facts->bitRate = ReadSoundFacts(path).bitRate;
        struct stat status {};
        if (stat(path.c_str(), &status) == 0) {
            facts->size = static_cast<std::uintmax_t>(status.st_size);
        }
    });
}

void Player::Stop() {
    if (item_ == nullptr) {
        return;
    }
    item_.reset();
    if (!tail_) {
        line_->Play({}, false);
    }
    // Paused silence would hold the next item, too.
    line_->SetPaused(false);
    ended_ = false;
    paused_ = false;
}

/// An end that comes right after that of the last item does not cut it.
void Player::HearTail() {
    if (tail_) {
        line_->Finish(kTailAtMost);
    }
}

void Player::SetPaused(bool paused) {
    if (item_ != nullptr && !ended_ && paused != paused_) {
        paused_ = paused;
        line_->SetPaused(paused);
    }
}

void Player::Seek(int target) {
    if (item_ == nullptr || ended_ || !item_->CanJump()) {
        return;
    }
    if (item_->Jump(seconds(target))) {
        jumping_.Begin([item = item_] { item->DoJump(); });
    }
    line_->Jumped({item_, number_});
}

void Player::SetGain(double gain) {
    gain_ = gain;
    if (line_) {
        line_->SetGain(gain);
    }
}

void Player::Change(int Effects::*effect, int value, int smallest, int largest) {
    effects_.*effect = std::clamp(value, smallest, largest);
    if (line_) {
        line_->SetEffects(effects_);
    }
}

bool Player::IsPlaying() {
    if (opener_.IsWaiting()) {
        return true;
    }
    if (item_ == nullptr || ended_) {
        return false;
    }
    TellNotice();
    if (!paused_ && IsLetGo()) {
        ended_ = true;
        tail_ = true;
    }
    return !ended_;
}

bool Player::IsLetGo() const {
    if (!item_->IsDecoded()) {
        return false;
    }
    const auto left = line_->LeftToHear();
    return left && (left->toHear <= kLead || left->toWrite <= kLeastLead);
}

Time Player::ExactPosition() {
    const Timeline::Place heard = line_->Heard();
    const unsigned jumps = item_->Jumps();
    Time place = jumps > 0 ? item_->JumpsTo() : Time(0);
    if (heard.item == number_ && heard.jumps == jumps) {
        // The device corrects what it has said by a few thousandths of a second. It is no jump.
        const bool isBehind = heard_.item == heard.item && heard_.jumps == heard.jumps &&
                              heard_.at > heard.at && heard_.at - heard.at < kCorrection;
        heard_ = isBehind ? heard_ : heard;
        place = heard_.at;
    }
    const Time length = item_->Length();
    const Time last = length > Time(0) ? length : Time::max();
    return std::clamp(place, Time(0), last);
}

int Player::Position() {
    if (item_ == nullptr) {
        return 0;
    }
    // While a file is being opened it is always told to play.
    return WholeSeconds((IsPlaying() && !ended_ ? ExactPosition() : Time(seconds(Length()))) +
                        kHair);
}

Time Player::ExactLength() const {
    if (item_ == nullptr) {
        return Time(0);
    }
    return taggedLength_ > Time(0) ? taggedLength_ : item_->Length();
}

int Player::Length() const {
    const Time length = ExactLength();
    return length > Time(0) ? std::max(1, WholeSeconds(length + milliseconds(500))) : 0;
}

std::string Player::BitRateText() {
    if (item_ == nullptr) {
        return {};
    }
    int bitRate = 0;
    if (readingFacts_.WaitFor(kUnheard)) {
        bitRate = facts_->bitRate;
        const double length = std::chrono::duration<double>(ExactLength()).count();
        if (bitRate == 0 && length > 0) {
            bitRate = static_cast<int>(
                std::lround(static_cast<double>(facts_->size) * 8.0 / 1000.0 / length));
        }
    }
    return std::to_string(bitRate);
}

std::string Player::OutputName() const {
    return start_ == Start::kDone ? output_->Name() : output_->ChoiceName();
}

bool Player::LearnTypes(std::function<void()> onLearnt) {
    RecallTypes();
    if (!types_ && start_ == Start::kNone) {
        anyTypes_ = SupportedTypes::Known();
        Begin(std::move(onLearnt));
    }
    return !types_ && IsStarting();
}

void Player::RecallTypes() {
    if (!types_ && start_ != Start::kDone) {
        types_ = SupportedTypes::Remembered(typesFile_);
    }
}

const SupportedTypes& Player::Types() {
    RecallTypes();
    if (!types_ && anyTypes_ && IsStarting()) {
        return *anyTypes_;
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
