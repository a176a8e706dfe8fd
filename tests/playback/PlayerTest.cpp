#include "platform/StartupState.h"
#include "playback/DescriptionLabels.h"
#include "playback/FullViewFrm.h"
#include "playback/TransitionEngine.h"
#include "playback/media/FakeMedia.h"
#include "playback/media/MciCommand.h"
#include "playback/media/ShowMedia.h"
#include "playback/media/WaveChannel.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "slideshow/DescriptionFile.h"
#include "slideshow/SlideShow.h"
#include "support/ShowTest.h"
#include "systemsaver/SystemSaver.h"

#include <QCoreApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace kavori;

namespace {
const QColor kColors[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow, Qt::cyan};
}

// The player is driven offscreen: ticks are called directly, keys and clicks are sent as events.
class PlayerTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        Transitions() = {};
    }

    // A show of count plain-coloured pictures the size of the screen.
    void makeShow(int count)
    {
        for (int i = 0; i < count; ++i) {
            QImage picture(320, 240, QImage::Format_RGB32);
            picture.fill(kColors[i % 5]);
            const QString path = root() + QStringLiteral("slide%1.bmp").arg(i);
            ASSERT_TRUE(picture.save(path, "BMP"));
            Slide slide = NewSlide(path);
            slide.SlideShrink = 1;
            CurrentShow().slides.append(slide);
        }
    }

    std::unique_ptr<FullViewFrm> start(const PlayerStart& how = {})
    {
        auto player = std::make_unique<FullViewFrm>();
        player->resize(320, 240);
        player->show();
        player->PlayShow(how);
        return player;
    }

    static QColor center(const FullViewFrm& player)
    {
        return QColor(player.screenImage().pixel(160, 120));
    }

    static QTimer* timer(FullViewFrm& player, const char* name)
    {
        return player.findChild<QTimer*>(QString::fromLatin1(name));
    }

    static void key(FullViewFrm& player, Qt::Key k, Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        QTest::keyClick(&player, k, mods);
    }
};

TEST_F(PlayerTest, PlaysInOrderLoopsAndEnds)
{
    makeShow(3);
    CurrentSettings().LoopSlideShow = false;
    auto player = start();
    // The first slide comes up as soon as events run.
    EXPECT_TRUE(timer(*player, "SlideTimer")->isActive());
    EXPECT_EQ(timer(*player, "SlideTimer")->interval(), 0);
    player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 0);
    EXPECT_EQ(center(*player), QColor(Qt::red));
    player->SlideTimer_Timer();
    EXPECT_EQ(center(*player), QColor(Qt::green));
    player->SlideTimer_Timer();
    EXPECT_EQ(center(*player), QColor(Qt::blue));
    EXPECT_TRUE(player->isVisible());
    // Past the last slide without looping the show ends and the window closes.
    player->SlideTimer_Timer();
    EXPECT_FALSE(player->isVisible());
    EXPECT_TRUE(Transitions().TransitionStop);

    // Looping starts again at the first slide; a show of one slide shows it each time.
    CurrentSettings().LoopSlideShow = true;
    player = start();
    for (int i = 0; i < 4; ++i)
        player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 0);
    EXPECT_TRUE(player->isVisible());
    ResetShow();
    makeShow(1);
    player = start();
    player->SlideTimer_Timer();
    player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 0);
    EXPECT_TRUE(player->isVisible());
}

TEST_F(PlayerTest, RandomOrderDrawsEachTick)
{
    makeShow(4);
    CurrentSettings().RandomSlides = true;
    CurrentSettings().LoopSlideShow = false;
    ScriptRandom({0.8, 0.8, 0.1, 0.5});
    auto player = start();
    player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 3);
    player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 3);
    player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 0);
    EXPECT_TRUE(player->isVisible());
    // The next random pick is drawn early and read ahead.
    EXPECT_EQ(player->decoder().pending(), 1);

    // Asked to start at a slide, a random show starts there.
    PlayerStart fromThird;
    fromThird.firstSlide = 2;
    player = start(fromThird);
    player->SlideTimer_Timer();
    EXPECT_EQ(player->currentSlide(), 2);
}

