#include "editor/SlideLoadFrm.h"
#include "editor/SlideRangeFrm.h"
#include "editor/frmSlideProperties.h"
#include "editor/frmTransition.h"
#include "files/FolderPane.h"
#include "files/frmCopyImages.h"
#include "platform/AppPaths.h"
#include "playback/FullViewFrm.h"
#include "playback/TransitionPreview.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileSystemModel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

using namespace kavori;

class SlideDialogsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        const QString folder = root() + QStringLiteral("show/");
        QDir().mkpath(folder);
        const QColor colours[] = {Qt::red, Qt::green, Qt::blue};
        for (int i = 0; i < 3; ++i) {
            QImage picture(64, 48, QImage::Format_RGB32);
            picture.fill(colours[i]);
            const QString file = folder + QStringLiteral("pic%1.bmp").arg(i);
            picture.save(file, "BMP");
            CurrentShow().slides << NewSlide(file);
        }
        CurrentShow().path = folder + QStringLiteral("Test.KAV");
        ASSERT_TRUE(WriteSlideShow(CurrentShow().path));
        CurrentShow().changed = false;

        textures = AppPath() + QStringLiteral("Bonus/Textures/");
        QDir().mkpath(textures);
        QImage tile(16, 16, QImage::Format_RGB32);
        tile.fill(QColor(200, 180, 120));
        tile.save(textures + QStringLiteral("Sand.bmp"), "BMP");
        writeFile(QStringLiteral("kavori/Bonus/Textures/Broken.bmp"), "BM not really");
    }

    // Runs work on the next modal dialog once it is up.
    template <typename Dialog, typename Work> static void inNextDialog(Work work)
    {
        QTimer::singleShot(0, qApp, [work] {
            Dialog* dialog = nullptr;
            const bool up = QTest::qWaitFor([&] {
                dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
                return dialog != nullptr;
            });
            ASSERT_TRUE(up);
            work(*dialog);
        });
    }

    QString textures;
};

TEST_F(SlideDialogsTest, PropertiesEditedFromTheEditorAreSavedInTheShow)
{
    SlideLoadFrm editor;
    editor.selectLines({1});
    inNextDialog<frmSlideProperties>([](frmSlideProperties& d) {
        EXPECT_EQ(d.windowTitle(), QStringLiteral("Editing properties for slide 2"));
        d.findChild<QComboBox*>(QStringLiteral("cboLocation"))->setCurrentIndex(10);
        d.findChild<QSpinBox*>(QStringLiteral("txtPosX"))->setValue(120);
        d.findChild<QSpinBox*>(QStringLiteral("txtPosY"))->setValue(80);
        d.findChild<QCheckBox*>(QStringLiteral("chkEnlarge"))->setChecked(true);
        d.chooseTexture(QStringLiteral("Sand.bmp"));
        EXPECT_TRUE(d.findChild<QRadioButton*>(QStringLiteral("optTexture"))->isChecked());
        // The preview shows the texture around the picture at its custom place.
        const QImage preview = d.previewImage();
        ASSERT_FALSE(preview.isNull());
        EXPECT_EQ(QColor(preview.pixel(preview.width() - 2, preview.height() - 2)),
                  QColor(200, 180, 120));
        // Next slide, a colour; back again: the first slide kept what it was given.
        d.next();
        EXPECT_EQ(d.windowTitle(), QStringLiteral("Editing properties for slide 3"));
        d.setBackColor(0x0000FF);
        d.findChild<QRadioButton*>(QStringLiteral("optColor"))->setChecked(true);
        d.previous();
        EXPECT_EQ(d.findChild<QSpinBox*>(QStringLiteral("txtPosX"))->value(), 120);
        d.findChild<QPushButton*>(QStringLiteral("CmdOK"))->click();
    });
    editor.findChild<QAction*>(QStringLiteral("mnuSlideProperties"))->trigger();
    EXPECT_TRUE(CurrentShow().changed);
    EXPECT_EQ(editor.selectedLines(), QVector<int>({1}));

    prompts().answers = {vbYes};
    ASSERT_TRUE(editor.save());
    ResetShow();
    ASSERT_TRUE(ReadSlideShow(root() + QStringLiteral("show/Test.KAV")));
    const QVector<Slide>& slides = CurrentShow().slides;
    ASSERT_EQ(slides.size(), 3);
    EXPECT_EQ(slides[1].SlideLocation, 10);
    EXPECT_EQ(slides[1].SlidePosX, 120);
    EXPECT_EQ(slides[1].SlidePosY, 80);
    EXPECT_EQ(slides[1].SlideEnlarge, 1);
    EXPECT_EQ(slides[1].SlideBackMode, 2);
    EXPECT_EQ(QFileInfo(slides[1].SlideTexture).fileName(), QStringLiteral("Sand.bmp"));
    EXPECT_EQ(slides[2].SlideBackMode, 1);
    EXPECT_EQ(slides[2].SlideBackColor, 0x0000FF);
    EXPECT_EQ(slides[0].SlideLocation, 0);
}

