#include "DesktopPrograms.h"

#include <QProcess>
#include <QStandardPaths>

namespace kavori {

namespace {

DesktopRunner& runner()
{
    static DesktopRunner r;
    return r;
}

QStringList command(std::initializer_list<const char*> words)
{
    QStringList out;
    for (const char* w : words)
        out << QString::fromLatin1(w);
    return out;
}

} // namespace

DesktopCandidates DisplaySettingsPrograms()
{
    return {command({"gnome-control-center", "display"}),
            command({"kcmshell6", "kcm_kscreen"}),
            command({"kcmshell5", "kcm_kscreen"}),
            command({"xfce4-display-settings"}),
            command({"cinnamon-settings", "display"}),
            command({"mate-display-properties"}),
            command({"lxqt-config-monitor"}),
            command({"arandr"})};
}

DesktopCandidates SoundSettingsPrograms()
{
    return {command({"gnome-control-center", "sound"}),
            command({"kcmshell6", "kcm_pulseaudio"}),
            command({"kcmshell5", "kcm_pulseaudio"}),
            command({"cinnamon-settings", "sound"}),
            command({"mate-volume-control"}),
            command({"pavucontrol-qt"}),
            command({"pavucontrol"}),
            command({"xfce4-mixer"})};
}

DesktopCandidates SystemSettingsPrograms()
{
    return {command({"gnome-control-center"}), command({"systemsettings"}),
            command({"systemsettings5"}),      command({"xfce4-settings-manager"}),
            command({"cinnamon-settings"}),    command({"mate-control-center"}),
            command({"lxqt-config"})};
}

DesktopCandidates DiskUtilityPrograms()
{
    return {command({"gnome-disks"}), command({"partitionmanager"}),
            command({"kdepartitionmanager"}), command({"mate-disk-utility"}), command({"gparted"})};
}

QStringList FindDesktopProgram(const DesktopCandidates& candidates)
{
    for (const QStringList& candidate : candidates) {
        if (candidate.isEmpty())
            continue;
        const QString program = QStandardPaths::findExecutable(candidate.first());
        if (!program.isEmpty())
            return QStringList{program} + candidate.mid(1);
    }
    return {};
}

bool StartDesktopProgram(const DesktopCandidates& candidates)
{
    const QStringList found = FindDesktopProgram(candidates);
    if (found.isEmpty())
        return false;
    if (runner())
        return runner()(found.first(), found.mid(1), nullptr);
    return QProcess::startDetached(found.first(), found.mid(1));
}

bool RunDesktopCommand(const QStringList& command, QString* output)
{
    QString ignored;
    QString& out = output ? *output : ignored;
    out.clear();
    const QStringList found = FindDesktopProgram({command});
    if (found.isEmpty())
        return false;
    if (runner())
        return runner()(found.first(), found.mid(1), &out);
    QProcess process;
    process.start(found.first(), found.mid(1));
    // A settings tool answers at once; one that hangs (a desktop shell that is not responding)
    // must not freeze the window for long.
    if (!process.waitForFinished(15000)) {
        process.kill();
        process.waitForFinished(1000);
        return false;
    }
    out = QString::fromLocal8Bit(process.readAllStandardOutput());
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString DesktopProgramNames(const DesktopCandidates& candidates)
{
    QStringList names;
    for (const QStringList& candidate : candidates)
        if (!candidate.isEmpty() && !names.contains(candidate.first()))
            names << candidate.first();
    if (names.size() < 2)
        return names.join(QString());
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

void SetDesktopRunner(DesktopRunner r)
{
    runner() = std::move(r);
}

void SetDesktopLauncher(DesktopLauncher l)
{
    if (!l) {
        runner() = {};
        return;
    }
    runner() = [l = std::move(l)](const QString& program, const QStringList& arguments, QString*) {
        return l(program, arguments);
    };
}

} // namespace kavori
