#include "imaging/ModernFiles.h"
#include "platform/Twips.h"
#include "playback/player/DescriptionOverlay.h"
#include "playback/player/PlayerKeys.h"
#include "playback/player/PlayerTexts.h"
#include "playback/player/SlideLayout.h"
#include "playback/player/SlideOrder.h"
#include "runtime/Random.h"
#include "support/KavoriTest.h"

#include <QColorSpace>
#include <QFont>
#include <QFontMetrics>
#include <QSet>

using namespace kavori;

class PlayerRulesTest : public kavori::test::KavoriTest {};

TEST_F(PlayerRulesTest, NextSlideInOrderAtRandomAndAtTheEnd)
{
    // In order: one after another; past the last the show starts again or ends.
    EXPECT_EQ(ChooseNextSlide(-1, 3, false, false, false).index, 0);
    EXPECT_EQ(ChooseNextSlide(1, 3, false, false, false).index, 2);
    const NextSlide end = ChooseNextSlide(2, 3, false, false, false);
    EXPECT_TRUE(end.ended);
    EXPECT_EQ(end.index, 0);
    EXPECT_FALSE(ChooseNextSlide(2, 3, false, true, false).ended);
    EXPECT_EQ(ChooseNextSlide(2, 3, false, true, false).index, 0);
    // The screen saver's override keeps the show going without looping.
    EXPECT_FALSE(ChooseNextSlide(2, 3, false, false, true).ended);
    // One slide that loops comes again each tick.
    EXPECT_EQ(ChooseNextSlide(0, 1, false, true, false).index, 0);
    // An index past the last slot wraps to the first.
    EXPECT_EQ(ChooseNextSlide(kLastSlideSlot, kLastSlideSlot + 1, false, false, false).index, 0);

    // At random: Int(count x r), the same slide may come twice in a row, and random draws
    // never end the show.
    ScriptRandom({0.0, 0.999, 0.5, 0.5});
    EXPECT_EQ(ChooseNextSlide(2, 4, true, false, false).index, 0);
    EXPECT_EQ(ChooseNextSlide(0, 4, true, false, false).index, 3);
    EXPECT_EQ(ChooseNextSlide(3, 4, true, false, false).index, 2);
    const NextSlide again = ChooseNextSlide(2, 4, true, false, false);
    EXPECT_EQ(again.index, 2);
    EXPECT_FALSE(again.ended);

    // Stepping back and jumping stay inside the show.
    EXPECT_EQ(PreviousSlideIndex(0, 5), 4);
    EXPECT_EQ(PreviousSlideIndex(3, 5), 2);
    EXPECT_EQ(SlideIndexMovedBy(3, kSlidePageStep, 5), 4);
    EXPECT_EQ(SlideIndexMovedBy(3, -kSlidePageStep, 5), 0);
    EXPECT_EQ(SlideIndexMovedBy(3, -kSlidePageStep, 30), 0);
    EXPECT_EQ(SlideIndexMovedBy(12, -kSlidePageStep, 30), 2);
}

TEST_F(PlayerRulesTest, MouseSensitivity)
{
    // More sensitive mice end the screen saver sooner; nonsense takes the default.
    EXPECT_LT(MouseMoveThreshold(20), MouseMoveThreshold(1));
    EXPECT_EQ(MouseMoveThreshold(0), MouseMoveThreshold(4));
}

// What the line says is checked on the player itself; here, how it is cut to fit.
TEST_F(PlayerRulesTest, InfoLineFitsTheScreen)
{
    // A line too long is cut and ends in "..."; one that fits is left alone.
    const QFontMetrics metrics{QFont()};
    const QString longLine = QString(200, u'w');
    const QString cut = FitInfoLine(longLine, metrics, 300);
    EXPECT_TRUE(cut.endsWith(QStringLiteral("...")));
    EXPECT_LE(metrics.horizontalAdvance(cut), 300);
    EXPECT_GT(metrics.horizontalAdvance(cut + u'w'), 300 - metrics.horizontalAdvance(u'w'));
    EXPECT_EQ(FitInfoLine(QStringLiteral("short"), metrics, 300), QStringLiteral("short"));

    EXPECT_EQ(SlidePositionText(2, 1234),
              QStringLiteral("Slide 3 of 1,234 slides (images) total..."));
}

