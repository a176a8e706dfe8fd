#include "frmThumbnail.h"

#include "browse/ThumbnailActions.h"
#include "files/FolderPane.h"
#include "files/frmCopyImages.h"
#include "fileutil/Favorites.h"
#include "fileutil/FileDelete.h"
#include "fileutil/FileJobs.h"
#include "platform/AppPaths.h"
#include "platform/HelpFile.h"
#include "playback/FullViewFrm.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QUrl>
#include <QVBoxLayout>
#include <QtConcurrent>

namespace kavori {

namespace {

constexpr int kCellWidth = kThumbWidth + 8;
constexpr int kCellHeight = kThumbHeight + 24;

std::function<void(const QString&)>& systemOpener()
{
    static std::function<void(const QString&)> opener = [](const QString& path) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    };
    return opener;
}

// The picture a movie's cell shows instead of a frame: a strip of film.
QImage moviePlaceholder()
{
    QImage image(96, 72, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(40, 40, 48));
    p.drawRoundedRect(QRectF(0, 0, 96, 72), 6, 6);
    p.setBrush(QColor(230, 230, 230));
    for (int x = 6; x < 96; x += 14) {
        p.drawRect(QRectF(x, 5, 7, 7));
        p.drawRect(QRectF(x, 60, 7, 7));
    }
    p.setBrush(QColor(120, 160, 220));
    p.drawRect(QRectF(8, 17, 80, 38));
    p.setBrush(QColor(250, 250, 250));
    const QPointF play[] = {{40, 26}, {40, 46}, {58, 36}};
    p.drawPolygon(play, 3);
    return image;
}

} // namespace

// One cell: the thumbnail centred in its box, the file's name below, a frame when selected.
class ThumbnailCell : public QWidget {
public:
    ThumbnailCell(int index, QWidget* parent) : QWidget(parent)
    {
        setObjectName(QStringLiteral("picPreview") + QString::number(index));
        setFixedSize(kCellWidth, kCellHeight);
        setCursor(Qt::PointingHandCursor);
    }
    void setFile(const QString& path)
    {
        m_path = path;
        m_thumbnail = Thumbnail();
        m_loaded = false;
        setToolTip(path.isEmpty() ? QString() : QDir::toNativeSeparators(path));
        update();
    }
    void setThumbnail(const Thumbnail& t)
    {
        m_thumbnail = t;
        m_loaded = true;
        update();
    }
    void setSelected(bool selected)
    {
        if (m_selected != selected) {
            m_selected = selected;
            update();
        }
    }
    const QString& file() const { return m_path; }
    const Thumbnail& thumbnail() const { return m_thumbnail; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (m_path.isEmpty())
            return;
        QPainter p(this);
        const QRect box((width() - kThumbWidth) / 2, 4, kThumbWidth, kThumbHeight);
        const QPalette pal = palette();
        if (m_selected) {
            p.fillRect(rect(), pal.color(QPalette::Highlight));
        }
        p.fillRect(box.adjusted(-1, -1, 1, 1), pal.color(QPalette::Base));
        auto centred = [&](const QImage& image) {
            const QRect at(box.x() + (box.width() - image.width()) / 2,
                           box.y() + (box.height() - image.height()) / 2, image.width(),
                           image.height());
            p.drawImage(at, image);
        };
        auto message = [&](const QString& text) {
            p.setPen(pal.color(QPalette::Text));
            p.drawText(box.adjusted(6, 6, -6, -6), Qt::AlignCenter | Qt::TextWordWrap, text);
        };
        switch (m_loaded ? m_thumbnail.state : Thumbnail::State::Picture) {
        case Thumbnail::State::Picture:
            if (m_loaded)
                centred(m_thumbnail.picture);
            break;
        case Thumbnail::State::Movie: {
            static const QImage movie = moviePlaceholder();
            centred(movie);
            break;
        }
        case Thumbnail::State::Missing:
            message(QStringLiteral("This file was deleted..."));
            break;
        case Thumbnail::State::Unreadable:
            message(QStringLiteral("Unable to show this file..."));
            break;
        }
        p.setPen(pal.color(m_selected ? QPalette::HighlightedText : QPalette::WindowText));
        const QRect caption(2, box.bottom() + 3, width() - 4, height() - box.bottom() - 4);
        p.drawText(caption, Qt::AlignHCenter | Qt::AlignTop,
                   fontMetrics().elidedText(FileNameOf(m_path), Qt::ElideMiddle, caption.width()));
    }

private:
    QString m_path;
    Thumbnail m_thumbnail;
    bool m_loaded = false;
    bool m_selected = false;
};

