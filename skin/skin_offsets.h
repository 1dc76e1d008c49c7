// Where each field of a skin stands, counted from the skin's base. The blocks of the controls are
// not in the order of the controls' indices.
#pragma once

#include "core/state/controlnames.h"

namespace sarnel {

/// Of the table and not of a skin: how many skins there are. The rows behind it hold their bases.
inline constexpr Long kSkinCountRow = 0;

/// Pictures without a row: base and offset together are the picture's number.
enum SkinPicture : Long {
    kWindowPicture = 0,
    kMenuPicture = 2,
    kBrowserPicture1 = 3,
    kBrowserPicture2 = 4,
    kBrowserPicture3 = 5,
    kTipLeftPicture = 6,
    kTipMiddlePicture = 7,
    kTipRightPicture = 8
};

/// Rows that stand once in a skin, and the first ones of the blocks below.
enum SkinRow : Long {
    kTipForeColor = 7,
    kSkinName = 8,
    kScrollTextRows = 29,  // TextPanelBlock
    kListLeft = 39,        // and of the panels, as the next three
    kListTop = 40,
    kListWidth = 41,
    kListHeight = 42,
    kListFontRows = 43,  // FontBlock
    kListBackColor = 47,
    kListFocusRectColor = 48,
    kListSelColor1 = 49,
    kListSelColor2 = 50,
    kListPulseColorFrom = 51,
    kListSelTextColor = 52,  // and the pulse's other end
    kListTextColor = 53,
    kListThumbBorderColor = 54,
    kListThumbColor1 = 55,
    kListThumbColor2 = 56,
    kMenuFontRows = 65,     // FontBlock
    kMenuColourRows = 69,   // MenuColourBlock
    kInfoDisplayRows = 170  // TextPanelBlock
};

struct FontBlock {
    enum Row : Long { kName, kSize, kItalic, kBold };
};

/// A button or a toggle.
struct ButtonBlock {
    enum Row : Long { kPicture, kMaskPicture, kToolTip, kLeft, kTop };
};

/// Ten rows; the last one is empty.
struct SliderBlock {
    enum Row : Long {
        kPicture,
        kStickPicture,
        kStickMaskPicture,
        kStickPosition,
        kStyle,
        kLeft,
        kTop,
        kWidth,
        kHeight
    };
};

/// A picture box that shows text.
struct TextPanelBlock {
    enum Row : Long { kLeft, kTop, kWidth, kHeight, kBackColor, kForeColor, kFontRows };
};

struct MenuColourBlock {
    enum Row : Long {
        kBkText,
        kTxtColor,
        kDisabled1,
        kDisabled2,
        kSelGrad1,
        kSelGrad2,
        kSelText,
        kHeadGrad1,
        kHeadGrad2,
        kHeadText,
        kSep1,
        kSep2
    };
};

/// An item of a control array and the first row of its block.
struct ControlRows {
    Long index;
    Long offset;
};
// In the order in which they are applied; the last button comes after the sliders.
inline constexpr ControlRows kButtonRows[] = {
    {kExitButton, 9},   {kMinimiseButton, 14}, {kMenuButton, 19},  {kPreviousButton, 140},
    {kPlayButton, 145}, {kPauseButton, 150},   {kStopButton, 155}, {kNextButton, 160},
    {kAddButton, 90},   {kRemoveButton, 95},   {kMiscButton, 100}, {kListsButton, 270}};
inline constexpr ControlRows kToggleRows[] = {
    {kLyricsToggle, 105}, {kInformationToggle, 110}, {kEffectsToggle, 190}, {kTopMostToggle, 24}};
inline constexpr ControlRows kSliderRows[] = {
    {kPositionSlider, 120}, {kVolumeSlider, 130}, {kLyricsSlider, 180}, {kTempoSlider, 195},
    {kPitchSlider, 205},    {kEchoSlider, 215},   {kReverbSlider, 225}, {kBassSlider, 235},
    {kMidSlider, 245},      {kTrebleSlider, 255}};
inline constexpr ControlRows kResetEffectsButtonRows{kResetEffectsButton, 265};

}  // namespace sarnel
