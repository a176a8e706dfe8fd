#include "RecentShows.h"

#include "IniStore.h"
#include "Settings.h"
#include "platform/AppPaths.h"

namespace kavori {

void AddRecentShow(const QString& path)
{
    // A user who keeps no recent lists gets none, for shows as for pictures.
    if (!CurrentSettings().KeepRecent || path.size() < 8 || !IsFullPath(path))
        return;
    auto& list = CurrentSettings().RecentShow;
    for (const QString& entry : list) {
        if (entry.compare(path, Qt::CaseInsensitive) == 0)
            return;
    }
    for (std::size_t i = list.size() - 1; i > 0; --i)
        list[i] = list[i - 1];
    list[0] = path.left(1).toUpper() + path.mid(1);
    WriteRecentShows();
}

void WriteRecentShows()
{
    const QString file = SettingsFilePath();
    LoadIniFile(file);
    const auto& list = CurrentSettings().RecentShow;
    for (std::size_t i = 0; i < list.size(); ++i)
        SetIniValue(ViewerSection(), QStringLiteral("RecentShow") + QString::number(i + 1),
                    list[i]);
    SaveIniFile(file);
}

} // namespace kavori
