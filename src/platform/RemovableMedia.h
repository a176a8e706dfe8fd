#pragma once

#include <QString>

namespace kavori {

// The folder a removable medium (a USB stick, a card, a disc) is mounted at when it is in, for
// a path that lies on one: under /media/USER/NAME, /run/media/USER/NAME or /mnt/NAME. Empty for
// paths on the fixed disks. The medium need not be in.
QString RemovableMediumOf(const QString& path);

// The name a user knows the medium by: the last part of its mount folder.
QString RemovableMediumName(const QString& mediumFolder);

} // namespace kavori
