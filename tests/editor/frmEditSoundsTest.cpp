#include "editor/frmEditSounds.h"
#include "editor/SlideLoadFrm.h"
#include "editor/SlideRangeFrm.h"
#include "platform/StartupState.h"
#include "playback/media/FakeMedia.h"
#include "playback/media/MciCommand.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QUrl>

using namespace kavori;

class frmEditSoundsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        ResetStartup();
        CurrentStartup().WaveDevices = true;
        CurrentStartup().MidiDevices = true;
        media = std::make_unique<kavori::test::FakeMedia>();
        ClearMciCommandLog();
    }
    void TearDown() override
    {
        media.reset();
        ResetStartup();
        ShowTest::TearDown();
    }

    // A show of n slides saved beside its pictures, and a folder of sounds.
    QString makeShow(int slides)
    {
        const QString folder = root() + QStringLiteral("show/");
        QDir().mkpath(folder);
        SlideShow& show = CurrentShow();
        for (int i = 0; i < slides; ++i) {
            QImage picture(16, 16, QImage::Format_RGB32);
            picture.fill(Qt::darkCyan);
            const QString file = folder + QStringLiteral("pic%1.bmp").arg(i);
            picture.save(file, "BMP");
            show.slides << NewSlide(file);
        }
        show.path = folder + QStringLiteral("Sounds.KAV");
        EXPECT_TRUE(WriteSlideShow(show.path));
        show.changed = false;
        return folder;
    }
    QString soundFolder()
    {
        for (const char* name : {"Bell.wav", "Chime.wav", "Rain.wav"})
            writeFile(QStringLiteral("sounds/") + QLatin1String(name), kavori::test::MakeWave(200));
        writeFile(QStringLiteral("sounds/Tune.mid"), kavori::test::MakeMidi());
        writeFile(QStringLiteral("sounds/readme.txt"), "not a sound");
        return root() + QStringLiteral("sounds/");
    }
    template <typename T> static T* child(QWidget& w, const char* name)
    {
        T* found = w.findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    static void click(QWidget& w, const char* name) { child<QPushButton>(w, name)->click(); }
    static void type(QWidget& w, const QString& text)
    {
        child<QLineEdit>(w, "txtSoundFile")->setText(text);
    }
    // The lines of a show file.
    QStringList fileLines(const QString& path)
    {
        return QString::fromLatin1(readFile(path)).split(QStringLiteral("\r\n"));
    }

    std::unique_ptr<kavori::test::FakeMedia> media;
};

TEST_F(frmEditSoundsTest, EditorOpensTheDialogAndTheSavedShowHasTheSound)
{
    const QString folder = makeShow(2);
    const QString sounds = soundFolder();
    SlideLoadFrm editor;
    editor.selectLines({1});
    bool opened = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* dialog = qobject_cast<frmEditSounds*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        opened = true;
        EXPECT_EQ(dialog->windowTitle(), "Editing sound for slide 2:");
        dialog->setSourceFolder(sounds);
        type(*dialog, QStringLiteral("Bell.wav"));
        click(*dialog, "CmdAddFile");
        click(*dialog, "CmdSet");
        click(*dialog, "CmdOK");
    });
    editor.findChild<QAction*>(QStringLiteral("mnuEditSounds"))->trigger();
    ASSERT_TRUE(opened);
    EXPECT_TRUE(prompts().calls.isEmpty()) << prompts().texts().join(u'|').toStdString();
    EXPECT_TRUE(CurrentShow().changed);
    EXPECT_EQ(CurrentShow().slides[1].SlideSound, sounds + QStringLiteral("Bell.wav"));
    EXPECT_EQ(CurrentSettings().SoundMode, 3);

    prompts().answers = {vbYes}; // "About to update the slide show file:"
    ASSERT_TRUE(editor.save());
    const QStringList lines = fileLines(folder + QStringLiteral("Sounds.KAV"));
    ASSERT_GE(lines.size(), 23 + 28);
    EXPECT_EQ(lines[2], "3"); // SoundMode
    EXPECT_EQ(lines[23 + 3], "\"\"");
    EXPECT_EQ(lines[23 + 14 + 3], QStringLiteral("\"") + sounds + QStringLiteral("Bell.wav\""));

    // Clearing every sound from the editor's menu asks, then the slides have none.
    prompts().clear();
    prompts().answers = {vbYes};
    editor.findChild<QAction*>(QStringLiteral("mnuClearSounds"))->trigger();
    EXPECT_EQ(prompts().texts(), QStringList({"You are about to clear ALL of the sound settings "
                                              "for this slide show.\r\n\r\nAre you sure?"}));
    EXPECT_EQ(CurrentShow().slides[1].SlideSound, "");
    prompts().clear();
    editor.findChild<QAction*>(QStringLiteral("mnuClearSounds"))->trigger();
    EXPECT_EQ(prompts().texts(), QStringList({"All slides are already set to No Sound..."}));
}

