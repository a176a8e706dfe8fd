#include "fileutil/ZipArchive.h"
#include "files/ZipCommands.h"
#include "runtime/MsgBox.h"
#include "support/FakeProgress.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QImage>

#include <zip.h>

using namespace kavori;
using kavori::test::FakeProgress;

namespace {

// An archive as it unpacks: each entry's name, how it was stored and its bytes.
struct Unpacked {
    QString name;
    bool stored = false;
    QByteArray bytes;
};

QList<Unpacked> unpack(const QString& archive)
{
    QList<Unpacked> entries;
    int error = 0;
    zip_t* zip =
        zip_open(QFile::encodeName(archive).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (!zip)
        return entries;
    for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
        zip_stat_t st;
        zip_stat_index(zip, zip_uint64_t(i), 0, &st);
        QByteArray bytes(qsizetype(st.size), '\0');
        zip_file_t* file = zip_fopen_index(zip, zip_uint64_t(i), 0);
        zip_fread(file, bytes.data(), st.size);
        zip_fclose(file);
        entries.append({QString::fromUtf8(st.name), st.comp_method == ZIP_CM_STORE, bytes});
    }
    zip_close(zip);
    return entries;
}

QStringList namesOf(const QList<Unpacked>& entries)
{
    QStringList names;
    for (const Unpacked& e : entries)
        names << e.name;
    return names;
}

} // namespace

class ZipArchiveTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        trip = root() + QStringLiteral("Trip/");
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QDir().mkpath(trip + QStringLiteral("day 2"));
        ASSERT_TRUE(picture.save(trip + QStringLiteral("harbour.jpg"), "JPEG"));
        ASSERT_TRUE(picture.save(trip + QStringLiteral("Café.bmp"), "BMP"));
        ASSERT_TRUE(picture.save(trip + QStringLiteral("day 2/hill.gif"), "GIF") ||
                    picture.save(trip + QStringLiteral("day 2/hill.gif"), "BMP"));
        writeFile(QStringLiteral("Trip/notes.txt"), "not a picture");
        QFile::link(root() + QStringLiteral("elsewhere.bmp"), trip + QStringLiteral("link.bmp"));
        writeFile(QStringLiteral("elsewhere.bmp"), "outside the folder");
    }
    QStringList partFiles(const QString& folder) const
    {
        return QDir(folder).entryList({QStringLiteral("*.part")}, QDir::Files | QDir::Hidden);
    }
    QString trip;
};

TEST_F(ZipArchiveTest, PicturesAndFoldersUnpackAsTheyWere)
{
    // A folder's pictures: its own, not its sub-folders', not other files. Photos are stored,
    // bitmaps deflated; every byte comes back.
    QList<ZipEntry> pictures = FolderPictureEntries(trip);
    pictures.removeIf([](const ZipEntry& e) { return e.name == QStringLiteral("link.bmp"); });
    FakeProgress progress;
    const QString archive = root() + QStringLiteral("pictures.zip");
    ASSERT_EQ(WriteZip(archive, pictures, progress).result, ZipResult::Done);
    QList<Unpacked> entries = unpack(archive);
    ASSERT_EQ(namesOf(entries), QStringList({"Café.bmp", "harbour.jpg"}));
    EXPECT_FALSE(entries[0].stored);
    EXPECT_TRUE(entries[1].stored);
    EXPECT_EQ(entries[0].bytes, readFile(trip + QStringLiteral("Café.bmp")));
    EXPECT_EQ(entries[1].bytes, readFile(trip + QStringLiteral("harbour.jpg")));

    // A whole folder unpacks into one folder of its name; a link out of it is not followed.
    const QList<ZipEntry> tree = FolderTreeEntries(trip, progress);
    const QString whole = root() + QStringLiteral("whole.zip");
    ASSERT_EQ(WriteZip(whole, tree, progress).result, ZipResult::Done);
    EXPECT_EQ(namesOf(unpack(whole)), QStringList({"Trip/Café.bmp", "Trip/day 2/hill.gif",
                                                   "Trip/harbour.jpg", "Trip/notes.txt"}));

    // Nothing to pack still makes an archive that opens, empty.
    const QString empty = root() + QStringLiteral("empty.zip");
    ASSERT_EQ(WriteZip(empty, {}, progress).result, ZipResult::Done);
    EXPECT_TRUE(QFileInfo::exists(empty));
    EXPECT_TRUE(unpack(empty).isEmpty());
    EXPECT_EQ(ZipNameFor(trip), root() + QStringLiteral("Trip.zip"));
    EXPECT_EQ(ZipNameFor(trip + QStringLiteral("harbour.jpg")),
              trip + QStringLiteral("harbour.zip"));
}

