// The impulse numbers in both directions, with what travels in the three arguments.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

// From the host to the component (Ambrisor::ProcessImpulse).
inline constexpr Long kImpulseAttach = 3;         ///< first of all; answers 1
inline constexpr Long kImpulseControlNumber = 5;  ///< lParam1 out: 15
inline constexpr Long kImpulseComponent = 6;      ///< lParam1 out: the Ambrisor object
inline constexpr Long kImpulseControl = 15;       ///< wParam is one of the sub-commands below

// Sub-commands of impulse 15, in wParam.
inline constexpr Long kControlComponent = 5;    ///< lParam1 out: the Ambrisor object
inline constexpr Long kControlLoad = 16;        ///< lParam1 out: handle of the main window
inline constexpr Long kControlShow = 17;        ///< lParam1: show or end; lParam2: command line
inline constexpr Long kControlMinimise = 18;    ///< lParam1: minimise; lParam2 out: former state
inline constexpr Long kControlScrollText = 19;  ///< lParam1: the scrolling title

// From the component to the host (HostObject::ProcessImpulse). "out" is assigned by the host.
inline constexpr Long ImpulseClosed = 7;          ///< both windows are gone
inline constexpr Long ImpulseGetHostPath = 8;     ///< lParam1 out: path of the host program
inline constexpr Long ImpulseIsSupported = 10;    ///< wParam: name or path; lParam1 out: boolean
inline constexpr Long ImpulseGetFileTypes = 11;   ///< lParam1 out: "*.mp3;*.ogg"
inline constexpr Long ImpulseGetTitle = 13;       ///< wParam: path; lParam1 in and out: the name
inline constexpr Long ImpulseGetInfo = 14;        ///< wParam: path or empty; lParam1 out: text
inline constexpr Long ImpulseRequestExit = 15;    ///< wParam: 17; lParam1: False; a wish to end
inline constexpr Long ImpulseOpen = 26;           ///< wParam: window; lParam1: path; lParam2 out
inline constexpr Long ImpulsePause = 27;          ///< wParam: True pauses, False toggles
inline constexpr Long ImpulseStop = 28;           ///< whatever plays is to end; no arguments
inline constexpr Long ImpulseSetVolume = 29;      ///< wParam: 0 to 100
inline constexpr Long ImpulseSeek = 30;           ///< wParam: in the units of 31 and 32
inline constexpr Long ImpulseGetPosition = 31;    ///< lParam1 out
inline constexpr Long ImpulseGetLength = 32;      ///< lParam1 out; 0 or less: not known
inline constexpr Long ImpulseIsPlaying = 33;      ///< lParam1 out: False once the stream has ended
inline constexpr Long ImpulseGetTimeText = 34;    ///< wParam: True asks for the time remaining
inline constexpr Long ImpulseGetLengthText = 35;  ///< lParam1 out
inline constexpr Long ImpulseGetSampleRate = 36;  ///< lParam1 out: Hz
inline constexpr Long ImpulseGetChannels = 38;    ///< lParam1 out
inline constexpr Long ImpulseGetBitRate = 39;     ///< lParam1 out: text, kb/s
inline constexpr Long ImpulseSetTempo = 41;       ///< wParam: -50 to 50, per cent
inline constexpr Long ImpulseSetPitch = 42;       ///< wParam: -20 to 20, semitones
inline constexpr Long ImpulseSetEcho = 43;        ///< wParam: 0 to 6
inline constexpr Long ImpulseSetReverb = 44;      ///< wParam: 0 to 20
inline constexpr Long ImpulseSetBass = 45;        ///< wParam: -15 to 15
inline constexpr Long ImpulseSetMid = 46;         ///< wParam: -15 to 15
inline constexpr Long ImpulseSetTreble = 47;      ///< wParam: -15 to 15

}  // namespace sarnel
