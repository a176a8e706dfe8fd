#include "frmEditSounds.h"

#include "files/FolderTree.h"

#include "BrowseWavFrm.h"
#include "SlideRangeFrm.h"
#include "SoundPreview.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace kavori {

namespace {

QPushButton* button(QWidget* parent, const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setAutoDefault(false);
    return b;
}

// A sound as a list shows it: a CD track by its words, a file by its name, the whole path in
// the tool tip.
QListWidgetItem* soundItem(const QString& sound, QListWidget* list)
{
    const bool file = !IsCDTrackSound(sound);
    auto* item = new QListWidgetItem(file ? FileNameOf(sound) : SoundText(sound), list);
    if (file)
        item->setToolTip(sound);
    return item;
}

QVector<int> selectedRows(const QListWidget* list)
{
    QVector<int> rows;
    for (const QListWidgetItem* item : list->selectedItems())
        rows << list->row(item);
    std::sort(rows.begin(), rows.end());
    return rows;
}

void selectRows(QListWidget* list, const QVector<int>& rows)
{
    list->clearSelection();
    for (int row : rows)
        if (QListWidgetItem* item = list->item(row))
            item->setSelected(true);
    if (!rows.isEmpty())
        list->scrollToItem(list->item(rows.first()));
}

} // namespace

QString frmEditSounds::Title(const QString& function)
{
    return AppTitle() + QStringLiteral(" - [") +
           (function.isEmpty() ? QStringLiteral("Slide Sounds") : function) + u']';
}

frmEditSounds::frmEditSounds(int slide, QWidget* parent)
    : QDialog(parent), m_sounds(SoundsOfShow(CurrentShow()))
{
    setObjectName(QStringLiteral("frmEditSounds"));
    m_offered = SoundsInUse(m_sounds);

    auto* splitter = new QSplitter(this);
    auto* soundsPane = new QWidget(splitter);
    auto* sourcePane = new QWidget(splitter);
    auto* playPane = new QWidget(splitter);
    buildSounds(soundsPane);
    buildSource(sourcePane);
    buildPlayList(playPane);
    for (QWidget* pane : {soundsPane, sourcePane, playPane})
        splitter->addWidget(pane);

    m_previous = button(this, "CmdPrevious", QStringLiteral("<< P&revious"));
    m_next = button(this, "CmdNext", QStringLiteral("Ne&xt >>"));
    auto* ok = button(this, "CmdOK", QStringLiteral("OK"));
    ok->setDefault(true);
    auto* cancel = button(this, "CmdCancel", QStringLiteral("Cancel"));
    connect(m_previous, &QPushButton::clicked, this, [this] { showSlide(m_slide - 1); });
    connect(m_next, &QPushButton::clicked, this, [this] { showSlide(m_slide + 1); });
    connect(ok, &QPushButton::clicked, this, &frmEditSounds::accept);
    connect(cancel, &QPushButton::clicked, this, &frmEditSounds::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_previous);
    bottom->addWidget(m_next);
    bottom->addStretch(1);
    bottom->addWidget(ok);
    bottom->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_current);
    layout->addWidget(splitter, 1);
    layout->addLayout(bottom);
    resize(980, 560);

    const QString last = CurrentSettings().LastSoundPath;
    setSourceFolder(!last.isEmpty() && QFileInfo(last).isDir()
                        ? last
                        : PathNoCase(AppPath(), QStringLiteral("Bonus/Sounds")));
    refreshSounds();
    refreshPlayList();
    showSlide(slide);
}

frmEditSounds::~frmEditSounds() = default;

