#include "playback/FullViewFrm.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <QLabel>
#include <QMovie>
#include <QTest>

using namespace kavori;

class FullViewFrmTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
    }
};

TEST_F(FullViewFrmTest, OneImageOnBlackClosingOnAKeyOrClick)
{
    FullViewFrm view;
    view.resize(400, 300);
    QImage image(100, 50, QImage::Format_RGB32);
    image.fill(Qt::green);
    view.setImage(image);
    view.show();

    // Stretch alone keeps a small image at its size, centred on black.
    QImage shot = view.grab().toImage();
    EXPECT_EQ(QColor(shot.pixel(200, 150)), QColor(Qt::green));
    EXPECT_EQ(QColor(shot.pixel(10, 10)), QColor(Qt::black));
    EXPECT_EQ(QColor(shot.pixel(140, 150)), QColor(Qt::black));
    // With enlarging on it fills the width.
    CurrentSettings().EnlargeImages = true;
    view.update();
    shot = view.grab().toImage();
    EXPECT_EQ(QColor(shot.pixel(5, 150)), QColor(Qt::green));

    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_FALSE(view.isVisible());
    view.show();
    QTest::mouseClick(&view, Qt::LeftButton);
    EXPECT_FALSE(view.isVisible());
}

TEST_F(FullViewFrmTest, AnimatedGifPlaysAndStillsAndBadFilesAreRefused)
{
    // A two-frame GIF89a made by hand: 2x2 pixels, global palette of two colours.
    const QByteArray gif = QByteArray::fromHex(
        "47494638396102000200800000000000ffffff21ff0b4e45545343415045322e30030100000021f904000a0000002c"
        "000000000200020000020404c3102c0021f904000a0000002c00000000020002000002040c41302c003b");
    const QString animated = writeFile(QStringLiteral("anim.gif"), gif);
    FullViewFrm view;
    view.resize(200, 100);
    ASSERT_TRUE(view.setAnimation(animated));
    EXPECT_TRUE(view.isAnimating());
    EXPECT_TRUE(view.findChild<QLabel*>(QStringLiteral("Gif89a1"))->isVisibleTo(&view));

    // A one-frame GIF is a still picture; a damaged file no animation either.
    const QByteArray still = gif.left(gif.indexOf(QByteArray::fromHex("21f904"), 60)) + ";";
    FullViewFrm other;
    EXPECT_FALSE(other.setAnimation(writeFile(QStringLiteral("still.gif"), still)));
    EXPECT_FALSE(other.setAnimation(writeFile(QStringLiteral("bad.gif"), "GIF89a garbage")));
    EXPECT_FALSE(FullViewFrm::ShowImageModal(root() + QStringLiteral("missing.bmp"), false));
}
