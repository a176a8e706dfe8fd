#pragma once

#include "slideshow/SlideList.h"

#include <QDialog>

#include <array>

class QAction;
class QComboBox;
class QFileSystemModel;
class QLabel;
class QListView;
class QMenuBar;
class QPushButton;
class QTreeView;

namespace kavori {

class FolderTree;
class SlideListModel;

// The slide show editor: a source pane (folder tree Dir1, the folder combo Drive1 and the file
// list File1 of the folder's pictures and movies) beside the View List of the show in memory,
// with its count line. The commands call the slide list logic and show what it says.
class SlideLoadFrm : public QDialog {
    Q_OBJECT
public:
    explicit SlideLoadFrm(QWidget* parent = nullptr);
    ~SlideLoadFrm() override;

    // The folder the source pane shows.
    void setSourceFolder(const QString& folder);
    QString sourceFolder() const;
    // The source files chosen, and all of them (full paths, in the list's order).
    QStringList selectedSourceFiles() const;
    QStringList allSourceFiles() const;

    // The View List's selection, as line numbers, and choosing lines.
    QVector<int> selectedLines() const;
    void selectLines(const QVector<int>& lines);
    QString countText() const;
    // The list shows the show in memory again (after it changed outside the editor).
    void refreshList();

    // Puts the View List in front, its first line chosen when none is, for the order commands.
    void arrange();

    // The commands, as the buttons and menus run them.
    void addSelected();
    void addAll();
    void removeSelected();
    void removeAll();
    void move(MoveKind kind);
    void randomize();
    void reverse();
    void checkDuplicates();
    void checkMissing(bool remove);
    // Saving: false when nothing was written (refused, cancelled).
    bool save();
    bool saveAs();
    // Asks when there are unsaved changes, then loads a show; false when nothing was loaded.
    bool load(const QString& path = QString());
    void renameShow();
    // Renames the chosen source file; slides that show it follow the new name.
    void renameFile();
    // Makes a folder in the source folder (a place for a new show) and opens it.
    void newFolder();
    // Loads one show of the favourite or the recent shows, chosen from the list.
    void loadFromList(const std::array<QString, 20>& list, bool favorites);
    void addToFavorites();
    void sourceInformation();
    // Plays the show from a line (the first by default).
    void play(int firstLine = 0);
    void dropFiles(const QStringList& files);
    // The per-slide dialogs, opened on the first selected line (the first line when none).
    void editProperties();
    void editTransitions();
    void clearTransitions();
    // Selecting lines: a run of them, or every nth from the first selected.
    void selectRange();
    // Copies pictures of the source folder elsewhere (the copy dialog, on the source folder).
    void copyImages();
    void selectEvery();
    // Descriptions: the slide description dialog on the chosen line, and clearing every text.
    void editDescriptions();
    void clearDescriptions();

    // Closing with unsaved changes goes by the save switches; false when the user stays.
    bool mayClose();

    // The title of the editor's messages.
    static QString Title(const QString& function = QString());

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void buildSource();
    void buildList();
    void buildButtons();
    void buildMenus();
    void buildSlideMenus(QMenuBar* bar);
    // The line a per-slide dialog opens on, or -1 (said why) when the list is empty.
    int editLine();
    void buildDescriptionMenu(QMenuBar* bar);
    void apply(const ListResult& result);
    void afterEdit();
    bool saveTo(const QString& path);
    // Asks for the removable medium a show lies on when it is not in; false when cancelled.
    bool mediumIsIn(const QString& path);
    // An empty list is not saved: says so and answers true.
    bool refusedEmpty();

    FolderTree* m_dirs = nullptr;  // Dir1
    QComboBox* m_folder = nullptr; // Drive1
    QListView* m_files = nullptr;  // File1
    QFileSystemModel* m_fileModel = nullptr;
    QListView* m_list = nullptr; // the View List
    SlideListModel* m_model = nullptr;
    QLabel* m_count = nullptr;
};

// Asks for a new name for a file of the source folder and renames it, refusing names no file
// may have; the new path, or empty when nothing was renamed (said why).
QString AskAndRenameFile(const QString& old, const QString& title);

// Renames the file of the show in memory after asking for the new name, refusing a show that
// is not open, not saved or changed and names no file may have; the screen saver's show follows
// the new name. True when renamed (else said why, or cancelled).
bool RenameCurrentShow();

// How the editor opens: as it was left, or with the View List in front and its first line
// chosen, ready for the order commands.
enum class EditorView { Normal, Arrange };

// Opens the editor on the show in memory (or the given show file) and keeps it until closed.
void OpenSlideShowEditor(QWidget* parent, const QString& showFile = QString(),
                         EditorView view = EditorView::Normal);

} // namespace kavori
