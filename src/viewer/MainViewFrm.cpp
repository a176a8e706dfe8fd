#include "MainViewFrm.h"

#include "AppIcon.h"
#include "DesktopCommands.h"
#include "DropRequest.h"
#include "EditDialogs.h"
#include "FolderBrowse.h"
#include "ImagePrinting.h"
#include "ImageView.h"
#include "MenuHelp.h"
#include "RecentFiles.h"
#include "StartRequest.h"
#include "SystemCommands.h"
#include "editor/EditorCommands.h"
#include "editor/SlideLoadFrm.h"
#include "files/FileCommands.h"
#include "files/FindCommands.h"
#include "files/RemovableCommands.h"
#include "files/ZipCommands.h"
#include "frmPreferences.h"
#include "frmTip.h"
#include "frmToolbar.h"
#include "imaging/ImageSaving.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"
#include "packaging/PackageCommands.h"
#include "packaging/SaverCommands.h"
#include "platform/AppPaths.h"
#include "platform/DisplaySettings.h"
#include "platform/HelpFile.h"
#include "platform/RecentDocuments.h"
#include "platform/StartupState.h"
#include "platform/TickCount.h"
#include "platform/Twips.h"
#include "platform/UserSettings.h"
#include "playback/FullViewFrm.h"
#include "playback/PlaybackCommands.h"
#include "runtime/DoEvents.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "runtime/VbColor.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "settings/frmLanguage.h"
#include "slideshow/BonusPack.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "startup/WaitFrm.h"
#include "thumbs/BrowserCommands.h"
#include "thumbs/ThumbnailCommands.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPageSetupDialog>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace kavori {

QString EmptyWindowHint(bool recentFiles)
{
    QString hint = QStringLiteral("No picture is open.\n\n"
                                  "Open one with File > Open Image... (Ctrl+O),\n");
    if (!recentFiles)
        return hint + QStringLiteral("or drop a picture or a slide show here.");
    return hint + QStringLiteral("drop a picture or a slide show here,\n"
                                 "or pick one of the recent files at the foot of the File menu.");
}

QString OpenImageFilter()
{
    return ImageOpenFilter();
}

MainViewFrm::MainViewFrm(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MainViewFrm"));
    setWindowTitle(AppTitle());
    setWindowIcon(KavoriIcon());
    setAcceptDrops(true);
    resize(634, 474); // the default 9510 x 7110 twips at 15 twips per pixel

    m_view = new ImageView(this);
    const Settings& s = CurrentSettings();
    m_view->setFit(s.StretchImages, s.EnlargeImages, s.UseHalftoneMode);
    m_view->setBackground(palette().color(QPalette::Dark));
    setCentralWidget(m_view);
    connect(m_view, &ImageView::clicked, this, [this] {
        if (CurrentSettings().ClickScreenOpen)
            openDialog();
    });

    m_menus = BuildMainMenus(this);
    // Commands come alive as their features do; until then they are shown, never faked.
    for (QAction* action : std::as_const(m_menus.actions)) {
        if (!action->menu())
            action->setEnabled(false);
    }
    for (int i = 1; i <= 7; ++i)
        m_menus.action(QStringLiteral("mnuLast") + QString::number(i))->setVisible(false);
    for (const char* name :
         {"mnuOpenEditor", "mnuOpenEditor2", "mnuOpenEditor3", "mnuOpenEditor4", "mnuOpenEditor5"})
        m_menus.action(QString::fromLatin1(name))->setVisible(false);
    connectCommands();
    ConnectPlaybackCommands(this);
    ConnectEditorCommands(this);
    ConnectFileCommands(this);
    ConnectFindCommands(this);
    ConnectZipCommands(this);
    ConnectRemovableCommands(this);
    ConnectSystemCommands(this);
    ConnectDesktopCommands(this);
    ConnectSaverCommands(this);
    ConnectPackageCommands(this);
    ConnectThumbnailCommands(this);
    ConnectBrowserCommands(this);
    ApplyCommandIcons(this);
    // After every command is in its menu (some are added by the Connect... functions).
    InstallMenuHelp(menuBar());

    m_statusText = new QLabel(this);
    m_statusText->setObjectName(QStringLiteral("lblStatus"));
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    statusBar()->addWidget(m_statusText, 1);

    m_namedFiles = CurrentStartup().CommandLineFiles;
    readStartRequest();
    restoreGeometryFromSettings();
    applyPreferences();
    applyBackground();
    updateRecentMenu();

    m_timerStart = new QTimer(this);
    m_timerStart->setObjectName(QStringLiteral("TimerStart"));
    m_timerStart->setSingleShot(true);
    m_timerStart->setInterval(0);
    connect(m_timerStart, &QTimer::timeout, this, &MainViewFrm::runStartSequence);
    if (!m_ending)
        m_timerStart->start();
    showDocument();
}

