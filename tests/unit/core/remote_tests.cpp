// What a host may ask of a run beyond the impulses.
#include "core/remote.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>

#include "platform/base/text.h"
#include "platform/files/files.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::World;
using support::WorldBuilder;

class RemoteTest : public ::testing::Test {
  protected:
    /// Whether the counter has another number, and the observer was called, after `change`.
    template <class Change>
    testing::AssertionResult Counts(Change change) {
        int calls = 0;
        remote_.OnNextChange([&calls] { ++calls; });
        const std::uint64_t before = remote_.Changes();
        change(world_->List());
        const bool counted = remote_.Changes() != before;
        remote_.OnNextChange({});
        if (counted != (calls == 1) || calls > 1) {
            return testing::AssertionFailure() << "counted " << counted << ", calls " << calls;
        }
        return counted ? testing::AssertionSuccess() : testing::AssertionFailure() << "no change";
    }

    std::string Written(const ListCopy& copy) {
        platform::FileWriter file(world_->folder.Text("copy"));
        copy.WriteTo(file);
        EXPECT_TRUE(file.Close());
        return world_->folder.Read("copy").value_or("no file");
    }

    std::unique_ptr<World> world_ =
        WorldBuilder().Rows({u"/music/a.mp3", u"/music/b.mp3"}).Started();
    Remote remote_{*world_->component};
};

TEST_F(RemoteTest, RowsAndCurrentRow) {
    EXPECT_TRUE(remote_.IsLoaded());
    EXPECT_EQ(remote_.ListCount(), 2);
    EXPECT_EQ(remote_.RowPath(1), u"/music/b.mp3");
    EXPECT_EQ(remote_.RowTitle(1), world_->List().List(1));
    EXPECT_EQ(remote_.RowPath(2), u"");
    EXPECT_EQ(remote_.RowPath(-1), u"");
    EXPECT_EQ(remote_.ListCurrent(), -1);
    world_->List().ListCurrent(1);
    EXPECT_EQ(remote_.ListCurrent(), 1);
}

TEST_F(RemoteTest, WhatTheFileHoldsCounts) {
    EXPECT_TRUE(Counts([](JList& list) { list.AddItem(u"c", u"/c"); }));
    EXPECT_TRUE(Counts([](JList& list) { list.AddLast(RowText(u"d"), RowText(u"/d")); }));
    EXPECT_TRUE(Counts([](JList& list) { list.RemoveItem(0); }));
    EXPECT_TRUE(Counts([](JList& list) { list.ListData(0, u"/elsewhere"); }));
    EXPECT_TRUE(Counts([](JList& list) { list.ListCurrent(1); }));
    EXPECT_TRUE(Counts([](JList& list) { list.Sort(false); }));
    EXPECT_TRUE(Counts([](JList& list) { list.ReverseStringArray(); }));
    EXPECT_TRUE(Counts([](JList& list) { list.Clear(); }));
}

TEST_F(RemoteTest, WhatTheFileDoesNotHoldDoesNotCount) {
    world_->List().ListCurrent(1);
    EXPECT_FALSE(Counts([](JList& list) { list.ListCurrent(1); }));
    EXPECT_FALSE(Counts([](JList& list) { list.ListIndex(0); }));
    EXPECT_FALSE(Counts([](JList& list) { list.Selected(0, true); }));
    EXPECT_FALSE(Counts([](JList& list) { list.ClearOrSelect(-1, -1, true); }));
    EXPECT_FALSE(Counts([](JList& list) { list.RemoveItem(7); }));
    EXPECT_FALSE(Counts([](JList& list) { list.DisplayFrom(1); }));
}

TEST_F(RemoteTest, TheObserverIsCalledOnceUntilItIsGivenAgain) {
    int calls = 0;
    remote_.OnNextChange([&calls] { ++calls; });
    world_->List().AddItem(u"c", u"/c");
    world_->List().AddItem(u"d", u"/d");
    EXPECT_EQ(calls, 1);
    remote_.OnNextChange([&calls] { ++calls; });
    world_->List().Clear();
    EXPECT_EQ(calls, 2);
}

TEST_F(RemoteTest, TheCopyIsTheFile) {
    world_->List().AddItem(platform::Widen("caf\xC3\xA9 \xE2\x82\xAC"),
                           platform::Widen("/caf\xE9"));
    world_->List().AddItem(u"", u"\u00FF");
    world_->List().AddItem(std::u16string(3'000'000, u'x'), std::u16string(700'000, u'\u20AC'));
    world_->List().AddItem(u"last", u"/last");
    world_->List().ListCurrent(3);
    ASSERT_TRUE(world_->List().Serialize(world_->folder.Text("list")));
    const ListCopy copy = remote_.CopyList();
    EXPECT_EQ(copy.ListCount(), 6);
    EXPECT_EQ(copy.ListCurrent(), 3);
    EXPECT_EQ(Written(copy), world_->folder.Read("list"));
}

TEST_F(RemoteTest, ACopyOfNothingIsThreeLines) {
    world_->List().Clear();
    EXPECT_EQ(Written(remote_.CopyList()), "OMK v1.1\r\n 0 \r\n-1 \r\n");
}

TEST_F(RemoteTest, ACopyIsApartFromTheListAndGoodOnAnotherThread) {
    const ListCopy copy = remote_.CopyList();
    ASSERT_TRUE(world_->List().Serialize(world_->folder.Text("list")));
    world_->List().Clear();
    std::string written;
    std::thread([&] { written = Written(copy); }).join();
    EXPECT_EQ(written, world_->folder.Read("list"));
}

TEST_F(RemoteTest, BeforeTheRunAndBehindItNothingIsThere) {
    world_->End();
    EXPECT_FALSE(remote_.IsLoaded());
    EXPECT_EQ(remote_.ListCount(), 0);
    EXPECT_EQ(remote_.ListCurrent(), -1);
    EXPECT_EQ(remote_.RowPath(0), u"");
    EXPECT_EQ(remote_.Changes(), 0U);
    remote_.OnNextChange([] { ADD_FAILURE(); });
    world_->Create();
    EXPECT_FALSE(Remote(*world_->component).IsLoaded());
}

}  // namespace
}  // namespace sarnel
