#include "RuntimePlayer.h"

#include "PackageBuilder.h"
#include "PackageLayout.h"
#include "platform/AppPaths.h"
#include "playback/FullViewFrm.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"
#include "slideshow/SlideShowFile.h"
#include "startup/CommandLine.h"

#include <QFileInfo>

namespace kavori {

QString RuntimeShowPath(const QString& packageFolder, const QStringList& arguments)
{
    const QString folder = AddSlash(packageFolder);
    for (const QString& argument : arguments) {
        if (!HasExtension(argument, QStringLiteral(".KAV")))
            continue;
        const QString path = IsFullPath(argument) ? argument : folder + argument;
        return QFileInfo::exists(path) ? path : QString();
    }
    const QString slides = AddSlash(PathNoCase(folder, PackageSlidesFolder()));
    const QStringList shows = PackageShowFiles(slides);
    return shows.isEmpty() ? QString() : slides + shows.first();
}

int RunPackagedShow(const QString& packageFolder, const QStringList& arguments)
{
    const QString folder = AddSlash(packageFolder);
    LoadSettingsFile(PathNoCase(folder, QStringLiteral("RUN-KAV.INI")));
    // A package may sit on a CD: the player keeps no lists and writes nothing there.
    CurrentSettings().KeepRecent = false;
    const QString show = RuntimeShowPath(folder, arguments);
    if (show.isEmpty()) {
        MsgBox(QStringLiteral("Unable to locate the slide show file of this package, the SLIDES "
                              "folder holds no slide show (.KAV) file..."),
               vbExclamation);
        return 1;
    }
    if (!ReadSlideShow(show))
        return 1;
    PlayerStart start;
    const SaverModuleRun saver =
        ParseSaverModuleRun(arguments.join(u' '), qEnvironmentVariable("XSCREENSAVER_WINDOW"));
    if (saver.isRun) {
        start.screenSaver = true;
        start.hostWindow = saver.windowId;
        if (!CurrentSettings().ScreenSaverSound)
            CurrentSettings().SoundMode = 0;
    }
    return FullViewFrm::PlaySlideShowModal(start);
}

} // namespace kavori
