#include "settings/IniStore.h"
#include "support/KavoriTest.h"

#include <QFile>

using namespace kavori;

class IniStoreTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ClearIni();
    }
    void TearDown() override
    {
        ClearIni();
        KavoriTest::TearDown();
    }
};

TEST_F(IniStoreTest, RealisticFileLoadsChangesAndSavesToExactBytes)
{
    const QByteArray original = "Orphan=before any section\r\n"
                                "; Kavori settings\r\n"
                                "[Viewer]\r\n"
                                "   QualityJPG=9   \r\n"
                                "SlideInterval =7\r\n"
                                "Recent1=/pictures/a,b.jpg\r\n"
                                "\r\n"
                                "\r\n"
                                "SoundFile=\r\n"
                                "; a comment inside the section\r\n"
                                "[Package]\r\n"
                                "PackageName=\"Holiday, 2026\"\r\n"
                                "[Viewer]\r\n"
                                "QualityJPG=3\r\n"
                                "[viewer]\r\n"
                                "Lower=1";
    const QString path = writeFile(QStringLiteral("KAVORI.INI"), original);
    LoadIniFile(path);

    // Sections and keys are case-sensitive; only the first [Viewer] counts; a key before any
    // section and a key with a blank before "=" are never found.
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("QualityJPG")), "9");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Orphan")), "");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("SlideInterval")), "");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Lower")), "");
    EXPECT_EQ(GetIniValue(QStringLiteral("viewer"), QStringLiteral("Lower")), "1");
    EXPECT_EQ(GetIniValue(QStringLiteral("VIEWER"), QStringLiteral("QualityJPG")), "");
    // A comma splits the line: the value keeps what stands before it.
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Recent1")), "/pictures/a");
    // A quote inside a line is kept as it stands, and the comma still splits.
    EXPECT_EQ(GetIniValue(QStringLiteral("Package"), QStringLiteral("PackageName")), "\"Holiday");
    // "Key=" with nothing after it reads the same as a missing key.
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("SoundFile")), "");
    // A key of another section is not found in this one; comments never end a section.
    EXPECT_EQ(GetIniValue(QStringLiteral("Package"), QStringLiteral("QualityJPG")), "");
    EXPECT_EQ(GetIniValue(QString(), QStringLiteral("QualityJPG")), "");

    SetIniValue(QStringLiteral("Viewer"), QStringLiteral("QualityJPG"), QStringLiteral("10"));
    SetIniValue(QStringLiteral("Viewer"), QStringLiteral("NewKey"), QStringLiteral("x"));
    SetIniValue(QStringLiteral("Package"), QStringLiteral("PackageSize"), QStringLiteral("1.44"));
    SetIniValue(QStringLiteral("Fresh"), QStringLiteral("Key"), QStringLiteral("v"));
    SetIniValue(QStringLiteral("Viewer"), QString(), QStringLiteral("ignored"));
    ASSERT_TRUE(SaveIniFile(path));
    EXPECT_EQ(IniLineCount(), 0);

    const QByteArray expected = "Orphan=before any section\r\n"
                                "; Kavori settings\r\n"
                                "\r\n"
                                "[Viewer]\r\n"
                                "QualityJPG=10\r\n"
                                "SlideInterval =7\r\n"
                                "Recent1=/pictures/a\r\n"
                                "b.jpg\r\n"
                                "SoundFile=\r\n"
                                "; a comment inside the section\r\n"
                                "NewKey=x\r\n"
                                "\r\n"
                                "[Package]\r\n"
                                "PackageName=\"Holiday\r\n"
                                "2026\"\r\n"
                                "PackageSize=1.44\r\n"
                                "\r\n"
                                "[Viewer]\r\n"
                                "QualityJPG=3\r\n"
                                "\r\n"
                                "[viewer]\r\n"
                                "Lower=1\r\n"
                                "\r\n"
                                "[Fresh]\r\n"
                                "Key=v\r\n";
    EXPECT_EQ(QString::fromUtf8(readFile(path)).toStdString(),
              QString::fromUtf8(expected).toStdString());

    // A normalised file loads and saves back unchanged.
    LoadIniFile(path);
    ASSERT_TRUE(SaveIniFile(path));
    EXPECT_EQ(QString::fromUtf8(readFile(path)).toStdString(),
              QString::fromUtf8(expected).toStdString());
}

