#include "SlideTransitions.h"

#include "runtime/MsgBox.h"
#include "runtime/Random.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace kavori {

QString TransitionCaption(int line)
{
    return QStringLiteral("Editing transition for slide ") + QString::number(line + 1) + u':';
}

qint16 RandomTransitionIndex(int entries)
{
    if (entries < 2)
        return 0;
    return qint16(std::floor(double(entries - 1) * Rnd() + 1));
}

void RandomizeTransitions(QVector<Slide>& slides, int entries)
{
    for (Slide& slide : slides)
        slide.SlideTransition = RandomTransitionIndex(entries);
}

qint16 RandomSelectIndex(int entries, int previous)
{
    qint16 pick = RandomTransitionIndex(entries);
    for (int again = 0; again < 10 && pick == previous; ++again)
        pick = RandomTransitionIndex(entries);
    return pick;
}

QString AlreadyNoTransitionText()
{
    return QStringLiteral("This slide is already set to ") + QStringLiteral("No Transition") +
           QStringLiteral("...");
}

ClearTransitionsPrompt ClearAllTransitionsPrompt(const QVector<Slide>& slides)
{
    const bool none = std::all_of(slides.begin(), slides.end(),
                                  [](const Slide& s) { return s.SlideTransition == 0; });
    if (none)
        return {QStringLiteral("All slides are already set to ") + QStringLiteral("No Transition") +
                    QStringLiteral("..."),
                QString()};
    return {QString(), QStringLiteral("You are about to clear ALL of the image transition "
                                      "settings for this slide show.") +
                           NewLine2() + QStringLiteral("Are you sure?")};
}

QString SetAllTransitionsQuestion(const QString& name)
{
    return QStringLiteral("Set all of the images in your slide show to the ") + name +
           QStringLiteral(" transition?");
}

QString RandomizeTransitionsQuestion()
{
    return QStringLiteral("Choose a random transition for all the images in your slide show?");
}

bool IsPreviewMovie(const QString& file)
{
    static const QStringList kMovies = {
        QStringLiteral("AVI"), QStringLiteral("MPEG"), QStringLiteral("MPE"), QStringLiteral("MPG"),
        QStringLiteral("MPA"), QStringLiteral("ENC"),  QStringLiteral("MOV"), QStringLiteral("QT"),
        QStringLiteral("M1V"), QStringLiteral("MP2")};
    return kMovies.contains(QFileInfo(file).suffix().toUpper());
}

QStringList MoviePreviewLines()
{
    return {QStringLiteral("   Unable to show"), QStringLiteral("   transitions on"),
            QStringLiteral("   movie files...")};
}

} // namespace kavori
