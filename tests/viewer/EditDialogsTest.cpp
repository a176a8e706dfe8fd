#include "viewer/EditDialogs.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"
#include "viewer/frmPreferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>

using namespace kavori;

class EditDialogsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
    }
};

TEST_F(EditDialogsTest, RotateAndSizeDialogsRememberTheirChoices)
{
    CurrentSettings().RotateAngle = 45;
    CurrentSettings().RotateDirection = 1;
    frmRotateImg rotate;
    EXPECT_EQ(rotate.angle(), 45);
    EXPECT_FALSE(rotate.clockwise());
    rotate.findChild<QSpinBox*>(QStringLiteral("txtAngle"))->setValue(200); // kept within 1..180
    rotate.findChild<QRadioButton*>(QStringLiteral("optClockwise"))->setChecked(true);
    rotate.findChild<QCheckBox*>(QStringLiteral("chkPreserve"))->setChecked(false);
    rotate.remember();
    EXPECT_EQ(CurrentSettings().RotateAngle, 180);
    EXPECT_EQ(CurrentSettings().RotateDirection, 0);
    EXPECT_FALSE(CurrentSettings().RotatePreserve);

    frmImageSize size(QSize(400, 300));
    auto* width = size.findChild<QSpinBox*>(QStringLiteral("txtWidth"));
    auto* height = size.findChild<QSpinBox*>(QStringLiteral("txtHeight"));
    size.findChild<QCheckBox*>(QStringLiteral("chkAspect"))->setChecked(true);
    width->setValue(200);
    EXPECT_EQ(size.chosenSize(), QSize(200, 150));
    height->setValue(600);
    EXPECT_EQ(size.chosenSize(), QSize(800, 600));
    size.findChild<QCheckBox*>(QStringLiteral("chkAspect"))->setChecked(false);
    height->setValue(20000); // the largest side the program makes
    EXPECT_EQ(size.chosenSize(), QSize(800, 10000));
    size.remember();
    EXPECT_FALSE(CurrentSettings().ImageSizeAspect);
}

TEST_F(EditDialogsTest, PreferencesAreStoredAndShapeTheWindow)
{
    frmPreferences prefs;
    EXPECT_TRUE(prefs.findChild<QCheckBox*>(QStringLiteral("chkStretchImages"))->isChecked());
    prefs.findChild<QCheckBox*>(QStringLiteral("chkStretchImages"))->setChecked(false);
    prefs.findChild<QCheckBox*>(QStringLiteral("chkShowStatusBar"))->setChecked(false);
    EXPECT_FALSE(prefs.findChild<QCheckBox*>(QStringLiteral("chkClassicTypesOnly"))->isChecked());
    prefs.findChild<QCheckBox*>(QStringLiteral("chkClassicTypesOnly"))->setChecked(true);
    if (!qEnvironmentVariableIsEmpty("KAVORI_SHOT_DIR"))
        prefs.grab().save(qEnvironmentVariable("KAVORI_SHOT_DIR") + "/frmPreferences.png");
    prefs.findChild<QComboBox*>(QStringLiteral("cboStartupDialog"))->setCurrentIndex(0);
    prefs.remember();
    EXPECT_FALSE(CurrentSettings().StretchImages);
    EXPECT_EQ(CurrentSettings().StartupDialog, 0);
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("ShowStatusBar")), "False");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("StartupDialog")), "0");
    EXPECT_EQ(GetIniValue(QStringLiteral("Extras"), QStringLiteral("ClassicTypesOnly")), "True");
    EXPECT_TRUE(CurrentSettings().ClassicTypesOnly);
    ClearIni();
    MainViewFrm w;
    EXPECT_FALSE(w.statusBar()->isVisibleTo(&w));
    EXPECT_TRUE(w.findChild<QToolBar*>(QStringLiteral("Toolbar1"))->isVisibleTo(&w));
}
