#include "slideshow/SlideShowFile.h"
#include "platform/AppPaths.h"
#include "platform/Display.h"
#include "platform/StartupState.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "support/FakeProgress.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFileInfo>

#include <limits>

using namespace kavori;

// Show files are written here one value per line, as they stand in the file.
// clang-format off

namespace {

using kavori::test::FakeProgress;

QByteArray lines(const QStringList& l)
{
    return l.join(QStringLiteral("\r\n")).toUtf8() + "\r\n";
}

} // namespace

class SlideShowFileTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetShow();
        ResetStartup();
    }
    // A current-layout file: header, two slides and a play list.
    QByteArray version3(const QString& pics)
    {
        return lines({"\"Kavori Slide Show\"", "\"Version 3.0\"", "3", "\"\"", "0", "-1", "7", "0", "-1", "-1",
                      "0", "-1", "0", "\"About this show\"", "-1", "0", "-1", "-1", "\"4\"", "\"1\"", "\"10\"",
                      "0", "\"a note\"",
                      "\"" + pics + "one.jpg\"", "\"First, with a comma\"", "12", "\"" + pics + "bell.wav\"", "2",
                      "10", "20", "1", "0", "9", "3", "16711680", "\"" + pics + "wood.bmp\"",
                      "\"1,5,5,Arial,12,0,255,0,0,1,0,0,3,0\"",
                      "\"" + pics + "two.gif\"", "\"\"", "0", "\"3\"", "0", "0", "0", "0", "1", "5", "0", "0", "\"\"", "\"\"",
                      "\"<PlayList>\"", "\"1\"", "\"Mix\"", "\"\"", "\"" + pics + "bell.wav\"", "\"" + pics + "song.mp3\""});
    }
    QString pics() { return root() + QStringLiteral("pics/"); }
    void makeMedia()
    {
        for (const char* f : {"one.jpg", "two.gif", "bell.wav", "song.mp3", "wood.bmp"})
            writeFile(QStringLiteral("pics/") + QString::fromLatin1(f), "x");
    }
};

TEST_F(SlideShowFileTest, CurrentLayoutRoundTripsByteForByte)
{
    makeMedia();
    const QByteArray original = version3(pics());
    const QString path = writeFile(QStringLiteral("shows/trip.kav"), original);
    ASSERT_TRUE(ReadSlideShow(path));
    EXPECT_TRUE(prompts().calls.isEmpty());
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    ASSERT_EQ(show.slides.size(), 2);
    EXPECT_EQ(s.SoundMode, 3);
    EXPECT_EQ(s.SlideInterval, 7);
    EXPECT_TRUE(s.ShowFilenames);
    EXPECT_EQ(s.TransitionSpeed, 4);
    EXPECT_TRUE(s.SlideIgnoreError);
    EXPECT_TRUE(s.LMousePrev);
    EXPECT_FALSE(s.RMouseNext);
    EXPECT_FALSE(s.DontRestartSound);
    EXPECT_TRUE(show.UseSlideIntervals);
    EXPECT_EQ(show.ShowInfo, "About this show");
    EXPECT_EQ(show.ShowNote, "a note");
    const Slide& first = show.slides[0];
    EXPECT_EQ(first.SlideDescription, "First, with a comma");
    EXPECT_EQ(first.SlideTransition, 12);
    EXPECT_EQ(first.SlideBackColor, 16711680);
    EXPECT_EQ(first.SlideDescProps, "1,5,5,Arial,12,0,255,0,0,1,0,0,3,0");
    EXPECT_EQ(show.slides[1].SlideSound, "3"); // a CD track stays a number
    EXPECT_TRUE(s.PlayListRandom);
    EXPECT_EQ(show.PlayList, QStringList({pics() + "bell.wav", pics() + "song.mp3"}));
    EXPECT_EQ(show.PlayListText1, "Mix");
    EXPECT_EQ(s.RecentShow[0], QFileInfo(path).absoluteFilePath());
    EXPECT_FALSE(show.changed);
    EXPECT_TRUE(IsCurrentSlideShow(path));

    // A show with a play list uses it; it is written only for per-slide sound.
    EXPECT_TRUE(s.UsePlayList);
    const QString copy = root() + QStringLiteral("shows/copy.kav");
    ASSERT_TRUE(WriteSlideShow(copy));
    EXPECT_EQ(QString::fromUtf8(readFile(copy)).toStdString(), QString::fromUtf8(original).toStdString());
    CurrentSettings().SoundMode = 1;
    ASSERT_TRUE(WriteSlideShow(copy));
    EXPECT_FALSE(readFile(copy).contains("<PlayList>"));
}

