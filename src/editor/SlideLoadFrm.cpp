#include "SlideLoadFrm.h"

#include "ExitFrm.h"
#include "LoadSlideFile.h"
#include "SlideListModel.h"
#include "SlideRangeFrm.h"
#include "files/FolderPane.h"
#include "files/FolderTree.h"
#include "files/frmCopyImages.h"
#include "frmAdvDescription.h"
#include "frmDescription.h"
#include "frmEditSounds.h"
#include "frmExportVideo.h"
#include "frmPlaybackOptions.h"
#include "frmSlideDup.h"
#include "frmSlideInfo.h"
#include "frmSlideProperties.h"
#include "frmTransition.h"
#include "packaging/SaverSettings.h"
#include "packaging/SaverSetup.h"
#include "platform/AppPaths.h"
#include "platform/UserSettings.h"
#include "platform/Volumes.h"
#include "playback/FullViewFrm.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "runtime/WaitDialog.h"
#include "settings/RecentShows.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/ShowInformation.h"
#include "slideshow/SlideDescriptions.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "slideshow/SlideTransitions.h"
#include "systemsaver/SystemSaver.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSplitter>
#include <QStorageInfo>
#include <QTreeView>
#include <QVBoxLayout>

#include <memory>

namespace kavori {

namespace {

const char kUntitled[] = "Untitled.KAV";

bool named()
{
    const QString& path = CurrentShow().path;
    return !path.isEmpty() &&
           FileNameOf(path).compare(QLatin1String(kUntitled), Qt::CaseInsensitive) != 0;
}

} // namespace

QString SlideLoadFrm::Title(const QString& function)
{
    return AppTitle() + QStringLiteral(" - [") +
           (function.isEmpty() ? QStringLiteral("Slide Show Editor") : function) + u']';
}

SlideLoadFrm::SlideLoadFrm(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("SlideLoadFrm"));
    setWindowTitle(Title());
    setAcceptDrops(true);
    buildSource();
    buildList();

    auto* splitter = new QSplitter(this);
    auto* left = new QWidget(splitter);
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addWidget(m_folder);
    leftLayout->addWidget(m_dirs, 2);
    leftLayout->addWidget(m_files, 3);
    auto* right = new QWidget(splitter);
    auto* rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addWidget(new QLabel(QStringLiteral("View List:"), right));
    rightLayout->addWidget(m_list, 1);
    rightLayout->addWidget(m_count);
    splitter->addWidget(left);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(this);
    buildMenus();
    layout->setMenuBar(findChild<QMenuBar*>());
    layout->addWidget(splitter, 1);
    buildButtons();
    resize(900, 600);

    // The source pane starts beside the show, or in the favourite folder for a new one.
    const Settings& s = CurrentSettings();
    const QString& showPath = CurrentShow().path;
    if (!showPath.isEmpty() && QFileInfo(FolderOf(showPath)).isDir())
        setSourceFolder(FolderOf(showPath));
    else
        setSourceFolder(s.FavoriteFolder.isEmpty() ? PathNoCase(AppPath(), QStringLiteral("Slides"))
                                                   : s.FavoriteFolder);
    refreshList();
}

SlideLoadFrm::~SlideLoadFrm() = default;

void SlideLoadFrm::buildSource()
{
    m_dirs = new FolderTree(QStringLiteral("Dir1"), this);
    connect(m_dirs, &FolderTree::folderClicked, this,
            [this](const QString& folder) { setSourceFolder(folder); });

    m_folder = new QComboBox(this);
    m_folder->setObjectName(QStringLiteral("Drive1"));
    m_folder->setEditable(true);
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (volume.isValid() && volume.isReady())
            m_folder->addItem(volume.rootPath());
    connect(m_folder, &QComboBox::textActivated, this, [this](const QString& folder) {
        if (QFileInfo(folder).isDir())
            setSourceFolder(folder);
    });

    // The folder is read by the model on its own thread: a folder of thousands of files never
    // holds the window up.
    m_fileModel = new QFileSystemModel(this);
    m_fileModel->setFilter(QDir::Files);
    m_fileModel->setNameFilters(SlideFilePatterns());
    m_fileModel->setNameFilterDisables(false);
    m_files = new QListView(this);
    m_files->setObjectName(QStringLiteral("File1"));
    m_files->setModel(m_fileModel);
    m_files->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_files->setUniformItemSizes(true);
    connect(m_files, &QListView::doubleClicked, this, [this] { addSelected(); });
}

