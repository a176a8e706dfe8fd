#pragma once

#include "MediaPatterns.h"
#include "platform/Volumes.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <functional>

namespace kavori {

// The most files one search records (entries 0..200,000); later files are left out.
constexpr int kMaxSearchFiles = 200001;

// The type label of a drive row: "  [Removable]", "  [Fixed Disk]", ...
QString DriveTypeLabel(DriveType type);

// Files that share a name, compared without case. Files come in discovery order; each name's
// copies stand together, the first-found on top and later ones in the order found, and the
// names in the order their second copy turned up. One hash lookup per file.
class NameGroups {
public:
    // Records a file; false (and nothing recorded) once kMaxSearchFiles files are held.
    bool add(const QString& path);
    int fileCount() const { return m_fileCount; }
    int resultCount() const { return m_resultCount; }
    // The grouped paths, as the results list shows them.
    QStringList results() const;
    QVector<QStringList> groups() const { return m_groups; }

private:
    struct Seen {
        QString firstPath;
        int group = -1;
    };
    QHash<QString, Seen> m_byName;
    QVector<QStringList> m_groups;
    int m_fileCount = 0;
    int m_resultCount = 0;
};

// What a search is doing, read by the window while it runs on another thread.
struct SearchState {
    std::atomic<bool> cancel{false};
    std::atomic<int> drive{0}; // index of the drive being walked
    std::atomic<int> found{0}; // result entries so far
    std::atomic<int> files{0}; // files recorded so far
    std::atomic<int> stage{0}; // 0 walking, 1 comparing contents
    // Runs on the searching thread after each file is recorded, with the count so far.
    std::function<void(int)> afterFile;
};

// Walks each root in turn, every folder below it on the same volume (links to folders are
// not followed), and groups the matching files by name. Stops at once when state.cancel is
// set, keeping what it found.
NameGroups SearchSameNames(const QStringList& roots, const QStringList& extensions,
                           SearchState& state);

// Every matching file below the roots, in discovery order (at most kMaxSearchFiles).
QStringList FindSearchFiles(const QStringList& roots, const QStringList& extensions,
                            SearchState& state);

// Files with the same bytes: by size, then a hash of the first 4 KiB, then of the whole file,
// read on all cores. Empty files are left out. Groups are in the order of their first-found
// copy, each copy in discovery order.
QVector<QStringList> GroupSameContent(const QStringList& files, SearchState& state);

} // namespace kavori
