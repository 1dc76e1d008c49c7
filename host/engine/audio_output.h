// AudioOutput is the end of the pipeline: the sound device, silence, or a WAV file. It outlives the
// single item, so that the device need not be opened anew for each: the element is taken out of one
// pipeline and put into the next.
#pragma once

#include <memory>
#include <string>

#include "host/engine/engine.h"
#include "host/engine/gst_ptr.h"
#include "host/engine/wav_writer.h"

namespace veldrin {

class AudioOutput {
  public:
    /// Creates the WAV file if there is to be one; nothing else yet.
    explicit AudioOutput(const Output& choice);
    ~AudioOutput();
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;

    /// Opens the sound device; GStreamer must have been started.
    void Start();
    /// The device has gone: looks for another one, or is silent from now on if `silently`.
    void Replace(bool silently);
    /// Looks for a device again if the output is silent only for want of one.
    void Retry();

    /// The element to end a pipeline with; its state is at most READY while it is in none.
    GstElement* Element() const { return element_.get(); }
    /// Whether a message of a pipeline came from the output.
    bool IsSourceOf(GstMessage* message) const;
    /// The sample rate that the output insists on, 0 for any. A file insists on that of its first
    /// item, which is told to it by Accept.
    int Rate() const { return writer_ == nullptr ? 0 : writer_->Rate(); }
    void Accept(int rate) {
        if (writer_ != nullptr) {
            writer_->SetRate(rate);
        }
    }
    /// Whether it plays in real time and can tell how far it is. A file cannot.
    bool KeepsTime() const { return writer_ == nullptr; }
    /// What it is, for the list of parts.
    std::string Name() const;
    /// The same before it has been started, when the device is not known.
    std::string ChoiceName() const;
    /// False if the WAV file cannot be written.
    bool Ready() const { return writer_ == nullptr || writer_->Error() == 0; }
    /// Nothing more is written to a file.
    void Finish() {
        if (writer_ != nullptr) {
            writer_->Finish();
        }
    }
    /// What the user is to be told, once; empty if there is nothing new.
    std::string TakeNotice();

  private:
    bool OpenDevice();
    bool TryDevice(GstElementFactory* factory);
    void GoSilent(const char* reason);
    static void OnSamples(GstElement* sink, GstBuffer* buffer, GstPad* pad, gpointer self);

    const Output choice_;
    ElementPtr element_;
    std::unique_ptr<WavWriter> writer_;
    std::string device_;    ///< the device's description, empty if there is none
    bool silent_ = false;   ///< for want of a device
    bool noticed_ = false;  ///< that has been said
    std::string notice_;
};

}  // namespace veldrin
