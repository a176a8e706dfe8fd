#include "fileutil/Wallpaper.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPrograms.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

using namespace kavori;

// The wallpaper through each desktop's own setting, with the commands recorded instead of run.
class WallpaperTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        for (const char* name :
             {"PATH", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "DISPLAY", "WAYLAND_DISPLAY"})
            m_saved << qMakePair(QByteArray(name), qgetenv(name));
        bin = root() + QStringLiteral("bin/");
        QDir().mkpath(bin);
        qputenv("PATH", QFile::encodeName(bin));
        for (const char* name :
             {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "DISPLAY", "WAYLAND_DISPLAY"})
            qunsetenv(name);
        SetDesktopRunner(
            [this](const QString& program, const QStringList& arguments, QString* output) {
                const QString line =
                    (QStringList{QFileInfo(program).fileName()} + arguments).join(u' ');
                calls << line;
                for (auto it = replies.cbegin(); it != replies.cend(); ++it)
                    if (line.startsWith(it.key())) {
                        if (output)
                            *output = it.value();
                        return true;
                    }
                return !refuse;
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
    void session(const char* desktop, std::initializer_list<const char*> tools)
    {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        for (const char* tool : tools)
            install(QString::fromLatin1(tool));
    }

    QString bin;
    QStringList calls;
    QMap<QString, QString> replies; // output of commands that begin with the key
    bool refuse = false;
    QList<QPair<QByteArray, QByteArray>> m_saved;
};

// What each desktop is asked to do: the picture (whose name holds a space and an apostrophe,
// which gsettings and Plasma's script must get quoted) and the style.
TEST_F(WallpaperTest, EachDesktopGetsItsOwnCommands)
{
    const QString picture = QStringLiteral("/pics/Tom's garden.jpg");
    const QString uri = QStringLiteral("file:///pics/Tom's%20garden.jpg");

    session("ubuntu:GNOME", {"gsettings"});
    EXPECT_EQ(CurrentWallpaperDesktop(), WallpaperDesktop::Gnome);
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Stretched).ok);
    EXPECT_EQ(calls, QStringList({
                         "gsettings set org.gnome.desktop.background picture-uri 'file:///pics/"
                         "Tom\\'s%20garden.jpg'",
                         "gsettings set org.gnome.desktop.background picture-options 'stretched'",
                         "gsettings set org.gnome.desktop.background picture-uri-dark "
                         "'file:///pics/Tom\\'s%20garden.jpg'",
                     }));
    calls.clear();
    EXPECT_TRUE(ClearWallpaper().ok);
    EXPECT_EQ(calls,
              QStringList({"gsettings set org.gnome.desktop.background picture-options 'none'"}));

    calls.clear();
    session("X-Cinnamon", {});
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Tiled).ok);
    EXPECT_EQ(calls, QStringList({"gsettings set org.cinnamon.desktop.background picture-uri "
                                  "'file:///pics/Tom\\'s%20garden.jpg'",
                                  "gsettings set org.cinnamon.desktop.background picture-options "
                                  "'wallpaper'"}));

    calls.clear();
    session("MATE", {});
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Scaled).ok);
    EXPECT_EQ(calls, QStringList({"gsettings set org.mate.background picture-filename "
                                  "'/pics/Tom\\'s garden.jpg'",
                                  "gsettings set org.mate.background picture-options 'scaled'"}));

    calls.clear();
    session("KDE", {"qdbus"});
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Centered).ok);
    ASSERT_EQ(calls.size(), 1);
    EXPECT_TRUE(calls[0].startsWith(QLatin1String(
        "qdbus org.kde.plasmashell /PlasmaShell org.kde.PlasmaShell.evaluateScript var all = desktops();")))
        << calls[0].toStdString();
    EXPECT_TRUE(calls[0].contains(QStringLiteral("d.writeConfig(\"Image\", \"") + uri +
                                  QStringLiteral("\");")));
    EXPECT_TRUE(calls[0].contains(QLatin1String("d.writeConfig(\"FillMode\", 6);")));
    calls.clear();
    EXPECT_TRUE(ClearWallpaper().ok);
    EXPECT_TRUE(calls.value(0).contains(QLatin1String("d.wallpaperPlugin = \"org.kde.color\";")));

    // Xfce: every monitor and workspace that shows a picture gets it.
    calls.clear();
    session("XFCE", {"xfconf-query"});
    replies[QStringLiteral("xfconf-query -c xfce4-desktop -l")] =
        QStringLiteral("/backdrop/screen0/monitorHDMI-1/workspace0/color-style\n"
                       "/backdrop/screen0/monitorHDMI-1/workspace0/last-image\n"
                       "/backdrop/screen0/monitoreDP-1/workspace0/last-image\n");
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Tiled).ok);
    EXPECT_EQ(calls,
              QStringList({"xfconf-query -c xfce4-desktop -l",
                           "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitorHDMI-1/"
                           "workspace0/last-image -n -t string -s /pics/Tom's garden.jpg",
                           "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitorHDMI-1/"
                           "workspace0/image-style -n -t int -s 2",
                           "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitoreDP-1/"
                           "workspace0/last-image -n -t string -s /pics/Tom's garden.jpg",
                           "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitoreDP-1/"
                           "workspace0/image-style -n -t int -s 2"}));
    // A session that never had a picture gets the first monitor's property made.
    calls.clear();
    replies.clear();
    EXPECT_TRUE(ClearWallpaper().ok);
    EXPECT_EQ(calls.value(1), QStringLiteral("xfconf-query -c xfce4-desktop -p /backdrop/screen0/"
                                             "monitor0/workspace0/image-style -n -t int -s 0"));

    // A plain X session: the first root-window setter found.
    calls.clear();
    qunsetenv("XDG_CURRENT_DESKTOP");
    qputenv("DISPLAY", ":5");
    install(QStringLiteral("hsetroot"));
    EXPECT_EQ(CurrentWallpaperDesktop(), WallpaperDesktop::RootWindow);
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Scaled).ok);
    install(QStringLiteral("feh"));
    EXPECT_TRUE(SetWallpaper(picture, WallpaperStyle::Stretched).ok);
    EXPECT_TRUE(ClearWallpaper().ok);
    EXPECT_EQ(calls,
              QStringList({"hsetroot -full /pics/Tom's garden.jpg",
                           "feh --bg-scale /pics/Tom's garden.jpg", "hsetroot -solid #000000"}));
}

