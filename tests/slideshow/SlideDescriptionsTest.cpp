#include "slideshow/SlideDescriptions.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "support/ShowTest.h"

#include <QRegularExpression>

using namespace kavori;

class SlideDescriptionsTest : public kavori::test::ShowTest {
protected:
    // Three pictures in two folders; the first folder's description file knows two of them.
    void SetUp() override
    {
        ShowTest::SetUp();
        a = writeFile(QStringLiteral("one/a.jpg"), "x");
        b = writeFile(QStringLiteral("one/b.jpg"), "xy");
        c = writeFile(QStringLiteral("two/c.jpg"), "xyz");
        writeFile(QStringLiteral("one/!Description"),
                  "Kavori Description File\r\n------------------------------\r\n"
                  "A.JPG\r\nThe lake\r\nb.jpg\r\n" +
                      QByteArray(250, 'w') + "\r\n");
        SlideShow& show = CurrentShow();
        show.slides = {NewSlide(a), NewSlide(b), NewSlide(c)};
    }
    QString a, b, c;
};

TEST_F(SlideDescriptionsTest, ClearAndInsertFromTheFoldersFiles)
{
    SlideShow show = CurrentShow();
    EXPECT_EQ(EditingCaption(0), "Editing description for slide 1:");

    // Nothing to clear yet, one by one or all at once.
    EXPECT_EQ(ClearSlideDescription(show, 1).message, "This description is already blank...");
    EXPECT_EQ(ClearAllRefusal(show), "There are no descriptions to clear...");

    // A slide whose folder knows nothing of it.
    DescriptionResult r = InsertFolderDescription(show, 2);
    EXPECT_EQ(r.message, "The selected image does not have a description, nothing to insert...");
    EXPECT_FALSE(r.changed);

    // The name is found without regard to case; a long text is cut to 200.
    r = InsertFolderDescription(show, 0);
    EXPECT_TRUE(r.changed);
    EXPECT_EQ(show.slides[0].SlideDescription, "The lake");
    EXPECT_FALSE(InsertFolderDescription(show, 0).changed); // the same text again

    r = InsertAllFolderDescriptions(show);
    EXPECT_TRUE(r.message.isEmpty());
    EXPECT_TRUE(r.changed);
    EXPECT_EQ(show.slides[1].SlideDescription, QString(200, u'w'));
    EXPECT_EQ(show.slides[2].SlideDescription, "");

    EXPECT_EQ(ClearAllRefusal(show), "");
    EXPECT_EQ(ClearAllQuestion(), "You are about to clear ALL of the image descriptions for this "
                                  "slide show.\r\n\r\nAre you sure?");
    EXPECT_TRUE(ClearSlideDescription(show, 0).changed);
    EXPECT_EQ(show.slides[0].SlideDescription, "");
    ClearAllDescriptions(show);
    EXPECT_EQ(show.slides[1].SlideDescription, "");

    // Slides named beside the show find their folder's file through the show's path.
    show.path = root() + QStringLiteral("one/show.KAV");
    show.slides = {NewSlide(QStringLiteral("a.jpg"))};
    EXPECT_TRUE(InsertAllFolderDescriptions(show).changed);
    EXPECT_EQ(show.slides[0].SlideDescription, "The lake");

    // No slide has a folder description: nothing changes and the user is told.
    show.slides = {NewSlide(c), NewSlide(root() + QStringLiteral("gone/x.jpg"))};
    r = InsertAllFolderDescriptions(show);
    EXPECT_FALSE(r.changed);
    EXPECT_EQ(r.message, "None of the image and/or movie files in the slide show have "
                         "descriptions, nothing to insert into the slide show's descriptions...");
}

