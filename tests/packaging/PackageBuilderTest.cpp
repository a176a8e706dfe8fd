#include "packaging/PackageBuilder.h"
#include "packaging/PackageLayout.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "runtime/WaitDialog.h"
#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "support/FakeProgress.h"
#include "support/ShowTest.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

using namespace kavori;

namespace {

QByteArray crlf(const QStringList& lines)
{
    return lines.join(QStringLiteral("\r\n")).toUtf8() + "\r\n";
}

// Every file under a folder, relative to it, sorted.
QStringList filesUnder(const QString& folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << QDir(folder).relativeFilePath(it.next());
    files.sort();
    return files;
}

} // namespace

class PackageBuilderTest : public kavori::test::ShowTest {
protected:
    void SetUp() override
    {
        ShowTest::SetUp();
        ASSERT_TRUE(EnsureAppHome());
        // Stand-ins for the executables: no dynamic program, so no support libraries.
        writeFile(QStringLiteral("bin/run-kav"), "player");
        writeFile(QStringLiteral("bin/Kavori"), "program");
    }

    // The source: a show of two pictures with a slide sound, a texture, the show's sound and a
    // one-entry play list, the first picture elsewhere, the second beside the show.
    QString makeSource()
    {
        writeFile(QStringLiteral("elsewhere/beach.jpg"), QByteArray(600000, 'b'));
        writeFile(QStringLiteral("src/dunes.jpg"), QByteArray(400000, 'd'));
        writeFile(QStringLiteral("elsewhere/waves.wav"), QByteArray(250000, 'w'));
        writeFile(QStringLiteral("elsewhere/sand.jpg"), QByteArray(100000, 's'));
        writeFile(QStringLiteral("elsewhere/theme.wav"), QByteArray(50000, 't'));
        writeFile(QStringLiteral("elsewhere/song.wav"), QByteArray(30000, 'p'));
        ResetShow();
        Settings& s = CurrentSettings();
        s.SoundMode = 3;
        s.SoundFile = root() + QStringLiteral("elsewhere/theme.wav");
        s.UsePlayList = true;
        s.SlideInterval = 7;
        SlideShow& show = CurrentShow();
        Slide one = NewSlide(root() + QStringLiteral("elsewhere/beach.jpg"));
        one.SlideSound = root() + QStringLiteral("elsewhere/waves.wav");
        one.SlideTexture = root() + QStringLiteral("elsewhere/sand.jpg");
        one.SlideDescription = QStringLiteral("Beach, at dawn");
        Slide two = NewSlide(QStringLiteral("dunes.jpg"));
        two.SlideSound = QStringLiteral("4"); // a CD track stays a number
        show.slides = {one, two};
        show.PlayList = {root() + QStringLiteral("elsewhere/song.wav")};
        const QString path = root() + QStringLiteral("src/Trip.KAV");
        EXPECT_TRUE(WriteSlideShow(path));
        ResetShow();
        ResetSettings();
        return root() + QStringLiteral("src/");
    }

    PackageRequest request(bool runtime)
    {
        PackageRequest r;
        r.source = root() + QStringLiteral("src");
        r.showFile = QStringLiteral("Trip.KAV");
        r.destination = root() + QStringLiteral("pkg");
        r.name = QStringLiteral("Holiday");
        r.size = QStringLiteral("1.4");
        r.options.runtime = runtime;
        r.programFolder = root() + QStringLiteral("bin");
        return r;
    }

    bool build(PackageRequest& r, int cancelAt = -1)
    {
        progress.cancelAfter = cancelAt - 1;
        progress.checks = 0;
        return BuildPackage(r, [this] { return progress.share(); });
    }

    QString pkg(const QString& relative = QString())
    {
        return root() + QStringLiteral("pkg/") + relative;
    }

    kavori::test::FakeProgress progress;
    QStringList& captions = progress.captions;
    int& maximum = progress.maximum;
};

