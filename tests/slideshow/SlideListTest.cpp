#include "slideshow/SlideList.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "slideshow/ShowInformation.h"
#include "slideshow/SlideShow.h"
#include "support/KavoriTest.h"

#include <QFile>

using namespace kavori;

namespace {

// A show whose slides carry their number in every value, so a slide that loses one of its
// values on the way shows it.
SlideShow numbered(int count)
{
    SlideShow show;
    for (int i = 0; i < count; ++i) {
        Slide s;
        s.SlideFile = QStringLiteral("/p/%1.jpg").arg(i);
        s.SlideDescription = QStringLiteral("d%1").arg(i);
        s.SlideTransition = qint16(i % 58);
        s.SlideSound = QStringLiteral("s%1.wav").arg(i);
        s.SlideLocation = qint16(i % 11);
        s.SlidePosX = qint16(i);
        s.SlidePosY = qint16(i + 1);
        s.SlideDelay = qint16(i % 60);
        s.SlideBackColor = i;
        s.SlideTexture = QStringLiteral("t%1.bmp").arg(i);
        s.SlideDescProps = QStringLiteral("1,%1").arg(i);
        show.slides.append(s);
    }
    return show;
}

// The slide numbers in list order; -1 for a slide whose values were torn apart.
QVector<int> order(const SlideShow& show)
{
    QVector<int> numbers;
    for (const Slide& s : show.slides) {
        const int i = s.SlidePosX;
        const bool whole = s.SlideFile == QStringLiteral("/p/%1.jpg").arg(i) &&
                           s.SlideDescription == QStringLiteral("d%1").arg(i) &&
                           s.SlideSound == QStringLiteral("s%1.wav").arg(i) &&
                           s.SlidePosY == i + 1 && s.SlideBackColor == i &&
                           s.SlideTexture == QStringLiteral("t%1.bmp").arg(i) &&
                           s.SlideDescProps == QStringLiteral("1,%1").arg(i);
        numbers << (whole ? i : -1);
    }
    return numbers;
}

} // namespace

class SlideListTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
    }
};

TEST_F(SlideListTest, AddingStopsAtTheLimitAndRefusesEmptyChoices)
{
    SlideShow show = numbered(0);
    EXPECT_EQ(AddSlides(show, {}, true).message,
              QStringLiteral("There are no files in the selected directory to add..."));
    EXPECT_EQ(AddSlides(show, {}, false).message,
              QStringLiteral("No files are selected, nothing to add..."));
    CurrentSettings().SlideInterval = 9;
    const ListResult added =
        AddSlides(show, {QStringLiteral("a.jpg"), QStringLiteral("b.jpg")}, false);
    EXPECT_TRUE(added.message.isEmpty());
    EXPECT_EQ(added.selection, QVector<int>({0, 1}));
    EXPECT_EQ(show.slides[1].SlideDelay, 9); // new slots take the defaults
    EXPECT_TRUE(show.changed);

    // 29,999 slides take one more, not two.
    show.slides.resize(kMaxEditorSlides - 1);
    const ListResult refused =
        AddSlides(show, {QStringLiteral("a.jpg"), QStringLiteral("b.jpg")}, false);
    EXPECT_EQ(refused.message,
              QStringLiteral("You can only have 30,000 slides in a Slide Show..."));
    EXPECT_EQ(show.slides.size(), kMaxEditorSlides - 1);
    EXPECT_TRUE(AddSlides(show, {QStringLiteral("a.jpg")}, false).message.isEmpty());
    EXPECT_EQ(show.slides.size(), kMaxEditorSlides);

    EXPECT_EQ(SlideCountText(0), QStringLiteral("Zero slides (images) total..."));
    EXPECT_EQ(SlideCountText(1), QStringLiteral("One slide (image) total..."));
    EXPECT_EQ(SlideCountText(30000), QStringLiteral("30,000 slides (images) total..."));
}

