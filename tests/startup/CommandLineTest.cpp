#include "startup/CommandLine.h"
#include "platform/WindowLock.h"
#include "support/KavoriTest.h"

#include <QDir>

using namespace kavori;

class CommandLineTest : public kavori::test::KavoriTest {
protected:
    // The command line through every step: normalising, "/EDIT ", the leading "/", the mode.
    StartDecision decide(const QString& raw, StartOptions options = {}, QString* editFile = nullptr)
    {
        const EditRequest edit = TakeEditRequest(NormalizeCommandLine(raw).commandLine);
        if (editFile)
            *editFile = edit.editFile;
        return DecideStartMode(edit.commandLine, options);
    }
};

TEST_F(CommandLineTest, NormalisingQuotesAndLoadTime)
{
    struct Case {
        const char* raw;
        const char* line;
        bool loadTime;
    };
    // clang-format off
    const Case cases[] = {
        {"", "", false},
        {"   /pics/a.jpg  ", "/pics/a.jpg", false},
        {"\"/my pics/a.jpg\"", "/my pics/a.jpg", false},
        {"\"/my pics/a.jpg", "/my pics/a.jpg", false},
        {"/my pics/a.jpg\"", "/my pics/a.jpg", false},
        {"LOADTIME", "", true},
        {"loadtime   /pics/a.gif", "/pics/a.gif", true},
        {"LOADTIME FULLSCREEN /pics/a.gif", "FULLSCREEN /pics/a.gif", true},
        {"LOADTIMEX", "X", true},
    };
    // clang-format on
    for (const Case& c : cases) {
        const NormalizedCommandLine n = NormalizeCommandLine(QString::fromUtf8(c.raw));
        EXPECT_EQ(n.commandLine, QString::fromUtf8(c.line)) << c.raw;
        EXPECT_EQ(n.loadTime, c.loadTime) << c.raw;
    }
}

TEST_F(CommandLineTest, EveryFormChoosesItsMode)
{
    const QString show = writeFile(QStringLiteral("shows/Trip.KAV"), "Kavori Slide Show File\r\n");
    struct Case {
        QString raw;
        StartOptions options;
        StartMode mode;
        QString commandLine;
        QString target; // fullFile or showPath
        bool screenSaver;
    };
    const StartOptions plain;
    const StartOptions fullFirst{true, true};
    const StartOptions fullStay{true, false};
    // clang-format off
    const QList<Case> cases = {
        {QString(), plain, StartMode::MainWindow, QString(), QString(), false},
        {QStringLiteral("/pics/a.jpg"), plain, StartMode::MainWindow, QStringLiteral("/pics/a.jpg"), {}, false},
        {QStringLiteral("/pics/A.JPEG"), plain, StartMode::MainWindow, QStringLiteral("/pics/A.JPEG"), {}, false},
        {QStringLiteral("/pics/a.tif"), plain, StartMode::MainWindow, QStringLiteral("/pics/a.tif"), {}, false},
        {QStringLiteral("/pics/a.jpg"), fullFirst, StartMode::FullScreenImage, QStringLiteral("/pics/a.jpg"), QStringLiteral("/pics/a.jpg"), false},
        {QStringLiteral("FULLSCREEN /pics/a.gif"), plain, StartMode::FullScreenImage, QStringLiteral("/pics/a.gif"), QStringLiteral("/pics/a.gif"), false},
        {QStringLiteral("fullscreen   /pics/a.cur"), plain, StartMode::FullScreenImage, QStringLiteral("/pics/a.cur"), QStringLiteral("/pics/a.cur"), false},
        {QStringLiteral("FULLSCREEN /pics/phone.HEIC"), plain, StartMode::FullScreenImage, QStringLiteral("/pics/phone.HEIC"), QStringLiteral("/pics/phone.HEIC"), false},
        {QStringLiteral("/pics/shot.png"), fullFirst, StartMode::FullScreenImage, QStringLiteral("/pics/shot.png"), QStringLiteral("/pics/shot.png"), false},
        {QStringLiteral("LOADTIME FULLSCREEN /pics/a.gif"), plain, StartMode::FullScreenImage, QStringLiteral("/pics/a.gif"), QStringLiteral("/pics/a.gif"), false},
        {QStringLiteral("\"/shows/My Show.kav\""), plain, StartMode::SlideShow, {}, QStringLiteral("/shows/My Show.kav"), false},
        {QStringLiteral("SCRNSAVE /shows/a.kav"), plain, StartMode::ScreenSaver, {}, QStringLiteral("/shows/a.kav"), true},
        {QStringLiteral("scrnsave /shows/a.kav"), plain, StartMode::SlideShow, {}, QStringLiteral("scrnsave /shows/a.kav"), false},
        {QStringLiteral("SCRNSAVE"), plain, StartMode::End, {}, {}, true},
        {QStringLiteral("SCRNSAVE /pics/a.jpg"), plain, StartMode::End, {}, {}, true},
        {QStringLiteral("SCRNSAVE /pics/a.jpg"), fullStay, StartMode::FullScreenImage, QStringLiteral("SCRNSAVE /pics/a.jpg"), QStringLiteral("SCRNSAVE /pics/a.jpg"), false},
        {QStringLiteral("C"), plain, StartMode::ScreenSaverSettings, {}, {}, true},
        {QStringLiteral("/C"), plain, StartMode::ScreenSaverSettings, {}, {}, true},
        {QStringLiteral("/c"), plain, StartMode::ScreenSaverSettings, {}, {}, true},
        {QStringLiteral("SCRNSAVE C"), plain, StartMode::ScreenSaverSettings, {}, {}, true},
        {QStringLiteral("ABOUT"), plain, StartMode::MainWindow, QStringLiteral("ABOUT"), {}, false},
        {QStringLiteral("/ABOUT"), plain, StartMode::MainWindow, QStringLiteral("ABOUT"), {}, false},
        {QStringLiteral("/SCRNSAVE /shows/a.kav"), plain, StartMode::ScreenSaver, {}, QStringLiteral("/shows/a.kav"), true},
        {QStringLiteral("/?"), plain, StartMode::MainWindow, QStringLiteral("?"), {}, false},
        {QStringLiteral("/EDIT ") + show, plain, StartMode::MainWindow, QString(), {}, false},
    };
    // clang-format on
    for (const Case& c : cases) {
        const StartDecision d = decide(c.raw, c.options);
        EXPECT_EQ(int(d.mode), int(c.mode)) << c.raw.toStdString();
        EXPECT_EQ(d.commandLine, c.commandLine) << c.raw.toStdString();
        EXPECT_EQ(d.screenSaverMode, c.screenSaver) << c.raw.toStdString();
        if (c.mode == StartMode::FullScreenImage) {
            EXPECT_EQ(d.fullFile, c.target) << c.raw.toStdString();
        }
        if (c.mode == StartMode::SlideShow || c.mode == StartMode::ScreenSaver) {
            EXPECT_EQ(d.showPath, c.target) << c.raw.toStdString();
        }
    }
    EXPECT_TRUE(decide(QStringLiteral("/pics/a.jpg"), fullFirst).exitAfterFullScreen);
    EXPECT_FALSE(decide(QStringLiteral("/pics/a.jpg"), fullStay).exitAfterFullScreen);
}

