#pragma once

#include <QString>
#include <QVector>

#include <functional>
#include <optional>

namespace kavori {

// The kinds of drive the program tells apart, numbered as the system's drive types are.
enum class DriveType { Unknown = 0, Removable = 2, Fixed = 3, Remote = 4, CDRom = 5, RamDisk = 6 };

struct Volume {
    QString root; // ends in "/"
    DriveType type = DriveType::Unknown;
    QString label; // the volume's name, empty when it has none
};

// The kind of a mounted volume from its file system and device: network file systems are
// remote, disc file systems CD-ROM, memory file systems RAM disks, a block device the kernel
// calls removable is removable, any other device a fixed disk.
DriveType ClassifyVolume(const QString& fileSystemType, const QString& device, bool removable);

// The mounted volumes, as the system lists its drives. Empty when they cannot be had.
QVector<Volume> LogicalDrives();

// Tests decide which drives the machine has; no value goes back to asking the system.
void SetLogicalDrivesOverride(std::optional<QVector<Volume>> drives);

// An identity of the volume a folder lies on, so a walk of one drive stays on it.
quint64 VolumeIdOf(const QString& folder);

// The folder a removable medium (a USB stick, a card, a disc) is mounted at when it is in, for
// a path that lies on one: under /media/USER/NAME, /run/media/USER/NAME or /mnt/NAME. Empty for
// paths on the fixed disks. The medium need not be in.
QString RemovableMediumOf(const QString& path);

// The name a user knows the medium by: the last part of its mount folder.
QString RemovableMediumName(const QString& mediumFolder);

// One line of the system's mount table (/proc/self/mounts): octal escapes ("\040" for a
// space) are undone.
struct MountEntry {
    QString device;
    QString mountPoint;
    QString fileSystemType;
};
QVector<MountEntry> ParseMountTable(const QString& table);

// A medium the user can take out: a USB stick, a memory card, a disc.
struct RemovableMedium {
    QString root; // its mount folder, ending in "/"
    QString name; // what the user knows it by: the last part of that folder
    DriveType type = DriveType::Removable;
};

// The removable media of a mount table: a block device the kernel calls removable
// (isRemovableDevice answers for "/dev/sdb1"), a disc file system, or a device the desktop
// mounted under /media or /run/media (a USB disk that calls itself fixed). System and network
// file systems never count. In the table's order, each mount folder once.
QVector<RemovableMedium>
RemovableMediaIn(const QString& mountTable,
                 const std::function<bool(const QString&)>& isRemovableDevice);

// The removable media in now, from /proc/self/mounts and /sys/block/*/removable.
QVector<RemovableMedium> RemovableMedia();

// Tests feed a recorded mount table and the devices to call removable; no value goes back to
// the system's.
void SetMountTableOverride(std::optional<QString> table, const QStringList& removableDevices = {});

} // namespace kavori
