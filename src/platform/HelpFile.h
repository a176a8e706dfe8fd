#pragma once

#include <QString>

class QWidget;

namespace kavori {

// The help pages (the original "KAVORIX.HLP") live in the program's folder as HTML and open in
// the user's browser. topic is a page name without extension, with "#" and a place on the page
// when it names one ("commands#mnuOpen"); empty opens the contents.
QString HelpPagePath(const QString& topic = QString());
void ShowHelp(const QString& topic = QString());

// The topic of a main-window command, by its name ("mnuOpen").
QString CommandHelpTopic(const QString& command);

// F1 in the window (a dialog, the editor, ...) opens its page of the manual: topic as for
// ShowHelp ("files#DeleteImgFrm"). Called again, the window keeps one F1 and takes the new topic.
void InstallHelpKey(QWidget* window, const QString& topic);
// The topic InstallHelpKey gave the window (empty: none), which its Help button opens too.
QString WindowHelpTopic(const QWidget* window);
void ShowWindowHelp(const QWidget* window);

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
