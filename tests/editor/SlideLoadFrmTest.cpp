#include "editor/SlideLoadFrm.h"
#include "playback/FullViewFrm.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/KavoriTest.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace kavori;

class SlideLoadFrmTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetShow();
    }
    void TearDown() override
    {
        ResetShow();
        KavoriTest::TearDown();
    }

    // A folder of pictures in three colours and a file the editor does not take.
    QString pictureFolder()
    {
        const QString folder = root() + QStringLiteral("pictures/");
        QDir().mkpath(folder);
        const QColor colours[] = {Qt::red, Qt::green, Qt::blue};
        for (int i = 0; i < 3; ++i) {
            QImage picture(40, 30, QImage::Format_RGB32);
            picture.fill(colours[i]);
            picture.save(folder + QStringLiteral("pic%1.bmp").arg(i), "BMP");
        }
        writeFile(QStringLiteral("pictures/notes.txt"), "not a picture");
        return folder;
    }

    static void waitForFiles(SlideLoadFrm& editor, int count)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return editor.allSourceFiles().size() == count; }, 5000));
    }

    // Answers the next modal dialog by clicking the button of that name.
    static void clickInNextDialog(const char* button)
    {
        QTimer::singleShot(0, qApp, [button] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            if (auto* b = dialog->findChild<QPushButton*>(QString::fromLatin1(button)))
                b->click();
        });
    }
};

TEST_F(SlideLoadFrmTest, FolderOfPicturesBecomesASavedShowThatReadsBackAndPlays)
{
    const QString folder = pictureFolder();
    SlideLoadFrm editor;
    editor.setSourceFolder(folder);
    waitForFiles(editor, 3);
    ASSERT_EQ(editor.allSourceFiles().size(), 3);
    EXPECT_EQ(editor.countText(), QStringLiteral("Zero slides (images) total..."));

    editor.addAll();
    EXPECT_EQ(editor.countText(), QStringLiteral("3 slides (images) total..."));
    CurrentShow().slides[2].SlideDescription = QStringLiteral("blue");
    editor.selectLines({2});
    editor.move(MoveKind::Top);
    EXPECT_EQ(editor.selectedLines(), QVector<int>({0}));
    EXPECT_EQ(CurrentShow().slides[0].SlideDescription, QStringLiteral("blue"));
    EXPECT_TRUE(prompts().calls.isEmpty());

    // Save: an untitled show goes through Save As, asking for the name and about copies.
    const QString path = root() + QStringLiteral("shows/Colours");
    QDir().mkpath(root() + QStringLiteral("shows"));
    prompts().files = {path};
    prompts().answers = {vbYes, vbNo};
    ASSERT_TRUE(editor.save());
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_EQ(prompts().calls[0].text, QStringLiteral("About to save the slide show as:\r\n\r\n") +
                                           path +
                                           QStringLiteral(".KAV\r\n\r\nIs this filename OK?"));
    EXPECT_EQ(prompts().calls[0].title, QStringLiteral("Kavori - [Slide Show Editor]"));
    EXPECT_EQ(prompts().calls[1].text,
              QStringLiteral("Save a copy of all files in the slide show directory?"));
    EXPECT_FALSE(CurrentShow().changed);
    EXPECT_EQ(CurrentShow().path, path + QStringLiteral(".KAV"));

    // Nothing changed: nothing to save.
    prompts().clear();
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(prompts().texts(),
              QStringList({"The current slide show has not changed, nothing to save..."}));

    // Read back: the same slides in the same order, the description with its slide.
    const QVector<Slide> saved = CurrentShow().slides;
    ResetShow();
    ASSERT_TRUE(editor.load(path + QStringLiteral(".KAV")));
    ASSERT_EQ(CurrentShow().slides.size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(QFileInfo(CurrentShow().slides[i].SlideFile).fileName(),
                  QFileInfo(saved[i].SlideFile).fileName());
        EXPECT_EQ(CurrentShow().slides[i].SlideDescription, saved[i].SlideDescription);
    }
    EXPECT_EQ(editor.countText(), QStringLiteral("3 slides (images) total..."));

    // And it plays, from the selected line, blue first.
    QColor first;
    QTimer::singleShot(0, qApp, [&] {
        const bool up = QTest::qWaitFor(
            [] {
                auto* p = qobject_cast<FullViewFrm*>(QApplication::activeModalWidget());
                return p && p->currentSlide() >= 0 && !p->isLoading();
            },
            5000);
        ASSERT_TRUE(up);
        auto* player = qobject_cast<FullViewFrm*>(QApplication::activeModalWidget());
        ASSERT_NE(player, nullptr);
        const QImage& screen = player->screenImage();
        first = QColor(screen.pixel(screen.width() / 2, screen.height() / 2));
        player->endShow();
    });
    editor.play(0);
    EXPECT_EQ(first, QColor(Qt::blue));
}

