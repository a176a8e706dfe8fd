#include "HelpFile.h"

#include "AppPaths.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace kavori {

QString HelpPagePath(const QString& topic)
{
    const QString page = PathNoCase(
        AppPath(), QStringLiteral("Help/") + (topic.isEmpty() ? QStringLiteral("index") : topic) +
                       QStringLiteral(".html"));
    if (QFileInfo(page).isFile())
        return page;
    return PathNoCase(AppPath(), QStringLiteral("Help/index.html"));
}

void ShowHelp(const QString& topic)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(HelpPagePath(topic)));
}

} // namespace kavori
