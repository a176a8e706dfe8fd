#include "slideshow/ShowSounds.h"
#include "imaging/ImageTypes.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "support/ShowTest.h"

#include <QFileInfo>

using namespace kavori;

class ShowSoundsTest : public kavori::test::ShowTest {
protected:
    static ShowSounds slides(const QStringList& sounds)
    {
        ShowSounds s;
        s.slideSounds = sounds;
        return s;
    }
};

TEST_F(ShowSoundsTest, PlayListStopsAtAThousandAndRefusesEmptyChoices)
{
    QStringList list;
    EXPECT_EQ(AddToPlayList(list, {}, true).message,
              "There are no sound files in the selected directory to add...");
    EXPECT_EQ(AddToPlayList(list, {}, false).message,
              "No sound files are selected, nothing to add...");
    for (int i = 0; i < 999; ++i)
        list << QStringLiteral("/s/%1.wav").arg(i);
    // Two more would make 1,001: refused whole.
    ListResult r = AddToPlayList(list, {"/s/a.wav", "/s/b.wav"}, false);
    EXPECT_EQ(r.message, "You can only have 1,000 sound files in a Play List...");
    EXPECT_FALSE(r.changed);
    EXPECT_EQ(list.size(), 999);
    r = AddToPlayList(list, {"/s/a.wav"}, false);
    EXPECT_TRUE(r.message.isEmpty());
    EXPECT_EQ(r.selection, QVector<int>({999}));
    EXPECT_EQ(list.size(), 1000);
    EXPECT_EQ(PlayListCountText(int(list.size())), "1,000 sound files total...");
    EXPECT_EQ(PlayListCountText(1), "One sound file total...");
    EXPECT_EQ(PlayListCountText(0), "There are no sounds in the play list...");

    QStringList three = {"a.wav", "b.wav", "c.wav"};
    EXPECT_EQ(RemoveFromPlayList(three, {}).message,
              "No sound files are selected in the Play List, nothing to remove...");
    r = RemoveFromPlayList(three, {2, 0});
    EXPECT_EQ(three, QStringList({"b.wav"}));
    EXPECT_EQ(r.selection, QVector<int>({0}));
    QStringList none;
    EXPECT_EQ(RemoveFromPlayList(none, {0}).message,
              "There are no sound files in the Play List to remove...");
    EXPECT_EQ(CheckRemoveAllFromPlayList(none).message,
              "There are no sound files in the Play List to remove...");
    EXPECT_EQ(CheckRemoveAllFromPlayList(three).question,
              "Remove all of the sound files from the Play List?");
}

TEST_F(ShowSoundsTest, PlayListOrderUsesTheViewListRulesInItsOwnWords)
{
    QStringList list = {"a", "b", "c", "d"};
    ListResult r = MoveLines(list, {1, 3}, MoveKind::Up, PlayListWords());
    EXPECT_EQ(list, QStringList({"b", "a", "d", "c"}));
    EXPECT_EQ(r.selection, QVector<int>({0, 2}));
    EXPECT_EQ(MoveLines(list, {0}, MoveKind::Up, PlayListWords()).message,
              "The selected file(s) are already at top of the Play List, unable to move file(s) "
              "up...");
    EXPECT_EQ(MoveLines(list, {}, MoveKind::Up, PlayListWords()).message,
              "Select the sound(s) to move up and then try again...");
    EXPECT_EQ(MoveLines(list, {}, MoveKind::Down, PlayListWords()).message,
              "Select the sounds(s) to move down and then try again...");
    EXPECT_EQ(MoveLines(list, {2, 3}, MoveKind::Bottom, PlayListWords()).message,
              "The selected file is already at the bottom of the Play List, unable to move "
              "file...");
    QStringList one = {"a"};
    EXPECT_EQ(MoveLines(one, {0}, MoveKind::Top, PlayListWords()).message,
              "There is only one item in the Play List, file is already at the top...");
    QStringList empty;
    EXPECT_EQ(MoveLines(empty, {}, MoveKind::Down, PlayListWords()).message,
              "There is nothing in the Play List, unable to move file(s) down...");

    EXPECT_EQ(RandomizeLines(empty, PlayListWords()).message,
              "There are no files in the Play List, unable to randomize sound order...");
    EXPECT_EQ(RandomizeLines(one, PlayListWords()).message,
              "There is only one file in the Play List, unable to randomize sound order...");
    EXPECT_EQ(ReverseLines(empty, PlayListWords()).message,
              "There are no files in the Play List, unable to reverse the order of sounds...");
    EXPECT_EQ(ReverseLines(one, PlayListWords()).message,
              "There is only one file in the Play List, no need to reverse the order of sounds...");
    // Three lines: every reinsertion goes to the top, as the View List's one pass does.
    QStringList abc = {"a", "b", "c"};
    ScriptRandom({0.9, 0.9, 0.9});
    EXPECT_TRUE(RandomizeLines(abc, PlayListWords()).changed);
    EXPECT_EQ(abc, QStringList({"c", "b", "a"}));
    EXPECT_TRUE(ReverseLines(abc, PlayListWords()).changed);
    EXPECT_EQ(abc, QStringList({"a", "b", "c"}));
}

