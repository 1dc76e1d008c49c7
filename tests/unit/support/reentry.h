// Ways into the component, and a host that ends the run inside a call that a way makes: the worst
// that a host can do there.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/widget.h"
#include "tests/unit/support/world.h"

namespace support {

using platform::Handle;
using platform::Long;
using platform::Millis;
using platform::Point;

struct Way {
    std::string name;
    std::function<void(World&)> before;  ///< brings the run to where the way begins
    /// Must not ask the world for its component once the host may have been called.
    std::function<void(World&)> enter;
    bool mayBeQuiet = false;   ///< the way need not call the host at all
    bool emptiesList = false;  ///< before its first call
};
std::ostream& operator<<(std::ostream& out, const Way& way);
/// Names the tests of ways.
template <class Info>
std::string NameOfWay(const Info& info) {
    return info.param.name;
}

/// What the host does inside its answer.
enum class Ending {
    kEnds,
    kEndsAndThrows,
    kEndsAndBeginsAnew,  ///< loads and shows the window once more
    kDestroys,           ///< the component itself, without an end
};

/// A run with the rows a, b and c that stands where the way begins.
std::unique_ptr<World> Prepared(const Way& way);
/// What the way asks the host, in order: numbers of impulses, 0 for a question about its cells.
std::vector<Long> CallsOf(const Way& way);
/// Ends the run inside the host's call with this number, counted from 0.
void EndInside(World& world, std::size_t call, Ending ending);
/// Goes the way again and again, each time with another call as the last one, in every manner of
/// Ending, and expects the run to be over in order each time. Of calls that are alike the first two
/// are tried.
void EndInsideEveryCall(const Way& way);
/// Another kind of re-entry: a hot key that is pressed inside the way's first call. The run goes
/// on.
void NextItemInsideTheFirstCall(const Way& way);

// What ways are made of.

void Stay(World& world);
/// Row a plays, and ticks.
void Playing(World& world);
/// Row c plays, and its stream is over.
void AtTheEnd(World& world);
/// 300 rows behind the three, and row a plays.
void PlayingALongList(World& world);
std::function<void(World&)> HotKey(std::u16string_view name);
/// Runs a routine as a message would.
std::function<void(World&)> Call(std::function<void()> routine);
std::function<void(World&)> Command(std::u16string_view menuKey);
/// A key goes down and up.
std::function<void(World&)> KeyPress(Long code, Long shift = 0);
/// The time until the next tick, and a little more.
void Tick(World& world);
/// Does one after the other.
std::function<void(World&)> Both(std::function<void(World&)> first,
                                 std::function<void(World&)> second);

/// The user's pointer. What is pressed may keep the component busy, so the way back is set down
/// before: Release and MoveTo take a time in milliseconds from now, at which they happen even then.
class Pointer {
  public:
    Pointer(World& world, const platform::Widget& on, Point at);
    /// Points at the middle of the control.
    Pointer(World& world, const platform::Widget& on);

    void Press(Long button = 1);
    void Release(Long button = 1, Millis after = 0);
    void MoveTo(Point at, Millis after = 0);
    /// Lets it all happen.
    void Do();

  private:
    void Later(Millis after, platform::DriverEvent event);

    World& world_;
    Point origin_;
    Point at_;
};

/// Clicks in the middle of a control that `find` finds.
std::function<void(World&)> ClickOn(std::function<platform::Widget&(World&)> find, Long button = 1);
/// The user's choice in the next popup that opens: the item with that key, none if it is empty.
void ChooseLater(World& world, std::u16string_view menuKey, Millis after);

}  // namespace support
