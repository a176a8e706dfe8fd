#include "viewer/MainViewFrm.h"
#include "imaging/ImageSaving.h"
#include "imaging/ModernFiles.h"
#include "imaging/PictureLoader.h"
#include "platform/AppPaths.h"
#include "platform/StartupState.h"
#include "platform/UserSettings.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "support/KavoriTest.h"
#include "viewer/ImageView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace kavori;

class MainViewFrmTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        CurrentSettings().StartupDialog = 0;
        QApplication::clipboard()->clear();
    }
    QString makeImage(const QString& name, const QColor& color, QSize size = QSize(32, 24))
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(color);
        const QString path = root() + QStringLiteral("pics/") + name;
        writeFile(path, {});
        image.save(path, "BMP");
        return path;
    }
    static void greenOnClipboard()
    {
        QImage green(4, 4, QImage::Format_RGB32);
        green.fill(Qt::green);
        QApplication::clipboard()->setImage(green);
    }
    static void run(MainViewFrm& w, const char* action)
    {
        QAction* a = w.menus().action(QString::fromLatin1(action));
        ASSERT_TRUE(a->isEnabled()) << action;
        a->trigger();
    }
};

TEST_F(MainViewFrmTest, BrowsesAFolderToBothEnds)
{
    const QString a = makeImage(QStringLiteral("a1.bmp"), Qt::red);
    makeImage(QStringLiteral("a2.bmp"), Qt::green);
    const QString c = makeImage(QStringLiteral("a10.bmp"), Qt::blue);
    writeFile(QStringLiteral("pics/readme.txt"), "not an image");
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(a));
    EXPECT_EQ(w.windowTitle(), "Kavori - [a1.bmp]");

    run(w, "mnuBrowsePrevious");
    EXPECT_EQ(prompts().texts(),
              QStringList({"The first file in the current folder is already open..."}));
    run(w, "mnuBrowseNext");
    EXPECT_EQ(w.windowTitle(), "Kavori - [a2.bmp]");
    EXPECT_EQ(QColor(w.document().image().pixel(0, 0)), QColor(Qt::green));
    run(w, "mnuBrowseNext");
    EXPECT_EQ(w.document().currentFile(), c);
    run(w, "mnuBrowseNext");
    EXPECT_EQ(prompts().texts().last(), "The last file in the current folder is already open...");
    EXPECT_EQ(w.document().currentFile(), c);
    run(w, "mnuBrowseFirst");
    EXPECT_EQ(w.document().currentFile(), a);
    run(w, "mnuBrowseLast");
    EXPECT_EQ(w.document().currentFile(), c);

    // A changed image asks before it is replaced; No keeps it.
    run(w, "mnu90CW");
    prompts().answers = {vbNo};
    run(w, "mnuBrowseFirst");
    EXPECT_EQ(w.document().currentFile(), c);
    EXPECT_EQ(prompts().texts().last(),
              "The current file has not been saved.\r\n\r\nDiscard changes and continue?");
}

TEST_F(MainViewFrmTest, UndoEditsPasteAndFullScreenMessages)
{
    MainViewFrm w;
    QAction* undo = w.menus().action(QStringLiteral("mnuUndo"));
    EXPECT_EQ(undo->text(), "Can't Undo");
    EXPECT_FALSE(undo->isEnabled());

    run(w, "mnuFullScreen");
    EXPECT_EQ(prompts().texts().last(),
              "An image has not been opened yet, unable to view full screen...");
    run(w, "mnuPaste");
    EXPECT_EQ(prompts().texts().last(),
              "There is nothing to paste.\r\n\r\nNo image data was found on the clipboard...");
    run(w, "mnuAnimatedGIF");
    EXPECT_EQ(prompts().texts().last(),
              "An image has not been opened yet, unable to view animated gif...");

    ASSERT_TRUE(w.openImage(makeImage(QStringLiteral("p.bmp"), Qt::red, QSize(40, 20))));
    run(w, "mnuAnimatedGIF");
    EXPECT_EQ(prompts().texts().last(),
              "The current image is not a .GIF file, unable to animate...");
    run(w, "mnu50Larger");
    EXPECT_EQ(w.document().image().size(), QSize(60, 30));
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_EQ(undo->text(), "&Undo Resize");
    run(w, "mnuUndo");
    EXPECT_EQ(w.document().image().size(), QSize(40, 20));
    EXPECT_EQ(undo->text(), "Can't Undo");
}

