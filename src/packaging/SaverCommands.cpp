#include "SaverCommands.h"

#include "runtime/Commands.h"

#include "SaverSettings.h"
#include "SaverSetup.h"
#include "platform/AppPaths.h"
#include "runtime/Prompts.h"
#include "slideshow/SlideShow.h"
#include "slideshow/SlideShowFile.h"
#include "systemsaver/SystemSaver.h"

#include <QAction>
#include <QWidget>

namespace kavori {

void SetShowAsScreenSaver(QWidget* parent)
{
    const QString open = CurrentShow().path;
    const QString folder =
        open.isEmpty() ? PathNoCase(AppPath(), QStringLiteral("Slides")) : FolderOf(open);
    const QString path =
        CurrentPrompts().openFile(QStringLiteral("Set as Screen Saver"), folder, SlideShowFilter());
    if (path.isEmpty() || !MakeShowTheSaver(path, CurrentSystemSaver()))
        return;
    SaverSetup::Edit(parent);
}

void ConnectSaverCommands(QWidget* window)
{
    EnableCommand(window, "mnuSSaverSettings", [window] { SaverSetup::Edit(window); });
    EnableCommand(window, "mnuSetScreenSaver", [window] { SetShowAsScreenSaver(window); });
}

} // namespace kavori
