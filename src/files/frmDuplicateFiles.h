#pragma once

#include "fileutil/DuplicateSearch.h"

#include <QDialog>
#include <QFutureWatcher>

#include <memory>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTimer;

namespace kavori {

class MainViewFrm;

// Finds media files that occur more than once on the chosen drives: by name (without regard to
// case), or, when asked, by content. The drives are walked on a worker thread while the window
// stays alive; Cancel keeps what was found. Results can be previewed, opened in the main
// window, deleted (after a question) or shown with their path.
class frmDuplicateFiles : public QDialog {
    Q_OBJECT
public:
    explicit frmDuplicateFiles(MainViewFrm* window, QWidget* parent = nullptr);
    ~frmDuplicateFiles() override;

    // The search button: starts a search, or cancels the one running.
    void find();
    bool searching() const { return m_running; }
    // Waits (for tests and closing) until a running search has ended.
    void waitForSearch();

    QStringList results() const { return m_results; }
    QString statusText() const;

    void preview();
    void open();
    void remove();
    void showPath();
    // Selects the drive rows of a type, with its message when there are none.
    void selectDrives(DriveType type);

    static QString IdleStatus();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    struct Outcome {
        QVector<QStringList> groups;
        int files = 0;
    };
    void fillDrives();
    void finished();
    void updateStatus();
    void setStatus(const QString& text);
    void showResults();
    // The selected result's row, or -1 after the message for what is missing.
    int chosenRow(const QString& nothingChosen, bool openWording);
    bool refusesWhileSearching();

    MainViewFrm* m_window;
    QListWidget* m_drives = nullptr;
    QListWidget* m_files = nullptr;
    QCheckBox* m_movies = nullptr;
    QCheckBox* m_sounds = nullptr;
    QCheckBox* m_content = nullptr;
    QPushButton* m_find = nullptr;
    QLabel* m_status = nullptr;
    QLabel* m_preview = nullptr;
    QTimer* m_statusTimer = nullptr;
    QVector<Volume> m_volumes;
    QStringList m_searchRoots;
    QStringList m_results;
    QVector<int> m_groupOf; // the group of each result row
    bool m_contentMode = false;
    bool m_running = false;
    std::shared_ptr<SearchState> m_state;
    QFutureWatcher<Outcome> m_watcher;
};

} // namespace kavori
