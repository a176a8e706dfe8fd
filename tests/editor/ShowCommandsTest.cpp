#include "editor/SlideLoadFrm.h"
#include "fileutil/FileDelete.h"
#include "platform/UserSettings.h"
#include "runtime/MsgBox.h"
#include "settings/RecentShows.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QListView>
#include <QTimer>

#include <functional>

using namespace kavori;

// The main window's slide show commands: arrange, rename and delete the show's file.
class ShowCommandsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        CurrentSettings().UseRecycleBin = false;
        shows = root() + QStringLiteral("shows/");
        QDir().mkpath(shows);
        QImage picture(16, 16, QImage::Format_RGB32);
        picture.fill(Qt::green);
        picture.save(shows + QStringLiteral("a.bmp"), "BMP");
        picture.save(shows + QStringLiteral("b.bmp"), "BMP");
        CurrentSettings().FavoriteFolder = shows;
    }
    QString writeShow(const QString& name)
    {
        ResetShow();
        CurrentShow().slides = {NewSlide(QStringLiteral("a.bmp")),
                                NewSlide(QStringLiteral("b.bmp"))};
        const QString path = shows + name;
        EXPECT_TRUE(WriteSlideShow(path));
        ResetShow();
        return path;
    }
    // Runs a command whose editor is looked at by look, then closed.
    static bool runWithEditor(QAction* command, std::function<void(SlideLoadFrm*)> look)
    {
        bool seen = false;
        auto* poll = new QTimer(qApp);
        poll->setInterval(5);
        QObject::connect(poll, &QTimer::timeout, qApp, [&, poll] {
            auto* editor = qobject_cast<SlideLoadFrm*>(QApplication::activeModalWidget());
            if (!editor)
                return;
            poll->stop();
            poll->deleteLater();
            seen = true;
            look(editor);
            editor->close();
        });
        poll->start();
        command->trigger();
        if (!seen)
            delete poll;
        return seen;
    }
    static QString saver()
    {
        return GetSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"));
    }
    QString shows;
};

TEST_F(ShowCommandsTest, ArrangeOpensTheEditorOnItsViewList)
{
    const QString trip = writeShow(QStringLiteral("Trip.KAV"));
    MainViewFrm w;
    QAction* arrange = w.menus().buttons.value(QStringLiteral("Arrange"));
    ASSERT_TRUE(arrange->isEnabled());

    // No show in memory: the show to arrange is picked first; cancelling opens nothing.
    EXPECT_FALSE(runWithEditor(arrange, [](SlideLoadFrm*) {}));
    EXPECT_EQ(prompts().pickerCalls, QStringList({"openFile: Arrange Slide Show"}));

    auto inFront = [](SlideLoadFrm* editor) {
        EXPECT_EQ(editor->focusWidget(), editor->findChild<QListView*>(QStringLiteral("ViewList")));
        EXPECT_EQ(editor->selectedLines(), QVector<int>({0}));
    };
    prompts().files << trip;
    EXPECT_TRUE(runWithEditor(arrange, inFront));
    EXPECT_EQ(CurrentShow().path, trip);
    EXPECT_EQ(CurrentShow().slides.size(), 2);

    // With a show in memory it is arranged at once, its unsaved changes kept.
    prompts().clear();
    CurrentShow().slides.append(NewSlide(QStringLiteral("/else/c.bmp")));
    CurrentShow().changed = true;
    EXPECT_TRUE(runWithEditor(w.menus().action(QStringLiteral("mnuArrangeList")),
                              [&](SlideLoadFrm* editor) {
                                  inFront(editor);
                                  EXPECT_TRUE(CurrentShow().changed);
                                  CurrentShow().changed = false; // closes without asking
                              }));
    EXPECT_TRUE(prompts().pickerCalls.isEmpty());
    EXPECT_EQ(CurrentShow().slides.size(), 3);
}

