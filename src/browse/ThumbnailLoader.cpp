#include "ThumbnailLoader.h"

#include "ThumbnailPages.h"
#include "imaging/ImageTypes.h"
#include "imaging/PictureLoader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QMutexLocker>
#include <QPainter>
#include <QThread>
#include <QThreadPool>

namespace kavori {

Thumbnail MakeThumbnail(const QString& path)
{
    Thumbnail t;
    if (!QFileInfo(path).isFile()) {
        t.state = Thumbnail::State::Missing;
        return t;
    }
    if (IsMovieFile(path)) {
        t.state = Thumbnail::State::Movie;
        return t;
    }
    // The header gives the size, so the decode can stop at the size the cell needs.
    QSize original = PictureSize(path);
    QImage picture = LoadPicture(path, original.isValid() ? ThumbnailFit(original)
                                                          : QSize(kThumbWidth, kThumbHeight));
    if (picture.isNull())
        return t;
    if (!original.isValid())
        original = picture.size();
    const QSize fit = ThumbnailFit(original);
    if (picture.size() != fit)
        picture = picture.scaled(fit, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    t.state = Thumbnail::State::Picture;
    t.picture = picture;
    t.original = original;
    return t;
}

ThumbnailLoader::ThumbnailLoader(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<kavori::Thumbnail>();
}

ThumbnailLoader::~ThumbnailLoader()
{
    {
        QMutexLocker lock(&m_mutex);
        m_wanted.clear();
    }
    // The workers report back to this object: wait until none is left.
    while (m_running > 0) {
        QThreadPool::globalInstance()->waitForDone(50);
        QCoreApplication::sendPostedEvents(this);
    }
}

bool ThumbnailLoader::wanted(const QString& path) const
{
    QMutexLocker lock(&m_mutex);
    return m_wanted.contains(path);
}

void ThumbnailLoader::request(const QStringList& page, const QStringList& ahead)
{
    {
        QMutexLocker lock(&m_mutex);
        m_wanted = QSet<QString>(page.begin(), page.end());
        for (const QString& p : ahead)
            m_wanted.insert(p);
    }
    for (auto it = m_made.begin(); it != m_made.end();) {
        if (wanted(it.key()))
            ++it;
        else
            it = m_made.erase(it);
    }
    m_page = page;
    m_handed = QVector<bool>(page.size(), false);
    m_remaining = int(page.size());
    for (const QString& path : page) {
        const auto made = m_made.constFind(path);
        if (made != m_made.constEnd()) {
            const QFileInfo info(path);
            if (info.size() == made->size && info.lastModified() == made->modified) {
                hand(path, made->thumbnail);
                continue;
            }
            m_made.remove(path); // the file changed since it was read ahead
        }
        start(path, 1);
    }
    for (const QString& path : ahead) {
        if (!m_made.contains(path))
            start(path, 0);
    }
    if (page.isEmpty())
        Q_EMIT pageFinished(false);
}

void ThumbnailLoader::start(const QString& path, int priority)
{
    if (m_inFlight.contains(path))
        return;
    m_inFlight.insert(path);
    ++m_running;
    // Workers share the program's pool: the JPEG decoder's own parallel parts then find no
    // free thread and run inline, one file per core.
    QThreadPool::globalInstance()->start(
        [this, path] {
            Made made;
            const bool useful = wanted(path);
            if (useful) {
                const QFileInfo info(path);
                made.size = info.size();
                made.modified = info.lastModified();
                made.thumbnail = MakeThumbnail(path);
            }
            QMetaObject::invokeMethod(
                this, [this, path, made, useful] { arrived(path, made, useful); },
                Qt::QueuedConnection);
        },
        priority);
}

void ThumbnailLoader::arrived(const QString& path, const Made& made, bool done)
{
    --m_running;
    m_inFlight.remove(path);
    if (!wanted(path))
        return;
    if (!done) { // skipped while unwanted, wanted again since
        start(path, m_page.contains(path) ? 1 : 0);
        return;
    }
    m_made.insert(path, made);
    hand(path, made.thumbnail);
}

void ThumbnailLoader::hand(const QString& path, const Thumbnail& thumbnail)
{
    for (int cell = 0; cell < m_page.size(); ++cell) {
        if (m_page[cell] != path || m_handed[cell])
            continue;
        m_handed[cell] = true;
        --m_remaining;
        Q_EMIT thumbnailReady(cell, thumbnail);
        if (m_remaining == 0)
            Q_EMIT pageFinished(false);
    }
}

void ThumbnailLoader::stop()
{
    if (m_remaining == 0)
        return;
    {
        QMutexLocker lock(&m_mutex);
        for (int cell = 0; cell < m_page.size(); ++cell) {
            if (!m_handed[cell])
                m_wanted.remove(m_page[cell]);
        }
    }
    m_remaining = 0;
    std::fill(m_handed.begin(), m_handed.end(), true);
    Q_EMIT pageFinished(true);
}

void ThumbnailLoader::forget()
{
    m_made.clear();
}

} // namespace kavori