TEST_F(ZipArchiveTest, CancelAndFailureLeaveTheOldArchiveWhole)
{
    const QString archive = writeFile(QStringLiteral("out/Trip.zip"), "an older archive");
    const QList<ZipEntry> pictures = FolderPictureEntries(trip);

    FakeProgress cancelling;
    cancelling.cancelAfter = 0;
    EXPECT_EQ(WriteZip(archive, pictures, cancelling).result, ZipResult::Cancelled);
    EXPECT_EQ(readFile(archive), "an older archive");
    EXPECT_TRUE(partFiles(root() + QStringLiteral("out")).isEmpty());

    // A file that went away between listing and packing names itself.
    FakeProgress progress;
    QList<ZipEntry> gone = pictures;
    gone.append({trip + QStringLiteral("vanished.jpg"), QStringLiteral("vanished.jpg")});
    const ZipOutcome outcome = WriteZip(archive, gone, progress);
    EXPECT_EQ(outcome.result, ZipResult::Failed);
    EXPECT_EQ(readFile(archive), "an older archive");
    EXPECT_TRUE(partFiles(root() + QStringLiteral("out")).isEmpty());

    // A folder that cannot take the archive.
    EXPECT_EQ(WriteZip(root() + QStringLiteral("no such folder/a.zip"), pictures, progress).result,
              ZipResult::Failed);
}

TEST_F(ZipArchiveTest, TheZipMenuFromTheMainWindow)
{
    CurrentSettings().StartupDialog = 0;
    MainViewFrm w;
    auto run = [&w](const char* name) {
        QAction* action = w.menus().action(QString::fromLatin1(name));
        ASSERT_TRUE(action && action->isEnabled()) << name;
        action->trigger();
    };

    // No picture yet: said so, nothing asked.
    run("mnuZipCurImage");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, "An image has not been opened yet, unable to zip it...");

    // The picture on the screen, into the name the user gives (".zip" added).
    ASSERT_TRUE(w.openImage(trip + QStringLiteral("harbour.jpg")));
    prompts().clear();
    prompts().files = {root() + QStringLiteral("mine")};
    run("mnuZipCurImage");
    EXPECT_EQ(namesOf(unpack(root() + QStringLiteral("mine.zip"))), QStringList({"harbour.jpg"}));

    // A folder's pictures, and a folder without any.
    prompts().files = {trip, root() + QStringLiteral("pics.zip")};
    run("mnuZipImgFolder");
    EXPECT_EQ(unpack(root() + QStringLiteral("pics.zip")).size(), 3); // with the link's target
    QDir().mkpath(root() + QStringLiteral("bare"));
    prompts().clear();
    prompts().files = {root() + QStringLiteral("bare")};
    run("mnuZipImgFolder");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        QStringLiteral("There are no images in this folder to zip:")));

    // A whole folder, saved inside itself over an older archive: the old one is not packed.
    writeFile(QStringLiteral("Trip/Trip.zip"), "older");
    prompts().files = {trip, trip + QStringLiteral("Trip.zip")};
    run("mnuZipFolder");
    const QStringList names = namesOf(unpack(trip + QStringLiteral("Trip.zip")));
    EXPECT_TRUE(names.contains(QStringLiteral("Trip/day 2/hill.gif")));
    EXPECT_FALSE(names.contains(QStringLiteral("Trip/Trip.zip")));
}
