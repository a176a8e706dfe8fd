#pragma once

#include <QDialog>

namespace kavori {

// "The current slide show has changed. Do you want to save your changes?" with Save, Discard
// and Cancel (CmdSave, CmdDiscard, CmdCancel).
class ExitFrm : public QDialog {
    Q_OBJECT
public:
    enum Choice { Save, Discard, Cancel };
    explicit ExitFrm(QWidget* parent = nullptr);
    Choice choice() const { return m_choice; }

    // Shows the question and returns the answer.
    static Choice Ask(QWidget* parent);

private:
    Choice m_choice = Cancel;
};

} // namespace kavori
