#include "playback/TransitionEngine.h"
#include "playback/ClockPacer.h"
#include "playback/TransitionCanvas.h"
#include "runtime/MsgBox.h"
#include "runtime/Random.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <QElapsedTimer>

using namespace kavori;

namespace {
// A recording canvas whose pauses can set the player's flags part-way.
class InterruptingCanvas final : public TransitionCanvas, public Pacer {
public:
    explicit InterruptingCanvas(QSize s) : recorder(s) {}
    QSize size() const override { return recorder.size(); }
    void copy(const QRect& r) override { recorder.copy(r); }
    void copyTo(const QRect& s, const QPoint& d) override { recorder.copyTo(s, d); }
    void pump() override {}
    void pause(int passes) override
    {
        recorder.pause(passes);
        if (++pauses == interruptAt) {
            if (skip)
                Transitions().TransitionSkip = true;
            else
                Transitions().TransitionStop = true;
        }
    }
    RecordingCanvas recorder;
    int pauses = 0;
    int interruptAt = -1;
    bool skip = true;
};
} // namespace

class TransitionEngineTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        Transitions() = TransitionFlags();
    }
    void TearDown() override
    {
        Transitions() = TransitionFlags();
        KavoriTest::TearDown();
    }
};

TEST_F(TransitionEngineTest, CatalogueNamesAndDelays)
{
    const QStringList names = TransitionNames();
    ASSERT_EQ(names.size(), 58);
    EXPECT_EQ(names[0], ">> No Transition - Blank Screen <<");
    EXPECT_EQ(names[1], ">> No Transition - Don't Blank Screen <<");
    EXPECT_EQ(names[2], "Drop Paint - Small Stripes - 1 Pass");
    EXPECT_EQ(names[3], "Drop Paint - Small Strips - 2 Pass");
    EXPECT_EQ(names[21], "Vertical Venetian Blinds - Large Stripes");
    EXPECT_EQ(names[38], "Blocks Left and Right - Down");
    EXPECT_EQ(names[49], "Uni-directional Lines - Center");
    EXPECT_EQ(names[53], "Diamond In");
    EXPECT_EQ(names[57], "Random Blocks - Large");
    // The two quirks kept on purpose: 21 is much quicker than its twin 20.
    EXPECT_EQ(TransitionBaseDelay(20), 1000);
    EXPECT_EQ(TransitionBaseDelay(21), 120);
    EXPECT_EQ(TransitionBaseDelay(36), 2000);
}

TEST_F(TransitionEngineTest, SizeClassesAndSpeedScaling)
{
    EXPECT_EQ(TransitionSizeClass(161, 121), 3);
    EXPECT_EQ(TransitionSizeClass(162, 100), 2);
    EXPECT_EQ(TransitionSizeClass(100, 122), 2);
    EXPECT_EQ(TransitionSizeClass(321, 241), 2);
    EXPECT_EQ(TransitionSizeClass(400, 200), 1);
    EXPECT_EQ(TransitionSizeClass(1920, 1080), 1);

    EXPECT_EQ(ScaledPauseCount(100, 3), 101);
    EXPECT_EQ(ScaledPauseCount(100, 0), 801);
    EXPECT_EQ(ScaledPauseCount(100, 1), 401);
    EXPECT_EQ(ScaledPauseCount(100, 2), 201);
    EXPECT_EQ(ScaledPauseCount(100, 4), 51);
    EXPECT_EQ(ScaledPauseCount(100, 5), 26);
    EXPECT_EQ(ScaledPauseCount(20, 6), 3);    // 2.5 rounds to 2: three passes
    EXPECT_EQ(ScaledPauseCount(60, 6), 9);    // 7.5 rounds to 8
    EXPECT_EQ(ScaledPauseCount(6000, 0), -1); // 48,000 overflows 16 bits
    EXPECT_EQ(ScaledPauseCount(4095, 0), 32761);
    EXPECT_EQ(ScaledPauseCount(4096, 0), -1);
}

