#include "settings/Languages.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/frmLanguage.h"
#include "slideshow/BonusPack.h"
#include "support/KavoriTest.h"

#include <QListWidget>
#include <QPushButton>

using namespace kavori;

class LanguagesTest : public kavori::test::KavoriTest {
protected:
    // Writes the list of languages and reads it.
    void loadLangFile(const QByteArray& bytes)
    {
        writeFile(home() + QStringLiteral("LangFile.DAT"), bytes);
        LoadLanguages();
    }
};

TEST_F(LanguagesTest, ReadingTheListOfLanguages)
{
    LoadLanguages(); // no file
    EXPECT_EQ(CurrentLanguages().LangCount, 0);
    EXPECT_EQ(CurrentLanguages().LangCurrent, -1);

    loadLangFile("-1\r\n");
    EXPECT_EQ(CurrentLanguages().LangCount, 0);
    EXPECT_EQ(CurrentLanguages().LangCurrent, -1);

    loadLangFile("1\r\nKAVFR.EXE, Francais\r\nKAVDE.EXE, Deutsch\r\n");
    EXPECT_EQ(CurrentLanguages().LangCount, 2);
    EXPECT_EQ(CurrentLanguages().LangCurrent, 1);
    EXPECT_EQ(CurrentLanguages().LangFile, QStringList({"KAVFR.EXE", "KAVDE.EXE"}));
    EXPECT_EQ(CurrentLanguages().LangName, QStringList({"Francais", "Deutsch"}));

    // An index naming no record read gives the default.
    loadLangFile("3\r\nKAVFR.EXE, Francais\r\nKAVDE.EXE, Deutsch\r\n");
    EXPECT_EQ(CurrentLanguages().LangCurrent, -1);

    // At most 25 records; reading stops at an empty name or label.
    QByteArray many = "0\r\n";
    for (int i = 0; i < 30; ++i)
        many += "L" + QByteArray::number(i) + ".EXE, Lang " + QByteArray::number(i) + "\r\n";
    loadLangFile(many);
    EXPECT_EQ(CurrentLanguages().LangCount, 25);
    EXPECT_EQ(CurrentLanguages().LangName.last(), "Lang 24");
    loadLangFile("0\r\nA.EXE, One\r\nB.EXE,\r\nC.EXE, Three\r\n");
    EXPECT_EQ(CurrentLanguages().LangCount, 1);

    // Garbage never stops start-up.
    loadLangFile(QByteArray("\x00\xff\x01,,\"\r\n", 7) + QByteArray(100000, 'z'));
    EXPECT_LE(CurrentLanguages().LangCount, 25);
    EXPECT_EQ(CurrentLanguages().LangCurrent, -1);
}

TEST_F(LanguagesTest, SavingWarnsOnceAndDropsMissingPrograms)
{
    writeFile(home() + QStringLiteral("KAVDE.EXE"), "program");
    loadLangFile("2\r\nKAVFR.EXE, Francais\r\nKAVDE.EXE, Deutsch\r\nKAVIT.EXE, Italiano\r\n");
    EXPECT_EQ(CurrentLanguages().LangCurrent, 2);
    CurrentLanguages().LangCurrent = 1;
    SaveLanguages();
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(
        prompts().calls[0].text,
        "At least one of your installed language files could not be found and will need to be "
        "re-installed:\r\n\r\n" +
            home() + "KAVFR.EXE");
    EXPECT_EQ(readFile(home() + QStringLiteral("LangFile.DAT")), "1\r\nKAVDE.EXE, Deutsch\r\n");
}

TEST_F(LanguagesTest, DialogListsSelectsAndRefuses)
{
    writeFile(home() + QStringLiteral("KAVFR.EXE"), "program");
    loadLangFile("-1\r\nKAVFR.EXE, Francais\r\n");
    EXPECT_EQ(LanguageListEntries(),
              QStringList({"English        *Default*      - KAVORIX.EXE", "Francais KAVFR.EXE"}));
    EnsureAppHome();
    QString opened;
    const auto browser = frmLanguage::WebOpener();
    frmLanguage::WebOpener() = [&](const QString& url) { opened = url; };

    frmLanguage dialog;
    auto* list = dialog.findChild<QListWidget*>(QStringLiteral("ListLang"));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->count(), 2);
    dialog.findChild<QPushButton*>(QStringLiteral("CmdAddLanguage"))->click();
    dialog.findChild<QPushButton*>(QStringLiteral("CmdRemove"))->click();
    list->setCurrentRow(-1);
    dialog.findChild<QPushButton*>(QStringLiteral("CmdSelect"))->click();
    EXPECT_EQ(prompts().texts(),
              QStringList({"Not done...", "Not done...",
                           "Select a file from the installed languages and then try again..."}));
    dialog.findChild<QPushButton*>(QStringLiteral("CmdCheckWeb"))->click();
    EXPECT_TRUE(opened.endsWith("languages.html"));
    frmLanguage::WebOpener() = browser;

    list->setCurrentRow(1);
    dialog.findChild<QPushButton*>(QStringLiteral("CmdSelect"))->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(CurrentLanguages().LangCurrent, 0);
    EXPECT_EQ(readFile(home() + QStringLiteral("LangFile.DAT")), "0\r\nKAVFR.EXE, Francais\r\n");
    // With a language selected the default line is no longer listed.
    EXPECT_EQ(LanguageListEntries(), QStringList({"Francais KAVFR.EXE"}));
}

TEST_F(LanguagesTest, BonusPackFile)
{
    LoadBonusPack();
    EXPECT_EQ(CurrentBonusPack().BonusPackName, "");
    writeFile(
        home() + QStringLiteral("BONUSPAK.DAT"),
        "Kavori Bonus Pack Data File\r\n----------------------------------\r\n\"Nature, Vol. 1\"\r\nGold\r\n");
    LoadBonusPack();
    EXPECT_EQ(CurrentBonusPack().BonusPackName, "Nature, Vol. 1");
    EXPECT_EQ(CurrentBonusPack().BonusPackEdition, "Gold");
    for (const QByteArray& bad :
         {QByteArray("Kavori Bonus Pack\r\n----------------------------------\r\nX\r\nY\r\n"),
          QByteArray("Kavori Bonus Pack Data File\r\n---\r\nX\r\nY\r\n"),
          QByteArray("\xff\xfe garbage")}) {
        writeFile(home() + QStringLiteral("BONUSPAK.DAT"), bad);
        LoadBonusPack();
        EXPECT_EQ(CurrentBonusPack().BonusPackName, "");
        EXPECT_EQ(CurrentBonusPack().BonusPackEdition, "");
    }
}