TEST_F(frmEditSoundsTest, SlideSoundsCDTracksTypedNamesAndDrops)
{
    makeShow(3);
    const QString sounds = soundFolder();
    frmEditSounds dialog(0);
    dialog.setSourceFolder(sounds);

    // Nothing offered yet, then typed names are checked before they are offered.
    click(dialog, "CmdSet");
    click(dialog, "CmdSetAll");
    type(dialog, QString());
    click(dialog, "CmdAddFile");
    type(dialog, QStringLiteral("Bell"));
    click(dialog, "CmdAddFile");
    type(dialog, QStringLiteral("Gone.wav"));
    click(dialog, "CmdAddFile");
    EXPECT_EQ(prompts().texts(),
              QStringList({"There are no sound files in the current slide show, nothing to set...",
                           "No sounds have been specified for this slide show, unable to set all "
                           "to the selected sound...",
                           "You need to specify the sound file to play first...",
                           "An extension, such as .WAV, was not found in the specified "
                           "filename.\r\n\r\nSpecify a valid sound file type and then try again...",
                           "The specified sound file could not be found.\r\n\r\nCorrect the "
                           "filename and then try again..."}));
    EXPECT_TRUE(dialog.offeredSounds().isEmpty());

    // A CD track for every slide, asked first; then one slide steps to another sound.
    prompts().clear();
    child<QComboBox>(dialog, "cboCDTrack")->setCurrentIndex(5);
    click(dialog, "CmdAddCD");
    prompts().answers = {vbYes};
    click(dialog, "CmdSetAll");
    EXPECT_EQ(dialog.sounds().slideSounds, QStringList({"5", "5", "5"}));
    click(dialog, "CmdSetAll");
    EXPECT_EQ(prompts().texts(),
              QStringList({"Set all of the slides in your slide show to Track 5 on a CD Audio "
                           "disk?",
                           "All slides are already set to Track 5..."}));
    prompts().clear();
    click(dialog, "CmdNext");
    EXPECT_EQ(dialog.windowTitle(), "Editing sound for slide 2:");
    // Files dropped on the list of sounds: the sound is offered, the other file refused.
    QMimeData dragged;
    dragged.setUrls({QUrl::fromLocalFile(sounds + QStringLiteral("Tune.mid")),
                     QUrl::fromLocalFile(sounds + QStringLiteral("readme.txt"))});
    QWidget* target = child<QListWidget>(dialog, "ListSounds")->viewport();
    // The drop goes where the drag entered.
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
    EXPECT_EQ(prompts().texts(),
              QStringList({"A file that was dropped into the list of sounds is not a valid sound "
                           "file."}));
    EXPECT_EQ(dialog.offeredSounds(), QStringList({"5", sounds + QStringLiteral("Tune.mid")}));
    prompts().clear();
    click(dialog, "CmdSet");
    click(dialog, "CmdSet");
    EXPECT_EQ(prompts().texts(),
              QStringList({"The current slide is already set to the selected sound..."}));
    EXPECT_EQ(dialog.sounds().slideSounds,
              QStringList({"5", sounds + QStringLiteral("Tune.mid"), "5"}));
    EXPECT_EQ(child<QListWidget>(dialog, "ListSounds")->item(0)->text(), "Track 5");

    // A run of slides: the range dialog asks which.
    QTimer::singleShot(0, qApp, [] {
        auto* range = qobject_cast<SlideRangeFrm*>(QApplication::activeModalWidget());
        ASSERT_NE(range, nullptr);
        range->setRange(1, 2);
        range->accept();
    });
    dialog.chooseSound(0);
    click(dialog, "CmdSetRange");
    EXPECT_EQ(dialog.sounds().slideSounds, QStringList({"5", "5", "5"}));

    // Cancel leaves the show as it was.
    dialog.reject();
    EXPECT_EQ(CurrentShow().slides[1].SlideSound, "");
    EXPECT_FALSE(CurrentShow().changed);
}

TEST_F(frmEditSoundsTest, PlayingATypedSoundTurnsThePlayButtonIntoStop)
{
    makeShow(1);
    const QString sounds = soundFolder();
    frmEditSounds dialog(0);
    dialog.setSourceFolder(sounds);
    auto* play = child<QPushButton>(dialog, "CmdPlay");
    type(dialog, QStringLiteral("Tune.mid"));
    play->click();
    EXPECT_EQ(play->text(), "&Stop...");
    EXPECT_EQ(MciCommandLog().first(),
              QStringLiteral("open \"") + sounds +
                  QStringLiteral("Tune.mid\" type sequencer alias MIDIFile"));
    play->click();
    EXPECT_EQ(play->text(), "&Play");
    EXPECT_TRUE(MciCommandLog().contains(QStringLiteral("stop MIDIFile")));

    CurrentStartup().MidiDevices = false;
    play->click();
    EXPECT_EQ(prompts().texts(), QStringList({"This computer does not have a MIDI capable sound "
                                              "card, unable to play file."}));
    EXPECT_EQ(play->text(), "&Play");
}

