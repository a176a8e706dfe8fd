#include "ShowInformation.h"

#include "SlideList.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QFileInfo>
#include <QSet>

namespace kavori {

ShowInformation DescribeShow(const SlideShow& show)
{
    const Settings& s = CurrentSettings();
    ShowInformation info;
    if (show.path.isEmpty())
        info.fileSize = QStringLiteral("(Slide show has not been saved yet.)");
    else if (const QFileInfo file(show.path); file.isFile())
        info.fileSize =
            Format(file.size(), QStringLiteral("###,###,##0")) + QStringLiteral(" bytes");
    else
        info.fileSize = QStringLiteral("(File size is unknown.)");

    const int count = int(show.slides.size());
    info.slides = SlideCountText(count);
    const int missing = int(MissingSlides(show).size());
    if (missing == 1)
        info.missing = QStringLiteral("(One slide is missing.)");
    else if (missing > 1)
        info.missing = QStringLiteral("(") + Format(missing, QStringLiteral("###,##0")) +
                       QStringLiteral(" slides are missing.)");

    // Sound files: the show's one sound or play list, or the distinct sounds of the slides.
    int sounds = 0;
    if (s.SoundMode == 1) {
        sounds = s.UsePlayList && !show.PlayList.isEmpty() ? int(show.PlayList.size())
                                                           : (s.SoundFile.isEmpty() ? 0 : 1);
    } else if (s.SoundMode == 3) {
        QSet<QString> distinct;
        for (const Slide& slide : show.slides)
            if (!slide.SlideSound.isEmpty())
                distinct.insert(slide.SlideSound.toUpper());
        sounds = int(distinct.size());
    }
    if (s.SoundMode == 2)
        info.sound = QStringLiteral("CD Audio has been specified.");
    else if (sounds == 0)
        info.sound = QStringLiteral("No sound file specified.");
    else
        info.sound =
            Format(sounds, QStringLiteral("###,##0")) + QStringLiteral(" sound file(s) specified.");

    int textures = 0;
    int texturesMissing = 0;
    for (const Slide& slide : show.slides) {
        if (slide.SlideTexture.isEmpty())
            continue;
        ++textures;
        if (!QFileInfo(SlideFullPath(show, slide.SlideTexture)).isFile())
            ++texturesMissing;
    }
    info.textures = QString::number(textures) + QStringLiteral(" texture file(s) specified.");
    if (texturesMissing == 1)
        info.textures += QStringLiteral("  (One texture missing.)");
    else if (texturesMissing > 1)
        info.textures += QStringLiteral("  (") +
                         Format(texturesMissing, QStringLiteral("###,##0")) +
                         QStringLiteral(" textures missing.)");

    double seconds = 0;
    if (show.UseSlideIntervals) {
        for (const Slide& slide : show.slides)
            seconds += std::max<int>(0, slide.SlideDelay);
    } else {
        seconds = double(std::max<int>(0, s.SlideInterval)) * count;
    }
    if (seconds <= 0)
        info.totalTime = QStringLiteral("Time interval not specified.");
    else
        info.totalTime =
            Format(seconds, QStringLiteral("###,###.0")) + QStringLiteral(" seconds  (") +
            Format(seconds / 60.0, QStringLiteral("###,##0.0")) + QStringLiteral(" minutes)");
    return info;
}

QString SourceFolderInformation(const QString& folder, int validFiles, int selectedFiles,
                                qint64 totalBytes)
{
    return QStringLiteral("Current source file folder:") + NewLine() + folder + NewLine2() +
           QStringLiteral("Number of valid files = ") +
           Format(validFiles, QStringLiteral("###,##0")) + NewLine() +
           QStringLiteral("Number of files selected = ") +
           Format(selectedFiles, QStringLiteral("###,##0")) + NewLine() +
           QStringLiteral("Total file size = ") +
           Format(totalBytes, QStringLiteral("###,###,##0")) + QStringLiteral(" bytes");
}

} // namespace kavori
