#pragma once

#include <QDialog>
#include <QStringList>

#include <functional>

class QListWidget;

namespace kavori {

// The lines of the language list: the built-in default while it is selected, then each
// installed language as its label, a space and its file.
QStringList LanguageListEntries();
// Selects the language on a line of that list and saves the choice. Returns the refusal
// message when no line is selected (row -1).
QString SelectLanguageRow(int row);

// The language dialog.
class frmLanguage : public QDialog {
    Q_OBJECT
public:
    explicit frmLanguage(QWidget* parent = nullptr);

    // Opens a web page; tests replace it so that no browser starts.
    static std::function<void(const QString& url)>& WebOpener();

private:
    QListWidget* m_list = nullptr;
};

} // namespace kavori