TEST_F(ShowSoundsTest, SettingSoundsSaysWhenTheyAreAlreadySetOrAsks)
{
    ShowSounds s = slides({"", "/snd/bell.wav", ""});
    const QStringList offered = {"/snd/bell.wav", CDTrackSound(5), CDTrackSound(0)};

    EXPECT_EQ(SetSlideSound(s, 0, {}, -1).message,
              "There are no sound files in the current slide show, nothing to set...");
    EXPECT_EQ(SetSlideSound(s, 0, offered, -1).message,
              "Select a file from the list of sounds and then try again...");
    EXPECT_EQ(SetSlideSound(s, 1, offered, 0).message,
              "The current slide is already set to the selected sound...");
    ListResult r = SetSlideSound(s, 0, offered, 1);
    EXPECT_TRUE(r.changed);
    EXPECT_EQ(s.slideSounds[0], "5");

    EXPECT_EQ(CheckSetAllSounds(s, {}, 0).message,
              "No sounds have been specified for this slide show, unable to set all to the "
              "selected sound...");
    AllCommand all = CheckSetAllSounds(s, offered, 0);
    EXPECT_TRUE(all.message.isEmpty());
    EXPECT_EQ(all.question,
              "Set all of the slides in your slide show to the following sound?\r\n\r\n"
              "/snd/bell.wav");
    EXPECT_EQ(CheckSetAllSounds(s, offered, 1).question,
              "Set all of the slides in your slide show to Track 5 on a CD Audio disk?");
    EXPECT_EQ(CheckSetAllSounds(s, offered, 2).question,
              "Set all of the slides in your slide show to All Tracks on a CD Audio disk?");
    SetSlideSounds(s, offered[0]);
    EXPECT_EQ(s.slideSounds, QStringList({"/snd/bell.wav", "/snd/bell.wav", "/snd/bell.wav"}));
    all = CheckSetAllSounds(s, offered, 0);
    EXPECT_EQ(all.message, "All slides are already set to /snd/bell.wav...");
    EXPECT_TRUE(all.question.isEmpty());

    // A range, then clearing everything.
    SetSlideSounds(s, CDTrackSound(2), 1, 2);
    EXPECT_EQ(s.slideSounds, QStringList({"/snd/bell.wav", "2", "2"}));
    all = CheckClearAllSounds(s);
    EXPECT_EQ(all.question, "You are about to clear ALL of the sound settings for this slide "
                            "show.\r\n\r\nAre you sure?");
    SetSlideSounds(s, QString());
    EXPECT_EQ(CheckClearAllSounds(s).message, "All slides are already set to No Sound...");
    EXPECT_EQ(CheckClearAllSounds(slides({})).message, "All slides are already set to No Sound...");

    EXPECT_EQ(SoundText("0"), "All Tracks");
    EXPECT_EQ(SoundText("12"), "Track 12");
    EXPECT_EQ(SoundText("/snd/2.wav"), "/snd/2.wav");
    EXPECT_EQ(SoundOfText("Track 12"), "12");
    EXPECT_EQ(SoundOfText("All Tracks"), "0");
}

TEST_F(ShowSoundsTest, TypedNamesAndDropsAreChecked)
{
    const QString bell = writeFile(QStringLiteral("snd/Bell.WAV"), "RIFF");
    writeFile(QStringLiteral("snd/notes.txt"), "text");
    const QString folder = root() + QStringLiteral("snd");

    EXPECT_EQ(CheckTypedSound(QStringLiteral("  "), folder).refusal,
              "You need to specify the sound file to play first...");
    const QString noExtension =
        "An extension, such as .WAV, was not found in the specified filename.\r\n\r\n"
        "Specify a valid sound file type and then try again...";
    // Refused for its name before any look-up, even though a file of that name exists.
    writeFile(QStringLiteral("snd/Bell"), "RIFF");
    EXPECT_EQ(CheckTypedSound(QStringLiteral("Bell"), folder).refusal, noExtension);
    EXPECT_EQ(CheckTypedSound(QStringLiteral("notes.txt"), folder).refusal, noExtension);
    EXPECT_EQ(CheckTypedSound(QStringLiteral("Gone.mid"), folder).refusal,
              "The specified sound file could not be found.\r\n\r\n"
              "Correct the filename and then try again...");
    TypedSound typed = CheckTypedSound(QStringLiteral("Bell.WAV"), folder);
    EXPECT_TRUE(typed.refusal.isEmpty());
    EXPECT_EQ(typed.path, bell);
    EXPECT_EQ(CheckTypedSound(bell, QString()).path, bell);

    const DroppedSounds dropped =
        SortDroppedSounds({bell, root() + QStringLiteral("snd/notes.txt")});
    EXPECT_EQ(dropped.sounds, QStringList({bell}));
    EXPECT_TRUE(dropped.refused);
    EXPECT_FALSE(SortDroppedSounds({bell}).refused);
    for (const char* name :
         {"a.MID", "a.rmi", "a.mp3", "a.Au", "a.snd", "a.aif", "a.AIFF", "a.aifc", "a.wav"})
        EXPECT_TRUE(IsSoundFile(QString::fromLatin1(name))) << name;
    EXPECT_FALSE(IsSoundFile(QStringLiteral("a.ogg")));
}