// Where no desktop setting can be reached, nothing runs and the user is told why.
TEST_F(WallpaperTest, NoSettingFoundGivesTheMessageAndRunsNothing)
{
    const QString message = NoWallpaperSettingMessage();
    EXPECT_TRUE(message.startsWith(
        QLatin1String("No desktop wallpaper setting was found on this system.")));
    // A named desktop without its tool, a Wayland session, nothing at all.
    for (const char* desktop : {"GNOME", "KDE", "XFCE", "X-Cinnamon", "sway", ""}) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        qputenv("DISPLAY", ":0");
        install(QStringLiteral("feh")); // under a named desktop its root window is hidden
        EXPECT_EQ(CurrentWallpaperDesktop(),
                  *desktop ? WallpaperDesktop::None : WallpaperDesktop::RootWindow)
            << desktop;
    }
    qunsetenv("XDG_CURRENT_DESKTOP");
    qputenv("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_EQ(CurrentWallpaperDesktop(), WallpaperDesktop::None);
    for (const WallpaperResult& r : {SetWallpaper(QStringLiteral("/a.jpg"), WallpaperStyle::Tiled),
                                     ClearWallpaper(), CurrentWallpaper()}) {
        EXPECT_FALSE(r.ok);
        EXPECT_EQ(r.message, message);
    }
    EXPECT_EQ(calls, QStringList());

    // The session name alone (no XDG_CURRENT_DESKTOP) is enough.
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DESKTOP_SESSION", "plasma");
    install(QStringLiteral("qdbus6"));
    EXPECT_EQ(CurrentWallpaperDesktop(), WallpaperDesktop::Plasma);

    // A desktop that refuses the change says so, by name.
    qunsetenv("DESKTOP_SESSION");
    session("GNOME", {"gsettings"});
    refuse = true;
    const WallpaperResult refused =
        SetWallpaper(QStringLiteral("/a.jpg"), WallpaperStyle::Centered);
    EXPECT_FALSE(refused.ok);
    EXPECT_TRUE(refused.message.startsWith(
        QLatin1String("The GNOME wallpaper setting could not be changed.")));
}