TEST_F(frmEditSoundsTest, PlayListCommandsAndTheQuestionThatEmptiesIt)
{
    const QString folder = makeShow(2);
    const QString sounds = soundFolder();
    frmEditSounds dialog(0);
    dialog.setSourceFolder(sounds);
    ASSERT_EQ(dialog.sourceFiles().size(), 4);
    EXPECT_EQ(dialog.playListCountText(), "There are no sounds in the play list...");

    click(dialog, "CmdAddPlay");
    click(dialog, "CmdPlayUp");
    click(dialog, "CmdPlayReverse");
    click(dialog, "CmdRemovePlay");
    EXPECT_EQ(prompts().texts(),
              QStringList({"No sound files are selected, nothing to add...",
                           "There is nothing in the Play List, unable to move file(s) up...",
                           "There are no files in the Play List, unable to reverse the order of "
                           "sounds...",
                           "There are no sound files in the Play List to remove..."}));
    prompts().clear();
    click(dialog, "CmdAddAllPlay");
    EXPECT_EQ(dialog.playListCountText(), "4 sound files total...");
    dialog.selectPlayList({3});
    click(dialog, "CmdPlayTop");
    EXPECT_EQ(dialog.sounds().playList.first(), sounds + QStringLiteral("Tune.mid"));
    EXPECT_EQ(dialog.playListSelection(), QVector<int>({0}));
    click(dialog, "CmdPlayUp");
    dialog.selectPlayList({});
    click(dialog, "CmdPlayDown");
    EXPECT_EQ(prompts().texts(),
              QStringList({"The selected file(s) are already at top of the Play List, unable to "
                           "move file(s) up...",
                           "Select the sounds(s) to move down and then try again..."}));

    // A file gone from the disk is found, selected and removed on Yes.
    prompts().clear();
    QFile::remove(sounds + QStringLiteral("Rain.wav"));
    prompts().answers = {vbYes};
    click(dialog, "CmdRemoveMissing");
    click(dialog, "CmdRemoveMissing");
    EXPECT_EQ(prompts().texts(),
              QStringList({"One sound file is missing and has been selected in the Play "
                           "List.\r\n\r\nRemove missing file from the Play List?",
                           "All of the sounds in the current Play List could be found, there are "
                           "no missing files to remove."}));
    EXPECT_EQ(dialog.playListCountText(), "3 sound files total...");
    prompts().clear();
    click(dialog, "CmdPlayInfo");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].title, "Kavori - [Play List Information]");
    EXPECT_TRUE(prompts().calls[0].text.startsWith("Number of sound files = 3\r\n"));

    // With the slides' own sounds chosen, OK asks; No keeps the dialog and the list.
    prompts().clear();
    child<QRadioButton>(dialog, "optSlideInterval")->setChecked(true);
    prompts().answers = {vbNo};
    click(dialog, "CmdOK");
    EXPECT_EQ(prompts().texts(),
              QStringList({"The specified \"Play List\" will be cleared if you choose to use the "
                           "\"Slide Interval\" setting now.\r\n\r\nAre you sure you want to "
                           "continue?"}));
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(CurrentShow().PlayList.isEmpty());

    // The play list chosen: OK gives it to the show and the saved file holds it.
    prompts().clear();
    child<QRadioButton>(dialog, "optPlayList")->setChecked(true);
    click(dialog, "CmdOK");
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(CurrentShow().PlayList.size(), 3);
    EXPECT_TRUE(CurrentSettings().UsePlayList);
    EXPECT_EQ(CurrentSettings().SoundMode, 3);
    ASSERT_TRUE(WriteSlideShow(folder + QStringLiteral("Sounds.KAV")));
    const QStringList lines = fileLines(folder + QStringLiteral("Sounds.KAV"));
    const qsizetype block = lines.indexOf(QStringLiteral("\"<PlayList>\""));
    ASSERT_GE(block, 0) << lines.join(u'|').toStdString();
    EXPECT_EQ(lines[block + 4], QStringLiteral("\"") + sounds + QStringLiteral("Tune.mid\""));

    // Opened again with the slides' sounds chosen, Yes empties the play list.
    frmEditSounds again(0);
    child<QRadioButton>(again, "optSlideInterval")->setChecked(true);
    prompts().answers = {vbYes};
    click(again, "CmdOK");
    EXPECT_EQ(again.result(), QDialog::Accepted);
    EXPECT_TRUE(CurrentShow().PlayList.isEmpty());
    EXPECT_FALSE(CurrentSettings().UsePlayList);
}

TEST_F(frmEditSoundsTest, PlayListRefusesTheThousandAndFirstSound)
{
    makeShow(1);
    const QString sounds = soundFolder();
    for (int i = 0; i < 998; ++i)
        CurrentShow().PlayList << sounds + QStringLiteral("Bell.wav");
    frmEditSounds dialog(0);
    dialog.setSourceFolder(sounds);
    click(dialog, "CmdAddAllPlay"); // 998 + 4
    EXPECT_EQ(prompts().texts(),
              QStringList({"You can only have 1,000 sound files in a Play List..."}));
    EXPECT_EQ(dialog.playListCountText(), "998 sound files total...");
    dialog.selectSourceFiles({0, 1});
    click(dialog, "CmdAddPlay");
    EXPECT_EQ(dialog.playListCountText(), "1,000 sound files total...");
}
