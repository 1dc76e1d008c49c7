// ElementLine is a row of GStreamer's elements through which sound is sent by hand: frames go in,
// and what has come out by then is there when the call is over. There is no thread, no clock and no
// pipeline in it, so nothing has to be guarded against a change in between, and each row can be put
// in and taken out of the way at any place of the sound.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/engine/gst_ptr.h"

namespace veldrin {

class ElementLine {
  public:
    ElementLine();
    ~ElementLine();
    ElementLine(const ElementLine&) = delete;
    ElementLine& operator=(const ElementLine&) = delete;

    /// Adds an element at the end of the row. Null if its plug-in is not installed: it is simply
    /// not there then. Not after Begin.
    GstElement* Add(const char* factory);
    /// Whether there is any element.
    bool IsEmpty() const { return elements_.empty(); }

    /// Begins a sound of this rate; what was before is forgotten.
    void Begin(int rate);
    /// Sends frames through; what comes out is put behind `out`. It may be less or more.
    void Send(std::span<const float> frames, std::vector<float>& out);

  private:
    static GstFlowReturn OnOut(GstPad* pad, GstObject* parent, GstBuffer* buffer);
    void End();

    ElementPtr bin_;
    std::vector<GstElement*> elements_;  // owned by the bin
    PadPtr in_;
    PadPtr out_;
    std::vector<float>* receiver_ = nullptr;  // while something is sent
    int rate_ = 0;                            // 0: not begun
    std::int64_t sent_ = 0;                   // frames
};

}  // namespace veldrin
