#include "SystemInformation.h"

#include "AppPaths.h"
#include "Display.h"
#include "SoundDevices.h"

#include <QAudioDevice>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <QMediaDevices>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QSysInfo>
#include <QThread>

namespace kavori {

namespace {

QString readText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString grouped(qint64 n)
{
    return QLocale(QLocale::English).toString(n);
}

QString systemLine()
{
    return QSysInfo::prettyProductName() + QStringLiteral(", ") + QSysInfo::kernelType() + u' ' +
           QSysInfo::kernelVersion();
}

QString processorLine()
{
    QString name = ParseProcessorName(readText(QStringLiteral("/proc/cpuinfo")));
    if (name.isEmpty())
        name = QStringLiteral("Unknown processor");
    const int cores = QThread::idealThreadCount();
    return name + QStringLiteral(" (") + QSysInfo::currentCpuArchitecture() + QStringLiteral(", ") +
           QString::number(cores) +
           (cores == 1 ? QStringLiteral(" core)") : QStringLiteral(" cores)"));
}

QString memoryLine()
{
    const MemoryInfo m = ParseMemInfo(readText(QStringLiteral("/proc/meminfo")));
    if (m.totalKb <= 0)
        return QStringLiteral("Unknown");
    return MegabytesText(m.totalKb * 1024) + QStringLiteral(" in all, ") +
           MegabytesText(m.availableKb * 1024) + QStringLiteral(" free");
}

QString displayLine()
{
    const QScreen* screen = qobject_cast<QGuiApplication*>(QCoreApplication::instance())
                                ? QGuiApplication::primaryScreen()
                                : nullptr;
    const QString depth = QString::number(DisplayColorDepth()) + QStringLiteral(" bits per pixel");
    if (!screen)
        return QStringLiteral("No screen, ") + depth;
    const QSize size = screen->size() * screen->devicePixelRatio();
    return QString::number(size.width()) + QStringLiteral(" x ") + QString::number(size.height()) +
           QStringLiteral(" pixels, ") + depth;
}

QString gstreamerLine()
{
    const QString inspect = QStandardPaths::findExecutable(QStringLiteral("gst-inspect-1.0"));
    if (!inspect.isEmpty()) {
        QProcess process;
        process.start(inspect, {QStringLiteral("--version")});
        if (process.waitForFinished(3000)) {
            const QString version =
                ParseGStreamerVersion(QString::fromUtf8(process.readAllStandardOutput()));
            if (!version.isEmpty())
                return version;
        } else {
            process.kill();
            process.waitForFinished(1000);
        }
    }
    // Without its tools the version cannot be asked; say what plays the sounds instead.
    const QString backend = qEnvironmentVariable("QT_MEDIA_BACKEND");
    return QStringLiteral("Not found; sounds and movies play through Qt Multimedia") +
           (backend.isEmpty() ? QString() : QStringLiteral(" (") + backend + u')');
}

QString soundLine()
{
    QStringList outputs;
    if (DetectWaveDevices()) {
        for (const QAudioDevice& device : QMediaDevices::audioOutputs())
            outputs << device.description();
        if (outputs.isEmpty())
            outputs << QStringLiteral("Sound output");
    }
    QString line =
        outputs.isEmpty() ? QStringLiteral("No sound output") : outputs.join(QStringLiteral("; "));
    const QString font = SoundFontPath();
    line += DetectMidiDevices() ? QStringLiteral("; MIDI through the SoundFont ") + font
                                : QStringLiteral("; no MIDI output");
    return line;
}

QString programFolderLine()
{
    const QString folder = AppPath();
    const QStorageInfo disk(folder);
    if (!disk.isValid() || !disk.isReady())
        return folder + QStringLiteral(": its disk cannot be read");
    return folder + QStringLiteral(": ") + MegabytesText(disk.bytesAvailable()) +
           QStringLiteral(" free of ") + MegabytesText(disk.bytesTotal());
}

} // namespace

MemoryInfo ParseMemInfo(const QString& procMeminfo)
{
    MemoryInfo out;
    qint64 free = -1;
    for (const QString& line : procMeminfo.split(u'\n')) {
        const QString key = line.section(u':', 0, 0).trimmed();
        const qint64 kb = line.section(u':', 1).trimmed().section(u' ', 0, 0).toLongLong();
        if (key == QLatin1String("MemTotal"))
            out.totalKb = kb;
        else if (key == QLatin1String("MemAvailable"))
            out.availableKb = kb;
        else if (key == QLatin1String("MemFree"))
            free = kb;
    }
    // Kernels before 3.14 have no MemAvailable.
    if (out.availableKb == 0 && free >= 0)
        out.availableKb = free;
    return out;
}

QString ParseProcessorName(const QString& procCpuinfo)
{
    QString fallback;
    for (const QString& line : procCpuinfo.split(u'\n')) {
        const QString key = line.section(u':', 0, 0).trimmed();
        const QString value = line.section(u':', 1).simplified();
        if (value.isEmpty())
            continue;
        if (key == QLatin1String("model name") || key == QLatin1String("Model"))
            return value;
        if (fallback.isEmpty() &&
            (key == QLatin1String("Hardware") || key == QLatin1String("cpu model")))
            fallback = value;
    }
    return fallback;
}

QString ParseGStreamerVersion(const QString& gstInspectOutput)
{
    static const QRegularExpression version(QStringLiteral("^GStreamer\\s+(\\d+(\\.\\d+)+)"),
                                            QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = version.match(gstInspectOutput);
    return match.hasMatch() ? match.captured(1) : QString();
}

QString MegabytesText(qint64 bytes)
{
    return grouped(bytes / (1024 * 1024)) + QStringLiteral(" MB");
}

QVector<SystemInfoLine> GatherSystemInformation()
{
    return {
        {QStringLiteral("System"), systemLine()},
        {QStringLiteral("Processor"), processorLine()},
        {QStringLiteral("Memory"), memoryLine()},
        {QStringLiteral("Display"), displayLine()},
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion())},
        {QStringLiteral("GStreamer"), gstreamerLine()},
        {QStringLiteral("Sound"), soundLine()},
        {QStringLiteral("Program folder"), programFolderLine()},
    };
}

} // namespace kavori
