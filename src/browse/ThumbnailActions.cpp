#include "ThumbnailActions.h"

#include "fileutil/Favorites.h"
#include "fileutil/FileFollowers.h"
#include "imaging/ImageTypes.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"

#include <QDir>
#include <QFileInfo>

namespace kavori {

namespace {

QString shown(const QString& path)
{
    return NewLine2() + QDir::toNativeSeparators(path);
}

} // namespace

OpenDecision OpenThumbnailFile(const QString& path)
{
    OpenDecision d;
    const QFileInfo info(path);
    if (info.isDir()) {
        d.message = QStringLiteral("A folder was selected instead of a valid file, unable to "
                                   "view the folder:") +
                    shown(path);
        return d;
    }
    const QString name = FileNameOf(path);
    const int dot = int(name.lastIndexOf(u'.'));
    const QString extension = dot < 0 ? QString() : name.mid(dot).toUpper();
    if (IsImportFile(path)) {
        d.message = extension + QStringLiteral(" files must be imported into ") + AppTitle() +
                    QStringLiteral(" and then saved as a supported format first, unable to "
                                   "open:") +
                    shown(path);
        return d;
    }
    if (extension == QLatin1String(".KAV")) {
        d.message = QStringLiteral("The ") + AppTitle() +
                    QStringLiteral(" slide show file type (.KAV) is not an image file, unable "
                                   "to open:") +
                    shown(path);
        return d;
    }
    if (IsMovieFile(path)) {
        d.kind = OpenKind::Movie;
        return d;
    }
    if (!IsImageFile(path)) {
        d.message = QStringLiteral("The selected file type (") + extension +
                    QStringLiteral(") is not supported by ") + AppTitle() +
                    QStringLiteral(", unable to open:") + shown(path);
        return d;
    }
    d.kind = OpenKind::Image;
    return d;
}

bool IsSlideOf(const SlideShow& show, const QString& path)
{
    for (const Slide& slide : show.slides) {
        if (!slide.SlideFile.isEmpty() && SamePath(SlideFullPath(show, slide.SlideFile), path))
            return true;
    }
    return false;
}

QString DeleteCellRefusal(const QString& path, const QString& currentFile, const SlideShow& show)
{
    if (!currentFile.isEmpty() && SamePath(path, currentFile))
        return QStringLiteral(
            "Unable to delete this file, image is currently open in Main Viewing Window...");
    if (IsSlideOf(show, path))
        return QStringLiteral("Unable to delete this file, image is in the currently open slide "
                              "show.") +
               NewLine2() +
               QStringLiteral("Remove this file from the slide show and then try again...");
    return {};
}

QString RenameCellRefusal(const QString& path, const SlideShow& show)
{
    if (IsSlideOf(show, path))
        return QStringLiteral("Unable to rename this file, image is in the currently open slide "
                              "show.") +
               NewLine2() +
               QStringLiteral("Remove this file from the slide show and then try again...");
    return {};
}

QString RenameCellTitle()
{
    return AppTitle() + QStringLiteral(" - [Rename File]");
}

QString FavoriteCellRefusal(const QString& path, const QStringList& favorites)
{
    if (IsMovieFile(path))
        return QStringLiteral("You may not add a movie file to your Favorite Files List, select "
                              "an image and then try again...");
    for (const QString& f : favorites) {
        if (f.compare(path, Qt::CaseInsensitive) == 0)
            return QStringLiteral("This file is already in your favorites list...");
    }
    if (favorites.size() >= kMaxFavoriteFiles)
        return QStringLiteral("Your favorites list is full, only 20 items may be added at one "
                              "time.") +
               NewLine2() + QStringLiteral("Remove an item or clear the list and try again...");
    return {};
}

QString FavoriteCellTitle()
{
    return AppTitle() + QStringLiteral(" - [Add To Favorite Files List]");
}

QString AnimatedGifRefusal(const QString& path)
{
    if (path.isEmpty() || !QFileInfo(path).isFile())
        return QStringLiteral("An image has not been opened yet, unable to view animated gif...");
    if (!HasExtension(path, QStringLiteral(".GIF")))
        return QStringLiteral("The current image is not a .GIF file, unable to animate...");
    if (!IsAnimatedGif(path))
        return QStringLiteral("The current file is not in the GIF89a format, unable to animate...");
    return {};
}

QString PreviewText(const QString& path)
{
    return FileNameOf(path) + QStringLiteral(" (") +
           Format(QFileInfo(path).size(), QStringLiteral("###,###")) + QStringLiteral(" bytes)");
}

} // namespace kavori
