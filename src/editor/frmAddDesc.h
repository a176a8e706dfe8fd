#pragma once

#include <QDialog>
#include <QStringList>

class QListWidget;

namespace kavori {

// Picks the file of a folder that a new description is for, among those without one.
class frmAddDesc : public QDialog {
    Q_OBJECT
public:
    frmAddDesc(const QStringList& files, QWidget* parent = nullptr);

    QString chosen() const;
    // OK: refused while nothing is chosen.
    void confirm();

    // The file chosen, or empty when cancelled.
    static QString Choose(const QStringList& files, QWidget* parent);

private:
    QListWidget* m_files = nullptr;
};

} // namespace kavori