// Reading back what the desktop shows, from each desktop's own answer.
TEST_F(WallpaperTest, CurrentWallpaperReadsEachDesktopsAnswer)
{
    const QString picture = writeFile(QStringLiteral("My pics/Tom's \\ sea.jpg"), "x");
    session("GNOME", {"gsettings"});
    replies[QStringLiteral("gsettings get org.gnome.desktop.background picture-options")] =
        QStringLiteral("'zoom'\n");
    replies[QStringLiteral("gsettings get org.gnome.desktop.background picture-uri")] =
        u'\'' +
        QUrl::fromLocalFile(picture)
            .toString(QUrl::FullyEncoded)
            .replace(u'\'', QStringLiteral("\\'")) +
        QStringLiteral("'\n");
    WallpaperResult r = CurrentWallpaper();
    EXPECT_TRUE(r.ok) << r.message.toStdString();
    EXPECT_EQ(r.picture, picture);
    // Cleared: no picture to open.
    replies[QStringLiteral("gsettings get org.gnome.desktop.background picture-options")] =
        QStringLiteral("'none'\n");
    r = CurrentWallpaper();
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(
        r.message.startsWith(QLatin1String("The desktop does not show a wallpaper picture now")));

    // A picture the desktop names but that is gone.
    replies.clear();
    session("XFCE", {"xfconf-query"});
    replies[QStringLiteral("xfconf-query -c xfce4-desktop -l")] =
        QStringLiteral("/backdrop/screen0/monitor1/workspace0/last-image\n");
    replies[QStringLiteral(
        "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitor1/workspace0/image-style")] =
        QStringLiteral("4\n");
    replies[QStringLiteral(
        "xfconf-query -c xfce4-desktop -p /backdrop/screen0/monitor1/workspace0/last-image")] =
        QStringLiteral("/gone/away.png\n");
    r = CurrentWallpaper();
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.message.endsWith(QLatin1String("\n/gone/away.png"))) << r.message.toStdString();

    replies.clear();
    session("KDE", {"qdbus"});
    replies[QStringLiteral("qdbus org.kde.plasmashell")] =
        QUrl::fromLocalFile(picture).toString() + u'\n';
    r = CurrentWallpaper();
    EXPECT_EQ(r.picture, picture);

    // feh remembers its picture in ~/.fehbg; hsetroot alone remembers nothing.
    qunsetenv("XDG_CURRENT_DESKTOP");
    qputenv("DISPLAY", ":0");
    QFile::remove(bin + QStringLiteral("qdbus"));
    install(QStringLiteral("feh"));
    r = CurrentWallpaper();
    EXPECT_FALSE(r.ok);
    EXPECT_TRUE(r.message.startsWith(
        QLatin1String("The picture shown on the desktop could not be found out")));
    QString quoted = picture;
    quoted.replace(u'\'', QStringLiteral("'\\''")); // as feh quotes it
    writeFile(QDir::homePath() + QStringLiteral("/.fehbg"),
              "#!/bin/sh\nfeh --no-fehbg --bg-scale '" + quoted.toUtf8() + "' \n");
    r = CurrentWallpaper();
    EXPECT_EQ(r.picture, picture);
}