TEST_F(PackageBuilderTest, ControlFilesAreWrittenAsTheLayoutSays)
{
    PackageOptions runtime;
    runtime.runtime = true;
    EXPECT_EQ(AutorunInfBytes(runtime), crlf({"[AutoRun]", "Open = run-kav", "Icon = run-kav"}));
    EXPECT_EQ(AutorunInfBytes(PackageOptions()),
              crlf({"[AutoRun]", "Open = setup.sh", "Icon = Kavori"}));
    EXPECT_EQ(SetupLstBytes({"lib/libQt6Core.so.6", "lib/libicuuc.so.72"}),
              crlf({"[BootStrap]", "File1=lib/libQt6Core.so.6", "File2=lib/libicuuc.so.72", "",
                    "[Setup]", "Setup=run-kav"}));
    EXPECT_EQ(QtConfBytes(),
              crlf({"[Paths]", "Prefix = .", "Libraries = lib", "Plugins = plugins"}));

    // The INI files take the running program's values where the layout says "current".
    Settings& s = CurrentSettings();
    s.UseHalftoneMode = true;
    s.BackgroundColor = 2;
    s.PreviewBackRGB = 16777215;
    s.StretchImages = false;
    s.PasswordDelay = 3;
    s.SlideShowFileExt = true;
    s.ToolbarX = 1200;
    s.ToolbarY = -15;
    s.MouseSensitivity = 9;
    s.MP3Name = QStringLiteral("Mine");
    ASSERT_TRUE(WriteRunKavIni(root() + QStringLiteral("RUN-KAV.INI")));
    EXPECT_EQ(readFile(root() + QStringLiteral("RUN-KAV.INI")),
              crlf({"[Viewer]", "MP3Program=", "MP3Name=MP3 Player",
                    "CdRomDriveLetter=", "MouseSensitivity=4", "UseHalftoneMode=True",
                    "Color256Msg=True", "BackgroundColor=2", "PreviewBackRGB=16777215",
                    "StretchImages=False", "EnlargeImages=False", "PasswordDelay=3",
                    "DisableScreenSaver=False", "MakePauseSnd=True", "SlideShowFileExt=True",
                    "SlideShowFilePath=False", "ToolbarX=1200", "ToolbarY=-15"}));

    s.SoundMode = 3;
    s.SoundFile = QStringLiteral("/music/theme.wav");
    s.CDTrack = 2;
    s.SlideInterval = 9;
    s.LastSlideShow = QStringLiteral("/shows/last.kav");
    ASSERT_TRUE(WritePackageKavoriIni(root() + QStringLiteral("KAVORI.INI")));
    EXPECT_EQ(readFile(root() + QStringLiteral("KAVORI.INI")), crlf({"[Viewer]",
                                                                     "Color256Msg=True",
                                                                     "MouseSensitivity=4",
                                                                     "BackgroundColor=2",
                                                                     "StartupDialog=1",
                                                                     "ViewFullScreen=False",
                                                                     "StretchImages=False",
                                                                     "EnlargeImages=False",
                                                                     "ClickScreenOpen=False",
                                                                     "DisplayLastOpened=False",
                                                                     "DeleteUntitled=True",
                                                                     "ClearClipboard=True",
                                                                     "TopMostWindow=False",
                                                                     "SoundMode=2",
                                                                     "SoundFile=",
                                                                     "CDTrack=2",
                                                                     "SoundLoop=False",
                                                                     "SlideInterval=9",
                                                                     "RandomSlides=False",
                                                                     "LoopSlideShow=True",
                                                                     "ShowFilenames=False",
                                                                     "ShowDescription=False",
                                                                     "ShowToolbar=False",
                                                                     "PasswordDelay=3",
                                                                     "SaveSlides=False",
                                                                     "SelectDuplicates=False",
                                                                     "LastOpenedFile=",
                                                                     "LastSlideShow="}));
    s.SoundMode = 1;
    ASSERT_TRUE(WritePackageKavoriIni(root() + QStringLiteral("KAVORI.INI")));
    EXPECT_TRUE(readFile(root() + QStringLiteral("KAVORI.INI")).contains("\r\nSoundMode=1\r\n"));

    PackageOptions o;
    o.screenSaver = true;
    o.defaultSaver = false;
    o.shortcut = true;
    ASSERT_TRUE(WritePackageSetupIni(root() + QStringLiteral("setup.ini"),
                                     QStringLiteral("Trip.KAV"), QStringLiteral("Holiday"),
                                     QStringLiteral("12.5"), o));
    EXPECT_EQ(readFile(root() + QStringLiteral("setup.ini")),
              crlf({"[Kavori Setup]", "SlideShowFile=Trip.KAV", "SlideShowName=Holiday",
                    "InstallSize=12.5", "ScreenSaver=True", "MakeDefaultSaver=False",
                    "SlideShowShortcut=True"}));
}

