#include "PackageFrm.h"

#include "files/FolderPane.h"
#include "files/frmCopyImages.h"
#include "fileutil/FileJobs.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"

#include <QCheckBox>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace kavori {

namespace {

QCheckBox* check(QWidget* parent, const char* name, const QString& text)
{
    auto* box = new QCheckBox(text, parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

QPushButton* button(QWidget* parent, const char* name, const QString& text)
{
    auto* b = new QPushButton(text, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

} // namespace

PackageFrm::PackageFrm(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PackageFrm"));
    setWindowTitle(PackageTitle());

    m_source = new FolderPane(QStringLiteral("Dir1"), QStringLiteral("File1"),
                              {QStringLiteral("*.kav"), QStringLiteral("*.KAV")}, this);
    m_source->fileList()->setSelectionMode(QAbstractItemView::SingleSelection);
    m_source->fileList()->setAcceptDrops(true);
    m_source->fileList()->viewport()->setAcceptDrops(true);
    m_source->fileList()->viewport()->installEventFilter(this);
    m_destination = new FolderPane(QStringLiteral("Dir2"), QString(), {}, this);

    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("txtName"));
    m_size = new QLineEdit(this);
    m_size->setObjectName(QStringLiteral("txtSize"));
    m_size->setToolTip(QStringLiteral("Enter size or click the \"Sum\" button."));
    auto* sum = button(this, "CmdSize", QStringLiteral("Sum"));
    sum->setToolTip(QStringLiteral("Click here to estimate size of package."));
    m_reqSize = new QLabel(this);
    m_reqSize->setObjectName(QStringLiteral("lblReqSize"));
    m_totSize = new QLabel(this);
    m_totSize->setObjectName(QStringLiteral("lblTotSize"));

    m_runtime =
        check(this, "CheckRuntime", QStringLiteral("Package using the \"&Runtime Module\" only."));
    m_saver =
        check(this, "CheckScreenSaver", QStringLiteral("Make this a \"&Screen Saver\" package."));
    m_default = check(this, "CheckMakeDefault",
                      QStringLiteral("Set user's \"&Default Screen Saver\" to this one."));
    m_shortcut = check(this, "CheckShortcut",
                       QStringLiteral("Create a \"Shortcut in Start &Menu\" for show."));
    m_autorun = check(this, "CheckAutorun", QStringLiteral("Create an AUTORUN.INF file."));

    auto* create = button(this, "CmdPackage", QStringLiteral("&Create Package"));
    create->setDefault(true);
    auto* newFolder = button(this, "CmdNewFolder", QStringLiteral("&New Folder"));
    auto* quick = button(this, "CmdQuickFolders", QStringLiteral("&Quick Folders"));
    quick->setMenu(
        QuickFolderMenu(this, [this](const QString& path) { m_source->setFolder(path); }));
    auto* close = button(this, "CmdClose", QStringLiteral("Close"));

    connect(create, &QPushButton::clicked, this, &PackageFrm::CmdPackage_Click);
    connect(sum, &QPushButton::clicked, this, &PackageFrm::CmdSize_Click);
    connect(m_runtime, &QCheckBox::clicked, this, &PackageFrm::CheckRuntime_Click);
    connect(m_size, &QLineEdit::textChanged, this, &PackageFrm::refreshTotal);
    connect(newFolder, &QPushButton::clicked, this, [this] {
        const QString made = AskNewFolder(m_destination->folder());
        if (!made.isEmpty())
            m_destination->setFolder(made);
    });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_source, &FolderPane::deleteFileKey, this, [this] {
        if (m_source->selectedFiles().isEmpty())
            MsgBox(QStringLiteral("Unable to delete file by pressing the delete key, nothing is "
                                  "selected in the file list..."),
                   vbExclamation, PackageTitle());
    });

    auto* panes = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(QStringLiteral("Source folder and slide show (.KAV):"), this));
    left->addWidget(m_source, 1);
    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Package folder:"), this));
    right->addWidget(m_destination, 1);
    panes->addLayout(left, 1);
    panes->addLayout(right, 1);

    auto* details = new QGridLayout;
    details->addWidget(new QLabel(QStringLiteral("Package name:"), this), 0, 0);
    details->addWidget(m_name, 0, 1, 1, 4);
    details->addWidget(new QLabel(QStringLiteral("Size:"), this), 1, 0);
    details->addWidget(m_reqSize, 1, 1);
    details->addWidget(m_size, 1, 2);
    details->addWidget(sum, 1, 3);
    details->addWidget(m_totSize, 1, 4);
    details->setColumnStretch(2, 1);

    auto* options = new QGroupBox(QStringLiteral("Options"), this);
    auto* optionLayout = new QVBoxLayout(options);
    for (QCheckBox* box : {m_runtime, m_saver, m_default, m_shortcut, m_autorun})
        optionLayout->addWidget(box);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(newFolder);
    buttons->addWidget(quick);
    buttons->addStretch(1);
    buttons->addWidget(create);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(panes, 1);
    layout->addLayout(details);
    layout->addWidget(options);
    layout->addLayout(buttons);
    resize(760, 620);

    PackageRequest r = LoadPackageRequest();
    if (r.source.isEmpty() || !QFileInfo(r.source).isDir())
        r.source = PathNoCase(AppPath(), QStringLiteral("Slides"));
    if (r.destination.isEmpty() || !QFileInfo(r.destination).isDir())
        r.destination = QDir::homePath();
    setRequest(r);
}

PackageRequest PackageFrm::request() const
{
    PackageRequest r;
    r.source = m_source->folder();
    const QStringList chosen = m_source->selectedFiles();
    r.showFile = chosen.isEmpty() ? QString() : FileNameOf(chosen.first());
    r.destination = m_destination->folder();
    r.name = m_name->text();
    r.size = m_size->text();
    r.options.runtime = m_runtime->isChecked();
    r.options.screenSaver = m_saver->isChecked();
    r.options.defaultSaver = m_default->isChecked();
    r.options.shortcut = m_shortcut->isChecked();
    r.options.autorun = m_autorun->isChecked();
    r.programFolder = m_programFolder;
    return r;
}

void PackageFrm::setRequest(const PackageRequest& r)
{
    m_source->setFolder(r.source);
    if (!r.showFile.isEmpty())
        m_source->selectFiles({AddSlash(r.source) + r.showFile});
    m_destination->setFolder(r.destination);
    m_name->setText(r.name);
    m_size->setText(r.size);
    m_runtime->setChecked(r.options.runtime);
    m_saver->setChecked(r.options.screenSaver);
    m_default->setChecked(r.options.defaultSaver);
    m_shortcut->setChecked(r.options.shortcut);
    m_autorun->setChecked(r.options.autorun);
    CheckRuntime_Click();
}

void PackageFrm::CheckRuntime_Click()
{
    // Neither applies without the setup program.
    const bool runtime = m_runtime->isChecked();
    m_default->setEnabled(!runtime);
    m_shortcut->setEnabled(!runtime);
    m_reqSize->setText(RequiredSizeCaption(runtime));
    refreshTotal();
}

void PackageFrm::refreshTotal()
{
    m_totSize->setText(TotalSizeCaption(m_runtime->isChecked(), m_size->text()));
}

void PackageFrm::CmdSize_Click()
{
    m_size->setText(QStringLiteral("Calculating..."));
    const PackageRequest r = request();
    m_size->setText(EstimatePackageSize(r.source, r.showFile));
}

void PackageFrm::File1_DragDrop(const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    const QString show = DroppedShowFile(paths.first());
    if (show.isEmpty())
        return;
    m_source->setFolder(FolderOf(show));
    m_source->selectFiles({show});
}

bool PackageFrm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_source->fileList()->viewport()) {
        if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
            auto* drag = static_cast<QDropEvent*>(event);
            if (drag->mimeData()->hasUrls()) {
                drag->acceptProposedAction();
                return true;
            }
        } else if (event->type() == QEvent::Drop) {
            auto* drop = static_cast<QDropEvent*>(event);
            QStringList paths;
            for (const QUrl& url : drop->mimeData()->urls()) {
                if (url.isLocalFile())
                    paths << url.toLocalFile();
            }
            drop->acceptProposedAction();
            File1_DragDrop(paths);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void PackageFrm::CmdPackage_Click()
{
    PackageRequest r = request();
    BuildPackage(r, [] { return std::make_unique<WaitDialog>(PackageTitle()); });
    m_name->setText(r.name);
    m_destination->refresh();
}

} // namespace kavori
