#include "runtime/Random.h"

#include <gtest/gtest.h>

using namespace kavori;

TEST(Random, SeededScriptedAndInRange)
{
    Randomize(7u);
    QVector<double> first;
    for (int i = 0; i < 50; ++i)
        first << Rnd();
    Randomize(7u);
    for (int i = 0; i < 50; ++i)
        EXPECT_EQ(Rnd(), first[i]);
    for (double v : first) {
        EXPECT_GE(v, 0.0);
        EXPECT_LT(v, 1.0);
    }

    ScriptRandom({0.0, 0.999999, 0.5});
    EXPECT_EQ(RandomBetween(1, 57), 1);
    EXPECT_EQ(RandomBetween(1, 57), 57);
    EXPECT_EQ(RandomBetween(2, 3), 3);

    // Every value of a range turns up and none outside it.
    Randomize(11u);
    QVector<int> seen(7, 0);
    for (int i = 0; i < 2000; ++i) {
        const int v = RandomBetween(0, 6);
        ASSERT_GE(v, 0);
        ASSERT_LE(v, 6);
        ++seen[v];
    }
    for (int count : seen)
        EXPECT_GT(count, 200);
}
