#include "fileutil/FileSearch.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFile>

using namespace kavori;

class FileSearchTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        tree = root() + QStringLiteral("tree/");
        for (const char* name :
             {"Holiday 10.jpg", "holiday 2.JPG", "notes.txt", "Trip.KAV", "b/Beach.png",
              "b/deep/holiday-sea.bmp", "b/deep/Old.kav", "b/deep/holiday.kav.bak", "a/HOLIDAY.gif",
              "a/other.Kav", ".hidden/holiday.jpg"})
            writeFile(QStringLiteral("tree/") + QString::fromLatin1(name), "x");
    }
    QStringList names(const FileSearchResult& r) const
    {
        QStringList out;
        for (const FoundFile& f : r.files)
            out << QString(f.path).remove(tree);
        return out;
    }
    QString tree;
};

TEST_F(FileSearchTest, NamesMatchByPartOrWildcardWithoutRegardToCase)
{
    const NameMatcher part(QStringLiteral("liDAy"));
    EXPECT_TRUE(part.matches(QStringLiteral("Holiday 10.jpg")));
    EXPECT_FALSE(part.matches(QStringLiteral("beach.jpg")));

    // A wildcard is the whole name: "holi*" does not find "my holiday.jpg".
    const NameMatcher wild(QStringLiteral("holi*.JP?"));
    EXPECT_TRUE(wild.matches(QStringLiteral("holiday 2.jpg")));
    EXPECT_TRUE(wild.matches(QStringLiteral("HOLI.jpe")));
    EXPECT_FALSE(wild.matches(QStringLiteral("my holiday.jpg")));
    EXPECT_FALSE(wild.matches(QStringLiteral("holiday.jpeg")));

    // Several names, and characters that mean something to a regular expression.
    const NameMatcher several(QStringLiteral(" *.png ; (1)+ "));
    EXPECT_TRUE(several.matches(QStringLiteral("a.PNG")));
    EXPECT_TRUE(several.matches(QStringLiteral("copy (1)+.jpg")));
    EXPECT_FALSE(several.matches(QStringLiteral("copy 1.jpg")));

    // Nothing typed: everything.
    EXPECT_TRUE(NameMatcher(QString()).matches(QStringLiteral("any.bmp")));
    EXPECT_TRUE(NameMatcher(QStringLiteral(" ; ")).matches(QStringLiteral("any.bmp")));
}

TEST_F(FileSearchTest, FindsPicturesOrShowsInEverySubfolder)
{
    std::atomic<int> found{0};
    const FileSearchResult pictures =
        FindFiles(tree, QStringLiteral("holiday"), FindKind::Pictures, nullptr, &found);
    EXPECT_FALSE(pictures.cancelled);
    // Depth first, folders and names in natural order (2 before 10); hidden folders are
    // searched too, text files and shows are no pictures.
    EXPECT_EQ(names(pictures),
              QStringList({"holiday 2.JPG", "Holiday 10.jpg", ".hidden/holiday.jpg",
                           "a/HOLIDAY.gif", "b/deep/holiday-sea.bmp"}));
    EXPECT_EQ(found.load(), 5);
    EXPECT_EQ(pictures.files.first().size, 1);
    EXPECT_TRUE(pictures.files.first().modified.isValid());

    // Shows: ".KAV" in any case, and only that ending.
    const FileSearchResult shows = FindFiles(tree, QString(), FindKind::SlideShows);
    EXPECT_EQ(names(shows), QStringList({"Trip.KAV", "a/other.Kav", "b/deep/Old.kav"}));
    EXPECT_EQ(names(FindFiles(tree, QStringLiteral("o*"), FindKind::SlideShows)),
              QStringList({"a/other.Kav", "b/deep/Old.kav"}));

    // A link to a folder is not followed, so a loop of links ends.
    ASSERT_TRUE(QFile::link(tree, tree + QStringLiteral("b/loop")));
    EXPECT_EQ(FindFiles(tree, QStringLiteral("*.png"), FindKind::Pictures).files.size(), 1);

    // Cancelled before it began: nothing, and it says so.
    const std::atomic<bool> cancel{true};
    const FileSearchResult stopped = FindFiles(tree, QString(), FindKind::Pictures, &cancel);
    EXPECT_TRUE(stopped.cancelled);
    EXPECT_TRUE(stopped.files.isEmpty());

    // A folder that is not there finds nothing and does not fail.
    EXPECT_TRUE(
        FindFiles(tree + QStringLiteral("gone"), QString(), FindKind::Pictures).files.isEmpty());
}

TEST_F(FileSearchTest, WhatTheDialogSays)
{
    EXPECT_EQ(FindRefusal(QStringLiteral("  ")), "Choose the folder to search first...");
    EXPECT_EQ(FindRefusal(tree + QStringLiteral("gone")),
              "The folder to search could not be found:\r\n\r\n" +
                  QDir::toNativeSeparators(tree + QStringLiteral("gone")) +
                  "\r\n\r\nChoose another folder and then try again...");
    EXPECT_EQ(FindRefusal(tree), QString());

    EXPECT_EQ(FindCountText(FindKind::Pictures, 0, true), "Searching... 0 pictures found");
    EXPECT_EQ(FindCountText(FindKind::Pictures, 1, false), "1 picture found");
    EXPECT_EQ(FindCountText(FindKind::SlideShows, 1234, false, true),
              "Search cancelled: 1,234 slide shows found");

    EXPECT_EQ(
        NothingFoundMessage(FindKind::Pictures, QStringLiteral(" cat* "), QStringLiteral("/p")),
        "No pictures named \"cat*\" were found in:\r\n\r\n/p\r\n\r\nor any of its subfolders.");
    EXPECT_EQ(NothingFoundMessage(FindKind::SlideShows, QString(), QStringLiteral("/p")),
              "No slide shows were found in:\r\n\r\n/p\r\n\r\nor any of its subfolders.");

    EXPECT_EQ(FoundSizeText(0), "0 KB");
    EXPECT_EQ(FoundSizeText(1), "1 KB");
    EXPECT_EQ(FoundSizeText(1024), "1 KB");
    EXPECT_EQ(FoundSizeText(1025), "2 KB");
    EXPECT_EQ(FoundSizeText(5LL * 1024 * 1024), "5,120 KB");
}
