#pragma once

#include "slideshow/SlideWizard.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;

namespace kavori {

// The slide show wizard: a name, a folder of pictures, a folder for the show file, then the
// interval, order and toolbar; Finish makes the show and it becomes the show in memory.
class frmSlideWizard : public QDialog {
    Q_OBJECT
public:
    explicit frmSlideWizard(QWidget* parent = nullptr);

    int page() const;
    // The page buttons, as the user presses them; false when the wizard stays where it is.
    bool next();
    void back();
    bool finish();

    WizardChoices choices() const;

private:
    void showPage(int page);
    void updateFolderCount();

    QStackedWidget* m_pages = nullptr;
    QLineEdit* m_name = nullptr;          // txtName
    QLineEdit* m_pictureFolder = nullptr; // txtImagePath
    QLabel* m_pictureCount = nullptr;     // lblImageCount
    QLineEdit* m_showFolder = nullptr;    // txtShowPath
    QComboBox* m_interval = nullptr;      // cboInterval
    QCheckBox* m_random = nullptr;        // chkRandom
    QCheckBox* m_toolbar = nullptr;       // chkToolbar
    QPushButton* m_back = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_finish = nullptr;
    int m_pictures = 0;
};

} // namespace kavori
