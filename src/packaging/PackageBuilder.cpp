#include "PackageBuilder.h"

#include "platform/AppPaths.h"
#include "platform/SafeFiles.h"
#include "platform/SharedLibraries.h"
#include "runtime/Format.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/WaitDialog.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace kavori {

namespace {

const QString kShowFilter = QStringLiteral("*.KAV");

QString lb()
{
    return NewLine();
}

// A folder as compared with the forbidden ones: absolute, cleaned, ending in "/".
QString folderKey(const QString& folder)
{
    return AddSlash(QDir::cleanPath(QDir(folder).absolutePath()));
}

// The same folder with its links resolved, when it exists.
QString realKey(const QString& folder)
{
    const QString real = QFileInfo(folder).canonicalFilePath();
    return real.isEmpty() ? folderKey(folder) : AddSlash(real);
}

bool sameFolder(const QString& a, const QString& b)
{
    return folderKey(a) == folderKey(b) || realKey(a) == realKey(b);
}

bool below(const QString& folder, const QString& parent)
{
    const QString f = folderKey(folder);
    const QString r = realKey(folder);
    const QString p = folderKey(parent);
    return (f.startsWith(p) && f != p) || (r.startsWith(p) && r != p);
}

// Stands for the system's folders of the layout (design: the Windows folder is /usr, its
// system folder /usr/lib, the Windows drive's root /).
const QString kWindowsFolder = QStringLiteral("/usr/");
const QString kSystemFolder = QStringLiteral("/usr/lib/");
const QString kRootFolder = QStringLiteral("/");

// The show in memory and the settings a show changes are the user's: a build reads the
// package's show and then gives them back as they were.
class KeepShowAndSettings {
public:
    KeepShowAndSettings() : m_show(CurrentShow()), m_settings(CurrentSettings())
    {
        // Reading a show to package it does not make it a recent show.
        CurrentSettings().KeepRecent = false;
    }
    ~KeepShowAndSettings()
    {
        CurrentShow() = m_show;
        CurrentSettings() = m_settings;
    }
    const Settings& settings() const { return m_settings; }

private:
    SlideShow m_show;
    Settings m_settings;
};

bool isSoundNumber(const QString& s)
{
    return ParseNumber(s).has_value();
}

qint64 sizeOf(const QString& path)
{
    return path.isEmpty() ? 0 : QFileInfo(path).size();
}

enum class Outcome { Done, Stopped, Cancelled };

// The build under way: the request, the wait dialog and the cancel flag.
class Build {
public:
    Build(PackageRequest& request, Progress& progress) : r(request), m_progress(progress) {}

    PackageRequest& r;
    QString dest;

    bool cancelled() { return m_progress.cancelled(); }
    void caption(const QString& text) { m_progress.setCaption(text); }
    void step() { m_progress.setValue(++m_done); }
    void setMaximum(int maximum) { m_progress.setMaximum(maximum); }

    // Copies one file into the package, announcing it first.
    bool copy(const QString& source, const QString& target)
    {
        caption(QDir::toNativeSeparators(source) + lb() + AppTitle() +
                QStringLiteral(" is copying the file:"));
        const bool ok = CopyFileOver(source, target);
        step();
        return ok;
    }

private:
    Progress& m_progress;
    int m_done = 0;
};

// The package show writer: the show in memory into SLIDES with bare names, each file it names
// copied beside it.
class PackageShowWriter {
public:
    PackageShowWriter(Build& build, const QString& showFolder)
        : m_build(build), m_showFolder(showFolder),
          m_slides(AddSlash(build.dest + PackageSlidesFolder()))
    {}

