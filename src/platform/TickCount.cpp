#include "TickCount.h"

#include <QElapsedTimer>

namespace kavori {

qint64 GetTickCount()
{
    static const QElapsedTimer clock = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return clock.elapsed();
}

} // namespace kavori
