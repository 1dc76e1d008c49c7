// What JButton and JToogle share: a strip of images one above the other, a mask that gives the
// control its shape and size, and the rule of the press: the left button presses it, leaving it
// with the button held pops it up, coming back presses it again. There is no keyboard and no focus.
#pragma once

#include "controls/skinnedcontrol.h"

namespace sarnel {

class SkinButton : public SkinnedControl {
  public:
    /// `maskColor` as the window's static layout stores it.
    SkinButton(platform::WindowSystem& windows, Handle parent, const platform::Rect& rect,
               Colour maskColor = 0)
        : SkinnedControl(windows, parent, rect), maskColor_(maskColor) {}

    /// The strip. A write draws the control if it has a mask picture.
    platform::PictureRef Picture() const { return picture_; }
    void Picture(platform::PictureRef value);
    /// Only its points that have not MaskColor belong to the control, which takes its size. Null:
    /// all of them, and the size stays.
    platform::PictureRef MaskPicture() const { return maskPicture_; }
    void MaskPicture(platform::PictureRef value);
    Colour MaskColor() const { return maskColor_; }
    void MaskColor(Colour value);

    /// 0 normal, 1 pressed. Drawing the disabled look leaves it alone.
    Long PressState() const { return pressState_; }
    /// Draws the control as Enabled says.
    void Refresh();

    /// Becomes a hidden copy of another one: the persisted properties, in their order, and the
    /// place.
    void CopyFrom(const SkinButton& first);

  protected:
    enum Row : Long { kNormal = 0, kPressed = 1, kDisabled = 2 };

    /// Draws an image of the strip on the face; nothing without a picture.
    virtual void DrawState(Row row) = 0;
    void DrawNormal();
    void DrawPressed();
    void DrawGrey();

    void MouseDown(const platform::MouseEvent& event) override;
    void MouseMove(const platform::MouseEvent& event) override;
    void Resized() override { ResizeStep(); }
    void Shown() override { Refresh(); }
    void Redraw() override;
    /// Draws a part of a strip and remembers it, until something else is drawn.
    void DrawImage(platform::PictureRef strip, const platform::Rect& to,
                   const platform::SourceRect& from);

  private:
    void ResizeStep();
    void ApplyMask();

    struct Image {
        platform::PictureRef strip;
        platform::Rect to;
        platform::SourceRect from;
    };
    Image drawn_;
    platform::PictureRef picture_;
    platform::PictureRef maskPicture_;
    Colour maskColor_;
    std::uint8_t pressState_ = 0;
};

}  // namespace sarnel
