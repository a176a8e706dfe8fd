#pragma once

#include <QDialog>
#include <QStringList>

class QLabel;
class QListWidget;
class QPushButton;

namespace kavori {

class FolderTree;
class SoundPreview;

// The sound file browser: a folder tree (Dir1) and the sound files of the chosen folder (File1),
// to pick one file for the show's sound or a slide. The file can be played (CmdPlay), and
// renamed, deleted, copied or moved; the show in memory and the SoundFile setting follow a file
// that is renamed, moved or deleted.
class BrowseWavFrm : public QDialog {
    Q_OBJECT
public:
    // Opens in folder, else in the last sound folder, else in the bonus sounds.
    explicit BrowseWavFrm(QWidget* parent = nullptr, const QString& folder = QString());
    ~BrowseWavFrm() override;

    void setFolder(const QString& folder);
    QString folder() const;
    // The files listed (full paths), choosing one, and the one chosen.
    QStringList files() const;
    void selectFile(const QString& path);
    QString selectedFile() const;

    // The commands, as the buttons run them.
    void play();
    void soundFolder();
    void information();
    void renameFile();
    void deleteFile();
    void copyFile(bool move);
    // OK: refused until a file is chosen; the folder is remembered for next time.
    void accept() override;
    void reject() override;

    // What the information command says about a sound file.
    static QString SoundFileInformation(const QString& path);
    static QString Title(const QString& function = QString());

Q_SIGNALS:
    // A file was renamed or moved, or deleted (after the show in memory followed it).
    void soundRenamed(const QString& oldPath, const QString& newPath);
    void soundDeleted(const QString& path);

private:
    void refreshFiles();
    // Tells the refusal when no file is chosen; the chosen file otherwise.
    QString chosenOrRefuse(const QString& title);

    FolderTree* m_dirs = nullptr;
    QLabel* m_folderLabel = nullptr;
    QListWidget* m_files = nullptr;
    QPushButton* m_play = nullptr;
    SoundPreview* m_preview = nullptr;
    QString m_folder;
};

} // namespace kavori
