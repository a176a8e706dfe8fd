#include "SlideShowFile.h"

#include "SlideShow.h"
#include "platform/AppPaths.h"
#include "platform/Display.h"
#include "platform/SafeFiles.h"
#include "platform/StartupState.h"
#include "runtime/Format.h"
#include "runtime/ListInput.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/TextCodec.h"
#include "runtime/WaitDialog.h"
#include "settings/RecentShows.h"
#include "settings/Settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <memory>

namespace kavori {

namespace {

const QString kHeader = QStringLiteral("Kavori Slide Show");
const QString kPlayListMark = QStringLiteral("<PlayList>");
// The release the different-release message names as the one running.
const char* const kRunningVersion = "3.0.0";

// A value line was missing or held text where a number belongs.
struct ReadError {};

class RecordReader {
public:
    explicit RecordReader(ListInput& in) : m_in(in) {}
    bool atEnd() const { return m_in.atEnd(); }
    QString text()
    {
        if (m_in.atEnd())
            throw ReadError();
        return m_in.next();
    }
    qint32 number()
    {
        if (m_in.atEnd())
            throw ReadError();
        const QStringView t = m_in.nextView();
        // Nearly every number a show holds is a few plain digits: read those at once, and give
        // anything else to the general reader.
        if (const std::optional<qint32> plain = plainNumber(t))
            return *plain;
        if (t.trimmed().isEmpty())
            return 0;
        const std::optional<qint32> v = ToInt32(t.toString());
        if (!v)
            throw ReadError();
        return *v;
    }
    qint16 number16() { return qint16(qBound<qint32>(-32768, number(), 32767)); }
    bool flag() { return number() != 0; }

private:
    // Up to nine digits, with a leading minus sign or not.
    static std::optional<qint32> plainNumber(QStringView t)
    {
        const bool negative = !t.isEmpty() && t.front() == u'-';
        const QStringView digits = negative ? t.mid(1) : t;
        if (digits.isEmpty() || digits.size() > 9)
            return std::nullopt;
        qint32 value = 0;
        for (const QChar c : digits) {
            if (c < u'0' || c > u'9')
                return std::nullopt;
            value = value * 10 + (c.unicode() - u'0');
        }
        return negative ? -value : value;
    }

