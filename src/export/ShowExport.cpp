#include "ShowExport.h"

#include "ShowFrames.h"
#include "ShowSoundtrack.h"
#include "runtime/MsgBox.h"
#include "slideshow/SlideShow.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace kavori {

namespace {

constexpr int kLargestSide = 7680;
constexpr int kSmallestSide = 16;

QString List(const QStringList& lines)
{
    return lines.join(NewLine());
}

} // namespace

QStringList ExportSizeNames()
{
    return {QStringLiteral("1280 x 720 (720p)"), QStringLiteral("1920 x 1080 (1080p)"),
            QStringLiteral("3840 x 2160 (4K)")};
}

QSize ExportSizeAt(int choice)
{
    switch (choice) {
    case 0:
        return {1280, 720};
    case 2:
        return {3840, 2160};
    default:
        return {1920, 1080};
    }
}

QVector<int> ExportFrameRates()
{
    return {25, 30, 60};
}

QSize ParseExportSize(const QString& text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^\\s*(\\d{1,5})\\s*[xX]\\s*(\\d{1,5})\\s*$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return {};
    return {match.captured(1).toInt(), match.captured(2).toInt()};
}

QString CheckExportOptions(const ExportOptions& options)
{
    if (options.output.trimmed().isEmpty())
        return QStringLiteral("Please enter the name of the video file to make...");
    if (QFileInfo(options.output).isDir())
        return QStringLiteral("Please enter the name of a file, not a folder...");
    const QSize size = options.size;
    if (size.width() < kSmallestSide || size.height() < kSmallestSide ||
        size.width() > kLargestSide || size.height() > kLargestSide)
        return QStringLiteral("The video size must be from %1 to %2 pixels each way...")
            .arg(kSmallestSide)
            .arg(kLargestSide);
    // The encoders keep colour at half the size each way, so both sides are even.
    if (size.width() % 2 != 0 || size.height() % 2 != 0)
        return QStringLiteral("The video's width and height must be even numbers...");
    if (options.fps < 1 || options.fps > 120)
        return QStringLiteral("The frame rate must be from 1 to 120 frames a second...");
    if (CurrentShow().slides.isEmpty())
        return QStringLiteral("There are no slides in this slide show to export...");
    return {};
}

QString ExportTimeLeftText(qint64 done, qint64 total, double seconds)
{
    if (done <= 0 || total <= done)
        return done > 0 ? QStringLiteral("Finishing...") : QStringLiteral("Starting...");
    const qint64 left = qint64(std::ceil(seconds * double(total - done) / double(done)));
    return QStringLiteral("about %1:%2 left")
        .arg(left / 60)
        .arg(left % 60, 2, 10, QLatin1Char('0'));
}

ExportResult ExportShowToVideo(const ExportOptions& options, const ExportProgress& progress)
{
    ExportResult result;
    result.message = CheckExportOptions(options);
    if (!result.message.isEmpty())
        return result;

    // The plan: the walk without drawing gives the length, the frame count and where every
    // sound starts, so the sound can be laid out before the first frame is encoded.
    ShowFrames frames(options.size, options.fps, options.seed);
    frames.walk({});
    const qint64 total = frames.frameCount();
    if (total == 0) {
        result.message = QStringLiteral("None of the slides of this slide show could be read...");
        return result;
    }
    ShowSoundtrack soundtrack(frames.sounds(), frames.duration(), options.seed);
    soundtrack.prepare();
    // A movie's own sound plays with it, over the show's, repeating as the movie does.
    for (const SlideSpan& span : frames.spans()) {
        if (!span.movie || span.movieRect.isEmpty())
            continue;
        const qint64 length = SampleFrameAt(span.end()) - SampleFrameAt(span.start);
        QVector<qint16> sound;
        if (!ReadSoundSamples(span.file, sound, length) || sound.isEmpty())
            continue;
        QVector<qint16> looped(length * 2);
        for (qint64 at = 0; at < length * 2; at += sound.size())
            std::copy_n(sound.constBegin(), std::min<qint64>(sound.size(), length * 2 - at),
                        looped.begin() + at);
        soundtrack.mixIn(SampleFrameAt(span.start), looped);
    }

    VideoWriter writer;
    const auto failed = [&] {
        result.message = QStringLiteral("Unable to write the following video file:") + NewLine2() +
                         options.output + NewLine2() + writer.error();
        return result;
    };
    if (!writer.open(options.output, options.format, options.size, options.fps))
        return failed();

    QVector<qint16> audio;
    const ShowFrames::Sink sink = [&](const QImage& frame, qint64 number) {
        if (!writer.addFrame(frame))
            return false;
        // The sound that goes with this frame.
        const qint64 from = SampleFrameAt(frames.frameTime(number));
        const qint64 to = SampleFrameAt(frames.frameTime(number + 1));
        audio.resize((to - from) * 2);
        soundtrack.render(from, to - from, audio.data());
        if (!writer.addAudio(audio.constData(), to - from))
            return false;
        if (progress && !progress(number + 1, total)) {
            result.cancelled = true;
            return false;
        }
        return true;
    };
    const bool walked = frames.walk(sink);
    if (!walked) {
        writer.abort();
        if (result.cancelled)
            return result;
        return failed();
    }
    if (!writer.finish())
        return failed();

    result.written = true;
    result.frames = frames.frameCount();
    result.duration = frames.duration();
    QStringList notes;
    if (!frames.unreadable().isEmpty())
        notes << QStringLiteral("These slides could not be read and were left out:") + NewLine() +
                     List(frames.unreadable());
    if (!frames.unplayable().isEmpty())
        notes << QStringLiteral("These movies could not be played; their slides show only the "
                                "background:") +
                     NewLine() + List(frames.unplayable());
    if (!soundtrack.failures().isEmpty())
        notes << QStringLiteral("These sounds could not be played and are silent:") + NewLine() +
                     List(soundtrack.failures());
    result.message = notes.join(NewLine2());
    return result;
}

} // namespace kavori

