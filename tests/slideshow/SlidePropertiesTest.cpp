#include "slideshow/SlideProperties.h"
#include "runtime/Random.h"
#include "slideshow/SlideTransitions.h"
#include "support/ShowTest.h"

using namespace kavori;

class SlidePropertiesTest : public kavori::test::ShowTest {
protected:
    static QVector<Slide> slides(int count)
    {
        QVector<Slide> list;
        for (int i = 0; i < count; ++i)
            list << NewSlide(QStringLiteral("/p/%1.jpg").arg(i));
        return list;
    }
};

TEST_F(SlidePropertiesTest, EachSetAllCommandSaysAlreadySetOrAsks)
{
    struct Case {
        SetAllCommand command;
        std::function<void(Slide&)> give; // gives a slide the value the command sets
        const char* already;
        const char* question;
    };
    Slide chosen = NewSlide();
    chosen.SlideLocation = kLocationCustom;
    chosen.SlidePosX = 40;
    chosen.SlidePosY = 30;
    const Case cases[] = {
        {SetAllCommand::Center, [](Slide& s) { s.SlideLocation = 0; },
         "All slides are already set to display in the center of the screen...",
         "Show all of the slides in the center of the screen?"},
        {SetAllCommand::Random, [](Slide& s) { s.SlideLocation = 9; },
         "All slides are already set to the random location setting...",
         "Set all slides to the random location setting?"},
        {SetAllCommand::Position,
         [](Slide& s) {
             s.SlideLocation = 10;
             s.SlidePosX = 40;
             s.SlidePosY = 30;
         },
         "All slides are already set to use the currently selected location...",
         "Set all of the slides to use the currently selected location?"},
        {SetAllCommand::EnlargeAll, [](Slide& s) { s.SlideEnlarge = 1; },
         "All slides are already set to enlarge to fit the screen...",
         "Enlarge all of the slides to fit the screen?"},
        {SetAllCommand::EnlargeNone, [](Slide& s) { s.SlideEnlarge = 0; },
         "All slides are already set to not enlarge to fit the screen...",
         "Enlarge none of the slides to fit the screen?"},
        {SetAllCommand::ShrinkAll, [](Slide& s) { s.SlideShrink = 1; },
         "All slides are already set to shrink to fit the screen...",
         "Shrink all of the slides to fit the screen?"},
        {SetAllCommand::ShrinkNone, [](Slide& s) { s.SlideShrink = 0; },
         "All slides are already set not to shrink to fit the screen...",
         "Shrink none of the slides to fit the screen?"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.question);
        QVector<Slide> list = slides(3);
        for (Slide& s : list)
            c.give(s);
        SetAllPrompt prompt = SetAllPromptFor(c.command, list, chosen);
        EXPECT_EQ(prompt.alreadySet, QString::fromLatin1(c.already));
        EXPECT_TRUE(prompt.question.isEmpty());

        // One slide without the value: the question, and Yes sets it on every slide.
        list[1] = NewSlide(QStringLiteral("/p/x.jpg"));
        list[1].SlideLocation = 3;
        list[1].SlidePosX = 41;
        list[1].SlideEnlarge = list[0].SlideEnlarge ? 0 : 1;
        list[1].SlideShrink = list[0].SlideShrink ? 0 : 1;
        prompt = SetAllPromptFor(c.command, list, chosen);
        EXPECT_TRUE(prompt.alreadySet.isEmpty());
        EXPECT_EQ(prompt.question, QString::fromLatin1(c.question));
        ApplySetAll(c.command, list, chosen);
        EXPECT_EQ(SetAllPromptFor(c.command, list, chosen).alreadySet,
                  QString::fromLatin1(c.already));
    }

    // The commands without an already-set message always ask.
    QVector<Slide> list = slides(2);
    chosen.SlideDelay = 1;
    EXPECT_EQ(SetAllPromptFor(SetAllCommand::Interval, list, chosen).question,
              QStringLiteral("Set all of the slides to the 1 second interval setting?"));
    chosen.SlideDelay = 0;
    EXPECT_EQ(SetAllPromptFor(SetAllCommand::Interval, list, chosen).question,
              QStringLiteral("Set all of the slides to the No Timer interval setting?"));
    EXPECT_EQ(SetAllPromptFor(SetAllCommand::Randomize, list, chosen).question,
              QStringLiteral("Pick a random location to display all of the slides?"));
}

