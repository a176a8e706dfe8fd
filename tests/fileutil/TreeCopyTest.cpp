#include "fileutil/TreeCopy.h"
#include "support/FakeProgress.h"
#include "support/KavoriTest.h"

#include <QDir>
#include <QFileInfo>

using namespace kavori;

class TreeCopyTest : public kavori::test::KavoriTest {};

TEST_F(TreeCopyTest, CopiesEverythingStopsOnCancelAndRefusesItself)
{
    const QString from = root() + QStringLiteral("medium/");
    writeFile(from + QStringLiteral("a.jpg"), "a");
    writeFile(from + QStringLiteral("sub/b.jpg"), "bb");
    writeFile(from + QStringLiteral("sub/deeper/.c"), "ccc");
    QDir().mkpath(from + QStringLiteral("empty"));
    const QString to = root() + QStringLiteral("copy/");
    writeFile(to + QStringLiteral("a.jpg"), "old");

    kavori::test::FakeProgress progress;
    const TreeCopyOutcome done = CopyFolderTree(from, to, progress);
    EXPECT_EQ(done.result, TreeCopyOutcome::Result::Done);
    EXPECT_EQ(done.files, 3);
    EXPECT_EQ(progress.maximum, 3);
    EXPECT_EQ(readFile(to + QStringLiteral("a.jpg")), "a");
    EXPECT_EQ(readFile(to + QStringLiteral("sub/deeper/.c")), "ccc");
    EXPECT_TRUE(QFileInfo(to + QStringLiteral("empty")).isDir());

    // Cancel after the first file: that one is whole, the rest never started.
    const QString part = root() + QStringLiteral("part/");
    kavori::test::FakeProgress cancel;
    cancel.cancelAfter = 1;
    const TreeCopyOutcome stopped = CopyFolderTree(from, part, cancel);
    EXPECT_EQ(stopped.result, TreeCopyOutcome::Result::Cancelled);
    EXPECT_EQ(stopped.files, 1);
    EXPECT_EQ(readFile(part + QStringLiteral("a.jpg")), "a");
    EXPECT_FALSE(QFileInfo::exists(part + QStringLiteral("sub/b.jpg")));

    // A target that cannot be made fails and names it.
    writeFile(QStringLiteral("blocked"), "a file where the folder would go");
    const TreeCopyOutcome failed =
        CopyFolderTree(from, root() + QStringLiteral("blocked/inside"), progress);
    EXPECT_EQ(failed.result, TreeCopyOutcome::Result::Failed);

    EXPECT_FALSE(TreeCopyRefusal(from, from + QStringLiteral("sub/x")).isEmpty());
    EXPECT_FALSE(TreeCopyRefusal(from, from).isEmpty());
    EXPECT_TRUE(TreeCopyRefusal(from, root() + QStringLiteral("medium2")).isEmpty());
}
