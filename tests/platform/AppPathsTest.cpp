#include "platform/AppPaths.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFileInfo>

using namespace kavori;

class AppPathsTest : public kavori::test::KavoriTest {};

TEST_F(AppPathsTest, HomeIsMadeAndFilledOnceWithoutReplacingTheUsersFiles)
{
    EXPECT_EQ(AppPath(), home());
    EXPECT_TRUE(AppPath().endsWith(u'/'));
    ASSERT_TRUE(EnsureAppHome());
    for (const char* folder : {"Slides", "Bonus/Textures", "Bonus/Sounds", "Help"})
        EXPECT_TRUE(QFileInfo(home() + QString::fromLatin1(folder)).isDir()) << folder;
    // The silent wave file is a real RIFF WAVE.
    const QByteArray wav = readFile(home() + QStringLiteral("BLANK.WAV"));
    ASSERT_GE(wav.size(), 44);
    EXPECT_EQ(wav.left(4), "RIFF");
    EXPECT_EQ(wav.mid(8, 4), "WAVE");
    EXPECT_TRUE(QFileInfo(home() + QStringLiteral("Help/index.html")).isFile());

    // A user's own file of the same name stays as it is on the next start.
    writeFile(home() + QStringLiteral("BLANK.WAV"), "mine");
    ASSERT_TRUE(EnsureAppHome());
    EXPECT_EQ(readFile(home() + QStringLiteral("BLANK.WAV")), "mine");
    // The manual's pages are the program's: an old copy is brought up to date.
    const QString page = home() + QStringLiteral("Help/index.html");
    const QByteArray current = readFile(page);
    writeFile(page, "old page");
    ASSERT_TRUE(EnsureAppHome());
    EXPECT_EQ(readFile(page), current);

    // The user data folder is used when KAVORI_HOME is not set.
    qunsetenv("KAVORI_HOME");
    EXPECT_EQ(AppPath(), root() + QStringLiteral("home/.local/share/Kavori/"));
}

TEST_F(AppPathsTest, PathHelpers)
{
    EXPECT_EQ(TempPath(), root() + QStringLiteral("tmp/"));
    EXPECT_EQ(AddSlash(QStringLiteral("/a/b")), "/a/b/");
    EXPECT_EQ(AddSlash(QStringLiteral("/a/b/")), "/a/b/");
    EXPECT_TRUE(IsFullPath(QStringLiteral("/pictures/a.jpg")));
    EXPECT_FALSE(IsFullPath(QStringLiteral("a.jpg")));
    EXPECT_FALSE(IsFullPath(QStringLiteral("pictures/a.jpg")));
    EXPECT_FALSE(IsFullPath(QString()));
    EXPECT_EQ(FolderOf(QStringLiteral("/pictures/a.jpg")), "/pictures/");
    EXPECT_EQ(FolderOf(QStringLiteral("a.jpg")), "");
    EXPECT_EQ(FileNameOf(QStringLiteral("/pictures/a.jpg")), "a.jpg");
    EXPECT_EQ(FileNameOf(QStringLiteral("/pictures/")), "");
    EXPECT_TRUE(HasExtension(QStringLiteral("/x/Photo.jpeg"), QStringLiteral(".JPEG")));
    EXPECT_FALSE(HasExtension(QStringLiteral("/x/Photo.jpg"), QStringLiteral(".JPEG")));
}

TEST_F(AppPathsTest, OwnedNamesAreFoundWithoutRegardToCase)
{
    QDir().mkpath(root() + QStringLiteral("app/SLIDES/Demo"));
    QDir().mkpath(root() + QStringLiteral("app/bonus/textures"));
    const QString app = root() + QStringLiteral("app");
    EXPECT_EQ(PathNoCase(app, QStringLiteral("Slides")), app + QStringLiteral("/SLIDES"));
    EXPECT_EQ(PathNoCase(app, QStringLiteral("slides/demo/")),
              app + QStringLiteral("/SLIDES/Demo/"));
    EXPECT_EQ(PathNoCase(app, QStringLiteral("Bonus/Textures/wood.bmp")),
              app + QStringLiteral("/bonus/textures/wood.bmp"));
    EXPECT_EQ(FullPathNoCase((app + QStringLiteral("/slides/demo")).toUpper()),
              app + QStringLiteral("/SLIDES/Demo"));
    EXPECT_EQ(FullPathNoCase(QStringLiteral("relative/x")), "relative/x");
    // What does not exist is appended as given.
    EXPECT_EQ(PathNoCase(app + QStringLiteral("/"), QStringLiteral("Missing/File.txt")),
              app + QStringLiteral("/Missing/File.txt"));
}
