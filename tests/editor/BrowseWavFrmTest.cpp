#include "editor/BrowseWavFrm.h"
#include "platform/AppPaths.h"
#include "platform/StartupState.h"
#include "playback/media/FakeMedia.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>

using namespace kavori;

class BrowseWavFrmTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        ResetStartup();
        CurrentStartup().WaveDevices = true;
        CurrentStartup().MidiDevices = true;
        CurrentSettings().UseRecycleBin = false;
        media = std::make_unique<kavori::test::FakeMedia>();
        media->holdWaves = true;
        EnsureAppHome(); // BLANK.WAV, which stops a wave, and the bonus sounds
        folder = root() + QStringLiteral("sounds/");
        for (const char* name : {"Bell.wav", "Chime.wav"})
            writeFile(QStringLiteral("sounds/") + QLatin1String(name), kavori::test::MakeWave(200));
        writeFile(QStringLiteral("sounds/notes.txt"), "not a sound");
    }
    void TearDown() override
    {
        media.reset();
        ResetStartup();
        ShowTest::TearDown();
    }
    void click(QWidget& w, const char* name)
    {
        auto* b = w.findChild<QPushButton*>(QString::fromLatin1(name));
        ASSERT_NE(b, nullptr) << name;
        b->click();
    }

    std::unique_ptr<kavori::test::FakeMedia> media;
    QString folder;
};

TEST_F(BrowseWavFrmTest, ListsPlaysAndPicksASound)
{
    BrowseWavFrm browser(nullptr, folder);
    EXPECT_EQ(browser.files(), QStringList({folder + QStringLiteral("Bell.wav"),
                                            folder + QStringLiteral("Chime.wav")}));
    // Nothing chosen: OK, play and information each say so.
    click(browser, "CmdOK");
    click(browser, "CmdPlay");
    EXPECT_EQ(prompts().texts(),
              QStringList({"Select a Wave Audio file or a MIDI (.mid) file from the list or press "
                           "the Cancel button...",
                           "Select a file from the list and then try again..."}));
    EXPECT_NE(browser.result(), QDialog::Accepted);

    browser.selectFile(folder + QStringLiteral("Chime.wav"));
    auto* play = browser.findChild<QPushButton*>(QStringLiteral("CmdPlay"));
    play->click();
    EXPECT_EQ(play->text(), "&Stop...");
    EXPECT_EQ(media->waveFile, folder + QStringLiteral("Chime.wav"));
    play->click();
    EXPECT_EQ(play->text(), "&Play");
    EXPECT_TRUE(media->waveFile.endsWith(QStringLiteral("BLANK.WAV")))
        << media->waveFile.toStdString();

    prompts().clear();
    click(browser, "CmdInfo");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].title, "Kavori - [Sound File Information]");
    EXPECT_TRUE(prompts().calls[0].text.contains("Type: Windows Wave (.WAV)\r\n"));
    EXPECT_TRUE(prompts().calls[0].text.contains("Playing time: 0.2 seconds"));

    // The bonus sounds are one click away.
    click(browser, "CmdSndFolder");
    EXPECT_EQ(browser.folder(), home() + QStringLiteral("Bonus/Sounds"));
    EXPECT_GE(browser.files().size(), 6);

    browser.setFolder(folder);
    browser.selectFile(folder + QStringLiteral("Bell.wav"));
    click(browser, "CmdOK");
    EXPECT_EQ(browser.result(), QDialog::Accepted);
    EXPECT_EQ(browser.selectedFile(), folder + QStringLiteral("Bell.wav"));
    EXPECT_EQ(CurrentSettings().LastSoundPath, QDir::cleanPath(folder));
    // The next browser opens where this one was left.
    BrowseWavFrm next;
    EXPECT_EQ(next.folder(), QDir::cleanPath(folder));
}

TEST_F(BrowseWavFrmTest, RenameMoveAndDeleteCarryTheShowAndTheSoundFileSetting)
{
    SlideShow& show = CurrentShow();
    show.path = folder + QStringLiteral("Show.KAV");
    for (const char* sound : {"Bell.wav", "", "Chime.wav"}) {
        Slide slide = NewSlide(QStringLiteral("a.jpg"));
        slide.SlideSound = QString::fromLatin1(sound);
        show.slides << slide;
    }
    show.PlayList = {folder + QStringLiteral("Bell.wav")};
    CurrentSettings().SoundFile = folder + QStringLiteral("Bell.wav");
    BrowseWavFrm browser(nullptr, folder);
    QString renamed, deleted;
    QObject::connect(&browser, &BrowseWavFrm::soundRenamed,
                     [&](const QString&, const QString& to) { renamed = to; });
    QObject::connect(&browser, &BrowseWavFrm::soundDeleted,
                     [&](const QString& path) { deleted = path; });

    // A refused name touches nothing; a good one renames and the show follows.
    browser.selectFile(folder + QStringLiteral("Bell.wav"));
    prompts().inputs = {QStringLiteral("Ding?"), QStringLiteral("Ding")};
    click(browser, "CmdRename");
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("Bell.wav")));
    click(browser, "CmdRename");
    const QString ding = folder + QStringLiteral("Ding.wav");
    EXPECT_TRUE(QFileInfo::exists(ding));
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        "A filename may not contain any of the following characters:"));
    EXPECT_EQ(prompts().calls[1].text, "The old filename was in the current slide show, the "
                                       "entry was updated as a result...");
    EXPECT_EQ(show.slides[0].SlideSound, ding);
    EXPECT_EQ(show.PlayList, QStringList({ding}));
    EXPECT_EQ(CurrentSettings().SoundFile, ding);
    EXPECT_EQ(renamed, ding);
    EXPECT_TRUE(show.changed);
    // The setting is kept for the next start too.
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("SoundFile")), ding);

    // Moving the chime elsewhere: its slide follows.
    prompts().clear();
    const QString elsewhere = root() + QStringLiteral("moved");
    QDir().mkpath(elsewhere);
    browser.selectFile(folder + QStringLiteral("Chime.wav"));
    prompts().files = {elsewhere};
    prompts().answers = {vbYes};
    click(browser, "CmdMove");
    EXPECT_EQ(show.slides[2].SlideSound, elsewhere + QStringLiteral("/Chime.wav"));
    EXPECT_EQ(prompts().texts().last(),
              "At least one of the selected file(s) is in the current slide show, the entry(s) "
              "were updated as a result...");
    EXPECT_EQ(browser.files(), QStringList({ding}));

    // Deleting, asked first: No keeps the file, Yes removes it and every use of it.
    prompts().clear();
    browser.selectFile(ding);
    prompts().answers = {vbNo, vbYes};
    click(browser, "CmdDelete");
    EXPECT_TRUE(QFileInfo::exists(ding));
    click(browser, "CmdDelete");
    EXPECT_FALSE(QFileInfo::exists(ding));
    EXPECT_EQ(prompts().texts().last(), "The deleted file was in the current slide show, the "
                                        "entry was updated as a result...");
    EXPECT_EQ(show.slides[0].SlideSound, "");
    EXPECT_TRUE(show.PlayList.isEmpty());
    EXPECT_EQ(CurrentSettings().SoundFile, "");
    EXPECT_EQ(deleted, ding);
    EXPECT_TRUE(browser.files().isEmpty());
}
