#include "startup/EntryRoutine.h"
#include "platform/Display.h"
#include "platform/StartupState.h"
#include "platform/UserSettings.h"
#include "platform/WindowLock.h"
#include "playback/FullViewFrm.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "startup/CommandLine.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QTest>
#include <QTimer>

using namespace kavori;

class EntryRoutineTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetStartup();
        m_cwd = QDir::currentPath();
    }
    void TearDown() override
    {
        QDir::setCurrent(m_cwd);
        KavoriTest::TearDown();
    }
    static int windowsNamed(const char* name)
    {
        int n = 0;
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w->objectName() == QLatin1String(name) && w->isVisible())
                ++n;
        }
        return n;
    }
    QString m_cwd;
};

TEST_F(EntryRoutineTest, NormalStartOpensTheMainWindowAndReportsLoadTime)
{
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"), home());
    const std::optional<int> code = RunEntryRoutine({QStringLiteral("LOADTIME")});
    EXPECT_FALSE(code.has_value());
    EXPECT_EQ(windowsNamed("MainViewFrm"), 1);
    EXPECT_EQ(windowsNamed("WaitFrm"), 1); // until the main window's start sequence runs
    EXPECT_TRUE(CurrentStartup().FirstRun);
    EXPECT_NE(CurrentStartup().LoadStart, -1);
    EXPECT_TRUE(prompts().calls.isEmpty());

    MainViewFrm* main = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<MainViewFrm*>(w))
            main = found;
    }
    ASSERT_NE(main, nullptr);
    main->runStartSequence();
    EXPECT_EQ(windowsNamed("WaitFrm"), 0);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.startsWith("Load Time: "));
    EXPECT_TRUE(prompts().calls[0].text.endsWith(" milliseconds..."));
    EXPECT_EQ(prompts().calls[0].style, vbInformation);
    EXPECT_EQ(MainViewFrm::LoadTimeMessage(1234), "Load Time: 1,234 milliseconds...");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(EntryRoutineTest, ModesThatEndTheProcess)
{
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"), home());
    // "SCRNSAVE" alone, a second screen saver, a refused display: no window is left behind.
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("SCRNSAVE")}), 0);
    {
        WindowLock running(ScreenSaverWindowTitle());
        EXPECT_EQ(RunEntryRoutine({QStringLiteral("SCRNSAVE"), QStringLiteral("/s/a.kav")}), 0);
    }
    SetDisplayColorDepthOverride(4);
    EXPECT_EQ(RunEntryRoutine({}), 0);
    EXPECT_EQ(prompts().texts(),
              QStringList({"Kavori requires at least 256 colors, unable to start program..."}));
    SetDisplayColorDepthOverride(32);

    // Cancel to the program-path question ends start-up.
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"),
                QStringLiteral("/elsewhere/"));
    prompts().answers = {vbCancel};
    EXPECT_EQ(RunEntryRoutine({}), 0);

    // A floppy path too short to be a file is refused.
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"), home());
    prompts().clear();
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("B:\\.kav")}), 0);
    EXPECT_EQ(prompts().texts(), QStringList({"B:\\.kav is not a valid filename..."}));
    EXPECT_EQ(prompts().calls[0].style, vbInformation + vbSystemModal);

    // A show without pictures: its own words as a show and as a screen saver.
    const QString empty =
        writeFile(QStringLiteral("empty.kav"), "Kavori Slide Show\r\nVersion 3.0\r\n");
    prompts().clear();
    EXPECT_EQ(RunEntryRoutine({empty}), 0);
    EXPECT_EQ(prompts().texts().last(), "There are no pictures in this slide show to view...");
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("SCRNSAVE"), empty}), 0);
    EXPECT_EQ(prompts().texts().last(), "There are no pictures in this screen saver to view...");
    EXPECT_EQ(prompts().calls.last().style, vbInformation + vbSystemModal);

    // A show with pictures goes to the player from its own folder.
    const QString show = writeFile(
        QStringLiteral("shows/one.kav"),
        "Kavori Slide Show\r\nVersion 1.X\r\n0\r\n\r\n0\r\n0\r\n5\r\n0\r\n0\r\n/p/a.jpg\r\n");
    ResetStartup();
    EXPECT_EQ(RunEntryRoutine({show}), 0);
    EXPECT_TRUE(CurrentStartup().StartedFromShow);
    // The player ran it: its one picture is missing, so it said so and the show ended.
    EXPECT_TRUE(prompts().texts().last().startsWith(QStringLiteral("Unable to view slide:")));
    EXPECT_EQ(QDir::currentPath() + u'/', root() + QStringLiteral("shows/"));

    EXPECT_EQ(windowsNamed("MainViewFrm"), 0);
    EXPECT_EQ(windowsNamed("WaitFrm"), 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(EntryRoutineTest, StartMessagesAreNeverHiddenBehindTheLoadingWindow)
{
    QStringList seenWithLoadingWindow;
    prompts().onMessage = [&](const kavori::test::PromptRecorder::Call& call) {
        if (windowsNamed("WaitFrm") > 0)
            seenWithLoadingWindow << call.text;
    };

    // The first run's registry note and the 256-colour question: the loading window steps
    // aside while they are up and comes back for the rest of the start.
    SetDisplayColorDepthOverride(8);
    prompts().answers = {vbNo};
    EXPECT_FALSE(RunEntryRoutine({}).has_value());
    EXPECT_EQ(prompts().texts().size(), 2);
    EXPECT_EQ(prompts().texts().value(1).left(40),
              QStringLiteral("The path to this program was not found i"));
    EXPECT_TRUE(seenWithLoadingWindow.isEmpty()) << seenWithLoadingWindow.join(u'|').toStdString();
    EXPECT_EQ(windowsNamed("WaitFrm"), 1);
    EXPECT_EQ(windowsNamed("MainViewFrm"), 1);

    // The refusal of a display with too few colours: the loading window is gone first.
    SetDisplayColorDepthOverride(4);
    prompts().calls.clear();
    EXPECT_EQ(RunEntryRoutine({}), 0);
    EXPECT_EQ(prompts().texts(),
              QStringList({"Kavori requires at least 256 colors, unable to start program..."}));
    EXPECT_TRUE(seenWithLoadingWindow.isEmpty()) << seenWithLoadingWindow.join(u'|').toStdString();
}

TEST_F(EntryRoutineTest, FullScreenPictureThenEndOrTheMainWindow)
{
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"), home());
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    const QString picture = root() + QStringLiteral("pics/full.bmp");
    writeFile(picture, {});
    ASSERT_TRUE(image.save(picture, "BMP"));

    // The viewer is closed as the user would, once it is up; what it showed is noted.
    QStringList shown;
    QTimer closer;
    closer.setInterval(5);
    QObject::connect(&closer, &QTimer::timeout, [&] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (auto* view = qobject_cast<FullViewFrm*>(w); view && view->isVisible()) {
                shown << QString::number(view->image().pixel(0, 0), 16);
                EXPECT_EQ(windowsNamed("WaitFrm"), 0);
                closer.stop();
                view->reject();
            }
        }
    });
    auto closeViewerSoon = [&] { closer.start(); };

    // CmdLineExit on (as a fresh settings file has it): the program ends after the viewer.
    closeViewerSoon();
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("FULLSCREEN"), picture}), 0);
    EXPECT_EQ(shown, QStringList({QString::number(QColor(Qt::magenta).rgb(), 16)}));
    EXPECT_EQ(windowsNamed("MainViewFrm"), 0);
    EXPECT_EQ(windowsNamed("WaitFrm"), 0);
    EXPECT_EQ(CurrentStartup().FullFile, picture);

    // CmdLineExit off: the main window opens and shows the same file.
    LoadIniFile(SettingsFilePath());
    SetIniValue(QStringLiteral("Viewer"), QStringLiteral("CmdLineExit"), QStringLiteral("False"));
    SaveIniFile(SettingsFilePath());
    ResetStartup();
    closeViewerSoon();
    EXPECT_FALSE(RunEntryRoutine({QStringLiteral("\"FULLSCREEN ") + picture + u'"'}).has_value());
    EXPECT_EQ(shown.size(), 2);
    MainViewFrm* main = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<MainViewFrm*>(w))
            main = found;
    }
    ASSERT_NE(main, nullptr);
    main->runStartSequence();
    EXPECT_EQ(main->document().currentFile(), picture);
    EXPECT_EQ(main->windowTitle(), "Kavori - [full.bmp]");
}

