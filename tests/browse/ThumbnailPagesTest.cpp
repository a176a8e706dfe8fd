#include "browse/ThumbnailPages.h"
#include "settings/Settings.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

using namespace kavori;

class ThumbnailPagesTest : public kavori::test::ShowTest {};

TEST_F(ThumbnailPagesTest, PicturesShrinkToTheBoxAndNeverGrow)
{
    EXPECT_EQ(ThumbnailFit({640, 480}), QSize(160, 120));
    EXPECT_EQ(ThumbnailFit({100, 400}), QSize(30, 120));
    EXPECT_EQ(ThumbnailFit({100, 80}), QSize(100, 80));
    EXPECT_EQ(ThumbnailFit({160, 120}), QSize(160, 120));
    // Width first, then the height: 4000 x 3000 lands exactly, a wide panorama keeps 160.
    EXPECT_EQ(ThumbnailFit({4000, 3000}), QSize(160, 120));
    EXPECT_EQ(ThumbnailFit({1600, 100}), QSize(160, 10));
    // 300 x 250: 160 x 133 after the width, too tall, so 120 high and 144 wide.
    EXPECT_EQ(ThumbnailFit({300, 250}), QSize(144, 120));
    // Rounded to the nearest pixel, halves to the even one.
    EXPECT_EQ(ThumbnailFit({330, 5}), QSize(160, 2));
    EXPECT_EQ(ThumbnailFit({320, 5}), QSize(160, 2));
    EXPECT_EQ(ThumbnailFit({320, 7}), QSize(160, 4));
    // A sliver never becomes nothing; a picture without a size has no thumbnail size.
    EXPECT_EQ(ThumbnailFit({5000, 1}), QSize(160, 1));
    EXPECT_FALSE(ThumbnailFit({0, 10}).isValid());
}

TEST_F(ThumbnailPagesTest, EachPageSizeHasItsCaptionsWithTheKeysAsTheyStand)
{
    const PageCaptions c25 = CaptionsForPage(25);
    EXPECT_EQ(c25.previous, "&Previous 25");
    EXPECT_EQ(c25.next, "&Next 25");
    EXPECT_EQ(c25.first, "&First 25");
    EXPECT_EQ(c25.last, "&Last 25");
    EXPECT_EQ(c25.menuPrevious, "&Previous 25          [F6]");
    EXPECT_EQ(c25.menuNext, "&Next 25          [F5]");
    EXPECT_EQ(c25.menuFirst, "&First 25          [F11]");
    EXPECT_EQ(c25.menuLast, "&Last 25          [F12]");
    EXPECT_EQ(c25.tipNext, "Show the next 25 images.  (F6)");
    EXPECT_EQ(c25.tipPrevious, "Show the previous 25 images.  (F5)");
    const PageCaptions c16 = CaptionsForPage(16);
    EXPECT_EQ(c16.menuNext, "&Next 16          [F5]");
    EXPECT_EQ(c16.tipPrevious, "Show the previous 16 images.  (F5)");
    const PageCaptions c9 = CaptionsForPage(9);
    EXPECT_EQ(c9.last, "&Last 9");
    EXPECT_EQ(c9.menuFirst, "&First 9          [F11]");
    EXPECT_EQ(c9.tipNext, "Show the next 9 images.  (F6)");

    EXPECT_EQ(ShowingText(0, 24), "Showing Files: 1 to 25");
    EXPECT_EQ(ShowingText(1000, 1024), "Showing Files: 1,001 to 1,025");
    EXPECT_EQ(ShowingText(6, 6), "Showing File: 7");
}

