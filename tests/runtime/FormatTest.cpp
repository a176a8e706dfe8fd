#include "runtime/Format.h"

#include <gtest/gtest.h>

using kavori::Format;

TEST(Format, WholeNumberPatterns)
{
    struct Case {
        qint64 value;
        const char* pattern;
        const char* expected;
    };
    const Case cases[] = {
        {0, "###,###", ""},
        {0, "###,##0", "0"},
        {0, "###,###,##0", "0"},
        {7, "###,###", "7"},
        {999, "###,###", "999"},
        {1000, "###,###", "1,000"},
        {10000, "###,###", "10,000"},
        {1234567, "###,##0", "1,234,567"},
        {1234567890, "###,###,##0", "1,234,567,890"},
        {123456789012345LL, "###,###", "123,456,789,012,345"},
        {-1234, "###,###", "-1,234"},
        {-5, "###,##0", "-5"},
        {10000, "###,##0", "10,000"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Format(c.value, QString::fromLatin1(c.pattern)), QString::fromLatin1(c.expected))
            << c.value << " " << c.pattern;
}

TEST(Format, DecimalPatterns)
{
    struct Case {
        double value;
        const char* pattern;
        const char* expected;
    };
    const Case cases[] = {
        {0.0, "###,##0.0", "0.0"},
        {0.0, "###,###.0", ".0"},
        {0.0, "###,###,##0.0", "0.0"},
        {0.25, "###,###.0", ".3"}, // halves round away from zero
        {0.05, "###,##0.0", "0.1"},
        {0.04, "###,##0.0", "0.0"},
        {1.25, "###,##0.0", "1.3"},
        {12.34, "###,##0.0", "12.3"},
        {1234.56, "###,###.0", "1,234.6"},
        {999.95, "###,##0.0", "1,000.0"},
        {9999999.96, "###,###,##0.0", "10,000,000.0"},
        {4000000000.0, "###,###,##0.0", "4,000,000,000.0"},
        {-2.5, "###,##0.0", "-2.5"},
        {-0.01, "###,##0.0", "0.0"},
        {2.5, "###,###", "3"},
        {0.4, "###,###", ""},
        {1e12, "###,###", "1,000,000,000,000"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Format(c.value, QString::fromLatin1(c.pattern)), QString::fromLatin1(c.expected))
            << c.value << " " << c.pattern;
}

TEST(Format, Megabytes)
{
    EXPECT_EQ(Format(kavori::BytesToMegabytes(1500000), QStringLiteral("###,##0.0")), "1.5");
    EXPECT_EQ(Format(kavori::BytesToMegabytes(1048576), QStringLiteral("###,##0.0")), "1.0");
    EXPECT_EQ(Format(kavori::BytesToMegabytes(0), QStringLiteral("###,##0.0")), "0.0");
}