TEST_F(ShowSoundsTest, RenamedAndDeletedFilesUpdateTheShow)
{
    const QString folder = root() + QStringLiteral("show/");
    writeFile(QStringLiteral("show/Tune.mid"), "MThd");
    ResetShow();
    SlideShow& show = CurrentShow();
    show.path = folder + QStringLiteral("My.KAV");
    for (const char* sound : {"Tune.mid", "", "/elsewhere/Bell.wav", "3"}) {
        Slide slide = NewSlide(QStringLiteral("a.jpg"));
        slide.SlideSound = QString::fromLatin1(sound);
        show.slides << slide;
    }
    show.PlayList = {folder + QStringLiteral("Tune.mid"), QStringLiteral("/elsewhere/Bell.wav")};
    CurrentSettings().SoundFile = QStringLiteral("/elsewhere/Bell.wav");

    ShowSounds s = SoundsOfShow(show);
    // A relative slide sound and a full play list entry name the same file.
    EXPECT_EQ(RenameSoundReferences(s, folder + QStringLiteral("Tune.mid"),
                                    folder + QStringLiteral("Song.mid")),
              2);
    EXPECT_EQ(s.slideSounds[0], folder + QStringLiteral("Song.mid"));
    EXPECT_EQ(s.playList[0], folder + QStringLiteral("Song.mid"));
    EXPECT_EQ(s.slideSounds[3], "3"); // a CD track is never a file
    EXPECT_EQ(RenameSoundReferences(s, QStringLiteral("/nowhere.wav"), QStringLiteral("/x.wav")),
              0);

    // Deleting empties the slide sound and the show's sound, and drops the play list entry.
    EXPECT_EQ(ForgetSoundReferences(s, QStringLiteral("/elsewhere/Bell.wav")), 3);
    EXPECT_EQ(s.slideSounds[2], "");
    EXPECT_EQ(s.playList, QStringList({folder + QStringLiteral("Song.mid")}));
    EXPECT_EQ(s.soundFile, "");

    show.changed = false;
    EXPECT_TRUE(ApplyShowSounds(s, show));
    EXPECT_TRUE(show.changed);
    EXPECT_EQ(show.slides[0].SlideSound, folder + QStringLiteral("Song.mid"));
    EXPECT_EQ(CurrentSettings().SoundFile, "");
    show.changed = false;
    EXPECT_FALSE(ApplyShowSounds(SoundsOfShow(show), show));
    EXPECT_FALSE(show.changed);
}

TEST_F(ShowSoundsTest, PlayListQuestionsMissingFilesAndSoundMode)
{
    const QString here = writeFile(QStringLiteral("snd/here.wav"), "RIFF1234");
    ShowSounds s;
    s.playList = {here, root() + QStringLiteral("snd/gone1.wav"),
                  root() + QStringLiteral("snd/gone2.mid")};
    EXPECT_EQ(MissingPlayListSounds(s), QVector<int>({1, 2}));
    EXPECT_EQ(MissingPlayListText(2), "2 sound files are missing and have been selected in the "
                                      "Play List.\r\n\r\nRemove missing files from the Play List?");
    EXPECT_EQ(MissingPlayListText(1), "One sound file is missing and has been selected in the "
                                      "Play List.\r\n\r\nRemove missing file from the Play List?");
    EXPECT_EQ(MissingPlayListText(0), "All of the sounds in the current Play List could be "
                                      "found, there are no missing files to remove.");
    EXPECT_EQ(PlayListInformation(s), "Number of sound files = 3\r\nNumber of missing files = "
                                      "2\r\nTotal file size = 8 bytes\r\n\r\nThe sounds play in "
                                      "the order listed.");

    // The slides' own sounds chosen while the play list holds entries: OK asks first.
    s.usePlayList = false;
    EXPECT_EQ(PlayListClearQuestion(s),
              "The specified \"Play List\" will be cleared if you choose to use the \"Slide "
              "Interval\" setting now.\r\n\r\nAre you sure you want to continue?");
    s.usePlayList = true;
    EXPECT_TRUE(PlayListClearQuestion(s).isEmpty());
    EXPECT_EQ(SoundModeAfterEdit(s, 1), 3);
    s.usePlayList = false;
    s.playList.clear();
    EXPECT_TRUE(PlayListClearQuestion(s).isEmpty());
    EXPECT_EQ(SoundModeAfterEdit(s, 1), 1);
    s.slideSounds = {"", here};
    EXPECT_EQ(SoundModeAfterEdit(s, 0), 3);
}
