#include "HelpFile.h"

#include "AppPaths.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QPointer>
#include <QShortcut>
#include <QUrl>
#include <QWidget>

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
const char kTopicProperty[] = "kavoriHelpTopic";
} // namespace

void InstallHelpKey(QWidget* window, const QString& topic)
{
    window->setProperty(kTopicProperty, topic);
    if (window->findChild<QShortcut*>(QStringLiteral("HelpKey"), Qt::FindDirectChildrenOnly))
        return;
    auto* key = new QShortcut(QKeySequence(Qt::Key_F1), window);
    key->setObjectName(QStringLiteral("HelpKey"));
    // Read when pressed: a derived window may change the topic after its base installed it.
    QObject::connect(key, &QShortcut::activated, window,
                     [w = QPointer<QWidget>(window)] { ShowWindowHelp(w); });
}

QString WindowHelpTopic(const QWidget* window)
{
    return window ? window->property(kTopicProperty).toString() : QString();
}

void ShowWindowHelp(const QWidget* window)
{
    ShowHelp(WindowHelpTopic(window));
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
