#include "fileutil/QuickFolders.h"
#include "files/frmFavorites.h"
#include "files/frmQuickFolders.h"
#include "fileutil/Favorites.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideList.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace kavori;

class QuickFoldersTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        pics = root() + QStringLiteral("pics/");
        keep = root() + QStringLiteral("keep/");
        QDir().mkpath(keep);
        for (int i = 1; i <= 2; ++i) {
            QImage picture(20, 10, QImage::Format_RGB32);
            picture.fill(i == 1 ? Qt::red : Qt::green);
            writeFile(pics + QStringLiteral("q%1.bmp").arg(i), {});
            picture.save(pics + QStringLiteral("q%1.bmp").arg(i), "BMP");
        }
    }
    void inNextDialog(std::function<void(QDialog*)> drive)
    {
        QTimer::singleShot(0, qApp, [drive] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            drive(dialog);
        });
    }
    static void run(MainViewFrm& w, const QString& action)
    {
        auto* a = w.findChild<QAction*>(action);
        ASSERT_NE(a, nullptr) << action.toStdString();
        ASSERT_TRUE(a->isEnabled()) << action.toStdString();
        a->trigger();
    }
    static void shoot(QWidget* dialog, const char* name)
    {
        const QString dir = qEnvironmentVariable("KAVORI_SHOT_DIR");
        if (!dir.isEmpty())
            dialog->grab().save(dir + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
    }
    QString pics;
    QString keep;
};

TEST_F(QuickFoldersTest, AKeyGetsAFolderAndCopiesOrMovesThePictureThere)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("q1.bmp")));
    // Not set up yet: the key says so and nothing happens.
    run(w, QStringLiteral("btnF3"));
    EXPECT_EQ(prompts().texts(),
              QStringList({"The quick folder F3 has not been set up yet.\r\n\r\nChoose its folder "
                           "with \"Quick Folders...\" in the Files menu..."}));

    inNextDialog([&](QDialog* d) {
        auto* q = qobject_cast<frmQuickFolders*>(d);
        ASSERT_NE(q, nullptr);
        q->grid()->selectRow(2);
        prompts().files = {keep};
        q->findChild<QPushButton*>(QStringLiteral("CmdBrowse"))->click();
        EXPECT_EQ(q->grid()->item(2, 1)->text(), "keep");
        q->grid()->item(2, 1)->setText(QStringLiteral("Keepers"));
        q->findChild<QRadioButton*>(QStringLiteral("optMove"))->setChecked(true);
        shoot(d, "frmQuickFolders");
        q->findChild<QPushButton*>(QStringLiteral("CmdOK"))->click();
    });
    run(w, QStringLiteral("mnuQuickFolders"));
    EXPECT_EQ(CurrentSettings().QuickFolderPath[2], keep);
    EXPECT_EQ(CurrentSettings().QuickFolder[2], "Keepers");
    EXPECT_EQ(CurrentSettings().LastQuickAction, 1);
    EXPECT_TRUE(readFile(SettingsFilePath()).contains("QuickFolder3=Keepers"));
    EXPECT_EQ(w.findChild<QAction*>(QStringLiteral("mnuQuickCopy3"))->text(), "F3  Keepers");
    EXPECT_EQ(w.findChild<QAction*>(QStringLiteral("mnuQuickCopy3"))->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+F3")));
    EXPECT_EQ(w.findChild<QAction*>(QStringLiteral("mnuQuickMove3"))->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+F3")));
    EXPECT_FALSE(w.findChild<QAction*>(QStringLiteral("mnuQuickCopy4"))->isEnabled());

    // Copy with its key: no question; then the button moves, and the window follows.
    prompts().clear();
    run(w, QStringLiteral("mnuQuickCopy3"));
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_TRUE(QFileInfo::exists(keep + QStringLiteral("q1.bmp")));
    EXPECT_TRUE(QFileInfo::exists(pics + QStringLiteral("q1.bmp")));
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("q2.bmp")));
    run(w, QStringLiteral("btnF3"));
    EXPECT_FALSE(QFileInfo::exists(pics + QStringLiteral("q2.bmp")));
    EXPECT_EQ(w.document().currentFile(), keep + QStringLiteral("q2.bmp"));
    // Already there: the same folder is refused; a file of the same name asks first.
    run(w, QStringLiteral("mnuQuickMove3"));
    EXPECT_EQ(prompts().texts().last(), "The source and destination paths are the same, no need "
                                        "to move files to selected destination...");
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("q1.bmp")));
    prompts().answers = {vbNo};
    run(w, QStringLiteral("mnuQuickMove3"));
    EXPECT_TRUE(QFileInfo::exists(pics + QStringLiteral("q1.bmp")));
    EXPECT_TRUE(prompts().texts().last().startsWith(
        "The following file already exists in the destination folder:"));

    // A quick folder that has gone.
    QDir(keep).removeRecursively();
    prompts().clear();
    run(w, QStringLiteral("mnuQuickCopy3"));
    EXPECT_TRUE(prompts().texts().first().startsWith("The quick folder F3 could not be found:"));
}

