#include "editor/SlideLoadFrm.h"
#include "editor/LoadSlideFile.h"
#include "editor/frmPlaybackOptions.h"
#include "playback/FullViewFrm.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

using namespace kavori;

class SlideLoadFrmTest : public kavori::test::ShowTest {
protected:
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

    // Favourites: only a saved show goes on the list; empty lists say so.
    prompts().clear();
    editor.addToFavorites();
    editor.loadFromList(CurrentSettings().FavoriteShow, true);
    editor.loadFromList(CurrentSettings().RecentShow, false);
    EXPECT_EQ(prompts().texts(),
              QStringList({"Unable to add slide show to list...",
                           "There are no slide shows in your favorite shows list to load...",
                           "There are no slide shows in the recent files list to load..."}));

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

TEST_F(SlideLoadFrmTest, PlaybackOptionsApplyToTheShowAndAreKept)
{
    CurrentShow().slides = {NewSlide(QStringLiteral("/p/a.jpg"))};
    frmPlaybackOptions dialog(nullptr, frmPlaybackOptions::Descriptions);
    EXPECT_EQ(dialog.findChild<QTabWidget*>(QStringLiteral("tabOptions"))->currentIndex(), 3);
    auto* interval = dialog.findChild<QComboBox*>(QStringLiteral("cboInterval"));
    interval->setCurrentIndex(interval->findText(QStringLiteral("Slide Properties")));
    dialog.findChild<QCheckBox*>(QStringLiteral("chkEnableTransitions"))->setChecked(true);
    dialog.findChild<QSlider*>(QStringLiteral("sldSpeed"))->setValue(6);
    dialog.findChild<QComboBox*>(QStringLiteral("cboLocation"))->setCurrentIndex(21);
    dialog.findChild<QCheckBox*>(QStringLiteral("chkShadow"))->setChecked(true);

    // A show sound that cannot be found is refused and nothing changes.
    dialog.findChild<QComboBox*>(QStringLiteral("cboSoundMode"))->setCurrentIndex(1);
    dialog.findChild<QLineEdit*>(QStringLiteral("txtSoundFile"))
        ->setText(root() + QStringLiteral("gone.wav"));
    EXPECT_FALSE(dialog.apply());
    EXPECT_EQ(prompts().texts(),
              QStringList({"The specified sound file could not be found.\r\n\r\nCorrect the "
                           "filename and then try again..."}));
    EXPECT_FALSE(CurrentSettings().EnableTransitions);

    const QString chime = writeFile(QStringLiteral("chime.wav"), "RIFF");
    dialog.findChild<QLineEdit*>(QStringLiteral("txtSoundFile"))->setText(chime);
    ASSERT_TRUE(dialog.apply());
    EXPECT_TRUE(CurrentShow().UseSlideIntervals);
    EXPECT_TRUE(CurrentShow().changed);
    const Settings& s = CurrentSettings();
    EXPECT_TRUE(s.EnableTransitions);
    EXPECT_EQ(s.TransitionSpeed, 6);
    EXPECT_EQ(s.SoundMode, 1);
    EXPECT_EQ(s.SoundFile, chime);
    EXPECT_EQ(s.SlideDescLoc, 21);
    EXPECT_EQ(s.SlideDescShadow, 1);
    // Kept as the user's defaults: a fresh load of the settings file gives them back.
    ResetSettings();
    LoadSettings();
    EXPECT_TRUE(CurrentSettings().EnableTransitions);
    EXPECT_EQ(CurrentSettings().TransitionSpeed, 6);
    EXPECT_EQ(CurrentSettings().SlideDescLoc, 21);
}

TEST_F(SlideLoadFrmTest, LoadDialogListsShowsWithTheirDetails)
{
    CurrentShow().slides = {NewSlide(QStringLiteral("/p/a.jpg"))};
    CurrentShow().ShowInfo = QStringLiteral("Summer holiday");
    QDir().mkpath(root() + QStringLiteral("shows"));
    ASSERT_TRUE(WriteSlideShow(root() + QStringLiteral("shows/b.KAV")));
    CurrentShow().ShowInfo.clear();
    ASSERT_TRUE(WriteSlideShow(root() + QStringLiteral("shows/c.kav")));
    writeFile(QStringLiteral("shows/a.KAV"), "Kavori Slide Show\r\nVersion 1.X\r\n");
    writeFile(QStringLiteral("shows/notes.txt"), "x");

    LoadSlideFile dialog(root() + QStringLiteral("shows"));
    ASSERT_EQ(dialog.shows().size(), 3);
    EXPECT_TRUE(dialog.shows()[0].endsWith(QStringLiteral("a.KAV")));
    QString chosen;
    EXPECT_FALSE(dialog.accept(&chosen));
    EXPECT_EQ(prompts().texts().last(),
              QStringLiteral("Select a slide show file to load first..."));
    auto text = [&](const char* name) {
        return dialog.findChild<QLabel*>(QString::fromLatin1(name))->text();
    };
    dialog.choose(0);
    EXPECT_EQ(text("lblInfo"), QStringLiteral("(Open file to edit...)"));
    EXPECT_EQ(text("lblSize"), QStringLiteral("32 bytes"));
    dialog.choose(1);
    EXPECT_EQ(text("lblInfo"), QStringLiteral("Summer holiday"));
    dialog.choose(2);
    EXPECT_EQ(text("lblInfo"), QStringLiteral("Open slide show to edit comments."));
    ASSERT_TRUE(dialog.accept(&chosen));
    EXPECT_TRUE(chosen.endsWith(QStringLiteral("c.kav")));

    LoadSlideFile empty(root());
    EXPECT_FALSE(empty.accept(&chosen));
    EXPECT_EQ(prompts().texts().last(),
              QStringLiteral("There are no slide show files in the selected directory to load..."));
    empty.setSource(LoadSlideFile::Favorites);
    EXPECT_FALSE(empty.accept(&chosen));
    EXPECT_EQ(prompts().texts().last(),
              QStringLiteral("There are no slide shows in your favorite shows list to load..."));
}