    Outcome write(const QString& target)
    {
        const SlideShow& show = CurrentShow();
        const Settings& s = CurrentSettings();
        m_build.caption(QDir::toNativeSeparators(target) + lb() + AppTitle() +
                        QStringLiteral(" is creating the file:"));
        QByteArray bytes;
        QString soundName;
        if (!s.SoundFile.isEmpty()) {
            const Outcome o = referred(s.SoundFile, Kind::ShowSound, soundName);
            if (o != Outcome::Done)
                return o;
        }
        bytes += ShowHeaderBytes(show, soundName);
        for (const Slide& slide : show.slides) {
            if (m_build.cancelled())
                return Outcome::Cancelled;
            QString file, sound, texture;
            Outcome o = referred(slide.SlideFile, Kind::Image, file);
            if (o == Outcome::Done && !slide.SlideSound.isEmpty()) {
                if (isSoundNumber(slide.SlideSound))
                    sound = slide.SlideSound;
                else
                    o = referred(slide.SlideSound, Kind::SlideSound, sound);
            }
            if (o == Outcome::Done && !slide.SlideTexture.isEmpty())
                o = referred(slide.SlideTexture, Kind::Texture, texture);
            if (o != Outcome::Done)
                return o;
            bytes += SlideRecordBytes(slide, file, sound, texture);
        }
        if (ShowWritesPlayList(show)) {
            bytes += PlayListHeadBytes(show);
            for (const QString& entry : show.PlayList) {
                if (m_build.cancelled())
                    return Outcome::Cancelled;
                QString name;
                const Outcome o = referred(entry, Kind::PlayListSound, name);
                if (o != Outcome::Done)
                    return o;
                bytes += ShowTextLine(name);
            }
        }
        if (m_build.cancelled())
            return Outcome::Cancelled;
        if (!WriteFileWhole(target, bytes, false)) {
            MsgBox(QStringLiteral("Unable to package ") + m_build.r.name +
                       QStringLiteral(", a slide show file (.KAV) could not be created in the "
                                      "destination location."),
                   vbExclamation, PackageTitle());
            return Outcome::Stopped;
        }
        m_build.step();
        return Outcome::Done;
    }

private:
    enum class Kind { Image, ShowSound, SlideSound, Texture, PlayListSound };

    // Copies a file the show names (asking before replacing one already there) and gives the
    // name the package show stores.
    Outcome referred(const QString& name, Kind kind, QString& stored)
    {
        const QString source = PackageSourceFile(name, m_showFolder);
        stored = FileNameOf(source.isEmpty() ? name : source);
        const QString target = m_slides + stored;
        const QString key = stored.toUpper();
        if (source.isEmpty() || m_handled.contains(key))
            return Outcome::Done;
        m_handled.insert(key);
        if (QFileInfo(source).canonicalFilePath() == QFileInfo(target).canonicalFilePath())
            return Outcome::Done;
        if (QFileInfo::exists(target)) {
            const int answer = ask(kind, stored);
            if (answer == vbCancel)
                return Outcome::Stopped;
            if (answer == vbNo)
                return Outcome::Done;
        }
        if (m_build.cancelled())
            return Outcome::Cancelled;
        if (!m_build.copy(source, target)) {
            MsgBox(QStringLiteral("Could not copy one of the ") + AppTitle() +
                       QStringLiteral(" program files, unable to package ") + m_build.r.name +
                       QStringLiteral("..."),
                   vbExclamation, PackageTitle());
            return Outcome::Stopped;
        }
        return Outcome::Done;
    }