namespace kavori {

QString ExportUsage()
{
    return QStringLiteral("Usage: kav-export SHOW OUTPUT [--size 1920x1080] [--fps 30] [--seed N]\n"
                          "OUTPUT ending in .mp4 makes H.264 and AAC, in .webm VP9 and Opus.");
}

ExportCommand ParseExportCommand(const QStringList& arguments)
{
    ExportCommand command;
    QStringList plain;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments.at(i);
        if (!arg.startsWith(QLatin1String("--"))) {
            plain << arg;
            continue;
        }
        const int eq = arg.indexOf(u'=');
        const QString name = eq < 0 ? arg : arg.left(eq);
        QString value;
        if (eq >= 0) {
            value = arg.mid(eq + 1);
        } else if (i + 1 < arguments.size()) {
            value = arguments.at(++i);
        } else {
            command.error = QStringLiteral("%1 needs a value.").arg(name);
            return command;
        }
        bool ok = true;
        if (name == QLatin1String("--size")) {
            command.options.size = ParseExportSize(value);
            ok = command.options.size.isValid();
        } else if (name == QLatin1String("--fps")) {
            command.options.fps = value.toInt(&ok);
        } else if (name == QLatin1String("--seed")) {
            command.options.seed = value.toUInt(&ok);
        } else {
            command.error = QStringLiteral("Unknown option %1.").arg(name);
            return command;
        }
        if (!ok) {
            command.error = QStringLiteral("%1 %2 is not a valid value.").arg(name, value);
            return command;
        }
    }
    if (plain.size() != 2) {
        command.error = QStringLiteral("Give a slide show and the video file to make.");
        return command;
    }
    command.show = plain.at(0);
    command.options.output = plain.at(1);
    const QString ext = QFileInfo(command.options.output).suffix().toLower();
    if (ext == QLatin1String("webm"))
        command.options.format = VideoFormat::WebM;
    else if (ext == QLatin1String("mp4") || ext == QLatin1String("m4v"))
        command.options.format = VideoFormat::Mp4;
    else
        command.error = QStringLiteral("The video file must end in .mp4 or .webm.");
    return command;
}

} // namespace kavori

namespace kavori {

QString WithVideoExtension(const QString& file, VideoFormat format)
{
    if (file.trimmed().isEmpty())
        return file;
    const QFileInfo info(file);
    const QString suffix = info.suffix().toLower();
    QString base = file;
    if (suffix == QLatin1String("mp4") || suffix == QLatin1String("webm") ||
        suffix == QLatin1String("m4v"))
        base.chop(suffix.size() + 1);
    return base + VideoExtension(format);
}

QString SuggestedVideoFile(const QString& lastFile, const QString& showPath, VideoFormat format)
{
    if (!lastFile.isEmpty())
        return WithVideoExtension(lastFile, format);
    if (!showPath.isEmpty()) {
        const QFileInfo show(showPath);
        return show.absolutePath() + u'/' + show.completeBaseName() + VideoExtension(format);
    }
    return QDir::homePath() + QStringLiteral("/Slide Show") + VideoExtension(format);
}

} // namespace kavori
