#include "PackageLayout.h"

#include "settings/IniStore.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QFile>
#include <QFileInfo>

namespace kavori {

namespace {

QByteArray line(const QString& text)
{
    return text.toUtf8() + "\r\n";
}

QString flag(bool on)
{
    return on ? QStringLiteral("True") : QStringLiteral("False");
}

PackageFile row(const char* name, const char* host, PackageFrom from, bool runtime, bool full,
                bool saverOnly = false)
{
    return {QString::fromLatin1(name), QString::fromLatin1(host), from, runtime, full, saverOnly};
}

// The value of the running program's setting, as KAVORI.INI would hold it.
QString current(const char* key)
{
    return SettingText(QString::fromLatin1(key));
}

} // namespace

const QVector<PackageFile>& PackageLayout()
{
    using F = PackageFrom;
    // Which of our files stands for each name. The Windows run-time libraries and controls are
    // the shared libraries our programs load; the setup program is a shell script; help and
    // read-me are the HTML pages of the program's folder. Files that only the Windows program
    // had (its OLE controls, companion programs, icons, the separate saver module: here the
    // players play a show as the saver themselves) have no counterpart.
    static const QVector<PackageFile> layout = {
        row("KAVORIX.EXE", "Kavori", F::Programs, false, true),
        row("RUN-KAV.EXE", "run-kav", F::Programs, true, true),
        row("Run-KAV.TXT", "Run-KAV.TXT", F::Home, true, true),
        row("BLANK.WAV", "BLANK.WAV", F::Home, true, true),
        row("MSVBVM60.DLL", "lib/", F::SupportLibraries, true, true),
        row("OLEAUT32.DLL", "", F::Nothing, true, true),
        row("OLEPRO32.DLL", "", F::Nothing, true, true),
        row("ASYCFILT.DLL", "", F::Nothing, true, true),
        row("COMCAT.DLL", "", F::Nothing, true, true),
        row("STDOLE2.TLB", "", F::Nothing, true, true),
        row("COMDLG32.OCX", "", F::Nothing, true, true),
        row("TABCTL32.OCX", "", F::Nothing, true, true),
        row("GIF89.DLL", "", F::Nothing, true, true),
        row("SETUP.EXE", "setup.sh", F::Home, true, true),
        row("KAVORIX.HLP", "Help/index.html", F::Home, false, true),
        row("SETUP.HLP", "", F::Nothing, false, true),
        row("README.HTM", "Help/readme.html", F::Home, false, true),
        row("README.TXT", "", F::Nothing, false, true),
        row("TIPOFDAY.DAT", "", F::Nothing, false, true),
        row("KAV.ICO", "", F::Nothing, false, true),
        row("KAVORIX.ICO", "", F::Nothing, false, true),
        row("SETUP1.EXE", "", F::Nothing, false, true),
        row("UN-SETUP.EXE", "", F::Nothing, false, true),
        row("KALaunch.EXE", "", F::Nothing, false, true),
        row("KAThumb.EXE", "", F::Nothing, false, true),
        row("KAUtil.EXE", "", F::Nothing, false, true),
        row("NVIEWLIB.DLL", "", F::Nothing, false, true),
        row("KAVORLNK.DLL", "", F::Nothing, false, true),
        row("MSCOMCTL.OCX", "", F::Nothing, false, true),
        row("KavorSCR.SCR", "", F::Nothing, true, true, true),
        row("KAVORSCR.DAT", "", F::Nothing, true, true, true),
    };
    return layout;
}

QVector<PackageFile> PackageFilesFor(const PackageOptions& options)
{
    QVector<PackageFile> files;
    for (const PackageFile& file : PackageLayout()) {
        const bool wanted =
            options.runtime ? file.runtime && (!file.saverOnly || options.screenSaver) : file.full;
        if (wanted && file.from != PackageFrom::Nothing)
            files << file;
    }
    return files;
}

QString PackageHostName(const QString& name)
{
    for (const PackageFile& file : PackageLayout()) {
        if (file.name == name)
            return file.host.isEmpty() ? name : file.host;
    }
    return name;
}

QString PackageLibraryFolder()
{
    return QStringLiteral("lib");
}

QString PackagePluginFolder()
{
    return QStringLiteral("plugins");
}

QString PackageSlidesFolder()
{
    return QStringLiteral("SLIDES");
}

QStringList PackageControlFiles()
{
    return {QStringLiteral("AUTORUN.INF"), QStringLiteral("SETUP.LST"),
            QStringLiteral("RUN-KAV.INI"), QStringLiteral("KAVORI.INI"),
            QStringLiteral("setup.ini"),   QStringLiteral("qt.conf")};
}

QStringList PackageKnownEntries()
{
    QStringList entries;
    for (const PackageFile& file : PackageLayout()) {
        if (file.from == PackageFrom::Programs || file.from == PackageFrom::Home)
            entries << file.host;
    }
    entries << PackageControlFiles() << PackageLibraryFolder() << PackagePluginFolder()
            << QStringLiteral("Help");
    return entries;
}

QString PackageWord(bool screenSaver)
{
    return screenSaver ? QStringLiteral("screen saver") : QStringLiteral("slide show");
}

QByteArray AutorunInfBytes(const PackageOptions& options)
{
    const QString open = PackageHostName(options.runtime ? QStringLiteral("RUN-KAV.EXE")
                                                         : QStringLiteral("SETUP.EXE"));
    const QString icon = PackageHostName(options.runtime ? QStringLiteral("RUN-KAV.EXE")
                                                         : QStringLiteral("KAVORIX.EXE"));
    return line(QStringLiteral("[AutoRun]")) + line(QStringLiteral("Open = ") + open) +
           line(QStringLiteral("Icon = ") + icon);
}

QByteArray SetupLstBytes(const QStringList& libraries)
{
    QByteArray b = line(QStringLiteral("[BootStrap]"));
    for (int i = 0; i < libraries.size(); ++i)
        b += line(QStringLiteral("File") + QString::number(i + 1) + u'=' + libraries[i]);
    b += line(QString());
    b += line(QStringLiteral("[Setup]"));
    b += line(QStringLiteral("Setup=") + PackageHostName(QStringLiteral("RUN-KAV.EXE")));
    return b;
}

QByteArray QtConfBytes()
{
    // Qt reads this beside the program: its libraries and plug-ins are the package's own.
    return line(QStringLiteral("[Paths]")) + line(QStringLiteral("Prefix = .")) +
           line(QStringLiteral("Libraries = ") + PackageLibraryFolder()) +
           line(QStringLiteral("Plugins = ") + PackagePluginFolder());
}

bool WriteRunKavIni(const QString& path)
{
    const QString v = ViewerSection();
    ClearIni();
    SetIniValue(v, QStringLiteral("MP3Program"), QString());
    SetIniValue(v, QStringLiteral("MP3Name"), QStringLiteral("MP3 Player"));
    SetIniValue(v, QStringLiteral("CdRomDriveLetter"), QString());
    SetIniValue(v, QStringLiteral("MouseSensitivity"), QStringLiteral("4"));
    SetIniValue(v, QStringLiteral("UseHalftoneMode"), current("UseHalftoneMode"));
    SetIniValue(v, QStringLiteral("Color256Msg"), QStringLiteral("True"));
    for (const char* key : {"BackgroundColor", "PreviewBackRGB", "StretchImages", "EnlargeImages",
                            "PasswordDelay", "DisableScreenSaver", "MakePauseSnd",
                            "SlideShowFileExt", "SlideShowFilePath", "ToolbarX", "ToolbarY"})
        SetIniValue(v, QString::fromLatin1(key), current(key));
    return SaveIniFile(path);
}

bool WritePackageKavoriIni(const QString& path)
{
    const QString v = ViewerSection();
    const Settings& s = CurrentSettings();
    auto set = [&](const char* key, const QString& value) {
        SetIniValue(v, QString::fromLatin1(key), value);
    };
    ClearIni();
    set("Color256Msg", QStringLiteral("True"));
    set("MouseSensitivity", QStringLiteral("4"));
    set("BackgroundColor", current("BackgroundColor"));
    set("StartupDialog", current("StartupDialog"));
    set("ViewFullScreen", flag(false));
    set("StretchImages", current("StretchImages"));
    set("EnlargeImages", current("EnlargeImages"));
    set("ClickScreenOpen", flag(false));
    set("DisplayLastOpened", flag(false));
    set("DeleteUntitled", flag(true));
    set("ClearClipboard", flag(true));
    set("TopMostWindow", flag(false));
    set("SoundMode", QString::number(s.SoundMode == 0 ? 0 : s.SoundMode == 1 ? 1 : 2));
    set("SoundFile", QString());
    for (const char* key :
         {"CDTrack", "SoundLoop", "SlideInterval", "RandomSlides", "LoopSlideShow", "ShowFilenames",
          "ShowDescription", "ShowToolbar", "PasswordDelay", "SaveSlides", "SelectDuplicates"})
        set(key, current(key));
    set("LastOpenedFile", QString());
    set("LastSlideShow", QString());
    return SaveIniFile(path);
}

bool WritePackageSetupIni(const QString& path, const QString& showFile, const QString& name,
                          const QString& size, const PackageOptions& options)
{
    const QString section = QStringLiteral("Kavori Setup");
    ClearIni();
    SetIniValue(section, QStringLiteral("SlideShowFile"), showFile);
    SetIniValue(section, QStringLiteral("SlideShowName"), name);
    SetIniValue(section, QStringLiteral("InstallSize"), size);
    SetIniValue(section, QStringLiteral("ScreenSaver"), flag(options.screenSaver));
    SetIniValue(section, QStringLiteral("MakeDefaultSaver"), flag(options.defaultSaver));
    SetIniValue(section, QStringLiteral("SlideShowShortcut"), flag(options.shortcut));
    return SaveIniFile(path);
}

} // namespace kavori
