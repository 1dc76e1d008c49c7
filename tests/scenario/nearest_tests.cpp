#include "tests/scenario/nearest.h"

#include <gtest/gtest.h>

namespace scenario {
namespace {

TEST(DistanceTest, CountsLettersThatAreWrong) {
    EXPECT_EQ(Distance("", ""), 0u);
    EXPECT_EQ(Distance("", "abc"), 3u);
    EXPECT_EQ(Distance("abc", ""), 3u);
    EXPECT_EQ(Distance("list", "list"), 0u);
    EXPECT_EQ(Distance("list", "lisp"), 1u);
    EXPECT_EQ(Distance("list", "lists"), 1u);
    EXPECT_EQ(Distance("list", "ist"), 1u);
    EXPECT_EQ(Distance("kitten", "sitting"), 3u);
}

TEST(DistanceTest, NeighboursThatHaveChangedPlacesAreOneLetter) {
    EXPECT_EQ(Distance("strat", "start"), 1u);
    EXPECT_EQ(Distance("ab", "ba"), 1u);
    EXPECT_EQ(Distance("abcd", "badc"), 2u);
}

TEST(DistanceTest, CaseCountsAsNothing) {
    EXPECT_EQ(Distance("listcount", "ListCount"), 0u);
    EXPECT_EQ(Distance("[", "{"), 1u);  // no letters, though as far apart as the two cases of one
}

TEST(DidYouMeanTest, NamesTheNearest) {
    EXPECT_EQ(DidYouMean("strat", {"press", "start", "restart"}), "; did you mean start?");
    EXPECT_EQ(DidYouMean("Start", {"start"}), "; did you mean start?");
    EXPECT_EQ(DidYouMean("ListCont", {"ListCurrent", "ListCount"}), "; did you mean ListCount?");
}

TEST(DidYouMeanTest, TheFirstOfSeveralCounts) {
    EXPECT_EQ(DidYouMean("SetX", {"SetA", "SetB"}), "; did you mean SetA?");
}

TEST(DidYouMeanTest, NothingIsSaidWhereNoneIsNear) {
    EXPECT_EQ(DidYouMean("strat", {}), "");
    EXPECT_EQ(DidYouMean("start", {"stop", "quit"}), "");
    EXPECT_EQ(DidYouMean("k4", {"k1"}), "");        // one of two letters
    EXPECT_EQ(DidYouMean("abcde", {"abcxy"}), "");  // two of five
    EXPECT_EQ(DidYouMean("abcdef", {"abcdxy"}), "; did you mean abcdxy?");
    EXPECT_EQ(DidYouMean("abcdefghijkl", {"wxyzefghijkl"}), "");  // four, of however many
    EXPECT_EQ(DidYouMean("abcdefghijkl", {"wxydefghijkl"}), "; did you mean wxydefghijkl?");
}

}  // namespace
}  // namespace scenario
