#include "fileutil/DuplicateSearch.h"
#include "support/KavoriTest.h"

#include <QDir>

using namespace kavori;

class DuplicateSearchTest : public kavori::test::KavoriTest {};

TEST_F(DuplicateSearchTest, NameGroupsKeepFirstFoundOnTopAndDiscoveryOrder)
{
    NameGroups g;
    for (const char* p : {"/c/PHOTO.JPG", "/c/a.gif", "/c/b.bmp", "/d/photo.jpg", "/d/A.GIF",
                          "/e/Photo.Jpg", "/e/unique.jpg", "/f/a.gif"})
        g.add(QString::fromLatin1(p));
    EXPECT_EQ(g.fileCount(), 8);
    EXPECT_EQ(g.resultCount(), 6);
    // Names stand in the order their second copy turned up; copies in the order found.
    EXPECT_EQ(g.results(), QStringList({"/c/PHOTO.JPG", "/d/photo.jpg", "/e/Photo.Jpg", "/c/a.gif",
                                        "/d/A.GIF", "/f/a.gif"}));

    // The same groups as comparing every name with all earlier ones, on a larger mixed set.
    NameGroups big;
    QStringList names;
    QStringList paths;
    for (int i = 0; i < 600; ++i) {
        const QString name = QStringLiteral("n%1.jpg").arg((i * 7919) % 211);
        paths << QStringLiteral("/x/%1/").arg(i) + (i % 2 ? name.toUpper() : name);
        big.add(paths.last());
    }
    QStringList expected; // the linear scan, as a reference
    QVector<QStringList> groups;
    QStringList groupName;
    for (int n = 0; n < paths.size(); ++n) {
        const QString up = paths[n].section(u'/', -1).toUpper();
        for (int j = 0; j < n; ++j) {
            if (paths[j].section(u'/', -1).toUpper() != up)
                continue;
            const qsizetype at = groupName.indexOf(up);
            if (at < 0) {
                groupName << up;
                groups << QStringList{paths[j], paths[n]};
            } else {
                groups[at] << paths[n];
            }
            break;
        }
    }
    for (const QStringList& group : groups)
        expected += group;
    EXPECT_EQ(big.results(), expected);
}

TEST_F(DuplicateSearchTest, CapacityLeavesLaterFilesOut)
{
    NameGroups g;
    for (int i = 0; i < kMaxSearchFiles; ++i)
        ASSERT_TRUE(g.add(QStringLiteral("/a/f%1.jpg").arg(i)));
    EXPECT_FALSE(g.add(QStringLiteral("/b/f0.jpg")));
    EXPECT_EQ(g.fileCount(), kMaxSearchFiles);
    EXPECT_EQ(g.resultCount(), 0);
}

TEST_F(DuplicateSearchTest, WalkFindsMediaByPatternAcrossDrives)
{
    const QString c = root() + QStringLiteral("c/");
    const QString d = root() + QStringLiteral("d/");
    writeFile(c + QStringLiteral("PHOTO.JPG"), "big picture");
    writeFile(c + QStringLiteral("deep/er/photo.jpg"), "x");
    writeFile(c + QStringLiteral("notes.txt"), "not a picture");
    writeFile(c + QStringLiteral("deep/NOTES.TXT"), "not a picture");
    writeFile(c + QStringLiteral("song.mp3"), "s");
    writeFile(c + QStringLiteral(".hidden/photo.jpg"), "hidden");
    writeFile(d + QStringLiteral("Photo.jpg"), "other size");
    writeFile(d + QStringLiteral("SONG.MP3"), "s");
    QDir().mkpath(root() + QStringLiteral("empty"));
    // A link back up the tree is not followed.
    QFile::link(c, c + QStringLiteral("deep/loop"));

    SearchState state;
    const QStringList roots = {c, root() + QStringLiteral("empty/"), d};
    NameGroups g = SearchSameNames(roots, DuplicateExtensions(false, false), state);
    EXPECT_EQ(g.fileCount(), 3);
    ASSERT_EQ(g.results().size(), 3);
    EXPECT_EQ(g.results().first(), c + QStringLiteral("PHOTO.JPG"));
    EXPECT_EQ(g.results().last(), d + QStringLiteral("Photo.jpg"));

    NameGroups withSounds = SearchSameNames(roots, DuplicateExtensions(false, true), state);
    EXPECT_EQ(withSounds.resultCount(), 5);
    EXPECT_EQ(DuplicatePattern(true, true).count(u';'), 13 + 10 + 9);

    // Cancelled at once: nothing more is read, what was found stays.
    state.cancel = true;
    EXPECT_EQ(SearchSameNames(roots, DuplicateExtensions(false, false), state).fileCount(), 0);
}