TEST_F(ThumbnailPagesTest, MovesPastEitherEndKeepThePageWithTheMessage)
{
    const QString noMore = "There are no more thumbnail files to show...";
    // 60 files in pages of 25: 0, 25, 50 (a page of 10).
    EXPECT_EQ(MovePage(PageMove::Next, 0, 25, 60).first, 25);
    EXPECT_EQ(MovePage(PageMove::Next, 25, 25, 60).first, 50);
    PageStep past = MovePage(PageMove::Next, 50, 25, 60);
    EXPECT_EQ(past.first, 50);
    EXPECT_EQ(past.message, noMore);
    EXPECT_EQ(MovePage(PageMove::Previous, 50, 25, 60).first, 25);
    EXPECT_EQ(MovePage(PageMove::Previous, 10, 25, 60).first, 0);
    EXPECT_EQ(MovePage(PageMove::Previous, 0, 25, 60).message, noMore);
    EXPECT_EQ(MovePage(PageMove::Forward1, 0, 9, 60).first, 1);
    EXPECT_EQ(MovePage(PageMove::Forward1, 51, 9, 60).message, noMore);
    EXPECT_EQ(MovePage(PageMove::Back1, 5, 9, 60).first, 4);
    EXPECT_EQ(MovePage(PageMove::Back1, 0, 9, 60).message, noMore);
    EXPECT_EQ(MovePage(PageMove::Last, 0, 25, 60).first, 35);
    EXPECT_EQ(MovePage(PageMove::Last, 0, 25, 10).first, 0);
    EXPECT_EQ(MovePage(PageMove::First, 35, 25, 60).first, 0);
    // A folder that fits on one page has nowhere to go.
    EXPECT_EQ(MovePage(PageMove::Next, 0, 16, 16).message, noMore);
    EXPECT_EQ(MovePage(PageMove::Forward1, 0, 16, 0).message, noMore);

    EXPECT_EQ(GoToPrompt(60), "Enter number of thumbnail to show:\r\n\r\n(1-60)");
    EXPECT_EQ(GoToThumbnail(" 42 ", 0, 60).first, 41);
    EXPECT_TRUE(GoToThumbnail("42", 0, 60).message.isEmpty());
    EXPECT_EQ(GoToThumbnail("abc", 7, 60).message,
              "A invalid number was entered, please try again...");
    EXPECT_EQ(GoToThumbnail("abc", 7, 60).first, 7);
    EXPECT_EQ(GoToThumbnail("", 7, 60).message,
              "A invalid number was entered, please try again...");
    EXPECT_EQ(GoToThumbnail("0", 7, 60).message,
              "Please enter a number greater than zero and then try again...");
    EXPECT_EQ(GoToThumbnail("-3", 7, 60).message,
              "Please enter a number greater than zero and then try again...");
    EXPECT_EQ(GoToThumbnail("61", 7, 60).message,
              "There are no thumbnails to show at the specified location, please enter another "
              "number...");
    EXPECT_EQ(GoToThumbnail("60", 7, 60).first, 59);
}

TEST_F(ThumbnailPagesTest, SelectionsAboveFiveThousandAreRefused)
{
    EXPECT_TRUE(SelectionRefusal(5000).isEmpty());
    EXPECT_EQ(SelectionRefusal(5001), "You may not select any more than 5,000 thumbnails at one "
                                      "time, maximum has been reached...");
}

TEST_F(ThumbnailPagesTest, FolderListsFollowTheOrderAndExtensionSettings)
{
    const QString folder = root() + "pics/";
    writeFile(folder + "img10.jpg", QByteArray(30, 'x'));
    writeFile(folder + "img2.JPG", QByteArray(10, 'x'));
    writeFile(folder + "Img1.bmp", QByteArray(20, 'x'));
    writeFile(folder + "clip.avi", QByteArray(5, 'x'));
    writeFile(folder + "song.mp3", "x");
    writeFile(folder + "notes.txt", "x");
    writeFile(folder + "import.pcx", "x");
    writeFile(folder + ".hidden.jpg", "x");
    QDir().mkpath(folder + "sub.jpg");
    auto names = [&] {
        QStringList n;
        for (const QString& p : ThumbnailFiles(folder)) {
            EXPECT_TRUE(p.startsWith(folder));
            n << QFileInfo(p).fileName();
        }
        return n;
    };
    // By name, numbers as numbers, case ignored; pictures and movies only.
    EXPECT_EQ(names(), QStringList({"clip.avi", "Img1.bmp", "img2.JPG", "img10.jpg"}));
    CurrentSettings().ThumbnailOrder = 2; // largest first
    EXPECT_EQ(names(), QStringList({"img10.jpg", "Img1.bmp", "img2.JPG", "clip.avi"}));
    CurrentSettings().ThumbnailOrder = 3; // by type, then name
    EXPECT_EQ(names(), QStringList({"clip.avi", "Img1.bmp", "img2.JPG", "img10.jpg"}));
    CurrentSettings().ThumbnailOrder = 1; // newest first
    QFile f(folder + "Img1.bmp");
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    f.setFileTime(QDateTime::currentDateTime().addDays(1), QFileDevice::FileModificationTime);
    f.close();
    EXPECT_EQ(names().first(), "Img1.bmp");
    CurrentSettings().ThumbnailOrder = 0;
    CurrentSettings().ThumbnailExtension = "JPG";
    EXPECT_EQ(names(), QStringList({"img2.JPG", "img10.jpg"}));
    CurrentSettings().ThumbnailExtension = "?";
    EXPECT_EQ(names().size(), 4);
    EXPECT_TRUE(ThumbnailFiles(root() + "no such folder").isEmpty());
}
