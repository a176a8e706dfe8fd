#include "DesktopCommands.h"

#include "MainViewFrm.h"
#include "fileutil/Wallpaper.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "settings/Settings.h"

namespace kavori {

namespace {

void setWallpaper(MainViewFrm* window, WallpaperStyle style)
{
    const ImageDocument& document = window->document();
    if (!document.hasImage()) {
        MsgBox(QStringLiteral("An image has not been opened yet, unable to set the wallpaper..."),
               vbExclamation);
        return;
    }
    const QString picture =
        WallpaperFile(document.currentFile(), document.image(), document.imageChanged());
    if (picture.isEmpty()) {
        MsgBox(QStringLiteral("The picture could not be written for the desktop, unable to set "
                              "the wallpaper..."),
               vbCritical);
        return;
    }
    const WallpaperResult result = SetWallpaper(picture, style);
    if (!result.ok)
        MsgBox(result.message, vbExclamation);
}

} // namespace

void ConnectDesktopCommands(MainViewFrm* window)
{
    EnableCommand(window, "mnuSetWallpaper", [window] {
        const Settings& s = CurrentSettings();
        setWallpaper(window, WallpaperStyleFor(s.WallpaperStretch, s.WallpaperAspect));
    });
    EnableCommand(window, "mnuTileImage",
                  [window] { setWallpaper(window, WallpaperStyle::Tiled); });
    EnableCommand(window, "mnuClearWallpaper", [] {
        const WallpaperResult result = ClearWallpaper();
        if (!result.ok)
            MsgBox(result.message, vbExclamation);
    });
    EnableCommand(window, "mnuLoadWallpaper", [window] {
        const WallpaperResult result = CurrentWallpaper();
        if (!result.ok) {
            MsgBox(result.message, vbInformation);
            return;
        }
        window->openImage(result.picture);
    });
}

} // namespace kavori
