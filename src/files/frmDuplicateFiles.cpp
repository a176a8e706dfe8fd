#include "frmDuplicateFiles.h"

#include "fileutil/FileDelete.h"
#include "fileutil/FileFollowers.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "viewer/MainViewFrm.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace kavori {

namespace {

QString searchAgain()
{
    return QStringLiteral("Select drive(s) and press the \"Search\" button to find duplicate "
                          "files...");
}

QPushButton* makeButton(QWidget* parent, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

// The current picture of the main window, when it is a file.
QString openFileOf(const MainViewFrm* window)
{
    if (!window)
        return {};
    const QString path = window->document().currentFile();
    return IsFullPath(path) ? path : QString();
}

} // namespace

QString frmDuplicateFiles::IdleStatus()
{
    return QStringLiteral(" Select drive(s) to examine and then press the Search button...");
}

frmDuplicateFiles::frmDuplicateFiles(MainViewFrm* window, QWidget* parent)
    : QDialog(parent ? parent : window), m_window(window)
{
    setObjectName(QStringLiteral("frmDuplicateFiles"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Find Duplicate Files]"));

    m_drives = new QListWidget(this);
    m_drives->setObjectName(QStringLiteral("ListDrives"));
    m_drives->setSelectionMode(QAbstractItemView::MultiSelection);
    m_files = new QListWidget(this);
    m_files->setObjectName(QStringLiteral("ListFiles"));
    m_files->setUniformItemSizes(true);
    connect(m_files, &QListWidget::itemDoubleClicked, this, &frmDuplicateFiles::preview);
    m_movies = new QCheckBox(QStringLiteral("Include &movies"), this);
    m_movies->setObjectName(QStringLiteral("CheckMovies"));
    m_sounds = new QCheckBox(QStringLiteral("Include s&ounds"), this);
    m_sounds->setObjectName(QStringLiteral("CheckSounds"));
    m_content = new QCheckBox(QStringLiteral("Same &content only (true copies)"), this);
    m_content->setObjectName(QStringLiteral("CheckContent"));
    m_content->setToolTip(QStringLiteral(
        "Compare the files' bytes instead of their names: slower, but only true copies are "
        "listed."));
    m_preview = new QLabel(this);
    m_preview->setObjectName(QStringLiteral("picPreview"));
    m_preview->setFixedSize(200, 150);
    m_preview->setAlignment(Qt::AlignCenter);
    m_preview->setFrameShape(QFrame::StyledPanel);
    m_status = new QLabel(IdleStatus(), this);
    m_status->setObjectName(QStringLiteral("picStatus"));
    m_status->setFrameShape(QFrame::StyledPanel);

    m_find = makeButton(this, "CmdFind", QStringLiteral("&Search"));
    m_find->setToolTip(QStringLiteral("Click here to search for duplicate files."));
    connect(m_find, &QPushButton::clicked, this, &frmDuplicateFiles::find);
    struct TypeButton {
        const char* name;
        const char* caption;
        DriveType type;
    };
    const TypeButton types[] = {{"CmdFixed", "&Fixed", DriveType::Fixed},
                                {"CmdRemovable", "&Removable", DriveType::Removable},
                                {"CmdCDROM", "C&D-ROM", DriveType::CDRom},
                                {"CmdNetwork", "&Network", DriveType::Remote}};
    auto* driveButtons = new QGridLayout;
    int column = 0;
    for (const TypeButton& t : types) {
        QPushButton* b = makeButton(this, t.name, QString::fromLatin1(t.caption));
        const DriveType type = t.type;
        connect(b, &QPushButton::clicked, this, [this, type] { selectDrives(type); });
        driveButtons->addWidget(b, 0, column++);
    }
    QPushButton* all = makeButton(this, "CmdAll", QStringLiteral("&All"));
    connect(all, &QPushButton::clicked, m_drives, &QListWidget::selectAll);
    QPushButton* none = makeButton(this, "CmdNone", QStringLiteral("Non&e"));
    connect(none, &QPushButton::clicked, m_drives, &QListWidget::clearSelection);
    driveButtons->addWidget(all, 1, 0);
    driveButtons->addWidget(none, 1, 1);

    QPushButton* previewButton = makeButton(this, "CmdPreview", QStringLiteral("&Preview"));
    connect(previewButton, &QPushButton::clicked, this, &frmDuplicateFiles::preview);
    QPushButton* openButton = makeButton(this, "CmdOpen", QStringLiteral("&Open"));
    connect(openButton, &QPushButton::clicked, this, &frmDuplicateFiles::open);
    QPushButton* deleteButton = makeButton(this, "CmdDelete", QStringLiteral("&Delete"));
    connect(deleteButton, &QPushButton::clicked, this, &frmDuplicateFiles::remove);
    QPushButton* pathButton = makeButton(this, "CmdShowPath", QStringLiteral("Show Pa&th"));
    connect(pathButton, &QPushButton::clicked, this, &frmDuplicateFiles::showPath);
    QPushButton* close = makeButton(this, "CmdClose", QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto* left = new QVBoxLayout;
    left->addWidget(new QLabel(QStringLiteral("Drives to search:"), this));
    left->addWidget(m_drives, 1);
    left->addLayout(driveButtons);
    left->addWidget(m_movies);
    left->addWidget(m_sounds);
    left->addWidget(m_content);
    left->addWidget(m_find);
    left->addWidget(m_preview);
    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Duplicate files:"), this));
    right->addWidget(m_files, 1);
    auto* actions = new QHBoxLayout;
    for (QPushButton* b : {previewButton, openButton, deleteButton, pathButton})
        actions->addWidget(b);
    actions->addStretch(1);
    actions->addWidget(close);
    right->addLayout(actions);
    auto* panes = new QHBoxLayout;
    panes->addLayout(left);
    panes->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(panes, 1);
    layout->addWidget(m_status);
    resize(820, 520);

    m_statusTimer = new QTimer(this);
    m_statusTimer->setObjectName(QStringLiteral("tmrStatus"));
    m_statusTimer->setInterval(100);
    connect(m_statusTimer, &QTimer::timeout, this, &frmDuplicateFiles::updateStatus);
    connect(&m_watcher, &QFutureWatcher<Outcome>::finished, this, &frmDuplicateFiles::finished);
    fillDrives();
}

frmDuplicateFiles::~frmDuplicateFiles()
{
    if (m_state)
        m_state->cancel = true;
    m_watcher.waitForFinished();
}

void frmDuplicateFiles::fillDrives()
{
    m_volumes = LogicalDrives();
    for (const Volume& v : std::as_const(m_volumes))
        m_drives->addItem(QDir::toNativeSeparators(v.root) + DriveTypeLabel(v.type));
}

void frmDuplicateFiles::selectDrives(DriveType type)
{
    bool any = false;
    const QString label = DriveTypeLabel(type);
    for (int row = 0; row < m_drives->count(); ++row) {
        if (m_drives->item(row)->text().endsWith(label)) {
            m_drives->item(row)->setSelected(true);
            any = true;
        }
    }
    if (any)
        return;
    switch (type) {
    case DriveType::CDRom:
        MsgBox(QStringLiteral("A CD-ROM drive could not be found on your system..."),
               vbInformation);
        break;
    case DriveType::Remote:
        MsgBox(QStringLiteral("A network drive could not be found on your system..."),
               vbInformation);
        break;
    case DriveType::Removable:
        MsgBox(QStringLiteral("A removable disk could not be found on your system..."),
               vbInformation);
        break;
    default:
        MsgBox(
            QStringLiteral("Error, unable to determine which drives (if any) are fixed disks..."),
            vbExclamation);
        break;
    }
}

void frmDuplicateFiles::find()
{
    if (m_running) {
        m_state->cancel = true;
        return;
    }
    QStringList roots;
    for (int row = 0; row < m_drives->count(); ++row)
        if (m_drives->item(row)->isSelected() && row < m_volumes.size())
            roots << m_volumes[row].root;
    if (roots.isEmpty()) {
        MsgBox(QStringLiteral("Select the drive(s) to search and then try again..."),
               vbInformation);
        return;
    }
    // The drives may have gone since the list was made.
    if (LogicalDrives().isEmpty()) {
        MsgBox(QStringLiteral("Error, unable to search for duplicate files.") + NewLine2() +
                   QStringLiteral("The current drive letters could not be aquired from system..."),
               vbExclamation);
        return;
    }
    if (MsgBox(QStringLiteral("You are about to search the selected drive(s) for duplicate "
                              "files...") +
                   NewLine() + QStringLiteral("This could take several minutes to complete."),
               vbOKCancel + vbQuestion) != vbOK)
        return;

    m_files->clear();
    m_results.clear();
    m_groupOf.clear();
    m_preview->clear();
    m_find->setText(QStringLiteral("&Cancel"));
    m_find->setToolTip(QStringLiteral("Click here to stop searching for duplicate files."));
    setStatus(QStringLiteral(
        " Preparing to search selected drive(s) for duplicate files, please wait..."));
    m_searchRoots = roots;
    m_contentMode = m_content->isChecked();
    m_running = true;
    m_state = std::make_shared<SearchState>();
    const QStringList extensions =
        DuplicateExtensions(m_movies->isChecked(), m_sounds->isChecked());
    const bool content = m_contentMode;
    std::shared_ptr<SearchState> state = m_state;
    m_watcher.setFuture(QtConcurrent::run([roots, extensions, content, state] {
        Outcome outcome;
        if (content) {
            const QStringList files = FindSearchFiles(roots, extensions, *state);
            outcome.files = int(files.size());
            outcome.groups = GroupSameContent(files, *state);
        } else {
            NameGroups groups = SearchSameNames(roots, extensions, *state);
            outcome.files = groups.fileCount();
            outcome.groups = groups.groups();
        }
        return outcome;
    }));
    m_statusTimer->start();
}

void frmDuplicateFiles::updateStatus()
{
    if (!m_running)
        return;
    const int drive = std::clamp(m_state->drive.load(), 0, int(m_searchRoots.size()) - 1);
    if (m_state->stage.load() == 1) {
        setStatus(QStringLiteral(" Comparing the contents of ") +
                  Format(m_state->files.load(), QStringLiteral("###,##0")) +
                  QStringLiteral(" files, please wait..."));
        return;
    }
    const QString found = m_contentMode ? Format(m_state->files.load(), QStringLiteral("###,##0"))
                                        : Format(m_state->found.load(), QStringLiteral("###,##0"));
    setStatus(QStringLiteral(" Searching drive ") + QDir::toNativeSeparators(m_searchRoots[drive]) +
              (m_contentMode ? QStringLiteral(" for files to compare, please wait...   FILES: ")
                             : QStringLiteral(" for duplicate files, please wait...   FOUND: ")) +
              found);
}

void frmDuplicateFiles::finished()
{
    if (!m_running)
        return;
    m_statusTimer->stop();
    const Outcome outcome = m_watcher.result();
    m_running = false;
    m_results.clear();
    m_groupOf.clear();
    for (int g = 0; g < outcome.groups.size(); ++g) {
        for (const QString& path : outcome.groups[g]) {
            m_results << path;
            m_groupOf << g;
        }
    }
    showResults();
    m_find->setText(QStringLiteral("&Search"));
    m_find->setToolTip(QStringLiteral("Click here to search for duplicate files."));
    if (m_results.isEmpty()) {
        setStatus(QStringLiteral(
            " Selected drive(s) have been searched, no duplicate files were found..."));
        MsgBox(QStringLiteral("No duplicate files were found on the selected drive(s)..."),
               vbInformation);
    } else {
        setStatus(QStringLiteral(" Selected drive(s) have been searched, ") +
                  Format(int(m_results.size()), QStringLiteral("###,###")) +
                  QStringLiteral(" duplicate files were found..."));
    }
}

void frmDuplicateFiles::showResults()
{
    m_files->clear();
    // Every other group is shaded, so where one ends and the next begins can be seen.
    QColor shade = palette().color(QPalette::Highlight);
    shade.setAlpha(40);
    for (int row = 0; row < m_results.size(); ++row) {
        auto* item = new QListWidgetItem(QDir::toNativeSeparators(m_results[row]), m_files);
        if (m_groupOf[row] % 2 == 1)
            item->setBackground(shade);
    }
}

void frmDuplicateFiles::waitForSearch()
{
    m_watcher.waitForFinished();
    finished();
}

QString frmDuplicateFiles::statusText() const
{
    return m_status->text();
}

void frmDuplicateFiles::setStatus(const QString& text)
{
    m_status->setText(text);
}

int frmDuplicateFiles::chosenRow(const QString& nothingChosen, bool openWording)
{
    if (m_results.isEmpty()) {
        MsgBox((openWording ? QStringLiteral("No valid image files were found.")
                            : QStringLiteral("No supported files were found.")) +
                   NewLine2() + searchAgain(),
               vbInformation);
        return -1;
    }
    const int row = m_files->currentRow();
    if (row < 0 || !m_files->currentItem()->isSelected()) {
        MsgBox(nothingChosen, vbInformation);
        return -1;
    }
    return row;
}

void frmDuplicateFiles::preview()
{
    const int row =
        chosenRow(QStringLiteral("Select a file to preview and then try again..."), false);
    if (row < 0)
        return;
    const QString path = m_results[row];
    if (IsSoundFile(path) || IsMovieFile(path) || IsImportFile(path)) {
        MsgBox(QStringLiteral("Unable to show a preview of a ") + u'.' +
                   QFileInfo(path).suffix().toUpper() +
                   QStringLiteral(" file, it needs to be imported first.") + NewLine2() +
                   QStringLiteral("Click the \"Open\" button to import this file..."),
               vbInformation);
        return;
    }
    const QImage picture = LoadPicture(path, m_preview->size());
    if (picture.isNull()) {
        m_preview->setText(QStringLiteral("(no preview)"));
        return;
    }
    m_preview->setPixmap(QPixmap::fromImage(
        picture.scaled(m_preview->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void frmDuplicateFiles::open()
{
    const int row = chosenRow(QStringLiteral("Select a file to open and then try again..."), true);
    if (row < 0)
        return;
    const QString path = m_results[row];
    if (MsgBox(QStringLiteral("Open the following file?") + NewLine2() +
                   QDir::toNativeSeparators(path),
               vbYesNo + vbQuestion) != vbYes)
        return;
    if (IsSoundFile(path) || IsMovieFile(path)) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    } else if (IsImportFile(path)) {
        if (m_window)
            m_window->importFile(path);
    } else if (m_window) {
        m_window->openImage(path);
    }
}

void frmDuplicateFiles::remove()
{
    const int row =
        chosenRow(QStringLiteral("Select a file to delete and then try again..."), false);
    if (row < 0)
        return;
    const QString path = m_results[row];
    const QString current = openFileOf(m_window);
    if (!current.isEmpty() && SamePath(path, current)) {
        MsgBox(QStringLiteral("Unable to delete file, this image is currently open..."),
               vbExclamation);
        return;
    }
    // True copies are deleted down to the last one, never that one.
    if (m_contentMode && m_groupOf.count(m_groupOf[row]) < 2) {
        MsgBox(QStringLiteral("This is the last copy of this file in the list, it will not be "
                              "deleted from here..."),
               vbInformation);
        return;
    }
    if (!DeleteOneFile(path, true))
        return;
    m_results.removeAt(row);
    m_groupOf.removeAt(row);
    showResults();
    m_preview->clear();
}

void frmDuplicateFiles::showPath()
{
    const int row = chosenRow(
        QStringLiteral("Select a file first, if you need to see more information..."), false);
    if (row >= 0)
        MsgBox(QDir::toNativeSeparators(m_results[row]), vbInformation);
}

bool frmDuplicateFiles::refusesWhileSearching()
{
    if (!m_running)
        return false;
    MsgBox(QStringLiteral("Press the Cancel button to stop searching for files..."), vbInformation);
    return true;
}

void frmDuplicateFiles::closeEvent(QCloseEvent* event)
{
    if (refusesWhileSearching())
        event->ignore();
    else
        QDialog::closeEvent(event);
}

void frmDuplicateFiles::reject()
{
    if (!refusesWhileSearching())
        QDialog::reject();
}

} // namespace kavori
