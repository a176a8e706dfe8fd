#include "viewer/ImagePrinting.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"

#include <QAction>
#include <QCheckBox>

using namespace kavori;

class ImagePrintingTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        CurrentSettings().StartupDialog = 0;
    }
};

TEST_F(ImagePrintingTest, PlacementOnThePage)
{
    const QRect page(0, 0, 4800, 6600); // letter-sized paint area at 600 dpi
    // 960 x 480 pixels are 10 x 5 inches at 96 to the inch: 6000 x 3000 printer dots.
    EXPECT_EQ(PrintPlacement(QSize(960, 480), page, 600, false, false, false),
              QRect(0, 0, 6000, 3000));
    EXPECT_EQ(PrintPlacement(QSize(960, 480), page, 600, false, true, false),
              QRect(0, 0, 4800, 2400));
    EXPECT_EQ(PrintPlacement(QSize(960, 480), page, 600, false, true, true),
              QRect(0, 2100, 4800, 2400));
    // A small picture: left at its size, or enlarged to the page.
    EXPECT_EQ(PrintPlacement(QSize(96, 96), page, 600, false, true, true),
              QRect(2100, 3000, 600, 600));
    EXPECT_EQ(PrintPlacement(QSize(96, 96), page, 600, true, false, false),
              QRect(0, 0, 4800, 4800));
    EXPECT_TRUE(PrintPlacement(QSize(), page, 600, true, true, true).isNull());
}

TEST_F(ImagePrintingTest, OptionsAreRememberedAndPrintingNeedsAPicture)
{
    CurrentSettings().PrintShrinkFit = true;
    frmPrintOptions options;
    EXPECT_TRUE(options.findChild<QCheckBox*>(QStringLiteral("chkShrink"))->isChecked());
    options.findChild<QCheckBox*>(QStringLiteral("chkCenter"))->setChecked(true);
    options.remember();
    EXPECT_TRUE(CurrentSettings().PrintCenterFit);
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("PrintCenterFit")), "True");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("PrintShrinkFit")), "True");
    ClearIni();

    MainViewFrm w;
    w.menus().action(QStringLiteral("mnuPrintImage"))->trigger();
    EXPECT_EQ(prompts().texts().last(), "An image has not been opened yet, unable to print...");
}