TEST_F(PlayerTest, IntervalOfTheShowOrOfEachSlide)
{
    makeShow(3);
    CurrentSettings().SlideInterval = 7;
    CurrentShow().slides[1].SlideDelay = 3;
    CurrentShow().slides[2].SlideDelay = 0;
    auto player = start();
    QTimer* clock = timer(*player, "SlideTimer");
    player->SlideTimer_Timer();
    EXPECT_TRUE(clock->isActive());
    EXPECT_EQ(clock->interval(), 7000);
    CurrentShow().UseSlideIntervals = true;
    player->SlideTimer_Timer();
    EXPECT_EQ(clock->interval(), 3000);
    // A slide without an interval waits for the user.
    player->SlideTimer_Timer();
    EXPECT_FALSE(clock->isActive());
    CurrentShow().UseSlideIntervals = false;
    CurrentSettings().SlideInterval = 0;
    player->SlideTimer_Timer();
    EXPECT_FALSE(clock->isActive());
}

TEST_F(PlayerTest, KeysAndMouseStepThroughTheShow)
{
    makeShow(5);
    CurrentSettings().LMousePrev = true;
    auto player = start();
    player->SlideTimer_Timer();
    // Each key and the slide it leads to; the main keyboard's digits do nothing.
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers mods;
        int slide;
    } steps[] = {
        {Qt::Key_Right, Qt::NoModifier, 1},    {Qt::Key_Space, Qt::NoModifier, 2},
        {Qt::Key_Down, Qt::NoModifier, 3},     {Qt::Key_Backspace, Qt::NoModifier, 2},
        {Qt::Key_Up, Qt::NoModifier, 1},       {Qt::Key_6, Qt::KeypadModifier, 2},
        {Qt::Key_2, Qt::KeypadModifier, 3},    {Qt::Key_8, Qt::KeypadModifier, 2},
        {Qt::Key_4, Qt::KeypadModifier, 1},    {Qt::Key_6, Qt::NoModifier, 1},
        {Qt::Key_End, Qt::NoModifier, 4},      {Qt::Key_Home, Qt::NoModifier, 0},
        {Qt::Key_Left, Qt::NoModifier, 4},     {Qt::Key_PageUp, Qt::NoModifier, 0},
        {Qt::Key_PageDown, Qt::NoModifier, 4},
    };
    for (const auto& step : steps) {
        key(*player, step.key, step.mods);
        EXPECT_EQ(player->currentSlide(), step.slide) << step.key;
    }
    EXPECT_EQ(center(*player), QColor(Qt::cyan));

    QTest::mouseClick(player.get(), Qt::LeftButton);
    EXPECT_EQ(player->currentSlide(), 3);
    QTest::mouseClick(player.get(), Qt::RightButton);
    EXPECT_EQ(player->currentSlide(), 4);
    CurrentSettings().RMouseNext = false;
    CurrentSettings().LMousePrev = false;
    QTest::mouseClick(player.get(), Qt::RightButton);
    QTest::mouseClick(player.get(), Qt::LeftButton);
    EXPECT_EQ(player->currentSlide(), 4);

    key(*player, Qt::Key_Escape);
    EXPECT_FALSE(player->isVisible());
}

TEST_F(PlayerTest, DeleteAsksAndRefusesTheLastSlide)
{
    makeShow(2);
    auto player = start();
    player->SlideTimer_Timer();
    const QString first = CurrentShow().slides[0].SlideFile;
    prompts().answers = {vbNo};
    key(*player, Qt::Key_Delete);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("Remove the picture:\r\n\r\n") + first +
                  QStringLiteral("\r\n\r\n...from the slide show?\r\n\r\n(Note: Image file "
                                 "will NOT be deleted.)"));
    EXPECT_EQ(prompts().calls[0].style, vbYesNo + vbQuestion);
    EXPECT_EQ(CurrentShow().slides.size(), 2);

    prompts().answers = {vbYes};
    key(*player, Qt::Key_Delete);
    ASSERT_EQ(CurrentShow().slides.size(), 1);
    EXPECT_TRUE(QFile::exists(first)); // the file itself stays
    EXPECT_TRUE(CurrentShow().changed);
    EXPECT_EQ(center(*player), QColor(Qt::green));
    EXPECT_EQ(player->infoLine(), QStringLiteral("One slide (image) total..."));

    prompts().clear();
    key(*player, Qt::Key_Delete);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("You may not remove the last picture from the slide show..."));
    EXPECT_EQ(CurrentShow().slides.size(), 1);
}

