#include "JpegFiles.h"
#include "imaging/PictureLoader.h"
#include "imaging/ScaledJpeg.h"
#include "imaging/formats/PictureReader.h"
#include "playback/TransitionCanvas.h"
#include "runtime/ScratchMemory.h"
#include "support/KavoriTest.h"
#include "support/PhotoLike.h"

#include <QPainter>

using namespace kavori;
using namespace kavori::test;

namespace {

// Fills the stock with blocks of every size the pictures below take, each painted a colour
// no test picture holds, so that a picture left partly unwritten would show it.
void poisonStock(const std::vector<QSize>& sizes)
{
    std::vector<QImage> held;
    for (const QSize& size : sizes)
        for (const QImage::Format format :
             {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_Grayscale8}) {
            held.push_back(ScratchImage(size, format));
            held.back().fill(0xFFFF00FF);
        }
}

QImage withAlpha(int width, int height)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.fillRect(width / 4, height / 4, width / 2, height / 2, QColor(20, 120, 40, 160));
    return picture;
}

} // namespace

class PictureStockTest : public KavoriTest {};

// Every picture made in the stock is the same whether its block is fresh or was last used by
// another picture: full decodes by Qt's readers (JPEG, a JPEG cut short, PNG with alpha), our
// decoder at screen size, the viewer's scale and the transition canvas's copy.
TEST_F(PictureStockTest, ReusedBlocksNeverShowAnotherPicturesPixels)
{
    const QImage photo = PhotoLike(1600, 1200, 5);
    JpegLayout layout;
    const QByteArray jpeg = EncodeJpeg(photo, layout);
    layout.grey = true;
    const QString jpegPath = writeFile(QStringLiteral("photo.jpg"), jpeg);
    const QString greyPath = writeFile(QStringLiteral("grey.jpg"), EncodeJpeg(photo, layout));
    const QString cutPath = writeFile(QStringLiteral("cut.jpg"), jpeg.left(jpeg.size() / 2));
    const QString pngPath = writeFile(QStringLiteral("alpha.png"), {});
    ASSERT_TRUE(withAlpha(1200, 900).save(pngPath, "PNG"));
    const QImage shown = PhotoLike(1920, 1080, 9);

    const auto everyPicture = [&] {
        std::vector<QImage> pictures;
        pictures.push_back(LoadPicture(jpegPath));
        pictures.push_back(LoadPicture(greyPath));
        pictures.push_back(LoadPicture(cutPath));
        pictures.push_back(LoadPicture(pngPath));
        pictures.push_back(DecodeJpegAtSize(jpeg, QSize(700, 525)));
        pictures.push_back(ScaledPicture(photo, QSize(1000, 700), true));
        pictures.push_back(ScaledPicture(withAlpha(1600, 1200), QSize(1000, 700), true));
        pictures.push_back(ScaledPicture(withAlpha(1600, 1200), QSize(1000, 700), false));
        const QImage screen = ScratchCopy(shown, QImage::Format_RGB32);
        PaintingCanvas canvas(shown, screen); // shares the screen's pixels: copies them
        pictures.push_back(canvas.takeDestination());
        return pictures;
    };

    ReleaseScratchStock();
    const std::vector<QImage> fresh = everyPicture();
    for (const QImage& picture : fresh)
        ASSERT_FALSE(picture.isNull());
    EXPECT_TRUE(IsScratchImage(fresh[0])); // read by Qt's reader into the stock
    EXPECT_TRUE(IsScratchImage(fresh[3]));
    EXPECT_TRUE(IsScratchImage(fresh[5]));
    EXPECT_TRUE(IsScratchImage(fresh.back()));
    EXPECT_EQ(fresh[3].pixel(0, 0), 0u);
    EXPECT_EQ(qAlpha(fresh[6].pixel(10, 10)), 0);

    std::vector<QSize> sizes;
    for (const QImage& picture : fresh)
        sizes.push_back(picture.size());
    for (int round = 0; round < 2; ++round) {
        poisonStock(sizes);
        const std::vector<QImage> reused = everyPicture();
        ASSERT_EQ(reused.size(), fresh.size());
        for (size_t i = 0; i < fresh.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_EQ(reused[i].format(), fresh[i].format());
            EXPECT_TRUE(reused[i] == fresh[i]);
        }
    }
}