    int ask(Kind kind, const QString& name)
    {
        const QString title = PackageTitle();
        const QString replaceQuestion = QStringLiteral(
            "Do you want to replace it with the one specified in the current slide show");
        switch (kind) {
        case Kind::Image:
            if (m_replaceAllImages)
                return vbYes;
            {
                const int answer = MsgBox(
                    QStringLiteral("This image already exists in the package directory:") + lb() +
                        name + lb() + QStringLiteral("Do you want to replace this file?") + lb() +
                        QStringLiteral("(Press the \"Yes\" button to replace ALL image files, or "
                                       "press the \"No\" button to skip this file.)"),
                    vbYesNoCancel + vbQuestion, title);
                m_replaceAllImages = answer == vbYes;
                return answer;
            }
        case Kind::ShowSound:
            return MsgBox(
                QStringLiteral("This sound file already exists in the package directory:") + lb() +
                    name + lb() + QStringLiteral("Do you want to replace it?"),
                vbYesNo + vbQuestion, title);
        case Kind::SlideSound:
            return MsgBox(QStringLiteral("The sound file ") + name +
                              QStringLiteral(" already exists in the slide show folder.") + lb() +
                              replaceQuestion + u'?',
                          vbYesNoCancel + vbQuestion, title);
        case Kind::Texture:
            return MsgBox(QStringLiteral("The background texture file ") + name +
                              QStringLiteral(" already exists in the slide show folder.") + lb() +
                              replaceQuestion + u'?',
                          vbYesNoCancel + vbQuestion, title);
        case Kind::PlayListSound:
            return MsgBox(QStringLiteral("The sound file ") + name +
                              QStringLiteral(" already exists in the slide show folder.") + lb() +
                              replaceQuestion + QStringLiteral(" play list?"),
                          vbYesNoCancel + vbQuestion, title);
        }
        return vbNo;
    }

    Build& m_build;
    QString m_showFolder;
    QString m_slides;
    QSet<QString> m_handled;
    bool m_replaceAllImages = false;
};

// The folders in the destination that the program did not put there.
QStringList unrelatedFolders(const QString& dest)
{
    const QStringList known = PackageKnownEntries();
    QStringList unrelated;
    for (const QString& folder :
         QDir(dest).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden)) {
        if (folder.compare(PackageSlidesFolder(), Qt::CaseInsensitive) == 0)
            continue;
        if (!known.contains(folder))
            unrelated << folder;
    }
    return unrelated;
}

int countFilesToCopy(const PackageOptions& options, int supportFiles)
{
    int count = supportFiles;
    for (const PackageFile& file : PackageFilesFor(options)) {
        if (file.from != PackageFrom::SupportLibraries)
            ++count;
    }
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    count += int(show.slides.size()) + 1;
    if (!s.SoundFile.isEmpty())
        ++count;
    for (const Slide& slide : show.slides) {
        if (!slide.SlideSound.isEmpty() && !isSoundNumber(slide.SlideSound))
            ++count;
        if (!slide.SlideTexture.isEmpty())
            ++count;
    }
    if (ShowWritesPlayList(show))
        count += int(show.PlayList.size());
    // AUTORUN.INF, and the other control files as one step.
    count += (options.autorun ? 1 : 0) + 1;
    return count;
}

QString programFolder(const PackageRequest& r)
{
    return AddSlash(r.programFolder.isEmpty() ? QCoreApplication::applicationDirPath()
                                              : r.programFolder);
}

// The support libraries of the executables a package carries, and the plug-ins the player
// needs with theirs. Plug-ins come only with programs that load Qt from the system.
struct SupportFiles {
    QStringList libraries; // full paths
    QStringList plugins;   // relative to Qt's plug-in folder
};

SupportFiles findSupportFiles(const QStringList& executables)
{
    SupportFiles support;
    const QStringList direct = SharedLibraryDependencies(executables);
    bool linksQt = false;
    for (const QString& lib : direct)
        linksQt = linksQt || QFileInfo(lib).fileName().startsWith(QLatin1String("libQt6"));
    if (!linksQt) {
        support.libraries = direct;
        return support;
    }
    support.plugins = PlayerPluginFiles();
    QStringList all = executables;
    for (const QString& plugin : support.plugins)
        all << QtPluginFolder() + plugin;
    support.libraries = SharedLibraryDependencies(all);
    return support;
}