TEST_F(PlayerTest, PauseResumesAndRefuses)
{
    makeShow(2);
    CurrentSettings().SlideInterval = 4;
    CurrentSettings().ShowToolbar = true;
    auto player = start();
    player->SlideTimer_Timer();
    auto* toolbar = player->findChild<QToolBar*>(QStringLiteral("NavigationToolbar"));
    ASSERT_NE(toolbar, nullptr);
    auto* pause = toolbar->findChild<QAction*>(QStringLiteral("btnPause"));
    ASSERT_NE(pause, nullptr);
    EXPECT_EQ(pause->toolTip(), QStringLiteral("PAUSE slide show.  (P Key)"));

    key(*player, Qt::Key_P);
    EXPECT_TRUE(player->isPaused());
    EXPECT_FALSE(timer(*player, "SlideTimer")->isActive());
    EXPECT_EQ(pause->toolTip(), QStringLiteral("RESUME slide show.  (P Key)"));
    // Stepping while paused shows the slide and stays paused.
    key(*player, Qt::Key_Right);
    EXPECT_EQ(player->currentSlide(), 1);
    EXPECT_FALSE(timer(*player, "SlideTimer")->isActive());
    key(*player, Qt::Key_Pause);
    EXPECT_FALSE(player->isPaused());
    EXPECT_EQ(player->infoLine(), QStringLiteral("Resumed..."));
    EXPECT_EQ(timer(*player, "SlideTimer")->interval(), 4000);
    EXPECT_TRUE(prompts().calls.isEmpty());

    // A slide without an interval has nothing to pause.
    CurrentSettings().SlideInterval = 0;
    key(*player, Qt::Key_P);
    EXPECT_FALSE(player->isPaused());
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text,
              QStringLiteral("This slide does not have a time interval, next slide will need to "
                             "be selected manually..."));

    // Where pausing is not allowed the key says so.
    PlayerStart noPause;
    noPause.pauseAllowed = false;
    player = start(noPause);
    player->SlideTimer_Timer();
    prompts().clear();
    key(*player, Qt::Key_P);
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, QStringLiteral("Pause key has been disabled."));
}

TEST_F(PlayerTest, UnreadableSlidesAreReportedOrPassedOver)
{
    makeShow(3);
    CurrentShow().slides[1].SlideFile = root() + QStringLiteral("gone.bmp");
    auto player = start();
    player->SlideTimer_Timer();
    player->SlideTimer_Timer();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, QStringLiteral("Unable to view slide:\r\n\r\n") + root() +
                                           QStringLiteral("gone.bmp\r\n\r\n..."));
    EXPECT_EQ(prompts().calls[0].title, QStringLiteral("Kavori"));
    // The show goes on with the next slide at once; the last picture stays until then.
    EXPECT_EQ(center(*player), QColor(Qt::red));
    EXPECT_TRUE(timer(*player, "SlideTimer")->isActive());
    EXPECT_EQ(timer(*player, "SlideTimer")->interval(), 0);
    player->SlideTimer_Timer();
    EXPECT_EQ(center(*player), QColor(Qt::blue));

    // Passed over without a word when errors are to be ignored.
    CurrentSettings().SlideIgnoreError = true;
    prompts().clear();
    player = start();
    player->SlideTimer_Timer();
    player->SlideTimer_Timer();
    EXPECT_TRUE(prompts().calls.isEmpty());
    EXPECT_EQ(player->currentSlide(), 1);

    // A show none of whose pictures can be read ends instead of spinning.
    for (Slide& slide : CurrentShow().slides)
        slide.SlideFile = root() + QStringLiteral("gone.bmp");
    player = start();
    for (int i = 0; i < 3 && player->isVisible(); ++i)
        player->SlideTimer_Timer();
    EXPECT_FALSE(player->isVisible());
}

