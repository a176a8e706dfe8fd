#include "editor/ExitFrm.h"
#include "editor/SlideLoadFrm.h"
#include "editor/SlideRangeFrm.h"
#include "editor/frmAddDesc.h"
#include "editor/frmAdvDescEdit.h"
#include "editor/frmAdvDescription.h"
#include "editor/frmDescription.h"
#include "editor/frmEditSounds.h"
#include "editor/frmExportVideo.h"
#include "editor/frmPlaybackOptions.h"
#include "editor/frmSlideDup.h"
#include "editor/frmSlideInfo.h"
#include "editor/frmSlideProperties.h"
#include "editor/frmSlideWizard.h"
#include "editor/frmTransition.h"
#include "files/FileDialogs.h"
#include "files/frmCopyImages.h"
#include "files/frmDuplicateFiles.h"
#include "files/frmFavorites.h"
#include "files/frmFindFiles.h"
#include "files/frmQuickFolders.h"
#include "packaging/DelPackageFrm.h"
#include "packaging/PackageFrm.h"
#include "packaging/SaverSetup.h"
#include "platform/AppPaths.h"
#include "platform/HelpFile.h"
#include "platform/StartupState.h"
#include "settings/Settings.h"
#include "settings/frmLanguage.h"
#include "slideshow/SlideShow.h"
#include "startup/StartupChecks.h"
#include "support/KavoriTest.h"
#include "thumbs/frmThumbnail.h"
#include "viewer/MainViewFrm.h"
#include "viewer/frmPreferences.h"

#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QUrl>

#include <functional>
#include <memory>

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

// The manual holds together: every link of every page leads to a page and a place on it that
// exist, every picture is there and can be read, and the contents lead to every page.
TEST_F(HelpTopicsTest, EveryPageLinkPlaceAndPictureExists)
{
    const QString folder = PathNoCase(AppPath(), QStringLiteral("Help"));
    const QRegularExpression idPattern(QStringLiteral("id=\"([^\"]+)\""));
    const QRegularExpression linkPattern(QStringLiteral("href=\"([^\"]+)\""));
    const QRegularExpression imagePattern(QStringLiteral("<img src=\"([^\"]+)\""));
    QHash<QString, QSet<QString>> ids;
    QHash<QString, QString> pages;
    for (const QString& name : QDir(folder).entryList({QStringLiteral("*.html")}, QDir::Files)) {
        const QString text = QString::fromUtf8(readFile(folder + u'/' + name));
        pages.insert(name, text);
        for (auto it = idPattern.globalMatch(text); it.hasNext();) {
            const QString id = it.next().captured(1);
            EXPECT_FALSE(ids[name].contains(id))
                << "twice on " << name.toStdString() << ": " << id.toStdString();
            ids[name].insert(id);
        }
    }
    ASSERT_GE(pages.size(), 17);

    QStringList broken;
    QSet<QString> reached;
    int pictures = 0;
    for (auto page = pages.cbegin(); page != pages.cend(); ++page) {
        for (auto it = linkPattern.globalMatch(page.value()); it.hasNext();) {
            const QString link = it.next().captured(1);
            if (link.startsWith(QLatin1String("http")))
                continue;
            const QString file =
                link.section(u'#', 0, 0).isEmpty() ? page.key() : link.section(u'#', 0, 0);
            const QString place = link.section(u'#', 1);
            if (!pages.contains(file) || (!place.isEmpty() && !ids[file].contains(place)))
                broken << page.key() + QStringLiteral(" -> ") + link;
            if (page.key() == QLatin1String("index.html"))
                reached.insert(file);
        }
        for (auto it = imagePattern.globalMatch(page.value()); it.hasNext(); ++pictures) {
            const QString file = it.next().captured(1);
            if (QImage(folder + u'/' + file).isNull())
                broken << page.key() + QStringLiteral(" -> ") + file;
        }
    }
    EXPECT_EQ(broken, QStringList());
    EXPECT_EQ(pictures, 23);
    QStringList unreached;
    for (const QString& name : pages.keys())
        if (name != QLatin1String("index.html") && !reached.contains(name))
            unreached << name;
    EXPECT_EQ(unreached, QStringList()) << "pages the contents do not lead to";
}

