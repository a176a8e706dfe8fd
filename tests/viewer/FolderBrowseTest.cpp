#include "viewer/FolderBrowse.h"
#include "support/KavoriTest.h"
#include "viewer/StartRequest.h"

using namespace kavori;

class FolderBrowseTest : public kavori::test::KavoriTest {};

TEST_F(FolderBrowseTest, StepsThroughTheFolderToBothEnds)
{
    for (const char* name : {"img10.jpg", "img2.JPG", "Img1.bmp", "notes.txt", "z.gif"})
        writeFile(QStringLiteral("pics/") + QString::fromLatin1(name), "x");
    const auto isImage = [](const QString& n) { return !n.endsWith(QLatin1String(".txt")); };
    const QString dir = root() + QStringLiteral("pics/");
    const QStringList list = BrowseList(root() + QStringLiteral("pics"), isImage);
    EXPECT_EQ(list,
              QStringList({dir + "Img1.bmp", dir + "img2.JPG", dir + "img10.jpg", dir + "z.gif"}));

    // Walk forward from the first to the last, then one step too far.
    QString current = BrowseFolder(list, dir + "img10.jpg", BrowseStep::First).file;
    EXPECT_EQ(current, dir + "Img1.bmp");
    QStringList seen = {current};
    for (;;) {
        const BrowseResult r = BrowseFolder(list, current, BrowseStep::Next);
        if (r.file.isEmpty()) {
            EXPECT_EQ(r.message, "The last file in the current folder is already open...");
            break;
        }
        current = r.file;
        seen << current;
    }
    EXPECT_EQ(seen, list);
    // The current file is found without regard to case.
    EXPECT_EQ(BrowseFolder(list, dir + "IMG2.jpg", BrowseStep::Previous).file, dir + "Img1.bmp");
    const BrowseResult atFirst = BrowseFolder(list, dir + "img1.BMP", BrowseStep::Previous);
    EXPECT_TRUE(atFirst.file.isEmpty());
    EXPECT_EQ(atFirst.message, "The first file in the current folder is already open...");
    EXPECT_EQ(BrowseFolder(list, dir + "Img1.bmp", BrowseStep::Last).file, dir + "z.gif");

    // One file only: the question instead of a step.
    const BrowseResult one = BrowseFolder({dir + "z.gif"}, dir + "z.gif", BrowseStep::Next);
    EXPECT_TRUE(one.onlyOneFile);
    EXPECT_EQ(OnlyOneFileQuestion(),
              "There is only one file in the current folder to browse.\r\n\r\nUse the Open Image "
              "dialog to select another folder?");
    EXPECT_TRUE(BrowseFolder({}, dir + "z.gif", BrowseStep::Next).file.isEmpty());
    EXPECT_TRUE(BrowseList(root() + QStringLiteral("missing"), isImage).isEmpty());
}

TEST(StartRequest, WordsOnTheCommandLine)
{
    struct Case {
        const char* line;
        int request;
        bool end;
        const char* message;
    };
    const char* help = "Start the program normally (don't pass command line parameters) and press "
                       "the F1 key to view help on this product...";
    const Case cases[] = {
        {"", 0, false, ""},
        {"h", 0, true, help},
        {"?", 0, true, help},
        {"Help", 0, true, help},
        {"about", 1, false, ""},
        {"A", 1, false, ""},
        {"ABOUTX", 0, false, "An invalid command (ABOUTX) was passed at the command prompt..."},
        {"slide show", 2, false, ""},
        {"Slides", 2, false, ""},
        {"s", 2, false, ""},
        {"open", 3, false, ""},
        {"language", 5, false, ""},
        {"LANGUAGE French", 5, false, ""},
        {"nonsense", 0, false, "An invalid command (nonsense) was passed at the command prompt..."},
    };
    for (const Case& c : cases) {
        const StartRequestResult r = ParseStartRequest(QString::fromLatin1(c.line));
        EXPECT_EQ(r.request, c.request) << c.line;
        EXPECT_EQ(r.endProgram, c.end) << c.line;
        EXPECT_EQ(r.message, QString::fromLatin1(c.message)) << c.line;
    }
    const StartRequestResult thumbs =
        ParseStartRequest(QStringLiteral("thumbnail /home/me/My Pictures "));
    EXPECT_EQ(thumbs.request, 4);
    EXPECT_EQ(thumbs.thumbnailFolder, "/home/me/My Pictures");
}