TEST_F(PackageBuilderTest, ForbiddenDestinationsAreRefusedInOrder)
{
    const QString src = root() + QStringLiteral("src/");
    QDir().mkpath(src);
    const QString tail =
        QStringLiteral("\r\nSelect another destination location and then try again...");
    auto check = [&](const QString& dest, bool saver) {
        return CheckPackageDestination(dest, src, saver);
    };
    EXPECT_EQ(check(AppPath(), false),
              "You may not create a slide show package in your Kavori installation "
              "directory:\r\n" +
                  AppPath() + tail);
    EXPECT_EQ(check(QStringLiteral("/usr"), true),
              "You may not create a screen saver package in your WINDOWS directory:\r\n/usr/" +
                  tail);
    EXPECT_EQ(
        check(QStringLiteral("/usr/lib/"), false),
        "You may not create a slide show package in your WINDOWS\\SYSTEM directory:\r\n/usr/lib/" +
            tail);
    EXPECT_EQ(
        check(QStringLiteral("/usr/share/shows"), false),
        "You should not create a slide show package in a WINDOWS sub-directory:\r\n/usr/share/shows/" +
            tail);
    EXPECT_EQ(check(QStringLiteral("/"), false),
              "You should not create a slide show package in the \"root\" directory of your "
              "WINDOWS drive:\r\n/\r\nCreate and/or select a folder to create package in and then "
              "try again...");
    EXPECT_EQ(check(home() + QStringLiteral("Slides"), false),
              "You may not create a slide show package in the Kavori \\SLIDES directory:\r\n" +
                  home() + "Slides/" + tail);
    EXPECT_EQ(check(src, false),
              "You may not create a slide show package in the same directory as the source files." +
                  tail);
    QDir().mkpath(root() + QStringLiteral("pack/SLIDES"));
    EXPECT_EQ(CheckPackageDestination(root() + QStringLiteral("pack"),
                                      root() + QStringLiteral("pack/SLIDES"), false),
              "You may not create a slide show package where the source file(s) are in the "
              "destination's \\SLIDES directory." +
                  tail);
    // A link to a forbidden folder is that folder.
    ASSERT_TRUE(QFile::link(QStringLiteral("/usr/lib"), root() + QStringLiteral("syslink")));
    EXPECT_FALSE(check(root() + QStringLiteral("syslink"), false).isEmpty());
    EXPECT_EQ(check(root() + QStringLiteral("pkg"), false), QString());
}

