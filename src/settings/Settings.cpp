#include "Settings.h"

#include "platform/AppPaths.h"

namespace kavori {

QString SettingsFilePath()
{
    return PathNoCase(AppPath(), QStringLiteral("KAVORI.INI"));
}

QString ViewerSection()
{
    return QStringLiteral("Viewer");
}

QString PackageSection()
{
    return QStringLiteral("Package");
}

QString ExtrasSection()
{
    return QStringLiteral("Extras");
}

QString ExportSection()
{
    return QStringLiteral("Export");
}

Settings& CurrentSettings()
{
    static Settings settings;
    return settings;
}

void ResetSettings()
{
    CurrentSettings() = Settings();
}

} // namespace kavori