// F1 in each window, and its Help button where it has one, opens that window's page at its
// own place, and the page has that place.
TEST_F(HelpTopicsTest, EveryWindowOpensItsOwnPage)
{
    ResetShow();
    const QString folder = root() + QStringLiteral("show/");
    QDir().mkpath(folder);
    for (int i = 0; i < 2; ++i) {
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(i ? Qt::blue : Qt::red);
        const QString file = folder + QStringLiteral("pic%1.bmp").arg(i);
        ASSERT_TRUE(picture.save(file, "BMP"));
        CurrentShow().slides << NewSlide(file);
    }
    const QString picture = folder + QStringLiteral("pic0.bmp");
    MainViewFrm main;

    using Make = std::function<QWidget*()>;
    const QList<QPair<QString, Make>> windows = {
        {"editor", [] { return new SlideLoadFrm; }},
        {"editor#frmPlaybackOptions", [] { return new frmPlaybackOptions; }},
        {"editor#ExitFrm", [] { return new ExitFrm; }},
        {"editor#mnuViewList", [] { return new frmSlideDup({1}); }},
        {"editor#mnuViewList", [] { return new SlideRangeFrm(QStringLiteral("Range:"), 0); }},
        {"editor#mnuFile", [] { return new frmSlideInfo; }},
        {"slides#frmSlideProperties", [] { return new frmSlideProperties(0); }},
        {"slides#frmTransition", [] { return new frmTransition(0); }},
        {"slides#frmEditSounds", [] { return new frmEditSounds(0); }},
        {"slides#frmDescription", [] { return new frmDescription(0); }},
        {"slides#frmAdvDescription", [=] { return new frmAdvDescription(folder); }},
        {"slides#frmAdvDescription", [=] { return new frmAddDesc({picture}); }},
        {"slides#frmAdvDescription",
         [] { return new frmAdvDescEdit(QStringLiteral("pic0.bmp"), QStringLiteral("Red")); }},
        {"wizard", [] { return new frmSlideWizard; }},
        {"export", [] { return new frmExportVideo; }},
        {"files#frmCopyImages", [=] { return new frmCopyImages(picture); }},
        {"files#frmMoveImages", [=] { return new frmMoveImages(picture); }},
        {"files#frmMoveCurrentImg", [=] { return new frmMoveCurrentImg(picture); }},
        {"files#DeleteImgFrm", [=] { return new DeleteImgFrm(picture); }},
        {"files#RenameImgFrm", [=] { return new RenameImgFrm(picture); }},
        {"files#DeleteFolderFrm", [=] { return new DeleteFolderFrm(folder); }},
        {"files#frmDuplicateFiles", [&] { return new frmDuplicateFiles(&main); }},
        {"commands#mnuFavoritesList", [] { return new frmFavorites; }},
        {"commands#mnuQuickFolders", [] { return new frmQuickFolders; }},
        {"commands#mnuFindImage", [=] { return new frmFindFiles(FindKind::Pictures, folder); }},
        {"commands#mnuFindSlideShow",
         [=] { return new frmFindFiles(FindKind::SlideShows, folder); }},
        {"package", [] { return new PackageFrm; }},
        {"package#DelPackageFrm", [] { return new DelPackageFrm; }},
        {"screensaver", [] { return new SaverSetup; }},
        {"preferences", [] { return new frmPreferences; }},
        {"thumbnails", [&] { return new frmThumbnail(&main); }},
        {"languages", [] { return new frmLanguage; }},
    };
    int helpButtons = 0;
    for (const auto& [topic, make] : windows) {
        SCOPED_TRACE(topic.toStdString());
        std::unique_ptr<QWidget> window(make());
        EXPECT_EQ(WindowHelpTopic(window.get()), topic) << window->objectName().toStdString();
        const QString page = topic.section(u'#', 0, 0);
        const QString place = topic.section(u'#', 1);
        const QString path =
            PathNoCase(AppPath(), QStringLiteral("Help/") + page + QStringLiteral(".html"));
        ASSERT_TRUE(QFile::exists(path));
        if (!place.isEmpty()) {
            const QByteArray id = "id=\"" + place.toUtf8() + '"';
            EXPECT_TRUE(readFile(path).contains(id));
        }

        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        catcher.urls.clear();
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : window.get(),
                        Qt::Key_F1);
        ASSERT_EQ(catcher.urls.size(), 1);
        EXPECT_EQ(catcher.urls[0].toLocalFile(), path);
        EXPECT_EQ(catcher.urls[0].fragment(), place);
        if (auto* help = window->findChild<QPushButton*>(QStringLiteral("CmdHelp"))) {
            ++helpButtons;
            catcher.urls.clear();
            help->click();
            ASSERT_EQ(catcher.urls.size(), 1);
            EXPECT_EQ(catcher.urls[0].toLocalFile(), path);
        }
        window->hide();
    }
    EXPECT_EQ(helpButtons, 3);
    ResetShow();
}

#include "HelpTopicsTest.moc"
