#include "tests/conformance/broken_drivers.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace conformance {

namespace {

using namespace platform;

// Time.

struct ClockGoesBack : PaperDriver {
    Millis Now() const override { return PaperDriver::Now() - ++asked % 2; }
    mutable Millis asked = 0;
};
struct ClockStandsStill : PaperDriver {
    void WaitUntil(std::optional<Millis>) override { PaperDriver::WaitUntil({}); }
};
struct ReturnsEarly : PaperDriver {
    void WaitUntil(std::optional<Millis> deadline) override {
        PaperDriver::WaitUntil(std::min(deadline.value_or(Now()), Now() + 1));
    }
};
struct OversleepsByMuch : PaperDriver {
    void WaitUntil(std::optional<Millis> deadline) override {
        PaperDriver::WaitUntil(deadline.value_or(Now()) + 2000);
    }
};
struct WaitsForThePast : PaperDriver {
    void WaitUntil(std::optional<Millis> deadline) override {
        PaperDriver::WaitUntil(deadline <= Now() ? Now() + 1000 : deadline);
    }
};
struct WaitsBesideEvents : PaperDriver {
    void WaitUntil(std::optional<Millis> deadline) override {
        const auto held = std::exchange(events, {});
        PaperDriver::WaitUntil(deadline);
        events = held;
    }
};
struct ExpectsNobody : PaperDriver {
    bool ExpectsInput() const override { return false; }
};
struct InventsEvents : PaperDriver {
    std::optional<DriverEvent> NextEvent() override {
        const auto event = PaperDriver::NextEvent();
        return event ? event : PointerLeft{};
    }
};
struct CallsWatchesAtOnce : PaperDriver {
    void Watch(int descriptor, std::function<void()> onReadable) override {
        PaperDriver::Watch(descriptor, onReadable);
        PaperDriver::WaitUntil({});
    }
};
struct CallsWatchesWhileKeepingShown : PaperDriver {
    void KeepShown() override { PaperDriver::WaitUntil({}); }
};
struct CallsWatchesForNothing : PaperDriver {
    void Watch(int descriptor, std::function<void()> onReadable) override {
        PaperDriver::Watch(descriptor, onReadable);
        always = onReadable;
    }
    void WaitUntil(std::optional<Millis> deadline) override {
        PaperDriver::WaitUntil(deadline);
        if (always) {
            always();
        }
    }
    std::function<void()> always;
};
struct KeepsEndedWatches : PaperDriver {
    void Watch(int descriptor, std::function<void()> onReadable) override {
        if (onReadable) {
            PaperDriver::Watch(descriptor, onReadable);
        }
    }
};
struct FirstWatchStays : PaperDriver {
    void Watch(int descriptor, std::function<void()> onReadable) override {
        if (!onReadable || known.insert({descriptor, 0}).second) {
            PaperDriver::Watch(descriptor, onReadable);
        }
    }
    std::map<int, int> known;
};
// Looks once what can be read, and calls all of that, whatever happens in between.
struct CallsWhatWasReadable : PaperDriver {
    void Watch(int descriptor, std::function<void()> onReadable) override {
        all[descriptor] = onReadable;
    }
    void WaitUntil(std::optional<Millis> deadline) override {
        std::vector<int> readable;
        for (const auto& [descriptor, onReadable] : all) {
            pollfd asked{descriptor, POLLIN, 0};
            if (onReadable && poll(&asked, 1, 0) > 0) {
                readable.push_back(descriptor);
            }
        }
        for (const int descriptor : readable) {
            if (const auto onReadable = all[descriptor]) {
                onReadable();
            }
        }
        PaperDriver::WaitUntil(deadline);
    }
    std::map<int, std::function<void()>> all;
};
struct SameSeed : PaperDriver {
    std::uint64_t RandomSeed() override { return 1; }
};

// Windows.

struct NoRoom : PaperDriver {
    Rect WorkArea() const override { return {}; }
};
struct OtherWorkArea : PaperDriver {
    Rect WorkAreaAt(Point) const override { return {0, 0, 1024, 768}; }
};
struct ThrowsAtStrangers : PaperDriver {
    void SetTopLevelTitle(Handle window, std::u16string_view) override { windows.at(window); }
};
struct TellsOfStrangers : PaperDriver {
    void DestroyTopLevel(Handle window) override {
        PaperDriver::DestroyTopLevel(window);
        events.push_back(CloseRequested{window});
    }
};
struct EchoesMinimising : PaperDriver {
    void SetTopLevelMinimised(Handle window, bool minimised) override {
        PaperDriver::SetTopLevelMinimised(window, minimised);
        if (minimised) {
            events.push_back(MinimisedByDesktop{window});
        }
    }
};
struct EchoesRestoring : PaperDriver {
    void SetTopLevelMinimised(Handle window, bool minimised) override {
        PaperDriver::SetTopLevelMinimised(window, minimised);
        if (!minimised) {
            events.push_back(RestoredByDesktop{window});
        }
    }
};
struct EchoesPlaces : PaperDriver {
    void SetTopLevelRect(Handle window, const Rect& rect) override {
        PaperDriver::SetTopLevelRect(window, rect);
        events.push_back(MovedByDesktop{window, {rect.left, rect.top}});
    }
};
struct RefusesFarPlaces : PaperDriver {
    void SetTopLevelRect(Handle window, const Rect& rect) override {
        if (rect.left < -32'000) {
            throw std::out_of_range("a place");
        }
        PaperDriver::SetTopLevelRect(window, rect);
    }
};
struct LosesReleasedInput : PaperDriver {
    void ReleaseInput() override { events.push_back(InputLost{}); }
};
struct ClosesHidden : PaperDriver {
    void SetTopLevelVisible(Handle window, bool visible) override {
        PaperDriver::SetTopLevelVisible(window, visible);
        if (!visible) {
            events.push_back(CloseRequested{window});
        }
    }
};
// As one that takes each wish to close for the end of the window.
struct ReportsClosingOnce : PaperDriver {
    std::optional<DriverEvent> NextEvent() override {
        auto event = PaperDriver::NextEvent();
        if (event && std::holds_alternative<CloseRequested>(*event) && ++asked > 1) {
            return PaperDriver::NextEvent();
        }
        return event;
    }
    int asked = 0;
};
struct MovesElsewhere : PaperDriver {
    std::optional<DriverEvent> NextEvent() override {
        auto event = PaperDriver::NextEvent();
        if (event && std::holds_alternative<MovedByDesktop>(*event)) {
            std::get<MovedByDesktop>(*event).ptScreen.x += 4;  // the frame
        }
        return event;
    }
};

// Pictures.

struct CountsNewOnesAsUnseen : PaperDriver {
    bool IsSeen(Handle window) const override {
        const auto found = windows.find(window);
        return found == windows.end() || found->second.shown.Width() > 0;
    }
};
struct ShowsFirstPicturesOnly : PaperDriver {
    void ShowPicture(Handle window, const Surface& picture,
                     std::span<const Rect> changed) override {
        if (Find(window) != nullptr && Find(window)->shown.IsEmpty()) {
            PaperDriver::ShowPicture(window, picture, changed);
        }
    }
};
struct SwapsRedAndBlue : PaperDriver {
    void ShowPicture(Handle window, const Surface& picture,
                     std::span<const Rect> changed) override {
        Surface swapped = picture;
        for (Long y = 0; y < picture.Height(); ++y) {
            for (Long x = 0; x < picture.Width(); ++x) {
                swapped.SetPixel({x, y}, static_cast<Colour>(PixelOf(picture.GetPixel({x, y}))));
            }
        }
        PaperDriver::ShowPicture(window, swapped, changed);
    }
};
struct ShowsOneChange : PaperDriver {
    void ShowPicture(Handle window, const Surface& picture,
                     std::span<const Rect> changed) override {
        PaperDriver::ShowPicture(window, picture,
                                 changed.first(std::min<std::size_t>(changed.size(), 1)));
    }
};
struct ForgetsHiddenPictures : PaperDriver {
    void SetTopLevelVisible(Handle window, bool visible) override {
        PaperDriver::SetTopLevelVisible(window, visible);
        if (!visible && Find(window) != nullptr) {
            Find(window)->shown = Surface();
        }
    }
};
struct ForgetsMinimisedPictures : PaperDriver {
    void SetTopLevelMinimised(Handle window, bool minimised) override {
        PaperDriver::SetTopLevelMinimised(window, minimised);
        if (minimised && Find(window) != nullptr) {
            Find(window)->shown = Surface();
        }
    }
};
struct KeepsItsSize : PaperDriver {
    void SetTopLevelRect(Handle window, const Rect& rect) override {
        if (Find(window) != nullptr && platform::IsEmpty(Find(window)->rect)) {
            PaperDriver::SetTopLevelRect(window, rect);
        }
    }
};
struct StaysOnTheTable : PaperDriver {
    void SetTopLevelRect(Handle window, const Rect& rect) override {
        PaperDriver::SetTopLevelRect(window, Offset(rect, {std::max(-rect.left, 0), 0}));
    }
};
struct HidesPopups : PaperDriver {
    void SetTopLevelPopup(Handle window, Handle, PopupKind) override { DestroyTopLevel(window); }
};

}  // namespace

