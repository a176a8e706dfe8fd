#include "runtime/MsgBox.h"
#include "support/KavoriTest.h"

using namespace kavori;

class MsgBoxTest : public kavori::test::KavoriTest {};

TEST_F(MsgBoxTest, RecorderKeepsCallsAndAnswersFromItsScript)
{
    prompts().answers = {vbNo, vbCancel};
    EXPECT_EQ(MsgBox(QStringLiteral("Save?"), vbYesNo + vbQuestion), vbNo);
    EXPECT_EQ(MsgBox(QStringLiteral("Go on?"), vbYesNoCancel,
                     QStringLiteral("Kavori - [Slide Show Editor]")),
              vbCancel);
    // Out of scripted answers: the default button answers.
    EXPECT_EQ(MsgBox(QStringLiteral("Done...")), vbOK);
    EXPECT_EQ(MsgBox(QStringLiteral("Sure?"), vbYesNo + vbDefaultButton2), vbNo);
    EXPECT_EQ(MsgBox(QStringLiteral("Sure?"), vbYesNoCancel + vbDefaultButton3), vbCancel);
    EXPECT_EQ(MsgBox(QStringLiteral("Go?"), vbOKCancel + vbInformation), vbOK);

    ASSERT_EQ(prompts().calls.size(), 6);
    EXPECT_EQ(prompts().calls[0].text, "Save?");
    EXPECT_EQ(prompts().calls[0].style, vbYesNo + vbQuestion);
    EXPECT_EQ(prompts().calls[0].title, "Kavori");
    EXPECT_EQ(prompts().calls[1].title, "Kavori - [Slide Show Editor]");
    EXPECT_EQ(StyleButtons(prompts().calls[0].style), vbYesNo);
    EXPECT_EQ(StyleIcon(prompts().calls[0].style), vbQuestion);
    EXPECT_EQ(StyleIcon(vbOKOnly + vbExclamation + vbMsgBoxHelpButton), vbExclamation);
    EXPECT_EQ(NewLine2(), NewLine() + NewLine());

    // Input boxes: a scripted text, or an empty string for Cancel.
    prompts().inputs = {QStringLiteral("My Show"), std::nullopt};
    EXPECT_EQ(InputBox(QStringLiteral("Name?")), "My Show");
    EXPECT_EQ(InputBox(QStringLiteral("Name?"), QStringLiteral("Wizard")), "");
    ASSERT_EQ(prompts().inputCalls.size(), 2);
    EXPECT_EQ(prompts().inputCalls[0].title, "Kavori");
    EXPECT_EQ(prompts().inputCalls[1].title, "Wizard");

    // Pickers answer from the same recorder.
    prompts().files = {QStringLiteral("/pictures/a.jpg")};
    EXPECT_EQ(CurrentPrompts().openFile(QStringLiteral("Open Image"), {}, {}), "/pictures/a.jpg");
    EXPECT_EQ(CurrentPrompts().chooseFolder(QStringLiteral("Folder"), {}), "");
    EXPECT_FALSE(CurrentPrompts().chooseColor(Qt::red));
    EXPECT_EQ(prompts().pickerCalls,
              QStringList({"openFile: Open Image", "chooseFolder: Folder", "chooseColor"}));
}
