#pragma once

#include "PackageBuilder.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kavori {

class FolderPane;

// "Package Slide Show": the source folder and show, the package folder, name, size and the
// five options. The form gathers them; PackageBuilder checks, asks and builds.
class PackageFrm : public QDialog {
    Q_OBJECT
public:
    explicit PackageFrm(QWidget* parent = nullptr);

    // What the controls hold, as a build request, and setting them from one.
    PackageRequest request() const;
    void setRequest(const PackageRequest& request);

    // Where the executables are copied from: the running program's folder unless set.
    void setProgramFolder(const QString& folder) { m_programFolder = folder; }

    // Files dropped on File1: the first becomes the chosen show, its folder the source.
    void File1_DragDrop(const QStringList& paths);

    void CmdPackage_Click();
    void CmdSize_Click();
    void CheckRuntime_Click();

    FolderPane* source() const { return m_source; }
    FolderPane* destination() const { return m_destination; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void refreshTotal();

    QString m_programFolder;
    FolderPane* m_source = nullptr;
    FolderPane* m_destination = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_size = nullptr;
    QLabel* m_reqSize = nullptr;
    QLabel* m_totSize = nullptr;
    QCheckBox* m_runtime = nullptr;
    QCheckBox* m_saver = nullptr;
    QCheckBox* m_default = nullptr;
    QCheckBox* m_shortcut = nullptr;
    QCheckBox* m_autorun = nullptr;
};

} // namespace kavori
