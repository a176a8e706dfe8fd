#pragma once

#include <QString>

#include <array>

namespace kavori {

// Every user preference of KAVORI.INI, one field per key of sections "Viewer", "Package" and
// "Extras", named as the key. The initial values are the defaults of a missing key; the loader and
// the group writers live beside this header. Lists hold their numbered keys in order (Recent[0] is
// key Recent1).
struct Settings {
    // Section "Viewer"
    bool Color256Msg = true;
    bool UseRecycleBin = true;
    bool UseRecentDocuments = true;
    bool CopyDescription = true;
    bool CopyDescFloppy = true;
    bool DisableScreenSaver = false;
    bool MakePauseSnd = true;
    bool ScreenSaverSound = true;
    qint16 QualityJPG = 8;
    qint16 SelectSomeOption = 0;
    QString SelectSomePattern;
    qint16 SelectSomeFormat = 0;
    qint16 RotateAngle = 180;
    qint16 RotateDirection = 0;
    bool RotatePreserve = true;
    bool ImageSizeAspect = false;
    qint16 MouseSensitivity = 4;
    QString CdRomDriveLetter;
    QString DefaultFloppy = QStringLiteral("A:\\");
    QString MPlayerEXE = QStringLiteral("MPlayer2.exe");
    bool TopMostWindow = false;
    bool SaveWindowSize = false;
    qint32 MainPosX = 0;
    qint32 MainPosY = 0;
    qint32 MainSizeX = 9510;
    qint32 MainSizeY = 7110;
    qint32 OpenDlgX = 0;
    qint32 OpenDlgY = 0;
    qint32 SSOpenDlgX = 0;
    qint32 SSOpenDlgY = 0;
    qint16 NewImageX = 640;
    qint16 NewImageY = 480;
    qint32 BackColorRGB = 0;
    QString MainViewBackground;
    bool NewGetsClipboard = false;
    bool DeleteUntitled = true;
    bool ClearClipboard = true;
    bool AutosizeWindow = true;
    qint16 SoundMode = 0;
    QString SoundFile;
    qint16 CDTrack = 0;
    bool SoundLoop = false;
    bool DontRestartSound = true;
    bool UsePlayList = false;
    bool PlayListRandom = false;
    qint16 SlideInterval = 5;
    bool RandomSlides = false;
    bool ShowFilenames = false;
    bool SlideShowFileExt = false;
    bool SlideShowFilePath = false;
    bool ShowDescription = false;
    qint16 SlideDescLoc = 5;
    qint16 SlideDescSpeed = 5;
    QString SlideDescFont = QStringLiteral("MS Sans Serif");
    qint16 SlideDescSize = 12;
    qint16 SlideDescStyle = 0;
    qint32 SlideDescForeColor = 0;
    qint16 SlideDescUseBack = 0;
    qint32 SlideDescBackColor = 0;
    qint16 SlideDescBorder = 1;
    qint16 SlideDescShadow = 0;
    qint16 SlideDescShadDist = 0;
    qint16 SlideDescShadDir = 3;
    qint32 SlideDescShadColor = 0;
    bool LoopSlideShow = true;
    bool AnimateGIF89 = true;
    QString PromptSaveKAV = QStringLiteral("010");
    bool SlideIgnoreError = false;
    bool LMousePrev = false;
    bool RMouseNext = true;
    bool ShowToolbar = false;
    qint32 ToolbarX = 0;
    qint32 ToolbarY = 0;
    bool SaveSlides = false;
    bool ResumeLastDisplayed = false;
    qint16 PasswordDelay = 0;
    qint16 ImageLastDisplayed = 0;
    bool WindowMaximized = false;
    qint16 BackgroundColor = 0;
    qint32 PreviewBackRGB = 0;
    qint16 StartupDialog = 1;
    bool ViewFullScreen = false;
    bool StartFullScreen = false;
    bool CmdLineExit = true;
    bool CmdLineAnimate = true;
    bool StretchImages = true;
    bool EnlargeImages = false;
    bool PrintEnlargeFit = false;
    bool PrintShrinkFit = false;
    bool PrintCenterFit = false;
    bool ClickScreenOpen = false;
    bool UseHalftoneMode = false;
    bool ShowFileBrowser = true;
    qint32 FileBrowserWidth = -1;
    qint32 FileBrowserBar = -1;
    bool ShowMainToolbar = true;
    bool ShowQuickToolbar = true;
    bool ShowStatusBar = true;
    qint16 LastQuickAction = 0;
    std::array<QString, 5> OpenWithProgram; // keys OpenWithProgram, OpenWithProgram2 ... 5
    std::array<QString, 5> OpenWithName;    // keys OpenWithName, OpenWithName2 ... 5
    QString ZipProgram;
    QString ZipName;
    QString MP3Program;
    QString MP3Name = QStringLiteral("MP3 Player");
    QString DefaultImage;
    bool DisplayLastOpened = false;
    QString LastOpenedFile;
    QString LastTexturePath;
    QString LastSoundPath;
    QString LastCopyToPath;
    QString LastWizardName;
    QString ThumbnailExtension = QStringLiteral("?");
    bool ThumbnailDelete = false;
    qint16 ThumbnailOrder = 0;
    bool OpenShowPreview = false;
    bool TransitionPreview = false;
    bool EnableTransitions = false;
    bool ClearTransition = false;
    bool RandomTransitions = false;
    qint16 TransitionSpeed = 3;
    qint16 OpenPreviewTimer = 500;
    bool WallpaperStretch = false;
    bool WallpaperAspect = false;
    bool SelectDuplicates = false;
    QString LastSlideShow;
    bool KeepRecent = true;
    std::array<QString, 7> Recent;
    std::array<QString, 20> MoreRecentFiles;
    std::array<QString, 20> RecentShow;
    std::array<QString, 20> FavoriteShow;
    std::array<QString, 20> FavoriteFile;
    QString FavoriteFolder; // the loader resolves it (the program's Slides folder by default)
    std::array<QString, 12> QuickFolder;
    std::array<QString, 12> QuickFolderPath;

    // Section "Package"
    QString PackageName = QStringLiteral("Untitled");
    QString PackageSource;
    QString PackageDestination;
    QString PackageSize = QStringLiteral("Unknown");
    bool PackageRuntime = false;
    bool PackageScreenSaver = false;
    bool PackageDefaultSaver = true;
    bool PackageShortcut = false;
    bool PackageAutorun = false;

    // Section "Extras": what the program offers beyond its classic behaviour
    bool ClassicTypesOnly = false; // open only the twelve classic picture types

    // Section "Export": the video export's last choices.
    qint16 ExportFormat = 0;     // 0 MP4, 1 WebM
    qint16 ExportSize = 1;       // 0 720p, 1 1080p, 2 4K
    qint16 ExportFrameRate = 30; // 25, 30 or 60
    qint32 ExportSeed = 1;       // the seed of random order and transitions in the video
    QString ExportFile;          // the last video file made
};

// The settings file, "KAVORI.INI" in the program's folder, and its sections.
QString SettingsFilePath();
QString ViewerSection();
QString PackageSection();
QString ExtrasSection();
QString ExportSection();

// The one settings object of the process.
Settings& CurrentSettings();
// Back to every default (tests, and before a fresh load).
void ResetSettings();

} // namespace kavori
