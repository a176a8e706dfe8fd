#include "DesktopPrograms.h"

#include <QProcess>
#include <QStandardPaths>

namespace kavori {

namespace {

DesktopLauncher& launcher()
{
    static DesktopLauncher l;
    return l;
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
    if (launcher())
        return launcher()(found.first(), found.mid(1));
    return QProcess::startDetached(found.first(), found.mid(1));
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

void SetDesktopLauncher(DesktopLauncher l)
{
    launcher() = std::move(l);
}

} // namespace kavori