void SlideLoadFrm::buildList()
{
    m_model = new SlideListModel(this);
    m_list = new QListView(this);
    m_list->setObjectName(QStringLiteral("ViewList"));
    m_list->setModel(m_model);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setUniformItemSizes(true);
    m_list->setLayoutMode(QListView::Batched);
    m_count = new QLabel(this);
    m_count->setObjectName(QStringLiteral("lblCount"));
}

void SlideLoadFrm::buildButtons()
{
    auto* grid = new QGridLayout;
    int column = 0;
    int row = 0;
    auto add = [&](const char* name, const QString& caption, auto&& slot) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QPushButton::clicked, this, slot);
        grid->addWidget(button, row, column);
        if (++column == 7) {
            column = 0;
            ++row;
        }
        return button;
    };
    add("CmdAdd", QStringLiteral("&Add"), [this] { addSelected(); });
    add("CmdAddAll", QStringLiteral("Add A&ll"), [this] { addAll(); });
    add("CmdRemove", QStringLiteral("&Remove"), [this] { removeSelected(); });
    add("CmdRemoveAll", QStringLiteral("Remo&ve All"), [this] { removeAll(); });
    add("CmdUp1", QStringLiteral("Move &Up"), [this] { move(MoveKind::Up); });
    add("CmdDown1", QStringLiteral("Move &Down"), [this] { move(MoveKind::Down); });
    add("CmdPreview", QStringLiteral("Pre&view"), [this] {
        const QVector<int> lines = selectedLines();
        play(lines.isEmpty() ? 0 : lines.first());
    });
    add("CmdOptions", QStringLiteral("O&ptions..."), [this] { frmPlaybackOptions::Edit(this); });
    add("CmdLoad", QStringLiteral("L&oad..."), [this] { load(); });
    add("CmdSave", QStringLiteral("&Save"), [this] { save(); });
    add("CmdSaveAs", QStringLiteral("Save &As..."), [this] { saveAs(); });
    add("CmdOK", QStringLiteral("&View Show"), [this] { play(0); });
    add("CmdCancel", QStringLiteral("&Close"), [this] { close(); });
    static_cast<QBoxLayout*>(layout())->addLayout(grid);
}

