#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace kavori {

// The slide show information: the file's size, the slides and those missing, sounds,
// textures and the show's running time; the show's own notes (ShowInfo) are edited here.
class frmSlideInfo : public QDialog {
    Q_OBJECT
public:
    explicit frmSlideInfo(QWidget* parent = nullptr);
    // OK: the notes go into the show (marking it changed when they differ).
    void apply();

private:
    QPlainTextEdit* m_notes = nullptr;
};

} // namespace kavori