TEST_F(PackageBuilderTest, SizeEstimateCountsEveryFileTheShowNamesInDecimalMegabytes)
{
    QDir().mkpath(root() + QStringLiteral("empty"));
    EXPECT_EQ(EstimatePackageSize(root() + QStringLiteral("empty"), QString()), "Unknown");
    const QString src = makeSource();
    EXPECT_EQ(EstimatePackageSize(src, QString()), "Unknown");
    ASSERT_EQ(prompts().calls.size(), 2);
    EXPECT_EQ(prompts().calls[0].text, "No slide show files could be found in the source "
                                       "directory, unable to estimate size of package.");
    EXPECT_EQ(prompts().calls[1].text,
              "A slide show file has not be selected, unable to estimate size of package.\r\n"
              "Create and/or select a slide show file and then try again...");
    EXPECT_EQ(prompts().calls[1].title, "Kavori - [Package Slide Show]");
    prompts().clear();

    // 600,000 + 400,000 + 250,000 + 100,000 + 50,000 + 30,000 and the show file itself.
    const qint64 show = QFileInfo(src + QStringLiteral("Trip.KAV")).size();
    const QString expected = QString::number((1430000 + show) / 100000 / 10.0, 'f', 1);
    EXPECT_EQ(EstimatePackageSize(src, QStringLiteral("Trip.KAV")), expected);
    EXPECT_TRUE(prompts().calls.isEmpty());
    // The show in memory is left as it was.
    EXPECT_TRUE(CurrentShow().slides.isEmpty());

    // A show of 1,500,000 bytes in all reads 1.5.
    ResetShow();
    writeFile(QStringLiteral("exact/one.jpg"), QByteArray(1000000, 'x'));
    CurrentShow().slides = {NewSlide(root() + QStringLiteral("exact/one.jpg"))};
    WriteSlideShow(root() + QStringLiteral("exact/a.kav"));
    const qint64 header = QFileInfo(root() + QStringLiteral("exact/a.kav")).size();
    writeFile(QStringLiteral("exact/one.jpg"), QByteArray(1500000 - int(header), 'x'));
    ResetShow();
    EXPECT_EQ(EstimatePackageSize(root() + QStringLiteral("exact"), QStringLiteral("a.kav")),
              "1.5");

    // A missing picture, and a show without pictures.
    QFile::remove(root() + QStringLiteral("exact/one.jpg"));
    EXPECT_EQ(EstimatePackageSize(root() + QStringLiteral("exact"), QStringLiteral("a.kav")),
              "Unknown");
    ASSERT_EQ(prompts().calls.size(), 1);
    EXPECT_EQ(prompts().calls[0].text, "File not found: " + root() +
                                           "exact/one.jpg\r\nThe selected slide show is missing "
                                           "an image, unable to calculate package size...");
    writeFile(QStringLiteral("exact/none.kav"), crlf({"\"Kavori Slide Show\"", "\"Version 3.0\""}));
    prompts().clear();
    EXPECT_EQ(EstimatePackageSize(root() + QStringLiteral("exact"), QStringLiteral("none.kav")),
              "Unknown");
    EXPECT_TRUE(prompts().texts().contains(
        "The selected slide show does not contain any images, unable to calculate package size..."));

    EXPECT_EQ(RequiredSizeCaption(true), "3MB Required +");
    EXPECT_EQ(TotalSizeCaption(false, QStringLiteral("1234.56")), "= 1,247.6MB");
    EXPECT_EQ(TotalSizeCaption(true, QStringLiteral("Unknown")), "= 3.0MB");
}