// The file the desktop is given: a copy that outlives the original, in a type it reads.
TEST_F(WallpaperTest, WallpaperFileIsAKeptCopyTheDesktopCanRead)
{
    QImage image(8, 6, QImage::Format_RGB32);
    image.fill(Qt::blue);
    const QString jpeg = root() + QStringLiteral("photo.JPG");
    ASSERT_TRUE(image.save(jpeg, "JPEG"));
    const QString folder = PathNoCase(AppPath(), QStringLiteral("Wallpaper"));

    const QString copy = WallpaperFile(jpeg, image, false);
    EXPECT_EQ(QFileInfo(copy).absolutePath(), QFileInfo(folder).absoluteFilePath());
    EXPECT_EQ(QFileInfo(copy).fileName(), QStringLiteral("photo.JPG"));
    EXPECT_EQ(readFile(copy), readFile(jpeg));          // the bytes as they are, no recompression
    EXPECT_EQ(WallpaperFile(copy, image, false), copy); // the wallpaper itself set again
    EXPECT_TRUE(QFileInfo(copy).isFile());

    // Changed, in memory only, or a type desktops do not read: written from the picture.
    QImage changed = image;
    changed.fill(Qt::red);
    const QString png = WallpaperFile(jpeg, changed, true);
    EXPECT_EQ(QFileInfo(png).fileName(), QStringLiteral("photo.png"));
    EXPECT_EQ(QImage(png).pixel(0, 0), QColor(Qt::red).rgb());
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{QStringLiteral("photo.png")});
    EXPECT_EQ(QFileInfo(WallpaperFile(QStringLiteral("Untitled.BMP"), image, true)).fileName(),
              QStringLiteral("Untitled.png"));
    const QString wmf = writeFile(QStringLiteral("drawing.wmf"), "not really");
    EXPECT_EQ(QFileInfo(WallpaperFile(wmf, image, false)).fileName(),
              QStringLiteral("drawing.png"));
    EXPECT_EQ(WallpaperFile(wmf, QImage(), false), QString());
}

// Once for real: gsettings writes GNOME's setting (the keyfile back end, under a private
// session bus) and the picture is read back.
TEST_F(WallpaperTest, GnomeSettingChangesForRealUnderAPrivateSession)
{
    SetDesktopRunner({});
    qputenv("PATH", m_saved.value(0).second);
    const QString gsettings = QStandardPaths::findExecutable(QStringLiteral("gsettings"));
    const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
    ASSERT_FALSE(gsettings.isEmpty()) << "gsettings (libglib2.0-bin) is missing";
    ASSERT_FALSE(daemon.isEmpty()) << "dbus-daemon (dbus) is missing";
    QProcess schemas;
    schemas.start(gsettings, {QStringLiteral("list-schemas")});
    ASSERT_TRUE(schemas.waitForFinished(10000));
    ASSERT_TRUE(schemas.readAll().contains("org.gnome.desktop.background"))
        << "gsettings-desktop-schemas is missing";

    QProcess bus;
    bus.start(daemon, {QStringLiteral("--session"), QStringLiteral("--nofork"),
                       QStringLiteral("--print-address=1")});
    ASSERT_TRUE(bus.waitForReadyRead(10000));
    const QByteArray address = bus.readLine().trimmed();
    ASSERT_FALSE(address.isEmpty());
    const QByteArray previousBus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");

    const QString picture = writeFile(QStringLiteral("Holiday pics/Tom's beach.jpg"), "x");
    EXPECT_EQ(CurrentWallpaperDesktop(), WallpaperDesktop::Gnome);
    const WallpaperResult set = SetWallpaper(picture, WallpaperStyle::Tiled);
    EXPECT_TRUE(set.ok) << set.message.toStdString();
    const QString keyfile =
        qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/glib-2.0/settings/keyfile");
    const QString stored = QString::fromUtf8(readFile(keyfile));
    EXPECT_TRUE(stored.contains(QLatin1String("picture-options='wallpaper'")))
        << stored.toStdString();
    const WallpaperResult current = CurrentWallpaper();
    EXPECT_TRUE(current.ok) << current.message.toStdString();
    EXPECT_EQ(current.picture, picture);
    EXPECT_TRUE(ClearWallpaper().ok);
    EXPECT_FALSE(CurrentWallpaper().ok);

    qunsetenv("GSETTINGS_BACKEND");
    if (previousBus.isNull())
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    else
        qputenv("DBUS_SESSION_BUS_ADDRESS", previousBus);
    bus.kill();
    bus.waitForFinished(5000);
}
