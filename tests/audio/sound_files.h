// Makes the sound files that the audio tests play, and measures what came of them. Nothing of this
// is committed: the files are made at test time in a directory that goes with the test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace audio_tests {

/// A new directory, removed with all that is in it.
class TemporaryDirectory {
  public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

/// Sound in memory, -1 to 1, the channels' samples in turn.
struct Sound {
    int rate = 44100;
    int channels = 2;
    std::vector<float> samples;

    double Seconds() const {
        return static_cast<double>(samples.size()) / static_cast<double>(channels * rate);
    }
    std::size_t Frames() const { return samples.size() / static_cast<std::size_t>(channels); }
    /// One channel of the stretch from `from` to `to` seconds.
    std::vector<float> Channel(int channel, double from, double to) const;
};

/// A sine of this frequency in all channels.
Sound Tone(double frequency, double seconds, int rate = 44100, int channels = 2,
           double amplitude = 0.25);
/// Different noise in all channels, the same at every call; its values are those of 16 bits.
Sound Noise(double seconds, int rate = 44100, int channels = 2);
/// One after the other; both of the same format.
Sound operator+(Sound first, const Sound& second);

/// Writes 16 bits.
void WriteWav(const std::string& path, const Sound& sound);
/// Reads plain 16 bits, as the engine writes them; without any samples if it is not such a file.
Sound ReadWav(const std::string& path);

/// Encodes a WAV file with this GStreamer chain, such as "flacenc" or "vorbisenc ! oggmux". False
/// if a plug-in of it is not installed.
bool Encode(const std::string& wav, const std::string& chain, const std::string& path);

/// Writes a film of a second with pictures, and with a tone if `sound`. False as above.
bool MakeFilm(const std::string& path, bool sound);

/// The share of this frequency in the samples, as the amplitude of a sine.
double AmplitudeOf(double frequency, const std::vector<float>& samples, int rate);
/// The frequency of a single tone, by its zero crossings.
double FrequencyOf(const std::vector<float>& samples, int rate);
double LoudnessOf(const std::vector<float>& samples);  ///< root mean square
float Peak(const std::vector<float>& samples);

/// The left channel without its first and last half second, where effects swing in and out.
std::vector<float> Middle(const Sound& sound);
/// By how many decibels the frequency is louder in one sound than in the other, in the middles.
double Gain(double frequency, const Sound& after, const Sound& before);

void WriteText(const std::string& path, const std::string& text);
std::string ReadText(const std::string& path);

}  // namespace audio_tests
