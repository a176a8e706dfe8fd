#include "ShowSounds.h"

#include "SlideShowFile.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace kavori {

namespace {

QString noSound()
{
    return QStringLiteral("No Sound");
}

QString alreadyAll(const QString& what)
{
    return QStringLiteral("All slides are already set to ") + what + QStringLiteral("...");
}

// Where a sound value of the show is on disk: names without a folder lie beside the show.
QString fullPathOf(const ShowSounds& sounds, const QString& name)
{
    if (name.isEmpty() || IsFullPath(name) || sounds.showFolder.isEmpty())
        return QDir::cleanPath(name);
    return QDir::cleanPath(sounds.showFolder + name);
}

bool names(const ShowSounds& sounds, const QString& value, const QString& path)
{
    return !value.isEmpty() && !IsCDTrackSound(value) && fullPathOf(sounds, value) == path;
}

} // namespace

ShowSounds SoundsOfShow(const SlideShow& show)
{
    const Settings& s = CurrentSettings();
    ShowSounds sounds;
    sounds.slideSounds.reserve(show.slides.size());
    for (const Slide& slide : show.slides)
        sounds.slideSounds << slide.SlideSound;
    sounds.playList = show.PlayList;
    sounds.usePlayList = s.UsePlayList;
    sounds.playListRandom = s.PlayListRandom;
    sounds.soundFile = s.SoundFile;
    sounds.showFolder = show.path.isEmpty() ? QString() : FolderOf(show.path);
    return sounds;
}

bool ApplyShowSounds(const ShowSounds& sounds, SlideShow& show)
{
    Settings& s = CurrentSettings();
    bool changed = false;
    const int count = int(std::min(show.slides.size(), sounds.slideSounds.size()));
    for (int i = 0; i < count; ++i) {
        const QString sound = sounds.slideSounds[i].left(kMaxSlidePathLength);
        if (show.slides[i].SlideSound != sound) {
            show.slides[i].SlideSound = sound;
            changed = true;
        }
    }
    if (show.PlayList != sounds.playList || s.UsePlayList != sounds.usePlayList ||
        s.PlayListRandom != sounds.playListRandom || s.SoundFile != sounds.soundFile)
        changed = true;
    show.PlayList = sounds.playList;
    s.UsePlayList = sounds.usePlayList;
    s.PlayListRandom = sounds.playListRandom;
    s.SoundFile = sounds.soundFile;
    if (changed)
        show.changed = true;
    return changed;
}

qint16 SoundModeAfterEdit(const ShowSounds& sounds, qint16 soundMode)
{
    if (sounds.usePlayList && !sounds.playList.isEmpty())
        return 3;
    for (const QString& sound : sounds.slideSounds)
        if (!sound.isEmpty())
            return 3;
    return soundMode;
}