TEST_F(MainViewFrmTest, MissingBackgroundTextureIsReported)
{
    CurrentSettings().MainViewBackground = (root() + QStringLiteral("gone/wood.bmp")).toUpper();
    MainViewFrm w;
    EXPECT_EQ(
        prompts().texts(),
        QStringList(
            {"Could not find the background texture specified for the Main Viewing Window.\r\n\r\n"
             "Edit the \"Appearance\" settings found in \"Preferences\" to remove this message..."}));
    // A texture that is there is drawn without a word.
    prompts().clear();
    CurrentSettings().MainViewBackground =
        makeImage(QStringLiteral("WOOD.BMP"), Qt::darkYellow).toUpper();
    MainViewFrm textured;
    EXPECT_TRUE(prompts().calls.isEmpty());
}

TEST_F(MainViewFrmTest, UnreadableImageIsReportedAndNothingChanges)
{
    MainViewFrm w;
    const QString bad = writeFile(QStringLiteral("pics/broken.bmp"), "BM this is not a bitmap");
    EXPECT_FALSE(w.openImage(bad));
    EXPECT_EQ(w.windowTitle(), "Kavori");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.contains(bad));
}

TEST_F(MainViewFrmTest, DropsOfEveryKind)
{
    MainViewFrm w;
    const QString picture = makeImage(QStringLiteral("drop.bmp"), Qt::red);
    w.dropFile(picture);
    EXPECT_EQ(w.windowTitle(), "Kavori - [drop.bmp]");

    // A symbolic link and a desktop link are followed.
    const QString other = makeImage(QStringLiteral("other.bmp"), Qt::green);
    const QString link = root() + QStringLiteral("pics/link.bmp");
    QFile::link(other, link);
    w.dropFile(link);
    EXPECT_EQ(w.document().currentFile(), other);
    const QString desktop =
        writeFile(QStringLiteral("pics/shortcut.desktop"),
                  "[Desktop Entry]\nType=Link\nName=pic\nURL=file://" + picture.toUtf8() + "\n");
    w.dropFile(desktop);
    EXPECT_EQ(w.document().currentFile(), picture);

    prompts().clear();
    w.dropFile(root() + QStringLiteral("pics"));
    w.dropFile(writeFile(QStringLiteral("pics/scan.tga"), "x"));
    w.dropFile(writeFile(QStringLiteral("pics/empty.desktop"), "[Desktop Entry]\n"));
    w.dropFile(writeFile(QStringLiteral("pics/empty.kav"), "Kavori Slide Show\r\nVersion 3.0\r\n"));
    EXPECT_EQ(
        prompts().texts(),
        QStringList(
            {"You may not drop a folder here, unable to open...",
             ".TGA files must be imported into Kavori and then saved as a supported format first, unable to open:" +
                 root() + "pics/scan.tga",
             "An unexpected error occurred while getting filename that was dropped here, unable to open file...",
             "An error occurred while reading Slide Show data.\r\nThis may not be a valid Slide Show file...",
             "This slide show file does not contain any images, nothing to show..."}));
    EXPECT_EQ(w.document().currentFile(), picture);
}

