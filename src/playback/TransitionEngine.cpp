#include "TransitionEngine.h"

#include "TransitionCanvas.h"
#include "TransitionEffects.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/Random.h"
#include "settings/Settings.h"

namespace kavori {

TransitionFlags& Transitions()
{
    static TransitionFlags flags;
    return flags;
}

int ScaledPauseCount(int count, int speed)
{
    static const double factors[7] = {8, 4, 2, 1, 0.5, 0.25, 0.125};
    const double scaled = double(count) * factors[qBound(0, speed, 6)];
    const qint64 whole = RoundHalfEven(scaled);
    if (whole > 32767)
        return -1;
    return whole < 0 ? 0 : int(whole) + 1;
}

int TransitionSizeClass(int width, int height)
{
    if (width < 162 && height < 122)
        return 3;
    if (width < 322 && height < 242)
        return 2;
    return 1;
}

QStringList TransitionNames()
{
    QStringList names;
    for (int i = 0; i < kTransitionCount; ++i)
        names << QString::fromLatin1(TransitionCatalogue(i).name);
    return names;
}

int TransitionBaseDelay(int number)
{
    return TransitionCatalogue(number).baseDelay;
}

qint16 RandomTransitionNumber()
{
    // 1 ("Don't Blank Screen") can be drawn, 0 never: kept as it has always been.
    return qint16(Int(57 * Rnd() + 1));
}

void ShowTransition(qint16 number, TransitionCanvas& canvas, Pacer& pacer)
{
    TransitionFlags& flags = Transitions();
    flags.TransitionSkip = false;
    pacer.pump();
    if (flags.TransitionStop)
        return;
    if (!flags.Colors256 && number >= 2 && number < kTransitionCount) {
        const TransitionEntry& entry = TransitionCatalogue(number);
        const QSize size = canvas.size();
        const int count = TransitionSizeClass(size.width(), size.height()) * entry.baseDelay;
        EffectRun run(canvas, pacer, entry.a, entry.b, count);
        entry.routine(run);
    } else if (!flags.Colors256 && (number < 0 || number >= kTransitionCount)) {
        MsgBox(QStringLiteral("Unexpected error, an invalid transition number was processed..."),
               vbInformation);
    }
    if (flags.TransitionStop)
        return;
    canvas.copyWhole();
}

} // namespace kavori