void SlideLoadFrm::buildMenus()
{
    auto* bar = new QMenuBar(this);
    auto action = [this](QMenu* menu, const char* name, const QString& caption, auto&& slot) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        connect(a, &QAction::triggered, this, slot);
        return a;
    };
    QMenu* file = bar->addMenu(QStringLiteral("&File"));
    action(file, "mnuLoadShow", QStringLiteral("&Load Slide Show..."), [this] { load(); });
    action(file, "mnuSaveShow", QStringLiteral("&Save Slide Show"), [this] { save(); });
    action(file, "mnuSaveShowAs", QStringLiteral("Save Slide Show &As..."), [this] { saveAs(); });
    action(file, "mnuRenameShow", QStringLiteral("Re&name Slide Show..."),
           [this] { renameShow(); });
    file->addSeparator();
    action(file, "mnuLoadFavoriteShow", QStringLiteral("Load from &Favorite Shows..."),
           [this] { loadFromList(CurrentSettings().FavoriteShow, true); });
    action(file, "mnuLoadRecentShow", QStringLiteral("Load from Recen&t Shows..."),
           [this] { loadFromList(CurrentSettings().RecentShow, false); });
    action(file, "mnuAddFavoriteShow", QStringLiteral("&Add to Favorite Shows"),
           [this] { addToFavorites(); });
    file->addSeparator();
    action(file, "mnuSlideShowInfo", QStringLiteral("Slide Show &Information..."), [this] {
        frmSlideInfo info(this);
        info.exec();
    });
    action(file, "mnuSourceInfo", QStringLiteral("S&ource Folder Information..."),
           [this] { sourceInformation(); });
    action(file, "mnuNewFolder", QStringLiteral("&New Folder..."), [this] { newFolder(); });
    action(file, "mnuCopyImages", QStringLiteral("&Copy Images..."), [this] { copyImages(); });
    file->addSeparator();
    // The show as it stands becomes the screen saver: saved first when it has changes.
    action(file, "mnuSetScreenSaver", QStringLiteral("Set as &Screen Saver..."), [this] {
        if ((CurrentShow().changed || CurrentShow().path.isEmpty()) && !save())
            return;
        if (!MakeShowTheSaver(CurrentShow().path, CurrentSystemSaver()))
            return;
        SaverSetup::Edit(this); // works on the same file, read again
        refreshList();
    });
    file->addSeparator();
    action(file, "mnuClose", QStringLiteral("&Close"), [this] { close(); });

    QMenu* list = bar->addMenu(QStringLiteral("&View List"));
    action(list, "mnuMoveFileUp", QStringLiteral("Move &Up"), [this] { move(MoveKind::Up); });
    action(list, "mnuMoveFileDown", QStringLiteral("Move &Down"), [this] { move(MoveKind::Down); });
    action(list, "mnuMoveToTop", QStringLiteral("Move to &Top"), [this] { move(MoveKind::Top); });
    action(list, "mnuMoveToBottom", QStringLiteral("Move to &Bottom"),
           [this] { move(MoveKind::Bottom); });
    list->addSeparator();
    action(list, "mnuRenameFile", QStringLiteral("Rename Source &File..."),
           [this] { renameFile(); });
    list->addSeparator();
    action(list, "mnuRandomizeOrder", QStringLiteral("&Randomize Order"), [this] { randomize(); });
    action(list, "mnuReverseOrder", QStringLiteral("Re&verse Order"), [this] { reverse(); });
    list->addSeparator();
    action(list, "mnuCheckDuplicate", QStringLiteral("Check for Du&plicate Slides..."),
           [this] { checkDuplicates(); });
    action(list, "mnuRemoveMissing", QStringLiteral("Remove &Missing Slides..."),
           [this] { checkMissing(true); });
    action(list, "mnuSelectMissing", QStringLiteral("&Select Missing Slides..."),
           [this] { checkMissing(false); });
    list->addSeparator();
    action(list, "mnuSelectRange", QStringLiteral("Select a Ra&nge of Slides..."),
           [this] { selectRange(); });
    action(list, "mnuSelectSome1", QStringLiteral("Select &Every Nth Slide..."),
           [this] { selectEvery(); });
    QAction* names = action(list, "mnuListFilenames", QStringLiteral("List File &Names Only"),
                            [this](bool on) { m_model->setNamesOnly(on); });
    names->setCheckable(true);

    buildSlideMenus(bar);

    QMenu* sounds = bar->addMenu(QStringLiteral("&Sounds"));
    action(sounds, "mnuEditSounds", QStringLiteral("&Edit Sounds..."), [this] {
        const int line = editLine();
        if (line >= 0 && EditSlideSounds(this, line))
            afterEdit();
    });
    action(sounds, "mnuClearSounds", QStringLiteral("&Clear All Sounds..."), [this] {
        if (ClearSlideSounds(Title()))
            refreshList();
    });

    QMenu* show = bar->addMenu(QStringLiteral("&Play"));
    action(show, "mnuStartShow", QStringLiteral("&Start Slide Show"), [this] { play(0); });
    action(show, "mnuStartAtSelected", QStringLiteral("Start at Se&lected Slide"), [this] {
        const QVector<int> lines = selectedLines();
        play(lines.isEmpty() ? 0 : lines.first());
    });
    action(show, "mnuStartLastShown", QStringLiteral("Start at Last &Shown Slide"), [this] {
        if (CurrentShow().changed) {
            MsgBox(QStringLiteral("The current slide show has changed, unable to start at the "
                                  "last shown slide..."),
                   vbExclamation, Title());
            return;
        }
        play(CurrentSettings().ImageLastDisplayed);
    });
    show->addSeparator();
    action(show, "mnuExportVideo", QStringLiteral("Export to &Video..."),
           [this] { frmExportVideo::Edit(this); });
    buildDescriptionMenu(bar);
}

void SlideLoadFrm::buildDescriptionMenu(QMenuBar* bar)
{
    QMenu* menu = bar->addMenu(QStringLiteral("&Descriptions"));
    menu->setObjectName(QStringLiteral("mnuDescriptions"));
    auto action = [this, menu](const char* name, const QString& caption, auto&& slot) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        connect(a, &QAction::triggered, this, slot);
    };
    action("mnuEditDescription", QStringLiteral("&Edit Descriptions..."),
           [this] { editDescriptions(); });
    action("mnuClearDescriptions", QStringLiteral("&Clear All Descriptions"),
           [this] { clearDescriptions(); });
    menu->addSeparator();
    action("mnuAdvDescriptions", QStringLiteral("&Description Files..."),
           [this] { frmAdvDescription::Open(sourceFolder(), this); });
}

void SlideLoadFrm::buildSlideMenus(QMenuBar* bar)
{
    auto action = [this](QMenu* menu, const char* name, const QString& caption, auto&& slot) {
        QAction* a = menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        connect(a, &QAction::triggered, this, slot);
    };
    QMenu* slide = bar->addMenu(QStringLiteral("S&lide"));
    action(slide, "mnuSlideProperties", QStringLiteral("Slide &Properties..."),
           [this] { editProperties(); });
    QMenu* transitions = bar->addMenu(QStringLiteral("&Transitions"));
    action(transitions, "mnuEditTransitions", QStringLiteral("&Edit Transitions..."),
           [this] { editTransitions(); });
    action(transitions, "mnuClearTransitions", QStringLiteral("&Clear All Transitions..."),
           [this] { clearTransitions(); });
}

