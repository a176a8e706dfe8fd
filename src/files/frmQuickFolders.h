#pragma once

#include <QDialog>

class QRadioButton;
class QTableWidget;

namespace kavori {

// Sets up the twelve quick folders: a folder and a name for each key, and what the quick
// toolbar's buttons do with the current picture.
class frmQuickFolders : public QDialog {
    Q_OBJECT
public:
    explicit frmQuickFolders(QWidget* parent = nullptr);

    QTableWidget* grid() const { return m_grid; }
    // Chooses a folder for the selected row (the folder picker), or clears it.
    void chooseFolder();
    void clearFolder();
    // Keeps the quick folders and the action in the settings file.
    void save();

private:
    QTableWidget* m_grid = nullptr;
    QRadioButton* m_copy = nullptr;
    QRadioButton* m_move = nullptr;
    QRadioButton* m_open = nullptr;
};

} // namespace kavori
