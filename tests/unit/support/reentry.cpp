#include "tests/unit/support/reentry.h"

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "menus/commandmenu.h"
#include "platform/menus/menu.h"
#include "playback/mPlayback.h"

namespace support {

namespace {

constexpr Millis kTickPeriod = 50;
constexpr std::pair<Ending, const char*> kEndings[] = {
    {Ending::kEnds, "ends"},
    {Ending::kEndsAndThrows, "ends and throws"},
    {Ending::kEndsAndBeginsAnew, "ends and begins anew"},
    {Ending::kDestroys, "destroys"}};
constexpr std::string_view kSavedRows = "a\r\na\r\nb\r\nb\r\nc\r\nc\r\n";

void Begin(World& world) {
    world.Impulse(sarnel::kImpulseAttach);
    world.Impulse(sarnel::kImpulseControl, sarnel::kControlLoad);
    world.Show(u"");
}

void Do(World& world, Ending ending) {
    if (ending == Ending::kDestroys) {
        world.component.reset();
        return;
    }
    world.Impulse(sarnel::kImpulseControl, sarnel::kControlShow, false);
    if (ending == Ending::kEndsAndThrows) {
        throw std::runtime_error("the host fails");
    }
    if (ending == Ending::kEndsAndBeginsAnew) {
        Begin(world);
    }
}

void ExpectSaved(const World& world, bool withRows) {
    const std::string saved = world.Saved().value_or("");
    EXPECT_TRUE(saved.starts_with("OMK v1.1\r\n")) << saved;
    EXPECT_EQ(saved.find(kSavedRows) != std::string::npos, withRows) << saved;
}

// The run is over or has begun anew, whatever the component still did after the host's answer.
void ExpectOver(World& world, const Way& way, Ending ending, Handle window) {
    EXPECT_FALSE(world.windows.IsWindow(window));
    EXPECT_FALSE(world.windows.IsDispatching());
    world.host.insideAny = nullptr;
    world.Advance(4 * kTickPeriod);  // nothing that is left over may break now
    if (ending == Ending::kDestroys) {
        ExpectSaved(world, true);  // by the run before
        world.Create();
        Begin(world);
        EXPECT_EQ(world.List().ListCount(), 3);
        return;
    }
    EXPECT_GE(world.host.Count(sarnel::ImpulseClosed), 1);
    ExpectSaved(world, !way.emptiesList);
    const auto saved = world.Saved();
    world.End();  // as a host does that has not heard of it
    if (ending != Ending::kEndsAndBeginsAnew) {
        EXPECT_EQ(world.Saved(), saved);
    }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Way& way) {
    return out << way.name;
}

std::unique_ptr<World> Prepared(const Way& way) {
    auto world = WorldBuilder().Saved({"a", "b", "c"}).Started();
    world->folder.Write("x.mp3", "");
    way.before(*world);
    world->host.Forget();
    return world;
}

std::vector<Long> CallsOf(const Way& way) {
    std::vector<Long> numbers;
    const auto world = Prepared(way);
    world->host.insideAny = [&numbers](Long number) { numbers.push_back(number); };
    way.enter(*world);
    return numbers;
}

void EndInside(World& world, std::size_t call, Ending ending) {
    auto count = std::make_shared<std::size_t>(0);
    world.host.insideAny = [&world, call, ending, count](Long) {
        if ((*count)++ == call) {
            Do(world, ending);
        }
    };
}

void EndInsideEveryCall(const Way& way) {
    constexpr int kAlike = 2;
    const std::vector<Long> numbers = CallsOf(way);
    EXPECT_TRUE(way.mayBeQuiet || !numbers.empty());
    std::map<Long, int> alike;
    for (std::size_t call = 0; call < numbers.size(); ++call) {
        const int before = alike[numbers[call]]++;
        for (const auto& [ending, name] : kEndings) {
            // The plain end stands for the others the second time.
            if (before >= (ending == Ending::kEnds ? kAlike : 1)) {
                continue;
            }
            SCOPED_TRACE(name + (" inside call " + std::to_string(call)) + ", impulse " +
                         std::to_string(numbers[call]));
            const auto world = Prepared(way);
            const Handle window = world->Window();
            EndInside(*world, call, ending);
            way.enter(*world);
            ExpectOver(*world, way, ending, window);
        }
    }
}

void NextItemInsideTheFirstCall(const Way& way) {
    const auto world = Prepared(way);
    int calls = 0;
    world->host.insideAny = [&](Long) {
        const sarnel::frmMAIN* main = world->State().ExistingMain();
        if (calls++ == 0 && main != nullptr && main->IsLoaded()) {
            world->HotKey(u"Next");
        }
    };
    way.enter(*world);
    world->host.insideAny = nullptr;
    EXPECT_TRUE(way.mayBeQuiet || calls > 0);
    world->End();
    ExpectSaved(*world, !way.emptiesList);
}

void Stay(World& /*world*/) {}

void Playing(World& world) {
    world.List().ListCurrent(0);
    sarnel::PlayCurrentItem();
}

void AtTheEnd(World& world) {
    world.List().ListCurrent(2);
    sarnel::PlayCurrentItem();
    world.host.playing = false;
}

void PlayingALongList(World& world) {
    constexpr std::size_t kRows = 300;
    world.List().RedrawFlag(false);
    world.Rows(std::vector<std::u16string>(kRows, u"row"));
    world.List().RedrawFlag(true);
    Playing(world);
}

std::function<void(World&)> HotKey(std::u16string_view name) {
    return [name](World& world) { world.HotKey(name); };
}

std::function<void(World&)> Call(std::function<void()> routine) {
    return [routine = std::move(routine)](World& world) { world.Do(routine); };
}

std::function<void(World&)> Command(std::u16string_view menuKey) {
    return Call([menuKey] { sarnel::RunMenuCommand(menuKey); });
}

std::function<void(World&)> KeyPress(Long code, Long shift) {
    return [code, shift](World& world) {
        world.driver.PushKey(code, shift);
        world.windows.DoEvents();
    };
}

void Tick(World& world) {
    world.Advance(kTickPeriod + 1);
}

std::function<void(World&)> Both(std::function<void(World&)> first,
                                 std::function<void(World&)> second) {
    return [first = std::move(first), second = std::move(second)](World& world) {
        first(world);
        second(world);
    };
}

Pointer::Pointer(World& world, const platform::Widget& on, Point at)
    : world_(world),
      origin_{world.windows.GetWindowRect(on.HWnd()).left,
              world.windows.GetWindowRect(on.HWnd()).top},
      at_{origin_.x + at.x, origin_.y + at.y} {
    world_.driver.MovePointer(at_);
    world_.driver.Push(platform::PointerMoved{at_});
}

Pointer::Pointer(World& world, const platform::Widget& on)
    : Pointer(world, on, {on.Width() / 2, on.Height() / 2}) {}

void Pointer::Press(Long button) {
    world_.driver.Push(platform::ButtonChanged{at_, button, true});
}

void Pointer::Release(Long button, Millis after) {
    Later(after, platform::ButtonChanged{at_, button, false});
}

void Pointer::MoveTo(Point at, Millis after) {
    at_ = {origin_.x + at.x, origin_.y + at.y};
    Later(after, platform::PointerMoved{at_});
}

void Pointer::Do() {
    world_.windows.DoEvents();
}

void Pointer::Later(Millis after, platform::DriverEvent event) {
    if (after == 0) {
        world_.driver.Push(std::move(event));
        return;
    }
    world_.windows.Schedule(
        after, [&driver = world_.driver, event = std::move(event)] { driver.Push(event); });
}

std::function<void(World&)> ClickOn(std::function<platform::Widget&(World&)> find, Long button) {
    return [find = std::move(find), button](World& world) {
        Pointer pointer(world, find(world));
        pointer.Press(button);
        pointer.Release(button);
        pointer.Do();
    };
}

void ChooseLater(World& world, std::u16string_view menuKey, Millis after) {
    const sarnel::JPopupMenu& menu = *world.Main().hMenu;
    const Long id = menuKey.empty() ? 0 : menu.MenuId(menu.IndexForKey(menuKey));
    world.windows.Schedule(after,
                           [&windows = world.windows, id] { windows.PopupMenus().EndMenu(id); });
}

}  // namespace support