void SlideLoadFrm::copyImages()
{
    // The copy dialog opens on the source folder with the chosen pictures chosen there too.
    const QStringList chosen = selectedSourceFiles();
    frmCopyImages dialog(QString(), this);
    dialog.source()->setFolder(sourceFolder());
    dialog.source()->selectFiles(chosen);
    dialog.exec();
}

void SlideLoadFrm::selectRange()
{
    if (CurrentShow().slides.isEmpty()) {
        MsgBox(NothingToSelectText(), vbExclamation, Title());
        return;
    }
    const QVector<int> lines = selectedLines();
    const auto range = SlideRangeFrm::Pick(this, QStringLiteral("Select range of files to select:"),
                                           lines.isEmpty() ? 0 : lines.first());
    if (range)
        selectLines(LinesBetween(range->first, range->last));
}

void SlideLoadFrm::selectEvery()
{
    const int count = int(CurrentShow().slides.size());
    if (count == 0) {
        MsgBox(NothingToSelectText(), vbExclamation, Title());
        return;
    }
    const QString answer =
        InputBox(QStringLiteral("Select every how many slides? (2 selects every other slide, "
                                "starting at the first selected slide)"),
                 Title(QStringLiteral("Select Slides")), QStringLiteral("2"));
    if (answer.isEmpty())
        return;
    const QVector<int> lines = selectedLines();
    const EveryNth chosen = EveryNthLine(answer, count, lines.isEmpty() ? 0 : lines.first());
    if (!chosen.refusal.isEmpty()) {
        MsgBox(chosen.refusal, vbExclamation, Title());
        return;
    }
    selectLines(chosen.lines);
}

int SlideLoadFrm::editLine()
{
    if (CurrentShow().slides.isEmpty()) {
        MsgBox(QStringLiteral("There are no slides in the View List to edit.") + NewLine2() +
                   QStringLiteral("Add files to the list and then try again..."),
               vbExclamation, Title());
        return -1;
    }
    const QVector<int> lines = selectedLines();
    return lines.isEmpty() ? 0 : lines.first();
}

void SlideLoadFrm::editProperties()
{
    const int line = editLine();
    if (line >= 0 && frmSlideProperties::Edit(this, line))
        afterEdit();
}

void SlideLoadFrm::editTransitions()
{
    const int line = editLine();
    if (line >= 0 && frmTransition::Edit(this, line))
        afterEdit();
}

void SlideLoadFrm::clearTransitions()
{
    SlideShow& show = CurrentShow();
    if (show.slides.isEmpty())
        return;
    const ClearTransitionsPrompt prompt = ClearAllTransitionsPrompt(show.slides);
    if (!prompt.alreadySet.isEmpty()) {
        MsgBox(prompt.alreadySet, vbInformation, Title());
        return;
    }
    if (MsgBox(prompt.question, vbYesNo | vbQuestion | vbDefaultButton2, Title()) != vbYes)
        return;
    for (Slide& slide : show.slides)
        slide.SlideTransition = 0;
    show.changed = true;
    afterEdit();
}

void SlideLoadFrm::setSourceFolder(const QString& folder)
{
    const QString path = QDir(folder).absolutePath();
    m_fileModel->setRootPath(path);
    m_files->setRootIndex(m_fileModel->index(path));
    m_dirs->showFolder(path);
    m_folder->setEditText(QDir::toNativeSeparators(path));
}

QString SlideLoadFrm::sourceFolder() const
{
    return m_fileModel->rootPath();
}

QStringList SlideLoadFrm::allSourceFiles() const
{
    QStringList files;
    const QModelIndex root = m_files->rootIndex();
    const int rows = m_fileModel->rowCount(root);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = m_fileModel->index(row, 0, root);
        if (!m_fileModel->isDir(index))
            files << m_fileModel->filePath(index);
    }
    return files;
}