void frmThumbnail::SetSystemOpener(std::function<void(const QString&)> opener)
{
    systemOpener() = std::move(opener);
}

frmThumbnail::frmThumbnail(MainViewFrm* window) : QDialog(window), m_window(window)
{
    setObjectName(QStringLiteral("frmThumbnail"));
    setWindowTitle(AppTitle() + QStringLiteral(" - [Thumbnail Browser]"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setAcceptDrops(true);
    build();
    buildMenu();
    connect(&m_loader, &ThumbnailLoader::thumbnailReady, this, &frmThumbnail::cellReady);
    connect(&m_loader, &ThumbnailLoader::pageFinished, this, &frmThumbnail::pageDone);
    applyCaptions();
    setLoading(false);
}

frmThumbnail::~frmThumbnail() = default;

void frmThumbnail::build()
{
    auto* layout = new QVBoxLayout(this);

    auto* top = new QHBoxLayout;
    m_info = new QLabel(this);
    m_info->setObjectName(QStringLiteral("lblInfo"));
    m_info->setToolTip(QStringLiteral("Click here to show full path."));
    m_info->setCursor(Qt::PointingHandCursor);
    m_info->setMinimumWidth(200);
    m_info->installEventFilter(this);
    top->addWidget(m_info, 1);
    m_numFiles = new QLabel(this);
    m_numFiles->setObjectName(QStringLiteral("lblNumFiles"));
    top->addWidget(m_numFiles);
    top->addSpacing(16);
    m_totalSize = new QLabel(this);
    m_totalSize->setObjectName(QStringLiteral("lblTotalSize"));
    top->addWidget(m_totalSize);
    layout->addLayout(top);

    // A frame rather than a label, so its size is its grid's.
    m_back = new QFrame(this);
    m_back->setObjectName(QStringLiteral("lblBack"));
    m_back->setToolTip(QStringLiteral("Right-click to show popup menu..."));
    m_back->setFrameShape(QFrame::StyledPanel);
    m_back->setAutoFillBackground(true);
    m_back->setBackgroundRole(QPalette::Mid);
    auto* grid = new QGridLayout(m_back);
    grid->setSpacing(4);
    grid->setContentsMargins(6, 6, 6, 6);
    for (int i = 0; i < 25; ++i) {
        m_cells[size_t(i)] = new ThumbnailCell(i, m_back);
        m_cells[size_t(i)]->installEventFilter(this);
    }
    m_back->installEventFilter(this);
    layout->addWidget(m_back, 1, Qt::AlignCenter);

    auto* status = new QHBoxLayout;
    m_showing = new QLabel(this);
    m_showing->setObjectName(QStringLiteral("lblShowing"));
    status->addWidget(m_showing);
    status->addSpacing(16);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("lblStatus"));
    status->addWidget(m_status, 1);
    m_preview = new QLabel(this);
    m_preview->setObjectName(QStringLiteral("lblPreview"));
    status->addWidget(m_preview);
    layout->addLayout(status);
    auto* hotspot = new QLabel(
        QStringLiteral("Left-click thumbnail to preview file, right-click thumbnail for popup "
                       "menu..."),
        this);
    hotspot->setObjectName(QStringLiteral("lblHotspotMsg"));
    layout->addWidget(hotspot);

    auto* buttons = new QHBoxLayout;
    auto button = [&](const char* name, const QString& caption, const QString& tip) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(QString::fromLatin1(name));
        b->setToolTip(tip);
        b->setAutoDefault(false);
        buttons->addWidget(b);
        return b;
    };
    m_previous = button("CmdPrevious", {}, {});
    m_back1 = button("CmdBack1", QStringLiteral("< 1"), QStringLiteral("Show the previous image."));
    m_fwd1 = button("CmdFwd1", QStringLiteral("1 >"), QStringLiteral("Show the next image."));
    m_next = button("CmdNext", {}, {});
    m_pageChoice = new QComboBox(this);
    m_pageChoice->setObjectName(QStringLiteral("cboPageSize"));
    m_pageChoice->addItem(QStringLiteral("9 per page"), 9);
    m_pageChoice->addItem(QStringLiteral("16 per page"), 16);
    m_pageChoice->addItem(QStringLiteral("25 per page"), 25);
    m_pageChoice->setCurrentIndex(2);
    buttons->addWidget(m_pageChoice);
    buttons->addStretch(1);
    m_select = button("CmdSelect", QStringLiteral("&Select Files..."),
                      QStringLiteral("Show thumbnails of the selected files..."));
    m_browse = button("CmdBrowse", QStringLiteral("&Browse..."),
                      QStringLiteral("Select a folder to browse..."));
    m_stop =
        button("CmdStop", QStringLiteral("S&top"), QStringLiteral("Stop loading thumbnails..."));
    m_close = button("CmdClose", QStringLiteral("&Close"),
                     QStringLiteral("Close the Thumbnail Browser..."));
    auto* help = button("CmdHelp", QStringLiteral("&Help"),
                        QStringLiteral("Learn how to use the Thumbnail Browser..."));
    layout->addLayout(buttons);

    connect(m_previous, &QPushButton::clicked, this, [this] { move(PageMove::Previous); });
    connect(m_next, &QPushButton::clicked, this, [this] { move(PageMove::Next); });
    connect(m_back1, &QPushButton::clicked, this, [this] { move(PageMove::Back1); });
    connect(m_fwd1, &QPushButton::clicked, this, [this] { move(PageMove::Forward1); });
    connect(m_select, &QPushButton::clicked, this, &frmThumbnail::chooseFiles);
    connect(m_browse, &QPushButton::clicked, this, &frmThumbnail::chooseFolder);
    connect(m_stop, &QPushButton::clicked, this, &frmThumbnail::stop);
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    connect(help, &QPushButton::clicked, this, [] { ShowHelp(QStringLiteral("thumbnails")); });
    connect(m_pageChoice, &QComboBox::activated, this,
            [this](int row) { setPageSize(m_pageChoice->itemData(row).toInt()); });

    // The buttons' tips name F6 for the next page: that is the key that moves forward.
    auto key = [this](Qt::Key k, PageMove step) {
        auto* s = new QShortcut(QKeySequence(k), this);
        connect(s, &QShortcut::activated, this, [this, step] {
            if (!m_loading)
                move(step);
        });
    };
    key(Qt::Key_F6, PageMove::Next);
    key(Qt::Key_F5, PageMove::Previous);
    key(Qt::Key_F11, PageMove::First);
    key(Qt::Key_F12, PageMove::Last);
}