TEST_F(SlideDescriptionsTest, ApplyToAllGivesEachPartOfTheLook)
{
    EXPECT_EQ(ApplyToAllQuestion(LookPart::Properties),
              "Apply the selected description properties to all of the slides in the show?");
    EXPECT_EQ(ApplyToAllQuestion(LookPart::Shadow),
              "Apply the selected drop shadow settings to all of the descriptions in the slide "
              "show?");
    EXPECT_EQ(ApplyToAllQuestion(LookPart::Background),
              "Apply the selected background settings to all of the descriptions in the slide "
              "show?");

    SlideShow show = CurrentShow();
    DescriptionLook own = DefaultDescriptionLook();
    own.custom = 1;
    own.location = 20;
    own.font = QStringLiteral("DejaVu Serif");
    show.slides[2].SlideDescProps = BuildDescProps(own);

    // A shadow the defaults do not have makes every slide custom, keeping the rest of its look.
    DescriptionLook chosen = DefaultDescriptionLook();
    chosen.shadow = 1;
    chosen.shadowDistance = 4;
    chosen.shadowColor = 255;
    chosen.useBack = 1;
    EXPECT_EQ(ApplyLookToAll(show, chosen, LookPart::Shadow), 3);
    for (const Slide& slide : show.slides) {
        const DescriptionLook look = ParseDescProps(slide.SlideDescProps);
        EXPECT_EQ(look.custom, 1);
        EXPECT_EQ(look.shadowDistance, 4);
        EXPECT_EQ(look.shadowColor, 255);
        EXPECT_EQ(look.useBack, 0); // not part of the shadow
    }
    EXPECT_EQ(ParseDescProps(show.slides[2].SlideDescProps).location, 20);
    EXPECT_EQ(ParseDescProps(show.slides[2].SlideDescProps).font, "DejaVu Serif");
    EXPECT_EQ(ApplyLookToAll(show, chosen, LookPart::Shadow), 0); // already so

    // The background: box, its colour and the border.
    chosen.backColor = 0x00FF00;
    chosen.border = 2;
    EXPECT_EQ(ApplyLookToAll(show, chosen, LookPart::Background), 3);
    EXPECT_EQ(ParseDescProps(show.slides[0].SlideDescProps).useBack, 1);
    EXPECT_EQ(ParseDescProps(show.slides[1].SlideDescProps).border, 2);
    EXPECT_EQ(ParseDescProps(show.slides[2].SlideDescProps).location, 20);

    // The whole look: a default look sends every slide back to the defaults.
    EXPECT_EQ(ApplyLookToAll(show, DefaultDescriptionLook(), LookPart::Properties), 3);
    for (const Slide& slide : show.slides)
        EXPECT_EQ(slide.SlideDescProps, "");
    // A part equal to the defaults leaves default slides alone.
    EXPECT_EQ(ApplyLookToAll(show, DefaultDescriptionLook(), LookPart::Shadow), 0);
    own.custom = 1;
    EXPECT_EQ(ApplyLookToAll(show, own, LookPart::Properties), 3);
    EXPECT_EQ(show.slides[1].SlideDescProps, BuildDescProps(own));
}

TEST_F(SlideDescriptionsTest, FileInformationFontSummaryAndStoring)
{
    SlideShow show = CurrentShow();
    const SlideFileText info = SlideFileInformation(show, 1);
    EXPECT_TRUE(info.found);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^File Date: .+ - File Size: 2 bytes\\. - File "
                                                  "Path: .+/one/b\\.jpg$"))
                    .match(info.text)
                    .hasMatch())
        << info.text.toStdString();
    show.slides[1].SlideFile = root() + QStringLiteral("one/gone.jpg");
    EXPECT_FALSE(SlideFileInformation(show, 1).found);
    EXPECT_EQ(SlideFileInformation(show, 1).text,
              "Selected file could not be found, unable to get information...");
    EXPECT_FALSE(SlideFileInformation(show, 7).found);

    DescriptionLook look;
    look.font = QStringLiteral("DejaVu Sans");
    look.size = 14;
    look.style = 3;
    EXPECT_EQ(FontSummary(look), "Currently selected font:\r\nName: DejaVu Sans\r\nSize: "
                                 "14\r\nBold: Yes\r\nItalic: Yes");
    look.style = 2;
    EXPECT_TRUE(FontSummary(look).endsWith("Bold: No\r\nItalic: Yes"));

    // Storing: the original show changes only when a text or a look differs.
    SlideShow& original = CurrentShow();
    SlideShow edited = original;
    EXPECT_FALSE(StoreSlideDescriptions(original, edited));
    EXPECT_FALSE(original.changed);
    edited.slides[0].SlideDescription = QString(230, u'd');
    EXPECT_TRUE(StoreSlideDescriptions(original, edited));
    EXPECT_TRUE(original.changed);
    EXPECT_EQ(original.slides[0].SlideDescription.size(), 200);
    original.changed = false;
    edited.slides[2].SlideDescProps = QStringLiteral("1,3,5,Arial,12,0,0,0,0,1,0,0,3,0");
    EXPECT_TRUE(StoreSlideDescriptions(original, edited));
    EXPECT_EQ(original.slides[2].SlideDescProps, edited.slides[2].SlideDescProps);
}
