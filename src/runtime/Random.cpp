#include "Random.h"

#include <QDateTime>
#include <QMutex>

#include <cmath>
#include <deque>
#include <random>

namespace kavori {

namespace {
struct Source {
    QMutex mutex;
    std::mt19937 engine{std::random_device{}()};
    std::deque<double> script;
};

Source& source()
{
    static Source s;
    return s;
}
} // namespace

double Rnd()
{
    Source& s = source();
    QMutexLocker lock(&s.mutex);
    if (!s.script.empty()) {
        const double v = s.script.front();
        s.script.pop_front();
        return v;
    }
    const double v = std::generate_canonical<double, 32>(s.engine);
    return v < 1.0 ? v : std::nextafter(1.0, 0.0); // some library versions can return 1.0
}

void Randomize()
{
    // A scripted sequence outlives a reseed from the clock, so code that reseeds before it
    // draws stays testable.
    Source& s = source();
    QMutexLocker lock(&s.mutex);
    s.engine.seed(quint32(QDateTime::currentMSecsSinceEpoch()) ^ std::random_device{}());
}

void Randomize(quint32 seed)
{
    Source& s = source();
    QMutexLocker lock(&s.mutex);
    s.engine.seed(seed);
    s.script.clear();
}

void ScriptRandom(const QVector<double>& values)
{
    Source& s = source();
    QMutexLocker lock(&s.mutex);
    s.script.assign(values.cbegin(), values.cend());
}

int RandomBetween(int low, int high)
{
    return int(std::floor(double(high - low + 1) * Rnd() + low));
}

} // namespace kavori
