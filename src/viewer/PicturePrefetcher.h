#pragma once

#include <QDateTime>
#include <QFuture>
#include <QHash>
#include <QImage>
#include <QStringList>

namespace kavori {

// Reads the pictures the user is likely to open next (the neighbours in the folder) on worker
// threads, so that stepping through a folder shows each picture without waiting for its
// decode. A picture is used only while its file is unchanged (size and time).
class PicturePrefetcher {
public:
    ~PicturePrefetcher();

    // The picture of path when it was read ahead (waiting for a read still running), else null.
    QImage take(const QString& path);
    // Reads these pictures ahead; others read before are forgotten.
    void prefetch(const QStringList& paths);
    // How many pictures are held or being read.
    int pending() const { return int(m_entries.size()); }

private:
    struct Entry {
        QFuture<QImage> picture;
        qint64 size = -1;
        QDateTime modified;
    };
    QHash<QString, Entry> m_entries;
};

} // namespace kavori