TEST_F(PlayerRulesTest, PictureSizeAndPlaceOnTheScreen)
{
    const QSize screen(800, 600);
    // Shrinking keeps proportions; enlarging only applies to smaller pictures.
    EXPECT_EQ(SlidePictureSize({1600, 600}, screen, false, true), QSize(800, 300));
    EXPECT_EQ(SlidePictureSize({1600, 600}, screen, true, false), QSize(1600, 600));
    EXPECT_EQ(SlidePictureSize({200, 100}, screen, true, false), QSize(800, 400));
    EXPECT_EQ(SlidePictureSize({200, 100}, screen, false, true), QSize(200, 100));

    Slide slide;
    const QSize drawn(200, 100);
    auto at = [&](SlidePlace place) {
        slide.SlideLocation = qint16(place);
        return SlidePictureRect(drawn, screen, slide).topLeft();
    };
    EXPECT_EQ(at(SlidePlace::Center), QPoint(300, 250));
    EXPECT_EQ(at(SlidePlace::TopLeft), QPoint(0, 0));
    EXPECT_EQ(at(SlidePlace::Top), QPoint(300, 0));
    EXPECT_EQ(at(SlidePlace::TopRight), QPoint(600, 0));
    EXPECT_EQ(at(SlidePlace::Left), QPoint(0, 250));
    EXPECT_EQ(at(SlidePlace::Right), QPoint(600, 250));
    EXPECT_EQ(at(SlidePlace::BottomLeft), QPoint(0, 500));
    EXPECT_EQ(at(SlidePlace::Bottom), QPoint(300, 500));
    EXPECT_EQ(at(SlidePlace::BottomRight), QPoint(600, 500));
    slide.SlidePosX = 17;
    slide.SlidePosY = 23;
    EXPECT_EQ(at(SlidePlace::Custom), QPoint(17, 23));
    ScriptRandom({0.0, 0.9999});
    EXPECT_EQ(at(SlidePlace::Random), QPoint(0, 500));
    // A picture larger than the screen is centred, its middle shown.
    slide.SlideLocation = 0;
    EXPECT_EQ(SlidePictureRect({1000, 600}, screen, slide).topLeft(), QPoint(-100, 0));
}

