#include "playback/TransitionEffects.h"
#include "playback/TransitionCanvas.h"
#include "playback/TransitionEngine.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <cstring>

using namespace kavori;
using Op = RecordingCanvas::Op;

namespace {

// The effect alone, without the dispatcher's final copy.
RecordingCanvas runEffect(int number, QSize size)
{
    RecordingCanvas c(size);
    const TransitionEntry& e = TransitionCatalogue(number);
    EffectRun run(c, c, e.a, e.b, TransitionSizeClass(size.width(), size.height()) * e.baseDelay);
    e.routine(run);
    return c;
}

QVector<QRect> copies(const RecordingCanvas& c)
{
    QVector<QRect> rects;
    for (const Op& op : c.ops)
        if (op.kind != Op::Pause)
            rects << QRect(op.to, op.rect.size());
    return rects;
}

// Pixels of the picture that no copy reached.
int uncovered(const RecordingCanvas& c)
{
    const QSize size = c.size();
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    for (const QRect& r : copies(c)) {
        const QRect clip = r.intersected(mask.rect());
        for (int y = clip.top(); y <= clip.bottom(); ++y)
            std::memset(mask.scanLine(y) + clip.left(), 255, size_t(clip.width()));
    }
    int n = 0;
    for (int y = 0; y < size.height(); ++y) {
        const uchar* line = mask.constScanLine(y);
        for (int x = 0; x < size.width(); ++x)
            n += line[x] == 0;
    }
    return n;
}

} // namespace

class TransitionEffectsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        Transitions() = TransitionFlags();
    }
};

TEST_F(TransitionEffectsTest, CentreOutAndIn)
{
    const RecordingCanvas c = runEffect(6, QSize(640, 481));
    const QVector<QRect> r = copies(c);
    EXPECT_EQ(r[0], QRect(0, 240, 640, 8));
    EXPECT_EQ(r[1], QRect(0, 240, 640, 8));
    EXPECT_EQ(r[2], QRect(0, 248, 640, 8));
    EXPECT_EQ(r[3], QRect(0, 232, 640, 8));
    // The loop ends only when both strips have left the picture.
    EXPECT_GE(r[r.size() - 2].top(), 481);
    EXPECT_LT(r.last().top(), 0);
    EXPECT_EQ(c.pauses(), r.size() / 2);
    EXPECT_EQ(c.ops[2].kind, Op::Pause);
    EXPECT_EQ(c.ops[2].passes, 501);

    const QVector<QRect> in = copies(runEffect(9, QSize(640, 480)));
    EXPECT_EQ(in[0], QRect(0, 0, 8, 480));
    EXPECT_EQ(in[1], QRect(632, 0, 8, 480));
    EXPECT_EQ(in.size(), 80);
}

TEST_F(TransitionEffectsTest, SlidesWipesAndStripes)
{
    // Slide from bottom: 17 steps of the whole picture, from below the screen into place.
    const RecordingCanvas slide = runEffect(26, QSize(640, 480));
    const QVector<QRect> s = copies(slide);
    ASSERT_EQ(s.size(), 17);
    EXPECT_EQ(s.first(), QRect(0, 480, 640, 480));
    EXPECT_EQ(s[1], QRect(0, 450, 640, 480));
    EXPECT_EQ(s.last(), QRect(0, 0, 640, 480));
    EXPECT_EQ(copies(runEffect(28, QSize(640, 480))).first(), QRect(-640, 0, 640, 480));
    EXPECT_EQ(copies(runEffect(29, QSize(640, 480)))[1], QRect(600, 0, 640, 480));

    // Diagonal slide down-right: from the top-left corner, never past its place.
    const QVector<QRect> d = copies(runEffect(22, QSize(640, 480)));
    ASSERT_EQ(d.size(), 81);
    EXPECT_EQ(d.first().topLeft(), QPoint(-640, -480));
    EXPECT_EQ(d[1].topLeft(), QPoint(-632, -474));
    EXPECT_EQ(d.last().topLeft(), QPoint(0, 0));
    EXPECT_EQ(copies(runEffect(25, QSize(640, 480))).first().topLeft(), QPoint(640, 480));

    // Wipes: columns of 16 from the left, rows of 20 from the bottom.
    const QVector<QRect> w = copies(runEffect(34, QSize(640, 480)));
    ASSERT_EQ(w.size(), 41);
    EXPECT_EQ(w.first(), QRect(0, 0, 16, 480));
    EXPECT_EQ(w[39], QRect(624, 0, 16, 480));
    const QVector<QRect> up = copies(runEffect(37, QSize(640, 480)));
    EXPECT_EQ(up.first(), QRect(0, 460, 640, 20));

    // Stripes: even stripes from the left edge, odd ones from the right, in step.
    const QVector<QRect> st = copies(runEffect(10, QSize(640, 480)));
    EXPECT_EQ(st[0], QRect(0, 0, 16, 4));
    EXPECT_EQ(st[1], QRect(640, 4, 16, 4));
    EXPECT_EQ(st[2], QRect(0, 8, 16, 4));
    EXPECT_EQ(st.size(), 41 * 61 * 2);
}