TEST_F(SlidePropertiesTest, BackgroundsAreOneKindAtATimeAndRangesStayInside)
{
    QVector<Slide> list = slides(4);
    Slide chosen = NewSlide();
    chosen.SlideTexture = QStringLiteral("/t/linen.bmp");
    ApplySetAll(SetAllCommand::Textures, list, chosen, 1, 2);
    EXPECT_EQ(list[0].SlideBackMode, 0);
    EXPECT_TRUE(list[0].SlideTexture.isEmpty());
    for (int i : {1, 2}) {
        EXPECT_EQ(list[i].SlideBackMode, 2);
        EXPECT_EQ(list[i].SlideTexture, chosen.SlideTexture);
    }
    EXPECT_EQ(list[3].SlideBackMode, 0);

    // A colour on slide 3 survives clearing textures; the textured ones go back to the default.
    list[3].SlideBackMode = 1;
    list[3].SlideBackColor = 0x00FF00;
    ApplySetAll(SetAllCommand::ClearTextures, list, chosen);
    for (const Slide& s : list)
        EXPECT_TRUE(s.SlideTexture.isEmpty());
    EXPECT_EQ(list[1].SlideBackMode, 0);
    EXPECT_EQ(list[3].SlideBackMode, 1);

    // A colour for all puts the textures aside.
    ApplySetAll(SetAllCommand::Textures, list, chosen);
    chosen.SlideBackColor = 0x0000FF;
    ApplySetAll(SetAllCommand::Colors, list, chosen);
    for (const Slide& s : list) {
        EXPECT_EQ(s.SlideBackMode, 1);
        EXPECT_EQ(s.SlideBackColor, 0x0000FF);
        EXPECT_TRUE(s.SlideTexture.isEmpty());
    }

    // Randomize draws one fixed place per slide, never the random or custom codes.
    ScriptRandom({0.0, 0.5, 0.99999, 0.2});
    ApplySetAll(SetAllCommand::Randomize, list, chosen);
    EXPECT_EQ(list[0].SlideLocation, 0);
    EXPECT_EQ(list[1].SlideLocation, 4);
    EXPECT_EQ(list[2].SlideLocation, 8);
    EXPECT_EQ(list[3].SlideLocation, 1);
}

TEST_F(SlidePropertiesTest, RandomTransitionsLieBetweenOneAndTheLastEntry)
{
    // 58 entries: r = 0 gives 1 (don't blank), r just under 1 gives 57; 0 never comes.
    ScriptRandom({0.0, 0.9999999, 0.5});
    EXPECT_EQ(RandomTransitionIndex(58), 1);
    EXPECT_EQ(RandomTransitionIndex(58), 57);
    EXPECT_EQ(RandomTransitionIndex(58), 29);

    QVector<Slide> one = slides(1);
    Randomize(7);
    for (int i = 0; i < 200; ++i) {
        RandomizeTransitions(one, 58);
        ASSERT_GE(one[0].SlideTransition, 1);
        ASSERT_LE(one[0].SlideTransition, 57);
    }

    // Picking at random draws again while it hits the entry chosen before, ten times more at
    // most: eleven draws of the same value give that value, and the twelfth is left.
    QVector<double> same(11, 0.5);
    same << 0.0;
    ScriptRandom(same);
    EXPECT_EQ(RandomSelectIndex(58, 29), 29);
    EXPECT_EQ(Rnd(), 0.0);
    ScriptRandom({0.5, 0.5, 0.0});
    EXPECT_EQ(RandomSelectIndex(58, 29), 1);

    QVector<Slide> list = slides(2);
    EXPECT_EQ(ClearAllTransitionsPrompt(list).alreadySet,
              QStringLiteral("All slides are already set to No Transition..."));
    list[1].SlideTransition = 1;
    EXPECT_EQ(ClearAllTransitionsPrompt(list).question,
              QStringLiteral("You are about to clear ALL of the image transition settings for "
                             "this slide show.\r\n\r\nAre you sure?"));
    EXPECT_TRUE(IsPreviewMovie(QStringLiteral("/m/clip.Mpg")));
    EXPECT_FALSE(IsPreviewMovie(QStringLiteral("/m/clip.jpg")));
}
