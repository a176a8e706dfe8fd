#pragma once

#include "ListOrder.h"
#include "SlideShow.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace kavori {

// The sound values of the show in memory, as the sound dialog edits them: each slide's sound,
// the play list with its switches and the show-wide sound file. The dialog edits a copy and
// gives it back on OK; the sound file browser updates the show's own values when it renames or
// deletes a file.
struct ShowSounds {
    QStringList slideSounds; // SlideSound of each slide, in show order
    QStringList playList;
    bool usePlayList = false;
    bool playListRandom = false;
    QString soundFile;  // the SoundFile setting
    QString showFolder; // names without a folder are found here; empty for a new show
};

ShowSounds SoundsOfShow(const SlideShow& show);
// Gives the values back to the show and the settings. True (and the show marked changed) when
// any of them differs.
bool ApplyShowSounds(const ShowSounds& sounds, SlideShow& show);
// The sound mode after the dialog's OK: slide sounds and the play list are played in sound
// mode 3 only, so using either makes the mode 3; otherwise the mode stays as it was.
qint16 SoundModeAfterEdit(const ShowSounds& sounds, qint16 soundMode);

// The most entries the sound dialog puts in a play list (a file may hold one more).
constexpr int kMaxPlayListSounds = 1000;

// The sound files of a folder (IsSoundFile of imaging/ImageTypes.h), full paths in natural
// order.
QStringList SoundFilesIn(const QString& folder);

// A slide's sound is a file, or a number: a track of the audio CD, 0 for all of them.
bool IsCDTrackSound(const QString& sound);
QString CDTrackSound(int track);
// How a sound is listed: "All Tracks", "Track " + number, or the file's name as it stands.
QString SoundText(const QString& sound);
// The value behind a listed text (the reverse of SoundText).
QString SoundOfText(const QString& text);

// The sounds the slides use, each once, in the order first used.
QStringList SoundsInUse(const ShowSounds& sounds);

// A name typed by the user: the refusal (nothing typed, no sound extension, not found), or the
// full path (a name without a folder is taken in folder).
struct TypedSound {
    QString refusal;
    QString path;
};
TypedSound CheckTypedSound(const QString& name, const QString& folder);

// Files dropped on the list of sounds: the sound files, and whether any other file was among
// them (then the refusal is shown once).
struct DroppedSounds {
    QStringList sounds;
    bool refused = false;
};
DroppedSounds SortDroppedSounds(const QStringList& files);
QString DroppedSoundRefusal();

// Why the chosen entry of the offered list (-1: none chosen) cannot be set, or empty.
QString SoundChoiceRefusal(const QStringList& offered, int chosen);
// Sets the current slide's sound to the chosen entry of the offered list (-1: none chosen), or
// says why not.
ListResult SetSlideSound(ShowSounds& sounds, int slide, const QStringList& offered, int chosen);

// An "all" command: either a message that ends it (nothing to do, or it is already so), or a
// question to ask before doing it.
struct AllCommand {
    QString message;
    QString question;
};
AllCommand CheckSetAllSounds(const ShowSounds& sounds, const QStringList& offered, int chosen);
AllCommand CheckClearAllSounds(const ShowSounds& sounds);
// Gives the slides first..last (all when last is -1) one sound; empty clears them.
void SetSlideSounds(ShowSounds& sounds, const QString& sound, int first = 0, int last = -1);

// The play list: "There are no sounds in the play list...", "One sound file total..." or n +
// " sound files total...".
QString PlayListCountText(int count);
// Appends files, or refuses: nothing in the source, nothing chosen, or more than the limit
// (then nothing is added).
ListResult AddToPlayList(QStringList& playList, const QStringList& files, bool sourceEmpty);
ListResult RemoveFromPlayList(QStringList& playList, const QVector<int>& selection);
// The refusal of emptying an empty play list, or the question before emptying it.
AllCommand CheckRemoveAllFromPlayList(const QStringList& playList);
// Entries whose file cannot be found, and what to say about them: that none is missing, or
// the question before removing those found.
QVector<int> MissingPlayListSounds(const ShowSounds& sounds);
QString MissingPlayListText(int missing);
// The play list information: its entries, missing files, size on disk and order.
QString PlayListInformation(const ShowSounds& sounds);

// OK with the slides' own sounds chosen (not the play list) while the play list still holds
// entries asks before emptying it; this is the question, empty when none is needed.
QString PlayListClearQuestion(const ShowSounds& sounds);

// A sound file was renamed or deleted: every slide sound, play list entry and the show's sound
// file that named it follow. Returns how many values changed; deleting empties slide sounds and
// the sound file and removes play list entries.
int RenameSoundReferences(ShowSounds& sounds, const QString& oldPath, const QString& newPath);
int ForgetSoundReferences(ShowSounds& sounds, const QString& path);
QString RenamedSoundNote();
QString DeletedSoundNote();

} // namespace kavori