void frmThumbnail::buildMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(QStringLiteral("mnuPopup"));
    auto add = [this](const char* name, const QString& caption, auto slot) {
        QAction* a = m_menu->addAction(caption);
        a->setObjectName(QString::fromLatin1(name));
        connect(a, &QAction::triggered, this, slot);
        return a;
    };
    add("mnuOpenImage", QStringLiteral("&Open"), [this] { openCell(m_menuCell); });
    add("mnuViewAnimatedGIF", QStringLiteral("View &Animated GIF"), &frmThumbnail::viewAnimatedGif);
    m_menu->addSeparator();
    add("mnuAddSlideShow", QStringLiteral("Add to &Slide Show"), &frmThumbnail::addToShow);
    add("mnuAddFavorite", QStringLiteral("Add to &Favorite Files List"),
        &frmThumbnail::addToFavorites);
    m_menu->addSeparator();
    add("mnuCopyFiles", QStringLiteral("&Copy Files..."), [this] { copyFiles(false); });
    add("mnuCopySelected", QStringLiteral("Copy Selected Fi&les..."), [this] { copyFiles(true); });
    add("mnuRenameFile", QStringLiteral("&Rename File..."), &frmThumbnail::renameFile);
    add("mnuDeleteFile", QStringLiteral("&Delete File"), &frmThumbnail::deleteFile);
    add("mnuExploreFolder", QStringLiteral("&Explore Folder"), &frmThumbnail::exploreFolder);
    m_menu->addSeparator();
    add("mnuGotoThumbnail", QStringLiteral("&Go To Thumbnail..."), &frmThumbnail::goToThumbnail);
    add("mnuReload", QStringLiteral("Re&load Thumbnails"), &frmThumbnail::reload);
    m_menu->addSeparator();
    add("mnuPrevious", {}, [this] { move(PageMove::Previous); });
    add("mnuNext", {}, [this] { move(PageMove::Next); });
    for (int size : {9, 16, 25}) {
        const QString n = QString::number(size);
        add(("mnuFirst" + n).toLatin1().constData(), {}, [this] { move(PageMove::First); });
        add(("mnuLast" + n).toLatin1().constData(), {}, [this] { move(PageMove::Last); });
    }
}