TEST_F(IniStoreTest, LimitsOfLinesAndLength)
{
    QByteArray big;
    big += "[Viewer]\r\n";
    for (int i = 1; i < 1200; ++i)
        big += "Key" + QByteArray::number(i) + "=" + QByteArray::number(i) + "\r\n";
    const QString path = writeFile(QStringLiteral("big.ini"), big);
    LoadIniFile(path);
    EXPECT_EQ(IniLineCount(), 1001);
    EXPECT_EQ(IniLines().last(), "Key1000=1000");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Key1000")), "1000");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Key1001")), "");
    // A full store ignores writes, even to keys it holds.
    SetIniValue(QStringLiteral("Viewer"), QStringLiteral("Key1"), QStringLiteral("changed"));
    SetIniValue(QStringLiteral("Other"), QStringLiteral("K"), QStringLiteral("v"));
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Key1")), "1");
    ASSERT_TRUE(SaveIniFile(path));
    LoadIniFile(path);
    EXPECT_EQ(IniLineCount(), 1001);

    // 1,000 lines leave room for one more section of two lines: 1,002 at the most.
    ClearIni();
    for (int i = 0; i < 1000; ++i)
        SetIniValue(QStringLiteral("S"), QStringLiteral("K") + QString::number(i),
                    QStringLiteral("v"));
    EXPECT_EQ(IniLineCount(), 1001);
    ClearIni();
    for (int i = 0; i < 999; ++i)
        SetIniValue(QStringLiteral("S"), QStringLiteral("K") + QString::number(i),
                    QStringLiteral("v"));
    SetIniValue(QStringLiteral("T"), QStringLiteral("K"), QStringLiteral("v"));
    EXPECT_EQ(IniLineCount(), 1002);

    // A line of 100,000 characters is cut to 500.
    const QString longPath = writeFile(QStringLiteral("long.ini"),
                                       "[A]\r\nK=" + QByteArray(100000, 'x') + "\r\nL=1\r\n");
    LoadIniFile(longPath);
    EXPECT_EQ(GetIniValue(QStringLiteral("A"), QStringLiteral("K")).size(), 498);
    EXPECT_EQ(GetIniValue(QStringLiteral("A"), QStringLiteral("L")), "1");
}

TEST_F(IniStoreTest, DamagedAndMissingFiles)
{
    // A missing file, a folder, and an unreadable file read as empty stores.
    LoadIniFile(root() + QStringLiteral("missing.ini"));
    EXPECT_EQ(IniLineCount(), 0);
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("QualityJPG")), "");
    LoadIniFile(root());
    EXPECT_EQ(IniLineCount(), 0);
    const QString locked = writeFile(QStringLiteral("locked.ini"), "[A]\r\nK=1\r\n");
    QFile::setPermissions(locked, QFileDevice::Permissions());
    LoadIniFile(locked);
    if (QFile(locked).open(QIODevice::ReadOnly)) // running as root reads it anyway
        EXPECT_EQ(IniLineCount(), 2);
    else
        EXPECT_EQ(IniLineCount(), 0);

    // Binary garbage loads some lines, never more than allowed, and never crashes.
    QByteArray garbage;
    for (int i = 0; i < 200000; ++i)
        garbage.append(char((i * 2654435761u) >> 13));
    LoadIniFile(writeFile(QStringLiteral("garbage.ini"), garbage));
    EXPECT_LE(IniLineCount(), 1001);
    for (const QString& line : IniLines()) {
        EXPECT_FALSE(line.isEmpty());
        EXPECT_LE(line.size(), 500);
    }
    GetIniValue(QStringLiteral("Viewer"), QStringLiteral("QualityJPG"));

    // Saving over a folder fails and leaves the folder alone; an empty store writes an empty file.
    SetIniValue(QStringLiteral("A"), QStringLiteral("K"), QStringLiteral("1"));
    EXPECT_FALSE(SaveIniFile(root()));
    ClearIni();
    const QString empty = root() + QStringLiteral("empty.ini");
    ASSERT_TRUE(SaveIniFile(empty));
    EXPECT_EQ(readFile(empty), "");
    // Setting into an empty store gives exactly the header and the key.
    SetIniValue(QStringLiteral("Viewer"), QStringLiteral("Color256Msg"), QStringLiteral("False"));
    EXPECT_EQ(IniLines(), QStringList({"[Viewer]", "Color256Msg=False"}));
}
