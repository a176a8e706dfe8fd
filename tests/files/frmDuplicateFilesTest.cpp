#include "files/frmDuplicateFiles.h"
#include "platform/Volumes.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

using namespace kavori;

class frmDuplicateFilesTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        CurrentSettings().UseRecycleBin = false;
        c = root() + QStringLiteral("c/");
        d = root() + QStringLiteral("d/");
        e = root() + QStringLiteral("e/");
        QDir().mkpath(e);
        writeFile(e + QStringLiteral("readme.txt"), "no media here");
        bmp(c + QStringLiteral("PHOTO.BMP"), 8);
        bmp(c + QStringLiteral("sub/deep/Photo.bmp"), 8);
        bmp(d + QStringLiteral("photo.bmp"), 12); // same name, another size
        writeFile(c + QStringLiteral("sub/x.gif"), "GIF89a same");
        writeFile(d + QStringLiteral("X.GIF"), "GIF89a same");
        writeFile(d + QStringLiteral("copy of x.gif"), "GIF89a same");
        writeFile(c + QStringLiteral("song.mp3"), "sound");
        writeFile(d + QStringLiteral("SONG.MP3"), "sound");
        SetLogicalDrivesOverride(QVector<Volume>{
            {c, DriveType::Fixed, {}}, {d, DriveType::Removable, {}}, {e, DriveType::CDRom, {}}});
    }
    void TearDown() override
    {
        SetLogicalDrivesOverride(std::nullopt);
        ShowTest::TearDown();
    }
    void bmp(const QString& path, int size)
    {
        QImage picture(size, size, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        writeFile(path, {});
        picture.save(path, "BMP");
    }
    static void click(QWidget* dialog, const char* name)
    {
        auto* b = dialog->findChild<QPushButton*>(QString::fromLatin1(name));
        ASSERT_NE(b, nullptr) << name;
        b->click();
    }
    static QListWidget* list(QWidget* dialog, const char* name)
    {
        return dialog->findChild<QListWidget*>(QString::fromLatin1(name));
    }
    static void choose(QWidget* dialog, int row) { list(dialog, "ListFiles")->setCurrentRow(row); }
    QString c;
    QString d;
    QString e;
};

TEST_F(frmDuplicateFilesTest, NameSearchFromTheWindowWithItsMessagesAndActions)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(c + QStringLiteral("PHOTO.BMP")));
    bool driven = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* f = qobject_cast<frmDuplicateFiles*>(QApplication::activeModalWidget());
        ASSERT_NE(f, nullptr);
        QListWidget* drives = list(f, "ListDrives");
        ASSERT_EQ(drives->count(), 3);
        EXPECT_EQ(drives->item(0)->text(), c + "  [Fixed Disk]");
        EXPECT_EQ(drives->item(2)->text(), e + "  [CD-ROM]");
        EXPECT_EQ(f->statusText(), frmDuplicateFiles::IdleStatus());

        click(f, "CmdFind");
        click(f, "CmdPreview");
        click(f, "CmdOpen");
        click(f, "CmdNetwork");
        EXPECT_EQ(prompts().texts(),
                  QStringList({"Select the drive(s) to search and then try again...",
                               "No supported files were found.\r\n\r\nSelect drive(s) and press "
                               "the \"Search\" button to find duplicate files...",
                               "No valid image files were found.\r\n\r\nSelect drive(s) and press "
                               "the \"Search\" button to find duplicate files...",
                               "A network drive could not be found on your system..."}));

        // The drive with no media: nothing found, and said so.
        prompts().clear();
        click(f, "CmdCDROM");
        click(f, "CmdFind");
        f->waitForSearch();
        EXPECT_EQ(prompts().texts(),
                  QStringList({"You are about to search the selected drive(s) for duplicate "
                               "files...\r\nThis could take several minutes to complete.",
                               "No duplicate files were found on the selected drive(s)..."}));
        EXPECT_EQ(f->statusText(),
                  " Selected drive(s) have been searched, no duplicate files were found...");

        // Every drive, sounds too: three of a name in the order found, whatever their case.
        click(f, "CmdAll");
        f->findChild<QCheckBox*>(QStringLiteral("CheckSounds"))->setChecked(true);
        prompts().clear();
        click(f, "CmdFind");
        EXPECT_TRUE(f->searching());
        auto* find = f->findChild<QPushButton*>(QStringLiteral("CmdFind"));
        EXPECT_EQ(find->text(), "&Cancel");
        EXPECT_EQ(find->toolTip(), "Click here to stop searching for duplicate files.");
        f->waitForSearch();
        EXPECT_EQ(find->text(), "&Search");
        EXPECT_EQ(f->statusText(),
                  " Selected drive(s) have been searched, 7 duplicate files were found...");
        const QStringList results = f->results();
        ASSERT_EQ(results.size(), 7);
        EXPECT_EQ(results.mid(0, 3),
                  QStringList({c + "PHOTO.BMP", c + "sub/deep/Photo.bmp", d + "photo.bmp"}));
        EXPECT_TRUE(results.contains(d + "SONG.MP3"));
        EXPECT_FALSE(results.contains(d + "copy of x.gif"));
        EXPECT_EQ(list(f, "ListFiles")->count(), 7);
        if (!qEnvironmentVariable("KAVORI_SHOT_DIR").isEmpty())
            f->grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR") + "/frmDuplicateFiles.png");

        // Acting on results: nothing chosen, a sound's preview, the open picture.
        prompts().clear();
        click(f, "CmdDelete");
        choose(f, int(results.indexOf(c + "song.mp3")));
        click(f, "CmdPreview");
        choose(f, 0);
        click(f, "CmdDelete");
        click(f, "CmdShowPath");
        EXPECT_EQ(prompts().texts(),
                  QStringList({"Select a file to delete and then try again...",
                               "Unable to show a preview of a .MP3 file, it needs to be imported "
                               "first.\r\n\r\nClick the \"Open\" button to import this file...",
                               "Unable to delete file, this image is currently open...",
                               c + "PHOTO.BMP"}));

        // Open another copy in the main window, then delete the first after its question.
        prompts().clear();
        choose(f, 2);
        prompts().answers = {vbYes};
        click(f, "CmdOpen");
        EXPECT_EQ(w.document().currentFile(), d + "photo.bmp");
        choose(f, 0);
        prompts().answers = {vbYes};
        click(f, "CmdDelete");
        EXPECT_FALSE(QFileInfo::exists(c + "PHOTO.BMP"));
        EXPECT_EQ(f->results().size(), 6);
        EXPECT_EQ(prompts().texts()[0], "Open the following file?\r\n\r\n" + d + "photo.bmp");

        // Closing while a search runs is refused; Cancel ends it with what it had.
        prompts().clear();
        click(f, "CmdFind");
        f->close();
        EXPECT_TRUE(f->isVisible());
        click(f, "CmdFind");
        f->waitForSearch();
        EXPECT_EQ(prompts().texts()[1], "Press the Cancel button to stop searching for files...");
        EXPECT_EQ(find->text(), "&Search");
        driven = true;
        f->close();
    });
    QAction* action = w.menus().action(QStringLiteral("mnuSearchDuplicate"));
    ASSERT_TRUE(action->isEnabled());
    action->trigger();
    EXPECT_TRUE(driven);
}