TEST_F(SlideShowFileTest, OldLayoutsLoadWithDefaultsAndSaveAsCurrent)
{
    CurrentSettings().StretchImages = true;
    CurrentSettings().EnlargeImages = false;
    const QString old = writeFile(QStringLiteral("old.kav"),
                                  lines({"Kavori Slide Show", "Version 1.X", "1", "", "0", "0", "6", "-1", "0",
                                         "/p/a.bmp", "/p/b.bmp", "/p/c.bmp"}));
    ASSERT_TRUE(ReadSlideShow(old));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "This Slide Show file was created with an earlier version of Kavori.\r\nNOTE:\r\nWhen the file is saved, it will be stored in the new format...");
    const SlideShow& show = CurrentShow();
    ASSERT_EQ(show.slides.size(), 3);
    EXPECT_TRUE(show.changed);
    EXPECT_EQ(show.slides[2].SlideFile, "/p/c.bmp");
    EXPECT_EQ(show.slides[0].SlideDelay, 5); // the interval in effect before the read
    EXPECT_EQ(CurrentSettings().SlideInterval, 6);
    EXPECT_EQ(show.slides[0].SlideShrink, 1);
    EXPECT_EQ(show.slides[0].SlideEnlarge, 0);
    EXPECT_TRUE(CurrentSettings().RandomSlides);
    EXPECT_TRUE(CurrentSettings().RMouseNext);
    EXPECT_TRUE(CurrentSettings().LoopSlideShow);
    ASSERT_TRUE(WriteSlideShow(old));
    const QList<QByteArray> written = readFile(old).split('\n');
    EXPECT_EQ(written.size(), 23 + 3 * 14 + 1);
    EXPECT_EQ(written[1], "\"Version 3.0\"\r");

    // 1.5 adds three flags and a description per slide, cut to 200 characters.
    const QString longText = QString(250, u'd');
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("v15.kav"),
                                        lines({"Kavori Slide Show", "Version 1.5", "0", "", "0", "0", "5", "0", "0",
                                               "-1", "0", "-1", "/p/a.bmp", longText, "/p/b.bmp", "\"short\""}))));
    ASSERT_EQ(CurrentShow().slides.size(), 2);
    EXPECT_EQ(CurrentShow().slides[0].SlideDescription.size(), 200);
    EXPECT_EQ(CurrentShow().slides[1].SlideDescription, "short");
    EXPECT_TRUE(CurrentSettings().ShowDescription);
    EXPECT_FALSE(CurrentSettings().LoopSlideShow);
}