TEST_F(PackageBuilderTest, RunTimePackageHoldsThePlayerTheShowAndItsControlFiles)
{
    makeSource();
    CurrentSettings().StretchImages = false;
    CurrentShow().ShowInfo = QStringLiteral("the editor's show");
    PackageRequest r = request(true);
    r.options.autorun = true;
    ASSERT_TRUE(build(r));

    // Nothing to ask into an empty folder but the summary.
    const QStringList texts = prompts().texts();
    ASSERT_EQ(texts.size(), 2);
    EXPECT_EQ(texts[0],
              "NAME: Holiday\r\nTYPE: Slide Show\r\nSIZE: 1.4 (megabytes)\r\nSOURCE: " + root() +
                  "src/\r\nPACKAGE: " + root() + "pkg/\r\n\r\nCreate the above package?");
    EXPECT_EQ(texts[1], "The slide show package Holiday has been created in the directory:\r\n" +
                            root() + "pkg/");
    EXPECT_EQ(filesUnder(pkg()),
              QStringList({"AUTORUN.INF", "BLANK.WAV", "RUN-KAV.INI", "Run-KAV.TXT", "SETUP.LST",
                           "SLIDES/Holiday.KAV", "SLIDES/beach.jpg", "SLIDES/dunes.jpg",
                           "SLIDES/sand.jpg", "SLIDES/song.wav", "SLIDES/theme.wav",
                           "SLIDES/waves.wav", "run-kav", "setup.sh"}));
    EXPECT_EQ(readFile(pkg(QStringLiteral("run-kav"))), "player");
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/beach.jpg"))), QByteArray(600000, 'b'));
    EXPECT_TRUE(QFileInfo(pkg(QStringLiteral("setup.sh"))).isExecutable());
    EXPECT_EQ(readFile(pkg(QStringLiteral("SETUP.LST"))),
              crlf({"[BootStrap]", "", "[Setup]", "Setup=run-kav"}));
    EXPECT_TRUE(
        readFile(pkg(QStringLiteral("RUN-KAV.INI"))).contains("\r\nStretchImages=False\r\n"));

    // The show: the source's values, every file by its bare name.
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/Holiday.KAV"))), crlf({"\"Kavori Slide Show\"",
                                                                         "\"Version 3.0\"",
                                                                         "3",
                                                                         "\"theme.wav\"",
                                                                         "0",
                                                                         "0",
                                                                         "7",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "-1",
                                                                         "-1",
                                                                         "0",
                                                                         "\"\"",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "\"3\"",
                                                                         "\"0\"",
                                                                         "\"01\"",
                                                                         "-1",
                                                                         "\"\"",
                                                                         "\"beach.jpg\"",
                                                                         "\"Beach, at dawn\"",
                                                                         "0",
                                                                         "\"waves.wav\"",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "1",
                                                                         "7",
                                                                         "0",
                                                                         "0",
                                                                         "\"sand.jpg\"",
                                                                         "\"\"",
                                                                         "\"dunes.jpg\"",
                                                                         "\"\"",
                                                                         "0",
                                                                         "\"4\"",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "0",
                                                                         "1",
                                                                         "7",
                                                                         "0",
                                                                         "0",
                                                                         "\"\"",
                                                                         "\"\"",
                                                                         "\"<PlayList>\"",
                                                                         "\"0\"",
                                                                         "\"\"",
                                                                         "\"\"",
                                                                         "\"song.wav\""}));

    // The user's show and settings are as they were; the package settings are saved.
    EXPECT_EQ(CurrentShow().ShowInfo, "the editor's show");
    EXPECT_FALSE(CurrentSettings().StretchImages);
    EXPECT_EQ(CurrentSettings().SoundMode, 0);
    LoadSettings();
    EXPECT_TRUE(CurrentSettings().RecentShow[0].isEmpty());
    EXPECT_EQ(CurrentSettings().PackageName, "Holiday");
    EXPECT_EQ(CurrentSettings().PackageDestination, root() + "pkg");
    EXPECT_TRUE(CurrentSettings().PackageRuntime);
    EXPECT_TRUE(CurrentSettings().PackageAutorun);
    // Four program files, two pictures and the show, the show's sound, a slide sound, a texture,
    // a play-list sound, AUTORUN.INF and the other control files.
    EXPECT_EQ(maximum, 4 + 3 + 1 + 1 + 1 + 1 + 2);
    EXPECT_TRUE(captions.contains(root() + "elsewhere/beach.jpg\r\nKavori is copying the file:"));
    EXPECT_TRUE(captions.contains("Kavori is creating the following file:\r\nSETUP.LST"));
}

