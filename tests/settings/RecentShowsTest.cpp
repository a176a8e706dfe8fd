#include "settings/RecentShows.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

using namespace kavori;

class RecentShowsTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
    }
};

TEST_F(RecentShowsTest, NewShowsGoOnTopAndKnownShowsStayPut)
{
    auto& list = CurrentSettings().RecentShow;
    AddRecentShow(QStringLiteral("/shows/one.kav"));
    AddRecentShow(QStringLiteral("/shows/two.KAV"));
    AddRecentShow(QStringLiteral("/shows/three.kav"));
    EXPECT_EQ(list[0], "/shows/three.kav");
    EXPECT_EQ(list[2], "/shows/one.kav");

    // Already there (without regard to case): the order is left as it is.
    AddRecentShow(QStringLiteral("/SHOWS/ONE.KAV"));
    EXPECT_EQ(list[0], "/shows/three.kav");
    EXPECT_EQ(list[2], "/shows/one.kav");

    // Too short, not a full path, or empty: ignored.
    AddRecentShow(QStringLiteral("/a.kav"));
    AddRecentShow(QStringLiteral("relative/show.kav"));
    AddRecentShow(QString());
    EXPECT_EQ(list[0], "/shows/three.kav");
    EXPECT_TRUE(list[3].isEmpty());

    // A user who keeps no recent lists: nothing is added.
    CurrentSettings().KeepRecent = false;
    AddRecentShow(QStringLiteral("/shows/private.kav"));
    EXPECT_EQ(list[0], "/shows/three.kav");
    CurrentSettings().KeepRecent = true;

    // Twenty entries at the most: the oldest drops off.
    for (int i = 0; i < 25; ++i)
        AddRecentShow(QStringLiteral("/shows/more") + QString::number(i) + QStringLiteral(".kav"));
    EXPECT_EQ(list[0], "/shows/more24.kav");
    EXPECT_EQ(list[19], "/shows/more5.kav");

    // The list is in the settings file.
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("RecentShow1")),
              "/shows/more24.kav");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("RecentShow20")),
              "/shows/more5.kav");
    ClearIni();
}