TEST_F(SlideShowFileTest, RefusalsAndNotesSayTheShowWord)
{
    EXPECT_FALSE(ReadSlideShow(writeFile(QStringLiteral("a.kav"), "Something else\r\n")));
    EXPECT_EQ(prompts().calls.last().text,
              "The selected file is not a valid Kavori Slide Show file...\r\nFilenames with .KAV in the last 4 positions are normally associated with Kavori files.");
    EXPECT_EQ(prompts().calls.last().style, vbExclamation);

    CurrentShow().slides.append(NewSlide(QStringLiteral("/p/x.jpg")));
    CurrentStartup().ScreenSaverMode = true;
    EXPECT_FALSE(ReadSlideShow(writeFile(QStringLiteral("b.kav"), "Kavori Slide Show\r\nVersion 4.2\r\n")));
    EXPECT_EQ(prompts().calls.last().text,
              "The selected Screen Saver file was created with a different release (Version 4.2) of Kavori.\r\nYou are currently running:\r\nVersion: 3.0.0\r\nUnable to open this Screen Saver...");
    EXPECT_TRUE(CurrentShow().slides.isEmpty()); // the previous show is gone
    CurrentStartup().ScreenSaverMode = false;

    // The screen saver reader words its own texts whatever the mode.
    EXPECT_FALSE(ReadScreenSaverShow(writeFile(QStringLiteral("c.kav"), "x")));
    EXPECT_EQ(prompts().calls.last().text.section(QStringLiteral("\r\n"), 0, 0),
              "The selected file is not a valid Kavori Screen Saver file...");
    QString note;
    CurrentStartup().WaveDevices = true;
    ASSERT_TRUE(ReadScreenSaverShow(writeFile(QStringLiteral("d.kav"), lines({"Kavori Slide Show", "Version 1.X", "2", "", "4", "0", "5", "0", "0", "/p/a.jpg"})), &note));
    EXPECT_EQ(prompts().calls.last().text,
              "This Screen Saver file was created with an earlier version of Kavori.\r\nNOTE:\r\nIf the file is saved, it will be stored in the new format...");
    EXPECT_EQ(note, "Play CD Track 4...");

    // Transitions at 256 colours are noted.
    SetDisplayColorDepthOverride(8);
    makeMedia();
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("e.kav"), version3(pics()))));
    EXPECT_EQ(prompts().calls.last().text,
              "This slide show contains slide transitions, they are disabled when running in 256 color mode.\r\nSet your display properties to more than 256 colors or disable transitions to remove this message...");
}

TEST_F(SlideShowFileTest, MouseCodeSpeedAndErrorFlagLines)
{
    struct Case {
        const char* speed;
        const char* error;
        const char* mouse;
        int expectSpeed;
        bool ignore, left, right;
    };
    const Case cases[] = {
        {"\"2\"", "\"0\"", "\"\"", 2, false, false, true},
        {"\"9\"", "\"\"", "\"00\"", 3, false, false, false},
        {"\"x\"", "\"yes\"", "\"1\"", 3, true, true, true},
        {"\"-1\"", "\"1\"", "\"01\"", 3, true, false, true},
        {"\"6\"", "\"0\"", "\"10\"", 6, false, true, false},
    };
    for (const Case& c : cases) {
        ResetSettings();
        ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("m.kav"),
                                            lines({"Kavori Slide Show", "Version 2.0", "0", "\"\"", "0", "0", "5", "0", "0", "0", "-1",
                                                   "-1", "0", "\"\"", "0", "0", "0", "0", c.speed, c.error, c.mouse, "-1", "\"\""}))))
            << c.mouse;
        EXPECT_EQ(CurrentSettings().TransitionSpeed, c.expectSpeed) << c.speed;
        EXPECT_EQ(CurrentSettings().SlideIgnoreError, c.ignore) << c.error;
        EXPECT_EQ(CurrentSettings().LMousePrev, c.left) << c.mouse;
        EXPECT_EQ(CurrentSettings().RMouseNext, c.right) << c.mouse;
    }
}

