#pragma once

#include <QVector>

namespace kavori {

// The one random source every "random" feature draws from (slide order, transitions,
// description placement, ...). Tests seed it, or script the exact values it returns.

// A number in [0, 1).
double Rnd();
// Reseeds from the clock; values scripted for a test still come first.
void Randomize();
// Reseeds with a fixed value: the same seed gives the same sequence (and drops any script).
void Randomize(quint32 seed);
// Makes the next Rnd() calls return these values, in order, before the generator resumes.
void ScriptRandom(const QVector<double>& values);
// A whole number from low to high inclusive, the run-time idiom Int((high - low + 1) * Rnd + low).
int RandomBetween(int low, int high);

} // namespace kavori