// Captions, tips and which page entries show follow the page size.
void frmThumbnail::applyCaptions()
{
    const PageCaptions c = CaptionsForPage(m_pageSize);
    m_previous->setText(c.previous);
    m_previous->setToolTip(c.tipPrevious);
    m_next->setText(c.next);
    m_next->setToolTip(c.tipNext);
    auto action = [this](const QString& name) { return m_menu->findChild<QAction*>(name); };
    action(QStringLiteral("mnuPrevious"))->setText(c.menuPrevious);
    action(QStringLiteral("mnuNext"))->setText(c.menuNext);
    for (int size : {9, 16, 25}) {
        const PageCaptions s = CaptionsForPage(size);
        QAction* first = action(QStringLiteral("mnuFirst") + QString::number(size));
        QAction* last = action(QStringLiteral("mnuLast") + QString::number(size));
        first->setText(s.menuFirst);
        last->setText(s.menuLast);
        first->setVisible(size == m_pageSize);
        last->setVisible(size == m_pageSize);
    }
    m_pageChoice->setCurrentIndex(m_pageSize == 9 ? 0 : m_pageSize == 16 ? 1 : 2);

    auto* grid = static_cast<QGridLayout*>(m_back->layout());
    for (ThumbnailCell* cell : m_cells)
        grid->removeWidget(cell);
    const int side = m_pageSize == 9 ? 3 : m_pageSize == 16 ? 4 : 5;
    for (int i = 0; i < 25; ++i) {
        ThumbnailCell* cell = m_cells[size_t(i)];
        cell->setVisible(i < m_pageSize);
        if (i < m_pageSize)
            grid->addWidget(cell, i / side, i % side);
    }
}

void frmThumbnail::setPageSize(int cells)
{
    if (cells != 9 && cells != 16 && cells != 25)
        return;
    if (cells == m_pageSize)
        return;
    m_pageSize = cells;
    applyCaptions();
    adjustSize();
    if (!m_files.isEmpty())
        showPage();
}

void frmThumbnail::setLoading(bool loading)
{
    m_loading = loading;
    for (QPushButton* b : {m_previous, m_next, m_back1, m_fwd1, m_select, m_browse})
        b->setEnabled(!loading);
    m_pageChoice->setEnabled(!loading);
    m_stop->setEnabled(loading);
}

void frmThumbnail::showFolder(const QString& folder)
{
    setList(ThumbnailFiles(folder), AddSlash(folder));
}

bool frmThumbnail::showFiles(const QStringList& files)
{
    const QString refusal = SelectionRefusal(int(files.size()));
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation);
        return false;
    }
    QStringList taken;
    for (const QString& f : files) {
        // A link stands for the file it leads to.
        const QFileInfo info(f);
        const QString target = info.isSymLink() ? info.symLinkTarget() : info.absoluteFilePath();
        if (TakesThumbnailFile(target))
            taken << target;
    }
    setList(SortThumbnailFiles(taken), QString());
    return true;
}

void frmThumbnail::setList(const QStringList& files, const QString& folder)
{
    m_loader.stop();
    m_loader.forget();
    m_files = files;
    m_folder = folder;
    m_first = 0;
    m_selected.clear();
    if (folder.isEmpty())
        m_info->setText(AppTitle() + QStringLiteral(" is showing thumbnails of selected files..."));
    else
        m_info->setText(AppTitle() + QStringLiteral(" is browsing thumbnails in the folder:") +
                        QStringLiteral("  ") +
                        m_info->fontMetrics().elidedText(QDir::toNativeSeparators(folder),
                                                         Qt::ElideMiddle, 420));
    m_numFiles->setText(QStringLiteral("Files: ") +
                        Format(int(files.size()), QStringLiteral("###,##0")));
    countTotalSize();
    showPage();
}

