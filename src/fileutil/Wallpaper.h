#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

namespace kavori {

// The desktop's wallpaper, through the desktop's own setting: GNOME, Cinnamon and MATE through
// gsettings, KDE Plasma through its shell's scripting interface (qdbus), Xfce through
// xfconf-query, and a plain X session through a root-window setter (feh, hsetroot,
// xwallpaper). Every command goes through RunDesktopCommand, so tests record them.

enum class WallpaperStyle { Centered, Tiled, Stretched, Scaled };

enum class WallpaperDesktop { None, Gnome, Cinnamon, Mate, Plasma, Xfce, RootWindow };

// The desktop whose setting is used: the session's XDG_CURRENT_DESKTOP (or DESKTOP_SESSION)
// names it and its tool is on the PATH; else, under X (DISPLAY set), a root-window setter on
// the PATH; else None.
WallpaperDesktop CurrentWallpaperDesktop();
QString WallpaperDesktopName(WallpaperDesktop desktop);

// The style the viewer's options ask for: stretched (keeping the aspect when asked) or
// centred.
WallpaperStyle WallpaperStyleFor(bool stretch, bool keepAspect);

// What happened, and the message for the user when something went wrong (empty on success).
struct WallpaperResult {
    bool ok = false;
    QString message;
    QString picture; // CurrentWallpaper: the picture's path
};

// Shows picture (a file the desktop can read, kept where it stays) as the wallpaper.
WallpaperResult SetWallpaper(const QString& picture, WallpaperStyle style);
// Takes the picture off the desktop, leaving its plain colour.
WallpaperResult ClearWallpaper();
// The picture the desktop shows now; a failure says why (none, or no setting found).
WallpaperResult CurrentWallpaper();

// The message when no desktop setting is found.
QString NoWallpaperSettingMessage();

// The file handed to the desktop: a copy in the program's "Wallpaper" folder, so the desktop
// keeps showing it when the original is moved or deleted. A JPEG or PNG the user has not
// changed is copied as it is; anything else (a changed picture, one only in memory, a type the
// desktop cannot read) is written from image as PNG. Empty when it cannot be written.
QString WallpaperFile(const QString& source, const QImage& image, bool changed);

} // namespace kavori
