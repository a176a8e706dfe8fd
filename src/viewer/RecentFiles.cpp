#include "RecentFiles.h"

#include "platform/AppPaths.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

namespace kavori {

namespace {
// Moves path to the top of a newest-first list (the oldest entry drops off).
template <std::size_t N> void toTop(std::array<QString, N>& list, const QString& path)
{
    std::size_t at = N - 1;
    for (std::size_t i = 0; i < N; ++i) {
        if (list[i].compare(path, Qt::CaseInsensitive) == 0) {
            at = i;
            break;
        }
    }
    for (std::size_t i = at; i > 0; --i)
        list[i] = list[i - 1];
    list[0] = path;
}
} // namespace

void AddRecentFile(const QString& path)
{
    Settings& s = CurrentSettings();
    if (!s.KeepRecent || !IsFullPath(path) || path.size() <= 7)
        return;
    toTop(s.Recent, path);
    toTop(s.MoreRecentFiles, path);
    WriteRecentFiles();
}

QString RecentMenuCaption(int number, const QString& path)
{
    QString shown = RecentFileCaption(path).trimmed();
    shown.replace(u'&', QStringLiteral("&&"));
    return u'&' + QString::number(number) + u' ' + shown;
}

} // namespace kavori
