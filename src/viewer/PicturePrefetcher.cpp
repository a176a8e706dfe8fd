#include "PicturePrefetcher.h"

#include "imaging/PictureLoader.h"

#include <QFileInfo>
#include <QtConcurrent>

namespace kavori {

PicturePrefetcher::~PicturePrefetcher()
{
    for (Entry& e : m_entries)
        e.picture.waitForFinished(); // the workers read into this object's futures
}

QImage PicturePrefetcher::take(const QString& path)
{
    const auto it = m_entries.find(path);
    if (it == m_entries.end())
        return {};
    Entry entry = *it;
    m_entries.erase(it);
    const QFileInfo info(path);
    const QImage picture = entry.picture.result();
    if (info.size() != entry.size || info.lastModified() != entry.modified)
        return {}; // the file changed after it was read ahead
    return picture;
}

void PicturePrefetcher::prefetch(const QStringList& paths)
{
    QHash<QString, Entry> kept;
    for (const QString& path : paths) {
        if (m_entries.contains(path)) {
            kept.insert(path, m_entries.take(path));
            continue;
        }
        const QFileInfo info(path);
        if (!info.isFile())
            continue;
        Entry e;
        e.size = info.size();
        e.modified = info.lastModified();
        e.picture = QtConcurrent::run([path] { return LoadPicture(path); });
        kept.insert(path, e);
    }
    // Reads no longer wanted finish in the background; their results are dropped.
    m_entries = kept;
}

} // namespace kavori
