#include "FolderEntries.h"

#include <QDirIterator>
#include <QFile>

namespace kavori {

bool ForEachEntry(const QString& folder,
                  const std::function<void(const QByteArray& name, EntryKind kind)>& visit)
{
    QDir dir(folder);
    if (!dir.exists())
        return false;
    QDirIterator it(folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        it.next();
        const QFileInfo info = it.fileInfo();
        if (info.isDir() && info.isSymLink())
            continue;
        visit(QFile::encodeName(it.fileName()), info.isDir() ? EntryKind::Folder : EntryKind::File);
    }
    return true;
}

} // namespace kavori