TEST_F(PackageBuilderTest, FullPackageAsksBeforeReplacingAndHonoursEachAnswer)
{
    makeSource();
    PackageRequest r = request(false);
    r.options.screenSaver = true;
    ASSERT_TRUE(build(r));
    EXPECT_EQ(
        filesUnder(pkg()),
        QStringList({"BLANK.WAV", "Help/index.html", "Help/readme.html", "KAVORI.INI", "Kavori",
                     "Run-KAV.TXT", "SLIDES/Holiday.KAV", "SLIDES/beach.jpg", "SLIDES/dunes.jpg",
                     "SLIDES/sand.jpg", "SLIDES/song.wav", "SLIDES/theme.wav", "SLIDES/waves.wav",
                     "run-kav", "setup.ini", "setup.sh"}));
    EXPECT_TRUE(
        prompts().texts().last().startsWith("The screen saver package Holiday has been created"));

    // Again into the same folder, with changed sources: files there, SLIDES there, the show
    // there, the program there; the first picture kept, the second replaced, the sounds kept.
    writeFile(QStringLiteral("elsewhere/beach.jpg"), "new beach");
    writeFile(QStringLiteral("src/dunes.jpg"), "new dunes");
    writeFile(QStringLiteral("elsewhere/theme.wav"), "new theme");
    writeFile(QStringLiteral("elsewhere/waves.wav"), "new waves");
    writeFile(QStringLiteral("bin/Kavori"), "new program");
    prompts().clear();
    prompts().answers = {vbYes,
                         vbYes,
                         vbYes,
                         vbYes,
                         vbNo /* theme */,
                         vbNo /* beach: skip */,
                         vbNo /* waves */,
                         vbYes /* sand */,
                         vbYes /* dunes */,
                         vbYes /* song */,
                         vbNo /* program files */};
    ASSERT_TRUE(build(r));
    const QStringList texts = prompts().texts();
    ASSERT_EQ(texts.size(), 12);
    EXPECT_EQ(texts[0], "The selected package directory already has files in it:\r\n" + pkg() +
                            "\r\nUse this directory anyway?");
    EXPECT_EQ(texts[2], "The selected package directory already has a SLIDES folder in it:\r\n" +
                            pkg() + "\r\nCreate a screen saver package directory here anyway?");
    EXPECT_EQ(texts[3], "The destination slide show file (.KAV) already exists:\r\n" + pkg() +
                            "SLIDES/Holiday.KAV\r\nOverwrite this file with new data?");
    EXPECT_EQ(texts[4], "This sound file already exists in the package directory:\r\ntheme.wav\r\n"
                        "Do you want to replace it?");
    EXPECT_EQ(texts[5], "This image already exists in the package directory:\r\nbeach.jpg\r\n"
                        "Do you want to replace this file?\r\n(Press the \"Yes\" button to replace "
                        "ALL image files, or press the \"No\" button to skip this file.)");
    EXPECT_EQ(prompts().calls[5].style, vbYesNoCancel + vbQuestion);
    EXPECT_EQ(texts[6], "The sound file waves.wav already exists in the slide show folder.\r\nDo "
                        "you want to replace it with the one specified in the current slide show?");
    EXPECT_EQ(texts[7], "The background texture file sand.jpg already exists in the slide show "
                        "folder.\r\nDo you want to replace it with the one specified in the "
                        "current slide show?");
    EXPECT_EQ(texts[9],
              "The sound file song.wav already exists in the slide show folder.\r\nDo you "
              "want to replace it with the one specified in the current slide show play list?");
    EXPECT_EQ(texts[10], "It appears that the Kavori program files are already in the package "
                         "directory.\r\nDo you want to copy over these files?");
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/beach.jpg"))), QByteArray(600000, 'b'));
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/dunes.jpg"))), "new dunes");
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/theme.wav"))), QByteArray(50000, 't'));
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/waves.wav"))), QByteArray(250000, 'w'));
    EXPECT_EQ(readFile(pkg(QStringLiteral("Kavori"))), "program");

    // Yes to the first picture replaces every later one without asking; Cancel at the
    // texture abandons the build and writes no show.
    writeFile(QStringLiteral("src/dunes.jpg"), "newer dunes");
    QFile::remove(pkg(QStringLiteral("SLIDES/Holiday.KAV")));
    prompts().clear();
    prompts().answers = {
        vbYes,   vbYes, vbYes, vbYes /* theme */, vbYes /* beach: all */, vbYes /* waves */,
        vbCancel /* sand */};
    EXPECT_FALSE(build(r));
    EXPECT_EQ(prompts().calls.size(), 7);
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/beach.jpg"))), "new beach");
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/waves.wav"))), "new waves");
    EXPECT_FALSE(QFileInfo::exists(pkg(QStringLiteral("SLIDES/Holiday.KAV"))));
    prompts().clear();
    prompts().answers = {vbYes, vbYes, vbYes, vbYes, vbYes, vbYes, vbYes, vbYes, vbYes};
    ASSERT_TRUE(build(r));
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/dunes.jpg"))), "newer dunes");
    EXPECT_FALSE(prompts().texts().join(u'|').contains("dunes.jpg"));
}

