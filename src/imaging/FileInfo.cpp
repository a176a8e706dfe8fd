#include "FileInfo.h"

#include "ImageTypes.h"
#include "PictureLoader.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QColorSpace>
#include <QFileInfo>
#include <QMimeDatabase>

namespace kavori {

namespace {

// The name a colour profile gives itself, or the gamut it spans when it gives none.
QString profileName(const QColorSpace& space)
{
    const QString own = space.description().trimmed();
    if (!own.isEmpty())
        return own;
    if (space.primaries() == QColorSpace::Primaries::DciP3D65)
        return QStringLiteral("Display P3");
    if (space.primaries() == QColorSpace::Primaries::SRgb)
        return QStringLiteral("sRGB");
    if (space.primaries() == QColorSpace::Primaries::AdobeRgb)
        return QStringLiteral("Adobe RGB");
    return QStringLiteral("Unnamed profile");
}

} // namespace

FileInfoResult FileInformation(const QString& path, bool fromDialog)
{
    FileInfoResult r;
    if (path.isEmpty() || FolderOf(path).isEmpty()) {
        r.refusal =
            fromDialog
                ? QStringLiteral("A file has not been specified.") + NewLine2() +
                      QStringLiteral(
                          "Click the Browse button and/or specify a file and then try again...")
                : QStringLiteral("A file has not been specified, unable to show information...");
        return r;
    }
    const QFileInfo file(path);
    if (!file.isFile()) {
        r.refusal =
            QStringLiteral("The specified file could not be found, unable to show information...");
        return r;
    }
    const FileTypeInfo type = DescribeFileType(path);
    if (type.kind == FileKind::Unknown) {
        r.refusal = QStringLiteral("The filename that was specified is not a supported file type, "
                                   "unable to show information...");
        return r;
    }
    switch (type.kind) {
    case FileKind::Sound:
        r.caption = QStringLiteral("Sound Information");
        break;
    case FileKind::Movie:
        r.caption = QStringLiteral("Movie Information");
        break;
    default:
        r.caption = QStringLiteral("Image Information");
        break;
    }
    r.lines << file.fileName();
    r.lines << Format(file.size(), QStringLiteral("###,##0")) + QStringLiteral(" bytes");
    QString typeLine = type.description.isEmpty() ? QStringLiteral("Unknown...") : type.description;
    if (type.kind == FileKind::Image) {
        const QSize size = PictureSize(path);
        typeLine += size.isValid()
                        ? QStringLiteral("  (%1x%2 pixels)").arg(size.width()).arg(size.height())
                        : QStringLiteral("  (Unknown...)");
    }
    r.lines << typeLine;
    // Today's pictures often carry a wide-gamut profile; it explains colours that differ from
    // the stored values. With the classic types alone the display stays as it always was.
    if (type.kind == FileKind::Image && !CurrentSettings().ClassicTypesOnly) {
        const QColorSpace space = PictureColorSpace(path);
        if (space.isValid())
            r.lines << QStringLiteral("Color profile: ") + profileName(space);
    }
    // The system knows a type when it can name it by more than raw bytes.
    if (QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension).isDefault())
        r.lines << QStringLiteral("(This file type is not registered.)");
    return r;
}

void ShowFileInfo(const QString& path, bool fromDialog)
{
    const FileInfoResult r = FileInformation(path, fromDialog);
    if (!r.refusal.isEmpty()) {
        MsgBox(r.refusal, vbInformation);
        return;
    }
    MsgBox(r.lines.join(NewLine()), vbInformation,
           AppTitle() + QStringLiteral(" - [") + r.caption + u']');
}

} // namespace kavori
