#include "PromptRecorder.h"

#include "runtime/MsgBox.h"

namespace kavori::test {

int PromptRecorder::msgBox(const QString& text, int style, const QString& title)
{
    calls.append({text, style, title});
    if (onMessage)
        onMessage(calls.last());
    return answers.isEmpty() ? DefaultAnswer(style) : answers.takeFirst();
}

std::optional<QString> PromptRecorder::inputBox(const QString& prompt, const QString& title,
                                                const QString&)
{
    inputCalls.append({prompt, 0, title});
    return inputs.isEmpty() ? std::nullopt : inputs.takeFirst();
}

QString PromptRecorder::openFile(const QString& title, const QString&, const QString& filter)
{
    pickerCalls.append(QStringLiteral("openFile: ") + title);
    pickerFilters.append(filter);
    return files.isEmpty() ? QString() : files.takeFirst();
}

QString PromptRecorder::saveFile(const QString& title, const QString&, const QString& filter)
{
    pickerCalls.append(QStringLiteral("saveFile: ") + title);
    pickerFilters.append(filter);
    return files.isEmpty() ? QString() : files.takeFirst();
}

QString PromptRecorder::chooseFolder(const QString& title, const QString&)
{
    pickerCalls.append(QStringLiteral("chooseFolder: ") + title);
    return files.isEmpty() ? QString() : files.takeFirst();
}

std::optional<QString> PromptRecorder::chooseItem(const QString& title, const QString&,
                                                  const QStringList& items)
{
    pickerCalls.append(QStringLiteral("chooseItem: ") + title + QStringLiteral(" (") +
                       items.join(QStringLiteral(", ")) + u')');
    return inputs.isEmpty() ? std::nullopt : inputs.takeFirst();
}

std::optional<QColor> PromptRecorder::chooseColor(const QColor&)
{
    pickerCalls.append(QStringLiteral("chooseColor"));
    return colors.isEmpty() ? std::nullopt : colors.takeFirst();
}

std::optional<QFont> PromptRecorder::chooseFont(const QFont&)
{
    pickerCalls.append(QStringLiteral("chooseFont"));
    return fonts.isEmpty() ? std::nullopt : fonts.takeFirst();
}

QStringList PromptRecorder::texts() const
{
    QStringList out;
    for (const Call& c : calls)
        out.append(c.text);
    return out;
}

void PromptRecorder::clear()
{
    calls.clear();
    inputCalls.clear();
    pickerCalls.clear();
    pickerFilters.clear();
    answers.clear();
    inputs.clear();
    files.clear();
    colors.clear();
    fonts.clear();
    onMessage = nullptr;
}

} // namespace kavori::test
