#include "DropRequest.h"

#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/ListInput.h"
#include "runtime/MsgBox.h"

#include <QFileInfo>
#include <QUrl>

namespace kavori {

namespace {
// The target of a desktop link file ("URL=" of a Link entry), empty when it has none.
QString desktopLinkTarget(const QString& path)
{
    ListInput in;
    if (!in.open(path))
        return {};
    while (!in.atEnd()) {
        const QString line = in.nextLine().trimmed();
        if (line.startsWith(QLatin1String("URL="))) {
            const QUrl url(line.mid(4));
            return url.isLocalFile() ? url.toLocalFile() : line.mid(4);
        }
    }
    return {};
}
} // namespace

DropRequest ClassifyDrop(const QString& dropped)
{
    DropRequest r;
    QString path = dropped;
    const QFileInfo info(path);
    if (info.isSymLink())
        path = info.symLinkTarget();
    else if (HasExtension(path, QStringLiteral(".desktop")))
        path = desktopLinkTarget(path);
    if (path.isEmpty()) {
        r.message = QStringLiteral(
            "An unexpected error occurred while getting filename that was dropped here, unable to open file...");
        return r;
    }
    if (QFileInfo(path).isDir()) {
        r.message = QStringLiteral("You may not drop a folder here, unable to open...");
        return r;
    }
    if (IsImportFile(path)) {
        r.message =
            path.right(4).toUpper() + QStringLiteral(" files must be imported into ") + AppTitle() +
            QStringLiteral(" and then saved as a supported format first, unable to open:") + path;
        return r;
    }
    r.path = path;
    if (HasExtension(path, QStringLiteral(".KAV"))) {
        r.kind = DropRequest::PlayShow;
    } else if (IsImageFile(path)) {
        r.kind = DropRequest::OpenImage;
    } else {
        r.message = path + NewLine2() +
                    QStringLiteral("This is not a supported image file, unable to open...");
    }
    return r;
}

} // namespace kavori
