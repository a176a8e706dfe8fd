// What a user's machine throws at the program: a disk that fills up half-way, files that
// vanish between being listed and being used, and names no one tried. Each gets the program's
// message or a clean failure, and never costs a file the user had.
#include "fileutil/FileJobs.h"
#include "imaging/ImageSaving.h"
#include "imaging/PictureLoader.h"
#include "platform/SafeFiles.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShowFile.h"
#include "support/FakeProgress.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <csignal>
#include <sys/resource.h>

using namespace kavori;

namespace {

// A disk with only `bytes` of room for any one file: writes past it fail with an error, as
// they do on a full disk, instead of killing the process.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_old{};
    void (*m_oldHandler)(int) = nullptr;
};

QImage Picture(int width, int height, QColor colour)
{
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(colour);
    return picture;
}

} // namespace

class BadInputSweepTest : public kavori::test::ShowTest {
protected:
    // The names of a folder, to see that nothing half-written was left beside a file.
    static QStringList entries(const QString& folder)
    {
        return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
};

TEST_F(BadInputSweepTest, AFullDiskLeavesEveryFileAsItWas)
{
    const QString folder = root() + QStringLiteral("full/");
    const QByteArray oldIni = "[Viewer]\r\nQualityJPG=8\r\n";
    const QString ini = writeFile(QStringLiteral("full/KAVORI.INI"), oldIni);
    const QByteArray oldShow = "\"Kavori Slide Show\"\r\n\"Version 3.0\"\r\n";
    const QString show = writeFile(QStringLiteral("full/trip.kav"), oldShow);
    const QString picture = folder + QStringLiteral("photo.bmp");
    ASSERT_TRUE(Picture(8, 8, Qt::red).save(picture, "BMP"));
    const QByteArray oldPicture = readFile(picture);
    const QString big = root() + QStringLiteral("big.bmp");
    ASSERT_TRUE(Picture(400, 300, Qt::blue).save(big, "BMP"));
    const QStringList before = entries(folder);

    for (int i = 0; i < 500; ++i)
        CurrentShow().slides.append(
            NewSlide(QStringLiteral("/pictures/a long folder name/%1.jpg").arg(i)));
    {
        const FullDisk disk(4096);
        // Settings, a show, a picture and a copied file: each write fails as a whole.
        LoadIniFile(ini);
        for (int i = 0; i < 300; ++i)
            SetIniValue(QStringLiteral("Viewer"), QStringLiteral("Key%1").arg(i),
                        QString(40, QLatin1Char('x')));
        EXPECT_FALSE(SaveIniFile(ini));
        EXPECT_FALSE(WriteSlideShow(show));
        EXPECT_FALSE(SaveBitmap(Picture(400, 300, Qt::green), picture));
        EXPECT_FALSE(CopyFileOver(big, picture));
    }
    EXPECT_EQ(readFile(ini), oldIni);
    EXPECT_EQ(readFile(show), oldShow);
    EXPECT_EQ(readFile(picture), oldPicture);
    EXPECT_EQ(entries(folder), before) << "a partial file was left behind";
    ClearIni();

    // With room again the same writes go through.
    EXPECT_TRUE(CopyFileOver(big, picture));
    EXPECT_EQ(readFile(picture), readFile(big));
}

TEST_F(BadInputSweepTest, AFileThatVanishesMidJobCostsNothing)
{
    // Chosen in the dialog, gone by the time the job reaches it: the copy says it could not,
    // the file of that name already in the destination survives, and the job goes on.
    const QString source = root() + QStringLiteral("from/");
    const QString destination = root() + QStringLiteral("to/");
    writeFile(QStringLiteral("from/a.bmp"), "new a");
    writeFile(QStringLiteral("from/b.bmp"), "new b");
    writeFile(QStringLiteral("to/a.bmp"), "old a");
    FileJobRequest request;
    request.sourceFolder = source;
    request.destinationFolder = destination;
    request.filesInSource = 2;
    request.selected = {source + QStringLiteral("a.bmp"), source + QStringLiteral("b.bmp")};
    ASSERT_TRUE(QFile::remove(source + QStringLiteral("a.bmp")));
    prompts().answers = {vbYes}; // replace a.bmp
    kavori::test::FakeProgress progress;
    const FileJobResult result = RunFileJob(request, progress);
    EXPECT_EQ(readFile(destination + QStringLiteral("a.bmp")), "old a");
    EXPECT_EQ(readFile(destination + QStringLiteral("b.bmp")), "new b");
    EXPECT_EQ(result.targets, QStringList({destination + QStringLiteral("b.bmp")}));
    ASSERT_FALSE(prompts().calls.isEmpty());
    EXPECT_TRUE(prompts().calls.last().text.startsWith(QStringLiteral("Unable to copy the file:")));

    // The same for a move, and for a source that is a folder rather than a file.
    request.kind = FileJobKind::Move;
    prompts().clear();
    prompts().answers = {vbYes};
    RunFileJob(request, progress);
    EXPECT_EQ(readFile(destination + QStringLiteral("a.bmp")), "old a");
    QDir().mkpath(source + QStringLiteral("c.bmp"));
    EXPECT_FALSE(
        MoveFileOver(source + QStringLiteral("c.bmp"), destination + QStringLiteral("a.bmp")));
    EXPECT_FALSE(
        CopyFileOver(source + QStringLiteral("c.bmp"), destination + QStringLiteral("a.bmp")));
    EXPECT_EQ(readFile(destination + QStringLiteral("a.bmp")), "old a");
}

TEST_F(BadInputSweepTest, NamesWithSpacesQuotesAndAccents)
{
    // Folders and pictures named as people name them, in every script.
    const QString folder = root() + QStringLiteral("Fotos ä ö/Ferien 'Sommer' 2026, Teil 2/");
    QDir().mkpath(folder);
    const QStringList names = {QStringLiteral("Blick \"zum\" Meer.bmp"),
                               QStringLiteral("café Ø.bmp"), QStringLiteral("日本 の 海.bmp"),
                               QStringLiteral(" leading space.bmp")};
    for (const QString& name : names) {
        ASSERT_TRUE(Picture(20, 10, Qt::red).save(folder + name, "BMP")) << name.toStdString();
        EXPECT_EQ(LoadPicture(folder + name).size(), QSize(20, 10)) << name.toStdString();
        EXPECT_EQ(PictureSize(folder + name), QSize(20, 10)) << name.toStdString();
    }

    // A show of them reads back with the same names (a double quote cannot stand inside the
    // show file's quoted fields, so that one is left out).
    for (const QString& name : names.mid(1))
        CurrentShow().slides.append(NewSlide(folder + name));
    const QString path = folder + QStringLiteral("Reise – ü.kav");
    ASSERT_TRUE(WriteSlideShow(path));
    ResetShow();
    ASSERT_TRUE(ReadSlideShow(path));
    ASSERT_EQ(CurrentShow().slides.size(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(CurrentShow().slides[i].SlideFile, folder + names[i + 1]);

    // Descriptions of them too.
    ReadDescriptionFile(folder);
    SetDescription(names[2], QStringLiteral("Fuji über den Wolken – 富士山"));
    ASSERT_TRUE(WriteDescriptionFile(folder));
    EXPECT_EQ(GetDescription(folder + names[2]), QStringLiteral("Fuji über den Wolken – 富士山"));

    // And copying and moving them keeps their names.
    const QString other = root() + QStringLiteral("Ziel ✓/");
    QDir().mkpath(other);
    for (const QString& name : names)
        EXPECT_TRUE(CopyFileOver(folder + name, other + name)) << name.toStdString();
    EXPECT_TRUE(MoveFileOver(other + names[0], other + names[2]));
    EXPECT_EQ(entries(other).size(), 3);
}