MainViewFrm::~MainViewFrm() = default;

void MainViewFrm::connectCommands()
{
    auto handle = [this](const char* name, auto&& slot) {
        QAction* action = m_menus.action(QString::fromLatin1(name));
        action->setEnabled(true);
        connect(action, &QAction::triggered, this, slot);
    };
    auto editCommand = [this, &handle](const char* name, const QString& caption,
                                       std::function<EditResult(const QImage&)> command) {
        handle(name, [this, caption, command] { runEdit(caption, command); });
    };
    auto plain = [](QImage (*f)(const QImage&)) {
        return [f](const QImage& i) { return EditResult{f(i), {}}; };
    };

    handle("mnuOpen", [this] { openDialog(); });
    handle("mnuExit", [this] { close(); });
    handle("mnuReloadImage", [this] {
        if (IsFullPath(m_document.currentFile()))
            openImage(m_document.currentFile());
    });
    handle("mnuUndo", [this] { undo(); });
    handle("mnuCopy", [this] { copy(); });
    handle("mnuPaste", [this] { paste(); });
    editCommand("mnuCrop", QStringLiteral("&Undo Crop"),
                [this](const QImage& i) { return Crop(i, m_view->selection()); });
    editCommand("mnu25Larger", QStringLiteral("&Undo Resize"),
                [](const QImage& i) { return ResizeByPercent(i, 25); });
    editCommand("mnu25Smaller", QStringLiteral("&Undo Resize"),
                [](const QImage& i) { return ResizeByPercent(i, -25); });
    editCommand("mnu50Larger", QStringLiteral("&Undo Resize"),
                [](const QImage& i) { return ResizeByPercent(i, 50); });
    editCommand("mnu50Smaller", QStringLiteral("&Undo Resize"),
                [](const QImage& i) { return ResizeByPercent(i, -50); });
    editCommand("mnu90CW", QStringLiteral("&Undo Rotate"), plain(Rotate90Clockwise));
    editCommand("mnu90CCW", QStringLiteral("&Undo Rotate"), plain(Rotate90CounterClockwise));
    editCommand("mnu180Degrees", QStringLiteral("&Undo Rotate"), plain(Rotate180));
    editCommand("mnuFlipHorizontal", QStringLiteral("&Undo Flip"), plain(FlipHorizontal));
    editCommand("mnuFlipVertically", QStringLiteral("&Undo Flip"), plain(FlipVertical));
    handle("mnuBrowseFirst", [this] { browse(BrowseStep::First); });
    handle("mnuBrowsePrevious", [this] { browse(BrowseStep::Previous); });
    handle("mnuBrowseNext", [this] { browse(BrowseStep::Next); });
    handle("mnuBrowseLast", [this] { browse(BrowseStep::Last); });
    handle("mnuFullScreen", [this] { fullScreen(); });
    handle("mnuExportJPG", [this] { exportImage(true); });
    handle("mnuExportBMP", [this] { exportImage(false); });
    handle("mnuSaveCopy", [this] { exportImage(false); });
    handle("mnuImportPCX", [this] { importImage(true); });
    handle("mnuImportTGA", [this] { importImage(false); });
    handle("mnuNewImage", [this] { newImage(); });
    handle("mnuAbout", [this] { showAbout(); });
    handle("mnuSelectLanguage", [this] {
        frmLanguage dialog(this);
        dialog.exec();
    });
    handle("mnuTopmost", [this] {
        CurrentSettings().TopMostWindow = m_menus.action(QStringLiteral("mnuTopmost"))->isChecked();
        setWindowFlag(Qt::WindowStaysOnTopHint, CurrentSettings().TopMostWindow);
        show();
    });
    m_menus.action(QStringLiteral("mnuTopmost"))->setCheckable(true);
    for (int i = 1; i <= 7; ++i)
        handle(QStringLiteral("mnuLast%1").arg(i).toLatin1().constData(),
               [this, i] { openRecent(i - 1); });
    handle("mnuArbitrary", [this] {
        if (!m_document.hasImage())
            return;
        frmRotateImg dialog(this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        dialog.remember();
        runEdit(QStringLiteral("&Undo Rotate"), [&dialog](const QImage& i) {
            return EditResult{RotateByAngle(i, dialog.angle(), dialog.clockwise(),
                                            dialog.preserveSize(), Qt::black),
                              {}};
        });
    });
    handle("mnuEditImageSize", [this] {
        if (!m_document.hasImage())
            return;
        frmImageSize dialog(m_document.image().size(), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        dialog.remember();
        runEdit(QStringLiteral("&Undo Resize"),
                [&dialog](const QImage& i) { return ResizeTo(i, dialog.chosenSize()); });
    });
    handle("mnuAnimatedGIF", [this] {
        if (!m_document.hasImage()) {
            MsgBox(
                QStringLiteral("An image has not been opened yet, unable to view animated gif..."),
                vbInformation);
            return;
        }
        const QString file = m_document.currentFile();
        if (!HasExtension(file, QStringLiteral(".GIF")) && !IsAnimatedPicture(file)) {
            MsgBox(QStringLiteral("The current image is not a .GIF file, unable to animate..."),
                   vbInformation);
            return;
        }
        FullViewFrm::ShowImageModal(m_document.currentFile(), true, this);
    });
    handle("mnuCaptureDesktop", [this] {
        if (!ConfirmDiscardChanges(m_document))
            return;
        QScreen* screen = QGuiApplication::primaryScreen();
        const QImage shot = screen ? screen->grabWindow(0).toImage() : QImage();
        if (shot.isNull())
            return;
        m_document.setUntitled(shot);
        showDocument();
    });
    handle("mnuTempFile", [this] {
        if (QFileInfo(UntitledImagePath()).isFile() && ConfirmDiscardChanges(m_document)) {
            const QImage image = QImageReader(UntitledImagePath(), "bmp").read();
            if (!image.isNull()) {
                m_document.setImage(image, ImageDocument::UntitledName(), true);
                showDocument();
            }
        }
    });
    handle("mnuDisplayProperties", [this] { showDisplaySettings(); });
    handle("mnuPrintImage", [this] {
        if (!m_document.hasImage()) {
            MsgBox(QStringLiteral("An image has not been opened yet, unable to print..."),
                   vbInformation);
            return;
        }
        QPrintDialog dialog(&printer(), this);
        if (dialog.exec() == QDialog::Accepted && !PrintImage(printer(), m_document.image()))
            MsgBox(QStringLiteral("Unable to print the image, check the printer and try again..."),
                   vbExclamation);
    });
    handle("mnuPref", [this] {
        frmPreferences dialog(this);
        if (dialog.exec() == QDialog::Accepted)
            applyPreferences();
    });
    handle("mnuMoreRecent", [this] {
        QStringList files;
        for (const QString& f : CurrentSettings().MoreRecentFiles)
            if (!f.isEmpty())
                files << f;
        if (files.isEmpty()) {
            MsgBox(QStringLiteral("There are no recent files to show..."), vbInformation);
            return;
        }
        const std::optional<QString> chosen =
            CurrentPrompts().chooseItem(AppTitle() + QStringLiteral(" - [More Recent Files]"),
                                        QStringLiteral("Select a file to open:"), files);
        if (chosen && !chosen->isEmpty())
            openImage(*chosen);
    });
    handle("mnuPrintOptions", [this] {
        frmPrintOptions dialog(this);
        dialog.exec();
    });
    handle("mnuPrinterSetup", [this] {
        QPageSetupDialog dialog(&printer(), this);
        dialog.exec();
    });
    handle("mnuTipOfDay", [this] {
        auto* tip = new frmTip(this);
        tip->setAttribute(Qt::WA_DeleteOnClose);
        tip->show();
    });
    handle("mnuReadMe", [] { ShowHelp(QStringLiteral("readme")); });
    handle("mnuHelpContents", [] { ShowHelp(); });
    handle("mnuHelpSearch", [] { ShowHelp(); });
}

void MainViewFrm::showDocument()
{
    setWindowTitle(m_document.title());
    m_view->setImage(m_document.image());
    QAction* undoAction = m_menus.action(QStringLiteral("mnuUndo"));
    undoAction->setText(m_document.undoCaption());
    undoAction->setEnabled(m_document.canUndo());
    if (m_document.hasImage()) {
        m_statusText->setText(QStringLiteral("%1 x %2 pixels")
                                  .arg(m_document.image().width())
                                  .arg(m_document.image().height()));
    } else {
        m_statusText->clear();
    }
    m_view->setHint(m_document.hasImage()
                        ? QString()
                        : EmptyWindowHint(!CurrentSettings().Recent[0].isEmpty()));
    if (m_document.currentFile() != m_shownFile) {
        m_shownFile = m_document.currentFile();
        Q_EMIT currentFileChanged(m_shownFile);
    }
}

bool MainViewFrm::openImage(const QString& path)
{
    if (!ConfirmDiscardChanges(m_document))
        return false;
    QImage image = m_prefetcher.take(path);
    if (image.isNull())
        image = LoadPicture(path);
    if (image.isNull()) {
        MsgBox(QStringLiteral("Unable to open the image file:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("The file may be damaged or is not a supported type..."),
               vbInformation);
        return false;
    }
    m_document.setImage(image, path);
    // A picture from elsewhere ends the stepping through the pictures named at start.
    if (!m_namedFiles.contains(path))
        m_namedFiles.clear();
    showDocument();
    if (CurrentSettings().AutosizeWindow && !isMaximized() && !isFullScreen())
        fitWindowToImage();
    CurrentSettings().LastOpenedFile = path;
    AddRecentFile(path);
    if (CurrentSettings().UseRecentDocuments)
        AddToRecentDocuments(path);
    updateRecentMenu();
    prefetchNeighbours();
    return true;
}

void MainViewFrm::followCurrentFile(const QString& newPath)
{
    if (!newPath.isEmpty()) {
        m_document.fileMoved(newPath);
        CurrentSettings().LastOpenedFile = newPath;
        showDocument();
        return;
    }
    const QString gone = m_document.currentFile();
    // The list as it was with the file in it.
    const QStringList before = m_namedFiles.contains(gone) ? m_namedFiles : m_folderList;
    m_listedFolder.clear();
    const QStringList& now = folderList();
    qsizetype at = -1;
    for (qsizetype i = 0; i < before.size(); ++i)
        if (before[i].compare(gone, Qt::CaseInsensitive) == 0)
            at = i;
    QStringList candidates = before.mid(at + 1);
    for (qsizetype i = at - 1; i >= 0; --i)
        candidates << before[i];
    if (at < 0)
        candidates = now;
    m_document.clear();
    for (const QString& next : std::as_const(candidates)) {
        if (now.contains(next) && openImage(next))
            return;
    }
    showDocument();
}

const QStringList& MainViewFrm::folderList()
{
    // Pictures named together on the command line are stepped through as one folder would be,
    // while the window shows one of them.
    if (m_namedFiles.contains(m_document.currentFile()))
        return m_namedFiles;
    const QString folder = FolderOf(m_document.currentFile());
    const QDateTime stamp = QFileInfo(folder).lastModified();
    if (folder != m_listedFolder || stamp != m_listedStamp) {
        m_folderList = BrowseList(folder, IsImageFile);
        m_listedFolder = folder;
        m_listedStamp = stamp;
    }
    return m_folderList;
}

// The pictures before and after the current one are read ahead while the user looks.
void MainViewFrm::prefetchNeighbours()
{
    if (!IsFullPath(m_document.currentFile()))
        return;
    const QStringList& list = folderList();
    const QString name = FileNameOf(m_document.currentFile()).toUpper();
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (FileNameOf(list[i]).toUpper() != name)
            continue;
        QStringList around;
        if (i + 1 < list.size())
            around << list[i + 1];
        if (i > 0)
            around << list[i - 1];
        m_prefetcher.prefetch(around);
        return;
    }
}

void MainViewFrm::openDialog()
{
    const QString folder =
        m_document.currentFile().isEmpty() ? QString() : FolderOf(m_document.currentFile());
    const QString path =
        CurrentPrompts().openFile(QStringLiteral("Open Image"), folder, OpenImageFilter());
    if (!path.isEmpty() && openImage(path) && CurrentSettings().ViewFullScreen)
        fullScreen();
}

void MainViewFrm::runEdit(const QString& undoCaption,
                          const std::function<EditResult(const QImage&)>& command)
{
    if (!m_document.hasImage())
        return;
    const QString refusal = m_document.edit(undoCaption, command);
    if (!refusal.isEmpty())
        MsgBox(refusal, vbInformation);
    showDocument();
}

void MainViewFrm::undo()
{
    m_document.undo();
    showDocument();
}

void MainViewFrm::copy()
{
    if (m_document.hasImage())
        QApplication::clipboard()->setImage(m_document.image());
}

void MainViewFrm::paste()
{
    const QImage clip = QApplication::clipboard()->image();
    if (clip.isNull()) {
        MsgBox(QStringLiteral("There is nothing to paste.") + NewLine2() +
                   QStringLiteral("No image data was found on the clipboard..."),
               vbInformation);
        return;
    }
    const QRect area = m_view->selection();
    if (m_document.hasImage() && !area.isEmpty()) {
        const bool stretch =
            MsgBox(QStringLiteral("Stretch clipboard data to fit the selected area?"),
                   vbYesNo + vbQuestion) == vbYes;
        m_document.edit(QStringLiteral("&Undo Paste"), [&](const QImage& i) {
            return EditResult{PasteInto(i, clip, area, stretch), {}};
        });
        showDocument();
        return;
    }
    if (!ConfirmDiscardChanges(m_document))
        return;
    m_document.setUntitled(clip, QStringLiteral("&Undo Paste"));
    showDocument();
}

void MainViewFrm::browse(BrowseStep step)
{
    if (!IsFullPath(m_document.currentFile()))
        return;
    const BrowseResult r = BrowseFolder(folderList(), m_document.currentFile(), step);
    if (r.onlyOneFile) {
        if (MsgBox(OnlyOneFileQuestion(), vbYesNo + vbQuestion) == vbYes)
            openDialog();
    } else if (!r.message.isEmpty()) {
        MsgBox(r.message, vbInformation);
    } else if (!r.file.isEmpty()) {
        openImage(r.file);
    }
}

void MainViewFrm::fullScreen()
{
    if (!m_document.hasImage()) {
        MsgBox(QStringLiteral("An image has not been opened yet, unable to view full screen..."),
               vbInformation);
        return;
    }
    FullViewFrm view(this);
    view.setImage(m_document.image());
    view.setWindowState(Qt::WindowFullScreen);
    view.exec();
}

QString MainViewFrm::LoadTimeMessage(qint64 milliseconds)
{
    return QStringLiteral("Load Time: ") + Format(milliseconds, QStringLiteral("###,###")) +
           QStringLiteral(" milliseconds...");
}

void MainViewFrm::runStartSequence()
{
    m_timerStart->stop();
    if (m_ending)
        return;
    WaitFrm::CloseAll();
    // Pending events may close the window; nothing of the start is left to do then.
    const QPointer<MainViewFrm> alive(this);
    DoEvents();
    if (!alive || m_ending)
        return;
    if (CurrentSettings().ShowToolbar && !findChild<frmToolbar*>())
        (new frmToolbar(this))->showAtSavedPlace();
    const StartupState& start = CurrentStartup();
    // A show to edit was named on the command line: the editor opens with it, nothing else.
    if (!start.EditFile.isEmpty()) {
        OpenSlideShowEditor(this, start.EditFile);
        return;
    }
    if (start.ShowDisplayProperties)
        showDisplaySettings();
    if (start.LoadStart != -1)
        MsgBox(LoadTimeMessage(GetTickCount() - start.LoadStart), vbInformation);
    if (frmTip::ShowAtStartup()) {
        auto* tip = new frmTip(this);
        tip->setAttribute(Qt::WA_DeleteOnClose);
        tip->show();
    }
    if (IsImageFile(start.CommandLine))
        openImage(start.CommandLine);
    else if (start.CommandLine.isEmpty() && CurrentSettings().DisplayLastOpened &&
             IsImageFile(CurrentSettings().LastOpenedFile))
        openImage(CurrentSettings().LastOpenedFile);
    else if (start.CommandLine.isEmpty() && IsImageFile(CurrentSettings().DefaultImage))
        openImage(CurrentSettings().DefaultImage);

    // The request: the command line's, else the one the settings choose.
    const qint16 request = m_startRequest != 0 ? m_startRequest : CurrentSettings().StartupDialog;
    switch (request) {
    case 1:
        showAbout();
        break;
    case 2:
        OpenSlideShowEditor(this);
        break;
    case 3:
        openDialog();
        break;
    case 4: {
        // The folder the command line named, else the current picture's.
        QString folder = m_thumbnailFolder;
        if (folder.isEmpty() && IsFullPath(m_document.currentFile()))
            folder = FolderOf(m_document.currentFile());
        OpenThumbnailBrowser(this, folder);
        break;
    }
    case 5: {
        auto* dialog = new frmLanguage(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->show();
        break;
    }
    default:
        if (start.FirstRun)
            showAbout();
        break;
    }
}

// The window grows or shrinks so the picture shows whole at its size, within the screen.
void MainViewFrm::fitWindowToImage()
{
    const QScreen* screen = this->screen();
    if (!screen || !m_document.hasImage())
        return;
    const QSize frameExtra = size() - m_view->viewport()->size();
    const QSize available = screen->availableGeometry().size() * 9 / 10;
    const QSize wanted =
        (m_document.image().size() + frameExtra).boundedTo(available).expandedTo(QSize(480, 360));
    resize(wanted);
}

QPrinter& MainViewFrm::printer()
{
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *m_printer;
}

// The window follows the preferences that shape it.
void MainViewFrm::applyPreferences()
{
    const Settings& s = CurrentSettings();
    m_menus.mainToolbar->setVisible(s.ShowMainToolbar);
    m_menus.quickToolbar->setVisible(s.ShowQuickToolbar);
    statusBar()->setVisible(s.ShowStatusBar);
    m_view->setFit(s.StretchImages, s.EnlargeImages, s.UseHalftoneMode);
}

void MainViewFrm::showDisplaySettings()
{
    if (!OpenDisplaySettings())
        MsgBox(QStringLiteral(
                   "No display settings program was found on this system, use your desktop's "
                   "settings to change the number of colors..."),
               vbInformation);
}

void MainViewFrm::readStartRequest()
{
    const QString line = CurrentStartup().CommandLine;
    if (line.isEmpty() || IsImageFile(line))
        return;
    const StartRequestResult r = ParseStartRequest(line);
    m_startRequest = r.request;
    m_thumbnailFolder = r.thumbnailFolder;
    // A message must not open behind the loading window.
    if (!r.message.isEmpty())
        WaitFrm::CloseAll();
    if (r.endProgram) {
        m_ending = true;
        MsgBox(r.message, vbInformation);
        QTimer::singleShot(0, this, &QWidget::close);
    } else if (!r.message.isEmpty()) {
        MsgBox(r.message, vbExclamation);
    }
}

void MainViewFrm::restoreGeometryFromSettings()
{
    const Settings& s = CurrentSettings();
    if (s.SaveWindowSize && s.MainSizeX > 0 && s.MainSizeY > 0) {
        QRect wanted(TwipsToPixels(s.MainPosX), TwipsToPixels(s.MainPosY),
                     TwipsToPixels(s.MainSizeX), TwipsToPixels(s.MainSizeY));
        // Kept on a screen that is there now.
        if (const QScreen* screen = QGuiApplication::primaryScreen()) {
            const QRect area = screen->availableGeometry();
            wanted.setSize(wanted.size().boundedTo(area.size()).expandedTo(QSize(320, 240)));
            if (!area.intersects(wanted))
                wanted.moveTopLeft(area.topLeft());
        }
        setGeometry(wanted);
    }
    if (s.TopMostWindow) {
        setWindowFlag(Qt::WindowStaysOnTopHint, true);
        m_menus.action(QStringLiteral("mnuTopmost"))->setChecked(true);
    }
    if (s.WindowMaximized)
        setWindowState(windowState() | Qt::WindowMaximized);
}

void MainViewFrm::saveWindowState()
{
    Settings& s = CurrentSettings();
    if (!isMaximized()) {
        const QRect g = geometry();
        s.MainPosX = PixelsToTwips(g.x());
        s.MainPosY = PixelsToTwips(g.y());
        s.MainSizeX = PixelsToTwips(g.width());
        s.MainSizeY = PixelsToTwips(g.height());
    }
    s.TopMostWindow = m_menus.action(QStringLiteral("mnuTopmost"))->isChecked();
    WriteMainWindowState();
}

void MainViewFrm::applyBackground()
{
    const Settings& s = CurrentSettings();
    QImage texture;
    if (!s.MainViewBackground.isEmpty()) {
        texture = LoadPicture(FullPathNoCase(s.MainViewBackground));
        if (texture.isNull()) {
            WaitFrm::CloseAll();
            MsgBox(
                QStringLiteral(
                    "Could not find the background texture specified for the Main Viewing Window.") +
                    NewLine2() +
                    QStringLiteral(
                        "Edit the \"Appearance\" settings found in \"Preferences\" to remove this message..."),
                vbInformation);
        }
    }
    const QColor colour =
        s.BackgroundColor == 0 ? palette().color(QPalette::Dark) : FromVbColor(s.PreviewBackRGB);
    m_view->setBackground(colour, texture);
}

void MainViewFrm::updateRecentMenu()
{
    const Settings& s = CurrentSettings();
    for (int i = 0; i < 7; ++i) {
        QAction* entry = m_menus.action(QStringLiteral("mnuLast") + QString::number(i + 1));
        const QString path = s.Recent[std::size_t(i)];
        entry->setVisible(!path.isEmpty());
        entry->setText(RecentMenuCaption(i + 1, path));
    }
}

void MainViewFrm::openRecent(int index)
{
    const QString path = CurrentSettings().Recent[std::size_t(index)];
    if (!path.isEmpty())
        openImage(path);
}

void MainViewFrm::exportImage(bool jpeg)
{
    if (!m_document.hasImage()) {
        MsgBox(QStringLiteral("An image has not been opened yet, nothing to save..."),
               vbInformation);
        return;
    }
    const QString base =
        IsFullPath(m_document.currentFile()) ? m_document.currentFile() : QString();
    const QString suggested = base.isEmpty()
                                  ? QString()
                                  : FolderOf(base) + QFileInfo(base).completeBaseName() +
                                        (jpeg ? QStringLiteral(".jpg") : QStringLiteral(".bmp"));
    const QString target = CurrentPrompts().saveFile(
        jpeg ? QStringLiteral("Export as JPEG") : QStringLiteral("Save as Bitmap"), suggested,
        jpeg ? QStringLiteral("JPEG (*.jpg *.jpeg)") : QStringLiteral("Windows Bitmap (*.bmp)"));
    if (target.isEmpty())
        return;
    const bool ok = jpeg ? SaveAsJpeg(m_document.imageChanged() ? QString() : base,
                                      m_document.image(), target, CurrentSettings().QualityJPG)
                         : SaveBitmap(m_document.image(), target);
    if (!ok) {
        MsgBox(QStringLiteral("Unable to save the image as:") + NewLine2() + target + NewLine2() +
                   QStringLiteral("The folder may be read-only or the disk full..."),
               vbExclamation);
        return;
    }
    m_document.markSaved(jpeg ? m_document.currentFile() : target);
    showDocument();
}

void MainViewFrm::importImage(bool pcx)
{
    if (!ConfirmDiscardChanges(m_document))
        return;
    const QString path = CurrentPrompts().openFile(
        pcx ? QStringLiteral("Import PCX Image File") : QStringLiteral("Import TGA Image File"),
        QString(), pcx ? QStringLiteral("PCX Image (*.pcx)") : QStringLiteral("TGA Image (*.tga)"));
    if (!path.isEmpty())
        importPicture(path);
}

bool MainViewFrm::importFile(const QString& path)
{
    return ConfirmDiscardChanges(m_document) && importPicture(path);
}

bool MainViewFrm::importPicture(const QString& path)
{
    const QImage image = ImportPicture(path);
    if (image.isNull()) {
        MsgBox(QStringLiteral("Unable to import the image file:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("The file may be damaged or is not a supported type..."),
               vbInformation);
        return false;
    }
    m_document.setUntitled(image, QString(), FileNameOf(path));
    showDocument();
    return true;
}

void MainViewFrm::newImage()
{
    if (!ConfirmDiscardChanges(m_document))
        return;
    const Settings& s = CurrentSettings();
    QImage image = s.NewGetsClipboard ? QApplication::clipboard()->image() : QImage();
    if (image.isNull())
        image = NewImage(s.NewImageX, s.NewImageY, FromVbColor(s.BackColorRGB));
    m_document.setUntitled(image);
    showDocument();
}

void MainViewFrm::showAbout()
{
    const BonusPack& pack = CurrentBonusPack();
    auto* about = new QDialog(this);
    about->setObjectName(QStringLiteral("frmAbout"));
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->setWindowTitle(AppTitle() + QStringLiteral(" - [About]"));
    auto* picture = new QLabel(about);
    picture->setPixmap(KavoriPixmap(96));
    auto* title =
        new QLabel(QStringLiteral("<b style='font-size:18pt'>Kavori</b><br>Version 3.0"), about);
    QString text =
        QStringLiteral("An image viewer and slide show program: view pictures one at a time or "
                       "full screen, organise them, and make slide shows and screen savers.");
    if (!pack.BonusPackName.isEmpty())
        text += QStringLiteral("<br><br>With ") + pack.BonusPackName + u' ' +
                pack.BonusPackEdition + u'!';
    auto* body = new QLabel(text, about);
    body->setObjectName(QStringLiteral("lblAbout"));
    body->setWordWrap(true);
    auto* top = new QHBoxLayout;
    top->addWidget(picture, 0, Qt::AlignTop);
    auto* words = new QVBoxLayout;
    words->addWidget(title);
    words->addWidget(body);
    top->addLayout(words, 1);
    auto* layout = new QVBoxLayout(about);
    layout->addLayout(top);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, about);
    connect(buttons, &QDialogButtonBox::accepted, about, &QDialog::accept);
    layout->addWidget(buttons);
    about->resize(420, about->sizeHint().height());
    about->show();
}

void MainViewFrm::dropFile(const QString& path)
{
    const DropRequest r = ClassifyDrop(path);
    switch (r.kind) {
    case DropRequest::Refuse:
        MsgBox(r.message, vbInformation);
        break;
    case DropRequest::OpenImage:
        openImage(r.path);
        break;
    case DropRequest::PlayShow:
        PlaySlideShowFile(r.path, this);
        break;
    }
}

void MainViewFrm::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void MainViewFrm::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty())
        return;
    event->acceptProposedAction();
    dropFile(urls.first().isLocalFile() ? urls.first().toLocalFile() : QString());
}

void MainViewFrm::closeEvent(QCloseEvent* event)
{
    if (!ConfirmDiscardChanges(m_document)) {
        event->ignore();
        return;
    }
    const Settings& s = CurrentSettings();
    if (s.ClearClipboard && !QApplication::clipboard()->image().isNull()) {
        // No clears the clipboard; Yes leaves the picture for other programs.
        if (MsgBox(
                QStringLiteral("There is an image on the clipboard.") + NewLine2() +
                    QStringLiteral("Do you want this data to be available to other applications?"),
                vbYesNo + vbQuestion) == vbNo)
            QApplication::clipboard()->clear();
    }
    saveWindowState();
    if (s.DeleteUntitled)
        QFile::remove(UntitledImagePath());
    event->accept();
}

} // namespace kavori
