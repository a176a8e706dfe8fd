#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace kavori {

class FolderPane;

// "Delete Package": the user browses to a package folder; CmdDelete removes it after the
// checks and the confirmation of PackageRemoval.
class DelPackageFrm : public QDialog {
    Q_OBJECT
public:
    explicit DelPackageFrm(QWidget* parent = nullptr);

    void setFolder(const QString& folder);
    void CmdDelete_Click();

    FolderPane* folders() const { return m_folders; }
    QString status() const;

private:
    void folderChosen(const QString& folder);

    FolderPane* m_folders = nullptr;
    QLabel* m_status = nullptr;
    QPushButton* m_delete = nullptr;
};

} // namespace kavori