// The total size comes from asking about every file: done aside so a large folder's first page
// is not kept waiting for it.
void frmThumbnail::countTotalSize()
{
    const int job = ++m_sizeJob;
    m_totalSize->setText(QStringLiteral("Total Size: ..."));
    const QStringList files = m_files;
    auto* watcher = new QFutureWatcher<qint64>(this);
    connect(watcher, &QFutureWatcher<qint64>::finished, this, [this, watcher, job] {
        watcher->deleteLater();
        if (job != m_sizeJob)
            return;
        m_totalSize->setText(
            QStringLiteral("Total Size: ") +
            Format(BytesToMegabytes(watcher->result()), QStringLiteral("###,##0.0")) +
            QStringLiteral(" MB"));
    });
    watcher->setFuture(QtConcurrent::run([files] {
        qint64 total = 0;
        for (const QString& f : files)
            total += QFileInfo(f).size();
        return total;
    }));
}

void frmThumbnail::showPage()
{
    const int count = int(m_files.size());
    const int shown = std::max(0, std::min(m_pageSize, count - m_first));
    QStringList page;
    for (int i = 0; i < 25; ++i) {
        ThumbnailCell* cell = m_cells[size_t(i)];
        const QString file = i < shown ? m_files[m_first + i] : QString();
        cell->setFile(file);
        cell->setSelected(!file.isEmpty() && m_selected.contains(file));
        if (i < shown)
            page << file;
    }
    m_showing->setText(shown == 0 ? QString() : ShowingText(m_first, m_first + shown - 1));
    m_preview->clear();
    // The next page is read while this one is looked at.
    const QStringList ahead = m_files.mid(m_first + shown, m_pageSize);
    m_status->setText(QStringLiteral("Preparing to show ") +
                      Format(shown, QStringLiteral("###,###")) + QStringLiteral(" thumbnails..."));
    setLoading(shown > 0);
    m_loader.request(page, ahead);
    if (shown == 0)
        m_status->clear();
}

void frmThumbnail::cellReady(int cell, const Thumbnail& thumbnail)
{
    m_cells[size_t(cell)]->setThumbnail(thumbnail);
    m_status->setText(QStringLiteral("Loading #") +
                      Format(m_first + cell + 1, QStringLiteral("###,##0")));
}

void frmThumbnail::pageDone(bool)
{
    setLoading(false);
    if (!m_files.isEmpty())
        m_status->setText(QStringLiteral("Finished loading thumbnails..."));
}

void frmThumbnail::move(PageMove step)
{
    const PageStep to = MovePage(step, m_first, m_pageSize, int(m_files.size()));
    if (!to.message.isEmpty()) {
        MsgBox(to.message, vbInformation);
        return;
    }
    m_first = to.first;
    showPage();
}

void frmThumbnail::goToThumbnail()
{
    const int count = int(m_files.size());
    const QString typed = InputBox(GoToPrompt(count), AppTitle());
    if (typed.isEmpty())
        return;
    const PageStep to = GoToThumbnail(typed, m_first, count);
    if (!to.message.isEmpty()) {
        MsgBox(to.message, vbExclamation);
        return;
    }
    m_first = to.first;
    showPage();
}

void frmThumbnail::reload()
{
    m_loader.stop();
    m_loader.forget();
    if (!m_folder.isEmpty()) {
        // Files added or removed since show up; the page stays where it was.
        const int first = m_first;
        m_files = ThumbnailFiles(m_folder);
        m_numFiles->setText(QStringLiteral("Files: ") +
                            Format(int(m_files.size()), QStringLiteral("###,##0")));
        countTotalSize();
        m_first = std::min(first, std::max(0, int(m_files.size()) - 1));
    }
    showPage();
}

void frmThumbnail::stop()
{
    m_loader.stop();
}

int frmThumbnail::fileIndexOf(int cell) const
{
    if (cell < 0 || cell >= m_pageSize)
        return -1;
    const int index = m_first + cell;
    return index < m_files.size() ? index : -1;
}

QString frmThumbnail::cellFile(int cell) const
{
    const int index = fileIndexOf(cell);
    return index < 0 ? QString() : m_files[index];
}