TEST_F(MainViewFrmTest, RecentFilesImportNewImageAndSettingsKeptAcrossStarts)
{
    QString last;
    {
        MainViewFrm w;
        for (int i = 0; i < 9; ++i) {
            last = makeImage(QStringLiteral("r%1.bmp").arg(i), Qt::blue);
            ASSERT_TRUE(w.openImage(last));
        }
        QAction* first = w.menus().action(QStringLiteral("mnuLast1"));
        EXPECT_TRUE(first->isVisible());
        EXPECT_EQ(first->text(), "&1 " + last);
        EXPECT_EQ(CurrentSettings().Recent[6], root() + "pics/r2.bmp");
        EXPECT_EQ(CurrentSettings().MoreRecentFiles[8], root() + "pics/r0.bmp");
        // The longer list offers all nine; the one chosen opens.
        prompts().inputs = {root() + QStringLiteral("pics/r0.bmp")};
        w.menus().action(QStringLiteral("mnuMoreRecent"))->trigger();
        EXPECT_EQ(w.document().currentFile(), root() + "pics/r0.bmp");
        EXPECT_TRUE(
            prompts().pickerCalls.last().startsWith("chooseItem: Kavori - [More Recent Files]"));
        last = root() + QStringLiteral("pics/r0.bmp"); // now the newest

        // A changed picture exported to JPEG at the quality setting is saved; then a new blank
        // image from the settings.
        w.menus().action(QStringLiteral("mnu90CW"))->trigger();
        ASSERT_TRUE(w.document().imageChanged());
        const QString jpeg = root() + QStringLiteral("out/export.jpg");
        QDir().mkpath(root() + QStringLiteral("out"));
        prompts().files = {jpeg};
        w.menus().action(QStringLiteral("mnuExportJPG"))->trigger();
        EXPECT_TRUE(QFileInfo(jpeg).isFile());
        EXPECT_FALSE(w.document().imageChanged());
        CurrentSettings().NewImageX = 50;
        CurrentSettings().NewImageY = 40;
        w.menus().action(QStringLiteral("mnuNewImage"))->trigger();
        EXPECT_EQ(w.document().image().size(), QSize(50, 40));

        // Closing stores the window's group.
        CurrentSettings().SaveWindowSize = true;
        w.setGeometry(40, 60, 500, 400);
        prompts().answers = {vbYes};
        w.close();
    }
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("MainSizeX")),
              QString::number(500 * 15));
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("Recent1")), last);
    ClearIni();
    LoadSettings();
    CurrentSettings().SaveWindowSize = true;
    MainViewFrm again;
    EXPECT_EQ(again.geometry().size(), QSize(500, 400));
    EXPECT_EQ(again.menus().action(QStringLiteral("mnuLast1"))->text(), "&1 " + last);
}

TEST_F(MainViewFrmTest, CommandLineRequestsAndTheClipboardQuestion)
{
    CurrentStartup().CommandLine = QStringLiteral("ABOUTX");
    {
        MainViewFrm w;
        EXPECT_EQ(prompts().texts(),
                  QStringList({"An invalid command (ABOUTX) was passed at the command prompt..."}));
        EXPECT_EQ(prompts().calls[0].style, vbExclamation);
        EXPECT_EQ(w.startRequest(), 0);
    }
    CurrentStartup().CommandLine = QStringLiteral("language");
    {
        MainViewFrm w;
        EXPECT_EQ(w.startRequest(), 5);
        w.runStartSequence();
        EXPECT_NE(w.findChild<QDialog*>(QStringLiteral("frmLanguage")), nullptr);
    }
    CurrentStartup().CommandLine.clear();
    {
        CurrentSettings().StartupDialog = 1;
        SaveSetting(QStringLiteral("Settings"), QStringLiteral("Show Tips at Startup"),
                    QStringLiteral("1"));
        MainViewFrm w;
        w.runStartSequence(); // the tip of the day and the about box
        EXPECT_NE(w.findChild<QDialog*>(QStringLiteral("frmAbout")), nullptr);
        EXPECT_NE(w.findChild<QDialog*>(QStringLiteral("frmTip")), nullptr);
        QImage clip(4, 4, QImage::Format_RGB32);
        QApplication::clipboard()->setImage(clip);
        prompts().clear();
        prompts().answers = {vbNo};
        w.close();
        EXPECT_EQ(
            prompts().texts(),
            QStringList(
                {"There is an image on the clipboard.\r\n\r\nDo you want this data to be available to other applications?"}));
        EXPECT_TRUE(QApplication::clipboard()->image().isNull());
    }
}