TEST_F(SlideShowFileTest, LimitsAndDamagedFiles)
{
    // 30,001 slots are read; the message says 30,000.
    QByteArray big = lines({"Kavori Slide Show", "Version 1.X", "0", "", "0", "0", "5", "0", "0"});
    for (int i = 0; i < 30005; ++i)
        big += "/p/" + QByteArray::number(i) + ".jpg\r\n";
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("big.kav"), big)));
    EXPECT_EQ(CurrentShow().slides.size(), 30001);
    EXPECT_EQ(prompts().calls.last().text,
              "The maximum of 30,000 slides has been loaded. Any remaining images in the Slide Show file will be ignored...");

    // The play list keeps 1,001 entries and says 1,000.
    QByteArray list = version3(pics()).left(version3(pics()).indexOf("\"<PlayList>\""));
    list += lines({"\"<PlayList>\"", "\"0\"", "\"\"", "\"\""});
    makeMedia();
    for (int i = 0; i < 1003; ++i)
        list += "\"" + pics().toUtf8() + "bell.wav\"\r\n";
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("list.kav"), list)));
    EXPECT_EQ(CurrentShow().PlayList.size(), 1001);
    EXPECT_EQ(prompts().calls.last().text,
              "The maximum number of 1,000 sound files has been reached, unable to add the remaining files to the Play List...");

    // A record cut short keeps the slides before it and says so.
    QByteArray cut = version3(pics());
    cut = cut.left(cut.indexOf(QByteArray("\"" + pics().toUtf8() + "two.gif\"")) + 40);
    prompts().clear();
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("cut.kav"), cut)));
    EXPECT_EQ(CurrentShow().slides.size(), 1);
    EXPECT_EQ(prompts().texts().last(),
              "An error occurred while reading Slide Show data.\r\nThis may not be a valid Slide Show file...");

    // A version line only, garbage, an endless line, a folder: no crash.
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("v.kav"), "Kavori Slide Show\r\nVersion 3.0\r\n")));
    EXPECT_TRUE(CurrentShow().slides.isEmpty());
    QByteArray garbage = "Kavori Slide Show\r\nVersion 3.0\r\n";
    for (int i = 0; i < 5000; ++i)
        garbage.append(char((i * 37) & 0xff));
    ReadSlideShow(writeFile(QStringLiteral("g.kav"), garbage));
    ReadSlideShow(writeFile(QStringLiteral("l.kav"), "Kavori Slide Show\r\nVersion 1.X\r\n" + QByteArray(50 * 1024 * 1024, 'a')));
    EXPECT_FALSE(ReadSlideShow(root()));
}

TEST_F(SlideShowFileTest, PathsAreRepairedAgainstTheShowFolder)
{
    writeFile(QStringLiteral("shows/bell.wav"), "x");
    writeFile(QStringLiteral("shows/tex/wood.bmp"), "x");
    QByteArray file = lines({"Kavori Slide Show", "Version 3.0", "1", "\"/old/place/bell.wav\"", "0", "0", "5", "0", "0", "0",
                             "-1", "-1", "0", "\"\"", "0", "0", "0", "0", "\"3\"", "\"0\"", "\"01\"", "-1", "\"\""});
    file += lines({"\"a.jpg\"", "\"\"", "0", "\"bell.wav\"", "0", "0", "0", "0", "1", "5", "0", "0", "\"tex/wood.bmp\"", "\"\"",
                   "\"b.jpg\"", "\"\"", "0", "\"gone.wav\"", "0", "0", "0", "0", "1", "5", "0", "0", "\"/nowhere/x.bmp\"", "\"\""});
    const QString path = writeFile(QStringLiteral("shows/repair.kav"), file);
    ASSERT_TRUE(ReadSlideShow(path));
    const QString folder = root() + QStringLiteral("shows/");
    EXPECT_EQ(CurrentSettings().SoundFile, folder + "bell.wav");      // moved: found beside the show
    EXPECT_EQ(CurrentShow().slides[0].SlideSound, folder + "bell.wav"); // relative
    EXPECT_EQ(CurrentShow().slides[0].SlideTexture, folder + "tex/wood.bmp");
    EXPECT_EQ(CurrentShow().slides[1].SlideSound, "");                 // missing
    EXPECT_EQ(CurrentShow().slides[1].SlideTexture, "");
    EXPECT_EQ(CurrentShow().slides[0].SlideFile, "a.jpg");              // pictures keep their names
}