TEST_F(EntryRoutineTest, FloppyQuestionAnswersAndTheHelpHint)
{
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"), home());
    const QString question = FloppyDiskQuestion(QStringLiteral("A:\\SHOWS\\HOLIDAY.KAV"));

    // Cancel ends at once; nothing is read.
    prompts().answers = {vbCancel};
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("A:\\SHOWS\\HOLIDAY.KAV")}), 0);
    EXPECT_EQ(prompts().texts(), QStringList({question}));
    EXPECT_EQ(prompts().calls[0].style, vbOKCancel + vbInformation + vbSystemModal);
    EXPECT_TRUE(question.contains("\\SHOWS\\HOLIDAY.KAV\r\n\r\n...is in Floppy Drive A:"));

    // OK goes on to read the show, which is not there: refused, then nothing to play.
    prompts().clear();
    prompts().answers = {vbOK};
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("A:\\SHOWS\\HOLIDAY.KAV")}), 0);
    ASSERT_EQ(prompts().texts().size(), 3);
    EXPECT_EQ(prompts().texts()[0], question);
    EXPECT_TRUE(
        prompts().texts()[1].startsWith("The selected file is not a valid Kavori Slide Show"));
    EXPECT_EQ(prompts().texts()[2], "There are no pictures in this slide show to view...");
    EXPECT_EQ(windowsNamed("WaitFrm"), 0);

    // A lower-case h: the help hint in front, then the program ends with its window closed.
    prompts().clear();
    bool hintBehindLoadingWindow = false;
    prompts().onMessage = [&](const kavori::test::PromptRecorder::Call&) {
        hintBehindLoadingWindow = windowsNamed("WaitFrm") > 0;
    };
    EXPECT_FALSE(RunEntryRoutine({QStringLiteral("h")}).has_value());
    EXPECT_EQ(prompts().texts(),
              QStringList({"Start the program normally (don't pass command line parameters) and "
                           "press the F1 key to view help on this product..."}));
    EXPECT_EQ(prompts().calls[0].style, vbInformation);
    EXPECT_FALSE(hintBehindLoadingWindow);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(windowsNamed("MainViewFrm"), 0);
    EXPECT_EQ(windowsNamed("WaitFrm"), 0);
}