TEST_F(TransitionEffectsTest, BlocksVenetianDiagonalDiamondAndRandom)
{
    // The block snake: out along the first row, back along the second, one block a pause.
    const RecordingCanvas b = runEffect(38, QSize(640, 480));
    const QVector<QRect> blocks = copies(b);
    EXPECT_EQ(blocks[0], QRect(0, 0, 16, 16));
    EXPECT_EQ(blocks[40], QRect(640, 0, 16, 16));
    EXPECT_EQ(blocks[41], QRect(640, 16, 16, 16));
    EXPECT_EQ(blocks[81], QRect(0, 16, 16, 16));
    EXPECT_EQ(b.pauses(), blocks.size());

    // Venetian blinds: every slat one row more per pass.
    const RecordingCanvas v = runEffect(18, QSize(640, 480));
    const QVector<QRect> ven = copies(v);
    EXPECT_EQ(ven[0], QRect(0, 0, 640, 1));
    EXPECT_EQ(ven[1], QRect(0, 12, 640, 1));
    EXPECT_EQ(ven.last(), QRect(0, 480, 640, 12));
    EXPECT_EQ(v.pauses(), 12);

    // Diagonal wipe: the first line is the top-left block, the second runs down-left.
    const QVector<QRect> dw = copies(runEffect(30, QSize(640, 480)));
    EXPECT_EQ(dw[0], QRect(0, 0, 16, 16));
    EXPECT_EQ(dw[1], QRect(16, 0, 16, 16));
    EXPECT_EQ(dw[2], QRect(0, 16, 16, 16));

    // Diamond out: the centre block, then rings; diamond in starts at radius 30.
    const QVector<QRect> out = copies(runEffect(54, QSize(640, 480)));
    EXPECT_EQ(out[0], QRect(320, 240, 20, 20));
    EXPECT_EQ(out[1], QRect(320, 220, 20, 20));
    EXPECT_EQ(out.size(), 1 + 4 * (32 * 33 / 2));
    const QVector<QRect> in = copies(runEffect(53, QSize(640, 480)));
    EXPECT_EQ(in[0], QRect(320, 240 - 600, 20, 20));
    EXPECT_EQ(runEffect(53, QSize(640, 480)).pauses(), 32);

    // Random blocks: exactly eight passes with the pass sizes of their doubling blocks.
    const RecordingCanvas rnd = runEffect(57, QSize(640, 480));
    int expected = 0;
    for (int size = 60, pass = 0; pass < 8; ++pass, size *= 2) {
        const int cols = int(std::nearbyint(640.0 / size)),
                  rows = int(std::nearbyint(480.0 / size));
        expected += int(std::floor(1.5 * (cols + 1) * (rows + 1))) + 1;
    }
    EXPECT_EQ(rnd.pauses(), expected);
    for (const QRect& r : copies(rnd))
        ASSERT_EQ(r.x() % 60, 0);
}

TEST_F(TransitionEffectsTest, EveryEffectCoversThePictureByItsLastStep)
{
    for (const QSize size :
         {QSize(640, 480), QSize(333, 217), QSize(160, 120), QSize(1920, 1080)}) {
        for (int n = 2; n < kTransitionCount; ++n) {
            if (n == 53 || n >= 55)
                continue; // the final copy completes Diamond In and the random blocks
            const RecordingCanvas c = runEffect(n, size);
            EXPECT_EQ(uncovered(c), 0) << n << " at " << size.width() << "x" << size.height();
            EXPECT_GT(c.pauses(), 0) << n;
        }
    }
}
