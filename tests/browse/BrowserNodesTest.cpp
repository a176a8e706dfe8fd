#include "browse/BrowserNodes.h"
#include "platform/AppPaths.h"
#include "settings/Settings.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QStandardPaths>

using namespace kavori;

class BrowserNodesTest : public kavori::test::ShowTest {};

namespace {

QStringList keys(const QVector<BrowserNode>& nodes)
{
    QStringList k;
    for (const BrowserNode& n : nodes)
        k << n.key;
    return k;
}

} // namespace

TEST_F(BrowserNodesTest, SpecialNodesComeInOrderAndMyDocumentsOnlyWhenThere)
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QDir(documents).removeRecursively();
    QStringList expected = {"mycomputer", "desktop", "kavori", "favfolder",
                            "slides",     "bonus",   "quick"};
    for (int i = 1; i <= 12; ++i)
        expected << "quick" + QString::number(i);
    EXPECT_EQ(keys(SpecialNodes()), expected);

    ASSERT_TRUE(QDir().mkpath(documents));
    const QVector<BrowserNode> nodes = SpecialNodes();
    expected.insert(2, "mydocuments");
    EXPECT_EQ(keys(nodes), expected);
    QStringList captions;
    for (int i = 0; i < 8; ++i)
        captions << nodes[i].caption;
    EXPECT_EQ(captions, QStringList({"My Computer", "Desktop Folder", "My Documents", "Kavori",
                                     "Favorite Folder", "Slides Folder", "Bonus Pack Folder",
                                     "Quick Folders"}));
    EXPECT_EQ(nodes[4].parent, "kavori");
    EXPECT_EQ(nodes[8].parent, "quick");
    EXPECT_EQ(nodes[8].caption, "(not set)");
    EXPECT_EQ(ResolveNodeKey("mydocuments"), AddSlash(documents));
}

TEST_F(BrowserNodesTest, KeysResolveToTheirFolders)
{
    const QString quick = root() + "quick three";
    QDir().mkpath(quick);
    CurrentSettings().QuickFolderPath[2] = quick;
    CurrentSettings().QuickFolder[2] = "Holidays";
    CurrentSettings().FavoriteFolder = root() + "fav";
    QDir().mkpath(AppPath() + "Slides");
    QDir().mkpath(AppPath() + "BONUS");

    EXPECT_EQ(ResolveNodeKey("desktop"),
              AddSlash(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation)));
    EXPECT_EQ(ResolveNodeKey("favfolder"), root() + "fav/");
    EXPECT_EQ(ResolveNodeKey("slides"), AppPath() + "Slides/");
    EXPECT_EQ(ResolveNodeKey("bonus"), AppPath() + "BONUS/"); // found whatever its case
    EXPECT_EQ(ResolveNodeKey("quick3"), quick + "/");
    EXPECT_EQ(ResolveNodeKey("quick12"), "");
    for (const BrowserNode& n : SpecialNodes()) {
        if (n.key == "quick3") {
            EXPECT_EQ(n.caption, "Holidays");
        }
    }
    EXPECT_EQ(ResolveNodeKey("floppya"), "A:\\");
    EXPECT_EQ(ResolveNodeKey("floppyb"), "B:\\");
    EXPECT_EQ(ResolveNodeKey("C:\\ [SYSTEM]"), "C:\\");
    EXPECT_EQ(ResolveNodeKey("D:\\"), "D:\\");
    EXPECT_EQ(ResolveNodeKey("/media/stick [STICK]"), "/media/stick/");
    EXPECT_EQ(ResolveNodeKey("/"), "/");
    for (const char* key : {"mycomputer", "kavori", "quick"}) {
        EXPECT_TRUE(IsExpandOnlyNode(key)) << key;
        EXPECT_EQ(ResolveNodeKey(key), "") << key;
    }
}

TEST_F(BrowserNodesTest, DrivesGetTheirIconKeysAndCaptions)
{
    auto check = [](const QString& entry, DriveType type, const char* key, const char* caption,
                    const char* icon) {
        const BrowserNode n = DriveNode(entry, type);
        EXPECT_EQ(n.key, key) << entry.toStdString();
        EXPECT_EQ(n.caption, caption) << entry.toStdString();
        EXPECT_EQ(n.iconKey, icon) << entry.toStdString();
        EXPECT_EQ(n.parent, "mycomputer");
    };
    check("\\\\server\\share", DriveType::Remote, "\\\\server\\share", "\\\\server\\share", "net");
    check("C:\\ [SYSTEM]", DriveType::Fixed, "C:\\ [SYSTEM]", "C:\\ [SYSTEM]", "hd");
    check("A:\\", DriveType::Removable, "floppya", "Floppy Drive A:\\", "floppya");
    check("B:\\", DriveType::Removable, "floppyb", "Floppy Drive B:\\", "floppyb");
    check("E:\\", DriveType::CDRom, "E:\\", "E:\\ CD-ROM Drive", "cdrom");
    check("F:\\", DriveType::Removable, "F:\\", "F:\\ Removeable Disk", "remove");
    check("/mnt/nas/", DriveType::Remote, "/mnt/nas/", "/mnt/nas/", "net");
    check("/", DriveType::Fixed, "/", "/", "hd");

    EXPECT_EQ(DriveEntry({"/", DriveType::Fixed, "root"}), "/ [root]");
    EXPECT_EQ(DriveEntry({"/media/cd/", DriveType::CDRom, "DISC"}), "/media/cd/");
    const QVector<BrowserNode> nodes = DriveNodes(
        {{"/", DriveType::Fixed, "root"}, {"/media/u/stick/", DriveType::Removable, {}}});
    ASSERT_EQ(nodes.size(), 2);
    EXPECT_EQ(nodes[0].iconKey, "hd");
    EXPECT_EQ(ResolveNodeKey(nodes[0].key), "/");
    EXPECT_EQ(nodes[1].caption, "/media/u/stick/ Removeable Disk");
    EXPECT_EQ(ResolveNodeKey(nodes[1].key), "/media/u/stick/");
}