TEST_F(CommandLineTest, EditRequestNeedsAnExistingShowByFullPath)
{
    const QString show = writeFile(QStringLiteral("shows/Trip.KAV"), "x");
    const QString lower = writeFile(QStringLiteral("shows/trip2.kav"), "x");
    const QString image = writeFile(QStringLiteral("shows/a.jpg"), "x");
    struct Case {
        QString raw;
        QString editFile;
    };
    // clang-format off
    const QList<Case> cases = {
        {QStringLiteral("/EDIT ") + show, show},
        {QStringLiteral("/edit ") + lower, lower},
        {QStringLiteral("\"/EDIT ") + show + u'"', show},
        {QStringLiteral("/EDIT Trip.KAV"), QString()},            // no full path
        {QStringLiteral("/EDIT ") + root() + QStringLiteral("none.kav"), QString()}, // missing
        {QStringLiteral("/EDIT ") + image, QString()},            // not a show
    };
    // clang-format on
    for (const Case& c : cases) {
        QString editFile;
        const StartDecision d = decide(c.raw, {}, &editFile);
        EXPECT_EQ(editFile, c.editFile) << c.raw.toStdString();
        EXPECT_EQ(int(d.mode), int(StartMode::MainWindow));
        EXPECT_TRUE(d.commandLine.isEmpty());
    }
    // Trimmed, a bare "/EDIT" is no edit request but an unknown command for the main window.
    EXPECT_EQ(decide(QStringLiteral("/EDIT ")).commandLine, "EDIT");
}

TEST_F(CommandLineTest, OneScreenSaverSettingsDialogAtATime)
{
    {
        WindowLock dialog(ScreenSaverSettingsWindowTitle());
        EXPECT_EQ(int(decide(QStringLiteral("C")).mode), int(StartMode::End));
    }
    {
        WindowLock saver(ScreenSaverWindowTitle());
        EXPECT_EQ(int(decide(QStringLiteral("/c")).mode), int(StartMode::End));
    }
    EXPECT_EQ(int(decide(QStringLiteral("C")).mode), int(StartMode::ScreenSaverSettings));
}

