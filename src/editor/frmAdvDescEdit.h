#pragma once

#include <QDialog>

#include <optional>

class QLineEdit;

namespace kavori {

// Edits the text of one entry of a description file.
class frmAdvDescEdit : public QDialog {
    Q_OBJECT
public:
    frmAdvDescEdit(const QString& fileName, const QString& text, QWidget* parent = nullptr);

    QString text() const;
    // OK: an empty text is refused (removing has its own command).
    void confirm();

    // The new text, or nothing when cancelled.
    static std::optional<QString> Ask(const QString& fileName, const QString& text,
                                      QWidget* parent);

private:
    QLineEdit* m_text = nullptr;
};

} // namespace kavori
