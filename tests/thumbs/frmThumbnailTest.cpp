#include "thumbs/frmThumbnail.h"
#include "browse/ThumbnailPages.h"
#include "fileutil/Favorites.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "support/PhotoLike.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace kavori;

namespace {

// With $KAVORI_SHOTS naming a folder, the browser's picture is kept there to be looked at.
void shoot(QWidget* w, const char* name)
{
    const QString folder = qEnvironmentVariable("KAVORI_SHOTS");
    if (folder.isEmpty())
        return;
    QApplication::processEvents();
    w->grab().save(folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
}

} // namespace

class frmThumbnailTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        CurrentSettings().ShowFileBrowser = false;
        CurrentSettings().UseRecycleBin = false;
        folder = root() + "pics/";
        QDir().mkpath(folder);
        for (int i = 1; i <= 30; ++i) {
            const QImage photo =
                kavori::test::PhotoLike(i % 3 == 0 ? 300 : 400, i % 3 == 0 ? 400 : 300, i);
            ASSERT_TRUE(photo.save(folder + QString("photo%1.jpg").arg(i), "JPG"));
        }
        writeFile(folder + "zclip.avi", "RIFF....AVI ");
        frmThumbnail::SetSystemOpener([this](const QString& p) { opened << p; });
    }
    void TearDown() override
    {
        frmThumbnail::SetSystemOpener(nullptr);
        ShowTest::TearDown();
    }
    frmThumbnail* openBrowser(MainViewFrm& w)
    {
        w.menus().action("mnuThumbnailBrowse")->trigger();
        auto* browser = w.findChild<frmThumbnail*>("frmThumbnail");
        EXPECT_NE(browser, nullptr);
        if (browser)
            waitLoaded(browser);
        return browser;
    }
    static void waitLoaded(frmThumbnail* b)
    {
        EXPECT_TRUE(QTest::qWaitFor([b] { return !b->isLoading(); }, 20000));
    }
    static QString text(QWidget* parent, const char* name)
    {
        if (auto* l = parent->findChild<QLabel*>(name))
            return l->text();
        if (auto* b = parent->findChild<QPushButton*>(name))
            return b->text();
        return "(missing " + QString(name) + ")";
    }
    static QString tip(QWidget* parent, const char* name)
    {
        auto* w = parent->findChild<QWidget*>(name);
        return w ? w->toolTip() : QString();
    }
    static void runMenu(frmThumbnail* b, int cell, const char* name)
    {
        QAction* a = b->popupFor(cell)->findChild<QAction*>(name);
        ASSERT_NE(a, nullptr) << name;
        ASSERT_TRUE(a->isEnabled()) << name;
        a->trigger();
    }
    QString folder;
    QStringList opened;
};

