#include "playback/media/MoviePlacement.h"

#include "runtime/Random.h"

#include "support/KavoriTest.h"

namespace kavori::test {

namespace {

using MoviePlacementTest = KavoriTest;

MoviePlacement At(qint16 location, QSize screen = QSize(1025, 769))
{
    MoviePlacement p;
    p.screen = screen;
    p.SlideLocation = location;
    return p;
}

TEST_F(MoviePlacementTest, PlacesTheMovieByTheSlideLocation)
{
    const QSize movie(320, 241);
    // Centred in whole pixels: (1025 - 320) / 2 = 352, (769 - 241) / 2 = 264.
    EXPECT_EQ(MovieRect(movie, At(0)), QRect(352, 264, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(1)), QRect(0, 0, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(2)), QRect(352, 0, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(3)), QRect(705, 0, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(4)), QRect(0, 264, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(5)), QRect(705, 264, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(6)), QRect(0, 528, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(7)), QRect(352, 528, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(8)), QRect(705, 528, 320, 241));
    MoviePlacement custom = At(10);
    custom.SlidePosX = 17;
    custom.SlidePosY = 40;
    EXPECT_EQ(MovieRect(movie, custom), QRect(17, 40, 320, 241));
    // A code the list does not have centres the movie.
    EXPECT_EQ(MovieRect(movie, At(42)), QRect(352, 264, 320, 241));

    // Random: anywhere the whole movie fits, drawn from the one random source.
    ScriptRandom({0.0, 0.999999, 0.5, 0.5});
    EXPECT_EQ(MovieRect(movie, At(9)), QRect(0, 528, 320, 241));
    EXPECT_EQ(MovieRect(movie, At(9)), QRect(353, 264, 320, 241));
}

TEST_F(MoviePlacementTest, EnlargesAndShrinksToTheScreenKeepingTheShape)
{
    const QSize screen(1024, 768);
    MoviePlacement p = At(0, screen);

    // Larger than the screen: its own size, hanging over every edge, unless shrunk.
    EXPECT_EQ(MovieRect(QSize(1280, 960), p), QRect(-128, -96, 1280, 960));
    p.SlideShrink = 1;
    EXPECT_EQ(MovieRect(QSize(1280, 960), p), QRect(0, 0, 1024, 768));
    EXPECT_EQ(MovieRect(QSize(2048, 512), p), QRect(0, 256, 1024, 256));
    // Shrinking leaves a small movie alone.
    EXPECT_EQ(MovieRect(QSize(320, 240), p), QRect(352, 264, 320, 240));

    p.SlideEnlarge = 1;
    EXPECT_EQ(MovieRect(QSize(320, 240), p), QRect(0, 0, 1024, 768));
    EXPECT_EQ(MovieRect(QSize(160, 240), p), QRect(256, 0, 512, 768));
    // Exactly as wide as the screen is neither smaller nor larger.
    EXPECT_EQ(MovieRect(QSize(1024, 300), p), QRect(0, 234, 1024, 300));

    // A size the device did not know fills the screen.
    EXPECT_EQ(MovieRect(QSize(0, 0), At(3, screen)), QRect(0, 0, 1024, 768));
}

} // namespace

} // namespace kavori::test
