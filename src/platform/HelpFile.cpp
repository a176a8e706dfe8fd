#include "HelpFile.h"

#include "AppPaths.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace kavori {

QString HelpPagePath(const QString& topic)
{
    const QString name = topic.section(u'#', 0, 0);
    const QString page = PathNoCase(
        AppPath(), QStringLiteral("Help/") + (name.isEmpty() ? QStringLiteral("index") : name) +
                       QStringLiteral(".html"));
    if (QFileInfo(page).isFile())
        return page;
    return PathNoCase(AppPath(), QStringLiteral("Help/index.html"));
}

void ShowHelp(const QString& topic)
{
    QUrl url = QUrl::fromLocalFile(HelpPagePath(topic));
    const QString place = topic.section(u'#', 1);
    if (!place.isEmpty() && !url.path().endsWith(QLatin1String("/index.html")))
        url.setFragment(place);
    QDesktopServices::openUrl(url);
}

QString CommandHelpTopic(const QString& command)
{
    return QStringLiteral("commands#") + command;
}

namespace {
QString& messageTopic()
{
    static QString topic;
    return topic;
}
} // namespace

MessageHelpTopic::MessageHelpTopic(const QString& topic) : m_previous(messageTopic())
{
    messageTopic() = topic;
}

MessageHelpTopic::~MessageHelpTopic()
{
    messageTopic() = m_previous;
}

QString MessageHelpTopic::current()
{
    return messageTopic();
}

} // namespace kavori
