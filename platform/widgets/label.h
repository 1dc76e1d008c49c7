// A label: text on its parent, broken at its line ends and between words. It is a mark on the
// parent rather than a window: WindowFromPoint answers the parent, but clicks and double clicks
// reach it. The second press of a double click raises DblClick in place of MouseDown and Click.
#pragma once

#include "platform/windows/widget.h"

namespace platform {

class Label : public Widget {
  public:
    Label(WindowSystem& windows, Handle parent, const Rect& rect);

    std::u16string Caption() const { return Text(); }
    void Caption(std::u16string_view value) { Text(value); }

    /// While True the height follows the text; the width stays.
    bool AutoSize() const { return autoSize_; }
    void AutoSize(bool value);
    /// Whether BackColor is painted below the text; else what the parent shows there, as it is when
    /// the label is drawn.
    bool Opaque() const { return opaque_; }
    void Opaque(bool value);

  protected:
    void MouseUp(const MouseEvent& event) override { RaiseMouseUpAndClick(event); }
    void DoubleClick(const MouseEvent& event) override;
    void Resized() override;
    void Relocated() override;
    void LooksChanged() override;
    void Redraw() override { Draw(); }

  private:
    void FitHeight();
    void Draw();

    bool autoSize_ = false;
    bool opaque_ = false;
};

}  // namespace platform