TEST_F(TransitionEngineTest, DispatcherCompletesRefusesAndStops)
{
    // 0 and 1: the whole picture at once, no pause; invalid numbers: the message, then the
    // whole picture.
    for (qint16 n : {qint16(0), qint16(1), qint16(58), qint16(-1)}) {
        RecordingCanvas c(QSize(320, 200));
        ShowTransition(n, c, c);
        ASSERT_EQ(c.ops.size(), 1);
        EXPECT_EQ(c.ops[0].rect, QRect(0, 0, 320, 200));
    }
    EXPECT_EQ(prompts().texts(),
              QStringList({"Unexpected error, an invalid transition number was processed...",
                           "Unexpected error, an invalid transition number was processed..."}));
    EXPECT_EQ(prompts().calls[0].style, vbInformation);

    // 256 colours: no animation.
    Transitions().Colors256 = true;
    RecordingCanvas flat(QSize(640, 480));
    ShowTransition(34, flat, flat);
    EXPECT_EQ(flat.ops.size(), 1);
    Transitions().Colors256 = false;

    // Overflowing pauses end the effect at its first pause; the picture is still completed.
    CurrentSettings().TransitionSpeed = 0;
    RecordingCanvas tiny(QSize(160, 120)); // class 3: 3 x 2000 x 8 overflows
    ShowTransition(36, tiny, tiny);
    EXPECT_EQ(tiny.pauses(), 0);
    EXPECT_EQ(tiny.ops.last().rect, QRect(0, 0, 160, 120));
    CurrentSettings().TransitionSpeed = 3;

    // A key part-way: the rest is skipped and the whole picture shown.
    InterruptingCanvas skipped(QSize(640, 480));
    skipped.interruptAt = 5;
    ShowTransition(34, skipped, skipped);
    EXPECT_EQ(skipped.recorder.pauses(), 5);
    EXPECT_EQ(skipped.recorder.ops.last().rect, QRect(0, 0, 640, 480));

    // Ending the show part-way leaves the screen as drawn.
    InterruptingCanvas stopped(QSize(640, 480));
    stopped.interruptAt = 5;
    stopped.skip = false;
    ShowTransition(34, stopped, stopped);
    EXPECT_EQ(stopped.recorder.pauses(), 5);
    EXPECT_EQ(stopped.recorder.ops.last().kind, RecordingCanvas::Op::Pause);
    // A stop set before the start draws nothing at all.
    RecordingCanvas none(QSize(640, 480));
    ShowTransition(34, none, none);
    EXPECT_TRUE(none.ops.isEmpty());
    Transitions().TransitionStop = false;

    // A skip left over from before is cleared on entry.
    Transitions().TransitionSkip = true;
    RecordingCanvas fresh(QSize(640, 480));
    ShowTransition(34, fresh, fresh);
    EXPECT_GT(fresh.pauses(), 30);
}

TEST_F(TransitionEngineTest, RandomNumbersAreOneToFiftySeven)
{
    ScriptRandom({0.0, 0.99999});
    EXPECT_EQ(RandomTransitionNumber(), 1);
    EXPECT_EQ(RandomTransitionNumber(), 57);
    Randomize(3u);
    QSet<int> seen;
    for (int i = 0; i < 5000; ++i) {
        const int n = RandomTransitionNumber();
        ASSERT_GE(n, 1);
        ASSERT_LE(n, 57);
        seen.insert(n);
    }
    EXPECT_EQ(seen.size(), 57);
}

TEST_F(TransitionEngineTest, ClockPacerPresentsOncePerFrameAndKeepsTime)
{
    int presents = 0;
    ClockPacer pacer([&] { ++presents; }, 100.0); // 100 us a pass: 10 ms a pause of 100
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 4; ++i)
        pacer.pause(100);
    EXPECT_EQ(presents, 2);         // at 20 ms and 40 ms of the effect's time
    EXPECT_GE(clock.elapsed(), 19); // never ahead of the real clock at a presentation
    pacer.finish();
    EXPECT_EQ(presents, 3);
}
