#include "DelPackageFrm.h"

#include "PackageRemoval.h"
#include "files/FolderPane.h"
#include "platform/AppPaths.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kavori {

DelPackageFrm::DelPackageFrm(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("DelPackageFrm"));
    setWindowTitle(DeletePackageTitle());

    m_folders = new FolderPane(QStringLiteral("Dir1"), QString(), {}, this);
    m_status = new QLabel(PackageFolderStatus(QString()), this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    m_delete = new QPushButton(QStringLiteral("&Delete"), this);
    m_delete->setObjectName(QStringLiteral("CmdDelete"));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("CmdClose"));

    connect(m_folders, &FolderPane::folderChanged, this, &DelPackageFrm::folderChosen);
    connect(m_delete, &QPushButton::clicked, this, &DelPackageFrm::CmdDelete_Click);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_status, 1);
    buttons->addWidget(m_delete);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Package folder:"), this));
    layout->addWidget(m_folders, 1);
    layout->addLayout(buttons);
    resize(480, 440);
    m_delete->setEnabled(false);
    m_folders->setFolder(QDir::homePath());
}

void DelPackageFrm::setFolder(const QString& folder)
{
    m_folders->setFolder(folder);
    folderChosen(m_folders->folder());
}

QString DelPackageFrm::status() const
{
    return m_status->text();
}

void DelPackageFrm::folderChosen(const QString& folder)
{
    m_status->setText(PackageFolderStatus(folder));
    m_delete->setEnabled(IsPackageFolder(folder));
}

void DelPackageFrm::CmdDelete_Click()
{
    const QString folder = m_folders->folder();
    if (!DeletePackage(folder))
        return;
    const QString parent = QDir(folder).exists() ? folder : FolderOf(QDir::cleanPath(folder));
    setFolder(parent);
}

} // namespace kavori
