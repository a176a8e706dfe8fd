#include "Prompts.h"

#include "MsgBox.h"
#include "platform/HelpFile.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace kavori {

namespace {

QWidget* dialogParent()
{
    return QApplication::activeWindow();
}

QString forScreen(QString text)
{
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

class DialogPrompts final : public Prompts {
public:
    int msgBox(const QString& text, int style, const QString& title) override
    {
        QMessageBox box(dialogParent());
        box.setWindowTitle(title);
        box.setText(forScreen(text));
        switch (StyleIcon(style)) {
        case vbCritical:
            box.setIcon(QMessageBox::Critical);
            break;
        case vbQuestion:
            box.setIcon(QMessageBox::Question);
            break;
        case vbExclamation:
            box.setIcon(QMessageBox::Warning);
            break;
        case vbInformation:
            box.setIcon(QMessageBox::Information);
            break;
        default:
            break;
        }
        if (style & vbSystemModal)
            box.setWindowModality(Qt::ApplicationModal);

        struct Choice {
            QMessageBox::StandardButton button;
            int answer;
        };
        QVector<Choice> choices;
        switch (StyleButtons(style)) {
        case vbOKCancel:
            choices = {{QMessageBox::Ok, vbOK}, {QMessageBox::Cancel, vbCancel}};
            break;
        case vbAbortRetryIgnore:
            choices = {{QMessageBox::Abort, vbAbort},
                       {QMessageBox::Retry, vbRetry},
                       {QMessageBox::Ignore, vbIgnore}};
            break;
        case vbYesNoCancel:
            choices = {{QMessageBox::Yes, vbYes},
                       {QMessageBox::No, vbNo},
                       {QMessageBox::Cancel, vbCancel}};
            break;
        case vbYesNo:
            choices = {{QMessageBox::Yes, vbYes}, {QMessageBox::No, vbNo}};
            break;
        case vbRetryCancel:
            choices = {{QMessageBox::Retry, vbRetry}, {QMessageBox::Cancel, vbCancel}};
            break;
        default:
            choices = {{QMessageBox::Ok, vbOK}};
            break;
        }
        for (const Choice& c : choices)
            box.addButton(c.button);
        const int defaultAnswer = DefaultAnswer(style);
        for (const Choice& c : choices) {
            if (c.answer == defaultAnswer)
                box.setDefaultButton(c.button);
        }
        QAbstractButton* help = nullptr;
        if (style & vbMsgBoxHelpButton)
            help = box.addButton(QMessageBox::Help);

        // The Help button opens the help and leaves the question standing.
        for (;;) {
            box.exec();
            QAbstractButton* clicked = box.clickedButton();
            if (help && clicked == help) {
                ShowHelp(MessageHelpTopic::current());
                continue;
            }
            for (const Choice& c : choices) {
                if (clicked == box.button(c.button))
                    return c.answer;
            }
            // Closed with Escape or the window's close button.
            const bool hasCancel =
                std::any_of(choices.cbegin(), choices.cend(),
                            [](const Choice& c) { return c.answer == vbCancel; });
            return hasCancel ? vbCancel : choices.last().answer;
        }
    }

    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override
    {
        bool ok = false;
        const QString text = QInputDialog::getText(dialogParent(), title, forScreen(prompt),
                                                   QLineEdit::Normal, defaultText, &ok);
        if (!ok)
            return std::nullopt;
        return text;
    }

    QString openFile(const QString& title, const QString& folder, const QString& filter) override
    {
        return QFileDialog::getOpenFileName(dialogParent(), title, folder, filter);
    }

    QStringList openFiles(const QString& title, const QString& folder,
                          const QString& filter) override
    {
        return QFileDialog::getOpenFileNames(dialogParent(), title, folder, filter);
    }

    QString saveFile(const QString& title, const QString& path, const QString& filter) override
    {
        return QFileDialog::getSaveFileName(dialogParent(), title, path, filter);
    }

    QString chooseFolder(const QString& title, const QString& folder) override
    {
        return QFileDialog::getExistingDirectory(dialogParent(), title, folder);
    }

    std::optional<QString> chooseItem(const QString& title, const QString& prompt,
                                      const QStringList& items) override
    {
        bool ok = false;
        const QString item =
            QInputDialog::getItem(dialogParent(), title, prompt, items, 0, false, &ok);
        if (!ok)
            return std::nullopt;
        return item;
    }

    std::optional<QColor> chooseColor(const QColor& initial) override
    {
        const QColor c = QColorDialog::getColor(initial, dialogParent());
        if (!c.isValid())
            return std::nullopt;
        return c;
    }

    std::optional<QFont> chooseFont(const QFont& initial) override
    {
        bool ok = false;
        const QFont f = QFontDialog::getFont(&ok, initial, dialogParent());
        if (!ok)
            return std::nullopt;
        return f;
    }
};

std::unique_ptr<Prompts>& installed()
{
    static std::unique_ptr<Prompts> handler;
    return handler;
}

} // namespace

std::unique_ptr<Prompts> MakeDialogPrompts()
{
    return std::make_unique<DialogPrompts>();
}

Prompts& CurrentPrompts()
{
    std::unique_ptr<Prompts>& handler = installed();
    if (!handler)
        handler = MakeDialogPrompts();
    return *handler;
}

std::unique_ptr<Prompts> InstallPrompts(std::unique_ptr<Prompts> handler)
{
    std::unique_ptr<Prompts> previous = std::move(installed());
    installed() = std::move(handler);
    return previous;
}

} // namespace kavori
