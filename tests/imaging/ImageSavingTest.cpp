#include "imaging/ImageSaving.h"
#include "ImageFiles.h"
#include "imaging/FileInfo.h"
#include "imaging/PictureLoader.h"
#include "runtime/MsgBox.h"
#include "support/KavoriTest.h"

#include <QFileInfo>
#include <QImageReader>

using namespace kavori;
using namespace kavori::test;

class ImageSavingTest : public KavoriTest {};

TEST_F(ImageSavingTest, BitmapJpegStepsAndTheScratchFiles)
{
    QImage image(120, 80, QImage::Format_RGB32);
    for (int y = 0; y < 80; ++y)
        for (int x = 0; x < 120; ++x)
            image.setPixel(x, y, qRgb(x * 2, y * 3, (x * y) & 0xff));
    const QString bmp = root() + QStringLiteral("out.bmp");
    ASSERT_TRUE(SaveBitmap(image, bmp));
    EXPECT_EQ(QImageReader(bmp).read().convertToFormat(QImage::Format_RGB32), image);
    EXPECT_FALSE(SaveBitmap(image, root() + QStringLiteral("no/such/folder/x.bmp")));
    EXPECT_FALSE(SaveBitmap(QImage(), root() + QStringLiteral("null.bmp")));

    // Steps 0 and 10 are the two ends of JPEG quality; step 11 writes nothing.
    const QString low = root() + QStringLiteral("low.jpg");
    const QString high = root() + QStringLiteral("high.jpg");
    ASSERT_TRUE(SaveAsJpeg(bmp, QImage(), low, 0));
    ASSERT_TRUE(SaveAsJpeg(bmp, QImage(), high, 10));
    EXPECT_LT(QFileInfo(low).size(), QFileInfo(high).size());
    EXPECT_FALSE(SaveAsJpeg(bmp, QImage(), root() + QStringLiteral("none.jpg"), 11));
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("none.jpg")));
    EXPECT_FALSE(SaveAsJpeg(bmp, QImage(), root() + QStringLiteral("none.jpg"), -1));

    // A picture without a readable file goes through ~temp.BMP, which does not stay behind.
    const QString fromMemory = root() + QStringLiteral("memory.jpg");
    ASSERT_TRUE(SaveAsJpeg(QString(), image, fromMemory, 8));
    EXPECT_EQ(LoadPicture(fromMemory).size(), QSize(120, 80));
    EXPECT_EQ(TempBitmapPath(), root() + QStringLiteral("tmp/~temp.BMP"));
    EXPECT_FALSE(QFileInfo::exists(TempBitmapPath()));
    EXPECT_EQ(UntitledImagePath(), root() + QStringLiteral("tmp/Untitled.BMP"));

    // One level of undo: a second snapshot replaces the first.
    ASSERT_TRUE(MakeUndoSnapshot(image));
    QImage second = image.mirrored();
    ASSERT_TRUE(MakeUndoSnapshot(second));
    EXPECT_EQ(ReadUndoSnapshot().convertToFormat(QImage::Format_RGB32), second);
}

TEST_F(ImageSavingTest, InformationTexts)
{
    FileInfoResult r = FileInformation(QString());
    EXPECT_EQ(r.refusal, "A file has not been specified, unable to show information...");
    r = FileInformation(QStringLiteral("bare.jpg"), true);
    EXPECT_EQ(
        r.refusal,
        "A file has not been specified.\r\n\r\nClick the Browse button and/or specify a file and then try again...");
    r = FileInformation(root() + QStringLiteral("missing.jpg"));
    EXPECT_EQ(r.refusal, "The specified file could not be found, unable to show information...");
    r = FileInformation(writeFile(QStringLiteral("notes.xyz"), "x"));
    EXPECT_EQ(
        r.refusal,
        "The filename that was specified is not a supported file type, unable to show information...");

    QImage image(1234, 56, QImage::Format_RGB32);
    image.fill(Qt::gray);
    const QString bmp = root() + QStringLiteral("Wide.bmp");
    image.save(bmp, "BMP");
    r = FileInformation(bmp);
    EXPECT_TRUE(r.refusal.isEmpty());
    EXPECT_EQ(r.caption, "Image Information");
    ASSERT_GE(r.lines.size(), 3);
    EXPECT_EQ(r.lines[0], "Wide.bmp");
    EXPECT_EQ(
        r.lines[1],
        QStringLiteral("%1 bytes").arg(QLocale(QLocale::English).toString(QFileInfo(bmp).size())));
    EXPECT_EQ(r.lines[2], "Windows Bitmap (.BMP)  (1234x56 pixels)");

    const QString gif = writeFile(QStringLiteral("a.gif"), Gif("GIF89a", false));
    EXPECT_EQ(FileInformation(gif).lines[2], "Graphics Interchange Format (GIF89a)  (2x2 pixels)");
    const QString broken = writeFile(QStringLiteral("broken.jpg"), "not a jpeg");
    EXPECT_EQ(FileInformation(broken).lines[2], "JPEG (.JPG, .JIF, .JPE or .JPEG)  (Unknown...)");
    const FileInfoResult sound = FileInformation(writeFile(QStringLiteral("s.wav"), "RIFF"));
    EXPECT_EQ(sound.caption, "Sound Information");
    EXPECT_EQ(sound.lines[1], "4 bytes");
    EXPECT_EQ(FileInformation(writeFile(QStringLiteral("m.avi"), "")).caption, "Movie Information");
    EXPECT_EQ(FileInformation(writeFile(QStringLiteral("e.bmp"), "")).lines[1], "0 bytes");

    ShowFileInfo(bmp);
    EXPECT_EQ(prompts().calls.last().title, "Kavori - [Image Information]");
    EXPECT_EQ(prompts().calls.last().style, vbInformation);
    ShowFileInfo(QString());
    EXPECT_EQ(prompts().calls.last().title, "Kavori");
}
