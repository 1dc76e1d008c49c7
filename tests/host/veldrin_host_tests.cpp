// The host object, impulse by impulse, between a component that only stands there and an engine
// that only takes note.
#include "host/veldrin_host.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/ambrisor.h"
#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using platform::Widen;
using sarnel::ImpulseValue;
using sarnel::Long;
using Calls = std::vector<std::string>;

/// A name with a byte that is not UTF-8.
const std::string kPath = "/m/b\xE9.aa";

class VeldrinHostTest : public testing::Test, private ItemListener, private RunListener {
  protected:
    /// Sends an impulse and answers what the host gives back as its result.
    Long Send(Long number, ImpulseValue wParam, ImpulseValue lParam1 = Long{0},
              ImpulseValue lParam2 = Long{0}) {
        ImpulseValue uMsg(&number);
        const ImpulseValue result =
            host_.ProcessImpulse(component_, uMsg, wParam, lParam1, lParam2);
        return result.AsLong().value_or(-1);
    }
    /// The answer to a question, in a variable of its kind as the component has one.
    Long NumberOf(Long number, Long wParam = 0) {
        Long answer = -77;
        EXPECT_EQ(Send(number, wParam, &answer), 1) << number;
        return answer;
    }
    std::u16string TextOf(Long number, ImpulseValue wParam, std::u16string start = {}) {
        EXPECT_EQ(Send(number, std::move(wParam), &start), 1) << number;
        return start;
    }
    bool YesOrNo(Long number, ImpulseValue wParam, bool start) {
        EXPECT_EQ(Send(number, std::move(wParam), &start), 1) << number;
        return start;
    }
    /// Whether the item was opened; the answer's variable begins with `start`.
    bool Open(const std::string& path, bool start) {
        std::u16string text = Widen(path);
        EXPECT_EQ(Send(26, Long{4711}, &text, &start), 1);
        EXPECT_EQ(text, Widen(path));
        return start;
    }

    Calls calls_;   // that reached the engine
    Calls events_;  // that the listener heard of

  private:
    void ItemOpened(const std::string& path) override { events_.push_back("opened " + path); }
    void ItemFailed(const std::string& path) override { events_.push_back("failed " + path); }
    void Stopped(bool ended) override { events_.push_back(ended ? "ended" : "stopped"); }
    void ExitRequested() override { events_.push_back("exit"); }
    void Closed() override { events_.push_back("closed"); }

  protected:
    Engine engine_{Output{}, [this](const std::string& call) { calls_.push_back(call); }};
    TagReader tags_;
    ScratchFolder scratch_;
    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kReal};
    platform::WindowSystem windows_{driver_};
    sarnel::Ambrisor component_{windows_, {scratch_.Path()}};
    VeldrinHost host_{engine_, tags_, *this, *this};
};

TEST_F(VeldrinHostTest, EachSettingReachesItsOwn) {
    const std::pair<Long, const char*> settings[] = {
        {29, "SetVolume"}, {30, "Seek"},    {41, "SetTempo"}, {42, "SetPitch"}, {43, "SetEcho"},
        {44, "SetReverb"}, {45, "SetBass"}, {46, "SetMid"},   {47, "SetTreble"}};
    for (const auto& [number, name] : settings) {
        for (const Long value : {-7, 0, 13}) {
            calls_.clear();
            EXPECT_EQ(Send(number, value), 1);
            EXPECT_EQ(calls_, Calls{name + (" " + std::to_string(value))});
        }
    }
    EXPECT_TRUE(events_.empty());
}

TEST_F(VeldrinHostTest, PositionLengthAndFactsOfTheStream) {
    EXPECT_EQ(NumberOf(31), 11);
    EXPECT_EQ(NumberOf(32), 222);
    EXPECT_EQ(NumberOf(36), 48000);
    EXPECT_EQ(NumberOf(38), 6);
    EXPECT_EQ(TextOf(39, Long{0}), u"320");
    EXPECT_TRUE(calls_.empty());
}

TEST_F(VeldrinHostTest, TimeTextsPlayedRemainingAndWhole) {
    EXPECT_EQ(TextOf(34, false), u"0:11");
    EXPECT_EQ(TextOf(34, true), u"-3:31");
    EXPECT_EQ(TextOf(35, Long{0}), u"3:42");
}

TEST_F(VeldrinHostTest, WhetherTheStreamRunsIsWhatTheEngineSays) {
    EXPECT_FALSE(YesOrNo(33, Long{0}, true));
    ASSERT_TRUE(Open(kPath, false));
    EXPECT_TRUE(YesOrNo(33, Long{0}, false));
    ASSERT_TRUE(Open("/m/over.aa", false));
    EXPECT_FALSE(YesOrNo(33, Long{0}, true));
}

