#pragma once

#include <QDialog>
#include <QHash>

class QCheckBox;
class QComboBox;

namespace kavori {

// The preferences: the switches of the main window and of start-up, and what the window shows
// when it starts. OK stores them in the settings and KAVORI.INI.
class frmPreferences : public QDialog {
    Q_OBJECT
public:
    explicit frmPreferences(QWidget* parent = nullptr);
    void remember() const;

private:
    QHash<QString, QCheckBox*> m_flags; // by settings key
    QComboBox* m_startup = nullptr;
};

} // namespace kavori