TEST_F(frmDuplicateFilesTest, CancelHalfWayKeepsWhatWasFound)
{
    const QStringList roots = {c, d};
    const QStringList types = DuplicateExtensions(false, false);
    SearchState whole;
    const NameGroups all = SearchSameNames(roots, types, whole);
    ASSERT_EQ(all.fileCount(), 6);
    for (int stopAt = 1; stopAt <= 6; ++stopAt) {
        SearchState state;
        state.afterFile = [&state, stopAt](int files) {
            if (files == stopAt)
                state.cancel = true;
        };
        const NameGroups part = SearchSameNames(roots, types, state);
        EXPECT_EQ(part.fileCount(), stopAt);
        // What was found stands as it would in the whole search.
        for (const QString& path : part.results())
            EXPECT_TRUE(all.results().contains(path)) << path.toStdString();
    }
}

TEST_F(frmDuplicateFilesTest, ContentModeTellsTrueCopiesFromSameNames)
{
    frmDuplicateFiles f(nullptr);
    f.findChild<QCheckBox*>(QStringLiteral("CheckContent"))->setChecked(true);
    click(&f, "CmdAll");
    f.find();
    f.waitForSearch();
    // The photos share a name but not their bytes; the GIFs are copies whatever their names.
    const QStringList gifs = {c + "sub/x.gif", d + "X.GIF", d + "copy of x.gif"};
    QStringList found = f.results();
    std::sort(found.begin(), found.end());
    QStringList expected = gifs;
    expected << c + "sub/deep/Photo.bmp" << c + "PHOTO.BMP"; // same size and bytes
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(found, expected);
    EXPECT_FALSE(f.results().contains(d + "photo.bmp"));

    // Copies go one by one after their question, never the last of a group.
    const int first = int(f.results().indexOf(c + "PHOTO.BMP"));
    f.findChild<QListWidget*>(QStringLiteral("ListFiles"))->setCurrentRow(first);
    prompts().answers = {vbYes};
    f.remove();
    EXPECT_FALSE(QFileInfo::exists(c + "PHOTO.BMP"));
    prompts().clear();
    f.findChild<QListWidget*>(QStringLiteral("ListFiles"))
        ->setCurrentRow(int(f.results().indexOf(c + "sub/deep/Photo.bmp")));
    f.remove();
    EXPECT_TRUE(QFileInfo::exists(c + "sub/deep/Photo.bmp"));
    EXPECT_EQ(prompts().texts(), QStringList({"This is the last copy of this file in the list, it "
                                              "will not be deleted from here..."}));

    // Drives that are gone by the time of the search.
    SetLogicalDrivesOverride(QVector<Volume>{});
    prompts().clear();
    f.find();
    EXPECT_FALSE(f.searching());
    EXPECT_EQ(prompts().texts(), QStringList({"Error, unable to search for duplicate files.\r\n\r\n"
                                              "The current drive letters could not be aquired from "
                                              "system..."}));
}