TEST_F(ShowCommandsTest, RenameWorksAsInTheEditor)
{
    MainViewFrm w;
    QAction* rename = w.menus().action(QStringLiteral("mnuRenameShow"));
    rename->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "A slide show has not been opened yet, nothing to rename.\r\n\r\nOpen the slide "
              "show you would like to rename and then try again...");
    EXPECT_EQ(prompts().calls[0].title, "Kavori - [Rename Slide Show]");

    // A name no file may have is refused; the file stays.
    const QString trip = writeShow(QStringLiteral("Trip.KAV"));
    ASSERT_TRUE(ReadSlideShow(trip));
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"), trip);
    AddFavoriteShow(trip);
    ASSERT_EQ(CurrentSettings().RecentShow[0], trip);
    prompts().clear();
    prompts().inputs << QStringLiteral("a/b");
    rename->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(prompts().calls[0].text.startsWith(
        "A filename may not contain any of the following characters:"));
    EXPECT_TRUE(QFileInfo::exists(trip));

    // A good name: the file, the show, the screen saver's show and the lists follow it.
    prompts().clear();
    prompts().inputs << QStringLiteral("Holiday");
    rename->trigger();
    EXPECT_TRUE(prompts().calls.isEmpty());
    ASSERT_EQ(prompts().inputCalls.size(), 1);
    EXPECT_EQ(prompts().inputCalls[0].text, "Enter a new name for the slide show:");
    EXPECT_FALSE(QFileInfo::exists(trip));
    EXPECT_TRUE(QFileInfo::exists(shows + QStringLiteral("Holiday.KAV")));
    EXPECT_EQ(CurrentShow().path, shows + QStringLiteral("Holiday.KAV"));
    EXPECT_EQ(saver(), shows + QStringLiteral("Holiday.KAV"));
    EXPECT_EQ(CurrentSettings().RecentShow[0], shows + QStringLiteral("Holiday.KAV"));
    EXPECT_EQ(CurrentSettings().FavoriteShow[0], shows + QStringLiteral("Holiday.KAV"));
    EXPECT_TRUE(CurrentSettings().RecentShow[1].isEmpty());
    EXPECT_TRUE(readFile(SettingsFilePath()).contains("Holiday.KAV"));
}

TEST_F(ShowCommandsTest, DeletingAShowForgetsItEverywhere)
{
    const QString other = writeShow(QStringLiteral("Other.KAV"));
    const QString trip = writeShow(QStringLiteral("Trip.KAV"));
    MainViewFrm w;
    QAction* remove = w.menus().action(QStringLiteral("mnuDeleteSlideShow"));

    // Cancelled picker: nothing. A picture is no show.
    remove->trigger();
    EXPECT_EQ(prompts().pickerCalls, QStringList({"openFile: Delete Slide Show"}));
    EXPECT_TRUE(prompts().calls.isEmpty());
    prompts().files << shows + QStringLiteral("a.bmp");
    remove->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              "Only slide show files (.KAV) can be deleted here:\r\n\r\n" + shows + "a.bmp");
    EXPECT_TRUE(QFileInfo::exists(shows + QStringLiteral("a.bmp")));

    // The show open now, the screen saver's, on both lists and last shown.
    ASSERT_TRUE(ReadSlideShow(trip));
    AddRecentShow(other);
    AddFavoriteShow(other);
    AddFavoriteShow(trip);
    CurrentSettings().LastSlideShow = trip;
    SaveSetting(QStringLiteral("Settings"), QStringLiteral("CurrentSaver"), trip);
    ASSERT_EQ(CurrentSettings().RecentShow[1], trip);

    // The one question says all that; No keeps everything.
    prompts().clear();
    prompts().files << trip;
    prompts().answers << vbNo;
    remove->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              DeleteFileQuestion(trip, false) +
                  "\r\n\r\nIt is the slide show open now: it stays open, but must be saved again "
                  "to be kept.\r\n\r\nIt is your screen saver's slide show: the screen saver "
                  "will have no show until you choose another.");
    EXPECT_EQ(prompts().calls[0].style, vbYesNo + vbQuestion + vbDefaultButton2);
    EXPECT_EQ(prompts().calls[0].title, "Kavori - [Delete Slide Show]");
    EXPECT_TRUE(QFileInfo::exists(trip));

    // Yes: the file goes, and every list that named it forgets it.
    prompts().clear();
    prompts().files << trip;
    prompts().answers << vbYes;
    remove->trigger();
    EXPECT_EQ(prompts().calls.size(), 1);
    EXPECT_FALSE(QFileInfo::exists(trip));
    const Settings& s = CurrentSettings();
    EXPECT_EQ(s.RecentShow[0], other);
    EXPECT_TRUE(s.RecentShow[1].isEmpty());
    EXPECT_EQ(s.FavoriteShow[0], other);
    EXPECT_TRUE(s.FavoriteShow[1].isEmpty());
    EXPECT_TRUE(s.LastSlideShow.isEmpty());
    EXPECT_TRUE(saver().isEmpty());
    EXPECT_FALSE(readFile(SettingsFilePath()).contains("Trip.KAV"));
    EXPECT_TRUE(readFile(SettingsFilePath()).contains("Other.KAV"));
    // The show stays in memory, unsaved.
    EXPECT_TRUE(CurrentShow().path.isEmpty());
    EXPECT_EQ(CurrentShow().slides.size(), 2);
    EXPECT_TRUE(CurrentShow().changed);

    // A show nobody uses: the plain question.
    prompts().clear();
    prompts().files << other;
    prompts().answers << vbYes;
    remove->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, DeleteFileQuestion(other, false));
    EXPECT_FALSE(QFileInfo::exists(other));
    EXPECT_TRUE(s.RecentShow[0].isEmpty());
}
