#include "PackageRemoval.h"

#include "PackageBuilder.h"
#include "PackageLayout.h"
#include "fileutil/FileDelete.h"
#include "platform/AppPaths.h"
#include "runtime/MsgBox.h"
#include "settings/IniStore.h"

#include <QDir>
#include <QFileInfo>

namespace kavori {

namespace {

const QDir::Filters kEverything =
    QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

// The pictures, movies and shows a package's SLIDES folder may hold.
bool isSlidesFile(const QString& name)
{
    static const QStringList extensions = {
        QStringLiteral(".KAV"), QStringLiteral(".BMP"),  QStringLiteral(".DIB"),
        QStringLiteral(".GIF"), QStringLiteral(".JPG"),  QStringLiteral(".JIF"),
        QStringLiteral(".JPE"), QStringLiteral(".JPEG"), QStringLiteral(".WMF"),
        QStringLiteral(".EMF"), QStringLiteral(".ICO"),  QStringLiteral(".RLE"),
        QStringLiteral(".CUR"), QStringLiteral(".AVI"),  QStringLiteral(".MPEG"),
        QStringLiteral(".MPE"), QStringLiteral(".MPG"),  QStringLiteral(".MPA"),
        QStringLiteral(".ENC"), QStringLiteral(".MOV"),  QStringLiteral(".QT"),
        QStringLiteral(".M1V"), QStringLiteral(".MP2")};
    for (const QString& extension : extensions) {
        if (HasExtension(name, extension))
            return true;
    }
    return false;
}

bool isLink(const QString& path)
{
    return QFileInfo(path).isSymLink();
}

bool exists(const QString& path)
{
    return QFileInfo::exists(path) || isLink(path);
}

// Removes a folder of ours and everything in it; links inside go as links.
void removeTree(const QString& folder)
{
    if (isLink(folder)) {
        DeleteOneFile(folder, false);
        return;
    }
    const QDir dir(folder);
    for (const QFileInfo& entry : dir.entryInfoList(kEverything)) {
        if (entry.isDir() && !entry.isSymLink())
            removeTree(entry.filePath());
        else
            DeleteOneFile(entry.filePath(), false);
    }
    QDir().rmdir(folder);
}

bool sameFolder(const QString& a, const QString& b)
{
    auto key = [](const QString& f) {
        const QString real = QFileInfo(f).canonicalFilePath();
        return AddSlash(real.isEmpty() ? QDir::cleanPath(QDir(f).absolutePath()) : real);
    };
    return key(a) == key(b);
}

} // namespace

QString DeletePackageTitle()
{
    return AppTitle() + QStringLiteral(" - [Delete Package]");
}

bool IsPackageFolder(const QString& folder)
{
    if (folder.isEmpty())
        return false;
    const QString slides = PathNoCase(AddSlash(folder), PackageSlidesFolder());
    return QFileInfo(slides).isDir() && !PackageShowFiles(slides).isEmpty();
}

QString PackageFolderStatus(const QString& folder)
{
    if (folder.isEmpty())
        return QStringLiteral("Select location of the package to delete...");
    return IsPackageFolder(folder)
               ? QStringLiteral("Package directory located!")
               : QStringLiteral(
                     "Unable to locate slide show file in selected package directory...");
}

bool DeletePackage(const QString& chosen)
{
    const QString title = DeletePackageTitle();
    const QString folder = AddSlash(chosen);
    const QString windows = QStringLiteral("/usr/");
    // The system's folders stand for the Windows directory (the root and all below /usr too).
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    const QString real = canonical.isEmpty() ? folder : AddSlash(canonical);
    if (sameFolder(folder, AppPath()) || sameFolder(folder, windows) ||
        real == QLatin1String("/") || real.startsWith(windows)) {
        MsgBox(QStringLiteral("You may not delete any packages from:") + NewLine() + AppPath() +
                   NewLine() + QStringLiteral("or") + NewLine() + windows + NewLine() +
                   QStringLiteral("Unable to continue..."),
               vbExclamation, title);
        return false;
    }
    const QString setupIni = PathNoCase(folder, QStringLiteral("SETUP.INI"));
    if (!QFileInfo(setupIni).isFile()) {
        MsgBox(QStringLiteral("The selected folder is not a complete package directory, SETUP.INI "
                              "could not be found.") +
                   NewLine() + QStringLiteral("Unable to delete selected package..."),
               vbExclamation, title);
        return false;
    }
    LoadIniFile(setupIni);
    const QString name =
        GetIniValue(QStringLiteral("Kavori Setup"), QStringLiteral("SlideShowName"));
    ClearIni();
    if (name.isEmpty()) {
        MsgBox(QStringLiteral("The selected folder is not a complete package directory, the "
                              "package name could not be found.") +
                   NewLine() + QStringLiteral("Unable to delete selected package..."),
               vbExclamation, title);
        return false;
    }
    const QString slidesShown = folder + PackageSlidesFolder() + PathSeparator();
    if (MsgBox(QStringLiteral("You are about to remove the slide show package ") + name +
                   QStringLiteral(" from the directory:") + NewLine() + folder + NewLine2() +
                   QStringLiteral("WARNING:") + NewLine() +
                   QStringLiteral("ALL files will be deleted from:") + NewLine() + slidesShown +
                   NewLine() + QStringLiteral("Are you sure?"),
               vbYesNo + vbQuestion + vbDefaultButton2, title) != vbYes)
        return false;

    // SLIDES: its pictures, movies and shows, then the folder. A SLIDES that is a link to
    // somewhere else loses the link only.
    const QString slides = PathNoCase(folder, PackageSlidesFolder());
    if (isLink(slides)) {
        DeleteOneFile(slides, false);
    } else if (QFileInfo(slides).isDir()) {
        for (const QFileInfo& entry : QDir(slides).entryInfoList(kEverything)) {
            if ((entry.isFile() || entry.isSymLink()) && isSlidesFile(entry.fileName()))
                DeleteOneFile(entry.filePath(), false);
        }
        if (!QDir().rmdir(slides))
            MsgBox(QStringLiteral("There are other folders in ") + slidesShown +
                       QStringLiteral(" that could not be removed by this command, you may want "
                                      "to delete these later..."),
                   vbInformation, title);
    }

    // The package's own files and folders.
    for (const QString& entry : PackageKnownEntries()) {
        const QString path = folder + entry;
        if (!exists(path))
            continue;
        if (QFileInfo(path).isDir() && !isLink(path))
            removeTree(path);
        else
            DeleteOneFile(path, false);
    }
    for (const QFileInfo& entry : QDir(folder).entryInfoList(kEverything)) {
        const QString upper = entry.fileName().toUpper();
        if ((upper == QLatin1String("SETUP.INI") || upper.endsWith(QLatin1String(".GID")) ||
             upper.endsWith(QLatin1String(".PART~"))) &&
            (entry.isFile() || entry.isSymLink()))
            DeleteOneFile(entry.filePath(), false);
    }
    if (!QDir(folder).entryList(kEverything).isEmpty())
        MsgBox(QStringLiteral("There are other files in ") + folder +
                   QStringLiteral(" that could not be removed by this command, you may want to "
                                  "delete these later..."),
               vbInformation, title);
    else
        QDir().rmdir(folder);

    MsgBox(QStringLiteral("The slide show package ") + name +
               QStringLiteral(" has been deleted..."),
           vbInformation, title);
    return true;
}

} // namespace kavori
