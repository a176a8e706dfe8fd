#pragma once

#include "TransitionEngine.h"

#include <QElapsedTimer>

#include <functional>

namespace kavori {

// Paces a transition by the clock: the effect runs ahead on a virtual clock of
// kPassMicroseconds per message-pump pass, the picture is presented at most once per display
// frame, and whenever the effect is ahead of the real clock the pacer waits with events
// running, so keys and clicks are handled within a frame.
class ClockPacer final : public Pacer {
public:
    explicit ClockPacer(std::function<void()> present, double passMicroseconds = kPassMicroseconds);
    void pump() override;
    void pause(int passes) override;
    // Presents what is left after the effect.
    void finish();

private:
    std::function<void()> m_present;
    double m_passMicroseconds;
    double m_virtualMicroseconds = 0;
    double m_lastPresent = 0;
    QElapsedTimer m_clock;
};

} // namespace kavori
