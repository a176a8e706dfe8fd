#include "frmAdvDescription.h"

#include "frmAddDesc.h"
#include "frmAdvDescEdit.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "slideshow/DescriptionFile.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStorageInfo>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace kavori {

namespace {

QString title()
{
    return AppTitle() + QStringLiteral(" - [Description Files]");
}

QPushButton* button(QWidget* parent, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    return b;
}

const QString kSearchCaption = QStringLiteral("&Search");

} // namespace

frmAdvDescription::frmAdvDescription(const QString& folder, QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAdvDescription"));
    setWindowTitle(title());

    m_drive = new QComboBox(this);
    m_drive->setObjectName(QStringLiteral("cboDrive"));
    m_drive->setEditable(true);
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (volume.isValid() && volume.isReady())
            m_drive->addItem(QDir::toNativeSeparators(volume.rootPath()));
    auto* browse = button(this, "CmdBrowse", QStringLiteral("..."));
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("txtSearch"));
    m_text->setPlaceholderText(QStringLiteral("(any description file)"));
    m_search = button(this, "CmdSearch", kSearchCaption);

    m_heading = new QLabel(this);
    m_heading->setObjectName(QStringLiteral("lblFound"));
    m_heading->setWordWrap(true);
    m_files = new QListWidget(this);
    m_files->setObjectName(QStringLiteral("lstFiles"));
    m_files->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_hint = new QLabel(this);
    m_hint->setObjectName(QStringLiteral("lblHint"));
    m_entries = new QTreeWidget(this);
    m_entries->setObjectName(QStringLiteral("lstDesc"));
    m_entries->setHeaderLabels({QStringLiteral("File"), QStringLiteral("Description")});
    m_entries->setRootIsDecorated(false);
    m_entries->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);

    auto* where = new QGridLayout;
    where->addWidget(new QLabel(QStringLiteral("Search in:"), this), 0, 0);
    where->addWidget(m_drive, 0, 1);
    where->addWidget(browse, 0, 2);
    where->addWidget(new QLabel(QStringLiteral("Text to find:"), this), 1, 0);
    where->addWidget(m_text, 1, 1);
    where->addWidget(m_search, 1, 2);
    where->setColumnStretch(1, 1);

    auto* commands = new QVBoxLayout;
    auto add = [&](const char* name, const QString& caption, void (frmAdvDescription::*slot)()) {
        QPushButton* b = button(this, name, caption);
        connect(b, &QPushButton::clicked, this, slot);
        commands->addWidget(b);
        m_commands << b;
    };
    add("CmdCreate", QStringLiteral("&Create File..."), &frmAdvDescription::createFile);
    add("CmdAdd", QStringLiteral("&Add Description..."), &frmAdvDescription::addDescription);
    add("CmdEdit", QStringLiteral("&Edit Description..."), &frmAdvDescription::editDescription);
    add("CmdRemove", QStringLiteral("&Remove Description"), &frmAdvDescription::removeDescription);
    commands->addSpacing(12);
    add("CmdDelete", QStringLiteral("&Delete Files"), &frmAdvDescription::deleteFiles);
    add("CmdDetails", QStringLiteral("De&tails"), &frmAdvDescription::details);
    add("CmdVerify", QStringLiteral("&Verify and Repair"), &frmAdvDescription::verify);
    commands->addStretch();
    auto* close = button(this, "CmdClose", QStringLiteral("C&lose"));
    connect(close, &QPushButton::clicked, this, &frmAdvDescription::reject);
    commands->addWidget(close);

    auto* lists = new QVBoxLayout;
    lists->addWidget(m_heading);
    lists->addWidget(m_files, 2);
    lists->addWidget(m_hint);
    lists->addWidget(new QLabel(QStringLiteral("Descriptions in the selected file:"), this));
    lists->addWidget(m_entries, 3);
    auto* body = new QHBoxLayout;
    body->addLayout(lists, 1);
    body->addLayout(commands);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(where);
    layout->addLayout(body, 1);
    resize(720, 540);

    connect(browse, &QPushButton::clicked, this, [this] {
        const QString chosen =
            CurrentPrompts().chooseFolder(QStringLiteral("Search in"), m_drive->currentText());
        if (!chosen.isEmpty())
            m_drive->setEditText(QDir::toNativeSeparators(chosen));
    });
    connect(m_search, &QPushButton::clicked, this, &frmAdvDescription::search);
    connect(m_files, &QListWidget::currentRowChanged, this, [this] { showEntries(); });
    connect(m_files, &QListWidget::itemDoubleClicked, this, &frmAdvDescription::details);
    connect(m_entries, &QTreeWidget::itemDoubleClicked, this, &frmAdvDescription::editDescription);
    connect(&m_watcher, &QFutureWatcher<DescriptionSearch>::finished, this,
            &frmAdvDescription::searchDone);

    const QString start = folder.isEmpty() ? QDir::homePath() : folder;
    m_drive->setEditText(QDir::toNativeSeparators(QDir(start).absolutePath()));
    listFolder(start);
}