void frmEditSounds::buildSounds(QWidget* pane)
{
    m_current = new QLabel(this);
    m_current->setObjectName(QStringLiteral("lblCurrent"));
    m_current->setWordWrap(true);

    m_soundList = new QListWidget(pane);
    m_soundList->setObjectName(QStringLiteral("ListSounds"));
    m_soundList->setAcceptDrops(true);
    m_soundList->viewport()->setAcceptDrops(true);
    m_soundList->viewport()->installEventFilter(this);
    connect(m_soundList, &QListWidget::itemDoubleClicked, this, [this] { setSound(); });

    m_typed = new QLineEdit(pane);
    m_typed->setObjectName(QStringLiteral("txtSoundFile"));
    m_typed->setPlaceholderText(QStringLiteral("Sound file name"));
    auto* add = button(pane, "CmdAddFile", QStringLiteral("A&dd"));
    auto* browse = button(pane, "CmdBrowse", QStringLiteral("&Browse..."));
    m_play = button(pane, "CmdPlay", QStringLiteral("&Play"));
    m_preview = new SoundPreview(this, m_play);
    connect(add, &QPushButton::clicked, this, &frmEditSounds::addTypedSound);
    connect(browse, &QPushButton::clicked, this, &frmEditSounds::browse);
    connect(m_play, &QPushButton::clicked, this, &frmEditSounds::play);
    connect(m_typed, &QLineEdit::returnPressed, this, &frmEditSounds::addTypedSound);

    m_cdTrack = new QComboBox(pane);
    m_cdTrack->setObjectName(QStringLiteral("cboCDTrack"));
    m_cdTrack->addItem(SoundText(CDTrackSound(0)));
    for (int track = 1; track <= 99; ++track)
        m_cdTrack->addItem(SoundText(CDTrackSound(track)));
    auto* addCD = button(pane, "CmdAddCD", QStringLiteral("Add &CD Track"));
    connect(addCD, &QPushButton::clicked, this, [this] { addCDTrack(m_cdTrack->currentIndex()); });

    auto* set = button(pane, "CmdSet", QStringLiteral("&Set"));
    auto* setAllButton = button(pane, "CmdSetAll", QStringLiteral("Set &All"));
    auto* range = button(pane, "CmdSetRange", QStringLiteral("Set Ran&ge..."));
    auto* clear = button(pane, "CmdClearAll", QStringLiteral("C&lear All"));
    connect(set, &QPushButton::clicked, this, &frmEditSounds::setSound);
    connect(setAllButton, &QPushButton::clicked, this, &frmEditSounds::setAll);
    connect(range, &QPushButton::clicked, this, &frmEditSounds::setRange);
    connect(clear, &QPushButton::clicked, this, &frmEditSounds::clearAll);

    auto* typedRow = new QHBoxLayout;
    typedRow->addWidget(m_typed, 1);
    typedRow->addWidget(add);
    auto* typedButtons = new QHBoxLayout;
    typedButtons->addWidget(browse);
    typedButtons->addWidget(m_play);
    auto* cdRow = new QHBoxLayout;
    cdRow->addWidget(m_cdTrack, 1);
    cdRow->addWidget(addCD);
    auto* setGrid = new QGridLayout;
    setGrid->addWidget(set, 0, 0);
    setGrid->addWidget(setAllButton, 0, 1);
    setGrid->addWidget(range, 1, 0);
    setGrid->addWidget(clear, 1, 1);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(QStringLiteral("Sounds in this slide show:"), pane));
    layout->addWidget(m_soundList, 1);
    layout->addLayout(typedRow);
    layout->addLayout(typedButtons);
    layout->addLayout(cdRow);
    layout->addLayout(setGrid);
}

void frmEditSounds::buildSource(QWidget* pane)
{
    m_dirs = new FolderTree(QStringLiteral("Dir1"), pane);
    connect(m_dirs, &FolderTree::folderClicked, this,
            [this](const QString& folder) { setSourceFolder(folder); });
    m_files = new QListWidget(pane);
    m_files->setObjectName(QStringLiteral("File1"));
    m_files->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(m_files, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item)
            m_typed->setText(item->data(Qt::UserRole).toString());
    });
    connect(m_files, &QListWidget::itemDoubleClicked, this, [this] { addToPlayList(false); });
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(QStringLiteral("Sound files:"), pane));
    layout->addWidget(m_dirs, 2);
    layout->addWidget(m_files, 3);
}