TEST_F(PackageBuilderTest, RefusalsAndCancellingLeaveNothingHalfWritten)
{
    makeSource();
    // No show chosen, no name (the default refused), no size, "Unknown" refused.
    PackageRequest r = request(true);
    r.showFile.clear();
    EXPECT_FALSE(build(r));
    r = request(true);
    r.name = QStringLiteral("Untitled");
    r.options.screenSaver = true;
    prompts().clear();
    prompts().answers = {vbNo};
    EXPECT_FALSE(build(r));
    EXPECT_EQ(prompts().texts(),
              QStringList({"You need to give your screen saver package a name first.\r\nDefault "
                           "Name:\r\nTrip\r\nUse the default package name?"}));
    r.name.clear();
    r.size.clear();
    prompts().clear();
    prompts().answers = {vbYes};
    EXPECT_FALSE(build(r));
    EXPECT_EQ(r.name, "Trip");
    EXPECT_EQ(prompts().texts().last(), "You need to specify the total size of your slide show "
                                        "in megabytes, unable to create screen saver package...");
    r.size = QStringLiteral("Unknown");
    prompts().clear();
    prompts().answers = {vbNo};
    EXPECT_FALSE(build(r));
    EXPECT_EQ(prompts().texts().last(), "You should specify the total size of your screen saver "
                                        "package in megabytes.\r\nDo you want to continue anyway?");
    r.destination = root() + QStringLiteral("src");
    prompts().clear();
    EXPECT_FALSE(build(r));
    EXPECT_FALSE(QFileInfo::exists(pkg()));
    EXPECT_EQ(CurrentSettings().PackageName, "Untitled");

    // Cancelled at the third file: the copies made stay whole, no part file, no show.
    r = request(true);
    prompts().clear();
    EXPECT_FALSE(build(r, 5));
    EXPECT_EQ(prompts().texts().last(), "Save Package was canceled before it could complete, "
                                        "files and/or settings in this package may be missing...");
    const QStringList left = filesUnder(pkg());
    EXPECT_EQ(left, QStringList({"SLIDES/beach.jpg", "SLIDES/theme.wav"}));
    EXPECT_EQ(readFile(pkg(QStringLiteral("SLIDES/beach.jpg"))), QByteArray(600000, 'b'));
    EXPECT_EQ(CurrentSettings().PackageName, "Untitled");

    // Unrelated folders in the destination are asked about.
    QDir().mkpath(pkg(QStringLiteral("Photos")));
    prompts().clear();
    prompts().answers = {vbYes, vbYes, vbNo};
    EXPECT_FALSE(build(r));
    EXPECT_EQ(prompts().texts().last(),
              "The selected package directory already has a SLIDES folder.  Other directories "
              "not related to Kavori also exist in this folder:\r\n" +
                  pkg() + "\r\nCreate a slide show package directory here anyway?");
}

TEST_F(PackageBuilderTest, FiveHundredPicturesCancelledHalfWayLeaveOnlyWholeFiles)
{
    ResetShow();
    for (int i = 0; i < 500; ++i) {
        const QString name = QStringLiteral("big/p") + QString::number(i) + QStringLiteral(".jpg");
        CurrentShow().slides << NewSlide(writeFile(name, QByteArray(2000 + i, char('a' + i % 26))));
    }
    ASSERT_TRUE(WriteSlideShow(root() + QStringLiteral("big/Many.KAV")));
    ResetShow();
    PackageRequest r = request(true);
    r.source = root() + QStringLiteral("big");
    r.showFile = QStringLiteral("Many.KAV");

    EXPECT_FALSE(build(r, 260));
    EXPECT_GE(maximum, 500);
    const QStringList left = filesUnder(pkg());
    // Cancel is looked at before each slide and before each copy: 129 pictures went in.
    EXPECT_EQ(left.size(), 129);
    for (const QString& file : left) {
        EXPECT_FALSE(file.endsWith(QLatin1String(".part~")));
        EXPECT_EQ(readFile(pkg(file)),
                  readFile(root() + QStringLiteral("big/") + FileNameOf(file)));
    }
    EXPECT_FALSE(QFileInfo::exists(pkg(QStringLiteral("SLIDES/Holiday.KAV"))));
    EXPECT_EQ(prompts().texts().last(), "Save Package was canceled before it could complete, "
                                        "files and/or settings in this package may be missing...");
}
