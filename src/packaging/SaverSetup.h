#pragma once

#include "SaverSettings.h"

#include <QDialog>

#include <memory>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace kavori {

class WindowLock;

// "Screen Saver Settings": which show the screen saver plays and how. The form only gathers
// the choices; SaverSettings decides and writes.
class SaverSetup : public QDialog {
    Q_OBJECT
public:
    explicit SaverSetup(QWidget* parent = nullptr);
    ~SaverSetup() override;

    // The title a second settings dialog looks for before it opens.
    static QString WindowTitle();
    // Opens the dialog modally; true when OK saved the choices.
    static bool Edit(QWidget* parent = nullptr);

    SaverChoices choices() const;
    void setChoices(const SaverChoices& choices);

    void CmdOK_Click();
    void CmdEditShow_Click();
    void CmdSelectFile_Click();
    void CmdBackground_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showColor();

    std::unique_ptr<WindowLock> m_lock;
    SaverChoices m_choices; // what the controls do not hold (path, custom colour, note)
    QTabWidget* m_tabs = nullptr;
    QLabel* m_currentFile = nullptr;
    QLabel* m_nameOnly = nullptr;
    QComboBox* m_interval = nullptr;
    QCheckBox* m_keepInterval = nullptr;
    QCheckBox* m_random = nullptr;
    QCheckBox* m_startLast = nullptr;
    QRadioButton* m_yesSound = nullptr;
    QRadioButton* m_noSound = nullptr;
    QLabel* m_soundFile = nullptr;
    QButtonGroup* m_colors = nullptr;
    QLabel* m_colorSample = nullptr;
    QComboBox* m_passDelay = nullptr;
};

} // namespace kavori
