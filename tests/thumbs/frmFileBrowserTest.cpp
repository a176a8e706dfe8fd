#include "thumbs/frmFileBrowser.h"
#include "files/FolderTree.h"
#include "platform/AppPaths.h"
#include "platform/Volumes.h"
#include "settings/Settings.h"
#include "support/PhotoLike.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QListWidget>
#include <QSplitter>
#include <QTest>

using namespace kavori;

class frmFileBrowserTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        stick = root() + "media/stick/";
        QDir().mkpath(stick + "Holidays");
        QDir().mkpath(stick + "Work");
        SetLogicalDrivesOverride(
            QVector<Volume>{{"/", DriveType::Fixed, "system"}, {stick, DriveType::Removable, ""}});
        slides = AppPath() + "Slides/";
        QDir().mkpath(slides);
        for (const char* name : {"b.bmp", "a.bmp"}) {
            QImage picture(40, 30, QImage::Format_RGB32);
            picture.fill(Qt::darkCyan);
            ASSERT_TRUE(picture.save(slides + name, "BMP"));
        }
        writeFile(slides + "notes.txt", "x");
        ASSERT_TRUE(kavori::test::PhotoLike(800, 600, 3).save(slides + "c.jpg", "JPG"));
    }
    void TearDown() override
    {
        SetLogicalDrivesOverride(std::nullopt);
        ShowTest::TearDown();
    }
    static QStringList topCaptions(QTreeView* tree)
    {
        QStringList captions;
        for (int row = 0; row < tree->model()->rowCount(); ++row)
            captions << tree->model()->index(row, 0).data().toString();
        return captions;
    }
    QString stick;
    QString slides;
};

TEST_F(frmFileBrowserTest, ThePaneBesideThePictureOpensPicturesOfTheChosenPlace)
{
    CurrentSettings().FileBrowserWidth = 4500;
    CurrentSettings().FavoriteFolder = root() + "gone";
    MainViewFrm w;
    w.resize(900, 600);
    w.show();
    auto* dock = w.findChild<QDockWidget*>("dockFileBrowser");
    auto* pane = w.findChild<frmFileBrowser*>("frmFileBrowser");
    ASSERT_NE(dock, nullptr);
    ASSERT_NE(pane, nullptr);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(w.dockWidgetArea(dock), Qt::LeftDockWidgetArea);
    EXPECT_NEAR(dock->width(), 300, 10);
    FolderTree* tree = pane->tree();
    EXPECT_EQ(topCaptions(tree), QStringList({"My Computer", "Desktop Folder", "Kavori"}));

    // The drives arrive aside, under My Computer, with their captions.
    ASSERT_TRUE(QTest::qWaitFor([pane] { return pane->drivesAdded(); }, 5000));
    const QModelIndex computer = tree->nodeIndex("mycomputer");
    ASSERT_EQ(tree->model()->rowCount(computer), 2);
    EXPECT_EQ(tree->model()->index(0, 0, computer).data().toString(), "/ [system]");
    EXPECT_EQ(tree->model()->index(1, 0, computer).data().toString(), stick + " Removeable Disk");
    // Opening a drive lists its folders (on a worker thread).
    const QModelIndex drive = tree->model()->index(1, 0, computer);
    tree->expand(drive);
    ASSERT_TRUE(QTest::qWaitFor([tree] { return tree->pendingListings() == 0; }, 5000));
    EXPECT_EQ(tree->childFolders(drive), QStringList({stick + "Holidays", stick + "Work"}));
    // A folder that is gone lists nothing and holds nothing up.
    const QModelIndex favorite = tree->nodeIndex("favfolder");
    tree->expand(favorite);
    ASSERT_TRUE(QTest::qWaitFor([tree] { return tree->pendingListings() == 0; }, 5000));
    EXPECT_TRUE(tree->model()->hasChildren(favorite) == false);

    // A click on the Slides node lists its pictures, a click on a picture opens it.
    const QModelIndex slidesNode = tree->nodeIndex("slides");
    ASSERT_TRUE(slidesNode.isValid());
    tree->setCurrentIndex(slidesNode);
    Q_EMIT tree->clicked(slidesNode);
    ASSERT_TRUE(QTest::qWaitFor([pane] { return !pane->isListing(); }, 5000));
    EXPECT_EQ(pane->folder(), slides);
    QListWidget* list = pane->fileList();
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(0)->text(), "a.bmp");
    list->setCurrentRow(1);
    Q_EMIT list->itemClicked(list->item(1));
    EXPECT_EQ(w.document().currentFile(), slides + "b.bmp");
    // The expand-only nodes lead nowhere themselves.
    const QModelIndex kavori = tree->nodeIndex("kavori");
    tree->collapse(kavori);
    Q_EMIT tree->clicked(kavori);
    EXPECT_TRUE(tree->isExpanded(kavori));
    EXPECT_EQ(pane->folder(), slides);

    const QString shots = qEnvironmentVariable("KAVORI_SHOTS");
    if (!shots.isEmpty()) {
        tree->expand(tree->nodeIndex("quick"));
        w.openImage(slides + "c.jpg");
        w.resize(1100, 760);
        QApplication::processEvents();
        w.grab().save(shots + "/file-browser.png");
    }

    // The command hides and shows the pane; the setting follows, and closing keeps its width.
    QAction* command = w.menus().action("mnuFileBrowser");
    ASSERT_TRUE(command->isEnabled());
    command->trigger();
    EXPECT_FALSE(dock->isVisible());
    EXPECT_FALSE(CurrentSettings().ShowFileBrowser);
    // Shown again, the pane lists the folder of the picture opened meanwhile, with it selected;
    // while shown it follows the window's picture.
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(stick + "Holidays/x.bmp", "BMP"));
    ASSERT_TRUE(picture.save(stick + "Holidays/y.bmp", "BMP"));
    ASSERT_TRUE(w.openImage(stick + "Holidays/y.bmp"));
    command->trigger();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(CurrentSettings().ShowFileBrowser);
    ASSERT_TRUE(QTest::qWaitFor([pane] { return !pane->isListing(); }, 5000));
    EXPECT_EQ(pane->folder(), stick + "Holidays/");
    ASSERT_NE(list->currentItem(), nullptr);
    EXPECT_EQ(list->currentItem()->text(), "y.bmp");
    ASSERT_TRUE(w.openImage(slides + "a.bmp"));
    ASSERT_TRUE(QTest::qWaitFor([pane] { return !pane->isListing(); }, 5000));
    EXPECT_EQ(pane->folder(), slides);
    ASSERT_NE(list->currentItem(), nullptr);
    EXPECT_EQ(list->currentItem()->text(), "a.bmp");
    pane->setBarTwips(1500);
    EXPECT_NEAR(pane->barTwips(), 1500, 30);
    w.close();
    EXPECT_NEAR(CurrentSettings().FileBrowserWidth, 4500, 150);
    EXPECT_NEAR(CurrentSettings().FileBrowserBar, 1500, 30);
}

TEST_F(frmFileBrowserTest, AHiddenPaneStaysHiddenAtStart)
{
    CurrentSettings().ShowFileBrowser = false;
    MainViewFrm w;
    w.show();
    EXPECT_FALSE(w.findChild<QDockWidget*>("dockFileBrowser")->isVisible());
    EXPECT_FALSE(w.menus().action("mnuFileBrowser")->isChecked());
}
