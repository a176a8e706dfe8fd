#pragma once

#include <QDialog>
#include <QVector>

class QListWidget;

namespace kavori {

// The repeated slides of a show: each later line that names a file an earlier line names too.
// "Remove Duplicates" takes those lines out of the show.
class frmSlideDup : public QDialog {
    Q_OBJECT
public:
    frmSlideDup(const QVector<int>& lines, QWidget* parent = nullptr);
    bool removeChosen() const { return m_remove; }

private:
    bool m_remove = false;
};

} // namespace kavori
