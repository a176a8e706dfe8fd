#include "RecentShows.h"

#include "IniStore.h"
#include "Settings.h"
#include "SettingsCatalogue.h"
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

namespace {

// Each entry naming oldPath becomes newPath, or goes (the rest closing up) when newPath is empty.
bool follow(std::array<QString, 20>& list, const QString& oldPath, const QString& newPath)
{
    std::array<QString, 20> out;
    std::size_t n = 0;
    for (const QString& entry : list) {
        if (entry.compare(oldPath, Qt::CaseInsensitive) != 0)
            out[n++] = entry;
        else if (!newPath.isEmpty())
            out[n++] = newPath;
    }
    const bool changed = out != list;
    list = out;
    return changed;
}

} // namespace

bool FollowShow(const QString& oldPath, const QString& newPath)
{
    if (oldPath.isEmpty())
        return false;
    Settings& s = CurrentSettings();
    const bool recent = follow(s.RecentShow, oldPath, newPath);
    const bool favorite = follow(s.FavoriteShow, oldPath, newPath);
    const bool last = s.LastSlideShow.compare(oldPath, Qt::CaseInsensitive) == 0;
    if (recent)
        WriteRecentShows();
    if (favorite)
        WriteFavoriteShows();
    if (last) {
        s.LastSlideShow = newPath;
        WriteSettingsKeys({QStringLiteral("LastSlideShow")});
    }
    return recent || favorite || last;
}

bool ForgetShow(const QString& path)
{
    return FollowShow(path, QString());
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