TEST_F(SlideShowFileTest, SavingCopiesIntoTheShowFolderAskingBeforeReplacing)
{
    const QString media = root() + QStringLiteral("media/");
    for (const char* f : {"one.jpg", "two.jpg", "bell.wav", "wood.bmp"})
        writeFile(media + QString::fromLatin1(f), QByteArray("new ") + f);
    const QString showDir = root() + QStringLiteral("show/");
    writeFile(showDir + QStringLiteral("bell.wav"), "old bell");
    writeFile(showDir + QStringLiteral("inside.jpg"), "x");
    Settings& s = CurrentSettings();
    s.SaveSlides = true;
    s.SoundMode = 3;
    SlideShow& show = CurrentShow();
    for (const QString& f : QStringList{showDir + "inside.jpg", media + "one.jpg", media + "two.jpg"}) {
        Slide slide = NewSlide(f);
        slide.SlideSound = media + QStringLiteral("bell.wav");
        slide.SlideTexture = media + QStringLiteral("wood.bmp");
        show.slides.append(slide);
    }
    prompts().answers = {vbNo};
    FakeProgress progress;
    const QString path = showDir + QStringLiteral("trip.kav");
    ASSERT_TRUE(SaveSlideShow(path, &progress));
    // One question for the bell that was there already (No keeps it), asked once.
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_EQ(prompts().calls[0].text,
              "The sound file \"bell.wav\" already exists in the slide show folder.\r\nDo you want to replace it with the one specified in the current slide show?");
    EXPECT_EQ(prompts().calls[1].text, "Kavori has finished copying files...");
    EXPECT_EQ(readFile(showDir + QStringLiteral("bell.wav")), "old bell");
    EXPECT_EQ(readFile(showDir + QStringLiteral("one.jpg")), "new one.jpg");
    EXPECT_EQ(readFile(showDir + QStringLiteral("wood.bmp")), "new wood.bmp");
    EXPECT_EQ(progress.maximum, 3 + 6 + 1);
    EXPECT_EQ(progress.captions.first(), "Kavori is saving the slide show file, please wait...");
    EXPECT_TRUE(progress.captions.contains("Kavori is copying the file:\r\none.jpg"));
    EXPECT_EQ(show.slides[1].SlideSound, showDir + "bell.wav");
    const QByteArray written = readFile(path);
    EXPECT_TRUE(written.contains("\r\n\"inside.jpg\"\r\n"));
    EXPECT_TRUE(written.contains("\r\n\"one.jpg\"\r\n"));
    EXPECT_TRUE(written.contains("\r\n\"bell.wav\"\r\n"));
    EXPECT_FALSE(show.changed);

    // Saved again: everything is in the folder now, nothing is asked or copied.
    prompts().clear();
    ASSERT_TRUE(SaveSlideShow(path, &progress));
    EXPECT_TRUE(prompts().calls.isEmpty());
    ASSERT_TRUE(ReadSlideShow(path));
    EXPECT_EQ(CurrentShow().slides.size(), 3);

    // Yes replaces; a cancel half-way stops with its message and keeps what was copied.
    writeFile(media + QStringLiteral("bell.wav"), "newer bell");
    CurrentShow().slides[0].SlideSound = media + QStringLiteral("bell.wav");
    prompts().clear();
    prompts().answers = {vbYes};
    FakeProgress cancelling;
    cancelling.cancelAfter = 1;
    EXPECT_FALSE(SaveSlideShow(path, &cancelling));
    EXPECT_EQ(prompts().texts().last(),
              "Save was canceled before it could complete, slide show file may be corrupt as a result...");
    EXPECT_EQ(readFile(showDir + QStringLiteral("bell.wav")), "newer bell");

    // With SaveSlides off, outside names are written in full.
    s.SaveSlides = false;
    CurrentShow().slides[0].SlideFile = media + QStringLiteral("two.jpg");
    ASSERT_TRUE(SaveSlideShow(path, &progress));
    EXPECT_TRUE(readFile(path).contains(("\"" + media + "two.jpg\"").toUtf8()));
}

