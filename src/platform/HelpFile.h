#pragma once

#include <QString>

namespace kavori {

// The help pages (the original "KAVORIX.HLP") live in the program's folder as HTML and open in
// the user's browser. topic is a page name without extension, with "#" and a place on the page
// when it names one ("commands#mnuOpen"); empty opens the contents.
QString HelpPagePath(const QString& topic = QString());
void ShowHelp(const QString& topic = QString());

// The topic of a main-window command, by its name ("mnuOpen").
QString CommandHelpTopic(const QString& command);

} // namespace kavori
