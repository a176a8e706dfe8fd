#include "MsgBox.h"

#include "Prompts.h"

namespace kavori {

QString AppTitle()
{
    return QStringLiteral("Kavori");
}

int MsgBox(const QString& text, int style, const QString& title)
{
    return CurrentPrompts().msgBox(text, style, title.isEmpty() ? AppTitle() : title);
}

QString InputBox(const QString& prompt, const QString& title, const QString& defaultText)
{
    return CurrentPrompts()
        .inputBox(prompt, title.isEmpty() ? AppTitle() : title, defaultText)
        .value_or(QString());
}

int DefaultAnswer(int style)
{
    static const int answers[6][3] = {
        {vbOK, vbOK, vbOK},      {vbOK, vbCancel, vbCancel}, {vbAbort, vbRetry, vbIgnore},
        {vbYes, vbNo, vbCancel}, {vbYes, vbNo, vbNo},        {vbRetry, vbCancel, vbCancel},
    };
    const int buttons = qBound(0, StyleButtons(style), 5);
    const int which = (style & vbDefaultButton3) ? 2 : (style & vbDefaultButton2) ? 1 : 0;
    return answers[buttons][which];
}

} // namespace kavori