frmAdvDescription::~frmAdvDescription()
{
    // A search still running stops before the dialog goes.
    m_cancel = true;
    m_watcher.waitForFinished();
}

void frmAdvDescription::listFolder(const QString& folder)
{
    const QString file = DescriptionFilePath(QDir(folder).absolutePath());
    DescriptionTable table;
    QStringList found;
    if (QFileInfo(file).isFile() && ReadDescriptionFile(FolderOf(file), table) >= 0)
        found << QDir::toNativeSeparators(file);
    showFiles(found);
    m_hint->clear();
}

void frmAdvDescription::showFiles(const QStringList& files)
{
    m_files->clear();
    m_files->addItems(files);
    m_heading->setText(DescriptionListHeading(int(files.size())));
    if (!files.isEmpty())
        m_files->setCurrentRow(0);
    showEntries();
}

QStringList frmAdvDescription::files() const
{
    QStringList list;
    if (searching())
        return list;
    for (int row = 0; row < m_files->count(); ++row)
        list << m_files->item(row)->text();
    return list;
}

QString frmAdvDescription::heading() const
{
    return m_heading->text();
}

QString frmAdvDescription::hint() const
{
    return m_hint->text();
}

void frmAdvDescription::selectFile(int row)
{
    m_files->setCurrentRow(row);
}

int frmAdvDescription::entryCount() const
{
    return m_entries->topLevelItemCount();
}

void frmAdvDescription::selectEntry(int row)
{
    m_entries->setCurrentItem(m_entries->topLevelItem(row));
}

QString frmAdvDescription::currentFile() const
{
    if (searching())
        return {};
    const QListWidgetItem* item = m_files->currentItem();
    return item ? QDir::fromNativeSeparators(item->text()) : QString();
}

void frmAdvDescription::showEntries()
{
    m_entries->clear();
    const QString file = currentFile();
    if (file.isEmpty() || ReadDescriptionFile(FolderOf(file)) <= 0)
        return;
    const DescriptionTable& table = CurrentDescriptions();
    QList<QTreeWidgetItem*> rows;
    for (qsizetype i = 0; i < table.DescFileName.size(); ++i)
        rows << new QTreeWidgetItem({table.DescFileName[i], table.DescText.value(i)});
    m_entries->addTopLevelItems(rows);
}

bool frmAdvDescription::refuseWhileSearching()
{
    if (!searching())
        return false;
    MsgBox(QStringLiteral("You need to cancel the description file search before you can close "
                          "this dialog..."),
           vbExclamation, title());
    return true;
}

void frmAdvDescription::search()
{
    if (searching()) {
        m_cancel = true;
        return;
    }
    const QString drive = m_drive->currentText().trimmed();
    if (drive.isEmpty() || !QFileInfo(QDir::fromNativeSeparators(drive)).isDir()) {
        MsgBox(QStringLiteral("The selected drive or folder could not be found..."), vbExclamation,
               title());
        return;
    }
    if (MsgBox(SearchQuestion(drive), vbOKCancel + vbInformation, title()) != vbOK)
        return;
    m_searchText = m_text->text().trimmed();
    m_cancel = false;
    m_searching = true;
    m_search->setText(QStringLiteral("Canc&el Search"));
    for (QPushButton* b : m_commands)
        b->setEnabled(false);
    m_files->clear();
    m_files->addItem(QStringLiteral("(Searching for files, please wait...)"));
    m_entries->clear();
    m_heading->clear();
    m_hint->clear();
    const QString root = QDir::fromNativeSeparators(drive);
    const QString text = m_searchText;
    m_watcher.setFuture(QtConcurrent::run(
        [this, root, text] { return SearchDescriptionFiles(root, text, &m_cancel); }));
}

void frmAdvDescription::searchDone()
{
    const DescriptionSearch result = m_watcher.result();
    m_searching = false;
    m_search->setText(kSearchCaption);
    for (QPushButton* b : m_commands)
        b->setEnabled(true);
    showFiles(result.files);
    const SearchTexts texts = DescriptionSearchTexts(result, m_searchText);
    if (result.cancelled) {
        m_hint->setText(result.files.isEmpty() ? QString() : texts.hint);
        return;
    }
    m_heading->setText(texts.heading);
    m_hint->setText(texts.hint);
    MsgBox(texts.message, vbInformation, title());
}

void frmAdvDescription::describeIn(const QString& folder)
{
    const QString refusal = AddDescriptionRefusal(folder);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, title());
        return;
    }
    const QStringList free = FilesWithoutDescriptions(folder);
    const QString name = frmAddDesc::Choose(free, this);
    if (name.isEmpty())
        return;
    const std::optional<QString> text = frmAdvDescEdit::Ask(name, QString(), this);
    if (!text)
        return;
    ReadDescriptionFile(folder);
    SetDescription(name, *text);
    WriteDescriptionFile(folder);
    const QString file = QDir::toNativeSeparators(DescriptionFilePath(folder));
    QStringList list = files();
    if (!list.contains(file))
        showFiles(list << file);
    m_files->setCurrentRow(int(files().indexOf(file)));
    showEntries();
}

