#include "IniStore.h"

#include "platform/SafeFiles.h"
#include "runtime/ListInput.h"
#include "runtime/TextCodec.h"

#include <QFile>

namespace kavori {

namespace {
QStringList& lines()
{
    static QStringList store;
    return store;
}

QString header(const QString& section)
{
    return u'[' + section + u']';
}
} // namespace

void ClearIni()
{
    lines().clear();
}

const QStringList& IniLines()
{
    return lines();
}

int IniLineCount()
{
    return int(lines().size());
}

void LoadIniFile(const QString& path)
{
    ClearIni();
    ListInput in;
    if (!in.open(path))
        return;
    QStringList& store = lines();
    while (!in.atEnd() && store.size() < kIniMaxLines) {
        const QString item = in.next().trimmed();
        if (!item.isEmpty())
            store.append(item.left(kIniMaxLineLength));
    }
}

QString GetIniValue(const QString& section, const QString& key)
{
    if (section.isEmpty() || key.isEmpty())
        return {};
    const QString head = header(section);
    const QString prefix = key + u'=';
    bool inSection = false;
    for (const QString& line : lines()) {
        if (line.startsWith(u';'))
            continue;
        if (!inSection) {
            inSection = line == head;
            continue;
        }
        if (line.startsWith(u'['))
            return {};
        if (line.startsWith(prefix))
            return line.mid(prefix.size());
    }
    return {};
}

void SetIniValue(const QString& section, const QString& key, const QString& value)
{
    QStringList& store = lines();
    if (section.isEmpty() || key.isEmpty() || store.size() >= kIniMaxLines)
        return;
    const QString head = header(section);
    const QString prefix = key + u'=';
    const qsizetype at = store.indexOf(head);
    if (at < 0) {
        store.append(head);
        store.append(prefix + value);
        return;
    }
    qsizetype insertAt = store.size();
    for (qsizetype i = at + 1; i < store.size(); ++i) {
        if (store[i].startsWith(u'[')) {
            insertAt = i;
            break;
        }
        if (store[i].startsWith(prefix)) {
            store[i] = prefix + value;
            return;
        }
    }
    store.insert(insertAt, prefix + value);
}

bool SaveIniFile(const QString& path)
{
    QByteArray bytes;
    const QStringList& store = lines();
    for (qsizetype i = 0; i < store.size(); ++i) {
        if (i > 0 && store[i].startsWith(u'['))
            bytes += "\r\n";
        bytes += EncodeText(store[i]);
        bytes += "\r\n";
    }
    ClearIni();
    // A writable file in a read-only folder still saves.
    return WriteFileWhole(path, bytes, true);
}

namespace {

// A line's section name when it is a header ("[boot]" gives "boot"), else a null string.
QString profileSection(const QByteArray& line)
{
    const QByteArray t = line.trimmed();
    if (t.size() < 2 || !t.startsWith('[') || !t.endsWith(']'))
        return {};
    return DecodeText(t.mid(1, t.size() - 2)).trimmed();
}

bool isProfileKey(const QByteArray& line, const QString& key)
{
    const qsizetype eq = line.indexOf('=');
    if (eq < 0 || line.trimmed().startsWith(';'))
        return false;
    return DecodeText(line.left(eq)).trimmed().compare(key, Qt::CaseInsensitive) == 0;
}

} // namespace

bool WriteProfileString(const QString& path, const QString& section, const QString& key,
                        const QString& value)
{
    if (section.isEmpty() || key.isEmpty())
        return false;
    QByteArray old;
    QFile in(path);
    if (in.exists()) {
        if (!in.open(QIODevice::ReadOnly))
            return false; // unreadable: rewriting it would lose what it holds
        old = in.readAll();
        in.close();
    }
    const QByteArray eol = old.contains("\r\n") || old.isEmpty() ? "\r\n" : "\n";
    QList<QByteArray> lines = old.split('\n');
    if (old.isEmpty() || old.endsWith('\n'))
        lines.removeLast();
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }

    const QByteArray entry = EncodeText(key) + '=' + EncodeText(value);
    qsizetype sectionAt = -1;
    qsizetype lastInSection = -1;
    bool done = false;
    for (qsizetype i = 0; i < lines.size() && !done; ++i) {
        const QString name = profileSection(lines[i]);
        if (!name.isNull()) {
            if (sectionAt >= 0)
                break; // past the end of our section
            if (name.compare(section, Qt::CaseInsensitive) == 0)
                sectionAt = lastInSection = i;
            continue;
        }
        if (sectionAt < 0)
            continue;
        if (isProfileKey(lines[i], key)) {
            lines[i] = entry;
            done = true;
        } else if (!lines[i].trimmed().isEmpty()) {
            lastInSection = i;
        }
    }
    if (!done) {
        if (sectionAt >= 0) {
            lines.insert(lastInSection + 1, entry);
        } else {
            if (!lines.isEmpty() && !lines.last().trimmed().isEmpty())
                lines.append(QByteArray());
            lines.append('[' + EncodeText(section) + ']');
            lines.append(entry);
        }
    }

    QByteArray bytes;
    for (const QByteArray& line : lines)
        bytes += line + eol;
    return WriteFileWhole(path, bytes, false);
}

} // namespace kavori
