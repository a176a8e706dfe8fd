#include "slideshow/DescriptionFile.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <QFileInfo>

using namespace kavori;

class DescriptionFileTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        CurrentDescriptions() = DescriptionTable();
    }
    QString folder() { return root() + QStringLiteral("pics/"); }
    QString writeDescriptions(const QByteArray& body)
    {
        return writeFile(folder() + QStringLiteral("!Description"),
                         "Kavori Description File\r\n------------------------------\r\n" + body);
    }
};

TEST_F(DescriptionFileTest, ReadLookUpChangeAndWrite)
{
    EXPECT_EQ(ReadDescriptionFile(folder()), 0);
    writeDescriptions("photo.JPG\r\n  Sunset at the lake  \r\n\r\nlost text\r\nb.bmp\r\nBlue\r\n");
    EXPECT_EQ(ReadDescriptionFile(folder()), 2);
    EXPECT_EQ(CurrentDescriptions().DescText[0], "Sunset at the lake");
    // The name is found without regard to case, through a full path.
    EXPECT_EQ(GetDescription(folder() + QStringLiteral("PHOTO.jpg")), "Sunset at the lake");
    EXPECT_EQ(GetDescription(folder() + QStringLiteral("none.jpg")), "");
    EXPECT_EQ(GetDescription(QStringLiteral("photo.jpg")), "");

    ReadDescriptionFile(folder());
    SetDescription(QStringLiteral("B.BMP"), QStringLiteral("Deep blue"));
    SetDescription(QStringLiteral("c.gif"), QStringLiteral("New one"));
    ASSERT_TRUE(WriteDescriptionFile(folder()));
    EXPECT_EQ(
        readFile(folder() + QStringLiteral("!Description")),
        "Kavori Description File\r\n------------------------------\r\nphoto.JPG\r\nSunset at the lake\r\n"
        "b.bmp\r\nDeep blue\r\nc.gif\r\nNew one\r\n");

    // Removing the first of three moves the others up.
    RemoveDescription(QStringLiteral("photo.jpg"));
    EXPECT_EQ(CurrentDescriptions().DescFileName, QStringList({"b.bmp", "c.gif"}));

    // A description with a comma is cut there and the rest shifts the pairs, as always.
    CurrentDescriptions() = DescriptionTable();
    SetDescription(QStringLiteral("flag.jpg"), QStringLiteral("red, white"));
    SetDescription(QStringLiteral("next.jpg"), QStringLiteral("after"));
    WriteDescriptionFile(folder());
    EXPECT_EQ(ReadDescriptionFile(folder()), 3);
    EXPECT_EQ(CurrentDescriptions().DescText[0], "red");
    EXPECT_EQ(CurrentDescriptions().DescFileName[1], "white");
    EXPECT_EQ(CurrentDescriptions().DescText[1], "next.jpg");
}

TEST_F(DescriptionFileTest, EmptyForeignAndFullFiles)
{
    // The header alone reads as no entries; writing an empty table deletes our file...
    writeDescriptions("");
    EXPECT_EQ(ReadDescriptionFile(folder()), 0);
    ASSERT_TRUE(WriteDescriptionFile(folder()));
    EXPECT_FALSE(QFileInfo::exists(folder() + QStringLiteral("!Description")));
    // ...but never a foreign file of the same name.
    writeFile(folder() + QStringLiteral("!Description"), "Somebody else's notes\r\n");
    EXPECT_EQ(ReadDescriptionFile(folder()), -1);
    WriteDescriptionFile(folder());
    EXPECT_TRUE(QFileInfo::exists(folder() + QStringLiteral("!Description")));

    // 10,000 are read; the table's last slot takes any more, replaced each time, with a message.
    QByteArray many;
    for (int i = 0; i < 10005; ++i)
        many += "f" + QByteArray::number(i) + ".jpg\r\nt\r\n";
    writeDescriptions(many);
    EXPECT_EQ(ReadDescriptionFile(folder()), 10000);
    SetDescription(QStringLiteral("extra1.jpg"), QStringLiteral("one"));
    EXPECT_EQ(
        prompts().texts(),
        QStringList(
            {"The description file is full.\r\nOnly 10,000 descriptions may be added to this file at one time..."}));
    SetDescription(QStringLiteral("extra2.jpg"), QStringLiteral("two"));
    EXPECT_EQ(CurrentDescriptions().DescFileName.size(), 10001);
    EXPECT_EQ(CurrentDescriptions().DescFileName[10000], "extra2.jpg");
    EXPECT_EQ(prompts().calls.size(), 2);
}