TEST_F(frmThumbnailTest, TheWindowOpensPagesThatFillInAndMoveWithTheirMessages)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(folder + "photo2.jpg"));
    frmThumbnail* b = openBrowser(w);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->windowTitle(), "Kavori - [Thumbnail Browser]");
    EXPECT_EQ(b->files().size(), 31);
    EXPECT_EQ(text(b, "lblInfo"),
              "Kavori is browsing thumbnails in the folder:  " + QDir::toNativeSeparators(folder));
    EXPECT_EQ(tip(b, "lblInfo"), "Click here to show full path.");
    EXPECT_EQ(tip(b, "lblBack"), "Right-click to show popup menu...");
    EXPECT_EQ(text(b, "lblHotspotMsg"),
              "Left-click thumbnail to preview file, right-click thumbnail for popup menu...");
    EXPECT_EQ(text(b, "lblShowing"), "Showing Files: 1 to 25");
    EXPECT_EQ(text(b, "lblStatus"), "Finished loading thumbnails...");
    EXPECT_EQ(text(b, "lblNumFiles"), "Files: 31");
    EXPECT_EQ(text(b, "CmdNext"), "&Next 25");
    EXPECT_EQ(tip(b, "CmdNext"), "Show the next 25 images.  (F6)");
    EXPECT_EQ(tip(b, "CmdPrevious"), "Show the previous 25 images.  (F5)");
    EXPECT_EQ(tip(b, "CmdSelect"), "Show thumbnails of the selected files...");
    EXPECT_EQ(tip(b, "CmdBrowse"), "Select a folder to browse...");
    EXPECT_EQ(tip(b, "CmdClose"), "Close the Thumbnail Browser...");
    EXPECT_EQ(tip(b, "CmdHelp"), "Learn how to use the Thumbnail Browser...");
    EXPECT_TRUE(b->findChild<QPushButton*>("CmdNext")->isEnabled());
    EXPECT_FALSE(b->findChild<QPushButton*>("CmdStop")->isEnabled());
    // Cells: 400 x 300 photos become 160 x 120, 300 x 400 ones 90 x 120.
    EXPECT_EQ(b->cellThumbnail(0).picture.size(), QSize(160, 120));
    EXPECT_EQ(b->cellThumbnail(0).original, QSize(400, 300));
    EXPECT_EQ(b->cellFile(2), folder + "photo3.jpg");
    EXPECT_EQ(b->cellThumbnail(2).picture.size(), QSize(90, 120));
    shoot(b, "thumbnails-25");

    // F6 moves on; the last page holds the movie, past it the page stays.
    b->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(b));
    QTest::keyClick(b, Qt::Key_F6);
    waitLoaded(b);
    EXPECT_EQ(text(b, "lblShowing"), "Showing Files: 26 to 31");
    EXPECT_EQ(b->cellThumbnail(5).state, Thumbnail::State::Movie);
    EXPECT_TRUE(b->cellFile(6).isEmpty());
    QTest::keyClick(b, Qt::Key_F6);
    EXPECT_EQ(prompts().texts(), QStringList({"There are no more thumbnail files to show..."}));
    EXPECT_EQ(b->firstIndex(), 25);
    b->findChild<QPushButton*>("CmdBack1")->click();
    waitLoaded(b);
    EXPECT_EQ(text(b, "lblShowing"), "Showing Files: 25 to 31");
    QTest::keyClick(b, Qt::Key_F11);
    waitLoaded(b);
    EXPECT_EQ(b->firstIndex(), 0);

    // Nine to a page: the captions and the menu's page entries follow.
    b->setPageSize(9);
    waitLoaded(b);
    EXPECT_EQ(text(b, "CmdPrevious"), "&Previous 9");
    EXPECT_EQ(tip(b, "CmdNext"), "Show the next 9 images.  (F6)");
    QMenu* menu = b->popupFor(0);
    EXPECT_EQ(menu->findChild<QAction*>("mnuNext")->text(), "&Next 9          [F5]");
    EXPECT_EQ(menu->findChild<QAction*>("mnuPrevious")->text(), "&Previous 9          [F6]");
    EXPECT_TRUE(menu->findChild<QAction*>("mnuLast9")->isVisible());
    EXPECT_FALSE(menu->findChild<QAction*>("mnuLast25")->isVisible());
    EXPECT_EQ(menu->findChild<QAction*>("mnuLast9")->text(), "&Last 9          [F12]");
    runMenu(b, 0, "mnuLast9");
    waitLoaded(b);
    EXPECT_EQ(text(b, "lblShowing"), "Showing Files: 23 to 31");

    // Go to: a word, zero and a number past the end are refused; a good number goes there.
    prompts().clear();
    prompts().inputs = {QString("ten"), QString("0"), QString("32"), QString("12")};
    for (int i = 0; i < 4; ++i)
        runMenu(b, 0, "mnuGotoThumbnail");
    waitLoaded(b);
    EXPECT_EQ(prompts().inputCalls.first().text,
              "Enter number of thumbnail to show:\r\n\r\n(1-31)");
    EXPECT_EQ(prompts().texts(),
              QStringList({"A invalid number was entered, please try again...",
                           "Please enter a number greater than zero and then try again...",
                           "There are no thumbnails to show at the specified location, please "
                           "enter another number..."}));
    EXPECT_EQ(b->firstIndex(), 11);
    EXPECT_EQ(text(b, "lblShowing"), "Showing Files: 12 to 20");

    // A click previews, a double click opens the picture in the main window.
    b->previewCell(0);
    EXPECT_EQ(text(b, "lblPreview"),
              "photo12.jpg (" +
                  QLocale(QLocale::English).toString(QFileInfo(folder + "photo12.jpg").size()) +
                  " bytes)");
    b->openCell(0);
    EXPECT_EQ(w.document().currentFile(), folder + "photo12.jpg");
    b->close();
}