TEST_F(SlideDialogsTest, PropertiesAllCommandsTexturesAndCancel)
{
    frmSlideProperties d(0);
    // Every slide is centred already: said, not asked.
    d.setAll(SetAllCommand::Center);
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"All slides are already set to display in the center of the screen..."}));

    // Textures: nothing chosen, a file that is no picture, then a range of slides 2 to 3.
    prompts().clear();
    d.setAll(SetAllCommand::Textures);
    d.chooseTexture(QStringLiteral("Broken.bmp"));
    d.setTextureRange();
    EXPECT_EQ(prompts().texts(),
              QStringList({"Select the image file that you would like to use as a background "
                           "texture and then try again.",
                           "Unable to set textures..."}));
    d.chooseTexture(QStringLiteral("Sand.bmp"));
    inNextDialog<SlideRangeFrm>([](SlideRangeFrm& range) {
        range.setRange(1, 2);
        range.accept();
    });
    d.setTextureRange();
    EXPECT_EQ(d.slides()[0].SlideBackMode, 2); // the slide on screen took the chosen texture
    EXPECT_EQ(d.slides()[1].SlideBackMode, 2);
    EXPECT_EQ(d.slides()[2].SlideBackMode, 2);

    // An empty texture folder.
    prompts().clear();
    const QString empty = root() + QStringLiteral("empty/");
    QDir().mkpath(empty);
    d.setTextureFolder(empty);
    d.previewTexture();
    d.setAll(SetAllCommand::Textures);
    EXPECT_EQ(prompts().texts(),
              QStringList({"There are no files in the selected directory, unable to view "
                           "background texture...",
                           "There are no image files in the selected folder to use as a "
                           "background texture."}));

    // Cancel leaves the show as it was.
    d.reject();
    EXPECT_EQ(CurrentShow().slides[1].SlideBackMode, 0);
    EXPECT_FALSE(CurrentShow().changed);

    // A slide whose texture is gone says so when it comes up.
    prompts().clear();
    CurrentShow().slides[0].SlideBackMode = 2;
    CurrentShow().slides[0].SlideTexture = root() + QStringLiteral("gone.bmp");
    frmSlideProperties again(0);
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"The background texture specified for this slide could not be found..."}));
}

