#include "util/NumberText.h"
#include "util/VariantText.h"

#include <gtest/gtest.h>
#include <limits>

using namespace plumb;

TEST(ValueText, NumbersRoundTrimAndKeepTheirZeros) {
    struct Case {
        double value;
        int decimals;
        const char* whole;
        const char* trimmed;
    };
    const Case cases[] = {
        {2.5, 4, "2.5000", "2.5"},
        {3.0, 4, "3.0000", "3"},
        {0.00004, 4, "0.0000", "0.0000"},
        {-0.00004, 4, "0.0000", "0.0000"},
        {0.0, 4, "0.0000", "0"},
        {-0.0, 0, "0", "0"},
        {0.4, 0, "0", "0"},
        // Halves go away from zero; what only looks like one does not.
        {0.125, 2, "0.13", "0.13"},
        {-0.125, 2, "-0.13", "-0.13"},
        {2.5, 0, "3", "3"},
        {0.5, 0, "1", "1"},
        {1.005, 2, "1.00", "1"},
        {9.995, 2, "9.99", "9.99"},
        {99.999, 2, "100.00", "100"},
        {10.0, 0, "10", "10"},
        {100.25, 20, "100.2500000000", "100.25"},
        {7.0, -3, "7", "7"},
        {1e21, 1, "1000000000000000000000.0", "1000000000000000000000"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(DoubleToText(c.value, c.decimals, false), c.whole) << c.value;
        EXPECT_EQ(DoubleToText(c.value, c.decimals, true), c.trimmed) << c.value;
    }
    EXPECT_EQ(DoubleToText(std::numeric_limits<double>::infinity(), 2, true), "inf");
    EXPECT_EQ(DoubleToText(1e308, 10, true).size(), 309U);
}

TEST(ValueText, CommasStandBetweenGroups) {
    const std::pair<double, const char*> cases[] = {
        {-123456.5, "-123,456.5"},   {-123.0, "-123"},    {123.0, "123"}, {1234.0, "1,234"},
        {1234567.25, "1,234,567.3"}, {-1234.0, "-1,234"}, {0.04, "0.0"},  {999.96, "1,000"},
    };
    for (const auto& [value, text] : cases) EXPECT_EQ(DoubleToTextWithCommas(value, 1), text);
}

TEST(ValueText, FeetAndInchesThereAndBack) {
    const std::pair<double, const char*> cases[] = {
        {66.0, "5-6"}, {66.25, "5-6.25"}, {-18.0, "-1-6"},    {0.0, "0-0"},
        {12.0, "1-0"}, {-6.5, "-0-6.5"},  {11.99999, "0-12"}, {0.00001, "0-0.0000"},
    };
    for (const auto& [inches, text] : cases) {
        EXPECT_EQ(InchesToFeetText(inches), text);
        EXPECT_NEAR(FeetTextToInches(text), inches, 1e-4) << text;
    }
    EXPECT_EQ(FeetTextToInches("12"), 144.0);
    EXPECT_EQ(FeetTextToInches("1-6"), 18.0);
    EXPECT_EQ(FeetTextToInches("x-y"), 0.0);
    EXPECT_EQ(FeetTextToInches(""), 0.0);
    EXPECT_EQ(FeetTextToInches("--6"), -6.0);
    EXPECT_EQ(FeetTextToInches(" -1-6"), -18.0) << "a blank in front is no sign";
}

TEST(ValueText, QuotesForSql) {
    EXPECT_EQ(SqlQuote(""), "' '");
    EXPECT_EQ(SqlQuote("1/2\" o'clock"), "'1/2\" o''clock'");
}

TEST(ValueText, TaggedValuesConvertByTheirType) {
    const std::int16_t minusOne = -1;
    struct Case {
        COleVariant value;
        const char* text;
        long whole;
        double real;
        bool truth;
    };
    const Case cases[] = {
        {{}, "", 0, 0, false},
        {COleVariant::null(), "", 0, 0, false},
        {{minusOne}, "-1", -1, -1, false},
        {{minusOne, VT_BOOL}, "-1", -1, 0, true},
        {MakeBoolVariant(false), "0", 0, 0, false},
        {MakeLongVariant(1234567), "1234567", 1234567, 1234567, false},
        {{std::uint8_t{200}}, "200", 200, 200, false},
        {{-1234.56}, "-1,234.6", -1234, -1234.56, false},
        {{1e300}, nullptr, std::numeric_limits<std::int32_t>::max(), 1e300, false},
        {{0.5F}, "0.5", 0, 0.5, false},
        {MakeTextVariant(" 12  "), " 12", 0, 0, false},
        {COleVariant::date(2.5), "1900-01-01 12:00:00", 0, 0, false},
        {COleVariant::date(46349.0), "2026-11-23", 0, 0, false},
        {{std::vector<COleVariant>{{1.0}}}, "", 0, 0, false},
    };
    for (const Case& c : cases) {
        if (c.text) {
            EXPECT_EQ(VariantToText(c.value, 1), c.text);
        }
        EXPECT_EQ(VariantToLong(c.value), c.whole) << c.text;
        EXPECT_EQ(VariantToDouble(c.value), c.real) << c.text;
        EXPECT_EQ(VariantToBool(c.value), c.truth) << c.text;
    }
}