Thumbnail frmThumbnail::cellThumbnail(int cell) const
{
    return cell >= 0 && cell < 25 ? m_cells[size_t(cell)]->thumbnail() : Thumbnail();
}

QStringList frmThumbnail::selectedFiles() const
{
    QStringList files;
    for (const QString& f : m_files) {
        if (m_selected.contains(f))
            files << f;
    }
    return files;
}

void frmThumbnail::previewCell(int cell, bool addToSelection)
{
    const QString file = cellFile(cell);
    if (file.isEmpty())
        return;
    if (!addToSelection)
        m_selected.clear();
    if (addToSelection && m_selected.contains(file))
        m_selected.remove(file);
    else
        m_selected.insert(file);
    for (ThumbnailCell* c : m_cells)
        c->setSelected(!c->file().isEmpty() && m_selected.contains(c->file()));
    m_preview->setText(QFileInfo(file).isFile() ? PreviewText(file) : FileNameOf(file));
}

void frmThumbnail::openCell(int cell)
{
    const QString file = cellFile(cell);
    if (file.isEmpty())
        return;
    const OpenDecision d = OpenThumbnailFile(file);
    switch (d.kind) {
    case OpenKind::Refused:
        MsgBox(d.message, vbExclamation);
        break;
    case OpenKind::Movie:
        systemOpener()(file);
        break;
    case OpenKind::Image:
        if (m_window && m_window->openImage(file)) {
            m_window->raise();
            m_window->activateWindow();
        }
        break;
    }
}

QMenu* frmThumbnail::popupFor(int cell)
{
    m_menuCell = cell;
    const bool hasFile = !cellFile(cell).isEmpty();
    for (const char* name : {"mnuOpenImage", "mnuViewAnimatedGIF", "mnuAddSlideShow",
                             "mnuAddFavorite", "mnuDeleteFile", "mnuRenameFile"})
        m_menu->findChild<QAction*>(QString::fromLatin1(name))->setEnabled(hasFile);
    m_menu->findChild<QAction*>(QStringLiteral("mnuCopySelected"))
        ->setEnabled(!m_selected.isEmpty());
    m_menu->findChild<QAction*>(QStringLiteral("mnuCopyFiles"))->setEnabled(!m_files.isEmpty());
    m_menu->findChild<QAction*>(QStringLiteral("mnuExploreFolder"))->setEnabled(!m_files.isEmpty());
    return m_menu;
}

QString frmThumbnail::menuFile() const
{
    return cellFile(m_menuCell);
}

void frmThumbnail::addToShow()
{
    QStringList files = selectedFiles();
    if (files.isEmpty() && !menuFile().isEmpty())
        files << menuFile();
    const ListResult r = AddSlides(CurrentShow(), files, m_files.isEmpty());
    if (!r.message.isEmpty()) {
        MsgBox(r.message, vbExclamation);
        return;
    }
    MsgBox(SlideCountText(int(CurrentShow().slides.size())), vbInformation);
}

void frmThumbnail::addToFavorites()
{
    const QString file = menuFile();
    if (file.isEmpty())
        return;
    QStringList favorites = FavoriteFiles();
    const QString refusal = FavoriteCellRefusal(file, favorites);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, FavoriteCellTitle());
        return;
    }
    favorites << file;
    SetFavoriteFiles(favorites);
}

void frmThumbnail::copyFiles(bool selectedOnly)
{
    const QStringList chosen = selectedOnly ? selectedFiles() : QStringList();
    QString from = m_folder;
    if (selectedOnly && !chosen.isEmpty())
        from = FolderOf(chosen.first());
    else if (from.isEmpty() && !m_files.isEmpty())
        from = FolderOf(m_files.first());
    const QString current = m_window ? m_window->document().currentFile() : QString();
    frmCopyImages dialog(IsFullPath(current) ? current : QString(), this);
    dialog.source()->setFolder(from);
    if (selectedOnly)
        dialog.source()->selectFiles(chosen);
    else
        dialog.source()->selectAll();
    dialog.exec();
    reload();
}

