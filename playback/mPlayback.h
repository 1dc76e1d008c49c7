// What plays next, and how the window follows it. The host does the playing; these routines decide
// against the playlist control: List is a row's title, ListData its path, ListCurrent the playing
// row. Every routine skips a step that fails.
#pragma once

#include <string>
#include <string_view>

#include "core/state/program.h"

namespace sarnel {

using platform::Handle;
using platform::Long;

// Transport (transport.cpp, sequence.cpp).

/// Plays the ListCurrent row. True if the host started it; without such a row, or when the host
/// cannot open it, nothing changes. An item without a known length sounds but is not followed.
bool PlayCurrentItem();
/// Asks the host to open and start a path.
bool OpenMedia(std::u16string_view path);
/// The next row by RepeatItem, Random, or list order with RepeatList. Dead rows are skipped.
void NextItem();
/// The row before, by the same modes. At the start of the list it just returns.
void PreviousItem();
/// Stops the host; the resting title returns.
void StopPlayback();
/// Changes between playing and paused; component and host each toggle their own flag. From the
/// stopped state the first tick then advances.
void TogglePlayback();
/// Pauses for a seek; the tick goes on running and does nothing.
void SuspendPlayback();
bool IsInPlayedHistory(std::u16string_view path);
void ClearPlayedHistory();
/// Timer 14, 50 ms: notices the end of a stream.
void StartTickTimer();
void StopTickTimer();
void TickTimerProc(Handle window, Long id);

// Position and volume (position.cpp).

/// Clamped to the slider, sent, and written to the settings.
void SetVolume(Long volume);
/// What a key or a notch of the wheel adds to it or takes away.
inline constexpr Long kVolumeStep = 5;
/// Clamped to the slider and sent.
void SetPosition(Long position);
/// Takes the host's position into the slider, unless the user holds it.
void UpdatePosition();
/// SetPosition by so many units from here.
void MovePosition(Long units);
/// SuspendPlayback, MovePosition so many units from here, TogglePlayback; only while a length is
/// known.
void SeekBy(Long units);

// Now playing (display.cpp).

void SetWindowTitle(std::u16string_view title);
/// "Veldrin v1.1".
std::u16string RestingTitle();
/// Puts a text into the scrolling title, four times, and begins anew at its left end.
void SetScrollText(std::u16string_view text);
/// Timer 12, 30 ms: the scrolling title and the pulse of the selection.
void StartScrollTimer();
void StopScrollTimer();
void ScrollTimerProc(Handle window, Long id);
/// The colour `steps` of 50 on the way between two, and one more. Raises an overflow error where a
/// byte of `to` is below that of `from`.
platform::Colour BlendColor(Long steps, const ColourBytes& from, const ColourBytes& to);
/// Asks the host for the fact of DisplayMode and draws it.
void RefreshInfoDisplay();
void DrawInfoDisplay();
/// The next of the four facts, written to the settings and shown: a click on the display.
void NextDisplayMode();
/// Asks the host for the long text on the current row and puts it into the information panel.
void ShowItemInfo();

// Effects (effects.cpp). Each takes its slider's value, 0 to Max: it writes the setting, the label,
// and sends the value less the effect's centre.

void SetTempo(Long value);  ///< sticks at its centre: 49 to 51 are 50
void SetPitch(Long value);
void SetEcho(Long value);
void SetReverb(Long value);
void SetBass(Long value);
void SetMid(Long value);
void SetTreble(Long value);
/// The routine of the effect that a slider stands for, 3 to 9.
void SetEffectOf(Long slider, Long value);
/// All seven sliders to their centre or 0, then their routines.
void ResetEffects();
/// All seven sliders to their stored values, each with its routine: at start.
void LoadEffects();

}  // namespace sarnel
