#include "viewer/SystemCommands.h"
#include "platform/AppPaths.h"
#include "platform/DesktopPrograms.h"
#include "platform/StartupState.h"
#include "platform/SystemInformation.h"
#include "playback/frmMediaPlayer.h"
#include "playback/media/FakeMedia.h"
#include "playback/media/MciCommand.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>

using namespace kavori;

// Receives the URLs the program would open in the browser.
class UrlCatcher : public QObject {
    Q_OBJECT
public:
    QList<QUrl> urls;
public Q_SLOTS:
    void open(const QUrl& url) { urls << url; }
};

class SystemCommandsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        CurrentSettings().StartupDialog = 0;
        m_path = qgetenv("PATH");
        bin = root() + QStringLiteral("bin/");
        QDir().mkpath(bin);
        qputenv("PATH", QFile::encodeName(bin));
        SetDesktopLauncher([this](const QString& program, const QStringList& arguments) {
            started << (QStringList{program} + arguments).join(u' ');
            return true;
        });
    }
    void TearDown() override
    {
        SetDesktopLauncher({});
        qputenv("PATH", m_path);
        KavoriTest::TearDown();
    }
    // A program on the PATH that does nothing.
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
    static void shoot(QWidget* widget, const char* name)
    {
        const QString dir = qEnvironmentVariable("KAVORI_SHOT_DIR");
        if (!dir.isEmpty())
            widget->grab().save(dir + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
    }
    QString bin;
    QStringList started;

private:
    QByteArray m_path;
};

TEST_F(SystemCommandsTest, SystemInformationHasEveryValue)
{
    const QVector<SystemInfoLine> lines = GatherSystemInformation();
    QStringList labels;
    for (const SystemInfoLine& line : lines) {
        labels << line.label;
        EXPECT_FALSE(line.value.trimmed().isEmpty()) << line.label.toStdString();
    }
    EXPECT_EQ(labels, QStringList({"System", "Processor", "Memory", "Display", "Qt", "GStreamer",
                                   "Sound", "Program folder"}));
    EXPECT_EQ(lines[4].value, QString::fromLatin1(qVersion()));
    EXPECT_TRUE(lines[3].value.endsWith("32 bits per pixel")) << lines[3].value.toStdString();
    EXPECT_TRUE(lines[7].value.startsWith(AppPath() + ": "));
    EXPECT_TRUE(lines[7].value.contains(" MB free of ")) << lines[7].value.toStdString();
    // No gst-inspect on this PATH: the line says what plays instead.
    EXPECT_TRUE(lines[5].value.startsWith("Not found")) << lines[5].value.toStdString();

    // The system's texts, as recorded on machines.
    const MemoryInfo m = ParseMemInfo(QStringLiteral("MemTotal:       16303804 kB\n"
                                                     "MemFree:         1204320 kB\n"
                                                     "MemAvailable:    9913860 kB\n"
                                                     "Buffers:          530160 kB\n"));
    EXPECT_EQ(m.totalKb, 16303804);
    EXPECT_EQ(m.availableKb, 9913860);
    EXPECT_EQ(ParseMemInfo(QStringLiteral("MemTotal: 2048 kB\nMemFree: 1024 kB\n")).availableKb,
              1024);
    EXPECT_EQ(ParseMemInfo(QString()).totalKb, 0);
    EXPECT_EQ(MegabytesText(qint64(16303804) * 1024), "15,921 MB");
    EXPECT_EQ(ParseProcessorName(QStringLiteral(
                  "processor\t: 0\nvendor_id\t: GenuineIntel\nmodel name\t: Intel(R) Core(TM) "
                  "i7-8550U CPU @ 1.80GHz\nprocessor\t: 1\n")),
              "Intel(R) Core(TM) i7-8550U CPU @ 1.80GHz");
    EXPECT_EQ(ParseProcessorName(
                  QStringLiteral("processor\t: 0\nBogoMIPS\t: 108.00\n\nHardware\t: BCM2835\n"
                                 "Model\t\t: Raspberry Pi 4 Model B Rev 1.4\n")),
              "Raspberry Pi 4 Model B Rev 1.4");
    EXPECT_EQ(ParseProcessorName(QStringLiteral("processor : 0\n")), "");
    EXPECT_EQ(
        ParseGStreamerVersion(QStringLiteral(
            "gst-inspect-1.0 version 1.22.0\nGStreamer 1.22.0\nhttps://tracker.debian.org\n")),
        "1.22.0");
    EXPECT_EQ(ParseGStreamerVersion(QStringLiteral("command not found")), "");
}