void frmThumbnail::deleteFile()
{
    const QString file = menuFile();
    if (file.isEmpty())
        return;
    const QString current = m_window ? m_window->document().currentFile() : QString();
    const QString refusal = DeleteCellRefusal(file, current, CurrentShow());
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation);
        return;
    }
    // ThumbnailDelete on: the browser deletes without asking first.
    if (!DeleteOneFile(file, !CurrentSettings().ThumbnailDelete))
        return;
    m_selected.remove(file);
    Thumbnail gone;
    gone.state = Thumbnail::State::Missing;
    m_cells[size_t(m_menuCell)]->setThumbnail(gone);
    m_cells[size_t(m_menuCell)]->setSelected(false);
}

void frmThumbnail::renameFile()
{
    const QString file = menuFile();
    if (file.isEmpty())
        return;
    const QString refusal = RenameCellRefusal(file, CurrentShow());
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, RenameCellTitle());
        return;
    }
    const bool open = m_window && m_window->document().currentFile() == file;
    const QString renamed = RenameFile(file, RenameCellTitle());
    if (renamed.isEmpty())
        return;
    const int index = fileIndexOf(m_menuCell);
    m_files[index] = renamed;
    if (m_selected.remove(file))
        m_selected.insert(renamed);
    if (open)
        m_window->followCurrentFile(renamed);
    ThumbnailCell* cell = m_cells[size_t(m_menuCell)];
    const Thumbnail kept = cell->thumbnail();
    cell->setFile(renamed);
    cell->setThumbnail(kept);
}

void frmThumbnail::exploreFolder()
{
    const QString file = menuFile();
    const QString folder = !m_folder.isEmpty()  ? m_folder
                           : !file.isEmpty()    ? FolderOf(file)
                           : !m_files.isEmpty() ? FolderOf(m_files.first())
                                                : QString();
    if (!folder.isEmpty())
        systemOpener()(folder);
}

void frmThumbnail::viewAnimatedGif()
{
    const QString file = menuFile();
    const QString refusal = AnimatedGifRefusal(file);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbInformation);
        return;
    }
    FullViewFrm::ShowImageModal(file, true, this);
}

void frmThumbnail::chooseFiles()
{
    const QString start = !m_folder.isEmpty() ? m_folder : CurrentSettings().FavoriteFolder;
    const QStringList files = CurrentPrompts().openFiles(
        QStringLiteral("Show thumbnails of the selected files..."), start, OpenImageFilter());
    if (!files.isEmpty())
        showFiles(files);
}

void frmThumbnail::chooseFolder()
{
    const QString start = !m_folder.isEmpty() ? m_folder : CurrentSettings().FavoriteFolder;
    const QString folder =
        CurrentPrompts().chooseFolder(QStringLiteral("Select a folder to browse..."), start);
    if (!folder.isEmpty())
        showFolder(folder);
}

bool frmThumbnail::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_info && event->type() == QEvent::MouseButtonRelease) {
        const QString shown = m_folder.isEmpty() ? QStringList(m_files.mid(0, 20)).join(NewLine())
                                                 : QDir::toNativeSeparators(m_folder);
        if (!shown.isEmpty())
            MsgBox(shown, vbInformation);
        return true;
    }
    if (watched == m_back && event->type() == QEvent::ContextMenu) {
        popupFor(-1)->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    }
    for (int i = 0; i < m_pageSize; ++i) {
        if (watched != m_cells[size_t(i)])
            continue;
        const bool press = event->type() == QEvent::MouseButtonPress;
        if (press || event->type() == QEvent::MouseButtonDblClick) {
            auto* mouse = static_cast<QMouseEvent*>(event);
            if (mouse->button() != Qt::LeftButton)
                break;
            if (press)
                previewCell(i, mouse->modifiers() & Qt::ControlModifier);
            else
                openCell(i);
            return true;
        }
        if (event->type() == QEvent::ContextMenu) {
            popupFor(i)->popup(static_cast<QContextMenuEvent*>(event)->globalPos());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmThumbnail::closeEvent(QCloseEvent* event)
{
    m_loader.stop();
    QDialog::closeEvent(event);
}

void frmThumbnail::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void frmThumbnail::dropEvent(QDropEvent* event)
{
    QStringList files;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    if (files.size() == 1 && QFileInfo(files.first()).isDir())
        showFolder(files.first());
    else if (!files.isEmpty())
        showFiles(files);
    event->acceptProposedAction();
}

} // namespace kavori
