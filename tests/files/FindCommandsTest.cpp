#include "editor/SlideLoadFrm.h"
#include "files/frmFindFiles.h"
#include "playback/FullViewFrm.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/ShowTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>
#include <type_traits>

using namespace kavori;

class FindCommandsTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        CurrentSettings().StartupDialog = 0;
        pics = root() + QStringLiteral("pics/");
        for (const char* name : {"start.bmp", "sub/sea1.bmp", "sub/sea2.bmp", "sub/cat.bmp"})
            picture(pics + QString::fromLatin1(name), Qt::blue);
    }
    static void picture(const QString& path, const QColor& colour)
    {
        QDir().mkpath(FolderOfPath(path));
        QImage image(32, 24, QImage::Format_RGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(path, "BMP"));
    }
    static QString FolderOfPath(const QString& path) { return path.left(path.lastIndexOf(u'/')); }
    // Runs drive on the next modal dialog of type T once it is up (polled, so a dialog opened
    // after another closes is found too).
    template <typename T> void whenModal(std::function<void(T*)> drive)
    {
        auto* poll = new QTimer(qApp);
        poll->setInterval(5);
        QObject::connect(poll, &QTimer::timeout, qApp, [poll, drive] {
            auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            poll->stop();
            poll->deleteLater();
            drive(dialog);
            // A dialog the drive did not close fails the test instead of hanging it.
            if constexpr (std::is_base_of_v<QDialog, T>) {
                if (dialog->isVisible()) {
                    ADD_FAILURE() << "the dialog stayed open";
                    dialog->close();
                }
            }
        });
        poll->start();
    }
    static void click(QWidget* dialog, const char* name)
    {
        auto* b = dialog->findChild<QPushButton*>(QString::fromLatin1(name));
        ASSERT_NE(b, nullptr) << name;
        ASSERT_TRUE(b->isEnabled()) << name;
        b->click();
    }
    static void find(frmFindFiles* d, const QString& name)
    {
        d->findChild<QLineEdit*>(QStringLiteral("txtFindName"))->setText(name);
        click(d, "CmdFind");
        d->waitForSearch();
    }
    static void shoot(QWidget* w, const char* name)
    {
        w->grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR", QDir::tempPath()) + u'/' +
                       QString::fromLatin1(name) + QStringLiteral(".png"));
    }
    QString writeShow()
    {
        const QString shows = root() + QStringLiteral("shows/");
        picture(shows + QStringLiteral("a.bmp"), Qt::magenta);
        picture(shows + QStringLiteral("b.bmp"), Qt::darkCyan);
        ResetShow();
        CurrentShow().slides = {NewSlide(QStringLiteral("a.bmp")),
                                NewSlide(QStringLiteral("b.bmp"))};
        CurrentSettings().LoopSlideShow = false;
        const QString path = shows + QStringLiteral("Trip.KAV");
        EXPECT_TRUE(WriteSlideShow(path));
        ResetShow();
        CurrentSettings().FavoriteFolder = shows;
        return path;
    }
    QString pics;
};

TEST_F(FindCommandsTest, FoundPictureOpensAndBrowsingGoesOnInItsFolder)
{
    MainViewFrm w;
    ASSERT_TRUE(w.openImage(pics + QStringLiteral("start.bmp")));
    bool driven = false;
    whenModal<frmFindFiles>([&](frmFindFiles* d) {
        driven = true;
        // It starts in the folder of the picture on screen.
        EXPECT_EQ(d->findChild<QLineEdit*>(QStringLiteral("txtFindFolder"))->text(),
                  QDir::toNativeSeparators(QDir(pics).absolutePath()));
        EXPECT_FALSE(d->findChild<QPushButton*>(QStringLiteral("CmdPlay"))->isVisibleTo(d));

        // Nothing found says so; Open has nothing to open.
        find(d, QStringLiteral("zebra"));
        EXPECT_EQ(prompts().texts(),
                  QStringList({"No pictures named \"zebra\" were found in:\r\n\r\n" +
                               QDir::toNativeSeparators(QDir(pics).absolutePath()) +
                               "\r\n\r\nor any of its subfolders."}));
        EXPECT_EQ(d->countText(), "0 pictures found");
        EXPECT_FALSE(d->findChild<QPushButton*>(QStringLiteral("CmdOpen"))->isEnabled());
        prompts().clear();

        // A folder that is not there is refused before searching.
        d->findChild<QLineEdit*>(QStringLiteral("txtFindFolder"))
            ->setText(pics + QStringLiteral("nowhere"));
        find(d, QStringLiteral("sea"));
        ASSERT_EQ(prompts().calls.size(), 1);
        EXPECT_TRUE(prompts().calls[0].text.startsWith("The folder to search could not be found:"));
        prompts().clear();

        // Browse picks the folder through the folder picker.
        prompts().files << pics;
        click(d, "CmdBrowse");
        EXPECT_EQ(prompts().pickerCalls, QStringList({"chooseFolder: Look in"}));

        // Enter in the name box searches.
        d->findChild<QLineEdit*>(QStringLiteral("txtFindName"))->setText(QStringLiteral("SEA*"));
        QTest::keyClick(d->findChild<QLineEdit*>(QStringLiteral("txtFindName")), Qt::Key_Return);
        EXPECT_TRUE(d->searching());
        d->waitForSearch();
        EXPECT_EQ(d->results(), QStringList({pics + QStringLiteral("sub/sea1.bmp"),
                                             pics + QStringLiteral("sub/sea2.bmp")}));
        EXPECT_EQ(d->countText(), "2 pictures found");
        auto* list = d->findChild<QTreeWidget*>(QStringLiteral("lstFound"));
        const QTreeWidgetItem* row = list->topLevelItem(1);
        EXPECT_EQ(row->text(0), "sea2.bmp");
        EXPECT_EQ(row->text(1), QDir::toNativeSeparators(pics + QStringLiteral("sub")));
        EXPECT_EQ(row->text(2), "3 KB");
        EXPECT_FALSE(row->text(3).isEmpty());
        d->resize(680, 300);
        shoot(d, "frmFindFiles-pictures");

        // A double-click opens the picture.
        list->scrollToItem(row);
        const QPoint at = list->visualItemRect(row).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    });
    w.menus().buttons.value(QStringLiteral("Find"))->trigger();
    EXPECT_TRUE(driven);
    EXPECT_EQ(w.document().currentFile(), pics + QStringLiteral("sub/sea2.bmp"));
    EXPECT_EQ(w.windowTitle(), "Kavori - [sea2.bmp]");

    // Browsing goes on in the found picture's folder.
    w.menus().action(QStringLiteral("mnuBrowsePrevious"))->trigger();
    EXPECT_EQ(w.document().currentFile(), pics + QStringLiteral("sub/sea1.bmp"));
    w.menus().action(QStringLiteral("mnuBrowseFirst"))->trigger();
    EXPECT_EQ(w.document().currentFile(), pics + QStringLiteral("sub/cat.bmp"));
}