TEST_F(SlideShowFileTest, ShowsMadeOnWindowsFindTheirFilesBesideTheShow)
{
    // Written on another machine: drive letters, network paths and backslashes throughout.
    for (const char* f : {"bell.wav", "wood.bmp", "song.mp3", "sub/chime.wav"})
        writeFile(QStringLiteral("shows/") + QString::fromLatin1(f), "x");
    QByteArray file = lines({"\"Kavori Slide Show\"", "\"Version 3.0\"", "3", "\"C:\\Shows\\bell.wav\"", "0", "0", "5", "0",
                             "0", "0", "-1", "-1", "0", "\"\"", "0", "0", "0", "0", "\"3\"", "\"0\"", "\"01\"", "-1", "\"\""});
    file += lines({"\"C:\\Shows\\a.jpg\"", "\"\"", "0", "\"c:\\My Sounds\\bell.wav\"", "0", "0", "0", "0", "1", "5", "0", "0",
                   "\"D:\\Textures\\wood.bmp\"", "\"\"",
                   "\"b.jpg\"", "\"\"", "0", "\"sub\\chime.wav\"", "0", "0", "0", "0", "1", "5", "0", "0",
                   "\"C:\\Textures\\gone.bmp\"", "\"\"",
                   "\"<PlayList>\"", "\"0\"", "\"\"", "\"\"", "\"\\\\SERVER\\Music\\song.mp3\"", "\"E:\\lost.mp3\""});
    const QString path = writeFile(QStringLiteral("shows/windows.kav"), file);
    ASSERT_TRUE(ReadSlideShow(path));
    EXPECT_TRUE(prompts().calls.isEmpty()) << prompts().texts().join(u'|').toStdString();
    const QString folder = root() + QStringLiteral("shows/");
    const SlideShow& show = CurrentShow();
    ASSERT_EQ(show.slides.size(), 2);
    EXPECT_EQ(CurrentSettings().SoundFile, folder + "bell.wav");
    EXPECT_EQ(show.slides[0].SlideSound, folder + "bell.wav");
    EXPECT_EQ(show.slides[0].SlideTexture, folder + "wood.bmp");
    EXPECT_EQ(show.slides[1].SlideSound, folder + "sub/chime.wav");
    EXPECT_EQ(show.slides[1].SlideTexture, "");
    EXPECT_EQ(show.PlayList, QStringList({folder + "song.mp3"}));
    // The pictures are found the same way by whoever plays them.
    writeFile(QStringLiteral("shows/a.jpg"), "x");
    EXPECT_EQ(FindShowFile(show.slides[0].SlideFile, folder), folder + "a.jpg");

    EXPECT_TRUE(IsFullPath(QStringLiteral("C:\\Shows\\a.jpg")));
    EXPECT_TRUE(IsFullPath(QStringLiteral("\\\\SERVER\\Music\\song.mp3")));
    EXPECT_FALSE(IsFullPath(QStringLiteral("sub\\chime.wav")));
    EXPECT_EQ(FileNameOf(QStringLiteral("C:\\Shows\\a.jpg")), "a.jpg");
    EXPECT_EQ(FolderOf(QStringLiteral("C:\\Shows\\a.jpg")), "C:\\Shows\\");
    // On this system a backslash may be part of a name.
    EXPECT_EQ(FileNameOf(QStringLiteral("/pics/a\\b.jpg")), "a\\b.jpg");
}