TEST_F(QuickFoldersTest, FavoritesOfPicturesAndFolders)
{
    MainViewFrm w;
    const QString q1 = pics + QStringLiteral("q1.bmp");
    ASSERT_TRUE(w.openImage(q1));
    run(w, QStringLiteral("mnuFavoritesAdd"));
    run(w, QStringLiteral("mnuFavoritesAdd"));
    EXPECT_EQ(FavoriteFiles(), QStringList({q1}));
    EXPECT_EQ(prompts().texts(),
              QStringList({"The file:\r\n\r\n" + q1 +
                           "\r\n\r\n...is already in your Favorite Files List."}));
    EXPECT_TRUE(readFile(SettingsFilePath()).contains(QByteArray("FavoriteFile1=" + q1.toUtf8())));

    // The list dialog adds a folder and a picture, reorders, and opens an entry.
    inNextDialog([&](QDialog* d) {
        auto* f = qobject_cast<frmFavorites*>(d);
        ASSERT_NE(f, nullptr);
        prompts().files = {keep, pics + QStringLiteral("q2.bmp")};
        f->addFolder();
        f->addFile();
        EXPECT_EQ(f->list()->item(1)->text(), keep + "  [Folder]");
        f->list()->setCurrentRow(2);
        f->moveSelected(-1);
        shoot(d, "frmFavorites");
        f->list()->setCurrentRow(1);
        f->findChild<QPushButton*>(QStringLiteral("CmdOpen"))->click();
    });
    run(w, QStringLiteral("mnuFavoritesList"));
    EXPECT_EQ(FavoriteFiles(), QStringList({q1, pics + "q2.bmp", keep}));
    EXPECT_EQ(w.document().currentFile(), pics + "q2.bmp");

    // Deleting a favourite picture takes it off the list; removing and clearing ask or tell.
    prompts().clear();
    CurrentSettings().UseRecycleBin = false;
    prompts().answers = {vbYes};
    run(w, QStringLiteral("mnuDeleteCurrentImage"));
    EXPECT_EQ(FavoriteFiles(), QStringList({q1, keep}));
    EXPECT_EQ(w.document().currentFile(), q1);
    run(w, QStringLiteral("mnuFavoritesRemove"));
    EXPECT_EQ(FavoriteFiles(), QStringList({keep}));
    prompts().clear();
    run(w, QStringLiteral("mnuFavoritesRemove"));
    EXPECT_EQ(prompts().texts(), QStringList({"The file:\r\n\r\n" + q1 +
                                              "\r\n\r\n...is not in your Favorite Files List."}));

    // Saved as a show: the pictures only, and the show in memory stays as it was.
    AddFavoriteFile(q1);
    CurrentShow().slides = {NewSlide(QStringLiteral("/elsewhere/x.jpg"))};
    const QString show = root() + QStringLiteral("fav");
    prompts().files = {show};
    run(w, QStringLiteral("mnuSaveFavoritesAsShow"));
    ASSERT_EQ(CurrentShow().slides.size(), 1);
    EXPECT_EQ(CurrentShow().slides[0].SlideFile, "/elsewhere/x.jpg");
    ASSERT_TRUE(ReadSlideShow(show + QStringLiteral(".KAV")));
    ASSERT_EQ(CurrentShow().slides.size(), 1);
    EXPECT_EQ(SlideFullPath(CurrentShow(), CurrentShow().slides[0].SlideFile), q1);

    prompts().clear();
    prompts().answers = {vbNo, vbYes};
    run(w, QStringLiteral("mnuFavoritesClear"));
    EXPECT_EQ(FavoriteFiles().size(), 2);
    run(w, QStringLiteral("mnuFavoritesClear"));
    EXPECT_TRUE(FavoriteFiles().isEmpty());
    run(w, QStringLiteral("mnuFavoritesClear"));
    EXPECT_EQ(prompts().texts().last(), "Your Favorite Files List is already empty...");

    // Every file command of the window works now.
    for (const char* name : {"mnuFileCopyImages",
                             "mnuMoveImages",
                             "mnuMoveCurrentImg",
                             "mnuDeleteImages",
                             "mnuDeleteCurrentImage",
                             "mnuRenameImg",
                             "mnuRenameCurrentImg",
                             "mnuDelEmptyFolder",
                             "mnuSearchDuplicate",
                             "mnuQuickFolders",
                             "mnuFavoriteFolder",
                             "mnuFavoritesAdd",
                             "mnuFavoritesRemove",
                             "mnuFavoritesClear",
                             "mnuFavoritesList",
                             "mnuViewFavorites",
                             "mnuSaveFavoritesAsShow",
                             "btnF1",
                             "btnF12",
                             "btnCOP",
                             "btnFF"})
        EXPECT_TRUE(w.findChild<QAction*>(QString::fromLatin1(name))->isEnabled()) << name;
}
