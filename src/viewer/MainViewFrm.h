#pragma once

#include "ImageDocument.h"
#include "MainMenus.h"
#include "PicturePrefetcher.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class QPrinter;
class QTimer;

namespace kavori {

class ImageView;
enum class BrowseStep;

// The program's main window: one image at a time, and every command in its menus.
class MainViewFrm : public QMainWindow {
    Q_OBJECT
public:
    explicit MainViewFrm(QWidget* parent = nullptr);
    ~MainViewFrm() override;

    const MainMenus& menus() const { return m_menus; }
    const ImageDocument& document() const { return m_document; }
    ImageView* imageView() const { return m_view; }

    // Runs the one-shot start sequence now (the window runs it once it has appeared).
    void runStartSequence();

    // Opens an image file after the unsaved-image question; false when it was not opened.
    bool openImage(const QString& path);

    // Imports a PCX or TGA picture as a new untitled image, after the unsaved-image question.
    bool importFile(const QString& path);

    // The current file was moved or renamed to newPath: the window follows it. With newPath
    // empty it was deleted: the window moves on to the next picture of the folder (or the one
    // before), or shows nothing.
    void followCurrentFile(const QString& newPath);

    // Handles a file dropped on the image area.
    void dropFile(const QString& path);

    // "Load Time: ..." for a start that took this many milliseconds.
    static QString LoadTimeMessage(qint64 milliseconds);

    // The request the command line made of the window (0 none).
    qint16 startRequest() const { return m_startRequest; }

Q_SIGNALS:
    // The picture shown is now another file (empty when none is shown).
    void currentFileChanged(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void readStartRequest();
    void restoreGeometryFromSettings();
    void saveWindowState();
    void applyBackground();
    void updateRecentMenu();
    void openRecent(int index);
    void exportImage(bool jpeg);
    void importImage(bool pcx);
    bool importPicture(const QString& path);
    void newImage();
    void showAbout();
    void showDisplaySettings();
    void applyPreferences();
    void fitWindowToImage();
    QPrinter& printer();
    const QStringList& folderList();
    void prefetchNeighbours();
    void connectCommands();
    void showDocument();
    QString m_shownFile; // the file currentFileChanged last named
    void runEdit(const QString& undoCaption,
                 const std::function<EditResult(const QImage&)>& command);
    void browse(BrowseStep step);
    void openDialog();
    void paste();
    void copy();
    void undo();
    void fullScreen();

    MainMenus m_menus;
    ImageDocument m_document;
    ImageView* m_view = nullptr;
    QTimer* m_timerStart = nullptr;
    QLabel* m_statusText = nullptr;
    qint16 m_startRequest = 0;
    bool m_ending = false; // the command line asked only for the help hint
    PicturePrefetcher m_prefetcher;
    std::unique_ptr<QPrinter> m_printer; // made on first use: finding printers takes time
    // The current folder's pictures, listed again only when the folder changes.
    QString m_listedFolder;
    QDateTime m_listedStamp;
    QStringList m_folderList;
    QString m_thumbnailFolder;
    // Pictures named together on the command line, stepped through as one folder would be.
    QStringList m_namedFiles;
};

// What the image area says while no picture is open; the recent files are pointed to when
// there are some.
QString EmptyWindowHint(bool recentFiles);

// The filter of the open-image dialog: every supported type, then each family.
QString OpenImageFilter();

} // namespace kavori
