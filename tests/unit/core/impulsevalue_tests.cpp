#include "core/base/impulsevalue.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace sarnel {
namespace {

class Thing : public Object {};

// Which of the five kinds the value has, as a letter each.
std::string Kinds(const ImpulseValue& value) {
    return std::string(value.IsNull() ? "n" : "") + (value.IsLong() ? "l" : "") +
           (value.IsBoolean() ? "b" : "") + (value.IsString() ? "s" : "") +
           (value.IsObject() ? "o" : "");
}

TEST(ImpulseValue, EachPlainKindIsItselfAndNoOther) {
    Thing thing;
    EXPECT_EQ(Kinds(ImpulseValue()), "n");
    EXPECT_EQ(Kinds(Long{0}), "l");
    EXPECT_EQ(Kinds(false), "b");
    EXPECT_EQ(Kinds(u""), "s");
    EXPECT_EQ(Kinds(std::u16string(u"x")), "s");
    EXPECT_EQ(Kinds(std::u16string_view(u"x")), "s");
    EXPECT_EQ(Kinds(static_cast<Object*>(&thing)), "o");
    EXPECT_EQ(Kinds(static_cast<Object*>(nullptr)), "o");
    for (const ImpulseValue& value : {ImpulseValue(), ImpulseValue(Long{1}), ImpulseValue(u"x")}) {
        EXPECT_FALSE(value.IsReference());
    }
}

// Bytes and stray pointers must not become True in silence.
template <class T>
constexpr bool kBecomesAValue = std::is_convertible_v<T, ImpulseValue>;
static_assert(!kBecomesAValue<const char*> && !kBecomesAValue<char*> && !kBecomesAValue<char[4]>);
static_assert(!kBecomesAValue<const char (&)[4]> && !kBecomesAValue<std::string>);
static_assert(!kBecomesAValue<void*> && !kBecomesAValue<double*> && !kBecomesAValue<const Long*>);
static_assert(kBecomesAValue<const char16_t (&)[4]> && kBecomesAValue<char16_t*>);
static_assert(kBecomesAValue<Thing*> && kBecomesAValue<Object*> && kBecomesAValue<Object**>);
static_assert(kBecomesAValue<Long*> && kBecomesAValue<bool*> && kBecomesAValue<std::u16string*>);
static_assert(kBecomesAValue<ImpulseValue*>);

TEST(ImpulseValue, AReferenceReadsTheVariableAsItStandsNow) {
    Long number = 5;
    const ImpulseValue value(&number);
    EXPECT_TRUE(value.IsReference());
    EXPECT_EQ(Kinds(value), "l");
    EXPECT_EQ(value.AsLong(), 5);
    number = 6;
    EXPECT_EQ(value.AsLong(), 6);
    EXPECT_FALSE(value.Plain().IsReference());
    EXPECT_EQ(value.Plain().AsLong(), 6);
}

TEST(ImpulseValue, AReferenceMayLeadToAnother) {
    std::u16string text = u"abc";
    ImpulseValue inner(&text);
    ImpulseValue middle(&inner);
    ImpulseValue outer(&middle);
    EXPECT_EQ(outer.AsString(), u"abc");
    EXPECT_TRUE(outer.Assign(u"xyz"));
    EXPECT_EQ(text, u"xyz");
}

TEST(ImpulseValue, ANumberReadsAsNumberBooleanAndText) {
    const ImpulseValue value(Long{-12});
    EXPECT_EQ(value.AsLong(), -12);
    EXPECT_EQ(value.AsBoolean(), true);
    EXPECT_EQ(value.AsString(), u"-12");
    EXPECT_EQ(ImpulseValue(Long{0}).AsBoolean(), false);
    EXPECT_EQ(value.AsObject(), nullptr);
}

TEST(ImpulseValue, TrueIsMinusOne) {
    EXPECT_EQ(ImpulseValue(true).AsLong(), -1);
    EXPECT_EQ(ImpulseValue(false).AsLong(), 0);
    EXPECT_EQ(ImpulseValue(true).AsBoolean(), true);
    EXPECT_EQ(ImpulseValue(true).AsString(), u"True");
    EXPECT_EQ(ImpulseValue(false).AsString(), u"False");
}

TEST(ImpulseValue, ATextReadsAsWhatItSays) {
    EXPECT_EQ(ImpulseValue(u" 17 ").AsLong(), 17);
    EXPECT_EQ(ImpulseValue(u"abc").AsLong(), std::nullopt);
    EXPECT_EQ(ImpulseValue(u"").AsLong(), std::nullopt);
    EXPECT_EQ(ImpulseValue(u"tRUE").AsBoolean(), true);
    EXPECT_EQ(ImpulseValue(u"2").AsBoolean(), true);
    EXPECT_EQ(ImpulseValue(u"0").AsBoolean(), false);
    EXPECT_EQ(ImpulseValue(u"yes").AsBoolean(), std::nullopt);
    EXPECT_EQ(ImpulseValue(u" as it is ").AsString(), u" as it is ");
}

TEST(ImpulseValue, NullAndAnObjectHaveNoNumberBooleanOrText) {
    Thing thing;
    for (const ImpulseValue& value : {ImpulseValue(), ImpulseValue(static_cast<Object*>(&thing)),
                                      ImpulseValue(static_cast<Object*>(nullptr))}) {
        EXPECT_EQ(value.AsLong(), std::nullopt);
        EXPECT_EQ(value.AsBoolean(), std::nullopt);
        EXPECT_EQ(value.AsString(), std::nullopt);
    }
    EXPECT_EQ(ImpulseValue(static_cast<Object*>(&thing)).AsObject(), &thing);
}

TEST(ImpulseValue, AssignConvertsToTheKindOfTheVariable) {
    Long number = 1;
    bool boolean = false;
    std::u16string text;
    EXPECT_TRUE(ImpulseValue(&number).Assign(u" 42 "));
    EXPECT_TRUE(ImpulseValue(&boolean).Assign(Long{7}));
    EXPECT_TRUE(ImpulseValue(&text).Assign(true));
    EXPECT_EQ(number, 42);
    EXPECT_TRUE(boolean);
    EXPECT_EQ(text, u"True");
    EXPECT_TRUE(ImpulseValue(&number).Assign(true));
    EXPECT_TRUE(ImpulseValue(&boolean).Assign(u"False"));
    EXPECT_TRUE(ImpulseValue(&text).Assign(Long{-3}));
    EXPECT_EQ(number, -1);
    EXPECT_FALSE(boolean);
    EXPECT_EQ(text, u"-3");
}

TEST(ImpulseValue, AnAssignmentThatCannotConvertChangesNothing) {
    Thing thing;
    Long number = 1;
    bool boolean = true;
    std::u16string text = u"kept";
    Object* object = &thing;
    EXPECT_FALSE(ImpulseValue(&number).Assign(u"many"));
    EXPECT_FALSE(ImpulseValue(&number).Assign(ImpulseValue()));
    EXPECT_FALSE(ImpulseValue(&boolean).Assign(u"perhaps"));
    EXPECT_FALSE(ImpulseValue(&boolean).Assign(object));
    EXPECT_FALSE(ImpulseValue(&text).Assign(ImpulseValue()));
    EXPECT_FALSE(ImpulseValue(&object).Assign(Long{5}));
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(boolean);
    EXPECT_EQ(text, u"kept");
    EXPECT_EQ(object, &thing);
}

TEST(ImpulseValue, AnObjectVariableTakesAnObject) {
    Thing thing;
    Object* object = nullptr;
    ImpulseValue value(&object);
    EXPECT_EQ(Kinds(value), "o");
    EXPECT_TRUE(value.Assign(static_cast<Object*>(&thing)));
    EXPECT_EQ(object, &thing);
    EXPECT_EQ(value.AsObject(), &thing);
}

TEST(ImpulseValue, APlainValueIsReplacedByAnyKind) {
    ImpulseValue value(Long{5});
    EXPECT_TRUE(value.Assign(u"text"));
    EXPECT_EQ(Kinds(value), "s");
    EXPECT_TRUE(value.Assign(ImpulseValue()));
    EXPECT_EQ(Kinds(value), "n");
}

TEST(ImpulseValue, AssigningAReferenceTakesItsValueNotTheReference) {
    Long source = 5;
    ImpulseValue target(Long{0});
    EXPECT_TRUE(target.Assign(ImpulseValue(&source)));
    source = 6;
    EXPECT_EQ(target.AsLong(), 5);
    EXPECT_FALSE(target.IsReference());
}

TEST(TextToLong, TakesDecimalDigitsWithASignAndBlanksAround) {
    EXPECT_EQ(TextToLong(u"0"), 0);
    EXPECT_EQ(TextToLong(u"  -7  "), -7);
    EXPECT_EQ(TextToLong(u"+7"), 7);
    EXPECT_EQ(TextToLong(u"007"), 7);
    EXPECT_EQ(TextToLong(u"2147483647"), 2147483647);
    EXPECT_EQ(TextToLong(u"-2147483648"), -2147483647 - 1);
}

TEST(TextToLong, FailsForAnythingElse) {
    for (const char16_t* text : {u"", u"   ", u"-", u"+", u"+-5", u"-+5", u"--5", u"1 2", u"1.5",
                                 u"1e3", u"0x10", u"5a", u"a5", u"2147483648", u"-2147483649",
                                 u"99999999999999999999", u"\t5", u"\u0665", u"\xDCE9"}) {
        EXPECT_EQ(TextToLong(text), std::nullopt) << testing::PrintToString(std::u16string(text));
    }
}

TEST(TextToBoolean, TakesTheTwoWordsIgnoringCaseOrANumber) {
    EXPECT_EQ(TextToBoolean(u"True"), true);
    EXPECT_EQ(TextToBoolean(u" FALSE "), false);
    EXPECT_EQ(TextToBoolean(u"-1"), true);
    EXPECT_EQ(TextToBoolean(u"17"), true);
    EXPECT_EQ(TextToBoolean(u"0"), false);
    for (const char16_t* text : {u"", u"yes", u"Truee", u"T"}) {
        EXPECT_EQ(TextToBoolean(text), std::nullopt);
    }
}

TEST(TextToBoolean, TakesAnyDecimalNumber) {
    for (const char16_t* text : {u"1.0", u"0.5", u"-.5", u"+.5", u"5.", u"1.5", u" 1e3 ", u"1E-3",
                                 u"0.0001", u"2147483648", u"-99999999999999999999"}) {
        EXPECT_EQ(TextToBoolean(text), true) << testing::PrintToString(std::u16string(text));
    }
    for (const char16_t* text : {u"0.0", u"-0", u".0", u"0.", u"+0", u"000", u"0e5", u"-0.00"}) {
        EXPECT_EQ(TextToBoolean(text), false) << testing::PrintToString(std::u16string(text));
    }
    for (const char16_t* text :
         {u".", u"-", u"e3", u"1e", u"1e+", u"1.2.3", u"1,5", u"1 5", u"0x1", u"1f", u"--1", u"+-1",
          u"inf", u"-nan", u"infinity", u"1e999", u"\u0661", u"\uFF11", u"1\u00A0"}) {
        EXPECT_EQ(TextToBoolean(text), std::nullopt)
            << testing::PrintToString(std::u16string(text));
    }
}

TEST(TextOf, NumbersAreDecimalAndBooleansAreWords) {
    EXPECT_EQ(LongToText(0), u"0");
    EXPECT_EQ(LongToText(-2147483647 - 1), u"-2147483648");
    EXPECT_EQ(BooleanToText(true), u"True");
    EXPECT_EQ(BooleanToText(false), u"False");
    EXPECT_EQ(TextToBoolean(BooleanToText(true)), true);
    EXPECT_EQ(TextToBoolean(BooleanToText(false)), false);
}

}  // namespace
}  // namespace sarnel