TEST_F(SlideDialogsTest, TransitionsChosenPreviewedAndSaved)
{
    CurrentSettings().TransitionSpeed = 6;
    SlideLoadFrm editor;
    inNextDialog<frmTransition>([](frmTransition& d) {
        EXPECT_EQ(d.windowTitle(), QStringLiteral("Editing transition for slide 1:"));
        auto* list = d.findChild<QListWidget*>(QStringLiteral("ListTrans"));
        EXPECT_EQ(list->count(), 58);
        EXPECT_EQ(list->item(0)->text(), QStringLiteral(">> No Transition - Blank Screen <<"));
        EXPECT_EQ(list->item(1)->text(),
                  QStringLiteral(">> No Transition - Don't Blank Screen <<"));
        d.noTransition(); // already none
        list->setCurrentRow(12);
        d.preview();
        // The effect ran to the slide's picture: red fills the middle of the box.
        const QImage& shown = d.previewBox()->shown();
        ASSERT_FALSE(shown.isNull());
        EXPECT_EQ(QColor(shown.pixel(shown.width() / 2, shown.height() / 2)), QColor(Qt::red));
        d.next();
        ScriptRandom({0.5});
        d.randomSelect();
        EXPECT_EQ(d.selectedTransition(), 29);
        d.findChild<QPushButton*>(QStringLiteral("CmdOK"))->click();
    });
    editor.findChild<QAction*>(QStringLiteral("mnuEditTransitions"))->trigger();
    EXPECT_EQ(prompts().texts(), QStringList({"This slide is already set to No Transition..."}));
    EXPECT_TRUE(CurrentShow().changed);

    prompts().clear();
    prompts().answers = {vbYes};
    ASSERT_TRUE(editor.save());
    ResetShow();
    ASSERT_TRUE(ReadSlideShow(root() + QStringLiteral("show/Test.KAV")));
    EXPECT_EQ(CurrentShow().slides[0].SlideTransition, 12);
    EXPECT_EQ(CurrentShow().slides[1].SlideTransition, 29);
    EXPECT_EQ(CurrentShow().slides[2].SlideTransition, 0);

    // Clearing them all from the editor's menu asks first.
    prompts().clear();
    prompts().answers = {vbYes};
    editor.refreshList();
    editor.findChild<QAction*>(QStringLiteral("mnuClearTransitions"))->trigger();
    EXPECT_EQ(CurrentShow().slides[0].SlideTransition, 0);
    EXPECT_EQ(CurrentShow().slides[1].SlideTransition, 0);
    editor.findChild<QAction*>(QStringLiteral("mnuClearTransitions"))->trigger();
    EXPECT_EQ(prompts().texts().last(),
              QStringLiteral("All slides are already set to No Transition..."));
}

TEST_F(SlideDialogsTest, TransitionCommandsForEverySlideAndMovies)
{
    CurrentShow().slides[2].SlideFile = root() + QStringLiteral("show/clip.mpg");
    frmTransition d(0);
    prompts().answers = {vbYes};
    ScriptRandom({0.0, 0.9999999, 0.25});
    d.randomizeAll();
    EXPECT_EQ(d.slides()[0].SlideTransition, 1);
    EXPECT_EQ(d.slides()[1].SlideTransition, 57);
    EXPECT_EQ(d.slides()[2].SlideTransition, 15);
    EXPECT_EQ(d.selectedTransition(), 1);

    d.selectTransition(7);
    prompts().answers = {vbYes};
    d.setAll();
    for (const Slide& s : d.slides())
        EXPECT_EQ(s.SlideTransition, 7);
    prompts().answers = {vbYes};
    d.clearAll();
    for (const Slide& s : d.slides())
        EXPECT_EQ(s.SlideTransition, 0);
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"Choose a random transition for all the images in your slide show?",
                     "Set all of the images in your slide show to the " +
                         d.findChild<QListWidget*>(QStringLiteral("ListTrans"))->item(7)->text() +
                         " transition?",
                     "You are about to clear ALL of the image transition settings for this "
                     "slide show.\r\n\r\nAre you sure?"}));

    d.stepTo(2);
    d.preview();
    EXPECT_EQ(d.previewBox()->lines(),
              QStringList({"   Unable to show", "   transitions on", "   movie files..."}));
}

