#include "MainViewFrm.h"

#include "FolderBrowse.h"
#include "ImageView.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"
#include "platform/AppPaths.h"
#include "platform/HelpFile.h"
#include "platform/TickCount.h"
#include "playback/FullViewFrm.h"
#include "runtime/DoEvents.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "startup/StartupState.h"
#include "startup/WaitFrm.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTimer>

namespace kavori {

QString OpenImageFilter()
{
    return QStringLiteral(
        "All Supported Images (*.bmp *.dib *.rle *.jpg *.jif *.jpe *.jpeg *.gif *.wmf *.emf *.ico "
        "*.cur);;Windows Bitmap (*.bmp *.dib *.rle);;JPEG (*.jpg *.jif *.jpe *.jpeg);;Graphics "
        "Interchange Format (*.gif);;Metafiles (*.wmf *.emf);;Icons and Cursors (*.ico *.cur)");
}

MainViewFrm::MainViewFrm(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("MainViewFrm"));
    setWindowTitle(AppTitle());
    setAcceptDrops(true);
    resize(634, 474); // the default 9510 x 7110 twips at 15 twips per pixel

    m_view = new ImageView(this);
    const Settings& s = CurrentSettings();
    m_view->setFit(s.StretchImages, s.EnlargeImages, s.UseHalftoneMode);
    m_view->setBackground(palette().color(QPalette::Dark));
    setCentralWidget(m_view);

    m_menus = BuildMainMenus(this);
    // Commands come alive as their features do; until then they are shown, never faked.
    for (QAction* action : std::as_const(m_menus.actions)) {
        if (!action->menu())
            action->setEnabled(false);
    }
    for (int i = 1; i <= 7; ++i)
        m_menus.action(QStringLiteral("mnuLast") + QString::number(i))->setVisible(false);
    for (const char* name : {"mnuOpenEditor", "mnuOpenEditor2", "mnuOpenEditor3", "mnuOpenEditor4",
                             "mnuOpenEditor5"})
        m_menus.action(QString::fromLatin1(name))->setVisible(false);
    connectCommands();

    m_statusText = new QLabel(this);
    m_statusText->setObjectName(QStringLiteral("lblStatus"));
    statusBar()->setObjectName(QStringLiteral("StatusBar1"));
    statusBar()->addWidget(m_statusText, 1);

    m_timerStart = new QTimer(this);
    m_timerStart->setObjectName(QStringLiteral("TimerStart"));
    m_timerStart->setSingleShot(true);
    m_timerStart->setInterval(0);
    connect(m_timerStart, &QTimer::timeout, this, &MainViewFrm::runStartSequence);
    m_timerStart->start();
    showDocument();
}

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
    editCommand("mnuCrop", QStringLiteral("&Undo Crop"), [this](const QImage& i) {
        return Crop(i, m_view->selection());
    });
    editCommand("mnu25Larger", QStringLiteral("&Undo Resize"), [](const QImage& i) { return ResizeByPercent(i, 25); });
    editCommand("mnu25Smaller", QStringLiteral("&Undo Resize"), [](const QImage& i) { return ResizeByPercent(i, -25); });
    editCommand("mnu50Larger", QStringLiteral("&Undo Resize"), [](const QImage& i) { return ResizeByPercent(i, 50); });
    editCommand("mnu50Smaller", QStringLiteral("&Undo Resize"), [](const QImage& i) { return ResizeByPercent(i, -50); });
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
}

bool MainViewFrm::openImage(const QString& path)
{
    if (!ConfirmDiscardChanges(m_document))
        return false;
    const QImage image = LoadPicture(path);
    if (image.isNull()) {
        MsgBox(QStringLiteral("Unable to open the image file:") + NewLine2() + path + NewLine2() +
                   QStringLiteral("The file may be damaged or is not a supported type..."),
               vbInformation);
        return false;
    }
    m_document.setImage(image, path);
    showDocument();
    return true;
}

void MainViewFrm::openDialog()
{
    const QString folder = m_document.currentFile().isEmpty() ? QString() : FolderOf(m_document.currentFile());
    const QString path = CurrentPrompts().openFile(QStringLiteral("Open Image"), folder, OpenImageFilter());
    if (!path.isEmpty())
        openImage(path);
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
            MsgBox(QStringLiteral("Stretch clipboard data to fit the selected area?"), vbYesNo + vbQuestion) == vbYes;
        m_document.edit(QStringLiteral("&Undo Paste"), [&](const QImage& i) {
            return EditResult{PasteInto(i, clip, area, stretch), {}};
        });
        showDocument();
        return;
    }
    if (!ConfirmDiscardChanges(m_document))
        return;
    m_document.setImage(clip.convertToFormat(QImage::Format_RGB32), ImageDocument::UntitledName(), true);
    showDocument();
}

void MainViewFrm::browse(BrowseStep step)
{
    if (!IsFullPath(m_document.currentFile()))
        return;
    const QStringList list = BrowseList(FolderOf(m_document.currentFile()), IsImageFile);
    const BrowseResult r = BrowseFolder(list, m_document.currentFile(), step);
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
        MsgBox(QStringLiteral("An image has not been opened yet, unable to view full screen..."), vbInformation);
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
    WaitFrm::CloseAll();
    DoEvents();
    const StartupState& start = CurrentStartup();
    if (start.LoadStart != -1)
        MsgBox(LoadTimeMessage(GetTickCount() - start.LoadStart), vbInformation);
    if (IsImageFile(start.CommandLine))
        openImage(start.CommandLine);
}

} // namespace kavori