TEST_F(SlideListTest, RemovingKeepsTheRestWhole)
{
    SlideShow show = numbered(6);
    EXPECT_EQ(RemoveSlides(show, {}).message,
              QStringLiteral("No files are selected, nothing to remove..."));
    const ListResult r = RemoveSlides(show, {4, 1, 1});
    EXPECT_EQ(order(show), QVector<int>({0, 2, 3, 5}));
    EXPECT_EQ(r.selection, QVector<int>({1}));
    RemoveSlides(show, {0, 1, 2, 3});
    EXPECT_EQ(RemoveSlides(show, {0}).message,
              QStringLiteral("There are no files in the View List to remove..."));
}

TEST_F(SlideListTest, MovesCarryEveryValueAndRefuseAsTheTableSays)
{
    SlideShow show = numbered(6);
    ListResult r = MoveSlides(show, {2, 4}, MoveKind::Up);
    EXPECT_EQ(order(show), QVector<int>({0, 2, 1, 4, 3, 5}));
    EXPECT_EQ(r.selection, QVector<int>({1, 3}));
    r = MoveSlides(show, r.selection, MoveKind::Down);
    EXPECT_EQ(order(show), QVector<int>({0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(r.selection, QVector<int>({2, 4}));
    r = MoveSlides(show, {1, 4}, MoveKind::Top);
    EXPECT_EQ(order(show), QVector<int>({1, 4, 0, 2, 3, 5}));
    EXPECT_EQ(r.selection, QVector<int>({0, 1}));
    r = MoveSlides(show, {0, 3}, MoveKind::Bottom);
    EXPECT_EQ(order(show), QVector<int>({4, 0, 3, 5, 1, 2}));
    EXPECT_EQ(r.selection, QVector<int>({4, 5}));

    // Already there: nothing moves.
    const QVector<int> before = order(show);
    EXPECT_EQ(MoveSlides(show, {0, 3}, MoveKind::Up).message,
              QStringLiteral("The selected file(s) are already at top of the View List, unable "
                             "to move file(s) up..."));
    EXPECT_EQ(MoveSlides(show, {5}, MoveKind::Down).message,
              QStringLiteral("The selected file(s) are already at bottom of the View List, "
                             "unable to move file(s) down..."));
    EXPECT_EQ(MoveSlides(show, {0, 1}, MoveKind::Top).message,
              QStringLiteral("The selected file is already at the top of the View List, unable "
                             "to move file..."));
    EXPECT_EQ(MoveSlides(show, {5}, MoveKind::Bottom).message,
              QStringLiteral("The selected file is already at the bottom of the View List, "
                             "unable to move file..."));
    EXPECT_EQ(order(show), before);

    // Nothing selected, one line, an empty list.
    EXPECT_EQ(MoveSlides(show, {}, MoveKind::Top).message,
              QStringLiteral("Select the image(s) to move to the top and then try again..."));
    SlideShow one = numbered(1);
    EXPECT_EQ(MoveSlides(one, {0}, MoveKind::Bottom).message,
              QStringLiteral("There is only one item in the View List, file is already at the "
                             "bottom..."));
    SlideShow none;
    EXPECT_EQ(MoveSlides(none, {}, MoveKind::Down).message,
              QStringLiteral("There is nothing in the View List, unable to move file(s) down..."));
}

TEST_F(SlideListTest, RandomizeIsOnePassWithItsBias)
{
    // Three lines: the factor is 0 each time, so every line goes back to the top.
    SlideShow show = numbered(3);
    ScriptRandom({0.9, 0.9, 0.9});
    RandomizeSlides(show);
    EXPECT_EQ(order(show), QVector<int>({2, 1, 0}));

    // Five lines: positions floor(2 x r); scripted, step by step.
    show = numbered(5);
    ScriptRandom({0.99, 0.0, 0.6, 0.0, 0.99});
    RandomizeSlides(show);
    // i=0 takes 0 -> [1,2,3,4], j=1 -> [1,0,2,3,4]; i=1 takes 0 -> [1,2,3,4], j=0 ->
    // [0,1,2,3,4]; i=2 takes 2 -> j=1 -> [0,2,1,3,4]; i=3 takes 3 -> j=0 -> [3,0,2,1,4];
    // i=4 takes 4 -> j=1 -> [3,4,0,2,1].
    EXPECT_EQ(order(show), QVector<int>({3, 4, 0, 2, 1}));

    // Two lines: each step puts the line it takes at the top, so the two change places.
    show = numbered(2);
    ScriptRandom({0.5, 0.5});
    EXPECT_TRUE(RandomizeSlides(show).message.isEmpty());
    EXPECT_EQ(order(show), QVector<int>({1, 0}));
    show = numbered(1);
    EXPECT_EQ(
        RandomizeSlides(show).message,
        QStringLiteral("There is only one item in the View List, unable to randomize files..."));
    show = numbered(0);
    EXPECT_EQ(RandomizeSlides(show).message,
              QStringLiteral("There is nothing in the View List, unable to randomize files..."));

    show = numbered(4);
    ReverseSlides(show);
    EXPECT_EQ(order(show), QVector<int>({3, 2, 1, 0}));
    show = numbered(1);
    EXPECT_EQ(ReverseSlides(show).message,
              QStringLiteral("There is only one item in the View List, no need to reverse the "
                             "order of images..."));
}

TEST_F(SlideListTest, DuplicatesAndMissingFiles)
{
    SlideShow show;
    show.path = root() + QStringLiteral("shows/Trip.KAV");
    const QString a = writeFile(QStringLiteral("shows/a.jpg"), "x");
    show.slides = {NewSlide(QStringLiteral("a.jpg")), NewSlide(a),
                   NewSlide(QStringLiteral("b.jpg")), NewSlide(QStringLiteral("A.jpg")),
                   NewSlide(QStringLiteral("b.jpg"))};
    // A name beside the show and its full path are the same file; names differing in case are
    // not, on a file system that tells them apart.
    EXPECT_EQ(DuplicateSlides(show), QVector<int>({1, 4}));
    EXPECT_EQ(MissingSlides(show), QVector<int>({2, 3, 4}));
    EXPECT_EQ(MissingSlidesText(0, true),
              QStringLiteral("No missing slide show files were found..."));
    EXPECT_EQ(MissingSlidesText(1, true),
              QStringLiteral("One missing slide show file was removed from the View List..."));
    EXPECT_EQ(MissingSlidesText(3, true),
              QStringLiteral("3 missing slide show files were removed from the View List..."));
    EXPECT_EQ(MissingSlidesText(1, false),
              QStringLiteral("One missing slide show file was found in the View List..."));
    EXPECT_EQ(MissingSlidesText(1200, false),
              QStringLiteral("1,200 missing slide show files were found in the View List..."));
}

TEST_F(SlideListTest, DroppedFilesAreSorted)
{
    const DroppedFiles dropped = SortDroppedFiles(
        {QStringLiteral("/p/a.JPG"), QStringLiteral("/p/clip.mpg"), QStringLiteral("/p/b.pcx"),
         QStringLiteral("/p/c.PCX"), QStringLiteral("/p/d.tga"), QStringLiteral("/p/show.kav"),
         QStringLiteral("/p/notes.txt")});
    EXPECT_EQ(dropped.slides, QStringList({"/p/a.JPG", "/p/clip.mpg"}));
    EXPECT_EQ(dropped.show, QStringLiteral("/p/show.kav"));
    EXPECT_EQ(dropped.notes,
              QStringList({".PCX files must be imported into Kavori before they can be used in "
                           "Slide Shows...",
                           ".TGA files must be imported into Kavori before they can be used in "
                           "Slide Shows..."}));
}

TEST_F(SlideListTest, RenameChecksComeBeforeAnyFileIsTouched)
{
    const QString old = writeFile(QStringLiteral("Trip.KAV"), "x");
    writeFile(QStringLiteral("Taken.KAV"), "x");
    const QString bad = QStringLiteral("A filename may not contain any of the following "
                                       "characters:\r\n\r\n\\ / : * ? \" < > |\r\n\r\nEnter a new "
                                       "name and then try again...");
    for (const char* name : {"wh?", "a/b", "a\\b", "c:d", "x*", "\"q\"", "<", ">", "p|q"})
        EXPECT_EQ(CheckShowRename(old, QString::fromLatin1(name)).refusal, bad) << name;
    EXPECT_EQ(CheckShowRename(old, QStringLiteral("Trip")).refusal,
              QStringLiteral("The new filename is the same as the current one, unable to rename "
                             "slide show..."));
    EXPECT_EQ(CheckShowRename(old, QStringLiteral("Taken.KAV")).refusal,
              QStringLiteral("The filename that was specified already exists, unable to rename "
                             "slide show..."));
    const RenameCheck fine = CheckShowRename(old, QStringLiteral("Holiday"));
    EXPECT_TRUE(fine.refusal.isEmpty());
    EXPECT_EQ(fine.newPath, root() + QStringLiteral("Holiday.KAV"));
    EXPECT_TRUE(QFile::exists(old));
}

TEST_F(SlideListTest, ClosingRulesFollowTheSaveSwitches)
{
    EXPECT_EQ(ClosingAction(QStringLiteral("010"), true, 3), CloseAction::Ask);
    EXPECT_EQ(ClosingAction(QStringLiteral("000"), false, 0), CloseAction::Ask);
    EXPECT_EQ(ClosingAction(QStringLiteral("110"), true, 3), CloseAction::SaveNow);
    // Saving at once needs a name and a slide; otherwise the changes are dropped.
    EXPECT_EQ(ClosingAction(QStringLiteral("110"), false, 3), CloseAction::Drop);
    EXPECT_EQ(ClosingAction(QStringLiteral("110"), true, 0), CloseAction::Drop);
    EXPECT_EQ(ClosingAction(QStringLiteral("100"), true, 3), CloseAction::Drop);
    EXPECT_TRUE(ReopensLastShow(QStringLiteral("001")));
    EXPECT_FALSE(ReopensLastShow(QStringLiteral("010")));
}

TEST_F(SlideListTest, ShowInformationLines)
{
    SlideShow show;
    ShowInformation info = DescribeShow(show);
    EXPECT_EQ(info.fileSize, QStringLiteral("(Slide show has not been saved yet.)"));
    EXPECT_EQ(info.sound, QStringLiteral("No sound file specified."));
    EXPECT_EQ(info.textures, QStringLiteral("0 texture file(s) specified."));
    EXPECT_EQ(info.totalTime, QStringLiteral("Time interval not specified."));

    show.path = writeFile(QStringLiteral("Trip.KAV"), QByteArray(1234, 'x'));
    const QString a = writeFile(QStringLiteral("a.jpg"), "x");
    const QString tex = writeFile(QStringLiteral("t.bmp"), "x");
    show.slides = {NewSlide(a), NewSlide(QStringLiteral("gone1.jpg")),
                   NewSlide(QStringLiteral("gone2.jpg"))};
    show.slides[0].SlideTexture = tex;
    show.slides[1].SlideTexture = QStringLiteral("nowhere.bmp");
    show.slides[0].SlideSound = QStringLiteral("a.wav");
    show.slides[2].SlideSound = QStringLiteral("A.WAV");
    CurrentSettings().SoundMode = 3;
    CurrentSettings().SlideInterval = 50;
    info = DescribeShow(show);
    EXPECT_EQ(info.fileSize, QStringLiteral("1,234 bytes"));
    EXPECT_EQ(info.slides, QStringLiteral("3 slides (images) total..."));
    EXPECT_EQ(info.missing, QStringLiteral("(2 slides are missing.)"));
    EXPECT_EQ(info.sound, QStringLiteral("1 sound file(s) specified."));
    EXPECT_EQ(info.textures,
              QStringLiteral("2 texture file(s) specified.  (One texture missing.)"));
    EXPECT_EQ(info.totalTime, QStringLiteral("150.0 seconds  (2.5 minutes)"));
    // Each slide's own interval when the show uses them; CD audio by name.
    show.UseSlideIntervals = true;
    show.slides[0].SlideDelay = 1;
    show.slides[1].SlideDelay = 0;
    show.slides[2].SlideDelay = 2;
    CurrentSettings().SoundMode = 2;
    info = DescribeShow(show);
    EXPECT_EQ(info.totalTime, QStringLiteral("3.0 seconds  (0.1 minutes)"));
    EXPECT_EQ(info.sound, QStringLiteral("CD Audio has been specified."));

    EXPECT_EQ(SourceFolderInformation(QStringLiteral("/p"), 1200, 3, 1234567),
              QStringLiteral("Current source file folder:\r\n/p\r\n\r\nNumber of valid files = "
                             "1,200\r\nNumber of files selected = 3\r\nTotal file size = "
                             "1,234,567 bytes"));
}

TEST_F(SlideListTest, RenamedFilesAreFollowedByTheirSlides)
{
    const QString old = writeFile(QStringLiteral("pics/beach.jpg"), "x");
    writeFile(QStringLiteral("pics/taken.jpg"), "x");
    EXPECT_EQ(CheckFileRename(old, QStringLiteral("taken")).refusal,
              QStringLiteral("The filename that was specified already exists, unable to rename "
                             "file..."));
    EXPECT_EQ(CheckFileRename(old, QStringLiteral("beach.jpg")).refusal,
              QStringLiteral("The new filename is the same as the current one, unable to rename "
                             "file..."));
    EXPECT_FALSE(CheckFileRename(old, QStringLiteral("sea?")).refusal.isEmpty());
    const RenameCheck fine = CheckFileRename(old, QStringLiteral("sea"));
    EXPECT_EQ(fine.newPath, root() + QStringLiteral("pics/sea.jpg"));

    SlideShow show;
    show.path = root() + QStringLiteral("pics/Trip.KAV");
    show.slides = {NewSlide(QStringLiteral("beach.jpg")), NewSlide(old),
                   NewSlide(QStringLiteral("other.jpg"))};
    EXPECT_EQ(RenameSlideFiles(show, old, fine.newPath), 2);
    EXPECT_EQ(show.slides[0].SlideFile, fine.newPath);
    EXPECT_EQ(show.slides[1].SlideFile, fine.newPath);
    EXPECT_EQ(show.slides[2].SlideFile, QStringLiteral("other.jpg"));
    EXPECT_TRUE(show.changed);
}

TEST_F(SlideListTest, FolderNamesForNewFolders)
{
    EXPECT_EQ(FolderNameRefusal(QStringLiteral(" ")),
              QStringLiteral("A folder name was not entered, try again..."));
    EXPECT_EQ(FolderNameRefusal(QStringLiteral("a\\b")),
              QStringLiteral("You may not use the \\ character in a folder name, enter folder "
                             "name again..."));
    EXPECT_EQ(FolderNameRefusal(QStringLiteral("c:d")),
              QStringLiteral("You may not use the : character in a folder name, enter folder "
                             "name again..."));
    EXPECT_TRUE(FolderNameRefusal(QStringLiteral("New Folder")).isEmpty());
}

TEST_F(SlideListTest, EveryNthLineFromTheFirstSelected)
{
    EXPECT_EQ(EveryNthLine(QStringLiteral("2"), 7, 0).lines, QVector<int>({0, 2, 4, 6}));
    EXPECT_EQ(EveryNthLine(QStringLiteral(" 3 "), 7, 1).lines, QVector<int>({1, 4}));
    EXPECT_EQ(EveryNthLine(QStringLiteral("1"), 3, 0).lines, QVector<int>({0, 1, 2}));
    for (const char* typed : {"0", "8", "two", "-1"}) {
        const EveryNth refused = EveryNthLine(QString::fromLatin1(typed), 7, 0);
        EXPECT_TRUE(refused.lines.isEmpty()) << typed;
        EXPECT_EQ(refused.refusal,
                  QStringLiteral("Enter a whole number from 1 to 7 and then try again..."));
    }
    EXPECT_EQ(LinesBetween(2, 4), QVector<int>({2, 3, 4}));
}
