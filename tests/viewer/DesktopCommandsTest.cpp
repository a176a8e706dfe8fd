#include "fileutil/Wallpaper.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPrograms.h"
#include "platform/StartupState.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QUrl>

using namespace kavori;

// The main window's desktop commands end to end, with the desktop's tools recorded.
class DesktopCommandsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        CurrentSettings().StartupDialog = 0;
        for (const char* name :
             {"PATH", "XDG_CURRENT_DESKTOP", "DISPLAY", "DESKTOP_SESSION", "XDG_DATA_DIRS"})
            m_saved << qMakePair(QByteArray(name), qgetenv(name));
        bin = root() + QStringLiteral("bin/");
        QDir().mkpath(bin);
        qputenv("PATH", QFile::encodeName(bin));
        qunsetenv("DISPLAY");
        qunsetenv("DESKTOP_SESSION");
        SetDesktopRunner(
            [this](const QString& program, const QStringList& arguments, QString* output) {
                const QString line =
                    (QStringList{QFileInfo(program).fileName()} + arguments).join(u' ');
                calls << line;
                for (auto it = replies.cbegin(); it != replies.cend(); ++it)
                    if (line.startsWith(it.key()) && output)
                        *output = it.value();
                return true;
            });
    }
    void TearDown() override
    {
        SetDesktopRunner({});
        for (const auto& [name, value] : std::as_const(m_saved)) {
            if (value.isNull())
                qunsetenv(name.constData());
            else
                qputenv(name.constData(), value);
        }
        KavoriTest::TearDown();
    }
    void install(const QString& name)
    {
        const QString path = writeFile(bin + name, "#!/bin/sh\nexit 0\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    static void run(MainViewFrm& w, const char* action)
    {
        QAction* a = w.menus().action(QString::fromLatin1(action));
        ASSERT_TRUE(a->isEnabled()) << action;
        a->trigger();
    }
    QString picture(const QString& name, Qt::GlobalColor color)
    {
        QImage image(30, 20, QImage::Format_RGB32);
        image.fill(color);
        const QString path = root() + name;
        image.save(path);
        return path;
    }

    QString bin;
    QStringList calls;
    QMap<QString, QString> replies;
    QList<QPair<QByteArray, QByteArray>> m_saved;
};

TEST_F(DesktopCommandsTest, WallpaperCommandsFromTheSystemMenu)
{
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    install(QStringLiteral("gsettings"));
    MainViewFrm w;

    run(w, "mnuSetWallpaper");
    EXPECT_EQ(prompts().texts(),
              QStringList{"An image has not been opened yet, unable to set the wallpaper..."});
    EXPECT_EQ(calls, QStringList());

    // The options of the settings file choose the style; the desktop gets a kept copy.
    const QString photo = picture(QStringLiteral("beach.jpg"), Qt::yellow);
    ASSERT_TRUE(w.openImage(photo));
    CurrentSettings().WallpaperStretch = true;
    CurrentSettings().WallpaperAspect = true;
    run(w, "mnuSetWallpaper");
    const QString copy = PathNoCase(AppPath(), QStringLiteral("Wallpaper/beach.jpg"));
    EXPECT_TRUE(QFileInfo(copy).isFile());
    const QString uri = QUrl::fromLocalFile(copy).toString(QUrl::FullyEncoded);
    EXPECT_TRUE(calls.contains(QStringLiteral("gsettings set org.gnome.desktop.background "
                                              "picture-uri '") +
                               uri + u'\''))
        << calls.join(u'\n').toStdString();
    EXPECT_TRUE(calls.contains(
        QStringLiteral("gsettings set org.gnome.desktop.background picture-options 'scaled'")));
    calls.clear();
    run(w, "mnuTileImage");
    EXPECT_TRUE(calls.contains(
        QStringLiteral("gsettings set org.gnome.desktop.background picture-options 'wallpaper'")));
    calls.clear();
    run(w, "mnuClearWallpaper");
    EXPECT_EQ(calls, QStringList{QStringLiteral(
                         "gsettings set org.gnome.desktop.background picture-options 'none'")});

    // Open Wallpaper shows the desktop's picture in the window.
    const QString other = picture(QStringLiteral("forest.png"), Qt::green);
    replies[QStringLiteral("gsettings get org.gnome.desktop.background picture-options")] =
        QStringLiteral("'zoom'");
    replies[QStringLiteral("gsettings get org.gnome.desktop.background picture-uri")] =
        u'\'' + QUrl::fromLocalFile(other).toString() + u'\'';
    run(w, "mnuLoadWallpaper");
    EXPECT_EQ(w.document().currentFile(), other);
    EXPECT_EQ(prompts().calls.size(), 1);

    // No desktop setting anywhere: said once, nothing run.
    prompts().clear();
    calls.clear();
    qunsetenv("XDG_CURRENT_DESKTOP");
    for (const char* command : {"mnuSetWallpaper", "mnuTileImage", "mnuClearWallpaper"})
        run(w, command);
    EXPECT_EQ(prompts().texts(), QStringList(3, NoWallpaperSettingMessage()));
    EXPECT_EQ(calls, QStringList());
}

// Open With: the user picks from the desktop's applications for the picture's type, the choice
// is kept in the settings file and names a menu entry, and the picture opens in it.
TEST_F(DesktopCommandsTest, OpenWithProgramsArePickedRememberedAndStarted)
{
    // Our applications first; the system's folders stay, for its MIME database (and any
    // applications it has, which come after the user's default).
    qputenv("XDG_DATA_DIRS",
            QFile::encodeName(root() + QStringLiteral("usr:/usr/local/share:/usr/share")));
    writeFile(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/mimeapps.list"),
              "[Default Applications]\nimage/png=paint.desktop\n");
    writeFile(QStringLiteral("usr/applications/paint.desktop"),
              "[Desktop Entry]\nType=Application\nName=Paint && Draw\nExec=paint --open %f\n"
              "MimeType=image/png;\n");
    writeFile(
        QStringLiteral("usr/applications/kavori.desktop"),
        "[Desktop Entry]\nType=Application\nName=Kavori\nExec=Kavori %F\nMimeType=image/png;\n");
    writeFile(
        QStringLiteral("usr/applications/jpegonly.desktop"),
        "[Desktop Entry]\nType=Application\nName=Jpeg Tool\nExec=jt %f\nMimeType=image/jpeg;\n");
    install(QStringLiteral("paint"));
    MainViewFrm w;
    for (const char* entry : {"mnuOpenEditor", "mnuOpenEditor3"})
        EXPECT_FALSE(w.menus().action(QString::fromLatin1(entry))->isVisible());

    const QString png = picture(QStringLiteral("drawing.png"), Qt::cyan);
    ASSERT_TRUE(w.openImage(png));
    prompts().inputs << QStringLiteral("Paint && Draw");
    run(w, "mnuSelectProgram3");
    ASSERT_EQ(prompts().pickerCalls.size(), 1);
    const QString offered = prompts().pickerCalls[0];
    EXPECT_TRUE(offered.startsWith(
        QLatin1String("chooseItem: Kavori - [Select Program 3] (Paint && Draw, ")))
        << offered.toStdString();
    EXPECT_TRUE(offered.endsWith(QLatin1String(", Other Program..., (No Program))")));
    EXPECT_FALSE(offered.contains(QLatin1String("Kavori,")));
    EXPECT_FALSE(offered.contains(QLatin1String("Jpeg Tool")));
    EXPECT_EQ(calls, QStringList{QStringLiteral("paint --open ") + png});
    // Remembered in the settings file and shown as the third entry.
    EXPECT_EQ(CurrentSettings().OpenWithProgram[2], QStringLiteral("paint.desktop"));
    const QString ini = QString::fromUtf8(readFile(SettingsFilePath()));
    EXPECT_TRUE(ini.contains(QLatin1String("OpenWithProgram3=\"paint.desktop\"")) ||
                ini.contains(QLatin1String("OpenWithProgram3=paint.desktop")))
        << ini.toStdString();
    QAction* entry = w.menus().action(QStringLiteral("mnuOpenEditor3"));
    EXPECT_TRUE(entry->isVisible());
    EXPECT_TRUE(entry->isEnabled());
    EXPECT_EQ(entry->text(), QStringLiteral("&3 Paint &&&& Draw"));

    calls.clear();
    entry->trigger();
    EXPECT_EQ(calls, QStringList{QStringLiteral("paint --open ") + png});

    // A program file of the user's choice; a file that is not a program is refused.
    const QString tool = writeFile(QStringLiteral("tools/retouch"), "#!/bin/sh\n");
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    calls.clear();
    prompts().inputs << QStringLiteral("Other Program...");
    prompts().files << png;
    run(w, "mnuSelectProgram");
    EXPECT_EQ(prompts().texts().value(0),
              QStringLiteral("The selected file is not a program that can be started:") +
                  NewLine() + png);
    prompts().inputs << QStringLiteral("Other Program...");
    prompts().files << tool;
    run(w, "mnuSelectProgram");
    EXPECT_EQ(calls, QStringList{QStringLiteral("retouch ") + png});
    EXPECT_EQ(w.menus().action(QStringLiteral("mnuOpenEditor"))->text(),
              QStringLiteral("&1 retouch"));

    // Cleared: the entry goes away. Cancelled: nothing changes.
    prompts().inputs << QStringLiteral("(No Program)");
    run(w, "mnuSelectProgram");
    EXPECT_FALSE(w.menus().action(QStringLiteral("mnuOpenEditor"))->isVisible());
    run(w, "mnuSelectProgram3"); // unscripted: cancelled
    EXPECT_EQ(CurrentSettings().OpenWithProgram[2], QStringLiteral("paint.desktop"));

    // A new window shows what the settings remember; an uninstalled program is reported.
    QFile::remove(root() + QStringLiteral("usr/applications/paint.desktop"));
    MainViewFrm again;
    ASSERT_TRUE(again.openImage(png));
    prompts().clear();
    calls.clear();
    QAction* kept = again.menus().action(QStringLiteral("mnuOpenEditor3"));
    EXPECT_TRUE(kept->isVisible());
    kept->trigger();
    EXPECT_EQ(calls, QStringList());
    EXPECT_TRUE(prompts().texts().value(0).startsWith(
        QStringLiteral("The program chosen for this entry is no longer installed:") + NewLine() +
        QStringLiteral("Paint && Draw")));
}
