#pragma once

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QStringList>
#include <QVector>

namespace kavori {

// One cell's content: the picture at thumbnail size and the size of the picture it stands for.
struct Thumbnail {
    enum class State { Picture, Movie, Missing, Unreadable };
    State state = State::Unreadable;
    QImage picture;
    QSize original;
};

// The thumbnail of one file, read at thumbnail size: a file that is gone is Missing, a movie
// is not decoded, a picture is fitted to 160 x 120 (never enlarged) and drawn at exactly that
// size. Safe on any thread.
Thumbnail MakeThumbnail(const QString& path);

// Makes the thumbnails of a page on worker threads, all cores at once, the page's files before
// the ones read ahead for the next page. Each thumbnail is handed over as it is made, so the
// page fills in while the user already works with it. A file is never read twice at a time;
// a new request drops whatever the last one wanted and this one does not, and keeps only the
// files read ahead.
class ThumbnailLoader : public QObject {
    Q_OBJECT
public:
    explicit ThumbnailLoader(QObject* parent = nullptr);
    ~ThumbnailLoader() override;

    // The page's files (index = cell) and the files to read ahead. Thumbnails already made are
    // handed over before this returns.
    void request(const QStringList& page, const QStringList& ahead);
    // Stops making the page's thumbnails; the cells not made yet stay empty.
    void stop();
    // Forgets the thumbnails made, so the next request reads every file again.
    void forget();
    bool busy() const { return m_remaining > 0; }

Q_SIGNALS:
    void thumbnailReady(int cell, const kavori::Thumbnail& thumbnail);
    // Every cell of the page has its thumbnail, or stop() was called.
    void pageFinished(bool stopped);

private:
    struct Made {
        Thumbnail thumbnail;
        qint64 size = -1;
        QDateTime modified;
    };
    void start(const QString& path, int priority);
    bool wanted(const QString& path) const;
    void arrived(const QString& path, const Made& made, bool done);
    void hand(const QString& path, const Thumbnail& thumbnail);

    QStringList m_page;
    QVector<bool> m_handed;
    int m_remaining = 0;
    QHash<QString, Made> m_made;
    QSet<QString> m_inFlight;
    mutable QMutex m_mutex; // guards m_wanted, read by the workers
    QSet<QString> m_wanted;
    int m_running = 0; // workers not yet back
};

} // namespace kavori

Q_DECLARE_METATYPE(kavori::Thumbnail)
