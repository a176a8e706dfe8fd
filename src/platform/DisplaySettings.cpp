#include "DisplaySettings.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace kavori {

bool OpenDisplaySettings()
{
    // The display settings of the common desktops, most common first.
    const QList<QStringList> candidates = {
        {QStringLiteral("gnome-control-center"), QStringLiteral("display")},
        {QStringLiteral("kcmshell6"), QStringLiteral("kcm_kscreen")},
        {QStringLiteral("kcmshell5"), QStringLiteral("kcm_kscreen")},
        {QStringLiteral("xfce4-display-settings")},
        {QStringLiteral("cinnamon-settings"), QStringLiteral("display")},
        {QStringLiteral("mate-display-properties")},
        {QStringLiteral("lxqt-config-monitor")},
        {QStringLiteral("arandr")},
    };
    for (const QStringList& command : candidates) {
        const QString program = QStandardPaths::findExecutable(command.first());
        if (!program.isEmpty() && QProcess::startDetached(program, command.mid(1)))
            return true;
    }
    return false;
}

} // namespace kavori
