#include "files/FileDialogs.h"
#include "files/FolderPane.h"
#include "files/frmCopyImages.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShow.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <functional>

using namespace kavori;

class FileCommandsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        CurrentSettings().UseRecycleBin = false;
        pics = root() + QStringLiteral("pics/");
        dst = root() + QStringLiteral("dst/");
        QDir().mkpath(dst);
        const QColor colours[] = {Qt::red, Qt::green, Qt::blue};
        for (int i = 0; i < 3; ++i) {
            QImage picture(24, 16, QImage::Format_RGB32);
            picture.fill(colours[i]);
            writeFile(pics + QStringLiteral("p%1.bmp").arg(i + 1), {});
            picture.save(pics + QStringLiteral("p%1.bmp").arg(i + 1), "BMP");
        }
        writeFile(pics + QStringLiteral("notes.txt"), "not a picture");
        writeFile(pics + QStringLiteral("!Description"),
                  "Kavori Description File\r\n------------------------------\r\n"
                  "p1.bmp\r\nRed\r\np2.bmp\r\nGreen\r\n");
    }
    // Runs a main-window command whose dialog is then worked by drive (and closed after).
    void runWithDialog(MainViewFrm& w, const char* action, std::function<void(QDialog*)> drive)
    {
        bool driven = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            drive(dialog);
            driven = true;
            if (dialog->isVisible())
                dialog->reject();
        });
        run(w, action);
        EXPECT_TRUE(driven) << action;
    }
    static void run(MainViewFrm& w, const char* action)
    {
        QAction* a = w.menus().action(QString::fromLatin1(action));
        ASSERT_TRUE(a->isEnabled()) << action;
        a->trigger();
    }
    static void select(FolderPane* pane, const QStringList& names)
    {
        for (int row = 0; row < pane->fileList()->count(); ++row)
            pane->fileList()->item(row)->setSelected(
                names.contains(pane->fileList()->item(row)->text()));
    }
    static void click(QDialog* dialog, const char* name)
    {
        auto* b = dialog->findChild<QPushButton*>(QString::fromLatin1(name));
        ASSERT_NE(b, nullptr) << name;
        b->click();
    }
    static void shoot(QWidget* dialog, const char* name)
    {
        const QString dir = qEnvironmentVariable("KAVORI_SHOT_DIR");
        if (!dir.isEmpty())
            dialog->grab().save(dir + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
    }
    QString pics;
    QString dst;
};

TEST_F(FileCommandsTest, CopyAndMoveImagesFromTheWindow)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("p1.bmp")));
    CurrentShow().slides = {NewSlide(pics + QStringLiteral("p2.bmp"))};

    runWithDialog(w, "mnuFileCopyImages", [&](QDialog* d) {
        auto* copy = qobject_cast<frmCopyImages*>(d);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(copy->source()->folder(), pics);
        // Only pictures are listed.
        EXPECT_EQ(copy->source()->fileList()->count(), 3);
        copy->destination()->setFolder(dst);
        click(d, "CmdCopy");
        EXPECT_EQ(prompts().texts().last(), "No files are selected, nothing to copy...");
        select(copy->source(), {QStringLiteral("p1.bmp"), QStringLiteral("p2.bmp")});
        shoot(d, "frmCopyImages");
        prompts().answers = {vbYes};
        click(d, "CmdCopy");
    });
    EXPECT_EQ(prompts().texts().last(), "Copy 2 files to the following directory?\r\n\r\n" + dst);
    EXPECT_TRUE(QFileInfo::exists(dst + QStringLiteral("p1.bmp")));
    EXPECT_TRUE(QFileInfo::exists(pics + QStringLiteral("p2.bmp")));
    EXPECT_EQ(GetDescription(dst + QStringLiteral("p2.bmp")), "Green");
    EXPECT_EQ(CurrentSettings().LastCopyToPath, dst);

    // Moving: the open picture stays, the other one goes and its slide follows.
    const QString moved = root() + QStringLiteral("moved/");
    QDir().mkpath(moved);
    prompts().clear();
    runWithDialog(w, "mnuMoveImages", [&](QDialog* d) {
        auto* move = qobject_cast<frmMoveImages*>(d);
        ASSERT_NE(move, nullptr);
        EXPECT_EQ(move->destination()->folder(), dst); // the last destination
        move->destination()->setFolder(moved);
        select(move->source(), {QStringLiteral("p1.bmp"), QStringLiteral("p2.bmp")});
        prompts().answers = {vbYes};
        click(d, "CmdMove");
        EXPECT_EQ(move->source()->fileList()->count(), 2);
    });
    EXPECT_EQ(
        prompts().texts().mid(1),
        QStringList({"Unable to move the file:\r\n\r\np1.bmp\r\n\r\n...image is currently open.",
                     "At least one of the selected file(s) is in the current slide show, the "
                     "entry(s) were updated as a result..."}));
    EXPECT_TRUE(QFileInfo::exists(pics + QStringLiteral("p1.bmp")));
    EXPECT_TRUE(QFileInfo::exists(moved + QStringLiteral("p2.bmp")));
    EXPECT_EQ(CurrentShow().slides[0].SlideFile, moved + QStringLiteral("p2.bmp"));
    EXPECT_EQ(GetDescription(moved + QStringLiteral("p2.bmp")), "Green");
}

