#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/EditDialogs.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSpinBox>

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
