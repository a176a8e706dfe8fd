#include "ClockPacer.h"

#include "runtime/DoEvents.h"

#include <QThread>

namespace kavori {

namespace {
constexpr double kFrameMicroseconds = 1e6 / 60.0;
}

ClockPacer::ClockPacer(std::function<void()> present, double passMicroseconds)
    : m_present(std::move(present)), m_passMicroseconds(passMicroseconds)
{
    m_clock.start();
}

void ClockPacer::pump()
{
    DoEvents();
}

void ClockPacer::pause(int passes)
{
    m_virtualMicroseconds += passes * m_passMicroseconds;
    if (m_virtualMicroseconds - m_lastPresent < kFrameMicroseconds)
        return; // still inside this frame: draw on
    m_lastPresent = m_virtualMicroseconds;
    if (m_present)
        m_present();
    DoEvents();
    // Ahead of the clock: wait, in short slices so input keeps flowing.
    for (;;) {
        const double ahead = m_virtualMicroseconds - double(m_clock.nsecsElapsed()) / 1000.0;
        if (ahead <= 0)
            break;
        QThread::usleep(static_cast<unsigned long>(std::min(ahead, 4000.0)));
        DoEvents();
    }
}

void ClockPacer::finish()
{
    if (m_present)
        m_present();
}

} // namespace kavori
