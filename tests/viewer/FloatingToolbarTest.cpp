#include "platform/StartupState.h"
#include "platform/Twips.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"
#include "viewer/MainViewFrm.h"
#include "viewer/frmToolbar.h"

#include <QAction>
#include <QScreen>
#include <QToolButton>

using namespace kavori;

class FloatingToolbarTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        ResetStartup();
        CurrentSettings().StartupDialog = 0;
    }
};

// Where the toolbar goes: its saved place, kept whole on the screen.
TEST_F(FloatingToolbarTest, PlaceKeepsTheWholeToolbarOnTheScreen)
{
    const QSize screen(1280, 800);
    EXPECT_EQ(FloatingToolbarPlace(1500, 750, screen), QPoint(100, 50));
    EXPECT_EQ(FloatingToolbarPlace(-300, -1, screen), QPoint(0, 0));
    // 1280 px = 19200 twips, less the toolbar's 3210: 15990 twips = 1066 px.
    EXPECT_EQ(FloatingToolbarPlace(999999, 999999, screen), QPoint(1066, 711));
    // A screen smaller than the toolbar: its corner.
    EXPECT_EQ(FloatingToolbarPlace(5000, 5000, QSize(100, 50)), QPoint(0, 0));
}

// Shown at start when the settings ask, where they say; its buttons are the window's commands;
// where the user moves it is written with the window's state.
TEST_F(FloatingToolbarTest, ShownAtStartWhereTheSettingsSayAndItsPlaceKept)
{
    {
        MainViewFrm w;
        w.runStartSequence();
        EXPECT_EQ(w.findChild<frmToolbar*>(), nullptr);
    }
    CurrentSettings().ShowToolbar = true;
    CurrentSettings().ToolbarX = 1500;
    CurrentSettings().ToolbarY = 750;
    MainViewFrm w;
    w.show();
    w.runStartSequence();
    auto* toolbar = w.findChild<frmToolbar*>();
    ASSERT_NE(toolbar, nullptr);
    EXPECT_TRUE(toolbar->isVisible());
    EXPECT_EQ(toolbar->pos() - w.screen()->geometry().topLeft(), QPoint(100, 50));
    EXPECT_EQ(toolbar->size(), QSize(TwipsToPixels(3210), TwipsToPixels(1335)));
    w.runStartSequence(); // a second start does not make a second toolbar
    EXPECT_EQ(w.findChildren<frmToolbar*>().size(), 1);

    // Next with no picture open: the button is the greyed menu command itself.
    auto* next = toolbar->findChild<QToolButton*>(QStringLiteral("tbBrowseNext"));
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->defaultAction(), w.menus().action(QStringLiteral("mnuBrowseNext")));
    auto* full = toolbar->findChild<QToolButton*>(QStringLiteral("tbFullScreen"));
    ASSERT_NE(full, nullptr);
    full->click();
    EXPECT_EQ(prompts().texts().value(0),
              QStringLiteral("An image has not been opened yet, unable to view full screen..."));

    const QString shots = qEnvironmentVariable("KAVORI_SHOT_DIR");
    if (!shots.isEmpty())
        toolbar->grab().save(shots + QStringLiteral("/frmToolbar.png"));

    toolbar->move(w.screen()->geometry().topLeft() + QPoint(40, 20));
    EXPECT_EQ(CurrentSettings().ToolbarX, 600);
    EXPECT_EQ(CurrentSettings().ToolbarY, 300);
    w.close();
    const QString ini = QString::fromUtf8(readFile(SettingsFilePath()));
    EXPECT_TRUE(ini.contains(QLatin1String("ToolbarX=600"))) << ini.toStdString();
    EXPECT_TRUE(ini.contains(QLatin1String("ToolbarY=300")));
}