void frmEditSounds::buildPlayList(QWidget* pane)
{
    m_playList = new QListWidget(pane);
    m_playList->setObjectName(QStringLiteral("ListPlay"));
    m_playList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_playCount = new QLabel(pane);
    m_playCount->setObjectName(QStringLiteral("lblPlayCount"));

    auto* grid = new QGridLayout;
    int index = 0;
    auto add = [&](const char* name, const QString& caption, auto&& slot) {
        QPushButton* b = button(pane, name, caption);
        connect(b, &QPushButton::clicked, this, slot);
        grid->addWidget(b, index / 3, index % 3);
        ++index;
    };
    add("CmdAddPlay", QStringLiteral("Add"), [this] { addToPlayList(false); });
    add("CmdAddAllPlay", QStringLiteral("Add All"), [this] { addToPlayList(true); });
    add("CmdRemovePlay", QStringLiteral("Remove"), [this] { removeFromPlayList(); });
    add("CmdRemoveAllPlay", QStringLiteral("Remove All"), [this] { removeAllFromPlayList(); });
    add("CmdRemoveMissing", QStringLiteral("Missing..."), [this] { removeMissingFromPlayList(); });
    add("CmdPlayInfo", QStringLiteral("Info..."), [this] { playListInformation(); });
    add("CmdPlayUp", QStringLiteral("Up"), [this] { movePlayList(MoveKind::Up); });
    add("CmdPlayDown", QStringLiteral("Down"), [this] { movePlayList(MoveKind::Down); });
    add("CmdPlayRandomize", QStringLiteral("Randomize"), [this] { randomizePlayList(); });
    add("CmdPlayTop", QStringLiteral("Top"), [this] { movePlayList(MoveKind::Top); });
    add("CmdPlayBottom", QStringLiteral("Bottom"), [this] { movePlayList(MoveKind::Bottom); });
    add("CmdPlayReverse", QStringLiteral("Reverse"), [this] { reversePlayList(); });

    auto* choice = new QGroupBox(QStringLiteral("Sounds play"), pane);
    m_useSlides = new QRadioButton(QStringLiteral("With each slide (\"Slide Interval\")"), choice);
    m_useSlides->setObjectName(QStringLiteral("optSlideInterval"));
    m_usePlayList = new QRadioButton(QStringLiteral("From the \"Play List\""), choice);
    m_usePlayList->setObjectName(QStringLiteral("optPlayList"));
    m_random = new QCheckBox(QStringLiteral("Play list in random order"), choice);
    m_random->setObjectName(QStringLiteral("chkPlayListRandom"));
    (m_sounds.usePlayList ? m_usePlayList : m_useSlides)->setChecked(true);
    m_random->setChecked(m_sounds.playListRandom);
    connect(m_usePlayList, &QRadioButton::toggled, this,
            [this](bool on) { m_sounds.usePlayList = on; });
    connect(m_random, &QCheckBox::toggled, this, [this](bool on) { m_sounds.playListRandom = on; });
    auto* choiceLayout = new QVBoxLayout(choice);
    choiceLayout->addWidget(m_useSlides);
    choiceLayout->addWidget(m_usePlayList);
    choiceLayout->addWidget(m_random);

    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(QStringLiteral("Play List:"), pane));
    layout->addWidget(m_playList, 1);
    layout->addWidget(m_playCount);
    layout->addLayout(grid);
    layout->addWidget(choice);
}

