#pragma once

#include "runtime/Prompts.h"

#include <QList>
#include <QStringList>
#include <QVector>

#include <functional>

namespace kavori::test {

// Keeps every message box, input box and picker call, and answers from scripted queues.
// Unscripted message boxes answer with their default button, unscripted input boxes and
// pickers as if cancelled.
class PromptRecorder final : public Prompts {
public:
    struct Call {
        QString text;
        int style = 0;
        QString title;
    };

    QVector<Call> calls;       // message boxes, in order
    QVector<Call> inputCalls;  // input boxes (text = prompt)
    QStringList pickerCalls;   // "openFile: title", "saveFile: title", ...
    QStringList pickerFilters; // the filter each open or save picker offered

    QList<int> answers;
    QList<std::optional<QString>> inputs; // answers of input boxes and list choices
    QList<QString> files;                 // answers of openFile, saveFile and chooseFolder
    QList<std::optional<QColor>> colors;
    QList<std::optional<QFont>> fonts;
    // Runs as each message box is shown, to see what else is on the screen at that moment.
    std::function<void(const Call&)> onMessage;

    int msgBox(const QString& text, int style, const QString& title) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override;
    QString openFile(const QString& title, const QString& folder, const QString& filter) override;
    QString saveFile(const QString& title, const QString& path, const QString& filter) override;
    QString chooseFolder(const QString& title, const QString& folder) override;
    std::optional<QString> chooseItem(const QString& title, const QString& prompt,
                                      const QStringList& items) override;
    std::optional<QColor> chooseColor(const QColor& initial) override;
    std::optional<QFont> chooseFont(const QFont& initial) override;

    // The texts of the message boxes shown so far.
    QStringList texts() const;
    void clear();
};

} // namespace kavori::test
