#include "platform/Volumes.h"
#include "support/KavoriTest.h"

#include <QFile>

using namespace kavori;

namespace {

QString recordedTable()
{
    QFile file(QStringLiteral(KAVORI_TEST_DATA "/mounts-laptop.txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

} // namespace

class VolumesTest : public kavori::test::KavoriTest {
protected:
    void TearDown() override
    {
        SetMountTableOverride(std::nullopt);
        KavoriTest::TearDown();
    }
};

TEST_F(VolumesTest, MountTableLinesAndTheirEscapes)
{
    const QVector<MountEntry> entries = ParseMountTable(recordedTable());
    ASSERT_EQ(entries.size(), 15);
    EXPECT_EQ(entries[4].device, "/dev/nvme0n1p2");
    EXPECT_EQ(entries[4].mountPoint, "/");
    EXPECT_EQ(entries[4].fileSystemType, "ext4");
    // "\040" is a space of the folder's name; an unfinished or non-octal escape stays as written.
    EXPECT_EQ(entries[10].mountPoint, "/media/anna/HOLIDAY 2024");
    const QVector<MountEntry> odd =
        ParseMountTable(QStringLiteral("/dev/sdd1 /media/a/x\\134y\\09 vfat rw 0 0\n"
                                       "short line\n\n/dev/sde1 /media/a/end\\04 vfat rw 0 0"));
    ASSERT_EQ(odd.size(), 2);
    EXPECT_EQ(odd[0].mountPoint, "/media/a/x\\y\\09");
    EXPECT_EQ(odd[1].mountPoint, "/media/a/end\\04");
}

TEST_F(VolumesTest, RemovableMediaOfARecordedTable)
{
    const QStringList flagged = {QStringLiteral("/dev/sdb1"), QStringLiteral("/dev/mmcblk0p1")};
    const QVector<RemovableMedium> media = RemovableMediaIn(
        recordedTable(), [&](const QString& device) { return flagged.contains(device); });
    // The stick the kernel calls removable (once, though mounted twice), the USB disk the
    // desktop mounted, the disc, and a card mounted by hand; never the system disk, the EFI
    // partition, a snap, a second fixed disk in /mnt, the network share or memory.
    ASSERT_EQ(media.size(), 4);
    EXPECT_EQ(media[0].root, "/media/anna/HOLIDAY 2024/");
    EXPECT_EQ(media[0].name, "HOLIDAY 2024");
    EXPECT_EQ(media[0].type, DriveType::Removable);
    EXPECT_EQ(media[1].root, "/run/media/anna/BACKUP/");
    EXPECT_EQ(media[2].root, "/media/anna/PHOTO_CD/");
    EXPECT_EQ(media[2].type, DriveType::CDRom);
    EXPECT_EQ(media[3].root, "/home/anna/card/");
    EXPECT_EQ(media[3].name, "card");

    // Nothing flagged and nothing under the desktop's folders: no media at all.
    EXPECT_TRUE(RemovableMediaIn(QStringLiteral("/dev/sda1 / ext4 rw 0 0\n"
                                                "/dev/sda2 /home ext4 rw 0 0\n"),
                                 {})
                    .isEmpty());
    EXPECT_TRUE(RemovableMediaIn(QString(), {}).isEmpty());

    // The program reads the table it is given in place of the system's.
    SetMountTableOverride(recordedTable(), {QStringLiteral("/dev/sdb1")});
    const QVector<RemovableMedium> now = RemovableMedia();
    ASSERT_EQ(now.size(), 3);
    EXPECT_EQ(now[0].name, "HOLIDAY 2024");
}
