#include "PicturePrefetcher.h"

#include "imaging/PictureLoader.h"

#include <QFileInfo>
#include <QtConcurrent>

namespace kavori {

namespace {

bool SameFit(const ViewFit& a, const ViewFit& b)
{
    return a.area == b.area && a.stretch == b.stretch && a.enlarge == b.enlarge &&
           a.smooth == b.smooth;
}

// The picture as the window draws it for fit, made beside the decode.
PrefetchedPicture Fitted(PrefetchedPicture p, const ViewFit& fit)
{
    p.fit = fit;
    p.shown = p.picture.isNull() || fit.area.isEmpty() ? QImage() : FittedPicture(p.picture, fit);
    return p;
}

} // namespace

PicturePrefetcher::~PicturePrefetcher()
{
    for (Entry& e : m_entries)
        e.picture.waitForFinished(); // the workers read into this object's futures
}

PrefetchedPicture PicturePrefetcher::take(const QString& path)
{
    const auto it = m_entries.find(path);
    if (it == m_entries.end())
        return {};
    Entry entry = *it;
    m_entries.erase(it);
    const QFileInfo info(path);
    PrefetchedPicture picture = entry.picture.result();
    if (info.size() != entry.size || info.lastModified() != entry.modified)
        return {}; // the file changed after it was read ahead
    return picture;
}

void PicturePrefetcher::keep(const QString& path, const QImage& picture, qint64 size,
                             const QDateTime& modified)
{
    Entry e;
    PrefetchedPicture held;
    held.picture = picture;
    e.picture = QtFuture::makeReadyFuture(held);
    e.size = size;
    e.modified = modified;
    m_entries.insert(path, e); // a read of the same file still running is no longer wanted
}

void PicturePrefetcher::prefetch(const QStringList& paths, const ViewFit& fit)
{
    QHash<QString, Entry> kept;
    for (const QString& path : paths) {
        const auto held = m_entries.constFind(path);
        if (held != m_entries.constEnd()) {
            Entry e = m_entries.take(path);
            if (!SameFit(e.fit, fit)) {
                // The window changed its size or settings: the decode stands, the scaling is
                // made again after it.
                e.fit = fit;
                e.picture = e.picture.then(QtFuture::Launch::Async,
                                           [fit](PrefetchedPicture p) { return Fitted(p, fit); });
            }
            kept.insert(path, e);
            continue;
        }
        const QFileInfo info(path);
        if (!info.isFile())
            continue;
        Entry e;
        e.size = info.size();
        e.modified = info.lastModified();
        e.fit = fit;
        // The scaling runs on the same worker, so the window's paint only has to draw.
        e.picture = QtConcurrent::run([path, fit] {
            PrefetchedPicture p;
            p.picture = LoadPicture(path);
            return Fitted(p, fit);
        });
        kept.insert(path, e);
    }
    // Reads no longer wanted finish in the background; their results are dropped.
    m_entries = kept;
}

} // namespace kavori
