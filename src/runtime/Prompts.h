#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace kavori {

// Every question the program puts to the user in a standard dialog goes through one
// replaceable handler: message boxes, the input box and the pickers. The default handler
// shows Qt dialogs; tests install a recorder that keeps each call and answers from a script.
class Prompts {
public:
    virtual ~Prompts() = default;

    virtual int msgBox(const QString& text, int style, const QString& title) = 0;
    // No value when the user cancels.
    virtual std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                            const QString& defaultText) = 0;
    // Filters are in Qt's form: "Images (*.bmp *.jpg);;All files (*)". Empty when cancelled.
    virtual QString openFile(const QString& title, const QString& folder,
                             const QString& filter) = 0;
    // Several files at once; the default asks for one. Empty when cancelled.
    virtual QStringList openFiles(const QString& title, const QString& folder,
                                  const QString& filter)
    {
        const QString one = openFile(title, folder, filter);
        return one.isEmpty() ? QStringList() : QStringList{one};
    }
    virtual QString saveFile(const QString& title, const QString& path, const QString& filter) = 0;
    virtual QString chooseFolder(const QString& title, const QString& folder) = 0;
    // One entry of a list; no value when cancelled.
    virtual std::optional<QString> chooseItem(const QString& title, const QString& prompt,
                                              const QStringList& items) = 0;
    virtual std::optional<QColor> chooseColor(const QColor& initial) = 0;
    virtual std::optional<QFont> chooseFont(const QFont& initial) = 0;
};

// The handler in use. Never null: the Qt dialogs unless another was installed.
Prompts& CurrentPrompts();

// Installs a handler and returns the one it replaces (null when that was the default).
std::unique_ptr<Prompts> InstallPrompts(std::unique_ptr<Prompts> handler);

// The default handler, showing Qt dialogs.
std::unique_ptr<Prompts> MakeDialogPrompts();

} // namespace kavori
