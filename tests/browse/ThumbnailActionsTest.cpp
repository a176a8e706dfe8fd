#include "browse/ThumbnailActions.h"
#include "fileutil/Favorites.h"
#include "slideshow/SlideShow.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QImage>

using namespace kavori;

class ThumbnailActionsTest : public kavori::test::ShowTest {};

TEST_F(ThumbnailActionsTest, OpeningRefusesWhatIsNoPictureAndSendsMoviesAway)
{
    const QString folder = root() + "f/";
    QDir().mkpath(folder + "sub");
    const QString jpg = writeFile(folder + "a.jpg", "x");
    EXPECT_EQ(OpenThumbnailFile(jpg).kind, OpenKind::Image);
    EXPECT_EQ(OpenThumbnailFile(writeFile(folder + "m.MPG", "x")).kind, OpenKind::Movie);

    OpenDecision d = OpenThumbnailFile(folder + "sub");
    EXPECT_EQ(d.kind, OpenKind::Refused);
    EXPECT_EQ(d.message, "A folder was selected instead of a valid file, unable to view the "
                         "folder:\r\n\r\n" +
                             QDir::toNativeSeparators(folder + "sub"));
    d = OpenThumbnailFile(writeFile(folder + "t.tga", "x"));
    EXPECT_TRUE(d.message.startsWith(".TGA files must be imported into Kavori and then saved "
                                     "as a supported format first, unable to open:\r\n\r\n"));
    d = OpenThumbnailFile(writeFile(folder + "p.Pcx", "x"));
    EXPECT_TRUE(d.message.startsWith(".PCX files must be imported"));
    d = OpenThumbnailFile(writeFile(folder + "show.kav", "x"));
    EXPECT_TRUE(d.message.startsWith(
        "The Kavori slide show file type (.KAV) is not an image file, unable to open:"));
    d = OpenThumbnailFile(writeFile(folder + "n.txt", "x"));
    EXPECT_TRUE(d.message.startsWith(
        "The selected file type (.TXT) is not supported by Kavori, unable to open:"));
}

TEST_F(ThumbnailActionsTest, DeleteAndRenameProtectTheOpenPictureAndTheShow)
{
    const QString a = writeFile("f/a.jpg", "x");
    const QString b = writeFile("f/b.jpg", "x");
    const QString c = writeFile("f/c.jpg", "x");
    SlideShow& show = CurrentShow();
    show.path = root() + "f/show.kav";
    show.slides.append(NewSlide("b.jpg")); // beside the show, named without its folder
    EXPECT_EQ(DeleteCellRefusal(a, a, show),
              "Unable to delete this file, image is currently open in Main Viewing Window...");
    EXPECT_EQ(DeleteCellRefusal(b, a, show),
              "Unable to delete this file, image is in the currently open slide show.\r\n\r\n"
              "Remove this file from the slide show and then try again...");
    EXPECT_TRUE(DeleteCellRefusal(c, a, show).isEmpty());
    EXPECT_TRUE(DeleteCellRefusal(c, QString(), show).isEmpty());
    EXPECT_TRUE(RenameCellRefusal(a, show).isEmpty());
    EXPECT_TRUE(RenameCellRefusal(b, show).startsWith("Unable to rename this file, image is in "
                                                      "the currently open slide show."));
    EXPECT_EQ(RenameCellTitle(), "Kavori - [Rename File]");
}

TEST_F(ThumbnailActionsTest, FavoritesRefuseMoviesTwinsAndAFullList)
{
    const QString pic = writeFile("f/a.jpg", "x");
    EXPECT_EQ(FavoriteCellRefusal(root() + "f/clip.avi", {}),
              "You may not add a movie file to your Favorite Files List, select an image and "
              "then try again...");
    EXPECT_EQ(FavoriteCellRefusal(pic, {pic.toUpper()}),
              "This file is already in your favorites list...");
    QStringList full;
    for (int i = 0; i < kMaxFavoriteFiles; ++i)
        full << root() + QString("other%1.jpg").arg(i);
    EXPECT_EQ(FavoriteCellRefusal(pic, full),
              "Your favorites list is full, only 20 items may be added at one time.\r\n\r\n"
              "Remove an item or clear the list and try again...");
    full.removeLast();
    EXPECT_TRUE(FavoriteCellRefusal(pic, full).isEmpty());
    EXPECT_EQ(FavoriteCellTitle(), "Kavori - [Add To Favorite Files List]");
}

TEST_F(ThumbnailActionsTest, AnimationNeedsAGif89aFile)
{
    EXPECT_EQ(AnimatedGifRefusal(""),
              "An image has not been opened yet, unable to view animated gif...");
    EXPECT_EQ(AnimatedGifRefusal(root() + "gone.gif"),
              "An image has not been opened yet, unable to view animated gif...");
    EXPECT_EQ(AnimatedGifRefusal(writeFile("a.jpg", "GIF89a")),
              "The current image is not a .GIF file, unable to animate...");
    EXPECT_EQ(AnimatedGifRefusal(writeFile("old.gif", "GIF87a......")),
              "The current file is not in the GIF89a format, unable to animate...");
    EXPECT_TRUE(AnimatedGifRefusal(writeFile("new.GIF", "gif89A......")).isEmpty());

    EXPECT_EQ(PreviewText(writeFile("big.jpg", QByteArray(12345, 'x'))), "big.jpg (12,345 bytes)");
}
