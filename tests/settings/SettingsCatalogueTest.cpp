#include "settings/SettingsCatalogue.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "support/KavoriTest.h"

#include <QDir>

using namespace kavori;

namespace {
struct KeyCase {
    const char* key;
    const char* missing; // read from a file without the key
    const char* bad;     // a value of the wrong kind...
    const char* badRead; // ...and what it reads as
    const char* out;     // a value out of range...
    const char* outRead; // ...and what it reads as
};

// Every key's behaviour as the settings file documents it.
// clang-format off
const KeyCase kCases[] = {
        {"Color256Msg", "True", "no", "True", "false", "False"},
        {"UseRecycleBin", "True", "no", "True", "false", "False"},
        {"UseRecentDocuments", "True", "no", "True", "false", "False"},
        {"CopyDescription", "True", "no", "True", "false", "False"},
        {"CopyDescFloppy", "True", "no", "True", "false", "False"},
        {"MakePauseSnd", "True", "no", "True", "false", "False"},
        {"ScreenSaverSound", "True", "no", "True", "false", "False"},
        {"RotatePreserve", "True", "no", "True", "false", "False"},
        {"DeleteUntitled", "True", "no", "True", "false", "False"},
        {"ClearClipboard", "True", "no", "True", "false", "False"},
        {"AutosizeWindow", "True", "no", "True", "false", "False"},
        {"DontRestartSound", "True", "no", "True", "false", "False"},
        {"LoopSlideShow", "True", "no", "True", "false", "False"},
        {"AnimateGIF89", "True", "no", "True", "false", "False"},
        {"RMouseNext", "True", "no", "True", "false", "False"},
        {"CmdLineExit", "True", "no", "True", "false", "False"},
        {"CmdLineAnimate", "True", "no", "True", "false", "False"},
        {"StretchImages", "True", "no", "True", "false", "False"},
        {"ShowFileBrowser", "True", "no", "True", "false", "False"},
        {"ShowMainToolbar", "True", "no", "True", "false", "False"},
        {"ShowQuickToolbar", "True", "no", "True", "false", "False"},
        {"ShowStatusBar", "True", "no", "True", "false", "False"},
        {"KeepRecent", "True", "no", "True", "false", "False"},
        {"PackageDefaultSaver", "True", "no", "True", "false", "False"},
        {"DisableScreenSaver", "False", "yes", "False", "true", "True"},
        {"ImageSizeAspect", "False", "yes", "False", "true", "True"},
        {"TopMostWindow", "False", "yes", "False", "true", "True"},
        {"SaveWindowSize", "False", "yes", "False", "true", "True"},
        {"NewGetsClipboard", "False", "yes", "False", "true", "True"},
        {"SoundLoop", "False", "yes", "False", "true", "True"},
        {"UsePlayList", "False", "yes", "False", "true", "True"},
        {"PlayListRandom", "False", "yes", "False", "true", "True"},
        {"RandomSlides", "False", "yes", "False", "true", "True"},
        {"ShowFilenames", "False", "yes", "False", "true", "True"},
        {"SlideShowFileExt", "False", "yes", "False", "true", "True"},
        {"SlideShowFilePath", "False", "yes", "False", "true", "True"},
        {"ShowDescription", "False", "yes", "False", "true", "True"},
        {"SlideIgnoreError", "False", "yes", "False", "true", "True"},
        {"LMousePrev", "False", "yes", "False", "true", "True"},
        {"ShowToolbar", "False", "yes", "False", "true", "True"},
        {"SaveSlides", "False", "yes", "False", "true", "True"},
        {"ResumeLastDisplayed", "False", "yes", "False", "true", "True"},
        {"WindowMaximized", "False", "yes", "False", "true", "True"},
        {"ViewFullScreen", "False", "yes", "False", "true", "True"},
        {"StartFullScreen", "False", "yes", "False", "true", "True"},
        {"EnlargeImages", "False", "yes", "False", "true", "True"},
        {"PrintEnlargeFit", "False", "yes", "False", "true", "True"},
        {"PrintShrinkFit", "False", "yes", "False", "true", "True"},
        {"PrintCenterFit", "False", "yes", "False", "true", "True"},
        {"ClickScreenOpen", "False", "yes", "False", "true", "True"},
        {"UseHalftoneMode", "False", "yes", "False", "true", "True"},
        {"DisplayLastOpened", "False", "yes", "False", "true", "True"},
        {"ThumbnailDelete", "False", "yes", "False", "true", "True"},
        {"OpenShowPreview", "False", "yes", "False", "true", "True"},
        {"TransitionPreview", "False", "yes", "False", "true", "True"},
        {"EnableTransitions", "False", "yes", "False", "true", "True"},
        {"ClearTransition", "False", "yes", "False", "true", "True"},
        {"RandomTransitions", "False", "yes", "False", "true", "True"},
        {"WallpaperStretch", "False", "yes", "False", "true", "True"},
        {"WallpaperAspect", "False", "yes", "False", "true", "True"},
        {"SelectDuplicates", "False", "yes", "False", "true", "True"},
        {"PackageRuntime", "False", "yes", "False", "true", "True"},
        {"PackageScreenSaver", "False", "yes", "False", "true", "True"},
        {"PackageShortcut", "False", "yes", "False", "true", "True"},
        {"PackageAutorun", "False", "yes", "False", "true", "True"},
        {"QualityJPG", "8", "x7", "8", "11", "8"},
        {"SelectSomeOption", "0", "x7", "0", "2", "0"},
        {"SelectSomeFormat", "0", "x7", "0", "12", "0"},
        {"RotateAngle", "180", "x7", "180", "181", "180"},
        {"MouseSensitivity", "4", "x7", "4", "21", "4"},
        {"SlideDescLoc", "5", "x7", "5", "22", "5"},
        {"SlideDescSpeed", "5", "x7", "5", "11", "5"},
        {"SlideDescStyle", "0", "x7", "0", "4", "0"},
        {"SlideDescUseBack", "0", "x7", "0", "2", "0"},
        {"SlideDescBorder", "1", "x7", "1", "3", "1"},
        {"SlideDescShadow", "0", "x7", "0", "2", "0"},
        {"SlideDescShadDist", "0", "x7", "0", "50", "0"},
        {"SlideDescShadDir", "3", "x7", "3", "4", "3"},
        {"NewImageX", "640", "abc", "640", "10001", "10000"},
        {"NewImageY", "480", "abc", "480", "10001", "10000"},
        {"CDTrack", "0", "abc", "0", "101", "100"},
        {"SlideInterval", "5", "abc", "5", "61", "60"},
        {"TransitionSpeed", "3", "abc", "3", "7", "6"},
        {"OpenPreviewTimer", "500", "abc", "500", "5001", "5000"},
        {"SlideDescSize", "12", "big", "12", "7", "8"},
        {"MainPosX", "0", "1.2.3", "0", "99999999", "99999999"},
        {"MainPosY", "0", "1.2.3", "0", "99999999", "99999999"},
        {"MainSizeX", "9510", "1.2.3", "9510", "99999999", "99999999"},
        {"MainSizeY", "7110", "1.2.3", "7110", "99999999", "99999999"},
        {"OpenDlgX", "0", "1.2.3", "0", "99999999", "99999999"},
        {"OpenDlgY", "0", "1.2.3", "0", "99999999", "99999999"},
        {"SSOpenDlgX", "0", "1.2.3", "0", "99999999", "99999999"},
        {"SSOpenDlgY", "0", "1.2.3", "0", "99999999", "99999999"},
        {"SlideDescForeColor", "0", "1.2.3", "0", "99999999", "99999999"},
        {"SlideDescBackColor", "0", "1.2.3", "0", "99999999", "99999999"},
        {"SlideDescShadColor", "0", "1.2.3", "0", "99999999", "99999999"},
        {"ImageLastDisplayed", "0", "x", "0", "99999", "0"},
        {"BackColorRGB", "0", "x", "0", "-5", "0"},
        {"PreviewBackRGB", "0", "x", "0", "-1", "0"},
        {"FileBrowserWidth", "-1", "x", "-1", "899", "900"},
        {"FileBrowserBar", "-1", "x", "-1", "10", "900"},
        {"ToolbarX", "0", "x", "0", "-20", "0"},
        {"ToolbarY", "0", "x", "0", "-1", "0"},
        {"RotateDirection", "0", "x", "0", "2", "0"},
        {"SoundMode", "0", "x", "0", "4", "0"},
        {"PasswordDelay", "0", "x", "0", "5", "0"},
        {"BackgroundColor", "0", "x", "0", "7", "0"},
        {"LastQuickAction", "0", "x", "0", "8", "0"},
        {"ThumbnailOrder", "0", "x", "0", "4", "0"},
        {"StartupDialog", "1", "x", "4", "9", "4"},
        {"SelectSomePattern", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"SoundFile", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"ZipProgram", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"MP3Program", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"DefaultImage", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"LastTexturePath", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"LastSoundPath", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"LastCopyToPath", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"LastWizardName", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"LastSlideShow", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"OpenWithProgram", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"OpenWithProgram5", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"QuickFolder1", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"QuickFolder12", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"QuickFolderPath3", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"PackageSource", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"PackageDestination", "", "a,b", "a", "  spaced  ", "  spaced"},
        {"CdRomDriveLetter", "", "D", "", "E:\\Movies", "E:"},
        {"DefaultFloppy", "A:\\", "b", "B:\\", "C:", "A:\\"},
        {"MPlayerEXE", "MPlayer2.exe", "", "MPlayer2.exe", "mplayer", "mplayer"},
        {"MainViewBackground", "", "wood.bmp", "WOOD.BMP", "/tex/Wood.BMP", "/TEX/WOOD.BMP"},
        {"SlideDescFont", "MS Sans Serif", "", "MS Sans Serif", "DejaVu Sans", "DejaVu Sans"},
        {"PromptSaveKAV", "010", "01", "010", "1111", "010"},
        {"OpenWithName", "", "", "", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
        {"OpenWithName3", "", "", "", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
        {"ZipName", "", "", "", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
        {"MP3Name", "MP3 Player", "", "MP3 Player", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx", "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
        {"ThumbnailExtension", "?", "a.b", "?", "jpeg", "jpe"},
        {"Recent1", "", "pic.jpg", "", "/p/a.jpg", "/p/a.jpg"},
        {"Recent7", "", "/a.jpg", "", "/pic/b.jpg", "/pic/b.jpg"},
        {"MoreRecentFiles20", "", "x.bmp", "", "/pictures/c.bmp", "/pictures/c.bmp"},
        {"FavoriteFile1", "", "/abc.jp", "", "/pics/d.gif", "/pics/d.gif"},
        {"RecentShow1", "", "/s/a.jpg", "", "/s/x.kav", "/s/x.kav"},
        {"RecentShow20", "", "show.kav", "", "/s/Show.KAV", "/s/Show.KAV"},
        {"FavoriteShow5", "", "/a.kav", "", "/shows/b.kav", "/shows/b.kav"},
        {"PackageName", "Untitled", "", "Untitled", "Trip", "Trip"},
        {"PackageSize", "Unknown", "", "Unknown", "1.44 MB", "1.44 MB"},};
// clang-format on

bool isPackageKey(const QString& key)
{
    return key.startsWith(QLatin1String("Package"));
}
} // namespace

class SettingsCatalogueTest : public kavori::test::KavoriTest {
protected:
    void SetUp() override
    {
        KavoriTest::SetUp();
        ResetSettings();
        m_cwd = QDir::currentPath();
    }
    void TearDown() override
    {
        QDir::setCurrent(m_cwd);
        ClearIni();
        KavoriTest::TearDown();
    }
    // Writes the settings file and loads it.
    void loadIni(const QByteArray& text)
    {
        writeFile(home() + QStringLiteral("KAVORI.INI"), text);
        LoadSettings();
    }
    // Writes one value for every key of the table and loads the file.
    void loadWith(const char* KeyCase::*value)
    {
        QByteArray viewer = "[Viewer]\r\n", package = "[Package]\r\n";
        for (const KeyCase& c : kCases) {
            QByteArray& section = isPackageKey(QString::fromLatin1(c.key)) ? package : viewer;
            section += QByteArray(c.key) + '=' + QByteArray(c.*value) + "\r\n";
        }
        loadIni(viewer + package);
    }
    QString m_cwd;
};

TEST_F(SettingsCatalogueTest, EveryKeyMissingBadAndOutOfRange)
{
    const QStringList catalogue = CatalogueKeys();
    for (const KeyCase& c : kCases) {
        const QString key = QString::fromLatin1(c.key);
        EXPECT_TRUE(catalogue.contains((isPackageKey(key) ? "Package/" : "Viewer/") + key))
            << c.key;
    }

    auto expectAll = [](const char* KeyCase::*value, const char* what) {
        for (const KeyCase& c : kCases)
            EXPECT_EQ(SettingText(QString::fromLatin1(c.key)), QString::fromUtf8(c.*value))
                << what << " " << c.key;
    };
    loadIni("");
    expectAll(&KeyCase::missing, "missing");
    loadWith(&KeyCase::bad);
    expectAll(&KeyCase::badRead, "bad");
    loadWith(&KeyCase::out);
    expectAll(&KeyCase::outRead, "out");
    // No file at all gives the defaults too.
    QFile::remove(home() + QStringLiteral("KAVORI.INI"));
    LoadSettings();
    expectAll(&KeyCase::missing, "no file,");
}

TEST_F(SettingsCatalogueTest, DamagedSettingsFilesGiveDefaults)
{
    // A folder in the file's place, binary garbage, and an endless line: defaults, no crash.
    QDir().mkpath(home() + QStringLiteral("KAVORI.INI"));
    LoadSettings();
    EXPECT_EQ(CurrentSettings().QualityJPG, 8);
    QDir(home() + QStringLiteral("KAVORI.INI")).removeRecursively();
    QByteArray garbage;
    for (int i = 0; i < 100000; ++i)
        garbage.append(char((i * 7 + (i >> 3)) & 0xff));
    loadIni(garbage);
    EXPECT_EQ(CurrentSettings().SlideInterval, 5);
    loadIni("[Viewer]\r\nSlideInterval=" + QByteArray(100000, '9') + "\r\nQualityJPG=2\r\n");
    EXPECT_EQ(CurrentSettings().SlideInterval, 5);
    EXPECT_EQ(CurrentSettings().QualityJPG, 2);
}

TEST_F(SettingsCatalogueTest, LastOpenedFileAndFavoriteFolder)
{
    QDir().mkpath(home() + QStringLiteral("Slides"));
    const QString elsewhere = root() + QStringLiteral("work/");
    QDir().mkpath(elsewhere);

    // The scratch image is never reopened; a folder becomes the current folder.
    for (const QString& scratch : QStringList{root() + QStringLiteral("tmp/Untitled.BMP"),
                                              home() + QStringLiteral("untitled.bmp")}) {
        loadIni("[Viewer]\r\nLastOpenedFile=" + scratch.toUtf8() + "\r\n");
        EXPECT_EQ(CurrentSettings().LastOpenedFile, "") << scratch.toStdString();
    }
    loadIni("[Viewer]\r\nLastOpenedFile=" + elsewhere.toUtf8() + "\r\n");
    EXPECT_EQ(CurrentSettings().LastOpenedFile, "");
    EXPECT_EQ(QDir::currentPath() + u'/', elsewhere);
    loadIni("[Viewer]\r\nLastOpenedFile=/pics/a.jpg\r\n");
    EXPECT_EQ(CurrentSettings().LastOpenedFile, "/pics/a.jpg");

    // Favourite folder: the Slides folder by default or when the stored one is gone.
    loadIni("");
    EXPECT_EQ(CurrentSettings().FavoriteFolder, home() + QStringLiteral("Slides/"));
    loadIni("[Viewer]\r\nFavoriteFolder=" + root().toUtf8() + "work\r\n");
    EXPECT_EQ(CurrentSettings().FavoriteFolder, elsewhere);
    loadIni("[Viewer]\r\nFavoriteFolder=/no/such/folder\r\n");
    EXPECT_EQ(CurrentSettings().FavoriteFolder, home() + QStringLiteral("Slides/"));
    QDir(home() + QStringLiteral("Slides")).removeRecursively();
    LoadSettings();
    EXPECT_EQ(CurrentSettings().FavoriteFolder, home());
}

TEST_F(SettingsCatalogueTest, GroupWritersWriteTheirKeysOnly)
{
    loadIni("; mine\r\n[Viewer]\r\nQualityJPG=3\r\nUnknownKey=kept\r\n");
    Settings& s = CurrentSettings();
    s.StretchImages = false;
    s.QualityJPG = 9;
    WritePreferences();
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("StretchImages")), "False");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("KeepRecent")), "True");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("QualityJPG")),
              "3"); // not a preference
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("UnknownKey")), "kept");
    EXPECT_EQ(IniLines().first(), "; mine");
    ClearIni();

    WriteMainWindowState();
    s.PackageName = QStringLiteral("Holiday");
    WritePackageSettings();
    s.Recent[0] = QStringLiteral("/pics/one.jpg");
    WriteRecentFiles();
    s.SlideDescFont = QStringLiteral("DejaVu Sans");
    WriteDescriptionLook();
    s.TransitionSpeed = 6;
    WriteSlideShowOptions();
    ResetSettings();
    LoadSettings();
    EXPECT_EQ(s.QualityJPG, 9);
    EXPECT_FALSE(s.StretchImages);
    EXPECT_EQ(s.PackageName, "Holiday");
    EXPECT_EQ(s.Recent[0], "/pics/one.jpg");
    EXPECT_EQ(s.SlideDescFont, "DejaVu Sans");
    EXPECT_EQ(s.TransitionSpeed, 6);
    // Every key of every group is a key of the catalogue.
    for (const QString& key :
         PreferencesKeys() + MainWindowStateKeys() + SlideShowOptionKeys() + DescriptionLookKeys())
        EXPECT_TRUE(CatalogueKeys().contains(QStringLiteral("Viewer/") + key)) << key.toStdString();
}

