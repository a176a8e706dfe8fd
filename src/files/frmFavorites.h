#pragma once

#include <QDialog>

class QLabel;
class QListWidget;

namespace kavori {

// Edits the favourite files (pictures and folders) and the favourite folder. OK keeps the
// changes; Open closes the dialog with the chosen entry to be opened.
class frmFavorites : public QDialog {
    Q_OBJECT
public:
    explicit frmFavorites(QWidget* parent = nullptr);

    QListWidget* list() const { return m_list; }
    // The entry Open chose; empty otherwise.
    QString chosen() const { return m_chosen; }

    void addFile();
    void addFolder();
    void removeSelected();
    void moveSelected(int by);
    void chooseFavoriteFolder();
    void save();

private:
    void addEntry(const QString& path);
    QStringList entries() const;

    QListWidget* m_list = nullptr;
    QLabel* m_folder = nullptr;
    QString m_favoriteFolder;
    QString m_chosen;
};

} // namespace kavori
