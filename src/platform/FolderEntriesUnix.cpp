#include "FolderEntries.h"

#include <QFile>

#include <dirent.h>
#include <sys/stat.h>

namespace kavori {

bool ForEachEntry(const QString& folder,
                  const std::function<void(const QByteArray& name, EntryKind kind)>& visit)
{
    const QByteArray path = QFile::encodeName(folder);
    DIR* dir = ::opendir(path.constData());
    if (!dir)
        return false;
    QByteArray name;
    while (const dirent* entry = ::readdir(dir)) {
        if (entry->d_name[0] == '.')
            continue;
        name = QByteArray(entry->d_name);
        unsigned char type = entry->d_type;
        if (type == DT_LNK || type == DT_UNKNOWN) {
            // Only links and file systems without types in their folders cost a look at the
            // entry itself; a link counts as what it points to, except that folders are not
            // followed.
            struct stat st {};
            const QByteArray full = path + '/' + name;
            const bool link = type == DT_LNK;
            if (::stat(full.constData(), &st) != 0)
                continue;
            if (S_ISDIR(st.st_mode))
                type = link ? DT_LNK : DT_DIR;
            else if (S_ISREG(st.st_mode))
                type = DT_REG;
        }
        if (type == DT_DIR)
            visit(name, EntryKind::Folder);
        else if (type == DT_REG)
            visit(name, EntryKind::File);
    }
    ::closedir(dir);
    return true;
}

} // namespace kavori