Outcome copyProgramFiles(Build& b, const SupportFiles& support, QStringList& libraryNames)
{
    const QString programs = programFolder(b.r);
    auto failed = [&] {
        MsgBox(QStringLiteral("Could not copy one of the ") + AppTitle() +
                   QStringLiteral(" program files, unable to package ") + b.r.name +
                   QStringLiteral("..."),
               vbExclamation, PackageTitle());
        return Outcome::Stopped;
    };
    for (const PackageFile& file : PackageFilesFor(b.r.options)) {
        if (b.cancelled())
            return Outcome::Cancelled;
        if (file.from == PackageFrom::SupportLibraries) {
            const QString lib = AddSlash(b.dest + PackageLibraryFolder());
            QDir().mkpath(lib);
            for (const QString& path : support.libraries) {
                if (b.cancelled())
                    return Outcome::Cancelled;
                if (!b.copy(path, lib + QFileInfo(path).fileName()))
                    return failed();
                libraryNames << PackageLibraryFolder() + u'/' + QFileInfo(path).fileName();
            }
            for (const QString& plugin : support.plugins) {
                if (b.cancelled())
                    return Outcome::Cancelled;
                const QString target = AddSlash(b.dest + PackagePluginFolder()) + plugin;
                QDir().mkpath(FolderOf(target));
                if (!b.copy(QtPluginFolder() + plugin, target))
                    return failed();
            }
            if (!support.plugins.isEmpty() &&
                !WriteFileWhole(b.dest + QStringLiteral("qt.conf"), QtConfBytes(), false))
                return failed();
            continue;
        }
        const QString source = file.from == PackageFrom::Programs
                                   ? programs + file.host
                                   : PathNoCase(AppPath(), file.host);
        const QString target = b.dest + file.host;
        QDir().mkpath(FolderOf(target));
        if (!b.copy(source, target))
            return failed();
        // The setup script comes from the program's resources, which keep no modes.
        if (target.endsWith(QLatin1String(".sh")))
            QFile::setPermissions(target, QFile::permissions(target) | QFile::ExeOwner |
                                              QFile::ExeGroup | QFile::ExeOther);
    }
    return Outcome::Done;
}

bool yes(const QString& text)
{
    return MsgBox(text, vbYesNo + vbQuestion, PackageTitle()) == vbYes;
}

void information(const QString& text)
{
    MsgBox(text, vbInformation, PackageTitle());
}