TEST_F(SlideShowFileTest, PlayListSwitchFollowsTheShowRead)
{
    makeMedia();
    CurrentSettings().UsePlayList = false;
    const QString withList = writeFile(QStringLiteral("shows/list.kav"), version3(pics()));
    ASSERT_TRUE(ReadSlideShow(withList));
    EXPECT_TRUE(CurrentSettings().UsePlayList); // so saving it again keeps the list
    ASSERT_TRUE(WriteSlideShow(root() + QStringLiteral("shows/again.kav")));
    EXPECT_TRUE(readFile(root() + QStringLiteral("shows/again.kav")).contains("\"<PlayList>\""));

    // A later show without a play list does not inherit the switch.
    QByteArray plain = version3(pics());
    plain.truncate(plain.indexOf("\"<PlayList>\""));
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("shows/plain.kav"), plain)));
    EXPECT_FALSE(CurrentSettings().UsePlayList);
    EXPECT_TRUE(CurrentShow().PlayList.isEmpty());
    ASSERT_TRUE(ReadSlideShow(withList));
    EXPECT_TRUE(CurrentSettings().UsePlayList);
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("shows/old.kav"),
                                        lines({"Kavori Slide Show", "Version 1.X", "3", "", "0", "0", "6", "0", "0", "/p/a.bmp"}))));
    EXPECT_FALSE(CurrentSettings().UsePlayList);

    // A file that loads nothing leaves the switch alone.
    CurrentSettings().UsePlayList = true;
    EXPECT_FALSE(ReadSlideShow(writeFile(QStringLiteral("shows/later.kav"), lines({"Kavori Slide Show", "Version 9.0"}))));
    EXPECT_TRUE(CurrentSettings().UsePlayList);
}

TEST_F(SlideShowFileTest, OldLayoutSlidesTakeTheIntervalInEffectBeforeTheRead)
{
    CurrentSettings().SlideInterval = 9;
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("old.kav"),
                                        lines({"Kavori Slide Show", "Version 1.X", "0", "", "0", "0", "4", "0", "0",
                                               "/p/a.bmp", "/p/b.bmp"}))));
    EXPECT_EQ(CurrentSettings().SlideInterval, 4);
    ASSERT_EQ(CurrentShow().slides.size(), 2);
    EXPECT_EQ(CurrentShow().slides[0].SlideDelay, 9);
    EXPECT_EQ(CurrentShow().slides[1].SlideDelay, 9);

    // The next read starts from the interval the last one left.
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("v15.kav"),
                                        lines({"Kavori Slide Show", "Version 1.5", "0", "", "0", "0", "7", "0", "0",
                                               "-1", "0", "-1", "/p/a.bmp", "text"}))));
    EXPECT_EQ(CurrentSettings().SlideInterval, 7);
    EXPECT_EQ(CurrentShow().slides[0].SlideDelay, 4);
}
// clang-format on

TEST_F(SlideShowFileTest, NumbersReadTheSameWhateverTheirSpelling)
{
    // Plain digits take the quick path; signs, blanks, quotes, long and empty fields the general
    // one: both give the same values.
    const QByteArray show = lines({"Kavori Slide Show", "Version 1.X", "  2 ", "", "\"007\"", "-1",
                                   "+12", "", "0000000001", "/p/a.jpg"});
    ASSERT_TRUE(ReadSlideShow(writeFile(QStringLiteral("n.kav"), show)));
    const Settings& s = CurrentSettings();
    EXPECT_EQ(s.SoundMode, 2);
    EXPECT_EQ(s.CDTrack, 7);
    EXPECT_TRUE(s.SoundLoop);
    EXPECT_EQ(s.SlideInterval, 12);
    EXPECT_FALSE(s.RandomSlides);
    EXPECT_TRUE(s.ShowFilenames);
    ASSERT_EQ(CurrentShow().slides.size(), 1);

    // Extremes of each field survive a write and a read.
    Slide slide = NewSlide(QStringLiteral("/p/b.jpg"));
    slide.SlidePosX = -32768;
    slide.SlidePosY = 32767;
    slide.SlideBackColor = 2147483647;
    slide.SlideTransition = -7;
    CurrentShow().slides = {slide};
    const QString path = root() + QStringLiteral("x.kav");
    ASSERT_TRUE(WriteSlideShow(path));
    ASSERT_TRUE(ReadSlideShow(path));
    ASSERT_EQ(CurrentShow().slides.size(), 1);
    EXPECT_EQ(CurrentShow().slides[0].SlidePosX, -32768);
    EXPECT_EQ(CurrentShow().slides[0].SlidePosY, 32767);
    EXPECT_EQ(CurrentShow().slides[0].SlideBackColor, 2147483647);
    EXPECT_EQ(CurrentShow().slides[0].SlideTransition, -7);
}

