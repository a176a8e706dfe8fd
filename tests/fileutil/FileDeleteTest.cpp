#include "fileutil/FileDelete.h"
#include "fileutil/FileFollowers.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShow.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QFileInfo>

using namespace kavori;

class FileDeleteTest : public kavori::test::ShowTest {
protected:
    QString pics() { return root() + QStringLiteral("pics/"); }
    QString trashFiles() { return root() + QStringLiteral("home/.local/share/Trash/files/"); }
    // Two described pictures, the first also a favourite (written in another case).
    void makePictures()
    {
        writeFile(pics() + QStringLiteral("a.jpg"), "one");
        writeFile(pics() + QStringLiteral("b.jpg"), "two");
        writeFile(pics() + QStringLiteral("!Description"),
                  "Kavori Description File\r\n------------------------------\r\n"
                  "a.jpg\r\nFirst\r\nb.jpg\r\nSecond\r\n");
        CurrentSettings().FavoriteFile[3] = pics() + QStringLiteral("A.JPG");
        CurrentSettings().FavoriteFile[4] = pics() + QStringLiteral("b.jpg");
    }
};

TEST_F(FileDeleteTest, DirectDeleteAsksNothingAndCleansUp)
{
    CurrentSettings().UseRecycleBin = false;
    makePictures();
    ASSERT_TRUE(DeleteOneFile(pics() + QStringLiteral("a.jpg"), false));
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(pics() + QStringLiteral("a.jpg")));
    EXPECT_FALSE(QDir(trashFiles()).exists(QStringLiteral("a.jpg")));
    // The description goes with the file; the other entry stays.
    EXPECT_EQ(ReadDescriptionFile(pics()), 1);
    EXPECT_EQ(GetDescription(pics() + QStringLiteral("b.jpg")), "Second");
    // The favourite is cleared in memory and in the settings file.
    EXPECT_TRUE(CurrentSettings().FavoriteFile[3].isEmpty());
    EXPECT_EQ(CurrentSettings().FavoriteFile[4], pics() + QStringLiteral("b.jpg"));
    EXPECT_TRUE(readFile(SettingsFilePath()).contains("FavoriteFile4=\r\n") ||
                readFile(SettingsFilePath()).contains("FavoriteFile4=\n"));

    // A file that is not there: nothing happens and nothing is asked.
    EXPECT_FALSE(DeleteOneFile(pics() + QStringLiteral("gone.jpg"), true));
    EXPECT_TRUE(prompts().calls.isEmpty());
}

TEST_F(FileDeleteTest, TrashWithConfirmation)
{
    makePictures();
    const QString b = pics() + QStringLiteral("b.jpg");
    // Declined: the file, its description and its favourite entry stay.
    prompts().answers = {vbNo};
    EXPECT_FALSE(DeleteOneFile(b, true));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, DeleteFileQuestion(b, true));
    EXPECT_EQ(prompts().calls[0].style, vbYesNo + vbQuestion + vbDefaultButton2);
    EXPECT_TRUE(QFileInfo::exists(b));
    EXPECT_EQ(GetDescription(b), "Second");
    EXPECT_EQ(CurrentSettings().FavoriteFile[4], b);

    // Accepted: the file lands in the trash of the (temporary) home with its bytes.
    prompts().answers = {vbYes};
    EXPECT_TRUE(DeleteOneFile(b, true));
    EXPECT_FALSE(QFileInfo::exists(b));
    EXPECT_EQ(readFile(trashFiles() + QStringLiteral("b.jpg")), "two");
    EXPECT_EQ(GetDescription(pics() + QStringLiteral("a.jpg")), "First");
    EXPECT_EQ(GetDescription(b), "");
    EXPECT_TRUE(CurrentSettings().FavoriteFile[4].isEmpty());

    // The last described file leaves no description file behind.
    EXPECT_TRUE(DeleteOneFile(pics() + QStringLiteral("a.jpg"), false));
    EXPECT_FALSE(QFileInfo::exists(pics() + QStringLiteral("!Description")));
    EXPECT_TRUE(QFileInfo::exists(trashFiles() + QStringLiteral("a.jpg")));
}

TEST_F(FileDeleteTest, FailedDeleteKeepsTheBookkeeping)
{
    CurrentSettings().UseRecycleBin = false;
    makePictures();
    // A folder by a picture's name cannot be removed as a file, so nothing else changes.
    QFile::remove(pics() + QStringLiteral("a.jpg"));
    writeFile(pics() + QStringLiteral("a.jpg/inside.jpg"), "x");
    EXPECT_FALSE(DeleteOneFile(pics() + QStringLiteral("a.jpg"), false));
    EXPECT_TRUE(QFileInfo::exists(pics() + QStringLiteral("a.jpg/inside.jpg")));
    EXPECT_EQ(GetDescription(pics() + QStringLiteral("a.jpg")), "First");
    EXPECT_FALSE(CurrentSettings().FavoriteFile[3].isEmpty());
}

TEST_F(FileDeleteTest, FollowersOfAMovedFile)
{
    makePictures();
    const QString a = pics() + QStringLiteral("a.jpg");
    const QString target = root() + QStringLiteral("other/a.jpg");
    writeFile(target, "one");
    EXPECT_TRUE(CopyDescriptionEntry(a, target));
    EXPECT_EQ(GetDescription(target), "First");
    EXPECT_FALSE(CopyDescriptionEntry(pics() + QStringLiteral("none.jpg"), target));

    CurrentShow().slides = {NewSlide(a), NewSlide(pics() + QStringLiteral("b.jpg")), NewSlide(a)};
    CurrentSettings().SoundFile = pics() + QStringLiteral("Tune.MID");
    EXPECT_EQ(MoveShowEntries(a, target), 2);
    EXPECT_EQ(CurrentShow().slides[2].SlideFile, target);
    EXPECT_TRUE(CurrentShow().changed);
    EXPECT_EQ(
        MoveShowEntries(pics() + QStringLiteral("tune.mid"), root() + QStringLiteral("t.mid")), 0);
    EXPECT_EQ(CurrentSettings().SoundFile, root() + QStringLiteral("t.mid"));
    EXPECT_TRUE(readFile(SettingsFilePath())
                    .contains(QByteArray("SoundFile=" + root().toUtf8() + "t.mid")));

    // Names that differ in case are two files here; a name without its file matches any case.
    writeFile(pics() + QStringLiteral("B.JPG"), "other");
    EXPECT_FALSE(SamePath(pics() + QStringLiteral("b.jpg"), pics() + QStringLiteral("B.JPG")));
    EXPECT_TRUE(SamePath(pics() + QStringLiteral("b.jpg"), pics() + QStringLiteral("./b.jpg")));
    EXPECT_TRUE(SamePath(pics() + QStringLiteral("gone.jpg"), pics() + QStringLiteral("GONE.JPG")));

    EXPECT_TRUE(RenameFavoriteFile(a, target));
    EXPECT_EQ(CurrentSettings().FavoriteFile[3], target);
}
