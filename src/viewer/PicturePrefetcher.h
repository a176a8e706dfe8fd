#pragma once

#include "imaging/ImageFit.h"

#include <QDateTime>
#include <QFuture>
#include <QHash>
#include <QImage>
#include <QStringList>

namespace kavori {

// A picture read ahead, with the picture as the window draws it when the window's fit was known.
struct PrefetchedPicture {
    QImage picture;
    QImage shown; // FittedPicture(picture, fit); null when not made
    ViewFit fit;
};

// Reads the pictures the user is likely to open next (the neighbours in the folder) on worker
// threads, so that stepping through a folder shows each picture without waiting for its
// decode, nor for its scaling to the window. A picture is used only while its file is unchanged
// (size and time).
class PicturePrefetcher {
public:
    ~PicturePrefetcher();

    // The picture of path when it was read ahead (waiting for a read still running), else null.
    PrefetchedPicture take(const QString& path);
    // Reads these pictures ahead, each also made at its drawn size for fit when fit's area is
    // not empty; others read before are forgotten. A picture held for another fit is scaled
    // again, not read again.
    void prefetch(const QStringList& paths, const ViewFit& fit = ViewFit());
    // Holds a picture the window showed, read from path when its file had this size and time,
    // so that stepping back to it neither reads nor decodes it again. Kept while the next
    // prefetch names it, like a picture read ahead.
    void keep(const QString& path, const QImage& picture, qint64 size, const QDateTime& modified);
    // How many pictures are held or being read.
    int pending() const { return int(m_entries.size()); }

private:
    struct Entry {
        QFuture<PrefetchedPicture> picture;
        qint64 size = -1;
        QDateTime modified;
        ViewFit fit;
    };
    QHash<QString, Entry> m_entries;
};

} // namespace kavori
