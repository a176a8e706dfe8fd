#pragma once

#include "fileutil/FileSearch.h"

#include <QDialog>
#include <QFutureWatcher>

#include <atomic>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class QTreeWidget;

namespace kavori {

// The find dialog of pictures and of slide shows: a name (wildcards or part of a name) and a
// folder, searched with its subfolders on a worker thread the user can cancel, with a live
// count; the hits are listed with name, folder, size and date. Open (or a double-click) and,
// for shows, Play close the dialog with the chosen file; the caller acts on it.
class frmFindFiles : public QDialog {
    Q_OBJECT
public:
    enum class Action { None, Open, Play };

    frmFindFiles(FindKind kind, const QString& folder, QWidget* parent = nullptr);
    ~frmFindFiles() override;

    // Starts a search with what the boxes say (or says why it cannot).
    void search();
    // Stops a running search; what was found so far is listed.
    void cancelSearch();
    bool searching() const { return m_searching; }
    // Waits (running events) until a running search has been shown; for tests and closing.
    void waitForSearch();

    // The hits listed, as full paths in the list's order.
    QStringList results() const;
    QString countText() const;
    void selectResult(int row);

    // Closes with the chosen hit and the action; says so when nothing is chosen.
    void choose(Action action);
    Action action() const { return m_action; }
    QString chosenFile() const { return m_chosen; }

    // Cancels a running search first.
    void reject() override;

private:
    void searchDone();
    void showCount();
    void setSearching(bool on);
    QString title() const;

    FindKind m_kind;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_folder = nullptr;
    QPushButton* m_browse = nullptr;
    QPushButton* m_find = nullptr;
    QPushButton* m_cancel = nullptr;
    QPushButton* m_open = nullptr;
    QPushButton* m_play = nullptr;
    QLabel* m_count = nullptr;
    QTreeWidget* m_list = nullptr;
    QTimer* m_tick = nullptr; // shows the live count while a search runs
    QString m_searchText;
    QString m_searchRoot;
    bool m_searching = false;
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_found{0};
    QFutureWatcher<FileSearchResult> m_watcher;
    Action m_action = Action::None;
    QString m_chosen;
};

} // namespace kavori
