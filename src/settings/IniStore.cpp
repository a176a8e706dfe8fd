#include "IniStore.h"

#include "runtime/ListInput.h"
#include "runtime/TextCodec.h"

#include <QSaveFile>

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
    QSaveFile file(path);
    file.setDirectWriteFallback(true); // a writable file in a read-only folder still saves
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(bytes);
    return file.commit();
}

} // namespace kavori