TEST_F(PlayerTest, FileNameLineAndDescriptions)
{
    makeShow(2);
    Settings& s = CurrentSettings();
    s.ShowFilenames = true;
    CurrentShow().slides[0].SlideDescription = QStringLiteral("Red square");
    auto player = start();
    player->SlideTimer_Timer();
    const QString file = CurrentShow().slides[0].SlideFile;
    // The window is narrow: the line is cut to fit.
    EXPECT_TRUE(player->infoLine() == file || player->infoLine().endsWith(QStringLiteral("...")));
    player->resize(2000, 300);
    player->SlideTimer_Timer();
    EXPECT_EQ(player->infoLine(), CurrentShow().slides[1].SlideFile);
    s.ShowDescription = true;
    key(*player, Qt::Key_Home);
    EXPECT_EQ(player->infoLine(), file + QStringLiteral(" <--> Red square"));
    auto* text = player->findChild<QLabel*>(QStringLiteral("lblDescription"));
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isVisibleTo(player.get()));
    EXPECT_EQ(text->text(), QStringLiteral("Red square"));
    key(*player, Qt::Key_Right);
    EXPECT_EQ(player->infoLine(),
              CurrentShow().slides[1].SlideFile + QStringLiteral(" <--> No Description Available"));
    EXPECT_FALSE(text->isVisibleTo(player.get()));
    s.ShowFilenames = false;
    key(*player, Qt::Key_Right);
    EXPECT_EQ(player->infoLine(), QString()); // the description is drawn over the picture
    key(*player, Qt::Key_Right);
    EXPECT_EQ(player->infoLine(), QStringLiteral(">> No Description Available <<"));
}

TEST_F(PlayerTest, DescriptionLabelsFollowTheLook)
{
    makeShow(1);
    CurrentSettings().ShowDescription = true;
    DescriptionLook look;
    look.custom = 1;
    look.location = 21; // bouncing
    look.speed = 5;
    look.useBack = 1;
    look.border = 2;
    look.shadow = 1;
    look.shadowDistance = 2;
    look.shadowDirection = 3;
    Slide& slide = CurrentShow().slides[0];
    slide.SlideDescription = QStringLiteral("Moving words");
    slide.SlideDescProps = BuildDescProps(look);
    auto player = start();
    player->resize(800, 600);
    player->SlideTimer_Timer();
    auto label = [&](const char* name) {
        return player->findChild<QWidget*>(QString::fromLatin1(name));
    };
    EXPECT_TRUE(label("lblDescBack")->isVisibleTo(player.get()));
    EXPECT_TRUE(label("lblDesc3D")->isVisibleTo(player.get()));
    EXPECT_FALSE(label("lblDescBorder")->isVisibleTo(player.get()));
    EXPECT_TRUE(label("lblDropShadow")->isVisibleTo(player.get()));
    QTimer* desc = timer(*player, "TimerDesc");
    EXPECT_TRUE(desc->isActive());

    const QPoint before = label("lblDescription")->pos();
    player->TimerDesc_Timer();
    const QPoint after = label("lblDescription")->pos();
    // 250 twips a tick, 16 or 17 pixels as the twips fall.
    EXPECT_NEAR(after.x() - before.x(), 17, 1);
    EXPECT_NEAR(after.y() - before.y(), 17, 1);
    // The companions moved with the text.
    EXPECT_EQ(label("lblDropShadow")->pos(), after + QPoint(3, 3));
    EXPECT_TRUE(label("lblDescBack")->geometry().contains(label("lblDescription")->geometry()));
    EXPECT_EQ(label("lblDesc3D")->geometry(), label("lblDescBack")->geometry());

    // A standing description needs no clock; the frame replaces the raised one.
    look.location = 0;
    look.border = 1;
    look.shadow = 0;
    slide.SlideDescProps = BuildDescProps(look);
    player->SlideTimer_Timer();
    EXPECT_FALSE(desc->isActive());
    EXPECT_TRUE(label("lblDescBorder")->isVisibleTo(player.get()));
    EXPECT_FALSE(label("lblDesc3D")->isVisibleTo(player.get()));
    EXPECT_FALSE(label("lblDropShadow")->isVisibleTo(player.get()));
    const QRect text = label("lblDescription")->geometry();
    EXPECT_NEAR(text.center().x(), 400, 2);
    EXPECT_NEAR(text.center().y(), 300, 2);
}