    ListInput& m_in;
};

struct ReaderTexts {
    QString word;
    QString notValid;
    QString oldLayoutNote;
};

ReaderTexts editorTexts()
{
    const QString word = ShowWord();
    return {
        word,
        QStringLiteral("The selected file is not a valid Kavori ") + word +
            QStringLiteral(" file...") + NewLine() +
            QStringLiteral(
                "Filenames with .KAV in the last 4 positions are normally associated with Kavori files."),
        QStringLiteral("This ") + word +
            QStringLiteral(" file was created with an earlier version of Kavori.") + NewLine() +
            QStringLiteral("NOTE:") + NewLine() +
            QStringLiteral("When the file is saved, it will be stored in the new format...")};
}

ReaderTexts screenSaverTexts()
{
    const QString word = QStringLiteral("Screen Saver");
    return {
        word,
        QStringLiteral("The selected file is not a valid Kavori Screen Saver file...") + NewLine() +
            QStringLiteral(
                "Filenames with .KAV in the last 4 positions are normally associated with Kavori files."),
        QStringLiteral("This Screen Saver file was created with an earlier version of Kavori.") +
            NewLine() + QStringLiteral("NOTE:") + NewLine() +
            QStringLiteral("If the file is saved, it will be stored in the new format...")};
}

bool isNumber(const QString& s)
{
    return ParseNumber(s).has_value();
}

} // namespace

QString FindShowFile(const QString& name, const QString& showFolder)
{
    if (name.isEmpty())
        return name;
    if (!IsFullPath(name)) {
        QString beside = showFolder + name;
        // A relative name written on Windows has its folders after "\".
        if (!QFileInfo::exists(beside) && !name.contains(u'/'))
            beside = showFolder + QString(name).replace(u'\\', u'/');
        return QFileInfo::exists(beside) ? beside : QString();
    }
    if (!IsWindowsFullPath(name) && QFileInfo::exists(name))
        return name;
    const QString moved = showFolder + FileNameOf(name);
    return QFileInfo::exists(moved) ? moved : QString();
}

namespace {

void oldLayoutDefaults(Settings& s, SlideShow& show)
{
    s.ShowDescription = false;
    s.LoopSlideShow = true;
    s.AnimateGIF89 = true;
    show.UseSlideIntervals = false;
    show.ShowInfo.clear();
    s.EnableTransitions = false;
    s.ClearTransition = false;
    s.RandomTransitions = false;
    s.SlideIgnoreError = false;
    s.LMousePrev = false;
    s.RMouseNext = true;
    s.DontRestartSound = true;
    show.ShowNote.clear();
}

void readPlayList(RecordReader& r, SlideShow& show, const QString& folder)
{
    Settings& s = CurrentSettings();
    // The file keeps no switch of its own for the play list: the block is written only when
    // the switch is on, so a show that has one had it on, and saving it again keeps the list.
    s.UsePlayList = true;
    s.PlayListRandom = r.text() == QLatin1String("1");
    show.PlayListText1 = r.text();
    show.PlayListText2 = r.text();
    while (!r.atEnd()) {
        const QString line = r.text();
        if (line.isEmpty())
            continue;
        if (show.PlayList.size() >= kMaxPlayListEntries) {
            MsgBox(
                QStringLiteral("The maximum number of ") + Format(1000, QStringLiteral("###,###")) +
                    QStringLiteral(
                        " sound files has been reached, unable to add the remaining files to the Play List..."),
                vbExclamation);
            return;
        }
        const QString entry = FindShowFile(line.left(kMaxSlidePathLength), folder);
        if (!entry.isEmpty())
            show.PlayList << entry;
    }
}

enum class Layout { Old1X, Old15, Current };

bool readShow(const QString& path, const ReaderTexts& texts)
{
    ResetShow();
    SlideShow& show = CurrentShow();
    Settings& s = CurrentSettings();
    // Every slot's defaults come from the settings as they are before the file changes them.
    const Slide blank = NewSlide();
    ListInput in;
    if (!in.open(path) || in.next() != kHeader) {
        MsgBox(texts.notValid, vbExclamation);
        return false;
    }
    const QString version = in.next();
    Layout layout;
    if (version == QLatin1String("Version 1.X"))
        layout = Layout::Old1X;
    else if (version == QLatin1String("Version 1.5"))
        layout = Layout::Old15;
    else if (version == QLatin1String("Version 2.0") || version == QLatin1String("Version 3.0"))
        layout = Layout::Current;
    else {
        MsgBox(QStringLiteral("The selected ") + texts.word +
                   QStringLiteral(" file was created with a different release (") + version +
                   QStringLiteral(") of Kavori.") + NewLine() +
                   QStringLiteral("You are currently running:") + NewLine() +
                   QStringLiteral("Version: ") + QString::fromLatin1(kRunningVersion) + NewLine() +
                   QStringLiteral("Unable to open this ") + texts.word + QStringLiteral("..."),
               vbExclamation);
        return false;
    }
    if (layout != Layout::Current)
        MsgBox(texts.oldLayoutNote, vbInformation);
    // A show without a play list block does not play the play list of the one read before.
    s.UsePlayList = false;

    const QString folder = FolderOf(QFileInfo(path).absoluteFilePath());
    RecordReader r(in);
    try {
        s.SoundMode = r.number16();
        s.SoundFile = r.text();
        s.CDTrack = r.number16();
        s.SoundLoop = r.flag();
        if (layout == Layout::Current) {
            s.SlideInterval = r.number16();
            s.RandomSlides = r.flag();
            s.ShowFilenames = r.flag();
            s.ShowDescription = r.flag();
            s.LoopSlideShow = r.flag();
            s.AnimateGIF89 = r.flag();
            s.ShowToolbar = r.flag();
            show.ShowInfo = r.text();
            s.EnableTransitions = r.flag();
            s.ClearTransition = r.flag();
            s.RandomTransitions = r.flag();
            show.UseSlideIntervals = r.flag();
            const QString speed = r.text();
            const std::optional<qint16> v = ToInt16(speed);
            if (v && *v >= 0 && *v <= 6)
                s.TransitionSpeed = *v;
            const QString ignore = r.text();
            s.SlideIgnoreError = !ignore.isEmpty() && ignore != QLatin1String("0");
            const QString mouse = r.text();
            s.LMousePrev = !mouse.isEmpty() && mouse.startsWith(u'1');
            s.RMouseNext = mouse.isEmpty() || !mouse.endsWith(u'0');
            s.DontRestartSound = r.text() != QLatin1String("0");
            show.ShowNote = r.text();
        } else {
            oldLayoutDefaults(s, show);
            s.SlideInterval = r.number16();
            s.RandomSlides = r.flag();
            s.ShowFilenames = r.flag();
            if (layout == Layout::Old15) {
                s.ShowDescription = r.flag();
                s.LoopSlideShow = r.flag();
                s.AnimateGIF89 = r.flag();
            }
        }

        while (!r.atEnd()) {
            const QString file = r.text();
            if (layout == Layout::Current && file == kPlayListMark) {
                readPlayList(r, show, folder);
                break;
            }
            if (file.isEmpty())
                break;
            if (show.slides.size() >= kMaxSlideSlots) {
                const QString max = Format(30000, QStringLiteral("###,###"));
                MsgBox(layout == Layout::Current
                           ? QString(QStringLiteral("The maximum of ") + max +
                                     QStringLiteral(" slides has been reached.") + NewLine() +
                                     QStringLiteral("Any remaining images in the ") + texts.word +
                                     QStringLiteral(" file will be ignored..."))
                           : QString(QStringLiteral("The maximum of ") + max +
                                     QStringLiteral(
                                         " slides has been loaded. Any remaining images in the ") +
                                     texts.word + QStringLiteral(" file will be ignored...")),
                       vbExclamation);
                break;
            }
            Slide slide = blank;
            slide.SlideFile = file;
            if (layout == Layout::Old15) {
                slide.SlideDescription = r.text().left(kMaxDescriptionLength);
            } else if (layout == Layout::Current) {
                slide.SlideDescription = r.text().left(kMaxDescriptionLength);
                slide.SlideTransition = r.number16();
                slide.SlideSound = r.text().left(kMaxSlidePathLength);
                slide.SlideLocation = r.number16();
                slide.SlidePosX = r.number16();
                slide.SlidePosY = r.number16();
                slide.SlideEnlarge = r.number16();
                slide.SlideShrink = r.number16();
                slide.SlideDelay = r.number16();
                slide.SlideBackMode = r.number16();
                slide.SlideBackColor = r.number();
                slide.SlideTexture = r.text().left(kMaxSlidePathLength);
                slide.SlideDescProps = r.text().left(kMaxSlidePathLength);
            }
            show.slides.append(std::move(slide));
        }
    } catch (const ReadError&) {
        MsgBox(QStringLiteral("An error occurred while reading ") + texts.word +
                   QStringLiteral(" data.") + NewLine() +
                   QStringLiteral("This may not be a valid ") + texts.word +
                   QStringLiteral(" file..."),
               vbExclamation);
    }

    // Names kept beside the show are found again; missing ones become empty. A CD track
    // number is no file name and stays as it is.
    s.SoundFile = FindShowFile(s.SoundFile, folder);
    for (Slide& slide : show.slides) {
        if (!isNumber(slide.SlideSound))
            slide.SlideSound = FindShowFile(slide.SlideSound, folder);
        slide.SlideTexture = FindShowFile(slide.SlideTexture, folder);
    }

    show.path = QFileInfo(path).absoluteFilePath();
    AddRecentShow(show.path);
    show.changed = layout != Layout::Current;
    if (DisplayColorDepth() == 8 && s.EnableTransitions)
        MsgBox(
            QStringLiteral(
                "This slide show contains slide transitions, they are disabled when running in 256 color mode.") +
                NewLine() +
                QStringLiteral(
                    "Set your display properties to more than 256 colors or disable transitions to remove this message..."),
            vbInformation);
    return true;
}

// Lines are appended to one growing buffer: a show of 30,000 slides is 420,000 lines, and a
// string or two made for each of them was most of the time its writing took.
void appendQuoted(QByteArray& out, QStringView s)
{
    out += '"';
    const char16_t* p = s.utf16();
    const qsizetype n = s.size();
    qsizetype ascii = 0;
    while (ascii < n && p[ascii] < 0x80)
        ++ascii;
    if (ascii == n) {
        const qsizetype at = out.size();
        out.resize(at + n);
        char* to = out.data() + at;
        for (qsizetype i = 0; i < n; ++i)
            to[i] = char(p[i]);
    } else {
        out += EncodeText(s.toString()); // the same bytes as every other writer of our files
    }
    out += "\"\r\n";
}
void appendBare(QByteArray& out, qint64 v)
{
    char digits[24];
    char* end = digits + sizeof digits;
    char* p = end;
    quint64 magnitude = v < 0 ? 0 - quint64(v) : quint64(v);
    do {
        *--p = char('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude);
    if (v < 0)
        *--p = '-';
    out.append(p, end - p);
    out += "\r\n";
}
void appendFlag(QByteArray& out, bool b)
{
    appendBare(out, BoolValue(b));
}
QByteArray quoted(const QString& s)
{
    QByteArray b;
    appendQuoted(b, s);
    return b;
}

} // namespace

QByteArray ShowTextLine(const QString& text)
{
    return quoted(text);
}

void AppendSlideRecord(QByteArray& out, const Slide& slide, QStringView file, QStringView sound,
                       QStringView texture)
{
    appendQuoted(out, file);
    appendQuoted(out, slide.SlideDescription);
    appendBare(out, slide.SlideTransition);
    appendQuoted(out, sound);
    appendBare(out, slide.SlideLocation);
    appendBare(out, slide.SlidePosX);
    appendBare(out, slide.SlidePosY);
    appendBare(out, slide.SlideEnlarge);
    appendBare(out, slide.SlideShrink);
    appendBare(out, slide.SlideDelay);
    appendBare(out, slide.SlideBackMode);
    appendBare(out, slide.SlideBackColor);
    appendQuoted(out, texture);
    appendQuoted(out, slide.SlideDescProps);
}

QByteArray ShowHeaderBytes(const SlideShow& show, const QString& soundFile)
{
    const Settings& s = CurrentSettings();
    QByteArray b;
    b += quoted(kHeader);
    b += quoted(QStringLiteral("Version 3.0"));
    appendBare(b, s.SoundMode);
    b += quoted(soundFile);
    appendBare(b, s.CDTrack);
    appendFlag(b, s.SoundLoop);
    appendBare(b, s.SlideInterval);
    appendFlag(b, s.RandomSlides);
    appendFlag(b, s.ShowFilenames);
    appendFlag(b, s.ShowDescription);
    appendFlag(b, s.LoopSlideShow);
    appendFlag(b, s.AnimateGIF89);
    appendFlag(b, s.ShowToolbar);
    b += quoted(show.ShowInfo);
    appendFlag(b, s.EnableTransitions);
    appendFlag(b, s.ClearTransition);
    appendFlag(b, s.RandomTransitions);
    appendFlag(b, show.UseSlideIntervals);
    b += quoted(QString::number(s.TransitionSpeed));
    b += quoted(s.SlideIgnoreError ? QStringLiteral("1") : QStringLiteral("0"));
    b += quoted(QString::fromLatin1(s.LMousePrev ? "1" : "0") +
                QString::fromLatin1(s.RMouseNext ? "1" : "0"));
    appendFlag(b, s.DontRestartSound);
    b += quoted(show.ShowNote);
    return b;
}

QByteArray SlideRecordBytes(const Slide& slide, const QString& file, const QString& sound,
                            const QString& texture)
{
    QByteArray b;
    AppendSlideRecord(b, slide, file, sound, texture);
    return b;
}

bool ShowWritesPlayList(const SlideShow& show)
{
    const Settings& s = CurrentSettings();
    return s.UsePlayList && s.SoundMode == 3 && !show.PlayList.isEmpty();
}

QByteArray PlayListHeadBytes(const SlideShow& show)
{
    QByteArray b = quoted(kPlayListMark);
    b += quoted(CurrentSettings().PlayListRandom ? QStringLiteral("1") : QStringLiteral("0"));
    b += quoted(show.PlayListText1);
    b += quoted(show.PlayListText2);
    return b;
}

bool ReadSlideShow(const QString& path)
{
    return readShow(path, editorTexts());
}

QString ScreenSaverSoundNote()
{
    const Settings& s = CurrentSettings();
    const SlideShow& show = CurrentShow();
    if (s.SoundMode == 0)
        return QStringLiteral("Sound Options: (Disabled)");
    if (!CurrentStartup().WaveDevices)
        return QStringLiteral("A sound card could not be found on this system...");
    switch (s.SoundMode) {
    case 1:
        if (s.UsePlayList && !show.PlayList.isEmpty())
            return show.PlayList.size() > 1
                       ? QStringLiteral(
                             "More than one sound file and/or type is in this screen saver package...")
                       : show.PlayList.first();
        if (s.SoundFile.isEmpty())
            return QStringLiteral(
                "A sound file was not specified for this screen saver package...");
        if (!QFileInfo::exists(s.SoundFile))
            return QStringLiteral("The specified sound file could not be found...");
        return s.SoundFile;
    case 2:
        return s.CDTrack == 0 ? QStringLiteral("Play All CD Tracks...")
                              : QStringLiteral("Play CD Track ") + QString::number(s.CDTrack) +
                                    QStringLiteral("...");
    default: {
        QSet<QString> sounds;
        for (const Slide& slide : show.slides) {
            if (!slide.SlideSound.isEmpty())
                sounds.insert(slide.SlideSound.toUpper());
        }
        if (sounds.isEmpty())
            return QStringLiteral(
                "A sound file was not included with this screen saver package...");
        if (sounds.size() > 1)
            return QStringLiteral(
                "More than one sound file and/or type is in this screen saver package...");
        return *sounds.cbegin();
    }
    }
}

bool ReadScreenSaverShow(const QString& path, QString* soundNote)
{
    const bool ok = readShow(path, screenSaverTexts());
    if (ok && soundNote)
        *soundNote = ScreenSaverSoundNote();
    return ok;
}

bool WriteSlideShow(const QString& path)
{
    const SlideShow& show = CurrentShow();
    QByteArray bytes = ShowHeaderBytes(show, CurrentSettings().SoundFile);
    // About 150 bytes a slide; one allocation for the lot.
    bytes.reserve(bytes.size() + 160 * show.slides.size());
    for (const Slide& slide : show.slides)
        AppendSlideRecord(bytes, slide, slide.SlideFile, slide.SlideSound, slide.SlideTexture);
    if (ShowWritesPlayList(show)) {
        bytes += PlayListHeadBytes(show);
        for (const QString& entry : show.PlayList)
            appendQuoted(bytes, entry);
    }
    return WriteFileWhole(path, bytes, true);
}

bool IsCurrentSlideShow(const QString& path)
{
    ListInput in;
    if (!in.open(path) || in.next() != kHeader)
        return false;
    const QString version = in.next();
    return version == QLatin1String("Version 2.0") || version == QLatin1String("Version 3.0");
}

namespace {

// Names for a save into the show's folder, copying files there when asked to.
class SaveNames {
public:
    SaveNames(const QString& folder, const QString& loadedFrom, Progress& progress)
        : m_folder(folder), m_loadedFrom(loadedFrom), m_progress(progress)
    {}

    // The names below are views into the name given or, when a new name had to be made, into
    // `made`: most names are written as they are or cut, and need no string of their own.

    // A slide's picture: relative when in the folder, else copied (or written in full).
    QStringView slideFile(const QString& name, QString& made)
    {
        if (name.startsWith(m_folder, Qt::CaseInsensitive))
            return QStringView(name).mid(m_folder.size());
        if (!CurrentSettings().SaveSlides)
            return name;
        if (!name.contains(u'/'))
            return name;
        const QString source = IsFullPath(name) ? name : FolderOf(m_loadedFrom) + name;
        copy(source, m_folder + FileNameOf(source));
        made = FileNameOf(source);
        return made;
    }

    // A sound, texture or play list file; a repeat is copied once, an existing target only
    // after the question. model is set to the target after a copy.
    QStringView referredFile(QString& model, QString& made, const QString& what,
                             const QString& secondLine, bool ask = true)
    {
        if (model.isEmpty())
            return {};
        if (model.startsWith(m_folder, Qt::CaseInsensitive))
            return QStringView(model).mid(m_folder.size());
        if (!CurrentSettings().SaveSlides || !model.contains(u'/'))
            return model;
        const QString name = model;
        const QString target = m_folder + FileNameOf(name);
        if (!m_copied.contains(target.toUpper())) {
            bool copyIt = true;
            if (ask && QFileInfo::exists(target) && target.compare(name, Qt::CaseInsensitive) != 0)
                copyIt = MsgBox(what + u'"' + FileNameOf(name) +
                                    QStringLiteral("\" already exists in the slide show folder.") +
                                    NewLine() + secondLine,
                                vbYesNo + vbQuestion) == vbYes;
            if (copyIt)
                copy(name, target);
            m_copied.insert(target.toUpper());
        }
        model = target;
        made = FileNameOf(name);
        return made;
    }

    bool copiedAny() const { return m_copiedAny; }

private:
    void copy(const QString& source, const QString& target)
    {
        const QFileInfo from(source);
        const QFileInfo to(target);
        if (source.compare(target, Qt::CaseInsensitive) == 0 || !from.isFile())
            return;
        // A copy made by an earlier save is not made again.
        if (to.isFile() && to.size() == from.size() && to.lastModified() >= from.lastModified())
            return;
        m_progress.setCaption(QStringLiteral("Kavori is copying the file:") + NewLine() +
                              FileNameOf(source));
        m_progress.setValue(++m_step);
        if (CopyFileOver(source, target))
            m_copiedAny = true;
    }

    QString m_folder;
    QString m_loadedFrom;
    Progress& m_progress;
    QSet<QString> m_copied;
    bool m_copiedAny = false;

public:
    int m_step = 0;
};

int filesToCopy(const SlideShow& show)
{
    const Settings& s = CurrentSettings();
    if (!s.SaveSlides)
        return 0;
    int count = (!s.SoundFile.isEmpty() && s.SoundMode == 1) ? 1 : 0;
    for (const Slide& slide : show.slides) {
        if (s.SoundMode == 3 && !slide.SlideSound.isEmpty() && !isNumber(slide.SlideSound))
            ++count;
        if (!slide.SlideTexture.isEmpty())
            ++count;
    }
    if (ShowWritesPlayList(show))
        count += int(show.PlayList.size());
    return count;
}

} // namespace

bool SaveSlideShow(const QString& path, Progress* progress)
{
    std::unique_ptr<WaitDialog> dialog;
    if (!progress) {
        dialog = std::make_unique<WaitDialog>(AppTitle());
        progress = dialog.get();
    }
    SlideShow& show = CurrentShow();
    Settings& s = CurrentSettings();
    const QString folder = FolderOf(QFileInfo(path).absoluteFilePath());
    progress->setCaption(QStringLiteral("Kavori is saving the slide show file, please wait..."));
    progress->setMaximum(int(show.slides.size()) + filesToCopy(show) + 1);

    // Written as it goes, like the original: a cancelled save leaves what was written.
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    SaveNames names(folder, show.path, *progress);

    QString soundFile = s.SoundFile;
    if (soundFile.startsWith(folder, Qt::CaseInsensitive)) {
        soundFile = soundFile.mid(folder.size());
    } else if (s.SaveSlides && !soundFile.isEmpty()) {
        QString model = s.SoundFile;
        QString made;
        soundFile =
            names.referredFile(model, made, QStringLiteral("The sound file "), QString(), false)
                .toString();
    }
    // Written a block at a time from one buffer, so a cancelled save still leaves what was
    // written up to the last full block.
    constexpr qsizetype kBlock = 256 * 1024;
    QByteArray bytes = ShowHeaderBytes(show, soundFile);
    bytes.reserve(kBlock + 4096);
    QString madeFile, madeSound, madeTexture;
    const QString soundQuestion = QStringLiteral(
        "Do you want to replace it with the one specified in the current slide show?");
    const QString soundWhat = QStringLiteral("The sound file ");
    const QString textureWhat = QStringLiteral("The background texture file ");

    for (Slide& slide : show.slides) {
        if (progress->cancelled()) {
            file.write(bytes);
            file.close();
            MsgBox(
                QStringLiteral(
                    "Save was canceled before it could complete, slide show file may be corrupt as a result..."),
                vbExclamation);
            return false;
        }
        const QStringView written = names.slideFile(slide.SlideFile, madeFile);
        QStringView sound = slide.SlideSound;
        if (!sound.isEmpty() && !isNumber(slide.SlideSound))
            sound = names.referredFile(slide.SlideSound, madeSound, soundWhat, soundQuestion);
        const QStringView texture =
            names.referredFile(slide.SlideTexture, madeTexture, textureWhat, soundQuestion);
        AppendSlideRecord(bytes, slide, written, sound, texture);
        if (bytes.size() >= kBlock) {
            file.write(bytes);
            bytes.resize(0); // keeps its room for the next block
        }
        progress->setValue(++names.m_step);
    }
    if (ShowWritesPlayList(show)) {
        bytes += PlayListHeadBytes(show);
        for (QString& entry : show.PlayList)
            appendQuoted(
                bytes,
                names.referredFile(
                    entry, madeSound, soundWhat,
                    QStringLiteral(
                        "Do you want to replace it with the one specified in the current slide show play list?")));
    }
    file.write(bytes);
    file.close();
    progress->setValue(++names.m_step);
    show.path = QFileInfo(path).absoluteFilePath();
    show.changed = false;
    if (names.copiedAny())
        MsgBox(QStringLiteral("Kavori has finished copying files..."), vbInformation);
    return file.error() == QFile::NoError;
}

QString SlideShowFilter()
{
    return QStringLiteral("Kavori Slide Shows (*.kav *.KAV *.Kav);;All files (*)");
}

} // namespace kavori
