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

// The topic a message box's Help button opens while it is shown: a message that has a topic of
// its own sets it for as long as this lives; otherwise Help opens the contents.
class MessageHelpTopic {
public:
    explicit MessageHelpTopic(const QString& topic);
    ~MessageHelpTopic();
    MessageHelpTopic(const MessageHelpTopic&) = delete;
    MessageHelpTopic& operator=(const MessageHelpTopic&) = delete;
    // The topic of the message shown now (empty: the contents).
    static QString current();

private:
    QString m_previous;
};

} // namespace kavori
