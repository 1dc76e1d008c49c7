#include "sound_files.h"

#include <gst/gst.h>
#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>
#include <random>
#include <stdexcept>

namespace audio_tests {

namespace {

void PutNumber(std::string& bytes, std::uint64_t number, int count) {
    for (int i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(number >> (8 * i)));
    }
}

std::uint32_t GetNumber(const std::string& bytes, std::size_t position, int count) {
    std::uint32_t number = 0;
    for (int i = 0; i < count; ++i) {
        number |= static_cast<std::uint32_t>(
                      static_cast<unsigned char>(bytes.at(position + static_cast<std::size_t>(i))))
                  << (8 * i);
    }
    return number;
}

/// Runs a pipeline to its end.
bool Run(const std::string& description) {
    gst_init(nullptr, nullptr);
    GError* error = nullptr;
    GstElement* pipeline =
        gst_parse_launch_full(description.c_str(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, &error);
    if (pipeline == nullptr) {
        g_clear_error(&error);
        return false;
    }
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* bus = gst_element_get_bus(pipeline);
    GstMessage* message = gst_bus_timed_pop_filtered(
        bus, 20 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool done = message != nullptr && GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS;
    g_clear_pointer(&message, gst_message_unref);
    gst_object_unref(bus);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
    return done;
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "veldrin-audio-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary directory");
    }
    path_ = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::vector<float> Sound::Channel(int channel, double from, double to) const {
    std::vector<float> result;
    const auto last = std::min(Frames(), static_cast<std::size_t>(to * rate));
    for (auto frame = static_cast<std::size_t>(from * rate); frame < last; ++frame) {
        result.push_back(samples[frame * static_cast<std::size_t>(channels) +
                                 static_cast<std::size_t>(channel)]);
    }
    return result;
}

Sound Tone(double frequency, double seconds, int rate, int channels, double amplitude) {
    Sound sound{rate, channels, {}};
    const auto frames = std::lround(seconds * rate);
    for (long frame = 0; frame < frames; ++frame) {
        const double phase = 2.0 * std::numbers::pi * frequency * static_cast<double>(frame) / rate;
        sound.samples.insert(sound.samples.end(), static_cast<std::size_t>(channels),
                             static_cast<float>(amplitude * std::sin(phase)));
    }
    return sound;
}

Sound Noise(double seconds, int rate, int channels) {
    Sound sound{rate, channels, {}};
    std::mt19937 random(1);
    for (auto left = std::lround(seconds * rate) * channels; left > 0; --left) {
        const auto value = static_cast<std::int16_t>(random() >> 16U);
        sound.samples.push_back(static_cast<float>(value) / 32768.0F);
    }
    return sound;
}

Sound operator+(Sound first, const Sound& second) {
    first.samples.insert(first.samples.end(), second.samples.begin(), second.samples.end());
    return first;
}

void WriteWav(const std::string& path, const Sound& sound) {
    const auto frameBytes = static_cast<std::uint64_t>(sound.channels) * 2;
    const auto dataBytes = sound.samples.size() * 2;
    const auto rate = static_cast<std::uint64_t>(sound.rate);
    std::string bytes = "RIFF";
    PutNumber(bytes, dataBytes + 36, 4);
    bytes += "WAVEfmt ";
    PutNumber(bytes, 16, 4);
    PutNumber(bytes, 1, 2);
    PutNumber(bytes, static_cast<std::uint64_t>(sound.channels), 2);
    PutNumber(bytes, rate, 4);
    PutNumber(bytes, rate * frameBytes, 4);
    PutNumber(bytes, frameBytes, 2);
    PutNumber(bytes, 16, 2);
    bytes += "data";
    PutNumber(bytes, dataBytes, 4);
    for (const float sample : sound.samples) {
        PutNumber(bytes,
                  static_cast<std::uint16_t>(static_cast<std::int16_t>(
                      std::clamp(std::lround(sample * 32768.0F), -32768L, 32767L))),
                  2);
    }
    WriteText(path, bytes);
}

Sound ReadWav(const std::string& path) {
    const std::string bytes = ReadText(path);
    if (bytes.size() < 44 || bytes.substr(0, 4) != "RIFF" || bytes.substr(36, 4) != "data") {
        return {};
    }
    Sound sound{
        static_cast<int>(GetNumber(bytes, 24, 4)), static_cast<int>(GetNumber(bytes, 22, 2)), {}};
    const std::size_t end = std::min<std::size_t>(bytes.size(), 44 + GetNumber(bytes, 40, 4));
    for (std::size_t position = 44; position + 1 < end; position += 2) {
        sound.samples.push_back(
            static_cast<float>(static_cast<std::int16_t>(GetNumber(bytes, position, 2))) /
            32768.0F);
    }
    return sound;
}

bool Encode(const std::string& wav, const std::string& chain, const std::string& path) {
    return Run("filesrc location=\"" + wav + "\" ! wavparse ! audioconvert ! audioresample ! " +
               chain + " ! filesink location=\"" + path + "\"");
}

bool MakeFilm(const std::string& path, bool sound) {
    return Run(
        "matroskamux name=film ! filesink location=\"" + path +
        "\" videotestsrc num-buffers=25 ! video/x-raw,framerate=25/1,width=64,height=48 ! "
        "jpegenc ! film. " +
        (sound ? "audiotestsrc num-buffers=43 ! audio/x-raw,rate=44100 ! vorbisenc ! film." : ""));
}

double AmplitudeOf(double frequency, const std::vector<float>& samples, int rate) {
    double real = 0;
    double imaginary = 0;
    const auto count = static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double turn = 2.0 * std::numbers::pi * static_cast<double>(i);
        const double window = 1.0 - std::cos(turn / count);  // of Hann, with a mean of 1
        real += samples[i] * window * std::cos(turn * frequency / rate);
        imaginary += samples[i] * window * std::sin(turn * frequency / rate);
    }
    return 2.0 * std::hypot(real, imaginary) / count;
}

double FrequencyOf(const std::vector<float>& samples, int rate) {
    double first = 0;
    double last = 0;
    int crossings = 0;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        if (samples[i - 1] < 0 && samples[i] >= 0) {
            const double part = samples[i] / (samples[i] - samples[i - 1]);
            last = static_cast<double>(i) - part;
            first = crossings == 0 ? last : first;
            ++crossings;
        }
    }
    return crossings < 2 ? 0.0 : (crossings - 1) * rate / (last - first);
}

double LoudnessOf(const std::vector<float>& samples) {
    double sum = 0;
    for (const float sample : samples) {
        sum += static_cast<double>(sample) * sample;
    }
    return samples.empty() ? 0.0 : std::sqrt(sum / static_cast<double>(samples.size()));
}

std::vector<float> Middle(const Sound& sound) {
    return sound.Channel(0, 0.5, sound.Seconds() - 0.5);
}

double Gain(double frequency, const Sound& after, const Sound& before) {
    return 20.0 * std::log10(AmplitudeOf(frequency, Middle(after), after.rate) /
                             AmplitudeOf(frequency, Middle(before), before.rate));
}

float Peak(const std::vector<float>& samples) {
    float peak = 0;
    for (const float sample : samples) {
        peak = std::max(peak, std::abs(sample));
    }
    return peak;
}

void WriteText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary).write(text.data(), static_cast<long>(text.size()));
}

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace audio_tests
