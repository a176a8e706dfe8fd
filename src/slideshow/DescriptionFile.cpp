#include "DescriptionFile.h"

#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "runtime/Format.h"
#include "runtime/ListInput.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/TextCodec.h"
#include "settings/Settings.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <algorithm>

namespace kavori {

namespace {

const QString kHeader = QStringLiteral("Kavori Description File");
const QString kDashes = QString(30, u'-');
constexpr int kMaxRead = 10000;

struct Pair {
    QString name;
    QString text;
};

// Opens the folder's file; false (with valid false) when it is missing, valid false when the
// header is foreign.
bool openFile(const QString& folder, ListInput& in, bool& valid)
{
    valid = false;
    if (!in.open(DescriptionFilePath(folder)))
        return false;
    valid = in.next() == kHeader && in.next() == kDashes;
    return true;
}

// Every pair of the file as written, empty names included.
QList<Pair> rawPairs(ListInput& in)
{
    QList<Pair> pairs;
    while (!in.atEnd()) {
        const QString name = in.next().trimmed();
        const QString text = in.atEnd() ? QString() : in.next().trimmed();
        pairs.append({name, text});
    }
    return pairs;
}

// The folder's files as the lookup sees them: names compared without regard to case, so
// verifying and repairing never lose an entry that GetDescription still finds.
class FolderFiles {
public:
    explicit FolderFiles(const QString& folder)
    {
        const QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
        for (const QString& name : names)
            m_names.insert(name.toCaseFolded());
    }
    bool contains(const QString& name) const { return m_names.contains(name.toCaseFolded()); }

private:
    QSet<QString> m_names;
};

qsizetype entryCount(const DescriptionTable& t)
{
    const qsizetype empty = t.DescFileName.indexOf(QString());
    return empty < 0 ? t.DescFileName.size() : empty;
}

bool writeEntries(const QString& folder, const QList<Pair>& entries)
{
    QByteArray bytes = EncodeText(kHeader) + "\r\n" + EncodeText(kDashes) + "\r\n";
    for (const Pair& p : entries)
        bytes += EncodeText(p.name) + "\r\n" + EncodeText(p.text) + "\r\n";
    return WriteFileWhole(DescriptionFilePath(folder), bytes, true);
}

} // namespace

DescriptionTable& CurrentDescriptions()
{
    static DescriptionTable table;
    return table;
}

QString DescriptionFilePath(const QString& folder)
{
    return AddSlash(folder) + QStringLiteral("!Description");
}

qint32 ReadDescriptionFile(const QString& folder)
{
    return ReadDescriptionFile(folder, CurrentDescriptions());
}

qint32 ReadDescriptionFile(const QString& folder, DescriptionTable& t)
{
    t = DescriptionTable();
    ListInput in;
    bool valid = false;
    if (!openFile(folder, in, valid))
        return 0;
    if (!valid)
        return -1;
    while (!in.atEnd() && t.DescFileName.size() < kMaxRead) {
        const QString name = in.next().trimmed();
        const QString text = in.atEnd() ? QString() : in.next().trimmed();
        if (name.isEmpty())
            continue; // the next pair goes into the same slot
        t.DescFileName << name;
        t.DescText << text;
    }
    return qint32(t.DescFileName.size());
}

bool WriteDescriptionFile(const QString& folder)
{
    const DescriptionTable& t = CurrentDescriptions();
    const qsizetype count = entryCount(t);
    if (count == 0) {
        ListInput in;
        bool valid = false;
        if (openFile(folder, in, valid) && valid)
            return QFile::remove(DescriptionFilePath(folder));
        return true;
    }
    QList<Pair> entries;
    for (qsizetype i = 0; i < count; ++i)
        entries.append({t.DescFileName[i], t.DescText.value(i)});
    return writeEntries(folder, entries);
}

QString GetDescription(const QString& path)
{
    const QString folder = FolderOf(path);
    const QString name = FileNameOf(path);
    if (folder.isEmpty() || ReadDescriptionFile(folder) <= 0)
        return {};
    const DescriptionTable& t = CurrentDescriptions();
    for (qsizetype i = 0; i < t.DescFileName.size(); ++i) {
        if (t.DescFileName[i].compare(name, Qt::CaseInsensitive) == 0)
            return t.DescText[i];
    }
    return {};
}

void SetDescription(const QString& fileName, const QString& text)
{
    DescriptionTable& t = CurrentDescriptions();
    const qsizetype count = entryCount(t);
    t.DescFileName = t.DescFileName.mid(0, count);
    t.DescText = t.DescText.mid(0, count);
    for (qsizetype i = 0; i < count && i < kDescriptionSlots - 1; ++i) {
        if (t.DescFileName[i].compare(fileName, Qt::CaseInsensitive) == 0) {
            t.DescText[i] = text;
            return;
        }
    }
    if (count < kDescriptionSlots - 1) {
        t.DescFileName << fileName;
        t.DescText << text;
        return;
    }
    // The last slot takes the new entry, replacing what it held, as it always has.
    MsgBox(QStringLiteral("The description file is full.") + NewLine() + QStringLiteral("Only ") +
               Format(10000, QStringLiteral("###,###")) +
               QStringLiteral(" descriptions may be added to this file at one time..."),
           vbInformation);
    if (count < kDescriptionSlots) {
        t.DescFileName << fileName;
        t.DescText << text;
    } else {
        t.DescFileName[kDescriptionSlots - 1] = fileName;
        t.DescText[kDescriptionSlots - 1] = text;
    }
}

void RemoveDescription(const QString& fileName)
{
    DescriptionTable& t = CurrentDescriptions();
    for (qsizetype i = 0; i < entryCount(t); ++i) {
        if (t.DescFileName[i].compare(fileName, Qt::CaseInsensitive) == 0) {
            t.DescFileName.removeAt(i);
            t.DescText.removeAt(i);
            return;
        }
    }
}

QStringList DescriptionLocations()
{
    return {QStringLiteral("<Center>"),
            QStringLiteral("<Random>"),
            QStringLiteral("Left"),
            QStringLiteral("Right"),
            QStringLiteral("Top"),
            QStringLiteral("Bottom"),
            QStringLiteral("Top-Left"),
            QStringLiteral("Top-Right"),
            QStringLiteral("Bottom-Left"),
            QStringLiteral("Bottom-Right"),
            QStringLiteral("Top-Left Down"),
            QStringLiteral("Top-Right Down"),
            QStringLiteral("Bottom-Left Up"),
            QStringLiteral("Bottom-Right Up"),
            QStringLiteral("Top-Left Diagonal"),
            QStringLiteral("Top-Right Diagonal"),
            QStringLiteral("Bottom-Left Diagonal"),
            QStringLiteral("Bottom-Right Diagonal"),
            QStringLiteral("Top to Bottom"),
            QStringLiteral("Bottom to Top"),
            QStringLiteral("<Jumping>"),
            QStringLiteral("<Bouncing>")};
}

DescriptionLook DefaultDescriptionLook()
{
    const Settings& s = CurrentSettings();
    DescriptionLook look;
    look.location = s.SlideDescLoc;
    look.speed = s.SlideDescSpeed;
    look.font = s.SlideDescFont.isEmpty() ? QStringLiteral("MS Sans Serif") : s.SlideDescFont;
    look.size = s.SlideDescSize;
    look.style = s.SlideDescStyle;
    look.foreColor = s.SlideDescForeColor;
    look.useBack = s.SlideDescUseBack;
    look.backColor = s.SlideDescBackColor;
    look.border = s.SlideDescBorder;
    look.shadow = s.SlideDescShadow;
    look.shadowDistance = s.SlideDescShadDist;
    look.shadowDirection = s.SlideDescShadDir;
    look.shadowColor = s.SlideDescShadColor;
    return look;
}

void SetDefaultDescriptionLook(const DescriptionLook& l)
{
    Settings& s = CurrentSettings();
    s.SlideDescLoc = qint16(std::clamp<int>(l.location, 0, 21));
    s.SlideDescSpeed = qint16(std::clamp<int>(l.speed, 1, 10));
    s.SlideDescFont = l.font.isEmpty() ? QStringLiteral("MS Sans Serif") : l.font;
    s.SlideDescSize = qint16(std::max<int>(8, l.size));
    s.SlideDescStyle = qint16(std::clamp<int>(l.style, 0, 3));
    s.SlideDescForeColor = l.foreColor;
    s.SlideDescUseBack = l.useBack ? 1 : 0;
    s.SlideDescBackColor = l.backColor;
    s.SlideDescBorder = qint16(std::clamp<int>(l.border, 0, 2));
    s.SlideDescShadow = l.shadow ? 1 : 0;
    s.SlideDescShadDist = qint16(std::clamp<int>(l.shadowDistance, 0, 49));
    s.SlideDescShadDir = qint16(std::clamp<int>(l.shadowDirection, 0, 3));
    s.SlideDescShadColor = l.shadowColor;
}

bool SameLook(const DescriptionLook& a, const DescriptionLook& b)
{
    return a.location == b.location && a.speed == b.speed && a.font == b.font && a.size == b.size &&
           a.style == b.style && a.foreColor == b.foreColor && a.useBack == b.useBack &&
           a.backColor == b.backColor && a.border == b.border && a.shadow == b.shadow &&
           a.shadowDistance == b.shadowDistance && a.shadowDirection == b.shadowDirection &&
           a.shadowColor == b.shadowColor;
}

QString BuildDescProps(const DescriptionLook& l)
{
    if (l.custom == 0)
        return {};
    const QStringList values = {QString::number(l.custom),
                                QString::number(l.location),
                                QString::number(l.speed),
                                l.font,
                                QString::number(l.size),
                                QString::number(l.style),
                                QString::number(l.foreColor),
                                QString::number(l.useBack),
                                QString::number(l.backColor),
                                QString::number(l.border),
                                QString::number(l.shadow),
                                QString::number(l.shadowDistance),
                                QString::number(l.shadowDirection),
                                QString::number(l.shadowColor)};
    return values.join(u',');
}

DescriptionLook ParseDescProps(const QString& props)
{
    DescriptionLook look = DefaultDescriptionLook();
    if (props.isEmpty())
        return look;
    const QStringList v = props.split(u',');
    auto num16 = [&](int i, qint16& field) {
        if (i < v.size())
            field = ToInt16(v[i]).value_or(field);
    };
    auto num32 = [&](int i, qint32& field) {
        if (i < v.size())
            field = ToInt32(v[i]).value_or(field);
    };
    num16(0, look.custom);
    num16(1, look.location);
    num16(2, look.speed);
    if (v.size() > 3)
        look.font = v[3].isEmpty() ? QStringLiteral("MS Sans Serif") : v[3];
    num16(4, look.size);
    num16(5, look.style);
    num32(6, look.foreColor);
    num16(7, look.useBack);
    num32(8, look.backColor);
    num16(9, look.border);
    num16(10, look.shadow);
    num16(11, look.shadowDistance);
    num16(12, look.shadowDirection);
    num32(13, look.shadowColor);
    return look;
}

DescriptionProblems CheckDescriptionFile(const QString& folder)
{
    DescriptionProblems p;
    ListInput in;
    bool valid = false;
    if (!openFile(folder, in, valid) || !valid)
        return p;
    const FolderFiles files(folder);
    for (const Pair& pair : rawPairs(in)) {
        if (pair.name.isEmpty() && pair.text.isEmpty())
            continue;
        if (pair.name.isEmpty())
            ++p.withoutFileName;
        else if (pair.text.isEmpty())
            ++p.withoutDescription;
        if (!pair.name.isEmpty() && !files.contains(pair.name))
            ++p.missingFiles;
    }
    return p;
}

QString DescriptionReport(const DescriptionProblems& p)
{
    if (!p.any())
        return QStringLiteral("There are no problems with the selected description file...");
    auto count = [](int n) {
        return QString(QStringLiteral("  * ") + Format(n, QStringLiteral("###,###")));
    };
    QStringList lines;
    if (p.withoutFileName == 1)
        lines << QStringLiteral("  * One description without filename.");
    else if (p.withoutFileName > 1)
        lines << count(p.withoutFileName) + QStringLiteral(" descriptions without filenames.");
    if (p.withoutDescription == 1)
        lines << QStringLiteral("  * One filename without description.");
    else if (p.withoutDescription > 1)
        lines << count(p.withoutDescription) + QStringLiteral(" filenames without descriptions.");
    if (p.missingFiles == 1)
        lines << QStringLiteral("  * One filename could not be found.");
    else if (p.missingFiles > 1)
        lines << count(p.missingFiles) + QStringLiteral(" filenames could not be found.");
    return QStringLiteral("The following problem(s) were found in the selected description file:") +
           NewLine2() + lines.join(NewLine()) + NewLine2() +
           QStringLiteral("WARNING: Description text may be lost!") + NewLine2() +
           QStringLiteral("Attempt to repair these problems?");
}

bool RepairDescriptionFile(const QString& folder)
{
    ListInput in;
    bool valid = false;
    if (!openFile(folder, in, valid) || !valid)
        return false;
    const FolderFiles files(folder);
    QList<Pair> kept;
    for (const Pair& pair : rawPairs(in)) {
        if (!pair.name.isEmpty() && !pair.text.isEmpty() && files.contains(pair.name))
            kept.append(pair);
    }
    if (kept.isEmpty())
        return QFile::remove(DescriptionFilePath(folder));
    return writeEntries(folder, kept);
}

} // namespace kavori