TEST_F(CommandLineTest, FloppyShowsAreCheckedAsWritten)
{
    const StartDecision ask = decide(QStringLiteral("A:\\Shows\\Trip.kav"));
    EXPECT_EQ(int(ask.mode), int(StartMode::SlideShow));
    EXPECT_EQ(int(ask.floppy), int(FloppyCheck::AskForDisk));
    EXPECT_EQ(int(decide(QStringLiteral("b:\\.kav")).floppy), int(FloppyCheck::InvalidFileName));
    EXPECT_EQ(int(decide(QStringLiteral("SCRNSAVE B:\\.kav")).floppy),
              int(FloppyCheck::InvalidFileName));
    EXPECT_EQ(int(decide(QStringLiteral("/media/a.kav")).floppy), int(FloppyCheck::None));

    EXPECT_EQ(FloppyDiskQuestion(QStringLiteral("a:\\Shows\\Trip.kav")),
              QStringLiteral(
                  "Please be sure the disk that contains the file:\r\n\r\n\\Shows\\Trip.kav"
                  "\r\n\r\n...is in Floppy Drive A:\r\n\r\nPress the \"OK\" button to continue."));
    EXPECT_EQ(int(decide(QStringLiteral("b:\\a.kav")).floppy), int(FloppyCheck::AskForDisk));
    EXPECT_EQ(InvalidFileNameMessage(QStringLiteral("b:\\.kav")),
              "b:\\.kav is not a valid filename...");
}

TEST_F(CommandLineTest, SaverModuleRunTakesXScreenSaversWindow)
{
    EXPECT_FALSE(ParseSaverModuleRun(QStringLiteral("C"), {}).isRun);
    EXPECT_FALSE(ParseSaverModuleRun(QStringLiteral("/Shows/a.kav"), {}).isRun);
    EXPECT_FALSE(ParseSaverModuleRun(QStringLiteral("SCRNSAVE /x/a.kav"), {}).isRun);

    SaverModuleRun run = ParseSaverModuleRun(QStringLiteral("/S"), {});
    EXPECT_TRUE(run.isRun);
    EXPECT_EQ(run.windowId, 0u);
    run = ParseSaverModuleRun(QStringLiteral("/s -window-id 0x1a00003"), {});
    EXPECT_TRUE(run.isRun);
    EXPECT_EQ(run.windowId, 0x1a00003u);
    run = ParseSaverModuleRun(QStringLiteral("/S --window-id 27262979"), {});
    EXPECT_EQ(run.windowId, 27262979u);
    // XScreenSaver's variable names the window when the command line does not.
    run = ParseSaverModuleRun(QStringLiteral("/S -root"), QStringLiteral("0x600007"));
    EXPECT_EQ(run.windowId, 0x600007u);
    run = ParseSaverModuleRun(QStringLiteral("/S"), QStringLiteral("rubbish"));
    EXPECT_EQ(run.windowId, 0u);
}

TEST_F(CommandLineTest, SeveralPicturesOnlyWhenEveryArgumentIsOne)
{
    const QString a = writeFile(QStringLiteral("pics/a.jpg"), "x");
    const QString b = writeFile(QStringLiteral("pics/b b.bmp"), "x");
    const QString spaced = writeFile(QStringLiteral("my pics/c.jpg"), "x");
    writeFile(QStringLiteral("pics/show.KAV"), "x");
    EXPECT_EQ(SeveralPictures({a, b}), QStringList({a, b}));
    // Relative names are taken from the current folder, and kept in the order given.
    const QString before = QDir::currentPath();
    QDir::setCurrent(root() + QStringLiteral("pics"));
    EXPECT_EQ(SeveralPictures({QStringLiteral("b b.bmp"), QStringLiteral("a.jpg")}),
              QStringList({b, a}));
    QDir::setCurrent(before);
    // One picture, a switch, a show, a missing file or an unquoted path with a space are the
    // one-string command line as before.
    EXPECT_TRUE(SeveralPictures({a}).isEmpty());
    EXPECT_TRUE(SeveralPictures({QStringLiteral("LOADTIME"), a}).isEmpty());
    EXPECT_TRUE(SeveralPictures({a, root() + QStringLiteral("pics/show.KAV")}).isEmpty());
    EXPECT_TRUE(SeveralPictures({a, root() + QStringLiteral("pics/gone.jpg")}).isEmpty());
    EXPECT_TRUE(
        SeveralPictures({root() + QStringLiteral("my"), QStringLiteral("pics/c.jpg")}).isEmpty());
    EXPECT_EQ(JoinArguments({root() + QStringLiteral("my"), QStringLiteral("pics/c.jpg")}), spaced);
}
