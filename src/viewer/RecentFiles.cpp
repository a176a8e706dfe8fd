#include "RecentFiles.h"

#include "platform/AppPaths.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

namespace kavori {

void AddRecentFile(const QString& path)
{
    Settings& s = CurrentSettings();
    if (!s.KeepRecent || !IsFullPath(path) || path.size() <= 7)
        return;
    auto& list = s.Recent;
    std::size_t at = list.size() - 1;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].compare(path, Qt::CaseInsensitive) == 0) {
            at = i;
            break;
        }
    }
    for (std::size_t i = at; i > 0; --i)
        list[i] = list[i - 1];
    list[0] = path;
    WriteRecentFiles();
}

} // namespace kavori
