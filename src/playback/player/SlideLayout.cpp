#include "SlideLayout.h"

#include "imaging/PictureLoader.h"
#include "platform/AppPaths.h"
#include "runtime/Random.h"
#include "runtime/VbColor.h"
#include "slideshow/SlideShowFile.h"

#include <QPainter>

#include <cmath>

namespace kavori {

QSize SlidePictureSize(const QSize& picture, const QSize& screen, bool enlarge, bool shrink)
{
    if (picture.isEmpty() || screen.isEmpty())
        return picture;
    const bool larger = picture.width() > screen.width() || picture.height() > screen.height();
    if ((larger && shrink) || (!larger && enlarge))
        return picture.scaled(screen, Qt::KeepAspectRatio);
    return picture;
}

QRect SlidePictureRect(const QSize& drawn, const QSize& screen, const Slide& slide)
{
    const int right = screen.width() - drawn.width();
    const int bottom = screen.height() - drawn.height();
    const int midX = right / 2;
    const int midY = bottom / 2;
    QPoint at(midX, midY);
    switch (SlidePlace(slide.SlideLocation)) {
    case SlidePlace::TopLeft:
        at = {0, 0};
        break;
    case SlidePlace::Top:
        at = {midX, 0};
        break;
    case SlidePlace::TopRight:
        at = {right, 0};
        break;
    case SlidePlace::Left:
        at = {0, midY};
        break;
    case SlidePlace::Right:
        at = {right, midY};
        break;
    case SlidePlace::BottomLeft:
        at = {0, bottom};
        break;
    case SlidePlace::Bottom:
        at = {midX, bottom};
        break;
    case SlidePlace::BottomRight:
        at = {right, bottom};
        break;
    case SlidePlace::Random:
        // Anywhere the whole picture stays on the screen (centred when it cannot).
        at = {right > 0 ? int(std::floor((right + 1) * Rnd())) : midX,
              bottom > 0 ? int(std::floor((bottom + 1) * Rnd())) : midY};
        break;
    case SlidePlace::Custom:
        at = {slide.SlidePosX, slide.SlidePosY};
        break;
    case SlidePlace::Center:
    default:
        break;
    }
    return {at, drawn};
}

QString SlidePicturePath(const QString& file, const QString& showPath)
{
    if (file.isEmpty() || showPath.isEmpty())
        return file;
    // Shows carried from another machine find their pictures beside them; a picture found
    // nowhere keeps its name, which the message then shows.
    const QString found = FindShowFile(file, FolderOf(showPath));
    if (!found.isEmpty())
        return found;
    return IsFullPath(file) ? file : FolderOf(showPath) + file;
}

QImage DecodeSlidePicture(const QString& path, const QSize& screen, const Slide& slide)
{
    // Shrinking pictures decode straight at screen size; the rest need their own size first.
    QImage picture = LoadPicture(path, slide.SlideShrink ? screen : QSize());
    if (picture.isNull())
        return picture;
    const QSize drawn =
        SlidePictureSize(picture.size(), screen, slide.SlideEnlarge != 0, slide.SlideShrink != 0);
    if (drawn != picture.size())
        picture = picture.scaled(drawn, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (picture.format() != QImage::Format_RGB32 && !picture.hasAlphaChannel())
        picture = picture.convertToFormat(QImage::Format_RGB32);
    return picture;
}

void ComposeSlide(QImage& screen, const QImage& picture, const QRect& rect, const Slide& slide,
                  const QImage& texture)
{
    QPainter painter(&screen);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    // The picture's own area is painted once, so only the border gets the background.
    const QRegion border = QRegion(screen.rect()) - QRegion(rect.intersected(screen.rect()));
    const bool covers = !picture.isNull() && !picture.hasAlphaChannel();
    painter.setClipRegion(covers ? border : QRegion(screen.rect()));
    const SlideBack mode = SlideBack(slide.SlideBackMode);
    if (mode == SlideBack::Texture && !texture.isNull())
        painter.drawTiledPixmap(screen.rect(), QPixmap::fromImage(texture));
    else if (mode == SlideBack::Color)
        painter.fillRect(screen.rect(), FromVbColor(slide.SlideBackColor));
    else
        painter.fillRect(screen.rect(), Qt::black);
    if (picture.isNull())
        return;
    painter.setClipping(false);
    if (picture.hasAlphaChannel())
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(rect.topLeft(), picture);
}

QImage SlidePreview(const Slide& slide, const QString& showPath, const QSize& screen,
                    const QSize& box, const QImage& texture)
{
    if (screen.isEmpty() || box.isEmpty())
        return QImage();
    const double f =
        qMin(double(box.width()) / screen.width(), double(box.height()) / screen.height());
    const QSize small = (QSizeF(screen) * f).toSize().expandedTo(QSize(1, 1));
    QImage out(small, QImage::Format_RGB32);
    const QString path = SlidePicturePath(slide.SlideFile, showPath);
    const QSize natural = PictureSize(path);
    QImage picture;
    QRect place;
    if (natural.isValid()) {
        // Placed on the whole screen first, so corners, custom places and fitting come out as
        // the player's, then everything is scaled down together.
        const QSize drawn =
            SlidePictureSize(natural, screen, slide.SlideEnlarge != 0, slide.SlideShrink != 0);
        const QRect rect = SlidePictureRect(drawn, screen, slide);
        place = QRect((QPointF(rect.topLeft()) * f).toPoint(),
                      (QSizeF(drawn) * f).toSize().expandedTo(QSize(1, 1)));
        picture = LoadPicture(path, place.size());
        if (!picture.isNull() && picture.size() != place.size())
            picture = picture.scaled(place.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QImage tile;
    if (!texture.isNull())
        tile = texture.scaled((QSizeF(texture.size()) * f).toSize().expandedTo(QSize(1, 1)),
                              Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    ComposeSlide(out, picture, place, slide, tile);
    return out;
}

} // namespace kavori