void frmAdvDescription::createFile()
{
    const QString folder =
        CurrentPrompts().chooseFolder(QStringLiteral("Create Description File"),
                                      QDir::fromNativeSeparators(m_drive->currentText()));
    if (!folder.isEmpty())
        describeIn(folder);
}

void frmAdvDescription::addDescription()
{
    const QString file = currentFile();
    if (file.isEmpty()) {
        createFile();
        return;
    }
    describeIn(FolderOf(file));
}

void frmAdvDescription::editDescription()
{
    if (entryCount() == 0) {
        MsgBox(QStringLiteral("There are no descriptions to edit..."), vbExclamation, title());
        return;
    }
    QTreeWidgetItem* item = m_entries->currentItem();
    if (!item || !item->isSelected()) {
        MsgBox(QStringLiteral("Select the description to edit and then try again..."),
               vbExclamation, title());
        return;
    }
    const QString name = item->text(0);
    const int row = m_entries->indexOfTopLevelItem(item);
    const std::optional<QString> text = frmAdvDescEdit::Ask(name, item->text(1), this);
    if (!text)
        return;
    const QString folder = FolderOf(currentFile());
    ReadDescriptionFile(folder);
    SetDescription(name, *text);
    WriteDescriptionFile(folder);
    showEntries();
    selectEntry(row);
}

void frmAdvDescription::removeDescription()
{
    if (entryCount() == 0) {
        MsgBox(QStringLiteral("There are no descriptions to remove..."), vbExclamation, title());
        return;
    }
    const QTreeWidgetItem* item = m_entries->currentItem();
    if (!item || !item->isSelected()) {
        MsgBox(QStringLiteral("Select the description to remove and then try again..."),
               vbExclamation, title());
        return;
    }
    if (MsgBox(RemoveDescriptionQuestion(item->text(0), item->text(1)), vbYesNo + vbQuestion,
               title()) != vbYes)
        return;
    const QString name = item->text(0);
    const QString file = currentFile();
    ReadDescriptionFile(FolderOf(file));
    RemoveDescription(name);
    WriteDescriptionFile(FolderOf(file));
    if (QFileInfo::exists(file)) {
        showEntries();
        return;
    }
    // The last description went, and the file with it.
    QStringList list = files();
    list.removeAll(QDir::toNativeSeparators(file));
    showFiles(list);
}

void frmAdvDescription::deleteFiles()
{
    QStringList chosen;
    for (const QListWidgetItem* item : m_files->selectedItems())
        chosen << QDir::fromNativeSeparators(item->text());
    if (searching() || chosen.isEmpty()) {
        MsgBox(QStringLiteral("No description files were selected, nothing to delete..."),
               vbExclamation, title());
        return;
    }
    if (MsgBox(QStringLiteral("About to delete the selected description files.") + NewLine2() +
                   QStringLiteral("Are you sure?"),
               vbYesNo + vbQuestion, title()) != vbYes)
        return;
    DeleteDescriptionFiles(chosen);
    QStringList left;
    for (const QString& file : files())
        if (QFileInfo::exists(QDir::fromNativeSeparators(file)))
            left << file;
    showFiles(left);
}

void frmAdvDescription::details()
{
    const QString file = currentFile();
    if (file.isEmpty()) {
        MsgBox(QStringLiteral("No description files were selected..."), vbExclamation, title());
        return;
    }
    MsgBox(DescriptionFileDetails(file), vbInformation, title());
}

void frmAdvDescription::verify()
{
    const QString file = currentFile();
    if (file.isEmpty()) {
        MsgBox(QStringLiteral("No description files were selected..."), vbExclamation, title());
        return;
    }
    const QString folder = FolderOf(file);
    const DescriptionProblems problems = CheckDescriptionFile(folder);
    if (!problems.any()) {
        MsgBox(DescriptionReport(problems), vbInformation, title());
        return;
    }
    if (MsgBox(DescriptionReport(problems), vbYesNo + vbExclamation, title()) != vbYes)
        return;
    RepairDescriptionFile(folder);
    if (QFileInfo::exists(file)) {
        showEntries();
        return;
    }
    QStringList list = files();
    list.removeAll(QDir::toNativeSeparators(file));
    showFiles(list);
}

void frmAdvDescription::closeEvent(QCloseEvent* event)
{
    if (refuseWhileSearching())
        event->ignore();
    else
        QDialog::closeEvent(event);
}

void frmAdvDescription::reject()
{
    if (!refuseWhileSearching())
        QDialog::reject();
}

void frmAdvDescription::Open(const QString& folder, QWidget* parent)
{
    frmAdvDescription dialog(folder, parent);
    dialog.exec();
}

} // namespace kavori