void frmEditSounds::showSlide(int slide)
{
    const int count = int(m_sounds.slideSounds.size());
    m_slide = std::clamp(slide, 0, std::max(0, count - 1));
    setWindowTitle(QStringLiteral("Editing sound for slide ") + QString::number(m_slide + 1) +
                   u':');
    const QString file =
        m_slide < CurrentShow().slides.size() ? CurrentShow().slides[m_slide].SlideFile : QString();
    const QString sound = m_slide < count ? m_sounds.slideSounds[m_slide] : QString();
    m_current->setText(FileNameOf(file) + QStringLiteral("  -  Sound: ") +
                       (sound.isEmpty() ? QStringLiteral("No Sound") : SoundText(sound)));
    m_current->setToolTip(file);
    m_previous->setEnabled(m_slide > 0);
    m_next->setEnabled(m_slide + 1 < count);
    const int row = int(m_offered.indexOf(sound));
    if (row >= 0)
        m_soundList->setCurrentRow(row);
}

void frmEditSounds::refreshSounds()
{
    const int row = m_soundList->currentRow();
    m_soundList->clear();
    for (const QString& sound : m_offered)
        soundItem(sound, m_soundList);
    if (row >= 0 && row < m_soundList->count())
        m_soundList->setCurrentRow(row);
}

void frmEditSounds::refreshPlayList(const QVector<int>& selection)
{
    m_playList->clear();
    for (const QString& entry : m_sounds.playList)
        soundItem(entry, m_playList);
    m_playCount->setText(PlayListCountText(int(m_sounds.playList.size())));
    selectRows(m_playList, selection);
}

void frmEditSounds::chooseSound(int row)
{
    m_soundList->setCurrentRow(row);
    if (row < 0)
        m_soundList->clearSelection();
}

int frmEditSounds::chosenSound() const
{
    const QListWidgetItem* item = m_soundList->currentItem();
    return item && item->isSelected() ? m_soundList->row(item) : -1;
}

void frmEditSounds::offer(const QString& sound)
{
    int row = int(m_offered.indexOf(sound));
    if (row < 0) {
        m_offered << sound;
        soundItem(sound, m_soundList);
        row = int(m_offered.size()) - 1;
    }
    m_soundList->setCurrentRow(row);
}

void frmEditSounds::setSourceFolder(const QString& folder)
{
    m_folder = QDir(folder).absolutePath();
    m_files->clear();
    for (const QString& file : SoundFilesIn(m_folder)) {
        auto* item = new QListWidgetItem(FileNameOf(file), m_files);
        item->setData(Qt::UserRole, file);
    }
    m_dirs->showFolder(m_folder);
}

QStringList frmEditSounds::sourceFiles() const
{
    QStringList files;
    for (int row = 0; row < m_files->count(); ++row)
        files << m_files->item(row)->data(Qt::UserRole).toString();
    return files;
}

void frmEditSounds::selectSourceFiles(const QVector<int>& rows)
{
    selectRows(m_files, rows);
}

QVector<int> frmEditSounds::playListSelection() const
{
    return selectedRows(m_playList);
}

void frmEditSounds::selectPlayList(const QVector<int>& rows)
{
    selectRows(m_playList, rows);
}

QString frmEditSounds::playListCountText() const
{
    return m_playCount->text();
}

void frmEditSounds::setSound()
{
    const ListResult result = SetSlideSound(m_sounds, m_slide, m_offered, chosenSound());
    if (!result.message.isEmpty())
        MsgBox(result.message, vbExclamation, Title());
    showSlide(m_slide);
}

void frmEditSounds::setAll()
{
    const int chosen = chosenSound();
    const AllCommand command = CheckSetAllSounds(m_sounds, m_offered, chosen);
    if (!command.message.isEmpty()) {
        MsgBox(command.message, vbExclamation, Title());
        return;
    }
    if (MsgBox(command.question, vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    SetSlideSounds(m_sounds, m_offered[chosen]);
    showSlide(m_slide);
}

void frmEditSounds::setRange()
{
    const int chosen = chosenSound();
    const QString refusal = SoundChoiceRefusal(m_offered, chosen);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, Title());
        return;
    }
    const std::optional<SlideRange> range =
        SlideRangeFrm::Pick(this, QStringLiteral("Select range of files to set sound:"), m_slide);
    if (!range)
        return;
    SetSlideSounds(m_sounds, m_offered[chosen], range->first, range->last);
    showSlide(m_slide);
}

