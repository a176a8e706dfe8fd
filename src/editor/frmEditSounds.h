#pragma once

#include "slideshow/ShowSounds.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kavori {

class FolderTree;
class SoundPreview;

// The sound dialog of the slide show editor: each slide's sound, one slide at a time with
// previous/next stepping or for all slides, and the show's play list. On the left the sounds
// the show uses (ListSounds: files and CD tracks, with a typed name, files from the sound file
// browser or dropped files added to it); in the middle a folder of sound files (Dir1, File1)
// for the play list; on the right the play list (ListPlay) with its count line. Everything is
// edited on a copy that OK gives to the show.
class frmEditSounds : public QDialog {
    Q_OBJECT
public:
    frmEditSounds(int slide, QWidget* parent = nullptr);
    ~frmEditSounds() override;

    // The slide being edited (0-based) and stepping to another.
    int slide() const { return m_slide; }
    void showSlide(int slide);
    const ShowSounds& sounds() const { return m_sounds; }

    // The list of sounds (values as the slides hold them) and choosing one (-1: none).
    QStringList offeredSounds() const { return m_offered; }
    void chooseSound(int row);
    // The source folder and its sound files (full paths); choosing some of them.
    void setSourceFolder(const QString& folder);
    QStringList sourceFiles() const;
    void selectSourceFiles(const QVector<int>& rows);
    // The play list's selection and count line.
    QVector<int> playListSelection() const;
    void selectPlayList(const QVector<int>& rows);
    QString playListCountText() const;

    // The commands, as the buttons run them.
    void setSound();
    void setAll();
    void setRange();
    void clearAll();
    void addTypedSound();
    void addCDTrack(int track);
    void browse();
    void dropSounds(const QStringList& files);
    void play();
    void addToPlayList(bool all);
    void removeFromPlayList();
    void removeAllFromPlayList();
    void movePlayList(MoveKind kind);
    void randomizePlayList();
    void reversePlayList();
    void removeMissingFromPlayList();
    void playListInformation();
    // OK: may ask before emptying the play list, then gives the sounds to the show.
    void accept() override;
    void reject() override;

    static QString Title(const QString& function = QString());

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildSounds(QWidget* pane);
    void buildSource(QWidget* pane);
    void buildPlayList(QWidget* pane);
    void refreshSounds();
    void refreshPlayList(const QVector<int>& selection = {});
    void applyPlayList(const ListResult& result);
    void offer(const QString& sound);
    int chosenSound() const;

    ShowSounds m_sounds;
    QStringList m_offered;
    int m_slide = 0;

    QLabel* m_current = nullptr;
    QListWidget* m_soundList = nullptr; // ListSounds
    QLineEdit* m_typed = nullptr;
    QComboBox* m_cdTrack = nullptr;
    QPushButton* m_play = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    SoundPreview* m_preview = nullptr;
    FolderTree* m_dirs = nullptr;
    QListWidget* m_files = nullptr;
    QString m_folder;
    QListWidget* m_playList = nullptr; // ListPlay
    QLabel* m_playCount = nullptr;
    QRadioButton* m_useSlides = nullptr;
    QRadioButton* m_usePlayList = nullptr;
    QCheckBox* m_random = nullptr;
};

// Opens the sound dialog on a slide of the show in memory. True when OK changed the show.
bool EditSlideSounds(QWidget* parent, int slide);
// The editor's "clear all sounds": the already-set message, or the question and then clearing.
// True when the show changed.
bool ClearSlideSounds(const QString& title);

} // namespace kavori
