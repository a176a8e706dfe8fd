#pragma once

#include <QWidget>

class QLabel;
class QListWidget;
class QSplitter;

namespace kavori {

class FolderTree;
class MainViewFrm;

// The file browser pane beside the main window's picture: the special places and drives as a
// tree, and below it the pictures of the folder chosen there. A click on a picture opens it in
// the main window. Folders and drives are read on worker threads.
class frmFileBrowser : public QWidget {
    Q_OBJECT
public:
    explicit frmFileBrowser(MainViewFrm* window);

    FolderTree* tree() const { return m_tree; }
    QListWidget* fileList() const { return m_list; }
    QSplitter* divider() const { return m_divider; }
    // Lists a folder's pictures (read aside; the list fills when they are known).
    void setFolder(const QString& folder);
    QString folder() const { return m_folder; }
    // Lists the folder of a file (unless it is listed already) and selects the file in it.
    void showFile(const QString& path);
    bool isListing() const { return m_listing > 0; }
    bool drivesAdded() const { return m_drivesAdded; }

    // The height of the tree above the divider, in twips (FileBrowserBar).
    int barTwips() const;
    void setBarTwips(int twips);

Q_SIGNALS:
    void folderListed();

private:
    void openItem();
    void selectWanted();

    MainViewFrm* m_window = nullptr;
    FolderTree* m_tree = nullptr;
    QLabel* m_path = nullptr;
    QListWidget* m_list = nullptr;
    QSplitter* m_divider = nullptr;
    QString m_folder;
    QString m_wantedFile; // selected once its folder is listed
    int m_listing = 0;
    int m_listJob = 0;
    bool m_drivesAdded = false;
};

} // namespace kavori