TEST_F(PlayerRulesTest, SlideBackgroundColourTextureAndPicture)
{
    QImage screen(40, 30, QImage::Format_RGB32);
    QImage picture(10, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    Slide slide;
    // The player's own black, a chosen colour (stored red + green x 256 + blue x 65536).
    ComposeSlide(screen, picture, QRect(15, 10, 10, 10), slide, QImage());
    EXPECT_EQ(QColor(screen.pixel(0, 0)), QColor(Qt::black));
    EXPECT_EQ(QColor(screen.pixel(20, 15)), QColor(Qt::red));
    slide.SlideBackMode = qint16(SlideBack::Color);
    slide.SlideBackColor = 0xFF0000; // blue
    ComposeSlide(screen, picture, QRect(15, 10, 10, 10), slide, QImage());
    EXPECT_EQ(QColor(screen.pixel(0, 0)), QColor(Qt::blue));
    EXPECT_EQ(QColor(screen.pixel(20, 15)), QColor(Qt::red));
    // A texture is tiled from the top left; a missing one falls back to black.
    QImage texture(4, 4, QImage::Format_RGB32);
    texture.fill(Qt::green);
    texture.setPixel(0, 0, qRgb(255, 255, 0));
    slide.SlideBackMode = qint16(SlideBack::Texture);
    ComposeSlide(screen, picture, QRect(15, 10, 10, 10), slide, texture);
    EXPECT_EQ(QColor(screen.pixel(4, 4)), QColor(Qt::yellow));
    EXPECT_EQ(QColor(screen.pixel(5, 4)), QColor(Qt::green));
    ComposeSlide(screen, QImage(), QRect(), slide, QImage());
    EXPECT_EQ(QColor(screen.pixel(20, 15)), QColor(Qt::black));
}

TEST_F(PlayerRulesTest, DecodedAtTheSizeTheSlideIsDrawn)
{
    QImage big(1600, 1200, QImage::Format_RGB32);
    big.fill(Qt::gray);
    const QString path = root() + QStringLiteral("big.bmp");
    ASSERT_TRUE(big.save(path, "BMP"));
    Slide slide;
    slide.SlideShrink = 1;
    EXPECT_EQ(DecodeSlidePicture(path, {800, 600}, slide).size(), QSize(800, 600));
    slide.SlideShrink = 0;
    EXPECT_EQ(DecodeSlidePicture(path, {800, 600}, slide).size(), QSize(1600, 1200));
    QImage small(100, 50, QImage::Format_RGB32);
    small.fill(Qt::gray);
    const QString smallPath = root() + QStringLiteral("small.bmp");
    ASSERT_TRUE(small.save(smallPath, "BMP"));
    slide.SlideEnlarge = 1;
    EXPECT_EQ(DecodeSlidePicture(smallPath, {800, 600}, slide).size(), QSize(800, 400));
    EXPECT_TRUE(
        DecodeSlidePicture(root() + QStringLiteral("missing.bmp"), {800, 600}, slide).isNull());
    writeFile(QStringLiteral("damaged.bmp"), QByteArray("BM\x10\0\0\0garbage", 13));
    EXPECT_TRUE(
        DecodeSlidePicture(root() + QStringLiteral("damaged.bmp"), {800, 600}, slide).isNull());
}

TEST_F(PlayerRulesTest, TodaysPhotosAreShownUprightAndInScreenColours)
{
    // A phone photo: taken turned (EXIF 6) with a Display P3 profile.
    QImage photo(400, 300, QImage::Format_RGB32);
    photo.fill(qRgb(200, 100, 50));
    for (int y = 0; y < 150; ++y)
        for (int x = 0; x < 200; ++x)
            photo.setPixel(x, y, qRgb(40, 40, 40));
    kavori::test::ModernOptions options;
    options.orientation = 6;
    options.icc = QColorSpace(QColorSpace::DisplayP3).iccProfile();
    QString why;
    const QByteArray jxl = kavori::test::EncodeJxl(photo, options, &why);
    ASSERT_FALSE(jxl.isEmpty()) << why.toStdString();
    const QString path = writeFile(QStringLiteral("phone.jxl"), jxl);
    Slide slide;
    slide.SlideShrink = 1;
    const QImage shown = DecodeSlidePicture(path, {320, 240}, slide);
    ASSERT_EQ(shown.size(), QSize(180, 240));
    // The dark corner was top left; turned a quarter clockwise it is top right.
    EXPECT_EQ(QColor(shown.pixel(150, 40)).red(), 40);
    const QColor warm(shown.pixel(40, 200));
    EXPECT_NEAR(warm.red(), 215, 3);
    EXPECT_NEAR(warm.green(), 93, 3);
    EXPECT_NEAR(warm.blue(), 31, 3);
}

TEST_F(PlayerRulesTest, DescriptionPlacesStayOnTheScreen)
{
    const QSize screen = {PixelsToTwips(800), PixelsToTwips(600)};
    const QSize text = {PixelsToTwips(200), PixelsToTwips(40)};
    QSet<QPair<int, int>> seen;
    for (int code = 0; code < 22; ++code) {
        ScriptRandom({0.5, 0.5});
        const QPoint at = DescriptionPlace(code, screen, text);
        EXPECT_GE(at.x(), 0) << code;
        EXPECT_GE(at.y(), 0) << code;
        EXPECT_LE(at.x() + text.width(), screen.width()) << code;
        EXPECT_LE(at.y() + text.height(), screen.height()) << code;
        if (code != 1 && code < 20)
            seen.insert({at.x(), at.y()});
    }
    // Every standing place (but random) is a place of its own.
    EXPECT_EQ(seen.size(), 19);
    const QPoint center = DescriptionPlace(0, screen, text);
    EXPECT_EQ(center,
              QPoint((screen.width() - text.width()) / 2, (screen.height() - text.height()) / 2));
    EXPECT_LT(DescriptionPlace(6, screen, text).x(), DescriptionPlace(7, screen, text).x());
    EXPECT_LT(DescriptionPlace(6, screen, text).y(), DescriptionPlace(8, screen, text).y());
    // A text wider than the screen starts at its left edge.
    EXPECT_EQ(DescriptionPlace(3, screen, {screen.width() * 2, text.height()}).x(), 0);

    // The shadow sits distance + 1 pixels off, a distance of 0 included.
    EXPECT_EQ(ShadowOffset(3, 0), QPoint(15, 15));
    EXPECT_EQ(ShadowOffset(0, 2), QPoint(-45, -45));
    EXPECT_EQ(ShadowOffset(1, 1), QPoint(30, -30));
    EXPECT_EQ(ShadowOffset(2, 1), QPoint(-30, 30));
}

TEST_F(PlayerRulesTest, JumpingStartsAfterItsSpeedsTicks)
{
    const QSize screen = {PixelsToTwips(800), PixelsToTwips(600)};
    const QSize text = {PixelsToTwips(200), PixelsToTwips(40)};
    const int expected[] = {48, 38, 29, 22, 16, 11, 7, 4, 2};
    for (int speed = 1; speed <= 9; ++speed) {
        DescriptionMotion motion(kDescJumping, speed, screen, text);
        const QPoint start = motion.position();
        for (int tick = 1; tick <= expected[speed - 1]; ++tick)
            EXPECT_FALSE(motion.tick()) << speed;
        EXPECT_FALSE(motion.started());
        EXPECT_EQ(motion.position(), start);
        EXPECT_TRUE(motion.tick());
        EXPECT_TRUE(motion.started()) << speed;
        EXPECT_EQ(motion.ticks(), expected[speed - 1] + 1);
        EXPECT_NE(motion.position(), start);
        EXPECT_TRUE(motion.tick()); // and then every tick
    }
    DescriptionMotion fast(kDescJumping, 10, screen, text);
    EXPECT_TRUE(fast.tick());
    EXPECT_TRUE(fast.started());
    // A standing place never moves.
    DescriptionMotion still(5, 5, screen, text);
    EXPECT_FALSE(still.moves());
    EXPECT_FALSE(still.tick());
}

TEST_F(PlayerRulesTest, BouncingDriftsBySpeedTimesFiftyAndTurnsAtTheEdges)
{
    const QSize screen = {PixelsToTwips(800), PixelsToTwips(600)};
    const QSize text = {PixelsToTwips(200), PixelsToTwips(40)};
    DescriptionMotion motion(kDescBouncing, 5, screen, text);
    QPoint previous = motion.position();
    ASSERT_TRUE(motion.tick());
    EXPECT_EQ(motion.position() - previous, QPoint(250, 250));
    bool turnedX = false;
    bool turnedY = false;
    bool turnedBackX = false;
    for (int i = 0; i < 400; ++i) {
        previous = motion.position();
        const int dirX = motion.directionX();
        const int dirY = motion.directionY();
        motion.tick();
        const QPoint at = motion.position();
        ASSERT_GE(at.x(), 0);
        ASSERT_GE(at.y(), 0);
        ASSERT_LE(at.x() + text.width(), screen.width());
        ASSERT_LE(at.y() + text.height(), screen.height());
        if (dirX == 1 && motion.directionX() == -1) {
            turnedX = true;
            EXPECT_EQ(at.x(), screen.width() - text.width());
        }
        if (dirX == -1 && motion.directionX() == 1) {
            turnedBackX = true;
            EXPECT_EQ(at.x(), 0);
        }
        if (dirY != motion.directionY())
            turnedY = true;
        // Away from the edges every step is the whole drift.
        if (dirX == motion.directionX() && dirY == motion.directionY()) {
            EXPECT_EQ(at - previous, QPoint(250 * dirX, 250 * dirY));
        }
    }
    EXPECT_TRUE(turnedX);
    EXPECT_TRUE(turnedBackX);
    EXPECT_TRUE(turnedY);
}

TEST_F(PlayerRulesTest, SlideFilesAreFoundBesideTheirShow)
{
    const QString show = writeFile(QStringLiteral("trip/Trip.KAV"), "x");
    const QString beside = writeFile(QStringLiteral("trip/beach.jpg"), "x");
    EXPECT_EQ(SlidePicturePath(QStringLiteral("beach.jpg"), show), beside);
    // Written on another machine: the folder is gone, the file lies beside the show.
    EXPECT_EQ(SlidePicturePath(QStringLiteral("C:\\Photos\\beach.jpg"), show), beside);
    EXPECT_EQ(SlidePicturePath(QStringLiteral("/elsewhere/beach.jpg"), show), beside);
    EXPECT_EQ(SlidePicturePath(beside, show), beside);
    // Not found anywhere: the name stays for the message, relative ones beside the show.
    EXPECT_EQ(SlidePicturePath(QStringLiteral("gone.jpg"), show),
              root() + QStringLiteral("trip/gone.jpg"));
    EXPECT_EQ(SlidePicturePath(QStringLiteral("/elsewhere/gone.jpg"), show),
              QStringLiteral("/elsewhere/gone.jpg"));
    // A show not read from a file leaves names alone.
    EXPECT_EQ(SlidePicturePath(QStringLiteral("beach.jpg"), QString()),
              QStringLiteral("beach.jpg"));
}
