#include "ExportTestFiles.h"
#include "export/ShowExport.h"
#include "settings/Settings.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"

#include <QProcess>

using namespace kavori;
using namespace kavori::test;

class KavExportTest : public ShowTest {};

TEST_F(KavExportTest, TheCommandLine)
{
    ExportCommand c = ParseExportCommand({QStringLiteral("a.kav"), QStringLiteral("out.webm"),
                                          QStringLiteral("--size"), QStringLiteral("640x360"),
                                          QStringLiteral("--fps=25"), QStringLiteral("--seed"),
                                          QStringLiteral("9")});
    EXPECT_TRUE(c.error.isEmpty());
    EXPECT_EQ(c.show, QStringLiteral("a.kav"));
    EXPECT_EQ(c.options.output, QStringLiteral("out.webm"));
    EXPECT_EQ(c.options.format, VideoFormat::WebM);
    EXPECT_EQ(c.options.size, QSize(640, 360));
    EXPECT_EQ(c.options.fps, 25);
    EXPECT_EQ(c.options.seed, 9u);
    c = ParseExportCommand({QStringLiteral("a.kav"), QStringLiteral("out.MP4")});
    EXPECT_EQ(c.options.format, VideoFormat::Mp4);
    EXPECT_EQ(c.options.size, QSize(1920, 1080));
    EXPECT_EQ(c.options.fps, 30);
    for (const QStringList& bad :
         {QStringList{QStringLiteral("a.kav")},
          QStringList{QStringLiteral("a.kav"), QStringLiteral("out.avi")},
          QStringList{QStringLiteral("a.kav"), QStringLiteral("o.mp4"), QStringLiteral("--fps")},
          QStringList{QStringLiteral("a.kav"), QStringLiteral("o.mp4"), QStringLiteral("--size"),
                      QStringLiteral("big")},
          QStringList{QStringLiteral("a.kav"), QStringLiteral("o.mp4"), QStringLiteral("--fast")}})
        EXPECT_FALSE(ParseExportCommand(bad).error.isEmpty()) << bad.join(u' ').toStdString();
}

TEST_F(KavExportTest, ExportsAShowFile)
{
    for (int i = 0; i < 2; ++i) {
        QImage picture(80, 45, QImage::Format_RGB32);
        picture.fill(i ? Qt::darkMagenta : Qt::darkGreen);
        const QString path = root() + QStringLiteral("s%1.bmp").arg(i);
        ASSERT_TRUE(picture.save(path, "BMP"));
        CurrentShow().slides.append(NewSlide(path));
    }
    CurrentSettings().SlideInterval = 1;
    const QString show = root() + QStringLiteral("Trip.kav");
    ASSERT_TRUE(WriteSlideShow(show));

    QProcess run;
    const QString output = root() + QStringLiteral("trip.mp4");
    run.start(QStringLiteral(KAV_EXPORT_PATH),
              {show, output, QStringLiteral("--size"), QStringLiteral("160x90"),
               QStringLiteral("--fps"), QStringLiteral("10"), QStringLiteral("--seed"),
               QStringLiteral("3")});
    ASSERT_TRUE(run.waitForFinished(60000));
    EXPECT_EQ(run.exitCode(), 0) << run.readAllStandardError().toStdString();
    const Discovered info = Discover(output);
    ASSERT_TRUE(info.ok);
    EXPECT_EQ(info.width, 160);
    EXPECT_NEAR(double(info.duration), 2e6, 1e5);
    EXPECT_EQ(DecodeVideoFrames(output).size(), 20);

    // A wrong command line says how to use it; a missing show says so; neither makes a file.
    run.start(QStringLiteral(KAV_EXPORT_PATH), {show});
    ASSERT_TRUE(run.waitForFinished(60000));
    EXPECT_EQ(run.exitCode(), 2);
    EXPECT_TRUE(run.readAllStandardError().contains("Usage: kav-export"));
    run.start(QStringLiteral(KAV_EXPORT_PATH),
              {root() + QStringLiteral("gone.kav"), root() + QStringLiteral("gone.mp4")});
    ASSERT_TRUE(run.waitForFinished(60000));
    EXPECT_EQ(run.exitCode(), 1);
    EXPECT_FALSE(QFileInfo::exists(root() + QStringLiteral("gone.mp4")));
}
