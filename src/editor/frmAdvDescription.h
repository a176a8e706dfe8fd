#pragma once

#include "slideshow/DescriptionFolders.h"

#include <QDialog>
#include <QFutureWatcher>

#include <atomic>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeWidget;

namespace kavori {

// The advanced description dialog: the description files of folders. It lists them (a
// folder's own, or those a search of a folder tree finds, on a worker thread that the user can
// cancel), shows the entries of the chosen file, and creates, adds, edits, removes, deletes,
// details and verifies.
class frmAdvDescription : public QDialog {
    Q_OBJECT
public:
    explicit frmAdvDescription(const QString& folder = QString(), QWidget* parent = nullptr);
    ~frmAdvDescription() override;

    // The list: a folder's own description file.
    void listFolder(const QString& folder);
    QStringList files() const;
    QString heading() const;
    QString hint() const;
    void selectFile(int row);
    // The entries of the chosen file, as "name" and "text" rows.
    int entryCount() const;
    void selectEntry(int row);

    // Asks, then searches where the drive box says for description files or the search text.
    // While it runs the same command cancels it.
    void search();
    bool searching() const { return m_searching; }

    void createFile();
    void addDescription();
    void editDescription();
    void removeDescription();
    void deleteFiles();
    void details();
    void verify();

    // Refused while a search runs.
    void reject() override;

    static void Open(const QString& folder, QWidget* parent);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void showFiles(const QStringList& files);
    void showEntries();
    QString currentFile() const;
    // Adds a description to a folder's file through the pick and edit dialogs, or says why not.
    void describeIn(const QString& folder);
    void searchDone();
    bool refuseWhileSearching();

    QComboBox* m_drive = nullptr;
    QLineEdit* m_text = nullptr;
    QPushButton* m_search = nullptr;
    QLabel* m_heading = nullptr;
    QListWidget* m_files = nullptr;
    QLabel* m_hint = nullptr;
    QTreeWidget* m_entries = nullptr;
    QList<QPushButton*> m_commands; // idle while a search runs
    QString m_searchText;
    bool m_searching = false; // until its results are shown
    std::atomic<bool> m_cancel{false};
    QFutureWatcher<DescriptionSearch> m_watcher;
};

} // namespace kavori
