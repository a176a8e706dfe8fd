#pragma once

#include <QFileInfo>
#include <QString>

#include <atomic>
#include <functional>

namespace kavori {

// Walks root and its subfolders depth first, each folder's subfolders in natural order, and
// calls visit for every file (hidden ones too). Links are not followed and the kernel's own
// trees (/proc, /sys, /dev, /run) are skipped, so a walk of the whole disk ends. Safe on a
// worker thread. Returns false when cancel became true before the walk was done.
bool WalkFolderTree(const QString& root, const std::function<void(const QFileInfo& file)>& visit,
                    const std::atomic<bool>* cancel = nullptr);

} // namespace kavori
