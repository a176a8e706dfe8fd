#include "packaging/PackageBuilder.h"
#include "platform/AppPaths.h"
#include "platform/SharedLibraries.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/FakeProgress.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QImage>
#include <QProcess>

using namespace kavori;

namespace {

// Copies a folder tree as a user copying a package would (links as the files they name).
void copyTree(const QString& from, const QString& to)
{
    QDirIterator it(from, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString target = to + u'/' + QDir(from).relativeFilePath(file);
        QDir().mkpath(QFileInfo(target).path());
        ASSERT_TRUE(QFile::copy(file, target)) << file.toStdString();
    }
}

} // namespace

using RunKavPackageTest = kavori::test::ShowTest;

TEST(SharedLibrariesTest, LoaderListingKeepsWhatTravelsAndLeavesTheCLibrary)
{
    const QString listing = QStringLiteral(
        "\tlinux-vdso.so.1 (0x00007ffd)\n"
        "\tlibQt6Widgets.so.6 => /lib/x86_64-linux-gnu/libQt6Widgets.so.6 (0x00007f10)\n"
        "\tlibstdc++.so.6 => /lib/x86_64-linux-gnu/libstdc++.so.6 (0x00007f11)\n"
        "\tlibm.so.6 => /lib/x86_64-linux-gnu/libm.so.6 (0x00007f12)\n"
        "\tlibGLX.so.0 => /lib/x86_64-linux-gnu/libGLX.so.0 (0x00007f13)\n"
        "\tlibc.so.6 => /lib/x86_64-linux-gnu/libc.so.6 (0x00007f14)\n"
        "\tlibgone.so.1 => not found\n"
        "\t/lib64/ld-linux-x86-64.so.2 (0x00007f15)\n");
    EXPECT_EQ(ParseLoaderListing(listing), QStringList({"/lib/x86_64-linux-gnu/libQt6Widgets.so.6",
                                                        "/lib/x86_64-linux-gnu/libstdc++.so.6"}));
}

// A run-time package built from a generated show plays from a copy in a fresh folder with no
// library path and no Kavori home: everything it loads of Qt comes from the package.
TEST_F(RunKavPackageTest, CopiedRunTimePackagePlaysOffscreenWithItsOwnLibraries)
{
    ASSERT_TRUE(EnsureAppHome());
    Settings& s = CurrentSettings();
    s.SlideInterval = 1;
    s.LoopSlideShow = false;
    s.EnableTransitions = false;
    const QList<QColor> colors = {Qt::red, Qt::darkGreen, Qt::blue};
    for (int i = 0; i < colors.size(); ++i) {
        QImage image(80, 60, QImage::Format_RGB32);
        image.fill(colors[i]);
        const QString path =
            root() + QStringLiteral("show/slide") + QString::number(i) + QStringLiteral(".jpg");
        QDir().mkpath(root() + QStringLiteral("show"));
        ASSERT_TRUE(image.save(path));
        CurrentShow().slides << NewSlide(path);
    }
    ASSERT_TRUE(WriteSlideShow(root() + QStringLiteral("show/Colors.KAV")));
    ResetShow();

    PackageRequest r;
    r.source = root() + QStringLiteral("show");
    r.showFile = QStringLiteral("Colors.KAV");
    r.destination = root() + QStringLiteral("built");
    r.name = QStringLiteral("Colors");
    r.size = QStringLiteral("1");
    r.options.runtime = true;
    r.programFolder = QStringLiteral(KAVORI_PROGRAM_DIR);
    ASSERT_TRUE(BuildPackage(r, [] { return std::make_unique<kavori::test::FakeProgress>(); }))
        << prompts().texts().join(u'\n').toStdString();
    ASSERT_TRUE(QFileInfo::exists(root() + QStringLiteral("built/lib/libQt6Core.so.6")));
    ASSERT_TRUE(
        QFileInfo::exists(root() + QStringLiteral("built/plugins/platforms/libqoffscreen.so")));
    ASSERT_TRUE(QFileInfo::exists(root() + QStringLiteral("built/qt.conf")));

    const QString moved = root() + QStringLiteral("elsewhere/package");
    copyTree(root() + QStringLiteral("built"), moved);
    QDir(root() + QStringLiteral("built")).removeRecursively();
    QDir(home()).removeRecursively();
    QFile::setPermissions(moved + QStringLiteral("/run-kav"),
                          QFile::permissions(moved + QStringLiteral("/run-kav")) | QFile::ExeOwner);

    QProcessEnvironment env;
    env.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin"));
    env.insert(QStringLiteral("HOME"), root() + QStringLiteral("home"));
    env.insert(QStringLiteral("TMPDIR"), root() + QStringLiteral("tmp"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), root() + QStringLiteral("run"));
    env.insert(QStringLiteral("LD_LIBRARY_PATH"), QString());
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("LD_DEBUG"), QStringLiteral("libs"));
    env.insert(QStringLiteral("QT_DEBUG_PLUGINS"), QStringLiteral("1"));
    QProcess player;
    player.setProcessEnvironment(env);
    player.setWorkingDirectory(root());
    player.start(moved + QStringLiteral("/run-kav"), {});
    ASSERT_TRUE(player.waitForStarted(5000));
    const bool finished = player.waitForFinished(20000);
    if (!finished)
        player.kill();
    const QString log = QString::fromLocal8Bit(player.readAllStandardError());
    ASSERT_TRUE(finished) << "still playing after 20 s";
    EXPECT_EQ(player.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(player.exitCode(), 0) << log.right(3000).toStdString();

    // Every Qt library and the platform plug-in came from the package.
    EXPECT_TRUE(log.contains(QStringLiteral("calling init: ") + moved +
                             QStringLiteral("/lib/libQt6Core.so.6")))
        << log.left(3000).toStdString();
    EXPECT_FALSE(log.contains(QStringLiteral("calling init: /lib/x86_64-linux-gnu/libQt6")));
    EXPECT_FALSE(log.contains(QStringLiteral("calling init: /usr/lib/x86_64-linux-gnu/libQt6")));
    EXPECT_TRUE(log.contains(moved + QStringLiteral("/plugins/platforms/libqoffscreen.so")));
    EXPECT_TRUE(log.contains(QStringLiteral("calling init: ") + moved +
                             QStringLiteral("/plugins/imageformats/libqjpeg.so")));
    // The player leaves its package as it found it.
    EXPECT_FALSE(QFileInfo::exists(moved + QStringLiteral("/KAVORI.INI")));
}
