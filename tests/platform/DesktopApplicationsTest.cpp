#include "platform/DesktopApplications.h"
#include "support/KavoriTest.h"

#include <QDir>

using namespace kavori;

// The desktop's applications read from a private XDG tree: a user data home, two system data
// folders and the user's and system's mimeapps.list.
class DesktopApplicationsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        for (const char* name : {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME",
                                 "XDG_CONFIG_DIRS", "XDG_CURRENT_DESKTOP"})
            m_saved << qMakePair(QByteArray(name), qgetenv(name));
        qputenv("XDG_DATA_HOME", QFile::encodeName(root() + QStringLiteral("user")));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(root() + QStringLiteral("local:") + root() +
                                                   QStringLiteral("usr")));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(root() + QStringLiteral("config")));
        qputenv("XDG_CONFIG_DIRS", QFile::encodeName(root() + QStringLiteral("etc")));
        qunsetenv("XDG_CURRENT_DESKTOP");
    }
    void TearDown() override
    {
        for (const auto& [name, value] : std::as_const(m_saved)) {
            if (value.isNull())
                qunsetenv(name.constData());
            else
                qputenv(name.constData(), value);
        }
        KavoriTest::TearDown();
    }
    void entry(const QString& place, const QString& file, const QByteArray& body)
    {
        writeFile(place + QStringLiteral("/applications/") + file, "[Desktop Entry]\n" + body);
    }
    static QStringList ids(const QList<DesktopApplication>& apps)
    {
        QStringList out;
        for (const DesktopApplication& app : apps)
            out << app.id;
        return out;
    }

private:
    QList<QPair<QByteArray, QByteArray>> m_saved;
};

TEST_F(DesktopApplicationsTest, ApplicationsForATypeFollowTheUsersChoices)
{
    entry("usr", "paint.desktop",
          "Type=Application\nName=Paint\nName[fr]=Peinture\nExec=paint %U\n"
          "MimeType=image/jpeg;image/png;\n");
    entry("usr", "viewer.desktop",
          "Type=Application\nName=Viewer\nExec=view %f\nMimeType=image/jpeg\n");
    entry("usr", "kavori.desktop",
          "Type=Application\nName=Kavori\nExec=Kavori %F\nMimeType=image/jpeg;\n");
    entry("usr", "gimp/editor.desktop", // id "gimp-editor.desktop"
          "Type=Application\nName=Editor\nExec=edit %f\nMimeType=image/jpeg;\n");
    entry("usr", "broken.desktop",
          "Type=Application\nName=Broken\nMimeType=image/jpeg;\n"); // no Exec
    entry("usr", "link.desktop", "Type=Link\nName=Web\nURL=http://x\nMimeType=image/jpeg;\n");
    entry("usr", "zed.desktop", "Type=Application\nName=Zed\nExec=zed %f\nMimeType=image/jpeg;\n");
    // The user's own copy hides the system's (here: hidden altogether), and a folder earlier in
    // XDG_DATA_DIRS wins over a later one.
    entry("user", "zed.desktop", "Type=Application\nName=Zed\nExec=zed\nHidden=true\n");
    entry("local", "viewer.desktop",
          "Type=Application\nName=Local Viewer\nExec=/opt/view %f\nMimeType=image/jpeg;\n");
    // An application that does not say it reads JPEG, added by the user; one taken away.
    entry("usr", "sketch.desktop", "Type=Application\nName=Sketch\nExec=sketch\n");
    writeFile(QStringLiteral("config/mimeapps.list"),
              "[Default Applications]\nimage/jpeg=missing.desktop;gimp-editor.desktop;\n"
              "[Added Associations]\nimage/jpeg=sketch.desktop;\n"
              "[Removed Associations]\nimage/jpeg=paint.desktop;\n");
    // The system's list comes after the user's: its default is only the next choice.
    writeFile(QStringLiteral("etc/mimeapps.list"),
              "[Default Applications]\nimage/jpeg=viewer.desktop\n");

    const QList<DesktopApplication> jpeg =
        ApplicationsForMimeType(QStringLiteral("image/jpeg"), QStringLiteral("kavori.desktop"));
    EXPECT_EQ(ids(jpeg), QStringList({"gimp-editor.desktop", "viewer.desktop", "sketch.desktop"}));
    EXPECT_EQ(jpeg.value(1).name, QStringLiteral("Local Viewer"));
    EXPECT_EQ(jpeg.value(1).exec, QStringLiteral("/opt/view %f"));
    // Removed for JPEG only; PNG still has it. Without a leave-out, we are listed too.
    EXPECT_EQ(ids(ApplicationsForMimeType(QStringLiteral("image/png"))),
              QStringList{"paint.desktop"});
    EXPECT_TRUE(
        ids(ApplicationsForMimeType(QStringLiteral("image/jpeg"))).contains("kavori.desktop"));
    EXPECT_EQ(ApplicationsForMimeType(QStringLiteral("image/x-nothing")).size(), 0);

    // The current desktop's own list comes first.
    writeFile(QStringLiteral("config/gnome-mimeapps.list"),
              "[Default Applications]\nimage/jpeg=sketch.desktop\n");
    qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    EXPECT_EQ(ids(ApplicationsForMimeType(QStringLiteral("image/jpeg"))).value(0),
              QStringLiteral("sketch.desktop"));

    ASSERT_TRUE(FindDesktopApplication(QStringLiteral("gimp-editor.desktop")));
    EXPECT_FALSE(FindDesktopApplication(QStringLiteral("zed.desktop")));
    EXPECT_FALSE(FindDesktopApplication(QStringLiteral("broken.desktop")));
}

