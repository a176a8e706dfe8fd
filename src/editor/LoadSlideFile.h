#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;

namespace kavori {

// Choosing a show to load: the show files of a folder, the recent shows or the favourite
// shows, with each file's size and notes.
class LoadSlideFile : public QDialog {
    Q_OBJECT
public:
    enum Source { Folder, Recent, Favorites };
    LoadSlideFile(const QString& folder, QWidget* parent = nullptr);

    void setSource(Source source);
    void setFolder(const QString& folder);
    QStringList shows() const;
    void choose(int row);
    // Load: refused with a message when there is nothing to load or nothing chosen.
    bool accept(QString* path);

    // Shows the dialog; the chosen show, or empty.
    static QString Choose(const QString& folder, QWidget* parent);

private:
    void fill();
    void showDetails();

    QComboBox* m_source = nullptr; // cboSource
    QLineEdit* m_folder = nullptr; // txtFolder
    QListWidget* m_list = nullptr; // lstShows
    QLabel* m_size = nullptr;      // lblSize
    QLabel* m_info = nullptr;      // lblInfo
    QString m_chosen;
};

} // namespace kavori
