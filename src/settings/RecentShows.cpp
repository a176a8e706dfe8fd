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

bool dropFrom(std::array<QString, 20>& list, const QString& path)
{
    std::array<QString, 20> kept;
    std::size_t n = 0;
    for (const QString& entry : list)
        if (entry.compare(path, Qt::CaseInsensitive) != 0)
            kept[n++] = entry;
    const bool dropped = kept != list;
    list = kept;
    return dropped;
}

} // namespace

bool ForgetShow(const QString& path)
{
    if (path.isEmpty())
        return false;
    Settings& s = CurrentSettings();
    const bool recent = dropFrom(s.RecentShow, path);
    const bool favorite = dropFrom(s.FavoriteShow, path);
    const bool last = s.LastSlideShow.compare(path, Qt::CaseInsensitive) == 0;
    if (recent)
        WriteRecentShows();
    if (favorite)
        WriteFavoriteShows();
    if (last) {
        s.LastSlideShow.clear();
        WriteSettingsKeys({QStringLiteral("LastSlideShow")});
    }
    return recent || favorite || last;
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
