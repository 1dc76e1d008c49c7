// Engine plays one file after the other, without a gap: it opens, pauses, seeks, sets the volume
// and the seven effects, and tells where it stands. It knows nothing of lists or windows. Below it
// lies GStreamer, which nobody above needs to see.
//
// All members are called from one thread. Nothing has to be run in between: no main loop, no call
// back. The end of an item is noticed when IsPlaying or Position is asked, which costs microseconds
// and is meant to be done some twenty times a second. No member waits for a device; files are
// opened on another thread, and the caller can do something else meanwhile (WaitBy). The
// environment must not be changed while an Engine exists: its initialisation reads it on a thread
// of its own. What GStreamer and its libraries would write to the terminal is dropped, in the whole
// process, unless GST_DEBUG or G_MESSAGES_DEBUG is set.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/engine/loudness.h"

namespace veldrin {

/// Where the sound goes.
struct Output {
    enum class Kind {
        kAuto,  ///< the desktop's sound device; without one, silence in real time
        kNull,  ///< silence in real time
        kFile,  ///< a WAV file of all that is played, written as fast as it can be decoded
    };
    Kind kind = Kind::kAuto;
    std::string path;  ///< of the WAV file, raw bytes

    /// Reads "auto", "null" or "file:PATH"; nothing for any other text and for an empty path.
    static std::optional<Output> Parse(std::string_view text);
};

class Player;

class Engine {
  public:
    /// Receives a line of text for the user, without a line end. Called from within the engine's
    /// members, on the caller's thread.
    using Notice = std::function<void(const std::string&)>;

    /// Starts nothing yet: that happens at the first need, or before it by Prepare. Without
    /// `notice` the lines go to standard error. `typesFile`: where the list of playable types is
    /// kept from one run to the next, so that GStreamer need not be started for it; none if empty.
    /// `loudness`: whether items are brought to one loudness by their tags, without clipping.
    explicit Engine(const Output& output, Notice notice = {}, std::string typesFile = {},
                    Loudness loudness = Loudness::kOff);
    /// What is being heard fades out; the end of an item that was let go (IsPlaying) is heard
    /// whole.
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// Starts GStreamer on another thread, if that has not been done, and returns at once. It is
    /// left behind there if the engine ends before.
    void Prepare();
    /// False if the list of playable types is at hand. True: GStreamer has to be asked for it,
    /// which takes long at its very first start; that begins on another thread, and `onLearnt` is
    /// called from there when it is over. Until then FileTypes and Supports answer for all types
    /// that there might be, and wait for nothing.
    [[nodiscard]] bool LearnTypes(std::function<void()> onLearnt);

    /// False if the WAV file of the output cannot be created or written; a notice has said why.
    /// Always True for the other outputs.
    [[nodiscard]] bool OutputReady();

    /// Is called when opening files, one or several in a row, lasts longer than a tenth of a
    /// second. Returns soon after `isDone` answers True. False: the program ends, and nothing is
    /// opened any more. Meanwhile all members but those that open, seek or set may be called;
    /// IsPlaying answers True, so that nobody takes the present item's end for his own.
    using Wait = std::function<bool(const std::function<bool()>& isDone)>;
    void WaitBy(Wait wait);

    /// Makes a WAV file of the output a whole one and writes nothing more to it: for an end of the
    /// process that no Engine lives to see.
    void FinishOutput();

    /// Opens the file (raw bytes of its path) and plays it: behind the present item if that has
    /// been let go (IsPlaying), sample on sample, else at once in its place. True only when its
    /// first sound has been decoded; at most 5 seconds are spent on that, and half a second where
    /// the last file of the same folder or mounted file system did not answer. After False the
    /// present stream goes on as if nothing had been asked.
    [[nodiscard]] bool Open(const std::string& path);

    /// Pauses; nothing if it is paused, ended or stopped.
    void Pause();
    /// Changes between paused and playing; nothing if it has ended or was stopped.
    void Toggle();
    /// Ends the stream and releases the file, soon after it has faded out. The end of an item that
    /// was let go (IsPlaying) is still heard.
    void Stop();

    /// Goes to this second of the medium; values outside of it go to its start or just before its
    /// end. Nothing if there is no stream or it cannot be sought in.
    void Seek(int seconds);
    /// Seconds of the medium that have been heard, whatever the tempo. 0 if there is no stream, the
    /// length once it has ended.
    int Position();
    /// Length of the medium in whole seconds, rounded; at least 1 if it is known, 0 if it is not.
    int Length();

    /// 0 to 100, on the cubic scale that desktops use; 100 leaves the sound as it is. Kept for the
    /// items to come.
    void SetVolume(int volume);

    /// True while a stream runs or is paused; False when it has failed or was stopped, and as soon
    /// as no more than a quarter of a second of it is still to be heard: it is let go then, so that
    /// the next one can be joined without a gap.
    bool IsPlaying();
    /// True while a stream is paused.
    bool IsPaused() const;

    std::string PlayedText();     ///< "m:ss"
    std::string RemainingText();  ///< "-m:ss"
    std::string LengthText();     ///< "m:ss"
    int SampleRate();             ///< of the medium, in Hz; 0 if there is no stream
    int Channels();               ///< of the medium; 0 if there is no stream
    /// Average of the medium in kbit/s, a decimal number; empty if there is no stream.
    std::string BitRateText();

    // The effects. They may be set at any time and stay for all items to come. Values out of range
    // are taken as the nearest end. An effect whose plug-in is not installed does nothing.
    void SetTempo(int percent);    ///< -50 to 50; the pitch stays
    void SetPitch(int semitones);  ///< -20 to 20; the tempo stays
    void SetEcho(int step);        ///< 0 to 6
    void SetReverb(int step);      ///< 0 to 20
    void SetBass(int decibels);    ///< -15 to 15, like the next two
    void SetMid(int decibels);
    void SetTreble(int decibels);

    /// What the engine is made of, a line each: "Audio engine: GStreamer 1.22.0",
    /// "Tags: TagLib 1.13.0", "Output: ...", and unless it is off "Loudness: by track" or
    /// "Loudness: by album". The name of the sound device is known once something has been opened.
    std::vector<std::string> Parts();

    /// The patterns of all files that the installed decoders can play, joined by ";", lower case:
    /// "*.aac;*.aif;...".
    std::string FileTypes();
    /// Whether the name's extension is one of them, ignoring case. The file is not looked at.
    bool Supports(const std::string& path);

  private:
    std::unique_ptr<Player> player_;
};

}  // namespace veldrin