TEST_F(FindCommandsTest, FoundShowLoadsIntoTheEditorOrPlays)
{
    const QString show = writeShow();
    MainViewFrm w;
    QAction* command = w.menus().action(QStringLiteral("mnuFindSlideShow"));

    // Open: the show is loaded and the editor shows it.
    int editorSlides = -1;
    whenModal<frmFindFiles>([&](frmFindFiles* d) {
        EXPECT_EQ(d->windowTitle(), "Kavori - [Find Slide Shows]");
        find(d, QString());
        EXPECT_EQ(d->results(), QStringList({show}));
        EXPECT_EQ(d->countText(), "1 slide show found");
        shoot(d, "frmFindFiles-shows");
        whenModal<SlideLoadFrm>([&](SlideLoadFrm* editor) {
            editorSlides = int(CurrentShow().slides.size());
            editor->close();
        });
        click(d, "CmdOpen");
    });
    command->trigger();
    EXPECT_EQ(editorSlides, 2);
    EXPECT_EQ(CurrentShow().path, show);

    // Unsaved changes are asked about first; No keeps the show in memory.
    CurrentShow().slides = {NewSlide(QStringLiteral("/elsewhere/x.bmp"))};
    CurrentShow().path.clear();
    CurrentShow().changed = true;
    prompts().clear();
    prompts().answers << vbNo;
    whenModal<frmFindFiles>([&](frmFindFiles* d) {
        find(d, QStringLiteral("trip"));
        d->selectResult(0);
        // Enter on the list opens the chosen show.
        QTest::keyClick(d->findChild<QTreeWidget*>(QStringLiteral("lstFound")), Qt::Key_Return);
    });
    command->trigger();
    EXPECT_EQ(prompts().texts(),
              QStringList({"The current slide show has changed.\r\n\r\nLoad a new "
                           "slide show anyway?"}));
    EXPECT_EQ(CurrentShow().slides.size(), 1);

    // Play: the show plays full screen.
    CurrentShow().changed = false;
    bool played = false;
    whenModal<frmFindFiles>([&](frmFindFiles* d) {
        find(d, QStringLiteral("*.kav"));
        whenModal<FullViewFrm>([&](FullViewFrm* player) {
            played = true;
            player->endShow();
        });
        click(d, "CmdPlay");
    });
    command->trigger();
    EXPECT_TRUE(played);
    EXPECT_EQ(CurrentShow().path, show);
}

TEST_F(FindCommandsTest, ClosingWhileSearchingStopsTheSearch)
{
    for (int i = 0; i < 200; ++i)
        picture(pics + QStringLiteral("many/%1/p.bmp").arg(i), Qt::red);
    auto dialog = std::make_unique<frmFindFiles>(FindKind::Pictures, pics);
    dialog->findChild<QLineEdit*>(QStringLiteral("txtFindName"))->setText(QStringLiteral("p"));
    dialog->search();
    EXPECT_TRUE(dialog->searching());
    EXPECT_TRUE(dialog->findChild<QPushButton*>(QStringLiteral("CmdCancelSearch"))->isEnabled());
    EXPECT_FALSE(dialog->findChild<QPushButton*>(QStringLiteral("CmdFind"))->isEnabled());
    shoot(dialog.get(), "frmFindFiles-searching");
    dialog->reject();
    EXPECT_FALSE(dialog->searching());
    QCoreApplication::processEvents();
    EXPECT_TRUE(prompts().texts().isEmpty());
    dialog.reset();

    // Stop keeps what was found so far and says the search was cancelled.
    frmFindFiles stopped(FindKind::Pictures, pics);
    stopped.search();
    stopped.cancelSearch();
    stopped.waitForSearch();
    EXPECT_TRUE(stopped.countText().endsWith(" pictures found") ||
                stopped.countText().endsWith(" picture found"));
    EXPECT_TRUE(prompts().texts().isEmpty() || !stopped.results().isEmpty());
}