void frmEditSounds::clearAll()
{
    const AllCommand command = CheckClearAllSounds(m_sounds);
    if (!command.message.isEmpty()) {
        MsgBox(command.message, vbInformation, Title());
        return;
    }
    if (MsgBox(command.question, vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    SetSlideSounds(m_sounds, QString());
    showSlide(m_slide);
}

void frmEditSounds::addTypedSound()
{
    const TypedSound typed = CheckTypedSound(m_typed->text(), m_folder);
    if (!typed.refusal.isEmpty()) {
        MsgBox(typed.refusal, vbExclamation, Title());
        return;
    }
    offer(typed.path);
}

void frmEditSounds::addCDTrack(int track)
{
    offer(CDTrackSound(track));
}

void frmEditSounds::browse()
{
    BrowseWavFrm browser(this, m_folder);
    // Files renamed, moved or deleted there are followed here too, so OK does not bring back
    // a name that no longer exists.
    auto follow = [this](const std::function<void(ShowSounds&)>& change) {
        ShowSounds offered;
        offered.slideSounds = m_offered;
        offered.showFolder = m_sounds.showFolder;
        change(offered);
        change(m_sounds);
        m_offered.clear();
        for (const QString& sound : offered.slideSounds)
            if (!sound.isEmpty() && !m_offered.contains(sound))
                m_offered << sound;
        refreshSounds();
        refreshPlayList();
        setSourceFolder(m_folder);
        showSlide(m_slide);
    };
    connect(&browser, &BrowseWavFrm::soundRenamed, this,
            [follow](const QString& from, const QString& to) {
                follow([&](ShowSounds& s) { RenameSoundReferences(s, from, to); });
            });
    connect(&browser, &BrowseWavFrm::soundDeleted, this, [follow](const QString& path) {
        follow([&](ShowSounds& s) { ForgetSoundReferences(s, path); });
    });
    if (browser.exec() != QDialog::Accepted)
        return;
    m_typed->setText(browser.selectedFile());
    addTypedSound();
}

void frmEditSounds::dropSounds(const QStringList& files)
{
    const DroppedSounds dropped = SortDroppedSounds(files);
    for (const QString& sound : dropped.sounds)
        offer(sound);
    if (dropped.refused)
        MsgBox(DroppedSoundRefusal(), vbExclamation, Title());
}

void frmEditSounds::play()
{
    if (m_preview->playing()) {
        m_preview->stop();
        return;
    }
    const TypedSound typed = CheckTypedSound(m_typed->text(), m_folder);
    if (!typed.refusal.isEmpty()) {
        MsgBox(typed.refusal, vbExclamation, Title());
        return;
    }
    m_preview->toggle(typed.path);
}

void frmEditSounds::applyPlayList(const ListResult& result)
{
    if (result.changed)
        refreshPlayList(result.selection);
    else if (!result.selection.isEmpty())
        selectRows(m_playList, result.selection);
    if (!result.message.isEmpty())
        MsgBox(result.message, vbExclamation, Title());
}

void frmEditSounds::addToPlayList(bool all)
{
    const QStringList files = sourceFiles();
    QStringList chosen;
    if (all) {
        chosen = files;
    } else {
        for (int row : selectedRows(m_files))
            chosen << files[row];
    }
    applyPlayList(AddToPlayList(m_sounds.playList, chosen, files.isEmpty()));
}

void frmEditSounds::removeFromPlayList()
{
    applyPlayList(RemoveFromPlayList(m_sounds.playList, playListSelection()));
}

void frmEditSounds::removeAllFromPlayList()
{
    const AllCommand command = CheckRemoveAllFromPlayList(m_sounds.playList);
    if (!command.message.isEmpty()) {
        MsgBox(command.message, vbExclamation, Title());
        return;
    }
    if (MsgBox(command.question, vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    m_sounds.playList.clear();
    refreshPlayList();
}

void frmEditSounds::movePlayList(MoveKind kind)
{
    applyPlayList(MoveLines(m_sounds.playList, playListSelection(), kind, PlayListWords()));
}

void frmEditSounds::randomizePlayList()
{
    applyPlayList(RandomizeLines(m_sounds.playList, PlayListWords()));
}

void frmEditSounds::reversePlayList()
{
    applyPlayList(ReverseLines(m_sounds.playList, PlayListWords()));
}

void frmEditSounds::removeMissingFromPlayList()
{
    if (m_sounds.playList.isEmpty()) {
        MsgBox(QStringLiteral("There are no sound files in the Play List to remove..."),
               vbExclamation, Title());
        return;
    }
    const QVector<int> missing = MissingPlayListSounds(m_sounds);
    const QString text = MissingPlayListText(int(missing.size()));
    if (missing.isEmpty()) {
        MsgBox(text, vbInformation, Title());
        return;
    }
    selectRows(m_playList, missing);
    if (MsgBox(text, vbYesNo + vbQuestion, Title()) != vbYes)
        return;
    applyPlayList(RemoveFromPlayList(m_sounds.playList, missing));
}

void frmEditSounds::playListInformation()
{
    MsgBox(PlayListInformation(m_sounds), vbInformation,
           Title(QStringLiteral("Play List Information")));
}

void frmEditSounds::accept()
{
    const QString question = PlayListClearQuestion(m_sounds);
    if (!question.isEmpty()) {
        if (MsgBox(question, vbYesNo + vbQuestion, Title()) != vbYes)
            return;
        m_sounds.playList.clear();
        refreshPlayList();
    }
    m_preview->stop();
    SlideShow& show = CurrentShow();
    Settings& s = CurrentSettings();
    const qint16 mode = SoundModeAfterEdit(m_sounds, s.SoundMode);
    if (mode != s.SoundMode) {
        s.SoundMode = mode;
        show.changed = true;
    }
    ApplyShowSounds(m_sounds, show);
    QDialog::accept();
}

void frmEditSounds::reject()
{
    m_preview->stop();
    QDialog::reject();
}

bool frmEditSounds::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_soundList->viewport()) {
        if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove) {
            auto* drag = static_cast<QDragMoveEvent*>(event);
            if (drag->mimeData()->hasUrls()) {
                drag->acceptProposedAction();
                return true;
            }
        } else if (event->type() == QEvent::Drop) {
            auto* drop = static_cast<QDropEvent*>(event);
            QStringList files;
            for (const QUrl& url : drop->mimeData()->urls())
                if (url.isLocalFile())
                    files << url.toLocalFile();
            drop->acceptProposedAction();
            dropSounds(files);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

bool EditSlideSounds(QWidget* parent, int slide)
{
    if (CurrentShow().slides.isEmpty())
        return false; // the editor has said why
    const bool before = CurrentShow().changed;
    CurrentShow().changed = false;
    frmEditSounds dialog(slide, parent);
    dialog.exec();
    const bool changed = CurrentShow().changed;
    CurrentShow().changed = before || changed;
    return changed;
}

bool ClearSlideSounds(const QString& title)
{
    SlideShow& show = CurrentShow();
    ShowSounds sounds = SoundsOfShow(show);
    const AllCommand command = CheckClearAllSounds(sounds);
    if (!command.message.isEmpty()) {
        MsgBox(command.message, vbInformation, title);
        return false;
    }
    if (MsgBox(command.question, vbYesNo + vbQuestion, title) != vbYes)
        return false;
    SetSlideSounds(sounds, QString());
    return ApplyShowSounds(sounds, show);
}

} // namespace kavori