BrokenDriver Breaks(std::unique_ptr<PaperDriver> (*make)(), const char* rule, const char* fault) {
    return {fault, rule, [make] { return std::make_unique<PushedDesktop>(make()); }};
}

std::vector<BrokenDriver> BrokenInTime() {
    return {
        Breaks<ClockGoesBack>("time.never_goes_back", "the clock goes back"),
        Breaks<ClockStandsStill>("time.waits_until_the_deadline", "waiting takes no time"),
        Breaks<ReturnsEarly>("time.waits_until_the_deadline", "waits end early"),
        Breaks<OversleepsByMuch>("time.waits_until_the_deadline", "waits last too long"),
        Breaks<WaitsForThePast>("time.does_not_wait_for_the_past", "what is past is waited for"),
        Breaks<WaitsBesideEvents>("time.does_not_wait_while_an_event_waits",
                                  "it waits beside queued events"),
        Breaks<ExpectsNobody>("time.does_not_wait_while_an_event_waits",
                              "queued events are not expected"),
        Breaks<InventsEvents>("time.without_events_there_is_none", "events are invented"),
        Breaks<CallsWatchesAtOnce>("watch.is_called_from_waits_alone",
                                   "a watch is called as it begins"),
        Breaks<CallsWatchesWhileKeepingShown>("watch.is_called_from_waits_alone",
                                              "watches are called by KeepShown"),
        Breaks<CallsWatchesForNothing>("watch.is_called_when_there_is_something",
                                       "watches are called for nothing"),
        Breaks<KeepsEndedWatches>("watch.is_not_called_after_its_end", "ended watches are called"),
        Breaks<KeepsEndedWatches>("watch.may_end_itself", "a watch cannot end itself"),
        Breaks<FirstWatchStays>("watch.is_not_called_after_its_end",
                                "the first function of a watch stays"),
        Breaks<CallsWhatWasReadable>("watch.may_wait", "a watch is called for what has been read"),
        Breaks<SameSeed>("chance.seeds_are_fresh", "all seeds are the same"),
    };
}

