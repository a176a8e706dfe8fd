#include "ShowInformation.h"

#include "SlideList.h"
#include "platform/AppPaths.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

#include <QDir>
#include <QFile>
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

QStringList ShowFilesIn(const QString& folder)
{
    QStringList shows;
    const QDir dir(folder);
    for (const QString& name : dir.entryList(QDir::Files, QDir::Name | QDir::IgnoreCase))
        if (HasExtension(name, QStringLiteral(".KAV")))
            shows << dir.filePath(name);
    return shows;
}

ShowFileDetails DescribeShowFile(const QString& path)
{
    ShowFileDetails details;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        details.size = QStringLiteral("Unknown...");
        details.info = QStringLiteral("(Open file to edit...)");
        return details;
    }
    details.size = Format(file.size(), QStringLiteral("###,##0")) + QStringLiteral(" bytes");
    // The notes are the fourteenth line of the current layouts; older shows have none.
    QStringList lines;
    while (lines.size() < 14 && !file.atEnd())
        lines << QString::fromLatin1(file.readLine()).trimmed();
    const auto unquote = [](QString v) {
        if (v.startsWith(u'"'))
            v = v.mid(1);
        if (v.endsWith(u'"'))
            v.chop(1);
        return v;
    };
    const bool current = lines.size() >= 14 &&
                         unquote(lines[0]) == QLatin1String("Kavori Slide Show") &&
                         (unquote(lines[1]) == QLatin1String("Version 2.0") ||
                          unquote(lines[1]) == QLatin1String("Version 3.0"));
    if (!current)
        details.info = QStringLiteral("(Open file to edit...)");
    else if (const QString notes = unquote(lines[13]); !notes.isEmpty())
        details.info = notes;
    else
        details.info = QStringLiteral("Open slide show to edit comments.");
    return details;
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