TEST_F(SlideLoadFrmTest, RefusalsAndTheClosingQuestion)
{
    SlideLoadFrm editor;
    editor.setSourceFolder(root());
    editor.save();
    editor.play();
    editor.move(MoveKind::Up);
    editor.renameShow();
    EXPECT_EQ(
        prompts().texts(),
        QStringList({"There are no slides in the View List to save.\r\n\r\nAdd files to the list "
                     "and then try again...",
                     "There are no slides in the View List to show.\r\n\r\nAdd files to the list "
                     "and then try again...",
                     "There is nothing in the View List, unable to move file(s) up...",
                     "A slide show has not been opened yet, nothing to rename.\r\n\r\nOpen the "
                     "slide show you would like to rename and then try again..."}));

    // Unsaved changes: the changes dialog; Cancel stays, Discard leaves.
    CurrentShow().slides = {NewSlide(QStringLiteral("/p/a.jpg"))};
    CurrentShow().changed = true;
    editor.show();
    clickInNextDialog("CmdCancel");
    EXPECT_FALSE(editor.mayClose());
    clickInNextDialog("CmdDiscard");
    EXPECT_TRUE(editor.mayClose());

    // "1xx": no dialog; an untitled show is dropped.
    CurrentSettings().PromptSaveKAV = QStringLiteral("110");
    prompts().clear();
    EXPECT_TRUE(editor.mayClose());
    EXPECT_TRUE(prompts().calls.isEmpty());
}

TEST_F(SlideLoadFrmTest, MissingSlidesAreFoundAndRemoved)
{
    const QString folder = pictureFolder();
    SlideLoadFrm editor;
    CurrentShow().slides = {NewSlide(folder + QStringLiteral("pic0.bmp")),
                            NewSlide(folder + QStringLiteral("gone.bmp")),
                            NewSlide(folder + QStringLiteral("pic1.bmp"))};
    editor.refreshList();
    prompts().answers = {vbYes};
    editor.checkMissing(false);
    EXPECT_EQ(editor.selectedLines(), QVector<int>({1}));
    EXPECT_EQ(prompts().texts().last(),
              QStringLiteral("One missing slide show file was found in the View List..."));
    EXPECT_EQ(prompts().calls.last().title, QStringLiteral("Kavori - [Select Missing Slides]"));
    prompts().answers = {vbYes};
    editor.checkMissing(true);
    EXPECT_EQ(CurrentShow().slides.size(), 2);
    EXPECT_EQ(editor.countText(), QStringLiteral("2 slides (images) total..."));

    // Dropped files: pictures are added, imports are noted.
    prompts().clear();
    editor.dropFiles({folder + QStringLiteral("pic2.bmp"), root() + QStringLiteral("x.pcx")});
    EXPECT_EQ(CurrentShow().slides.size(), 3);
    EXPECT_EQ(prompts().texts(),
              QStringList({".PCX files must be imported into Kavori before they can be used in "
                           "Slide Shows..."}));
    prompts().clear();
    editor.dropFiles({root() + QStringLiteral("notes.txt")});
    EXPECT_EQ(prompts().texts(),
              QStringList({"No valid image files were dropped, unable to add these items to the "
                           "View List..."}));
}
