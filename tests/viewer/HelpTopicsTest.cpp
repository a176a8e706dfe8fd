#include "platform/AppPaths.h"
#include "platform/HelpFile.h"
#include "platform/StartupState.h"
#include "settings/Settings.h"
#include "startup/StartupChecks.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

using namespace kavori;

// Receives the URLs the program would open in the browser.
class HelpUrlCatcher : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public Q_SLOTS:
    void open(const QUrl& url) { urls << url; }
};

class HelpTopicsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        CurrentSettings().StartupDialog = 0;
        EnsureAppHome();
        QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    }
    void TearDown() override
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        KavoriTest::TearDown();
    }
    // Every command of the menus, submenus included, with the menu it sits in.
    static QList<QPair<QMenu*, QAction*>> commands(MainViewFrm& window)
    {
        QList<QPair<QMenu*, QAction*>> all;
        std::function<void(QMenu*)> walk = [&](QMenu* menu) {
            for (QAction* a : menu->actions()) {
                if (a->isSeparator())
                    continue;
                if (a->menu())
                    walk(a->menu());
                else
                    all << qMakePair(menu, a);
            }
        };
        for (QAction* top : window.menuBar()->actions())
            if (top->menu())
                walk(top->menu());
        return all;
    }
    HelpUrlCatcher catcher;
};

// The manual and the menus agree: every command of the main window has its topic, and every
// command topic of the manual names a command that exists.
TEST_F(HelpTopicsTest, EveryMenuCommandHasATopic)
{
    MainViewFrm w;
    const QString page = QString::fromUtf8(readFile(HelpPagePath(QStringLiteral("commands"))));
    ASSERT_FALSE(page.isEmpty());
    QSet<QString> topics;
    const QRegularExpression id(QStringLiteral("id=\"(mnu[A-Za-z0-9]+)\""));
    for (auto it = id.globalMatch(page); it.hasNext();)
        topics.insert(it.next().captured(1));

    QStringList missing;
    QSet<QString> names;
    for (const auto& [menu, action] : commands(w)) {
        names.insert(action->objectName());
        if (!topics.contains(action->objectName()))
            missing << action->objectName();
    }
    EXPECT_GT(names.size(), 100);
    EXPECT_EQ(missing, QStringList());
    QStringList stale;
    for (const QString& topic : std::as_const(topics))
        if (!names.contains(topic))
            stale << topic;
    EXPECT_EQ(stale, QStringList());
    // Its pictures are there.
    const QRegularExpression image(QStringLiteral("<img src=\"([^\"]+)\""));
    int pictures = 0;
    for (auto it = image.globalMatch(page); it.hasNext(); ++pictures) {
        const QString file = it.next().captured(1);
        EXPECT_FALSE(QImage(PathNoCase(AppPath(), QStringLiteral("Help/") + file)).isNull())
            << file.toStdString();
    }
    EXPECT_EQ(pictures, 8);
    // The contents lead to the page.
    EXPECT_TRUE(readFile(HelpPagePath()).contains("href=\"commands.html\""));
}

// F1 on a highlighted entry opens its topic; F1 elsewhere opens the contents.
TEST_F(HelpTopicsTest, F1OnAMenuEntryOpensItsTopic)
{
    MainViewFrm w;
    QMenu* menu = nullptr;
    QAction* wallpaper = nullptr;
    for (const auto& [m, a] : commands(w))
        if (a->objectName() == QLatin1String("mnuSetWallpaper")) {
            menu = m;
            wallpaper = a;
        }
    ASSERT_TRUE(menu && wallpaper);
    menu->popup(QPoint(0, 0));
    menu->setActiveAction(wallpaper);
    QKeyEvent override(QEvent::ShortcutOverride, Qt::Key_F1, Qt::NoModifier);
    QCoreApplication::sendEvent(menu, &override);
    EXPECT_TRUE(override.isAccepted());
    QKeyEvent press(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QCoreApplication::sendEvent(menu, &press);
    ASSERT_EQ(catcher.urls.size(), 1);
    EXPECT_EQ(catcher.urls[0].fileName(), QStringLiteral("commands.html"));
    EXPECT_EQ(catcher.urls[0].fragment(), QStringLiteral("mnuSetWallpaper"));
    EXPECT_TRUE(QFile::exists(catcher.urls[0].toLocalFile()));
    EXPECT_FALSE(menu->isVisible());

    w.menus().action(QStringLiteral("mnuHelpContents"))->trigger();
    ASSERT_EQ(catcher.urls.size(), 2);
    EXPECT_EQ(catcher.urls[1].fileName(), QStringLiteral("index.html"));
    EXPECT_EQ(catcher.urls[1].fragment(), QString());
}

// The start-up messages' Help buttons open their own topic while they are shown, and each
// topic is on its page.
TEST_F(HelpTopicsTest, StartupMessagesHaveTheirTopics)
{
    const QString page = QString::fromUtf8(readFile(HelpPagePath(QStringLiteral("startup"))));
    for (const char* place : {"colors", "colors256", "registry", "moved"})
        EXPECT_TRUE(page.contains(QStringLiteral("id=\"") + QString::fromLatin1(place) + u'"'))
            << place;
    EXPECT_TRUE(readFile(HelpPagePath()).contains("href=\"startup.html\""));

    EXPECT_EQ(MessageHelpTopic::current(), QString());
    {
        const MessageHelpTopic outer(QStringLiteral("startup#registry"));
        {
            const MessageHelpTopic inner(QStringLiteral("startup#moved"));
            EXPECT_EQ(MessageHelpTopic::current(), QStringLiteral("startup#moved"));
        }
        EXPECT_EQ(MessageHelpTopic::current(), QStringLiteral("startup#registry"));
        ShowHelp(MessageHelpTopic::current());
    }
    EXPECT_EQ(MessageHelpTopic::current(), QString());
    ASSERT_EQ(catcher.urls.size(), 1);
    EXPECT_EQ(catcher.urls[0].fileName(), QStringLiteral("startup.html"));
    EXPECT_EQ(catcher.urls[0].fragment(), QStringLiteral("registry"));

    // The program-path check of a first start shows its message under its topic.
    QString topicShown;
    prompts().onMessage = [&](const kavori::test::PromptRecorder::Call&) {
        topicShown = MessageHelpTopic::current();
    };
    EXPECT_TRUE(CheckProgramPath());
    EXPECT_EQ(topicShown, QStringLiteral("startup#registry"));
}

#include "HelpTopicsTest.moc"