TEST_F(SlideDialogsTest, SelectingLinesListingNamesAndAShowOnAMissingMedium)
{
    SlideLoadFrm editor;
    inNextDialog<SlideRangeFrm>([](SlideRangeFrm& range) {
        range.setRange(1, 2);
        range.accept();
    });
    editor.findChild<QAction*>(QStringLiteral("mnuSelectRange"))->trigger();
    EXPECT_EQ(editor.selectedLines(), QVector<int>({1, 2}));

    editor.selectLines({0});
    prompts().inputs = {QStringLiteral("2")};
    editor.findChild<QAction*>(QStringLiteral("mnuSelectSome1"))->trigger();
    EXPECT_EQ(editor.selectedLines(), QVector<int>({0, 2}));

    auto* list = editor.findChild<QAbstractItemView*>(QStringLiteral("ViewList"));
    const QModelIndex first = list->model()->index(0, 0);
    EXPECT_EQ(first.data().toString(), CurrentShow().slides[0].SlideFile);
    editor.findChild<QAction*>(QStringLiteral("mnuListFilenames"))->trigger();
    EXPECT_EQ(first.data().toString(), QStringLiteral("pic0.bmp"));
    EXPECT_EQ(first.data(Qt::ToolTipRole).toString(), CurrentShow().slides[0].SlideFile);

    // A show on a stick that is not in: the medium is asked for, and Cancel loads nothing.
    prompts().clear();
    prompts().answers = {vbCancel};
    EXPECT_FALSE(editor.load(QStringLiteral("/media/someone/HOLIDAY/Shows/Beach.KAV")));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("Insert the disk that contains the file:\r\n\r\n"
                             "/media/someone/HOLIDAY/Shows/Beach.KAV\r\n\r\n"
                             "...into Floppy Drive HOLIDAY\r\n\r\n"
                             "Press the \"OK\" button to continue."));
    EXPECT_EQ(CurrentShow().slides.size(), 3);
}

TEST_F(SlideDialogsTest, FullScreenPreviewPlaysTheSlideAndLeavesShowAndSettingsAlone)
{
    CurrentSettings().ResumeLastDisplayed = true;
    CurrentSettings().ImageLastDisplayed = 2;
    frmTransition d(1);
    d.selectTransition(9);
    int slides = -1;
    qint16 transition = -1;
    bool pauseRefused = false;
    inNextDialog<FullViewFrm>([&](FullViewFrm& player) {
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return player.currentSlide() >= 0 && !player.isLoading(); }, 5000));
        slides = int(CurrentShow().slides.size());
        transition = CurrentShow().slides[0].SlideTransition;
        player.runAction(PlayerAction::Pause);
        pauseRefused = !player.isPaused();
        const QImage& screen = player.screenImage();
        EXPECT_EQ(QColor(screen.pixel(screen.width() / 2, screen.height() / 2)), QColor(Qt::green));
        player.endShow();
    });
    d.previewFullScreen();
    EXPECT_EQ(slides, 1);
    EXPECT_EQ(transition, 9);
    EXPECT_TRUE(pauseRefused);
    EXPECT_EQ(CurrentShow().slides.size(), 3);
    EXPECT_EQ(CurrentSettings().ImageLastDisplayed, 2);
    EXPECT_TRUE(CurrentSettings().ResumeLastDisplayed);
}

TEST_F(SlideDialogsTest, CopyImagesOpensOnTheSourceFolderWithTheChosenPictures)
{
    SlideLoadFrm editor;
    const QString folder = root() + QStringLiteral("show");
    editor.setSourceFolder(folder);
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor.allSourceFiles().size() == 3; }, 5000));
    const QString second = editor.allSourceFiles().at(1);
    auto* files = editor.findChild<QAbstractItemView*>(QStringLiteral("File1"));
    const QModelIndex root = files->rootIndex();
    for (int row = 0; row < files->model()->rowCount(root); ++row) {
        const QModelIndex index = files->model()->index(row, 0, root);
        if (index.data(QFileSystemModel::FilePathRole).toString() == second)
            files->selectionModel()->select(index, QItemSelectionModel::Select);
    }
    ASSERT_EQ(editor.selectedSourceFiles(), QStringList({second}));
    QStringList offered;
    inNextDialog<frmCopyImages>([&](frmCopyImages& d) {
        offered = d.source()->selectedFiles();
        d.reject();
    });
    editor.findChild<QAction*>(QStringLiteral("mnuCopyImages"))->trigger();
    EXPECT_EQ(offered, QStringList({second}));
}

TEST_F(SlideDialogsTest, SaveAsWithoutAFileNameIsRefused)
{
    SlideLoadFrm editor;
    const QStringList choices = {root() + QStringLiteral("show/"), root() + QStringLiteral(".kav")};
    for (const QString& chosen : choices) {
        prompts().clear();
        prompts().files = {chosen};
        EXPECT_FALSE(editor.saveAs());
        EXPECT_EQ(prompts().texts(),
                  QStringList({"You forgot to enter a filename.\r\n\r\nEnter a name and then try "
                               "again..."}));
    }
}
