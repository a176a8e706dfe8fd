#include "XScreenSaverSaver.h"

#include "XScreenSaverFile.h"
#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTimer>

namespace kavori {

namespace {

constexpr int kHoldOffMs = 50 * 1000;

// The file as it stands; nullopt when it exists but cannot be read (then it is never written).
std::optional<XScreenSaverFile> readConfig(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return XScreenSaverFile::Parse({});
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return XScreenSaverFile::Parse(file.readAll());
}

QString shellQuoted(const QString& path)
{
    static const QString plain =
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-+,=");
    for (QChar c : path) {
        if (!plain.contains(c)) {
            QString q = path;
            q.replace(u'\'', QStringLiteral("'\\''"));
            return u'\'' + q + u'\'';
        }
    }
    return path;
}

} // namespace

QString XScreenSaverConfigPath()
{
    return QDir::homePath() + QStringLiteral("/.xscreensaver");
}

XScreenSaverSaver::XScreenSaverSaver(QString configPath, QString modulePath, Runner runner)
    : m_config(std::move(configPath)), m_module(std::move(modulePath)), m_run(std::move(runner))
{
    if (!m_run) {
        m_run = [](const QString& program, const QStringList& arguments) {
            QProcess::startDetached(program, arguments);
        };
    }
}

XScreenSaverSaver::~XScreenSaverSaver() = default;

QString XScreenSaverSaver::programEntry(const QString& shortPath) const
{
    return u'"' + SaverModuleName() + QStringLiteral("\"  ") + shellQuoted(shortPath) +
           QStringLiteral(" /S");
}

QString XScreenSaverSaver::MakeCurrent()
{
    const QString shortPath = ShortPathName(m_module);
    if (shortPath.isEmpty())
        return MissingModuleMessage(m_module);
    std::optional<XScreenSaverFile> file = readConfig(m_config);
    if (!file)
        return {};
    const QString entry = programEntry(shortPath);
    int index = file->findProgram(SaverModuleName());
    if (index < 0)
        index = file->addProgram(entry);
    else if (file->programs().value(index) != entry && !file->replaceProgram(index, entry))
        index = file->addProgram(entry); // ours was spread over lines: a fresh one
    file->setValue(QStringLiteral("mode"), QStringLiteral("one"));
    file->setValue(QStringLiteral("selected"), QString::number(index));

    // Written beside it and renamed into place: the user's file is never left half written.
    WriteFileWhole(m_config, file->text(), false);
    return {};
}

QString XScreenSaverSaver::CurrentSaverName()
{
    const std::optional<XScreenSaverFile> file = readConfig(m_config);
    if (!file || file->value(QStringLiteral("mode")) != QLatin1String("one"))
        return {};
    bool ok = false;
    const int selected = file->value(QStringLiteral("selected")).toInt(&ok);
    const QString entry = ok ? file->programs().value(selected) : QString();
    if (entry.isEmpty() || XScreenSaverFile::IsDisabled(entry))
        return {};
    return XScreenSaverFile::ProgramName(entry);
}

QString XScreenSaverSaver::CurrentSaverValue()
{
    const std::optional<XScreenSaverFile> file = readConfig(m_config);
    return file ? file->value(QStringLiteral("mode")) : QString();
}

void XScreenSaverSaver::DisableSaver()
{
    if (!m_beat) {
        m_beat = std::make_unique<QTimer>();
        m_beat->setInterval(kHoldOffMs);
        QObject::connect(m_beat.get(), &QTimer::timeout, [this] { holdOff(); });
    }
    holdOff();
    m_beat->start();
}

void XScreenSaverSaver::RestoreSaver(const QString&)
{
    // The user's file was never changed; only the holding off stops.
    if (m_beat)
        m_beat->stop();
}

bool XScreenSaverSaver::isHoldingOff() const
{
    return m_beat && m_beat->isActive();
}

void XScreenSaverSaver::holdOff()
{
    m_run(QStringLiteral("xscreensaver-command"), {QStringLiteral("-deactivate")});
}

bool XScreenSaverSaver::SaverActive()
{
    if (!QFile::exists(m_config))
        return false;
    const QString mode = CurrentSaverValue();
    return !mode.isEmpty() && mode != QLatin1String("off");
}

bool XScreenSaverSaver::PasswordInUse()
{
    const std::optional<XScreenSaverFile> file = readConfig(m_config);
    return file && file->value(QStringLiteral("lock"))
                           .compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
}

} // namespace kavori
