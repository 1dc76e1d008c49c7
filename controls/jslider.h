// JSlider, the skinned slider: a background in two halves (in use, out of use), and a JButton on
// it, the stick. It turns a value into the place of its stick and a mouse point into a value, and
// knows nothing of what it controls. Value 0 is at the left or the top, Max at the other end.
//
// A step that fails (a division by a Max of 0, a result beyond 16 bits) is skipped and the next one
// runs: the stick stays, or the last value that the mouse gave is written again.
#pragma once

#include "controls/jbutton.h"

namespace sarnel {

class JSlider : public SkinnedControl {
  public:
    JSlider(platform::WindowSystem& windows, Handle parent, const platform::Rect& rect);

    bool Enabled() const { return Widget::Enabled(); }
    /// A slider that is not enabled has no stick.
    void Enabled(bool value);
    /// Draws the background, and shows or hides the stick, as Enabled says.
    void Refresh();
    /// While the user holds the left button on it.
    bool IsSliderMouseControled() const { return mouseControled_; }

    /// Two halves: side by side if vertical, else one above the other; the slider's size across the
    /// track is that of a half. The first is drawn when enabled. Without a picture the size stays
    /// and nothing is drawn.
    platform::PictureRef Picture() const { return picture_; }
    void Picture(platform::PictureRef value);
    /// True: vertical, the stick goes from the top to the bottom. A write puts the stick to the
    /// near end, as StickPosition does.
    bool Style() const { return vertical_; }
    void Style(bool value);

    // Handed on to the stick, which is a JButton.
    Colour StickMaskColor() const { return JStick.MaskColor(); }
    void StickMaskColor(Colour value) { JStick.MaskColor(value); }
    platform::PictureRef StickMaskPicture() const { return JStick.MaskPicture(); }
    void StickMaskPicture(platform::PictureRef value) { JStick.MaskPicture(std::move(value)); }
    platform::PictureRef StickPicture() const { return JStick.Picture(); }
    void StickPicture(platform::PictureRef value) { JStick.Picture(std::move(value)); }
    // Where it is, in pixels of the slider.
    Long StickLeft() const { return JStick.Left(); }
    Long StickTop() const { return JStick.Top(); }
    bool StickVisible() const { return JStick.Visible(); }

    /// The value of the far end. A write moves the stick and leaves Value, which may be beyond it.
    Long Max() const { return max_; }
    void Max(Long value);
    /// The stick's coordinate across the track, kept as it was written; the stick stands on the
    /// nearest pixel. A write also puts the stick to the near end, where it stays until Value is
    /// written.
    double StickPosition() const { return stickPosition_; }
    void StickPosition(double value);
    /// A write is cut to 0 to Max and never raises Scroll.
    Long Value() const { return value_; }
    void Value(Long value);

    /// Becomes a hidden copy of another one: the persisted properties and the place.
    void CopyFrom(const JSlider& first);

    /// The user has set Value. Comes before the mouse event that did it.
    std::function<void()> onScroll;

  protected:
    void MouseDown(const platform::MouseEvent& event) override;
    void MouseMove(const platform::MouseEvent& event) override;
    void MouseUp(const platform::MouseEvent& event) override;
    void Resized() override;
    void Shown() override { ShowStep(); }
    void Redraw() override { DrawBackground(); }

  private:
    /// Half of the picture: 0 in use, 1 out of use.
    void DrawBackground(Long half);
    void DrawBackground();
    void DrawEnabled() { DrawBackground(0); }
    void DrawDisabled() { DrawBackground(1); }
    void Draw();
    void ResizeStep();
    void FitToPicture();
    void ShowStep();
    void PlaceStick(Long value);
    void MoveStick(Long along);
    Long Travel() const;
    /// To the mouse.
    void CentreStick(const platform::MouseEvent& event);
    /// `x` and `y`: where the stick's left top corner is wanted.
    void MapPointToValue(Long x, Long y);
    void ForwardFromStick();

    JButton JStick;  ///< the thumb
    platform::PictureRef picture_;
    /// The background that is on the face.
    struct Background {
        platform::PictureRef picture;
        Long half = 0;
        bool vertical = false;
        platform::Size size;
        Colour colour = 0;
        bool operator==(const Background&) const = default;
    };
    Background drawn_;
    bool vertical_ = false;
    bool mouseControled_ = false;
    Long max_ = 100;
    double stickPosition_ = 0;
    Long value_ = 0;
    Long lastMapped_ = 0;      ///< what the mouse gave last
    platform::Size stepSize_;  ///< the slider's size when it last drew itself for a new size
};

}  // namespace sarnel