TEST_F(DuplicateSearchTest, ContentTellsTrueCopiesFromSameNames)
{
    const QByteArray large = QByteArray(10000, 'q') + "tail";
    QByteArray largeOther = large;
    largeOther[9000] = 'r'; // same size and same first 4 KiB, different after
    const QStringList files = {
        writeFile(QStringLiteral("c/a.jpg"), "same bytes"),
        writeFile(QStringLiteral("d/a.jpg"), "diff bytes"), // same name and size, other bytes
        writeFile(QStringLiteral("d/renamed.jpg"), "same bytes"),
        writeFile(QStringLiteral("c/big.bmp"), large),
        writeFile(QStringLiteral("d/big.bmp"), largeOther),
        writeFile(QStringLiteral("e/big.bmp"), large),
        writeFile(QStringLiteral("c/empty.gif"), ""),
        writeFile(QStringLiteral("d/empty.gif"), ""),
        root() + QStringLiteral("gone.jpg"),
    };
    SearchState state;
    const QVector<QStringList> groups = GroupSameContent(files, state);
    ASSERT_EQ(groups.size(), 2);
    EXPECT_EQ(groups[0], QStringList({files[0], files[2]}));
    EXPECT_EQ(groups[1], QStringList({files[3], files[5]}));
}

TEST_F(DuplicateSearchTest, DriveTypesAndTheirLabels)
{
    EXPECT_EQ(ClassifyVolume(QStringLiteral("ext4"), QStringLiteral("/dev/sda2"), false),
              DriveType::Fixed);
    EXPECT_EQ(ClassifyVolume(QStringLiteral("vfat"), QStringLiteral("/dev/sdb1"), true),
              DriveType::Removable);
    EXPECT_EQ(ClassifyVolume(QStringLiteral("nfs4"), QStringLiteral("server:/pics"), false),
              DriveType::Remote);
    EXPECT_EQ(ClassifyVolume(QStringLiteral("cifs"), QStringLiteral("//nas/photos"), false),
              DriveType::Remote);
    EXPECT_EQ(ClassifyVolume(QStringLiteral("fuse.sshfs"), QStringLiteral("me@host:"), false),
              DriveType::Remote);
    EXPECT_EQ(ClassifyVolume(QStringLiteral("iso9660"), QStringLiteral("/dev/sr0"), true),
              DriveType::CDRom);
    EXPECT_EQ(ClassifyVolume(QStringLiteral("tmpfs"), QStringLiteral("tmpfs"), false),
              DriveType::RamDisk);
    EXPECT_EQ(DriveTypeLabel(DriveType::Removable), "  [Removable]");
    EXPECT_EQ(DriveTypeLabel(DriveType::Fixed), "  [Fixed Disk]");
    EXPECT_EQ(DriveTypeLabel(DriveType::Remote), "  [Network]");
    EXPECT_EQ(DriveTypeLabel(DriveType::CDRom), "  [CD-ROM]");
    EXPECT_EQ(DriveTypeLabel(DriveType::RamDisk), "  [RAM Disk]");
    EXPECT_EQ(DriveTypeLabel(DriveType::Unknown), "  [Unknown]");
    // The machine's own volumes are listed, each ending in its separator.
    for (const Volume& v : LogicalDrives())
        EXPECT_TRUE(v.root.endsWith(u'/')) << v.root.toStdString();
}
