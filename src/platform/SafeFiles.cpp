#include "SafeFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <cstdio>
#endif

namespace kavori {

bool CopyFileOver(const QString& source, const QString& target)
{
    QFile in(source);
    if (!QFileInfo(source).isFile() || !in.open(QIODevice::ReadOnly))
        return false;
    // A link of the target's name is replaced, never written through: a copy into a folder
    // never changes a file outside it.
    if (QFileInfo(target).isSymLink() && !QFile::remove(target))
        return false;
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    QByteArray buffer(1 << 20, Qt::Uninitialized);
    for (;;) {
        const qint64 got = in.read(buffer.data(), buffer.size());
        if (got < 0) {
            out.cancelWriting();
            break;
        }
        if (got == 0)
            break;
        if (out.write(buffer.constData(), got) != got) {
            out.cancelWriting();
            break;
        }
    }
    if (!CommitWhole(out))
        return false;
    QFile::setPermissions(target, in.permissions());
    return true;
}

bool WriteFileWhole(const QString& path, const QByteArray& bytes, bool inPlaceWhenFolderIsReadOnly)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(inPlaceWhenFolderIsReadOnly);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(bytes) != bytes.size())
        file.cancelWriting();
    return CommitWhole(file);
}

bool CommitWhole(QSaveFile& file)
{
    if (!file.flush() || file.error() != QFileDevice::NoError)
        file.cancelWriting();
    return file.commit();
}

bool MoveFileOver(const QString& source, const QString& target)
{
    if (!QFileInfo(source).isFile())
        return false;
#ifdef Q_OS_UNIX
    // rename() replaces an existing target in one step; across volumes it fails and the
    // file is copied instead.
    if (std::rename(QFile::encodeName(source).constData(), QFile::encodeName(target).constData()) ==
        0)
        return true;
#else
    if (!QFileInfo::exists(target) && QFile::rename(source, target))
        return true;
#endif
    if (!CopyFileOver(source, target))
        return false;
    return QFile::remove(source);
}

} // namespace kavori