TEST_F(SystemCommandsTest, SystemMenuToolsFromTheWindow)
{
    MainViewFrm w;
    // System Information: our dialog with every line, copied as text.
    bool shown = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* dialog = qobject_cast<frmSysInfo*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->list()->topLevelItemCount(), 8);
        dialog->findChild<QPushButton*>(QStringLiteral("CmdCopy"))->click();
        shoot(dialog, "frmSysInfo");
        shown = true;
        dialog->accept();
    });
    run(w, "mnuSysInfo");
    EXPECT_TRUE(shown);
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("System: "));
    EXPECT_TRUE(
        QApplication::clipboard()->text().contains("\nQt: " + QString::fromLatin1(qVersion())));

    // The desktop's sound and system settings, the first one found of each list.
    run(w, "mnuMultimediaProperties");
    run(w, "mnuAdvancedSettings");
    EXPECT_TRUE(started.isEmpty());
    EXPECT_EQ(prompts().texts().size(), 2);
    EXPECT_TRUE(prompts().texts()[0].startsWith("No sound settings program was found"));
    EXPECT_TRUE(prompts().texts()[0].contains("pavucontrol"));
    EXPECT_TRUE(prompts().texts()[1].contains("xfce4-settings-manager"));
    install(QStringLiteral("pavucontrol"));
    install(QStringLiteral("xfce4-settings-manager"));
    install(QStringLiteral("systemsettings"));
    run(w, "mnuMultimediaProperties");
    run(w, "mnuAdvancedSettings");
    EXPECT_EQ(started, QStringList({bin + "pavucontrol", bin + "systemsettings"}));
    EXPECT_EQ(prompts().texts().size(), 2);

    // The page about the program, from the program's folder, in the browser.
    EnsureAppHome();
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    run(w, "mnuWebSite");
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    ASSERT_EQ(catcher.urls.size(), 1);
    EXPECT_TRUE(catcher.urls[0].toLocalFile().endsWith("Help/about.html"));
    EXPECT_TRUE(QFile::exists(catcher.urls[0].toLocalFile()));

    // Exit to Launcher ends as Exit does: the unsaved picture is asked about first.
    w.show();
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QApplication::clipboard()->setImage(picture);
    run(w, "mnuPaste");
    prompts().clear();
    prompts().answers = {vbNo};
    run(w, "mnuExitToLauncher");
    EXPECT_TRUE(w.isVisible());
    EXPECT_EQ(prompts().texts().first(),
              "The current file has not been saved.\r\n\r\nDiscard changes and continue?");
    CurrentSettings().ClearClipboard = false;
    prompts().answers = {vbYes};
    run(w, "mnuExitToLauncher");
    EXPECT_FALSE(w.isVisible());
}

TEST_F(SystemCommandsTest, MediaPlayerPlaysASoundAndAMovie)
{
    kavori::test::FakeMedia media;
    ClearMciCommandLog();
    CurrentStartup().WaveDevices = true;
    CurrentStartup().MidiDevices = true;
    const QString wave = writeFile(QStringLiteral("media/chime.wav"), kavori::test::MakeWave(300));
    const QString movie = writeFile(QStringLiteral("media/clip.avi"), "RIFF....AVI ");
    const QString tune = writeFile(QStringLiteral("media/tune.mid"), kavori::test::MakeMidi());
    const QString text = writeFile(QStringLiteral("media/notes.txt"), "words");

    MainViewFrm w;
    prompts().files = {wave};
    run(w, "mnuMediaPlayer");
    auto* player = w.findChild<frmMediaPlayer*>();
    ASSERT_NE(player, nullptr);
    EXPECT_TRUE(player->isVisible());
    EXPECT_EQ(player->file(), wave);
    EXPECT_EQ(MciCommandLog(),
              QStringList({"open \"" + wave + "\" type MPEGVideo alias Player",
                           "window Player handle " + MciCommandLog()[1].section(' ', 3),
                           "play Player from 0", "status Player mode"}));
    auto* status = player->findChild<QLabel*>(QStringLiteral("lblStatus"));
    auto* play = player->findChild<QPushButton*>(QStringLiteral("CmdPlay"));
    EXPECT_EQ(status->text(), "Playing");
    EXPECT_EQ(play->text(), "&Pause");
    play->click();
    EXPECT_EQ(status->text(), "Paused");
    play->click();
    EXPECT_EQ(status->text(), "Playing");
    player->findChild<QPushButton*>(QStringLiteral("CmdStop"))->click();
    EXPECT_EQ(status->text(), "Stopped");
    EXPECT_EQ(play->text(), "&Play");
    EXPECT_TRUE(MciCommandLog().contains("pause Player"));
    EXPECT_TRUE(MciCommandLog().contains("play Player"));
    EXPECT_TRUE(MciCommandLog().contains("stop Player"));

    // A movie replaces the sound and fills the window.
    ClearMciCommandLog();
    ASSERT_TRUE(player->playFile(movie));
    EXPECT_EQ(MciCommandLog().mid(0, 3),
              QStringList({"stop Player", "close Player",
                           "open \"" + movie + "\" type AVIVideo alias Player"}));
    EXPECT_TRUE(MciCommandLog().contains("put Player destination"));
    EXPECT_EQ(media.last(MciDeviceType::AVIVideo)->window,
              player->findChild<QWidget*>(QStringLiteral("picPlayer")));
    shoot(player, "frmMediaPlayer");

    // What it cannot play is refused with a message, and nothing stays open.
    EXPECT_FALSE(player->playFile(text));
    EXPECT_TRUE(prompts().texts().last().startsWith("The Media Player plays sounds and movies"));
    CurrentStartup().MidiDevices = false;
    EXPECT_FALSE(player->playFile(tune));
    EXPECT_EQ(prompts().texts().last(),
              "This computer does not have a MIDI capable sound card, unable to play file.");
    CurrentStartup().MidiDevices = true;
    media.openResult[MciDeviceType::MPEGVideo] = MCIERR_INVALID_FILE;
    EXPECT_FALSE(player->playFile(wave));
    EXPECT_TRUE(prompts().texts().last().startsWith("Unable to play the following file:"));
    EXPECT_EQ(status->text(), "Choose Open to pick a sound or movie file.");

    // MIDI goes to the sequencer; closing the window closes the file.
    ASSERT_TRUE(player->playFile(tune));
    EXPECT_TRUE(MciCommandLog().contains("open \"" + tune + "\" type sequencer alias Player"));
    ClearMciCommandLog();
    player->close();
    EXPECT_EQ(MciCommandLog(), QStringList({"stop Player", "close Player"}));
}

#include "SystemCommandsTest.moc"