QStringList SlideLoadFrm::selectedSourceFiles() const
{
    QModelIndexList chosen = m_files->selectionModel()->selectedIndexes();
    std::sort(chosen.begin(), chosen.end(),
              [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    QStringList files;
    for (const QModelIndex& index : chosen)
        files << m_fileModel->filePath(index);
    return files;
}

QVector<int> SlideLoadFrm::selectedLines() const
{
    QVector<int> lines;
    for (const QModelIndex& index : m_list->selectionModel()->selectedIndexes())
        lines << index.row();
    std::sort(lines.begin(), lines.end());
    return lines;
}

void SlideLoadFrm::selectLines(const QVector<int>& lines)
{
    QItemSelection selection;
    for (int line : lines) {
        const QModelIndex index = m_model->index(line);
        selection.select(index, index);
    }
    m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!lines.isEmpty())
        m_list->scrollTo(m_model->index(lines.first()));
}

QString SlideLoadFrm::countText() const
{
    return m_count->text();
}

void SlideLoadFrm::refreshList()
{
    m_model->reload();
    m_count->setText(SlideCountText(int(CurrentShow().slides.size())));
}

void SlideLoadFrm::afterEdit()
{
    // A slide's values changed, not the lines: the list and its selection stay as they are.
    const QVector<int> lines = selectedLines();
    refreshList();
    selectLines(lines);
}

void SlideLoadFrm::apply(const ListResult& result)
{
    if (result.changed)
        refreshList();
    if (!result.selection.isEmpty())
        selectLines(result.selection);
    if (!result.message.isEmpty())
        MsgBox(result.message, result.changed ? vbInformation : vbExclamation, Title());
}

void SlideLoadFrm::addSelected()
{
    apply(AddSlides(CurrentShow(), selectedSourceFiles(), allSourceFiles().isEmpty()));
}

void SlideLoadFrm::addAll()
{
    const QStringList all = allSourceFiles();
    apply(AddSlides(CurrentShow(), all, all.isEmpty()));
}

void SlideLoadFrm::removeSelected()
{
    apply(RemoveSlides(CurrentShow(), selectedLines()));
}

void SlideLoadFrm::removeAll()
{
    SlideShow& show = CurrentShow();
    if (show.slides.isEmpty()) {
        MsgBox(QStringLiteral("There are no files in the View List to remove..."), vbExclamation,
               Title());
        return;
    }
    if (MsgBox(RemoveAllQuestion(), vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    show.slides.clear();
    show.changed = true;
    refreshList();
}

void SlideLoadFrm::move(MoveKind kind)
{
    apply(MoveSlides(CurrentShow(), selectedLines(), kind));
}

void SlideLoadFrm::randomize()
{
    apply(RandomizeSlides(CurrentShow()));
}

void SlideLoadFrm::reverse()
{
    apply(ReverseSlides(CurrentShow()));
}

void SlideLoadFrm::checkDuplicates()
{
    const QString title = Title(QStringLiteral("Check For Duplicate Slides"));
    const int count = int(CurrentShow().slides.size());
    if (count == 0) {
        MsgBox(QStringLiteral(
                   "There is nothing in the View List, unable to check for duplicate slides..."),
               vbExclamation, title);
        return;
    }
    if (count == 1) {
        MsgBox(QStringLiteral("There is only one item in the View List, no need to check for "
                              "duplicate slides..."),
               vbExclamation, title);
        return;
    }
    const QVector<int> repeated = DuplicateSlides(CurrentShow());
    if (repeated.isEmpty()) {
        MsgBox(QStringLiteral("No duplicate files were found in the current slide show..."),
               vbInformation, title);
        return;
    }
    selectLines(repeated);
    frmSlideDup dialog(repeated, this);
    if (dialog.exec() == QDialog::Accepted && dialog.removeChosen())
        apply(RemoveSlides(CurrentShow(), repeated));
}

void SlideLoadFrm::checkMissing(bool remove)
{
    const QString title = Title(remove ? QStringLiteral("Remove Missing Slides")
                                       : QStringLiteral("Select Missing Slides"));
    if (CurrentShow().slides.isEmpty()) {
        MsgBox(QStringLiteral(
                   "There are no images in the current slide show, unable to check for missing "
                   "files..."),
               vbExclamation, title);
        return;
    }
    if (MsgBox(QStringLiteral("Check current slide show to see if all files still exist?"),
               vbYesNo + vbQuestion, title) != vbYes)
        return;
    const QVector<int> missing = MissingSlides(CurrentShow());
    if (remove && !missing.isEmpty())
        apply(RemoveSlides(CurrentShow(), missing));
    else
        selectLines(missing);
    MsgBox(MissingSlidesText(int(missing.size()), remove), vbInformation, title);
}

bool SlideLoadFrm::refusedEmpty()
{
    if (!CurrentShow().slides.isEmpty())
        return false;
    MsgBox(QStringLiteral("There are no slides in the View List to save.") + NewLine2() +
               QStringLiteral("Add files to the list and then try again..."),
           vbExclamation, Title());
    return true;
}

bool SlideLoadFrm::save()
{
    const SlideShow& show = CurrentShow();
    if (refusedEmpty())
        return false;
    if (!show.changed) {
        MsgBox(QStringLiteral("The current slide show has not changed, nothing to save..."),
               vbInformation, Title());
        return false;
    }
    if (!named())
        return saveAs();
    if (MsgBox(QStringLiteral("About to update the slide show file:") + NewLine2() + show.path +
                   NewLine2() + QStringLiteral("Are you sure?"),
               vbYesNo + vbQuestion, Title()) != vbYes)
        return false;
    return saveTo(show.path);
}

bool SlideLoadFrm::saveAs()
{
    const SlideShow& show = CurrentShow();
    if (refusedEmpty())
        return false;
    const QString start = named() ? show.path : sourceFolder() + u'/' + QLatin1String(kUntitled);
    QString path =
        CurrentPrompts().saveFile(QStringLiteral("Save Slide Show As"), start, SlideShowFilter());
    if (path.isEmpty())
        return false; // cancelled
    // A folder, or an extension alone, names no file.
    const QString name = FileNameOf(path);
    if (name.isEmpty() || name.compare(QLatin1String(".KAV"), Qt::CaseInsensitive) == 0) {
        MsgBox(QStringLiteral("You forgot to enter a filename.") + NewLine2() +
                   QStringLiteral("Enter a name and then try again..."),
               vbExclamation, Title());
        return false;
    }
    const QString refusal = FileNameRefusal(name);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, Title());
        return false;
    }
    if (!HasExtension(path, QStringLiteral(".KAV")))
        path += QStringLiteral(".KAV");
    if (QFileInfo::exists(path) &&
        MsgBox(QStringLiteral("The following filename already exists:") + NewLine2() + path +
                   NewLine2() + QStringLiteral("Replace this file?"),
               vbYesNo + vbQuestion, Title()) != vbYes)
        return false;
    if (MsgBox(QStringLiteral("About to save the slide show as:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("Is this filename OK?"),
               vbYesNo + vbQuestion, Title()) != vbYes)
        return false;
    CurrentSettings().SaveSlides =
        MsgBox(QStringLiteral("Save a copy of all files in the slide show directory?"),
               vbYesNo + vbQuestion, Title()) == vbYes;
    return saveTo(path);
}

bool SlideLoadFrm::saveTo(const QString& path)
{
    WaitDialog progress(Title());
    const bool saved = SaveSlideShow(path, &progress);
    refreshList();
    return saved;
}

bool SlideLoadFrm::load(const QString& given)
{
    if (CurrentShow().changed &&
        MsgBox(QStringLiteral("The current slide show has changed.") + NewLine2() +
                   QStringLiteral("Load a new slide show anyway?"),
               vbYesNo + vbQuestion, Title()) != vbYes)
        return false;
    QString path = given;
    if (path.isEmpty())
        path = LoadSlideFile::Choose(sourceFolder(), this);
    if (path.isEmpty() || !mediumIsIn(path))
        return false;
    const bool loaded = ReadSlideShow(path);
    refreshList();
    if (loaded && !CurrentShow().slides.isEmpty())
        setSourceFolder(FolderOf(QFileInfo(path).absoluteFilePath()));
    return loaded;
}

bool SlideLoadFrm::mediumIsIn(const QString& path)
{
    // A show on a removable medium that is not in (its mount folder gone or empty) asks for
    // the medium first.
    const QString medium = RemovableMediumOf(path);
    if (medium.isEmpty() || QFileInfo::exists(path) ||
        !QDir(medium).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot))
        return true;
    return MsgBox(QStringLiteral("Insert the disk that contains the file:") + NewLine2() +
                      QDir::toNativeSeparators(path) + NewLine2() +
                      QStringLiteral("...into Floppy Drive ") + RemovableMediumName(medium) +
                      NewLine2() + QStringLiteral("Press the ") + u'"' + QStringLiteral("OK") +
                      u'"' + QStringLiteral(" button to continue."),
                  vbOKCancel | vbInformation, Title()) == vbOK;
}

void SlideLoadFrm::loadFromList(const std::array<QString, 20>& list, bool favorites)
{
    QStringList shows;
    for (const QString& path : list)
        if (!path.isEmpty())
            shows << path;
    if (shows.isEmpty()) {
        MsgBox(
            favorites
                ? QStringLiteral("There are no slide shows in your favorite shows list to load...")
                : QStringLiteral("There are no slide shows in the recent files list to load..."),
            vbInformation, Title());
        return;
    }
    const std::optional<QString> chosen = CurrentPrompts().chooseItem(
        Title(), QStringLiteral("Select a slide show file to load:"), shows);
    if (chosen && !chosen->isEmpty())
        load(*chosen);
}

void SlideLoadFrm::addToFavorites()
{
    const QString& path = CurrentShow().path;
    if (!named() || !IsFullPath(path)) {
        MsgBox(QStringLiteral("Unable to add slide show to list..."), vbExclamation, Title());
        return;
    }
    AddFavoriteShow(path);
}

void SlideLoadFrm::sourceInformation()
{
    const QStringList all = allSourceFiles();
    qint64 bytes = 0;
    const QStringList chosen = selectedSourceFiles();
    for (const QString& file : chosen)
        bytes += QFileInfo(file).size();
    MsgBox(SourceFolderInformation(QDir::toNativeSeparators(sourceFolder()), int(all.size()),
                                   int(chosen.size()), bytes),
           vbInformation, Title(QStringLiteral("Source Folder Information")));
}

void SlideLoadFrm::renameShow()
{
    RenameCurrentShow();
}

bool RenameCurrentShow()
{
    const QString title = SlideLoadFrm::Title(QStringLiteral("Rename Slide Show"));
    SlideShow& show = CurrentShow();
    if (show.path.isEmpty() && show.slides.isEmpty()) {
        MsgBox(QStringLiteral("A slide show has not been opened yet, nothing to rename.") +
                   NewLine2() +
                   QStringLiteral("Open the slide show you would like to rename and then try "
                                  "again..."),
               vbExclamation, title);
        return false;
    }
    if (!named()) {
        MsgBox(QStringLiteral("Unable to rename file, the current slide show has not been saved "
                              "yet.") +
                   NewLine2() +
                   QStringLiteral("Click the \"Save As...\" button to give this slide show a "
                                  "name..."),
               vbExclamation, title);
        return false;
    }
    if (show.changed) {
        MsgBox(QStringLiteral("You should save the current changes to the slide show before "
                              "renaming its data file..."),
               vbExclamation, title);
        return false;
    }
    const QString name = InputBox(QStringLiteral("Enter a new name for the slide show:"), title,
                                  QFileInfo(show.path).completeBaseName());
    if (name.trimmed().isEmpty())
        return false;
    const RenameCheck check = CheckShowRename(show.path, name);
    if (!check.refusal.isEmpty()) {
        MsgBox(check.refusal, vbExclamation, title);
        return false;
    }
    if (!QFile::rename(show.path, check.newPath)) {
        MsgBox(QStringLiteral("Unable to rename the slide show file:") + NewLine2() + show.path +
                   NewLine2() + QStringLiteral("..."),
               vbCritical, title);
        return false;
    }
    // The screen saver keeps playing the show under its new name.
    const QString saver = GetSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"));
    if (!saver.isEmpty() && QFileInfo(saver) == QFileInfo(show.path))
        SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"), check.newPath);
    // So do the recent and favourite shows, which would otherwise name a file that is gone.
    FollowShow(show.path, check.newPath);
    show.path = check.newPath;
    return true;
}

void SlideLoadFrm::renameFile()
{
    const QString title = Title(QStringLiteral("Rename File"));
    const QStringList chosen = selectedSourceFiles();
    if (chosen.isEmpty()) {
        MsgBox(QStringLiteral("Select the file to rename and then try again..."), vbExclamation,
               title);
        return;
    }
    const QString old = chosen.first();
    const QString renamed = AskAndRenameFile(old, title);
    if (renamed.isEmpty())
        return;
    if (RenameSlideFiles(CurrentShow(), old, renamed) > 0) {
        refreshList();
        MsgBox(QStringLiteral("The old filename was in the current slide show, the entry for "
                              "this slide was updated as a result..."),
               vbInformation, title);
    }
}

QString AskAndRenameFile(const QString& old, const QString& title)
{
    const QString name =
        InputBox(QStringLiteral("Enter a new name for the file:"), title, FileNameOf(old));
    if (name.trimmed().isEmpty())
        return QString();
    const RenameCheck check = CheckFileRename(old, name);
    if (!check.refusal.isEmpty()) {
        MsgBox(check.refusal, vbExclamation, title);
        return QString();
    }
    if (!QFile::rename(old, check.newPath)) {
        MsgBox(QStringLiteral("Unable to rename the file:") + NewLine2() + old + NewLine2() +
                   QStringLiteral("..."),
               vbCritical, title);
        return QString();
    }
    return check.newPath;
}

void SlideLoadFrm::newFolder()
{
    const QString name = InputBox(QStringLiteral("Enter the name of the folder to create:"),
                                  Title(), QStringLiteral("New Folder"));
    const QString refusal = FolderNameRefusal(name);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, Title());
        return;
    }
    const QString path = AddSlash(sourceFolder()) + name.trimmed();
    if (!QDir().mkpath(path)) {
        MsgBox(QStringLiteral("Unable to create the folder:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("..."),
               vbCritical, Title());
        return;
    }
    setSourceFolder(path);
}

