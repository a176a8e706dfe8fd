#include "DuplicateSearch.h"

#include "platform/AppPaths.h"
#include "platform/FolderEntries.h"
#include "runtime/ParallelRun.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <map>

namespace kavori {

namespace {

// The extension of a name, upper-cased with its dot ("photo.Jpg" -> ".JPG"), or empty.
QByteArray extensionOf(const QByteArray& name)
{
    const qsizetype dot = name.lastIndexOf('.');
    return dot < 0 ? QByteArray() : name.mid(dot).toUpper();
}

using Extensions = QSet<QByteArray>;

Extensions extensionSet(const QStringList& extensions)
{
    Extensions set;
    for (const QString& e : extensions)
        set.insert(e.toUpper().toLatin1());
    return set;
}

// Walks one root folder by folder, staying on its volume, and hands each matching file on.
// Names are matched as the system stores them, so only the files wanted become strings.
// Returns false when it was cancelled or the handler asked to stop.
bool walk(const QString& root, const Extensions& extensions, SearchState& state,
          const std::function<bool(const QString&)>& onFile)
{
    const quint64 volume = VolumeIdOf(root);
    QStringList folders = {AddSlash(root)};
    while (!folders.isEmpty()) {
        const QString folder = folders.takeLast();
        QStringList below;
        bool stop = false;
        ForEachEntry(folder, [&](const QByteArray& name, EntryKind kind) {
            if (stop || (stop = state.cancel.load(std::memory_order_relaxed)))
                return;
            if (kind == EntryKind::Folder)
                below << folder + QFile::decodeName(name) + u'/';
            else if (extensions.contains(extensionOf(name)))
                stop = !onFile(folder + QFile::decodeName(name));
        });
        if (stop)
            return false;
        // Sub-folders are visited in the order listed (the stack takes them from its end).
        for (auto i = below.size(); i-- > 0;) {
            if (VolumeIdOf(below[i]) == volume)
                folders << below[i];
        }
    }
    return true;
}

QByteArray hashOf(const QString& path, qint64 limit)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (limit > 0) {
        hash.addData(file.read(limit));
    } else if (!hash.addData(&file)) {
        return {};
    }
    return hash.result();
}

// Splits each group into the sub-groups whose key agrees; keys are made on all cores. Files
// without a key (unreadable) drop out; groups of one are dropped.
QVector<QVector<int>> splitBy(const QVector<QVector<int>>& groups, const QStringList& files,
                              qint64 limit, SearchState& state)
{
    QVector<int> flat;
    for (const QVector<int>& g : groups)
        flat += g;
    QVector<QByteArray> keys(flat.size());
    const int parts = std::max(1, ParallelWidth() * 4);
    RunInParallel(parts, [&](int part) {
        for (qsizetype i = part; i < flat.size(); i += parts) {
            if (state.cancel.load(std::memory_order_relaxed))
                return;
            keys[i] = hashOf(files[flat[i]], limit);
        }
    });
    QVector<QVector<int>> out;
    qsizetype at = 0;
    for (const QVector<int>& g : groups) {
        std::map<QByteArray, QVector<int>> byKey;
        QVector<QByteArray> order;
        for (int index : g) {
            const QByteArray& key = keys[at++];
            if (key.isEmpty())
                continue;
            auto& members = byKey[key];
            if (members.isEmpty())
                order << key;
            members << index;
        }
        for (const QByteArray& key : order)
            if (byKey[key].size() > 1)
                out << byKey[key];
    }
    return out;
}

} // namespace

QString DriveTypeLabel(DriveType type)
{
    switch (type) {
    case DriveType::Removable:
        return QStringLiteral("  [Removable]");
    case DriveType::Fixed:
        return QStringLiteral("  [Fixed Disk]");
    case DriveType::Remote:
        return QStringLiteral("  [Network]");
    case DriveType::CDRom:
        return QStringLiteral("  [CD-ROM]");
    case DriveType::RamDisk:
        return QStringLiteral("  [RAM Disk]");
    case DriveType::Unknown:
        break;
    }
    return QStringLiteral("  [Unknown]");
}

bool NameGroups::add(const QString& path)
{
    if (m_fileCount >= kMaxSearchFiles)
        return false;
    ++m_fileCount;
    Seen& seen = m_byName[FileNameOf(path).toUpper()];
    if (seen.firstPath.isEmpty()) {
        seen.firstPath = path;
        return true;
    }
    if (seen.group < 0) {
        seen.group = int(m_groups.size());
        m_groups.push_back({seen.firstPath});
        ++m_resultCount;
    }
    m_groups[seen.group] << path;
    ++m_resultCount;
    return true;
}

QStringList NameGroups::results() const
{
    QStringList all;
    all.reserve(m_resultCount);
    for (const QStringList& group : m_groups)
        all += group;
    return all;
}

NameGroups SearchSameNames(const QStringList& roots, const QStringList& extensions,
                           SearchState& state)
{
    NameGroups groups;
    const Extensions wanted = extensionSet(extensions);
    for (int i = 0; i < roots.size(); ++i) {
        state.drive = i;
        const bool goOn = walk(roots[i], wanted, state, [&](const QString& path) {
            if (!groups.add(path))
                return false;
            state.files.store(groups.fileCount(), std::memory_order_relaxed);
            state.found.store(groups.resultCount(), std::memory_order_relaxed);
            if (state.afterFile)
                state.afterFile(groups.fileCount());
            return true;
        });
        if (!goOn)
            break;
    }
    return groups;
}

QStringList FindSearchFiles(const QStringList& roots, const QStringList& extensions,
                            SearchState& state)
{
    QStringList files;
    const Extensions wanted = extensionSet(extensions);
    for (int i = 0; i < roots.size(); ++i) {
        state.drive = i;
        const bool goOn = walk(roots[i], wanted, state, [&](const QString& path) {
            if (files.size() >= kMaxSearchFiles)
                return false;
            files << path;
            state.files.store(int(files.size()), std::memory_order_relaxed);
            if (state.afterFile)
                state.afterFile(int(files.size()));
            return true;
        });
        if (!goOn)
            break;
    }
    return files;
}

QVector<QStringList> GroupSameContent(const QStringList& files, SearchState& state)
{
    state.stage = 1;
    // By size first: a file whose size no other file has is unique without being read.
    QHash<qint64, QVector<int>> bySize;
    QVector<qint64> sizeOrder;
    for (int i = 0; i < files.size(); ++i) {
        const qint64 size = QFileInfo(files[i]).size();
        if (size <= 0)
            continue;
        QVector<int>& members = bySize[size];
        if (members.isEmpty())
            sizeOrder << size;
        members << i;
    }
    QVector<QVector<int>> small;
    QVector<QVector<int>> large;
    for (qint64 size : std::as_const(sizeOrder)) {
        const QVector<int>& members = bySize[size];
        if (members.size() > 1)
            (size <= 4096 ? small : large) << members;
    }
    // For files of 4 KiB or less the head is the whole file.
    QVector<QVector<int>> same = splitBy(small, files, 4096, state);
    same += splitBy(splitBy(large, files, 4096, state), files, 0, state);
    std::sort(same.begin(), same.end(),
              [](const QVector<int>& a, const QVector<int>& b) { return a.first() < b.first(); });
    QVector<QStringList> groups;
    for (const QVector<int>& g : same) {
        QStringList paths;
        for (int index : g)
            paths << files[index];
        groups << paths;
    }
    // A cancelled comparison keeps the groups it could prove.
    return groups;
}

} // namespace kavori
