#include "RemovableMedia.h"

#include <QDir>
#include <QStringList>

namespace kavori {

QString RemovableMediumOf(const QString& path)
{
    const QStringList parts =
        QDir::cleanPath(QDir::fromNativeSeparators(path)).split(u'/', Qt::SkipEmptyParts);
    // How many folders deep the mount folder lies under each root desktops mount media at.
    int depth = 0;
    if (parts.size() >= 3 && parts[0] == QLatin1String("media"))
        depth = 3;
    else if (parts.size() >= 4 && parts[0] == QLatin1String("run") &&
             parts[1] == QLatin1String("media"))
        depth = 4;
    else if (parts.size() >= 2 && parts[0] == QLatin1String("mnt"))
        depth = 2;
    // The medium itself must hold the path: a file straight in /media is not on one.
    if (depth == 0 || parts.size() <= depth)
        return QString();
    return u'/' + parts.mid(0, depth).join(u'/');
}

QString RemovableMediumName(const QString& mediumFolder)
{
    return QDir::cleanPath(mediumFolder).section(u'/', -1);
}

} // namespace kavori