TEST_F(DesktopApplicationsTest, ExecLinesBecomeTheCommandThatOpensThePicture)
{
    const QString file = QStringLiteral("/pics/Tom's \"best\" $1.jpg");
    const auto command = [&](const char* exec) {
        DesktopApplication app;
        app.name = QStringLiteral("Paint Shop");
        app.icon = QStringLiteral("paint");
        app.path = QStringLiteral("/usr/share/applications/paint.desktop");
        app.exec = QString::fromUtf8(exec);
        return DesktopCommandFor(app, file);
    };
    EXPECT_EQ(command("paint %f"), QStringList({"paint", file}));
    EXPECT_EQ(command("paint --new-window %U"),
              QStringList({"paint", "--new-window", "file:///pics/Tom's%20%22best%22%20$1.jpg"}));
    EXPECT_EQ(command("\"/opt/My Paint/bin/paint\" %i --name=%c %k --open=%f 100%%"),
              QStringList({"/opt/My Paint/bin/paint", "--icon", "paint", "--name=Paint Shop",
                           "/usr/share/applications/paint.desktop",
                           QStringLiteral("--open=") + file, "100%"}));
    EXPECT_EQ(command("sh -c \"echo \\\"quoted\\\" \\$HOME\" %F"),
              QStringList({"sh", "-c", "echo \"quoted\" $HOME", file}));
    // No place for a file: the picture goes at the end; deprecated codes vanish.
    EXPECT_EQ(command("paint %d %m"), QStringList({"paint", file}));
    EXPECT_EQ(command("paint \"unclosed"), QStringList());
    EXPECT_EQ(command("   "), QStringList());

    // The key-file layer's escapes come first: \s is a space, \\ a backslash.
    writeFile(QStringLiteral("usr/applications/esc.desktop"),
              "[Desktop Entry]\nType=Application\nName=Esc\n"
              "Exec=\"/opt/a\\sb/run\" --x=\"c\\\\\\\\d\" %f\n");
    const std::optional<DesktopApplication> esc =
        FindDesktopApplication(QStringLiteral("esc.desktop"));
    ASSERT_TRUE(esc);
    EXPECT_EQ(DesktopCommandFor(*esc, QStringLiteral("/p.jpg")),
              QStringList({"/opt/a b/run", "--x=c\\d", "/p.jpg"}));

    // A remembered program: a desktop id through its entry, a path as it is.
    EXPECT_EQ(OpenWithCommand(QStringLiteral("esc.desktop"), QStringLiteral("/p.jpg")).value(0),
              QStringLiteral("/opt/a b/run"));
    EXPECT_EQ(OpenWithCommand(QStringLiteral("gone.desktop"), QStringLiteral("/p.jpg")),
              QStringList());
    EXPECT_EQ(OpenWithCommand(QStringLiteral("/usr/bin/paint"), QStringLiteral("/p.jpg")),
              QStringList({"/usr/bin/paint", "/p.jpg"}));
}