TEST_F(SettingsCatalogueTest, FavoriteShowsAndRecentCaptions)
{
    LoadSettings();
    EXPECT_TRUE(AddFavoriteShow(QStringLiteral("/shows/a.kav")));
    EXPECT_FALSE(AddFavoriteShow(QStringLiteral("/SHOWS/A.KAV")));
    EXPECT_EQ(
        prompts().texts().last(),
        "The slide show:\r\n\r\n/SHOWS/A.KAV\r\n\r\n...is already in your Favorite Shows List.");
    for (int i = 1; i < 20; ++i)
        EXPECT_TRUE(AddFavoriteShow(QStringLiteral("/shows/s") + QString::number(i) +
                                    QStringLiteral(".kav")));
    EXPECT_FALSE(AddFavoriteShow(QStringLiteral("/shows/one-more.kav")));
    EXPECT_EQ(prompts().texts().last(),
              "Your \"Favorite Shows\" list is full, you need to remove an item first.");
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("FavoriteShow20")),
              "/shows/s19.kav");
    ClearIni();

    EXPECT_EQ(RecentFileCaption(QStringLiteral("/pics/a.jpg")), "  /pics/a.jpg");
    const QString sixty = QStringLiteral("/") + QString(55, u'p') + QStringLiteral(".jpg");
    ASSERT_EQ(sixty.size(), 60);
    EXPECT_EQ(RecentFileCaption(sixty), "  " + sixty);
    const QString sixtyOne = sixty + u'x';
    EXPECT_EQ(RecentFileCaption(sixtyOne), "  ..." + sixtyOne.right(57));
}