QStringList SoundFilesIn(const QString& folder)
{
    const QString base = AddSlash(folder);
    QStringList files;
    for (const QString& name : QDir(base).entryList(QDir::Files | QDir::Hidden))
        if (IsSoundFile(name))
            files << base + name;
    QCollator collator(QLocale(QLocale::English, QLocale::UnitedStates));
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(files.begin(), files.end(),
              [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
    return files;
}

bool IsCDTrackSound(const QString& sound)
{
    bool number = false;
    sound.trimmed().toInt(&number);
    return number;
}

QString CDTrackSound(int track)
{
    return QString::number(std::max(0, track));
}

QString SoundText(const QString& sound)
{
    if (!IsCDTrackSound(sound))
        return sound;
    const int track = sound.trimmed().toInt();
    return track <= 0 ? QStringLiteral("All Tracks")
                      : QStringLiteral("Track ") + QString::number(track);
}

QString SoundOfText(const QString& text)
{
    if (text == QLatin1String("All Tracks"))
        return CDTrackSound(0);
    if (text.startsWith(QLatin1String("Track "))) {
        bool number = false;
        const int track = text.mid(6).toInt(&number);
        if (number)
            return CDTrackSound(track);
    }
    return text;
}

QStringList SoundsInUse(const ShowSounds& sounds)
{
    QStringList used;
    QSet<QString> seen;
    for (const QString& sound : sounds.slideSounds) {
        if (sound.isEmpty() || seen.contains(sound))
            continue;
        seen.insert(sound);
        used << sound;
    }
    return used;
}

TypedSound CheckTypedSound(const QString& name, const QString& folder)
{
    TypedSound typed;
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty()) {
        typed.refusal = QStringLiteral("You need to specify the sound file to play first...");
        return typed;
    }
    // Checked before any look-up: a name without a sound type's extension is never searched.
    if (!IsSoundFile(trimmed)) {
        typed.refusal =
            QStringLiteral("An extension, such as .WAV, was not found in the specified filename.") +
            NewLine2() + QStringLiteral("Specify a valid sound file type and then try again...");
        return typed;
    }
    const QString path =
        IsFullPath(trimmed) || folder.isEmpty() ? trimmed : AddSlash(folder) + trimmed;
    if (!QFileInfo(path).isFile()) {
        typed.refusal = QStringLiteral("The specified sound file could not be found.") +
                        NewLine2() + QStringLiteral("Correct the filename and then try again...");
        return typed;
    }
    typed.path = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    return typed;
}

DroppedSounds SortDroppedSounds(const QStringList& files)
{
    DroppedSounds dropped;
    for (const QString& file : files) {
        if (IsSoundFile(file) && QFileInfo(file).isFile())
            dropped.sounds << file;
        else
            dropped.refused = true;
    }
    return dropped;
}

QString DroppedSoundRefusal()
{
    return QStringLiteral("A file that was dropped into the list of sounds is not a valid sound "
                          "file.");
}

QString SoundChoiceRefusal(const QStringList& offered, int chosen)
{
    if (offered.isEmpty())
        return QStringLiteral(
            "There are no sound files in the current slide show, nothing to set...");
    if (chosen < 0 || chosen >= offered.size())
        return QStringLiteral("Select a file from the list of sounds and then try again...");
    return {};
}

ListResult SetSlideSound(ShowSounds& sounds, int slide, const QStringList& offered, int chosen)
{
    ListResult result;
    result.message = SoundChoiceRefusal(offered, chosen);
    if (result.message.isEmpty() && (slide < 0 || slide >= sounds.slideSounds.size()))
        result.message =
            QStringLiteral("Select a file from the list of sounds and then try again...");
    if (!result.message.isEmpty())
        return result;
    if (sounds.slideSounds[slide] == offered[chosen]) {
        result.message =
            QStringLiteral("The current slide is already set to the selected sound...");
        return result;
    }
    sounds.slideSounds[slide] = offered[chosen];
    result.changed = true;
    return result;
}

AllCommand CheckSetAllSounds(const ShowSounds& sounds, const QStringList& offered, int chosen)
{
    AllCommand command;
    if (offered.isEmpty()) {
        command.message = QStringLiteral("No sounds have been specified for this slide show, "
                                         "unable to set all to the selected sound...");
        return command;
    }
    if (chosen < 0 || chosen >= offered.size()) {
        command.message =
            QStringLiteral("Select a file from the list of sounds and then try again...");
        return command;
    }
    const QString& sound = offered[chosen];
    if (std::all_of(sounds.slideSounds.begin(), sounds.slideSounds.end(),
                    [&](const QString& s) { return s == sound; })) {
        command.message = alreadyAll(SoundText(sound));
        return command;
    }
    if (IsCDTrackSound(sound))
        command.question = QStringLiteral("Set all of the slides in your slide show to ") +
                           SoundText(sound) + QStringLiteral(" on a CD Audio disk?");
    else
        command.question =
            QStringLiteral("Set all of the slides in your slide show to the following sound?") +
            NewLine2() + sound;
    return command;
}

AllCommand CheckClearAllSounds(const ShowSounds& sounds)
{
    AllCommand command;
    if (std::all_of(sounds.slideSounds.begin(), sounds.slideSounds.end(),
                    [](const QString& s) { return s.isEmpty(); }))
        command.message = alreadyAll(noSound());
    else
        command.question = QStringLiteral("You are about to clear ALL of the sound settings for "
                                          "this slide show.") +
                           NewLine2() + QStringLiteral("Are you sure?");
    return command;
}

void SetSlideSounds(ShowSounds& sounds, const QString& sound, int first, int last)
{
    const int count = int(sounds.slideSounds.size());
    if (last < 0 || last >= count)
        last = count - 1;
    for (int i = std::max(0, first); i <= last; ++i)
        sounds.slideSounds[i] = sound;
}

QString PlayListCountText(int count)
{
    if (count == 0)
        return QStringLiteral("There are no sounds in the play list...");
    if (count == 1)
        return QStringLiteral("One sound file total...");
    return Format(count, QStringLiteral("###,##0")) + QStringLiteral(" sound files total...");
}

ListResult AddToPlayList(QStringList& playList, const QStringList& files, bool sourceEmpty)
{
    ListResult result;
    if (sourceEmpty) {
        result.message =
            QStringLiteral("There are no sound files in the selected directory to add...");
        return result;
    }
    if (files.isEmpty()) {
        result.message = QStringLiteral("No sound files are selected, nothing to add...");
        return result;
    }
    if (playList.size() + files.size() > kMaxPlayListSounds) {
        result.message = QStringLiteral("You can only have ") +
                         Format(kMaxPlayListSounds, QStringLiteral("###,##0")) +
                         QStringLiteral(" sound files in a Play List...");
        return result;
    }
    for (const QString& file : files) {
        result.selection << int(playList.size());
        playList << file;
    }
    result.changed = true;
    return result;
}

ListResult RemoveFromPlayList(QStringList& playList, const QVector<int>& selection)
{
    ListResult result;
    if (playList.isEmpty()) {
        result.message = QStringLiteral("There are no sound files in the Play List to remove...");
        return result;
    }
    const QVector<int> lines = SortedLines(selection, int(playList.size()));
    if (lines.isEmpty()) {
        result.message =
            QStringLiteral("No sound files are selected in the Play List, nothing to remove...");
        return result;
    }
    for (auto it = lines.crbegin(); it != lines.crend(); ++it)
        playList.removeAt(*it);
    if (!playList.isEmpty())
        result.selection << std::min(lines.first(), int(playList.size()) - 1);
    result.changed = true;
    return result;
}

AllCommand CheckRemoveAllFromPlayList(const QStringList& playList)
{
    AllCommand command;
    if (playList.isEmpty())
        command.message = QStringLiteral("There are no sound files in the Play List to remove...");
    else
        command.question = QStringLiteral("Remove all of the sound files from the Play List?");
    return command;
}

QVector<int> MissingPlayListSounds(const ShowSounds& sounds)
{
    QVector<int> missing;
    for (int i = 0; i < sounds.playList.size(); ++i)
        if (!QFileInfo(fullPathOf(sounds, sounds.playList[i])).isFile())
            missing << i;
    return missing;
}

QString MissingPlayListText(int missing)
{
    if (missing == 0)
        return QStringLiteral("All of the sounds in the current Play List could be found, there "
                              "are no missing files to remove.");
    if (missing == 1)
        return QStringLiteral("One sound file is missing and has been selected in the Play List.") +
               NewLine2() + QStringLiteral("Remove missing file from the Play List?");
    return Format(missing, QStringLiteral("###,##0")) +
           QStringLiteral(" sound files are missing and have been selected in the Play List.") +
           NewLine2() + QStringLiteral("Remove missing files from the Play List?");
}

QString PlayListInformation(const ShowSounds& sounds)
{
    qint64 bytes = 0;
    int missing = 0;
    for (const QString& entry : sounds.playList) {
        const QFileInfo info(fullPathOf(sounds, entry));
        if (info.isFile())
            bytes += info.size();
        else
            ++missing;
    }
    return QStringLiteral("Number of sound files = ") +
           Format(int(sounds.playList.size()), QStringLiteral("###,##0")) + NewLine() +
           QStringLiteral("Number of missing files = ") +
           Format(missing, QStringLiteral("###,##0")) + NewLine() +
           QStringLiteral("Total file size = ") + Format(bytes, QStringLiteral("###,###,##0")) +
           QStringLiteral(" bytes") + NewLine2() +
           (sounds.playListRandom ? QStringLiteral("The sounds play in random order.")
                                  : QStringLiteral("The sounds play in the order listed."));
}

QString PlayListClearQuestion(const ShowSounds& sounds)
{
    // Asked only when the slides' own sounds are chosen and entries would be dropped: with the
    // play list in use, or with nothing to lose, OK goes through without a question.
    if (sounds.usePlayList || sounds.playList.isEmpty())
        return {};
    const QString q = QStringLiteral("\"");
    return QStringLiteral("The specified ") + q + QStringLiteral("Play List") + q +
           QStringLiteral(" will be cleared if you choose to use the ") + q +
           QStringLiteral("Slide Interval") + q + QStringLiteral(" setting now.") + NewLine2() +
           QStringLiteral("Are you sure you want to continue?");
}

int RenameSoundReferences(ShowSounds& sounds, const QString& oldPath, const QString& newPath)
{
    const QString from = QDir::cleanPath(oldPath);
    int count = 0;
    auto follow = [&](QString& value) {
        if (names(sounds, value, from)) {
            value = newPath;
            ++count;
        }
    };
    for (QString& sound : sounds.slideSounds)
        follow(sound);
    for (QString& entry : sounds.playList)
        follow(entry);
    follow(sounds.soundFile);
    return count;
}

int ForgetSoundReferences(ShowSounds& sounds, const QString& path)
{
    const QString gone = QDir::cleanPath(path);
    int count = 0;
    for (QString& sound : sounds.slideSounds) {
        if (names(sounds, sound, gone)) {
            sound.clear();
            ++count;
        }
    }
    const qsizetype before = sounds.playList.size();
    sounds.playList.removeIf([&](const QString& entry) { return names(sounds, entry, gone); });
    count += int(before - sounds.playList.size());
    if (names(sounds, sounds.soundFile, gone)) {
        sounds.soundFile.clear();
        ++count;
    }
    return count;
}

QString RenamedSoundNote()
{
    return QStringLiteral("The old filename was in the current slide show, the entry was updated "
                          "as a result...");
}

QString DeletedSoundNote()
{
    return QStringLiteral("The deleted file was in the current slide show, the entry was updated "
                          "as a result...");
}

} // namespace kavori
