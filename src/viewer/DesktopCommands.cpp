#include "DesktopCommands.h"

#include "MainViewFrm.h"
#include "fileutil/Wallpaper.h"
#include "platform/AppPaths.h"
#include "platform/DesktopApplications.h"
#include "platform/DesktopPrograms.h"
#include "runtime/Commands.h"
#include "runtime/MsgBox.h"
#include "runtime/Prompts.h"
#include "settings/Settings.h"
#include "settings/SettingsCatalogue.h"

#include <QAction>
#include <QFileInfo>
#include <QMimeDatabase>

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

// The five open-with entries: settings keys and menu commands "", "2" ... "5".
QString slotSuffix(int slot)
{
    return slot == 0 ? QString() : QString::number(slot + 1);
}

QAction* openAction(MainViewFrm* window, int slot)
{
    return window->findChild<QAction*>(QStringLiteral("mnuOpenEditor") + slotSuffix(slot));
}

// The file the other program gets: the picture's own, or the scratch copy of one that exists
// only in memory.
QString pictureFile(const ImageDocument& document)
{
    if (document.currentFile() == ImageDocument::UntitledName())
        return TempPath() + ImageDocument::UntitledName();
    return document.currentFile();
}

void openWith(MainViewFrm* window, int slot)
{
    const ImageDocument& document = window->document();
    if (!document.hasImage()) {
        MsgBox(QStringLiteral("An image has not been opened yet, unable to open it in another "
                              "program..."),
               vbExclamation);
        return;
    }
    const Settings& s = CurrentSettings();
    const QString program = s.OpenWithProgram[slot];
    const QStringList command = OpenWithCommand(program, pictureFile(document));
    if (command.isEmpty()) {
        MsgBox(QStringLiteral("The program chosen for this entry is no longer installed:") +
                   NewLine() + s.OpenWithName[slot] + NewLine2() +
                   QStringLiteral("Use Select Program to choose another one..."),
               vbExclamation);
        return;
    }
    if (!StartDesktopProgram({command}))
        MsgBox(QStringLiteral("The program could not be started:") + NewLine() + command.first() +
                   NewLine2() + QStringLiteral("Use Select Program to choose another one..."),
               vbExclamation);
}

// Chooses the program of an entry from the desktop's applications for the picture's type
// (any picture type when none is open), or any program file; remembers it, and opens the
// picture in it.
void selectProgram(MainViewFrm* window, int slot)
{
    const ImageDocument& document = window->document();
    const QMimeDatabase types;
    const QString mimeType = document.hasImage()
                                 ? types.mimeTypeForFile(pictureFile(document)).name()
                                 : QStringLiteral("image/jpeg");
    const QList<DesktopApplication> apps =
        ApplicationsForMimeType(mimeType, QStringLiteral("kavori.desktop"));
    QStringList items;
    for (const DesktopApplication& app : apps) {
        const bool sameName = std::count_if(apps.cbegin(), apps.cend(), [&](const auto& other) {
                                  return other.name == app.name;
                              }) > 1;
        items << (sameName ? app.name + QStringLiteral(" (") + app.id + u')' : app.name);
    }
    const QString other = QStringLiteral("Other Program...");
    const QString none = QStringLiteral("(No Program)");
    items << other << none;
    const QString title =
        AppTitle() + QStringLiteral(" - [Select Program ") + QString::number(slot + 1) + u']';
    const std::optional<QString> chosen =
        CurrentPrompts().chooseItem(title, QStringLiteral("Open the current image with:"), items);
    if (!chosen)
        return;
    Settings& s = CurrentSettings();
    if (*chosen == none) {
        s.OpenWithProgram[slot].clear();
        s.OpenWithName[slot].clear();
    } else if (*chosen == other) {
        const QString path = CurrentPrompts().openFile(title, QStringLiteral("/usr/bin"),
                                                       QStringLiteral("Programs (*)"));
        if (path.isEmpty())
            return;
        if (!QFileInfo(path).isExecutable() || QFileInfo(path).isDir()) {
            MsgBox(QStringLiteral("The selected file is not a program that can be started:") +
                       NewLine() + path,
                   vbExclamation);
            return;
        }
        s.OpenWithProgram[slot] = path;
        s.OpenWithName[slot] = QFileInfo(path).fileName().left(40);
    } else {
        const int index = items.indexOf(*chosen);
        if (index < 0 || index >= apps.size())
            return;
        const DesktopApplication& app = apps.at(index);
        s.OpenWithProgram[slot] = app.id;
        s.OpenWithName[slot] = app.name.left(40);
    }
    const QString suffix = slotSuffix(slot);
    WriteSettingsKeys(
        {QStringLiteral("OpenWithProgram") + suffix, QStringLiteral("OpenWithName") + suffix});
    UpdateOpenWithMenu(window);
    if (!s.OpenWithProgram[slot].isEmpty() && document.hasImage())
        openWith(window, slot);
}

} // namespace

void UpdateOpenWithMenu(MainViewFrm* window)
{
    const Settings& s = CurrentSettings();
    for (int slot = 0; slot < 5; ++slot) {
        QAction* action = openAction(window, slot);
        if (!action)
            continue;
        const QString name = s.OpenWithName[slot].isEmpty()
                                 ? QFileInfo(s.OpenWithProgram[slot]).fileName()
                                 : s.OpenWithName[slot];
        action->setText(QStringLiteral("&") + QString::number(slot + 1) + u' ' +
                        QString(name).replace(u'&', QStringLiteral("&&")));
        action->setVisible(!s.OpenWithProgram[slot].isEmpty());
    }
}

void ConnectDesktopCommands(MainViewFrm* window)
{
    for (int slot = 0; slot < 5; ++slot) {
        const QByteArray open = "mnuOpenEditor" + slotSuffix(slot).toLatin1();
        const QByteArray select = "mnuSelectProgram" + slotSuffix(slot).toLatin1();
        EnableCommand(window, open.constData(), [window, slot] { openWith(window, slot); });
        EnableCommand(window, select.constData(), [window, slot] { selectProgram(window, slot); });
    }
    UpdateOpenWithMenu(window);

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
