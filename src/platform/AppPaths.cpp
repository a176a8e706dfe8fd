#include "AppPaths.h"

#include "SafeFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace kavori {

QString PathSeparator()
{
    return QStringLiteral("/");
}

QString AddSlash(const QString& folder)
{
    if (folder.endsWith(u'/'))
        return folder;
    return folder + u'/';
}

QString AppPath()
{
    const QString home = qEnvironmentVariable("KAVORI_HOME");
    if (!home.isEmpty())
        return AddSlash(QDir::cleanPath(QDir(home).absolutePath()));
    return AddSlash(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)) +
           QStringLiteral("Kavori/");
}

namespace {
bool sameBytes(const QString& a, const QString& b)
{
    QFile x(a);
    QFile y(b);
    if (x.size() != y.size() || !x.open(QIODevice::ReadOnly) || !y.open(QIODevice::ReadOnly))
        return false;
    return x.readAll() == y.readAll();
}
} // namespace

bool EnsureAppHome()
{
    const QString home = AppPath();
    QDir dir;
    if (!dir.mkpath(home))
        return false;
    for (const char* folder : {"Slides", "Bonus/Textures", "Bonus/Sounds"})
        dir.mkpath(PathNoCase(home, QString::fromLatin1(folder)));

    // Everything under the built-in ":/home" goes to the same place in the program's folder.
    QDirIterator it(QStringLiteral(":/home"), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString relative = source.mid(QStringLiteral(":/home/").size());
        const QString target = PathNoCase(home, relative);
        if (QFileInfo::exists(target)) {
            // The manual is the program's own, not the user's: a newer program brings its pages.
            if (relative.startsWith(QStringLiteral("Help/")) && !sameBytes(source, target))
                CopyFileOver(source, target);
            continue;
        }
        dir.mkpath(QFileInfo(target).absolutePath());
        if (QFile::copy(source, target))
            QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                              QFile::ReadOther);
    }
    return QFileInfo(home).isDir();
}

QString TempPath()
{
    return AddSlash(QDir::tempPath());
}

bool IsWindowsFullPath(const QString& path)
{
    const bool drive = path.size() >= 2 && path[1] == u':' && path[0].isLetter();
    return drive || path.startsWith(u'\\');
}

bool IsFullPath(const QString& path)
{
    return !path.isEmpty() && (QDir::isAbsolutePath(path) || IsWindowsFullPath(path));
}

namespace {
// A name holding a "/" is this system's, where "\" may be part of a file name; a name without
// one that holds "\" was written on Windows and is split there.
qsizetype lastSeparator(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash >= 0 ? slash : path.lastIndexOf(u'\\');
}
} // namespace

QString FolderOf(const QString& path)
{
    const qsizetype separator = lastSeparator(path);
    return separator < 0 ? QString() : path.left(separator + 1);
}

QString FileNameOf(const QString& path)
{
    return path.mid(lastSeparator(path) + 1);
}

bool HasExtension(const QString& path, const QString& extension)
{
    return path.endsWith(extension, Qt::CaseInsensitive);
}

QString PathNoCase(const QString& folder, const QString& relative)
{
    QString current = AddSlash(folder);
    const QStringList parts = relative.split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        QString found = part;
        if (!QFileInfo::exists(current + part)) {
            const QStringList entries =
                QDir(current).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
            for (const QString& entry : entries) {
                if (entry.compare(part, Qt::CaseInsensitive) == 0) {
                    found = entry;
                    break;
                }
            }
        }
        current += found;
        if (i + 1 < parts.size())
            current += u'/';
    }
    if (relative.endsWith(u'/'))
        current = AddSlash(current);
    return current;
}

} // namespace kavori

namespace kavori {

QString ShortPathName(const QString& path)
{
    if (path.isEmpty())
        return {};
    return QFileInfo(path).canonicalFilePath();
}

QString FullPathNoCase(const QString& path)
{
    if (!IsFullPath(path) || QFileInfo::exists(path))
        return path;
    const QString root = QDir(path).rootPath(); // "/" here, a drive on other systems
    return PathNoCase(root, path.mid(root.size()));
}

} // namespace kavori