// A long show is written in blocks from one buffer: every line is the same as a show written
// a value at a time would hold, across block boundaries, for names beside the show and
// elsewhere, text beyond ASCII and numbers at their limits; a cancelled save keeps what was
// written before the cancel.
TEST_F(SlideShowFileTest, LongShowsAreWrittenLineForLine)
{
    makeMedia();
    const QString folder = root() + QStringLiteral("shows/");
    const QString descriptions[] = {QStringLiteral("Caf\u00e9 \u00fc \u20ac"),
                                    QStringLiteral("smile \U0001F600"), QStringLiteral("plain"),
                                    QString(QChar(0xD800)) + QStringLiteral("lone"), QString()};
    SlideShow& show = CurrentShow();
    QByteArray expected = ShowHeaderBytes(show, QString());
    for (int i = 0; i < 6000; ++i) {
        Slide slide = NewSlide(i % 2 ? folder + QStringLiteral("sub/p%1.jpg").arg(i)
                                     : QStringLiteral("/elsewhere/p%1.jpg").arg(i));
        slide.SlideDescription = descriptions[i % 5];
        slide.SlideTransition = qint16(i % 58);
        slide.SlidePosX = qint16(i % 3 ? -i : 32767);
        slide.SlidePosY = qint16(-32768 + i);
        slide.SlideBackColor = i % 4 == 0 ? std::numeric_limits<qint32>::min() + i
                                          : std::numeric_limits<qint32>::max() - i;
        slide.SlideTexture = i % 7 ? QString() : pics() + QStringLiteral("wood.bmp");
        slide.SlideDescProps = QStringLiteral("1,5,5,Arial,12,0,255,0,0,1,0,0,3,0");
        show.slides.append(slide);
        const QString file = i % 2 ? QStringLiteral("sub/p%1.jpg").arg(i) : slide.SlideFile;
        const auto q = [](const QString& t) -> QByteArray { return "\"" + t.toUtf8() + "\"\r\n"; };
        const auto n = [](qint64 v) -> QByteArray { return QByteArray::number(v) + "\r\n"; };
        expected += QByteArray() + q(file) + q(slide.SlideDescription) + n(slide.SlideTransition) + q(QString()) +
                    n(slide.SlideLocation) + n(slide.SlidePosX) + n(slide.SlidePosY) +
                    n(slide.SlideEnlarge) + n(slide.SlideShrink) + n(slide.SlideDelay) +
                    n(slide.SlideBackMode) + n(slide.SlideBackColor) + q(slide.SlideTexture) +
                    q(slide.SlideDescProps);
    }
    ASSERT_GT(expected.size(), 2 * 256 * 1024);
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("long.kav");
    FakeProgress progress;
    ASSERT_TRUE(SaveSlideShow(path, &progress));
    EXPECT_EQ(readFile(path).size(), expected.size());
    EXPECT_TRUE(readFile(path) == expected);
    const QString whole = folder + QStringLiteral("whole.kav");
    ASSERT_TRUE(WriteSlideShow(whole));
    ASSERT_TRUE(ReadSlideShow(whole));
    ASSERT_EQ(CurrentShow().slides.size(), 6000);
    EXPECT_EQ(CurrentShow().slides[1].SlideDescription, descriptions[1]);
    EXPECT_EQ(CurrentShow().slides[2].SlideFile, QStringLiteral("/elsewhere/p2.jpg"));
    EXPECT_EQ(CurrentShow().slides[5999].SlideBackColor,
              std::numeric_limits<qint32>::max() - 5999);
    EXPECT_EQ(CurrentShow().slides[5998].SlidePosY, -32768 + 5998);

    progress.cancelAfter = 4500;
    EXPECT_FALSE(SaveSlideShow(path, &progress));
    const QByteArray cut = readFile(path);
    EXPECT_GT(cut.size(), 256 * 1024);
    EXPECT_TRUE(expected.startsWith(cut));
    EXPECT_TRUE(cut.endsWith("\r\n"));
}