TEST_F(SettingsCatalogueTest, ExtrasLiveInTheirOwnSection)
{
    EXPECT_TRUE(CatalogueKeys().contains(QStringLiteral("Extras/ClassicTypesOnly")));
    loadIni("");
    EXPECT_FALSE(CurrentSettings().ClassicTypesOnly);
    // Under the classic section the key is not ours and is not read.
    loadIni("[Viewer]\r\nClassicTypesOnly=True\r\n");
    EXPECT_FALSE(CurrentSettings().ClassicTypesOnly);
    loadIni("[Viewer]\r\nQualityJPG=3\r\n[Extras]\r\nClassicTypesOnly=true\r\n");
    EXPECT_TRUE(CurrentSettings().ClassicTypesOnly);
    EXPECT_EQ(CurrentSettings().QualityJPG, 3);

    CurrentSettings().ClassicTypesOnly = false;
    CurrentSettings().QualityJPG = 9;
    WriteExtras();
    LoadIniFile(SettingsFilePath());
    EXPECT_EQ(GetIniValue(QStringLiteral("Extras"), QStringLiteral("ClassicTypesOnly")), "False");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("QualityJPG")), "3");
    EXPECT_EQ(GetIniValue(QStringLiteral("Viewer"), QStringLiteral("ClassicTypesOnly")), "");
    ClearIni();
}