TEST_F(MainViewFrmTest, PasteWithoutSelectionIsAnUndoableNewUntitledImage)
{
    MainViewFrm w;
    const QString photo = makeImage(QStringLiteral("p.bmp"), Qt::red, QSize(40, 20));
    ASSERT_TRUE(w.openImage(photo));
    run(w, "mnu90CW"); // an older snapshot that the paste must replace
    greenOnClipboard();

    prompts().answers = {vbYes}; // discard the rotation: it stays in the undo snapshot
    run(w, "mnuPaste");
    EXPECT_EQ(w.document().currentFile(), "Untitled.BMP");
    EXPECT_EQ(w.windowTitle(), "Kavori - [Untitled.BMP]");
    EXPECT_TRUE(w.document().imageChanged());
    QAction* undo = w.menus().action(QStringLiteral("mnuUndo"));
    EXPECT_EQ(undo->text(), "&Undo Paste");
    EXPECT_TRUE(undo->isEnabled());

    // The scratch file holds the pasted picture, so the temporary image brings it back.
    const QImage scratch(UntitledImagePath(), "BMP");
    ASSERT_EQ(scratch.size(), QSize(4, 4));
    EXPECT_EQ(QColor(scratch.pixel(1, 1)), QColor(Qt::green));

    // Undo gives back the rotated photo under its own name, still changed.
    run(w, "mnuUndo");
    EXPECT_EQ(w.document().image().size(), QSize(20, 40));
    EXPECT_EQ(w.document().currentFile(), photo);
    EXPECT_TRUE(w.document().imageChanged());
    EXPECT_EQ(undo->text(), "Can't Undo");

    prompts().answers = {vbYes};
    run(w, "mnuTempFile");
    EXPECT_EQ(w.document().image().size(), QSize(4, 4));
    EXPECT_EQ(w.document().currentFile(), "Untitled.BMP");

    // Pasting with nothing open leaves nothing to undo.
    MainViewFrm fresh;
    fresh.menus().action(QStringLiteral("mnuPaste"))->trigger();
    EXPECT_EQ(fresh.document().image().size(), QSize(4, 4));
    EXPECT_EQ(fresh.menus().action(QStringLiteral("mnuUndo"))->text(), "Can't Undo");
}

TEST_F(MainViewFrmTest, PicturesWithoutAFileOfTheirOwnAreUntitled)
{
    MainViewFrm w;
    const QString photo = makeImage(QStringLiteral("kept.bmp"), Qt::red);
    ASSERT_TRUE(w.openImage(photo));
    run(w, "mnuNewImage");
    EXPECT_EQ(w.document().currentFile(), "Untitled.BMP");
    EXPECT_TRUE(QFileInfo(UntitledImagePath()).isFile());

    // Neither browsing nor reloading reaches into the temporary folder.
    prompts().clear();
    run(w, "mnuBrowseNext");
    run(w, "mnuReloadImage");
    EXPECT_TRUE(prompts().calls.isEmpty()) << prompts().texts().join(u'|').toStdString();
    EXPECT_EQ(w.document().currentFile(), "Untitled.BMP");
    EXPECT_EQ(CurrentSettings().Recent[0], photo);
    EXPECT_EQ(CurrentSettings().Recent[1], "");

    // An imported picture is untitled too, with the imported file's name in the title.
    const QByteArray header = QByteArray::fromHex("000002000000000000000000040003001820");
    prompts().files = {writeFile(QStringLiteral("pics/in.tga"), header + QByteArray(36, 'x'))};
    prompts().answers = {vbYes};
    run(w, "mnuImportTGA");
    EXPECT_EQ(w.document().currentFile(), "Untitled.BMP");
    EXPECT_EQ(w.windowTitle(), "Kavori - [in.tga]");
    EXPECT_TRUE(w.document().imageChanged());
    EXPECT_EQ(QImage(UntitledImagePath(), "BMP").size(), QSize(4, 3));
}

