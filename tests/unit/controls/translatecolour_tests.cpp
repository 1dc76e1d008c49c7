#include "controls/list/translatecolour.h"

#include <gtest/gtest.h>

namespace sarnel {
namespace {

using platform::Colour;

Colour Code(std::uint32_t bits) {
    return static_cast<Colour>(bits);
}

TEST(TranslateColour, PlainColoursStayAsTheyAre) {
    for (const Colour colour : {0, 0xFFFFFF, 0x123456}) {
        EXPECT_EQ(OleTranslateColor(colour), colour);
    }
}

TEST(TranslateColour, CodesOfTheSystemsColoursBecomeColours) {
    EXPECT_EQ(OleTranslateColor(Code(0x80000005)), 0xFFFFFF);  // window
    EXPECT_EQ(OleTranslateColor(Code(0x80000008)), 0);         // its text
    for (std::uint32_t index = 0; index < 25; ++index) {
        const Colour colour = OleTranslateColor(Code(0x80000000 + index));
        EXPECT_GE(colour, 0);
        EXPECT_LE(colour, 0xFFFFFF);
    }
}

TEST(TranslateColour, AnythingElseFails) {
    for (const std::uint32_t bits :
         {0x80000019U, 0x01000000U, 0x02FFFFFFU, 0x81000005U, 0xFFFFFFFFU, 0x7FFFFFFFU}) {
        EXPECT_EQ(OleTranslateColor(Code(bits)), -1) << bits;
    }
}

}  // namespace
}  // namespace sarnel