TEST_F(frmThumbnailTest, CellCommandsRefuseWhatTheyMustAndActOnTheRest)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(folder + "photo1.jpg"));
    frmThumbnail* b = openBrowser(w);
    ASSERT_NE(b, nullptr);
    CurrentShow().slides.append(NewSlide(folder + "photo2.jpg"));

    // Deleting: the open picture and a slide are refused, another file goes and its cell says so.
    runMenu(b, 0, "mnuDeleteFile");
    runMenu(b, 1, "mnuDeleteFile");
    EXPECT_EQ(prompts().texts(),
              QStringList({"Unable to delete this file, image is currently open in Main Viewing "
                           "Window...",
                           "Unable to delete this file, image is in the currently open slide "
                           "show.\r\n\r\nRemove this file from the slide show and then try "
                           "again..."}));
    EXPECT_TRUE(QFileInfo::exists(folder + "photo1.jpg"));
    prompts().clear();
    prompts().answers = {vbNo};
    runMenu(b, 2, "mnuDeleteFile"); // asked first, and the user says no
    EXPECT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(QFileInfo::exists(folder + "photo3.jpg"));
    CurrentSettings().ThumbnailDelete = true; // no question
    prompts().clear();
    runMenu(b, 2, "mnuDeleteFile");
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(folder + "photo3.jpg"));
    EXPECT_EQ(b->cellThumbnail(2).state, Thumbnail::State::Missing);
    // A file deleted behind the browser's back shows the same way after a reload.
    QFile::remove(folder + "photo5.jpg");
    runMenu(b, 0, "mnuReload");
    waitLoaded(b);
    EXPECT_EQ(b->files().size(), 29);

    // Renaming: a slide is refused; a bad name is asked again, a taken one ends.
    prompts().clear();
    runMenu(b, 1, "mnuRenameFile");
    EXPECT_EQ(prompts().calls.value(0).title, "Kavori - [Rename File]");
    prompts().clear();
    prompts().inputs = {QString("a*b.jpg"), QString("photo7.jpg")};
    runMenu(b, 3, "mnuRenameFile");
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        "A filename may not contain any of the following characters:"));
    EXPECT_EQ(prompts().calls[1].text,
              "The filename that was specified already exists, unable to rename file...");
    EXPECT_EQ(prompts().inputCalls[0].title, "Kavori - [Rename File]");
    prompts().clear();
    prompts().inputs = {QString("renamed.jpg")};
    const QString before = b->cellFile(3);
    runMenu(b, 3, "mnuRenameFile");
    EXPECT_FALSE(QFileInfo::exists(before));
    EXPECT_EQ(b->cellFile(3), folder + "renamed.jpg");
    EXPECT_TRUE(QFileInfo::exists(folder + "renamed.jpg"));

    // Favourites: a picture once, never a movie.
    prompts().clear();
    runMenu(b, 4, "mnuAddFavorite");
    runMenu(b, 4, "mnuAddFavorite");
    EXPECT_EQ(FavoriteFiles(), QStringList({b->cellFile(4)}));
    b->move(PageMove::Last);
    waitLoaded(b);
    runMenu(b, 24, "mnuAddFavorite"); // the movie, last in the folder
    EXPECT_EQ(prompts().texts(),
              QStringList({"This file is already in your favorites list...",
                           "You may not add a movie file to your Favorite Files List, select an "
                           "image and then try again..."}));
    EXPECT_EQ(prompts().calls[0].title, "Kavori - [Add To Favorite Files List]");

    // A movie opens with the system; the animation needs a GIF89a picture.
    runMenu(b, 24, "mnuOpenImage");
    EXPECT_EQ(opened, QStringList({folder + "zclip.avi"}));
    prompts().clear();
    runMenu(b, 0, "mnuViewAnimatedGIF");
    EXPECT_EQ(prompts().texts(),
              QStringList({"The current image is not a .GIF file, unable to animate..."}));

    // Slides: the selected files, or the cell's own, with the count.
    prompts().clear();
    b->previewCell(0);
    b->previewCell(1, true);
    runMenu(b, 0, "mnuAddSlideShow");
    EXPECT_EQ(CurrentShow().slides.size(), 3);
    EXPECT_EQ(prompts().texts(), QStringList({"3 slides (images) total..."}));
    runMenu(b, -1, "mnuExploreFolder");
    EXPECT_EQ(opened.last(), folder);
    b->close();
}

TEST_F(frmThumbnailTest, SelectionsStartupAndStopping)
{
    MainViewFrm w;
    frmThumbnail browser(&w);
    QStringList many;
    for (int i = 0; i <= kMaxThumbnailFiles; ++i)
        many << folder + QString("x%1.jpg").arg(i);
    EXPECT_FALSE(browser.showFiles(many));
    EXPECT_EQ(prompts().texts(),
              QStringList({"You may not select any more than 5,000 thumbnails at one time, "
                           "maximum has been reached..."}));
    ASSERT_TRUE(browser.showFiles(
        {folder + "photo3.jpg", folder + "photo1.jpg", folder + "gone.jpg", root() + "notes.txt"}));
    waitLoaded(&browser);
    EXPECT_EQ(text(&browser, "lblInfo"), "Kavori is showing thumbnails of selected files...");
    EXPECT_EQ(browser.files(),
              QStringList({folder + "gone.jpg", folder + "photo1.jpg", folder + "photo3.jpg"}));
    EXPECT_EQ(browser.cellThumbnail(0).state, Thumbnail::State::Missing);
    EXPECT_EQ(text(&browser, "lblShowing"), "Showing Files: 1 to 3");

    // Stop leaves the page usable at once.
    browser.showFolder(folder);
    browser.findChild<QPushButton*>("CmdStop")->click();
    EXPECT_FALSE(browser.isLoading());
    EXPECT_TRUE(browser.findChild<QPushButton*>("CmdNext")->isEnabled());

    // The start-up setting 4 opens the browser on the folder the user picks.
    CurrentSettings().StartupDialog = 4;
    MainViewFrm started;
    prompts().files = {folder};
    started.runStartSequence();
    auto* opened = started.findChild<frmThumbnail*>("frmThumbnail");
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opened->folder(), folder);
    EXPECT_TRUE(opened->isVisible());
    waitLoaded(opened);
    opened->close();
}