TEST_F(MainViewFrmTest, PasteIntoASelectionAsksAboutStretching)
{
    MainViewFrm w;
    w.resize(600, 400);
    w.show();
    ASSERT_TRUE(w.openImage(makeImage(QStringLiteral("base.bmp"), Qt::red, QSize(60, 40))));
    greenOnClipboard();

    ImageView* view = w.imageView();
    auto select = [view] {
        const QPoint origin = view->drawnRect().topLeft();
        QTest::mousePress(view->viewport(), Qt::LeftButton, {}, origin + QPoint(10, 10));
        QTest::mouseMove(view->viewport(), origin + QPoint(40, 30));
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, origin + QPoint(40, 30));
        return view->selection();
    };
    const QRect area = select();
    ASSERT_FALSE(area.isEmpty());
    ASSERT_GT(area.width(), 8);

    // Yes: stretched over the whole area, the rest untouched, one step to undo.
    prompts().answers = {vbYes};
    run(w, "mnuPaste");
    EXPECT_EQ(prompts().texts(), QStringList({"Stretch clipboard data to fit the selected area?"}));
    EXPECT_EQ(prompts().calls[0].style, vbYesNo + vbQuestion);
    const QImage stretched = w.document().image();
    EXPECT_EQ(stretched.size(), QSize(60, 40));
    EXPECT_EQ(QColor(stretched.pixel(area.center())), QColor(Qt::green));
    EXPECT_EQ(QColor(stretched.pixel(area.bottomRight() - QPoint(1, 1))), QColor(Qt::green));
    EXPECT_EQ(QColor(stretched.pixel(0, 0)), QColor(Qt::red));
    EXPECT_EQ(w.document().currentFile(), root() + "pics/base.bmp");
    EXPECT_EQ(w.menus().action(QStringLiteral("mnuUndo"))->text(), "&Undo Paste");
    run(w, "mnuUndo");
    EXPECT_EQ(QColor(w.document().image().pixel(area.center())), QColor(Qt::red));

    // No: placed at its own size in the corner of the area.
    ASSERT_EQ(select(), area);
    prompts().answers = {vbNo};
    run(w, "mnuPaste");
    const QImage placed = w.document().image();
    EXPECT_EQ(QColor(placed.pixel(area.topLeft() + QPoint(1, 1))), QColor(Qt::green));
    EXPECT_EQ(QColor(placed.pixel(area.topLeft() + QPoint(6, 6))), QColor(Qt::red));
}

TEST_F(MainViewFrmTest, OnlyOneFileYesAndRecentFilesAskAboutChanges)
{
    const QString alone = makeImage(QStringLiteral("alone.bmp"), Qt::red);
    const QString other = root() + QStringLiteral("elsewhere/other.bmp");
    writeFile(other, {});
    QImage blue(8, 8, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    ASSERT_TRUE(blue.save(other, "BMP"));

    MainViewFrm w;
    ASSERT_TRUE(w.openImage(other));
    ASSERT_TRUE(w.openImage(alone));
    prompts().clear();
    prompts().answers = {vbYes};
    prompts().files = {other};
    run(w, "mnuBrowseNext");
    EXPECT_EQ(prompts().texts(),
              QStringList({"There is only one file in the current folder to browse.\r\n\r\n"
                           "Use the Open Image dialog to select another folder?"}));
    EXPECT_EQ(prompts().pickerCalls, QStringList({"openFile: Open Image"}));
    EXPECT_EQ(w.document().currentFile(), other);

    // The recent list now reads other, alone. A changed picture asks first; No keeps it.
    run(w, "mnu90CW");
    prompts().clear();
    prompts().answers = {vbNo};
    run(w, "mnuLast2");
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"The current file has not been saved.\r\n\r\nDiscard changes and continue?"}));
    EXPECT_EQ(w.document().currentFile(), other);
    EXPECT_TRUE(w.document().imageChanged());
    prompts().answers = {vbYes};
    run(w, "mnuLast2");
    EXPECT_EQ(w.document().currentFile(), alone);
    EXPECT_FALSE(w.document().imageChanged());
}