Outcome runBuild(PackageRequest& r, const ProgressFactory& makeProgress, Settings& saved)
{
    const QString word = PackageWord(r.options.screenSaver);
    const QString source = AddSlash(r.source);
    const QString dest = AddSlash(r.destination);
    const QString again =
        QStringLiteral("Create and/or select a slide show file and then try again...");

    // 1-2: a show to package.
    if (PackageShowFiles(source).isEmpty()) {
        information(QStringLiteral("No slide show files could be found in the source directory, "
                                   "unable to create a ") +
                    word + QStringLiteral(" package.") + lb() + again);
        return Outcome::Stopped;
    }
    if (r.showFile.isEmpty()) {
        information(QStringLiteral("A slide show file has not be selected, unable to create a ") +
                    word + QStringLiteral(" package.") + lb() + again);
        return Outcome::Stopped;
    }
    // 3: where a package may not go.
    const QString refusal = CheckPackageDestination(dest, source, r.options.screenSaver);
    if (!refusal.isEmpty()) {
        MsgBox(refusal, vbExclamation, PackageTitle());
        return Outcome::Stopped;
    }
    // 4: a name.
    const QString showName = QFileInfo(r.showFile).completeBaseName();
    if (r.name.trimmed().isEmpty() || r.name == QLatin1String("Untitled")) {
        if (!yes(QStringLiteral("You need to give your ") + word +
                 QStringLiteral(" package a name first.") + lb() + QStringLiteral("Default Name:") +
                 lb() + showName + lb() + QStringLiteral("Use the default package name?")))
            return Outcome::Stopped;
        r.name = showName;
    }
    // 5: a size.
    if (r.size.trimmed().isEmpty()) {
        information(QStringLiteral("You need to specify the total size of your slide show in "
                                   "megabytes, unable to create ") +
                    word + QStringLiteral(" package..."));
        return Outcome::Stopped;
    }
    if (r.size == QLatin1String("Unknown") &&
        !yes(QStringLiteral("You should specify the total size of your ") + word +
             QStringLiteral(" package in megabytes.") + lb() +
             QStringLiteral("Do you want to continue anyway?")))
        return Outcome::Stopped;
    // 6: a folder with files in it.
    const QDir destDir(dest);
    if (destDir.exists() &&
        !destDir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)
             .isEmpty() &&
        !yes(QStringLiteral("The selected package directory already has files in it:") + lb() +
             dest + lb() + QStringLiteral("Use this directory anyway?")))
        return Outcome::Stopped;
    // 7: the summary.
    if (!yes(QStringLiteral("NAME: ") + r.name + lb() + QStringLiteral("TYPE: ") +
             (r.options.screenSaver ? QStringLiteral("Screen Saver")
                                    : QStringLiteral("Slide Show")) +
             lb() + QStringLiteral("SIZE: ") + r.size + QStringLiteral(" (megabytes)") + lb() +
             QStringLiteral("SOURCE: ") + source + lb() + QStringLiteral("PACKAGE: ") + dest +
             NewLine2() + QStringLiteral("Create the above package?")))
        return Outcome::Stopped;
    // 8: folders already there.
    const bool hasSlides =
        destDir.exists() && QFileInfo(PathNoCase(dest, PackageSlidesFolder())).isDir();
    const QStringList unrelated = destDir.exists() ? unrelatedFolders(dest) : QStringList();
    const QString here = lb() + dest + lb() + QStringLiteral("Create a ") + word +
                         QStringLiteral(" package directory here anyway?");
    if (hasSlides && !unrelated.isEmpty()) {
        if (!yes(QStringLiteral("The selected package directory already has a SLIDES folder.  "
                                "Other directories not related to ") +
                 AppTitle() + QStringLiteral(" also exist in this folder:") + here))
            return Outcome::Stopped;
    } else if (hasSlides) {
        if (!yes(QStringLiteral(
                     "The selected package directory already has a SLIDES folder in it:") +
                 here))
            return Outcome::Stopped;
    } else if (!unrelated.isEmpty()) {
        if (!yes(QStringLiteral("The selected package directory contains folders that are not "
                                "related to ") +
                 AppTitle() + u':' + here))
            return Outcome::Stopped;
    }
    // 9: the package's show.
    const QString slides = AddSlash(hasSlides ? PathNoCase(dest, PackageSlidesFolder())
                                              : dest + PackageSlidesFolder());
    const QString showTarget = slides + r.name + QStringLiteral(".KAV");
    if (QFileInfo::exists(showTarget) &&
        !yes(QStringLiteral("The destination slide show file (.KAV) already exists:") + lb() +
             showTarget + lb() + QStringLiteral("Overwrite this file with new data?")))
        return Outcome::Stopped;

    // 10: the package state and the wait dialog.
    const std::unique_ptr<Progress> progress = makeProgress();
    Build b(r, *progress);
    b.dest = dest;
    b.caption(AppTitle() + QStringLiteral(" is preparing to package ") + r.name +
              QStringLiteral(", please wait..."));
    if (!QDir().mkpath(slides)) {
        MsgBox(QStringLiteral("Unable to package ") + r.name +
                   QStringLiteral(", a slide show file (.KAV) could not be created in the "
                                  "destination location."),
               vbExclamation, PackageTitle());
        return Outcome::Stopped;
    }
    if (!ReadSlideShow(source + r.showFile)) {
        MsgBox(QStringLiteral("Unable to package ") + r.name +
                   QStringLiteral(", the source file that was selected could not be opened to "
                                  "read the data that it contains."),
               vbExclamation, PackageTitle());
        return Outcome::Stopped;
    }
    const QString programs = programFolder(r);
    QStringList executables;
    for (const PackageFile& file : PackageFilesFor(r.options)) {
        if (file.from == PackageFrom::Programs)
            executables << programs + file.host;
    }
    const SupportFiles support = findSupportFiles(executables);
    b.setMaximum(
        countFilesToCopy(r.options, int(support.libraries.size() + support.plugins.size())));
    if (b.cancelled())
        return Outcome::Cancelled;

    // 11: the show.
    {
        PackageShowWriter writer(b, FolderOf(source + r.showFile));
        const Outcome o = writer.write(showTarget);
        if (o != Outcome::Done)
            return o;
    }
    // 12-14: the program files (the screen saver files have no counterpart here).
    const QString first = dest + PackageHostName(r.options.runtime ? QStringLiteral("RUN-KAV.EXE")
                                                                   : QStringLiteral("KAVORIX.EXE"));
    QStringList libraryNames;
    if (!QFileInfo::exists(first) ||
        yes(QStringLiteral("It appears that the ") + AppTitle() +
            QStringLiteral(" program files are already in the package directory.") + lb() +
            QStringLiteral("Do you want to copy over these files?"))) {
        const Outcome o = copyProgramFiles(b, support, libraryNames);
        if (o != Outcome::Done)
            return o;
    } else {
        for (const QString& path : support.libraries)
            libraryNames << PackageLibraryFolder() + u'/' + QFileInfo(path).fileName();
    }
    if (b.cancelled())
        return Outcome::Cancelled;

    // 15: the control files, from the user's settings rather than the packaged show's.
    const Settings showSettings = CurrentSettings();
    CurrentSettings() = saved;
    auto creating = [&](const QString& file) {
        b.caption(AppTitle() + QStringLiteral(" is creating the following file:") + lb() + file);
    };
    bool written = true;
    if (r.options.autorun) {
        creating(QStringLiteral("AUTORUN.INF"));
        written =
            WriteFileWhole(dest + QStringLiteral("AUTORUN.INF"), AutorunInfBytes(r.options), false);
        b.step();
    }
    if (r.options.runtime && written) {
        creating(QStringLiteral("SETUP.LST"));
        written =
            WriteFileWhole(dest + QStringLiteral("SETUP.LST"), SetupLstBytes(libraryNames), false);
    }
    if (written && b.cancelled())
        return Outcome::Cancelled;
    b.caption(AppTitle() +
              QStringLiteral(" is creating .INI files in package directory, please wait..."));
    if (written && r.options.runtime) {
        written = WriteRunKavIni(dest + QStringLiteral("RUN-KAV.INI"));
    } else if (written) {
        written = WritePackageKavoriIni(dest + QStringLiteral("KAVORI.INI")) &&
                  WritePackageSetupIni(dest + QStringLiteral("setup.ini"), r.showFile, r.name,
                                       r.size, r.options);
    }
    b.step();
    CurrentSettings() = showSettings;
    if (!written) {
        MsgBox(QStringLiteral("Unable to package ") + r.name +
                   QStringLiteral(", a slide show file (.KAV) could not be created in the "
                                  "destination location."),
               vbExclamation, PackageTitle());
        return Outcome::Stopped;
    }
    return Outcome::Done;
}

} // namespace

