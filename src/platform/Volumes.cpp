#include "Volumes.h"

#include <QDir>
#include <QStringList>

#include "AppPaths.h"

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace kavori {

namespace {

std::optional<QVector<Volume>>& drivesOverride()
{
    static std::optional<QVector<Volume>> drives;
    return drives;
}

// "/dev/sdb1" -> the kernel's removable flag of "sdb".
bool removableDevice(const QString& device)
{
    if (!device.startsWith(QLatin1String("/dev/")))
        return false;
    QString name = device.mid(5);
    for (QString candidate = name; !candidate.isEmpty(); candidate.chop(1)) {
        QFile flag(QStringLiteral("/sys/block/") + candidate + QStringLiteral("/removable"));
        if (flag.open(QIODevice::ReadOnly))
            return flag.readAll().trimmed() == "1";
    }
    return false;
}

struct MountOverride {
    std::optional<QString> table;
    QStringList removable;
};
MountOverride& mountOverride()
{
    static MountOverride o;
    return o;
}

// "\040" and the other octal escapes of the mount table, back to their characters.
QString unescapeMountField(const QString& field)
{
    const QByteArray in = field.toUtf8();
    QByteArray out;
    for (qsizetype i = 0; i < in.size(); ++i) {
        const QByteArray digits = in.mid(i + 1, 3);
        bool octal = in[i] == '\\' && digits.size() == 3;
        for (const char c : digits)
            octal = octal && c >= '0' && c <= '7';
        if (octal) {
            out += char(digits.toInt(nullptr, 8));
            i += 3;
        } else {
            out += in[i];
        }
    }
    return QString::fromUtf8(out);
}

} // namespace

QVector<MountEntry> ParseMountTable(const QString& table)
{
    QVector<MountEntry> entries;
    for (const QString& line : table.split(u'\n')) {
        const QStringList fields = line.split(u' ', Qt::SkipEmptyParts);
        if (fields.size() < 3 || fields[0].startsWith(u'#'))
            continue;
        entries.push_back({unescapeMountField(fields[0]), unescapeMountField(fields[1]),
                           unescapeMountField(fields[2])});
    }
    return entries;
}

QVector<RemovableMedium>
RemovableMediaIn(const QString& mountTable,
                 const std::function<bool(const QString&)>& isRemovableDevice)
{
    QVector<RemovableMedium> media;
    QStringList seen;
    for (const MountEntry& m : ParseMountTable(mountTable)) {
        // Only real devices hold media: no proc, sysfs, tmpfs, overlay or network mounts.
        if (!m.device.startsWith(QLatin1String("/dev/")) || m.mountPoint == QLatin1String("/"))
            continue;
        const bool flagged = isRemovableDevice && isRemovableDevice(m.device);
        const DriveType type = ClassifyVolume(m.fileSystemType, m.device, flagged);
        // The folders desktops mount what the user plugs in at (/mnt is left out: fixed disks
        // are mounted there too).
        const QString folder = QDir::cleanPath(m.mountPoint);
        const bool desktopMedium = !folder.startsWith(QLatin1String("/mnt/")) &&
                                   RemovableMediumOf(folder + QStringLiteral("/x")) == folder;
        if (type != DriveType::Removable && type != DriveType::CDRom && !desktopMedium)
            continue;
        const QString root = AddSlash(QDir::cleanPath(m.mountPoint));
        if (seen.contains(root))
            continue;
        seen << root;
        media.push_back({root, RemovableMediumName(root),
                         type == DriveType::CDRom ? DriveType::CDRom : DriveType::Removable});
    }
    return media;
}

QVector<RemovableMedium> RemovableMedia()
{
    const MountOverride& o = mountOverride();
    if (o.table) {
        const QStringList removable = o.removable;
        return RemovableMediaIn(*o.table,
                                [removable](const QString& d) { return removable.contains(d); });
    }
    QFile mounts(QStringLiteral("/proc/self/mounts"));
    if (!mounts.open(QIODevice::ReadOnly))
        return {};
    return RemovableMediaIn(QString::fromUtf8(mounts.readAll()), removableDevice);
}

void SetMountTableOverride(std::optional<QString> table, const QStringList& removableDevices)
{
    mountOverride() = {std::move(table), removableDevices};
}

DriveType ClassifyVolume(const QString& fileSystemType, const QString& device, bool removable)
{
    const QString fs = fileSystemType.toLower();
    static const QStringList remote = {QStringLiteral("nfs"),   QStringLiteral("nfs4"),
                                       QStringLiteral("cifs"),  QStringLiteral("smbfs"),
                                       QStringLiteral("smb3"),  QStringLiteral("fuse.sshfs"),
                                       QStringLiteral("sshfs"), QStringLiteral("9p"),
                                       QStringLiteral("afs"),   QStringLiteral("davfs")};
    if (remote.contains(fs) || device.startsWith(QLatin1String("//")))
        return DriveType::Remote;
    if (fs == QLatin1String("iso9660") || fs == QLatin1String("udf"))
        return DriveType::CDRom;
    if (fs == QLatin1String("tmpfs") || fs == QLatin1String("ramfs"))
        return DriveType::RamDisk;
    if (removable)
        return DriveType::Removable;
    if (device.startsWith(QLatin1Char('/')) || !device.isEmpty())
        return DriveType::Fixed;
    return DriveType::Unknown;
}

QVector<Volume> LogicalDrives()
{
    if (drivesOverride())
        return *drivesOverride();
    QVector<Volume> drives;
    for (const QStorageInfo& info : QStorageInfo::mountedVolumes()) {
        if (!info.isValid() || !info.isReady())
            continue;
        const QString device = QString::fromLocal8Bit(info.device());
        drives.push_back({AddSlash(info.rootPath()),
                          ClassifyVolume(QString::fromLatin1(info.fileSystemType()), device,
                                         removableDevice(device)),
                          info.name()});
    }
    return drives;
}

void SetLogicalDrivesOverride(std::optional<QVector<Volume>> drives)
{
    drivesOverride() = std::move(drives);
}

quint64 VolumeIdOf(const QString& folder)
{
#ifdef Q_OS_UNIX
    struct stat st {};
    if (::stat(QFile::encodeName(folder).constData(), &st) == 0)
        return quint64(st.st_dev);
    return 0;
#else
    return qHash(QStorageInfo(folder).rootPath());
#endif
}

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
