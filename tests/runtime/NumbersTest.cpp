#include "runtime/Numbers.h"

#include <gtest/gtest.h>

using namespace kavori;

TEST(Numbers, HalvesRoundToEvenAndIntFloors)
{
    EXPECT_EQ(RoundHalfEven(0.5), 0);
    EXPECT_EQ(RoundHalfEven(1.5), 2);
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(-3.5), -4);
    EXPECT_EQ(RoundHalfEven(2.5000001), 3);
    EXPECT_EQ(RoundHalfEven(2.4999999), 2);
    EXPECT_EQ(Int(1.9), 1.0);
    EXPECT_EQ(Int(-1.5), -2.0);
    EXPECT_EQ(Int(-2.0), -2.0);
}

TEST(Numbers, TextToWholeNumbers)
{
    EXPECT_EQ(ToInt16(QStringLiteral("42")), 42);
    EXPECT_EQ(ToInt16(QStringLiteral("  -7 ")), -7);
    EXPECT_EQ(ToInt16(QStringLiteral("2.5")), 2);
    EXPECT_EQ(ToInt16(QStringLiteral("3.5")), 4);
    EXPECT_EQ(ToInt16(QStringLiteral("&H10")), 16);
    EXPECT_EQ(ToInt16(QStringLiteral("1e3")), 1000);
    EXPECT_EQ(ToInt16(QStringLiteral("32767")), 32767);
    EXPECT_EQ(ToInt16(QStringLiteral("-32768")), -32768);
    // Not numbers, or too large for 16 bits: no value, so the caller takes its default.
    EXPECT_FALSE(ToInt16(QStringLiteral("")));
    EXPECT_FALSE(ToInt16(QStringLiteral("abc")));
    EXPECT_FALSE(ToInt16(QStringLiteral("12abc")));
    EXPECT_FALSE(ToInt16(QStringLiteral("32768")));
    EXPECT_FALSE(ToInt16(QStringLiteral("nan")));
    EXPECT_EQ(ToInt32(QStringLiteral("32768")), 32768);
    EXPECT_EQ(ToInt32(QStringLiteral("-2147483648")), std::numeric_limits<qint32>::min());
    EXPECT_FALSE(ToInt32(QStringLiteral("2147483648")));
    EXPECT_FALSE(ToInt32(QStringLiteral("inf")));
    EXPECT_EQ(BoolValue(true), -1);
    EXPECT_EQ(BoolValue(false), 0);
}
