#include "FolderWalk.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QLocale>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace kavori {

namespace {

// The kernel's own folders hold no pictures and never end; a walk of the whole disk skips them.
bool isSystemTree(const QString& path)
{
    static const QSet<QString> skipped = {QStringLiteral("/proc"), QStringLiteral("/sys"),
                                          QStringLiteral("/dev"), QStringLiteral("/run")};
    return skipped.contains(path);
}

} // namespace

bool WalkFolderTree(const QString& root, const std::function<void(const QFileInfo& file)>& visit,
                    const std::atomic<bool>* cancel)
{
    QCollator collator(
        QLocale(QLocale::English, QLocale::UnitedStates)); // numeric mode needs a real locale
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    QStringList pending = {QDir(root).absolutePath()};
    while (!pending.isEmpty()) {
        if (cancel && cancel->load())
            return false;
        const QString folder = pending.takeLast();
        QStringList subfolders;
        QDirIterator it(folder,
                        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        while (it.hasNext()) {
            it.next();
            const QFileInfo entry = it.fileInfo();
            if (entry.isSymLink())
                continue;
            if (entry.isDir()) {
                if (!isSystemTree(entry.absoluteFilePath()))
                    subfolders << entry.absoluteFilePath();
            } else {
                visit(entry);
            }
        }
        std::sort(subfolders.begin(), subfolders.end(), collator);
        std::reverse(subfolders.begin(), subfolders.end());
        pending << subfolders;
    }
    return true;
}

} // namespace kavori