void SlideLoadFrm::play(int firstLine)
{
    const int count = int(CurrentShow().slides.size());
    if (count == 0) {
        MsgBox(QStringLiteral("There are no slides in the View List to show.") + NewLine2() +
                   QStringLiteral("Add files to the list and then try again..."),
               vbExclamation, Title());
        return;
    }
    PlayerStart start;
    start.firstSlide = std::clamp(firstLine, 0, count - 1);
    FullViewFrm::PlaySlideShowModal(start, this);
    refreshList(); // the player may have taken slides out
}

void SlideLoadFrm::dropFiles(const QStringList& files)
{
    const DroppedFiles dropped = SortDroppedFiles(files);
    for (const QString& note : dropped.notes)
        MsgBox(note, vbInformation, Title());
    if (!dropped.show.isEmpty()) {
        if (CurrentShow().changed &&
            MsgBox(QStringLiteral("The current slide show has changed.") + NewLine2() +
                       QStringLiteral("Load slide show anyway?"),
                   vbYesNo + vbQuestion, Title()) != vbYes)
            return;
        CurrentShow().changed = false;
        load(dropped.show);
        return;
    }
    if (dropped.slides.isEmpty()) {
        MsgBox(QStringLiteral("No valid image files were dropped, unable to add these items to "
                              "the View List..."),
               vbExclamation, Title());
        return;
    }
    apply(AddSlides(CurrentShow(), dropped.slides, false));
}

