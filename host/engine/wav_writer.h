// WavWriter writes a stream of float stereo samples as a WAV file of 16 bits. The whole run of a
// program goes into one file, so its rate is that of the first item.
//
// While it is written the header gives the largest possible size, which players take as "up to the
// end", so that the file is of use even if the program is killed; the true size is entered at the
// end. All members may be called from any thread.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace veldrin {

class WavWriter {
  public:
    /// Creates or empties the file; Failed() tells if that did not work.
    explicit WavWriter(const std::string& path);
    ~WavWriter();
    WavWriter(const WavWriter&) = delete;
    WavWriter& operator=(const WavWriter&) = delete;

    /// Settles the rate of the file in Hz; only the first call counts.
    void SetRate(int rate);
    /// The rate of the file in Hz, 0 before it is settled.
    int Rate() const;
    /// Appends interleaved stereo samples, full scale being -1 to 1.
    void Write(std::span<const float> samples);
    /// Enters the true size and closes the file; nothing is written after that. The destructor does
    /// so, too.
    void Finish();
    /// Why the file could not be created or written, as of errno; 0 while nothing is wrong. Nothing
    /// is written after that, and the header tells of what was.
    int Error() const;

  private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    void WriteHeader(std::uint64_t dataBytes);
    std::uint64_t Append(const std::vector<std::uint8_t>& bytes);

    mutable std::mutex mutex_;
    std::unique_ptr<std::FILE, Close> file_;
    std::vector<std::uint8_t> bytes_;  // of the present call; kept for its memory
    std::uint64_t dataBytes_ = 0;
    int rate_ = 0;
    int error_ = 0;
};

}  // namespace veldrin
