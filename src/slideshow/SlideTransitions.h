#pragma once

#include "SlideShow.h"

#include <QString>
#include <QVector>

namespace kavori {

// What the transition dialog decides, without a window. Its list holds every transition in
// catalogue order, so a slide's SlideTransition is the position of its entry.

// The caption of the dialog for a line of the View List.
QString TransitionCaption(int line);

// A random entry of a list of this many: floor((entries - 1) x r + 1), so from 1 to the last,
// never 0 (no transition, blank screen) though 1 (no transition, don't blank) can be drawn.
qint16 RandomTransitionIndex(int entries);
// Gives every slide a random entry, in order.
void RandomizeTransitions(QVector<Slide>& slides, int entries);
// A random entry other than the one selected before, drawing again at most ten more times.
qint16 RandomSelectIndex(int entries, int previous);

// Messages and questions. Each returns the text to show, or a question to ask.
QString AlreadyNoTransitionText();
struct ClearTransitionsPrompt {
    QString alreadySet; // every slide has none already
    QString question;
};
ClearTransitionsPrompt ClearAllTransitionsPrompt(const QVector<Slide>& slides);
QString SetAllTransitionsQuestion(const QString& name);
QString RandomizeTransitionsQuestion();

// Whether a slide's file is a movie, which the preview box cannot show a transition on; and the
// three lines it shows instead.
bool IsPreviewMovie(const QString& file);
QStringList MoviePreviewLines();

} // namespace kavori