TEST_F(PlayerTest, AKeyDuringATransitionOnlyHurriesIt)
{
    makeShow(3);
    for (Slide& slide : CurrentShow().slides)
        slide.SlideTransition = 20;
    auto player = start();
    player->SlideTimer_Timer();
    EXPECT_EQ(center(*player), QColor(Qt::red));
    Settings& s = CurrentSettings();
    s.EnableTransitions = true;
    s.TransitionSpeed = 0; // as slow as it gets: the key must cut it short
    // The key arrives while the effect runs, through the effect's own event pump.
    QTimer::singleShot(0, player.get(), [&] {
        EXPECT_TRUE(player->isLoading());
        key(*player, Qt::Key_Right);
    });
    player->SlideTimer_Timer();
    EXPECT_FALSE(player->isLoading());
    EXPECT_EQ(player->currentSlide(), 1); // no second slide was started
    EXPECT_EQ(center(*player), QColor(Qt::green));
    EXPECT_EQ(QColor(player->screenImage().pixel(0, 0)), QColor(Qt::green));
    EXPECT_EQ(QColor(player->screenImage().pixel(319, 239)), QColor(Qt::green));
}

TEST_F(PlayerTest, ScreenSaverEndsOnAKeyAndNeverByItself)
{
    makeShow(2);
    CurrentSettings().LoopSlideShow = false;
    PlayerStart saver;
    saver.screenSaver = true;
    auto player = start(saver);
    EXPECT_TRUE(timer(*player, "TimerMouse")->isActive());
    for (int i = 0; i < 5; ++i)
        player->SlideTimer_Timer();
    EXPECT_TRUE(player->isVisible());
    key(*player, Qt::Key_A);
    EXPECT_FALSE(player->isVisible());
    EXPECT_FALSE(timer(*player, "TimerMouse")->isActive());

    // A small movement of the mouse is forgiven, a larger one ends the saver.
    CurrentSettings().MouseSensitivity = 20; // 4 pixels
    QCursor::setPos(100, 100);
    player = start(saver);
    QCursor::setPos(102, 101);
    player->TimerMouse_Timer();
    EXPECT_TRUE(player->isVisible());
    QCursor::setPos(110, 100);
    player->TimerMouse_Timer();
    EXPECT_FALSE(player->isVisible());
}

namespace {
// The system saver as the player sees it: on, with a value to take away and give back.
class HeldSaver final : public SystemSaver {
public:
    QStringList calls;
    bool active = true;
    QString MakeCurrent() override { return {}; }
    QString CurrentSaverName() override { return {}; }
    QString CurrentSaverValue() override { return QStringLiteral("C:\\OLD.SCR"); }
    void DisableSaver() override { calls << QStringLiteral("disable"); }
    void RestoreSaver(const QString& v) override { calls << QStringLiteral("restore ") + v; }
    bool SaverActive() override { return active; }
    bool PasswordInUse() override { return false; }
};
} // namespace

TEST_F(PlayerTest, SystemSaverIsHeldOffWhileAShowPlaysWhenAsked)
{
    auto owned = std::make_unique<HeldSaver>();
    HeldSaver* saver = owned.get();
    auto previous = InstallSystemSaver(std::move(owned));
    makeShow(2);

    // Off by default: the system saver is left alone.
    auto player = start({});
    key(*player, Qt::Key_Escape);
    EXPECT_TRUE(saver->calls.isEmpty());

    CurrentSettings().DisableScreenSaver = true;
    player = start({});
    EXPECT_EQ(saver->calls, QStringList{"disable"});
    key(*player, Qt::Key_Escape);
    EXPECT_EQ(saver->calls, (QStringList{"disable", "restore C:\\OLD.SCR"}));

    // Not while running as the saver itself, nor when no saver is on.
    saver->calls.clear();
    PlayerStart asSaver;
    asSaver.screenSaver = true;
    player = start(asSaver);
    key(*player, Qt::Key_A);
    saver->active = false;
    player = start({});
    key(*player, Qt::Key_Escape);
    EXPECT_TRUE(saver->calls.isEmpty());
    player.reset();
    InstallSystemSaver(std::move(previous));
}

