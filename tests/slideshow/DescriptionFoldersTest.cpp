#include "slideshow/DescriptionFolders.h"
#include "slideshow/DescriptionFile.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace kavori;

namespace {

QByteArray descriptions(const QByteArray& body)
{
    return "Kavori Description File\r\n------------------------------\r\n" + body;
}

} // namespace

class DescriptionFoldersTest : public kavori::test::KavoriTest {};

TEST_F(DescriptionFoldersTest, WhatAFolderCanDescribeAndItsRefusals)
{
    const QString folder = root() + QStringLiteral("pics/");
    QDir().mkpath(folder);
    EXPECT_EQ(CreateDescriptionRefusal(folder),
              "There are no supported files in this folder, unable to create description file...");
    writeFile(QStringLiteral("pics/notes.txt"), "not a picture");
    EXPECT_EQ(AddDescriptionRefusal(folder),
              "There are no supported files in this folder, unable to create description file...");

    writeFile(QStringLiteral("pics/img10.jpg"), "x");
    writeFile(QStringLiteral("pics/img9.JPG"), "x");
    writeFile(QStringLiteral("pics/clip.avi"), "x");
    EXPECT_EQ(SupportedFiles(folder), QStringList({"clip.avi", "img9.JPG", "img10.jpg"}));
    EXPECT_EQ(CreateDescriptionRefusal(folder), "");
    writeFile(QStringLiteral("pics/!Description"), descriptions("IMG9.jpg\r\nNine\r\n"));
    EXPECT_EQ(FilesWithoutDescriptions(folder), QStringList({"clip.avi", "img10.jpg"}));
    EXPECT_EQ(AddDescriptionRefusal(folder), "");
    writeFile(QStringLiteral("pics/!Description"),
              descriptions("IMG9.jpg\r\nNine\r\nimg10.jpg\r\nTen\r\nclip.avi\r\nMoving\r\n"));
    EXPECT_EQ(AddDescriptionRefusal(folder),
              "All of the supported files in this folder already have descriptions...");

    // A folder nobody may write to is refused before anything else.
    const QString locked = root() + QStringLiteral("locked/");
    writeFile(QStringLiteral("locked/a.jpg"), "x");
    QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    if (!QFileInfo(locked).isWritable()) { // root may write anywhere
        EXPECT_EQ(CreateDescriptionRefusal(locked),
                  "You may not create a description file on a read-only drive such as a "
                  "CD-ROM...");
    }
    QFile::setPermissions(locked,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(CreateDescriptionRefusal(root() + QStringLiteral("nowhere/")),
              "You may not create a description file on a read-only drive such as a CD-ROM...");

    // Details of a file and the heading of a list.
    EXPECT_EQ(DescriptionFileDetails(folder + QStringLiteral("!Description")),
              "Selected description file:\r\n" + folder +
                  "!Description\r\n\r\nNumber of "
                  "descriptions = 3\r\nFile size = 107 bytes");
    EXPECT_EQ(DescriptionFileDetails(root() + QStringLiteral("gone/!Description")),
              "Selected description file:\r\n" + root() +
                  "gone/!Description\r\n\r\nNumber of "
                  "descriptions = 0\r\n(Unable to get file size.)");
    EXPECT_EQ(DescriptionListHeading(0), "No description files were found...");
    EXPECT_EQ(DescriptionListHeading(1), "Found one description file:");
    EXPECT_EQ(DescriptionListHeading(12), "Found 12 description files:");
    EXPECT_EQ(RemoveDescriptionQuestion("a.jpg", "Sunset"),
              "Remove the following file description?\r\n\r\na.jpg\r\nSunset");
}

TEST_F(DescriptionFoldersTest, SearchFindsFilesAndTextsAndSaysWhatItFound)
{
    writeFile(QStringLiteral("tree/a/!Description"),
              descriptions("x.jpg\r\nSunset over the sea\r\ny.jpg\r\nSUNSET again and sunset\r\n"));
    writeFile(QStringLiteral("tree/a/deeper/!description"), descriptions("z.jpg\r\nMountains\r\n"));
    writeFile(QStringLiteral("tree/b/!Description"), "Somebody else's notes\r\n");
    writeFile(QStringLiteral("tree/c10/!Description"), descriptions("q.jpg\r\nsunset\r\n"));
    writeFile(QStringLiteral("tree/c9/!Description"), descriptions(""));
    writeFile(QStringLiteral("tree/c9/pic.jpg"), "x");
    QFile::link(root() + QStringLiteral("tree"), root() + QStringLiteral("tree/c9/loop"));
    const QString tree = root() + QStringLiteral("tree");

    // Every description file of ours, depth first in natural order; a link is never followed.
    DescriptionSearch all = SearchDescriptionFiles(tree, QString());
    EXPECT_EQ(all.files, QStringList({tree + "/a/!Description", tree + "/a/deeper/!description",
                                      tree + "/c9/!Description", tree + "/c10/!Description"}));
    EXPECT_FALSE(all.cancelled);
    SearchTexts texts = DescriptionSearchTexts(all, QString());
    EXPECT_EQ(texts.heading, "Found 4 description files:");
    EXPECT_EQ(texts.hint, "(Double-click file for details.)");
    EXPECT_EQ(texts.message, "Finished searching the selected drive for description files...");

    // A text, without regard to case, counted each time it occurs.
    DescriptionSearch sunset = SearchDescriptionFiles(tree, QStringLiteral("sunset"));
    EXPECT_EQ(sunset.files, QStringList({tree + "/a/!Description", tree + "/c10/!Description"}));
    EXPECT_EQ(sunset.hits, QVector<int>({3, 1}));
    texts = DescriptionSearchTexts(sunset, QStringLiteral("sunset"));
    EXPECT_EQ(texts.heading, "sunset was found in 2 description file(s) a total of 4 time(s).");
    EXPECT_EQ(texts.message, "Finished searching the selected drive for description files...");

    texts = DescriptionSearchTexts(SearchDescriptionFiles(tree, QStringLiteral("desert")),
                                   QStringLiteral("desert"));
    EXPECT_EQ(texts.heading, "The following description text could not be found:\r\ndesert");
    EXPECT_EQ(texts.message, texts.heading);
    EXPECT_EQ(texts.hint, "");

    texts = DescriptionSearchTexts(SearchDescriptionFiles(root() + QStringLiteral("tree/b"), {}),
                                   QString());
    EXPECT_EQ(texts.heading, "No description files were found...");
    EXPECT_EQ(texts.message, "No description files were found on the selected drive...");

    // Cancelled before it starts: nothing found, and it says so.
    std::atomic<bool> cancel{true};
    const DescriptionSearch stopped = SearchDescriptionFiles(tree, QString(), &cancel);
    EXPECT_TRUE(stopped.cancelled);
    EXPECT_TRUE(stopped.files.isEmpty());

    EXPECT_EQ(SearchQuestion(QStringLiteral("/media/disk")),
              "About to search /media/disk for description files.\r\n\r\nThis could take "
              "several minutes to complete...");

    // Deleting takes only our files.
    EXPECT_EQ(DeleteDescriptionFiles(
                  {tree + "/a/!Description", tree + "/b/!Description", tree + "/c9/pic.jpg"}),
              1);
    EXPECT_FALSE(QFileInfo::exists(tree + "/a/!Description"));
    EXPECT_TRUE(QFileInfo::exists(tree + "/b/!Description"));
    EXPECT_TRUE(QFileInfo::exists(tree + "/c9/pic.jpg"));
}

TEST_F(DescriptionFoldersTest, VerifyAndRepairADamagedFileThenFindItClean)
{
    // A file cut short and edited by hand: a text without its name, a name without text, a
    // picture since deleted, and a last name with no line after it.
    writeFile(QStringLiteral("d/keep.jpg"), "x");
    writeFile(QStringLiteral("d/blank.jpg"), "x");
    writeFile(QStringLiteral("d/!Description"),
              descriptions("keep.jpg\r\nKept\r\n\r\nstray text\r\nblank.jpg\r\n\r\n"
                           "deleted.jpg\r\nOld\r\nkeep.jpg"));
    const QString folder = root() + QStringLiteral("d");
    const DescriptionProblems p = CheckDescriptionFile(folder);
    EXPECT_EQ(p.withoutFileName, 1);
    EXPECT_EQ(p.withoutDescription, 2);
    EXPECT_EQ(p.missingFiles, 1);
    EXPECT_TRUE(DescriptionReport(p).contains("  * 2 filenames without descriptions."));
    ASSERT_TRUE(RepairDescriptionFile(folder));
    EXPECT_EQ(readFile(folder + QStringLiteral("/!Description")),
              descriptions("keep.jpg\r\nKept\r\n"));
    EXPECT_FALSE(CheckDescriptionFile(folder).any());
    EXPECT_EQ(SearchDescriptionFiles(root(), QStringLiteral("kept")).totalHits, 1);
}
