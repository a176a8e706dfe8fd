#pragma once

#include <QString>

namespace kavori {

// Message box styles: one button set, one icon, and the optional extras, added together.
enum MsgStyle : int {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbAbortRetryIgnore = 2,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbRetryCancel = 5,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton2 = 256,
    vbDefaultButton3 = 512,
    vbSystemModal = 4096,
    vbMsgBoxHelpButton = 16384,
};

// The answers, as the program tests them.
enum MsgResult : int {
    vbOK = 1,
    vbCancel = 2,
    vbAbort = 3,
    vbRetry = 4,
    vbIgnore = 5,
    vbYes = 6,
    vbNo = 7,
};

// The program's name, the title of every message box unless another is given.
QString AppTitle();

// The blank line inside messages, and one line break.
inline QString NewLine()
{
    return QStringLiteral("\r\n");
}
inline QString NewLine2()
{
    return QStringLiteral("\r\n\r\n");
}

// Shows a message and returns the button chosen. An empty title means "Kavori".
int MsgBox(const QString& text, int style = vbOKOnly, const QString& title = QString());

// Asks for a line of text; Cancel gives an empty string, as the run-time's InputBox does.
QString InputBox(const QString& prompt, const QString& title = QString(),
                 const QString& defaultText = QString());

// Parts of a style.
inline int StyleButtons(int style)
{
    return style & 7;
}
inline int StyleIcon(int style)
{
    return style & 112;
}
// The answer a box gives when its default button is taken (Enter).
int DefaultAnswer(int style);

} // namespace kavori