TEST_F(PlayerTest, SlideSoundsAndMoviesPlayThroughTheMediaLayer)
{
    kavori::test::FakeMedia media;
    CurrentStartup().WaveDevices = true;
    CurrentStartup().MidiDevices = true;
    makeShow(3);
    const QString chime = writeFile(QStringLiteral("chime.wav"), kavori::test::MakeWave(200));
    const QString movie = writeFile(QStringLiteral("clip.avi"), QByteArray("RIFF"));
    CurrentSettings().SoundMode = 3;
    CurrentShow().slides[0].SlideSound = chime;
    CurrentShow().slides[1].SlideFile = movie;
    auto player = start();
    ClearMciCommandLog();
    player->SlideTimer_Timer();
    EXPECT_EQ(media.waveFile, chime);

    // A movie slide opens in picMovie, centred, instead of being read as a picture.
    player->SlideTimer_Timer();
    const QStringList log = MciCommandLog();
    ASSERT_FALSE(log.isEmpty());
    EXPECT_EQ(log.first(),
              QStringLiteral("open \"") + movie + QStringLiteral("\" type AVIVideo alias Movie"));
    EXPECT_TRUE(log.contains(QStringLiteral("play Movie from 0")));
    EXPECT_TRUE(player->media().movieOpen());
    EXPECT_TRUE(prompts().calls.isEmpty());
    auto* picMovie = player->findChild<QWidget*>(QStringLiteral("picMovie"));
    ASSERT_NE(picMovie, nullptr);
    EXPECT_TRUE(picMovie->isVisibleTo(player.get()));

    // The next slide stops and closes it first; ending the show stops everything.
    ClearMciCommandLog();
    player->SlideTimer_Timer();
    EXPECT_EQ(MciCommandLog().mid(0, 2), QStringList({"stop Movie", "close Movie"}));
    EXPECT_FALSE(player->media().movieOpen());
    EXPECT_EQ(center(*player), QColor(Qt::blue));
    player->endShow();
    EXPECT_FALSE(media.wavePlaying && media.waveLoops);
}

TEST_F(PlayerTest, KeysOfOurOwnSwitchLinesAndJump)
{
    makeShow(12);
    CurrentShow().slides[0].SlideDescription = QStringLiteral("first");
    auto player = start();
    player->resize(2000, 300);
    player->SlideTimer_Timer();
    EXPECT_EQ(player->infoLine(), QString());
    // F shows the file names, D the descriptions over the picture and on the line.
    key(*player, Qt::Key_F);
    EXPECT_EQ(player->infoLine(), CurrentShow().slides[0].SlideFile);
    key(*player, Qt::Key_D);
    EXPECT_EQ(player->infoLine(),
              CurrentShow().slides[0].SlideFile + QStringLiteral(" <--> first"));
    EXPECT_TRUE(
        player->findChild<QLabel*>(QStringLiteral("lblDescription"))->isVisibleTo(player.get()));
    key(*player, Qt::Key_D);
    EXPECT_FALSE(
        player->findChild<QLabel*>(QStringLiteral("lblDescription"))->isVisibleTo(player.get()));
    // N tells which slide is up; G goes to one by number, ignoring numbers out of range.
    key(*player, Qt::Key_N);
    EXPECT_EQ(player->infoLine(), QStringLiteral("Slide 1 of 12 slides (images) total..."));
    prompts().inputs = {QStringLiteral("11")};
    key(*player, Qt::Key_G);
    EXPECT_EQ(player->currentSlide(), 10);
    ASSERT_EQ(prompts().inputCalls.size(), 1);
    EXPECT_TRUE(prompts().inputCalls[0].text.endsWith(QStringLiteral("Go to slide number:")));
    prompts().inputs = {QStringLiteral("13")};
    key(*player, Qt::Key_G);
    EXPECT_EQ(player->currentSlide(), 10);
    // Page Up and Page Down jump ten slides and stop at the ends.
    key(*player, Qt::Key_PageUp);
    EXPECT_EQ(player->currentSlide(), 0);
    key(*player, Qt::Key_PageDown);
    EXPECT_EQ(player->currentSlide(), 10);
    key(*player, Qt::Key_PageDown);
    EXPECT_EQ(player->currentSlide(), 11);
}