QString PackageTitle()
{
    return AppTitle() + QStringLiteral(" - [Package Slide Show]");
}

QStringList PackageShowFiles(const QString& folder)
{
    if (folder.isEmpty())
        return {};
    QStringList shows;
    for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase)) {
        if (HasExtension(name, QStringLiteral(".KAV")))
            shows << name;
    }
    return shows;
}

QString CheckPackageDestination(const QString& destination, const QString& source, bool screenSaver)
{
    const QString word = PackageWord(screenSaver);
    const QString dest = AddSlash(destination);
    const QString another =
        QStringLiteral("Select another destination location and then try again...");
    const QString youMay =
        QStringLiteral("You may not create a ") + word + QStringLiteral(" package ");
    auto refuse = [&](const QString& text) -> QString {
        return text + lb() + dest + lb() + another;
    };

    if (sameFolder(dest, AppPath()))
        return refuse(youMay + QStringLiteral("in your ") + AppTitle() +
                      QStringLiteral(" installation directory:"));
    if (sameFolder(dest, kWindowsFolder))
        return refuse(youMay + QStringLiteral("in your WINDOWS directory:"));
    if (sameFolder(dest, kSystemFolder))
        return refuse(youMay + QStringLiteral("in your WINDOWS\\SYSTEM directory:"));
    if (below(dest, kWindowsFolder))
        return refuse(QStringLiteral("You should not create a ") + word +
                      QStringLiteral(" package in a WINDOWS sub-directory:"));
    if (sameFolder(dest, kRootFolder))
        return QStringLiteral("You should not create a ") + word +
               QStringLiteral(" package in the \"root\" directory of your WINDOWS drive:") + lb() +
               dest + lb() +
               QStringLiteral(
                   "Create and/or select a folder to create package in and then try again...");
    if (sameFolder(dest, PathNoCase(AppPath(), QStringLiteral("Slides"))))
        return refuse(youMay + QStringLiteral("in the ") + AppTitle() +
                      QStringLiteral(" \\SLIDES directory:"));
    if (!source.isEmpty() && sameFolder(dest, source))
        return youMay + QStringLiteral("in the same directory as the source files.") + lb() +
               another;
    if (!source.isEmpty() && sameFolder(PathNoCase(dest, PackageSlidesFolder()), source))
        return youMay +
               QStringLiteral(
                   "where the source file(s) are in the destination's \\SLIDES directory.") +
               lb() + another;
    return QString();
}

