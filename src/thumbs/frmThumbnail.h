#pragma once

#include "browse/ThumbnailLoader.h"
#include "browse/ThumbnailPages.h"

#include <QDialog>
#include <QSet>
#include <QStringList>

#include <array>
#include <functional>

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QMenu;
class QPushButton;

namespace kavori {

class MainViewFrm;
class ThumbnailCell;

// The thumbnail browser: the pictures and movies of a folder, or of files the user chose, as
// pages of 9, 16 or 25 cells. A cell previews its file on a click, opens it in the main window
// on a double click, and offers the file commands in its pop-up menu.
class frmThumbnail : public QDialog {
    Q_OBJECT
public:
    explicit frmThumbnail(MainViewFrm* window);
    ~frmThumbnail() override;

    // Shows a folder's files from the first page on.
    void showFolder(const QString& folder);
    // Shows the files chosen or dropped; false after the refusal of too many.
    bool showFiles(const QStringList& files);

    const QStringList& files() const { return m_files; }
    QString folder() const { return m_folder; } // empty for chosen files
    int firstIndex() const { return m_first; }
    int pageSize() const { return m_pageSize; }
    void setPageSize(int cells); // 9, 16 or 25
    bool isLoading() const { return m_loading; }

    void move(PageMove step);
    void goToThumbnail();
    void reload();
    void stop();

    // The cells' own commands, by cell (0-24).
    void previewCell(int cell, bool addToSelection = false);
    void openCell(int cell);
    // The pop-up menu of a cell: its entries then act on that cell.
    QMenu* popupFor(int cell);
    QStringList selectedFiles() const;
    // The file a cell shows, empty for an unused cell.
    QString cellFile(int cell) const;
    // What a cell shows now.
    Thumbnail cellThumbnail(int cell) const;

    // How a movie or a folder is handed to the system; tests record instead.
    static void SetSystemOpener(std::function<void(const QString&)> opener);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void build();
    void buildMenu();
    void setList(const QStringList& files, const QString& folder);
    void showPage();
    void applyCaptions();
    void setLoading(bool loading);
    void cellReady(int cell, const Thumbnail& thumbnail);
    void pageDone(bool stopped);
    void countTotalSize();
    void chooseFiles();
    void chooseFolder();
    int fileIndexOf(int cell) const;
    QString menuFile() const;
    void addToShow();
    void addToFavorites();
    void copyFiles(bool selectedOnly);
    void deleteFile();
    void renameFile();
    void exploreFolder();
    void viewAnimatedGif();

    MainViewFrm* m_window = nullptr;
    ThumbnailLoader m_loader;
    QStringList m_files;
    QString m_folder;
    int m_first = 0;
    int m_pageSize = 25;
    bool m_loading = false;
    int m_menuCell = -1;
    QSet<QString> m_selected; // files, so a selection lives across pages
    int m_sizeJob = 0;        // the total-size count that is still wanted

    std::array<ThumbnailCell*, 25> m_cells{};
    QLabel* m_info = nullptr;
    QLabel* m_showing = nullptr;
    QLabel* m_numFiles = nullptr;
    QLabel* m_totalSize = nullptr;
    QLabel* m_status = nullptr;
    QLabel* m_preview = nullptr;
    QFrame* m_back = nullptr;
    QComboBox* m_pageChoice = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_back1 = nullptr;
    QPushButton* m_fwd1 = nullptr;
    QPushButton* m_select = nullptr;
    QPushButton* m_browse = nullptr;
    QPushButton* m_stop = nullptr;
    QPushButton* m_close = nullptr;
    QMenu* m_menu = nullptr;
};

} // namespace kavori