std::vector<BrokenDriver> BrokenInWindows() {
    return {
        Breaks<NoRoom>("screen.has_room", "the work area is empty"),
        Breaks<OtherWorkArea>("screen.work_areas_lie_in_the_whole", "a screen lies beside all"),
        Breaks<ThrowsAtStrangers>("windows.unknown_handles_do_nothing", "unknown handles throw"),
        Breaks<TellsOfStrangers>("windows.unknown_handles_do_nothing",
                                 "events tell of windows that have gone"),
        Breaks<EchoesMinimising>("windows.own_doing_is_no_news", "own minimising is reported"),
        Breaks<EchoesMinimising>("windows.minimising_is_reported_once", "minimising is echoed"),
        Breaks<EchoesRestoring>("windows.minimising_is_reported_once", "restoring is echoed"),
        Breaks<EchoesPlaces>("windows.own_doing_is_no_news", "own moves are reported"),
        Breaks<EchoesPlaces>("windows.move_by_the_desktop_is_reported", "moves are echoed"),
        Breaks<ClosesHidden>("windows.own_doing_is_no_news", "hiding wants to close"),
        Breaks<RefusesFarPlaces>("windows.any_place_and_title_will_do", "far places throw"),
        Breaks<LosesReleasedInput>("windows.popups_come_and_go_as_they_are",
                                   "released input is lost"),
        Breaks<LosesReleasedInput>("input.grab_reaches_everywhere", "released input is lost"),
        Breaks<ReportsClosingOnce>("windows.closing_is_a_request", "closing is reported once"),
        Breaks<MovesElsewhere>("windows.move_by_the_desktop_is_reported",
                               "moves are reported beside their place"),
        Breaks<CountsNewOnesAsUnseen>("pictures.new_window_counts_as_seen",
                                      "new windows count as unseen"),
        Breaks<SwapsRedAndBlue>("pictures.shown_as_it_is", "red and blue are swapped"),
        Breaks<ShowsFirstPicturesOnly>("pictures.changes_are_shown", "changes are not shown"),
        Breaks<ShowsOneChange>("pictures.changes_are_shown", "one change of two is shown"),
        Breaks<ForgetsHiddenPictures>("pictures.stays_while_hidden",
                                      "hidden windows lose their pictures"),
        Breaks<ForgetsMinimisedPictures>("pictures.comes_back_after_minimising",
                                         "minimised windows lose their pictures"),
        Breaks<KeepsItsSize>("pictures.follows_the_size", "sizes are not followed"),
        Breaks<StaysOnTheTable>("pictures.stands_where_it_was_put", "no place is left of 0"),
        Breaks<HidesPopups>("pictures.popup_lies_above", "popups are not shown"),
    };
}

}  // namespace conformance