TEST_F(DescriptionFileTest, SlideDescriptionLook)
{
    Settings& s = CurrentSettings();
    s.SlideDescFont = QStringLiteral("DejaVu Sans");
    s.SlideDescSize = 20;
    DescriptionLook look = ParseDescProps(QString());
    EXPECT_EQ(look.font, "DejaVu Sans");
    EXPECT_EQ(look.size, 20);
    EXPECT_EQ(BuildDescProps(look), ""); // not custom: the slide uses the defaults
    look.custom = 1;
    look.location = 20;
    look.foreColor = 16777215;
    const QString props = BuildDescProps(look);
    EXPECT_EQ(props, "1,20,5,DejaVu Sans,20,0,16777215,0,0,1,0,0,3,0");
    const DescriptionLook back = ParseDescProps(props);
    EXPECT_EQ(BuildDescProps(back), props);
    EXPECT_EQ(ParseDescProps(QStringLiteral("1,3,x,,9")).font, "MS Sans Serif");
    EXPECT_EQ(ParseDescProps(QStringLiteral("1,3,x,,9")).speed, 5);
    EXPECT_EQ(ParseDescProps(QStringLiteral("1,3,x,,9")).size, 9);
    const QStringList places = DescriptionLocations();
    ASSERT_EQ(places.size(), 22); // codes 0 to 21, as SlideDescLoc allows
    EXPECT_EQ(places[5], "Bottom");
    EXPECT_EQ(places[21], "<Bouncing>");
}

TEST_F(DescriptionFileTest, VerifyAndRepair)
{
    writeFile(folder() + QStringLiteral("a.jpg"), "x");
    writeFile(folder() + QStringLiteral("b.jpg"), "x");
    writeDescriptions(
        "a.jpg\r\nGood\r\n\r\nOrphan text\r\nb.jpg\r\n\r\ngone.jpg\r\nText\r\ngone2.jpg\r\nMore\r\n");
    const DescriptionProblems p = CheckDescriptionFile(folder());
    EXPECT_EQ(p.withoutFileName, 1);
    EXPECT_EQ(p.withoutDescription, 1);
    EXPECT_EQ(p.missingFiles, 2);
    EXPECT_EQ(
        DescriptionReport(p),
        "The following problem(s) were found in the selected description file:\r\n\r\n"
        "  * One description without filename.\r\n  * One filename without description.\r\n"
        "  * 2 filenames could not be found.\r\n\r\nWARNING: Description text may be lost!\r\n\r\n"
        "Attempt to repair these problems?");
    ASSERT_TRUE(RepairDescriptionFile(folder()));
    EXPECT_FALSE(CheckDescriptionFile(folder()).any());
    EXPECT_EQ(DescriptionReport(CheckDescriptionFile(folder())),
              "There are no problems with the selected description file...");
    EXPECT_EQ(ReadDescriptionFile(folder()), 1);
    DescriptionProblems many;
    many.withoutFileName = 1200;
    EXPECT_TRUE(DescriptionReport(many).contains("  * 1,200 descriptions without filenames."));
}

TEST_F(DescriptionFileTest, VerifyAndRepairFindNamesWithoutRegardToCase)
{
    writeFile(folder() + QStringLiteral("img_1.jpg"), "x");
    writeFile(folder() + QStringLiteral("Beach.JPG"), "x");
    writeDescriptions("IMG_1.JPG\r\nFirst\r\nbeach.jpg\r\nSecond\r\nmissing.jpg\r\nThird\r\n");
    EXPECT_EQ(GetDescription(folder() + QStringLiteral("img_1.jpg")), "First");

    const DescriptionProblems p = CheckDescriptionFile(folder());
    EXPECT_EQ(p.missingFiles, 1);
    EXPECT_EQ(p.withoutFileName + p.withoutDescription, 0);

    // Repair drops only what no lookup can find, and keeps the names as written.
    ASSERT_TRUE(RepairDescriptionFile(folder()));
    EXPECT_EQ(ReadDescriptionFile(folder()), 2);
    EXPECT_EQ(CurrentDescriptions().DescFileName, QStringList({"IMG_1.JPG", "beach.jpg"}));
    EXPECT_EQ(GetDescription(folder() + QStringLiteral("img_1.jpg")), "First");
    EXPECT_EQ(GetDescription(folder() + QStringLiteral("Beach.JPG")), "Second");
    EXPECT_FALSE(CheckDescriptionFile(folder()).any());
}