TEST_F(MainViewFrmTest, CommandLineRequestOverridesTheStartupDialog)
{
    CurrentSettings().StartupDialog = 1;
    CurrentStartup().CommandLine = QStringLiteral("open");
    MainViewFrm w;
    EXPECT_EQ(w.startRequest(), 3);
    w.runStartSequence();
    EXPECT_EQ(prompts().pickerCalls, QStringList({"openFile: Open Image"}));
    EXPECT_EQ(w.findChild<QDialog*>(QStringLiteral("frmAbout")), nullptr);
}

TEST_F(MainViewFrmTest, TodaysPicturesOpenFromEveryDoor)
{
    QImage photo(64, 48, QImage::Format_RGB32);
    photo.fill(qRgb(30, 90, 200));
    QString why;
    const QString png =
        writeFile(QStringLiteral("pics/a-shot.png"), kavori::test::EncodePng(photo, {}));
    const QString webp =
        writeFile(QStringLiteral("pics/b-web.webp"), kavori::test::EncodeWebp(photo, {}));
    const QString jxl =
        writeFile(QStringLiteral("pics/c-new.jxl"), kavori::test::EncodeJxl(photo, {}, &why));
    makeImage(QStringLiteral("d-old.bmp"), Qt::red);

    // On the command line: opened, not taken for a command.
    CurrentStartup().CommandLine = png;
    {
        MainViewFrm w;
        w.runStartSequence();
        EXPECT_TRUE(prompts().texts().isEmpty()) << prompts().texts().join(u'|').toStdString();
        EXPECT_EQ(w.document().currentFile(), png);
        EXPECT_EQ(w.document().image().size(), QSize(64, 48));

        // Browsing the folder passes through every type.
        run(w, "mnuBrowseNext");
        EXPECT_EQ(w.document().currentFile(), webp);
        run(w, "mnuBrowseNext");
        EXPECT_EQ(w.document().currentFile(), jxl);
        run(w, "mnuBrowseNext");
        EXPECT_EQ(FileNameOf(w.document().currentFile()), "d-old.bmp");

        // The open dialog offers them and opens them.
        prompts().files = {jxl};
        run(w, "mnuOpen");
        EXPECT_TRUE(prompts().pickerFilters.last().contains(QStringLiteral("*.jxl")));
        EXPECT_EQ(w.windowTitle(), "Kavori - [c-new.jxl]");

        // Saved as the save commands always save: JPEG or bitmap.
        const QString asJpeg = root() + QStringLiteral("out/new.jpg");
        const QString asBitmap = root() + QStringLiteral("out/new.bmp");
        QDir().mkpath(root() + QStringLiteral("out"));
        prompts().files = {asJpeg, asBitmap};
        run(w, "mnuExportJPG");
        run(w, "mnuExportBMP");
        EXPECT_EQ(LoadPicture(asJpeg).size(), QSize(64, 48));
        EXPECT_EQ(QColor(LoadPicture(asBitmap).pixel(10, 10)), QColor(30, 90, 200));

        // Dropped, and damaged.
        w.dropFile(webp);
        EXPECT_EQ(w.document().currentFile(), webp);
        prompts().clear();
        const QString cut = writeFile(QStringLiteral("pics/cut.png"), readFile(png).left(60));
        w.dropFile(cut);
        EXPECT_EQ(prompts().texts(),
                  QStringList({"Unable to open the image file:\r\n\r\n" + cut +
                               "\r\n\r\nThe file may be damaged or is not a supported type..."}));
        EXPECT_EQ(w.document().currentFile(), webp);
    }

    // Classic types only: as the program always was.
    CurrentSettings().ClassicTypesOnly = true;
    prompts().clear();
    {
        MainViewFrm w;
        EXPECT_EQ(prompts().texts(), QStringList({"An invalid command (" + png +
                                                  ") was passed at the command prompt..."}));
        prompts().clear();
        w.dropFile(webp);
        EXPECT_EQ(
            prompts().texts(),
            QStringList({webp + "\r\n\r\nThis is not a supported image file, unable to open..."}));
        prompts().files = {QString()};
        run(w, "mnuOpen");
        EXPECT_FALSE(prompts().pickerFilters.last().contains(QStringLiteral("*.png")));
    }
    CurrentStartup().CommandLine.clear();
}

