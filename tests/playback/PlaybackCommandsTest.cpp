#include "playback/PlaybackCommands.h"
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
#include <QPointer>
#include <QTimer>

using namespace kavori;

class PlaybackCommandsTest : public kavori::test::ShowTest {
protected:
    void TearDown() override
    {
        delete m_poll;
        ShowTest::TearDown();
    }

    // A show beside its two pictures, naming them without a folder.
    QString writeShow()
    {
        QDir().mkpath(root() + QStringLiteral("shows"));
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        picture.save(root() + QStringLiteral("shows/a.bmp"), "BMP");
        picture.fill(Qt::darkCyan);
        picture.save(root() + QStringLiteral("shows/b.bmp"), "BMP");
        ResetShow();
        CurrentShow().slides = {NewSlide(QStringLiteral("a.bmp")),
                                NewSlide(QStringLiteral("b.bmp"))};
        CurrentSettings().LoopSlideShow = false;
        const QString path = root() + QStringLiteral("shows/Trip.KAV");
        EXPECT_TRUE(WriteSlideShow(path));
        ResetShow();
        return path;
    }

    // Watches the player that the command opens: records the colours it shows, steps on with
    // the space bar and lets the show end by itself.
    void watchPlayer()
    {
        delete m_poll;
        auto seen = std::make_shared<QStringList>();
        auto* poll = new QTimer(qApp);
        m_poll = poll;
        poll->setInterval(10);
        QObject::connect(poll, &QTimer::timeout, qApp, [poll, seen] {
            auto* player = qobject_cast<FullViewFrm*>(QApplication::activeModalWidget());
            if (!player || player->isLoading() || player->currentSlide() < 0)
                return;
            const QImage& screen = player->screenImage();
            seen->append(QColor(screen.pixel(screen.width() / 2, screen.height() / 2)).name());
            if (seen->size() >= 3) {
                poll->stop();
                player->endShow();
                return;
            }
            player->runAction(PlayerAction::Next);
        });
        poll->start();
        m_seen = seen;
    }
    std::shared_ptr<QStringList> m_seen;
    QPointer<QTimer> m_poll;
};

TEST_F(PlaybackCommandsTest, MainWindowCommandsPlayShows)
{
    const QString show = writeShow();
    MainViewFrm window;
    for (const char* name : {"mnuOpenSlideShow", "mnuLoadRecentShow", "mnuLoadFavoriteShow"}) {
        auto* action = window.findChild<QAction*>(QString::fromLatin1(name));
        ASSERT_NE(action, nullptr) << name;
        EXPECT_TRUE(action->isEnabled()) << name;
    }

    // Open: pick the file, and the show plays from its first slide, names found beside it.
    prompts().files = {show};
    watchPlayer();
    window.findChild<QAction*>(QStringLiteral("mnuOpenSlideShow"))->trigger();
    ASSERT_GE(m_seen->size(), 2);
    EXPECT_EQ(m_seen->at(0), QColor(Qt::magenta).name());
    EXPECT_EQ(m_seen->at(1), QColor(Qt::darkCyan).name());
    EXPECT_TRUE(prompts().calls.isEmpty()) << prompts().texts().join(u'|').toStdString();

    // Reading it put it first in the recent shows, from where it plays again.
    EXPECT_EQ(CurrentSettings().RecentShow[0], show);
    prompts().inputs = {show};
    watchPlayer();
    window.findChild<QAction*>(QStringLiteral("mnuLoadRecentShow"))->trigger();
    EXPECT_FALSE(m_seen->isEmpty());

    // An empty favourites list says so; cancelling the picker plays nothing.
    prompts().clear();
    window.findChild<QAction*>(QStringLiteral("mnuLoadFavoriteShow"))->trigger();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("There are no favorite slide shows to play..."));
    prompts().files = {QString()};
    window.findChild<QAction*>(QStringLiteral("mnuOpenSlideShow"))->trigger();
    EXPECT_EQ(prompts().calls.size(), 1);
}

TEST_F(PlaybackCommandsTest, ShowWithoutPicturesIsRefused)
{
    CurrentShow().slides.clear();
    const QString path = root() + QStringLiteral("Empty.KAV");
    ASSERT_TRUE(WriteSlideShow(path));
    PlaySlideShowFile(path);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(
        prompts().calls[0].text,
        QStringLiteral("This slide show file does not contain any images, nothing to show..."));
    // Not a show at all: the reader's own message, and nothing plays.
    prompts().clear();
    PlaySlideShowFile(writeFile(QStringLiteral("note.KAV"), "hello\r\n"));
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_TRUE(
        prompts().calls[0].text.startsWith(QStringLiteral("The selected file is not a valid")));
}