TEST_F(VeldrinHostTest, QuestionsAboutFilesAreForTheFileNamed) {
    EXPECT_TRUE(YesOrNo(10, Widen("b\xE9.aa"), false));
    EXPECT_FALSE(YesOrNo(10, Widen("b.aa"), true));
    EXPECT_EQ(TextOf(11, ImpulseValue()), u"*.aa;*.bb");
    EXPECT_EQ(TextOf(13, Widen(kPath), Widen("name \xE9")),
              Widen("title of " + kPath + " else name \xE9"));
    EXPECT_EQ(TextOf(14, Widen(kPath)), Widen("info of " + kPath));
    EXPECT_EQ(TextOf(14, std::u16string()), u"info of ");
    EXPECT_TRUE(calls_.empty());
}

TEST_F(VeldrinHostTest, TheProgramsPathIsItsOwn) {
    EXPECT_EQ(TextOf(8, ImpulseValue()),
              Widen(std::filesystem::read_symlink("/proc/self/exe").native()));
}

TEST_F(VeldrinHostTest, OpeningTellsWhetherItWorked) {
    EXPECT_TRUE(Open(kPath, false));
    EXPECT_FALSE(Open("/m/dead.aa", true));
    EXPECT_EQ(calls_, (Calls{"Open " + kPath, "Open /m/dead.aa"}));
    EXPECT_EQ(events_, (Calls{"opened " + kPath, "failed /m/dead.aa"}));
}

TEST_F(VeldrinHostTest, PausingAndTogglingAreTwoThings) {
    EXPECT_EQ(Send(27, true), 1);
    EXPECT_EQ(Send(27, false), 1);
    EXPECT_EQ(calls_, (Calls{"Pause", "Toggle"}));
}

TEST_F(VeldrinHostTest, StoppingTellsWhetherTheStreamHadEnded) {
    EXPECT_EQ(Send(28, Long{0}), 1);
    ASSERT_TRUE(Open(kPath, false));
    EXPECT_EQ(Send(28, Long{0}), 1);
    ASSERT_TRUE(Open("/m/over.aa", false));
    EXPECT_EQ(Send(28, Long{0}), 1);
    EXPECT_EQ(Send(28, Long{0}), 1);
    EXPECT_EQ(calls_, (Calls{"Stop", "Open " + kPath, "Stop", "Open /m/over.aa", "Stop", "Stop"}));
    EXPECT_EQ(events_, (Calls{"stopped", "opened " + kPath, "stopped", "opened /m/over.aa", "ended",
                              "stopped"}));
}

TEST_F(VeldrinHostTest, AFailedOpenLeavesTheItemBeforeOpened) {
    ASSERT_TRUE(Open("/m/over.aa", false));
    EXPECT_FALSE(Open("/m/over and dead.aa", true));
    EXPECT_EQ(Send(28, Long{0}), 1);
    EXPECT_EQ(events_.back(), "ended");
}

TEST_F(VeldrinHostTest, WishesToEndAndTheEndAreHeard) {
    EXPECT_EQ(Send(15, Long{17}, false), 1);
    EXPECT_EQ(events_, Calls{"exit"});
    EXPECT_EQ(Send(7, Long{0}), 1);
    EXPECT_EQ(events_, (Calls{"exit", "closed"}));
    EXPECT_TRUE(calls_.empty());
}

TEST_F(VeldrinHostTest, OtherNumbersAreNotAnswered) {
    for (const Long number : {-1, 0, 3, 5, 6, 9, 12, 16, 25, 37, 40, 48, 1000}) {
        std::u16string first = u"as before";
        bool second = true;
        EXPECT_EQ(Send(number, Long{1}, &first, &second), 0) << number;
        EXPECT_EQ(first, u"as before") << number;
        EXPECT_TRUE(second) << number;
    }
    EXPECT_TRUE(calls_.empty());
    EXPECT_TRUE(events_.empty());
}

TEST_F(VeldrinHostTest, ItsCellsAreTheEnginesParts) {
    ASSERT_EQ(host_.Capacity(), 3);
    const char16_t* const names[] = {u"engine", u"tags", u"\u00E9 output"};
    for (Long number = 1; number <= 3; ++number) {
        sarnel::HostCell* cell = host_.CellItem(number);
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(cell->getClass(), names[number - 1]);
    }
    for (Long number : {-1, 0, 4}) {
        EXPECT_EQ(host_.CellItem(number), nullptr);
    }
}

TEST_F(VeldrinHostTest, ItsCellsAreThereBeforeTheyAreCounted) {
    Long last = 3;
    EXPECT_NE(host_.CellItem(last), nullptr);
}

}  // namespace
}  // namespace veldrin
