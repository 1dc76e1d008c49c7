// Remote is the host's side door to a run: what it may ask of the component beyond the impulses,
// and have it do, for the desktop's player controls, a command line, a rescue copy. What is done is
// done by the routines that menu, keys and buttons call, so list, order, sliders and marks follow.
// The component does not know of it and works without it; no rule depends on it.
//
// It is asked on the component's thread, between load (15, 16) and the end of the main window; at
// all other times every answer is that of an empty list at rest, and nothing is done. What does
// something reaches the host, and so must wait until the host has answered the impulse that it is
// in; a command that shows something may wait for the user in turn, as one of the menu does.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "controls/list/listcopy.h"
#include "platform/base/types.h"

namespace sarnel {

class Ambrisor;
class JList;
class frmMAIN;
struct Program;

enum class PlaybackState { kStopped, kPaused, kPlaying };

class Remote {
    using Long = platform::Long;

  public:
    /// May outlive the component; what it is asked then is a mistake, which a debug build asserts,
    /// and else as before a run.
    explicit Remote(Ambrisor& component);

    /// Whether there is a run to be asked about.
    bool IsLoaded() const { return List() != nullptr; }

    /// Number of rows of the playlist.
    Long ListCount() const;
    /// The playing row, from 0; -1 is none. Not range checked: it may name no row.
    Long ListCurrent() const;
    /// A row's title and its path; empty for a row that is not there.
    std::u16string RowTitle(Long row) const;
    std::u16string RowPath(Long row) const;

    /// A number that is another one whenever rows (texts, paths, order, count) or the current row
    /// may have changed. Equal numbers of one run say that nothing has.
    std::uint64_t Changes() const;
    /// Calls `observer` at the next change, once, from within it: for taking a note and no more. A
    /// later one takes its place, an empty function ends it. Forgotten at the end of the run.
    void OnNextChange(std::function<void()> observer);

    /// What the playlist's file would hold if it were written now. Any thread may have it and
    /// write it. Takes some 10 ms for 100,000 rows.
    ListCopy CopyList() const;

    // Commands.

    /// Whether the command menu has an item with that key, such as "kPRdm".
    bool HasCommand(std::u16string_view key) const;
    /// Does what choosing that item does: it takes the opposite of its mark, if it has one. What
    /// has no command does nothing, and so does a key that the menu does not have.
    void RunCommand(std::u16string_view key);

    /// The host's file types are others than it has answered before: the panel that shows them asks
    /// again.
    void FileTypesChanged();

    // Transport.

    /// As the window shows it. An item without a known length is not followed by the component: it
    /// counts as playing for as long as the host says that it plays, paused or not.
    PlaybackState State() const;
    /// Plays the current row from its start if nothing plays, goes on if paused; else nothing.
    void Play();
    /// Nothing unless it plays.
    void Pause();
    /// Pauses or goes on; plays the current row if nothing plays.
    void PlayPause();
    void Stop();
    /// By the modes, as keys and buttons do it.
    void Next();
    void Previous();

    /// 0 to 100, what the slider shows. A write is cut to that, sent to the host and remembered.
    Long Volume() const;
    void Volume(Long value);

    /// Whether there is an item whose position is followed and can be set.
    bool CanSeek() const;
    /// Seconds, what the slider shows. A write is cut to the item, sent to the host, and leaves
    /// paused what is paused. Nothing while CanSeek is False, or the user holds the slider.
    Long Position() const;
    void Position(Long seconds);

    /// Percent faster or slower than the medium, as the effect's slider has it: -50 to 50. A write
    /// is cut to that, and one off the middle is the middle.
    Long Tempo() const;
    void Tempo(Long percent);

    // Modes. A write is what the menu's item does: state, mark and setting. RepeatItem goes before
    // Random, and that before RepeatList.

    bool Random() const;
    void Random(bool on);
    bool RepeatItem() const;
    void RepeatItem(bool on);
    bool RepeatList() const;
    void RepeatList(bool on);

    /// Whether a start that restores the list plays it.
    bool PlayAtStartup() const;

  private:
    std::shared_ptr<Program> Run() const;
    frmMAIN* Main() const;
    JList* List() const;
    template <class Action>
    void Do(Action action);

    std::weak_ptr<Program> run_;
};

}  // namespace sarnel
