#include "TreeCopy.h"

#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace kavori {

QString TreeCopyRefusal(const QString& source, const QString& target)
{
    const QString from = AddSlash(QDir::cleanPath(QFileInfo(source).absoluteFilePath()));
    const QString to = AddSlash(QDir::cleanPath(QFileInfo(target).absoluteFilePath()));
    if (to.startsWith(from))
        return QStringLiteral("A disk cannot be copied into a folder on itself:") + NewLine2() +
               QDir::toNativeSeparators(to);
    return {};
}

TreeCopyOutcome CopyFolderTree(const QString& source, const QString& target, Progress& progress)
{
    TreeCopyOutcome out;
    const QDir from(source);
    QStringList folders;
    QStringList files;
    QDirIterator it(source, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        const QFileInfo entry = it.fileInfo();
        const QString relative = from.relativeFilePath(entry.filePath());
        if (entry.isDir() && !entry.isSymLink())
            folders << relative;
        else if (entry.isFile())
            files << relative;
    }
    folders.sort();
    files.sort();
    QDir to(target);
    if (!to.mkpath(QStringLiteral("."))) {
        out.result = TreeCopyOutcome::Result::Failed;
        out.problem = target;
        return out;
    }
    for (const QString& folder : std::as_const(folders))
        to.mkpath(folder);
    progress.setMaximum(int(files.size()));
    for (const QString& file : std::as_const(files)) {
        if (progress.cancelled()) {
            out.result = TreeCopyOutcome::Result::Cancelled;
            return out;
        }
        const QString copy = to.filePath(file);
        to.mkpath(QFileInfo(file).path());
        if (!CopyFileOver(from.filePath(file), copy)) {
            out.result = TreeCopyOutcome::Result::Failed;
            out.problem = from.filePath(file);
            return out;
        }
        ++out.files;
        progress.setValue(out.files);
    }
    return out;
}

} // namespace kavori