void SlideLoadFrm::editDescriptions()
{
    const int line = editLine();
    if (line >= 0 && frmDescription::Edit(line, this))
        afterEdit();
}

void SlideLoadFrm::clearDescriptions()
{
    SlideShow& show = CurrentShow();
    const QString refusal = ClearAllRefusal(show);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, Title());
        return;
    }
    if (MsgBox(ClearAllQuestion(), vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    ClearAllDescriptions(show);
    show.changed = true;
    refreshList();
}

bool SlideLoadFrm::mayClose()
{
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    if (ReopensLastShow(s.PromptSaveKAV) && named()) {
        CurrentSettings().LastSlideShow = show.path;
        WriteSettingsKeys({QStringLiteral("LastSlideShow")});
    }
    if (!show.changed)
        return true;
    switch (ClosingAction(s.PromptSaveKAV, named(), int(show.slides.size()))) {
    case CloseAction::Ask:
        switch (ExitFrm::Ask(this)) {
        case ExitFrm::Save:
            return named() ? saveTo(show.path) : saveAs();
        case ExitFrm::Discard:
            return true;
        case ExitFrm::Cancel:
            return false;
        }
        return false;
    case CloseAction::SaveNow:
        return saveTo(show.path);
    case CloseAction::Drop:
        return true;
    }
    return true;
}

void SlideLoadFrm::closeEvent(QCloseEvent* event)
{
    if (mayClose())
        event->accept();
    else
        event->ignore();
}

void SlideLoadFrm::reject()
{
    if (mayClose())
        QDialog::reject();
}

void SlideLoadFrm::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void SlideLoadFrm::dropEvent(QDropEvent* event)
{
    QStringList files;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    event->acceptProposedAction();
    dropFiles(files);
}

void SlideLoadFrm::arrange()
{
    if (m_model->rowCount() > 0 && selectedLines().isEmpty())
        selectLines({0});
    m_list->setFocus();
}

void OpenSlideShowEditor(QWidget* parent, const QString& showFile, EditorView view)
{
    const Settings& s = CurrentSettings();
    if (!showFile.isEmpty())
        ReadSlideShow(showFile);
    else if (CurrentShow().slides.isEmpty() && ReopensLastShow(s.PromptSaveKAV) &&
             QFileInfo(s.LastSlideShow).isFile())
        ReadSlideShow(s.LastSlideShow);
    std::unique_ptr<WaitDialog> wait = std::make_unique<WaitDialog>(SlideLoadFrm::Title());
    wait->setCaption(QStringLiteral("Loading slide show editor, please wait..."));
    SlideLoadFrm editor(parent);
    if (view == EditorView::Arrange)
        editor.arrange();
    wait.reset();
    editor.exec();
}

} // namespace kavori