int RequiredMegabytes(bool runtime)
{
    return runtime ? 3 : 13;
}

QString RequiredSizeCaption(bool runtime)
{
    return QString::number(RequiredMegabytes(runtime)) + QStringLiteral("MB Required +");
}

QString TotalSizeCaption(bool runtime, const QString& size)
{
    const std::optional<double> typed = ParseNumber(size.trimmed());
    const double total = RequiredMegabytes(runtime) + (typed ? *typed : 0.0);
    return QStringLiteral("= ") + Format(total, QStringLiteral("###,##0.0")) + QStringLiteral("MB");
}

QString PackageSourceFile(const QString& name, const QString& showFolder)
{
    if (name.isEmpty())
        return name;
    const QString found = FindShowFile(name, AddSlash(showFolder));
    if (!found.isEmpty())
        return found;
    const QString inSlides =
        PathNoCase(AddSlash(showFolder), PackageSlidesFolder() + u'/' + FileNameOf(name));
    return QFileInfo::exists(inSlides) ? inSlides : QString();
}

QString EstimatePackageSize(const QString& source, const QString& showFile)
{
    const QString unknown = QStringLiteral("Unknown");
    const QString folder = AddSlash(source);
    if (PackageShowFiles(folder).isEmpty()) {
        information(QStringLiteral("No slide show files could be found in the source directory, "
                                   "unable to estimate size of package."));
        return unknown;
    }
    if (showFile.isEmpty()) {
        information(QStringLiteral("A slide show file has not be selected, unable to estimate "
                                   "size of package.") +
                    lb() +
                    QStringLiteral("Create and/or select a slide show file and then try again..."));
        return unknown;
    }
    KeepShowAndSettings keep;
    const QString path = folder + showFile;
    if (!ReadSlideShow(path))
        return unknown;
    const SlideShow& show = CurrentShow();
    const Settings& s = CurrentSettings();
    if (show.slides.isEmpty()) {
        information(QStringLiteral("The selected slide show does not contain any images, unable "
                                   "to calculate package size..."));
        return unknown;
    }
    qint64 total = sizeOf(path);
    for (const Slide& slide : show.slides) {
        const QString image = PackageSourceFile(slide.SlideFile, folder);
        if (image.isEmpty()) {
            MsgBox(QStringLiteral("File not found: ") + slide.SlideFile + lb() +
                       QStringLiteral("The selected slide show is missing an image, unable to "
                                      "calculate package size..."),
                   vbExclamation, PackageTitle());
            return unknown;
        }
        total += sizeOf(image);
        if (!isSoundNumber(slide.SlideSound))
            total += sizeOf(PackageSourceFile(slide.SlideSound, folder));
        total += sizeOf(PackageSourceFile(slide.SlideTexture, folder));
    }
    total += sizeOf(PackageSourceFile(s.SoundFile, folder));
    if (ShowWritesPlayList(show)) {
        for (const QString& entry : show.PlayList)
            total += sizeOf(PackageSourceFile(entry, folder));
    }
    return Format(BytesToMegabytes(total), QStringLiteral("###,###,##0.0"));
}