TEST_F(FileCommandsTest, TheCurrentImageMovesRenamesAndGoesWithTheWindowFollowing)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("p1.bmp")));

    prompts().inputs = {QStringLiteral("first")};
    run(w, "mnuRenameCurrentImg");
    EXPECT_EQ(w.document().currentFile(), pics + QStringLiteral("first.bmp"));
    EXPECT_EQ(w.windowTitle(), "Kavori - [first.bmp]");
    EXPECT_EQ(GetDescription(pics + QStringLiteral("first.bmp")), "Red");

    runWithDialog(w, "mnuMoveCurrentImg", [&](QDialog* d) {
        auto* move = qobject_cast<frmMoveCurrentImg*>(d);
        ASSERT_NE(move, nullptr);
        move->destination()->setFolder(dst);
        auto* current = d->findChild<QLabel*>(QStringLiteral("lblCurrent"));
        EXPECT_EQ(current->text(), "Complete path to current image file:\nfirst.bmp");
        QTest::mouseClick(current, Qt::LeftButton);
        EXPECT_EQ(current->text(), "Complete path to current image file:\n" + pics + "first.bmp");
        shoot(d, "frmMoveCurrentImg");
        prompts().answers = {vbYes};
        click(d, "CmdMove");
    });
    EXPECT_EQ(w.document().currentFile(), dst + QStringLiteral("first.bmp"));
    EXPECT_FALSE(QFileInfo::exists(pics + QStringLiteral("first.bmp")));

    // Deleting the open picture asks first; the window moves on to the next one.
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("p2.bmp")));
    prompts().clear();
    prompts().answers = {vbNo, vbYes};
    run(w, "mnuDeleteCurrentImage");
    EXPECT_TRUE(QFileInfo::exists(pics + QStringLiteral("p2.bmp")));
    run(w, "mnuDeleteCurrentImage");
    EXPECT_FALSE(QFileInfo::exists(pics + QStringLiteral("p2.bmp")));
    EXPECT_EQ(prompts().calls[0].text,
              "Are you sure you want to delete \"p2.bmp\" for good?\r\n\r\nThe file can not be "
              "recovered afterwards.");
    EXPECT_EQ(w.document().currentFile(), pics + QStringLiteral("p3.bmp"));
    // The last picture gone, the window is empty.
    prompts().answers = {vbYes};
    run(w, "mnuDeleteCurrentImage");
    EXPECT_FALSE(w.document().hasImage());
    EXPECT_EQ(w.windowTitle(), "Kavori");
    prompts().clear();
    run(w, "mnuDeleteCurrentImage");
    EXPECT_EQ(prompts().texts(),
              QStringList({"An image has not been opened yet, unable to delete..."}));
}

TEST_F(FileCommandsTest, DeleteAndRenameDialogsAndTheFolderCommands)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("p3.bmp")));
    runWithDialog(w, "mnuDeleteImages", [&](QDialog* d) {
        auto* del = qobject_cast<DeleteImgFrm*>(d);
        ASSERT_NE(del, nullptr);
        // The Delete key with nothing chosen, then on the open picture.
        QTest::keyClick(del->source()->fileList(), Qt::Key_Delete);
        select(del->source(), {QStringLiteral("p3.bmp")});
        QTest::keyClick(del->source()->fileList(), Qt::Key_Delete);
        select(del->source(), {QStringLiteral("p1.bmp"), QStringLiteral("p3.bmp")});
        shoot(d, "DeleteImgFrm");
        prompts().answers = {vbYes};
        click(d, "CmdDelete");
        EXPECT_EQ(del->source()->fileList()->count(), 2);
    });
    EXPECT_EQ(prompts().texts()[0], "Unable to delete file by pressing the delete key, nothing is "
                                    "selected in the file list...");
    EXPECT_EQ(prompts().texts()[1], "Unable to delete this file, image is currently open...");
    EXPECT_FALSE(QFileInfo::exists(pics + QStringLiteral("p1.bmp")));
    EXPECT_TRUE(QFileInfo::exists(pics + QStringLiteral("p3.bmp")));
    EXPECT_EQ(ReadDescriptionFile(pics), 1);

    prompts().clear();
    runWithDialog(w, "mnuRenameImg", [&](QDialog* d) {
        auto* rename = qobject_cast<RenameImgFrm*>(d);
        ASSERT_NE(rename, nullptr);
        select(rename->source(), {QStringLiteral("p2.bmp")});
        shoot(d, "RenameImgFrm");
        prompts().inputs = {QStringLiteral("grass.bmp")};
        prompts().answers = {vbNo}; // no other file
        click(d, "CmdRename");
        EXPECT_FALSE(d->isVisible());
    });
    EXPECT_EQ(prompts().texts(), QStringList({"Would you like to rename another file?"}));
    EXPECT_EQ(GetDescription(pics + QStringLiteral("grass.bmp")), "Green");

    // An empty folder goes from the folder dialog; the tree's Delete key refuses a full one.
    const QString empty = root() + QStringLiteral("empty");
    QDir().mkpath(empty);
    prompts().clear();
    runWithDialog(w, "mnuDelEmptyFolder", [&](QDialog* d) {
        auto* del = qobject_cast<DeleteFolderFrm*>(d);
        ASSERT_NE(del, nullptr);
        EXPECT_EQ(del->folders()->folder(), pics);
        QTest::keyClick(del->folders()->tree(), Qt::Key_Delete);
        del->folders()->setFolder(empty);
        shoot(d, "DeleteFolderFrm");
        prompts().answers = {vbYes};
        click(d, "CmdDelete");
        EXPECT_EQ(del->folders()->folder(), root());
    });
    EXPECT_EQ(prompts().texts()[0], "Unable to delete the directory:\r\n\r\n" + pics +
                                        "\r\n\r\nThe selected path is not empty...");
    EXPECT_FALSE(QFileInfo::exists(empty));
}