TEST_F(EntryRoutineTest, SettingsModeAndOurSaverModulesRun)
{
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("EXEPath"), home());
    // "/c": the settings dialog, then the end.
    QString title;
    QTimer closer; // start-up lets events run before the dialog is up
    QObject::connect(&closer, &QTimer::timeout, [&title] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            title = dialog->windowTitle();
            dialog->close();
        }
    });
    closer.start(20);
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("/c")}), 0);
    closer.stop();
    EXPECT_EQ(title, "Kavori - [Screen Saver Settings]");
    EXPECT_EQ(windowsNamed("WaitFrm"), 0);

    // "/S" without a chosen show does nothing; with one it plays it as the screen saver.
    ResetStartup();
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("/S")}), 0);
    EXPECT_FALSE(CurrentStartup().StartedFromShow);
    QDir().mkpath(root() + QStringLiteral("saver"));
    QImage picture(32, 24, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    const QString picturePath = root() + QStringLiteral("saver/a.bmp");
    ASSERT_TRUE(picture.save(picturePath, "BMP"));
    const QString show = writeFile(QStringLiteral("saver/one.kav"),
                                   "Kavori Slide Show\r\nVersion 1.X\r\n0\r\n\r\n0\r\n0\r\n5\r\n"
                                   "0\r\n0\r\n" +
                                       picturePath.toUtf8() + "\r\n");
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"), show);
    ResetStartup();
    qputenv("XSCREENSAVER_WINDOW", "");
    // The saver runs until a key: one is pressed once it is up.
    bool sawLock = false;
    QTimer key;
    QObject::connect(&key, &QTimer::timeout, [&] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (qobject_cast<FullViewFrm*>(w) && w->isVisible()) {
                sawLock = sawLock || WindowLock::Exists(ScreenSaverWindowTitle());
                QTest::keyClick(w, Qt::Key_A);
            }
        }
    });
    key.start(20);
    EXPECT_EQ(RunEntryRoutine({QStringLiteral("/S"), QStringLiteral("-root")}), 0);
    EXPECT_TRUE(sawLock);
    EXPECT_TRUE(CurrentStartup().ScreenSaverMode);
    EXPECT_TRUE(CurrentStartup().StartedFromShow);
    EXPECT_EQ(CurrentStartup().SaverWindow, 0u);
    EXPECT_EQ(QDir::currentPath() + u'/', root() + QStringLiteral("saver/"));
    EXPECT_FALSE(WindowLock::Exists(ScreenSaverWindowTitle()));
}
