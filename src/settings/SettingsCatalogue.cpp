#include "SettingsCatalogue.h"

#include "IniStore.h"
#include "Settings.h"
#include "platform/AppPaths.h"
#include "platform/Twips.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QScreen>

#include <functional>
#include <vector>

namespace kavori {

namespace {

using Read = std::function<void(Settings&, const QString&)>;
using Write = std::function<QString(const Settings&)>;

// One key of the catalogue: where it lives, how its text becomes a value and back.
struct Row {
    QString section;
    QString key;
    Read read;
    Write write;
};

template <typename T> using Correct = std::function<T(T)>;

template <typename T> Correct<T> fallback(T low, T high, T def)
{
    return [=](T v) { return v < low || v > high ? def : v; };
}
template <typename T> Correct<T> clamp(T low, T high)
{
    return [=](T v) { return v < low ? low : v > high ? high : v; };
}
template <typename T> Correct<T> asIs()
{
    return [](T v) { return v; };
}

QString flagText(bool on)
{
    return on ? QStringLiteral("True") : QStringLiteral("False");
}

class Catalogue {
public:
    std::vector<Row> rows;
    QString section = QStringLiteral("Viewer");

    // Flags that are on unless the value says "FALSE", or off unless it says "TRUE".
    void flag(const char* key, bool Settings::*m, bool defaultOn)
    {
        add(
            key,
            [=](Settings& s, const QString& raw) {
                const QString v = raw.toUpper();
                s.*m = defaultOn ? v != QLatin1String("FALSE") : v == QLatin1String("TRUE");
            },
            [=](const Settings& s) { return flagText(s.*m); });
    }
    void number(const char* key, qint16 Settings::*m, qint16 def,
                Correct<qint16> fix = asIs<qint16>())
    {
        add(
            key,
            [=](Settings& s, const QString& raw) {
                const std::optional<qint16> v = ToInt16(raw);
                s.*m = v ? fix(*v) : def;
            },
            [=](const Settings& s) { return QString::number(s.*m); });
    }
    void number32(const char* key, qint32 Settings::*m, qint32 def,
                  Correct<qint32> fix = asIs<qint32>())
    {
        add(
            key,
            [=](Settings& s, const QString& raw) {
                const std::optional<qint32> v = ToInt32(raw);
                s.*m = v ? fix(*v) : def;
            },
            [=](const Settings& s) { return QString::number(s.*m); });
    }
    // A digit from low to high gives its value; anything else gives other.
    void choice(const char* key, qint16 Settings::*m, int low, int high, qint16 other = 0)
    {
        add(
            key,
            [=](Settings& s, const QString& raw) {
                s.*m = other;
                for (int d = low; d <= high; ++d) {
                    if (raw == QString::number(d))
                        s.*m = qint16(d);
                }
            },
            [=](const Settings& s) { return QString::number(s.*m); });
    }
    void text(const char* key, QString Settings::*m, Correct<QString> fix = asIs<QString>())
    {
        add(
            key, [=](Settings& s, const QString& raw) { s.*m = fix(raw); },
            [=](const Settings& s) { return s.*m; });
    }
    // Numbered keys: key1 ... keyN (first is the bare key when bareFirst).
    template <std::size_t N>
    void list(const char* key, std::array<QString, N> Settings::*m, Correct<QString> fix,
              bool bareFirst = false)
    {
        for (std::size_t i = 0; i < N; ++i) {
            const QString name = QString::fromLatin1(key) +
                                 (bareFirst && i == 0 ? QString() : QString::number(i + 1));
            rows.push_back({section, name,
                            [=](Settings& s, const QString& raw) { (s.*m)[i] = fix(raw); },
                            [=](const Settings& s) { return (s.*m)[i]; }});
        }
    }

private:
    void add(const char* key, Read read, Write write)
    {
        rows.push_back({section, QString::fromLatin1(key), std::move(read), std::move(write)});
    }
};

QString defaultWhenEmpty(const QString& value, const QString& def)
{
    return value.isEmpty() ? def : value;
}

Correct<QString> cutTo(int length, const QString& whenEmpty = QString())
{
    return [=](const QString& v) { return defaultWhenEmpty(v.left(length), whenEmpty); };
}

// A file list entry must be a full path longer than 7 characters.
QString validFile(const QString& v)
{
    return IsFullPath(v) && v.size() > 7 ? v : QString();
}

// A show list entry must be a full path to a ".KAV" file of at least 8 characters.
QString validShow(const QString& v)
{
    return IsFullPath(v) && HasExtension(v, QStringLiteral(".KAV")) && v.size() >= 8 ? v
                                                                                     : QString();
}

// The floating toolbar stays on the screen (its window is 3210 x 1335 twips).
Correct<qint32> onScreen(bool horizontal)
{
    return [=](qint32 v) {
        const QScreen* screen = QGuiApplication::primaryScreen();
        if (!screen)
            return v;
        const QSize size = screen->size();
        const qint32 limit =
            horizontal ? PixelsToTwips(size.width()) - 3210 : PixelsToTwips(size.height()) - 1335;
        return qBound<qint32>(0, v, qMax<qint32>(0, limit));
    };
}

Catalogue buildCatalogue()
{
    Catalogue c;
    using S = Settings;
    c.flag("Color256Msg", &S::Color256Msg, true);
    // The recycle bin key is read only on systems that have one; the check comes after the
    // settings in start-up, so in practice it is always read.
    c.flag("UseRecycleBin", &S::UseRecycleBin, true);
    c.flag("UseRecentDocuments", &S::UseRecentDocuments, true);
    c.flag("CopyDescription", &S::CopyDescription, true);
    c.flag("CopyDescFloppy", &S::CopyDescFloppy, true);
    c.flag("DisableScreenSaver", &S::DisableScreenSaver, false);
    c.flag("MakePauseSnd", &S::MakePauseSnd, true);
    c.flag("ScreenSaverSound", &S::ScreenSaverSound, true);
    c.number("QualityJPG", &S::QualityJPG, 8, fallback<qint16>(0, 10, 8));
    c.number("SelectSomeOption", &S::SelectSomeOption, 0, fallback<qint16>(0, 1, 0));
    c.text("SelectSomePattern", &S::SelectSomePattern);
    c.number("SelectSomeFormat", &S::SelectSomeFormat, 0, fallback<qint16>(0, 11, 0));
    c.number("RotateAngle", &S::RotateAngle, 180, fallback<qint16>(1, 180, 180));
    c.choice("RotateDirection", &S::RotateDirection, 1, 1);
    c.flag("RotatePreserve", &S::RotatePreserve, true);
    c.flag("ImageSizeAspect", &S::ImageSizeAspect, false);
    c.number("MouseSensitivity", &S::MouseSensitivity, 4, fallback<qint16>(1, 20, 4));
    c.text("CdRomDriveLetter", &S::CdRomDriveLetter, [](const QString& v) {
        return v.mid(1, 1) == QLatin1String(":") ? v.left(2) : QString();
    });
    c.text("DefaultFloppy", &S::DefaultFloppy, [](const QString& v) {
        const QString u = v.toUpper();
        if (u == QLatin1String("B") || u == QLatin1String("B:") || u == QLatin1String("B:\\"))
            return QStringLiteral("B:\\");
        return QStringLiteral("A:\\");
    });
    c.text("MPlayerEXE", &S::MPlayerEXE, cutTo(INT_MAX, QStringLiteral("MPlayer2.exe")));
    c.flag("TopMostWindow", &S::TopMostWindow, false);
    c.flag("SaveWindowSize", &S::SaveWindowSize, false);
    c.number32("MainPosX", &S::MainPosX, 0);
    c.number32("MainPosY", &S::MainPosY, 0);
    c.number32("MainSizeX", &S::MainSizeX, 9510);
    c.number32("MainSizeY", &S::MainSizeY, 7110);
    c.number32("OpenDlgX", &S::OpenDlgX, 0);
    c.number32("OpenDlgY", &S::OpenDlgY, 0);
    c.number32("SSOpenDlgX", &S::SSOpenDlgX, 0);
    c.number32("SSOpenDlgY", &S::SSOpenDlgY, 0);
    c.number("NewImageX", &S::NewImageX, 640, clamp<qint16>(4, 10000));
    c.number("NewImageY", &S::NewImageY, 480, clamp<qint16>(4, 10000));
    c.number32("BackColorRGB", &S::BackColorRGB, 0, clamp<qint32>(0, INT32_MAX));
    c.text("MainViewBackground", &S::MainViewBackground,
           [](const QString& v) { return v.toUpper(); });
    c.flag("NewGetsClipboard", &S::NewGetsClipboard, false);
    c.flag("DeleteUntitled", &S::DeleteUntitled, true);
    c.flag("ClearClipboard", &S::ClearClipboard, true);
    c.flag("AutosizeWindow", &S::AutosizeWindow, true);
    c.choice("SoundMode", &S::SoundMode, 1, 3);
    c.text("SoundFile", &S::SoundFile);
    c.number("CDTrack", &S::CDTrack, 0, clamp<qint16>(0, 100));
    c.flag("SoundLoop", &S::SoundLoop, false);
    c.flag("DontRestartSound", &S::DontRestartSound, true);
    c.flag("UsePlayList", &S::UsePlayList, false);
    c.flag("PlayListRandom", &S::PlayListRandom, false);
    c.number("SlideInterval", &S::SlideInterval, 5, clamp<qint16>(0, 60));
    c.flag("RandomSlides", &S::RandomSlides, false);
    c.flag("ShowFilenames", &S::ShowFilenames, false);
    c.flag("SlideShowFileExt", &S::SlideShowFileExt, false);
    c.flag("SlideShowFilePath", &S::SlideShowFilePath, false);
    c.flag("ShowDescription", &S::ShowDescription, false);
    c.number("SlideDescLoc", &S::SlideDescLoc, 5, fallback<qint16>(0, 21, 5));
    c.number("SlideDescSpeed", &S::SlideDescSpeed, 5, fallback<qint16>(1, 10, 5));
    c.text("SlideDescFont", &S::SlideDescFont, cutTo(INT_MAX, QStringLiteral("MS Sans Serif")));
    c.number("SlideDescSize", &S::SlideDescSize, 12, clamp<qint16>(8, INT16_MAX));
    c.number("SlideDescStyle", &S::SlideDescStyle, 0, fallback<qint16>(0, 3, 0));
    c.number32("SlideDescForeColor", &S::SlideDescForeColor, 0);
    c.number("SlideDescUseBack", &S::SlideDescUseBack, 0, fallback<qint16>(0, 1, 0));
    c.number32("SlideDescBackColor", &S::SlideDescBackColor, 0);
    c.number("SlideDescBorder", &S::SlideDescBorder, 1, fallback<qint16>(0, 2, 1));
    c.number("SlideDescShadow", &S::SlideDescShadow, 0, fallback<qint16>(0, 1, 0));
    c.number("SlideDescShadDist", &S::SlideDescShadDist, 0, fallback<qint16>(0, 49, 0));
    c.number("SlideDescShadDir", &S::SlideDescShadDir, 3, fallback<qint16>(0, 3, 3));
    c.number32("SlideDescShadColor", &S::SlideDescShadColor, 0);
    c.flag("LoopSlideShow", &S::LoopSlideShow, true);
    c.flag("AnimateGIF89", &S::AnimateGIF89, true);
    c.text("PromptSaveKAV", &S::PromptSaveKAV,
           [](const QString& v) { return v.size() == 3 ? v : QStringLiteral("010"); });
    c.flag("SlideIgnoreError", &S::SlideIgnoreError, false);
    c.flag("LMousePrev", &S::LMousePrev, false);
    c.flag("RMouseNext", &S::RMouseNext, true);
    c.flag("ShowToolbar", &S::ShowToolbar, false);
    c.number32("ToolbarX", &S::ToolbarX, 0, onScreen(true));
    c.number32("ToolbarY", &S::ToolbarY, 0, onScreen(false));
    c.flag("SaveSlides", &S::SaveSlides, false);
    c.flag("ResumeLastDisplayed", &S::ResumeLastDisplayed, false);
    c.choice("PasswordDelay", &S::PasswordDelay, 1, 4);
    c.number("ImageLastDisplayed", &S::ImageLastDisplayed, 0);
    c.flag("WindowMaximized", &S::WindowMaximized, false);
    c.choice("BackgroundColor", &S::BackgroundColor, 1, 6);
    c.number32("PreviewBackRGB", &S::PreviewBackRGB, 0, clamp<qint32>(0, INT32_MAX));
    c.rows.push_back({c.section, QStringLiteral("StartupDialog"),
                      [](Settings& s, const QString& raw) {
                          if (raw == QLatin1String("0"))
                              s.StartupDialog = 0;
                          else if (raw.isEmpty() || raw == QLatin1String("1"))
                              s.StartupDialog = 1;
                          else if (raw == QLatin1String("2") || raw == QLatin1String("3"))
                              s.StartupDialog = qint16(raw.toInt());
                          else
                              s.StartupDialog = 4;
                      },
                      [](const Settings& s) { return QString::number(s.StartupDialog); }});
    c.flag("ViewFullScreen", &S::ViewFullScreen, false);
    c.flag("StartFullScreen", &S::StartFullScreen, false);
    c.flag("CmdLineExit", &S::CmdLineExit, true);
    c.flag("CmdLineAnimate", &S::CmdLineAnimate, true);
    c.flag("StretchImages", &S::StretchImages, true);
    c.flag("EnlargeImages", &S::EnlargeImages, false);
    c.flag("PrintEnlargeFit", &S::PrintEnlargeFit, false);
    c.flag("PrintShrinkFit", &S::PrintShrinkFit, false);
    c.flag("PrintCenterFit", &S::PrintCenterFit, false);
    c.flag("ClickScreenOpen", &S::ClickScreenOpen, false);
    c.flag("UseHalftoneMode", &S::UseHalftoneMode, false);
    c.flag("ShowFileBrowser", &S::ShowFileBrowser, true);
    const Correct<qint32> paneWidth = [](qint32 v) { return v != -1 && v < 900 ? 900 : v; };
    c.number32("FileBrowserWidth", &S::FileBrowserWidth, -1, paneWidth);
    c.number32("FileBrowserBar", &S::FileBrowserBar, -1, paneWidth);
    c.flag("ShowMainToolbar", &S::ShowMainToolbar, true);
    c.flag("ShowQuickToolbar", &S::ShowQuickToolbar, true);
    c.flag("ShowStatusBar", &S::ShowStatusBar, true);
    c.choice("LastQuickAction", &S::LastQuickAction, 1, 7);
    c.list("OpenWithProgram", &S::OpenWithProgram, asIs<QString>(), true);
    c.list("OpenWithName", &S::OpenWithName, cutTo(40), true);
    c.text("ZipProgram", &S::ZipProgram);
    c.text("ZipName", &S::ZipName, cutTo(40));
    c.text("MP3Program", &S::MP3Program);
    c.text("MP3Name", &S::MP3Name, cutTo(40, QStringLiteral("MP3 Player")));
    c.text("DefaultImage", &S::DefaultImage);
    c.flag("DisplayLastOpened", &S::DisplayLastOpened, false);
    c.text("LastOpenedFile", &S::LastOpenedFile);
    c.text("LastTexturePath", &S::LastTexturePath);
    c.text("LastSoundPath", &S::LastSoundPath);
    c.text("LastCopyToPath", &S::LastCopyToPath);
    c.text("LastWizardName", &S::LastWizardName);
    c.text("ThumbnailExtension", &S::ThumbnailExtension, [](const QString& v) {
        static const QString forbidden = QStringLiteral("*\\ .");
        if (v.isEmpty() ||
            std::any_of(v.cbegin(), v.cend(), [](QChar ch) { return forbidden.contains(ch); }))
            return QStringLiteral("?");
        return v.left(3);
    });
    c.flag("ThumbnailDelete", &S::ThumbnailDelete, false);
    c.choice("ThumbnailOrder", &S::ThumbnailOrder, 1, 3);
    c.flag("OpenShowPreview", &S::OpenShowPreview, false);
    c.flag("TransitionPreview", &S::TransitionPreview, false);
    c.flag("EnableTransitions", &S::EnableTransitions, false);
    c.flag("ClearTransition", &S::ClearTransition, false);
    c.flag("RandomTransitions", &S::RandomTransitions, false);
    c.number("TransitionSpeed", &S::TransitionSpeed, 3, clamp<qint16>(0, 6));
    c.number("OpenPreviewTimer", &S::OpenPreviewTimer, 500, clamp<qint16>(1, 5000));
    c.flag("WallpaperStretch", &S::WallpaperStretch, false);
    c.flag("WallpaperAspect", &S::WallpaperAspect, false);
    c.flag("SelectDuplicates", &S::SelectDuplicates, false);
    c.text("LastSlideShow", &S::LastSlideShow);
    c.flag("KeepRecent", &S::KeepRecent, true);
    c.list("Recent", &S::Recent, validFile);
    c.list("MoreRecentFiles", &S::MoreRecentFiles, validFile);
    c.list("RecentShow", &S::RecentShow, validShow);
    c.list("FavoriteShow", &S::FavoriteShow, validShow);
    c.list("FavoriteFile", &S::FavoriteFile, validFile);
    c.text("FavoriteFolder", &S::FavoriteFolder);
    c.list("QuickFolder", &S::QuickFolder, asIs<QString>());
    c.list("QuickFolderPath", &S::QuickFolderPath, asIs<QString>());

    c.section = PackageSection();
    c.text("PackageName", &S::PackageName, cutTo(INT_MAX, QStringLiteral("Untitled")));
    c.text("PackageSource", &S::PackageSource);
    c.text("PackageDestination", &S::PackageDestination);
    c.text("PackageSize", &S::PackageSize, cutTo(INT_MAX, QStringLiteral("Unknown")));
    c.flag("PackageRuntime", &S::PackageRuntime, false);
    c.flag("PackageScreenSaver", &S::PackageScreenSaver, false);
    c.flag("PackageDefaultSaver", &S::PackageDefaultSaver, true);
    c.flag("PackageShortcut", &S::PackageShortcut, false);
    c.flag("PackageAutorun", &S::PackageAutorun, false);

    // Keys of our own live apart, so the classic sections stay as they always were.
    c.section = ExtrasSection();
    c.flag("ClassicTypesOnly", &S::ClassicTypesOnly, false);

    c.section = ExportSection();
    c.choice("ExportFormat", &S::ExportFormat, 0, 1);
    c.choice("ExportSize", &S::ExportSize, 0, 2, 1);
    c.number("ExportFrameRate", &S::ExportFrameRate, 30,
             [](qint16 v) { return v == 25 || v == 30 || v == 60 ? v : qint16(30); });
    c.number32("ExportSeed", &S::ExportSeed, 1, fallback<qint32>(0, INT_MAX, 1));
    c.text("ExportFile", &S::ExportFile);
    return c;
}

const std::vector<Row>& catalogue()
{
    static const std::vector<Row> rows = buildCatalogue().rows;
    return rows;
}

const Row* findRow(const QString& key)
{
    static const QHash<QString, const Row*> index = [] {
        QHash<QString, const Row*> h;
        for (const Row& row : catalogue())
            h.insert(row.key, &row);
        return h;
    }();
    return index.value(key);
}

// The scratch image is never reopened; a remembered folder becomes the current one.
void resolveLastOpenedFile(Settings& s)
{
    const QString& file = s.LastOpenedFile;
    const QString untitled = QStringLiteral("Untitled.BMP");
    if (file.compare(TempPath() + untitled, Qt::CaseInsensitive) == 0 ||
        file.compare(AppPath() + untitled, Qt::CaseInsensitive) == 0) {
        s.LastOpenedFile.clear();
    } else if (file.endsWith(u'/')) {
        QDir::setCurrent(file);
        s.LastOpenedFile.clear();
    }
}

void resolveFavoriteFolder(Settings& s)
{
    const QString slides = PathNoCase(AppPath(), QStringLiteral("Slides"));
    if (s.FavoriteFolder.isEmpty())
        s.FavoriteFolder = slides;
    else if (!QFileInfo(s.FavoriteFolder).isDir())
        s.FavoriteFolder = QFileInfo(slides).isDir() ? slides : AppPath();
    s.FavoriteFolder = AddSlash(s.FavoriteFolder);
}

} // namespace

void LoadSettings()
{
    LoadSettingsFile(SettingsFilePath());
}

void LoadSettingsFile(const QString& path)
{
    ResetSettings();
    Settings& s = CurrentSettings();
    LoadIniFile(path);
    for (const Row& row : catalogue())
        row.read(s, GetIniValue(row.section, row.key));
    ClearIni();
    resolveLastOpenedFile(s);
    resolveFavoriteFolder(s);
}

void WriteSettingsKeys(const QStringList& keys)
{
    const QString file = SettingsFilePath();
    LoadIniFile(file);
    const Settings& s = CurrentSettings();
    for (const QString& key : keys) {
        if (const Row* row = findRow(key))
            SetIniValue(row->section, row->key, row->write(s));
    }
    SaveIniFile(file);
}

QStringList CatalogueKeys()
{
    QStringList keys;
    for (const Row& row : catalogue())
        keys << row.section + u'/' + row.key;
    return keys;
}

QString SettingText(const QString& key)
{
    const Row* row = findRow(key);
    return row ? row->write(CurrentSettings()) : QString();
}

namespace {
QStringList numbered(const QString& key, int count)
{
    QStringList keys;
    for (int i = 1; i <= count; ++i)
        keys << key + QString::number(i);
    return keys;
}
QStringList split(const char* keys)
{
    return QString::fromLatin1(keys).split(u' ', Qt::SkipEmptyParts);
}
} // namespace

QStringList PreferencesKeys()
{
    return split("WindowMaximized SaveWindowSize BackgroundColor PreviewBackRGB StartupDialog "
                 "DeleteUntitled ClearClipboard AutosizeWindow ViewFullScreen StartFullScreen "
                 "CmdLineExit CmdLineAnimate StretchImages EnlargeImages ClickScreenOpen "
                 "UseHalftoneMode ShowMainToolbar ShowQuickToolbar ShowStatusBar "
                 "DisplayLastOpened KeepRecent UseRecentDocuments");
}

QStringList MainWindowStateKeys()
{
    return split("MainPosX MainPosY MainSizeX MainSizeY OpenDlgX OpenDlgY SSOpenDlgX SSOpenDlgY "
                 "LastQuickAction NewImageX NewImageY BackColorRGB NewGetsClipboard ToolbarX "
                 "ToolbarY ShowFileBrowser FileBrowserWidth FileBrowserBar TopMostWindow "
                 "DefaultImage LastOpenedFile LastTexturePath LastSoundPath LastCopyToPath "
                 "LastWizardName ThumbnailExtension ThumbnailDelete ThumbnailOrder RotateAngle "
                 "RotateDirection RotatePreserve ImageSizeAspect SelectSomeOption "
                 "SelectSomePattern SelectSomeFormat WallpaperStretch WallpaperAspect QualityJPG "
                 "OpenShowPreview TransitionPreview SelectDuplicates LastSlideShow");
}

QStringList SlideShowOptionKeys()
{
    return split("EnableTransitions ClearTransition RandomTransitions TransitionSpeed SoundMode "
                 "SoundFile CDTrack SoundLoop DontRestartSound UsePlayList PlayListRandom "
                 "SlideInterval RandomSlides LoopSlideShow ShowFilenames SlideShowFileExt "
                 "SlideShowFilePath ShowDescription SlideIgnoreError LMousePrev RMouseNext "
                 "ShowToolbar AnimateGIF89 MakePauseSnd ResumeLastDisplayed");
}

QStringList ExtrasKeys()
{
    return split("ClassicTypesOnly");
}

QStringList DescriptionLookKeys()
{
    return split("SlideDescLoc SlideDescSpeed SlideDescFont SlideDescSize SlideDescStyle "
                 "SlideDescForeColor SlideDescUseBack SlideDescBackColor SlideDescBorder "
                 "SlideDescShadow SlideDescShadDist SlideDescShadDir SlideDescShadColor");
}

void WritePreferences()
{
    WriteSettingsKeys(PreferencesKeys());
}

void WriteMainWindowState()
{
    WriteSettingsKeys(MainWindowStateKeys());
}

void WriteSlideShowOptions()
{
    WriteSettingsKeys(SlideShowOptionKeys());
}

void WriteExtras()
{
    WriteSettingsKeys(ExtrasKeys());
}

void WriteDescriptionLook()
{
    WriteSettingsKeys(DescriptionLookKeys());
}

void WriteFavoriteShows()
{
    WriteSettingsKeys(numbered(QStringLiteral("FavoriteShow"), 20));
}

void WriteRecentFiles()
{
    WriteSettingsKeys(numbered(QStringLiteral("Recent"), 7) +
                      numbered(QStringLiteral("MoreRecentFiles"), 20));
}

void WritePackageSettings()
{
    WriteSettingsKeys(
        split("PackageName PackageSource PackageDestination PackageSize PackageRuntime "
              "PackageScreenSaver PackageDefaultSaver PackageShortcut PackageAutorun"));
}

void WriteExportSettings()
{
    WriteSettingsKeys(split("ExportFormat ExportSize ExportFrameRate ExportSeed ExportFile"));
}

QString RecentFileCaption(const QString& path)
{
    if (path.size() >= 61)
        return QStringLiteral("  ...") + path.right(57);
    return QStringLiteral("  ") + path;
}

bool AddFavoriteShow(const QString& path)
{
    auto& list = CurrentSettings().FavoriteShow;
    for (const QString& entry : list) {
        if (!entry.isEmpty() && entry.compare(path, Qt::CaseInsensitive) == 0) {
            MsgBox(QStringLiteral("The slide show:") + NewLine2() + path + NewLine2() +
                       QStringLiteral("...is already in your Favorite Shows List."),
                   vbInformation);
            return false;
        }
    }
    for (QString& entry : list) {
        if (entry.isEmpty()) {
            entry = path;
            WriteFavoriteShows();
            return true;
        }
    }
    MsgBox(
        QStringLiteral("Your \"Favorite Shows\" list is full, you need to remove an item first."),
        vbExclamation);
    return false;
}

} // namespace kavori
