#include "slideshow/BonusPack.h"
#include "platform/AppPaths.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QtEndian>

#include <cmath>

using namespace kavori;

class BonusPackTest : public kavori::test::KavoriTest {
protected:
    // How far apart two columns of a picture are, on average per channel.
    static double columnGap(const QImage& im, int a, int b)
    {
        double sum = 0;
        for (int y = 0; y < im.height(); ++y) {
            const QRgb p = im.pixel(a, y), q = im.pixel(b, y);
            sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) +
                   std::abs(qBlue(p) - qBlue(q));
        }
        return sum / (3.0 * im.height());
    }
};

// The pack a fresh program folder is given: its data file names it, and its textures and
// sounds are real pictures that repeat without a seam and short waves.
TEST_F(BonusPackTest, InstalledPackIsReadAndItsFilesAreUsable)
{
    ASSERT_TRUE(EnsureAppHome());
    LoadBonusPack();
    EXPECT_EQ(CurrentBonusPack().BonusPackName, "Kavori Bonus Pack");
    EXPECT_EQ(CurrentBonusPack().BonusPackEdition, "Deluxe");

    const QDir textures(PathNoCase(AppPath(), QStringLiteral("Bonus/Textures")));
    const QStringList pictures = textures.entryList(QDir::Files);
    EXPECT_GE(pictures.size(), 12);
    for (const QString& name : pictures) {
        QImage im(textures.filePath(name));
        ASSERT_FALSE(im.isNull()) << name.toStdString();
        EXPECT_EQ(im.size(), QSize(256, 256)) << name.toStdString();
        // Where the right edge meets the left edge of the next copy (and the bottom meets the
        // top) the step is no larger than between neighbouring columns (rows) inside.
        for (const QImage& side : {im, im.transformed(QTransform().rotate(90))}) {
            double inside = 0;
            for (int x = 0; x + 1 < side.width(); ++x)
                inside += columnGap(side, x, x + 1);
            inside /= side.width() - 1;
            EXPECT_LT(columnGap(side, side.width() - 1, 0), inside * 1.6 + 2) << name.toStdString();
        }
    }

    const QDir sounds(PathNoCase(AppPath(), QStringLiteral("Bonus/Sounds")));
    const QStringList waves = sounds.entryList({QStringLiteral("*.wav")}, QDir::Files);
    EXPECT_GE(waves.size(), 6);
    for (const QString& name : waves) {
        QFile f(sounds.filePath(name));
        ASSERT_TRUE(f.open(QIODevice::ReadOnly));
        const QByteArray wav = f.readAll();
        ASSERT_GE(wav.size(), 44) << name.toStdString();
        EXPECT_EQ(wav.left(4), "RIFF") << name.toStdString();
        EXPECT_EQ(wav.mid(8, 8), "WAVEfmt ") << name.toStdString();
        const quint32 rate = qFromLittleEndian<quint32>(wav.constData() + 24);
        const quint32 bytesPerSecond = qFromLittleEndian<quint32>(wav.constData() + 28);
        const quint32 data = qFromLittleEndian<quint32>(wav.constData() + 40);
        EXPECT_EQ(rate, 22050u) << name.toStdString();
        EXPECT_EQ(data + 44, quint32(wav.size())) << name.toStdString();
        EXPECT_LE(double(data) / bytesPerSecond, 2.5) << name.toStdString();
    }
}

TEST_F(BonusPackTest, AboutBoxNamesThePack)
{
    ASSERT_TRUE(EnsureAppHome());
    LoadBonusPack();
    MainViewFrm w;
    w.menus().action(QStringLiteral("mnuAbout"))->trigger();
    auto* about = w.findChild<QDialog*>(QStringLiteral("frmAbout"));
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->findChild<QLabel*>(QStringLiteral("lblAbout"))
                    ->text()
                    .endsWith(QStringLiteral("<br><br>With Kavori Bonus Pack Deluxe!")));
}
