#include "FileDelete.h"

#include "FileFollowers.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QFile>
#include <QFileInfo>

namespace kavori {

QString DeleteFileQuestion(const QString& path, bool toTrash)
{
    if (toTrash)
        return QStringLiteral("Are you sure you want to send \"") + FileNameOf(path) +
               QStringLiteral("\" to the Trash?");
    return QStringLiteral("Are you sure you want to delete \"") + FileNameOf(path) +
           QStringLiteral("\" for good?") + NewLine2() +
           QStringLiteral("The file can not be recovered afterwards.");
}

bool DeleteOneFile(const QString& path, bool confirm)
{
    const QFileInfo info(path);
    // A dangling link still "exists" as far as deleting goes.
    if (!info.exists() && !info.isSymLink())
        return false;
    const bool toTrash = CurrentSettings().UseRecycleBin;
    if (confirm &&
        MsgBox(DeleteFileQuestion(path, toTrash), vbYesNo + vbQuestion + vbDefaultButton2) != vbYes)
        return false;
    if (toTrash)
        QFile::moveToTrash(path);
    else
        QFile::remove(path);
    if (QFileInfo(path).exists() || QFileInfo(path).isSymLink())
        return false;
    RemoveDescriptionEntry(path);
    ClearFavoriteFile(path);
    return true;
}

} // namespace kavori