QString DroppedShowFile(const QString& path)
{
    const QFileInfo dropped(path);
    const QString show = dropped.isSymLink() ? dropped.symLinkTarget() : path;
    auto refuse = [](const QString& text) {
        MsgBox(text, vbExclamation, PackageTitle());
        return QString();
    };
    if (!HasExtension(show, QStringLiteral(".KAV")))
        return refuse(QStringLiteral("The file that was dropped here is not a valid ") +
                      AppTitle() + QStringLiteral(" slide show (.KAV) file."));
    const QFileInfo info(show);
    if (!info.isFile())
        return refuse(QStringLiteral("The file that was dropped here may have been deleted, "
                                     "unable to locate specified slide show file..."));
    if (info.size() == 0)
        return refuse(QStringLiteral("The file that was dropped here may have been deleted, no "
                                     "slide show data could be found..."));
    return info.absoluteFilePath();
}

PackageRequest LoadPackageRequest()
{
    const Settings& s = CurrentSettings();
    PackageRequest r;
    r.source = s.PackageSource;
    r.destination = s.PackageDestination;
    r.name = s.PackageName;
    r.size = s.PackageSize;
    r.options.runtime = s.PackageRuntime;
    r.options.screenSaver = s.PackageScreenSaver;
    r.options.defaultSaver = s.PackageDefaultSaver;
    r.options.shortcut = s.PackageShortcut;
    r.options.autorun = s.PackageAutorun;
    return r;
}

void SavePackageSettings(const PackageRequest& r)
{
    Settings& s = CurrentSettings();
    s.PackageName = r.name.isEmpty() ? QStringLiteral("Untitled") : r.name;
    s.PackageSource = r.source;
    s.PackageDestination = r.destination;
    s.PackageSize = r.size.isEmpty() ? QStringLiteral("Unknown") : r.size;
    s.PackageRuntime = r.options.runtime;
    s.PackageScreenSaver = r.options.screenSaver;
    s.PackageDefaultSaver = r.options.defaultSaver;
    s.PackageShortcut = r.options.shortcut;
    s.PackageAutorun = r.options.autorun;
    WritePackageSettings();
}

bool BuildPackage(PackageRequest& r, const ProgressFactory& makeProgress)
{
    Outcome outcome;
    {
        KeepShowAndSettings keep;
        Settings saved = keep.settings();
        outcome = runBuild(r, makeProgress, saved);
    }
    if (outcome == Outcome::Cancelled) {
        MsgBox(QStringLiteral("Save Package was canceled before it could complete, files and/or "
                              "settings in this package may be missing..."),
               vbExclamation, PackageTitle());
        return false;
    }
    if (outcome != Outcome::Done)
        return false;
    SavePackageSettings(r);
    information(QStringLiteral("The ") + PackageWord(r.options.screenSaver) +
                QStringLiteral(" package ") + r.name +
                QStringLiteral(" has been created in the directory:") + lb() +
                AddSlash(r.destination));
    return true;
}

} // namespace kavori