TEST_F(MainViewFrmTest, EmptyWindowHintNumberedRecentFilesAndSeveralPicturesNamed)
{
    // Without a picture the area says what to do; with one it says nothing.
    const QString a = makeImage(QStringLiteral("a.bmp"), Qt::red);
    {
        MainViewFrm fresh;
        EXPECT_EQ(fresh.imageView()->hint(), EmptyWindowHint(false));
        EXPECT_TRUE(fresh.imageView()->hint().contains("Ctrl+O"));
        EXPECT_FALSE(fresh.imageView()->hint().contains("recent files"));
    }
    CurrentSettings().Recent[0] = a;
    MainViewFrm w;
    EXPECT_TRUE(w.imageView()->hint().contains("recent files"));
    const QString dir = qEnvironmentVariable("KAVORI_SHOT_DIR");
    if (!dir.isEmpty()) {
        w.resize(640, 480);
        w.grab().save(dir + QStringLiteral("/EmptyWindow.png"));
    }
    ASSERT_TRUE(w.openImage(a));
    EXPECT_TRUE(w.imageView()->hint().isEmpty());

    // An "&" of a path is shown, not taken as the accelerator.
    const QString odd = root() + QStringLiteral("Tom & Jerry/b.bmp");
    writeFile(odd, {});
    QImage(8, 8, QImage::Format_RGB32).save(odd, "BMP");
    ASSERT_TRUE(w.openImage(odd));
    EXPECT_EQ(w.menus().action(QStringLiteral("mnuLast1"))->text(),
              "&1 " + root().replace(u'&', "&&") + "Tom && Jerry/b.bmp");
    EXPECT_EQ(w.menus().action(QStringLiteral("mnuLast2"))->text(), "&2 " + a);
    w.close();
}

TEST_F(MainViewFrmTest, SeveralPicturesNamedAreSteppedThroughInTheirOrder)
{
    const QString a = makeImage(QStringLiteral("a.bmp"), Qt::red);
    makeImage(QStringLiteral("b.bmp"), Qt::green);
    const QString far = root() + QStringLiteral("other/z.bmp");
    writeFile(far, {});
    QImage(8, 8, QImage::Format_RGB32).save(far, "BMP");

    CurrentStartup().CommandLineFiles = {far, a};
    CurrentStartup().CommandLine = far;
    MainViewFrm w;
    w.runStartSequence();
    EXPECT_EQ(w.document().currentFile(), far);
    // Next is the second one named, not a picture of the first one's folder; past the end the
    // folder's own message.
    run(w, "mnuBrowseNext");
    EXPECT_EQ(w.document().currentFile(), a);
    run(w, "mnuBrowseNext");
    EXPECT_EQ(prompts().texts().last(), "The last file in the current folder is already open...");
    run(w, "mnuBrowseFirst");
    EXPECT_EQ(w.document().currentFile(), far);
    // Deleting one moves on within the list.
    ASSERT_TRUE(QFile::remove(far));
    w.followCurrentFile(QString());
    EXPECT_EQ(w.document().currentFile(), a);
    // Once a picture outside the list is open, folders are browsed again, the named ones too.
    ASSERT_TRUE(w.openImage(root() + QStringLiteral("pics/b.bmp")));
    run(w, "mnuBrowsePrevious");
    EXPECT_EQ(w.document().currentFile(), a);
    run(w, "mnuBrowseNext");
    EXPECT_EQ(w.document().currentFile(), root() + QStringLiteral("pics/b.bmp"));
}
